// Conversions between numbers that have an answer for every input.
#ifndef PXDUTIL_FOUNDATION_NUMERIC_H
#define PXDUTIL_FOUNDATION_NUMERIC_H

#include <concepts>
#include <cstdint>
#include <limits>

namespace pxd {

// `value` cut towards zero; beyond the integer's range its nearest limit, and 0 for a NaN.
template <std::integral Int>
[[nodiscard]] constexpr Int Saturated(double value) noexcept {
  static_assert(sizeof(Int) <= 4, "the limits of wider integers aren't doubles");
  if (!(value == value)) {
    return 0;
  }
  // The parentheses keep off the macros that a host's <windows.h> has by these names.
  if (value <= static_cast<double>((std::numeric_limits<Int>::min)())) {
    return (std::numeric_limits<Int>::min)();
  }
  if (value >= static_cast<double>((std::numeric_limits<Int>::max)())) {
    return (std::numeric_limits<Int>::max)();
  }
  return static_cast<Int>(value);
}

// The low 32 bits of `value`, as a signed number.
[[nodiscard]] constexpr std::int32_t Low32(long value) noexcept {
  return static_cast<std::int32_t>(value);
}

// Signed 32-bit sums and negation that wrap at the limits.
[[nodiscard]] constexpr std::int32_t WrappingAdd(std::int32_t a, std::int32_t b) noexcept {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}
[[nodiscard]] constexpr std::int32_t WrappingNegate(std::int32_t value) noexcept {
  return static_cast<std::int32_t>(0U - static_cast<std::uint32_t>(value));
}

}  // namespace pxd

#endif
