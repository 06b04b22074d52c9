#include "moment.h"

#include <fmt/format.h>

#include <array>

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

std::optional<CZRDate> TakeDate(std::string_view& text) {
  std::string_view rest = text;
  const auto year = TakeNumber<4>(rest);
  const bool dashed = TakeChar(rest, '-');
  const auto month = TakeNumber<2>(rest);
  if (dashed && !TakeChar(rest, '-')) {
    return std::nullopt;
  }
  const auto day = TakeNumber<2>(rest);
  if (!year || !month || !day) {
    return std::nullopt;
  }
  const CZRDate date(*month, *day, *year);
  if (date == CZRDate()) {
    return std::nullopt;
  }
  text = rest;
  return date;
}

// Hours with one digit are common in what spreadsheets write.
std::optional<unsigned> TakeHour(std::string_view& text) {
  return text.size() > 1 && text[1] == ':' ? TakeNumber<1>(text) : TakeNumber<2>(text);
}

std::optional<CZRTime> TakeTime(std::string_view& text) {
  std::string_view rest = text;
  const auto hour = TakeHour(rest);
  if (!hour || !TakeChar(rest, ':')) {
    return std::nullopt;
  }
  const auto minute = TakeNumber<2>(rest);
  if (!minute) {
    return std::nullopt;
  }
  unsigned second = 0;
  if (TakeChar(rest, ':')) {
    const auto seconds = TakeNumber<2>(rest);
    if (!seconds) {
      return std::nullopt;
    }
    second = *seconds;
    if (TakeChar(rest, '.') || TakeChar(rest, ',')) {
      std::size_t digits = 0;
      while (digits < rest.size() && IsDigit(rest[digits])) {
        ++digits;
      }
      if (digits == 0) {
        return std::nullopt;
      }
      rest.remove_prefix(digits);
    }
  }
  const CZRTime time(*hour, *minute, second);
  if (time == CZRTime()) {
    return std::nullopt;
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

std::optional<CZRDate> ReadDate(std::string_view text) {
  const auto date = TakeDate(text);
  return text.empty() ? date : std::nullopt;
}

std::optional<CZRTime> ReadTime(std::string_view text) {
  const auto time = TakeTime(text);
  return time && IsZone(text) ? time : std::nullopt;
}

std::optional<CZRDateTime> ReadDateTime(std::string_view text) {
  const auto date = TakeDate(text);
  if (!date) {
    return std::nullopt;
  }
  if (text.empty()) {
    return CZRDateTime(*date, CZRTime(0U));
  }
  if (!TakeChar(text, ' ') && !TakeChar(text, 'T') && !TakeChar(text, 't')) {
    return std::nullopt;
  }
  const auto time = ReadTime(text);
  return time ? std::optional(CZRDateTime(*date, *time)) : std::nullopt;
}

std::optional<std::int32_t> ReadShift(std::string_view text) {
  const bool back = !text.empty() && text.front() == '-';
  if (!TakeChar(text, '+') && !TakeChar(text, '-')) {
    return std::nullopt;
  }
  const auto time = TakeTime(text);
  if (!time || !text.empty()) {
    return std::nullopt;
  }
  const auto seconds = static_cast<std::int32_t>(time->GetTime());
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

std::optional<CZRDateTime> Shifted(const CZRDateTime& moment, std::int32_t seconds) {
  if (seconds == 0 && moment.GetTime().GetTime() < kSecondsPerDay) {
    return IsInCalendarYears(moment) ? std::optional(moment) : std::nullopt;
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
    return std::nullopt;
  }
  const CZRDateTime moved(CZRDate(static_cast<unsigned short>(day)),
                          CZRTime(static_cast<unsigned>(second)));
  return IsInCalendarYears(moved) ? std::optional(moved) : std::nullopt;
}

bool IsInCalendarYears(const CZRDateTime& moment) {
  static const CZRDate first(3, 1, 1900);
  static const CZRDate last(3, 31, 2079);
  return moment.GetDate() >= first && moment.GetDate() <= last;
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
