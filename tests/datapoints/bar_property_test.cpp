// Bars built from thousands of ticks, against a slow account of the same calendars in plain
// arithmetic.
#include <algorithm>
#include <cstdint>
#include <optional>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "tests/datapoints/build_helpers.h"

namespace {

using namespace datapoints_test;
using session_test::Info;
using session_test::Overnight;
using session_test::Weekdays;

// Seconds since the midnight of day 45291, a Sunday (31 December 2023).
using Seconds = std::int64_t;
constexpr Seconds kDay = 86400;
constexpr unsigned kSunday = 45291;

CZRDateTime At(Seconds seconds) {
  return CZRDateTime(CZRDate(static_cast<unsigned short>(kSunday + seconds / kDay)),
                     CZRTime(static_cast<unsigned>(seconds % kDay)));
}

constexpr Seconds Clock(int hour, int minute) {
  return Seconds{hour} * 3600 + Seconds{minute} * 60;
}

// One stretch of trading: on the days `first` to `last` of the week, 0 being Sunday, from `open`
// for `length`, with late prints for `dribble` more.
struct Stretch {
  int first;
  int last;
  Seconds open;
  Seconds length;
  Seconds dribble;
};

struct Market {
  const char* name;
  std::vector<Stretch> stretches;
  ZRGS_SESSION list;
};

ZRGS_SESSION Lunch() {
  ZRGS_SESSION list;
  for (unsigned day = 1; day <= 5; ++day) {
    list.sessions.push_back(Info(day * 1440 + 570, day * 1440 + 720, 0, 0, 0));
    list.sessions.push_back(Info(day * 1440 + 780, day * 1440 + 960, 0, 0, 1));
  }
  return list;
}

std::vector<Market> Markets() {
  return {{"day", {{1, 5, Clock(9, 30), Clock(6, 30), Clock(0, 10)}}, Weekdays(0, 10)},
          {"overnight", {{0, 4, Clock(18, 0), Clock(23, 0), 0}}, Overnight()},
          {"lunch",
           {{1, 5, Clock(9, 30), Clock(2, 30), 0}, {1, 5, Clock(13, 0), Clock(3, 0), 0}},
           Lunch()}};
}

// The close of the bar of `width` seconds into which `moment` falls.
std::optional<Seconds> CloseOf(const Market& market, Seconds width, Seconds moment) {
  for (Seconds day = moment / kDay - 1; day <= moment / kDay; ++day) {
    for (const Stretch& stretch : market.stretches) {
      const Seconds weekday = (day + 7) % 7;
      if (weekday < stretch.first || weekday > stretch.last) {
        continue;
      }
      const Seconds open = day * kDay + stretch.open;
      const Seconds close = open + stretch.length;
      if (moment < open || moment >= close + stretch.dribble) {
        continue;
      }
      Seconds end = open;
      while (end <= std::min(moment, close - 1)) {
        end += width;
      }
      return std::min(end, close);
    }
  }
  return std::nullopt;
}

struct Print {
  Seconds at;
  float price;
  int volume;
  int word;
};

std::vector<Print> Prints(unsigned seed, std::size_t count) {
  std::mt19937 random(seed);
  const auto below = [&](unsigned end) { return static_cast<int>(random() % end); };
  std::vector<Print> prints;
  Seconds now = kDay / 2;
  int price = 400;
  while (prints.size() < count) {
    // Mostly bursts, at times a gap of hours; now and then exactly on a minute.
    now += below(40) == 0 ? below(20000) : below(90);
    if (below(10) == 0) {
      now += 60 - now % 60;
    }
    price += below(9) - 4;
    price = std::clamp(price, 40, 4000);
    prints.push_back({now, static_cast<float>(price) / 4.0F, below(100), below(7) - 3});
  }
  return prints;
}

// A bar as the slow account keeps it: whole numbers and quarters, exact in doubles.
struct SlowBar {
  Seconds close = 0;
  std::vector<Print> prints;

