// What the parser of the query language tells of its work, and the observer that doesn't listen.
#ifndef PXDUTIL_QUERY_DETAIL_QUERY_OBSERVER_H
#define PXDUTIL_QUERY_DETAIL_QUERY_OBSERVER_H

#include <cstddef>
#include <cstdint>

#include <pxdutil/query/detail/query_tokens.h>
#include <pxdutil/query/query_rule.h>

namespace pxd::detail {

// What a token that is no word is good for, or what the words of a family are.
enum class QueryThing : std::uint8_t {
  FieldID,
  ChartCount,
  ChartQuantity,
  ChartUnit,
  AnalysisType,
  AnalysisValue,
  AnalysisParam1,
  AnalysisParam2,
  Value,
  GroupID,
  GroupNumber,
  TransactionID,
};
inline constexpr std::size_t kQueryThings = 12;

// Sees nothing, and compiles to nothing. A place is where a token begins.
struct NoQueryObserver {
  // The current token was asked for this one, or for this thing, and is another.
  static void Looked(TOKEN_TYPE) {}
  static void Looked(QueryThing) {}
  // The current token was taken for this.
  static void Took(QueryThing, const char*) {}
  // The current token was taken as the source, as the next id of the WHAT list, and as the id of
  // the next condition.
  static void TookSource(const char*) {}
  static void TookWhatField(const char*) {}
  static void TookConditionField(const char*) {}
  // The current token is the word of a chart.
  static void ChartBegan(const char*) {}
  // The token is left behind, and another is current.
  static void Moved() {}
  // What was read at `place` breaks a rule of its own.
  static void Refused(QueryRule, const char*) {}
  // A production failed behind its first token: what else may be tried from here is not what a
  // writer would have meant.
  static void Abandoned() {}
  // A chart broke off at `place`, and what follows is tried as something else.
  static void ChartBroke(const char*) {}
  // There is no proper WHAT list at `place`, which may turn out to be needed.
  static void WhatMissed(const char*) {}
  static void WhatNeeded() {}
  // FROM doesn't stand where it must.
  static void FromMissed() {}
};

}  // namespace pxd::detail

#endif
