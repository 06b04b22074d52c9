// Takes a condition out of a text: at most one run of characters may go, from where the field is
// first named to behind a closing quote or an AND.
//
// The first two bytes of the input are the field.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <pxdutil/query/client_query.h>

#include "require.h"

using fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) {
    return 0;
  }
  const unsigned long field = data[0] + 256UL * data[1];
  const std::string before(reinterpret_cast<const char*>(data + 2), size - 2);
  std::string after = before;
  CZRGSClientQuery::StripFieldID(after, field);
  if (after == before) {
    return 0;
  }

  const std::size_t hit = before.find(std::to_string(field) + '=');
  Require(hit != std::string::npos, "a text without the field was changed");
  Require(after.size() < before.size(), "a text grew");
  const std::size_t removed = before.size() - after.size();
  Require(before.substr(0, hit) == after.substr(0, hit) &&
              before.substr(hit + removed) == after.substr(hit),
          "more than one run was removed");
  const std::string_view run = std::string_view(before).substr(hit, removed);
  const std::size_t quote = run.find('"');
  Require(quote != std::string_view::npos && run.find('"', quote + 1) != std::string_view::npos,
          "something without a value was removed");
  Require(run.ends_with('"') || run.ends_with("AND"), "the run ends nowhere");
  return 0;
}
