// Which session a random moment falls in, by period, beside a branchless binary search over the
// opens of the same sessions, counted out beforehand.
#include <benchmark/benchmark.h>
#include <pxdutil/sessions/session.h>

#include <array>
#include <bit>
#include <vector>

#include "bench/bench_data.h"

namespace {

constexpr std::size_t kMoments = 1U << 16;

// Within the year 2024.
const std::vector<CZRDateTime>& Moments() {
  static const std::vector<CZRDateTime> moments = [] {
    bench::Random random(7);
    const CZRDate first(1, 1, 2024);
    std::vector<CZRDateTime> made;
    made.reserve(kMoments);
    for (std::size_t i = 0; i < kMoments; ++i) {
      const auto day = static_cast<unsigned short>(first.GetJulianDate() + random.Below(366));
      made.emplace_back(CZRDate(day), CZRTime(random.Below(86400)));
    }
    return made;
  }();
  return moments;
}

void CountLookups(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kMoments));
}

void LookupsLimit(benchmark::State& state) {
  // The opens and closes of two years of sessions, in seconds from the day 0.
  std::vector<std::int64_t> opens;
  std::vector<std::int64_t> closes;
  const std::int64_t monday = CZRDate(1, 1, 2024).GetJulianDate();
  for (std::int64_t week = -1; week < 103; ++week) {
    for (std::int64_t day = 0; day < 5; ++day) {
      const std::int64_t midnight = (monday + week * 7 + day) * 86400;
      opens.push_back(midnight + 34200);
      closes.push_back(midnight + 57600);
    }
  }
  std::vector<std::int64_t> moments;
  for (const CZRDateTime& moment : Moments()) {
    moments.push_back(std::int64_t{moment.GetDate().GetJulianDate()} * 86400 +
                      moment.GetTime().GetTime());
  }
  for (auto _ : state) {
    std::int64_t sum = 0;
    for (const std::int64_t moment : moments) {
      std::size_t place = 0;
      for (std::size_t step = std::bit_floor(opens.size()); step > 0; step /= 2) {
        const std::size_t next = place + step;
        place = next < opens.size() && opens[next] <= moment ? next : place;
      }
      sum += moment < closes[place] ? closes[place] : 0;
    }
    benchmark::DoNotOptimize(sum);
  }
  CountLookups(state);
}
BENCHMARK(LookupsLimit)->Unit(benchmark::kMillisecond);

void Lookups(benchmark::State& state, CZRGSSession::ResetType period) {
  const CZRGSSession week = bench::StockWeek();
  CZRDateTime open;
  CZRDateTime close;
  CZRGSSession::Status status = CZRGSSession::StatusClosed;
  unsigned long index = 0;
  for (auto _ : state) {
    int found = 0;
    for (const CZRDateTime& moment : Moments()) {
      week.GetSessionInfo(period, moment, open, close, status, index);
      found += status;
    }
    benchmark::DoNotOptimize(found);
  }
  CountLookups(state);
}
BENCHMARK_CAPTURE(Lookups, ResetNone, CZRGSSession::ResetNone)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Lookups, ResetDay, CZRGSSession::ResetDay)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Lookups, ResetWeek, CZRGSSession::ResetWeek)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Lookups, ResetMonth, CZRGSSession::ResetMonth)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Lookups, ResetYear, CZRGSSession::ResetYear)->Unit(benchmark::kMillisecond);

}  // namespace
