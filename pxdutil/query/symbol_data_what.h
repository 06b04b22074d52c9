// CZRGSClientSYMDATAQueryWHATClause: the fields and the chart that a symbol data query asks for.
//
//   if (const auto* chart = query.GetWHATClause()->GetChartInfo()) {
//     if (chart->chartKind == QUERY_CHART_BAR) use(chart->size.resolution);
//   }
//
// A clause is a value that belongs to one thread at a time; its copies are deep.
#ifndef PXDUTIL_QUERY_SYMBOL_DATA_WHAT_H
#define PXDUTIL_QUERY_SYMBOL_DATA_WHAT_H

#include <cstdint>

#include <pxdutil/foundation/export.h>
#include <pxdutil/foundation/list.h>
#include <pxdutil/query/detail/clause_values.h>
#include <pxdutil/query/query_info.h>
#include <pxdutil/query/what_clause.h>

class PXDUTIL_API CZRGSClientSYMDATAQueryWHATClause : public CZRGSClientQueryWHATClause {
 public:
  // The chart, with 0 for what its kind doesn't have.
  struct CHART_INFO {
    std::uint8_t chartKind = 0;      // a QUERY_CHART_KIND
    std::uint16_t primaryField = 0;  // the field that it shows
    QUERY_CHART_SIZE size = {};      // a count for tick and volume charts, else a resolution
    // The parameters of an analysis chart, and its type, 600 to 606.
    float analysisValue = 0;
    std::int32_t analysisParam1 = 0;
    std::int32_t analysisParam2 = 0;
    std::uint16_t analysisType = 0;
    // The ids of the snapshot list.
    CArray<unsigned short, unsigned short> snapshotFields;
  };

  // Takes the list and the chart. Returns 1, or 0 where an option, CCA or conversion chart comes
  // with other fields, where a bar, option or conversion chart is wider than 3600 seconds, 1 day, 1
  // week or 1 month, or where there is no memory for the chart.
  int Create(const QUERY_INFO& info) override { return Fill(info, nullptr) ? 1 : 0; }

  // The chart, owned by the clause; null where the query has none.
  [[nodiscard]] bool HasChartInfo() const { return m_chartInfo.Get() != nullptr; }
  [[nodiscard]] const CHART_INFO* GetChartInfo() const { return m_chartInfo.Get(); }
  // The field that the chart shows, 0 without a chart of a known kind.
  [[nodiscard]] unsigned short GetPrimaryField() const;

 protected:
  friend struct pxd::detail::QueryBuilder;
  bool Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why);

 private:
  pxd::detail::OwnedRecord<CHART_INFO> m_chartInfo;
};

#endif
