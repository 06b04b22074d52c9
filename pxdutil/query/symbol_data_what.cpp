#include <pxdutil/query/symbol_data_what.h>

#include <iterator>

#include <pxdutil/query/detail/query_counts.h>
#include <pxdutil/query/detail/query_refusal.h>

using pxd::detail::kNoRule;
using pxd::detail::QueryRefusal;
using pxd::detail::Rule;

namespace {

using ChartInfo = CZRGSClientSYMDATAQueryWHATClause::CHART_INFO;

// Where in the copying a chart refuses that fields are asked for beside it.
enum class Fields { kWelcome, kRefusedFirst, kRefusedLast };

// What a kind of chart brings with it and what it demands.
struct ChartKind {
  bool hasAnalysis = false;
  Fields fields = Fields::kWelcome;
  bool isLimited = false;
};

// By QUERY_CHART_KIND.
constexpr ChartKind kKinds[] = {
    {},                                                    // none
    {},                                                    // TICKCHART
    {.isLimited = true},                                   // BARCHART
    {.hasAnalysis = true},                                 // ANALYSIS
    {},                                                    // VOLUMECHART
    {.fields = Fields::kRefusedFirst, .isLimited = true},  // OPTIONCHART
    {.fields = Fields::kRefusedLast},                      // CCACHART
    {.fields = Fields::kRefusedFirst, .isLimited = true},  // CONVERSIONCHART
    {},                                                    // PRICECHART
};
static_assert(std::size(kKinds) == QUERY_CHART_PRICE + 1);

bool IsKnown(std::uint32_t kind) {
  return kind != QUERY_CHART_NONE && kind < std::size(kKinds);
}

Rule LimitBrokenBy(const ZRGS_RESOLUTION& resolution) {
  constexpr std::uint16_t kSecond = 2;
  constexpr std::uint16_t kDay = 4;
  constexpr std::uint16_t kMonth = 6;
  if (resolution.wUnit == kSecond && resolution.wQuantity > 3600) {
    return "the points of the chart mustn't be wider than 3600 seconds";
  }
  if (resolution.wUnit >= kDay && resolution.wUnit <= kMonth && resolution.wQuantity > 1) {
    return "the points of the chart mustn't be wider than 1 day, 1 week or 1 month";
  }
  return kNoRule;
}

// Copies what a chart of this kind has, up to the rule that it breaks.
Rule CopyChart(const QUERY_INFO& info, bool asksForFields, ChartInfo& chart) {
  constexpr Rule kAlone = "no field may be asked for beside a chart of this kind";
  const ChartKind& kind = kKinds[info.dwChartKind];
  if (kind.fields == Fields::kRefusedFirst && asksForFields) {
    return kAlone;
  }
  chart.primaryField = info.wPrimaryField;
  chart.size = info.chartSize;
  if (kind.hasAnalysis) {
    chart.analysisValue = info.fAnalysisValue;
    chart.analysisParam1 = info.dwAnalysisParam1;
    chart.analysisParam2 = info.dwAnalysisParam2;
    chart.analysisType = info.wAnalysisType;
  }
  if (kind.fields == Fields::kRefusedLast && asksForFields) {
    return kAlone;
  }
  return kind.isLimited ? LimitBrokenBy(chart.size.resolution) : kNoRule;
}

}  // namespace

bool CZRGSClientSYMDATAQueryWHATClause::Fill(const QUERY_INFO& info, QueryRefusal* why) {
  m_chartInfo.Free();
  if (!CZRGSClientQueryWHATClause::Fill(info, why)) {
    return false;
  }
  if (info.bHasChart == 0) {
    return true;
  }
  if (!m_chartInfo.Renew()) {
    return Refuse(why, "there must be memory for the chart");
  }
  CHART_INFO& chart = *m_chartInfo.Get();
  chart.chartKind = static_cast<std::uint8_t>(info.dwChartKind);
  // A kind from a later day has nothing that is known here, and that is no reason to refuse it.
  if (IsKnown(info.dwChartKind) && !Passes(why, CopyChart(info, !IsEmpty(), chart))) {
    return false;
  }
  for (int i = 0; i < pxd::detail::SnapShotCount(info); ++i) {
    chart.snapshotFields.Add(info.wSnapShotFields[i]);
  }
  return true;
}

unsigned short CZRGSClientSYMDATAQueryWHATClause::GetPrimaryField() const {
  const CHART_INFO* const chart = GetChartInfo();
  return chart != nullptr && IsKnown(chart->chartKind) ? chart->primaryField
                                                       : static_cast<unsigned short>(0);
}
