// Weeks of sessions in people's form and in the machine form.
#include <gtest/gtest.h>

#include <string>

#include <tools/pxd/session_check.h>
#include <tools/pxd/session_words.h>

using namespace pxd::tool;

namespace {

std::string Machine(const std::string& text) {
  ZRGS_SESSION week;
  std::string error;
  return ReadSessions(text, week, error) ? MachineText(week) : "error: " + error;
}

std::string ErrorOf(const std::string& text) {
  ZRGS_SESSION week;
  week.sessions.resize(1);
  std::string error;
  EXPECT_FALSE(ReadSessions(text, week, error)) << text;
  EXPECT_EQ(week.sessions.size(), 1U) << "a failure leaves the output alone: " << text;
  return error;
}

TEST(SessionWords, GroupsBecomeSessions) {
  const struct {
    const char* text;
    const char* machine;
  } kRows[] = {
      {"Mon-Fri 09:30-16:00",
       "5:2010,2400,0,0,1;3450,3840,0,0,1;4890,5280,0,0,1;6330,6720,0,0,1;7770,8160,0,0,1"},
      {"mon-FRI 9:30-16:00",
       "5:2010,2400,0,0,1;3450,3840,0,0,1;4890,5280,0,0,1;6330,6720,0,0,1;7770,8160,0,0,1"},
      {"Monday,Wed,Thr 10:00-14:00", "3:2040,2280,0,0,1;4920,5160,0,0,1;6360,6600,0,0,1"},
      {"Mon-Tue,Thu 10:00-14:00", "3:2040,2280,0,0,1;3480,3720,0,0,1;6360,6600,0,0,1"},
      {"Tue-Tue 10:00-14:00;", "1:3480,3720,0,0,1"},
      // The next day's close, also where it is the open itself.
      {"Sun-Thu 18:00-17:00",
       "5:1080,2460,0,0,1;2520,3900,0,0,1;3960,5340,0,0,1;5400,6780,0,0,1;6840,8220,0,0,1"},
      {"Wed 10:00-10:00", "1:4920,6360,0,0,1"},
      // A lunch break, with the options in either order; the second group may come first.
      {"Mon 12:30-15:30 dribble 10 reset 30; Mon 09:00-11:30 part",
       "2:1980,2130,0,0,0;2190,2370,30,10,1"},
      {"Mon 12:30-15:30 reset 30 dribble 10;Mon 09:00-11:30 PART",
       "2:1980,2130,0,0,0;2190,2370,30,10,1"},
      // Over the week's end.
      {"Sat 22:00-04:00", "1:9960,240,0,0,1"},
      {"Sat 22:00-24:00", "1:9960,10080,0,0,1"},
      {"daily 00:00-24:00",
       "7:0,1440,0,0,1;1440,2880,0,0,1;2880,4320,0,0,1;4320,5760,0,0,1;5760,7200,0,0,1;"
       "7200,8640,0,0,1;8640,10080,0,0,1"},
  };
  for (const auto& row : kRows) {
    EXPECT_EQ(Machine(row.text), row.machine) << row.text;
  }
}

TEST(SessionWords, TheWeekStartsBehindTheLongestGap) {
  // Friday to Monday: the gap before Friday evening is longer than the one behind it.
  EXPECT_EQ(Machine("Sat 22:00-04:00; Mon 10:00-12:00"), "2:9960,240,0,0,1;2040,2160,0,0,1");
  // The list would pass the week's end between two sessions, which it can't hold.
  EXPECT_EQ(Machine("Sat-Sun 09:00-12:00"), "2:540,720,0,0,1;9180,9360,0,0,1");
  // Equal gaps: the earliest.
  EXPECT_EQ(Machine("daily 10:00-11:00").substr(0, 9), "7:600,660");
}

TEST(SessionWords, AMarketThatNeverClosesIsFoundOpenAtEveryMoment) {
  for (const char* text : {"daily 00:00-24:00", "daily 18:00-18:00",
                           "daily 06:30-18:00; daily "
                           "18:00-06:30"}) {
    ZRGS_SESSION week;
    std::string error;
    ASSERT_TRUE(ReadSessions(text, week, error)) << text << ": " << error;
    const CZRGSSession calendar(week);
    for (unsigned minute = 0; minute < 10080; minute += 30) {
      const CZRDateTime moment(
          CZRDate(static_cast<unsigned short>(CZRDate(3, 3, 2024).GetJulianDate() + minute / 1440)),
          CZRTime(minute % 1440 * 60));
      CZRDateTime open;
      CZRDateTime close;
      CZRGSSession::Status status = CZRGSSession::StatusClosed;
      unsigned long index = 0;
      calendar.GetSessionInfo(CZRGSSession::ResetNone, moment, open, close, status, index);
      ASSERT_EQ(status, CZRGSSession::StatusOpen) << text << " at minute " << minute;
      ASSERT_TRUE(open <= moment && moment < close) << text << " at minute " << minute;
    }
  }
}

TEST(SessionWords, TheMachineFormOfAWeekIsReadBack) {
  for (const char* text :
       {"Mon-Fri 09:30-16:00", "Sun-Thu 18:00-17:00 dribble 5", "daily 18:00-18:00",
        "Sat 22:00-04:00", "Mon-Fri 09:00-11:30 part; Mon-Fri 12:30-15:30 dribble 10 reset 30"}) {
    EXPECT_EQ(Machine(Machine(text)), Machine(text));
  }
}

TEST(SessionWords, AnErrorSaysWhatIsWrongAndWhatWasExpected) {
  const std::string days = " names no days; expected days as in Mon-Fri, Mon,Wed,Fri or daily";
  const std::string times =
      " is no time range; expected opening and closing times as in 09:30-16:00, from 00:00 to "
      "24:00";
  const std::string group =
      " is no group of sessions; expected days and times, as in \"Mon-Fri 09:30-16:00\"";
  const struct {
    const char* text;
    std::string error;
  } kRows[] = {
      {"", "the sessions are empty; expected for example \"Mon-Fri 09:30-16:00\""},
      {" \t", "the sessions are empty; expected for example \"Mon-Fri 09:30-16:00\""},
      {"Mon-Fri", "\"Mon-Fri\"" + group},
      {"Mon 09:30-16:00;;Tue 09:30-16:00", "\"\"" + group},
      {"Foo 09:30-16:00", "\"Foo\"" + days},
      {"Mon- 09:30-16:00", "\"Mon-\"" + days},
      {"Mon-Tue-Wed 09:30-16:00", "\"Mon-Tue-Wed\"" + days},
      {"Mon,,Tue 09:30-16:00", "\"Mon,,Tue\"" + days},
      {"Mon 0930-1600", "\"0930-1600\"" + times},
      {"Mon 09:30", "\"09:30\"" + times},
      {"Mon 09:30-16:60", "\"09:30-16:60\"" + times},
      {"Mon 09:30-24:01", "\"09:30-24:01\"" + times},
      {"Mon 24:00-09:30", "\"24:00-09:30\"" + times},
      {"Mon 09:30:00-16:00", "\"09:30:00-16:00\"" + times},
      {"Mon 09:30-16:00-17:00", "\"09:30-16:00-17:00\"" + times},
      {"Mon 09:30-16:00 lunch", "\"lunch\" is no option; expected part, dribble N or reset N"},
      {"Mon 09:30-16:00 dribble",
       "\"\" is no length of the dribble window; expected minutes below a week, as in "
       "\"dribble 10\""},
      {"Mon 09:30-16:00 reset x",
       "\"x\" is no length of the reset window; expected minutes below a week, as in "
       "\"reset 10\""},
      {"Mon 09:30-16:00 reset 10080",
       "\"10080\" is no length of the reset window; expected minutes below a week, as in "
       "\"reset 10\""},
      // The machine form.
      {"2:2010,2400,0,0,1",
       "\"2:2010,2400,0,0,1\" announces a number of sessions that isn't there; expected "
       "COUNT:OPEN,CLOSE,RESET,DRIBBLE,FLAG;... with COUNT groups"},
      {"5",
       "\"5\" announces a number of sessions that isn't there; expected "
       "COUNT:OPEN,CLOSE,RESET,DRIBBLE,FLAG;... with COUNT groups"},
      {"0:", "there is no session; expected 1 to 256"},
      {"1:2010,2400,0,1",
       "\"2010,2400,0,1\" is no session; expected OPEN,CLOSE,RESET,DRIBBLE,FLAG in minutes of the "
       "week, the flag 0 or 1, as in 2010,2400,0,0,1"},
      {"1:2010,2400,0,0,2",
       "\"2010,2400,0,0,2\" is no session; expected OPEN,CLOSE,RESET,DRIBBLE,FLAG in minutes of "
       "the week, the flag 0 or 1, as in 2010,2400,0,0,1"},
      {"1:10080,2400,0,0,1",
       "\"10080,2400,0,0,1\" is no session; expected OPEN,CLOSE,RESET,DRIBBLE,FLAG in minutes of "
       "the week, the flag 0 or 1, as in 2010,2400,0,0,1"},
      {"2:3450,3840,0,0,1;2010,2400,0,0,1",
       "the session Mon 09:30 - 16:00 stands out of order; expected the sessions in the order of "
       "the week, passing its end at most once and inside a session"},
  };
  for (const auto& row : kRows) {
    EXPECT_EQ(ErrorOf(row.text), row.error) << row.text;
  }
}

TEST(SessionWords, AnErrorNamesTheSessionsThatCollide) {
  const struct {
    const char* text;
    const char* error;
  } kRows[] = {
      {"Mon 09:30-16:00; Mon 15:59-18:00",
       "the session Mon 15:59 - 18:00 collides with Mon 09:30 - 16:00"},
      {"Mon 09:30-16:00; Mon 09:30-16:00", "the session Mon 09:30 - 16:00 is there twice"},
      {"Mon 09:30-16:00 dribble 30; Mon 16:29-18:00",
       "the session Mon 16:29 - 18:00 opens in the dribble window of Mon 09:30 - 16:00, 30 minutes "
       "long"},
      {"Mon 09:30-16:00 dribble 10 reset 30; Mon 16:29-18:00",
       "the session Mon 16:29 - 18:00 opens in the reset window of Mon 09:30 - 16:00, 30 minutes "
       "long"},
      // Round the week's end, where the library's own test doesn't look.
      {"Sun 05:00-08:00; Sat 22:00-06:00",
       "the session Sun 05:00 - 08:00 collides with Sat 22:00 - Sun 06:00"},
      {"Fri 22:00-24:00 dribble 1500; Sun 00:30-08:00",
       "the session Sun 00:30 - 08:00 opens in the dribble window of Fri 22:00 - 24:00, 1500 "
       "minutes long"},
      {"2:2010,2400,0,0,1;2399,2500,0,0,1",
       "the session Mon 15:59 - 17:40 collides with Mon 09:30 - 16:00"},
  };
  for (const auto& row : kRows) {
    EXPECT_EQ(ErrorOf(row.text), row.error) << row.text;
  }
}

TEST(SessionWords, TouchingSessionsAndWindowsOfPartsDontCollide) {
  EXPECT_EQ(Machine("Mon 09:30-16:00; Mon 16:00-18:00"), "2:2010,2400,0,0,1;2400,2520,0,0,1");
  EXPECT_EQ(Machine("Mon 09:30-16:00 dribble 30; Mon 16:30-18:00"),
            "2:2010,2400,0,30,1;2430,2520,0,0,1");
  EXPECT_EQ(Machine("Mon 09:30-16:00 part dribble 31; Mon 16:30-18:00"),
            "2:2010,2400,0,31,0;2430,2520,0,0,1");
}

TEST(SessionWords, MoreSessionsThanACalendarHoldsAreRefused) {
  std::string text;
  for (int hour = 0; hour < 20; ++hour) {
    const std::string h = (hour < 10 ? "0" : "") + std::to_string(hour);
    text += "daily " + h + ":00-" + h + ":10;daily " + h + ":30-" + h + ":40;";
  }
  EXPECT_EQ(ErrorOf(text), "there are more than 256 sessions");
}

TEST(SessionWords, TheMachineFormHoldsNoMoreEither) {
  std::string groups;
  for (int session = 0; session < 257; ++session) {
    groups += (session == 0 ? "" : ";") + std::to_string(2 * session) + "," +
              std::to_string(2 * session + 1) + ",0,0,1";
  }
  EXPECT_EQ(ErrorOf("257:" + groups), "there are 257 sessions; expected 1 to 256");
  const std::string most = groups.substr(0, groups.rfind(';'));
  EXPECT_EQ(Machine("256:" + most), "256:" + most);
}

TEST(SessionWords, SessionsReadAsPeopleSayThem) {
  ZRGS_SESSION_INFO session;
  session.OpenMinute = 2010;
  session.CloseMinute = 2400;
  EXPECT_EQ(SessionText(session), "Mon 09:30 - 16:00");
  session.CloseMinute = 2880;
  EXPECT_EQ(SessionText(session), "Mon 09:30 - 24:00");
  session.CloseMinute = 3120;
  EXPECT_EQ(SessionText(session), "Mon 09:30 - Tue 04:00");
  session.OpenMinute = 9960;
  session.CloseMinute = 240;
  EXPECT_EQ(SessionText(session), "Sat 22:00 - Sun 04:00");
  session.CloseMinute = 10080;
  EXPECT_EQ(SessionText(session), "Sat 22:00 - 24:00");
}

TEST(SessionWords, TheWeekTextTellsWindowsAndFlags) {
  ZRGS_SESSION week;
  std::string error;
  ASSERT_TRUE(
      ReadSessions("Mon 09:00-11:30 part; Mon 12:30-15:30 dribble 10 reset 30", week, error));
  EXPECT_EQ(WeekText(week),
            "  Mon 09:00 - 11:30      part of the trading day\n"
            "  Mon 12:30 - 15:30      ends the trading day, dribble 10 min, reset 30 min\n");
}

}  // namespace
