// Parses a query text, and holds the explanation of the text to what the parser says.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include <pxdutil/query/client_query.h>
#include <pxdutil/query/explain_query.h>
#include <pxdutil/query/query_values.h>
#include <pxdutil/query/query_words.h>

#include "require.h"

namespace {

using fuzz::Require;

// Records as a caller's memory may be.
std::vector<unsigned char> WildBytes() {
  return std::vector<unsigned char>(sizeof(QUERY_INFO), 0xA5);
}

void CheckRecord(const QUERY_INFO& info) {
  Require(info.eQueryType >= QUERY_TYPE_NONE && info.eQueryType <= QUERY_TYPE_SCANNING,
          "a type beyond the last source");
  Require(info.bRequestType <= QUERY_VERB_COMMIT, "a verb beyond the last");
  Require(info.dwChartKind <= QUERY_CHART_PRICE, "a chart beyond the last");
  Require(info.dwWhatCount <= std::extent_v<decltype(info.wWhatFields)>, "too many fields");
  Require(info.dwSnapShotCount <= std::extent_v<decltype(info.wSnapShotFields)>,
          "too many snapshot fields");
  Require(info.wGroupBySize >= 0 && static_cast<std::size_t>(info.wGroupBySize) <=
                                        std::extent_v<decltype(info.dwGroupByList)>,
          "too many numbers in the group");
  Require(info.dwConditionCount <= std::extent_v<decltype(info.conditions)>, "too many conditions");
  for (const QUERY_CONDITION& condition : info.conditions) {
    Require(condition.dwOperator <= QUERY_OPERATOR_GREATER, "an operator beyond the last");
    Require(std::memchr(condition.szValue, '\0', sizeof condition.szValue) != nullptr,
            "a value without its end");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  static const std::vector<unsigned char> wild = WildBytes();
  static const auto info = std::make_unique<QUERY_INFO>();
  std::memcpy(info.get(), wild.data(), wild.size());
  const bool accepted = CZRGSClientQuery::GetQueryInfo(text.c_str(), *info) != 0;
  const bool untouched = std::memcmp(reinterpret_cast<const unsigned char*>(info.get()),
                                     wild.data(), wild.size()) == 0;
  if (!untouched) {
    CheckRecord(*info);
  }
  const pxd::QueryExplanation why = pxd::ExplainQuery(text);
  const bool isRefusedByClass = why.stage == pxd::QueryStage::Class;
  Require((why.accepted || isRefusedByClass) == accepted, "parser and explanation disagree");
  if (accepted) {
    const bool hasClass = !pxd::QueryClassName(info->eQueryType).empty();
    Require(isRefusedByClass == (hasClass && !pxd::TypedValues(*info)),
            "class and explanation disagree");
  }
  Require(!accepted || !untouched, "a record that was not filled");
  Require((why.stage == pxd::QueryStage::Check) == (!accepted && !untouched),
          "a text that is no sentence filled the record, or a sentence didn't");
  return 0;
}
