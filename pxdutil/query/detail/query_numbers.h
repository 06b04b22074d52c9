// What the number tokens of a query are worth.
//
// A number token is digits, points, signs and exponent letters in any order behind a first digit;
// it counts for as much of it as the standard conversions take. Nothing here allocates or asks the
// locale.
#ifndef PXDUTIL_QUERY_DETAIL_QUERY_NUMBERS_H
#define PXDUTIL_QUERY_DETAIL_QUERY_NUMBERS_H

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <system_error>

namespace pxd::detail {

// A longer number is refused.
inline constexpr std::size_t kLongestNumber = 19;

// The number that the token's digits make up to the first character that is none, at most the
// largest 64-bit number, cut to its low 32 bits. The token has at most kLongestNumber characters.
[[nodiscard]] constexpr std::int32_t IntegerIn(std::string_view token) {
  std::uint64_t value = 0;
  for (const char c : token) {
    if (c < '0' || c > '9') {
      break;
    }
    value = value * 10 + static_cast<std::uint64_t>(c - '0');
  }
  constexpr std::uint64_t kMost = std::numeric_limits<std::int64_t>::max();
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(value < kMost ? value : kMost));
}

// The floating number that the token begins with, rounded to double and then to float.
[[nodiscard]] inline float FloatIn(std::string_view token) {
  double value = 0.0;
  const auto [behind, error] = std::from_chars(token.data(), token.data() + token.size(), value);
  if (error == std::errc::result_out_of_range) {
    // With so few digits in front of it, the exponent alone says in which direction.
    const std::string_view taken(token.data(), static_cast<std::size_t>(behind - token.data()));
    const bool tiny = taken.find('-') != std::string_view::npos;
    return tiny ? 0.0F : std::numeric_limits<float>::infinity();
  }
  return static_cast<float>(value);
}

}  // namespace pxd::detail

#endif
