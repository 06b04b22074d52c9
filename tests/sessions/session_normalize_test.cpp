#include <pxdutil/sessions/session.h>

#include <gtest/gtest.h>

#include "session_helpers.h"

namespace {

using session_test::Info;
using session_test::List;
using session_test::Overnight;
using session_test::Text;
using session_test::Weekdays;

ZRGS_SESSION Many(unsigned count) {
  ZRGS_SESSION list;
  for (unsigned i = 0; i < count; ++i) {
    list.sessions.push_back(Info(i * 30, i * 30 + 10));
  }
  return list;
}

// A list, whether it is valid, and what MakeValid leaves of it: the repaired list's text, with "!"
// in front where it gives up.
struct ValidityCase {
  const char* name;
  ZRGS_SESSION list;
  int valid;
  const char* repaired;
};

TEST(SessionValidity, FollowsTheOrderRoundTheWeek) {
  const ValidityCase cases[] = {
      {"empty", List({}), 0, "!0:"},
      {"one", List({Info(10, 20)}), 1, "1:10,20,0,0,1"},
      {"one, closing before it opens", List({Info(20, 10)}), 1, "1:20,10,0,0,1"},
      {"the second opens at the end of the first", List({Info(10, 20), Info(20, 30)}), 1,
       "2:10,20,0,0,1;20,30,0,0,1"},
      {"the second opens a minute early", List({Info(10, 20), Info(19, 30)}), 0,
       "!2:10,20,0,0,1;19,30,0,0,1"},
      {"the second opens at the end of a reset window", List({Info(10, 20, 5), Info(25, 30)}), 1,
       "2:10,20,5,0,1;25,30,0,0,1"},
      {"the second opens in a reset window", List({Info(10, 20, 6), Info(25, 30)}), 0,
       "2:10,20,4,0,1;25,30,0,0,1"},
      {"the second opens in a dribble window", List({Info(2010, 2400, 0, 30), Info(2420, 2800)}), 0,
       "2:2010,2400,0,19,1;2420,2800,0,0,1"},
      {"both windows are cut", List({Info(10, 20, 9, 8), Info(25, 30)}), 0,
       "2:10,20,4,4,1;25,30,0,0,1"},
      {"only the longer window is cut", List({Info(10, 20, 9, 3), Info(25, 30)}), 0,
       "2:10,20,4,3,1;25,30,0,0,1"},
      {"windows without the flag don't count", List({Info(2010, 2400, 0, 30, 0), Info(2420, 2800)}),
       1, "2:2010,2400,0,30,0;2420,2800,0,0,1"},
      {"a session past the end of the week", List({Info(2010, 2400), Info(9960, 240)}), 1,
       "2:2010,2400,0,0,1;9960,240,0,0,1"},
      {"a wrapped session behind it", List({Info(2010, 2400), Info(9960, 240), Info(300, 400)}), 1,
       "3:2010,2400,0,0,1;9960,240,0,0,1;300,400,0,0,1"},
      // Behind the wrap an end is held against the first open alone.
      {"a wrapped session inside one", List({Info(2010, 2400), Info(9960, 240), Info(100, 400)}), 1,
       "3:2010,2400,0,0,1;9960,240,0,0,1;100,400,0,0,1"},
      {"a wrap without a session over the end of the week",
       List({Info(2010, 2400), Info(300, 400, 1610), Info(500, 600)}), 0,
       "!3:2010,2400,0,0,1;300,400,1610,0,1;500,600,0,0,1"},
      {"a wrapped window past the first open",
       List({Info(2010, 2011), Info(9000, 240, 1771), Info(500, 600)}), 0,
       "3:2010,2011,0,0,1;9000,240,1769,0,1;500,600,0,0,1"},
      {"a wrapped window that ends at the first open",
       List({Info(2010, 2011), Info(9000, 240, 1770), Info(500, 600)}), 1,
       "3:2010,2011,0,0,1;9000,240,1770,0,1;500,600,0,0,1"},
      {"the close at 10080 stays before the wrap", List({Info(0, 60), Info(9000, 10080)}), 1,
       "2:0,60,0,0,1;9000,10080,0,0,1"},
      {"the first wraps", List({Info(9960, 240), Info(300, 400)}), 1,
       "2:9960,240,0,0,1;300,400,0,0,1"},
      {"behind a first that wraps all is wrapped",
       List({Info(9000, 1), Info(9500, 9600), Info(9700, 9800)}), 0,
       "!3:9000,1,0,0,1;9500,9600,0,0,1;9700,9800,0,0,1"},
      {"windows trimmed before it gives up stay trimmed",
       List({Info(10, 20, 9), Info(25, 30), Info(28, 40)}), 0,
       "!3:10,20,4,0,1;25,30,0,0,1;28,40,0,0,1"},
      {"no flag to trim by", List({Info(10, 30, 0, 0, 0), Info(25, 40)}), 0,
       "!2:10,30,0,0,0;25,40,0,0,1"},
      {"a window with no room at all", List({Info(10, 24, 9), Info(25, 40)}), 0,
       "2:10,24,0,0,1;25,40,0,0,1"},
      {"a close at the next open, with a window", List({Info(10, 25, 9), Info(25, 40)}), 0,
       "!2:10,25,9,0,1;25,40,0,0,1"},
      {"a week of days", Weekdays(30, 10), 1, nullptr},
      {"a week of nights", Overnight(), 1, nullptr},
  };
  for (const ValidityCase& test : cases) {
    EXPECT_EQ(CZRGSSession::IsValid(test.list), test.valid) << test.name;
    CZRGSSession repaired(test.list);
    const bool made = repaired.MakeValid();
    const std::string text = (made ? "" : "!") + Text(repaired.GetSession());
    EXPECT_EQ(text, test.repaired != nullptr ? test.repaired : Text(test.list)) << test.name;
    EXPECT_EQ(made, CZRGSSession::IsValid(repaired.GetSession()) == 1) << test.name;
  }
}

TEST(SessionValidity, Takes1To256Sessions) {
  EXPECT_EQ(CZRGSSession::IsValid(Many(256)), 1);
  EXPECT_EQ(CZRGSSession::IsValid(Many(257)), 0);
  EXPECT_TRUE(CZRGSSession(Many(256)).MakeValid());
  EXPECT_FALSE(CZRGSSession(Many(257)).MakeValid());
}

TEST(SessionValidity, AnEndBehindTheWeekIsTakenBackOnce) {
  // 65535 + 65535 less a week is still far behind every open.
  EXPECT_EQ(CZRGSSession::IsValid(List({Info(0, 65535, 65535), Info(10, 20)})), 0);
  // 10079 + 2 ends at minute 1: the list counts as wrapped, and 1 isn't above the first open.
  EXPECT_EQ(CZRGSSession::IsValid(List({Info(9000, 10079, 2), Info(9500, 9600)})), 1);
  // 10079 + 1 is the end of the week itself and isn't taken back.
  EXPECT_EQ(CZRGSSession::IsValid(List({Info(9000, 10079, 1), Info(9500, 9600)})), 0);
}

std::string Offset(const ZRGS_SESSION& list, int minutes) {
  CZRGSSession week(list);
  week.ApplyOffset(minutes);
  return Text(week.GetSession());
}

TEST(SessionOffset, MovesAndKeepsTheOrder) {
  EXPECT_EQ(Offset(List({}), 60), "0:");
  EXPECT_EQ(Offset(List({Info(30, 90)}), -60), "1:10050,30,0,0,1");
  EXPECT_EQ(Offset(List({Info(10000, 10070)}), 60), "1:10060,50,0,0,1");
  EXPECT_EQ(Offset(List({Info(30, 90), Info(2000, 2100)}), -60),
            "2:1940,2040,0,0,1;10050,30,0,0,1");
  EXPECT_EQ(Offset(List({Info(10, 20), Info(1000, 1010), Info(2000, 2010)}), -30),
            "3:970,980,0,0,1;1970,1980,0,0,1;10060,10070,0,0,1");
  EXPECT_EQ(Offset(List({Info(10, 20), Info(1000, 1010), Info(2000, 2010)}), 10080),
            "3:10,20,0,0,1;1000,1010,0,0,1;2000,2010,0,0,1");
}

TEST(SessionOffset, ALastSessionThatClosesBehindTheFirstOpenStays) {
  EXPECT_EQ(Offset(List({Info(100, 200), Info(50, 99)}), 0), "2:50,99,0,0,1;100,200,0,0,1");
  EXPECT_EQ(Offset(List({Info(100, 200), Info(50, 100)}), 0), "2:100,200,0,0,1;50,100,0,0,1");
  EXPECT_EQ(Offset(List({Info(100, 200), Info(100, 50)}), 0), "2:100,200,0,0,1;100,50,0,0,1");
}

TEST(SessionOffset, WindowsAndFlagsStayInTheirPlacesAndThatIsMeant) {
  EXPECT_EQ(Offset(List({Info(30, 90, 1, 2, 0), Info(2000, 2100, 3, 4, 1)}), -60),
            "2:1940,2040,1,2,0;10050,30,3,4,1");
}

TEST(SessionOffset, TheEndOfTheWeekBecomesItsStartAndThatIsMeant) {
  EXPECT_EQ(Offset(List({Info(9000, 10080)}), 0), "1:9000,0,0,0,1");
}

TEST(SessionOffset, MoreThanAWeekBackCarriesANegativeRestAndThatIsMeant) {
  EXPECT_EQ(Offset(List({Info(0, 60)}), -10080), "1:0,60,0,0,1");
  EXPECT_EQ(Offset(List({Info(0, 60)}), -10081), "1:65535,59,0,0,1");
  EXPECT_EQ(Offset(List({Info(0, 60)}), -20161), "1:65535,55515,0,0,1");
}

TEST(SessionOffset, TakesTheLargestNumbers) {
  // The sum wraps at 32 bits before the rest is taken.
  const std::int64_t wrapped = std::int64_t{2147483647} + 10080 - 4294967296;
  const auto rest = static_cast<std::uint16_t>(wrapped % 10080);
  EXPECT_EQ(Offset(List({Info(0, 0)}), 2147483647),
            "1:" + std::to_string(rest) + "," + std::to_string(rest) + ",0,0,1");
}

TEST(SessionFilter, TakesDribbleAndNothingElse) {
  CZRGSSession week(List({Info(10, 20, 30, 40, 1), Info(50, 60, 70, 80, 0)}));
  week.FilterDribbleInSession();
  EXPECT_EQ(Text(week.GetSession()), "2:10,20,30,0,1;50,60,70,0,0");
}

TEST(SessionNatural, IsSevenDaysFromMidnightToMidnight) {
  CZRGSSession week(Weekdays(1, 2));
  week.SetToNaturalSessions();
  EXPECT_EQ(Text(week.GetSession()),
            "7:0,1440,0,0,1;1440,2880,0,0,1;2880,4320,0,0,1;4320,5760,0,0,1;"
            "5760,7200,0,0,1;7200,8640,0,0,1;8640,10080,0,0,1");
  EXPECT_EQ(CZRGSSession::IsValid(week.GetSession()), 1);
}

TEST(SessionLatestEnd, IsTheLatestMinuteOfAnyDay) {
  EXPECT_EQ(CZRGSSession().GetLatestSessionEndTime(), 0);
  EXPECT_EQ(CZRGSSession(Weekdays(30, 30)).GetLatestSessionEndTime(), 960);
  EXPECT_EQ(CZRGSSession(List({Info(10, 1439), Info(2000, 2879), Info(3000, 3001)}))
                .GetLatestSessionEndTime(),
            1439);
}

TEST(SessionLatestEnd, MidnightCountsAsZeroAndThatIsMeant) {
  CZRGSSession week;
  week.SetToNaturalSessions();
  EXPECT_EQ(week.GetLatestSessionEndTime(), 0);
}

// ---- What nothing but the class itself can call ------------------------------------------------

// An explicit instantiation may name private members, and so opens them to these tests.
template <auto kWrap, auto kCorrect>
struct Opened {
  friend void WrapMinutesOf(CZRGSSession& calendar) { (calendar.*kWrap)(); }
  friend bool CorrectBuilt(ZRGS_SESSION& list) { return kCorrect(list); }
};
void WrapMinutesOf(CZRGSSession& calendar);
bool CorrectBuilt(ZRGS_SESSION& list);
template struct Opened<&CZRGSSession::WrapMinutes, &CZRGSSession::CorrectBuiltZRGS_SESSION>;

TEST(SessionWrap, TakesAWeekOffWhatLiesBehindTheWeek) {
  CZRGSSession calendar(List({Info(10079, 10080), Info(10080, 10081), Info(10081, 20160),
                              Info(20161, 65535), Info(0, 1)}));
  WrapMinutesOf(calendar);
  EXPECT_EQ(Text(calendar.GetSession()),
            "5:10079,10080,0,0,1;10080,1,0,0,1;1,10080,0,0,1;10081,55455,0,0,1;0,1,0,0,1");
}

TEST(SessionBuilt, AListOf1To256SessionsThatIsValidStays) {
  for (const unsigned count : {1U, 255U, 256U}) {
    ZRGS_SESSION list = Many(count);
    EXPECT_TRUE(CorrectBuilt(list)) << count;
    EXPECT_EQ(list.sessions.size(), count);
  }
}

TEST(SessionBuilt, AListOfNoneOrOfMoreIsReplaced) {
  for (const unsigned count : {0U, 257U}) {
    ZRGS_SESSION list = Many(count);
    EXPECT_FALSE(CorrectBuilt(list)) << count;
    EXPECT_EQ(list.sessions.size(), 1U) << count;
  }
}

TEST(SessionBuilt, ASessionOfMoreThanADayIsRefused) {
  ZRGS_SESSION day = List({Info(600, 2030, 0, 10)});  // 1440 minutes with its window
  EXPECT_TRUE(CorrectBuilt(day));
  ZRGS_SESSION more = List({Info(600, 2030, 0, 11)});
  EXPECT_FALSE(CorrectBuilt(more));
  ZRGS_SESSION second = List({Info(0, 10), Info(600, 2030, 0, 11)});
  EXPECT_FALSE(CorrectBuilt(second));
  ZRGS_SESSION overTheEnd = List({Info(9000, 360)});  // 1440 minutes round the week's end
  EXPECT_TRUE(CorrectBuilt(overTheEnd));
  ZRGS_SESSION longer = List({Info(9000, 361)});
  EXPECT_FALSE(CorrectBuilt(longer));
}

}  // namespace
