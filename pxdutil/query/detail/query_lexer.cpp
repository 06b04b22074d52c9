#include <pxdutil/query/detail/query_lexer.h>

#include <algorithm>

namespace pxd::detail {

QueryToken TokenAt(const char* at, const char* end) {
  const std::string_view rest(at, static_cast<std::size_t>(end - at));
  if (rest.empty()) {
    return {TOKEN_TYPE::EndOfText, rest};
  }
  if (IsDigit(rest.front())) {
    const auto behind = std::find_if_not(rest.begin(), rest.end(), IsInNumber);
    return {TOKEN_TYPE::Number, {at, static_cast<std::size_t>(behind - rest.begin())}};
  }
  if (rest.front() == '"') {
    const std::size_t quote = rest.find('"', 1);
    return quote == std::string_view::npos
               ? QueryToken{TOKEN_TYPE::Unknown, rest.substr(0, 0)}
               : QueryToken{TOKEN_TYPE::String, rest.substr(0, quote + 1)};
  }
  for (const TokenRow& row : kTokenTable) {
    if (rest.starts_with(row.text)) {
      return {row.token, rest.substr(0, row.text.size())};
    }
  }
  return {TOKEN_TYPE::Unknown, rest.substr(0, 0)};
}

}  // namespace pxd::detail
