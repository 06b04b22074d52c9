#include <pxdutil/query/detail/query_numbers.h>

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

namespace pxd::detail {
namespace {

constexpr std::string_view kSpace = " \t\n\v\f\r";
constexpr std::string_view kMantissa = "0123456789.";
constexpr std::string_view kHexMantissa = "0123456789abcdefABCDEF.";

std::string_view WithoutSpace(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(kSpace), text.size()));
  return text;
}

// Takes a sign off the front, and tells whether it was a minus.
bool TakeSign(std::string_view& text) {
  if (text.empty() || (text.front() != '-' && text.front() != '+')) {
    return false;
  }
  const bool isMinus = text.front() == '-';
  text.remove_prefix(1);
  return isMinus;
}

// Whether a number that no double can hold is too large for one, and not too small: whether the
// place of its first digit that counts lies before the point or behind it.
bool IsLarge(std::string_view text, bool isHex) {
  const std::string_view digits = isHex ? kHexMantissa : kMantissa;
  const std::size_t end = std::min(text.find_first_not_of(digits), text.size());
  const std::string_view mantissa = text.substr(0, end);
  const auto point = static_cast<long long>(std::min(mantissa.find('.'), mantissa.size()));
  const auto first =
      static_cast<long long>(std::min(mantissa.find_first_not_of(".0"), mantissa.size()));
  long long exponent = 0;
  if (end < text.size() && std::string_view(isHex ? "pP" : "eE").find(text[end]) != text.npos) {
    // Far beyond any mantissa's length, and far from where sums overflow.
    exponent = std::clamp(ReadInteger(text.substr(end + 1)), -1'000'000'000LL, 1'000'000'000LL);
  }
  return (point - first) * (isHex ? 4 : 1) + exponent > 0;
}

}  // namespace

float ReadFloat(std::string_view text) {
  text = WithoutSpace(text);
  const bool isMinus = TakeSign(text);
  if (text.empty() || text.front() == '-') {
    return 0;  // from_chars would take a second sign
  }
  const bool isHex = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
  if (isHex) {
    text.remove_prefix(2);
    if (kHexMantissa.find(text.front()) ==
        std::string_view::npos) {  // "-1" or "inf" behind the "0x"
      return isMinus ? -0.0F : 0.0F;
    }
  }
  double value = 0;
  const auto [stop, error] =
      std::from_chars(text.data(), text.data() + text.size(), value,
                      isHex ? std::chars_format::hex : std::chars_format::general);
  if (error == std::errc::invalid_argument && !isHex) {
    return 0;  // without a number a sign says nothing, but the 0 of a bare "0x" has it
  }
  if (error == std::errc::result_out_of_range) {
    value = IsLarge(text, isHex) ? std::numeric_limits<double>::infinity() : 0;
  }
  if (isMinus) {
    value = -value;
  }
  return static_cast<float>(value);  // a double beyond every float becomes infinite
}

}  // namespace pxd::detail
