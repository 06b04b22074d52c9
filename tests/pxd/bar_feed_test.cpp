// From trades to finished points: which bar a trade goes into, what becomes of late trades, and
// that nothing is allocated for a trade.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include <pxdutil/datapoints/ohlc_bars.h>
#include <tools/pxd/bar_feed.h>
#include <tools/pxd/catalogue.h>
#include <tools/pxd/moment.h>
#include <tools/pxd/resolution_words.h>
#include <tools/pxd/series_file.h>
#include <tools/pxd/session_words.h>
#include <tools/pxd/trade_ticks.h>
#include "tests/support/allocation_counter.h"

using namespace pxd::tool;

namespace {

ZRGS_SESSION Week(const std::string& text) {
  ZRGS_SESSION week;
  std::string error;
  EXPECT_TRUE(ReadSessions(text, week, error)) << error;
  return week;
}

CFieldResoln Pair(const std::string& text, std::uint16_t field = 201) {
  CResoln resolution;
  std::string error;
  EXPECT_TRUE(ReadResolution(text, resolution, error)) << error;
  CFieldResoln pair;
  pair.SetField(CField(field));
  pair.SetResoln(resolution);
  return pair;
}

// Keeps each point as its date-time and its columns' texts.
class Lines final : public PointSink {
 public:
  void Take(CDPDataPt& point) override {
    std::string line = MomentText(point.GetZRDateTime());
    for (unsigned int column = 0; column < point.GetNumCols(); ++column) {
      line += ' ' + point.GetStringValForCol(column).Str();
    }
    lines.push_back(line);
  }
  std::vector<std::string> lines;
};

struct Result {
  std::vector<std::string> lines;
  FeedCounts counts;
};

// Trades given as "date time", price and volume.
struct Row {
  const char* when;
  double price;
  double volume;
};

Result Feed(const std::string& resolution, const std::string& sessions,
            const std::vector<Row>& rows) {
  const BuiltInCatalogue catalogue;
  const QuotePool pool;
  Lines lines;
  const auto feed = MakeBarFeed(Pair(resolution), Week(sessions), lines);
  TradeTicks ticks;
  for (const Row& row : rows) {
    Trade trade;
    trade.when = ReadDateTime(row.when);
    trade.price = row.price;
    trade.volume = row.volume;
    feed->Offer(ticks.TickOf(trade));
  }
  feed->Finish();
  return {lines.lines, feed->Counts()};
}

constexpr const char* kStocks = "Mon-Fri 09:30-16:00 dribble 10 reset 30";

TEST(TradeTicks, AreWhatAQuoteOfTheTradeFills) {
  const QuotePool pool;
  TradeTicks ticks;
  for (const double price : {101.25, -37.63, 0.1, 3.4e38, 1e-40, 16777217.0}) {
    const Trade trade{CZRDateTime(CZRDate(45355), CZRTime(9, 31, 7)), price, 0.3, 2};
    CZRGSQuote quote;
    quote.AddFieldDate(4, 280, trade.when.GetDate().GetJulianDate());
    quote.AddFieldTime(4, 281, trade.when.GetTime().GetTime());
    quote.AddFieldDouble(4, 235, trade.price);
    quote.AddFieldDouble(4, 249, trade.volume);
    CDPTDblDblTick filled;
    ASSERT_EQ(filled.SetFromQuote(quote), 1);
    CDPTDblDblTick tick = ticks.TickOf(trade);
    EXPECT_EQ(tick.IsEqualTo(&filled), 1) << price;
    EXPECT_EQ(tick.GetZRDateTime(), filled.GetZRDateTime());
  }
}

TEST(TradeTicks, DirectionFollowsThePriceBefore) {
  const QuotePool pool;
  TradeTicks ticks;
  const struct {
    double price;
    const char* direction;
  } kRows[] = {{10, "1"}, {10, "1"}, {9.99, "-1"}, {9.99, "-1"}, {10, "1"}, {10, "1"}, {9, "-1"}};
  for (const auto& row : kRows) {
    Trade trade;
    trade.when = CZRDateTime(CZRDate(3, 4, 2024), CZRTime(10, 0, 0));
    trade.price = row.price;
    trade.volume = 3;
    CDPTDblDblTick tick = ticks.TickOf(trade);
    EXPECT_EQ(tick.GetStringValForCol(2).Str(), row.direction) << row.price;
    EXPECT_EQ(tick.GetZRDateTime(), trade.when);
    EXPECT_EQ(tick.GetDoubleValForCol(0), static_cast<double>(static_cast<float>(row.price)));
    EXPECT_EQ(tick.GetDoubleValForCol(1), 3.0);
  }
}

TEST(BarFeed, MinutesAreCountedFromTheOpenAndCutAtTheClose) {
  const Result result = Feed("7m", kStocks,
                             {{"2024-03-04 09:29:59", 1, 1},   // ahead of the open
                              {"2024-03-04 09:30:00", 10, 5},  // up
                              {"2024-03-04 09:36:59", 9, 2},   // down
                              {"2024-03-04 09:37:00", 12, 1},  // the next bar, up
                              {"2024-03-04 15:59:59", 11, 4},  // down
                              {"2024-03-04 16:00:00", 13, 6},  // dribble, up
                              {"2024-03-04 16:09:59", 13, 7},  // dribble, still up
                              {"2024-03-04 16:10:00", 14, 1},  // reset window
                              {"2024-03-04 16:30:00", 14, 1},  // closed
                              {"2024-03-05 09:30:00", 8, 1}});
  // 390 minutes are 55 bars of 7 and one of 5.
  EXPECT_EQ(result.lines,
            (std::vector<std::string>{"2024-03-04 09:37:00 10 10 9 9 5 2 0 7 1 1 0 2",
                                      "2024-03-04 09:44:00 12 12 12 12 1 0 0 1 1 0 0 1",
                                      "2024-03-04 16:00:00 11 13 11 13 13 4 0 17 2 1 0 3",
                                      "2024-03-05 09:37:00 8 8 8 8 0 1 0 1 0 1 0 1"}));
  EXPECT_EQ(result.counts.taken, 7U);
  EXPECT_EQ(result.counts.outside, 3U);
  EXPECT_EQ(result.counts.late, 0U);
  EXPECT_EQ(result.counts.points, 4U);
}

TEST(BarFeed, SecondsAreBuiltAsMinutesAre) {
  const Result result =
      Feed("30s", kStocks, {{"2024-03-04 09:30:29", 10, 5}, {"2024-03-04 09:30:30", 11, 2}});
  EXPECT_EQ(result.lines,
            (std::vector<std::string>{"2024-03-04 09:30:30 10 10 10 10 5 0 0 5 1 0 0 1",
                                      "2024-03-04 09:31:00 11 11 11 11 2 0 0 2 1 0 0 1"}));
}

TEST(BarFeed, DaysTakeTheHighAndLowOfTheirMinutes) {
  const Result result = Feed("1d", kStocks,
                             {{"2024-03-04 09:30:00", 10, 5},
                              {"2024-03-04 09:30:01", 12, 1},
                              {"2024-03-04 12:00:00", 7, 2},
                              {"2024-03-04 16:05:00", 9, 3},  // a late print is the day's too
                              {"2024-03-04 17:00:00", 99, 9},
                              {"2024-03-05 10:00:00", 8, 1}});
  EXPECT_EQ(result.lines,
            (std::vector<std::string>{"2024-03-04 16:00:00 10 12 7 9 9 2 0 11 3 1 0 4 0",
                                      "2024-03-05 16:00:00 8 8 8 8 0 1 0 1 0 1 0 1 0"}));
  EXPECT_EQ(result.counts.taken, 5U);
  EXPECT_EQ(result.counts.outside, 1U);
  EXPECT_EQ(result.counts.points, 2U);
}

TEST(BarFeed, AnOvernightDayRunsOverMidnight) {
  const Result result = Feed("1d", "Sun-Thu 18:00-17:00",
                             {{"2024-03-03 18:00:00", 10, 1},
                              {"2024-03-04 03:00:00", 12, 1},
                              {"2024-03-04 16:59:59", 11, 1},
                              {"2024-03-04 17:30:00", 50, 1},  // outside, yet the last price
                              {"2024-03-04 18:00:00", 13, 1}});
  EXPECT_EQ(result.lines,
            (std::vector<std::string>{"2024-03-04 17:00:00 10 12 10 11 2 1 0 3 2 1 0 3 0",
                                      "2024-03-05 17:00:00 13 13 13 13 0 1 0 1 0 1 0 1 0"}));
}

TEST(BarFeed, ALunchBreakLeavesOneDay) {
  const char* const tokyo = "Mon-Fri 09:00-11:30 part; Mon-Fri 12:30-15:00";
  const std::vector<Row> rows = {{"2024-03-04 11:29:00", 10, 1},
                                 {"2024-03-04 12:00:00", 99, 1},  // in the break
                                 {"2024-03-04 12:30:00", 11, 1}};
  EXPECT_EQ(Feed("1d", tokyo, rows).lines,
            (std::vector<std::string>{"2024-03-04 15:00:00 10 11 10 11 1 1 0 2 1 1 0 2 0"}));
  EXPECT_EQ(Feed("1d", tokyo, rows).counts.outside, 1U);
}

TEST(BarFeed, WeeksAndMonthsCloseWithTheirLastSession) {
  const std::vector<Row> rows = {{"2024-03-04 10:00:00", 10, 1},  // Monday
                                 {"2024-03-08 10:00:00", 12, 1},  // Friday
                                 {"2024-03-11 10:00:00", 9, 1},   // the next Monday
                                 {"2024-04-01 10:00:00", 8, 1}};  // Monday of the next month
  EXPECT_EQ(Feed("1w", kStocks, rows).lines,
            (std::vector<std::string>{"2024-03-08 16:00:00 10 12 10 12 2 0 0 2 2 0 0 2 0",
                                      "2024-03-15 16:00:00 9 9 9 9 0 1 0 1 0 1 0 1 0",
                                      "2024-04-05 16:00:00 8 8 8 8 0 1 0 1 0 1 0 1 0"}));
  EXPECT_EQ(Feed("1mo", kStocks, rows).lines,
            (std::vector<std::string>{"2024-03-29 16:00:00 10 12 9 9 2 1 0 3 2 1 0 3 0",
                                      "2024-04-30 16:00:00 8 8 8 8 0 1 0 1 0 1 0 1 0"}));
}

TEST(BarFeed, TradesInASessionWithoutADayAreOutsideForDaysAlone) {
  // Nothing ends a day behind the evening session.
  const char* const week = "2:2010,2400,0,0,1;2460,2520,0,0,0";
  const std::vector<Row> rows = {{"2024-03-04 10:00:00", 10, 1},
                                 {"2024-03-04 17:30:00", 11, 1},
                                 {"2024-03-04 17:30:01", 12, 1}};
  EXPECT_EQ(Feed("1m", week, rows).counts.taken, 3U);
  const Result days = Feed("1d", week, rows);
  EXPECT_EQ(days.lines,
            (std::vector<std::string>{"2024-03-04 16:00:00 10 10 10 10 1 0 0 1 1 0 0 1 0"}));
  EXPECT_EQ(days.counts.taken, 1U);
  EXPECT_EQ(days.counts.outside, 2U);
}

TEST(BarFeed, OneTickIsTheTradesInSessionsThemselves) {
  const Result result = Feed("1t", kStocks,
                             {{"2024-03-04 09:29:59", 1, 1},
                              {"2024-03-04 09:30:00", 10, 5},
                              {"2024-03-04 09:30:00", 9, 5},
                              {"2024-03-04 16:05:00", 11, 4},
                              {"2024-03-04 16:15:00", 11, 4}});
  EXPECT_EQ(result.lines, (std::vector<std::string>{"2024-03-04 09:30:00 10 5 1 1",
                                                    "2024-03-04 09:30:00 9 5 -1 -1",
                                                    "2024-03-04 16:05:00 11 4 1 1"}));
  EXPECT_EQ(result.counts.outside, 2U);
}

TEST(BarFeed, TickBarsCountTakenTradesAndEndWithTheSession) {
  const Result result = Feed("2t", kStocks,
                             {{"2024-03-04 09:00:00", 50, 1},  // outside, so not counted
                              {"2024-03-04 09:30:00", 10, 5},
                              {"2024-03-04 09:40:00", 11, 1},
                              {"2024-03-04 15:00:00", 9, 2},
                              {"2024-03-05 09:30:00", 8, 1},
                              {"2024-03-05 09:30:01", 7, 1},
                              {"2024-03-05 09:30:02", 6, 1}});
  EXPECT_EQ(result.lines,
            (std::vector<std::string>{"2024-03-04 09:40:00 10 11 10 11 1 5 0 6 1 1 0 2",
                                      "2024-03-04 15:00:00 9 9 9 9 0 2 0 2 0 1 0 1",
                                      "2024-03-05 09:30:01 8 8 7 7 0 2 0 2 0 2 0 2",
                                      "2024-03-05 09:30:02 6 6 6 6 0 1 0 1 0 1 0 1"}));
}

TEST(BarFeed, ALateTradeIsTakenIntoTheBarBeingBuiltAndElseLeftOut) {
  const std::vector<Row> rows = {
      {"2024-03-04 09:30:10", 10, 1}, {"2024-03-04 09:31:30", 11, 1},
      {"2024-03-04 09:31:05", 14, 1},   // late, the same minute
      {"2024-03-04 09:30:50", 99, 1},   // late, a minute already gone
      {"2024-03-04 09:00:00", 99, 1},   // late and outside
      {"2024-03-04 09:31:30", 12, 1}};  // not late: not before the latest
  const Result minutes = Feed("1m", kStocks, rows);
  EXPECT_EQ(minutes.lines,
            (std::vector<std::string>{"2024-03-04 09:31:00 10 10 10 10 1 0 0 1 1 0 0 1",
                                      "2024-03-04 09:32:00 11 14 11 12 2 1 0 3 2 1 0 3"}));
  EXPECT_EQ(minutes.counts.late, 3U);
  EXPECT_EQ(minutes.counts.leftOut, 2U);
  EXPECT_EQ(minutes.counts.taken, 4U);
  EXPECT_EQ(minutes.counts.outside, 0U);
  const Result ticks = Feed("1t", kStocks, rows);
  EXPECT_EQ(ticks.lines.size(), 3U);
  EXPECT_EQ(ticks.counts.leftOut, 3U);
}

TEST(BarFeed, ALateTradeDoesntStartABarBehindAnEmptyOne) {
  // The trade outside leaves the bar empty; the late one would start a bar that was handed on.
  const Result result = Feed("1m", kStocks,
                             {{"2024-03-04 15:59:30", 10, 1},
                              {"2024-03-04 17:00:00", 11, 1},
                              {"2024-03-04 15:59:40", 12, 1}});
  EXPECT_EQ(result.lines,
            (std::vector<std::string>{"2024-03-04 16:00:00 10 10 10 10 1 0 0 1 1 0 0 1"}));
  EXPECT_EQ(result.counts.leftOut, 1U);
}

TEST(BarFeed, EveryTradeIsCountedOnce) {
  std::vector<Row> rows;
  for (const char* when : {"2024-03-04 09:30:00", "2024-03-04 09:29:00", "2024-03-04 16:15:00",
                           "2024-03-05 12:00:00", "2024-03-05 11:00:00", "2024-03-09 12:00:00"}) {
    rows.push_back({when, 10, 1});
  }
  for (const char* resolution : {"1t", "3t", "10s", "1m", "1d", "1w", "1mo"}) {
    const FeedCounts counts = Feed(resolution, kStocks, rows).counts;
    EXPECT_EQ(counts.taken + counts.outside + counts.leftOut, rows.size()) << resolution;
  }
}

TEST(BarFeed, HowManyTicksAreOfferedAtATimeMakesNoDifference) {
  const BuiltInCatalogue catalogue;
  // Two days and the night between, in steps of up to five minutes, some of them back.
  std::vector<CDPTDblDblTick> ticks(2000);
  TradeTicks maker;
  std::uint32_t state = 7;
  const auto below = [&state](std::uint32_t limit) {
    state = state * 1664525 + 1013904223;
    return (state >> 16) % limit;
  };
  CZRDateTime when(CZRDate(3, 4, 2024), CZRTime(9, 0, 0));
  std::size_t firstLate = ticks.size();
  CZRDateTime latest = when;
  for (std::size_t i = 0; i < ticks.size(); ++i) {
    when = Shifted(when, below(9) == 0 ? -static_cast<int>(below(90))
                                       : static_cast<int>(below(i < 1000 ? 300 : 3)));
    if (when < latest && firstLate == ticks.size()) {
      firstLate = i;
    }
    latest = std::max(latest, when);
    maker.Fill(ticks[i], {when, 100.0 + below(50), 1.0 + below(9), 0});
  }
  ASSERT_LT(firstLate, ticks.size());

  for (const char* resolution : {"1t", "7t", "10s", "1m", "1d"}) {
    std::vector<std::string> lines;
    FeedCounts counts;
    for (const std::size_t atATime :
         {std::size_t{1}, std::size_t{2}, std::size_t{17}, std::size_t{256}, ticks.size()}) {
      Lines built;
      const auto feed = MakeBarFeed(Pair(resolution), Week(kStocks), built);
      std::size_t late = ticks.size();
      for (std::size_t at = 0; at < ticks.size(); at += atATime) {
        const auto some = std::span(ticks).subspan(at, std::min(atATime, ticks.size() - at));
        const std::size_t found = feed->OfferAll(some);
        late = found == some.size() ? late : std::min(late, at + found);
      }
      feed->Finish();
      EXPECT_EQ(late, firstLate) << resolution << " by " << atATime;
      if (atATime == 1) {
        lines = built.lines;
        counts = feed->Counts();
        EXPECT_GT(lines.size(), 1U);
        EXPECT_GT(counts.outside, 0U);
        EXPECT_GT(counts.leftOut, 0U);
      }
      EXPECT_EQ(built.lines, lines) << resolution << " by " << atATime;
      EXPECT_EQ(feed->Counts(), counts) << resolution << " by " << atATime;
    }
  }
}

TEST(BarFeed, SomeResolutionsCantBeBuilt) {
  const struct {
    const char* resolution;
    const char* week;
    const char* error;
  } kRows[] = {
      {"1y", kStocks,
       "bars of years can't be built, since the calendar closes no year; expected months or "
       "shorter"},
      {"2d", kStocks,
       "bars of 2 Days can't be built: a bar closes with every day, week or month; expected 1d, 1w "
       "or 1mo"},
      {"3mo", kStocks,
       "bars of 3 Months can't be built: a bar closes with every day, week or month; expected 1d, "
       "1w or 1mo"},
      {"1d", "Mon 09:00-10:00 part",
       "no session ends a trading day, so that no day closes; expected a session that isn't marked "
       "part"},
  };
  const BuiltInCatalogue catalogue;
  for (const auto& row : kRows) {
    std::string error;
    EXPECT_FALSE(CanBuild(Pair(row.resolution), Week(row.week), error));
    EXPECT_EQ(error, row.error);
  }
  std::string error;
  for (const char* resolution : {"1t", "500t", "1s", "90m", "1d", "1w", "1mo"}) {
    EXPECT_TRUE(CanBuild(Pair(resolution), Week(kStocks), error)) << error;
  }
  EXPECT_TRUE(CanBuild(Pair("1m"), Week("Mon 09:00-10:00 part"), error));
}

TEST(BarFeed, OnlyRecordsAreBuiltFromTrades) {
  const BuiltInCatalogue catalogue;
  const struct {
    std::uint16_t field;
    const char* resolution;
    const char* name;
  } kRows[] = {
      {285, "1t", "Close 1 Tick"},                // a price
      {448, "1t", "ECN Aggregate Depth 1 Tick"},  // no history, but ticks of one value
      {485, "1d", "Option Chart Record 1 Day"},
      {521, "5m", "Conversion Chart Record 5 Minutes"},
  };
  for (const auto& row : kRows) {
    std::string error;
    EXPECT_FALSE(CanBuild(Pair(row.resolution, row.field), Week(kStocks), error));
    EXPECT_EQ(error, "\"" + std::string(row.name) +
                         "\" can't be built from trades; expected a record, such as \"Trade "
                         "Record\"");
  }
  for (const std::uint16_t field : std::initializer_list<std::uint16_t>{200, 201, 202, 436}) {
    std::string error;
    EXPECT_TRUE(CanBuild(Pair("1d", field), Week(kStocks), error)) << error;
  }
}

// What all the trades of one second of text take from the heap, read and built.
std::size_t AllocationsFor(const std::string& resolution, int trades) {
  std::string text = "date,time,price,volume\n";
  for (int i = 0; i < trades; ++i) {
    text += "2024-03-04,09:30:00." + std::to_string(i) + ",1" + std::to_string(i % 7) + ".25,100\n";
  }
  class Discard final : public PointSink {
    void Take(CDPDataPt&) override {}
  } discard;
  class Road final : public TradeSink {
   public:
    explicit Road(BarFeed& feed) : m_feed(feed) {}
    void Take(const Trade& trade) override { m_feed.Offer(m_ticks.TickOf(trade)); }

   private:
    BarFeed& m_feed;
    TradeTicks m_ticks;
  };
  const BuiltInCatalogue catalogue;
  const QuotePool pool;
  const auto feed = MakeBarFeed(Pair(resolution), Week(kStocks), discard);
  Road road(*feed);
  TradesCsv csv({}, road);
  const pxd::test::AllocationCounter counter;
  EXPECT_TRUE(csv.Feed(text) && csv.Finish());
  feed->Finish();
  return counter.Count();
}

TEST(BarFeed, ATradeTakesNoMemoryOnceWarm) {
  for (const char* resolution : {"1t", "5t", "1s", "1m", "1d", "1mo"}) {
    AllocationsFor(resolution, 100);  // what is made once in a process is made here
    const std::size_t few = AllocationsFor(resolution, 100);
    EXPECT_GT(few, 0U) << "the counter counts";
    EXPECT_EQ(AllocationsFor(resolution, 10000), few) << resolution;
  }
}

}  // namespace
