// How each class of bars takes a point in, and netting.
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "tests/datapoints/build_helpers.h"
#include "tests/datapoints/bytes.h"

namespace {

using namespace datapoints_test;
using session_test::Day;

const CZRDateTime kAt = Day(1, 9, 31);
const CZRDateTime kClose = Day(1, 9, 35);

using Row = std::vector<float>;

template <class Bar>
Bar BarOf(const Row& columns, const CZRDateTime& at = kClose) {
  Bar bar;
  for (unsigned col = 0; col < columns.size(); ++col) {
    CDPValue value(columns[col]);
    bar.SetDPValueForCol(col, value);
  }
  bar.SetZRDateTime(at);
  return bar;
}

// Takes `pt` in; the trend it leaves.
template <class Bar>
Trend Include(Bar& bar, const CDPDataPt& pt, const CDPDataPt* prev = nullptr) {
  Trend trend = kNoTrend;
  bar.IncludeDataPtData(&pt, trend, prev);
  return trend;
}

template <class Bar>
Row Columns(const Bar& bar) {
  return Floats(bar, bar.GetNumCols());
}

// The columns of the running daily record but for open interest, as a week's bar reads them.
Row Daily(const CDPCDblOHLCUDUTO& bar) {
  Row row;
  for (unsigned col = 0; col < 12; ++col) {
    CDPValue value;
    bar.GetDPValueForColEx(col, value, 5);
    row.push_back(value.GetFloat());
  }
  return row;
}

constexpr float kMax = std::numeric_limits<float>::max();

// ---- Ticks into the bars with tick counts ----

TEST(MergeTick, TheFirstOneMakesOpenHighLowAndClose) {
  CDPCDblOHLCUDUT bar;
  EXPECT_EQ(Include(bar, Trade(kAt, 10, 100, 3)), Add::TrendUp);
  EXPECT_EQ(Columns(bar), (Row{10, 10, 10, 10, 100, 0, 0, 100, 3, 0, 0, 3}));
  CDPCDblOHLCUDUTO daily;
  EXPECT_EQ(Include(daily, Trade(kAt, 10, 100, 3)), Add::TrendUp);
  EXPECT_EQ(Columns(daily), (Row{10, 10, 10, 10, 100, 0, 0, 100, 3, 0, 0, 3, 0}));
  EXPECT_EQ(Daily(daily), (Row{10, 10, 10, 10, 100, 0, 0, 100, 3, 0, 0, 3}));
}

TEST(MergeTick, DirectionComesFromTheSignAndAWordOf0IsDownAsMeant) {
  struct Case {
    long word;
    Trend trend;
    Row sums;
  };
  const Case cases[] = {{5, Add::TrendUp, {7, 0, 0, 7, 5, 0, 0, 5}},
                        {1, Add::TrendUp, {7, 0, 0, 7, 1, 0, 0, 1}},
                        {0, Add::TrendDown, {0, 7, 0, 7, 0, 0, 0, 0}},
                        {-1, Add::TrendDown, {0, 7, 0, 7, 0, 1, 0, 1}},
                        {-5, Add::TrendDown, {0, 7, 0, 7, 0, 5, 0, 5}},
                        {16777217, Add::TrendUp, {7, 0, 0, 7, 16777216, 0, 0, 16777216}}};
  for (const Case& c : cases) {
    CDPCDblOHLCUDUT bar;
    CDPCDblOHLCUDUTO daily;
    EXPECT_EQ(Include(bar, Trade(kAt, 10, 7, c.word)), c.trend) << c.word;
    EXPECT_EQ(Include(daily, Trade(kAt, 10, 7, c.word)), c.trend) << c.word;
    const Row prices = {10, 10, 10, 10};
    Row expected = prices;
    expected.insert(expected.end(), c.sums.begin(), c.sums.end());
    EXPECT_EQ(Columns(bar), expected) << c.word;
    expected.push_back(0);
    EXPECT_EQ(Columns(daily), expected) << c.word;
  }
}

TEST(MergeTick, TheLowestWordWrapsWithoutHarm) {
  CDPCDblOHLCUDUT bar;
  EXPECT_EQ(Include(bar, Trade(kAt, 10, 7, std::numeric_limits<std::int32_t>::min())),
            Add::TrendDown);
  EXPECT_EQ(std::fabs(Float(bar, 9)), 2147483648.0F);
}

TEST(MergeTick, WidensTheBar) {
  auto bar = BarOf<CDPCDblOHLCUDUT>({10, 12, 9, 11, 1, 2, 3, 6, 1, 2, 3, 6});
  Include(bar, Trade(kAt, 13, 10, 2));
  EXPECT_EQ(Columns(bar), (Row{10, 13, 9, 13, 11, 2, 3, 16, 3, 2, 3, 8}));
  Include(bar, Trade(kAt, 8, 10, -2));
  EXPECT_EQ(Columns(bar), (Row{10, 13, 8, 8, 11, 12, 3, 26, 3, 4, 3, 10}));
  EXPECT_EQ(bar.GetZRDateTime(), kClose) << "merging doesn't stamp";
}

TEST(MergeTick, AWordBecomesAFloatBeforeItIsAdded) {
  // 2^24 + 1 is a tie that goes to the even 2^24, and so is 1 + 2^24; added as whole numbers the
  // two would make 2^24 + 2.
  const auto tick = Trade(kAt, 10, 0, 16777217);
  auto bar = BarOf<CDPCDblOHLCUDUT>({10, 12, 9, 11, 0, 0, 0, 0, 1, 0, 0, 1});
  Include(bar, tick);
  EXPECT_EQ(Float(bar, 8), 16777216.0F);
  EXPECT_EQ(Float(bar, 11), 16777216.0F);
  auto daily = BarOf<CDPCDblOHLCUDUTO>({10, 12, 9, 11, 0, 0, 0, 0, 1, 0, 0, 1, 0});
  daily.m_PrevDailyRec.m_UpTicks = 1;
  Include(daily, tick);
  EXPECT_EQ(Float(daily, 8), 16777216.0F);
  EXPECT_EQ(+daily.m_PrevDailyRec.m_UpTicks, 16777216.0F);
}

// Whether a high and a low stand as they stood, to the bit.
void ExpectHighAndLow(float high, float low, float bothWere) {
  EXPECT_EQ(BitsOf(high), BitsOf(bothWere));
  EXPECT_EQ(BitsOf(low), BitsOf(bothWere));
}

TEST(MergeHighAndLow, ATieAndWhatCantBeComparedKeepTheOldValue) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  struct Case {
    float was;
    float comes;
  };
  for (const Case& c : {Case{0.0F, -0.0F}, Case{-0.0F, 0.0F}, Case{5, nan}, Case{nan, 5}}) {
    const auto tick = Trade(kAt, c.comes);
    const Row was = {1, c.was, c.was, 1};
    const Row comes = {1, c.comes, c.comes, 1};
    auto byTick = BarOf<CDPCDblOHLCUDUT>(was);
    Include(byTick, tick);
    ExpectHighAndLow(Float(byTick, 1), Float(byTick, 2), c.was);
    auto byBar = BarOf<CDPCDblOHLCUDUT>(was);
    Include(byBar, BarOf<CDPCDblOHLCUDUT>(comes));
    ExpectHighAndLow(Float(byBar, 1), Float(byBar, 2), c.was);
    auto daily = BarOf<CDPCDblOHLCUDUTO>(was);
    daily.m_PrevDailyRec.m_High = c.was;
    daily.m_PrevDailyRec.m_Low = c.was;
    Include(daily, tick);
    ExpectHighAndLow(daily.m_PrevDailyRec.m_High, daily.m_PrevDailyRec.m_Low, c.was);
    Include(daily, BarOf<CDPCDblOHLCUDUTO>(comes, Day(2, 16, 0)));
    ExpectHighAndLow(Float(daily, 1), Float(daily, 2), c.was);
    auto old = BarOf<CDPCDblOHLCUDUTOld>(was);
    Include(old, tick);
    ExpectHighAndLow(Float(old, 1), Float(old, 2), c.was);
  }
}

