#include <pxdutil/sessions/session.h>

#include <string>

#include <gtest/gtest.h>

#include "session_helpers.h"

namespace {

using session_test::At;
using session_test::Day;
using session_test::Info;
using session_test::List;
using session_test::Overnight;
using session_test::Weekdays;

constexpr unsigned long kNoIndex = 999;
constexpr auto kNoStatus = static_cast<CZRGSSession::Status>(77);

// The outputs of one lookup. Whatever it leaves alone is null, 999 or 77.
struct Found {
  CZRGSSession::ReturnType result = CZRGSSession::ReturnOK;
  CZRGSSession::Status status = kNoStatus;
  CZRDateTime start;
  CZRDateTime end;
  unsigned long index = kNoIndex;
  unsigned short flags = 0;

  friend bool operator==(const Found&, const Found&) = default;
};

Found LookUp(const CZRGSSession& week, CZRGSSession::ResetType reset, const CZRDateTime& dt) {
  Found found;
  found.result = week.GetSessionInfo(reset, dt, found.start, found.end, found.status, found.index,
                                     found.flags);
  // The form without flags gives the same.
  Found plain;
  CZRGSSession fresh(week.GetSession());
  const CZRGSSession::ReturnType result =
      fresh.GetSessionInfo(reset, dt, plain.start, plain.end, plain.status, plain.index);
  Found again;
  again.result = fresh.GetSessionInfo(reset, dt, again.start, again.end, again.status, again.index,
                                      again.flags);
  EXPECT_EQ(result, again.result);
  EXPECT_EQ(plain.status, again.status);
  EXPECT_EQ(plain.start, again.start);
  EXPECT_EQ(plain.end, again.end);
  EXPECT_EQ(plain.index, again.index);
  return found;
}

CZRGSSession::Status StatusAt(const CZRGSSession& week, CZRGSSession::ResetType reset,
                              const CZRDateTime& dt) {
  return LookUp(week, reset, dt).status;
}

void ExpectPeriod(const Found& found, CZRGSSession::Status status, const CZRDateTime& start,
                  const CZRDateTime& end, const char* what) {
  EXPECT_EQ(found.status, status) << what;
  EXPECT_EQ(found.start, start) << what;
  EXPECT_EQ(found.end, end) << what;
}

constexpr auto None = CZRGSSession::ResetNone;
constexpr auto DayReset = CZRGSSession::ResetDay;
constexpr auto Week = CZRGSSession::ResetWeek;
constexpr auto Month = CZRGSSession::ResetMonth;
constexpr auto Year = CZRGSSession::ResetYear;
constexpr auto Closed = CZRGSSession::StatusClosed;
constexpr auto InPeriod = CZRGSSession::StatusInPeriod;
constexpr auto Open = CZRGSSession::StatusOpen;
constexpr auto Dribble = CZRGSSession::StatusDribble;
constexpr auto Reset = CZRGSSession::StatusReset;

// Morning without, afternoon with the flag, on Monday and Tuesday.
ZRGS_SESSION TwoHalves(unsigned reset = 0, unsigned dribble = 0) {
  return List({Info(2010, 2160, 0, 0, 0), Info(2220, 2400, reset, dribble),
               Info(3450, 3600, 0, 0, 0), Info(3660, 3840, reset, dribble)});
}

// ---- One session ------------------------------------------------------------------------------

TEST(SessionLookup, TheOpenMinuteIsIncludedAndTheCloseMinuteExcluded) {
  const CZRGSSession week(Weekdays());
  EXPECT_EQ(StatusAt(week, None, Day(1, 9, 29, 59)), Closed);
  ExpectPeriod(LookUp(week, None, Day(1, 9, 30)), Open, Day(1, 9, 30), Day(1, 16, 0), "open");
  ExpectPeriod(LookUp(week, None, Day(1, 15, 59, 59)), Open, Day(1, 9, 30), Day(1, 16, 0), "last");
  EXPECT_EQ(StatusAt(week, None, Day(1, 16, 0)), Closed);
}

TEST(SessionLookup, AMissLeavesItsOutputsAlone) {
  const CZRGSSession week(Weekdays());
  const Found found = LookUp(week, None, Day(6, 12, 0));
  EXPECT_EQ(found.result, CZRGSSession::ReturnOK);
  EXPECT_EQ(found.status, Closed);
  EXPECT_NE(found.start.IsNullDateTime(), 0);
  EXPECT_NE(found.end.IsNullDateTime(), 0);
  EXPECT_EQ(found.index, kNoIndex);
}

TEST(SessionLookup, TheWindowsFollowTheCloseDribbleFirst) {
  const CZRGSSession week(Weekdays(30, 10));
  for (const auto reset : {None, DayReset}) {
    const struct {
      CZRDateTime dt;
      CZRGSSession::Status status;
    } rows[] = {
        {Day(1, 15, 59, 59), Open},   {Day(1, 16, 0), Dribble}, {Day(1, 16, 5), Dribble},
        {Day(1, 16, 9, 59), Dribble}, {Day(1, 16, 10), Reset},  {Day(1, 16, 15), Reset},
        {Day(1, 16, 29, 59), Reset},
    };
    for (const auto& row : rows) {
      ExpectPeriod(LookUp(week, reset, row.dt), row.status, Day(1, 9, 30), Day(1, 16, 0), "window");
    }
    EXPECT_EQ(StatusAt(week, reset, Day(1, 16, 30)), Closed);
  }
}

TEST(SessionLookup, ALongDribbleHidesTheResetWindow) {
  const CZRGSSession week(Weekdays(10, 30));
  for (const auto reset : {None, DayReset}) {
    EXPECT_EQ(StatusAt(week, reset, Day(1, 16, 29, 59)), Dribble);
    EXPECT_EQ(StatusAt(week, reset, Day(1, 16, 30)), Closed);
  }
}

TEST(SessionLookup, AWindowAsLongAsAWordCanSayDoesntWrap) {
  // From the first open on the window ends at 390 + 65535, which no 16 bits hold.
  const CZRGSSession week(List({Info(2010, 2400, 65535)}));
  for (const auto reset : {None, DayReset}) {
    EXPECT_EQ(StatusAt(week, reset, Day(1, 16, 0)), Reset);
    EXPECT_EQ(StatusAt(week, reset, Day(6, 12, 0)), Reset);
  }
  EXPECT_EQ(StatusAt(week, Week, Day(6, 12, 0)), Reset);
}

TEST(SessionLookup, AWindowHidesASessionThatBeginsWithinItAndThatIsMeant) {
  const CZRGSSession week(List({Info(2010, 2100, 0, 30, 0), Info(2110, 2400)}));
  const Found hidden = LookUp(week, None, Day(1, 11, 15));
  ExpectPeriod(hidden, Dribble, Day(1, 9, 30), Day(1, 11, 0), "in the first one's dribble");
  EXPECT_EQ(hidden.index, 0U);
  EXPECT_EQ(LookUp(week, None, Day(1, 11, 30)).index, 1U);
  // Within a day only sessions and the windows of the last one count.
  EXPECT_EQ(StatusAt(week, DayReset, Day(1, 11, 15)), Open);
  EXPECT_EQ(StatusAt(week, DayReset, Day(1, 11, 5)), InPeriod);
}

TEST(SessionLookup, TellsThePlaceOfTheSession) {
  const CZRGSSession week(Weekdays(30, 10));
  for (unsigned day = 1; day <= 5; ++day) {
    EXPECT_EQ(LookUp(week, None, Day(day, 12, 0)).index, day - 1);
    EXPECT_EQ(LookUp(week, None, Day(day, 16, 20)).index, day - 1);
    EXPECT_EQ(LookUp(week, DayReset, Day(day, 12, 0)).index, 0U);
  }
}

TEST(SessionLookup, FlagsTellWhetherASessionOpensAndClosesADay) {
  const CZRGSSession week(Weekdays());
  EXPECT_EQ(LookUp(week, None, Day(1, 12, 0)).flags, 3);
  const CZRGSSession halves(TwoHalves());
  EXPECT_EQ(LookUp(halves, None, Day(1, 10, 0)).flags, 1);
  EXPECT_EQ(LookUp(halves, None, Day(1, 14, 0)).flags, 2);
  EXPECT_EQ(LookUp(halves, None, Day(2, 10, 0)).flags, 1);
  EXPECT_EQ(LookUp(halves, None, Day(2, 14, 0)).flags, 2);
}

TEST(SessionLookup, AMissHasTheFlagOfTheLastSession) {
  EXPECT_EQ(LookUp(CZRGSSession(TwoHalves()), None, Day(1, 12, 30)).flags, 1);
  const CZRGSSession openEnd(List({Info(2010, 2160), Info(2220, 2400, 0, 0, 0)}));
  EXPECT_EQ(LookUp(openEnd, None, Day(1, 12, 30)).flags, 0);
  EXPECT_EQ(LookUp(openEnd, None, Day(1, 10, 0)).flags, 2) << "the session before it is the last";
}

TEST(SessionLookup, FlagsAreOnlyEverSet) {
  const CZRGSSession week(TwoHalves());
  CZRDateTime start;
  CZRDateTime end;
  CZRGSSession::Status status;
  unsigned long index;
  unsigned short flags = 0x8000;
  week.GetSessionInfo(None, Day(1, 10, 0), start, end, status, index, flags);
  EXPECT_EQ(flags, 0x8001);
}

TEST(SessionLookup, APlaceBeforeTheFirstOpenIsTheEndOfTheWeekBefore) {
  const CZRGSSession week(Weekdays());
  EXPECT_EQ(StatusAt(week, None, Day(0, 10, 0)), Closed);
  // Saturday 22:00 to Sunday 04:00, behind a Wednesday.
  const CZRGSSession wrapping(List({Info(4890, 5280), Info(9960, 240)}));
  ASSERT_EQ(CZRGSSession::IsValid(wrapping.GetSession()), 1);
  ExpectPeriod(LookUp(wrapping, None, Day(7, 3, 0)), Open, Day(6, 22, 0), Day(7, 4, 0), "Sunday");
  ExpectPeriod(LookUp(wrapping, DayReset, Day(6, 23, 0)), Open, Day(6, 22, 0), Day(7, 4, 0),
               "Saturday");
  EXPECT_EQ(StatusAt(wrapping, None, Day(7, 4, 0)), Closed);
  // Closing at the very end of the week.
  CZRGSSession natural;
  natural.SetToNaturalSessions();
  ExpectPeriod(LookUp(natural, None, Day(6, 23, 59, 59)), Open, Day(6, 0, 0), Day(7, 0, 0),
               "natural Saturday");
  ExpectPeriod(LookUp(natural, None, Day(7, 0, 0)), Open, Day(7, 0, 0), Day(8, 0, 0),
               "natural Sunday");
}

TEST(SessionLookup, AnEmptyCalendarIsClosed) {
  const CZRGSSession week;
  const Found none = LookUp(week, None, Day(1, 12, 0));
  EXPECT_EQ(none.result, CZRGSSession::ReturnOK);
  EXPECT_EQ(none.status, Closed);
  EXPECT_EQ(none.index, kNoIndex);
  EXPECT_EQ(none.flags, 0);
  const Found day = LookUp(week, DayReset, Day(1, 12, 0));
  EXPECT_EQ(day.result, CZRGSSession::ReturnOK);
  EXPECT_EQ(day.status, Closed);
  EXPECT_EQ(day.index, 0U);
  EXPECT_EQ(day.flags, 1);
  for (const auto reset : {Week, Month}) {
    const Found found = LookUp(week, reset, Day(1, 12, 0));
    Found want;
    want.status = Closed;
    want.flags = 3;
    EXPECT_EQ(found, want) << "only the status and the flags are written";
  }
  Found untouched;
  untouched.result = CZRGSSession::ReturnFail;
  EXPECT_EQ(LookUp(week, Year, Day(1, 12, 0)), untouched);
}

TEST(SessionLookup, AnUnknownPeriodFailsAndWritesNothing) {
  const CZRGSSession week(Weekdays());
  for (const int reset : {5, -1, 255}) {
    Found untouched;
    untouched.result = CZRGSSession::ReturnFail;
    EXPECT_EQ(LookUp(week, static_cast<CZRGSSession::ResetType>(reset), Day(1, 12, 0)), untouched);
  }
}

// ---- A day ------------------------------------------------------------------------------------

TEST(DayLookup, AGapBetweenTheSessionsOfADayIsInThePeriod) {
  const CZRGSSession week(TwoHalves(30, 10));
  const struct {
    CZRDateTime dt;
    CZRGSSession::Status day, none;
  } rows[] = {
      {Day(1, 9, 30), Open, Open},
      {Day(1, 11, 59, 59), Open, Open},
      {Day(1, 12, 0), InPeriod, Closed},
      {Day(1, 12, 30), InPeriod, Closed},
      {Day(1, 12, 59, 59), InPeriod, Closed},
      {Day(1, 13, 0), Open, Open},
      {Day(1, 16, 0), Dribble, Dribble},
      {Day(1, 16, 10), Reset, Reset},
  };
  for (const auto& row : rows) {
    ExpectPeriod(LookUp(week, DayReset, row.dt), row.day, Day(1, 9, 30), Day(1, 16, 0), "day");
    EXPECT_EQ(StatusAt(week, None, row.dt), row.none);
  }
  EXPECT_EQ(StatusAt(week, DayReset, Day(1, 16, 30)), Closed);
  ExpectPeriod(LookUp(week, DayReset, Day(2, 12, 30)), InPeriod, Day(2, 9, 30), Day(2, 16, 0),
               "the second day");
}

TEST(DayLookup, FlagsAlwaysOpenADayAndCloseOneWhereItIsFound) {
  const CZRGSSession week(TwoHalves());
  EXPECT_EQ(LookUp(week, DayReset, Day(1, 12, 30)).flags, 3);
  EXPECT_EQ(LookUp(week, DayReset, Day(1, 17, 0)).flags, 1);
}

TEST(DayLookup, AMissLeavesTheTimesAloneAndGivesTheIndexZero) {
  const Found found = LookUp(CZRGSSession(Weekdays()), DayReset, Day(6, 12, 0));
  EXPECT_EQ(found.status, Closed);
  EXPECT_NE(found.start.IsNullDateTime(), 0);
  EXPECT_NE(found.end.IsNullDateTime(), 0);
  EXPECT_EQ(found.index, 0U);
}

TEST(DayLookup, SessionsBehindTheLastFlagBelongToNoDay) {
  const CZRGSSession week(List({Info(2010, 2400), Info(3450, 3840, 0, 0, 0)}));
  EXPECT_EQ(StatusAt(week, DayReset, Day(1, 12, 0)), Open);
  EXPECT_EQ(StatusAt(week, DayReset, Day(2, 12, 0)), Closed);
  EXPECT_EQ(StatusAt(week, None, Day(2, 12, 0)), Open);
}

TEST(DayLookup, ASundayEveningOpensMonday) {
  const CZRGSSession week(Overnight());
  ExpectPeriod(LookUp(week, DayReset, Day(0, 18, 0)), Open, Day(0, 18, 0), Day(1, 17, 0), "open");
  ExpectPeriod(LookUp(week, DayReset, Day(5, 16, 59)), Open, Day(4, 18, 0), Day(5, 17, 0),
               "Friday");
  EXPECT_EQ(StatusAt(week, DayReset, Day(5, 17, 0)), Closed);
  EXPECT_EQ(StatusAt(week, DayReset, Day(0, 17, 59, 59)), Closed);
}

// ---- A week -----------------------------------------------------------------------------------

TEST(WeekLookup, TheGapsOfTheWeekAreInThePeriod) {
  const CZRGSSession week(Weekdays(30, 10));
  const struct {
    CZRDateTime dt;
    CZRGSSession::Status status;
  } rows[] = {
      {Day(1, 9, 30), Open},      {Day(3, 12, 0), Open},       {Day(3, 20, 0), InPeriod},
      {Day(1, 16, 5), Open},      {Day(1, 16, 15), InPeriod},  {Day(5, 9, 29, 59), InPeriod},
      {Day(5, 15, 59, 59), Open}, {Day(5, 16, 0), Dribble},    {Day(5, 16, 9, 59), Dribble},
      {Day(5, 16, 10), Reset},    {Day(5, 16, 29, 59), Reset},
  };
  for (const auto& row : rows) {
    const Found found = LookUp(week, Week, row.dt);
    EXPECT_EQ(found.result, CZRGSSession::ReturnOK);
    ExpectPeriod(found, row.status, Day(1, 9, 30), Day(5, 16, 0), "week");
    EXPECT_EQ(found.flags, 3);
  }
}

TEST(WeekLookup, BehindTheLastWindowItIsClosed) {
  const CZRGSSession week(Weekdays(30, 10));
  for (const CZRDateTime& dt : {Day(5, 16, 30), Day(6, 12, 0)}) {
    Found want;
    want.status = Closed;
    want.flags = 3;
    EXPECT_EQ(LookUp(week, Week, dt), want);
  }
}

TEST(WeekLookup, TheIndexIsThatOfTheSession) {
  const CZRGSSession week(Weekdays());
  EXPECT_EQ(LookUp(week, Week, Day(3, 12, 0)).index, 2U);
  EXPECT_EQ(LookUp(week, Week, Day(3, 20, 0)).index, kNoIndex);
}

TEST(WeekLookup, BeforeTheFirstOpenOnlyADayIsAddedAndThatIsMeant) {
  const CZRGSSession week(Weekdays());
  ExpectPeriod(LookUp(week, Week, Day(0, 10, 0)), InPeriod, Day(0, 9, 30), Day(4, 16, 0), "Sunday");
  // Monday 09:29:59 lies one second before the open, and so one day less a second behind it.
  ExpectPeriod(LookUp(week, Week, Day(1, 9, 29, 59)), InPeriod, Day(0, 9, 30), Day(4, 16, 0),
               "Monday");
}

TEST(WeekLookup, APlaceThatStaysNegativeIsASignedDistance) {
  const CZRGSSession week(List({Info(4890, 5280), Info(6330, 6720)}));  // Wednesday, Thursday
  ExpectPeriod(LookUp(week, Week, Day(0, 10, 0)), InPeriod, Day(2, 9, 30), Day(3, 16, 0), "Sunday");
}

// ---- A month ----------------------------------------------------------------------------------

TEST(MonthLookup, RunsFromTheFirstOpenToTheLastCloseOfTheMonth) {
  const struct {
    CZRDateTime dt, start, end;
    CZRGSSession::Status status;
  } rows[] = {
      // January 2024 begins on a Monday and ends on a Wednesday.
      {At(1, 1, 2024, 9, 29, 59), At(1, 1, 2024, 9, 30), At(1, 31, 2024, 16, 0), Closed},
      {At(1, 1, 2024, 9, 30), At(1, 1, 2024, 9, 30), At(1, 31, 2024, 16, 0), Open},
      {At(1, 15, 2024, 20, 0), At(1, 1, 2024, 9, 30), At(1, 31, 2024, 16, 0), InPeriod},
      {At(1, 20, 2024, 12, 0), At(1, 1, 2024, 9, 30), At(1, 31, 2024, 16, 0), InPeriod},
      {At(1, 31, 2024, 15, 59, 59), At(1, 1, 2024, 9, 30), At(1, 31, 2024, 16, 0), Open},
      {At(1, 31, 2024, 16, 0), At(1, 1, 2024, 9, 30), At(1, 31, 2024, 16, 0), Closed},
      {At(1, 31, 2024, 20, 0), At(1, 1, 2024, 9, 30), At(1, 31, 2024, 16, 0), Closed},
      // February has 29 days and ends on a Thursday.
      {At(2, 14, 2024, 12, 0), At(2, 1, 2024, 9, 30), At(2, 29, 2024, 16, 0), Open},
      // June begins on a Saturday and ends on a Sunday.
      {At(6, 1, 2024, 12, 0), At(6, 3, 2024, 9, 30), At(6, 28, 2024, 16, 0), Closed},
      {At(6, 14, 2024, 12, 0), At(6, 3, 2024, 9, 30), At(6, 28, 2024, 16, 0), Open},
      {At(6, 29, 2024, 12, 0), At(6, 3, 2024, 9, 30), At(6, 28, 2024, 16, 0), Closed},
      // December leads into the next year.
      {At(12, 31, 2024, 12, 0), At(12, 2, 2024, 9, 30), At(12, 31, 2024, 16, 0), Open},
  };
  for (const auto& row : rows) {
    const Found found = LookUp(CZRGSSession(Weekdays()), Month, row.dt);
    ExpectPeriod(found, row.status, row.start, row.end, "month");
    EXPECT_EQ(found.result, CZRGSSession::ReturnOK);
    EXPECT_EQ(found.index, kNoIndex);
    EXPECT_EQ(found.flags, 3);
  }
}

TEST(MonthLookup, ACloseAtTheEndOfTheWeekStaysThereInAMonthThatBeginsOnSunday) {
  // September 2024. Saturday's close at 24:00 is not the first event of the month but the second.
  const CZRGSSession week(List({Info(8640, 10080)}));
  ExpectPeriod(LookUp(week, Month, At(9, 10, 2024, 12, 0)), InPeriod, At(9, 7, 2024, 0, 0),
               At(9, 29, 2024, 0, 0), "September");
}

TEST(MonthLookup, ADayThatRunsIntoTheMonthOpensIt) {
  const CZRGSSession week(Overnight());
  // Monday 1 April 2024 opened on Sunday at 18:00.
  ExpectPeriod(LookUp(week, Month, At(4, 1, 2024, 10, 0)), Open, At(3, 31, 2024, 18, 0),
               At(4, 30, 2024, 17, 0), "April");
}

TEST(MonthLookup, ALastWeekWithoutACloseFallsBackToTheWeekBefore) {
  // In the week before Monday 1 April the list is cut inside its first session, so that every close
  // comes out behind the week.
  const CZRGSSession week(Overnight());
  const Found found = LookUp(week, Month, At(3, 20, 2024, 12, 0));
  // Friday 1 March had opened on Thursday.
  ExpectPeriod(found, Open, At(2, 29, 2024, 18, 0), At(3, 29, 2024, 17, 0), "March");
}

TEST(MonthLookup, TheWindowsOfTheLastDayBelongToIt) {
  const CZRGSSession week(Weekdays(30, 10));
  EXPECT_EQ(StatusAt(week, Month, At(1, 15, 2024, 16, 5)), Dribble);
  EXPECT_EQ(StatusAt(week, Month, At(1, 15, 2024, 16, 15)), InPeriod);
  EXPECT_EQ(StatusAt(week, Month, At(1, 31, 2024, 16, 5)), Dribble);
  EXPECT_EQ(StatusAt(week, Month, At(1, 31, 2024, 16, 29, 59)), InPeriod);
  EXPECT_EQ(StatusAt(week, Month, At(1, 31, 2024, 16, 30)), Closed);
}

TEST(MonthLookup, ADayInTwoHalvesStartsWithItsMorning) {
  const CZRGSSession week(TwoHalves());  // Mondays and Tuesdays
  ExpectPeriod(LookUp(week, Month, At(1, 2, 2024, 12, 30)), InPeriod, At(1, 1, 2024, 9, 30),
               At(1, 30, 2024, 16, 0), "January");
}

TEST(MonthLookup, WithoutAnyFlagTheLastSessionEndsTheMonth) {
  const CZRGSSession week(List({Info(2010, 2400, 5, 9, 0)}));
  // N is Thursday 1 February; with no flag in the week before, B is Thursday 18 January and the
  // Monday behind it closes on the 22nd.
  const Found found = LookUp(week, Month, At(1, 22, 2024, 16, 8, 59));
  ExpectPeriod(found, InPeriod, At(1, 1, 2024, 9, 30), At(1, 22, 2024, 16, 0), "January");
  EXPECT_EQ(StatusAt(week, Month, At(1, 22, 2024, 16, 9)), Closed);
}

TEST(MonthLookup, ACloseAtMidnightCountsForTheDayThatItBeginsAndThatIsMeant) {
  CZRGSSession natural;
  natural.SetToNaturalSessions();
  // Sunday's close is the first event of Monday 1 January, and Wednesday's close, at the midnight
  // that begins February, isn't before it.
  ExpectPeriod(LookUp(natural, Month, At(1, 15, 2024, 12, 0)), Open, At(12, 31, 2023, 0, 0),
               At(1, 31, 2024, 0, 0), "January");
}

TEST(MonthLookup, ASessionOverTheEndOfTheLastWeekIsReachedFromTheWeekBefore) {
  const CZRGSSession week(List({Info(1080, 2460)}));  // Sunday 18:00 to Monday 17:00
  const Found found = LookUp(week, Month, At(3, 25, 2024, 10, 0));
  EXPECT_EQ(found.status, Open);
  EXPECT_EQ(found.end, At(3, 25, 2024, 17, 0));
}

TEST(MonthLookup, AWindowAsLongAsTheMinutesBeforeTheCloseIsNoEndOfZero) {
  // Sunday from 00:05 to 00:10, and 10 minutes of reset behind it. September begins on a Sunday.
  const CZRGSSession week(List({Info(5, 10, 10)}));
  ExpectPeriod(LookUp(week, Month, At(8, 20, 2024, 12, 0)), InPeriod, At(8, 4, 2024, 0, 5),
               At(8, 25, 2024, 0, 10), "the last Sunday of August");
}

TEST(MonthLookup, ALastEndOfZeroIsNoEndAndThatIsMeant) {
  // A session without length at the midnight at which the last week of January 2024 begins.
  EXPECT_EQ(LookUp(CZRGSSession(List({Info(5760, 5760)})), Month, At(1, 9, 2024, 0, 0)).end,
            At(1, 18, 2024, 0, 0));
  EXPECT_EQ(LookUp(CZRGSSession(List({Info(5760, 5760, 1)})), Month, At(1, 9, 2024, 0, 0)).end,
            At(1, 25, 2024, 0, 0));
}

// ---- A year -----------------------------------------------------------------------------------

TEST(YearLookup, FindsTheYearButAlwaysFailsAndThatIsMeant) {
  const CZRGSSession week(Weekdays(30, 10));
  const struct {
    CZRDateTime dt;
    CZRGSSession::Status status;
  } rows[] = {
      {At(1, 1, 2024, 9, 29, 59), Closed},  {At(1, 1, 2024, 9, 30), Open},
      {At(5, 15, 2024, 12, 0), Open},       {At(5, 15, 2024, 16, 5), Open},
      {At(5, 15, 2024, 16, 15), InPeriod},  {At(5, 15, 2024, 20, 0), InPeriod},
      {At(12, 31, 2024, 15, 59, 59), Open}, {At(12, 31, 2024, 16, 0), Closed},
  };
  for (const auto& row : rows) {
    const Found found = LookUp(week, Year, row.dt);
    EXPECT_EQ(found.result, CZRGSSession::ReturnFail);
    ExpectPeriod(found, row.status, At(1, 1, 2024, 9, 30), At(12, 31, 2024, 16, 0), "2024");
    EXPECT_EQ(found.index, kNoIndex);
    EXPECT_EQ(found.flags, 3);
  }
}

TEST(YearLookup, TheListIsTurnedTwiceForTheEndAndThatIsMeant) {
  // Monday to 16:00 and Friday to 13:00. 2024 begins on a Monday, the week before 2025 on a
  // Wednesday: Monday comes to stand on the fifth day, Sunday 29 December.
  const CZRGSSession week(List({Info(2010, 2400), Info(7770, 7980)}));
  const Found found = LookUp(week, Year, At(12, 30, 2024, 12, 0));
  ExpectPeriod(found, Closed, At(1, 1, 2024, 9, 30), At(12, 29, 2024, 16, 0), "2024");
}

TEST(YearLookup, ADayThatRunsIntoTheYearDoesntOpenItAndThatIsMeant) {
  const CZRGSSession week(Overnight());
  // Monday 1 January 2024 has been running since Sunday; the year starts with Tuesday's open.
  const Found found = LookUp(week, Year, At(1, 1, 2024, 12, 0));
  EXPECT_EQ(found.start, At(1, 1, 2024, 18, 0));
  EXPECT_EQ(found.status, Closed);
  // Turned twice, the day that opens on Tuesday comes to stand on the last day of the week.
  EXPECT_EQ(found.end, At(12, 31, 2024, 17, 0));
}

TEST(YearLookup, WithoutACloseInItsLastWeekItEndsAtThatWeeksStart) {
  const CZRGSSession week(List({Info(2010, 2400, 0, 0, 0)}));
  EXPECT_EQ(LookUp(week, Year, At(5, 1, 2024, 12, 0)).end, At(12, 25, 2024, 0, 0));
}

// ---- The next and the previous day ------------------------------------------------------------

struct NextDay {
  CZRGSSession::ReturnType result = CZRGSSession::ReturnFail;
  CZRDateTime open;
  CZRDateTime close;
  unsigned long index = kNoIndex;
};

NextDay Next(const CZRGSSession& week, const CZRDateTime& dt) {
  NextDay next;
  next.result = week.GetNextDailyResetSessionInfo(dt, next.open, next.close, next.index);
  EXPECT_EQ(next.result, CZRGSSession::ReturnOK);
  return next;
}

TEST(NextDaily, IsTheDayThatClosesNext) {
  const CZRGSSession week(TwoHalves());
  const struct {
    CZRDateTime dt, open, close;
    unsigned long index;
  } rows[] = {
      {Day(1, 9, 30), Day(1, 9, 30), Day(1, 16, 0), 1},
      {Day(1, 12, 30), Day(1, 9, 30), Day(1, 16, 0), 1},
      {Day(1, 15, 59, 59), Day(1, 9, 30), Day(1, 16, 0), 1},
      {Day(1, 16, 0), Day(2, 9, 30), Day(2, 16, 0), 3},
      {Day(2, 15, 59, 59), Day(2, 9, 30), Day(2, 16, 0), 3},
      {Day(2, 16, 0), Day(8, 9, 30), Day(8, 16, 0), 1},
      {Day(6, 12, 0), Day(8, 9, 30), Day(8, 16, 0), 1},
      // Before the first open: the end of the week before.
      {Day(0, 12, 0), Day(1, 9, 30), Day(1, 16, 0), 1},
  };
  for (const auto& row : rows) {
    const NextDay next = Next(week, row.dt);
    EXPECT_EQ(next.open, row.open);
    EXPECT_EQ(next.close, row.close);
    EXPECT_EQ(next.index, row.index);
  }
}

TEST(NextDaily, BehindFridayItIsMonday) {
  const NextDay next = Next(CZRGSSession(Weekdays()), Day(5, 17, 0));
  EXPECT_EQ(next.open, Day(8, 9, 30));
  EXPECT_EQ(next.close, Day(8, 16, 0));
  EXPECT_EQ(next.index, 0U);
}

TEST(NextDaily, WithoutAFlagOnlyTheIndexMovesAndTheResultIsStillOK) {
  const NextDay next =
      Next(CZRGSSession(List({Info(10, 20, 0, 0, 0), Info(30, 40, 0, 0, 0)})), Day(1, 12, 0));
  EXPECT_NE(next.open.IsNullDateTime(), 0);
  EXPECT_NE(next.close.IsNullDateTime(), 0);
  EXPECT_EQ(next.index, 1U);
  EXPECT_EQ(Next(CZRGSSession(), Day(1, 12, 0)).index, kNoIndex);
}

TEST(PreviousDaily, MovesBackToTheCloseOfTheDayBefore) {
  const struct {
    CZRDateTime dt;
    int evenIfInside;
    CZRDateTime moved;
  } rows[] = {
      {Day(2, 12, 0), 1, Day(1, 16, 0)},     {Day(2, 12, 0), 2, Day(1, 16, 0)},
      {Day(2, 12, 0), 0, Day(2, 12, 0)},     {Day(2, 9, 30), 0, Day(2, 9, 30)},
      {Day(2, 9, 29, 59), 0, Day(1, 16, 0)}, {Day(2, 16, 0), 0, Day(2, 16, 0)},
      {Day(2, 16, 0, 1), 0, Day(2, 16, 0)},  {Day(8, 8, 0), 0, Day(5, 16, 0)},
      {Day(8, 8, 0), 1, Day(5, 16, 0)},      {Day(8, 12, 0), 1, Day(5, 16, 0)},
      {Day(8, 12, 0), 0, Day(8, 12, 0)},     {Day(7, 12, 0, 7), 0, Day(5, 16, 0)},
      {Day(6, 12, 0), 0, Day(5, 16, 0)},     {Day(6, 12, 0), 1, Day(5, 16, 0)},
  };
  const CZRGSSession week(Weekdays());
  for (const auto& row : rows) {
    CZRDateTime dt = row.dt;
    EXPECT_EQ(week.GetPreviousDailyResetDateTime(dt, row.evenIfInside), CZRGSSession::ReturnOK);
    EXPECT_EQ(dt, row.moved) << row.evenIfInside;
  }
}

TEST(PreviousDaily, TheGapOfADayInTwoHalvesIsInside) {
  const CZRGSSession week(TwoHalves());
  CZRDateTime dt = Day(2, 12, 30);
  EXPECT_EQ(week.GetPreviousDailyResetDateTime(dt, 0), CZRGSSession::ReturnOK);
  EXPECT_EQ(dt, Day(2, 12, 30));
  EXPECT_EQ(week.GetPreviousDailyResetDateTime(dt, 1), CZRGSSession::ReturnOK);
  EXPECT_EQ(dt, Day(1, 16, 0));
}

TEST(PreviousDaily, CountsFromSundaySoADayOverTheEndOfTheWeekIsJudgedByItsMinutesAndThatIsMeant) {
  const CZRGSSession week(List({Info(4890, 5280), Info(9960, 240)}));
  // On Saturday evening the close, minute 240, counts as passed: it is last Sunday's.
  CZRDateTime dt = Day(6, 23, 0);
  EXPECT_EQ(week.GetPreviousDailyResetDateTime(dt, 0), CZRGSSession::ReturnOK);
  EXPECT_EQ(dt, Day(0, 4, 0));
  // On Sunday morning the week before is taken to have closed at its minute 240.
  dt = Day(7, 3, 0);
  EXPECT_EQ(week.GetPreviousDailyResetDateTime(dt, 0), CZRGSSession::ReturnOK);
  EXPECT_EQ(dt, Day(0, 4, 0));
}

TEST(PreviousDaily, FailsWithoutSessionsOrWithoutDays) {
  CZRDateTime dt = Day(1, 12, 0);
  EXPECT_EQ(CZRGSSession().GetPreviousDailyResetDateTime(dt, 1), CZRGSSession::ReturnFail);
  EXPECT_EQ(CZRGSSession(List({Info(2010, 2400, 0, 0, 0)})).GetPreviousDailyResetDateTime(dt, 1),
            CZRGSSession::ReturnFail);
  EXPECT_EQ(dt, Day(1, 12, 0));
}

TEST(PreviousDaily, WhatTheCalendarDoesntReachIsNull) {
  const CZRGSSession week(Weekdays());
  CZRDateTime dt(CZRDate(1), CZRTime(0));  // Sunday 31 December 1899
  EXPECT_EQ(week.GetPreviousDailyResetDateTime(dt, 0), CZRGSSession::ReturnOK);
  EXPECT_NE(dt.IsNullDateTime(), 0);
  EXPECT_EQ(week.GetPreviousDailyResetDateTime(dt, 0), CZRGSSession::ReturnOK);
  EXPECT_NE(dt.IsNullDateTime(), 0);
}

TEST(RelativeDateTime, MovesByTheDifferenceEitherWay) {
  CZRDateTime out;
  EXPECT_EQ(CZRGSSession::GetRelativeDT(0, 90000, Day(1, 12, 0, 5), out), CZRGSSession::ReturnOK);
  EXPECT_EQ(out, Day(2, 13, 0, 5));
  EXPECT_EQ(CZRGSSession::GetRelativeDT(90000, 0, out, out), CZRGSSession::ReturnOK);
  EXPECT_EQ(out, Day(1, 12, 0, 5));
  EXPECT_EQ(CZRGSSession::GetRelativeDT(0UL - 60, 60, out, out), CZRGSSession::ReturnOK);
  EXPECT_EQ(out, Day(1, 12, 2, 5)) << "from a minute before the first open";
  EXPECT_EQ(CZRGSSession::GetRelativeDT(7, 7, Day(1, 12, 0), out), CZRGSSession::ReturnOK);
  EXPECT_EQ(out, Day(1, 12, 0));
}

// Seconds beyond a day are moved as they are, and carried where they still lie beyond it.
TEST(RelativeDateTime, MovesATimeThatNoDayHas) {
  const CZRDate monday = Day(1, 0, 0).GetDate();
  const CZRDateTime odd(monday, CZRTime(86407U));
  CZRDateTime out;
  EXPECT_EQ(CZRGSSession::GetRelativeDT(10, 0, odd, out), CZRGSSession::ReturnOK);
  EXPECT_EQ(out, CZRDateTime(monday, CZRTime(86397U)));
  EXPECT_EQ(CZRGSSession::GetRelativeDT(0, 10, odd, out), CZRGSSession::ReturnOK);
  EXPECT_EQ(out, Day(2, 0, 0, 17));
}

// ---- Edits after a lookup ---------------------------------------------------------------------

// Looks up at each of the statuses in turn, on the same object.
CZRGSSession::Status Peek(const CZRGSSession& week, CZRGSSession::ResetType reset,
                          const CZRDateTime& dt) {
  CZRDateTime start;
  CZRDateTime end;
  CZRGSSession::Status status = kNoStatus;
  unsigned long index = 0;
  week.GetSessionInfo(reset, dt, start, end, status, index);
  return status;
}

TEST(SessionCache, AnEditBehindTheFirstLookupIsNotSeenAndThatIsMeant) {
  CZRGSSession week(List({Info(2010, 2400)}));
  EXPECT_EQ(Peek(week, None, Day(1, 16, 30)), Closed);
  week.SetSessionInfo(0, Info(2010, 2460));  // to 17:00
  EXPECT_EQ(Peek(week, None, Day(1, 16, 30)), Closed);
  EXPECT_EQ(Peek(week, DayReset, Day(1, 16, 30)), Closed);
  EXPECT_EQ(Peek(week, Week, Day(1, 16, 30)), Closed);
  EXPECT_EQ(Peek(CZRGSSession(week), None, Day(1, 16, 30)), Open) << "a new object sees it";
}

TEST(SessionCache, AMonthLookupMakesTheNextOneSeeTheEditAndThatIsMeant) {
  CZRGSSession week(List({Info(2010, 2400)}));
  EXPECT_EQ(Peek(week, None, Day(1, 16, 30)), Closed);
  week.SetSessionInfo(0, Info(2010, 2460));
  // Inside the month the day lookup that refines it is the next one.
  EXPECT_EQ(Peek(week, Month, Day(1, 16, 30)), Open);
  EXPECT_EQ(Peek(week, None, Day(1, 16, 30)), Closed);
  // Behind the month's last close there is none, and it is the caller's.
  EXPECT_EQ(Peek(week, Month, At(1, 31, 2024, 12, 0)), Closed);
  EXPECT_EQ(Peek(week, None, Day(1, 16, 30)), Open);
  EXPECT_EQ(Peek(week, None, Day(1, 16, 30)), Closed);
  // So does a yearly one.
  EXPECT_EQ(Peek(week, Year, Day(1, 9, 29)), Closed);
  EXPECT_EQ(Peek(week, None, Day(1, 16, 30)), Open);
  EXPECT_EQ(Peek(week, None, Day(1, 16, 30)), Closed);
}

TEST(SessionCache, AMonthLookupFillsNoCacheOfItsOwn) {
  CZRGSSession week(List({Info(2010, 2400)}));
  // Behind the month's last close, so that no other lookup refines the answer.
  EXPECT_EQ(Peek(week, Month, At(1, 31, 2024, 12, 0)), Closed);
  week.SetSessionInfo(0, Info(2010, 2460));  // to 17:00
  EXPECT_EQ(Peek(week, None, Day(1, 16, 30)), Open);
  EXPECT_EQ(Peek(week, None, Day(1, 16, 30)), Open) << "and the edit is in the cache";
}

TEST(SessionCache, TheNextDayIsTakenAsLookUpsTakeAnEditAndThatIsMeant) {
  CZRGSSession week(List({Info(2010, 2400)}));
  EXPECT_EQ(Next(week, Day(1, 12, 0)).close, Day(1, 16, 0));
  week.SetSessionInfo(0, Info(2010, 2460));  // to 17:00
  EXPECT_EQ(Next(week, Day(1, 12, 0)).close, Day(1, 16, 0)) << "the old close, from the cache";
  // Behind the month's last close, so that nothing refines the answer.
  EXPECT_EQ(Peek(week, Month, At(1, 31, 2024, 12, 0)), Closed);
  EXPECT_EQ(Next(week, Day(1, 12, 0)).close, Day(1, 17, 0));
}

TEST(SessionCache, TheFirstOpenIsAlwaysFreshAndThatIsMeant) {
  CZRGSSession week(List({Info(2010, 2400)}));
  EXPECT_EQ(Peek(week, None, Day(1, 9, 30)), Open);
  week.SetSessionInfo(0, Info(2070, 2400));  // from 10:30
  CZRDateTime start;
  CZRDateTime end;
  CZRGSSession::Status status = kNoStatus;
  unsigned long index = 0;
  week.GetSessionInfo(None, Day(1, 12, 0), start, end, status, index);
  EXPECT_EQ(status, Open);
  EXPECT_EQ(start, Day(1, 10, 30));
  EXPECT_EQ(end, Day(1, 17, 0)) << "the length is the old one";
}

TEST(SessionCache, AClearedListIsStillLookedUpInAndThatIsMeant) {
  CZRGSSession week(List({Info(2010, 2400)}));
  EXPECT_EQ(Peek(week, None, Day(1, 12, 0)), Open);
  week.Clear();
  EXPECT_EQ(Peek(week, None, Day(1, 12, 0)), Closed);
  EXPECT_EQ(Peek(week, None, Day(0, 6, 29)), Open) << "counted from Sunday, for want of an open";
}

TEST(SessionCache, AssignmentBehindALookupLeavesTheFlagAloneAndThatIsMeant) {
  const ZRGS_SESSION longer = List({Info(2010, 2460)});
  CZRGSSession fromList(List({Info(2010, 2400)}));
  EXPECT_EQ(Peek(fromList, None, Day(1, 16, 30)), Closed);
  fromList = longer;
  EXPECT_EQ(Peek(fromList, None, Day(1, 16, 30)), Closed);

  // From another calendar the cache comes along, as it is there: empty before its first lookup.
  CZRGSSession week(List({Info(2010, 2400)}));
  EXPECT_EQ(Peek(week, None, Day(1, 12, 0)), Open);
  week = CZRGSSession(longer);
  EXPECT_EQ(Peek(week, None, Day(1, 12, 0)), Closed);
  const CZRGSSession source(longer);
  week = CZRGSSession(source, 1);
  EXPECT_EQ(Peek(week, None, Day(1, 16, 30)), Open);
  week = CZRGSSession(CZRGSSession(longer), 2);  // only 1 normalises
  EXPECT_EQ(Peek(week, None, Day(1, 16, 30)), Closed);
  week = source;  // whose own cache that copy had filled
  EXPECT_EQ(Peek(week, None, Day(1, 16, 30)), Open);
}

}  // namespace
