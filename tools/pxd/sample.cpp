#include "sample.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <bit>

#include <pxdutil/sessions/date_time.h>

#include "moment.h"

namespace pxd::tool {
namespace {

constexpr std::uint32_t kSlices = 13;

struct Market {
  std::string_view sessions;
  std::uint32_t open;    // second of the day
  std::uint32_t length;  // seconds
  int firstDay;          // of the trading week, counted from its Monday
  std::int64_t price;    // in ticks
  std::int64_t tick;     // in hundredths
  std::uint32_t lot;
  // Chances of a trade in a second, in thousandths, over equal slices of the session.
  std::array<std::uint32_t, kSlices> chances;
};

constexpr Market kStocks = {"Mon-Fri 09:30-16:00 dribble 10 reset 30",
                            34200,
                            23400,
                            0,
                            18250,
                            1,
                            100,
                            {420, 260, 190, 150, 120, 100, 85, 90, 110, 140, 190, 280, 460}};
constexpr Market kOvernight = {"Sun-Thu 18:00-17:00 dribble 5 reset 30",
                               64800,
                               82800,
                               -1,
                               20600,
                               25,
                               1,
                               {70, 25, 20, 20, 25, 35, 50, 70, 160, 190, 130, 170, 90}};

const Market& MarketOf(SampleMarket market) {
  return market == SampleMarket::kStocks ? kStocks : kOvernight;
}

// Walks through one trading day after the other, with the price in hand.
class Walk {
 public:
  Walk(const Market& market, std::uint64_t seed, TextSink& sink)
      : m_market(market), m_random(seed), m_sink(sink), m_price(market.price) {}

  void Day(CZRDate day, bool isFirst) {
    m_day = day;
    // Overnight news.
    Move(static_cast<std::int64_t>(m_random.Below(41)) - 20);
    Burst(0, 12, 40);
    for (std::uint32_t second = 1; second < m_market.length; ++second) {
      const std::uint32_t chance = m_market.chances[second * kSlices / m_market.length];
      if (m_random.Below(1000) < chance) {
        Step();
        Print(second, m_random.Below(1000), Size());
      }
    }
    // The closing price is found a moment behind the close, and reported then.
    Burst(m_market.length, 6, 120);
    if (isFirst || m_random.Below(3) == 0) {
      Step();
      Print(m_market.length + 100 + m_random.Below(150), m_random.Below(1000), Size());
    }
  }

 private:
  void Burst(std::uint32_t second, std::uint32_t count, std::uint32_t lots) {
    for (std::uint32_t i = 0; i < count; ++i) {
      if (i != 0) {
        Step();
      }
      Print(second, i * 75 + m_random.Below(75),
            Size() + (i == 0 ? m_market.lot * (lots + m_random.Below(lots)) : 0));
    }
  }

  // Mostly nowhere or one tick, now and then some more.
  void Step() {
    const std::uint32_t draw = m_random.Below(16);
    if (draw < 6) {
      return;
    }
    const std::int64_t ticks = draw == 15 ? 3 : draw == 14 ? 2 : 1;
    Move(m_random.Below(2) == 0 ? ticks : -ticks);
  }

  // The price keeps away from nothing and from the skies.
  void Move(std::int64_t ticks) {
    m_price = std::clamp(m_price + ticks, m_market.price / 2, m_market.price * 2);
  }

  // Small trades are common, each double size half as common as the one below.
  std::uint32_t Size() {
    const auto doublings = static_cast<std::uint32_t>(std::countr_zero(m_random.Next() | 0x40U));
    return m_market.lot * ((1U << doublings) + m_random.Below(1U << doublings));
  }

  void Print(std::uint32_t secondOfSession, std::uint32_t thousandth, std::uint32_t size) {
    const CZRDateTime when = Shifted(CZRDateTime(m_day, CZRTime(m_market.open)),
                                     static_cast<std::int32_t>(secondOfSession));
    const std::int64_t hundredths = m_price * m_market.tick;
    m_sink.Take(fmt::format("{},{}.{:03},{}.{:02},{}\n", DateText(when.GetDate()),
                            TimeText(when.GetTime()), thousandth, hundredths / 100,
                            hundredths % 100, size));
  }

  const Market& m_market;
  SampleRandom m_random;
  TextSink& m_sink;
  CZRDate m_day;
  std::int64_t m_price;
};

}  // namespace

std::string_view SampleSessions(SampleMarket market) {
  return MarketOf(market).sessions;
}

void WriteSample(const SampleSettings& settings, TextSink& sink) {
  const Market& market = MarketOf(settings.market);
  const int monday = CZRDate(3, 4, 2024).GetJulianDate();
  Walk walk(market, settings.seed, sink);
  sink.Take("date,time,price,size\n");
  for (unsigned day = 0; day < settings.days; ++day) {
    const auto date = static_cast<unsigned short>(monday + market.firstDay +
                                                  static_cast<int>(day / 5 * 7 + day % 5));
    walk.Day(CZRDate(date), day == 0);
  }
}

}  // namespace pxd::tool
