#include <pxdutil/query/query_values.h>

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/query/query_builder.h"

namespace {

using pxd::QueryValue;
using pxd::TypedValues;
using pxd::test::QueryBuilder;
using Values = std::vector<QueryValue>;

TEST(QueryValues, AreNothingForWhatIsRefusedOrHasNoClass) {
  EXPECT_FALSE(TypedValues(QueryBuilder(QUERY_TYPE_NEWS)).has_value());
  for (const int type : {0, 7, 10, 99}) {
    EXPECT_FALSE(TypedValues(QueryBuilder(static_cast<QUERY_TYPE>(type))).has_value()) << type;
  }
}

TEST(QueryValues, AreEmptyWhereNoConditionWasGiven) {
  EXPECT_EQ(TypedValues(QueryBuilder(QUERY_TYPE_NEWS).What({243})), Values{});
  EXPECT_EQ(TypedValues(QueryBuilder(QUERY_TYPE_SYMBOL_DATA, QUERY_VERB_SYNCH)), Values{});
  EXPECT_EQ(TypedValues(QueryBuilder(QUERY_TYPE_SERVER_INFO).What({207})), Values{});
  EXPECT_EQ(TypedValues(QueryBuilder(QUERY_TYPE_MESSAGE, QUERY_VERB_ADVISE).What({468})), Values{});
}

TEST(QueryValues, HaveANameAndATextByTheirType) {
  const char* const week = "1:2010,2400,0,0,1";
  QueryBuilder info(QUERY_TYPE_SYMBOL_DATA);
  info.AnyChart()
      .Where(31, "us:IBM")
      .Where(219, week)
      .Where(228, "1/31/1997")
      .Where(229, "70000")
      .Where(298, "")
      .Where(303, "9:30")
      .Where(432, "-2")
      .Where(435, "0")
      .Where(450, "0")
      .Where(458, "2")
      .Where(502, "-5")
      .Where(514, "JP");
  EXPECT_EQ(TypedValues(info), (Values{
                                   {31, "symbol", "IBM"},
                                   {219, "session", week},
                                   {228, "last date", "01/31/1997"},
                                   {229, "num calendar days back", "65535"},
                                   {298, "time zone", "yes"},
                                   {303, "last time", "09:30:00"},
                                   {432, "tick trade mask", "-2"},
                                   {435, "group by add", "no"},
                                   {450, "ecn aggregate", "0"},
                                   {458, "send empty bars", "no"},
                                   {458, "send ghost bars", "yes"},
                                   {502, "bars remaining", "-5"},
                                   {514, "country code", "JP"},
                               }));
}

TEST(QueryValues, ListWhatOneConditionImpliesOfAnother) {
  QueryBuilder info(QUERY_TYPE_SYMBOL_LIST);
  info.What({359}).Where(366, "2").Where(359, "A").Where(383, "12.5").Where(380, "soon");
  EXPECT_EQ(TypedValues(info), (Values{
                                   {359, "list type id", "A"},
                                   {366, "symbol list type", "2"},
                                   {380, "option exp date high", ""},
                                   {383, "option strike low", "12.5"},
                                   {426, "symbol list root id", "3"},
                               }));
}

TEST(QueryValues, ListFlagsAndNumbersByTheirOwnFields) {
  QueryBuilder book(QUERY_TYPE_SYMBOL_DATA);
  book.AnyChart().Where(31, "IBM").Where(275, "1").Where(449, "3").Where(450, "4").Where(451, "5");
  EXPECT_EQ(TypedValues(book), (Values{
                                   {31, "symbol", "IBM"},
                                   {275, "num bars back", "1"},
                                   {434, "bars back mult", "0"},
                                   {449, "ecn level ii data", "3"},
                                   {450, "ecn aggregate", "4"},
                                   {451, "ecn order levels", "5"},
                               }));
  QueryBuilder list(QUERY_TYPE_SYMBOL_LIST);
  list.What({359}).Where(366, "4").Where(486, "1");
  EXPECT_EQ(TypedValues(list), (Values{
                                   {366, "symbol list type", "4"},
                                   {486, "symbol list flag", "1"},
                                   {486, "no longer trading", "yes"},
                               }));
}

TEST(QueryValues, LeaveOutWhatCountsAsNotGiven) {
  EXPECT_EQ(TypedValues(QueryBuilder(QUERY_TYPE_ARCHIVE).Where(365, "0").Where(466, "5")),
            (Values{{466, "archive flags", "5"}}));
  EXPECT_EQ(TypedValues(QueryBuilder(QUERY_TYPE_TIME_SALES).Where(373, "soon")), Values{});
}

TEST(QueryValues, ShowFlagsOfEveryWidthAsFlags) {
  EXPECT_EQ(TypedValues(QueryBuilder(QUERY_TYPE_TIME_SALES).Where(372, "5")),
            (Values{{372, "all prices", "yes"}}));
  EXPECT_EQ(
      TypedValues(QueryBuilder(QUERY_TYPE_ECN_INFO).What({343}).Where(272, "2").Where(417, "prog")),
      (Values{{272, "history setting", "no"}, {417, "entitlement prog id", "prog"}}));
  EXPECT_EQ(TypedValues(QueryBuilder(QUERY_TYPE_NEWS).What({243}).Where(260, "1")),
            (Values{{260, "match case", "yes"}}));
}

// Every accepted condition shows, but for those that are kept without an accessor or do nothing.
TEST(QueryValues, EveryConditionHasALine) {
  const struct {
    QueryBuilder plain;
    std::vector<int> silent;
  } cases[] = {
      {QueryBuilder(QUERY_TYPE_ECN_INFO).What({343}), {33, 34, 35, 37, 275, 359, 426}},
      {QueryBuilder(QUERY_TYPE_SYMBOL_DATA, QUERY_VERB_MODIFY).AnyChart().Where(275, "1"),
       {520, 522, 523}},
      {QueryBuilder(QUERY_TYPE_SYMBOL_LIST).What({359}).Where(366, "4"), {425}},
      {QueryBuilder(QUERY_TYPE_NEWS).What({243}), {425}},
      {QueryBuilder(QUERY_TYPE_TIME_SALES), {}},
      {QueryBuilder(QUERY_TYPE_TIME).What({280}), {297}},
      {QueryBuilder(QUERY_TYPE_FEED_STATUS, QUERY_VERB_ADVISE).What({335}), {}},
      {QueryBuilder(QUERY_TYPE_CONNECT_DATAFEED).What({340}), {}},
      {QueryBuilder(QUERY_TYPE_ARCHIVE), {}},
      {QueryBuilder(QUERY_TYPE_ARCHIVE_INFO), {}},
  };
  for (const auto& row : cases) {
    for (int field = 1; field < 600; ++field) {
      // The value that suits the field's type: a number, or else a date, a time or a calendar. An
      // unreadable date, a flag bit that isn't set and a 0 that counts as absent don't show; of the
      // values that are taken at least one must.
      bool isTaken = false;
      bool isShown = false;
      for (const char* value : {"4", "1", "01/31/1997", "09:30", "1:2010,2400,0,0,1", ""}) {
        QueryBuilder info = row.plain;
        info.Where(field, value);
        const auto values = TypedValues(info);
        isTaken = isTaken || values.has_value();
        isShown = isShown || (values.has_value() && std::any_of(values->begin(), values->end(),
                                                                [field](const QueryValue& line) {
                                                                  return line.field == field;
                                                                }));
      }
      const bool isSilent =
          std::find(row.silent.begin(), row.silent.end(), field) != row.silent.end();
      EXPECT_EQ(isShown, isTaken && !isSilent) << row.plain->eQueryType << ": " << field;
    }
  }
}

}  // namespace
