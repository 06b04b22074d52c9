#include "query_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <span>
#include <type_traits>
#include <vector>

#include <pxdutil/query/query_values.h>
#include <pxdutil/query/query_words.h>

#include "resolution_words.h"
#include "words.h"

namespace pxd::tool {
namespace {

using Json = nlohmann::ordered_json;

// Values may hold any bytes, and JSON is UTF-8.
std::string TextOf(const Json& json) {
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

// The lists of a packed record, number by number: nothing may refer to its numbers.
template <class NumberAt>
auto Listed(std::size_t count, std::size_t most, NumberAt numberAt) {
  std::vector<decltype(numberAt(0))> numbers;
  for (std::size_t i = 0; i < std::min(count, most); ++i) {
    numbers.push_back(numberAt(i));
  }
  return numbers;
}

std::vector<std::uint16_t> WhatFields(const QUERY_INFO& info) {
  return Listed(info.dwWhatCount, std::extent_v<decltype(info.wWhatFields)>,
                [&](std::size_t i) { return info.wWhatFields[i]; });
}

std::vector<std::uint16_t> SnapshotFields(const QUERY_INFO& info) {
  return Listed(info.dwSnapShotCount, std::extent_v<decltype(info.wSnapShotFields)>,
                [&](std::size_t i) { return info.wSnapShotFields[i]; });
}

std::vector<std::uint32_t> GroupNumbers(const QUERY_INFO& info) {
  const std::int16_t size = info.wGroupBySize;
  return Listed(size > 0 ? static_cast<std::size_t>(size) : 0,
                std::extent_v<decltype(info.dwGroupByList)>,
                [&](std::size_t i) { return info.dwGroupByList[i]; });
}

bool IsCounted(std::uint32_t chartKind) {
  return chartKind == QUERY_CHART_TICK || chartKind == QUERY_CHART_VOLUME;
}

std::string FieldText(const BuiltInCatalogue& catalogue, unsigned short id) {
  const CZRGSFieldInfo* row = catalogue.Find(id);
  return row != nullptr ? fmt::format("{} {}", id, row->Description().Str())
                        : fmt::format("{}", id);
}

std::string FieldsText(const BuiltInCatalogue& catalogue,
                       const std::vector<std::uint16_t>& fields) {
  std::string text;
  for (const std::uint16_t field : fields) {
    text += fmt::format("{}{}", text.empty() ? "" : ", ", FieldText(catalogue, field));
  }
  return text.empty() ? "nothing" : text;
}

std::string SizeText(const QUERY_INFO& info) {
  const std::uint32_t kind = info.dwChartKind;
  if (IsCounted(kind)) {
    return fmt::format(" of {}", std::uint32_t{info.chartSize.dwCount});
  }
  return kind == QUERY_CHART_CCA ? "" : " of " + ResolutionText(CResoln(info.chartSize.resolution));
}

std::string ChartText(const BuiltInCatalogue& catalogue, const QUERY_INFO& info) {
  std::string text = fmt::format("{}{} over {}", QueryChartWord(info.dwChartKind), SizeText(info),
                                 FieldText(catalogue, info.wPrimaryField));
  if (info.dwChartKind == QUERY_CHART_ANALYSIS) {
    text += fmt::format(", kind {} with {}, {}, {}", std::uint16_t{info.wAnalysisType},
                        float{info.fAnalysisValue}, std::int32_t{info.dwAnalysisParam1},
                        std::int32_t{info.dwAnalysisParam2});
  }
  if (info.dwSnapShotCount != 0) {
    text += ", snapshot of " + FieldsText(catalogue, SnapshotFields(info));
  }
  return text;
}

std::string GroupText(const QUERY_INFO& info) {
  std::string text = fmt::format("{}", std::uint32_t{info.dwGroupByID});
  const char* before = " with the transactions ";
  for (const std::uint32_t number : GroupNumbers(info)) {
    text += fmt::format("{}{}", before, number);
    before = ", ";
  }
  return text;
}

std::span<const QUERY_CONDITION> ConditionsOf(const QUERY_INFO& info) {
  return {info.conditions,
          std::min(std::size_t{info.dwConditionCount}, std::size(info.conditions))};
}

Json FieldJson(const BuiltInCatalogue& catalogue, unsigned short id) {
  Json json = {{"id", id}};
  if (const CZRGSFieldInfo* row = catalogue.Find(id)) {
    json["name"] = row->Description().Str();
  }
  return json;
}

Json FieldsJson(const BuiltInCatalogue& catalogue, const std::vector<std::uint16_t>& fields) {
  Json array = Json::array();
  for (const std::uint16_t field : fields) {
    array.push_back(FieldJson(catalogue, field));
  }
  return array;
}

Json ChartJson(const BuiltInCatalogue& catalogue, const QUERY_INFO& info) {
  Json json = {{"kind", QueryChartWord(info.dwChartKind)},
               {"field", FieldJson(catalogue, info.wPrimaryField)}};
  if (IsCounted(info.dwChartKind)) {
    json["count"] = std::uint32_t{info.chartSize.dwCount};
  } else if (info.dwChartKind != QUERY_CHART_CCA) {
    json["unit"] = std::uint16_t{info.chartSize.resolution.wUnit};
    json["quantity"] = std::uint16_t{info.chartSize.resolution.wQuantity};
  }
  if (info.dwChartKind == QUERY_CHART_ANALYSIS) {
    json["analysis"] = {
        {"kind", std::uint16_t{info.wAnalysisType}},
        {"value", float{info.fAnalysisValue}},
        {"parameters", {std::int32_t{info.dwAnalysisParam1}, std::int32_t{info.dwAnalysisParam2}}}};
  }
  json["snapshot"] = FieldsJson(catalogue, SnapshotFields(info));
  return json;
}

}  // namespace

std::string QueryCard(const BuiltInCatalogue& catalogue, const QUERY_INFO& info) {
  if (info.eQueryType == QUERY_TYPE_NONE) {
    return fmt::format("End of the transaction {}\n", std::uint32_t{info.dwTransactionID});
  }
  std::string text;
  const auto line = [&text](std::string_view what, const std::string& words) {
    text += fmt::format("{:<8} {}\n", what, words);
  };
  line("Verb:", std::string(QueryVerbWord(info.bRequestType)));
  line("Source:", std::string(QuerySourceWord(info.eQueryType)));
  line("What:", FieldsText(catalogue, WhatFields(info)));
  if (info.bHasChart != 0) {
    line("Chart:", ChartText(catalogue, info));
  }
  std::string_view before = "Where:";
  for (const QUERY_CONDITION& condition : ConditionsOf(info)) {
    line(before, fmt::format("{} {} \"{}\"", FieldText(catalogue, condition.wFieldID),
                             QueryOperatorWord(condition.dwOperator),
                             OneLine(static_cast<const char*>(condition.szValue))));
    before = "and";
  }
  if (info.dwGroupByID != 0) {
    line("Group:", GroupText(info));
  }
  const std::string_view className = QueryClassName(info.eQueryType);
  line("Class:",
       className.empty() ? "none; the host decides what it means" : std::string(className));
  if (const auto values = TypedValues(info)) {
    before = "Values:";
    for (const QueryValue& value : *values) {
      line(before, fmt::format("{}: {}", value.name, OneLine(value.value)));
      before = "";
    }
  }
  return text;
}

std::string QueryCardJson(const BuiltInCatalogue& catalogue, const QUERY_INFO& info) {
  if (info.eQueryType == QUERY_TYPE_NONE) {
    return TextOf({{"accepted", true}, {"ends", std::uint32_t{info.dwTransactionID}}});
  }
  Json json = {{"accepted", true},
               {"verb", QueryVerbWord(info.bRequestType)},
               {"source", QuerySourceWord(info.eQueryType)},
               {"what", FieldsJson(catalogue, WhatFields(info))}};
  if (info.bHasChart != 0) {
    json["chart"] = ChartJson(catalogue, info);
  }
  Json conditions = Json::array();
  for (const QUERY_CONDITION& condition : ConditionsOf(info)) {
    conditions.push_back({{"field", FieldJson(catalogue, condition.wFieldID)},
                          {"operator", QueryOperatorWord(condition.dwOperator)},
                          {"value", static_cast<const char*>(condition.szValue)}});
  }
  json["where"] = std::move(conditions);
  if (info.dwGroupByID != 0) {
    json["group"] = {{"id", std::uint32_t{info.dwGroupByID}}, {"transactions", GroupNumbers(info)}};
  }
  json["class"] = QueryClassName(info.eQueryType);
  if (const auto values = TypedValues(info)) {
    Json array = Json::array();
    for (const QueryValue& value : *values) {
      array.push_back({{"field", value.field}, {"name", value.name}, {"value", value.value}});
    }
    json["values"] = std::move(array);
  }
  return TextOf(json);
}

std::string CaretLines(std::string_view text, std::size_t position) {
  constexpr std::size_t kAround = 60;
  position = std::min(position, text.size());
  const std::size_t begin = position > kAround ? position - kAround : 0;
  const std::string_view part = text.substr(begin, position - begin + kAround);
  std::string shown;
  for (const char c : part) {
    shown += c >= ' ' && c <= '~' ? c : '?';
  }
  return fmt::format("  {}\n  {:>{}}\n", shown, '^', position - begin + 1);
}

std::string ExplanationJson(const QueryExplanation& why) {
  return TextOf({{"accepted", false},
                 {"position", why.position},
                 {"found", why.found},
                 {"expected", why.expected},
                 {"message", why.message}});
}

}  // namespace pxd::tool
