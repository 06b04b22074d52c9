// CZRDate, CZRTime, CZRDateTime and CZRDateTimeSpan: the four values in which the library counts
// time.
//
// A date is a 16-bit day number that counts from 30 December 1899 as day 0, so consecutive days
// have consecutive numbers and callers do arithmetic on them. A time is the seconds since midnight.
// There are no time zones and no leap seconds; a day has 86400 seconds.
//
//   CZRDateTime close(CZRDate(12, 31, 1999), CZRTime(23, 59, 59));
//   close += CZRDateTimeSpan(0, 1);  // 1 January 2000, 00:00:00
//
// All four are plain values without locks: share them between threads as you would an int. A
// default-constructed date or time is null. No comparison treats null specially: it is ordered by
// its number, behind every real value.
#ifndef PXDUTIL_SESSIONS_DATE_TIME_H
#define PXDUTIL_SESSIONS_DATE_TIME_H

#include <compare>
#include <cstdint>

#include <pxdutil/foundation/export.h>

namespace pxd {

// The lengths of a minute, an hour and a day.
inline constexpr std::uint32_t kSecondsPerMinute = 60;
inline constexpr std::uint32_t kSecondsPerHour = 3600;
inline constexpr std::uint32_t kSecondsPerDay = 86400;

}  // namespace pxd

// A calendar day, from 30 December 1899 (0) to 3 June 2079 (0xFFFE), or null.
class PXDUTIL_API CZRDate {
 public:
  constexpr CZRDate() = default;
  // Takes the day number as it is; 0xFFFF is null.
  constexpr CZRDate(unsigned short julian) : m_julian(julian) {}
  // Month 1 to 12, day of the month, four-digit year. What names no day in range makes the null
  // date.
  CZRDate(unsigned month, unsigned day, unsigned year) { SetDate(month, day, year); }

  // The day number, and that of the null date.
  [[nodiscard]] constexpr unsigned short GetJulianDate() const { return m_julian; }
  [[nodiscard]] static constexpr unsigned short GetNullJulianDate() { return 0xFFFF; }

  // Takes the day number as it is.
  constexpr void SetDate(unsigned short julian) { m_julian = julian; }
  // As the constructor.
  void SetDate(unsigned month, unsigned day, unsigned year);
  // Reads MM/DD/YYYY, where month and day may have one digit or two, and nothing may stand around
  // it. Returns 1, or 0 for any other text or a day out of range; the date then stays as it was.
  int SetDate(const char* text);

  // The parts of the day; all 0 for the null date.
  void GetDate(unsigned& month, unsigned& day, unsigned& year) const;
  [[nodiscard]] unsigned GetYear() const;
  [[nodiscard]] unsigned GetMonth() const;
  [[nodiscard]] unsigned GetDay() const;

  // Writes the day as MM/DD/YYYY and a NUL (11 bytes), or the empty text for the null date.
  // Returns `buffer`.
  static char* j2Text(unsigned short julian, char* buffer);

  friend constexpr bool operator==(const CZRDate&, const CZRDate&) = default;
  friend constexpr std::strong_ordering operator<=>(const CZRDate&, const CZRDate&) = default;

 private:
  std::uint16_t m_julian = GetNullJulianDate();
};

// A time of day in whole seconds since midnight, 0 to 86399, or null.
class PXDUTIL_API CZRTime {
 public:
  constexpr CZRTime() = default;
  // Takes the number as it is.
  constexpr CZRTime(unsigned seconds) : m_seconds(seconds) {}
  // Hour 0 to 23, minute and second 0 to 59; anything else makes the null time.
  constexpr CZRTime(unsigned hour, unsigned minute, unsigned second)
      : m_seconds(hour < 24 && minute < 60 && second < 60
                      ? hour * pxd::kSecondsPerHour + minute * pxd::kSecondsPerMinute + second
                      : GetNullTime()) {}

  // The seconds since midnight, and the number of the null time.
  [[nodiscard]] constexpr unsigned GetTime() const { return m_seconds; }
  [[nodiscard]] static constexpr unsigned GetNullTime() { return 0xFFFFFFFF; }

  // The parts of the time; 0 for the null time.
  [[nodiscard]] constexpr unsigned GetHour() const { return Real() / pxd::kSecondsPerHour; }
  [[nodiscard]] constexpr unsigned GetMinute() const {
    return Real() / pxd::kSecondsPerMinute % pxd::kSecondsPerMinute;
  }
  [[nodiscard]] constexpr unsigned GetSecond() const { return Real() % pxd::kSecondsPerMinute; }

  // Reads HH:MM or HH:MM:SS, each of one digit or two, and nothing may stand around it. Returns 1,
  // or 0 for any other text or a time that no day has; the time then stays as it was. The two flags
  // have no effect.
  int SetTime(const char* text, int flag1, int flag2);

  // Writes `seconds` since midnight as HH:MM:SS and a NUL (9 bytes), or the empty text for a number
  // that is no time of day. Returns `buffer`. The two flags have no effect.
  static char* Time2String(unsigned seconds, int flag1, int flag2, char* buffer);

  friend constexpr bool operator==(const CZRTime&, const CZRTime&) = default;
  friend constexpr std::strong_ordering operator<=>(const CZRTime&, const CZRTime&) = default;

 private:
  [[nodiscard]] constexpr unsigned Real() const {
    return m_seconds == GetNullTime() ? 0 : m_seconds;
  }

  std::uint32_t m_seconds = GetNullTime();
};

