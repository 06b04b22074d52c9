// The library against what markets and publishers really did. Runs where the environment variable
// PXD_REAL_DATA names a folder of such data.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <pxdutil/datapoints/ohlc_bars.h>
#include <tools/pxd/bar_feed.h>
#include <tools/pxd/catalogue.h>
#include <tools/pxd/moment.h>
#include <tools/pxd/resolution_words.h>
#include <tools/pxd/session_words.h>
#include <tools/pxd/trade_ticks.h>
#include <tools/pxd/words.h>

using namespace pxd::tool;

namespace {

ZRGS_SESSION Week(const std::string& text) {
  ZRGS_SESSION week;
  std::string error;
  EXPECT_TRUE(ReadSessions(text, week, error)) << error;
  return week;
}

const CResoln kMinute(ZRGS_RESOLUTION{kUnitMinute, 1});
const CFieldResoln kMinutes(ZRGS_FIELD_RESOLUTION{201, {kUnitMinute, 1}});

class RealData : public testing::Test {
 protected:
  void SetUp() override {
    const char* folder = std::getenv("PXD_REAL_DATA");
    if (folder == nullptr || *folder == '\0') {
      GTEST_SKIP() << "PXD_REAL_DATA names no folder of real data";
    }
    m_folder = folder;
  }

  [[nodiscard]] std::string Path(const std::string& name) const { return m_folder + "/" + name; }

  // The rows of a file as columns by name.
  using Row = std::map<std::string, std::string>;
  [[nodiscard]] std::vector<Row> Rows(const std::string& name) const {
    std::ifstream file(Path(name));
    EXPECT_TRUE(file) << name;
    std::vector<Row> rows;
    std::vector<std::string> header;
    for (std::string line; std::getline(file, line);) {
      const auto parts = Split(line, ',');
      if (header.empty()) {
        header.assign(parts.begin(), parts.end());
        continue;
      }
      Row row;
      for (std::size_t i = 0; i < parts.size() && i < header.size(); ++i) {
        row[header[i]] = parts[i];
      }
      rows.push_back(row);
    }
    EXPECT_FALSE(rows.empty()) << name;
    return rows;
  }

 private:
  std::string m_folder;
};

using Bar = CDPSTDblOHLCUDUT;

class Bars final : public PointSink {
 public:
  void Take(CDPDataPt& point) override {
    all.push_back(dynamic_cast<CDPCDblOHLCUDUT&>(point).GetDPST());
  }
  std::vector<Bar> all;
};

struct Built {
  std::vector<Bar> bars;
  FeedCounts counts;
  double volume = 0.0;
};

Built Build(const std::string& path, const std::string& sessions, const TradeOptions& options) {
  class Road final : public TradeSink {
   public:
    explicit Road(BarFeed& feed) : m_feed(feed) {}
    void Take(const Trade& trade) override {
      m_feed.Offer(m_ticks.TickOf(trade));
      volume += trade.volume;
    }
    double volume = 0.0;

   private:
    BarFeed& m_feed;
    TradeTicks m_ticks;
  };
  const BuiltInCatalogue catalogue;
  const QuotePool pool;
  Bars bars;
  const auto feed = MakeBarFeed(kMinutes, Week(sessions), bars);
  Road road(*feed);
  TradesCsv csv(options, road);
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file) << path;
  std::ostringstream text;
  text << file.rdbuf();
  EXPECT_TRUE(csv.Feed(text.str()) && csv.Finish())
      << path << ':' << csv.ErrorLine() << csv.Error();
  feed->Finish();
  return {bars.all, feed->Counts(), road.volume};
}

// Publishers stamp a bar at its start, the library at its close.
CZRDateTime CloseOfMinute(const std::string& date, const std::string& time) {
  return Shifted(CZRDateTime(ReadDate(date), ReadTime(time)), 60);
}

// Whether the float shows as the published text, to its last digit.
void ExpectPublished(float value, const std::string& text, const std::string& where) {
  const std::size_t dot = text.find('.');
  const int digits = dot == std::string::npos ? 0 : static_cast<int>(text.size() - dot - 1);
  char shown[64];
  std::snprintf(shown, sizeof shown, "%.*f", digits, static_cast<double>(value));
  EXPECT_EQ(shown, text) << where;
}

