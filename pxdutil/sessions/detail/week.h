// The arithmetic of the trading week that the sources of CZRGSSession share.
#ifndef PXDUTIL_SESSIONS_DETAIL_WEEK_H
#define PXDUTIL_SESSIONS_DETAIL_WEEK_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include <pxdutil/sessions/date_time.h>
#include <pxdutil/sessions/session.h>

namespace pxd::detail {

using SessionList = std::vector<ZRGS_SESSION_INFO>;

// Whether two lists are the same word for word. Lists may be edited in place at any time.
[[nodiscard]] inline bool AreSame(const SessionList& a, const SessionList& b) {
  return a.size() == b.size() &&
         (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(ZRGS_SESSION_INFO)) == 0);
}

// A valid list holds 1 to this many sessions.
inline constexpr std::size_t kMaxSessions = 256;

inline constexpr int kMinutesPerDay = 1440;
inline constexpr int kMinutesPerWeek = 10080;
inline constexpr std::int64_t kSecondsPerWeek = std::int64_t{7} * kSecondsPerDay;

// What is added to a place before the first open: it lies at the end of the week before.
inline constexpr std::int64_t kEndOfWeekBefore = kSecondsPerWeek;
// The week lookup adds a day only. Weekly bars have always been cut that way.
inline constexpr std::int64_t kOneDay = kSecondsPerDay;

// The longer of the two windows behind a close.
[[nodiscard]] inline int LongerWindow(const ZRGS_SESSION_INFO& session) {
  return std::max<int>(session.ResetMinutes, session.DribbleMinutes);
}

// The minute of the week at which a session and, where it is flagged, its windows are over. An end
// behind the end of the week is taken back by one week, once.
[[nodiscard]] inline int EffectiveEnd(const ZRGS_SESSION_INFO& session) {
  const int end = session.CloseMinute + (session.ResetFlag != 0 ? LongerWindow(session) : 0);
  return end > kMinutesPerWeek ? end - kMinutesPerWeek : end;
}

// Goes through a list from its second session on and tells where a session runs into what follows
// it: the next session, or, from where the list has wrapped past the end of the week, its own
// start.
class OverlapCheck {
 public:
  static constexpr int kNone = -1;

  OverlapCheck(const ZRGS_SESSION_INFO& first, bool wrapped)
      : m_firstOpen(first.OpenMinute), m_end(EffectiveEnd(first)), m_wrapped(wrapped) {}

  // The minute that the session before `next` runs into, or kNone.
  int Step(const ZRGS_SESSION_INFO& next) {
    const int open = next.OpenMinute;
    m_wrapped = m_wrapped || open < m_firstOpen;
    const int limit = m_wrapped ? m_firstOpen : open;
    const bool overlaps = m_end > limit;
    m_end = EffectiveEnd(next);
    return overlaps ? limit : kNone;
  }

 private:
  int m_firstOpen;
  int m_end;
  bool m_wrapped;
};

// The last flagged session that closes before the end of the week, null where there is none.
[[nodiscard]] inline const ZRGS_SESSION_INFO* LastDayOfWeek(const SessionList& sessions) {
  const auto found = std::find_if(sessions.rbegin(), sessions.rend(), [](const auto& session) {
    return session.ResetFlag != 0 && session.CloseMinute < kMinutesPerWeek;
  });
  return found != sessions.rend() ? &*found : nullptr;
}

// Minutes of the week as a place in seconds.
[[nodiscard]] constexpr std::int64_t Seconds(std::int64_t minutes) {
  return minutes * kSecondsPerMinute;
}

// The place of `dt` in the week, in seconds from the minute `origin`; below 0 before it.
[[nodiscard]] inline std::int64_t PlaceInWeek(const CZRDateTime& dt, std::int64_t origin) {
  return dt.GetTime().GetTime() + Seconds((dt.GetDayOfWeek() - 1) * kMinutesPerDay - origin);
}

// `dt` moved by a number of seconds, backwards where it is negative.
[[nodiscard]] inline CZRDateTime MovedBy(const CZRDateTime& dt, std::int64_t seconds) {
  // Round all days there are, which leaves every date as it is, so that nothing is below 0.
  constexpr std::int64_t kRound = std::int64_t{0x10000} * kSecondsPerDay;
  const std::uint32_t time = dt.GetTime().GetTime();
  if (time < kSecondsPerDay && seconds > -kRound && seconds < kRound) {
    const auto moved = static_cast<std::uint64_t>(kRound + time + seconds);
    return CZRDateTime(
        CZRDate(static_cast<unsigned short>(dt.GetDate().GetJulianDate() + moved / kSecondsPerDay)),
        CZRTime(static_cast<unsigned>(moved % kSecondsPerDay)));
  }
  const auto forward = static_cast<std::uint64_t>(seconds);
  const std::uint64_t distance = seconds < 0 ? 0 - forward : forward;
  const CZRDateTimeSpan span(static_cast<unsigned short>(distance / kSecondsPerDay),
                             static_cast<unsigned long>(distance % kSecondsPerDay));
  CZRDateTime moved = dt;
  return seconds < 0 ? moved -= span : moved += span;
}

// Midnight of `date`, plus minutes.
[[nodiscard]] inline CZRDateTime MinutesInto(CZRDate date, int minutes) {
  return MovedBy(CZRDateTime(date, CZRTime(0)), Seconds(minutes));
}

// The same weekday of the week before.
[[nodiscard]] inline CZRDate WeekBefore(CZRDate date) {
  return CZRDate(static_cast<unsigned short>(date.GetJulianDate() - 7));
}

[[nodiscard]] inline int DayOfWeek(CZRDate date) {
  return CZRDateTime(date, CZRTime(0)).GetDayOfWeek();
}

// The first day of the month of `date`, and of the month behind it.
[[nodiscard]] inline CZRDate FirstOfMonth(CZRDate date) {
  return CZRDate(date.GetMonth(), 1, date.GetYear());
}

[[nodiscard]] inline CZRDate FirstOfNextMonth(CZRDate date) {
  const unsigned month = date.GetMonth();
  return month == 12 ? CZRDate(1, 1, date.GetYear() + 1) : CZRDate(month + 1, 1, date.GetYear());
}

// Walks the trading days of a list: the runs of sessions that end with a flagged one. Sessions
// behind the last flagged one belong to no day.
//
//   for (TradingDays day(sessions); day.Next();) use(day.First(), day.Last());
class TradingDays {
 public:
  explicit TradingDays(const SessionList& sessions) : m_sessions(sessions) {}

  // Goes on to the next day, the first one to begin with; false where there is none.
  bool Next() {
    m_first = m_behind;
    for (std::size_t i = m_first; i < m_sessions.size(); ++i) {
      if (m_sessions[i].ResetFlag != 0) {
        m_behind = i + 1;
        return true;
      }
    }
    return false;
  }

  // The places of the day's first and last session.
  [[nodiscard]] std::size_t FirstIndex() const { return m_first; }
  [[nodiscard]] std::size_t LastIndex() const { return m_behind - 1; }
  [[nodiscard]] const ZRGS_SESSION_INFO& First() const { return m_sessions[FirstIndex()]; }
  [[nodiscard]] const ZRGS_SESSION_INFO& Last() const { return m_sessions[LastIndex()]; }

 private:
  const SessionList& m_sessions;
  std::size_t m_first = 0;
  std::size_t m_behind = 0;
};

}  // namespace pxd::detail

#endif
