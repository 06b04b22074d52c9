#include <pxdutil/query/detail/parsed_query.h>

#include <algorithm>
#include <cstring>

#include <pxdutil/query/detail/query_parser.h>

namespace pxd::detail {

bool ParseQuery(std::string_view text, ParsedQuery& query) {
  NoQueryObserver nobody;
  return QueryParser<NoQueryObserver>(text, query, nobody).Parse();
}

namespace {

// The comparisons let a value that is not a number pass.
QueryRule CheckAnalysis(const ParsedQuery& query) {
  const float value = query.analysisValue;
  if (query.analysisType < kFirstAnalysis || query.analysisType > kLastAnalysis) {
    return QueryRule::AnalysisIncomplete;
  }
  if (query.chartSize.resolution.wQuantity == 0) {
    return QueryRule::ChartQuantityZero;
  }
  if (query.analysisType != kAnalysisWithTwoParams) {
    return value <= 0.0F ? QueryRule::AnalysisValue : QueryRule::None;
  }
  if (value == 0.0F) {
    return QueryRule::AnalysisValue;
  }
  return query.analysisParam1 == 0 ? QueryRule::AnalysisParameter : QueryRule::None;
}

}  // namespace

QueryRule CheckChart(ParsedQuery& query) {
  ZRGS_RESOLUTION& resolution = query.chartSize.resolution;
  const QueryRule quantity =
      resolution.wQuantity == 0 ? QueryRule::ChartQuantityZero : QueryRule::None;
  switch (query.chartKind) {
    case QUERY_CHART_TICK:
    case QUERY_CHART_VOLUME:
      return query.chartSize.dwCount == 0 ? QueryRule::ChartCountZero : QueryRule::None;
    case QUERY_CHART_BAR:
    case QUERY_CHART_CONVERSION:
      return quantity;
    case QUERY_CHART_ANALYSIS:
      return CheckAnalysis(query);
    case QUERY_CHART_OPTION:
      if (quantity == QueryRule::None &&
          (resolution.wUnit == kTickUnit || resolution.wUnit == kMinuteUnit)) {
        return QueryRule::OptionChartUnit;
      }
      return quantity;
    case QUERY_CHART_PRICE:
      // The text gives a number of minutes and no unit; the record has one, passed or not.
      resolution.wUnit = kMinuteUnit;
      return resolution.wQuantity <= kLongestPriceChart ? QueryRule::None
                                                        : QueryRule::PriceChartTooLong;
    case QUERY_CHART_NONE:
    case QUERY_CHART_CCA:
      return QueryRule::None;
  }
  return QueryRule::None;
}

namespace {

void ExpandConditions(const ParsedList<ParsedCondition, kMostConditions>& conditions,
                      QUERY_INFO& out) {
  out.dwConditionCount = conditions.count;
  // One more than count: field and operator of a condition that broke off stay in the record.
  const std::size_t used = std::min<std::size_t>(conditions.count + 1, kMostConditions);
  for (std::size_t i = 0; i < used; ++i) {
    const ParsedCondition& from = conditions.items[i];
    QUERY_CONDITION& to = out.conditions[i];
    to.wFieldID = from.field;
    to.dwOperator = from.op;
    std::copy(from.value.begin(), from.value.end(), static_cast<char*>(to.szValue));
  }
}

}  // namespace

void Expand(const ParsedQuery& query, QUERY_INFO& out) {
  std::memset(&out, 0, sizeof out);
  out.eQueryType = query.type;
  out.dwTransactionID = query.transactionID;
  out.bRequestType = query.verb;
  out.bHasChart = query.hasChart ? 1 : 0;
  out.dwChartKind = query.chartKind;
  out.wPrimaryField = query.primaryField;
  out.chartSize = query.chartSize;
  out.fAnalysisValue = query.analysisValue;
  out.dwAnalysisParam1 = query.analysisParam1;
  out.dwAnalysisParam2 = query.analysisParam2;
  out.wAnalysisType = query.analysisType;
  std::memcpy(out.wSnapShotFields, query.snapshot.items.data(), sizeof out.wSnapShotFields);
  out.dwSnapShotCount = query.snapshot.count;
  out.dwGroupByID = query.groupByID;
  std::memcpy(out.dwGroupByList, query.groupNumbers.data(), sizeof out.dwGroupByList);
  out.wGroupBySize = query.groupSize;
  std::memcpy(out.wWhatFields, query.what.items.data(), sizeof out.wWhatFields);
  out.dwWhatCount = query.what.count;
  ExpandConditions(query.conditions, out);
}

}  // namespace pxd::detail
