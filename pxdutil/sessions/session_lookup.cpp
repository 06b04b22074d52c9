// Where in the calendar a date-time falls.
#include <pxdutil/sessions/session.h>

#include <algorithm>
#include <limits>

#include <pxdutil/sessions/detail/month_memo.h>
#include <pxdutil/sessions/detail/week.h>
#include <pxdutil/sessions/detail/week_index.h>

using namespace pxd::detail;

namespace {

const CZRDateTimeSpan kOneWeek(7, 0);

void Raise(unsigned short* flags, unsigned bits) {
  if (flags != nullptr) {
    *flags = static_cast<unsigned short>(*flags | bits);
  }
}

}  // namespace

CZRGSSession::ReturnType CZRGSSession::GetRelativeDT(unsigned long from, unsigned long to,
                                                     const CZRDateTime& dt, CZRDateTime& out) {
  // A place before the first open comes as a number that has wrapped; the difference is right.
  out = MovedBy(dt, static_cast<long>(to - from));
  return ReturnOK;
}

CZRGSSession::Place CZRGSSession::FindPlace(const CZRDateTime& dt, std::int64_t beforeOpen) const {
  const int firstOpen = NormalizeToStartOfTradingWeekFromSunday();
  std::int64_t seconds = PlaceInWeek(dt, firstOpen);
  if (seconds < 0) {
    seconds += beforeOpen;
  }
  if (!AsksOwnCount()) {
    CZRGSSession& local = _Set_local(0);
    local.NormalizeToStartOfTradingWeekFromSunday();
    return {local.m_normalized.sessions, nullptr, seconds};
  }
  return {m_normalized.sessions, m_index != nullptr ? m_index.get() : Indexed(), seconds};
}

// A look-up asks the working copy, which is normalised by its own flag and not by this object's:
// after a month or year look-up it is counted afresh from the list, else it has the count of this
// object. Where both are the same, as they are unless the list was edited in between, the copy is
// left out.
bool CZRGSSession::AsksOwnCount() const {
  if (m_local == nullptr) {
    return false;
  }
  if (m_local->m_isNormalized == 1 || m_sessions.sessions.empty()) {
    return true;
  }
  if (!IsCountedFromFirstOpen()) {
    return false;
  }
  m_local->m_isNormalized = 1;
  return true;
}

const WeekIndex* CZRGSSession::Indexed() const {
  // Making the index takes about as long as so many look-ups without it.
  if (++m_plainLookups > 4 * m_normalized.sessions.size()) {
    m_index = std::make_unique<WeekIndex>(m_normalized.sessions);
  }
  return m_index.get();
}

SessionAnswer CZRGSSession::SessionAt(const Place& place) {
  return place.index != nullptr ? place.index->At(place.seconds).session
                                : AskSessions(place.sessions, place.seconds);
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
  const Place place = FindPlace(dt, kEndOfWeekBefore);
  const SessionAnswer answer = SessionAt(place);
  status = answer.status;
  if (status != StatusClosed) {
    start = MovedBy(dt, answer.open - place.seconds);
    end = MovedBy(dt, answer.close - place.seconds);
    index = static_cast<unsigned long>(answer.index);
  }
  Raise(flags, answer.flags);
  return ReturnOK;
}

CZRGSSession::ReturnType CZRGSSession::GetSessionInfoResetDay(const CZRDateTime& dt,
                                                              CZRDateTime& start, CZRDateTime& end,
                                                              Status& status, unsigned long& index,
                                                              unsigned short* flags) const {
  const Place place = FindPlace(dt, kEndOfWeekBefore);
  const DayAnswer answer = place.index != nullptr ? place.index->At(place.seconds).day
                                                  : AskDays(place.sessions, place.seconds);
  status = answer.status;
  index = 0;
  if (status != StatusClosed) {
    start = MovedBy(dt, answer.open - place.seconds);
    end = MovedBy(dt, answer.close - place.seconds);
    Raise(flags, kEndsInReset);
  }
  Raise(flags, kFollowsReset);
  return ReturnOK;
}

