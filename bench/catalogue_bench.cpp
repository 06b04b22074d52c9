// The catalogue loaded from its text beside one pass over that text, its look-up beside a plain
// array read, and a million bars adjusted beside a plain loop over the same bytes.
#include <benchmark/benchmark.h>
#include <pxdutil/datapoints/ohlc_bars.h>
#include <pxdutil/fields/field_info_mgr.h>
#include <pxdutil/foundation/file.h>
#include <pxdutil/foundation/packed.h>

#include <memory>
#include <numeric>
#include <string>
#include <vector>

#include "bench/bench_data.h"

namespace {

constexpr std::size_t kLookups = 1U << 16;
constexpr std::size_t kBars = 1'000'000;
constexpr unsigned short kIds = 522;

// A text file that stands in memory.
class Lines : public CStdioFile {
 public:
  explicit Lines(const std::string& text) : m_memory(text.data(), text.size()) {}
  unsigned int Read(void* buffer, unsigned int count) override {
    return m_memory.Read(buffer, count);
  }

 private:
  CMemFile m_memory;
};

std::string CatalogueText() {
  CFieldInfoMgr catalogue;
  CString text;
  catalogue.BuildFieldInfoFile(text);
  return text.Str();
}

void Load(CFieldInfoMgr& catalogue, const std::string& text) {
  Lines lines(text);
  CString error;
  catalogue.LoadFromFile(lines, error);
}

void CountBytes(benchmark::State& state, const std::string& text) {
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void CatalogueLoadLimit(benchmark::State& state) {
  const std::string text = CatalogueText();
  for (auto _ : state) {
    benchmark::DoNotOptimize(std::accumulate(text.begin(), text.end(), 0));
  }
  CountBytes(state, text);
}
BENCHMARK(CatalogueLoadLimit)->Unit(benchmark::kMicrosecond);

void CatalogueLoad(benchmark::State& state) {
  const std::string text = CatalogueText();
  for (auto _ : state) {
    CFieldInfoMgr catalogue;
    Load(catalogue, text);
    benchmark::DoNotOptimize(&catalogue);
  }
  CountBytes(state, text);
}
BENCHMARK(CatalogueLoad)->Unit(benchmark::kMicrosecond);

// Ids of the catalogue's range; not all have an entry.
std::vector<unsigned short> Ids() {
  bench::Random random(3);
  std::vector<unsigned short> ids(kLookups);
  for (unsigned short& id : ids) {
    id = static_cast<unsigned short>(random.Below(kIds));
  }
  return ids;
}

void CountLookups(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kLookups));
}

void CatalogueLookupLimit(benchmark::State& state) {
  const std::string text = CatalogueText();  // ahead of the manager, whose place it would clear
  CFieldInfoMgr catalogue;
  Load(catalogue, text);
  std::vector<const CZRGSFieldInfo*> rows;
  for (unsigned short id = 0; id < kIds; ++id) {
    rows.push_back(catalogue.GetFieldInfo(id));
  }
  const std::vector<unsigned short> ids = Ids();
  for (auto _ : state) {
    std::uintptr_t found = 0;
    for (const unsigned short id : ids) {
      found += reinterpret_cast<std::uintptr_t>(rows[id]);
    }
    benchmark::DoNotOptimize(found);
  }
  CountLookups(state);
}
BENCHMARK(CatalogueLookupLimit)->Unit(benchmark::kMicrosecond);

void CatalogueLookup(benchmark::State& state) {
  const std::string text = CatalogueText();  // ahead of the manager, whose place it would clear
  CFieldInfoMgr catalogue;
  Load(catalogue, text);
  const std::vector<unsigned short> ids = Ids();
  for (auto _ : state) {
    std::uintptr_t found = 0;
    for (const unsigned short id : ids) {
      found += reinterpret_cast<std::uintptr_t>(CFieldInfoMgr::m_pInstance->GetFieldInfo(id));
    }
    benchmark::DoNotOptimize(found);
  }
  CountLookups(state);
}
BENCHMARK(CatalogueLookup)->Unit(benchmark::kMicrosecond);

std::vector<CDPCDblOHLCUDUT> Bars() {
  std::vector<CDPCDblOHLCUDUT> bars(kBars);
  for (std::size_t i = 0; i < kBars; ++i) {
    const float price = 100.0F + static_cast<float>(i % 64);
    bars[i].SetValues(price, price + 1.0F, price - 1.0F, price, 1000, 600, 400, 100, 60, 40);
  }
  return bars;
}

void CountBars(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kBars));
}

// A split and its reversal in turn, so that prices stay what they are.
float NextFactor(float& factor) {
  factor = 1.0F / factor;
  return factor;
}

void AdjustLimit(benchmark::State& state) {
  constexpr std::size_t kFirstPrice = sizeof(CDPDataPt) + 6;  // behind date and time
  std::vector<CDPCDblOHLCUDUT> bars = Bars();
  float factor = 2.0F;
  for (auto _ : state) {
    const float by = NextFactor(factor);
    for (CDPCDblOHLCUDUT& bar : bars) {
      unsigned char* const prices = reinterpret_cast<unsigned char*>(&bar) + kFirstPrice;
      for (std::size_t i = 0; i < 4; ++i) {
        pxd::StoreFloat(prices, i, pxd::LoadFloat(prices, i) * by);
      }
    }
    benchmark::ClobberMemory();
  }
  CountBars(state);
}
BENCHMARK(AdjustLimit)->Unit(benchmark::kMillisecond);

void AdjustBars(benchmark::State& state) {
  std::vector<CDPCDblOHLCUDUT> bars = Bars();
  const CDPADataPtAr points(bars.data(), kBars);
  float factor = 2.0F;
  for (auto _ : state) {
    const float by = NextFactor(factor);
    for (unsigned int i = 0; i < kBars; ++i) {
      points[i]->AdjustData(CDPDataPt::AdjustMultiply, by, CDPDataPt::AdjustPrices);
    }
    benchmark::ClobberMemory();
  }
  CountBars(state);
}
BENCHMARK(AdjustBars)->Unit(benchmark::kMillisecond);

}  // namespace
