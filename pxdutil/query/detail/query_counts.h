// How many entries the lists of a QUERY_INFO really have.
//
// A record may come from anywhere, so what it claims isn't trusted to lie within its arrays.
#ifndef PXDUTIL_QUERY_DETAIL_QUERY_COUNTS_H
#define PXDUTIL_QUERY_DETAIL_QUERY_COUNTS_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include <pxdutil/query/query_info.h>

namespace pxd::detail {

// By value, since no reference to a number of a packed record may be formed.
template <class Array>
int CountWithin(std::uint32_t claimed) {
  return static_cast<int>(std::min<std::size_t>(claimed, std::extent_v<Array>));
}

inline int WhatCount(const QUERY_INFO& info) {
  return CountWithin<decltype(info.wWhatFields)>(info.dwWhatCount);
}
inline int SnapShotCount(const QUERY_INFO& info) {
  return CountWithin<decltype(info.wSnapShotFields)>(info.dwSnapShotCount);
}
inline int ConditionCount(const QUERY_INFO& info) {
  return CountWithin<decltype(info.conditions)>(info.dwConditionCount);
}

}  // namespace pxd::detail

#endif
