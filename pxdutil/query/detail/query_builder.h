// How every query object is made from a QUERY_INFO: the one Create of all query classes.
#ifndef PXDUTIL_QUERY_DETAIL_QUERY_BUILDER_H
#define PXDUTIL_QUERY_DETAIL_QUERY_BUILDER_H

#include <pxdutil/query/detail/query_refusal.h>
#include <pxdutil/query/query_info.h>

namespace pxd::detail {

// Every query class and clause has it for a friend.
struct QueryBuilder {
  // WHAT first, then WHERE, then what the class demands of the two together. Stops at the first
  // refusal and notes it in `why`, unless that is null.
  template <class Query>
  static bool Build(Query& query, const QUERY_INFO& info, QueryRefusal* why) {
    if (!BuildWhat(query.m_what, info, why) || !query.m_where.Fill(info, why)) {
      return false;
    }
    if constexpr (requires { query.Agrees(info, why); }) {
      return query.Agrees(info, why);
    } else {
      return true;
    }
  }

 private:
  // Each clause's Create is its Fill with nobody listening.
  template <class What>
  static bool BuildWhat(What& what, const QUERY_INFO& info, QueryRefusal* why) {
    return why == nullptr ? what.Create(info) != 0 : what.Fill(info, why);
  }
};

}  // namespace pxd::detail

#endif