TEST_F(RealData, QuotesOfEurUsdGiveThePublishersMinutes) {
  for (const char* day : {"20140504", "20140505"}) {
    const std::string date = ReadDate(day) == CZRDate() ? "" : DateText(ReadDate(day));
    const auto published = Rows("eurusd_" + std::string(day) + "_minute.csv");
    for (const std::string side : {"bid", "ask"}) {
      TradeOptions options;
      options.columns.price = side;
      options.columns.volume = "none";
      const Built built =
          Build(Path("eurusd_" + std::string(day) + "_quotes.csv"), "daily 00:00-24:00", options);
      ASSERT_EQ(built.bars.size(), published.size()) << day << ' ' << side;
      for (std::size_t i = 0; i < published.size(); ++i) {
        const auto& row = published[i];
        const Bar bar = built.bars[i];
        const std::string where = date + ' ' + row.at("bar_start") + ' ' + side;
        EXPECT_EQ(bar.GetDateTime(), CloseOfMinute(date, row.at("bar_start"))) << where;
        ExpectPublished(bar.m_Open, row.at(side + "_open"), where);
        ExpectPublished(bar.m_High, row.at(side + "_high"), where);
        ExpectPublished(bar.m_Low, row.at(side + "_low"), where);
        ExpectPublished(bar.m_Close, row.at(side + "_close"), where);
      }
    }
  }
}

TEST_F(RealData, SecondsOfBtcUsdGiveThePublishersMinutes) {
  const CZRGSSession calendar(Week("daily 00:00-24:00"));
  CDPCDblOHLCUDUT minute;
  std::vector<Bar> bars;
  for (const auto& row : Rows("btcusd_second.csv")) {
    // A bar of one second is stamped at its close too.
    CDPCDblOHLCUDUT second;
    const char* const columns[] = {"open",  "high",  "low",   "close",
                                   nullptr, nullptr, nullptr, "volume"};
    for (unsigned int column = 0; column < std::size(columns); ++column) {
      if (columns[column] != nullptr) {
        second.SetStringValForCol(column, row.at(columns[column]).c_str());
      }
    }
    const CZRDateTime start(ReadDate(row.at("date")), ReadTime(row.at("time")));
    second.SetZRDateTime(Shifted(start, 1));

    CDPCDataPtCalculated::TrendType trend = CDPCDataPtCalculated::TrendUp;
    auto result = minute.AddDataPt(&second, kMinute, calendar, 0, trend, nullptr);
    if (result == CDPCDataPtCalculated::AddBarComplete) {
      bars.push_back(minute.GetDPST());
      result = minute.AddDataPt(&second, kMinute, calendar, 1, trend, nullptr);
      ASSERT_EQ(result, CDPCDataPtCalculated::AddStartedNewBar);
    }
    ASSERT_NE(result, CDPCDataPtCalculated::AddOutsideSession);
  }
  bars.push_back(minute.GetDPST());

  const auto published = Rows("btcusd_minute.csv");
  ASSERT_EQ(bars.size(), published.size());
  for (std::size_t i = 0; i < published.size(); ++i) {
    const auto& row = published[i];
    const Bar bar = bars[i];
    const std::string where = row.at("date") + ' ' + row.at("bar_start");
    EXPECT_EQ(bar.GetDateTime(), CloseOfMinute(row.at("date"), row.at("bar_start"))) << where;
    ExpectPublished(bar.m_Open, row.at("open"), where);
    ExpectPublished(bar.m_High, row.at("high"), where);
    ExpectPublished(bar.m_Low, row.at("low"), where);
    ExpectPublished(bar.m_Close, row.at("close"), where);
    // Sixty volumes, each and each sum rounded to 24 bits.
    const double volume = std::atof(row.at("volume").c_str());
    EXPECT_NEAR(static_cast<double>(bar.m_TotVol), volume,
                volume * 60 * std::ldexp(1.0, -23) + 1e-9)
        << where;
  }
}

