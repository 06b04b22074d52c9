// Calendars: a lunch break, sessions that run over midnight, the closes that come next, and windows
// that get in one another's way.
#include <pxdutil/pxdutil.h>

#include <cstdio>
#include <string>

namespace {

// A minute of the week; Sunday is day 0.
std::uint16_t At(int day, int hour, int minute) {
  return static_cast<std::uint16_t>((day * 24 + hour) * 60 + minute);
}

std::string Text(const CZRDateTime& moment) {
  char date[11];
  char time[9];
  return std::string(CZRDate::j2Text(moment.GetDate().GetJulianDate(), date)) + ' ' +
         CZRTime::Time2String(moment.GetTime().GetTime(), 0, 0, time);
}

const char* Word(CZRGSSession::Status status) {
  const char* const words[] = {"closed", "between two sessions", "open", "dribble", "reset"};
  return words[status];
}

void ShowLunchBreak() {
  // One trading day of two sessions: only the one that ends the day has the flag, the last member.
  ZRGS_SESSION list;
  list.sessions = {{At(1, 9, 0), At(1, 11, 30), 0, 0, 0}, {At(1, 12, 30), At(1, 15, 30), 0, 0, 1}};
  const CZRGSSession calendar(list);
  const CZRDateTime noon(CZRDate(3, 4, 2024), CZRTime(12, 0, 0));  // a Monday
  for (const auto period : {CZRGSSession::ResetNone, CZRGSSession::ResetDay}) {
    CZRDateTime start;
    CZRDateTime end;
    CZRGSSession::Status status{};
    unsigned long index = 0;
    calendar.GetSessionInfo(period, noon, start, end, status, index);
    std::printf("lunch, by %s: %s\n", period == CZRGSSession::ResetDay ? "day" : "session",
                Word(status));
    if (status != CZRGSSession::StatusClosed) {
      std::printf("  %s to %s\n", Text(start).c_str(), Text(end).c_str());
    }
  }
}

void ShowOvernight() {
  // Sunday to Thursday, 18:00 to 17:00 of the next day; each session is a trading day.
  ZRGS_SESSION list;
  for (int day = 0; day < 5; ++day) {
    list.sessions.push_back({At(day, 18, 0), At(day + 1, 17, 0), 0, 0, 1});
  }
  CZRGSSession calendar(list);
  const CZRDateTime night(CZRDate(3, 5, 2024), CZRTime(1, 0, 0));  // Tuesday, one in the morning
  CZRDateTime open;
  CZRDateTime close;
  unsigned long index = 0;
  calendar.GetNextDailyResetSessionInfo(night, open, close, index);
  std::printf("the day of %s: %s to %s\n", Text(night).c_str(), Text(open).c_str(),
              Text(close).c_str());
  calendar.GetNextWeeklySessionCloseDT(night, close);
  std::printf("the week closes %s\n", Text(close).c_str());
  calendar.GetNextMonthlySessionCloseDT(night, close);  // Friday the 29th; Sunday 18:00 is April's
  std::printf("the month closes %s\n", Text(close).c_str());
}

void ShowMakeValid() {
  // Thirty minutes of late prints behind 16:00 run into a session that opens at 16:20.
  ZRGS_SESSION list;
  list.sessions = {{At(1, 9, 30), At(1, 16, 0), 0, 30, 1}, {At(1, 16, 20), At(1, 18, 0), 0, 0, 1}};
  CZRGSSession calendar(list);
  std::printf("valid: %d\n", CZRGSSession::IsValid(list));
  const bool repaired = calendar.MakeValid();  // the window now ends a minute before 16:20
  std::printf("repaired: %d, and late prints are taken for %d minutes\n", repaired ? 1 : 0,
              calendar.GetSessionInfo(0).DribbleMinutes);
}

}  // namespace

int main() {
  ShowLunchBreak();
  ShowOvernight();
  ShowMakeValid();
}
