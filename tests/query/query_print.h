// A QUERY_INFO as one line of text, for tests that compare what a query says:
//
//   type 4; verb 1; chart; kind 2; quantity 5 unit 3; field 201; snapshot 8,11; group 7: 41,42;
//   what 7,10; where 31="ABC" 229="30"
//
// Members that are 0 are left out, but for the type. What a list holds behind the entries that
// count is shown too, as "left": what was read ahead of a failure stays in the record.
#ifndef PXDUTIL_TESTS_QUERY_QUERY_PRINT_H
#define PXDUTIL_TESTS_QUERY_QUERY_PRINT_H

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

#include <pxdutil/query/query_info.h>

namespace pxd::test {

// Every byte counts: a record goes to others as its bytes.
[[nodiscard]] inline bool SameBytes(const QUERY_INFO& a, const QUERY_INFO& b) {
  const auto* const bytes = reinterpret_cast<const unsigned char*>(&a);
  return std::memcmp(bytes, reinterpret_cast<const unsigned char*>(&b), sizeof a) == 0;
}

// A copy of a list: it is packed, and nothing may refer to its items.
template <class List>
[[nodiscard]] auto Items(const void* list) {
  std::vector<std::remove_extent_t<List>> items(std::extent_v<List>);
  std::memcpy(items.data(), list, sizeof(List));
  return items;
}

template <class T>
void PrintList(std::ostringstream& out, const std::vector<T>& items, std::size_t count) {
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (i < count) {
      out << (i == 0 ? "" : ",") << items[i];
    } else if (items[i] != 0) {
      out << " left " << items[i];
    }
  }
}

template <class T>
[[nodiscard]] bool HoldsAny(const std::vector<T>& items) {
  return std::any_of(items.begin(), items.end(), [](T item) { return item != 0; });
}

inline void PrintCondition(std::ostringstream& out, const QUERY_CONDITION& condition) {
  const char* const operators[] = {"=", "<>", ">"};
  out << condition.wFieldID;
  if (condition.dwOperator < std::size(operators)) {
    out << operators[condition.dwOperator];
  } else {
    out << " operator " << condition.dwOperator << ' ';
  }
  out << '"' << condition.szValue << '"';
}

inline void PrintConditions(std::ostringstream& out, const QUERY_INFO& info) {
  std::string label = "; where ";
  for (std::size_t i = 0; i < std::size(info.conditions); ++i) {
    const QUERY_CONDITION& condition = info.conditions[i];
    if (i < info.dwConditionCount) {
      out << label;
      PrintCondition(out, condition);
    } else if (condition.wFieldID != 0 || condition.dwOperator != 0 ||
               condition.szValue[0] != '\0') {
      out << "; left ";
      PrintCondition(out, condition);
    }
    label = " ";
  }
}

inline void PrintChart(std::ostringstream& out, const QUERY_INFO& info) {
  if (info.bHasChart != 0) {
    out << (info.bHasChart == 1 ? "; chart" : "; chart that isn't 1");
  }
  if (info.dwChartKind != 0) {
    out << "; kind " << info.dwChartKind;
  }
  if (info.chartSize.dwCount != 0) {
    if (info.dwChartKind == QUERY_CHART_TICK || info.dwChartKind == QUERY_CHART_VOLUME) {
      out << "; count " << info.chartSize.dwCount;
    } else {
      out << "; quantity " << info.chartSize.resolution.wQuantity << " unit "
          << info.chartSize.resolution.wUnit;
    }
  }
  if (info.wPrimaryField != 0) {
    out << "; field " << info.wPrimaryField;
  }
  if (info.wAnalysisType != 0) {
    out << "; analysis " << info.wAnalysisType;
  }
  if (info.fAnalysisValue != 0.0F || info.dwAnalysisParam1 != 0 || info.dwAnalysisParam2 != 0) {
    out << "; value " << info.fAnalysisValue << ' ' << info.dwAnalysisParam1 << ' '
        << info.dwAnalysisParam2;
  }
  const auto snapshot = Items<decltype(info.wSnapShotFields)>(info.wSnapShotFields);
  if (info.dwSnapShotCount != 0 || HoldsAny(snapshot)) {
    out << "; snapshot ";
    PrintList(out, snapshot, info.dwSnapShotCount);
  }
}

[[nodiscard]] inline std::string Print(const QUERY_INFO& info) {
  std::ostringstream out;
  out << "type " << info.eQueryType;
  if (info.dwTransactionID != 0) {
    out << "; transaction " << info.dwTransactionID;
  }
  if (info.bRequestType != 0) {
    out << "; verb " << static_cast<unsigned>(info.bRequestType);
  }
  PrintChart(out, info);
  const auto group = Items<decltype(info.dwGroupByList)>(info.dwGroupByList);
  if (info.dwGroupByID != 0 || info.wGroupBySize != 0 || HoldsAny(group)) {
    out << "; group " << info.dwGroupByID << ": ";
    PrintList(out, group, static_cast<std::size_t>(info.wGroupBySize));
  }
  const auto what = Items<decltype(info.wWhatFields)>(info.wWhatFields);
  if (info.dwWhatCount != 0 || HoldsAny(what)) {
    out << "; what ";
    PrintList(out, what, info.dwWhatCount);
  }
  PrintConditions(out, info);
  return out.str();
}

}  // namespace pxd::test

#endif