TEST(MergeTick, TheBarWithOpenInterestKeepsItsHighAndLowAsMeant) {
  auto bar = BarOf<CDPCDblOHLCUDUTO>({10, 12, 9, 11, 1, 2, 3, 6, 1, 2, 3, 6, 77});
  bar.ResetPrevDailyRec();
  Include(bar, Trade(kAt, 13, 10, 2));
  EXPECT_EQ(Columns(bar), (Row{10, 12, 9, 13, 11, 2, 3, 16, 3, 2, 3, 8, 77}));
  EXPECT_EQ(Daily(bar), (Row{13, 13, 13, 13, 10, 0, 0, 10, 2, 0, 0, 2}));
  Include(bar, Trade(kAt, 8, 10, -2));
  EXPECT_EQ(Columns(bar), (Row{10, 12, 9, 8, 11, 12, 3, 26, 3, 4, 3, 10, 77}));
  EXPECT_EQ(Daily(bar), (Row{13, 13, 8, 8, 10, 10, 0, 20, 2, 2, 0, 4}));
}

TEST(MergeTick, AnOpenOf0IsSetOnlyInTheBarWithOpenInterest) {
  auto daily = BarOf<CDPCDblOHLCUDUTO>({0, 12, 9, 11});
  Include(daily, Trade(kAt, 13));
  EXPECT_EQ(Float(daily, 0), 13.0F);
  EXPECT_EQ(Float(daily, 1), 12.0F);
  auto bar = BarOf<CDPCDblOHLCUDUT>({0, 12, 9, 11});
  Include(bar, Trade(kAt, 13));
  EXPECT_EQ(Float(bar, 0), 0.0F);
}

TEST(MergeTick, AStampedBarOfZerosIsNotNull) {
  CDPCDblOHLCUDUT bar;
  bar.SetZRDateTime(kClose);
  Include(bar, Trade(kAt, 10));
  EXPECT_EQ(Float(bar, 0), 0.0F);
  EXPECT_EQ(Float(bar, 1), 10.0F);
  EXPECT_EQ(Float(bar, 2), 0.0F);
}

// ---- Bars into the bars with tick counts ----

