// The builder against the loop over AddDataPt that it stands for: the same bars, to the bit.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <iterator>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include <pxdutil/datapoints/bars/bar_builder.h>

#include "tests/datapoints/build_helpers.h"
#include "tests/sessions/random_calendar.h"

namespace {

using namespace datapoints_test;
using session_test::Info;
using session_test::MakeCalendar;
using session_test::Numbers;
using session_test::Weekdays;

// All that a bar is: its bytes but for the pointer in front of them.
std::string BytesOf(const CDPDataPt& point) {
  const char* const object = reinterpret_cast<const char*>(&point);
  return {object + sizeof(void*), object + point.GetObjectSize()};
}

class Kept final : public pxd::BarSink {
 public:
  void Take(CDPCDataPtCalculated& bar) override { bars.push_back(BytesOf(bar)); }
  std::vector<std::string> bars;
};

// The loop as hosts write it, which hands a bar on once.
class Loop {
 public:
  Loop(CDPCDataPtCalculated& bar, const CResoln& resolution, const CZRGSSession& calendar)
      : m_bar(bar), m_resolution(resolution), m_calendar(calendar) {}

  Add::AddDataPtReturn Offer(const CDPDataPt& point, const CDPDataPt* previous) {
    auto result = m_bar.AddDataPt(&point, m_resolution, m_calendar, 0, trend, previous);
    if (result == Add::AddBarComplete) {
      Keep();
      result = m_bar.AddDataPt(&point, m_resolution, m_calendar, 1, trend, previous);
      if (result == Add::AddBarComplete) {
        m_bar.SetToNull();
      }
    }
    return result;
  }
  void Finish() {
    Keep();
    m_bar.SetToNull();
  }

  Trend trend = CDPCDataPtCalculated::TrendUp;
  std::vector<std::string> bars;

 private:
  void Keep() {
    if (m_bar.GetZRDateTime().IsNullDateTime() == 0) {
      bars.push_back(BytesOf(m_bar));
    }
  }

