// The road from a quote into a record and back.
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <pxdutil/datapoints/ohlc_bars.h>
#include <pxdutil/datapoints/old_bars.h>
#include <pxdutil/datapoints/plain_points.h>
#include <pxdutil/datapoints/records.h>
#include <pxdutil/datapoints/short_bars.h>
#include <pxdutil/datapoints/ticks.h>
#include <pxdutil/quotes/quote.h>

#include "tests/datapoints/bytes.h"

namespace {

using datapoints_test::Bytes;
using datapoints_test::Load;
using datapoints_test::Stored;

using Ids = std::vector<unsigned short>;

class PoolEnvironment : public testing::Environment {
 public:
  void SetUp() override { CZRGSQuote::Init(); }
  void TearDown() override { CZRGSQuote::UnInit(); }
};
const testing::Environment* const kPool =
    testing::AddGlobalTestEnvironment(new PoolEnvironment);  // NOLINT: GoogleTest owns it

const Ids kOhlcIds = {232, 233, 234, 235};
const Ids kSumIds = {238, 239, 248, 249, 321, 322, 323, 324};

Ids Join(Ids first, const Ids& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

enum class Result { kOne, kZero, kAnyNonZero };

// Where a format looks for its date and time, and where it writes them.
struct StampIds {
  Ids readDate;  // in order of precedence
  Ids readTime;
  unsigned short writeDate;
  unsigned short writeTime;
};
const StampIds kNewStamp = {{280, 421}, {281, 422}, 421, 422};
const StampIds kOldStamp = {{421}, {422}, 280, 281};
const StampIds kOldOStamp = {{280}, {281}, 280, 281};

// One row a format.
struct FormatRow {
  Ids required;
  Ids optional;
  Result result;
  StampIds stamp;

  [[nodiscard]] Ids All() const { return Join(required, optional); }
};

template <class Point>
struct Row;
template <>
struct Row<CDPCDblC> {
  static FormatRow Get() { return {{235}, {}, Result::kOne, kNewStamp}; }
};
template <>
struct Row<CDPTDblTick> : Row<CDPCDblC> {};
template <>
struct Row<CDPCDblDblC> {
  static FormatRow Get() { return {{235, 249}, {}, Result::kOne, kNewStamp}; }
};
template <>
struct Row<CDPTDblDblTick> : Row<CDPCDblDblC> {};
template <>
struct Row<CDPCDblDblH> {
  static FormatRow Get() { return {{233, 249}, {}, Result::kZero, kNewStamp}; }
};
template <>
struct Row<CDPCDblDblL> {
  static FormatRow Get() { return {{234, 249}, {}, Result::kZero, kNewStamp}; }
};
template <>
struct Row<CDPCDblOHLCUDUT> {
  static FormatRow Get() { return {kOhlcIds, kSumIds, Result::kAnyNonZero, kNewStamp}; }
};
template <>
struct Row<CDPCDblOHLCUDUTO> {
  static FormatRow Get() {
    return {kOhlcIds, Join(kSumIds, {253}), Result::kAnyNonZero, kNewStamp};
  }
};
template <>
struct Row<CDPCDblOHLCUDUTOld> {
  static FormatRow Get() { return {kOhlcIds, {238, 239, 248, 249}, Result::kOne, kOldStamp}; }
};
template <>
struct Row<CDPCDblOHLCUDUTOOld> {
  static FormatRow Get() { return {kOhlcIds, {238, 239, 248, 249, 253}, Result::kOne, kOldOStamp}; }
};

template <class Point>
class QuoteMapping : public testing::Test {
 protected:
  using Stamped = typename Point::Record;
  using Values = typename Stamped::ValueRecordType;

  const FormatRow row = Row<Point>::Get();

  // A quote with 10, 11, 12, ... in the fields, as floats.
  static void Add(CZRGSQuote& quote, const Ids& ids) {
    float value = 10;
    for (const unsigned short id : ids) {
      quote.AddFieldFloat(1, id, value++);
    }
  }
  void AddStamp(CZRGSQuote& quote) const {
    quote.AddFieldDate(1, row.stamp.readDate[0], 45000);
    quote.AddFieldTime(1, row.stamp.readTime[0], 34260);
  }

  // The floats of a record, by what it stores.
  template <class Record>
  static std::vector<float> Floats(Record record) {
    const Bytes bytes = Stored(record);
    std::vector<float> floats((bytes.size() - bytes.size() % 4) / 4);
    std::memcpy(floats.data(), bytes.data() + (bytes.size() - floats.size() * 4),
                floats.size() * 4);
    if (bytes.size() % 4 != 0) {
      floats.erase(floats.begin());  // the time of a stamped record
    }
    return floats;
  }
  // All floats -1, so that what stays can be told from what is written.
  template <class Record>
  static Record Marked() {
    Record record;
    Bytes bytes = Stored(record);
    std::vector<float> floats(bytes.size() / 4, -1.0F);
    std::memcpy(bytes.data() + bytes.size() % 4, floats.data(), floats.size() * 4);
    Load(record, bytes);
    return record;
  }
  static std::vector<float> Counting(std::size_t count) {
    std::vector<float> floats;
    for (std::size_t i = 0; i < count; ++i) {
      floats.push_back(10.0F + static_cast<float>(i));
    }
    return floats;
  }
  [[nodiscard]] int Good() const { return row.result == Result::kZero ? 0 : 1; }
};

using PricePoints =
    testing::Types<CDPTDblTick, CDPTDblDblTick, CDPCDblC, CDPCDblDblC, CDPCDblDblH, CDPCDblDblL,
                   CDPCDblOHLCUDUT, CDPCDblOHLCUDUTO, CDPCDblOHLCUDUTOld, CDPCDblOHLCUDUTOOld>;
TYPED_TEST_SUITE(QuoteMapping, PricePoints);

// For the records of highs and lows the result of a complete quote is 0, as is meant.
TYPED_TEST(QuoteMapping, ACompleteQuoteFillsEveryValue) {
  CZRGSQuote quote;
  this->Add(quote, this->row.All());
  auto values = this->template Marked<typename TestFixture::Values>();
  EXPECT_EQ(values.SetFromQuote(quote), this->Good());
  EXPECT_EQ(this->Floats(values), this->Counting(this->row.All().size()));

  this->AddStamp(quote);
  auto stamped = this->template Marked<typename TestFixture::Stamped>();
  EXPECT_EQ(stamped.SetFromQuote(quote), this->Good());
  EXPECT_EQ(this->Floats(stamped), this->Counting(this->row.All().size()));
  EXPECT_EQ(+stamped.m_Date, 45000);
  EXPECT_EQ(+stamped.m_Time, 34260U);
}

TYPED_TEST(QuoteMapping, AClassPassesTheCallToItsRecord) {
  CZRGSQuote quote;
  this->Add(quote, this->row.All());
  this->AddStamp(quote);
  TypeParam point;
  point.SetFlag(5);
  EXPECT_EQ(point.SetFromQuote(quote), this->Good());
  typename TestFixture::Stamped record;
  point.GetDPST(record);
  EXPECT_EQ(this->Floats(record), this->Counting(this->row.All().size()));
  EXPECT_EQ(+record.m_Date, 45000);
  EXPECT_TRUE(point.HasFlag(4));

  CZRGSQuote empty;
  EXPECT_EQ(point.SetFromQuote(empty), 0);

  CZRGSQuote fromPoint;
  CZRGSQuote fromRecord;
  EXPECT_EQ(point.AppendToQuote(fromPoint), 1);
  EXPECT_EQ(record.AppendToQuote(fromRecord), 1);
  EXPECT_EQ(fromPoint.GetNumField(), fromRecord.GetNumField());
}

TYPED_TEST(QuoteMapping, AMissingRequiredFieldEndsItAndWhatWasReadStays) {
  const Ids all = this->row.All();
  for (std::size_t missing = 0; missing < this->row.required.size(); ++missing) {
    CZRGSQuote quote;
    Ids ids = all;
    ids.erase(ids.begin() + static_cast<std::ptrdiff_t>(missing));
    for (const unsigned short id : ids) {
      quote.AddFieldFloat(1, id, 7);
    }
    auto values = this->template Marked<typename TestFixture::Values>();
    EXPECT_EQ(values.SetFromQuote(quote), 0) << missing;
    std::vector<float> expected(all.size(), -1.0F);
    std::fill_n(expected.begin(), missing, 7.0F);
    EXPECT_EQ(this->Floats(values), expected) << missing;

    this->AddStamp(quote);
    auto stamped = this->template Marked<typename TestFixture::Stamped>();
    EXPECT_EQ(stamped.SetFromQuote(quote), 0) << missing;
    EXPECT_EQ(this->Floats(stamped), expected) << missing;
    EXPECT_EQ(+stamped.m_Date, 45000) << "the stamp is read first";
  }
}

TYPED_TEST(QuoteMapping, AMissingOptionalFieldReadsAs0) {
  const Ids all = this->row.All();
  for (std::size_t missing = this->row.required.size(); missing < all.size(); ++missing) {
    CZRGSQuote quote;
    Ids ids = all;
    ids.erase(ids.begin() + static_cast<std::ptrdiff_t>(missing));
    for (const unsigned short id : ids) {
      quote.AddFieldFloat(1, id, 7);
    }
    auto values = this->template Marked<typename TestFixture::Values>();
    EXPECT_EQ(values.SetFromQuote(quote), 1) << missing;
    std::vector<float> expected(all.size(), 7.0F);
    expected[missing] = 0.0F;
    EXPECT_EQ(this->Floats(values), expected) << missing;
  }
}

TYPED_TEST(QuoteMapping, TheRequiredFieldsSuffice) {
  CZRGSQuote quote;
  for (const unsigned short id : this->row.required) {
    quote.AddFieldFloat(1, id, 7);
  }
  auto values = this->template Marked<typename TestFixture::Values>();
  EXPECT_EQ(values.SetFromQuote(quote), this->Good());
  std::vector<float> expected(this->row.All().size(), 0.0F);
  std::fill_n(expected.begin(), this->row.required.size(), 7.0F);
  EXPECT_EQ(this->Floats(values), expected);
}

TYPED_TEST(QuoteMapping, AllZerosAreAFailureOnlyForTheBarsWithTicks) {
  CZRGSQuote quote;
  for (const unsigned short id : this->row.All()) {
    quote.AddFieldFloat(1, id, -0.0F);
  }
  auto values = this->template Marked<typename TestFixture::Values>();
  const int expected = this->row.result == Result::kOne ? 1 : 0;
  EXPECT_EQ(values.SetFromQuote(quote), expected);
  EXPECT_EQ(this->Floats(values), std::vector<float>(this->row.All().size(), 0.0F));

  this->AddStamp(quote);
  auto stamped = this->template Marked<typename TestFixture::Stamped>();
  EXPECT_EQ(stamped.SetFromQuote(quote), expected) << "a stamp doesn't make it non-zero";
  EXPECT_EQ(this->Floats(stamped), std::vector<float>(this->row.All().size(), 0.0F));
}

TYPED_TEST(QuoteMapping, OneValueThatIsNot0IsEnoughWhicheverItIs) {
  for (const unsigned short nonZero : this->row.All()) {
    CZRGSQuote quote;
    for (const unsigned short id : this->row.All()) {
      quote.AddFieldFloat(1, id, id == nonZero ? -0.5F : 0.0F);
    }
    typename TestFixture::Values values;
    EXPECT_EQ(values.SetFromQuote(quote), this->Good()) << nonZero;
  }
}

TYPED_TEST(QuoteMapping, TheStampComesFromTheFieldsOfItsFormat) {
  const Ids dates = {280, 421};
  const Ids times = {281, 422};
  // Every combination of the four fields: bit 0 is 280, bit 1 is 421, bit 2 is 281, bit 3 is 422.
  for (unsigned present = 0; present < 16; ++present) {
    CZRGSQuote quote;
    this->Add(quote, this->row.All());
    if ((present & 2) != 0) {
      quote.AddFieldDate(1, 421, 421);
    }
    if ((present & 1) != 0) {
      quote.AddFieldDate(1, 280, 280);
    }
    if ((present & 8) != 0) {
      quote.AddFieldTime(1, 422, 422);
    }
    if ((present & 4) != 0) {
      quote.AddFieldTime(1, 281, 281);
    }
    const auto firstOf = [&](const Ids& wanted, const Ids& ids, unsigned bits) -> unsigned short {
      for (const unsigned short id : wanted) {
        if ((id == ids[0] && (bits & 1) != 0) || (id == ids[1] && (bits & 2) != 0)) {
          return id;
        }
      }
      return 0;
    };
    const unsigned short date = firstOf(this->row.stamp.readDate, dates, present & 3);
    const unsigned short time = firstOf(this->row.stamp.readTime, times, present >> 2);

    auto record = this->template Marked<typename TestFixture::Stamped>();
    record.m_Date = 1;
    record.m_Time = 2;
    const bool complete = date != 0 && time != 0;
    EXPECT_EQ(record.SetFromQuote(quote), complete ? this->Good() : 0) << present;
    EXPECT_EQ(+record.m_Date, date != 0 ? date : 1) << present;
    EXPECT_EQ(+record.m_Time, complete ? time : 2U) << present;
    EXPECT_EQ(this->Floats(record)[0], complete ? 10.0F : -1.0F) << present;
  }
}

// Every type that converts gives its number; no type is refused.
TYPED_TEST(QuoteMapping, EveryNumericTypeConverts) {
  const unsigned short first = this->row.required[0];
  struct Case {
    void (*add)(CZRGSQuote&, unsigned short);
    float expected;
  };
  const Case cases[] = {
      {[](CZRGSQuote& q, unsigned short id) { q.AddFieldString(1, id, "12.5"); }, 12.5F},
      {[](CZRGSQuote& q, unsigned short id) { q.AddFieldString(1, id, "12.5 and more"); }, 12.5F},
      {[](CZRGSQuote& q, unsigned short id) { q.AddFieldString(1, id, "none"); }, 0.0F},
      {[](CZRGSQuote& q, unsigned short id) { q.AddFieldDouble(1, id, 0.1); }, 0.1F},
      {[](CZRGSQuote& q, unsigned short id) { q.AddFieldLong(1, id, -70000); }, -70000.0F},
      {[](CZRGSQuote& q, unsigned short id) { q.AddFieldLong(1, id, 16777217); }, 16777216.0F},
      {[](CZRGSQuote& q, unsigned short id) { q.AddFieldULong(1, id, 4294967295UL); },
       4294967296.0F},
      {[](CZRGSQuote& q, unsigned short id) { q.AddFieldShort(1, id, -5); }, -5.0F},
      {[](CZRGSQuote& q, unsigned short id) { q.AddFieldUShort(1, id, 65535); }, 65535.0F},
      {[](CZRGSQuote& q, unsigned short id) { q.AddFieldChar(1, id, -3); }, -3.0F},
      {[](CZRGSQuote& q, unsigned short id) { q.AddFieldByte(1, id, 200); }, 200.0F},
      {[](CZRGSQuote& q, unsigned short id) { q.AddFieldNoValue(id, CZRGSQuote::QFTYPE_FLOAT); },
       0.0F},
  };
  for (const Case& c : cases) {
    CZRGSQuote quote;
    c.add(quote, first);
    for (const unsigned short id : this->row.All()) {
      if (id != first) {
        quote.AddFieldFloat(1, id, 1);
      }
    }
    auto values = this->template Marked<typename TestFixture::Values>();
    // With a single value of 0, or a 0 among ones, the answer is that of the format all the same.
    EXPECT_EQ(values.SetFromQuote(quote), this->Good());
    EXPECT_EQ(this->Floats(values)[0], c.expected);
  }
}

TYPED_TEST(QuoteMapping, ADateOrTimeOfAnUnfittingTypeReadsAs0) {
  CZRGSQuote quote;
  this->Add(quote, this->row.All());
  quote.AddFieldFloat(1, this->row.stamp.readDate[0], 45000);
  quote.AddFieldFloat(1, this->row.stamp.readTime[0], 34260);
  auto record = this->template Marked<typename TestFixture::Stamped>();
  EXPECT_EQ(record.SetFromQuote(quote), this->Good());
  EXPECT_EQ(+record.m_Date, 0);
  EXPECT_EQ(+record.m_Time, 0U);
}

void ExpectField(const CZRGSQuote& quote, unsigned short place, unsigned short id, int type,
                 unsigned short size) {
  const CZRGSQuote::ZRGS_QUOTE_FIELD* field = quote.GetField(place);
  ASSERT_NE(field, nullptr) << place;
  EXPECT_EQ(+field->wFieldID, id) << place;
  EXPECT_EQ(field->bTypeStatus & 0x0F, 3) << place;
  EXPECT_EQ(field->bTypeStatus >> 4, type) << place;
  EXPECT_EQ(+field->wSize, size) << place;
}

TYPED_TEST(QuoteMapping, AppendsItsValuesInOrderWithStatus3) {
  CZRGSQuote source;
  this->Add(source, this->row.All());
  typename TestFixture::Values values;
  values.SetFromQuote(source);

  CZRGSQuote quote;
  EXPECT_EQ(values.AppendToQuote(quote), 1);
  const Ids all = this->row.All();
  ASSERT_EQ(quote.GetNumField(), all.size());
  for (unsigned short i = 0; i < all.size(); ++i) {
    ExpectField(quote, i, all[i], CZRGSQuote::QFTYPE_FLOAT, 4);
    double number = 0;
    EXPECT_EQ(quote.GetFieldData(all[i], number), 1);
    EXPECT_EQ(number, 10.0 + i);
  }
}

TYPED_TEST(QuoteMapping, AppendsZerosLikeAnyOther) {
  const typename TestFixture::Values values;
  CZRGSQuote quote;
  EXPECT_EQ(values.AppendToQuote(quote), 1);
  EXPECT_EQ(quote.GetNumField(), this->row.All().size());
}

TYPED_TEST(QuoteMapping, AppendsDateAndTimeFirst) {
  typename TestFixture::Stamped record;
  record.m_Date = 45000;
  record.m_Time = 34260;
  CZRGSQuote quote;
  EXPECT_EQ(record.AppendToQuote(quote), 1);
  const Ids all = this->row.All();
  ASSERT_EQ(quote.GetNumField(), all.size() + 2);
  ExpectField(quote, 0, this->row.stamp.writeDate, CZRGSQuote::QFTYPE_DATE, 2);
  ExpectField(quote, 1, this->row.stamp.writeTime, CZRGSQuote::QFTYPE_TIME, 4);
  EXPECT_EQ(CZRGSQuote::GetDateValue(quote.GetField(0)), 45000);
  EXPECT_EQ(CZRGSQuote::GetTimeValue(quote.GetField(1)), 34260U);
  for (unsigned short i = 0; i < all.size(); ++i) {
    ExpectField(quote, static_cast<unsigned short>(i + 2), all[i], CZRGSQuote::QFTYPE_FLOAT, 4);
  }
}

// A quote that found neither date nor time looks again once the stamp was appended, but not once
// only floats were.
TYPED_TEST(QuoteMapping, AppendedStampsMakeAQuoteLookAgainForItsDate) {
  CZRGSQuote quote;
  EXPECT_EQ(quote.GetDate(), 0);  // looks, and finds nothing
  // A date that came by a form without the cache rule isn't seen ...
  std::uint16_t date = 45001;
  quote.AddField(1, CZRGSQuote::QFTYPE_DATE, 280, &date, sizeof date);
  typename TestFixture::Stamped record;
  record.m_Date = 45002;
  record.m_Time = 34260;
  const typename TestFixture::Values& values = record;
  values.AppendToQuote(quote);
  EXPECT_EQ(quote.GetDate(), 0);
  // ... until a stamp is added.
  record.AppendToQuote(quote);
  EXPECT_EQ(quote.GetDate(), this->row.stamp.writeDate == 280 ? 45002 : 45001);
}

TEST(QuoteMappingOld, TheFirstOldFormatCantReadTheQuoteItWroteAsMeant) {
  CDPSTDblOHLCUDUTOld old;
  old.m_Date = 45000;
  old.m_Time = 34260;
  old.m_Open = old.m_High = old.m_Low = old.m_Close = 5;
  CZRGSQuote quote;
  EXPECT_EQ(old.AppendToQuote(quote), 1);
  CDPSTDblOHLCUDUTOld back;
  EXPECT_EQ(back.SetFromQuote(quote), 0);
  EXPECT_EQ(+back.m_Open, 0.0F);

  CDPSTDblOHLCUDUTOOld second;
  second.m_Date = 45000;
  second.m_Open = second.m_High = second.m_Low = second.m_Close = 5;
  CZRGSQuote secondQuote;
  EXPECT_EQ(second.AppendToQuote(secondQuote), 1);
  CDPSTDblOHLCUDUTOOld secondBack;
  EXPECT_EQ(secondBack.SetFromQuote(secondQuote), 1);
  EXPECT_EQ(secondBack == second, 1);
}

TEST(QuoteMappingTick, TheTickWordIsNeitherReadNorWritten) {
  CZRGSQuote quote;
  for (const unsigned short id : Ids{235, 249, 321, 322}) {
    quote.AddFieldFloat(1, id, 7);
  }
  CDPSDblDblTick tick;
  tick.m_TickDir = -9;
  EXPECT_EQ(tick.SetFromQuote(quote), 1);
  EXPECT_EQ(+tick.m_TickDir, -9);
  CZRGSQuote written;
  EXPECT_EQ(tick.AppendToQuote(written), 1);
  EXPECT_EQ(written.GetNumField(), 2U);
}

TEST(QuoteMappingWorkedExamples, HoldToTheLetter) {
  CZRGSQuote four;
  for (const unsigned short id : kOhlcIds) {
    four.AddFieldFloat(1, id, 3);
  }
  CDPSDblOHLCUDUT bar;
  bar.m_TotTicks = 5;
  EXPECT_EQ(bar.SetFromQuote(four), 1);
  EXPECT_EQ(+bar.m_TotTicks, 0.0F);

  CZRGSQuote withoutLow;
  for (const unsigned short id : Ids{232, 233, 235}) {
    withoutLow.AddFieldFloat(1, id, 8);
  }
  EXPECT_EQ(bar.SetFromQuote(withoutLow), 0);
  EXPECT_EQ(+bar.m_Open, 8.0F);
  EXPECT_EQ(+bar.m_High, 8.0F);
  EXPECT_EQ(+bar.m_Low, 3.0F);
  EXPECT_EQ(+bar.m_Close, 3.0F);

  CDPSTDblC close;
  CZRGSQuote three;
  EXPECT_EQ(close.AppendToQuote(three), 1);
  ASSERT_EQ(three.GetNumField(), 3U);
  EXPECT_EQ(three.GetField(0)->wFieldID, 421);
  EXPECT_EQ(three.GetField(1)->wFieldID, 422);
  EXPECT_EQ(three.GetField(2)->wFieldID, 235);
}

// ---- The points without prices ----

template <class Point>
struct PlainFields;
template <>
struct PlainFields<CDPOptDaily> {
  static Ids Get() { return {489, 490, 491, 492, 493}; }
};
template <>
struct PlainFields<CDPCnv> {
  static Ids Get() { return {517, 518}; }
};

template <class Point>
class PlainQuoteMapping : public testing::Test {
 protected:
  static double Number(const Point& point, unsigned col) {
    CDPValue value;
    point.GetDPValueForCol(col, value);
    CDPValueInfo info;
    point.GetDPValueInfoForCol(col, CField(), info);
    return info.GetDataType() == CDPValueInfo::ValueDouble ? value.GetDouble()
                                                           : static_cast<double>(value.GetFloat());
  }
  static void Add(CZRGSQuote& quote, unsigned short omitted) {
    double value = 10;
    for (const unsigned short id : PlainFields<Point>::Get()) {
      if (id != omitted) {
        quote.AddFieldDouble(1, id, value);
      }
      ++value;
    }
  }
};
using PlainPoints = testing::Types<CDPOptDaily, CDPCnv>;
TYPED_TEST_SUITE(PlainQuoteMapping, PlainPoints);

TYPED_TEST(PlainQuoteMapping, EveryFieldIsRequiredAndWhatWasReadStays) {
  const Ids ids = PlainFields<TypeParam>::Get();
  for (std::size_t missing = 0; missing <= ids.size(); ++missing) {
    CZRGSQuote quote;
    this->Add(quote, missing < ids.size() ? ids[missing] : 0);
    quote.AddFieldDate(1, 421, 45000);
    quote.AddFieldTime(1, 422, 34260);
    TypeParam point;
    EXPECT_EQ(point.SetFromQuote(quote), missing < ids.size() ? 0 : 1) << missing;
    for (unsigned col = 0; col < ids.size(); ++col) {
      EXPECT_EQ(this->Number(point, col), col < missing ? 10.0 + col : 0.0) << missing;
    }
    unsigned short date = 0;
    unsigned long time = 0;
    point.GetDPDateTime(date, time);
    EXPECT_EQ(date, 45000);
    EXPECT_EQ(time, 34260U);
  }
}

TYPED_TEST(PlainQuoteMapping, ThePlainStampGoesBeforeTheBarsStamp) {
  for (unsigned present = 0; present < 16; ++present) {
    CZRGSQuote quote;
    this->Add(quote, 0);
    for (unsigned short bit = 0; bit < 4; ++bit) {
      const unsigned short id = Ids{280, 421, 281, 422}[bit];
      if ((present >> bit & 1) != 0) {
        if (bit < 2) {
          quote.AddFieldDate(1, id, id);
        } else {
          quote.AddFieldTime(1, id, id);
        }
      }
    }
    TypeParam point;
    point.SetZRDateTime(static_cast<unsigned short>(1), 2UL);
    const unsigned short date = (present & 1) != 0 ? 280 : (present & 2) != 0 ? 421 : 0;
    const unsigned short time = (present & 4) != 0 ? 281 : (present & 8) != 0 ? 422 : 0;
    const bool complete = date != 0 && time != 0;
    EXPECT_EQ(point.SetFromQuote(quote), complete ? 1 : 0) << present;
    unsigned short readDate = 0;
    unsigned long readTime = 0;
    point.GetDPDateTime(readDate, readTime);
    EXPECT_EQ(readDate, date != 0 ? date : 1) << present;
    EXPECT_EQ(readTime, complete ? time : 2UL) << present;
    EXPECT_EQ(this->Number(point, 0), complete ? 10.0 : 0.0) << present;
  }
}

TYPED_TEST(PlainQuoteMapping, AppendsNothing) {
  TypeParam point;
  CZRGSQuote quote;
  EXPECT_EQ(point.AppendToQuote(quote), 0);
  EXPECT_EQ(quote.GetNumField(), 0U);
}

TEST(OptDailyQuote, NumbersAreCutTowardsZeroAndSaturate) {
  CZRGSQuote quote;
  quote.AddFieldDate(1, 280, 45000);
  quote.AddFieldTime(1, 281, 0);
  quote.AddFieldDouble(1, 489, 5e9);
  quote.AddFieldDouble(1, 490, -1.5);
  quote.AddFieldDouble(1, 491, -7.9);
  quote.AddFieldDouble(1, 492, -3e9);
  quote.AddFieldDouble(1, 493, 0.1);
  CDPRecOptDaily record;
  record.m_VolCount = 3;
  record.m_VolSum = 4;
  EXPECT_EQ(record.SetFromQuote(quote), 1);
  EXPECT_EQ(+record.m_PutVol, 0xFFFFFFFFU);
  EXPECT_EQ(+record.m_CallVol, 0U);
  EXPECT_EQ(+record.m_PutOpenInt, -7);
  EXPECT_EQ(+record.m_CallOpenInt, std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(+record.m_ImpliedVol, 0.1F);
  EXPECT_EQ(+record.m_VolCount, 3);
  EXPECT_EQ(+record.m_VolSum, 4.0F);
}

TEST(CnvQuote, LeavesTheNullMarkAsMeant) {
  CZRGSQuote quote;
  quote.AddFieldDate(1, 280, 45000);
  quote.AddFieldTime(1, 281, 0);
  quote.AddFieldDouble(1, 517, 0.1);
  quote.AddFieldDouble(1, 518, 0.2);
  CDPRecCnv record;
  EXPECT_EQ(record.SetFromQuote(quote), 1);
  EXPECT_EQ(+record.m_Winning, 0.1);
  EXPECT_EQ(+record.m_Losing, 0.2);
  EXPECT_EQ(record.IsNull(), 1);
  record.m_IsNull = 0;
  EXPECT_EQ(record.SetFromQuote(quote), 1);
  EXPECT_EQ(record.IsNull(), 0);
}

}  // namespace
