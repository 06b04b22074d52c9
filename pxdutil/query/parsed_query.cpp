#include <pxdutil/query/detail/parsed_query.h>

#include <algorithm>
#include <cstring>

#include <pxdutil/query/detail/query_parser.h>

namespace pxd::detail {

// All of the descent in one function keeps the place in the text in a register.
#if defined(__GNUC__)
[[gnu::flatten]]
#endif
bool ParseQuery(const char* text, ParsedQuery& query) {
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

// Any list goes into the front of its array, by memory: no reference to its packed items may be
// formed.
template <class T, std::size_t kMost>
void ExpandList(const ParsedList<T, kMost>& list, void* out) {
  std::memcpy(out, list.items.data(), list.count * sizeof(T));
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
  ExpandList(query.snapshot, out.wSnapShotFields);
  out.dwSnapShotCount = query.snapshot.count;
  out.dwGroupByID = query.groupByID;
  ExpandList(query.groupNumbers, out.dwGroupByList);
  out.wGroupBySize = query.groupSize;
  ExpandList(query.what, out.wWhatFields);
  out.dwWhatCount = query.what.count;
  const std::uint32_t conditions = query.conditions.count + (query.hasBrokenCondition ? 1 : 0);
  for (std::uint32_t i = 0; i < conditions; ++i) {
    const ParsedCondition& from = query.conditions.items[i];
    QUERY_CONDITION& to = out.conditions[i];
    to.wFieldID = from.field;
    to.dwOperator = from.op;
    std::copy(from.value.begin(), from.value.end(), static_cast<char*>(to.szValue));
  }
  out.dwConditionCount = query.conditions.count;
}

}  // namespace pxd::detail
