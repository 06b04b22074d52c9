#include <pxdutil/query/symbol_data_query.h>

#include <cstdint>

#include <gtest/gtest.h>

#include "tests/query/accessors.h"
#include "tests/query/query_builder.h"
#include "tests/support/allocation_counter.h"

namespace {

using pxd::test::QueryBuilder;
using pxd::test::Read;
using pxd::test::ScarceMemory;
using Query = CZRGSClientSYMDATAQuery;
using Where = CZRGSClientSYMDATAQueryWHEREClause;

constexpr std::uint16_t kMinute = 3;

int Created(const QUERY_INFO& info) {
  Query query;
  return query.Create(info);
}

QueryBuilder Ibm() {
  return QueryBuilder(QUERY_TYPE_SYMBOL_DATA).Where(31, "IBM");
}

TEST(SymbolDataQuery, TakesAQuoteWithASymbol) {
  Query query;
  ASSERT_EQ(query.Create(Ibm().What({7, 10}).Verb(QUERY_VERB_ADVISE)), 1);
  EXPECT_TRUE(query.IsAdvise());
  EXPECT_EQ(query.GetWHATClause()->Find(10), 1);
  EXPECT_EQ(Read<&Where::GetSymbol>(*query.GetWHEREClause()), "IBM");
}

TEST(SymbolDataQuery, NeedsASymbolUnlessItModifies) {
  EXPECT_EQ(Created(QueryBuilder(QUERY_TYPE_SYMBOL_DATA, QUERY_VERB_REQUEST).What({7})), 0);
  EXPECT_EQ(Created(QueryBuilder(QUERY_TYPE_SYMBOL_DATA, QUERY_VERB_MODIFY).What({7})), 1);
}

TEST(SymbolDataQuery, DoesNotLookAtItsSource) {
  QueryBuilder info = Ibm();
  info->eQueryType = QUERY_TYPE_NEWS;
  EXPECT_EQ(Created(info.What({7})), 1);
}

TEST(SymbolDataQuery, TheWhatClauseMayRefuse) {
  EXPECT_EQ(Created(Ibm().Chart(QUERY_CHART_BAR, 2, 3600)), 1);
  EXPECT_EQ(Created(Ibm().Chart(QUERY_CHART_BAR, 2, 3601)), 0);
  EXPECT_EQ(Created(Ibm().Chart(QUERY_CHART_BAR, 4, 2)), 0);
  EXPECT_EQ(Created(Ibm().Chart(QUERY_CHART_OPTION, 4, 1, 485)), 1);
  EXPECT_EQ(Created(Ibm().Chart(QUERY_CHART_OPTION, 4, 1, 485).What({7})), 0);
}

TEST(SymbolDataQuery, AnalysisAndPriceChartsTakeNoNumberOfBars) {
  for (std::uint32_t kind = 1; kind <= 8; ++kind) {
    const bool refuses = kind == QUERY_CHART_ANALYSIS || kind == QUERY_CHART_PRICE;
    EXPECT_EQ(Created(Ibm().Chart(kind, kMinute, 5).Where(275, "0")) == 0, refuses) << kind;
    EXPECT_EQ(Created(Ibm().Chart(kind, kMinute, 5)), 1) << kind;
    EXPECT_EQ(Created(Ibm().Chart(kind, kMinute, 5).Where(434, "3")), 1) << kind;
  }
}

TEST(SymbolDataQuery, APriceChartOfNoMinutesNeedsAStartTime) {
  EXPECT_EQ(Created(Ibm().Chart(QUERY_CHART_PRICE, kMinute, 0)), 0);
  EXPECT_EQ(Created(Ibm().Chart(QUERY_CHART_PRICE, kMinute, 0).Where(478, "soon")), 0);
  EXPECT_EQ(Created(Ibm().Chart(QUERY_CHART_PRICE, kMinute, 0).Where(478, "09:30")), 1);
  EXPECT_EQ(Created(Ibm().Chart(QUERY_CHART_PRICE, kMinute, 1)), 1);
  EXPECT_EQ(Created(Ibm().Chart(QUERY_CHART_BAR, kMinute, 0)), 1);
}

TEST(SymbolDataQuery, WeeklyAndMonthlyBarsCannotBeSentWithEmptyOnes) {
  for (std::uint16_t unit = 1; unit <= 8; ++unit) {
    const bool refuses = unit == 5 || unit == 6;
    EXPECT_EQ(Created(Ibm().Chart(QUERY_CHART_BAR, unit, 1).Where(458, "1")) == 0, refuses);
    EXPECT_EQ(Created(Ibm().Chart(QUERY_CHART_BAR, unit, 1).Where(458, "3")) == 0, refuses);
    EXPECT_EQ(Created(Ibm().Chart(QUERY_CHART_BAR, unit, 1).Where(458, "2")), 1) << unit;
    EXPECT_EQ(Created(Ibm().Chart(QUERY_CHART_BAR, unit, 1).Where(458, "4")), 1) << unit;
    EXPECT_EQ(Created(Ibm().Chart(QUERY_CHART_BAR, unit, 1)), 1) << unit;
  }
}

// The test on the unit looks at the first 16 bits whatever stands there.
TEST(SymbolDataQuery, ACountWhoseLowBitsLookLikeAWeekIsRefusedWithEmptyBarsOnPurpose) {
  for (const std::uint32_t kind : {QUERY_CHART_TICK, QUERY_CHART_VOLUME}) {
    EXPECT_EQ(Created(Ibm().CountChart(kind, 4).Where(458, "1")), 1);
    EXPECT_EQ(Created(Ibm().CountChart(kind, 5).Where(458, "1")), 0);
    EXPECT_EQ(Created(Ibm().CountChart(kind, 6).Where(458, "1")), 0);
    EXPECT_EQ(Created(Ibm().CountChart(kind, 7).Where(458, "1")), 1);
    EXPECT_EQ(Created(Ibm().CountChart(kind, 65536 + 5).Where(458, "1")), 0);
    EXPECT_EQ(Created(Ibm().CountChart(kind, 5 * 65536).Where(458, "1")), 1);
  }
}

TEST(SymbolDataQuery, ReadsTheWholeExample) {
  QueryBuilder info(QUERY_TYPE_SYMBOL_DATA, QUERY_VERB_ADVISE);
  info.What({7, 10}).Chart(QUERY_CHART_BAR, kMinute, 5, 201).SnapShot({8, 11});
  info.Where(31, "ABC").Where(229, "30").Where(365, "42").GroupBy(7, {41, 42});
  Query query;
  ASSERT_EQ(query.Create(info), 1);
  const auto& what = *query.GetWHATClause();
  const auto& where = *query.GetWHEREClause();
  EXPECT_EQ(what.GetSize(), 2);
  EXPECT_EQ(what.GetPrimaryField(), 201);
  EXPECT_EQ(what.GetChartInfo()->size.resolution.wQuantity, 5);
  EXPECT_EQ(what.GetChartInfo()->snapshotFields[1], 11);
  EXPECT_TRUE(query.IsAdvise());
  EXPECT_EQ(Read<&Where::GetSymbol>(where), "ABC");
  EXPECT_EQ(Read<&Where::GetNumCalDaysBack>(where), "30");
  EXPECT_EQ(Read<&Where::GetTransactionID>(where), "42");
  EXPECT_EQ(where.GetGroupByID(), 7U);
  EXPECT_EQ(where.GetGroupBySize(), 2);
}

TEST(SymbolDataQuery, MemoryThatRunsOutRefusesTheClause) {
  const QueryBuilder chart = Ibm().AnyChart();
  const QueryBuilder group = Ibm().GroupBy(7, {41});
  CZRGSClientSYMDATAQueryWHATClause what;
  Where where;
  int created[3] = {1, 1, 1};
  {
    const ScarceMemory none(0);
    created[0] = what.Create(chart);
    created[1] = where.Create(chart);
  }
  {
    const ScarceMemory one(1);
    created[2] = where.Create(group);
  }
  EXPECT_EQ(created[0], 0);
  EXPECT_FALSE(what.HasChartInfo());
  EXPECT_EQ(created[1], 0);
  EXPECT_EQ(created[2], 0);
  EXPECT_FALSE(where.HasGroupByInfo());
  EXPECT_EQ(where.GetGroupByID(), 0U);
  EXPECT_EQ(where.Create(group), 1);
}

TEST(SymbolDataQuery, CopiesAreDeep) {
  Query query;
  ASSERT_EQ(query.Create(Ibm().AnyChart().GroupBy(7, {41})), 1);
  const Query copy(query);
  Query assigned;
  assigned = query;
  EXPECT_NE(copy.GetWHATClause()->GetChartInfo(), query.GetWHATClause()->GetChartInfo());
  EXPECT_NE(copy.GetWHEREClause()->GetChartInfo(), query.GetWHEREClause()->GetChartInfo());
  ASSERT_EQ(query.Create(QueryBuilder(QUERY_TYPE_SYMBOL_DATA, QUERY_VERB_SYNCH)), 1);
  for (const Query* other : {&copy, static_cast<const Query*>(&assigned)}) {
    EXPECT_TRUE(other->GetWHATClause()->HasChartInfo());
    EXPECT_EQ(other->GetWHEREClause()->GetGroupByID(), 7U);
    EXPECT_EQ(Read<&Where::GetSymbol>(*other->GetWHEREClause()), "IBM");
  }
  EXPECT_FALSE(query.GetWHATClause()->HasChartInfo());
}

}  // namespace
