// The next close of a session, a week and a month, and the trading day that closes nearest.
#include <pxdutil/sessions/session.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "random_calendar.h"
#include "session_helpers.h"

namespace {

using session_test::At;
using session_test::Day;
using session_test::Info;
using session_test::kWeek;
using session_test::List;
using session_test::MakeCalendar;
using session_test::Numbers;
using session_test::Overnight;
using session_test::Text;
using session_test::Weekdays;

constexpr auto kNone = CZRGSSession::ResetNone;
constexpr auto kDay = CZRGSSession::ResetDay;
constexpr auto kWeekly = CZRGSSession::ResetWeek;
constexpr auto kMonthly = CZRGSSession::ResetMonth;
constexpr auto kYearly = CZRGSSession::ResetYear;

const CZRDateTime kUntouched = At(7, 7, 2007, 7, 7, 7);

struct Next {
  CZRDateTime open = kUntouched;
  CZRDateTime close = kUntouched;
};

Next NextClose(const ZRGS_SESSION& list, CZRGSSession::ResetType reset, const CZRDateTime& dt) {
  Next next;
  const CZRGSSession calendar(list);
  calendar.GetNextSessionCloseDT(reset, dt, next.open, next.close);
  return next;
}

CZRDateTime Weekly(const ZRGS_SESSION& list, const CZRDateTime& dt) {
  CZRDateTime close = kUntouched;
  const CZRGSSession calendar(list);
  calendar.GetNextWeeklySessionCloseDT(dt, close);
  return close;
}

CZRDateTime Monthly(const ZRGS_SESSION& list, const CZRDateTime& dt) {
  CZRDateTime close = kUntouched;
  const CZRGSSession calendar(list);
  calendar.GetNextMonthlySessionCloseDT(dt, close);
  return close;
}

// The close of the nearest day, or nothing.
std::optional<CZRDateTime> Nearest(const ZRGS_SESSION& list, const CZRDateTime& dt,
                                   const CZRDateTimeSpan& tolerance) {
  CZRDateTime close = kUntouched;
  const CZRGSSession calendar(list);
  const int found = calendar.GetSessionInfoNearest(kDay, dt, tolerance, close);
  if (found == 0) {
    EXPECT_EQ(close, kUntouched);
    return std::nullopt;
  }
  EXPECT_EQ(found, 1);
  return close;
}

std::optional<CZRDateTime> NearestOpen(const ZRGS_SESSION& list, const CZRDateTime& dt,
                                       const CZRDateTimeSpan& tolerance) {
  CZRDateTime open = kUntouched;
  const CZRGSSession calendar(list);
  if (calendar.GetStartOfSessionInfoNearest(kDay, dt, tolerance, open) == 0) {
    EXPECT_EQ(open, kUntouched);
    return std::nullopt;
  }
  return open;
}

const CZRDateTimeSpan kHour(0, 3600);
const CZRDateTimeSpan kOneDay(1, 0);

// ---- The next session -------------------------------------------------------------------------

TEST(NextSessionClose, ARunningSessionIsPassedOverAndSecondsStay) {
  for (const auto reset : {kNone, kDay, static_cast<CZRGSSession::ResetType>(9)}) {
    const Next next = NextClose(Weekdays(), reset, Day(3, 12, 0, 20));
    EXPECT_EQ(next.open, Day(4, 9, 30, 20));
    EXPECT_EQ(next.close, Day(4, 16, 0, 20));
  }
}

TEST(NextSessionClose, OneThatOpensInThisMinuteIsTheNext) {
  const Next next = NextClose(Weekdays(), kNone, Day(3, 9, 30, 20));
  EXPECT_EQ(next.open, Day(3, 9, 30, 20));
  EXPECT_EQ(next.close, Day(3, 16, 0, 20));
  EXPECT_EQ(NextClose(Weekdays(), kNone, Day(3, 9, 29, 59)).open, Day(3, 9, 30, 59));
  EXPECT_EQ(NextClose(Weekdays(), kNone, Day(3, 9, 31)).open, Day(4, 9, 30));
}

TEST(NextSessionClose, BehindTheLastOpenItIsNextWeeksFirst) {
  const Next next = NextClose(Weekdays(), kNone, Day(5, 17, 0));
  EXPECT_EQ(next.open, Day(8, 9, 30));
  EXPECT_EQ(next.close, Day(8, 16, 0));
  EXPECT_EQ(NextClose(Weekdays(), kNone, Day(0, 10, 0)).open, Day(1, 9, 30));
}

TEST(NextSessionClose, TheFirstInTheListWinsOnPurposeNotTheFirstInTime) {
  // A week that starts on Wednesday: on Sunday its Wednesday comes first in the list.
  const ZRGS_SESSION list =
      List({Info(3 * 1440 + 570, 3 * 1440 + 960), Info(1440 + 570, 1440 + 960)});
  EXPECT_EQ(NextClose(list, kNone, Day(0, 10, 0)).open, Day(3, 9, 30));
}

TEST(NextSessionClose, ACloseBehindTheWeeksEndIsAWeekEarlyOnPurpose) {
  const ZRGS_SESSION list = List({Info(6 * 1440 + 1320, 120)});  // Saturday 22:00 to Sunday 02:00
  const Next next = NextClose(list, kNone, Day(6, 12, 0));
  EXPECT_EQ(next.open, Day(6, 22, 0));
  EXPECT_EQ(next.close, Day(0, 2, 0));
}

TEST(NextSessionClose, AnEmptyListMakesTheOpenNullAlone) {
  const Next next = NextClose(List({}), kNone, Day(3, 12, 0));
  EXPECT_EQ(next.open, CZRDateTime());
  EXPECT_EQ(next.close, kUntouched);
}

TEST(NextSessionClose, WeekAndMonthHaveNoOpen) {
  const Next week = NextClose(Weekdays(), kWeekly, Day(3, 12, 0));
  EXPECT_EQ(week.open, CZRDateTime());
  EXPECT_EQ(week.close, Day(5, 16, 0));
  const Next month = NextClose(Weekdays(), kMonthly, At(2, 10, 2025, 12, 0));
  EXPECT_EQ(month.open, CZRDateTime());
  EXPECT_EQ(month.close, At(2, 28, 2025, 16, 0));
}

TEST(NextSessionClose, AYearMakesTheOpenNullAndLeavesTheCloseOnPurpose) {
  const Next next = NextClose(Weekdays(), kYearly, Day(3, 12, 0));
  EXPECT_EQ(next.open, CZRDateTime());
  EXPECT_EQ(next.close, kUntouched);
  CZRDateTime close = kUntouched;
  CZRGSSession(Weekdays()).GetNextYearlySessionCloseDT(Day(3, 12, 0), close);
  EXPECT_EQ(close, kUntouched);
}

TEST(NextSessionClose, TheOutputsMayBeTheInput) {
  for (const auto reset : {kNone, kWeekly, kMonthly}) {
    const Next next = NextClose(Weekdays(), reset, Day(3, 12, 0));
    CZRDateTime open = Day(3, 12, 0);
    CZRDateTime close = kUntouched;
    const CZRGSSession calendar(Weekdays());
    calendar.GetNextSessionCloseDT(reset, open, open, close);
    EXPECT_EQ(open, next.open);
    EXPECT_EQ(close, next.close);
    close = Day(3, 12, 0);
    calendar.GetNextSessionCloseDT(reset, close, open, close);
    EXPECT_EQ(close, next.close);
  }
}

// ---- The next weekly close --------------------------------------------------------------------

TEST(NextWeeklyClose, ItIsTheLastSessionsClose) {
  EXPECT_EQ(Weekly(Weekdays(), Day(3, 12, 0)), Day(5, 16, 0));
  EXPECT_EQ(Weekly(Weekdays(), Day(1, 9, 30)), Day(5, 16, 0));
  EXPECT_EQ(Weekly(Weekdays(), Day(5, 15, 59, 59)), Day(5, 16, 0));
}

TEST(NextWeeklyClose, AtTheCloseAndBehindItItIsNextWeeks) {
  EXPECT_EQ(Weekly(Weekdays(), Day(5, 16, 0)), Day(12, 16, 0));
  EXPECT_EQ(Weekly(Weekdays(), Day(6, 12, 0)), Day(12, 16, 0));
}

TEST(NextWeeklyClose, OnSundayItIsADayEarlyOnPurpose) {
  EXPECT_EQ(Weekly(Weekdays(), Day(0, 10, 0)), Day(4, 16, 0));
  // From 09:30 on the day that is added reaches the open; before that it doesn't, and the place
  // stays before the week.
  EXPECT_EQ(Weekly(Weekdays(), Day(0, 9, 29, 59)), Day(4, 16, 0));
  EXPECT_EQ(Weekly(Weekdays(), Day(0, 0, 0)), Day(4, 16, 0));
}

TEST(NextWeeklyClose, AnOvernightWeekClosesOnItsLastDay) {
  EXPECT_EQ(Weekly(Overnight(), Day(0, 18, 0)), Day(5, 17, 0));
  EXPECT_EQ(Weekly(Overnight(), Day(5, 17, 0)), Day(12, 17, 0));
}

TEST(NextWeeklyClose, ALongWayToTheNextWeekIsTakenWholeOnPurpose) {
  // Each step goes from the close, not from the moment, into the week behind: 34 steps here.
  EXPECT_EQ(Weekly(List({Info(0, 60)}), Day(1, 10, 0)), At(8, 25, 2024, 1, 0));
}

TEST(NextWeeklyClose, WithoutANextOneTheCloseIsLeft) {
  EXPECT_EQ(Weekly(List({}), Day(3, 12, 0)), kUntouched);
  // A week that closes where it opens.
  EXPECT_EQ(Weekly(List({Info(600, 600)}), Day(3, 12, 0)), kUntouched);
  // The Friday ahead of the last Saturday that has a number.
  EXPECT_EQ(Weekly(Weekdays(), At(6, 2, 2079, 15, 0)), At(6, 2, 2079, 16, 0));
  EXPECT_EQ(Weekly(Weekdays(), At(6, 2, 2079, 17, 0)), kUntouched);
  EXPECT_EQ(Weekly(Weekdays(), CZRDateTime()), kUntouched);
}

TEST(NextWeeklyClose, AnEditedListKeepsTheOldCloses) {
  CZRGSSession calendar(Weekdays());
  CZRDateTime close = kUntouched;
  calendar.GetNextWeeklySessionCloseDT(Day(3, 12, 0), close);
  calendar.SetSessionInfo(4, Info(5 * 1440 + 570, 5 * 1440 + 600));
  calendar.GetNextWeeklySessionCloseDT(Day(3, 12, 0), close);
  EXPECT_EQ(close, Day(5, 16, 0));
}

TEST(NextWeeklyClose, WithoutCachedClosesTheCloseIsLeft) {
  // The flag of the first lookup stays, and the assigned calendar has counted nothing yet.
  CZRGSSession calendar(Weekdays());
  CZRDateTime close = kUntouched;
  calendar.GetNextWeeklySessionCloseDT(Day(3, 12, 0), close);
  ASSERT_EQ(close, Day(5, 16, 0));
  calendar = CZRGSSession(Weekdays());
  close = kUntouched;
  calendar.GetNextWeeklySessionCloseDT(Day(3, 12, 0), close);
  EXPECT_EQ(close, kUntouched);
}

TEST(NextWeeklyClose, OfACalendarThatWasClearedTheCloseIsLeft) {
  // What was cached for the sessions that are gone isn't asked.
  CZRGSSession calendar(Weekdays());
  CZRDateTime close = kUntouched;
  calendar.GetNextWeeklySessionCloseDT(Day(3, 12, 0), close);
  ASSERT_EQ(close, Day(5, 16, 0));
  calendar.Clear();
  close = kUntouched;
  calendar.GetNextWeeklySessionCloseDT(Day(3, 12, 0), close);
  EXPECT_EQ(close, kUntouched);
}

// ---- The next monthly close -------------------------------------------------------------------

TEST(NextMonthlyClose, ItIsTheLastTradingDayOfTheMonth) {
  EXPECT_EQ(Monthly(Weekdays(), At(2, 10, 2025, 12, 0)), At(2, 28, 2025, 16, 0));
  EXPECT_EQ(Monthly(Weekdays(), At(2, 28, 2025, 16, 0)), At(2, 28, 2025, 16, 0));
  // No window is added to it.
  EXPECT_EQ(Monthly(Weekdays(60, 60), At(2, 28, 2025, 16, 0, 1)), At(3, 31, 2025, 16, 0));
}

TEST(NextMonthlyClose, BehindItItIsNextMonths) {
  EXPECT_EQ(Monthly(Weekdays(), At(2, 28, 2025, 16, 0, 1)), At(3, 31, 2025, 16, 0));
  EXPECT_EQ(Monthly(Weekdays(), At(12, 31, 2024, 17, 0)), At(1, 31, 2025, 16, 0));
}

TEST(NextMonthlyClose, WithoutTradingDaysItIsTheLastSessionAWeekBeforeOnPurpose) {
  ZRGS_SESSION list = Weekdays();
  for (ZRGS_SESSION_INFO& session : list.sessions) {
    session.ResetFlag = 0;
  }
  EXPECT_EQ(Monthly(list, At(2, 10, 2025, 12, 0)), At(2, 21, 2025, 16, 0));
  // April begins on a Tuesday. Counted from there the list runs from Monday past the week's end, so
  // that its last session lies a week on and makes good the week before.
  EXPECT_EQ(Monthly(list, At(2, 21, 2025, 16, 0, 1)), At(3, 28, 2025, 16, 0));
}

TEST(NextMonthlyClose, ALastCloseOfZeroIsNoCloseOnPurpose) {
  // A session without length at the midnight of Thursday 25 January 2024, at which the last week
  // begins. Its window doesn't count.
  EXPECT_EQ(Monthly(List({Info(4 * 1440, 4 * 1440, 1)}), At(1, 9, 2024, 0, 0)),
            At(1, 18, 2024, 0, 0));
}

TEST(NextMonthlyClose, AnEmptyListAndTheEndOfAllDaysEnd) {
  EXPECT_EQ(Monthly(List({}), Day(3, 12, 0)), kUntouched);
  // Nothing is asked of the answers but that they come.
  Monthly(Weekdays(), At(6, 3, 2079, 17, 0));
  Monthly(Weekdays(), CZRDateTime());
}

// ---- The nearest day --------------------------------------------------------------------------

TEST(NearestDay, TheNearerCloseIsTaken) {
  EXPECT_EQ(Nearest(Weekdays(), Day(2, 13, 0), kOneDay), Day(2, 16, 0));
  EXPECT_EQ(NearestOpen(Weekdays(), Day(2, 13, 0), kOneDay), Day(2, 9, 30));
  EXPECT_EQ(Nearest(Weekdays(), Day(6, 12, 0), kOneDay), Day(5, 16, 0));
}

TEST(NearestDay, OfACalendarThatWasClearedThereIsNone) {
  // Other look-ups still answer from what they counted before; this one asks the list first.
  CZRGSSession calendar(Weekdays());
  CZRDateTime edge = kUntouched;
  ASSERT_EQ(calendar.GetSessionInfoNearest(kDay, Day(2, 13, 0), kOneDay, edge), 1);
  calendar.Clear();
  edge = kUntouched;
  EXPECT_EQ(calendar.GetSessionInfoNearest(kDay, Day(2, 13, 0), kOneDay, edge), 0);
  EXPECT_EQ(calendar.GetStartOfSessionInfoNearest(kDay, Day(2, 13, 0), kOneDay, edge), 0);
  EXPECT_EQ(edge, kUntouched);
}

TEST(NearestDay, BeyondTheToleranceThereIsNone) {
  EXPECT_EQ(Nearest(Weekdays(), Day(2, 13, 0), kHour), std::nullopt);
  EXPECT_EQ(NearestOpen(Weekdays(), Day(2, 13, 0), kHour), std::nullopt);
}

TEST(NearestDay, TheToleranceCountsItself) {
  const CZRDateTimeSpan threeHours(0, 3 * 3600);
  EXPECT_EQ(Nearest(Weekdays(), Day(2, 13, 0), threeHours), Day(2, 16, 0));
  EXPECT_EQ(Nearest(Weekdays(), Day(2, 12, 59, 59), threeHours), std::nullopt);
  EXPECT_EQ(Nearest(Weekdays(), Day(2, 19, 0), threeHours), Day(2, 16, 0));
  EXPECT_EQ(Nearest(Weekdays(), Day(2, 19, 0, 1), threeHours), std::nullopt);
  EXPECT_EQ(Nearest(Weekdays(), Day(2, 16, 0), CZRDateTimeSpan(0, 0)), Day(2, 16, 0));
}

TEST(NearestDay, OfEqualDistancesTheOneThatHasPassedIsTaken) {
  const CZRDateTimeSpan half(0, 12 * 3600);
  EXPECT_EQ(Nearest(Weekdays(), Day(2, 4, 0), half), Day(1, 16, 0));
  EXPECT_EQ(Nearest(Weekdays(), Day(2, 4, 0, 1), half), Day(2, 16, 0));
  EXPECT_EQ(Nearest(Weekdays(), Day(2, 3, 59, 59), half), Day(1, 16, 0));
}

TEST(NearestDay, WeeksJoin) {
  const CZRDateTimeSpan threeDays(3, 0);
  EXPECT_EQ(Nearest(Weekdays(), Day(8, 8, 0), threeDays), Day(8, 16, 0));
  EXPECT_EQ(NearestOpen(Weekdays(), Day(8, 8, 0), threeDays), Day(8, 9, 30));
  EXPECT_EQ(Nearest(Weekdays(), Day(7, 1, 0), threeDays), Day(5, 16, 0)) << "the week before";
  EXPECT_EQ(NearestOpen(Weekdays(), Day(7, 1, 0), threeDays), Day(5, 9, 30));
  EXPECT_EQ(Nearest(Weekdays(), Day(7, 20, 0), threeDays), Day(8, 16, 0)) << "the week behind";
  EXPECT_EQ(NearestOpen(Weekdays(), Day(7, 20, 0), threeDays), Day(8, 9, 30));
}

TEST(NearestDay, ADayOfTwoSessionsGivesTheOpenOfItsSecondOnPurpose) {
  const ZRGS_SESSION lunch =
      List({Info(1440 + 540, 1440 + 690, 0, 0, 0), Info(1440 + 750, 1440 + 930),
            Info(2 * 1440 + 540, 2 * 1440 + 690)});
  EXPECT_EQ(Nearest(lunch, Day(1, 15, 0), kOneDay), Day(1, 15, 30));
  EXPECT_EQ(NearestOpen(lunch, Day(1, 15, 0), kOneDay), Day(1, 12, 30));
}

TEST(NearestDay, AnUnflaggedLastSessionCountsAtTheWeeksEndsOnPurpose) {
  const ZRGS_SESSION list = List({Info(1440, 1500), Info(2 * 1440, 2 * 1440 + 60, 0, 0, 0)});
  EXPECT_EQ(Nearest(list, Day(2, 2, 0), kHour), Day(2, 1, 0)) << "the last close of all";
  EXPECT_EQ(Nearest(list, Day(8, 0, 30), kHour), Day(8, 1, 0));
  // Between the day's close and that one no flagged close lies ahead.
  EXPECT_EQ(Nearest(list, Day(1, 1, 30), kHour), std::nullopt);
}

TEST(NearestDay, WithoutTradingDaysOrSessionsThereIsNone) {
  EXPECT_EQ(Nearest(List({}), Day(3, 12, 0), CZRDateTimeSpan(7, 0)), std::nullopt);
  EXPECT_EQ(Nearest(List({Info(1440, 1500, 0, 0, 0)}), Day(3, 12, 0), CZRDateTimeSpan(7, 0)),
            std::nullopt);
}

TEST(NearestDay, OtherPeriodsHaveNone) {
  const CZRGSSession calendar(Weekdays());
  for (const auto reset : {kNone, kWeekly, kMonthly, kYearly}) {
    CZRDateTime out = kUntouched;
    EXPECT_EQ(calendar.GetSessionInfoNearest(reset, Day(2, 15, 0), kOneDay, out), 0);
    EXPECT_EQ(calendar.GetStartOfSessionInfoNearest(reset, Day(2, 15, 0), kOneDay, out), 0);
    EXPECT_EQ(out, kUntouched);
  }
}

TEST(NearestDay, AnEditedListIsTakenAsLookUpsTakeIt) {
  // A month look-up makes the working copy count itself afresh, the edit included.
  CZRGSSession calendar(Weekdays());
  CZRDateTime close = kUntouched;
  ASSERT_EQ(calendar.GetSessionInfoNearest(kDay, Day(2, 15, 0), kOneDay, close), 1);
  calendar.SetSessionInfo(1, Info(2 * 1440 + 570, 2 * 1440 + 930));
  ASSERT_EQ(calendar.GetSessionInfoNearest(kDay, Day(2, 15, 0), kOneDay, close), 1);
  EXPECT_EQ(close, Day(2, 16, 0)) << "the old close, from the cache";
  calendar.GetNextMonthlySessionCloseDT(Day(2, 15, 0), close);
  ASSERT_EQ(calendar.GetSessionInfoNearest(kDay, Day(2, 15, 0), kOneDay, close), 1);
  EXPECT_EQ(close, Day(2, 15, 30));
}

// ---- Against a second opinion -----------------------------------------------------------------

// The second by which instants are counted, from some Sunday on, and back.
constexpr std::int64_t kWeekSeconds = std::int64_t{kWeek} * 60;

CZRDateTime Instant(std::int64_t second) {
  const std::int64_t days = second / 86400;
  return CZRDateTime(
      CZRDate(static_cast<unsigned short>(Day(0, 0, 0).GetDate().GetJulianDate() + days)),
      CZRTime(static_cast<unsigned>(second % 86400)));
}

// How far behind its list's first open a session's edge lies, 0 being the open itself.
int FromFirst(const ZRGS_SESSION& list, int minute) {
  return (minute - list.sessions.front().OpenMinute + kWeek) % kWeek;
}

TEST(NextCloseOracle, EveryAnswerIsTheOneASearchOfTheClockFinds) {
  Numbers numbers(36);
  int found = 0;
  int missed = 0;
  for (int i = 0; i < 3000; ++i) {
    ZRGS_SESSION list = MakeCalendar(numbers);
    list.sessions.back().ResetFlag = 1;
    const int firstOpen = list.sessions.front().OpenMinute;
    if (firstOpen == 0 && list.sessions.back().CloseMinute == 0) {
      continue;  // the one list whose last close counts as its first minute
    }
    SCOPED_TRACE(Text(list));
    const std::int64_t now = 3 * kWeekSeconds + numbers.Below(static_cast<int>(kWeekSeconds));
    const CZRDateTime dt = Instant(now);

    // Every trading day's close in five weeks, in the order of time.
    std::optional<std::int64_t> nearest;
    std::int64_t nearestOpen = 0;
    std::int64_t nextWeek = 0;
    for (int week = 0; week < 6; ++week) {
      const std::int64_t start = week * kWeekSeconds + std::int64_t{firstOpen} * 60;
      std::int64_t close = 0;
      for (const ZRGS_SESSION_INFO& session : list.sessions) {
        const std::int64_t open = start + FromFirst(list, session.OpenMinute) * 60;
        int length = (session.CloseMinute - session.OpenMinute + kWeek) % kWeek;
        length = length == 0 ? kWeek : length;
        close = open + length * 60;
        if (session.ResetFlag != 0 &&
            (!nearest || std::abs(close - now) < std::abs(*nearest - now))) {
          nearest = close;
          nearestOpen = open;
        }
      }
      if (nextWeek == 0 && close > now) {
        nextWeek = close;
      }
    }
    const auto distance = static_cast<unsigned long>(std::abs(*nearest - now));
    const CZRDateTimeSpan enough(0, distance);
    ASSERT_EQ(Nearest(list, dt, enough), Instant(*nearest));
    ASSERT_EQ(NearestOpen(list, dt, enough), Instant(nearestOpen));
    ++found;
    if (distance > 0) {
      ASSERT_EQ(Nearest(list, dt, CZRDateTimeSpan(0, distance - 1)), std::nullopt);
      ++missed;
    }
    // Where the moment lies behind Sunday's part of the week and within the trading week, the
    // weekly close is the clock's.
    const std::int64_t place = now % kWeekSeconds - std::int64_t{firstOpen} * 60;
    const std::int64_t lastClose =
        FromFirst(list, list.sessions.back().CloseMinute) * std::int64_t{60};
    if (place >= 0 && place < lastClose) {
      ASSERT_EQ(Weekly(list, dt), Instant(nextWeek));
    }
  }
  EXPECT_GT(found, 2000);
  EXPECT_GT(missed, 2000);
}

}  // namespace
