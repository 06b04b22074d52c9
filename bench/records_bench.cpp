// 54-byte bars stored and loaded in memory, record by record through Serialize and a series at
// once, beside one memcpy of the same bytes.
#include <benchmark/benchmark.h>
#include <pxdutil/datapoints/records.h>
#include <pxdutil/foundation/archive.h>
#include <pxdutil/foundation/file.h>

#include <cstring>
#include <vector>

namespace {

constexpr std::size_t kBars = 100'000;

std::vector<CDPSTDblOHLCUDUT> Bars() {
  std::vector<CDPSTDblOHLCUDUT> bars(kBars);
  for (std::size_t i = 0; i < kBars; ++i) {
    bars[i].m_Date = static_cast<std::uint16_t>(45000 + i / 390);
    bars[i].m_Time = static_cast<std::uint32_t>(34200 + i % 390 * 60);
    for (std::size_t column = 0; column < 12; ++column) {
      bars[i].SetFloat(column, static_cast<float>(i + column));
    }
  }
  return bars;
}

void CountBars(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kBars));
}

void RecordsLimit(benchmark::State& state) {
  const std::vector<CDPSTDblOHLCUDUT> bars = Bars();
  std::vector<unsigned char> bytes(bars.size() * sizeof bars[0]);
  for (auto _ : state) {
    std::memcpy(bytes.data(), bars.data(), bytes.size());
    benchmark::DoNotOptimize(bytes.data());
    benchmark::ClobberMemory();
  }
  CountBars(state);
}
BENCHMARK(RecordsLimit)->Unit(benchmark::kMillisecond);

void RecordsStored(benchmark::State& state) {
  std::vector<CDPSTDblOHLCUDUT> bars = Bars();
  CMemFile file;
  for (auto _ : state) {
    file.SeekToBegin();
    CArchive archive(&file, CArchive::store);
    for (CDPSTDblOHLCUDUT& bar : bars) {
      bar.Serialize(archive);
    }
    archive.Close();
  }
  CountBars(state);
}
BENCHMARK(RecordsStored)->Unit(benchmark::kMillisecond);

void RecordsLoaded(benchmark::State& state) {
  std::vector<CDPSTDblOHLCUDUT> bars = Bars();
  CMemFile file;
  CArchive out(&file, CArchive::store);
  for (CDPSTDblOHLCUDUT& bar : bars) {
    bar.Serialize(out);
  }
  out.Close();
  for (auto _ : state) {
    file.SeekToBegin();
    CArchive archive(&file, CArchive::load);
    for (CDPSTDblOHLCUDUT& bar : bars) {
      bar.Serialize(archive);
    }
    benchmark::DoNotOptimize(bars.data());
    archive.Close();
  }
  CountBars(state);
}
BENCHMARK(RecordsLoaded)->Unit(benchmark::kMillisecond);

void RecordsStoredAtOnce(benchmark::State& state) {
  const std::vector<CDPSTDblOHLCUDUT> bars = Bars();
  CMemFile file;
  for (auto _ : state) {
    file.SeekToBegin();
    CArchive archive(&file, CArchive::store);
    pxd::StoreRecords(archive, bars);
    archive.Close();
  }
  CountBars(state);
}
BENCHMARK(RecordsStoredAtOnce)->Unit(benchmark::kMillisecond);

void RecordsLoadedAtOnce(benchmark::State& state) {
  std::vector<CDPSTDblOHLCUDUT> bars = Bars();
  CMemFile file;
  CArchive out(&file, CArchive::store);
  pxd::StoreRecords(out, bars);
  out.Close();
  for (auto _ : state) {
    file.SeekToBegin();
    CArchive archive(&file, CArchive::load);
    pxd::LoadRecords(archive, bars);
    benchmark::DoNotOptimize(bars.data());
    archive.Close();
  }
  CountBars(state);
}
BENCHMARK(RecordsLoadedAtOnce)->Unit(benchmark::kMillisecond);

}  // namespace
