#include <pxdutil/query/detail/symbol_text.h>

#include <cstddef>
#include <string_view>

namespace pxd::detail {
namespace {

constexpr std::size_t kMaxSymbol = 30;
constexpr std::size_t kPrefix = 3;

bool HasMarketPrefix(std::string_view symbol) {
  return symbol.size() > kPrefix && (symbol[0] == 'U' || symbol[0] == 'u') &&
         (symbol[1] == 'S' || symbol[1] == 's') && symbol[2] == ':' &&
         symbol.find_first_of(":.", kPrefix) == std::string_view::npos;
}

}  // namespace

bool KeepSymbol(std::string& symbol, const char* text) {
  std::string_view kept(text != nullptr ? text : "");
  kept = kept.substr(0, kMaxSymbol);
  const bool hasPrefix = HasMarketPrefix(kept);
  symbol = kept.substr(hasPrefix ? kPrefix : 0);
  return hasPrefix;
}

}  // namespace pxd::detail
