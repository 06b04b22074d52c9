#include <pxdutil/sessions/detail/week_index.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace pxd::detail {
namespace {

// Whether a place lies at or behind the open and before the close.
bool IsInside(std::int64_t place, const ZRGS_SESSION_INFO& session) {
  return Seconds(session.OpenMinute) <= place && place < Seconds(session.CloseMinute);
}

}  // namespace

CZRGSSession::Status WindowAt(std::int64_t place, const ZRGS_SESSION_INFO& session) {
  if (place < Seconds(session.CloseMinute + session.DribbleMinutes)) {
    return CZRGSSession::StatusDribble;
  }
  if (place < Seconds(session.CloseMinute + session.ResetMinutes)) {
    return CZRGSSession::StatusReset;
  }
  return CZRGSSession::StatusClosed;
}

SessionAnswer AskSessions(const SessionList& sessions, std::int64_t place) {
  SessionAnswer answer;
  bool followsReset = !sessions.empty() && sessions.back().ResetFlag != 0;
  for (std::size_t i = 0; i < sessions.size(); ++i) {
    const ZRGS_SESSION_INFO& session = sessions[i];
    if (Seconds(session.OpenMinute) <= place) {
      answer.status =
          IsInside(place, session) ? CZRGSSession::StatusOpen : WindowAt(place, session);
    }
    if (answer.status != CZRGSSession::StatusClosed) {
      answer.index = i;
      answer.open = Seconds(session.OpenMinute);
      answer.close = Seconds(session.CloseMinute);
      answer.flags = session.ResetFlag != 0 ? CZRGSSession::kEndsInReset : 0;
      break;
    }
    followsReset = session.ResetFlag != 0;
  }
  if (followsReset) {
    answer.flags |= CZRGSSession::kFollowsReset;
  }
  return answer;
}

DayAnswer AskDays(const SessionList& sessions, std::int64_t place) {
  for (TradingDays day(sessions); day.Next();) {
    const ZRGS_SESSION_INFO& last = day.Last();
    if (place < Seconds(day.First().OpenMinute) ||
        place >= Seconds(last.CloseMinute + LongerWindow(last))) {
      continue;
    }
    DayAnswer answer{CZRGSSession::StatusInPeriod, Seconds(day.First().OpenMinute),
                     Seconds(last.CloseMinute)};
    for (std::size_t i = day.FirstIndex();
         i <= day.LastIndex() && answer.status != CZRGSSession::StatusOpen; ++i) {
      if (IsInside(place, sessions[i])) {
        answer.status = CZRGSSession::StatusOpen;
      }
    }
    if (answer.status != CZRGSSession::StatusOpen && place >= Seconds(last.CloseMinute)) {
      answer.status = WindowAt(place, last);
    }
    return answer;
  }
  return {};
}

WeekIndex::WeekIndex(const SessionList& sessions) {
  m_starts.reserve(2 + 4 * sessions.size());
  m_starts.push_back(std::numeric_limits<std::int64_t>::min());
  for (const ZRGS_SESSION_INFO& session : sessions) {
    const int close = session.CloseMinute;
    for (const int minute : {int{session.OpenMinute}, close, close + session.DribbleMinutes,
                             close + session.ResetMinutes}) {
      m_starts.push_back(Seconds(minute));
    }
  }
  std::sort(m_starts.begin(), m_starts.end());
  m_starts.erase(std::unique(m_starts.begin(), m_starts.end()), m_starts.end());
  m_stretches.reserve(m_starts.size());
  for (const std::int64_t start : m_starts) {
    m_stretches.push_back({AskSessions(sessions, start), AskDays(sessions, start)});
  }
  for (std::size_t hour = 0; hour < m_firstOfHour.size(); ++hour) {
    m_firstOfHour[hour] =
        static_cast<std::uint32_t>(FindAnywhere(static_cast<std::int64_t>(hour) * kSecondsPerHour));
  }
  m_starts.push_back(std::numeric_limits<std::int64_t>::max());
}

std::size_t WeekIndex::FindAnywhere(std::int64_t place) const {
  const auto behind = std::upper_bound(m_starts.begin(), m_starts.end(), place);
  return static_cast<std::size_t>(behind - m_starts.begin()) - 1;
}

}  // namespace pxd::detail
