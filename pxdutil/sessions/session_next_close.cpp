// When the calendar closes next, and which trading day's close is nearest.
#include <pxdutil/sessions/session.h>

#include <algorithm>
#include <cstdint>

#include <pxdutil/sessions/detail/week.h>

using namespace pxd::detail;

namespace {

// From a close to one second into the week behind it.
constexpr std::int64_t kIntoNextWeek = kSecondsPerWeek + 1;

const CZRDateTimeSpan kOneWeek(7, 0);

// Whether `dt`, moved forward by `seconds`, still has a day number.
bool HasDayAfter(const CZRDateTime& dt, std::int64_t seconds) {
  const std::int64_t days = (dt.GetTime().GetTime() + seconds) / pxd::kSecondsPerDay;
  return dt.GetDate().GetJulianDate() + days < CZRDate::GetNullJulianDate();
}

// A trading day's last session, and how many weeks from this one it is meant.
struct Candidate {
  const ZRGS_SESSION_INFO* session = nullptr;
  int weeks = 0;

  // Its distance from `place`, ahead of it or behind it; a distance the other way is beyond all
  // tolerances, as an unsigned number is.
  [[nodiscard]] std::uint64_t Ahead(std::int64_t place) const {
    return static_cast<std::uint64_t>(CloseAt() - place);
  }
  [[nodiscard]] std::uint64_t Behind(std::int64_t place) const {
    return static_cast<std::uint64_t>(place - CloseAt());
  }

 private:
  [[nodiscard]] std::int64_t CloseAt() const {
    return Seconds(session->CloseMinute) + weeks * kSecondsPerWeek;
  }
};

struct Neighbours {
  Candidate before;
  Candidate after;
};

// The closes round `place`. Without a flagged session, or with none that closes behind `place`
// though the list's last one does, there are none.
Neighbours NeighboursOf(std::int64_t place, const SessionList& sessions) {
  TradingDays day(sessions);
  if (!day.Next()) {
    return {};
  }
  const ZRGS_SESSION_INFO* const first = &day.Last();
  const ZRGS_SESSION_INFO* const last = &sessions.back();
  if (place < Seconds(first->CloseMinute)) {
    return {{last, -1}, {first, 0}};
  }
  if (place >= Seconds(last->CloseMinute)) {
    return {{last, 0}, {first, 1}};
  }
  for (const ZRGS_SESSION_INFO* before = first; day.Next(); before = &day.Last()) {
    if (place < Seconds(day.Last().CloseMinute)) {
      return {{before, 0}, {&day.Last(), 0}};
    }
  }
  return {};
}

}  // namespace

void CZRGSSession::GetNextSessionCloseDT(ResetType reset, const CZRDateTime& dt, CZRDateTime& open,
                                         CZRDateTime& close) const {
  const CZRDateTime asked = dt;  // which may be one of the outputs
  open = CZRDateTime(CZRDateTime::LimitNull);
  switch (reset) {
    case ResetWeek:
      GetNextWeeklySessionCloseDT(asked, close);
      return;
    case ResetMonth:
      GetNextMonthlySessionCloseDT(asked, close);
      return;
    case ResetYear:
      return;
    case ResetNone:
    case ResetDay:
      break;
  }

  // By the list as it stands, counted from Sunday and in whole minutes, which leaves the seconds of
  // `dt` in the answer.
  const SessionList& sessions = m_sessions.sessions;
  if (sessions.empty()) {
    return;
  }
  const auto minute = static_cast<std::uint16_t>(
      (asked.GetDayOfWeek() - 1) * kMinutesPerDay +
      static_cast<std::int64_t>(asked.GetTime().GetTime()) / pxd::kSecondsPerMinute);
  const auto next = std::find_if(sessions.begin(), sessions.end(),
                                 [&](const auto& session) { return session.OpenMinute >= minute; });
  const ZRGS_SESSION_INFO& session = next != sessions.end() ? *next : sessions.front();
  const int weeksOn = next != sessions.end() ? 0 : kMinutesPerWeek;
  close = MovedBy(asked, Seconds(session.CloseMinute + weeksOn - minute));
  open = MovedBy(asked, Seconds(session.OpenMinute + weeksOn - minute));
}

