// The validity rules of a list, and the operations that shift, wrap, unwrap and trim it.
#include <pxdutil/sessions/session.h>

#include <algorithm>

#include <pxdutil/sessions/detail/week.h>
#include <pxdutil/sessions/detail/week_index.h>

using namespace pxd::detail;

namespace {

OverlapCheck CheckFrom(const ZRGS_SESSION_INFO& first) {
  return OverlapCheck(first, first.OpenMinute > EffectiveEnd(first));
}

// The minute counted from `origin` on, which is itself a minute of the week.
std::uint16_t CountedFrom(int origin, int minute) {
  const int later = minute < origin ? static_cast<std::uint16_t>(minute + kMinutesPerWeek) : minute;
  return static_cast<std::uint16_t>(later - origin);
}

// The minute moved on by up to a week, and taken back where it reaches the week's end.
std::uint16_t RotatedBy(int shift, int minute) {
  const int sum = static_cast<std::uint16_t>(minute + shift);
  return static_cast<std::uint16_t>(sum >= kMinutesPerWeek ? sum - kMinutesPerWeek : sum);
}

// The minute moved either way. A shift of more than a week back leaves a negative rest, which the
// word carries as it stands.
std::uint16_t OffsetBy(int minutes, std::uint16_t minute) {
  const auto sum = static_cast<std::int32_t>(static_cast<std::uint32_t>(minutes) + minute +
                                             std::uint32_t{kMinutesPerWeek});
  return static_cast<std::uint16_t>(sum % kMinutesPerWeek);
}

std::uint16_t LaterByAWeek(std::uint16_t minute) {
  return static_cast<std::uint16_t>(minute + kMinutesPerWeek);
}

std::uint16_t Wrapped(std::uint16_t minute) {
  return static_cast<std::uint16_t>(minute > kMinutesPerWeek ? minute - kMinutesPerWeek : minute);
}

}  // namespace

int CZRGSSession::IsValid(const ZRGS_SESSION& session) {
  const SessionList& sessions = session.sessions;
  if (sessions.empty() || sessions.size() > kMaxSessions) {
    return 0;
  }
  OverlapCheck check = CheckFrom(sessions.front());
  return std::all_of(sessions.begin() + 1, sessions.end(), [&](const ZRGS_SESSION_INFO& next) {
    return check.Step(next) == OverlapCheck::kNone;
  });
}

bool CZRGSSession::MakeValid() {
  SessionList& sessions = m_sessions.sessions;
  if (sessions.empty() || sessions.size() > kMaxSessions) {
    return false;
  }
  OverlapCheck check = CheckFrom(sessions.front());
  for (std::size_t i = 1; i < sessions.size(); ++i) {
    const int limit = check.Step(sessions[i]);
    if (limit == OverlapCheck::kNone) {
      continue;
    }
    ZRGS_SESSION_INFO& before = sessions[i - 1];
    if (before.CloseMinute >= limit || before.ResetFlag == 0) {
      return false;
    }
    const int longest = limit - before.CloseMinute - 1;
    if (before.DribbleMinutes > longest) {
      before.DribbleMinutes = static_cast<std::uint16_t>(longest) & 0x7FFF;
    }
    if (before.ResetMinutes > longest) {
      before.ResetMinutes = static_cast<std::uint16_t>(longest);
    }
  }
  return true;
}

int CZRGSSession::NormalizeToStartOfTradingWeekFromSunday() const {
  if (m_sessions.sessions.empty()) {
    return 0;
  }
  const int firstOpen = m_sessions.sessions.front().OpenMinute;
  if (m_isNormalized != 1) {
    m_normalized = m_sessions;
    for (ZRGS_SESSION_INFO& session : m_normalized.sessions) {
      session.OpenMinute = CountedFrom(firstOpen, session.OpenMinute);
      session.CloseMinute = CountedFrom(firstOpen, session.CloseMinute);
    }
    m_isNormalized = 1;
    m_index.reset();
    m_plainLookups = 0;
  }
  return firstOpen;
}

bool CZRGSSession::IsCountedFromFirstOpen() const {
  const SessionList& sessions = m_sessions.sessions;
  if (sessions.empty() || (m_index != nullptr && m_index->IsCountOf(sessions))) {
    return true;
  }
  const int firstOpen = sessions.front().OpenMinute;
  const auto same = [&](const ZRGS_SESSION_INFO& session, const ZRGS_SESSION_INFO& counted) {
    return counted.OpenMinute == CountedFrom(firstOpen, session.OpenMinute) &&
           counted.CloseMinute == CountedFrom(firstOpen, session.CloseMinute) &&
           counted.ResetMinutes == session.ResetMinutes &&
           counted.DribbleMinutes == session.DribbleMinutes &&
           counted.ResetFlag == session.ResetFlag;
  };
  const bool isCounted = std::equal(sessions.begin(), sessions.end(), m_normalized.sessions.begin(),
                                    m_normalized.sessions.end(), same);
  if (isCounted && m_index != nullptr) {
    m_index->RememberCountOf(sessions);  // a list of words is compared faster than counted
  }
  return isCounted;
}

