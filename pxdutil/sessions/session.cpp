#include <pxdutil/sessions/session.h>

#include <algorithm>
#include <cstddef>

#include <pxdutil/sessions/detail/month_memo.h>
#include <pxdutil/sessions/detail/week_index.h>

PXDUTIL_DEFINE_RUNTIME_CLASS(CZRGSSession, CObject, kNoSchema, &CZRGSSession::CreateObject)

namespace {

// What Compare knows of a session.
std::uint16_t CheapSum(const ZRGS_SESSION_INFO& session) {
  return static_cast<std::uint16_t>(session.OpenMinute + session.CloseMinute +
                                    session.ResetMinutes + session.DribbleMinutes +
                                    session.ResetFlag);
}

}  // namespace

CObject* CZRGSSession::CreateObject() {
  return new CZRGSSession;
}

CZRGSSession::CZRGSSession() = default;

CZRGSSession::CZRGSSession(const ZRGS_SESSION& session) : m_sessions(session) {}

CZRGSSession::CZRGSSession(const CZRGSSession& other, unsigned long normalizeFirst)
    : CObject(other), m_sessions(other.m_sessions) {
  if (normalizeFirst == 1) {
    other.NormalizeToStartOfTradingWeekFromSunday();
  }
  m_normalized = other.m_normalized;
}

CZRGSSession::CZRGSSession(const char* text) {
  BuildZRGS_SESSIONFromString(text, m_sessions);
}

CZRGSSession::~CZRGSSession() = default;

// m_isNormalized and m_local stay this object's own, in both assignments.
CZRGSSession& CZRGSSession::operator=(const CZRGSSession& other) {
  if (this != &other) {
    m_sessions = other.m_sessions;
    m_normalized = other.m_normalized;
    m_index.reset();
    m_plainLookups = 0;
  }
  return *this;
}

CZRGSSession& CZRGSSession::operator=(const ZRGS_SESSION& session) {
  m_sessions = session;
  return *this;
}

void CZRGSSession::GetSession(CString& out) const {
  BuildStringFromZRGS_SESSION(m_sessions, out);
}

unsigned long CZRGSSession::GetNumSessions() const {
  return static_cast<unsigned long>(m_sessions.sessions.size());
}

unsigned long CZRGSSession::GetNumResets() const {
  return static_cast<unsigned long>(
      std::count_if(m_sessions.sessions.begin(), m_sessions.sessions.end(),
                    [](const ZRGS_SESSION_INFO& session) { return session.ResetFlag != 0; }));
}

ZRGS_SESSION_INFO CZRGSSession::GetSessionInfo(unsigned long index) const {
  return index < m_sessions.sessions.size() ? m_sessions.sessions[index] : ZRGS_SESSION_INFO{};
}

void CZRGSSession::SetSessionInfo(unsigned long index, ZRGS_SESSION_INFO info) {
  if (index < m_sessions.sessions.size()) {
    m_sessions.sessions[index] = info;
  }
}

unsigned short CZRGSSession::GetReset(unsigned long index) const {
  return GetSessionInfo(index).ResetMinutes;
}

void CZRGSSession::SetReset(unsigned long index, unsigned short value) {
  if (index < m_sessions.sessions.size()) {
    m_sessions.sessions[index].ResetMinutes = value;
  }
}

void CZRGSSession::Clear() {
  m_sessions.sessions.clear();
}

int CZRGSSession::Compare(const ZRGS_SESSION& a, const ZRGS_SESSION& b) {
  if (a.sessions.size() != b.sessions.size()) {
    return a.sessions.size() > b.sessions.size() ? 1 : -1;
  }
  for (std::size_t i = 0; i < a.sessions.size(); ++i) {
    const std::uint16_t sumA = CheapSum(a.sessions[i]);
    const std::uint16_t sumB = CheapSum(b.sessions[i]);
    if (sumA != sumB) {
      return sumA > sumB ? 1 : -1;
    }
  }
  return 0;
}

int CZRGSSession::Compare(const CZRGSSession& other) const {
  return Compare(m_sessions, other.m_sessions);
}
