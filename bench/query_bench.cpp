// A request text of 131 characters read into its record of 82,715 bytes, beside the least that
// filling such a record takes: setting all of it to zero. And the parse alone, beside a descent
// that was written by hand for that one text.
#include <benchmark/benchmark.h>
#include <pxdutil/query/client_query.h>
#include <pxdutil/query/detail/parsed_query.h>
#include <pxdutil/query/explain_query.h>

#include <array>
#include <cstddef>
#include <cstdint>
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

// What a text of this shape says, in as little room as that takes.
struct PlainQuery {
  struct Condition {
    std::string_view value;
    std::uint16_t field;
    std::uint8_t op;
  };
  std::uint8_t verb;
  std::uint8_t source;
  std::uint8_t unit;
  std::uint8_t whatCount = 0;
  std::uint8_t snapshotCount = 0;
  std::uint8_t conditionCount = 0;
  std::uint8_t groupCount = 0;
  std::uint16_t quantity;
  std::uint16_t primaryField;
  std::uint32_t group;
  std::array<std::uint16_t, 100> what;
  std::array<std::uint16_t, 10> snapshot;
  std::array<Condition, 20> conditions;
  std::array<std::uint32_t, 100> groupNumbers;
};

// The least that reading such a text takes: a descent written by hand over the productions that it
// uses, with all the words that may stand in them, and none of the language's rules: its numbers
// are digits, and of limits it knows the room in its lists.
class PlainParser {
 public:
  PlainParser(const char* text, PlainQuery& query)
      : m_at(text), m_end(text + std::strlen(text)), m_query(query) {}

  bool Parse() {
    Word("BEGINQUERY");
    if (!Verb() || !What() || !Word("FROM") || !Source()) {
      return false;
    }
    if (Word("WHERE") && (!Conditions() || (Word("GROUP_BY") && !Group()))) {
      return false;
    }
    return m_at == m_end;
  }

 private:
  bool Verb() {
    switch (*m_at) {
      case 'A':
        return Word("ADVISE", m_query.verb, QUERY_VERB_ADVISE);
      case 'C':
        return Word("COMMIT", m_query.verb, QUERY_VERB_COMMIT);
      case 'M':
        return Word("MODIFY", m_query.verb, QUERY_VERB_MODIFY);
      case 'R':
        return Word("REQUEST", m_query.verb, QUERY_VERB_REQUEST);
      case 'S':
        return Word("SYNCH", m_query.verb, QUERY_VERB_SYNCH);
      case 'U':
        return Word("UPDATE", m_query.verb, QUERY_VERB_UPDATE);
      default:
        return false;
    }
  }

  bool Source() {
    std::uint8_t& source = m_query.source;
    switch (*m_at) {
      case 'A':
        return Word("ARCHIVE_INFO", source, QUERY_TYPE_ARCHIVE_INFO) ||
               Word("ARCHIVE_MSGS", source, QUERY_TYPE_ARCHIVE_MSGS) ||
               Word("ARCHIVE_ITEMS", source, QUERY_TYPE_ARCHIVE_ITEMS) ||
               Word("ARCHIVE", source, QUERY_TYPE_ARCHIVE);
      case 'C':
        return Word("CHART", source, QUERY_TYPE_SYMBOL_DATA) ||
               Word("CONNECT_DATAFEED", source, QUERY_TYPE_CONNECT_DATAFEED);
      case 'E':
        return Word("EDIT_DATA", source, QUERY_TYPE_EDIT_DATA) ||
               Word("ENTITLEMENTS", source, QUERY_TYPE_ENTITLEMENTS) ||
               Word("ECN_INFO", source, QUERY_TYPE_ECN_INFO);
      case 'F':
        return Word("FEED_INFO", source, QUERY_TYPE_FEED_INFO) ||
               Word("FEED_STATUS", source, QUERY_TYPE_FEED_STATUS) ||
               Word("FUNDAMENTAL", source, QUERY_TYPE_FUNDAMENTAL);
      case 'M':
        return Word("MESSAGE", source, QUERY_TYPE_MESSAGE);
      case 'N':
        return Word("NEWS", source, QUERY_TYPE_NEWS) ||
               Word("NASDAQ_LEVELII", source, QUERY_TYPE_NASDAQ_LEVELII);
      case 'Q':
        return Word("QUOTE", source, QUERY_TYPE_SYMBOL_DATA);
      case 'S':
        return Word("SYMBOL_DATA", source, QUERY_TYPE_SYMBOL_DATA) ||
               Word("SYMBOL_INFO", source, QUERY_TYPE_SYMBOL_DATA) ||
               Word("SYMBOL_LIST", source, QUERY_TYPE_SYMBOL_LIST) ||
               Word("SYMBOL_PREFIX", source, QUERY_TYPE_SYMBOL_PREFIX) ||
               Word("SERVER_INFO", source, QUERY_TYPE_SERVER_INFO) ||
               Word("SCANNING", source, QUERY_TYPE_SCANNING);
      case 'T':
        return Word("TIME_SALES", source, QUERY_TYPE_TIME_SALES) ||
               Word("TIME", source, QUERY_TYPE_TIME);
      default:
        return false;
    }
  }

