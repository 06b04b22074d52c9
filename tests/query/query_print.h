// A QUERY_INFO as one line of text, for tests that compare what a query says:
//
//   type 4; verb 1; chart; kind 2; quantity 5 unit 3; field 201; snapshot 8,11; group 7: 41,42;
//   what 7,10; where 31="ABC" 229="30"
//
// Members that are 0 are left out, but for the type. What a list holds behind the entries that
// count is shown too, as "left": what was read ahead of a failure stays in the record.
#ifndef PXDUTIL_TESTS_QUERY_QUERY_PRINT_H
#define PXDUTIL_TESTS_QUERY_QUERY_PRINT_H

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <sstream>
#include <string>

#include <pxdutil/query/query_info.h>

namespace pxd::test {

template <class T, std::size_t N>
void PrintList(std::ostringstream& out, const T (&items)[N], std::size_t count) {
  for (std::size_t i = 0; i < count && i < N; ++i) {
    out << (i == 0 ? "" : ",") << items[i];
  }
  for (std::size_t i = count; i < N; ++i) {
    if (items[i] != 0) {
      out << " left " << items[i];
    }
  }
}

template <class T, std::size_t N>
[[nodiscard]] bool HoldsAny(const T (&items)[N]) {
  for (const T item : items) {
    if (item != 0) {
      return true;
    }
  }
  return false;
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
  if (info.dwSnapShotCount != 0 || HoldsAny(info.wSnapShotFields)) {
    out << "; snapshot ";
    PrintList(out, info.wSnapShotFields, info.dwSnapShotCount);
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
  if (info.dwGroupByID != 0 || info.wGroupBySize != 0 || HoldsAny(info.dwGroupByList)) {
    out << "; group " << info.dwGroupByID << ": ";
    PrintList(out, info.dwGroupByList, static_cast<std::size_t>(info.wGroupBySize));
  }
  if (info.dwWhatCount != 0 || HoldsAny(info.wWhatFields)) {
    out << "; what ";
    PrintList(out, info.wWhatFields, info.dwWhatCount);
  }
  PrintConditions(out, info);
  return out.str();
}

}  // namespace pxd::test

#endif
