#include "point_table.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#include "moment.h"

namespace pxd::tool {
namespace {

// A column of the table is as wide as its header, and wide enough for a price of 7 digits.
constexpr std::size_t kNarrowest = 9;

std::string CsvText(CDPDataPt& point, unsigned int column) {
  CDPValue value;
  point.GetDPValueForCol(column, value);
  if (point.GetDataTypeForCol(column) == CDPDataPt::DataTypeTickDir) {
    return fmt::format("{}", value.GetLong());
  }
  return fmt::format("{}", value.GetFloat());
}

}  // namespace

PointTable::PointTable(PointForm form, CDPDataPt& point) : m_form(form) {
  m_header = form == PointForm::kCsv ? "Date,Time" : fmt::format("{:<10}  {:<8}", "Date", "Time");
  for (unsigned int column = 0; column < point.GetNumCols(); ++column) {
    const std::string header = point.GetStringHeaderForCol(column).Str();
    m_widths.push_back(std::max(header.size(), kNarrowest));
    AppendCell(m_header, column, header);
  }
  m_header += '\n';
}

const std::string& PointTable::Line(CDPDataPt& point) {
  unsigned short date = 0;
  unsigned long time = 0;
  point.GetDPDateTime(date, time);
  const std::string dateText = DateText(CZRDate(date));
  const std::string timeText = TimeText(CZRTime(static_cast<unsigned>(time)));
  const bool csv = m_form == PointForm::kCsv;
  m_line = csv ? fmt::format("{},{}", dateText, timeText)
               : fmt::format("{:<10}  {:<8}", dateText, timeText);
  for (unsigned int column = 0; column < m_widths.size(); ++column) {
    AppendCell(m_line, column,
               csv ? CsvText(point, column) : point.GetStringValForCol(column).Str());
  }
  m_line += '\n';
  return m_line;
}

void PointTable::AppendCell(std::string& line, std::size_t column, const std::string& text) const {
  line += m_form == PointForm::kCsv ? fmt::format(",{}", text)
                                    : fmt::format("  {:>{}}", text, m_widths[column]);
}

}  // namespace pxd::tool
