#include "trades_csv.h"

#include <csv.h>
#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <exception>
#include <limits>
#include <new>
#include <utility>

#include "moment.h"
#include "words.h"

namespace pxd::tool {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kLineEnds = "\r\n";
constexpr std::string_view kBlanks = " \t\r\n";

std::optional<double> ReadNumber(std::string_view text) {
  if (!text.empty() && text.front() == '+') {
    text.remove_prefix(1);
  }
  double value = 0.0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end || text.empty()) {
    return std::nullopt;
  }
  return value;
}

// The library stores prices and volumes as 32-bit floats.
bool FitsFloat(double value) {
  return std::isfinite(value) &&
         std::abs(value) <= static_cast<double>(std::numeric_limits<float>::max());
}

}  // namespace

// The C parser. Strict, so that a stray quotation mark is an error and not a part of a number.
struct TradesCsv::Parser {
  explicit Parser(TradesCsv& csv) : owner(csv) { Init(); }
  ~Parser() { csv_free(&state); }
  Parser(const Parser&) = delete;
  Parser& operator=(const Parser&) = delete;

  void Init() {
    if (csv_init(&state, CSV_STRICT | CSV_STRICT_FINI) != 0) {
      throw std::bad_alloc();
    }
  }
  // Forgets the row that is being read.
  void Restart() {
    csv_free(&state);
    Init();
  }
  bool Parse(std::string_view bytes) {
    return csv_parse(&state, bytes.data(), bytes.size(), &OnField, &OnRow, this) == bytes.size();
  }
  bool Finish() { return csv_fini(&state, &OnField, &OnRow, this) == 0; }
  [[nodiscard]] bool IsOutOfMemory() { return csv_error(&state) == CSV_ENOMEM; }

  // Nothing may be thrown through the C parser. What reading a field throws waits for its end.
  static void OnField(void* text, std::size_t length, void* self) noexcept {
    auto* parser = static_cast<Parser*>(self);
    try {
      parser->owner.TakeField({static_cast<const char*>(text), length});
    } catch (...) {
      parser->thrown = std::current_exception();
    }
  }
  static void OnRow(int, void* self) noexcept {
    static_cast<Parser*>(self)->owner.m_rowDone = true;
  }
  void Rethrow() {
    if (thrown) {
      std::rethrow_exception(std::exchange(thrown, nullptr));
    }
    if (IsOutOfMemory()) {
      throw std::bad_alloc();
    }
  }

  TradesCsv& owner;
  csv_parser state{};
  std::exception_ptr thrown;
};

TradesCsv::TradesCsv(const TradeOptions& options, TradeSink& sink)
    : m_options(options),
      m_sink(sink),
      m_columns(options.columns),
      m_parser(std::make_unique<Parser>(*this)) {}

TradesCsv::~TradesCsv() = default;

bool TradesCsv::Feed(std::string_view bytes) {
  // The mark may come in pieces too.
  while (!m_markDecided && !bytes.empty()) {
    if (bytes.front() == kByteOrderMark[m_markBytes]) {
      bytes.remove_prefix(1);
      m_markDecided = ++m_markBytes == kByteOrderMark.size();
      continue;
    }
    m_markDecided = true;
    if (!FeedLine(kByteOrderMark.substr(0, m_markBytes), false)) {
      return false;
    }
  }
  // Line by line, since the C parser doesn't tell where in the bytes it is.
  while (!bytes.empty()) {
    if (std::exchange(m_behindCarriageReturn, false) && bytes.front() == '\n') {
      if (!FeedLine(bytes.substr(0, 1), true)) {
        return false;
      }
      bytes.remove_prefix(1);
      continue;
    }
    const std::size_t end = bytes.find_first_of(kLineEnds);
    const bool ended = end != std::string_view::npos;
    const std::string_view line = ended ? bytes.substr(0, end + 1) : bytes;
    if (!FeedLine(line, ended)) {
      return false;
    }
    bytes.remove_prefix(line.size());
    m_line += ended ? 1 : 0;
    m_behindCarriageReturn = ended && line.back() == '\r';
  }
  return true;
}

// Takes a line or a piece of one; at most one row ends with it.
bool TradesCsv::FeedLine(std::string_view line, bool ended) {
  if (m_skippingLine) {
    m_skippingLine = !ended;
    return true;
  }
  if (m_rowBytes == 0) {
    line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
    if (line.empty()) {
      return true;
    }
    m_rowLine = m_line;
  }
  m_rowBytes += line.size();
  if (m_rowBytes > kLongestRow) {
    m_parser->Restart();
    m_skippingLine = !ended;
    return RowIsBad(
        fmt::format("the row is longer than {} bytes; expected a row of a CSV file, "
                    "with every quotation mark closed",
                    kLongestRow));
  }
  const bool parsed = m_parser->Parse(line);
  m_parser->Rethrow();
  if (!parsed) {
    m_parser->Restart();
    m_skippingLine = !ended;
    return RowIsBad(
        "a quotation mark stands where none may; expected it round a whole field, and "
        "doubled inside it");
  }
  return !m_rowDone || RowEnded();
}

