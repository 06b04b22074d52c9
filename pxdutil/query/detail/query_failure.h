// QueryFailureObserver: watches a parse and knows, where it failed, what was looked for there.
#ifndef PXDUTIL_QUERY_DETAIL_QUERY_FAILURE_H
#define PXDUTIL_QUERY_DETAIL_QUERY_FAILURE_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>
#include <variant>
#include <vector>

#include <pxdutil/query/detail/query_parser.h>
#include <pxdutil/query/detail/query_tokens.h>
#include <pxdutil/query/query_rule.h>

namespace pxd::detail {

using QueryExpected = std::variant<TOKEN_TYPE, QueryThing>;

struct QueryFailure {
  // Unexpected while no rule of its own was broken.
  QueryRule rule = QueryRule::Unexpected;
  // Where the token begins; null where it is the parser's current one.
  const char* place = nullptr;
  // In the order in which it was looked for.
  std::vector<QueryExpected> expected;
};

// As the parser never goes back, it fails at its current token or at one just read, and whatever
// was looked for at earlier tokens is settled.
class QueryFailureObserver {
 public:
  void Looked(TOKEN_TYPE token) { Add(token); }
  void Looked(QueryThing thing) { Add(thing); }
  void Took(QueryThing thing, const char* place) { m_taken[Index(thing)] = place; }
  void TookSource(const char* place) { m_source = place; }
  void TookWhatField(const char* place) { m_whatFields.push_back(place); }
  void TookConditionField(const char* place) { m_conditionFields.push_back(place); }
  void ChartBegan(const char* place) {
    m_chart = place;
    m_taken = {};
  }
  void Moved() {
    m_failure = {};
    m_settled = false;
  }
  void Refused(QueryRule rule, const char* place) {
    if (m_settled) {
      return;
    }
    m_failure.rule = rule;
    m_failure.place = place;
    if (rule != QueryRule::LessThan) {
      m_failure.expected.clear();  // what was written is wrong, not its place
    }
    m_settled = true;
  }
  void Abandoned() { m_settled = true; }
  void ChartBroke(const char* place) {
    if (m_brokenChart.place == nullptr) {
      m_brokenChart = PlacedFailure(place);
    }
  }
  void WhatMissed(const char* place) {
    m_what = PlacedFailure(place);
    if (!m_settled) {
      m_what.rule = QueryRule::WhatMissing;
    }
    PreferBrokenChart(m_what);
  }
  void WhatNeeded() {
    m_failure = std::move(m_what);
    m_settled = true;
  }
  void FromMissed() {
    PreferBrokenChart(m_failure);
    m_settled = true;
  }

  [[nodiscard]] const QueryFailure& Failure() const { return m_failure; }
  // Where the thing was read; the chart's word where the chart broke off ahead of it.
  [[nodiscard]] const char* PlaceOf(QueryThing thing) const {
    const char* const taken = m_taken[Index(thing)];
    return taken != nullptr ? taken : m_chart;
  }
  // The word of the chart; null where none began.
  [[nodiscard]] const char* Chart() const { return m_chart; }
  // The word of the source, the id of a WHAT field, and that of a condition, in a text that parsed.
  [[nodiscard]] const char* Source() const { return m_source; }
  [[nodiscard]] const char* WhatField(std::size_t index) const { return m_whatFields[index]; }
  [[nodiscard]] const char* ConditionField(std::size_t index) const {
    return m_conditionFields[index];
  }

 private:
  static std::size_t Index(QueryThing thing) { return static_cast<std::size_t>(thing); }

  [[nodiscard]] QueryFailure PlacedFailure(const char* place) const {
    QueryFailure failure = m_failure;
    if (failure.place == nullptr) {
      failure.place = place;
    }
    return failure;
  }

  // What is left of a chart may pass for a list of fields, up to where it doesn't. The writer meant
  // a chart.
  void PreferBrokenChart(QueryFailure& failure) const {
    if (m_brokenChart.place != nullptr) {
      failure = m_brokenChart;
    }
  }

  void Add(QueryExpected expected) {
    std::vector<QueryExpected>& all = m_failure.expected;
    if (!m_settled && std::find(all.begin(), all.end(), expected) == all.end()) {
      all.push_back(expected);
    }
  }

  QueryFailure m_failure;
  // A production broke off at this token: what else is looked for here is no help to a writer.
  bool m_settled = false;
  QueryFailure m_brokenChart;
  QueryFailure m_what;
  const char* m_chart = nullptr;
  const char* m_source = nullptr;
  std::vector<const char*> m_whatFields;
  std::vector<const char*> m_conditionFields;
  std::array<const char*, kQueryThings> m_taken = {};
};

}  // namespace pxd::detail

#endif
