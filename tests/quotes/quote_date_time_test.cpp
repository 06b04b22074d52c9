#include <algorithm>

#include "tests/quotes/quote_fixture.h"

namespace {

using namespace pxd::test;

TEST_F(Quote, DateAndTimeComeFromTheirFields) {
  CZRGSQuote quote;
  quote.AddFieldULong(3, kTime, 34200);
  quote.AddFieldULong(3, kDate, 0x10005);
  EXPECT_EQ(quote.GetTime(), 34200U);
  EXPECT_EQ(quote.GetDate(), 5);
}

TEST_F(Quote, AFieldOfAnotherTypeMakesDateAndTimeKnownAsZero) {
  CZRGSQuote quote;
  quote.AddFieldString(3, kTime, "09:30");
  quote.AddFieldLong(3, kDate, 35431);
  const FieldInfo info = quote.GetFieldInfo(kTime);
  EXPECT_EQ(+info.bDateTimeFlags, 3);
  EXPECT_EQ(+info.wDate, 0);
  EXPECT_EQ(+info.dwTime, 0U);
}

TEST_F(Quote, TheDateAndTimeOfABarAreNotTheQuotes) {
  CZRGSQuote quote;
  quote.AddFieldDate(3, 421, 35431);
  quote.AddFieldTime(3, 422, 34200);
  EXPECT_EQ(quote.GetDate(), 0);
  EXPECT_EQ(quote.GetTime(), 0U);
  EXPECT_EQ(+quote.GetFieldInfo(421).bDateTimeFlags, 0);
}

TEST_F(Quote, ANewerDateFieldLeavesADerivedDate) {
  CZRGSQuote quote;
  quote.AddFieldDate(3, kDate, 100);
  EXPECT_EQ(quote.GetDate(), 100);
  quote.AddFieldDate(3, kDate, 200);
  EXPECT_EQ(quote.GetDate(), 100);
  EXPECT_EQ(NumberOf(quote, kDate), 200.0);
}

TEST_F(Quote, ADateFieldCountsWhereTheQuoteHadFoundNeither) {
  CZRGSQuote quote;
  EXPECT_EQ(quote.GetDate(), 0);
  quote.AddFieldDate(3, kDate, 200);
  EXPECT_EQ(quote.GetDate(), 200);
}

TEST_F(Quote, ASetDateHidesATimeFieldThatWasNotLookedAt) {
  CZRGSQuote quote;
  quote.AddFieldTime(3, kTime, 34200);
  quote.SetDate(35431);
  EXPECT_EQ(quote.GetTime(), 0U);
  EXPECT_EQ(quote.GetDate(), 35431);
  const FieldInfo info = quote.GetFieldInfo(kTime);
  EXPECT_EQ(+info.bDateTimeFlags, 2);
  EXPECT_EQ(+info.wDate, 35431);
  EXPECT_EQ(+info.dwTime, 0U);
  EXPECT_EQ(quote.GetNumField(), 1U);
}

TEST_F(Quote, ASetTimeHidesADateFieldThatWasNotLookedAt) {
  CZRGSQuote quote;
  quote.AddFieldDate(3, kDate, 35431);
  quote.SetTime(0xFEDCBA98UL);
  EXPECT_EQ(quote.GetDate(), 0);
  EXPECT_EQ(quote.GetTime(), 0xFEDCBA98UL);
  EXPECT_EQ(+quote.GetFieldInfo(kDate).bDateTimeFlags, 1);
  quote.SetDate(7);
  EXPECT_EQ(+quote.GetFieldInfo(kDate).bDateTimeFlags, 3);
}

TEST_F(Quote, FieldInfoOfAnAbsentFieldIsZeroAndLooksAtNothing) {
  CZRGSQuote quote;
  quote.AddFieldByte(3, 5, 1);
  const FieldInfo info = quote.GetFieldInfo(kDate);
  EXPECT_EQ(+info.bStatus, 0);
  EXPECT_EQ(+info.bDateTimeFlags, 0);
  EXPECT_EQ(+info.wDate, 0);
  EXPECT_EQ(+info.dwTime, 0U);
  // Had it looked, this form would not make the quote look again.
  unsigned short date = 35431;
  quote.AddField(3, 1, kDate, &date, 2);
  EXPECT_EQ(quote.GetDate(), 35431);
}

TEST_F(Quote, FieldInfoOfAnAbsentFieldIsZeroWhereDateAndTimeAreKnown) {
  CZRGSQuote quote;
  quote.SetDate(1);
  quote.SetTime(2);
  const FieldInfo info = quote.GetFieldInfo(5);
  EXPECT_EQ(+info.bDateTimeFlags, 0);
  EXPECT_EQ(+info.wDate, 0);
  EXPECT_EQ(+info.dwTime, 0U);
}

TEST_F(Quote, FieldInfoTellsOfTheFieldAndOfTheQuote) {
  CZRGSQuote quote;
  quote.AddFieldByte(0xA, 5, 1);
  quote.AddFieldDate(3, kDate, 35431);
  quote.AddFieldTime(3, kTime, 34200);
  const FieldInfo info = quote.GetFieldInfo(5);
  EXPECT_EQ(+info.bStatus, 0xA);
  EXPECT_EQ(+info.bDateTimeFlags, 3);
  EXPECT_EQ(+info.wDate, 35431);
  EXPECT_EQ(+info.dwTime, 34200U);
}

TEST_F(Quote, FieldInfoOfANodeDoesNotAskWhoseItIs) {
  CZRGSQuote quote;
  quote.AddFieldDate(3, kDate, 35431);
  const LooseField stranger(2, {'x'}, 9, 5);
  const Field* const node = stranger;
  const FieldInfo info = quote.GetFieldInfo(node);
  EXPECT_EQ(+info.bStatus, 5);
  EXPECT_EQ(+info.bDateTimeFlags, 2);
  EXPECT_EQ(+info.wDate, 35431);
}

// The ids that GetDateTimeFields gave, -1 for what it left alone, 0 for null.
struct Stamps {
  int date, time, ask_date, ask_time, bid_date, bid_time;
  bool operator==(const Stamps&) const = default;
};

Stamps StampsOf(const CZRGSQuote& quote) {
  const Field untouched{};
  const Field* f[6];
  std::fill(std::begin(f), std::end(f), &untouched);
  quote.GetDateTimeFields(f[0], f[1], f[2], f[3], f[4], f[5]);
  const auto id = [&](const Field* field) {
    return field == &untouched ? -1 : field == nullptr ? 0 : int{field->wFieldID};
  };
  return {id(f[0]), id(f[1]), id(f[2]), id(f[3]), id(f[4]), id(f[5])};
}

TEST_F(Quote, DateTimeFieldsResetOnlyDateAndTime) {
  CZRGSQuote quote;
  EXPECT_EQ(StampsOf(quote), (Stamps{0, 0, -1, -1, -1, -1}));
  quote.AddFieldByte(3, 5, 1);
  EXPECT_EQ(StampsOf(quote), (Stamps{0, 0, -1, -1, -1, -1}));
}

TEST_F(Quote, DateTimeFieldsAreSortedOutById) {
  CZRGSQuote quote;
  for (unsigned short id = 270; id < 430; ++id) {
    quote.AddFieldUShort(3, id, id);
  }
  EXPECT_EQ(StampsOf(quote), (Stamps{280, 281, 308, 310, 307, 309}));
}

TEST_F(Quote, PlainDateAndTimeWinOverABarsWhereverTheyStand) {
  struct Row {
    Ids ids;
    int date;
    int time;
  };
  const Row rows[] = {
      {{280, 421, 281, 422}, 280, 281}, {{421, 280, 422, 281}, 280, 281},
      {{421, 422}, 421, 422},           {{280}, 280, 0},
      {{422, 280}, 280, 422},           {{281, 421}, 421, 281},
  };
  for (const Row& row : rows) {
    CZRGSQuote quote;
    for (const unsigned short id : row.ids) {
      quote.AddFieldUShort(3, id, 1);
    }
    EXPECT_EQ(StampsOf(quote), (Stamps{row.date, row.time, -1, -1, -1, -1})) << row.ids[0];
  }
}

TEST_F(Quote, AFieldThatOnlySaysItIsThereIsNoStamp) {
  for (const unsigned short id : Ids{280, 281, 307, 308, 309, 310, 421, 422}) {
    CZRGSQuote quote;
    quote.AddField(3, CZRGSQuote::QFTYPE_NOVALUE, id, g_value, 1);
    EXPECT_EQ(StampsOf(quote), (Stamps{0, 0, -1, -1, -1, -1})) << id;
  }
  CZRGSQuote quote;
  quote.AddField(3, CZRGSQuote::QFTYPE_NOVALUE, 280, g_value, 1);
  quote.AddFieldDate(3, 421, 1);
  EXPECT_EQ(StampsOf(quote), (Stamps{421, 0, -1, -1, -1, -1}));
}

TEST_F(Quote, ReplacingTheDateFieldLeavesTheDerivedDate) {
  CZRGSQuote quote;
  quote.AddFieldDate(3, kDate, 100);
  EXPECT_EQ(quote.GetDate(), 100);
  quote.ReplaceField(LooseField(1, {200, 0}, kDate));
  EXPECT_EQ(quote.GetDate(), 100);
  EXPECT_EQ(NumberOf(quote, kDate), 200.0);
}

TEST_F(Quote, EmptyLeavesDateTimeAndTagInPlace) {
  CZRGSQuote quote;
  quote.m_dwTag = 9;
  quote.AddFieldDate(3, kDate, 35431);
  quote.AddFieldTime(3, kTime, 34200);
  EXPECT_EQ(quote.GetDate(), 35431);
  quote.Empty(1);
  EXPECT_EQ(quote.GetNumField(), 0U);
  EXPECT_EQ(quote.m_dwTag, 9U);
  EXPECT_EQ(quote.GetDate(), 35431) << "derived anew, it finds no field and keeps the old date";
  EXPECT_EQ(quote.GetTime(), 34200U);
  quote.AddFieldByte(3, 5, 1);
  EXPECT_EQ(+quote.GetFieldInfo(5).bDateTimeFlags, 0);
  EXPECT_EQ(+quote.GetFieldInfo(5).wDate, 35431);
}

TEST_F(Quote, EmptyMakesTheQuoteLookAnew) {
  CZRGSQuote quote;
  quote.SetDate(1);
  quote.Empty(1);
  unsigned short date = 35431;
  quote.AddField(3, 1, kDate, &date, 2);
  EXPECT_EQ(quote.GetDate(), 35431);
}

TEST_F(Quote, ACopyDerivesDateAndTimeAnew) {
  CZRGSQuote quote;
  quote.AddFieldDate(3, kDate, 35431);
  quote.SetDate(1);
  quote.SetTime(2);
  const CZRGSQuote copy(quote);
  EXPECT_EQ(copy.GetDate(), 35431);
  EXPECT_EQ(copy.GetTime(), 0U);
  EXPECT_EQ(+copy.GetFieldInfo(kDate).bDateTimeFlags, 2);
}

TEST_F(Quote, ACopyHasLookedAlready) {
  const CZRGSQuote empty;
  CZRGSQuote copy(empty);
  unsigned short date = 35431;
  copy.AddField(3, 1, kDate, &date, 2);
  EXPECT_EQ(copy.GetDate(), 0);
}

TEST_F(Quote, AssignmentKeepsATimeThatTheSourceHasNoFieldFor) {
  CZRGSQuote target;
  target.SetTime(34200);
  const CZRGSQuote source;
  target = source;
  EXPECT_EQ(target.GetTime(), 34200U);
}

TEST_F(Quote, TransferMakesAQuoteThatFoundNeitherLookAgain) {
  CZRGSQuote to;
  EXPECT_EQ(to.GetDate(), 0);
  CZRGSQuote from;
  from.AddFieldDate(3, kDate, 35431);
  to.TransferQuote(from);
  EXPECT_EQ(to.GetDate(), 35431);
  CZRGSQuote newer;
  newer.AddFieldDate(3, kDate, 7);
  to.TransferQuote(newer);
  EXPECT_EQ(to.GetDate(), 35431);
}

TEST_F(Quote, TransferMakesTheSourceLookAnewAndKeepsItsDate) {
  CZRGSQuote from;
  from.AddFieldDate(3, kDate, 35431);
  EXPECT_EQ(from.GetDate(), 35431);
  CZRGSQuote to;
  to.TransferQuote(from);
  EXPECT_EQ(from.GetDate(), 35431);
  from.Empty(1);
  unsigned short date = 7;
  from.AddField(3, 1, kDate, &date, 2);
  EXPECT_EQ(from.GetDate(), 7);
}

TEST_F(Quote, TransferMakesTheSourceForgetThatItLooked) {
  CZRGSQuote from;
  from.AddFieldDate(3, kDate, 35431);
  EXPECT_EQ(from.GetDate(), 35431);
  CZRGSQuote to;
  to.TransferQuote(from);
  unsigned short date = 7;
  from.AddField(3, 1, kDate, &date, 2);  // a form that makes no quote look again
  EXPECT_EQ(from.GetDate(), 7);
}

}  // namespace
