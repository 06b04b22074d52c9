#include <pxdutil/query/symbol_data_what.h>

#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

#include "tests/query/query_builder.h"

namespace {

using pxd::test::QueryBuilder;
using What = CZRGSClientSYMDATAQueryWHATClause;

constexpr std::uint16_t kTick = 1;
constexpr std::uint16_t kSecond = 2;
constexpr std::uint16_t kMinute = 3;
constexpr std::uint16_t kDay = 4;
constexpr std::uint16_t kWeek = 5;
constexpr std::uint16_t kMonth = 6;
constexpr std::uint16_t kYear = 7;

// A chart with something in every field.
QueryBuilder FullChart(std::uint32_t kind) {
  QueryBuilder info(QUERY_TYPE_SYMBOL_DATA);
  info.Chart(kind, kMinute, 5, 201).SnapShot({8, 11});
  info->fAnalysisValue = 2.5F;
  info->dwAnalysisParam1 = -7;
  info->dwAnalysisParam2 = 9;
  info->wAnalysisType = 604;
  return info;
}

TEST(SymbolDataWhat, HasNoChartBeforeCreateAndWithoutOne) {
  What what;
  EXPECT_FALSE(what.HasChartInfo());
  EXPECT_EQ(what.GetChartInfo(), nullptr);
  EXPECT_EQ(what.GetPrimaryField(), 0);
  QueryBuilder info = FullChart(QUERY_CHART_BAR);
  info->bHasChart = 0;
  EXPECT_EQ(what.Create(info.What({7})), 1);
  EXPECT_FALSE(what.HasChartInfo());
  EXPECT_EQ(what.GetChartInfo(), nullptr);
  EXPECT_EQ(what.GetPrimaryField(), 0);
  EXPECT_EQ(what.Find(7), 0);
}

TEST(SymbolDataWhat, AnEmptyListIsTaken) {
  What what;
  EXPECT_EQ(what.Create(QueryBuilder(QUERY_TYPE_SYMBOL_DATA)), 1);
}

TEST(SymbolDataWhat, EachKindCopiesWhatItHas) {
  for (std::uint32_t kind = 0; kind <= 10; ++kind) {
    SCOPED_TRACE(kind);
    const bool isKnown = kind >= 1 && kind <= 8;
    const bool hasAnalysis = kind == QUERY_CHART_ANALYSIS;
    What what;
    ASSERT_EQ(what.Create(FullChart(kind)), 1);
    ASSERT_TRUE(what.HasChartInfo());
    const What::CHART_INFO& chart = *what.GetChartInfo();
    EXPECT_EQ(chart.chartKind, kind);
    EXPECT_EQ(chart.primaryField, isKnown ? 201 : 0);
    EXPECT_EQ(chart.size.resolution.wUnit, isKnown ? kMinute : 0);
    EXPECT_EQ(chart.size.resolution.wQuantity, isKnown ? 5 : 0);
    EXPECT_EQ(chart.analysisValue, hasAnalysis ? 2.5F : 0.0F);
    EXPECT_EQ(chart.analysisParam1, hasAnalysis ? -7 : 0);
    EXPECT_EQ(chart.analysisParam2, hasAnalysis ? 9 : 0);
    EXPECT_EQ(chart.analysisType, hasAnalysis ? 604 : 0);
    ASSERT_EQ(chart.snapshotFields.GetSize(), 2);
    EXPECT_EQ(chart.snapshotFields[0], 8);
    EXPECT_EQ(chart.snapshotFields[1], 11);
    EXPECT_EQ(what.GetPrimaryField(), isKnown ? 201 : 0);
  }
}

TEST(SymbolDataWhat, AKindBeyondAByteIsAnUnknownKind) {
  What what;
  EXPECT_EQ(what.Create(FullChart(256 + QUERY_CHART_OPTION).What({7})), 1);
  EXPECT_EQ(what.GetChartInfo()->primaryField, 0);
}

TEST(SymbolDataWhat, TickChartsHaveACount) {
  What what;
  ASSERT_EQ(what.Create(QueryBuilder().CountChart(QUERY_CHART_TICK, 1'000'000)), 1);
  EXPECT_EQ(what.GetChartInfo()->size.dwCount, 1'000'000U);
}

TEST(SymbolDataWhat, SomeChartsRefuseFieldsBesideThem) {
  for (std::uint32_t kind = 0; kind <= 9; ++kind) {
    const bool refuses =
        kind == QUERY_CHART_OPTION || kind == QUERY_CHART_CCA || kind == QUERY_CHART_CONVERSION;
    What what;
    EXPECT_EQ(what.Create(FullChart(kind).What({7})) == 0, refuses) << kind;
    EXPECT_EQ(what.Create(FullChart(kind)), 1) << kind;
  }
}

// A refused query is to be thrown away, but until then it shows how far its chart was copied.
TEST(SymbolDataWhat, ARefusedChartIsCopiedUpToTheRuleThatItBreaks) {
  const struct {
    const char* what;
    QueryBuilder info;
    std::uint32_t kind;
    std::uint16_t primaryField;
    std::uint16_t quantity;
  } cases[] = {
      {"fields are refused first", FullChart(QUERY_CHART_OPTION).What({7}), QUERY_CHART_OPTION, 0,
       0},
      {"fields are refused first", FullChart(QUERY_CHART_CONVERSION).What({7}),
       QUERY_CHART_CONVERSION, 0, 0},
      {"fields are refused last", FullChart(QUERY_CHART_CCA).What({7}), QUERY_CHART_CCA, 201, 5},
      {"too wide", FullChart(QUERY_CHART_BAR).Chart(QUERY_CHART_BAR, kDay, 2), QUERY_CHART_BAR, 201,
       2},
      {"too wide", FullChart(QUERY_CHART_BAR).Chart(QUERY_CHART_OPTION, kDay, 2, 485),
       QUERY_CHART_OPTION, 485, 2},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(testing::Message() << row.what << ", kind " << row.kind);
    What what;
    EXPECT_EQ(what.Create(row.info), 0);
    ASSERT_TRUE(what.HasChartInfo());
    EXPECT_EQ(what.GetChartInfo()->chartKind, row.kind);
    EXPECT_EQ(what.GetPrimaryField(), row.primaryField);
    EXPECT_EQ(what.GetChartInfo()->size.resolution.wQuantity, row.quantity);
    EXPECT_TRUE(what.GetChartInfo()->snapshotFields.IsEmpty()) << "they come behind all rules";
  }
}

TEST(SymbolDataWhat, BarsHaveLimitsByTheirUnit) {
  const struct {
    std::uint16_t unit;
    std::uint16_t quantity;
    int expected;
  } cases[] = {
      {kTick, 65535, 1},   {kSecond, 1, 1},     {kSecond, 3600, 1}, {kSecond, 3601, 0},
      {kSecond, 65535, 0}, {kMinute, 65535, 1}, {kDay, 1, 1},       {kDay, 2, 0},
      {kWeek, 1, 1},       {kWeek, 2, 0},       {kMonth, 1, 1},     {kMonth, 2, 0},
      {kYear, 1, 1},       {kYear, 65535, 1},   {kDay, 0, 1},       {0, 65535, 1},
      {8, 65535, 1},
  };
  for (const auto& row : cases) {
    for (std::uint32_t kind = 1; kind <= 8; ++kind) {
      const bool isLimited =
          kind == QUERY_CHART_BAR || kind == QUERY_CHART_OPTION || kind == QUERY_CHART_CONVERSION;
      What what;
      EXPECT_EQ(what.Create(QueryBuilder().Chart(kind, row.unit, row.quantity)),
                isLimited ? row.expected : 1)
          << "kind " << kind << ", unit " << row.unit << ", quantity " << row.quantity;
    }
  }
}

TEST(SymbolDataWhat, SnapshotsEndWithTheRecordsArrayWhateverTheCountSays) {
  QueryBuilder info = FullChart(QUERY_CHART_BAR);
  for (int i = 0; i < 8; ++i) {
    info.SnapShot({100 + i});
  }
  info->dwSnapShotCount = 0xFFFFFFFF;
  What what;
  ASSERT_EQ(what.Create(info), 1);
  ASSERT_EQ(what.GetChartInfo()->snapshotFields.GetSize(), 10);
  EXPECT_EQ(what.GetChartInfo()->snapshotFields[9], 107);
}

TEST(SymbolDataWhat, ASecondCreateReplacesTheChart) {
  What what;
  ASSERT_EQ(what.Create(FullChart(QUERY_CHART_ANALYSIS)), 1);
  ASSERT_EQ(what.Create(QueryBuilder().Chart(QUERY_CHART_BAR, kDay, 1, 200)), 1);
  EXPECT_EQ(what.GetChartInfo()->chartKind, QUERY_CHART_BAR);
  EXPECT_EQ(what.GetChartInfo()->analysisType, 0);
  EXPECT_TRUE(what.GetChartInfo()->snapshotFields.IsEmpty());
  ASSERT_EQ(what.Create(QueryBuilder()), 1);
  EXPECT_FALSE(what.HasChartInfo());
}

TEST(SymbolDataWhat, CopiesAreDeep) {
  What what;
  ASSERT_EQ(what.Create(FullChart(QUERY_CHART_BAR).What({7})), 1);
  What copy(what);
  What assigned;
  assigned = what;
  EXPECT_NE(copy.GetChartInfo(), what.GetChartInfo());
  EXPECT_NE(assigned.GetChartInfo(), what.GetChartInfo());
  what.Create(QueryBuilder());
  for (const What* other : {&copy, &assigned}) {
    EXPECT_EQ(other->Find(7), 0);
    ASSERT_TRUE(other->HasChartInfo());
    EXPECT_EQ(other->GetPrimaryField(), 201);
    EXPECT_EQ(other->GetChartInfo()->snapshotFields.GetSize(), 2);
  }
  const What& self = copy;
  copy = self;
  ASSERT_TRUE(copy.HasChartInfo());
  EXPECT_EQ(copy.GetPrimaryField(), 201);
  copy = what;
  EXPECT_FALSE(copy.HasChartInfo());
}

}  // namespace
