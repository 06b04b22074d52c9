#include <pxdutil/query/client_query.h>

#include <array>
#include <charconv>
#include <functional>
#include <string>
#include <string_view>

#include <pxdutil/query/detail/parsed_query.h>

int CZRGSClientQuery::GetQueryInfo(const char* text, QUERY_INFO& out) {
  if (text == nullptr) {
    return 0;
  }
  // A text that stands in the record itself would be gone before its values are copied.
  const char* const record = reinterpret_cast<const char*>(&out);
  if (std::greater_equal<>()(text, record) && std::less<>()(text, record + sizeof(out))) {
    return GetQueryInfo(std::string(text).c_str(), out);
  }
  pxd::detail::ParsedQuery query;
  if (!pxd::detail::ParseQuery(text, query)) {
    return 0;
  }
  // Checked ahead of the copy, so that what the check writes goes into `out` too.
  const bool passes = pxd::detail::CheckChart(query) == pxd::QueryRule::None;
  pxd::detail::Expand(query, out);
  return passes ? 1 : 0;
}

void CZRGSClientQuery::StripFieldID(std::string& text, unsigned long field) {
  std::array<char, 24> left;  // room for the digits of 64 bits and "="
  char* const behind = std::to_chars(left.data(), left.data() + left.size() - 1, field).ptr;
  *behind = '=';

  const std::size_t hit =
      text.find(left.data(), 0, static_cast<std::size_t>(behind + 1 - left.data()));
  if (hit == std::string::npos) {
    return;
  }
  const std::size_t opening = text.find('"', hit);
  const std::size_t closing =
      opening == std::string::npos ? std::string::npos : text.find('"', opening + 1);
  if (closing == std::string::npos || closing + 1 == text.size()) {
    return;
  }
  constexpr std::string_view kAnd = "AND";
  const std::size_t conjunction = text.find(kAnd, closing + 1);
  const std::size_t end =
      conjunction == std::string::npos ? closing + 1 : conjunction + kAnd.size();
  text.erase(hit, end - hit);
}
