#include "trades_csv.h"

#include <fmt/format.h>

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

#include "moment.h"
#include "words.h"

namespace pxd::tool {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// Powers of ten that a double holds exactly, as many as a short number needs.
constexpr std::array<double, 16> kPowersOfTen = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

// Digits with a point among them or without, up to 15 of them, as nearly all prices and volumes
// are. Both sides of the division are exact then, so the quotient is the nearest double. False for
// anything else.
bool ReadShortNumber(std::string_view text, double& value) {
  std::int64_t digits = 0;
  std::size_t i = 0;
  const auto takeDigits = [&] {
    for (; i < text.size() && IsDigit(text[i]); ++i) {
      digits = digits * 10 + (text[i] - '0');
    }
  };
  takeDigits();
  if (i == text.size() || text[i] != '.') {
    value = static_cast<double>(digits);
    return i == text.size();
  }
  const std::size_t behindPoint = text.size() - ++i;
  takeDigits();
  value = static_cast<double>(digits) / kPowersOfTen[behindPoint];
  return i == text.size();
}

// False where the text is no number.
bool ReadNumber(std::string_view text, double& value) {
  if (!text.empty() && text.front() == '+') {
    text.remove_prefix(1);
  }
  // A digit at either end keeps a point alone out, and what from_chars knows besides.
  if (!text.empty() && text.size() < kPowersOfTen.size() && IsDigit(text.front()) &&
      IsDigit(text.back()) && ReadShortNumber(text, value)) {
    return true;
  }
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  return error == std::errc() && stop == end && !text.empty();
}

// The library stores prices and volumes as 32-bit floats.
bool FitsFloat(double value) {
  return std::isfinite(value) &&
         std::abs(value) <= static_cast<double>(std::numeric_limits<float>::max());
}

std::string FaultText(CsvScanner::Fault fault) {
  switch (fault) {
    case CsvScanner::Fault::kTooLong:
      return fmt::format(
          "the row is longer than {} bytes; expected a row of a CSV file, with every quotation "
          "mark closed",
          TradesCsv::kLongestRow);
    case CsvScanner::Fault::kOpenMark:
      return "the file ends inside quotation marks; expected the mark that closes them";
    case CsvScanner::Fault::kStrayMark:
    case CsvScanner::Fault::kNone:
      break;
  }
  return "a quotation mark stands where none may; expected it round a whole field, and doubled "
         "inside it";
}

}  // namespace

TradesCsv::TradesCsv(const TradeOptions& options, TradeSink& sink)
    : m_options(options), m_sink(sink), m_columns(options.columns) {}

bool TradesCsv::Feed(std::string_view bytes) {
  // The mark may come in pieces too.
  while (!m_markDecided && !bytes.empty()) {
    if (bytes.front() == kByteOrderMark[m_markBytes]) {
      bytes.remove_prefix(1);
      m_markDecided = ++m_markBytes == kByteOrderMark.size();
      continue;
    }
    m_markDecided = true;
    if (!TakeBytes(kByteOrderMark.substr(0, m_markBytes))) {
      return false;
    }
  }
  return TakeBytes(bytes);
}

bool TradesCsv::TakeBytes(std::string_view bytes) {
  m_csv.Give(bytes);
  while (m_csv.Next()) {
    if (!TakeRow()) {
      return false;
    }
  }
  return true;
}

bool TradesCsv::Finish() {
  if (!m_markDecided) {
    m_markDecided = true;
    if (!TakeBytes(kByteOrderMark.substr(0, m_markBytes))) {
      return false;
    }
  }
  if (m_csv.Finish() && !TakeRow()) {
    return false;
  }
  if (!m_hasHeader) {
    m_error = "the file is empty; expected a header line with the names of the columns";
    return false;
  }
  return true;
}