  bool Unit() {
    switch (*m_at) {
      case 'D':
        return Word("DAILY", m_query.unit, 4);
      case 'M':
        return Word("MINUTE", m_query.unit, 3) || Word("MONTHLY", m_query.unit, 6);
      case 'S':
        return Word("SECOND", m_query.unit, 2);
      case 'T':
        return Word("TICK", m_query.unit, 1);
      case 'W':
        return Word("WEEKLY", m_query.unit, 5);
      case 'Y':
        return Word("YEARLY", m_query.unit, 7);
      default:
        return false;
    }
  }

  bool Operator(std::uint8_t& op) {
    if (Sign('=')) {
      op = QUERY_OPERATOR_EQUAL;
      return true;
    }
    if (Sign('>')) {
      op = QUERY_OPERATOR_GREATER;
      return true;
    }
    return Word("<>", op, QUERY_OPERATOR_NOT_EQUAL) || Word("!=", op, QUERY_OPERATOR_NOT_EQUAL);
  }

  bool What() {
    do {
      if (Word("CHART")) {
        return Chart();
      }
      if (!NumberInto(m_query.what, m_query.whatCount)) {
        return false;
      }
    } while (Sign(','));
    return true;
  }

  bool Chart() {
    if (!Sign('(') || !Word("BARCHART") || !Sign(',') || !Number(m_query.quantity) || !Sign(',') ||
        !Unit() || !Sign(',') || !Number(m_query.primaryField)) {
      return false;
    }
    return NumbersInto(m_query.snapshot, m_query.snapshotCount) && Sign(')');
  }

  bool Conditions() {
    do {
      if (m_query.conditionCount == m_query.conditions.size()) {
        return false;
      }
      PlainQuery::Condition& condition = m_query.conditions[m_query.conditionCount];
      if (!Number(condition.field) || !Operator(condition.op) || !Value(condition.value)) {
        return false;
      }
      ++m_query.conditionCount;
    } while (Word("AND"));
    return true;
  }

  bool Group() {
    return Number(m_query.group) && NumbersInto(m_query.groupNumbers, m_query.groupCount);
  }

  // One more number of a list.
  template <class List>
  bool NumberInto(List& list, std::uint8_t& count) {
    if (count == list.size() || !Number(list[count])) {
      return false;
    }
    ++count;
    return true;
  }

  // All that follow, each behind a comma.
  template <class List>
  bool NumbersInto(List& list, std::uint8_t& count) {
    while (Sign(',')) {
      if (!NumberInto(list, count)) {
        return false;
      }
    }
    return true;
  }

  template <std::size_t kSize>
  bool Word(const char (&word)[kSize]) {
    constexpr std::size_t kLength = kSize - 1;
    if (static_cast<std::size_t>(m_end - m_at) < kLength || std::memcmp(m_at, word, kLength) != 0) {
      return false;
    }
    SkipTo(m_at + kLength);
    return true;
  }

  template <std::size_t kSize>
  bool Word(const char (&word)[kSize], std::uint8_t& out, std::uint8_t code) {
    if (!Word(word)) {
      return false;
    }
    out = code;
    return true;
  }

  bool Sign(char sign) {
    if (*m_at != sign) {
      return false;
    }
    SkipTo(m_at + 1);
    return true;
  }

  template <class Int>
  bool Number(Int& number) {
    if (!IsDigit(*m_at)) {
      return false;
    }
    const char* at = m_at;
    std::uint32_t value = 0;
    do {
      value = value * 10 + static_cast<std::uint32_t>(*at++ - '0');
    } while (IsDigit(*at));
    number = static_cast<Int>(value);
    SkipTo(at);
    return true;
  }

  bool Value(std::string_view& value) {
    if (*m_at != '"') {
      return false;
    }
    const char* at = m_at + 1;
    while (*at != '"') {
      if (*at == '\0') {
        return false;
      }
      ++at;
    }
    value = {m_at + 1, static_cast<std::size_t>(at - m_at) - 1};
    SkipTo(at + 1);
    return true;
  }

  static bool IsDigit(char c) { return c >= '0' && c <= '9'; }

  // The text ends in a NUL, so that only a word has to look how much of it is left.
  void SkipTo(const char* at) {
    while (*at == ' ') {
      ++at;
    }
    m_at = at;
  }

  const char* m_at;
  const char* m_end;
  PlainQuery& m_query;
};

void QueryParsedLimit(benchmark::State& state) {
  for (auto _ : state) {
    const char* text = kText;
    benchmark::DoNotOptimize(text);
    PlainQuery query;
    if (!PlainParser(text, query).Parse()) {
      state.SkipWithError("the text is no sentence");
    }
    benchmark::DoNotOptimize(&query);
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(QueryParsedLimit);

// The parser alone, without the record.
void QueryParsed(benchmark::State& state) {
  for (auto _ : state) {
    const char* text = kText;
    benchmark::DoNotOptimize(text);
    pxd::detail::ParsedQuery query;
    if (!pxd::detail::ParseQuery(text, query)) {
      state.SkipWithError("the text is no sentence");
    }
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