bool TradesCsv::Finish() {
  if (!m_markDecided) {
    m_markDecided = true;
    if (!FeedLine(kByteOrderMark.substr(0, m_markBytes), false)) {
      return false;
    }
  }
  if (m_rowBytes != 0) {
    const bool closed = m_parser->Finish();
    m_parser->Rethrow();
    if (!closed) {
      if (!RowIsBad("the file ends inside quotation marks; expected the mark that closes them")) {
        return false;
      }
    } else if (m_rowDone && !RowEnded()) {
      return false;
    }
  }
  if (!m_hasHeader) {
    m_error = "the file is empty; expected a header line with the names of the columns";
    return false;
  }
  return true;
}

void TradesCsv::TakeField(std::string_view text) {
  const std::size_t column = m_fields++;
  if (!m_hasHeader) {
    m_columns.AddHeader(Trim(text));
  } else if (column < m_columns.Count() && m_problem.empty()) {
    ReadValue(m_columns.RoleOf(column), m_columns.NameOf(column), Trim(text));
  }
}

void TradesCsv::ReadValue(ColumnRole role, const std::string& name, std::string_view text) {
  const auto expected = [&](std::string_view what) {
    m_problem = fmt::format("{} in column {}; expected {}", Quoted(text), Quoted(name), what);
  };
  switch (role) {
    case ColumnRole::kIgnored:
      return;
    case ColumnRole::kDate:
      m_date = ReadDate(text);
      if (!m_date && !(m_stamp = ReadDateTime(text))) {
        expected("a date such as 2024-03-04");
      }
      return;
    case ColumnRole::kTime:
      m_time = ReadTime(text);
      if (!m_time && !(m_stamp = ReadDateTime(text))) {
        expected("a time such as 09:31:00.123 or 2024-03-04T09:31:00.123Z");
      }
      return;
    case ColumnRole::kPrice:
    case ColumnRole::kVolume: {
      const auto number = ReadNumber(text);
      const bool isPrice = role == ColumnRole::kPrice;
      if (!number || !FitsFloat(*number)) {
        expected("a number that a 32-bit float can hold, such as 101.25");
      } else if (!isPrice && *number < 0.0) {
        expected("a volume of 0 or more");
      } else {
        (isPrice ? m_trade.price : m_trade.volume) = *number;
      }
      return;
    }
  }
}

bool TradesCsv::CompleteTrade() {
  if (!m_stamp && m_date && m_time) {
    m_stamp = CZRDateTime(*m_date, *m_time);
  }
  if (!m_stamp) {
    m_problem = m_date ? "the row has a date but no time; expected both, or a timestamp"
                       : "the row has a time but no date; expected both, or a timestamp";
    return false;
  }
  const auto when = Shifted(*m_stamp, m_options.shift);
  if (!when) {
    m_problem = fmt::format("the date {} is out of range; expected one from {}",
                            DateText(m_stamp->GetDate()), kCalendarYears);
    return false;
  }
  m_trade.when = *when;
  m_trade.line = m_rowLine;
  return true;
}

bool TradesCsv::RowEnded() {
  if (!m_hasHeader) {
    return HeaderEnded();
  }
  if (m_fields != m_columns.Count()) {
    return RowIsBad(fmt::format("the row has {} columns; expected {}, as the header has", m_fields,
                                m_columns.Count()));
  }
  if (!m_problem.empty() || !CompleteTrade()) {
    return RowIsBad(std::move(m_problem));
  }
  m_sink.Take(m_trade);
  StartRow();
  return true;
}

bool TradesCsv::HeaderEnded() {
  if (!m_columns.Resolve(m_error)) {
    return false;
  }
  m_hasHeader = true;
  StartRow();
  return true;
}

bool TradesCsv::RowIsBad(std::string problem) {
  if (!m_hasHeader || !m_options.skipBad) {
    m_error = std::move(problem);
    return false;
  }
  if (m_badRows++ == 0) {
    m_firstBadLine = m_rowLine;
    m_firstBadError = std::move(problem);
  }
  StartRow();
  return true;
}

void TradesCsv::StartRow() {
  m_rowBytes = 0;
  m_fields = 0;
  m_rowDone = false;
  m_date.reset();
  m_time.reset();
  m_stamp.reset();
  m_trade = Trade();
  m_problem.clear();
}

}  // namespace pxd::tool
