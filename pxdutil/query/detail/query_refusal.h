// Why the query classes refuse a query.
//
// A Create says no more than 0 or 1. The body behind it can be asked to note which rule it was that
// refused; Create is that same body with nobody listening, so the two can't disagree.
#ifndef PXDUTIL_QUERY_DETAIL_QUERY_REFUSAL_H
#define PXDUTIL_QUERY_DETAIL_QUERY_REFUSAL_H

#include <optional>

#include <pxdutil/query/query_info.h>

namespace pxd::detail {

// A rule that was broken, as a clause of a sentence that says what the rule demands; null where
// nothing was. Its text lives for ever.
using Rule = const char*;
inline constexpr Rule kNoRule = nullptr;

struct QueryRefusal {
  Rule rule = kNoRule;
  // Where it was broken, as an index into QUERY_INFO::conditions or QUERY_INFO::wWhatFields; -1
  // where it wasn't by one of them.
  int condition = -1;
  int whatField = -1;
};

// Notes the refusal where somebody listens, and is false, the answer of whoever refuses.
inline bool Refuse(QueryRefusal* why, Rule rule, int condition = -1, int whatField = -1) {
  if (why != nullptr) {
    *why = {rule, condition, whatField};
  }
  return false;
}

// True where no rule was broken; notes it otherwise.
inline bool Passes(QueryRefusal* why, Rule broken) {
  return broken == kNoRule || Refuse(why, broken);
}

// Builds the query with the class that its source is meant for, and tells what refused it. Nothing
// where the class takes it, and where there is no class: for an end query, for EDIT_DATA and for
// NASDAQ_LEVELII.
[[nodiscard]] std::optional<QueryRefusal> RefusalOf(const QUERY_INFO& info);

}  // namespace pxd::detail

#endif