CZRGSSession::ReturnType CZRGSSession::GetSessionInfoResetWeek(const CZRDateTime& dt,
                                                               CZRDateTime& start, CZRDateTime& end,
                                                               Status& status, unsigned long& index,
                                                               unsigned short* flags) const {
  Raise(flags, kFollowsReset | kEndsInReset);
  const Place bare = FindPlace(dt, 0);
  if (bare.sessions.empty()) {
    status = StatusClosed;
    return ReturnOK;
  }
  // A copy: to look for the session may count the list afresh.
  const ZRGS_SESSION_INFO last = bare.sessions.back();
  const std::int64_t place = bare.seconds < 0 ? bare.seconds + kOneDay : bare.seconds;
  if (place < Seconds(last.CloseMinute)) {
    const std::int64_t own = bare.seconds < 0 ? bare.seconds + kEndOfWeekBefore : bare.seconds;
    const SessionAnswer answer = bare.index != nullptr ? bare.index->At(own).session
                                                       : SessionAt(FindPlace(dt, kEndOfWeekBefore));
    if (answer.status != StatusClosed) {
      index = static_cast<unsigned long>(answer.index);
    }
    const bool inSession = answer.status == StatusOpen || answer.status == StatusDribble;
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

MonthSpan CZRGSSession::FindMonth(const CZRDate& first, const CZRDate& next) const {
  // The month starts with the trading day that has the first open or close behind its midnight. The
  // list is counted from that midnight; a day that was running then opens late in it.
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
  MonthSpan month;
  month.start = MinutesInto(first, openOfFirstEvent);
  if (firstEvent < openOfFirstEvent) {
    month.start -= kOneWeek;
  }

  // It ends with the last trading day that closes in the week before the next month. Where that
  // week has none, with the last session of the week before it.
  _Set_local(0);
  CZRDate lastWeek = WeekBefore(next);
  local.NormalizeToDayOfWeekFromSunday(DayOfWeek(lastWeek));
  local.UnwrapMinutes();
  const ZRGS_SESSION_INFO* last = LastDayOfWeek(sessions);
  if (last == nullptr || last->CloseMinute + LongerWindow(*last) == 0) {
    lastWeek = WeekBefore(lastWeek);
    last = &sessions.back();
  }
  month.end = MinutesInto(lastWeek, last->CloseMinute);
  month.limit = MinutesInto(lastWeek, last->CloseMinute + LongerWindow(*last));
  return month;
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
  if (m_months == nullptr) {
    m_months = std::make_unique<MonthMemo>();
  }
  const CZRDate first = FirstOfMonth(dt.GetDate());
  const CZRDate next = FirstOfNextMonth(dt.GetDate());
  const MonthSpan* month = m_months->Find(m_sessions.sessions, first, next);
  if (month == nullptr) {
    month = &m_months->Keep(m_sessions.sessions, first, next, FindMonth(first, next));
  } else {
    // To find a month turns the working copy, so that the next look-up counts it afresh.
    m_local->m_isNormalized = 0;
  }
  start = month->start;
  end = month->end;
  if (start <= dt && dt < month->limit) {
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
  const Place place = FindPlace(dt, kEndOfWeekBefore);
  const SessionList& sessions = place.sessions;
  for (TradingDays day(sessions); day.Next();) {
    if (place.seconds < Seconds(day.Last().CloseMinute)) {
      open = MovedBy(dt, Seconds(day.First().OpenMinute) - place.seconds);
      close = MovedBy(dt, Seconds(day.Last().CloseMinute) - place.seconds);
      index = static_cast<unsigned long>(day.LastIndex());
      return ReturnOK;
    }
  }
  // All days of this week have closed: it is the first day of the next.
  TradingDays day(sessions);
  if (day.Next()) {
    open = MovedBy(dt, Seconds(day.First().OpenMinute) - place.seconds + kSecondsPerWeek);
    close = MovedBy(dt, Seconds(day.Last().CloseMinute) - place.seconds + kSecondsPerWeek);
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
