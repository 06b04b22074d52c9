#include "csv_rows.h"

#include <csv.h>

#include <algorithm>
#include <cstddef>
#include <new>

namespace pxd::tool {
namespace {

// Collects rows from the parser's calls.
class Rows {
 public:
  explicit Rows(std::vector<CsvRow>& rows) : m_rows(rows) {
    if (csv_init(&m_parser, CSV_STRICT | CSV_STRICT_FINI) != 0) {
      throw std::bad_alloc();
    }
  }
  ~Rows() { csv_free(&m_parser); }
  Rows(const Rows&) = delete;
  Rows& operator=(const Rows&) = delete;

  bool TakeLine(std::string_view line) {
    ++m_line;
    if (m_row.line == 0 && line.find_first_not_of("\r\n") != std::string_view::npos) {
      m_row.line = m_line;  // a row that began earlier may go on within quotes
    }
    return csv_parse(&m_parser, line.data(), line.size(), &OnField, &OnRow, this) == line.size();
  }
  bool Finish() { return csv_fini(&m_parser, &OnField, &OnRow, this) == 0; }
  void TellFault() { m_rows.push_back({std::max<std::uint64_t>(m_row.line, 1), {}}); }

 private:
  static void OnField(void* text, std::size_t size, void* self) {
    auto& rows = *static_cast<Rows*>(self);
    rows.StartRow();
    rows.m_row.fields.emplace_back(static_cast<const char*>(text), size);
  }
  static void OnRow(int, void* self) {
    auto& rows = *static_cast<Rows*>(self);
    rows.StartRow();
    rows.m_rows.push_back(std::move(rows.m_row));
    rows.m_row = {};
  }
  // Where bare CRs end rows, several of them stand in what counts as one line.
  void StartRow() {
    if (m_row.line == 0) {
      m_row.line = m_line;
    }
  }

  std::vector<CsvRow>& m_rows;
  csv_parser m_parser{};
  CsvRow m_row;
  std::uint64_t m_line = 0;
};

}  // namespace

bool ReadCsv(std::string_view text, std::vector<CsvRow>& rows) {
  Rows parsed(rows);
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
    if (!parsed.TakeLine(text.substr(0, end))) {
      parsed.TellFault();
      return false;
    }
    text.remove_prefix(end);
  }
  if (!parsed.Finish()) {
    parsed.TellFault();
    return false;
  }
  return true;
}

}  // namespace pxd::tool
