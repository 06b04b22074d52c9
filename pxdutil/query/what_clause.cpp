#include <pxdutil/query/what_clause.h>

#include <algorithm>

#include <pxdutil/query/detail/query_counts.h>
#include <pxdutil/query/detail/query_refusal.h>

bool CZRGSClientQueryWHATClause::Fill(const QUERY_INFO& info, pxd::detail::QueryRefusal* why) {
  static_cast<void>(why);  // the plain list is never refused
  const int count = pxd::detail::WhatCount(info);
  SetSize(0, count);
  for (int i = 0; i < count; ++i) {
    Add(info.wWhatFields[i]);
  }
  return true;
}

int CZRGSClientQueryWHATClause::Find(unsigned short field) const {
  const auto at = std::find(begin(), end(), field);
  return at != end() ? static_cast<int>(at - begin()) : -1;
}