TEST_F(RealData, TradesOfEsGiveTheVendorsMinutes) {
  const Built built = Build(Path("es_20240701_trades.csv"), "daily 00:00-24:00", {});
  std::map<std::string, Row> published;
  for (const auto& row : Rows("es_20240701_minute.csv")) {
    published[MomentText(CloseOfMinute(row.at("date"), row.at("time_utc")))] = row;
  }
  ASSERT_EQ(built.bars.size(), 4U);
  for (const Bar& bar : built.bars) {
    const std::string where = MomentText(bar.GetDateTime());
    ASSERT_EQ(published.count(where), 1U) << where;
    const Row& row = published[where];
    ExpectPublished(bar.m_Open, row.at("open"), where);
    ExpectPublished(bar.m_High, row.at("high"), where);
    ExpectPublished(bar.m_Low, row.at("low"), where);
    ExpectPublished(bar.m_Close, row.at("close"), where);
    ExpectPublished(bar.m_TotVol, row.at("volume"), where);
  }
}

TEST_F(RealData, TheReopeningOfEsKeepsEveryTrade) {
  // 23:00 UTC is 17:00 in Chicago, where the trading day begins on the evening before.
  TradeOptions options;
  options.shift = -6 * 3600;
  const Built built = Build(Path("es_20231225_trades.csv"), "Sun-Thu 17:00-16:00", options);
  EXPECT_EQ(built.counts.taken, Rows("es_20231225_trades.csv").size());
  EXPECT_EQ(built.counts.outside, 0U);
  ASSERT_FALSE(built.bars.empty());
  EXPECT_EQ(MomentText(built.bars.front().GetDateTime()), "2023-12-25 17:01:00");
  double volume = 0.0;
  double ticks = 0.0;
  for (const Bar& bar : built.bars) {
    EXPECT_TRUE(bar.m_Low <= bar.m_Open && bar.m_Open <= bar.m_High);
    EXPECT_TRUE(bar.m_Low <= bar.m_Close && bar.m_Close <= bar.m_High);
    volume += static_cast<double>(bar.m_TotVol);
    ticks += static_cast<double>(bar.m_TotTicks);
  }
  EXPECT_EQ(volume, built.volume);
  EXPECT_EQ(ticks, static_cast<double>(built.counts.taken));
}

// ---- The true sessions of exchanges ----

struct Answer {
  CZRGSSession::Status status = CZRGSSession::StatusClosed;
  CZRDateTime open;
  CZRDateTime close;
};

Answer Ask(const CZRGSSession& calendar, CZRGSSession::ResetType period, const CZRDateTime& at) {
  Answer answer;
  unsigned long index = 0;
  calendar.GetSessionInfo(period, at, answer.open, answer.close, answer.status, index);
  return answer;
}

// One day of an exchange, on its own clock; null breaks where there is none.
struct TradingDay {
  CZRDateTime open;
  CZRDateTime close;
  CZRDateTime breakStart;
  CZRDateTime breakEnd;
};

void ExpectDay(const CZRGSSession& calendar, const TradingDay& day) {
  const std::string where = MomentText(day.open);
  const CZRDateTimeSpan second(0, 1);
  CZRDateTime before = day.open;
  before -= second;
  CZRDateTime last = day.close;
  last -= second;
  EXPECT_EQ(Ask(calendar, CZRGSSession::ResetDay, before).status, CZRGSSession::StatusClosed)
      << where;
  for (const CZRDateTime& moment : {day.open, last}) {
    const Answer answer = Ask(calendar, CZRGSSession::ResetDay, moment);
    EXPECT_EQ(answer.status, CZRGSSession::StatusOpen) << where;
    EXPECT_EQ(answer.open, day.open) << where;
    EXPECT_EQ(answer.close, day.close) << where;
  }
  EXPECT_EQ(Ask(calendar, CZRGSSession::ResetDay, day.close).status, CZRGSSession::StatusClosed)
      << where;
  const bool hasBreak = day.breakStart.IsNullDateTime() == 0;
  const Answer morning = Ask(calendar, CZRGSSession::ResetNone, day.open);
  EXPECT_EQ(morning.open, day.open) << where;
  EXPECT_EQ(morning.close, hasBreak ? day.breakStart : day.close) << where;
  if (hasBreak) {
    const Answer lunch = Ask(calendar, CZRGSSession::ResetDay, day.breakStart);
    EXPECT_EQ(lunch.status, CZRGSSession::StatusInPeriod) << where;
    EXPECT_EQ(lunch.close, day.close) << where;
    EXPECT_EQ(Ask(calendar, CZRGSSession::ResetNone, day.breakStart).status,
              CZRGSSession::StatusClosed)
        << where;
    const Answer afternoon = Ask(calendar, CZRGSSession::ResetNone, day.breakEnd);
    EXPECT_EQ(afternoon.open, day.breakEnd) << where;
    EXPECT_EQ(afternoon.close, day.close) << where;
  }
}

