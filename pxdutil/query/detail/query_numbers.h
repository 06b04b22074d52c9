// What the numbers in a query are worth, as number tokens and in the texts of conditions.
//
// A number counts for as much of its text as the standard conversions take. Nothing here allocates
// or asks the locale.
#ifndef PXDUTIL_QUERY_DETAIL_QUERY_NUMBERS_H
#define PXDUTIL_QUERY_DETAIL_QUERY_NUMBERS_H

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

namespace pxd::detail {

// The number at the front of `text`, read as strtoll (base 10) and strtod read it under the plain
// locale, whatever the locale is: leading white space and a sign may stand there, anything behind
// the number is ignored, no number is 0. An integer too large is the nearest limit, a float too
// large is infinite.
[[nodiscard]] constexpr long long ReadInteger(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || (text.front() >= '\t' && text.front() <= '\r'))) {
    text.remove_prefix(1);
  }
  const bool isMinus = !text.empty() && text.front() == '-';
  if (isMinus || (!text.empty() && text.front() == '+')) {
    text.remove_prefix(1);
  }
  constexpr auto kMost = static_cast<std::uint64_t>(std::numeric_limits<long long>::max());
  std::uint64_t magnitude = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') {
      break;
    }
    const auto digit = static_cast<std::uint64_t>(c - '0');
    if (magnitude > (kMost - digit) / 10) {
      return isMinus ? std::numeric_limits<long long>::min()
                     : std::numeric_limits<long long>::max();
    }
    magnitude = magnitude * 10 + digit;
  }
  const auto value = static_cast<long long>(magnitude);
  return isMinus ? -value : value;
}
[[nodiscard]] float ReadFloat(std::string_view text);

// A number token longer than this is refused.
inline constexpr std::size_t kLongestNumber = 19;

// What the parser makes of a number token: the low 32 bits of its integer, and its float.
[[nodiscard]] inline std::int32_t IntegerIn(std::string_view token) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(ReadInteger(token)));
}
[[nodiscard]] inline float FloatIn(std::string_view token) {
  return ReadFloat(token);
}

}  // namespace pxd::detail

#endif
