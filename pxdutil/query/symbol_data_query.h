// CZRGSClientSYMDATAQuery: asks for the quotes and the chart history of one symbol. It serves the
// sources SYMBOL_DATA, QUOTE, CHART and SYMBOL_INFO.
//
//   CZRGSClientSYMDATAQuery query;
//   const char* symbol = nullptr;
//   if (query.Create(info) && query.GetWHEREClause()->GetSymbol(symbol)) ...
//
// As with all query classes: build one object a query, and throw it away where Create returned 0,
// for it may be half filled. Objects are values and belong to one thread at a time.
#ifndef PXDUTIL_QUERY_SYMBOL_DATA_QUERY_H
#define PXDUTIL_QUERY_SYMBOL_DATA_QUERY_H

#include <pxdutil/foundation/export.h>
#include <pxdutil/query/query_info.h>
#include <pxdutil/query/symbol_data_what.h>
#include <pxdutil/query/symbol_data_where.h>

class PXDUTIL_API CZRGSClientSYMDATAQuery {
 public:
  // 1 where both clauses take the query and suit each other, else 0. An analysis or a price chart
  // takes no number of bars back (275); a price chart of quantity 0 needs a start time (478);
  // weekly and monthly bars can't be sent with empty bars (458).
  int Create(const QUERY_INFO& info);

  // Whether the verb is ADVISE; and the clauses, which live as long as this object.
  [[nodiscard]] bool IsAdvise() const { return m_where.IsAdvise(); }
  [[nodiscard]] const CZRGSClientSYMDATAQueryWHATClause* GetWHATClause() const { return &m_what; }
  [[nodiscard]] const CZRGSClientSYMDATAQueryWHEREClause* GetWHEREClause() const {
    return &m_where;
  }

 private:
  friend struct pxd::detail::QueryBuilder;
  bool Agrees(const QUERY_INFO& info, pxd::detail::QueryRefusal* why) const;

  CZRGSClientSYMDATAQueryWHATClause m_what;
  CZRGSClientSYMDATAQueryWHEREClause m_where;
};

#endif