  CDPCDataPtCalculated& m_bar;
  CResoln m_resolution;
  const CZRGSSession& m_calendar;
};

// Weekdays that open on the evening before, in one session or with a break, with windows behind the
// close; now and then a holiday.
ZRGS_SESSION Overnights(Numbers& numbers) {
  ZRGS_SESSION list;
  const int open = 17 * 60 + numbers.Below(120);
  const int length = 600 + numbers.Below(600);
  const bool breaks = numbers.Chance(40);
  const auto add = [&](int from, int to, bool ends) {
    list.sessions.push_back(Info(static_cast<unsigned>(from % session_test::kWeek),
                                 static_cast<unsigned>(to % session_test::kWeek),
                                 static_cast<unsigned>(numbers.Below(90)),
                                 static_cast<unsigned>(numbers.Below(90)), ends ? 1 : 0));
  };
  for (int day = 0; day < 6; ++day) {
    const int from = day * 1440 + open;
    if (day != 3 && numbers.Chance(15)) {
      continue;
    }
    if (breaks) {
      add(from, from + length / 2 - 95, false);
    }
    add(breaks ? from + length / 2 : from, from + length, true);
  }
  return list;
}

ZRGS_SESSION AnyCalendar(Numbers& numbers) {
  const int kind = numbers.Below(4);
  return kind < 2 ? MakeCalendar(numbers) : kind == 2 ? Overnights(numbers) : Weekdays(30, 10);
}

// Trades that mostly go on in time, by steps from nothing to days, now and then back, or nowhere.
std::vector<CDPTDblDblTick> AnyTrades(Numbers& numbers, int count) {
  std::vector<CDPTDblDblTick> trades;
  int at = numbers.Below(86400);
  int day = 45290 + numbers.Below(60);
  const int longest = std::vector{3, 60, 3000, 90000}[static_cast<std::size_t>(numbers.Below(4))];
  for (int i = 0; i < count; ++i) {
    at += numbers.Below(longest);
    if (numbers.Chance(2)) {
      at -= numbers.Below(2000);
    }
    for (; at >= 86400; at -= 86400) {
      ++day;
    }
    for (; at < 0; at += 86400) {
      --day;
    }
    CZRDateTime moment(CZRDate(static_cast<unsigned short>(day)),
                       CZRTime(static_cast<unsigned>(at)));
    if (numbers.Chance(1)) {
      moment =
          numbers.Chance(50) ? CZRDateTime() : CZRDateTime(moment.GetDate(), CZRTime(86400U + 7U));
    }
    float price = static_cast<float>(numbers.Below(1000)) / 8.0F;
    if (numbers.Chance(5)) {
      price = numbers.Chance(50) ? 0.0F : -0.0F;
    } else if (numbers.Chance(2)) {
      price = std::numeric_limits<float>::quiet_NaN();
    }
    long word = numbers.Below(7) - 3;
    if (numbers.Chance(1)) {
      word = numbers.Chance(50) ? std::numeric_limits<std::int32_t>::min()
                                : std::numeric_limits<std::int32_t>::max();
    }
    trades.push_back(Trade(moment, price, numbers.Below(100000), word));
  }
  return trades;
}

template <class Bar>
class BarBuilders : public testing::Test {};
using AllBars = testing::Types<CDPCDblC, CDPCDblDblC, CDPCDblDblH, CDPCDblDblL, CDPCDblOHLCUDUT,
                               CDPCDblOHLCUDUTO, CDPCDblOHLCUDUTOld, CDPCDblOHLCUDUTOOld>;
TYPED_TEST_SUITE(BarBuilders, AllBars);

const ZRGS_RESOLUTION kResolutions[] = {
    {kTicks, 1},    {kSeconds, 1},    {kSeconds, 17}, {kMinutes, 1}, {kMinutes, 5},
    {kMinutes, 60}, {kMinutes, 1000}, {kDays, 1},     {kDays, 2},    {kWeeks, 1},
    {kMonths, 1},   {kYears, 1},      {kSeconds, 0}};

TYPED_TEST(BarBuilders, GiveTheBarsOfTheLoop) {
  Numbers numbers(7);
  std::size_t finished = 0;
  for (int round = 0; round < 130; ++round) {
    const ZRGS_SESSION list = AnyCalendar(numbers);
    const CResoln resolution(
        kResolutions[static_cast<std::size_t>(round) % std::size(kResolutions)]);
    const std::vector<CDPTDblDblTick> trades = AnyTrades(numbers, 400);

    const CZRGSSession calendar(list);
    TypeParam bar;
    Loop loop(bar, resolution, calendar);
    const CDPDataPt* previous = nullptr;
    std::vector<Add::AddDataPtReturn> results;
    for (const CDPTDblDblTick& trade : trades) {
      results.push_back(loop.Offer(trade, previous));
      previous = &trade;
    }
    const std::string open = BytesOf(bar);
    loop.Finish();
    finished += loop.bars.size();

    // One by one, from an object that changes under the builder.
    {
      const CZRGSSession own(list);
      TypeParam built;
      Kept kept;
      pxd::BarBuilder builder(built, resolution, own, kept);
      CDPTDblDblTick trade;
      for (std::size_t i = 0; i < trades.size(); ++i) {
        trade = trades[i];
        ASSERT_EQ(builder.Add(trade), results[i]) << "round " << round << ", trade " << i;
      }
      EXPECT_EQ(BytesOf(built), open);
      EXPECT_EQ(builder.Trend(), loop.trend);
      builder.Finish();
      EXPECT_EQ(kept.bars, loop.bars) << "round " << round;
      EXPECT_FALSE(builder.IsBuilding());
    }
    // As a series, in two pieces.
    {
      const CZRGSSession own(list);
      TypeParam built;
      Kept kept;
      pxd::BarBuilder builder(built, resolution, own, kept);
      const std::span<const CDPTDblDblTick> series(trades);
      const auto cut = static_cast<std::size_t>(numbers.Below(static_cast<int>(trades.size())));
      const std::size_t taken = builder.Add(series.first(cut)) + builder.Add(series.subspan(cut));
      EXPECT_EQ(BytesOf(built), open);
      EXPECT_EQ(builder.Trend(), loop.trend);
      builder.Finish();
      EXPECT_EQ(kept.bars, loop.bars) << "round " << round;
      const auto isTaken = [](Add::AddDataPtReturn result) {
        return result == Add::AddIncluded || result == Add::AddStartedNewBar;
      };
      EXPECT_EQ(taken,
                static_cast<std::size_t>(std::count_if(results.begin(), results.end(), isTaken)));
    }
  }
  EXPECT_GT(finished, 1000U);
}

// Bars of bars: minutes into days, by the step back of a second.
TYPED_TEST(BarBuilders, TakeBarsAsTheLoopDoes) {
  Numbers numbers(11);
  for (int round = 0; round < 60; ++round) {
    const ZRGS_SESSION list = AnyCalendar(numbers);
    const CResoln resolution(
        kResolutions[static_cast<std::size_t>(round) % std::size(kResolutions)]);
    std::vector<TypeParam> points;
    for (const CDPTDblDblTick& trade : AnyTrades(numbers, 200)) {
      points.push_back(Counting<TypeParam>(trade.GetDPST().GetDateTime(),
                                           static_cast<float>(numbers.Below(50)) - 5.0F));
    }
    const CZRGSSession calendar(list);
    TypeParam bar;
    Loop loop(bar, resolution, calendar);
    const CZRGSSession own(list);
    TypeParam built;
    Kept kept;
    pxd::BarBuilder builder(built, resolution, own, kept);
    const CDPDataPt* previous = nullptr;
    for (std::size_t i = 0; i < points.size(); ++i) {
      ASSERT_EQ(builder.Add(points[i]), loop.Offer(points[i], previous))
          << "round " << round << ", point " << i;
      previous = &points[i];
    }
    EXPECT_EQ(BytesOf(built), BytesOf(bar));
    EXPECT_EQ(kept.bars, loop.bars);
  }
}

// A calendar that was edited behind its first look-up answers from what it kept, in part. The
// builder then asks for every point, as the loop does.
TEST(BarBuilder, GivesTheBarsOfTheLoopWithAnEditedCalendar) {
  Numbers numbers(13);
  for (int round = 0; round < 60; ++round) {
    const auto makeEdited = [](const ZRGS_SESSION& first, const ZRGS_SESSION& second) {
      auto calendar = std::make_unique<CZRGSSession>(first);
      calendar->FilterDribbleInSession();
      CZRDateTime open;
      CZRDateTime close;
      auto status = CZRGSSession::StatusClosed;
      unsigned long index = 0;
      calendar->GetSessionInfo(CZRGSSession::ResetNone, session_test::Day(4, 12, 0), open, close,
                               status, index);
      *calendar->GetSessionPtr() = second;
      return calendar;
    };
    const ZRGS_SESSION first = MakeCalendar(numbers);
    const ZRGS_SESSION second = MakeCalendar(numbers);
    const CResoln resolution(
        kResolutions[static_cast<std::size_t>(round) % std::size(kResolutions)]);
    const std::vector<CDPTDblDblTick> trades = AnyTrades(numbers, 200);
    const auto calendar = makeEdited(first, second);
    CDPCDblOHLCUDUT bar;
    Loop loop(bar, resolution, *calendar);
    for (const CDPTDblDblTick& trade : trades) {
      loop.Offer(trade, nullptr);
    }
    const auto own = makeEdited(first, second);
    CDPCDblOHLCUDUT built;
    Kept kept;
    pxd::BarBuilder builder(built, resolution, *own, kept);
    builder.Add(trades);
    EXPECT_EQ(BytesOf(built), BytesOf(bar));
    EXPECT_EQ(kept.bars, loop.bars);
  }
}

// Behind the first trade of a bar nothing is looked at but its place in time, its price, volume and
// word: a whole day of trades, with windows, in one go.
TEST(BarBuilder, MergesADayAtOnce) {
  const CZRGSSession calendar(Weekdays(30, 10));
  CDPCDblOHLCUDUTO bar;
  Kept kept;
  pxd::BarBuilder builder(bar, Of(1, kDays), calendar, kept);
  std::vector<CDPTDblDblTick> trades;
  trades.push_back(Trade(session_test::Day(1, 9, 30), 0.0F, 1, 1));
  trades.push_back(Trade(session_test::Day(1, 10, 0), 0.0F, 2, -2));
  trades.push_back(Trade(session_test::Day(1, 11, 0), 7.5F, 4, 3));
  trades.push_back(Trade(session_test::Day(1, 12, 0), 9.5F, 8, 0));
  trades.push_back(Trade(session_test::Day(1, 15, 59, 59), 6.5F, 16, 5));
  trades.push_back(Trade(session_test::Day(1, 16, 9, 59), 8.5F, 32, -1));  // late
  trades.push_back(Trade(session_test::Day(1, 8, 0), 99.5F, 64, 1));       // in no session
  EXPECT_EQ(builder.Add(std::span<const CDPTDblDblTick>(trades).first(6)), 6U);
  EXPECT_EQ(builder.Trend(), CDPCDataPtCalculated::TrendDown);
  EXPECT_EQ(bar.GetZRDateTime(), session_test::Day(1, 16, 0));
  // The high and the low are those of the first trade, and the open is the first that isn't 0, both
  // as is meant in this class; the running daily record has the true ones.
  EXPECT_EQ(Floats(bar, 13), (std::vector<float>{7.5F, 0.0F, 0.0F, 8.5F, 21.0F, 42.0F, 0.0F, 63.0F,
                                                 9.0F, 3.0F, 0.0F, 12.0F, 0.0F}));
  std::vector<float> running;
  for (unsigned col = 0; col < 12; ++col) {
    CDPValue value;
    bar.GetDPValueForColEx(col, value, kWeeks);
    running.push_back(value.GetFloat());
  }
  EXPECT_EQ(running, (std::vector<float>{7.5F, 9.5F, 0.0F, 8.5F, 21.0F, 42.0F, 0.0F, 63.0F, 9.0F,
                                         3.0F, 0.0F, 12.0F}));
  EXPECT_EQ(builder.Add(std::span<const CDPTDblDblTick>(trades).subspan(6)), 0U);
  EXPECT_EQ(kept.bars.size(), 1U);
}

// A sum that no trade of the run grows keeps its very bits, and the running record has an open of
// its own.
TEST(BarBuilder, LeavesWhatARunDoesNotTouch) {
  const CZRGSSession calendar(Weekdays(0, 0));
  CDPCDblOHLCUDUTO bar;
  Kept kept;
  pxd::BarBuilder builder(bar, Of(1, kDays), calendar, kept);
  builder.Add(Trade(session_test::Day(1, 10, 0), 5.0F, 1, 1));
  CDPSTDblOHLCUDUTO record = bar.GetDPST();
  record.m_DownVol = -0.0F;
  record.m_DownTicks = std::bit_cast<float>(0x7FC00001U);
  bar.SetDPST(record);
  bar.m_PrevDailyRec.m_Open = 0.0F;
  bar.m_PrevDailyRec.m_UnchVol = 3.0F;
  const std::vector<CDPTDblDblTick> trades = {Trade(session_test::Day(1, 10, 1), 6.0F, 2, 1),
                                              Trade(session_test::Day(1, 10, 2), 4.0F, 2, 1)};
  EXPECT_EQ(builder.Add(trades), 2U);
  EXPECT_EQ(std::bit_cast<std::uint32_t>(float{bar.GetDPST().m_DownVol}), 0x80000000U);
  EXPECT_EQ(std::bit_cast<std::uint32_t>(float{bar.GetDPST().m_DownTicks}), 0x7FC00001U);
  EXPECT_EQ(float{bar.GetDPST().m_Open}, 5.0F);
  EXPECT_EQ(float{bar.m_PrevDailyRec.m_Open}, 6.0F);
  EXPECT_EQ(float{bar.m_PrevDailyRec.m_UnchVol}, 3.0F);
}

// A class that derives from a bar may merge in its own way, with or without a record of its own.
TEST(BarBuilder, AsksAClassOfTheCallersForEveryTrade) {
  struct Halving : CDPCDblOHLCUDUT {
    void IncludeDataPtData(const CDPDataPt* point, TrendType& trend,
                           const CDPDataPt* previous) override {
      CDPTDblDblTick half = *static_cast<const CDPTDblDblTick*>(point);
      half.SetValues(half.GetDPST().m_Price / 2.0F, 1, 1);
      CDPCDblOHLCUDUT::IncludeDataPtData(&half, trend, previous);
    }
    AddDataPtReturn AddDataPt(const CDPDataPt* point, const CResoln& resolution,
                              const CZRGSSession& session, int startNew, TrendType& trend,
                              const CDPDataPt* previous) override {
      before.push_back(previous);
      return CDPCDblOHLCUDUT::AddDataPt(point, resolution, session, startNew, trend, previous);
    }
    std::vector<const CDPDataPt*> before;
  };
  const CZRGSSession calendar(Weekdays(0, 0));
  Halving bar;
  Kept kept;
  pxd::BarBuilder builder(bar, Of(1, kDays), calendar, kept);
  const std::vector<CDPTDblDblTick> trades(3, Trade(session_test::Day(1, 10, 0), 8.0F));
  EXPECT_EQ(builder.Add(trades), 3U);
  EXPECT_EQ(bar.before, (std::vector<const CDPDataPt*>{nullptr, &trades[0], &trades[1]}));
  EXPECT_EQ(Float(bar, 0), 4.0F);
  EXPECT_EQ(Float(bar, 3), 4.0F);
}

TEST(BarBuilder, ALateTradeGoesOnlyIntoTheBarThatIsBeingBuilt) {
  const CZRGSSession calendar(Weekdays(0, 10));
  CDPCDblOHLCUDUT bar;
  Kept kept;
  pxd::BarBuilder builder(bar, Of(5, kMinutes), calendar, kept);
  const auto at = [](unsigned hour, unsigned minute) { return session_test::Day(1, hour, minute); };

  EXPECT_FALSE(builder.AddLate(Trade(at(10, 1), 7.0F))) << "there is no bar";
  EXPECT_FALSE(builder.IsBuilding());
  EXPECT_EQ(builder.Add(Trade(at(10, 6), 7.0F)), Add::AddIncluded);
  EXPECT_TRUE(builder.AddLate(Trade(at(10, 5), 9.0F)));
  EXPECT_FALSE(builder.AddLate(Trade(at(10, 4), 11.0F))) << "that bar is over";
  EXPECT_FALSE(builder.AddLate(Trade(at(8, 0), 11.0F))) << "in no session";
  EXPECT_TRUE(kept.bars.empty());
  builder.Finish();
  ASSERT_EQ(kept.bars.size(), 1U);
  builder.Finish();
  EXPECT_EQ(kept.bars.size(), 1U) << "a bar is handed on once";
}

TEST(BarBuilder, TellsByTheClockWhenABarIsOver) {
  const CZRGSSession calendar(Weekdays(0, 0));
  CDPCDblOHLCUDUT bar;
  Kept kept;
  pxd::BarBuilder builder(bar, Of(5, kMinutes), calendar, kept);
  EXPECT_FALSE(builder.IsOver(session_test::Day(1, 10, 0))) << "there is no bar";
  builder.Add(Trade(session_test::Day(1, 10, 1), 7.0F));
  EXPECT_FALSE(builder.IsOver(session_test::Day(1, 10, 4)));
  EXPECT_TRUE(builder.IsOver(session_test::Day(1, 10, 5)));
  EXPECT_TRUE(builder.IsOver(session_test::Day(1, 17, 0))) << "no session";
}

TEST(BarBuilder, WhatTheSinkThrowsComesThrough) {
  class Throwing final : public pxd::BarSink {
    void Take(CDPCDataPtCalculated&) override { throw 7; }
  } sink;
  const CZRGSSession calendar(Weekdays(0, 0));
  CDPCDblOHLCUDUT bar;
  pxd::BarBuilder builder(bar, Of(1, kMinutes), calendar, sink);
  builder.Add(Trade(session_test::Day(1, 10, 1), 7.0F));
  const std::string before = BytesOf(bar);
  EXPECT_THROW(builder.Add(Trade(session_test::Day(1, 10, 3), 9.0F)), int);
  EXPECT_EQ(BytesOf(bar), before) << "the bar stands as it was";
}

}  // namespace
