// A made-up market: lifelike trades that are the same on every machine for the same settings, since
// they come from whole numbers alone.
#ifndef PXDUTIL_TOOLS_PXD_SAMPLE_H
#define PXDUTIL_TOOLS_PXD_SAMPLE_H

#include <cstdint>
#include <string>
#include <string_view>

#include "text_target.h"

namespace pxd::tool {

// SplitMix64: a state of 64 bits that counts up by a constant, and a mix of it.
class SampleRandom {
 public:
  explicit constexpr SampleRandom(std::uint64_t seed) : m_state(seed) {}

  constexpr std::uint64_t Next() {
    std::uint64_t z = m_state += 0x9E3779B97F4A7C15U;
    z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
    return z ^ (z >> 31U);
  }
  // 0 to limit - 1; the bias is far below what a sample shows.
  constexpr std::uint32_t Below(std::uint32_t limit) {
    return static_cast<std::uint32_t>(((Next() >> 32U) * limit) >> 32U);
  }

 private:
  std::uint64_t m_state;
};

enum class SampleMarket {
  kStocks,     // Monday to Friday from 09:30 to 16:00
  kOvernight,  // Sunday to Thursday from 18:00 to 17:00 of the next day
};

struct SampleSettings {
  SampleMarket market = SampleMarket::kStocks;
  unsigned days = 5;  // trading days, from Monday 4 March 2024 on
  std::uint64_t seed = 1;
};

inline constexpr unsigned kMostSampleDays = 2500;

// The sessions to read the market's trades with, in people's form.
std::string_view SampleSessions(SampleMarket market);

// Writes the trades as CSV with the columns date, time, price and size, in the order of time. A day
// has an opening and a closing burst, a quiet middle, and now and then, on the first day always, a
// late print in the dribble window.
void WriteSample(const SampleSettings& settings, TextSink& sink);

}  // namespace pxd::tool

#endif
