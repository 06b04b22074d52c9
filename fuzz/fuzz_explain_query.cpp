// Explains a text, and holds each part of the explanation to the others.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <pxdutil/query/explain_query.h>

#include "require.h"

using fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // No NUL behind it: the text is what the view says.
  const std::string_view all(reinterpret_cast<const char*>(data), size);
  const std::string_view text = all.substr(0, all.find('\0'));
  const pxd::QueryExplanation why = pxd::ExplainQuery(all);
  if (why.accepted) {
    Require(why.stage == pxd::QueryStage::Accepted && why.rule == pxd::QueryRule::None &&
                why.position == text.size() && why.found.empty() && why.expected.empty() &&
                why.message.empty(),
            "an accepted text with a fault");
    return 0;
  }
  Require(why.stage != pxd::QueryStage::Accepted && why.rule != pxd::QueryRule::None,
          "a refusal without a reason");
  Require(why.position <= text.size(), "a place behind the text");
  const bool atEnd = why.position == text.size();
  Require(atEnd ? why.found == "end of text"
                : !why.found.empty() && text.substr(why.position).starts_with(why.found),
          "what was found isn't there");
  Require(!why.message.empty() && why.message.size() < 1000, "a message too long to be read");
  for (const char c : why.message) {
    Require(c >= 0x20 && c < 0x7F, "a message that can't be printed");
  }
  const bool needsExpected = why.rule == pxd::QueryRule::Unexpected ||
                             why.rule == pxd::QueryRule::UnknownText ||
                             why.rule == pxd::QueryRule::WhatMissing;
  Require(!needsExpected || !why.expected.empty(), "nothing was expected");
  return 0;
}
