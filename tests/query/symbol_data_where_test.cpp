#include <pxdutil/query/symbol_data_where.h>

#include <cstring>
#include <map>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include <pxdutil/query/symbol_data_query.h>
#include "tests/query/accessors.h"
#include "tests/query/query_builder.h"

namespace {

using pxd::test::AccessorCase;
using pxd::test::kAbsent;
using pxd::test::QueryBuilder;
using pxd::test::Read;
using Query = CZRGSClientSYMDATAQuery;
using Where = CZRGSClientSYMDATAQueryWHEREClause;

static_assert(std::has_virtual_destructor_v<Where>);

constexpr const char* kWeek =
    "5:2010,2400,0,0,1;3450,3840,0,0,1;4890,5280,0,0,1;6330,6720,0,0,1;7770,8160,0,0,1";

// A query that needs no symbol.
QueryBuilder Plain() {
  return QueryBuilder(QUERY_TYPE_SYMBOL_DATA, QUERY_VERB_MODIFY);
}
QueryBuilder WithChart() {
  return Plain().AnyChart();
}

TEST(SymbolDataWhere, EveryConditionReachesItsAccessor) {
  const std::string long20(20, 'x');
  const AccessorCase<Where> cases[] = {
      {17, "NYSE", Read<&Where::GetExchangeName>, "NYSE"},
      {17, "12345678", Read<&Where::GetExchangeName>, "1234567"},
      {17, "NYSE", Read<&Where::GetExchangeListed>, "0"},
      {31, "us:IBM", Read<&Where::GetSymbol>, "IBM"},
      {31, "1234567890123456789012345678901", Read<&Where::GetSymbol>,
       "123456789012345678901234567890"},
      {190, "15", Read<&Where::GetCategory>, "15"},
      {190, "257", Read<&Where::GetCategory>, "1"},
      {190, "", Read<&Where::GetCategory>, "0"},
      {207, "3", Read<&Where::GetDataSource>, "3"},
      {207, "-1", Read<&Where::GetDataSource>, "255"},
      {297, "", Read<&Where::GetExchangeTimeZone>, "65535"},
      {297, "", Read<&Where::GetExchangeName>, kAbsent},
      {297, "NYSE", Read<&Where::GetExchangeName>, "NYSE"},
      {297, "NYSE", Read<&Where::GetExchangeTimeZone>, kAbsent},
      {298, "0", Read<&Where::GetTimeZone>, "true", "false"},
      {298, "", Read<&Where::GetTimeZone>, "true", "false"},
      {365, "42", Read<&Where::GetTransactionID>, "42"},
      {365, "0", Read<&Where::GetTransactionID>, "0"},
      {425, "2", Read<&Where::GetReloadCache>, "2"},
      {425, "", Read<&Where::GetReloadCache>, "0"},
      {432, "-2", Read<&Where::GetTickTradeMask>, "-2"},
      {432, "4294967295", Read<&Where::GetTickTradeMask>, "-1"},
      {435, "0", Read<&Where::IsGroupByAdd>, "false", "true"},
      {435, "2", Read<&Where::IsGroupByAdd>, "false", "true"},
      {435, "-1", Read<&Where::IsGroupByAdd>, "true", "true"},
      {435, "", Read<&Where::IsGroupByAdd>, "false", "true"},
      {445, "A,B", Read<&Where::GetEcnList>, "A,B"},
      {445, "12345678901234567", Read<&Where::GetEcnList>, "1234567890123456"},
      {445, "", Read<&Where::GetEcnList>, kAbsent},
      {446, long20.c_str(), Read<&Where::GetECNOrders>, long20},
      {446, "", Read<&Where::GetECNOrders>, kAbsent},
      {466, "7", Read<&Where::GetArchiveFlags>, "7"},
      {466, "0", Read<&Where::GetArchiveFlags>, "0"},
      {476, "48", Read<&Where::GetSymDataFlag>, "48", "0"},
      {502, "-5", Read<&Where::GetBarsRemaining>, "-5", "0"},
      {514, "JP", Read<&Where::GetCountryCode>, "JP", ""},
      {514, "us", Read<&Where::GetCountryCode>, "", ""},
      {514, "US", Read<&Where::GetCountryCode>, "", ""},
      {514, "uS", Read<&Where::GetCountryCode>, "", ""},
      {514, "USA", Read<&Where::GetCountryCode>, "USA", ""},
      {514, "U", Read<&Where::GetCountryCode>, "U", ""},
      {525, "9", Read<&Where::GetAccountCurrency>, "9", "0"},
      {525, "256", Read<&Where::GetAccountCurrency>, "0", "0"},
      // No condition reaches these.
      {17, "NYSE", Read<&Where::GetUserDefinedField>, kAbsent},
      {17, "NYSE", Read<&Where::GetHistoryInChunks>, "false", "false"},
      {17, "NYSE", Read<&Where::GetSplitAdj>, "true", "true"},
      {17, "NYSE", Read<&Where::GetDistributionAdj>, "true", "true"},
      {17, "NYSE", Read<&Where::GetPriceMultiAdj>, "true", "true"},
      {17, "NYSE", Read<&Where::GetVolMultiAdj>, "true", "true"},
  };
  for (const auto& row : cases) {
    for (const bool hasChart : {false, true}) {
      SCOPED_TRACE(testing::Message()
                   << row.field << "=\"" << row.value << "\", chart " << hasChart);
      Where where;
      ASSERT_EQ(where.Create(hasChart ? WithChart() : Plain()), 1);
      EXPECT_EQ(row.read(where), row.without);
      QueryBuilder info = hasChart ? WithChart() : Plain();
      ASSERT_EQ(where.Create(info.Where(row.field, row.value)), 1);
      EXPECT_EQ(row.read(where), row.expected);
    }
  }
}

enum class Chartless { kIgnored, kRefused };

TEST(SymbolDataWhere, EveryConditionOfTheChartReachesItsAccessorWithOneAlone) {
  struct ChartCase : AccessorCase<Where> {
    Chartless chartless = Chartless::kIgnored;
  };
  const ChartCase cases[] = {
      {{219, kWeek, Read<&Where::GetSession>, kWeek}, Chartless::kRefused},
      // A calendar whose text breaks off is what was complete of it.
      {{219, "2:2010,2400,0,0,1;3450", Read<&Where::GetSession>, "1:2010,2400,0,0,1"},
       Chartless::kRefused},
      {{228, "01/31/1997", Read<&Where::GetLastDate>, "day 35461"}},
      {{229, "30", Read<&Where::GetNumCalDaysBack>, "30"}},
      {{229, "-3", Read<&Where::GetNumCalDaysBack>, "0"}},
      {{229, "65535", Read<&Where::GetNumCalDaysBack>, "65535"}},
      {{229, "65536", Read<&Where::GetNumCalDaysBack>, "65535"}},
      {{229, "70000", Read<&Where::GetNumCalDaysBack>, "65535"}},
      {{229, "", Read<&Where::GetNumCalDaysBack>, "0"}},
      {{229, "x", Read<&Where::GetNumCalDaysBack>, "0"}},
      {{274, "30", Read<&Where::GetNumTradDaysBack>, "30"}},
      {{274, "-1", Read<&Where::GetNumTradDaysBack>, "0"}},
      {{274, "65536", Read<&Where::GetNumTradDaysBack>, "65535"}},
      {{275, "100000", Read<&Where::GetNumBarsBack>, "100000"}},
      {{275, "-1", Read<&Where::GetNumBarsBack>, "0"}},
      {{275, "4294967296", Read<&Where::GetNumBarsBack>, "0"}},
      {{275, "4294967295", Read<&Where::GetNumBarsBack>, "4294967295"}},
      {{276, "01/31/1997", Read<&Where::GetStartDate>, "day 35461"}},
      {{299, "01/31/1997", Read<&Where::GetDateOfSessions>, "day 35461"}, Chartless::kRefused},
      {{303, "9:30", Read<&Where::GetLastTime>, "second 34200"}},
      {{438, kWeek, Read<&Where::GetFilterSession>, kWeek}},
      {{439, "4294967295", Read<&Where::GetCABitMask>, "4294967295"}, Chartless::kRefused},
      {{439, "0", Read<&Where::GetCABitMask>, "0"}, Chartless::kRefused},
      {{458, "0", Read<&Where::GetSendEmptyBars>, "false"}},
      {{458, "0", Read<&Where::GetSendGhostBars>, "false"}},
      {{458, "1", Read<&Where::GetSendEmptyBars>, "true"}},
      {{458, "1", Read<&Where::GetSendGhostBars>, "false"}},
      {{458, "2", Read<&Where::GetSendEmptyBars>, "false"}},
      {{458, "2", Read<&Where::GetSendGhostBars>, "true"}},
      {{458, "3", Read<&Where::GetSendEmptyBars>, "true"}},
      {{458, "3", Read<&Where::GetSendGhostBars>, "true"}},
      {{458, "4", Read<&Where::GetSendEmptyBars>, kAbsent}},
      {{458, "4", Read<&Where::GetSendGhostBars>, kAbsent}},
      {{458, "-1", Read<&Where::GetSendEmptyBars>, kAbsent}},
      {{458, "4294967296", Read<&Where::GetSendEmptyBars>, kAbsent}},
      {{458, "", Read<&Where::GetSendEmptyBars>, "false"}},
      {{478, "9:30:15", Read<&Where::GetStartTime>, "second 34215"}},
      {{478, "soon", Read<&Where::GetStartTime>, kAbsent}},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(testing::Message() << row.field << "=\"" << row.value << '"');
    Where where;
    ASSERT_EQ(where.Create(WithChart()), 1);
    EXPECT_EQ(row.read(where), kAbsent);
    ASSERT_EQ(where.Create(WithChart().Where(row.field, row.value)), 1);
    EXPECT_EQ(row.read(where), row.expected);
    ASSERT_EQ(where.Create(Plain().Where(row.field, row.value)),
              row.chartless == Chartless::kIgnored ? 1 : 0);
    EXPECT_EQ(row.read(where), kAbsent);
  }
}

TEST(SymbolDataWhere, ValuesThatCannotBeReadFailWithAChartAndAreIgnoredWithout) {
  const struct {
    int field;
    const char* value;
    int expectedWithChart;
    int expectedWithout;
  } cases[] = {
      {17, "", 0, 0},          {31, "", 0, 0},
      {219, "", 0, 0},         {219, "2:100,300,0,0,1;200,400,0,0,1", 0, 0},
      {228, "", 0, 1},         {228, "13/01/1997", 0, 1},
      {276, "1997", 0, 1},     {299, "soon", 0, 0},
      {303, "25:00", 0, 1},    {303, "", 0, 1},
      {438, "nonsense", 0, 1}, {438, "", 0, 1},
      {478, "25:00", 1, 1},    {478, "", 1, 1},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(testing::Message() << row.field << "=\"" << row.value << '"');
    Where where;
    EXPECT_EQ(where.Create(WithChart().Where(row.field, row.value)), row.expectedWithChart);
    EXPECT_EQ(where.Create(Plain().Where(row.field, row.value)), row.expectedWithout);
  }
}

TEST(SymbolDataWhere, TakesTheseFieldsAndNoOther) {
  const std::vector<int> ofAny = {17,  31,  190, 207, 228, 229, 274, 275, 276, 297, 298,
                                  303, 365, 425, 432, 434, 435, 438, 445, 446, 449, 450,
                                  451, 458, 466, 476, 478, 502, 514, 520, 522, 523, 525};
  const std::vector<int> ofChart = {17,  31,  190, 207, 219, 228, 229, 274, 275, 276, 297, 298,
                                    299, 303, 365, 425, 432, 434, 435, 438, 439, 445, 446, 449,
                                    450, 451, 458, 466, 476, 478, 502, 514, 520, 522, 523, 525};
  const std::map<int, const char*> values = {
      {219, kWeek},        {228, "01/31/1997"}, {276, "01/31/1997"},
      {299, "01/31/1997"}, {303, "09:30"},      {438, kWeek},
  };
  const auto valueFor = [&](int field) {
    const auto at = values.find(field);
    return at != values.end() ? at->second : "1";
  };
  EXPECT_EQ(pxd::test::AcceptedFields<Where>(Plain(), valueFor), ofAny);
  // With a number of bars back and all, as five-minute bars have no quarrel with any condition.
  EXPECT_EQ(pxd::test::AcceptedFields<Where>(WithChart(), valueFor), ofChart);
}

TEST(SymbolDataWhere, TheMultiplierIsGivenWithTheNumberOfBarsAlone) {
  Where where;
  ASSERT_EQ(where.Create(WithChart().Where(434, "5")), 1);
  EXPECT_EQ(Read<&Where::GetBarsBackMult>(where), kAbsent);
  ASSERT_EQ(where.Create(WithChart().Where(275, "100")), 1);
  EXPECT_EQ(Read<&Where::GetBarsBackMult>(where), "0");
  const struct {
    const char* value;
    const char* expected;
  } cases[] = {{"5", "5"}, {"1", "1"},     {"0", "1"},    {"-4", "1"},
               {"", "1"},  {"65537", "1"}, {"65536", "0"}};
  for (const auto& row : cases) {
    ASSERT_EQ(where.Create(WithChart().Where(434, row.value).Where(275, "100")), 1);
    EXPECT_EQ(Read<&Where::GetBarsBackMult>(where), row.expected) << row.value;
  }
}

TEST(SymbolDataWhere, TheOrderBookHasDefaults) {
  int levelTwo = -1;
  int aggregate = -1;
  unsigned long levels = 77;
  Where where;
  EXPECT_TRUE(where.GetECNInfo(levelTwo, aggregate, levels));
  EXPECT_EQ(levelTwo, 1);
  EXPECT_EQ(aggregate, 1);
  EXPECT_EQ(levels, 5U);
  ASSERT_EQ(where.Create(Plain().Where(449, "-2").Where(450, "3").Where(451, "4294967297")), 1);
  EXPECT_TRUE(where.GetECNInfo(levelTwo, aggregate, levels));
  EXPECT_EQ(levelTwo, -2);
  EXPECT_EQ(aggregate, 3);
  EXPECT_EQ(levels, 1U);
}

TEST(SymbolDataWhere, NeedsASymbolUnlessTheVerbIsModifyOrSynch) {
  for (std::uint8_t verb = 0; verb < 8; ++verb) {
    const bool needsSymbol = verb != QUERY_VERB_MODIFY && verb != QUERY_VERB_SYNCH;
    Where where;
    EXPECT_EQ(where.Create(QueryBuilder(QUERY_TYPE_SYMBOL_DATA, verb)), needsSymbol ? 0 : 1);
    EXPECT_EQ(where.Create(QueryBuilder(QUERY_TYPE_SYMBOL_DATA, verb).Where(31, "IBM")), 1);
    EXPECT_EQ(where.IsAdvise(), verb == QUERY_VERB_ADVISE);
    EXPECT_EQ(where.IsModify(), verb == QUERY_VERB_MODIFY);
    EXPECT_EQ(where.IsSynch(), verb == QUERY_VERB_SYNCH);
  }
}

TEST(SymbolDataWhere, HasChartValuesOnceItWasCreated) {
  Where where;
  EXPECT_EQ(where.GetChartInfo(), nullptr);
  EXPECT_FALSE(where.HasChartInfo());
  EXPECT_EQ(Read<&Where::GetSession>(where), kAbsent);
  ASSERT_EQ(where.Create(Plain()), 1);
  EXPECT_NE(where.GetChartInfo(), nullptr);
  EXPECT_FALSE(where.HasChartInfo());
  ASSERT_EQ(where.Create(WithChart()), 1);
  EXPECT_TRUE(where.HasChartInfo());
}

TEST(SymbolDataWhere, KnowsItsGroup) {
  Where where;
  ASSERT_EQ(where.Create(Plain().GroupBy(0, {41})), 1);
  EXPECT_FALSE(where.HasGroupByInfo());
  EXPECT_EQ(where.GetGroupByID(), 0U);
  EXPECT_EQ(where.GetGroupByTransactionList(), nullptr);
  EXPECT_EQ(where.GetGroupBySize(), 0);
  ASSERT_EQ(where.Create(Plain().GroupBy(7, {41, 42})), 1);
  EXPECT_TRUE(where.HasGroupByInfo());
  EXPECT_EQ(where.GetGroupByID(), 7U);
  EXPECT_EQ(where.GetGroupBySize(), 2);
  EXPECT_EQ(where.GetGroupByTransactionList()[0], 41U);
  EXPECT_EQ(where.GetGroupByTransactionList()[1], 42U);
  EXPECT_EQ(where.GetGroupByTransactionList()[99], 0U);
  ASSERT_EQ(where.Create(Plain()), 1);
  EXPECT_FALSE(where.HasGroupByInfo());
}

TEST(SymbolDataWhere, AGroupNeverClaimsMoreThanItsList) {
  QueryBuilder info = Plain();
  info.GroupBy(7, {41});
  const struct {
    std::int16_t size;
    short expected;
  } cases[] = {{100, 100}, {101, 100}, {32767, 100}, {-1, 0}, {-32768, 0}};
  for (const auto& row : cases) {
    info->wGroupBySize = row.size;
    Where where;
    ASSERT_EQ(where.Create(info), 1);
    EXPECT_EQ(where.GetGroupBySize(), row.expected);
  }
}

TEST(SymbolDataWhere, PublicSettersNeedACreatedQuery) {
  Where where;
  where.SetStartDate(CZRDate(100), true);
  where.SetStartTime(CZRTime(1));
  where.SetLastDate(CZRDate(200));
  where.SetLastTime(CZRTime(2));
  EXPECT_EQ(where.GetChartInfo(), nullptr);
  ASSERT_EQ(where.Create(WithChart()), 1);
  EXPECT_EQ(Read<&Where::GetStartDate>(where), kAbsent);
  where.SetStartDate(CZRDate(100), false);
  where.SetStartTime(CZRTime(1));
  where.SetLastDate(CZRDate(200));
  where.SetLastTime(CZRTime(2));
  EXPECT_EQ(Read<&Where::GetStartDate>(where), "day 100");
  EXPECT_EQ(Read<&Where::GetStartTime>(where), "second 1");
  EXPECT_EQ(Read<&Where::GetLastDate>(where), "day 200");
  EXPECT_EQ(Read<&Where::GetLastTime>(where), "second 2");
  where.SetAdvise(true);
  EXPECT_TRUE(where.IsAdvise());
  where.SetAdvise(false);
  EXPECT_FALSE(where.IsAdvise());
}

TEST(SymbolDataWhere, AStartDateReplacesTheCountsWhereItIsToldTo) {
  Where where;
  ASSERT_EQ(
      where.Create(WithChart().Where(229, "1").Where(274, "2").Where(275, "3").Where(434, "4")), 1);
  where.SetStartDate(CZRDate(100), false);
  EXPECT_EQ(Read<&Where::GetNumCalDaysBack>(where), "1");
  EXPECT_EQ(Read<&Where::GetNumTradDaysBack>(where), "2");
  EXPECT_EQ(Read<&Where::GetNumBarsBack>(where), "3");
  where.SetStartDate(CZRDate(101), true);
  EXPECT_EQ(Read<&Where::GetStartDate>(where), "day 101");
  EXPECT_EQ(Read<&Where::GetNumCalDaysBack>(where), kAbsent);
  EXPECT_EQ(Read<&Where::GetNumTradDaysBack>(where), kAbsent);
  EXPECT_EQ(Read<&Where::GetNumBarsBack>(where), kAbsent);
  EXPECT_EQ(Read<&Where::GetBarsBackMult>(where), kAbsent);
}

TEST(SymbolDataWhere, AStartDateInTheConditionsReplacesNoCount) {
  Where where;
  ASSERT_EQ(where.Create(WithChart().Where(229, "1").Where(276, "01/31/1997")), 1);
  EXPECT_EQ(Read<&Where::GetNumCalDaysBack>(where), "1");
  EXPECT_EQ(Read<&Where::GetStartDate>(where), "day 35461");
}

struct OpenWhere : Where {
  using Where::SetDistributionAdj;
  using Where::SetExchangeListed;
  using Where::SetHistoryInChunks;
  using Where::SetPriceMultiAdj;
  using Where::SetSplitAdj;
  using Where::SetUserDefinedField;
  using Where::SetVolMultiAdj;
};

TEST(SymbolDataWhere, SomeValuesHaveASetterAlone) {
  OpenWhere where;
  ASSERT_EQ(where.Create(Plain()), 1);
  where.SetUserDefinedField(9);
  where.SetExchangeListed(65535);
  where.SetHistoryInChunks(true);
  where.SetSplitAdj(false);
  where.SetPriceMultiAdj(false);
  EXPECT_EQ(Read<&Where::GetUserDefinedField>(where), "9");
  EXPECT_EQ(Read<&Where::GetExchangeListed>(where), "65535");
  EXPECT_EQ(Read<&Where::GetExchangeName>(where), "");
  EXPECT_TRUE(where.GetHistoryInChunks());
  EXPECT_FALSE(where.GetSplitAdj());
  EXPECT_TRUE(where.GetDistributionAdj());
  EXPECT_FALSE(where.GetPriceMultiAdj());
  EXPECT_TRUE(where.GetVolMultiAdj());
  where.SetDistributionAdj(false);
  where.SetVolMultiAdj(false);
  EXPECT_FALSE(where.GetDistributionAdj());
  EXPECT_FALSE(where.GetVolMultiAdj());
  ASSERT_EQ(where.Create(Plain()), 1);
  EXPECT_TRUE(where.GetSplitAdj());
  EXPECT_FALSE(where.GetHistoryInChunks());
}

TEST(SymbolDataWhere, ASecondCreateForgetsWhatWasGiven) {
  Where where;
  ASSERT_EQ(where.Create(WithChart()
                             .Where(31, "IBM")
                             .Where(17, "NYSE")
                             .Where(298, "")
                             .Where(365, "42")
                             .Where(435, "0")
                             .Where(229, "30")
                             .GroupBy(7, {41})),
            1);
  ASSERT_EQ(where.Create(WithChart()), 1);
  EXPECT_EQ(Read<&Where::GetSymbol>(where), kAbsent);
  EXPECT_EQ(Read<&Where::GetExchangeName>(where), kAbsent);
  EXPECT_EQ(Read<&Where::GetTransactionID>(where), kAbsent);
  EXPECT_EQ(Read<&Where::GetNumCalDaysBack>(where), kAbsent);
  EXPECT_FALSE(where.GetTimeZone());
  EXPECT_TRUE(where.IsGroupByAdd());
  EXPECT_FALSE(where.HasGroupByInfo());
  // A symbol of an earlier query is no symbol of this one.
  EXPECT_EQ(where.Create(QueryBuilder(QUERY_TYPE_SYMBOL_DATA)), 0);
}

TEST(SymbolDataWhere, ASecondCreateKeepsTheValuesWithoutAPresence) {
  Where where;
  ASSERT_EQ(where.Create(Plain().Where(476, "48").Where(514, "JP").Where(445, "A")), 1);
  ASSERT_EQ(where.Create(Plain().Where(514, "us")), 1);
  EXPECT_EQ(where.GetSymDataFlag(), 48U);
  EXPECT_EQ(Read<&Where::GetEcnList>(where), "A");
  EXPECT_EQ(where.GetCountryCode(), "");
}

TEST(SymbolDataWhere, CopiesAreDeep) {
  Where where;
  ASSERT_EQ(where.Create(WithChart().Where(31, "IBM").Where(219, kWeek).GroupBy(7, {41, 42})), 1);
  Where copy(where);
  Where assigned;
  assigned = where;
  EXPECT_NE(copy.GetChartInfo(), where.GetChartInfo());
  EXPECT_NE(copy.GetGroupByTransactionList(), where.GetGroupByTransactionList());
  where.SetLastTime(CZRTime(5));
  EXPECT_EQ(Read<&Where::GetLastTime>(copy), kAbsent);
  ASSERT_EQ(where.Create(Plain()), 1);
  const Where& self = assigned;
  assigned = self;
  for (const Where* other : {&copy, &assigned}) {
    EXPECT_EQ(Read<&Where::GetSymbol>(*other), "IBM");
    EXPECT_EQ(Read<&Where::GetSession>(*other), kWeek);
    EXPECT_EQ(other->GetGroupByID(), 7U);
    EXPECT_EQ(other->GetGroupByTransactionList()[1], 42U);
  }
  copy = where;
  EXPECT_FALSE(copy.HasGroupByInfo());
  EXPECT_FALSE(copy.HasChartInfo());
}

TEST(SymbolDataWhere, ConditionsEndWithTheRecordsArrayWhateverTheCountSays) {
  QueryBuilder info = Plain();
  for (int i = 0; i < 20; ++i) {
    info.Where(365, std::to_string(i));
  }
  info->dwConditionCount = 0xFFFFFFFF;
  Where where;
  ASSERT_EQ(where.Create(info), 1);
  EXPECT_EQ(Read<&Where::GetTransactionID>(where), "19");
}

TEST(SymbolDataWhere, AValueWithoutItsNulEndsWithItsArray) {
  QueryBuilder info = Plain();
  info.Where(446, std::string(4096, 'x'));
  Where where;
  ASSERT_EQ(where.Create(info), 1);
  EXPECT_EQ(Read<&Where::GetECNOrders>(where), std::string(4096, 'x'));
}

TEST(SymbolDataWhere, AGroupIsAddedToFromTheStart) {
  const CZRGSClientSYMDATAQuery query;
  EXPECT_TRUE(query.GetWHEREClause()->IsGroupByAdd());
}

}  // namespace
