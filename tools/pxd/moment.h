// Dates and times as people and files write them, and shifts between two clocks.
//
// Every reader takes the whole text or nothing; what can't be read gives a null date or time, or no
// number. Fractions of a second are cut: the library counts whole seconds. A zone or an offset at
// the end of a time ("Z", "+01:00") isn't applied, since the clock of a file is said once, by a
// shift.
#ifndef PXDUTIL_TOOLS_PXD_MOMENT_H
#define PXDUTIL_TOOLS_PXD_MOMENT_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <pxdutil/sessions/date_time.h>

namespace pxd::tool {

// 2024-03-04 or 20240304; a day that no calendar has is none.
CZRDate ReadDate(std::string_view text);

// 09:31, 09:31:00 or 09:31:00.123.
CZRTime ReadTime(std::string_view text);

// A date and a time with a blank or a T between them, or a date alone, which is its midnight.
CZRDateTime ReadDateTime(std::string_view text);

// +HH:MM or -HH:MM, below a day, in seconds.
std::optional<std::int32_t> ReadShift(std::string_view text);

// A length of time such as 45s, 90m, 12h or 1d.
std::optional<CZRDateTimeSpan> ReadSpan(std::string_view text);

// The moment moved by a number of seconds, across midnight too. Null where it leaves the years in
// which a calendar can be asked: a look-up counts to the month's end and beyond.
CZRDateTime Shifted(const CZRDateTime& moment, std::int32_t seconds);
bool IsInCalendarYears(const CZRDateTime& moment);
// The words for those years, for messages.
inline constexpr std::string_view kCalendarYears = "1900-03-01 to 2079-03-31";

// 2024-03-04 and 09:31:00; "null" for a null date, the bare number for a time that no day has.
std::string DateText(const CZRDate& date);
std::string TimeText(const CZRTime& time);
// Both with a blank between them, or "null".
std::string MomentText(const CZRDateTime& moment);

}  // namespace pxd::tool

#endif