const Row kFirst = {10, 15, 8, 12, 1, 2, 3, 6, 4, 5, 6, 15};
const Row kSecond = {11, 16, 7, 13, 10, 20, 30, 60, 40, 50, 60, 150};
const Row kMerged = {10, 16, 7, 13, 11, 22, 33, 66, 44, 55, 66, 165};
const Row kInside = {11, 14, 9, 9, 10, 20, 30, 60, 40, 50, 60, 150};
const Row kMergedInside = {10, 15, 8, 9, 11, 22, 33, 66, 44, 55, 66, 165};

Row With(Row row, float openInterest) {
  row.push_back(openInterest);
  return row;
}

TEST(MergeBar, MinuteBarsAddUp) {
  CDPCDblOHLCUDUT bar;
  EXPECT_EQ(Include(bar, BarOf<CDPCDblOHLCUDUT>(kFirst)), kNoTrend) << "only ticks set the trend";
  EXPECT_EQ(Columns(bar), kFirst);
  auto merged = BarOf<CDPCDblOHLCUDUT>(kFirst);
  EXPECT_EQ(Include(merged, BarOf<CDPCDblOHLCUDUT>(kSecond)), kNoTrend);
  EXPECT_EQ(Columns(merged), kMerged);
  auto inside = BarOf<CDPCDblOHLCUDUT>(kFirst);
  Include(inside, BarOf<CDPCDblOHLCUDUT>(kInside));
  EXPECT_EQ(Columns(inside), kMergedInside);
}

TEST(MergeBar, ADailyBarIntoAMinuteBarIsMergedAsAMinuteBar) {
  CDPCDblOHLCUDUT bar;
  Include(bar, BarOf<CDPCDblOHLCUDUTO>(With(kFirst, 77)));
  EXPECT_EQ(Columns(bar), kFirst);
  auto merged = BarOf<CDPCDblOHLCUDUT>(kFirst);
  // Twice the same date: no running record is looked at.
  Include(merged, BarOf<CDPCDblOHLCUDUTO>(With(kSecond, 77)));
  EXPECT_EQ(Columns(merged), kMerged);
  Include(merged, BarOf<CDPCDblOHLCUDUTO>(With(kSecond, 77)));
  EXPECT_EQ(Float(merged, 4), 21.0F);
}

TEST(MergeBar, AMinuteBarIntoADailyBarClearsOrKeepsOpenInterest) {
  CDPCDblOHLCUDUTO bar;
  bar.m_PrevDailyRec.m_Open = 99;
  Include(bar, BarOf<CDPCDblOHLCUDUT>(kFirst));
  EXPECT_EQ(Columns(bar), With(kFirst, 0));
  EXPECT_EQ(+bar.m_PrevDailyRec.m_Open, 99.0F) << "minute bars don't touch the running record";
  auto merged = BarOf<CDPCDblOHLCUDUTO>(With(kFirst, 77));
  Include(merged, BarOf<CDPCDblOHLCUDUT>(kSecond));
  EXPECT_EQ(Columns(merged), With(kMerged, 77));
}

TEST(MergeDaily, TheFirstRecordIsCopiedToTheBarAndTheRunningRecord) {
  CDPCDblOHLCUDUTO bar;
  EXPECT_EQ(Include(bar, BarOf<CDPCDblOHLCUDUTO>(With(kFirst, 77))), kNoTrend);
  EXPECT_EQ(Columns(bar), With(kFirst, 77));
  EXPECT_EQ(Daily(bar), kFirst);
  EXPECT_EQ(+bar.m_PrevDailyRec.m_OpenInt, 77.0F);
  EXPECT_EQ(+bar.m_PrevDailyRec.m_Date, kClose.GetDate().GetJulianDate());
  EXPECT_EQ(+bar.m_PrevDailyRec.m_Time, CZRTime::GetNullTime()) << "only the date is copied";
}

TEST(MergeDaily, ASecondRecordOfADayAddsItsIncreaseAndKeepsHighAndLowAsMeant) {
  CDPCDblOHLCUDUTO bar;
  Include(bar, BarOf<CDPCDblOHLCUDUTO>(With(kFirst, 77), Day(1, 16, 0)));
  bar.SetZRDateTime(Day(5, 16, 0));
  Include(bar, BarOf<CDPCDblOHLCUDUTO>(With(kSecond, 88), Day(1, 16, 0)));
  EXPECT_EQ(Columns(bar), (Row{10, 15, 8, 13, 10, 20, 30, 60, 40, 50, 60, 150, 88}));
  EXPECT_EQ(Daily(bar), kSecond);
  // Another day adds in full, and widens.
  Include(bar, BarOf<CDPCDblOHLCUDUTO>(With(kSecond, 99), Day(2, 16, 0)));
  EXPECT_EQ(Columns(bar), (Row{10, 16, 7, 13, 20, 40, 60, 120, 80, 100, 120, 300, 99}));
  // And a running record of that day counts from that day.
  Row grown = kSecond;
  for (unsigned col = 4; col < 12; ++col) {
    grown[col] += 1;
  }
  Include(bar, BarOf<CDPCDblOHLCUDUTO>(With(grown, 99), Day(2, 16, 0)));
  EXPECT_EQ(Columns(bar), (Row{10, 16, 7, 13, 21, 41, 61, 121, 81, 101, 121, 301, 99}));
}