  [[nodiscard]] std::vector<float> Columns() const {
    std::vector<double> row(12);
    row[0] = static_cast<double>(prints.front().price);
    row[3] = static_cast<double>(prints.back().price);
    row[1] = row[2] = row[0];
    for (const Print& print : prints) {
      const auto priced = static_cast<double>(print.price);
      row[1] = std::max(row[1], priced);
      row[2] = std::min(row[2], priced);
      const int side = print.word > 0 ? 0 : 1;
      const int ticks = print.word > 0 ? print.word : -print.word;
      row[static_cast<std::size_t>(4 + side)] += print.volume;
      row[7] += print.volume;
      row[static_cast<std::size_t>(8 + side)] += ticks;
      row[11] += ticks;
    }
    return {row.begin(), row.end()};
  }
};

std::vector<SlowBar> SlowBars(const Market& market, Seconds width,
                              const std::vector<Print>& prints) {
  std::vector<SlowBar> bars;
  for (const Print& print : prints) {
    if (const auto close = CloseOf(market, width, print.at); close.has_value()) {
      if (bars.empty() || bars.back().close != *close) {
        bars.push_back({*close, {}});
      }
      bars.back().prints.push_back(print);
    }
  }
  return bars;
}

CDPTDblDblTick TickOf(const Print& print) {
  return Trade(At(print.at), print.price, print.volume, print.word);
}

template <class Bar>
std::vector<Bar> Built(const Market& market, const CResoln& resoln,
                       const std::vector<Print>& prints) {
  Feeder<Bar> feeder(resoln, market.list);
  for (const Print& print : prints) {
    feeder.Offer(TickOf(print));
  }
  return feeder.Bars();
}

constexpr std::size_t kPrints = 6000;

struct Width {
  CResoln resoln;
  Seconds seconds;
};

std::vector<Width> Widths() {
  return {{Of(1, kMinutes), 60},    {Of(5, kMinutes), 300}, {Of(7, kMinutes), 420},
          {Of(45, kMinutes), 2700}, {Of(90, kSeconds), 90}, {Of(17, kSeconds), 17},
          {Of(20, kTicks), 20}};
}

TEST(BarsOfManyTicks, AgreeWithTheSlowAccount) {
  for (const Market& market : Markets()) {
    for (const Width& width : Widths()) {
      for (const unsigned seed : {1U, 2U}) {
        const auto prints = Prints(seed, kPrints);
        const auto slow = SlowBars(market, width.seconds, prints);
        ASSERT_GT(slow.size(), 20U) << "the prints must reach the sessions";
        auto bars = Built<CDPCDblOHLCUDUT>(market, width.resoln, prints);
        ASSERT_EQ(bars.size(), slow.size()) << market.name << ' ' << width.seconds;
        for (std::size_t i = 0; i < bars.size(); ++i) {
          ASSERT_EQ(bars[i].GetZRDateTime(), At(slow[i].close)) << market.name << ' ' << i;
          ASSERT_EQ(Floats(bars[i], 12), slow[i].Columns()) << market.name << ' ' << i;
        }
      }
    }
  }
}

TEST(BarsOfManyTicks, TheShortBarsAgreeWithTheSlowAccount) {
  for (const Market& market : Markets()) {
    const auto prints = Prints(3, kPrints);
    const auto slow = SlowBars(market, 300, prints);
    const CResoln five = Of(5, kMinutes);
    const auto closes = Built<CDPCDblDblC>(market, five, prints);
    const auto highs = Built<CDPCDblDblH>(market, five, prints);
    const auto lows = Built<CDPCDblDblL>(market, five, prints);
    ASSERT_EQ(closes.size(), slow.size());
    ASSERT_EQ(highs.size(), slow.size());
    ASSERT_EQ(lows.size(), slow.size());
    for (std::size_t i = 0; i < slow.size(); ++i) {
      const auto& inBar = slow[i].prints;
      // Of equals the last one counts.
      Print high = inBar.front();
      Print low = inBar.front();
      for (const Print& print : inBar) {
        high = print.price >= high.price ? print : high;
        low = print.price <= low.price ? print : low;
      }
      const auto row = [](const Print& print) {
        return std::vector<float>{print.price, static_cast<float>(print.volume)};
      };
      ASSERT_EQ(Floats(closes[i], 2), row(inBar.back())) << market.name << ' ' << i;
      ASSERT_EQ(Floats(highs[i], 2), row(high)) << market.name << ' ' << i;
      ASSERT_EQ(Floats(lows[i], 2), row(low)) << market.name << ' ' << i;
    }
  }
}

TEST(BarsOfManyTicks, EnclosePricesAndConserveVolume) {
  for (const Market& market : Markets()) {
    const auto prints = Prints(4, kPrints);
    double traded = 0;
    for (const Print& print : prints) {
      traded += CloseOf(market, 60, print.at).has_value() ? print.volume : 0;
    }
    double inBars = 0;
    for (const auto& bar : Built<CDPCDblOHLCUDUT>(market, Of(1, kMinutes), prints)) {
      const auto row = Floats(bar, 12);
      EXPECT_LE(row[2], std::min(row[0], row[3]));
      EXPECT_GE(row[1], std::max(row[0], row[3]));
      EXPECT_EQ(row[4] + row[5], row[7]);
      EXPECT_EQ(row[6], 0.0F);
      EXPECT_EQ(row[8] + row[9], row[11]);
      inBars += static_cast<double>(row[7]);
    }
    EXPECT_EQ(inBars, traded) << market.name;
  }
}

TEST(BarsOfManyTicks, SamePointsGiveSameBars) {
  const Market market = Markets()[0];
  const auto prints = Prints(5, kPrints);
  const auto first = Built<CDPCDblOHLCUDUTO>(market, Of(1, kDays), prints);
  const auto second = Built<CDPCDblOHLCUDUTO>(market, Of(1, kDays), prints);
  ASSERT_EQ(first.size(), second.size());
  for (std::size_t i = 0; i < first.size(); ++i) {
    EXPECT_EQ(first[i] == second[i], 1);
  }
}

TEST(BarsOfManyTicks, BuiltByWayOfMinuteBarsAreTheSame) {
  for (const Market& market : Markets()) {
    const auto prints = Prints(6, kPrints);
    Feeder<CDPCDblOHLCUDUT> feeder(Of(5, kMinutes), market.list);
    for (const auto& minute : Built<CDPCDblOHLCUDUT>(market, Of(1, kMinutes), prints)) {
      feeder.Offer(minute);
    }
    const auto direct = Built<CDPCDblOHLCUDUT>(market, Of(5, kMinutes), prints);
    const auto rolledUp = feeder.Bars();
    ASSERT_EQ(rolledUp.size(), direct.size()) << market.name;
    for (std::size_t i = 0; i < direct.size(); ++i) {
      ASSERT_EQ(rolledUp[i] == direct[i], 1) << market.name << ' ' << i;
    }
  }
}

TEST(BarsOfManyTicks, DayBarsCloseWithTheTradingDay) {
  for (const Market& market : Markets()) {
    const auto prints = Prints(7, kPrints);
    // A day of one stretch, or of two: its close is that of the last.
    const Stretch& last = market.stretches.back();
    std::vector<std::pair<Seconds, double>> days;
    for (const Print& print : prints) {
      const auto close = CloseOf(market, kDay, print.at);
      if (close.has_value()) {
        const Seconds length = last.open + last.length;
        const Seconds ends = length > kDay ? *close : *close / kDay * kDay + length;
        if (days.empty() || days.back().first != ends) {
          days.emplace_back(ends, 0.0);
        }
        days.back().second += print.volume;
      }
    }
    auto bars = Built<CDPCDblOHLCUDUTO>(market, Of(1, kDays), prints);
    ASSERT_EQ(bars.size(), days.size()) << market.name;
    for (std::size_t i = 0; i < bars.size(); ++i) {
      EXPECT_EQ(bars[i].GetZRDateTime(), At(days[i].first)) << market.name << ' ' << i;
      EXPECT_EQ(static_cast<double>(Float(bars[i], 7)), days[i].second) << market.name << ' ' << i;
    }
  }
}

}  // namespace
