// What the tests of the calendar share: short ways to write lists and date-times, and to read both
// in a failure message.
#ifndef PXDUTIL_TESTS_SESSIONS_SESSION_HELPERS_H
#define PXDUTIL_TESTS_SESSIONS_SESSION_HELPERS_H

#include <cstdint>
#include <initializer_list>
#include <ostream>
#include <string>

#include <pxdutil/sessions/session.h>

namespace session_test {

// Open, close, reset minutes, dribble minutes, flag.
inline ZRGS_SESSION_INFO Info(unsigned open, unsigned close, unsigned reset = 0,
                              unsigned dribble = 0, unsigned flag = 1) {
  ZRGS_SESSION_INFO info;
  info.OpenMinute = static_cast<std::uint16_t>(open);
  info.CloseMinute = static_cast<std::uint16_t>(close);
  info.ResetMinutes = static_cast<std::uint16_t>(reset);
  info.DribbleMinutes = static_cast<std::uint16_t>(dribble) & 0x7FFF;
  info.ResetFlag = flag & 1;
  return info;
}

inline ZRGS_SESSION List(std::initializer_list<ZRGS_SESSION_INFO> sessions) {
  ZRGS_SESSION list;
  list.sessions = sessions;
  return list;
}

// Monday to Friday 09:30 to 16:00, each flagged.
inline ZRGS_SESSION Weekdays(unsigned reset = 0, unsigned dribble = 0) {
  ZRGS_SESSION list;
  for (unsigned day = 1; day <= 5; ++day) {
    list.sessions.push_back(Info(day * 1440 + 570, day * 1440 + 960, reset, dribble));
  }
  return list;
}

// The evening before, 18:00, to 17:00, for the days Monday to Friday.
inline ZRGS_SESSION Overnight() {
  ZRGS_SESSION list;
  for (unsigned day = 0; day < 5; ++day) {
    list.sessions.push_back(Info(day * 1440 + 1080, (day + 1) * 1440 + 1020));
  }
  return list;
}

inline CZRDateTime At(unsigned month, unsigned day, unsigned year, unsigned hour, unsigned minute,
                      unsigned second = 0) {
  return CZRDateTime(CZRDate(month, day, year), CZRTime(hour, minute, second));
}

// A day of the first week of 2024: 1 January was a Monday. 0 is the Sunday before, 7 the one after.
inline CZRDateTime Day(unsigned day, unsigned hour, unsigned minute, unsigned second = 0) {
  const unsigned sunday = CZRDate(12, 31, 2023).GetJulianDate();
  return CZRDateTime(CZRDate(static_cast<unsigned short>(sunday + day)),
                     CZRTime(hour, minute, second));
}

inline std::string Text(const ZRGS_SESSION& list) {
  CString text;
  CZRGSSession::BuildStringFromZRGS_SESSION(list, text);
  return text.Str();
}

}  // namespace session_test

inline void PrintTo(const CZRDateTime& dt, std::ostream* out) {
  char date[100];
  char time[100];
  *out << CZRDate::j2Text(dt.GetDate().GetJulianDate(), date) << ' '
       << CZRTime::Time2String(dt.GetTime().GetTime(), 1, 1, time);
}

#endif
