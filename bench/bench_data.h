// What the benchmarks work on: calendars, and ticks that look like trading.
#ifndef PXDUTIL_BENCH_BENCH_DATA_H
#define PXDUTIL_BENCH_BENCH_DATA_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include <pxdutil/datapoints/ticks.h>
#include <pxdutil/sessions/session.h>

namespace bench {

// Monday to Friday, 09:30 to 16:00, ten minutes of dribble and thirty of reset.
inline CZRGSSession StockWeek() {
  return CZRGSSession(
      "5:2010,2400,30,10,1;3450,3840,30,10,1;4890,5280,30,10,1;6330,6720,30,10,1;"
      "7770,8160,30,10,1");
}

// A small generator whose numbers are the same on every machine.
class Random {
 public:
  explicit Random(std::uint64_t seed) : m_state(seed) {}
  std::uint32_t Below(std::uint32_t limit) {
    m_state = m_state * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<std::uint32_t>(((m_state >> 33) * limit) >> 31);
  }

 private:
  std::uint64_t m_state;
};

// `count` trades in order of time, spread evenly over the sessions of the weeks that they need at
// `perSecond` trades a second.
inline std::vector<CDPTDblDblTick> Trades(std::size_t count, std::size_t perSecond = 4) {
  constexpr std::uint32_t kSessionSeconds = 390 * 60;
  const CZRDate monday(3, 4, 2024);
  Random random(1);
  std::vector<CDPTDblDblTick> ticks(count);
  float price = 100.0F;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t second = i / perSecond;
    const std::size_t session = second / kSessionSeconds;
    const auto day =
        static_cast<unsigned short>(monday.GetJulianDate() + session / 5 * 7 + session % 5);
    const auto time = static_cast<unsigned long>(34200 + second % kSessionSeconds);
    const std::uint32_t move = random.Below(3);
    price += static_cast<float>(move) * 0.01F - 0.01F;
    ticks[i].SetZRDateTime(day, time);
    ticks[i].SetValues(price, static_cast<long>(random.Below(500) + 1), move == 0 ? -1 : 1);
  }
  return ticks;
}

}  // namespace bench

#endif
