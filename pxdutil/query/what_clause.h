// CZRGSClientQueryWHATClause: the fields that a query asks for.
//
// It is the base of the WHAT clauses of all query classes. It is an array of field ids, in the
// order in which the query text names them:
//
//   const CZRGSClientQueryWHATClause& what = *query.GetWHATClause();
//   if (what.Find(201) >= 0) ...  // trades are wanted
//
// A clause is a value that belongs to one thread at a time.
#ifndef PXDUTIL_QUERY_WHAT_CLAUSE_H
#define PXDUTIL_QUERY_WHAT_CLAUSE_H

#include <pxdutil/foundation/export.h>
#include <pxdutil/foundation/list.h>
#include <pxdutil/query/query_info.h>

namespace pxd::detail {
struct QueryBuilder;
struct QueryRefusal;
}  // namespace pxd::detail

class PXDUTIL_API CZRGSClientQueryWHATClause : public CArray<unsigned short, unsigned short> {
 public:
  // Replaces the list by that of `info`; what it holds beyond 100 ids doesn't exist. Returns 1, or
  // 0 where a derived class refuses the list.
  virtual int Create(const QUERY_INFO& info) { return Fill(info, nullptr) ? 1 : 0; }

  // The index of the first entry with this id, -1 where there is none.
  [[nodiscard]] int Find(unsigned short field) const;

 protected:
  friend struct pxd::detail::QueryBuilder;

  // The body of Create, which also notes in `why` what it refuses, unless that is null.
  bool Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why);
};

#endif