void CZRGSSession::GetNextWeeklySessionCloseDT(const CZRDateTime& dt, CZRDateTime& close) const {
  if (m_sessions.sessions.empty()) {
    return;
  }
  const CZRGSSession& local = _Set_local(1);
  const SessionList& counted = local.m_normalized.sessions;
  if (counted.empty()) {
    return;  // a calendar assigned behind the first lookup brought no cache with it
  }
  const int firstOpen = local.m_sessions.sessions.front().OpenMinute;
  const std::int64_t lastClose = Seconds(counted.back().CloseMinute);
  for (CZRDateTime from = dt;;) {
    std::int64_t place = PlaceInWeek(from, firstOpen);
    if (place < 0) {
      place += kOneDay;
    }
    if (place < lastClose) {
      close = MovedBy(from, lastClose - place);
      return;
    }
    // A week that ends where it begins has no next close, nor has the end of all days.
    const std::int64_t ahead = kIntoNextWeek - lastClose;
    if (lastClose == 0 || !HasDayAfter(from, ahead)) {
      return;
    }
    from = MovedBy(from, ahead);
  }
}

void CZRGSSession::GetNextMonthlySessionCloseDT(const CZRDateTime& dt, CZRDateTime& close) const {
  if (m_sessions.sessions.empty()) {
    return;
  }
  for (CZRDateTime from = dt;;) {
    CZRGSSession& local = _Set_local(0);
    const CZRDate nextMonth = FirstOfNextMonth(from.GetDate());
    CZRDate lastWeek = WeekBefore(nextMonth);
    local.NormalizeToDayOfWeekFromSunday(DayOfWeek(lastWeek));
    local.UnwrapMinutes();
    const SessionList& sessions = local.m_sessions.sessions;
    const ZRGS_SESSION_INFO* last = LastDayOfWeek(sessions);
    if (last == nullptr || last->CloseMinute == 0) {
      lastWeek = WeekBefore(lastWeek);
      last = &sessions.back();
    }
    close = MinutesInto(lastWeek, last->CloseMinute);
    // Behind the last month of all days there is no other.
    if (from <= close || nextMonth == CZRDate()) {
      return;
    }
    from = CZRDateTime(nextMonth, CZRTime(0));
  }
}

void CZRGSSession::GetNextYearlySessionCloseDT(const CZRDateTime&, CZRDateTime&) const {}

int CZRGSSession::GetNearestDay(const CZRDateTime& dt, const CZRDateTimeSpan& tolerance,
                                std::uint16_t ZRGS_SESSION_INFO::*edge, CZRDateTime& out) const {
  // The list itself, not what an earlier look-up made of it, which may be there still.
  if (m_sessions.sessions.empty()) {
    return 0;
  }
  const Place found = FindPlace(dt, kEndOfWeekBefore);
  const std::int64_t place = found.seconds;
  const auto [before, after] = NeighboursOf(place, found.sessions);
  if (before.session == nullptr) {
    return 0;
  }
  const std::uint64_t most =
      std::uint64_t{tolerance.GetNumDays()} * pxd::kSecondsPerDay + tolerance.GetNumSeconds();
  const std::uint64_t behind = before.Behind(place);
  const std::uint64_t ahead = after.Ahead(place);
  if (behind > most && ahead > most) {
    return 0;
  }
  // The nearer of the two, and of equal ones the one that has passed.
  const Candidate& chosen = behind <= ahead ? before : after;
  CZRDateTime moved = MovedBy(dt, Seconds(chosen.session->*edge) - place);
  if (chosen.weeks > 0) {
    moved += kOneWeek;
  } else if (chosen.weeks < 0) {
    moved -= kOneWeek;
  }
  out = moved;
  return 1;
}

int CZRGSSession::GetSessionInfoResetNearestDay(const CZRDateTime& dt,
                                                const CZRDateTimeSpan& tolerance,
                                                CZRDateTime& close) const {
  return GetNearestDay(dt, tolerance, &ZRGS_SESSION_INFO::CloseMinute, close);
}

int CZRGSSession::GetStartOfSessionInfoResetNearestDay(const CZRDateTime& dt,
                                                       const CZRDateTimeSpan& tolerance,
                                                       CZRDateTime& open) const {
  return GetNearestDay(dt, tolerance, &ZRGS_SESSION_INFO::OpenMinute, open);
}

int CZRGSSession::GetSessionInfoNearest(ResetType reset, const CZRDateTime& dt,
                                        const CZRDateTimeSpan& tolerance,
                                        CZRDateTime& close) const {
  return reset == ResetDay ? GetSessionInfoResetNearestDay(dt, tolerance, close) : 0;
}

int CZRGSSession::GetStartOfSessionInfoNearest(ResetType reset, const CZRDateTime& dt,
                                               const CZRDateTimeSpan& tolerance,
                                               CZRDateTime& open) const {
  return reset == ResetDay ? GetStartOfSessionInfoResetNearestDay(dt, tolerance, open) : 0;
}