void CZRGSSession::NormalizeToDayOfWeekFromSunday(int dayOfWeek) {
  const int shift = (8 - dayOfWeek) * kMinutesPerDay;
  for (ZRGS_SESSION_INFO& session : m_sessions.sessions) {
    session.OpenMinute = RotatedBy(shift, session.OpenMinute);
    session.CloseMinute = RotatedBy(shift, session.CloseMinute);
  }
  m_isNormalized = 0;
}

void CZRGSSession::UnwrapMinutes() {
  SessionList& sessions = m_sessions.sessions;
  if (sessions.empty()) {
    return;
  }
  std::size_t i = 0;
  int previousClose = sessions.front().OpenMinute;
  for (; i < sessions.size(); ++i) {
    if (sessions[i].OpenMinute < previousClose) {
      break;
    }
    if (sessions[i].CloseMinute < sessions[i].OpenMinute) {
      // The week ends within this session: its open stays on this side.
      sessions[i].CloseMinute = LaterByAWeek(sessions[i].CloseMinute);
      ++i;
      break;
    }
    previousClose = sessions[i].CloseMinute;
  }
  for (; i < sessions.size(); ++i) {
    sessions[i].OpenMinute = LaterByAWeek(sessions[i].OpenMinute);
    sessions[i].CloseMinute = LaterByAWeek(sessions[i].CloseMinute);
  }
}

void CZRGSSession::WrapMinutes() {
  for (ZRGS_SESSION_INFO& session : m_sessions.sessions) {
    session.OpenMinute = Wrapped(session.OpenMinute);
    session.CloseMinute = Wrapped(session.CloseMinute);
  }
}

void CZRGSSession::ApplyOffset(int minutes) {
  SessionList& sessions = m_sessions.sessions;
  for (ZRGS_SESSION_INFO& session : sessions) {
    session.OpenMinute = OffsetBy(minutes, session.OpenMinute);
    session.CloseMinute = OffsetBy(minutes, session.CloseMinute);
  }
  // Sessions from the end of the list go to its front, one by one, while they lie wholly before the
  // first. The first open falls with each, so fewer go than there are.
  const std::size_t size = sessions.size();
  std::size_t moved = 0;
  while (moved + 1 < size) {
    const ZRGS_SESSION_INFO& first = sessions[(size - moved) % size];
    const ZRGS_SESSION_INFO& last = sessions[size - 1 - moved];
    if (last.OpenMinute >= first.OpenMinute || last.CloseMinute >= first.OpenMinute) {
      break;
    }
    ++moved;
  }
  if (moved == 0) {
    return;
  }
  // Only the minutes move. Windows and flags belong to the place in the list, whose order stored
  // calendars and their users have come to rely on.
  const SessionList before = sessions;
  for (std::size_t i = 0; i < size; ++i) {
    const ZRGS_SESSION_INFO& source = before[(i + size - moved) % size];
    sessions[i].OpenMinute = source.OpenMinute;
    sessions[i].CloseMinute = source.CloseMinute;
  }
}

void CZRGSSession::FilterDribbleInSession() {
  for (ZRGS_SESSION_INFO& session : m_sessions.sessions) {
    session.DribbleMinutes = 0;
  }
}

void CZRGSSession::SetToNaturalSessions() {
  m_sessions.sessions.assign(7, ZRGS_SESSION_INFO{});
  int midnight = 0;
  for (ZRGS_SESSION_INFO& session : m_sessions.sessions) {
    session.OpenMinute = static_cast<std::uint16_t>(midnight);
    midnight += kMinutesPerDay;
    session.CloseMinute = static_cast<std::uint16_t>(midnight);
    session.ResetFlag = 1;
  }
}

unsigned short CZRGSSession::GetLatestSessionEndTime() const {
  int latest = 0;
  for (const ZRGS_SESSION_INFO& session : m_sessions.sessions) {
    latest = std::max(latest, session.CloseMinute % kMinutesPerDay);
  }
  return static_cast<unsigned short>(latest);
}

CZRGSSession& CZRGSSession::_Set_local(unsigned long normalize) const {
  if (m_local == nullptr) {
    m_local = std::make_unique<CZRGSSession>();
  }
  if (normalize == 1) {
    NormalizeToStartOfTradingWeekFromSunday();
  }
  *m_local = *this;
  return *m_local;
}
