#include <pxdutil/query/symbol_data_query.h>

#include <pxdutil/query/detail/query_builder.h>

using pxd::detail::QueryRefusal;

int CZRGSClientSYMDATAQuery::Create(const QUERY_INFO& info) {
  return pxd::detail::QueryBuilder::Build(*this, info, nullptr) ? 1 : 0;
}

bool CZRGSClientSYMDATAQuery::Agrees(const QUERY_INFO& info, QueryRefusal* why) const {
  static_cast<void>(info);
  const auto* const chart = m_what.GetChartInfo();
  if (chart == nullptr) {
    return true;
  }
  unsigned long bars = 0;
  const bool countsBars = m_where.GetNumBarsBack(bars);
  if (chart->chartKind == QUERY_CHART_ANALYSIS && countsBars) {
    return Refuse(why, "an analysis chart takes no number of bars back (275)");
  }
  if (chart->chartKind == QUERY_CHART_PRICE) {
    CZRTime start;
    if (countsBars) {
      return Refuse(why, "a price chart takes no number of bars back (275)");
    }
    if (chart->size.resolution.wQuantity == 0 && !m_where.GetStartTime(start)) {
      return Refuse(why, "a price chart of no minutes needs a start time (478)");
    }
  }
  // Charts that are sized by a count are judged by its low 16 bits as if they were a unit: clients
  // have come to live with that.
  constexpr std::uint16_t kWeek = 5;
  constexpr std::uint16_t kMonth = 6;
  const std::uint16_t unit = chart->size.resolution.wUnit;
  bool sendsEmpty = false;
  if (m_where.HasChartInfo() && m_where.GetSendEmptyBars(sendsEmpty) && sendsEmpty &&
      (unit == kWeek || unit == kMonth)) {
    return Refuse(why, "weekly and monthly bars can't be sent with empty bars (458)");
  }
  return true;
}