TEST(MergeDaily, UpVolumesOf100Then150Leave150) {
  CDPCDblOHLCUDUTO bar;
  Include(bar, BarOf<CDPCDblOHLCUDUTO>({1, 5, 1, 1, 100}, Day(1, 16, 0)));
  bar.SetZRDateTime(Day(1, 16, 0));
  Include(bar, BarOf<CDPCDblOHLCUDUTO>({1, 9, 1, 1, 150}, Day(1, 16, 0)));
  EXPECT_EQ(Float(bar, 4), 150.0F);
  EXPECT_EQ(Float(bar, 1), 5.0F);
}

TEST(MergeDaily, OnANullBarTheDayIsAlwaysNew) {
  CDPCDblOHLCUDUTO bar;
  bar.m_PrevDailyRec.m_Date = kClose.GetDate().GetJulianDate();
  bar.m_PrevDailyRec.m_UpVol = 5;
  Include(bar, BarOf<CDPCDblOHLCUDUTO>(With(kFirst, 77)));
  EXPECT_EQ(Columns(bar), With(kFirst, 77));
}

TEST(MergeDaily, ANullRunningRecordIsNoDay) {
  const CZRDateTime null;
  auto bar = BarOf<CDPCDblOHLCUDUTO>(With(kFirst, 77));
  bar.m_PrevDailyRec.SetToNull();
  Include(bar, BarOf<CDPCDblOHLCUDUTO>(With(kSecond, 88), null));
  EXPECT_EQ(Float(bar, 1), 16.0F) << "as of another day, although the dates are equal";
  EXPECT_EQ(Float(bar, 2), 7.0F);
}

TEST(MergeDaily, FloatsAreAddedBeforeThePreviousOnesAreTakenAway) {
  // 1 + 2^24 rounds to 2^24 in a float, and less 2^24 that is 0: the order shows.
  CDPCDblOHLCUDUTO bar;
  Include(bar, BarOf<CDPCDblOHLCUDUTO>({1, 1, 1, 1, 16777216}, Day(1, 16, 0)));
  bar.SetZRDateTime(Day(1, 16, 0));
  CDPSTDblOHLCUDUTO record;
  bar.GetDPST(record);
  record.m_UpVol = 1;
  bar.SetDPST(record);
  Include(bar, BarOf<CDPCDblOHLCUDUTO>({1, 1, 1, 1, 16777216}, Day(1, 16, 0)));
  EXPECT_EQ(Float(bar, 4), 0.0F);
}

// ---- The old-format bars ----

TEST(MergeOld, NeverWritesTheTrend) {
  CDPCDblOHLCUDUTOld old;
  CDPCDblOHLCUDUTOOld oldO;
  EXPECT_EQ(Include(old, Trade(kAt, 10)), kNoTrend);
  EXPECT_EQ(Include(oldO, Trade(kAt, 10)), kNoTrend);
}

struct VolumeCase {
  float reference;
  Row volumes;  // up, down, unchanged, total after a trade of 7 at 10
};
const VolumeCase kVolumeCases[] = {
    {9.5F, {7, 0, 0, 7}}, {10.5F, {0, 7, 0, 7}}, {10.0F, {0, 0, 7, 7}}};

template <class Bar>
class MergeOldBars : public testing::Test {};
using OldBars = testing::Types<CDPCDblOHLCUDUTOld, CDPCDblOHLCUDUTOOld>;
TYPED_TEST_SUITE(MergeOldBars, OldBars);

TYPED_TEST(MergeOldBars, VolumeIsDividedByTheBarsOwnClose) {
  for (const VolumeCase& c : kVolumeCases) {
    auto bar = BarOf<TypeParam>({5, 5, 5, c.reference});
    Include(bar, Trade(kAt, 10, 7));
    Row expected = {5, 10, 5, 10};
    expected.insert(expected.end(), c.volumes.begin(), c.volumes.end());
    EXPECT_EQ(Floats(bar, 8), expected) << c.reference;
  }
}

TYPED_TEST(MergeOldBars, OnANullBarVolumeIsDividedByThePointBefore) {
  for (const VolumeCase& c : kVolumeCases) {
    const CDPTDblDblTick tick = Trade(kAt, c.reference);
    const auto old = BarOf<CDPCDblOHLCUDUTOld>({1, 1, 1, c.reference});
    const auto oldO = BarOf<CDPCDblOHLCUDUTOOld>({1, 1, 1, c.reference});
    for (const CDPDataPt* prev : std::initializer_list<const CDPDataPt*>{&tick, &old, &oldO}) {
      TypeParam bar;
      Include(bar, Trade(kAt, 10, 7), prev);
      Row expected = {10, 10, 10, 10};
      expected.insert(expected.end(), c.volumes.begin(), c.volumes.end());
      EXPECT_EQ(Floats(bar, 8), expected) << c.reference;
    }
  }
}

