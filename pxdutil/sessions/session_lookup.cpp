// Where in the calendar a date-time falls.
#include <pxdutil/sessions/session.h>

#include <algorithm>
#include <limits>

#include <pxdutil/sessions/detail/week.h>

using namespace pxd::detail;

namespace {

// What is added to a place before the first open: it lies at the end of the week before.
constexpr std::int64_t kEndOfWeekBefore = kSecondsPerWeek;
// The week lookup adds a day only. Weekly bars have always been cut that way.
constexpr std::int64_t kOneDay = pxd::kSecondsPerDay;

const CZRDateTimeSpan kOneWeek(7, 0);

void Raise(unsigned short* flags, unsigned bits) {
  if (flags != nullptr) {
    *flags = static_cast<unsigned short>(*flags | bits);
  }
}

// Whether a place lies at or behind the open and before the close.
bool IsInside(std::int64_t place, const ZRGS_SESSION_INFO& session) {
  return Seconds(session.OpenMinute) <= place && place < Seconds(session.CloseMinute);
}

// Which window behind the close of a session a place lies in: the dribble window first.
CZRGSSession::Status WindowAt(std::int64_t place, const ZRGS_SESSION_INFO& session) {
  if (place < Seconds(session.CloseMinute + session.DribbleMinutes)) {
    return CZRGSSession::StatusDribble;
  }
  if (place < Seconds(session.CloseMinute + session.ResetMinutes)) {
    return CZRGSSession::StatusReset;
  }
  return CZRGSSession::StatusClosed;
}

}  // namespace

CZRGSSession::ReturnType CZRGSSession::GetRelativeDT(unsigned long from, unsigned long to,
                                                     const CZRDateTime& dt, CZRDateTime& out) {
  // A place before the first open comes as a number that has wrapped; the difference is right.
  out = MovedBy(dt, static_cast<long>(to - from));
  return ReturnOK;
}

CZRGSSession::Place CZRGSSession::FindPlace(const CZRDateTime& dt, std::int64_t beforeOpen) const {
  // The copy is normalised by its own flag, which is not this object's: after a month or year
  // lookup it is counted afresh from the list, else it is this object's.
  CZRGSSession& local = _Set_local(1);
  const int firstOpen = local.NormalizeToStartOfTradingWeekFromSunday();
  std::int64_t seconds = PlaceInWeek(dt, firstOpen);
  if (seconds < 0) {
    seconds += beforeOpen;
  }
  return {local.m_normalized.sessions, seconds};
}

CZRGSSession::ReturnType CZRGSSession::GetSessionInfo(ResetType reset, const CZRDateTime& dt,
                                                      CZRDateTime& start, CZRDateTime& end,
                                                      Status& status, unsigned long& index,
                                                      unsigned short& flags) const {
  switch (reset) {
    case ResetNone:
      return GetSessionInfoResetNone(dt, start, end, status, index, &flags);
    case ResetDay:
      return GetSessionInfoResetDay(dt, start, end, status, index, &flags);
    case ResetWeek:
      return GetSessionInfoResetWeek(dt, start, end, status, index, &flags);
    case ResetMonth:
      return GetSessionInfoResetMonth(dt, start, end, status, index, &flags);
    case ResetYear:
      return GetSessionInfoResetYear(dt, start, end, status, index, &flags);
  }
  return ReturnFail;
}

CZRGSSession::ReturnType CZRGSSession::GetSessionInfo(ResetType reset, const CZRDateTime& dt,
                                                      CZRDateTime& start, CZRDateTime& end,
                                                      Status& status, unsigned long& index) const {
  unsigned short flags = 0;
  return GetSessionInfo(reset, dt, start, end, status, index, flags);
}

CZRGSSession::ReturnType CZRGSSession::GetSessionInfoResetNone(const CZRDateTime& dt,
                                                               CZRDateTime& start, CZRDateTime& end,
                                                               Status& status, unsigned long& index,
                                                               unsigned short* flags) const {
  const auto [sessions, place] = FindPlace(dt, kEndOfWeekBefore);
  status = StatusClosed;
  bool followsReset = !sessions.empty() && sessions.back().ResetFlag != 0;
  for (std::size_t i = 0; i < sessions.size(); ++i) {
    const ZRGS_SESSION_INFO& session = sessions[i];
    if (Seconds(session.OpenMinute) <= place) {
      status = IsInside(place, session) ? StatusOpen : WindowAt(place, session);
    }
    if (status != StatusClosed) {
      start = MovedBy(dt, Seconds(session.OpenMinute) - place);
      end = MovedBy(dt, Seconds(session.CloseMinute) - place);
      index = static_cast<unsigned long>(i);
      if (session.ResetFlag != 0) {
        Raise(flags, kEndsInReset);
      }
      break;
    }
    followsReset = session.ResetFlag != 0;
  }
  if (followsReset) {
    Raise(flags, kFollowsReset);
  }
  return ReturnOK;
}

