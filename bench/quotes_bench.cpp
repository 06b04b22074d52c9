// A quote of twelve typed fields, built, read six times by id and released, beside the same with a
// hand-written list of fixed-size fields that belongs to one thread and recycles itself.
#include <benchmark/benchmark.h>
#include <pxdutil/foundation/packed.h>
#include <pxdutil/quotes/quote.h>

#include <array>
#include <cstring>
#include <vector>

namespace {

constexpr std::array<unsigned short, 12> kIds = {280, 281, 232, 233, 234, 235,
                                                 249, 238, 239, 321, 31,  16};
constexpr std::array<unsigned short, 6> kWanted = {235, 249, 281, 232, 31, 280};

void QuotesLimit(benchmark::State& state) {
  struct Field {
    unsigned short id;
    unsigned char type;
    unsigned char size;
    std::array<unsigned char, 8> value;
  };
  std::vector<Field> fields;
  fields.reserve(kIds.size());
  const auto add = [&fields](unsigned short id, unsigned char type, auto value) {
    for (Field& field : fields) {
      if (field.id == id) {
        return;
      }
    }
    Field& field = fields.emplace_back();
    field.id = id;
    field.type = type;
    field.size = sizeof value;
    std::memcpy(field.value.data(), &value, sizeof value);
  };
  for (auto _ : state) {
    float number = 1.0F;
    for (const unsigned short id : kIds) {
      add(id, 5, number);
      number += 1.0F;
    }
    double sum = 0.0;
    for (const unsigned short id : kWanted) {
      for (const Field& field : fields) {
        if (field.id == id) {
          sum += static_cast<double>(pxd::LoadAs<float>(field.value.data()));
          break;
        }
      }
    }
    benchmark::DoNotOptimize(sum);
    fields.clear();
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(QuotesLimit);

void BuildReadRelease() {
  CZRGSQuote quote;
  quote.AddFieldDate(3, 280, 35431);
  quote.AddFieldTime(3, 281, 34200);
  quote.AddFieldFloat(3, 232, 1.0F);
  quote.AddFieldFloat(3, 233, 2.0F);
  quote.AddFieldFloat(3, 234, 3.0F);
  quote.AddFieldFloat(3, 235, 4.0F);
  quote.AddFieldULong(3, 249, 500);
  quote.AddFieldLong(3, 238, 300);
  quote.AddFieldLong(3, 239, 200);
  quote.AddFieldUShort(3, 321, 12);
  quote.AddFieldDouble(3, 31, 1.5);
  quote.AddFieldByte(3, 16, 7);
  double sum = 0.0;
  for (const unsigned short id : kWanted) {
    double value = 0.0;
    quote.GetFieldData(id, value);
    sum += value;
  }
  benchmark::DoNotOptimize(sum);
}

// On one thread, and on two that share the pool; the rate is that of all threads together.
void Quotes(benchmark::State& state) {
  if (state.thread_index() == 0) {
    CZRGSQuote::Init();
  }
  for (auto _ : state) {
    BuildReadRelease();
  }
  state.SetItemsProcessed(state.iterations());
  if (state.thread_index() == 0) {
    CZRGSQuote::UnInit();
  }
}
BENCHMARK(Quotes)->Threads(1)->Threads(2)->UseRealTime();

}  // namespace
