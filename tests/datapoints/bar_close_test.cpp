// When a bar closes, and what AddDataPt answers.
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "tests/datapoints/build_helpers.h"
#include "tests/support/allocation_counter.h"

namespace {

using namespace datapoints_test;
using session_test::At;
using session_test::Day;
using session_test::Info;
using session_test::List;
using session_test::Overnight;
using session_test::Weekdays;

// Opens the protected static function to the tests.
struct Closes : CDPCDblOHLCUDUT {
  using CDPCDataPtCalculated::GetNextBarCloseDateTime;
};

struct CloseRow {
  CZRDateTime at;
  int status;
  CZRDateTime close;
};

void ExpectCloses(const ZRGS_SESSION& list, const CResoln& resoln,
                  std::initializer_list<CloseRow> rows) {
  const CZRGSSession session(list);
  for (const CloseRow& row : rows) {
    CZRDateTime close = At(1, 1, 2000, 0, 0);
    EXPECT_EQ(Closes::GetNextBarCloseDateTime(session, resoln, row.at, close), row.status)
        << testing::PrintToString(row.at);
    EXPECT_EQ(close, row.close) << testing::PrintToString(row.at);
  }
}

const CZRDateTime kNull;

TEST(BarClose, CountsFromTheSessionsOpen) {
  ExpectCloses(Weekdays(0, 10), Of(5, kMinutes),
               {{Day(1, 9, 29, 59), 0, kNull},
                {Day(1, 9, 30), 2, Day(1, 9, 35)},
                {Day(1, 9, 34, 59), 2, Day(1, 9, 35)},
                {Day(1, 9, 35), 2, Day(1, 9, 40)},
                {Day(5, 15, 59, 59), 2, Day(5, 16, 0)},
                {Day(6, 12, 0), 0, kNull},
                {Day(0, 12, 0), 0, kNull}});
}

TEST(BarClose, TheSessionsLastBarIsCutShort) {
  // 390 minutes are 55 times 7 and 5 more.
  ExpectCloses(Weekdays(), Of(7, kMinutes),
               {{Day(2, 9, 30), 2, Day(2, 9, 37)},
                {Day(2, 9, 37), 2, Day(2, 9, 44)},
                {Day(2, 15, 54, 59), 2, Day(2, 15, 55)},
                {Day(2, 15, 55), 2, Day(2, 16, 0)},
                {Day(2, 15, 59, 59), 2, Day(2, 16, 0)}});
  // Wider than the session.
  ExpectCloses(Weekdays(), Of(1000, kMinutes), {{Day(2, 9, 30), 2, Day(2, 16, 0)}});
  // Exactly the session.
  ExpectCloses(Weekdays(), Of(390, kMinutes), {{Day(2, 15, 59, 59), 2, Day(2, 16, 0)}});
}

TEST(BarClose, ALatePrintBelongsToTheLastBar) {
  ExpectCloses(Weekdays(0, 10), Of(5, kMinutes),
               {{Day(1, 16, 0), 3, Day(1, 16, 0)},
                {Day(1, 16, 5), 3, Day(1, 16, 0)},
                {Day(1, 16, 9, 59), 3, Day(1, 16, 0)},
                {Day(1, 16, 10), 0, kNull}});
  // Also where bars are shorter than the way to the late print.
  ExpectCloses(Weekdays(0, 10), Of(1, kSeconds), {{Day(1, 16, 5), 3, Day(1, 16, 0)}});
  ExpectCloses(Weekdays(0, 10), Of(7, kMinutes), {{Day(1, 16, 5), 3, Day(1, 16, 0)}});
}

TEST(BarClose, TheResetWindowKeepsTheSessionsClose) {
  ExpectCloses(Weekdays(30, 10), Of(5, kMinutes),
               {{Day(1, 16, 9, 59), 3, Day(1, 16, 0)},
                {Day(1, 16, 10), 4, Day(1, 16, 0)},
                {Day(1, 16, 29, 59), 4, Day(1, 16, 0)},
                {Day(1, 16, 30), 0, kNull}});
}

TEST(BarClose, SecondsTicksAndTheUnnamedUnitCountSeconds) {
  ExpectCloses(Weekdays(), Of(15, kSeconds),
               {{Day(1, 9, 30), 2, Day(1, 9, 30, 15)},
                {Day(1, 9, 30, 14), 2, Day(1, 9, 30, 15)},
                {Day(1, 9, 30, 15), 2, Day(1, 9, 30, 30)}});
  for (const unsigned short unit : {kTicks, static_cast<unsigned short>(8)}) {
    ExpectCloses(
        Weekdays(), Of(3, unit),
        {{Day(1, 9, 30, 2), 2, Day(1, 9, 30, 3)}, {Day(1, 9, 30, 3), 2, Day(1, 9, 30, 6)}});
  }
}

TEST(BarClose, AResolutionWithoutWidthIsClosed) {
  for (const unsigned short unit : std::vector<unsigned short>{kTicks, kSeconds, kMinutes, 0, 9}) {
    ExpectCloses(Weekdays(30, 10), Of(0, unit),
                 {{Day(1, 9, 30), 0, kNull},
                  {Day(1, 16, 5), 0, kNull},
                  // The reset window asks for no width.
                  {Day(1, 16, 15), 4, Day(1, 16, 0)}});
  }
}

TEST(BarClose, ACloseBeforeItsOpenLeavesNoIntervalToCount) {
  // Tuesday 02:00 to 00:20: what is left of the session are its windows, from 02:00 to 03:40.
  ExpectCloses(List({Info(2010, 2400), Info(3000, 2900, 0, 200)}), Of(5, kMinutes),
               {{Day(2, 2, 0), 0, kNull}, {Day(2, 3, 39, 59), 0, kNull}});
  // The reset window counts no intervals.
  ExpectCloses(List({Info(2010, 2400), Info(3000, 2900, 200)}), Of(5, kMinutes),
               {{Day(2, 2, 0), 4, Day(2, 0, 20)}, {Day(2, 3, 40), 0, kNull}});
}

TEST(BarClose, DaysCloseWithTheTradingDayWhateverTheQuantity) {
  for (const unsigned short quantity : std::vector<unsigned short>{0, 1, 2, 5}) {
    ExpectCloses(Weekdays(30, 10), Of(quantity, kDays),
                 {{Day(1, 9, 29, 59), 0, kNull},
                  {Day(1, 9, 30), 2, Day(1, 16, 0)},
                  {Day(1, 15, 59, 59), 2, Day(1, 16, 0)},
                  {Day(1, 16, 0), 3, Day(1, 16, 0)},
                  {Day(1, 16, 10), 4, Day(1, 16, 0)},
                  {Day(2, 9, 30), 2, Day(2, 16, 0)},
                  {Day(6, 9, 30), 0, kNull}});
  }
}

// 09:30 to 12:00 and 13:00 to 16:00; the morning doesn't end the trading day.
ZRGS_SESSION LunchBreak() {
  ZRGS_SESSION list;
  for (unsigned day = 1; day <= 5; ++day) {
    list.sessions.push_back(Info(day * 1440 + 570, day * 1440 + 720, 0, 0, 0));
    list.sessions.push_back(Info(day * 1440 + 780, day * 1440 + 960, 0, 0, 1));
  }
  return list;
}

TEST(BarClose, ALunchBreakIsInTheDayButOutsideTheSessions) {
  ExpectCloses(LunchBreak(), Of(1, kDays),
               {{Day(1, 11, 59, 59), 2, Day(1, 16, 0)},
                {Day(1, 12, 0), 1, Day(1, 16, 0)},
                {Day(1, 12, 59, 59), 1, Day(1, 16, 0)},
                {Day(1, 13, 0), 2, Day(1, 16, 0)}});
  // Minutes count from each session's own open.
  ExpectCloses(LunchBreak(), Of(40, kMinutes),
               {{Day(1, 11, 30), 2, Day(1, 12, 0)},
                {Day(1, 12, 0), 0, kNull},
                {Day(1, 13, 0), 2, Day(1, 13, 40)},
                {Day(1, 15, 40), 2, Day(1, 16, 0)}});
}

TEST(BarClose, OvernightSessionsRunOverMidnight) {
  ExpectCloses(Overnight(), Of(30, kMinutes),
               {{Day(0, 17, 59, 59), 0, kNull},
                {Day(0, 18, 0), 2, Day(0, 18, 30)},
                {Day(0, 23, 59, 59), 2, Day(1, 0, 0)},
                {Day(1, 0, 0), 2, Day(1, 0, 30)},
                {Day(1, 16, 59, 59), 2, Day(1, 17, 0)},
                {Day(1, 17, 0), 0, kNull}});
  ExpectCloses(Overnight(), Of(1, kDays),
               {{Day(0, 18, 0), 2, Day(1, 17, 0)}, {Day(1, 3, 0), 2, Day(1, 17, 0)}});
}

TEST(BarClose, WeeksCloseWithTheLastSession) {
  ExpectCloses(Weekdays(30, 10), Of(1, kWeeks),
               {{Day(1, 9, 30), 2, Day(5, 16, 0)},
                {Day(3, 12, 0), 2, Day(5, 16, 0)},
                {Day(3, 16, 5), 2, Day(5, 16, 0)},  // the dribble of a day is in the week
                {Day(3, 20, 0), 1, Day(5, 16, 0)},
                {Day(5, 16, 5), 3, Day(5, 16, 0)},
                {Day(5, 16, 10), 4, Day(5, 16, 0)},
                {Day(5, 16, 30), 0, kNull},
                {Day(6, 12, 0), 0, kNull}});
}

TEST(BarClose, MonthsCloseWithTheMonthsLastTradingDay) {
  // Wednesday 31 January 2024; 29 February 2024 was a Thursday.
  ExpectCloses(Weekdays(), Of(1, kMonths),
               {{At(1, 2, 2024, 10, 0), 2, At(1, 31, 2024, 16, 0)},
                {At(1, 31, 2024, 15, 59, 59), 2, At(1, 31, 2024, 16, 0)},
                {At(1, 6, 2024, 10, 0), 1, At(1, 31, 2024, 16, 0)},
                {At(2, 1, 2024, 9, 30), 2, At(2, 29, 2024, 16, 0)},
                {At(1, 31, 2024, 16, 0), 0, kNull}});
}

TEST(BarClose, YearsAreNeverBuiltAsMeant) {
  ExpectCloses(Weekdays(), Of(1, kYears),
               {{Day(3, 12, 0), 0, kNull}, {At(7, 4, 2024, 12, 0), 0, kNull}});
}

TEST(BarClose, TheNullDateTimeAndAnEmptyCalendarAreClosed) {
  for (const unsigned short unit : {kTicks, kSeconds, kMinutes, kDays, kWeeks, kMonths, kYears}) {
    ExpectCloses(Weekdays(30, 10), Of(1, unit), {{kNull, 0, kNull}});
    ExpectCloses(ZRGS_SESSION(), Of(1, unit), {{Day(3, 12, 0), 0, kNull}});
  }
}

TEST(BarClose, StatusesShareTheCalendarsValues) {
  EXPECT_EQ(static_cast<int>(Add::DPTStatusClosed), static_cast<int>(CZRGSSession::StatusClosed));
  EXPECT_EQ(static_cast<int>(Add::DPTStatusInPeriod),
            static_cast<int>(CZRGSSession::StatusInPeriod));
  EXPECT_EQ(static_cast<int>(Add::DPTStatusOpen), static_cast<int>(CZRGSSession::StatusOpen));
  EXPECT_EQ(static_cast<int>(Add::DPTStatusDribble), static_cast<int>(CZRGSSession::StatusDribble));
  EXPECT_EQ(static_cast<int>(Add::DPTStatusReset), static_cast<int>(CZRGSSession::StatusReset));
  EXPECT_EQ(Add::AddStartedNewBar, 0);
  EXPECT_EQ(Add::AddBarComplete, 1);
  EXPECT_EQ(Add::AddOutsideSession, 2);
  EXPECT_EQ(Add::AddIncluded, 3);
  EXPECT_EQ(Add::TrendUp, 1);
  EXPECT_EQ(Add::TrendDown, 2);
}

// ---- CheckCloseTime ----

template <class Bar>
class CalculatedBars : public testing::Test {};
using Calculated =
    testing::Types<CDPCDblC, CDPCDblDblC, CDPCDblDblH, CDPCDblDblL, CDPCDblOHLCUDUT,
                   CDPCDblOHLCUDUTO, CDPCDblOHLCUDUTOld, CDPCDblOHLCUDUTOOld, CDPOptDaily, CDPCnv>;
TYPED_TEST_SUITE(CalculatedBars, Calculated);

TYPED_TEST(CalculatedBars, CheckCloseTimeTellsWhatIsPastTheBar) {
  const CZRGSSession session(Weekdays(0, 10));
  TypeParam bar;
  bar.SetZRDateTime(Day(1, 9, 35));
  const CResoln five = Of(5, kMinutes);
  EXPECT_EQ(bar.CheckCloseTime(Day(1, 9, 30), five, session), 0);
  EXPECT_EQ(bar.CheckCloseTime(Day(1, 9, 34, 59), five, session), 0);
  EXPECT_EQ(bar.CheckCloseTime(Day(1, 9, 35), five, session), 1);
  EXPECT_EQ(bar.CheckCloseTime(Day(1, 9, 29, 59), five, session), 1) << "no session at all";
  EXPECT_EQ(bar.CheckCloseTime(CZRDateTime(), five, session), 1);
  EXPECT_EQ(bar.CheckCloseTime(Day(2, 9, 30), five, session), 1);
  bar.SetZRDateTime(Day(2, 9, 35));
  EXPECT_EQ(bar.CheckCloseTime(Day(1, 16, 5), five, session), 0) << "an earlier day";
  bar.SetZRDateTime(Day(1, 16, 0));
  EXPECT_EQ(bar.CheckCloseTime(Day(1, 16, 5), five, session), 0) << "a late print";
  bar.SetZRDateTime(CZRDateTime());
  EXPECT_EQ(bar.CheckCloseTime(Day(1, 9, 35), five, session), 0) << "nothing is later than null";
}

TEST(PointsWithoutPrices, AreNotBuiltByAddDataPt) {
  const CZRGSSession session(Weekdays());
  Trend trend = kNoTrend;
  CDPCnv cnv = Counting<CDPCnv>(Day(1, 9, 31), 1);
  CDPOptDaily option = Counting<CDPOptDaily>(Day(1, 9, 31), 1);
  for (const int startNew : {0, 1}) {
    CDPCnv cnvBar;
    CDPOptDaily optionBar;
    EXPECT_EQ(cnvBar.AddDataPt(&cnv, Of(1, kMinutes), session, startNew, trend, nullptr),
              Add::AddOutsideSession);
    EXPECT_EQ(optionBar.AddDataPt(&option, Of(1, kDays), session, startNew, trend, nullptr),
              Add::AddOutsideSession);
    EXPECT_EQ(cnvBar.IsNull(), 1);
    EXPECT_EQ(optionBar.IsNull(), 1);
  }
}

// ---- The protocol ----

// In what the eight classes differ; one row a class.
template <class Bar>
struct Rules;
struct DailyRules {
  using Moment = CDPTDblDblTick;
  static constexpr bool kStepsBack = true;
  static constexpr bool kResetIsClosed = false;
  static constexpr bool kEmptyBarWaits = false;
};
struct IntradayRules : DailyRules {
  static constexpr bool kResetIsClosed = true;
};
template <>
struct Rules<CDPCDblOHLCUDUTO> : DailyRules {};
template <>
struct Rules<CDPCDblOHLCUDUTOOld> : DailyRules {};
template <>
struct Rules<CDPCDblOHLCUDUT> : IntradayRules {};
template <>
struct Rules<CDPCDblDblL> : IntradayRules {};
template <>
struct Rules<CDPCDblOHLCUDUTOld> : IntradayRules {};
template <>
struct Rules<CDPCDblDblH> : IntradayRules {
  static constexpr bool kStepsBack = false;
};
template <>
struct Rules<CDPCDblDblC> : IntradayRules {
  static constexpr bool kEmptyBarWaits = true;
};
template <>
struct Rules<CDPCDblC> : Rules<CDPCDblDblC> {
  using Moment = CDPTDblTick;
};

template <class Bar>
class Building : public testing::Test {
 protected:
  using BarRules = Rules<Bar>;
  using Moment = typename BarRules::Moment;