TYPED_TEST(MergeOldBars, APointBeforeOfAnyOtherClassCountsAs0AsMeant) {
  const auto other = BarOf<CDPCDblOHLCUDUT>({20, 20, 20, 20});
  TypeParam bar;
  Include(bar, Trade(kAt, 10, 7), &other);
  EXPECT_EQ(Floats(bar, 8), (Row{10, 10, 10, 10, 7, 0, 0, 7}));
  TypeParam justAbove;
  Include(justAbove, Trade(kAt, 0.5F, 7), &other);
  EXPECT_EQ(Float(justAbove, 4), 7.0F) << "0 is below 0.5";
  TypeParam below;
  Include(below, Trade(kAt, -1, 7), &other);
  EXPECT_EQ(Float(below, 5), 7.0F) << "0 is above -1";
}

TYPED_TEST(MergeOldBars, ANullPointBeforeDoesntCount) {
  CDPTDblDblTick null;
  TypeParam bar;
  Include(bar, Trade(kAt, 10, 7), &null);
  EXPECT_EQ(Floats(bar, 8), (Row{10, 10, 10, 10, 0, 0, 7, 7})) << "no reference: unchanged";
}

TYPED_TEST(MergeOldBars, AStampedPointBeforeWithAPriceOf0Counts) {
  const CDPTDblDblTick zero = Trade(kAt, 0, 0, 0);
  TypeParam bar;
  Include(bar, Trade(kAt, 10, 7), &zero);
  EXPECT_EQ(Float(bar, 4), 7.0F) << "found, and below";
}

TYPED_TEST(MergeOldBars, WithoutAnyReferenceVolumeIsUnchanged) {
  TypeParam bar;
  Include(bar, Trade(kAt, 10, 7));
  EXPECT_EQ(Floats(bar, 8), (Row{10, 10, 10, 10, 0, 0, 7, 7}));
}

TYPED_TEST(MergeOldBars, ABarWithACloseDoesntConsultThePointBefore) {
  const CDPTDblDblTick before = Trade(kAt, 20);
  auto bar = BarOf<TypeParam>({5, 5, 5, 9});
  Include(bar, Trade(kAt, 10, 7), &before);
  EXPECT_EQ(Floats(bar, 8), (Row{5, 10, 5, 10, 7, 0, 0, 7}));
}

TEST(MergeOld, TheTwoClassesConsultThePointBeforeOnDifferentConditionsAsMeant) {
  const CDPTDblDblTick before = Trade(kAt, 20);
  // Not null, but a close of 0.
  auto old = BarOf<CDPCDblOHLCUDUTOld>({5, 5, 5, 0});
  Include(old, Trade(kAt, 10, 7), &before);
  EXPECT_EQ(Floats(old, 8), (Row{5, 10, 5, 10, 0, 0, 7, 7})) << "its own close, which is 0";
  auto oldO = BarOf<CDPCDblOHLCUDUTOOld>({5, 5, 5, 0});
  Include(oldO, Trade(kAt, 10, 7), &before);
  EXPECT_EQ(Floats(oldO, 8), (Row{5, 10, 5, 10, 0, 7, 0, 7}));
}

TEST(MergeOld, AnOpenOrALowOf0IsUnsetOnlyWithOpenInterestAsMeant) {
  auto oldO = BarOf<CDPCDblOHLCUDUTOOld>({0, 5, 0, 9});
  Include(oldO, Trade(kAt, 10, 7));
  EXPECT_EQ(Floats(oldO, 4), (Row{10, 10, 10, 10}));
  auto old = BarOf<CDPCDblOHLCUDUTOld>({0, 5, 0, 9});
  Include(old, Trade(kAt, 10, 7));
  EXPECT_EQ(Floats(old, 4), (Row{0, 10, 0, 10}));
  auto lower = BarOf<CDPCDblOHLCUDUTOOld>({5, 5, 5, 9});
  Include(lower, Trade(kAt, 4, 7));
  EXPECT_EQ(Floats(lower, 4), (Row{5, 5, 4, 4}));
}

const Row kOldFirst(kFirst.begin(), kFirst.begin() + 8);
const Row kOldSecond(kSecond.begin(), kSecond.begin() + 8);
const Row kOldMerged(kMerged.begin(), kMerged.begin() + 8);

TEST(MergeOld, OldBarsAddUp) {
  const auto point = BarOf<CDPCDblOHLCUDUTOld>(kOldSecond);
  const auto pointO = BarOf<CDPCDblOHLCUDUTOOld>(With(kOldSecond, 55));

  CDPCDblOHLCUDUTOld fromOld;
  Include(fromOld, point);
  EXPECT_EQ(Floats(fromOld, 8), kOldSecond);
  CDPCDblOHLCUDUTOld fromOldO;
  Include(fromOldO, pointO);
  EXPECT_EQ(Floats(fromOldO, 8), kOldSecond);
  CDPCDblOHLCUDUTOOld interestFromOld;
  Include(interestFromOld, point);
  EXPECT_EQ(Floats(interestFromOld, 9), With(kOldSecond, 0));
  CDPCDblOHLCUDUTOOld interestFromOldO;
  Include(interestFromOldO, pointO);
  EXPECT_EQ(Floats(interestFromOldO, 9), With(kOldSecond, 55));

  for (const CDPDataPt* pt : std::initializer_list<const CDPDataPt*>{&point, &pointO}) {
    auto old = BarOf<CDPCDblOHLCUDUTOld>(kOldFirst);
    EXPECT_EQ(Include(old, *pt), kNoTrend);
    EXPECT_EQ(Floats(old, 8), kOldMerged);
    auto oldO = BarOf<CDPCDblOHLCUDUTOOld>(With(kOldFirst, 44));
    Include(oldO, *pt);
    EXPECT_EQ(Floats(oldO, 9), With(kOldMerged, 44)) << "open interest stays";
  }
}

