#include <pxdutil/query/detail/query_refusal.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/query/query_builder.h"

namespace {

using pxd::detail::RefusalOf;
using pxd::test::QueryBuilder;

TEST(QueryRefusal, NamesTheRuleAndWhereItWasBroken) {
  const struct {
    const char* rule;
    QueryBuilder info;
    int condition;
    int whatField;
  } cases[] = {
      {"no condition may name a field that its source doesn't know",
       QueryBuilder(QUERY_TYPE_NEWS).What({243}).Where(31, "IBM").Where(7, "1"), 1, -1},
      {"a symbol (31) is needed unless the verb is MODIFY or SYNCH",
       QueryBuilder(QUERY_TYPE_SYMBOL_DATA).What({7}).Where(229, "3"), -1, -1},
      {"the value of the condition mustn't be empty",
       QueryBuilder(QUERY_TYPE_SYMBOL_DATA).What({7}).Where(31, ""), 0, -1},
      {"the condition needs a chart in the query",
       QueryBuilder(QUERY_TYPE_SYMBOL_DATA).Where(31, "IBM").Where(439, "1"), 1, -1},
      {"the value of the condition must be a date as MM/DD/YYYY",
       QueryBuilder(QUERY_TYPE_SYMBOL_DATA).AnyChart().Where(228, "soon"), 0, -1},
      {"the value of the condition must be a time as HH:MM or HH:MM:SS",
       QueryBuilder(QUERY_TYPE_SYMBOL_DATA).AnyChart().Where(303, "soon"), 0, -1},
      {"the value of the condition must be a valid trading calendar",
       QueryBuilder(QUERY_TYPE_SYMBOL_DATA).AnyChart().Where(219, "soon"), 0, -1},
      {"no field may be asked for beside a chart of this kind",
       QueryBuilder(QUERY_TYPE_SYMBOL_DATA).What({7}).Chart(QUERY_CHART_CCA, 0, 0), -1, -1},
      {"the points of the chart mustn't be wider than 3600 seconds",
       QueryBuilder(QUERY_TYPE_SYMBOL_DATA).Chart(QUERY_CHART_BAR, 2, 3601), -1, -1},
      {"the points of the chart mustn't be wider than 1 day, 1 week or 1 month",
       QueryBuilder(QUERY_TYPE_SYMBOL_DATA).Chart(QUERY_CHART_BAR, 4, 2), -1, -1},
      {"a price chart of no minutes needs a start time (478)",
       QueryBuilder(QUERY_TYPE_SYMBOL_DATA).Chart(QUERY_CHART_PRICE, 3, 0).Where(31, "IBM"), -1,
       -1},
      {"a price chart takes no number of bars back (275)",
       QueryBuilder(QUERY_TYPE_SYMBOL_DATA)
           .Chart(QUERY_CHART_PRICE, 3, 0)
           .Where(31, "IBM")
           .Where(275, "1"),
       -1, -1},
      {"an analysis chart takes no number of bars back (275)",
       QueryBuilder(QUERY_TYPE_SYMBOL_DATA)
           .Chart(QUERY_CHART_ANALYSIS, 3, 1)
           .Where(31, "IBM")
           .Where(275, "1"),
       -1, -1},
      {"weekly and monthly bars can't be sent with empty bars (458)",
       QueryBuilder(QUERY_TYPE_SYMBOL_DATA)
           .Chart(QUERY_CHART_BAR, 5, 1)
           .Where(31, "IBM")
           .Where(458, "1"),
       -1, -1},
      {"a symbol list type (366) is needed", QueryBuilder(QUERY_TYPE_SYMBOL_LIST).What({359}), -1,
       -1},
      {"a list type id (359) needs a root id (426) other than 0",
       QueryBuilder(QUERY_TYPE_SYMBOL_LIST).What({359}).Where(359, "A").Where(366, "2"), -1, -1},
      {"the symbol list types (366) 4 and 7 only give the fields 359 and 364",
       QueryBuilder(QUERY_TYPE_SYMBOL_LIST).What({359, 364, 31}).Where(366, "4"), -1, 2},
      {"the verb of FEED_STATUS must be ADVISE", QueryBuilder(QUERY_TYPE_FEED_STATUS).What({335}),
       -1, -1},
      {"SERVER_INFO takes no condition",
       QueryBuilder(QUERY_TYPE_SERVER_INFO).What({207}).Where(207, "1"), 0, -1},
      {"ECN_INFO may only be asked for the fields 343 and 445",
       QueryBuilder(QUERY_TYPE_ECN_INFO).What({343, 7}), -1, 1},
      {"SCANNING needs a transaction id (365) other than 0 unless the verb is ADVISE",
       QueryBuilder(QUERY_TYPE_SCANNING), -1, -1},
  };
  for (const auto& row : cases) {
    const auto refusal = RefusalOf(row.info);
    ASSERT_TRUE(refusal.has_value()) << row.rule;
    EXPECT_STREQ(refusal->rule, row.rule);
    EXPECT_EQ(refusal->condition, row.condition) << row.rule;
    EXPECT_EQ(refusal->whatField, row.whatField) << row.rule;
  }
}

TEST(QueryRefusal, IsNothingForWhatIsTaken) {
  EXPECT_FALSE(RefusalOf(QueryBuilder(QUERY_TYPE_NEWS).What({243})).has_value());
  EXPECT_FALSE(RefusalOf(QueryBuilder(QUERY_TYPE_SYMBOL_DATA).Where(31, "IBM")).has_value());
}

TEST(QueryRefusal, IsNothingWhereThereIsNoClass) {
  for (const int type : {0, 7, 10, -1, 22, 1000}) {
    EXPECT_FALSE(RefusalOf(QueryBuilder(static_cast<QUERY_TYPE>(type))).has_value()) << type;
  }
}

// Nothing at all is asked for: whoever takes that is known, and all others give a reason.
TEST(QueryRefusal, EverySourceWithAClassIsJudged) {
  for (int type = 1; type <= 21; ++type) {
    const bool hasClass = type != 7 && type != 10;
    const bool takesNothing = type == QUERY_TYPE_TIME_SALES || type == QUERY_TYPE_ARCHIVE ||
                              type == QUERY_TYPE_ARCHIVE_INFO;
    const auto refusal = RefusalOf(QueryBuilder(static_cast<QUERY_TYPE>(type)));
    EXPECT_EQ(refusal.has_value(), hasClass && !takesNothing) << type;
    if (refusal.has_value()) {
      EXPECT_NE(refusal->rule, nullptr) << type;
    }
  }
}

}  // namespace