CZRGSSession::ReturnType CZRGSSession::GetSessionInfoResetDay(const CZRDateTime& dt,
                                                              CZRDateTime& start, CZRDateTime& end,
                                                              Status& status, unsigned long& index,
                                                              unsigned short* flags) const {
  const auto [sessions, place] = FindPlace(dt, kEndOfWeekBefore);
  status = StatusClosed;
  index = 0;
  for (TradingDays day(sessions); day.Next();) {
    const ZRGS_SESSION_INFO& last = day.Last();
    if (place < Seconds(day.First().OpenMinute) ||
        place >= Seconds(last.CloseMinute + LongerWindow(last))) {
      continue;
    }
    start = MovedBy(dt, Seconds(day.First().OpenMinute) - place);
    end = MovedBy(dt, Seconds(last.CloseMinute) - place);
    status = StatusInPeriod;
    for (std::size_t i = day.FirstIndex(); i <= day.LastIndex() && status != StatusOpen; ++i) {
      if (IsInside(place, sessions[i])) {
        status = StatusOpen;
      }
    }
    if (status != StatusOpen && place >= Seconds(last.CloseMinute)) {
      status = WindowAt(place, last);
    }
    Raise(flags, kEndsInReset);
    break;
  }
  Raise(flags, kFollowsReset);
  return ReturnOK;
}

CZRGSSession::ReturnType CZRGSSession::GetSessionInfoResetWeek(const CZRDateTime& dt,
                                                               CZRDateTime& start, CZRDateTime& end,
                                                               Status& status, unsigned long& index,
                                                               unsigned short* flags) const {
  Raise(flags, kFollowsReset | kEndsInReset);
  const auto [sessions, place] = FindPlace(dt, kOneDay);
  if (sessions.empty()) {
    status = StatusClosed;
    return ReturnOK;
  }
  // A copy: the inner lookup rewrites the list.
  const ZRGS_SESSION_INFO last = sessions.back();
  if (place < Seconds(last.CloseMinute)) {
    GetSessionInfoResetNone(dt, start, end, status, index, nullptr);
    const bool inSession = status == StatusOpen || status == StatusDribble;
    status = inSession ? StatusOpen : StatusInPeriod;
  } else {
    status = WindowAt(place, last);
  }
  if (status != StatusClosed) {
    start = MovedBy(dt, -place);
    end = MovedBy(dt, Seconds(last.CloseMinute) - place);
  }
  return ReturnOK;
}

CZRGSSession::Status CZRGSSession::StatusInDay(const CZRDateTime& dt) const {
  CZRDateTime start;
  CZRDateTime end;
  Status status;
  unsigned long index;
  GetSessionInfoResetDay(dt, start, end, status, index, nullptr);
  return status;
}

CZRGSSession::ReturnType CZRGSSession::GetSessionInfoResetMonth(const CZRDateTime& dt,
                                                                CZRDateTime& start,
                                                                CZRDateTime& end, Status& status,
                                                                unsigned long&,
                                                                unsigned short* flags) const {
  Raise(flags, kFollowsReset | kEndsInReset);
  status = StatusClosed;
  if (m_sessions.sessions.empty()) {
    return ReturnOK;
  }

  // The month starts with the trading day that has the first open or close behind its midnight. The
  // list is counted from that midnight; a day that was running then opens late in it.
  const CZRDate first = FirstOfMonth(dt.GetDate());
  CZRGSSession& local = _Set_local(0);
  local.NormalizeToDayOfWeekFromSunday(DayOfWeek(first));
  const SessionList& sessions = local.m_sessions.sessions;
  int firstEvent = std::numeric_limits<int>::max();
  int dayOpen = 0;
  int openOfFirstEvent = 0;
  bool startsDay = true;
  for (const ZRGS_SESSION_INFO& session : sessions) {
    if (startsDay) {
      dayOpen = session.OpenMinute;
    }
    startsDay = session.ResetFlag != 0;
    const int event = std::min(session.OpenMinute, session.CloseMinute);
    if (event < firstEvent) {
      firstEvent = event;
      openOfFirstEvent = dayOpen;
    }
  }
  start = MinutesInto(first, openOfFirstEvent);
  if (firstEvent < openOfFirstEvent) {
    start -= kOneWeek;
  }

  // It ends with the last trading day that closes in the week before the next month. Where that
  // week has none, with the last session of the week before it.
  _Set_local(0);
  CZRDate lastWeek = WeekBefore(FirstOfNextMonth(dt.GetDate()));
  local.NormalizeToDayOfWeekFromSunday(DayOfWeek(lastWeek));
  local.UnwrapMinutes();
  const ZRGS_SESSION_INFO* last = LastDayOfWeek(sessions);
  if (last == nullptr || last->CloseMinute + LongerWindow(*last) == 0) {
    lastWeek = WeekBefore(lastWeek);
    last = &sessions.back();
  }
  end = MinutesInto(lastWeek, last->CloseMinute);
  const CZRDateTime limit = MinutesInto(lastWeek, last->CloseMinute + LongerWindow(*last));

  if (start <= dt && dt < limit) {
    const Status inDay = StatusInDay(dt);
    status = inDay == StatusOpen || inDay == StatusDribble ? inDay : StatusInPeriod;
  }
  return ReturnOK;
}

