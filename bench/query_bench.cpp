// A request text of 131 characters read into its record of 82,715 bytes, beside the least that
// filling such a record takes: setting all of it to zero.
#include <benchmark/benchmark.h>
#include <pxdutil/query/client_query.h>
#include <pxdutil/query/detail/parsed_query.h>
#include <pxdutil/query/explain_query.h>

#include <cstring>
#include <memory>
#include <string_view>

namespace {

constexpr const char* kText =
    R"(BEGINQUERY ADVISE 7,10,CHART(BARCHART,5,MINUTE,201,8,11) FROM SYMBOL_DATA )"
    R"(WHERE 31="ABC" AND 229="30" AND 365="42" GROUP_BY 7,41,42)";
constexpr const char* kBrokenText =
    R"(BEGINQUERY ADVISE 7,10,CHART(BARCHART,5,MINUTE,201,8,11) FROM SYMBOL_DATA )"
    R"(WHERE 31="ABC" AND 229="30" AND 365="42" GROUP_BY 7,41,)";
static_assert(std::string_view(kText).size() == 131);

void QueryLimit(benchmark::State& state) {
  const auto record = std::make_unique<QUERY_INFO>();
  for (auto _ : state) {
    std::memset(record.get(), 0, sizeof *record);
    benchmark::DoNotOptimize(record.get());
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(QueryLimit);

void QueryRecordCopied(benchmark::State& state) {
  const auto from = std::make_unique<QUERY_INFO>();
  const auto to = std::make_unique<QUERY_INFO>();
  for (auto _ : state) {
    std::memcpy(to.get(), from.get(), sizeof *to);
    benchmark::DoNotOptimize(to.get());
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(QueryRecordCopied);

// What a parser pays that works in a record of its own and then hands it over.
void QueryRecordZeroedAndCopied(benchmark::State& state) {
  const auto from = std::make_unique<QUERY_INFO>();
  const auto to = std::make_unique<QUERY_INFO>();
  for (auto _ : state) {
    std::memset(from.get(), 0, sizeof *from);
    benchmark::DoNotOptimize(from.get());
    benchmark::ClobberMemory();
    std::memcpy(to.get(), from.get(), sizeof *to);
    benchmark::DoNotOptimize(to.get());
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(QueryRecordZeroedAndCopied);

// The parser alone, without the record.
void QueryParsed(benchmark::State& state) {
  for (auto _ : state) {
    const char* text = kText;
    benchmark::DoNotOptimize(text);
    pxd::detail::ParsedQuery query = {};
    const bool parsed = pxd::detail::ParseQuery(text, query);
    benchmark::DoNotOptimize(parsed);
    benchmark::DoNotOptimize(&query);
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(QueryParsed);

void Read(benchmark::State& state, const char* text) {
  const auto record = std::make_unique<QUERY_INFO>();
  for (auto _ : state) {
    benchmark::DoNotOptimize(text);
    const int result = CZRGSClientQuery::GetQueryInfo(text, *record);
    benchmark::DoNotOptimize(result);
    benchmark::DoNotOptimize(record.get());
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations());
}
void QueryRead(benchmark::State& state) {
  Read(state, kText);
}
BENCHMARK(QueryRead);
void QueryReadBroken(benchmark::State& state) {
  Read(state, kBrokenText);
}
BENCHMARK(QueryReadBroken);

void QueryExplained(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(pxd::ExplainQuery(kBrokenText));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(QueryExplained);

}  // namespace
