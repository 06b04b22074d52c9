// Ticks into bars through AddDataPt, beside the plain sum of the same ticks: no session, no rule
// and no bar, just the bytes read once.
#include <benchmark/benchmark.h>
#include <pxdutil/datapoints/bars/bar_builder.h>
#include <pxdutil/datapoints/ohlc_bars.h>
#include <pxdutil/sessions/resolution.h>

#include "bench/bench_data.h"

namespace {

constexpr std::size_t kTicks = 1'000'000;

const std::vector<CDPTDblDblTick>& SharedTrades() {
  static const std::vector<CDPTDblDblTick> trades = bench::Trades(kTicks);
  return trades;
}

void CountTicks(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kTicks));
}

void TicksLimit(benchmark::State& state) {
  const auto& trades = SharedTrades();
  for (auto _ : state) {
    double value = 0.0;
    for (const CDPTDblDblTick& tick : trades) {
      value +=
          static_cast<double>(tick.GetDPST().m_Price) * static_cast<double>(tick.GetDPST().m_Vol);
    }
    benchmark::DoNotOptimize(value);
  }
  CountTicks(state);
}
BENCHMARK(TicksLimit)->Unit(benchmark::kMillisecond);

template <class Bar>
void TicksInto(benchmark::State& state, ZRGS_RESOLUTION resolution) {
  const auto& trades = SharedTrades();
  const CZRGSSession week = bench::StockWeek();
  const CResoln resoln(resolution);
  for (auto _ : state) {
    Bar bar;
    CDPCDataPtCalculated::TrendType trend = CDPCDataPtCalculated::TrendUp;
    std::size_t finished = 0;
    const CDPDataPt* previous = nullptr;
    for (const CDPTDblDblTick& tick : trades) {
      if (bar.AddDataPt(&tick, resoln, week, 0, trend, previous) ==
          CDPCDataPtCalculated::AddBarComplete) {
        ++finished;
        bar.AddDataPt(&tick, resoln, week, 1, trend, previous);
      }
      previous = &tick;
    }
    benchmark::DoNotOptimize(finished);
  }
  CountTicks(state);
}

void TicksIntoMinuteBars(benchmark::State& state) {
  TicksInto<CDPCDblOHLCUDUT>(state, {3, 1});
}
BENCHMARK(TicksIntoMinuteBars)->Unit(benchmark::kMillisecond);

void TicksIntoDailyBars(benchmark::State& state) {
  TicksInto<CDPCDblOHLCUDUTO>(state, {4, 1});
}
BENCHMARK(TicksIntoDailyBars)->Unit(benchmark::kMillisecond);

// What the builder hands on is counted and thrown away.
class Counted final : public pxd::BarSink {
 public:
  void Take(CDPCDataPtCalculated&) override { ++bars; }
  std::size_t bars = 0;
};

// The builder, fed in one of its two ways.
using Feed = void (*)(pxd::BarBuilder& builder, const std::vector<CDPTDblDblTick>& trades);

void AtOnce(pxd::BarBuilder& builder, const std::vector<CDPTDblDblTick>& trades) {
  builder.Add(trades);
}

void OneByOne(pxd::BarBuilder& builder, const std::vector<CDPTDblDblTick>& trades) {
  for (const CDPTDblDblTick& tick : trades) {
    builder.Add(tick);
  }
}

template <class Bar>
void Built(benchmark::State& state, ZRGS_RESOLUTION resolution, Feed feed) {
  const auto& trades = SharedTrades();
  const CZRGSSession week = bench::StockWeek();
  for (auto _ : state) {
    Bar bar;
    Counted counted;
    pxd::BarBuilder builder(bar, CResoln(resolution), week, counted);
    feed(builder, trades);
    benchmark::DoNotOptimize(counted.bars);
  }
  CountTicks(state);
}

void TicksIntoMinuteBarsAtOnce(benchmark::State& state) {
  Built<CDPCDblOHLCUDUT>(state, {3, 1}, AtOnce);
}
BENCHMARK(TicksIntoMinuteBarsAtOnce)->Unit(benchmark::kMillisecond);

void TicksIntoDailyBarsAtOnce(benchmark::State& state) {
  Built<CDPCDblOHLCUDUTO>(state, {4, 1}, AtOnce);
}
BENCHMARK(TicksIntoDailyBarsAtOnce)->Unit(benchmark::kMillisecond);

void TicksIntoMinuteBarsOneByOne(benchmark::State& state) {
  Built<CDPCDblOHLCUDUT>(state, {3, 1}, OneByOne);
}
BENCHMARK(TicksIntoMinuteBarsOneByOne)->Unit(benchmark::kMillisecond);

}  // namespace