// A length of time: whole days and less than a day of seconds. Day counts beyond 65535 wrap.
class PXDUTIL_API CZRDateTimeSpan {
 public:
  constexpr CZRDateTimeSpan() = default;
  // Whole days in `seconds` are carried into the days.
  constexpr CZRDateTimeSpan(unsigned short days, unsigned long seconds)
      : m_days(static_cast<std::uint16_t>(days + seconds / pxd::kSecondsPerDay)),
        m_seconds(static_cast<std::uint32_t>(seconds % pxd::kSecondsPerDay)) {}

  // The whole days, 0 to 65535.
  [[nodiscard]] constexpr unsigned short GetNumDays() const { return m_days; }
  // The part below one day, 0 to 86399.
  [[nodiscard]] constexpr unsigned long GetNumSeconds() const { return m_seconds; }

  // The whole length in seconds, exact, so that one span can be divided by another.
  constexpr operator double() const {
    return static_cast<double>(m_days) * pxd::kSecondsPerDay + m_seconds;
  }

  // Multiplies the whole length, carrying between seconds and days. A negative factor wraps the
  // days and leaves the seconds at 0 to 86399.
  constexpr CZRDateTimeSpan& operator*=(int factor) {
    std::int64_t seconds = std::int64_t{m_seconds} * factor;
    std::int64_t days = seconds / pxd::kSecondsPerDay;
    seconds %= pxd::kSecondsPerDay;
    if (seconds < 0) {
      seconds += pxd::kSecondsPerDay;
      --days;
    }
    m_days = static_cast<std::uint16_t>(std::int64_t{m_days} * factor + days);
    m_seconds = static_cast<std::uint32_t>(seconds);
    return *this;
  }

  friend constexpr bool operator==(const CZRDateTimeSpan&, const CZRDateTimeSpan&) = default;
  friend constexpr std::strong_ordering operator<=>(const CZRDateTimeSpan&,
                                                    const CZRDateTimeSpan&) = default;

 private:
  std::uint16_t m_days = 0;
  std::uint32_t m_seconds = 0;
};

// A day and a time of that day.
class PXDUTIL_API CZRDateTime {
 public:
  // Values that stand for a date-time.
  enum CDateTimeLimit : int {
    LimitNull = 2,  // the null date with the null time
  };

  constexpr CZRDateTime() = default;
  // Takes both halves as they are.
  constexpr CZRDateTime(const CZRDate& date, const CZRTime& time)
      : m_julian(date.GetJulianDate()), m_seconds(time.GetTime()) {}
  // The only limit is the null date-time.
  constexpr CZRDateTime(CDateTimeLimit) {}

  // The halves.
  [[nodiscard]] constexpr CZRDate GetDate() const { return CZRDate(m_julian); }
  [[nodiscard]] constexpr CZRTime GetTime() const { return CZRTime(m_seconds); }

  // Takes both halves as they are, or makes both null.
  constexpr void SetDateTime(const CZRDate& date, const CZRTime& time) {
    *this = CZRDateTime(date, time);
  }
  constexpr void SetNullDateTime() { *this = CZRDateTime(); }
  // 1 where both halves are null, else 0.
  [[nodiscard]] constexpr int IsNullDateTime() const { return *this == CZRDateTime() ? 1 : 0; }

  // 1 for Sunday, 2 for Monday, up to 7 for Saturday. Day 0 was a Saturday.
  [[nodiscard]] constexpr int GetDayOfWeek() const { return (m_julian + 6) % 7 + 1; }

  // The span from `earlier` up to this value. Where `earlier` is in fact the later one, the days
  // wrap and the seconds still lie below one day.
  constexpr CZRDateTimeSpan operator-(const CZRDateTime& earlier) const {
    const bool borrow = m_seconds < earlier.m_seconds;
    const std::uint32_t seconds =
        m_seconds + (borrow ? pxd::kSecondsPerDay : 0) - earlier.m_seconds;
    return CZRDateTimeSpan(
        static_cast<unsigned short>(m_julian - earlier.m_julian - (borrow ? 1 : 0)), seconds);
  }

  // Moves the value by the span, carrying between seconds and days. The day number wraps.
  constexpr CZRDateTime& operator+=(const CZRDateTimeSpan& span) {
    m_julian = static_cast<std::uint16_t>(m_julian + span.GetNumDays());
    m_seconds += static_cast<std::uint32_t>(span.GetNumSeconds());
    if (m_seconds >= pxd::kSecondsPerDay) {
      m_julian = static_cast<std::uint16_t>(m_julian + m_seconds / pxd::kSecondsPerDay);
      m_seconds %= pxd::kSecondsPerDay;
    }
    return *this;
  }
  constexpr CZRDateTime& operator-=(const CZRDateTimeSpan& span) {
    m_julian = static_cast<std::uint16_t>(m_julian - span.GetNumDays());
    const auto seconds = static_cast<std::uint32_t>(span.GetNumSeconds());
    if (m_seconds < seconds) {
      --m_julian;
      m_seconds += pxd::kSecondsPerDay;
    }
    m_seconds -= seconds;
    return *this;
  }

  // By the day number, then by the seconds.
  friend constexpr bool operator==(const CZRDateTime&, const CZRDateTime&) = default;
  friend constexpr std::strong_ordering operator<=>(const CZRDateTime&,
                                                    const CZRDateTime&) = default;

 private:
  std::uint16_t m_julian = CZRDate::GetNullJulianDate();
  std::uint32_t m_seconds = CZRTime::GetNullTime();
};

#endif