bool TradesCsv::TakeRow() {
  if (m_csv.RowFault() != CsvScanner::Fault::kNone) {
    return RowIsBad(FaultText(m_csv.RowFault()));
  }
  if (!m_hasHeader) {
    return TakeHeader();
  }
  if (m_csv.Fields().size() != m_columns.Count()) {
    return RowIsBad(fmt::format("the row has {} columns; expected {}, as the header has",
                                m_csv.Fields().size(), m_columns.Count()));
  }
  std::string problem;
  if (!ReadValues(problem) || !Complete(problem)) {
    return RowIsBad(std::move(problem));
  }
  m_sink.Take(m_trade);
  return true;
}

bool TradesCsv::TakeHeader() {
  for (const std::string_view name : m_csv.Fields()) {
    m_columns.AddHeader(Trim(name));
  }
  m_hasHeader = m_columns.Resolve(m_error);
  return m_hasHeader;
}

bool TradesCsv::RowIsBad(std::string problem) {
  if (!m_hasHeader || !m_options.skipBad) {
    m_error = std::move(problem);
    return false;
  }
  if (m_badRows++ == 0) {
    m_firstBadLine = m_csv.Line();
    m_firstBadError = std::move(problem);
  }
  return true;
}

// Reads each column that has a role, up to the first whose value is none.
bool TradesCsv::ReadValues(std::string& problem) {
  m_date = CZRDate();
  m_time = CZRTime();
  m_stamp = CZRDateTime();
  m_trade = Trade();
  for (const auto [column, role] : m_columns.UsedColumns()) {
    const std::string_view text = Trim(m_csv.Fields()[column]);
    const std::string_view expected = ReadValue(role, text);
    if (!expected.empty()) {
      problem = fmt::format("{} in column {}; expected {}", Quoted(text),
                            Quoted(m_columns.NameOf(column)), expected);
      return false;
    }
  }
  return true;
}

// Most rows have the date of the row before.
CZRDate TradesCsv::DateOf(std::string_view text) {
  if (text != m_lastDateText || text.empty()) {
    m_lastDate = ReadDate(text);
    m_lastDateText = m_lastDate == CZRDate() ? std::string_view() : text;
  }
  return m_lastDate;
}

// Nothing, or what was expected.
std::string_view TradesCsv::ReadValue(ColumnRole role, std::string_view text) {
  // Either column may hold both, the date and the time.
  const auto isStamp = [&] {
    m_stamp = ReadDateTime(text);
    return m_stamp != CZRDateTime();
  };
  if (role == ColumnRole::kDate) {
    m_date = DateOf(text);
    return m_date != CZRDate() || isStamp() ? "" : "a date such as 2024-03-04";
  }
  if (role == ColumnRole::kTime) {
    m_time = ReadTime(text);
    return m_time != CZRTime() || isStamp()
               ? ""
               : "a time such as 09:31:00.123 or 2024-03-04T09:31:00.123Z";
  }
  double number = 0.0;
  if (!ReadNumber(text, number) || !FitsFloat(number)) {
    return "a number that a 32-bit float can hold, such as 101.25";
  }
  if (role == ColumnRole::kVolume && number < 0.0) {
    return "a volume of 0 or more";
  }
  (role == ColumnRole::kPrice ? m_trade.price : m_trade.volume) = number;
  return {};
}

// Puts the moment together from its parts.
bool TradesCsv::Complete(std::string& problem) {
  const bool hasDate = m_date != CZRDate();
  if (m_stamp == CZRDateTime()) {
    if (!hasDate || m_time == CZRTime()) {
      problem = hasDate ? "the row has a date but no time; expected both, or a timestamp"
                        : "the row has a time but no date; expected both, or a timestamp";
      return false;
    }
    m_stamp = CZRDateTime(m_date, m_time);
  }
  m_trade.when = Shifted(m_stamp, m_options.shift);
  if (m_trade.when == CZRDateTime()) {
    problem = fmt::format("the date {} is out of range; expected one from {}",
                          DateText(m_stamp.GetDate()), kCalendarYears);
    return false;
  }
  m_trade.line = m_csv.Line();
  return true;
}

}  // namespace pxd::tool
