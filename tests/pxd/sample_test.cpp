// The made-up market: the same everywhere, and lifelike.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <tools/pxd/moment.h>
#include <tools/pxd/sample.h>
#include <tools/pxd/session_words.h>
#include <tools/pxd/trades_csv.h>

using namespace pxd::tool;

namespace {

class ToText final : public TextSink {
 public:
  void Take(std::string_view piece) override { text += piece; }
  std::string text;
};

std::string Sample(const SampleSettings& settings) {
  ToText sink;
  WriteSample(settings, sink);
  return sink.text;
}

class Trades final : public TradeSink {
 public:
  explicit Trades(const std::string& text) {
    TradesCsv csv({}, *this);
    EXPECT_TRUE(csv.Feed(text) && csv.Finish()) << csv.Error();
  }
  void Take(const Trade& trade) override { all.push_back(trade); }

  // How many fall on that day from one time up to another.
  [[nodiscard]] std::size_t Count(const CZRDateTime& from, const CZRDateTime& to) const {
    std::size_t count = 0;
    for (const Trade& trade : all) {
      count += trade.when >= from && trade.when < to ? 1U : 0U;
    }
    return count;
  }
  std::vector<Trade> all;
};

CZRDateTime At(const char* text) {
  return ReadDateTime(text);
}

TEST(Sample, TheGeneratorGivesItsPublishedNumbers) {
  SampleRandom random(1234567);
  for (const std::uint64_t expected :
       {6457827717110365317U, 3203168211198807973U, 9817491932198370423U, 4593380528125082431U,
        16408922859458223821U}) {
    EXPECT_EQ(random.Next(), expected);
  }
}

TEST(Sample, TheSameSettingsGiveTheSameBytes) {
  EXPECT_EQ(Sample({SampleMarket::kStocks, 2, 7}), Sample({SampleMarket::kStocks, 2, 7}));
  EXPECT_NE(Sample({SampleMarket::kStocks, 2, 7}), Sample({SampleMarket::kStocks, 2, 8}));
  const std::string two = Sample({SampleMarket::kStocks, 2, 7});
  EXPECT_EQ(Sample({SampleMarket::kStocks, 3, 7}).substr(0, two.size()), two)
      << "more days only add to the end";
}

TEST(Sample, StocksTradeFromOpenToCloseWithALatePrint) {
  const Trades trades(Sample({}));
  ASSERT_GT(trades.all.size(), 10000U);
  EXPECT_EQ(trades.all.front().when, At("2024-03-04 09:30:00"));
  EXPECT_GT(trades.Count(At("2024-03-04 16:01:00"), At("2024-03-04 16:10:00")), 0U)
      << "the late print";
  EXPECT_GE(trades.all.back().when, At("2024-03-08 16:00:00"));
  EXPECT_LT(trades.all.back().when, At("2024-03-08 16:10:00"));
  // Bursts at both ends, a quiet middle.
  const std::size_t noon = trades.Count(At("2024-03-05 12:30:00"), At("2024-03-05 13:00:00"));
  EXPECT_GT(trades.Count(At("2024-03-05 09:30:00"), At("2024-03-05 10:00:00")), 2 * noon);
  EXPECT_GT(trades.Count(At("2024-03-05 15:30:00"), At("2024-03-05 16:00:00")), 2 * noon);
}

TEST(Sample, TheOvernightMarketStartsOnSundayEvening) {
  const Trades trades(Sample({SampleMarket::kOvernight, 5, 1}));
  EXPECT_EQ(trades.all.front().when, At("2024-03-03 18:00:00"));
  EXPECT_GT(trades.Count(At("2024-03-04 00:00:00"), At("2024-03-04 06:00:00")), 100U);
  EXPECT_EQ(trades.Count(At("2024-03-04 17:05:00"), At("2024-03-04 18:00:00")), 0U);
}

TEST(Sample, EveryTradeIsInOrderAndInItsMarketsWeek) {
  for (const SampleMarket market : {SampleMarket::kStocks, SampleMarket::kOvernight}) {
    // Two weeks and a day: the weekends are skipped.
    const Trades trades(Sample({market, 11, 3}));
    ZRGS_SESSION week;
    std::string error;
    ASSERT_TRUE(ReadSessions(SampleSessions(market), week, error)) << error;
    const CZRGSSession calendar(week);
    CZRDateTime latest = trades.all.front().when;
    for (const Trade& trade : trades.all) {
      ASSERT_GE(trade.when, latest) << "line " << trade.line;
      latest = trade.when;
      ASSERT_GT(trade.price, 0.0);
      ASSERT_GT(trade.volume, 0.0);
      CZRDateTime open;
      CZRDateTime close;
      CZRGSSession::Status status = CZRGSSession::StatusClosed;
      unsigned long index = 0;
      calendar.GetSessionInfo(CZRGSSession::ResetNone, trade.when, open, close, status, index);
      ASSERT_TRUE(status == CZRGSSession::StatusOpen || status == CZRGSSession::StatusDribble)
          << "line " << trade.line;
    }
  }
}

}  // namespace