  static Moment MomentAt(const CZRDateTime& at, float price = 50) {
    Moment tick = Counting<Moment>(at, price);
    return tick;
  }
  // A price that every bar of BarAt takes in: the low's bar only takes lower ones.
  static constexpr float kTaken = std::is_same_v<Bar, CDPCDblDblL> ? 30.0F : 50.0F;
  // A bar with data, whose price is 40.
  static Bar BarAt(const CZRDateTime& close) { return Counting<Bar>(close, 40); }
  Add::AddDataPtReturn Offer(Bar& bar, const CDPDataPt& point, int startNew) {
    return bar.AddDataPt(&point, m_resoln, m_session, startNew, m_trend, nullptr);
  }

  CResoln m_resoln = Of(5, kMinutes);
  CZRGSSession m_session{Weekdays(30, 10)};
  Trend m_trend = kNoTrend;
};
using Buildable =
    testing::Types<CDPCDblOHLCUDUTO, CDPCDblOHLCUDUTOOld, CDPCDblOHLCUDUT, CDPCDblDblL,
                   CDPCDblOHLCUDUTOld, CDPCDblDblH, CDPCDblDblC, CDPCDblC>;
TYPED_TEST_SUITE(Building, Buildable);

TYPED_TEST(Building, AnEmptyBarTakesTheFirstPointAndItsClose) {
  for (const int startNew : {0, 1, -1}) {
    TypeParam bar;
    bar.SetFlag(1);
    const auto result = this->Offer(bar, this->MomentAt(Day(1, 9, 31)), startNew);
    // The bars of closes make even an empty bar wait for the caller's word, as is meant.
    if (TestFixture::BarRules::kEmptyBarWaits && startNew == 0) {
      EXPECT_EQ(result, Add::AddBarComplete);
      EXPECT_EQ(bar.IsNull(), 1);
      continue;
    }
    EXPECT_EQ(result, Add::AddIncluded);
    EXPECT_EQ(bar.GetZRDateTime(), Day(1, 9, 35));
    EXPECT_EQ(Float(bar, 0), 50.0F);
    // Only they clear a bar that was empty, and with it its flags.
    EXPECT_EQ(bar.HasFlag(1), !TestFixture::BarRules::kEmptyBarWaits);
  }
}

TYPED_TEST(Building, APointOfTheBarsOwnCloseIsIncluded) {
  for (const int startNew : {0, 1}) {
    for (const CZRDateTime& at : {Day(1, 9, 30), Day(1, 9, 34, 59)}) {
      const TypeParam before = this->BarAt(Day(1, 9, 35));
      TypeParam bar = before;
      bar.SetFlag(1);
      EXPECT_EQ(this->Offer(bar, this->MomentAt(at, this->kTaken), startNew), Add::AddIncluded);
      EXPECT_EQ(bar == before, 0);
      EXPECT_EQ(bar.GetZRDateTime(), Day(1, 9, 35));
      EXPECT_TRUE(bar.HasFlag(1)) << "the bar wasn't cleared";
    }
  }
}

TYPED_TEST(Building, APointOfAnotherCloseLeavesTheBarUntilTheCallerTookIt) {
  const TypeParam before = this->BarAt(Day(1, 9, 35));
  TypeParam bar = before;
  EXPECT_EQ(this->Offer(bar, this->MomentAt(Day(1, 9, 35)), 0), Add::AddBarComplete);
  EXPECT_EQ(bar == before, 1);
  EXPECT_EQ(this->Offer(bar, this->MomentAt(Day(1, 9, 35)), 1), Add::AddStartedNewBar);
  EXPECT_EQ(bar.GetZRDateTime(), Day(1, 9, 40));
  EXPECT_EQ(Float(bar, 0), 50.0F);
}

TYPED_TEST(Building, APointOfAnEarlierCloseStartsABarToo) {
  TypeParam bar = this->BarAt(Day(1, 9, 40));
  EXPECT_EQ(this->Offer(bar, this->MomentAt(Day(1, 9, 30)), 0), Add::AddBarComplete);
  EXPECT_EQ(this->Offer(bar, this->MomentAt(Day(1, 9, 30)), 1), Add::AddStartedNewBar);
  EXPECT_EQ(bar.GetZRDateTime(), Day(1, 9, 35));
}

TYPED_TEST(Building, OutsideTheSessionsAnEmptyBarTakesNothing) {
  for (const int startNew : {0, 1}) {
    for (const CZRDateTime& at : {Day(1, 9, 29, 59), Day(1, 20, 0), Day(6, 12, 0), CZRDateTime()}) {
      TypeParam bar;
      EXPECT_EQ(this->Offer(bar, this->MomentAt(at), startNew), Add::AddOutsideSession);
      EXPECT_EQ(bar.IsNull(), 1);
    }
  }
}

TYPED_TEST(Building, OutsideTheSessionsABarWithDataIsComplete) {
  for (const CZRDateTime& at : {Day(1, 9, 29, 59), Day(1, 20, 0), Day(6, 12, 0), CZRDateTime()}) {
    const TypeParam before = this->BarAt(Day(1, 16, 0));
    TypeParam bar = before;
    EXPECT_EQ(this->Offer(bar, this->MomentAt(at), 0), Add::AddBarComplete);
    EXPECT_EQ(bar == before, 1);
    EXPECT_EQ(this->Offer(bar, this->MomentAt(at), 1), Add::AddBarComplete);
    EXPECT_EQ(bar.IsNull(), 1) << "cleared, and the point wasn't taken";
  }
}

TYPED_TEST(Building, InTheResetWindowEachClassDoesAsItsRuleSays) {
  const auto point = this->MomentAt(Day(1, 16, 15));
  for (const int startNew : {0, 1}) {
    TypeParam empty;
    EXPECT_EQ(this->Offer(empty, point, startNew),
              TestFixture::BarRules::kResetIsClosed ? Add::AddOutsideSession : Add::AddBarComplete);
    EXPECT_EQ(empty.IsNull(), 1);
    const TypeParam before = this->BarAt(Day(1, 16, 0));
    TypeParam bar = before;
    EXPECT_EQ(this->Offer(bar, point, startNew), Add::AddBarComplete);
    if (TestFixture::BarRules::kResetIsClosed && startNew != 0) {
      EXPECT_EQ(bar.IsNull(), 1);
    } else {
      EXPECT_EQ(bar == before, 1) << "left alone";
    }
  }
}

TYPED_TEST(Building, InTheDribbleWindowAPointJoinsTheLastBar) {
  const TypeParam before = this->BarAt(Day(1, 16, 0));
  TypeParam bar = before;
  EXPECT_EQ(this->Offer(bar, this->MomentAt(Day(1, 16, 5), this->kTaken), 0), Add::AddIncluded);
  EXPECT_EQ(bar.GetZRDateTime(), Day(1, 16, 0));
  EXPECT_EQ(bar == before, 0);
}

TYPED_TEST(Building, BetweenTheSessionsOfAPeriodNothingIsTaken) {
  this->m_resoln = Of(1, kWeeks);
  for (const int startNew : {0, 1}) {
    TypeParam empty;
    EXPECT_EQ(this->Offer(empty, this->MomentAt(Day(3, 20, 0)), startNew), Add::AddOutsideSession);
    const TypeParam before = this->BarAt(Day(5, 16, 0));
    TypeParam bar = before;
    EXPECT_EQ(this->Offer(bar, this->MomentAt(Day(3, 20, 0)), startNew), Add::AddOutsideSession);
    EXPECT_EQ(bar == before, 1);
  }
}

// A smaller bar's stamp is the end of its interval, so it is placed a second earlier.
TYPED_TEST(Building, ASmallerBarStepsBackASecondButForTheHighsBarAsMeant) {
  TypeParam bar;
  const TypeParam smaller = Counting<TypeParam>(Day(1, 9, 35), 60);
  EXPECT_EQ(this->Offer(bar, smaller, 1), Add::AddIncluded);
  EXPECT_EQ(bar.GetZRDateTime(), TestFixture::BarRules::kStepsBack ? Day(1, 9, 35) : Day(1, 9, 40));
}

TYPED_TEST(Building, TheSessionsLastSmallerBarStepsBackIntoTheSession) {
  this->m_session = CZRGSSession(Weekdays());
  TypeParam bar;
  const TypeParam smaller = Counting<TypeParam>(Day(1, 16, 0), 60);
  if (TestFixture::BarRules::kStepsBack) {
    EXPECT_EQ(this->Offer(bar, smaller, 1), Add::AddIncluded);
    EXPECT_EQ(bar.GetZRDateTime(), Day(1, 16, 0));
  } else {
    EXPECT_EQ(this->Offer(bar, smaller, 1), Add::AddOutsideSession);
  }
}

TYPED_TEST(Building, AStampOfMidnightStepsBackIntoTheDayBefore) {
  this->m_session = CZRGSSession(Overnight());
  TypeParam bar;
  EXPECT_EQ(this->Offer(bar, Counting<TypeParam>(Day(1, 0, 0), 60), 1), Add::AddIncluded);
  EXPECT_EQ(bar.GetZRDateTime(), TestFixture::BarRules::kStepsBack ? Day(1, 0, 0) : Day(1, 0, 5));
}

// Only the exact class is a moment; the other tick class, and any subclass, is placed as a bar is.
TYPED_TEST(Building, OnlyTheExactTickClassIsAMoment) {
  struct OwnTick : TestFixture::Moment {
    const CRuntimeClass* GetRuntimeClass() const override {
      static const CRuntimeClass record = {
          "OwnTick", static_cast<int>(sizeof(OwnTick)), kNoSchema, nullptr, &BaseOfOwn, nullptr,
          nullptr};
      return &record;
    }
    static const CRuntimeClass* BaseOfOwn() { return TestFixture::Moment::GetThisClass(); }
  };
  OwnTick own;
  own.SetDPST(Counting<typename TestFixture::Moment>(Day(1, 9, 35), 60).GetDPST());
  own.SetZRDateTime(Day(1, 9, 35));
  EXPECT_TRUE(own.IsKindOf(TestFixture::Moment::GetThisClass()));
  TypeParam bar;
  EXPECT_EQ(this->Offer(bar, own, 1), Add::AddIncluded);
  EXPECT_EQ(bar.GetZRDateTime(), TestFixture::BarRules::kStepsBack ? Day(1, 9, 35) : Day(1, 9, 40));
  EXPECT_EQ(Float(bar, 0), 0.0F) << "and its data is dropped without a word";
}

TYPED_TEST(Building, AYearIsNeverBuiltAsMeant) {
  this->m_resoln = Of(1, kYears);
  TypeParam bar;
  for (unsigned day = 1; day <= 5; ++day) {
    EXPECT_EQ(this->Offer(bar, this->MomentAt(Day(day, 12, 0)), 1), Add::AddOutsideSession);
  }
}

TYPED_TEST(Building, ABarOfTwoDaysClosesWithEachDayAsMeant) {
  this->m_resoln = Of(2, kDays);
  TypeParam bar;
  EXPECT_EQ(this->Offer(bar, this->MomentAt(Day(1, 12, 0)), 1), Add::AddIncluded);
  EXPECT_EQ(bar.GetZRDateTime(), Day(1, 16, 0));
  EXPECT_EQ(this->Offer(bar, this->MomentAt(Day(2, 12, 0)), 0), Add::AddBarComplete);
  EXPECT_EQ(this->Offer(bar, this->MomentAt(Day(2, 12, 0)), 1), Add::AddStartedNewBar);
  EXPECT_EQ(bar.GetZRDateTime(), Day(2, 16, 0));
}

TYPED_TEST(Building, TheMergeIsGivenThePointTheTrendAndThePointBefore) {
  struct Watched : TypeParam {
    void IncludeDataPtData(const CDPDataPt* pt, Trend& trend, const CDPDataPt* prev) override {
      points.push_back(pt);
      trends.push_back(&trend);
      befores.push_back(prev);
    }
    std::vector<const CDPDataPt*> points;
    std::vector<const Trend*> trends;
    std::vector<const CDPDataPt*> befores;
  };
  const auto before = this->MomentAt(Day(1, 9, 29));
  const auto first = this->MomentAt(Day(1, 9, 31));
  const auto second = this->MomentAt(Day(1, 9, 32));
  const auto next = this->MomentAt(Day(1, 9, 36));
  Watched bar;
  const auto offer = [&](const CDPDataPt& point, const CDPDataPt& prev, int startNew) {
    bar.AddDataPt(&point, this->m_resoln, this->m_session, startNew, this->m_trend, &prev);
  };
  offer(first, before, 1);
  offer(second, first, 0);
  offer(next, second, 0);  // not taken
  offer(next, second, 1);
  EXPECT_EQ(bar.points, (std::vector<const CDPDataPt*>{&first, &second, &next}));
  EXPECT_EQ(bar.trends, std::vector<const Trend*>(3, &this->m_trend));
  EXPECT_EQ(bar.befores, (std::vector<const CDPDataPt*>{&before, &first, &second}));
}

TYPED_TEST(Building, InSteadyStateTouchesNoHeap) {
  const auto offerDay = [&](TypeParam& bar, unsigned day) {
    for (unsigned second = 0; second < 600; ++second) {
      const auto tick = this->MomentAt(Day(day, 10, second / 60, second % 60));
      if (this->Offer(bar, tick, 0) == Add::AddBarComplete) {
        this->Offer(bar, tick, 1);
      }
    }
  };
  TypeParam bar;
  offerDay(bar, 1);
  const pxd::test::AllocationCounter allocations;
  offerDay(bar, 2);
  EXPECT_EQ(allocations.Count(), 0U);
}

TEST(BuildingOfCloses, AValueTickIsAMomentForTheCloseAndATradeIsNot) {
  const CZRGSSession session(Weekdays());
  Trend trend = kNoTrend;
  CDPCDblC bar;
  const CDPTDblDblTick trade = Trade(Day(1, 9, 35), 10);
  EXPECT_EQ(bar.AddDataPt(&trade, Of(5, kMinutes), session, 1, trend, nullptr), Add::AddIncluded);
  EXPECT_EQ(bar.GetZRDateTime(), Day(1, 9, 35));
  EXPECT_EQ(Float(bar, 0), 0.0F) << "a trade is placed but not merged";
  CDPCDblDblC withVolume;
  const CDPTDblTick value = Value(Day(1, 9, 35), 10);
  EXPECT_EQ(withVolume.AddDataPt(&value, Of(5, kMinutes), session, 1, trend, nullptr),
            Add::AddIncluded);
  EXPECT_EQ(withVolume.GetZRDateTime(), Day(1, 9, 35));
}

TEST(BuildingWorkedExamples, AOneMinuteBar) {
  const CZRGSSession session(Weekdays(0, 10));
  Trend trend = kNoTrend;
  CDPCDblOHLCUDUTO bar;
  const CDPTDblDblTick first = Trade(Day(1, 9, 30), 10);
  EXPECT_EQ(bar.AddDataPt(&first, Of(1, kMinutes), session, 0, trend, nullptr), Add::AddIncluded);
  EXPECT_EQ(bar.GetZRDateTime(), Day(1, 9, 31));
  const CDPCDblOHLCUDUTO before = bar;
  const CDPTDblDblTick second = Trade(Day(1, 9, 31), 11);
  EXPECT_EQ(bar.AddDataPt(&second, Of(1, kMinutes), session, 0, trend, nullptr),
            Add::AddBarComplete);
  EXPECT_EQ(bar == before, 1);
  EXPECT_EQ(bar.AddDataPt(&second, Of(1, kMinutes), session, 1, trend, nullptr),
            Add::AddStartedNewBar);
  EXPECT_EQ(bar.GetZRDateTime(), Day(1, 9, 32));
}

}  // namespace
