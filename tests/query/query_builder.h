// A QUERY_INFO as the parser would fill it, for the tests of what is built from one.
#ifndef PXDUTIL_TESTS_QUERY_QUERY_BUILDER_H
#define PXDUTIL_TESTS_QUERY_QUERY_BUILDER_H

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <string_view>

#include <pxdutil/query/query_info.h>

namespace pxd::test {

// The record is large, so it stands on the heap.
class QueryBuilder {
 public:
  explicit QueryBuilder(QUERY_TYPE type = QUERY_TYPE_NONE, std::uint8_t verb = QUERY_VERB_REQUEST)
      : m_info(std::make_unique<QUERY_INFO>()) {
    m_info->eQueryType = type;
    m_info->bRequestType = verb;
  }

  QueryBuilder(const QueryBuilder& other) : m_info(std::make_unique<QUERY_INFO>(*other.m_info)) {}
  QueryBuilder& operator=(const QueryBuilder& other) {
    *m_info = *other.m_info;
    return *this;
  }
  ~QueryBuilder() = default;

  QueryBuilder& Verb(std::uint8_t verb) {
    m_info->bRequestType = verb;
    return *this;
  }
  QueryBuilder& What(std::initializer_list<int> fields) {
    for (const int field : fields) {
      m_info->wWhatFields[m_info->dwWhatCount] = static_cast<std::uint16_t>(field);
      m_info->dwWhatCount = m_info->dwWhatCount + 1;
    }
    return *this;
  }
  QueryBuilder& Where(int field, std::string_view value, std::uint32_t op = QUERY_OPERATOR_EQUAL) {
    QUERY_CONDITION& condition = m_info->conditions[m_info->dwConditionCount];
    condition.wFieldID = static_cast<std::uint16_t>(field);
    condition.dwOperator = op;
    std::memset(condition.szValue, 0, sizeof(condition.szValue));
    value.copy(condition.szValue, sizeof(condition.szValue));
    m_info->dwConditionCount = m_info->dwConditionCount + 1;
    return *this;
  }
  // A chart whose size is a resolution, or a count.
  QueryBuilder& Chart(std::uint32_t kind, std::uint16_t unit, std::uint16_t quantity,
                      std::uint16_t primaryField = 201) {
    m_info->bHasChart = 1;
    m_info->dwChartKind = kind;
    m_info->wPrimaryField = primaryField;
    m_info->chartSize.resolution = {unit, quantity};
    return *this;
  }
  QueryBuilder& CountChart(std::uint32_t kind, std::uint32_t count,
                           std::uint16_t primaryField = 201) {
    Chart(kind, 0, 0, primaryField);
    m_info->chartSize.dwCount = count;
    return *this;
  }
  // Five-minute bars, for the conditions that need some chart.
  QueryBuilder& AnyChart() { return Chart(QUERY_CHART_BAR, 3, 5); }
  QueryBuilder& SnapShot(std::initializer_list<int> fields) {
    for (const int field : fields) {
      m_info->wSnapShotFields[m_info->dwSnapShotCount] = static_cast<std::uint16_t>(field);
      m_info->dwSnapShotCount = m_info->dwSnapShotCount + 1;
    }
    return *this;
  }
  QueryBuilder& GroupBy(std::uint32_t id, std::initializer_list<std::uint32_t> transactions) {
    m_info->dwGroupByID = id;
    std::int16_t size = 0;
    for (const std::uint32_t transaction : transactions) {
      m_info->dwGroupByList[size] = transaction;
      ++size;
    }
    m_info->wGroupBySize = size;
    return *this;
  }

  QUERY_INFO* operator->() { return m_info.get(); }
  const QUERY_INFO* operator->() const { return m_info.get(); }
  operator const QUERY_INFO&() const { return *m_info; }

 private:
  std::unique_ptr<QUERY_INFO> m_info;
};

}  // namespace pxd::test

#endif
