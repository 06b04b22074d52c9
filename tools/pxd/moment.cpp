#include "moment.h"

#include <fmt/format.h>

#include <array>
#include <bit>
#include <cstring>

#include "words.h"

namespace pxd::tool {
namespace {

// Takes exactly so many digits off the front of `text`.
template <std::size_t kDigits>
std::optional<unsigned> TakeNumber(std::string_view& text) {
  if (text.size() < kDigits) {
    return std::nullopt;
  }
  unsigned value = 0;
  bool allDigits = true;
  for (std::size_t i = 0; i < kDigits; ++i) {
    const unsigned digit = static_cast<unsigned>(static_cast<unsigned char>(text[i])) - '0';
    allDigits = allDigits && digit <= 9;
    value = value * 10 + digit;
  }
  if (!allDigits) {
    return std::nullopt;
  }
  text.remove_prefix(kDigits);
  return value;
}

bool TakeChar(std::string_view& text, char wanted) {
  if (text.empty() || text.front() != wanted) {
    return false;
  }
  text.remove_prefix(1);
  return true;
}

CZRDate TakeDate(std::string_view& text) {
  std::string_view rest = text;
  const auto year = TakeNumber<4>(rest);
  const bool dashed = TakeChar(rest, '-');
  const auto month = TakeNumber<2>(rest);
  if (dashed && !TakeChar(rest, '-')) {
    return {};
  }
  const auto day = TakeNumber<2>(rest);
  if (!year || !month || !day) {
    return {};
  }
  const CZRDate date(*month, *day, *year);
  if (date != CZRDate()) {
    text = rest;
  }
  return date;
}

// Hours with one digit are common in what spreadsheets write.
std::optional<unsigned> TakeHour(std::string_view& text) {
  return text.size() > 1 && text[1] == ':' ? TakeNumber<1>(text) : TakeNumber<2>(text);
}

// HH:MM:SS, as most files write it: its eight characters are read at once. Null for any others.
CZRTime ReadClock(const char* text) {
  static_assert(std::endian::native == std::endian::little, "the first digit must be the lowest");
  constexpr std::uint64_t kEach = 0x0101010101010101U;
  constexpr std::uint64_t kZeros = 0x30303A30303A3030U;   // 00:00:00
  constexpr std::uint64_t kColons = 0x0000FF0000FF0000U;  // where its colons stand
  std::uint64_t digits = 0;
  std::memcpy(&digits, text, sizeof digits);
  digits ^= kZeros;
  // Six more than a digit still fits into four bits.
  if (((digits | (digits + kEach * 6)) & (kEach * 0xF0)) != 0 || (digits & kColons) != 0) {
    return {};
  }
  // Each byte becomes the number of two digits that begins there; none carries into the next.
  const std::uint64_t numbers = digits * 10 + (digits >> 8);
  const auto number = [numbers](unsigned place) {
    return static_cast<unsigned>(numbers >> (8 * place) & 0xFFU);
  };
  return {number(0), number(3), number(6)};
}

// A time of any other form, without its fraction.
CZRTime TakeLooseClock(std::string_view& text, bool& hasSeconds) {
  const auto hour = TakeHour(text);
  if (!hour || !TakeChar(text, ':')) {
    return {};
  }
  const auto minute = TakeNumber<2>(text);
  hasSeconds = TakeChar(text, ':');
  const auto second = hasSeconds ? TakeNumber<2>(text) : 0U;
  return minute && second ? CZRTime(*hour, *minute, *second) : CZRTime();
}

// Passes over a point or a comma and the digits behind it, if one stands there. False where no
// digit follows.
bool TakeFraction(std::string_view& text) {
  if (!TakeChar(text, '.') && !TakeChar(text, ',')) {
    return true;
  }
  std::size_t digits = 0;
  while (digits < text.size() && IsDigit(text[digits])) {
    ++digits;
  }
  text.remove_prefix(digits);
  return digits != 0;
}

CZRTime TakeTime(std::string_view& text) {
  constexpr std::size_t kClock = 8;
  std::string_view rest = text;
  bool hasSeconds = true;
  CZRTime time = rest.size() >= kClock ? ReadClock(rest.data()) : CZRTime();
  if (time != CZRTime()) {
    rest.remove_prefix(kClock);
  } else {
    time = TakeLooseClock(rest, hasSeconds);
  }
  if (time == CZRTime() || (hasSeconds && !TakeFraction(rest))) {
    return {};
  }
  text = rest;
  return time;
}

bool IsZone(std::string_view text) {
  if (text.empty() || EqualNoCase(text, "Z")) {
    return true;
  }
  if (!TakeChar(text, '+') && !TakeChar(text, '-')) {
    return false;
  }
  const auto hours = TakeNumber<2>(text);
  TakeChar(text, ':');
  return hours && (text.empty() || (TakeNumber<2>(text) && text.empty()));
}

constexpr std::int64_t kDay = kSecondsPerDay;

}  // namespace

CZRDate ReadDate(std::string_view text) {
  const CZRDate date = TakeDate(text);
  return text.empty() ? date : CZRDate();
}

CZRTime ReadTime(std::string_view text) {
  const CZRTime time = TakeTime(text);
  return IsZone(text) ? time : CZRTime();
}

CZRDateTime ReadDateTime(std::string_view text) {
  const CZRDate date = TakeDate(text);
  if (date == CZRDate()) {
    return {};
  }
  if (text.empty()) {
    return {date, CZRTime(0U)};
  }
  if (!TakeChar(text, ' ') && !TakeChar(text, 'T') && !TakeChar(text, 't')) {
    return {};
  }
  const CZRTime time = ReadTime(text);
  return time == CZRTime() ? CZRDateTime() : CZRDateTime(date, time);
}

std::optional<std::int32_t> ReadShift(std::string_view text) {
  const bool back = !text.empty() && text.front() == '-';
  if (!TakeChar(text, '+') && !TakeChar(text, '-')) {
    return std::nullopt;
  }
  const CZRTime time = TakeTime(text);
  if (time == CZRTime() || !text.empty()) {
    return std::nullopt;
  }
  const auto seconds = static_cast<std::int32_t>(time.GetTime());
  return back ? -seconds : seconds;
}

std::optional<CZRDateTimeSpan> ReadSpan(std::string_view text) {
  text = Trim(text);
  if (text.empty()) {
    return std::nullopt;
  }
  constexpr std::string_view kUnits = "smhd";
  constexpr std::array<std::uint32_t, 4> kSeconds = {1, 60, 3600, kSecondsPerDay};
  const std::size_t unit = kUnits.find(text.back());
  const auto number = WholeNumber(text.substr(0, text.size() - 1), 0xFFFFU);
  if (unit == std::string_view::npos || !number) {
    return std::nullopt;
  }
  const std::uint64_t seconds = std::uint64_t{*number} * kSeconds[unit];
  return CZRDateTimeSpan(static_cast<unsigned short>(seconds / kSecondsPerDay),
                         static_cast<unsigned long>(seconds % kSecondsPerDay));
}

CZRDateTime Shifted(const CZRDateTime& moment, std::int32_t seconds) {
  if (seconds == 0 && moment.GetTime().GetTime() < kSecondsPerDay) {
    return IsInCalendarYears(moment) ? moment : CZRDateTime();
  }
  std::int64_t day = moment.GetDate().GetJulianDate();
  std::int64_t second = std::int64_t{moment.GetTime().GetTime()} + seconds;
  day += second / kDay;
  second %= kDay;
  if (second < 0) {
    second += kDay;
    --day;
  }
  if (day < 0 || day >= CZRDate::GetNullJulianDate()) {
    return {};
  }
  const CZRDateTime moved(CZRDate(static_cast<unsigned short>(day)),
                          CZRTime(static_cast<unsigned>(second)));
  return IsInCalendarYears(moved) ? moved : CZRDateTime();
}

bool IsInCalendarYears(const CZRDateTime& moment) {
  constexpr CZRDate kFirst(61);    // 1 March 1900
  constexpr CZRDate kLast(65470);  // 31 March 2079
  return moment.GetDate() >= kFirst && moment.GetDate() <= kLast;
}

std::string DateText(const CZRDate& date) {
  if (date == CZRDate()) {
    return "null";
  }
  return fmt::format("{:04}-{:02}-{:02}", date.GetYear(), date.GetMonth(), date.GetDay());
}

std::string TimeText(const CZRTime& time) {
  if (time.GetTime() >= kSecondsPerDay) {
    return time == CZRTime() ? "null" : fmt::format("{}", time.GetTime());
  }
  return fmt::format("{:02}:{:02}:{:02}", time.GetHour(), time.GetMinute(), time.GetSecond());
}

std::string MomentText(const CZRDateTime& moment) {
  if (moment.IsNullDateTime() != 0) {
    return "null";
  }
  return DateText(moment.GetDate()) + ' ' + TimeText(moment.GetTime());
}

}  // namespace pxd::tool