// ---- The plain value bars ----

TEST(MergeClose, TakesEveryValue) {
  CDPCDblC bar = BarOf<CDPCDblC>({9});
  Include(bar, Value(kAt, 10));
  EXPECT_EQ(Float(bar, 0), 10.0F);
  Include(bar, BarOf<CDPCDblC>({8}));
  EXPECT_EQ(Float(bar, 0), 8.0F);
  CDPCDblDblC both = BarOf<CDPCDblDblC>({9, 1});
  Include(both, Trade(kAt, 10, 7));
  EXPECT_EQ(Floats(both, 2), (Row{10, 7}));
  Include(both, BarOf<CDPCDblDblC>({8, 3}));
  EXPECT_EQ(Floats(both, 2), (Row{8, 3}));
}

template <class Bar, int kSign>
void ExpectExtreme() {
  const auto sign = static_cast<float>(kSign);
  Bar bar;
  Include(bar, Trade(kAt, -sign, 1));
  EXPECT_EQ(Floats(bar, 2), (Row{-sign, 1})) << "an empty bar takes any";
  bar.SetZRDateTime(kClose);
  Include(bar, Trade(kAt, 5 * sign, 2));
  EXPECT_EQ(Floats(bar, 2), (Row{5 * sign, 2}));
  Include(bar, Trade(kAt, 4 * sign, 3));
  EXPECT_EQ(Floats(bar, 2), (Row{5 * sign, 2}));
  Include(bar, Trade(kAt, 5 * sign, 4));
  EXPECT_EQ(Floats(bar, 2), (Row{5 * sign, 4})) << "a tie goes to the newer point";
  Include(bar, BarOf<Bar>({6 * sign, 5}));
  EXPECT_EQ(Floats(bar, 2), (Row{6 * sign, 5}));
  Include(bar, BarOf<Bar>({5 * sign, 6}));
  EXPECT_EQ(Floats(bar, 2), (Row{6 * sign, 5}));
}

TEST(MergeExtremes, KeepTheHighestOrLowestWithItsVolume) {
  ExpectExtreme<CDPCDblDblH, 1>();
  ExpectExtreme<CDPCDblDblL, -1>();
}

TEST(MergeCnv, TakesAPointWithNumbersAndIsNoLongerNull) {
  CDPCnv bar;
  CDPRecCnv record;
  record.m_Date = 45000;
  record.m_Winning = 0.1;
  record.m_Losing = 0.3;
  CDPCnv point;
  point.SetDPST(record);
  EXPECT_EQ(Include(bar, point), kNoTrend);
  CDPRecCnv taken;
  bar.GetDPST(taken);
  EXPECT_EQ(+taken.m_Winning, 0.1);
  EXPECT_EQ(+taken.m_Losing, 0.3);
  EXPECT_EQ(+taken.m_Date, 0) << "the stamp isn't taken";
  EXPECT_EQ(bar.IsNull(), 0);
  const CDPCnv nothing;
  Include(bar, nothing);
  bar.GetDPST(taken);
  EXPECT_EQ(+taken.m_Winning, 0.1);
  EXPECT_EQ(bar.IsNull(), 0);
}

CDPOptDaily Option(unsigned putVol, unsigned callVol, int putInterest, int callInterest,
                   float volatility, unsigned day) {
  CDPRecOptDaily record;
  record.m_Date = static_cast<std::uint16_t>(day);
  record.m_Time = 57600;
  record.m_PutVol = putVol;
  record.m_CallVol = callVol;
  record.m_PutOpenInt = putInterest;
  record.m_CallOpenInt = callInterest;
  record.m_ImpliedVol = volatility;
  record.m_VolCount = 9;
  record.m_VolSum = 99;
  CDPOptDaily point;
  point.SetDPST(record);
  return point;
}

void ExpectOption(const CDPRecOptDaily& record, unsigned putVol, unsigned callVol, int putInterest,
                  int callInterest, float volatility, unsigned day, unsigned count) {
  EXPECT_EQ(+record.m_PutVol, putVol);
  EXPECT_EQ(+record.m_CallVol, callVol);
  EXPECT_EQ(+record.m_PutOpenInt, putInterest);
  EXPECT_EQ(+record.m_CallOpenInt, callInterest);
  EXPECT_EQ(+record.m_ImpliedVol, volatility);
  EXPECT_EQ(+record.m_Date, static_cast<int>(day));
  EXPECT_EQ(+record.m_Time, 57600U);
  EXPECT_EQ(+record.m_VolCount, static_cast<int>(count));
}

