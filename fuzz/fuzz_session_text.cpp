// Reads a calendar from its machine text form and asks it everything.
//
// A calendar that passes as valid must come back from its own text as it was, and no question to
// any calendar, valid or not, may do more than answer.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include <pxdutil/sessions/session.h>

#include "require.h"

namespace {

using fuzz::Require;

bool AreEqual(const ZRGS_SESSION& a, const ZRGS_SESSION& b) {
  return std::equal(a.sessions.begin(), a.sessions.end(), b.sessions.begin(), b.sessions.end(),
                    [](const ZRGS_SESSION_INFO& x, const ZRGS_SESSION_INFO& y) {
                      return x.OpenMinute == y.OpenMinute && x.CloseMinute == y.CloseMinute &&
                             x.DribbleMinutes == y.DribbleMinutes &&
                             x.ResetMinutes == y.ResetMinutes && x.ResetFlag == y.ResetFlag;
                    });
}

void Ask(const CZRGSSession& calendar, const CZRDateTime& moment) {
  for (int period = CZRGSSession::ResetNone; period <= CZRGSSession::ResetYear + 1; ++period) {
    CZRDateTime open;
    CZRDateTime close;
    CZRGSSession::Status status = CZRGSSession::StatusClosed;
    unsigned long index = 0;
    unsigned short flags = 0;
    calendar.GetSessionInfo(static_cast<CZRGSSession::ResetType>(period), moment, open, close,
                            status, index, flags);
    Require(status >= CZRGSSession::StatusClosed && status <= CZRGSSession::StatusReset,
            "a look-up answered with no status");
  }
  CZRDateTime open;
  CZRDateTime close;
  unsigned long index = 0;
  calendar.GetNextDailyResetSessionInfo(moment, open, close, index);
  CZRDateTime back = moment;
  calendar.GetPreviousDailyResetDateTime(back, 1);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  ZRGS_SESSION session;
  CZRGSSession::BuildZRGS_SESSIONFromString(text.c_str(), session);
  if (session.sessions.size() > 512) {
    return 0;  // a text of that many groups is slow to ask and shows nothing new
  }

  if (CZRGSSession::IsValid(session) != 0) {
    CString written;
    CZRGSSession::BuildStringFromZRGS_SESSION(session, written);
    ZRGS_SESSION again;
    CZRGSSession::BuildZRGS_SESSIONFromString(written, again);
    Require(AreEqual(session, again), "a valid calendar changed on its way through text");
    CString rewritten;
    CZRGSSession::BuildStringFromZRGS_SESSION(again, rewritten);
    Require(written == rewritten, "one calendar has two texts");
  }

  const CZRGSSession calendar(session);
  constexpr std::array<unsigned short, 7> kDays = {0, 35431, 45355, 45356, 45361, 65534, 65535};
  constexpr std::array<unsigned, 3> kSeconds = {0, 34200, 86399};
  for (const unsigned short day : kDays) {
    for (const unsigned second : kSeconds) {
      Ask(calendar, CZRDateTime(CZRDate(day), CZRTime(second)));
    }
  }
  CString shown;
  calendar.GetDisplayString(shown);

  std::array<unsigned long, 2> ranges = {};
  std::array<unsigned char, 2> masks = {};
  unsigned int count = 0;
  unsigned short reset = 0;
  CZRGSSession::BuildUNI_SESSIONFromZRGS_SESSION(session, ranges.data(), masks.data(), count,
                                                 reset);
  ZRGS_SESSION rebuilt;
  CZRGSSession::BuildZRGS_SESSIONFromUNI_SESSION(ranges.data(), masks.data(), count, reset,
                                                 rebuilt);
  Require(!rebuilt.sessions.empty(), "the compact form gave an empty calendar");

  // Repairing shortens windows and changes nothing else.
  CZRGSSession repaired(session);
  repaired.MakeValid();
  for (std::size_t i = 0; i < session.sessions.size(); ++i) {
    const ZRGS_SESSION_INFO& before = session.sessions[i];
    const ZRGS_SESSION_INFO& after = repaired.GetSession().sessions[i];
    Require(after.OpenMinute == before.OpenMinute && after.CloseMinute == before.CloseMinute &&
                after.ResetFlag == before.ResetFlag &&
                after.DribbleMinutes <= before.DribbleMinutes &&
                after.ResetMinutes <= before.ResetMinutes,
            "a repair changed more than windows");
  }
  repaired.ApplyOffset(static_cast<int>(size) * 61 - 20000);
  repaired.FilterDribbleInSession();
  return 0;
}
