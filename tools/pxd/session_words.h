// A week of sessions as people write it, and as they read it.
//
//   Mon-Fri 09:30-16:00
//   Sun-Thu 18:00-17:00                                        runs into the next day
//   Mon-Fri 09:00-11:30 part; Mon-Fri 12:30-15:30 dribble 10 reset 30
//   Mon,Wed,Fri 10:00-14:00
//   daily 00:00-24:00
//
// A group is days, a time range and options. `part` says that the session doesn't end the trading
// day; `dribble N` and `reset N` are the minutes of the windows behind the close. The machine form
// ("1:2010,2400,0,0,1") is taken too, with the errors that the library's own reader keeps to
// itself.
//
// The trading week starts with the session behind the longest gap, the earliest where gaps are
// equal: Monday's for Mon-Fri, Sunday evening's for an overnight market. Where the library's list
// can't hold that order, since a list passes the week's end only inside a session, it is the first
// session that opens behind Sunday 00:00.
#ifndef PXDUTIL_TOOLS_PXD_SESSION_WORDS_H
#define PXDUTIL_TOOLS_PXD_SESSION_WORDS_H

#include <string>
#include <string_view>

#include <pxdutil/sessions/session.h>

namespace pxd::tool {

// Reads either form. The list is valid. On failure the result is false, `out` stays as it was, and
// `error` says what is wrong and what was expected.
bool ReadSessions(std::string_view text, ZRGS_SESSION& out, std::string& error);
// The same for a list that is to be repaired: how its sessions stand to each other isn't looked at,
// so the list may be invalid.
bool ReadRoughSessions(std::string_view text, ZRGS_SESSION& out, std::string& error);

// "Mon 09:30 - 16:00", "Sun 18:00 - Mon 17:00".
std::string SessionText(const ZRGS_SESSION_INFO& session);

// A line a session, with what its windows and its flag mean.
std::string WeekText(const ZRGS_SESSION& week);

// The machine form.
std::string MachineText(const ZRGS_SESSION& week);

}  // namespace pxd::tool

#endif