CZRGSSession::ReturnType CZRGSSession::GetSessionInfoResetYear(const CZRDateTime& dt,
                                                               CZRDateTime& start, CZRDateTime& end,
                                                               Status& status, unsigned long&,
                                                               unsigned short* flags) const {
  if (m_sessions.sessions.empty()) {
    return ReturnFail;
  }
  Raise(flags, kFollowsReset | kEndsInReset);

  const unsigned year = dt.GetDate().GetYear();
  const CZRDate first(1, 1, year);
  CZRGSSession& local = _Set_local(0);
  local.NormalizeToDayOfWeekFromSunday(DayOfWeek(first));
  const SessionList& sessions = local.m_sessions.sessions;
  int dayOpen = sessions.front().OpenMinute;
  for (std::size_t i = 1; i < sessions.size(); ++i) {
    if (sessions[i - 1].ResetFlag != 0) {
      dayOpen = std::min<int>(dayOpen, sessions[i].OpenMinute);
    }
  }
  start = MinutesInto(first, dayOpen);

  // The list isn't taken afresh as for a month, so it is turned twice. Yearly ends are known and
  // stored with that turn in them.
  const CZRDate lastWeek = WeekBefore(CZRDate(1, 1, year + 1));
  local.NormalizeToDayOfWeekFromSunday(DayOfWeek(lastWeek));
  local.UnwrapMinutes();
  const ZRGS_SESSION_INFO* last = LastDayOfWeek(sessions);
  end = MinutesInto(lastWeek, last != nullptr ? last->CloseMinute : 0);

  status = StatusClosed;
  if (start <= dt && dt < end) {
    const Status inDay = StatusInDay(dt);
    status = inDay == StatusOpen || inDay == StatusDribble ? StatusOpen : StatusInPeriod;
  }
  // Never ReturnOK: the building of bars depends on a yearly lookup that counts as failed.
  return ReturnFail;
}

CZRGSSession::ReturnType CZRGSSession::GetNextDailyResetSessionInfo(const CZRDateTime& dt,
                                                                    CZRDateTime& open,
                                                                    CZRDateTime& close,
                                                                    unsigned long& index) const {
  const auto [sessions, place] = FindPlace(dt, kEndOfWeekBefore);
  for (TradingDays day(sessions); day.Next();) {
    if (place < Seconds(day.Last().CloseMinute)) {
      open = MovedBy(dt, Seconds(day.First().OpenMinute) - place);
      close = MovedBy(dt, Seconds(day.Last().CloseMinute) - place);
      index = static_cast<unsigned long>(day.LastIndex());
      return ReturnOK;
    }
  }
  // All days of this week have closed: it is the first day of the next.
  TradingDays day(sessions);
  if (day.Next()) {
    open = MovedBy(dt, Seconds(day.First().OpenMinute) - place + kSecondsPerWeek);
    close = MovedBy(dt, Seconds(day.Last().CloseMinute) - place + kSecondsPerWeek);
    index = static_cast<unsigned long>(day.LastIndex());
  } else if (!sessions.empty()) {
    index = static_cast<unsigned long>(sessions.size() - 1);
  }
  return ReturnOK;
}

CZRGSSession::ReturnType CZRGSSession::GetPreviousDailyResetDateTime(CZRDateTime& dt,
                                                                     int evenIfInside) const {
  const SessionList& sessions = _Set_local(0).m_sessions.sessions;
  if (sessions.empty()) {
    return ReturnFail;
  }
  // Counted from Sunday, so the days of a week that wraps are judged by their bare minutes.
  const std::int64_t place = PlaceInWeek(dt, 0);
  const ZRGS_SESSION_INFO* before = nullptr;  // the last session of the day before
  bool found = false;
  for (TradingDays day(sessions); day.Next();) {
    if (place < Seconds(day.First().OpenMinute)) {
      found = true;
      break;
    }
    if (place < Seconds(day.Last().CloseMinute)) {
      if (evenIfInside == 0) {
        return ReturnOK;
      }
      found = true;
      break;
    }
    before = &day.Last();
  }
  std::int64_t back = 0;
  if (before != nullptr) {
    back = place - Seconds(before->CloseMinute);
  } else if (found) {
    back = place + Seconds(kMinutesPerWeek - sessions.back().CloseMinute);
  } else {
    return ReturnFail;
  }

  // A date-time that the calendar doesn't reach is null.
  const std::int64_t moved = std::int64_t{dt.GetDate().GetJulianDate()} * pxd::kSecondsPerDay +
                             dt.GetTime().GetTime() - back;
  const bool real = dt.GetDate() != CZRDate() && moved >= 0 &&
                    moved / pxd::kSecondsPerDay < CZRDate::GetNullJulianDate();
  dt = real ? MovedBy(dt, -back) : CZRDateTime(CZRDateTime::LimitNull);
  return ReturnOK;
}