TEST(MergeOption, KeepsARunningMeanOfVolatilityAndTakesOnlyTheIncreaseOfADay) {
  CDPOptDaily bar;
  bar.m_PrevDailyRec.SetToNull();
  Include(bar, Option(10, 20, 30, 40, 0.5F, 45000));
  ExpectOption(bar.GetDPST(), 10, 20, 30, 40, 0.5F, 45000, 1);
  EXPECT_EQ(+bar.GetDPST().m_VolSum, 0.5F);
  ExpectOption(bar.m_PrevDailyRec, 10, 20, 30, 40, 0.5F, 45000, 9);
  EXPECT_EQ(+bar.m_PrevDailyRec.m_VolSum, 0.0F) << "the sum isn't copied";

  // The same day again: its sample replaces the one before.
  Include(bar, Option(15, 26, 31, 41, 1.5F, 45000));
  ExpectOption(bar.GetDPST(), 15, 26, 31, 41, 1.5F, 45000, 1);
  EXPECT_EQ(+bar.GetDPST().m_VolSum, 1.5F);

  // Another day: volumes add, open interest is the latest, the mean is of two.
  Include(bar, Option(100, 200, -1, -2, 0.5F, 45001));
  ExpectOption(bar.GetDPST(), 115, 226, -1, -2, 1.0F, 45000, 2);
  EXPECT_EQ(+bar.GetDPST().m_VolSum, 2.0F);
  ExpectOption(bar.m_PrevDailyRec, 100, 200, -1, -2, 0.5F, 45001, 9);
}

TEST(MergeOption, ANullRunningRecordIsNoDay) {
  CDPOptDaily bar = Option(1, 1, 1, 1, 0.5F, 45000);
  bar.m_PrevDailyRec.SetToNull();
  Include(bar, Option(1, 1, 1, 1, 0.5F, 0xFFFF));
  EXPECT_EQ(+bar.GetDPST().m_PutVol, 2U);
  EXPECT_EQ(+bar.GetDPST().m_VolCount, 10);
}

TEST(MergeOption, TheRunningRecordTakesThePointsCountButNotItsSum) {
  CDPOptDaily point;
  point.m_PrevDailyRec.SetToNull();
  Include(point, Option(10, 20, 30, 40, 0.5F, 45000));
  ASSERT_EQ(+point.GetDPST().m_VolSum, 0.5F);
  ASSERT_EQ(+point.GetDPST().m_VolCount, 1);
  CDPOptDaily bar;
  bar.m_PrevDailyRec.SetToNull();
  bar.m_PrevDailyRec.m_VolSum = 3;
  Include(bar, point);
  EXPECT_EQ(+bar.m_PrevDailyRec.m_VolSum, 3.0F);
  EXPECT_EQ(+bar.m_PrevDailyRec.m_VolCount, 1);
}

TEST(MergeOption, AMeanOverNoSamplesIs0AndVolumesWrap) {
  CDPOptDaily bar = Option(0xFFFFFFFF, 5, 1, 1, 0.5F, 45000);
  CDPRecOptDaily record;
  bar.GetDPST(record);
  record.m_VolCount = 255;
  bar.SetDPST(record);
  bar.m_PrevDailyRec.SetToNull();
  Include(bar, Option(3, 0, 1, 1, 0.5F, 45001));
  EXPECT_EQ(+bar.GetDPST().m_VolCount, 0);
  EXPECT_EQ(+bar.GetDPST().m_ImpliedVol, 0.0F);
  EXPECT_EQ(+bar.GetDPST().m_PutVol, 2U);
}

// ---- What isn't taken ----

template <class Point>
bool LeavesAlone(const auto& empty) {
  auto bar = empty;
  const Bytes before = InMemory(bar);
  const Point point = Counting<Point>(kAt, 20);
  Include(bar, point);
  return InMemory(bar) == before;
}

template <class Bar>
std::vector<int> Taken() {
  const Bar bar;
  return {!LeavesAlone<CDPTDblTick>(bar),        !LeavesAlone<CDPTDblDblTick>(bar),
          !LeavesAlone<CDPCDblC>(bar),           !LeavesAlone<CDPCDblDblC>(bar),
          !LeavesAlone<CDPCDblDblH>(bar),        !LeavesAlone<CDPCDblDblL>(bar),
          !LeavesAlone<CDPCDblOHLCUDUT>(bar),    !LeavesAlone<CDPCDblOHLCUDUTO>(bar),
          !LeavesAlone<CDPCDblOHLCUDUTOld>(bar), !LeavesAlone<CDPCDblOHLCUDUTOOld>(bar)};
}

