// What the WHAT clauses demand of their lists.
#ifndef PXDUTIL_QUERY_DETAIL_WHAT_RULES_H
#define PXDUTIL_QUERY_DETAIL_WHAT_RULES_H

#include <algorithm>
#include <initializer_list>

#include <pxdutil/query/what_clause.h>

namespace pxd::detail {

// Whether one of these fields is asked for.
inline bool AsksForOneOf(const CZRGSClientQueryWHATClause& what,
                         std::initializer_list<unsigned short> fields) {
  return std::any_of(fields.begin(), fields.end(),
                     [&what](unsigned short field) { return what.Find(field) >= 0; });
}

}  // namespace pxd::detail

#endif