CZRDateTime Local(const std::string& utc, std::int32_t hours) {
  return utc.empty() ? CZRDateTime() : Shifted(ReadDateTime(utc), hours * 3600);
}

// From the second Sunday of March to the first of November clocks in New York are an hour ahead.
std::int32_t NewYorkHours(const CZRDate& day) {
  const auto sunday = [&day](unsigned month, unsigned first) {
    const CZRDate begin(month, first, day.GetYear());
    const auto weekday =
        static_cast<unsigned>(CZRDateTime(begin, CZRTime(0U)).GetDayOfWeek());  // 1 is Sunday
    return CZRDate(static_cast<unsigned short>(begin.GetJulianDate() + (8 - weekday) % 7));
  };
  return day >= sunday(3, 8) && day < sunday(11, 1) ? -4 : -5;
}

// The length in minutes of what trades on that day; a shorter one is an early close or a late open.
double Minutes(const CZRDateTime& from, const CZRDateTime& to) {
  return static_cast<double>(to - from) / 60.0;
}

TEST_F(RealData, NewYorksSessionsComeOutOfTheLookups) {
  const CZRGSSession calendar(Week("Mon-Fri 09:30-16:00"));
  std::size_t ordinary = 0;
  const auto rows = Rows("session_tables/xnys.csv");
  for (const auto& row : rows) {
    const std::int32_t hours = NewYorkHours(ReadDateTime(row.at("open")).GetDate());
    const TradingDay day = {Local(row.at("open"), hours), Local(row.at("close"), hours), {}, {}};
    if (Minutes(day.open, day.close) == 390.0) {
      ++ordinary;
      ExpectDay(calendar, day);
    }
  }
  EXPECT_GT(ordinary, rows.size() * 95 / 100);
}

TEST_F(RealData, TokyosSessionsComeOutOfTheLookups) {
  const CZRGSSession early(Week("Mon-Fri 09:00-11:30 part; Mon-Fri 12:30-15:00"));
  const CZRGSSession late(Week("Mon-Fri 09:00-11:30 part; Mon-Fri 12:30-15:30"));
  std::size_t ordinary = 0;
  const auto rows = Rows("session_tables/xtks.csv");
  for (const auto& row : rows) {
    const TradingDay day = {Local(row.at("open"), 9), Local(row.at("close"), 9),
                            Local(row.at("break_start"), 9), Local(row.at("break_end"), 9)};
    // The close moved by half an hour on 5 November 2024.
    const bool isLate = day.open.GetDate() >= CZRDate(11, 5, 2024);
    if (Minutes(day.open, day.close) == (isLate ? 390.0 : 360.0)) {
      ++ordinary;
      ExpectDay(isLate ? late : early, day);
    }
  }
  EXPECT_GT(ordinary, rows.size() * 95 / 100);
}

TEST_F(RealData, HongKongsSessionsComeOutOfTheLookups) {
  const CZRGSSession calendar(Week("Mon-Fri 09:30-12:00 part; Mon-Fri 13:00-16:00"));
  std::size_t ordinary = 0;
  const auto rows = Rows("session_tables/xhkg.csv");
  for (const auto& row : rows) {
    const TradingDay day = {Local(row.at("open"), 8), Local(row.at("close"), 8),
                            Local(row.at("break_start"), 8), Local(row.at("break_end"), 8)};
    if (Minutes(day.open, day.close) == 390.0) {
      ++ordinary;
      ExpectDay(calendar, day);
    }
  }
  EXPECT_GT(ordinary, rows.size() * 95 / 100);
}

}  // namespace