TEST(MergeOtherClasses, AreDroppedWithoutAWord) {
  using List = std::vector<int>;
  //                                     Tick DTick C  DC  DH  DL  UT UTO Old OldO
  EXPECT_EQ(Taken<CDPCDblC>(), (List{1, 0, 1, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(Taken<CDPCDblDblC>(), (List{0, 1, 0, 1, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(Taken<CDPCDblDblH>(), (List{0, 1, 0, 0, 1, 0, 0, 0, 0, 0}));
  EXPECT_EQ(Taken<CDPCDblDblL>(), (List{0, 1, 0, 0, 0, 1, 0, 0, 0, 0}));
  EXPECT_EQ(Taken<CDPCDblOHLCUDUT>(), (List{0, 1, 0, 0, 0, 0, 1, 1, 0, 0}));
  EXPECT_EQ(Taken<CDPCDblOHLCUDUTO>(), (List{0, 1, 0, 0, 0, 0, 1, 1, 0, 0}));
  EXPECT_EQ(Taken<CDPCDblOHLCUDUTOld>(), (List{0, 1, 0, 0, 0, 0, 0, 0, 1, 1}));
  EXPECT_EQ(Taken<CDPCDblOHLCUDUTOOld>(), (List{0, 1, 0, 0, 0, 0, 0, 0, 1, 1}));
  EXPECT_EQ(Taken<CDPOptDaily>(), List(10, 0));
  EXPECT_EQ(Taken<CDPCnv>(), List(10, 0));
}

// ---- Netting ----

TEST(NettingTicks, OneStepByTheOthersSignWhateverItsSize) {
  struct Case {
    long own;
    long other;
    int expected;
  };
  constexpr std::int32_t max = std::numeric_limits<std::int32_t>::max();
  constexpr std::int32_t min = std::numeric_limits<std::int32_t>::min();
  for (const Case& c : {Case{5, 3, 6}, Case{5, 0, 6}, Case{5, -3, 4}, Case{0, -1, -1},
                        Case{-5, 7, -4}, Case{max, 1, min}, Case{min, -1, max}}) {
    CDPTDblDblTick own = Trade(kAt, 10, 100, c.own);
    CDPTDblDblTick other = Trade(kAt, 10, 7, c.other);
    EXPECT_TRUE(own.TickNetted(&other));
    EXPECT_EQ(+own.GetDPST().m_TickDir, c.expected) << c.own << ' ' << c.other;
    EXPECT_EQ(+own.GetDPST().m_Vol, 107.0F);
    EXPECT_EQ(+own.GetDPST().m_Price, 10.0F);
    EXPECT_EQ(+other.GetDPST().m_Vol, 7.0F);
  }
}

TEST(NettingTicks, OnlyWithTheSameStampAndPrice) {
  const CDPTDblDblTick before = Trade(kAt, 10, 100, 5);
  CDPTDblDblTick others[] = {Trade(Day(1, 9, 31, 1), 10), Trade(Day(2, 9, 31), 10),
                             Trade(kAt, 10.5F)};
  for (CDPTDblDblTick& other : others) {
    CDPTDblDblTick own = before;
    EXPECT_FALSE(own.TickNetted(&other));
    EXPECT_EQ(InMemory(own.GetDPST()), InMemory(before.GetDPST()));
  }
  CDPTDblTick value = Value(kAt, 10);
  CDPCDblDblC bar = BarOf<CDPCDblDblC>({10, 1}, kAt);
  CDPTDblDblTick own = before;
  EXPECT_FALSE(own.TickNetted(&value)) << "no trade";
  EXPECT_FALSE(own.TickNetted(&bar));
  EXPECT_EQ(InMemory(own.GetDPST()), InMemory(before.GetDPST()));
}

TEST(NettingBars, TakeATradeOfTheirStampAtTheirClose) {
  auto bar = BarOf<CDPCDblOHLCUDUT>({10, 12, 9, 11, 1, 2, 3, 6, 1, 2, 3, 6}, kAt);
  const Row before = Columns(bar);
  Trend trend = kNoTrend;
  CDPTDblDblTick otherPrice = Trade(kAt, 10, 7, 2);
  EXPECT_FALSE(bar.TickNetted(&otherPrice, trend));
  CDPTDblDblTick otherTime = Trade(kClose, 11, 7, 2);
  EXPECT_FALSE(bar.TickNetted(&otherTime, trend));
  CDPTDblDblTick otherDay = Trade(Day(2, 9, 31), 11, 7, 2);
  EXPECT_FALSE(bar.TickNetted(&otherDay, trend));
  CDPTDblTick value = Value(kAt, 11);
  EXPECT_FALSE(bar.TickNetted(&value, trend));
  EXPECT_EQ(Columns(bar), before);
  EXPECT_EQ(trend, kNoTrend);
  CDPTDblDblTick match = Trade(kAt, 11, 7, -2);
  EXPECT_TRUE(bar.TickNetted(&match, trend));
  EXPECT_EQ(trend, Add::TrendDown);
  EXPECT_EQ(Columns(bar), (Row{10, 12, 9, 11, 1, 9, 3, 13, 1, 4, 3, 8}));
}

TEST(NettingBars, GoThroughTheVirtualMerge) {
  struct Counted : CDPCDblOHLCUDUT {
    void IncludeDataPtData(const CDPDataPt*, TrendType&, const CDPDataPt* prev) override {
      ++calls;
      hadPrev = prev != nullptr;
    }
    int calls = 0;
    bool hadPrev = true;
  };
  Counted bar;
  CDPTDblDblTick tick;
  Trend trend = kNoTrend;
  EXPECT_TRUE(bar.TickNetted(&tick, trend));
  EXPECT_EQ(bar.calls, 1);
  EXPECT_FALSE(bar.hadPrev);
}

TEST(RunningRecord, StartsFromTheExtremes) {
  const CDPCDblOHLCUDUTO bar;
  EXPECT_EQ(Daily(bar), (Row{0, -kMax, kMax, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

}  // namespace
