#include "point_table.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <string_view>

#include "moment.h"

namespace pxd::tool {
namespace {

// A column of the table is as wide as its header, and wide enough for a price of 7 digits.
constexpr std::size_t kNarrowest = 9;

// A float has as many digits as bring it back, and no more.
std::string ExactText(CDPDataPt& point, unsigned int column) {
  CDPValue value;
  point.GetDPValueForCol(column, value);
  if (point.GetDataTypeForCol(column) == CDPDataPt::DataTypeTickDir) {
    return fmt::format("{}", value.GetLong());
  }
  const float number = value.GetFloat();
  // Readers that take "-0" for a whole number would lose its sign.
  return number == 0.0F && std::signbit(number) ? "-0.0" : fmt::format("{}", number);
}

}  // namespace

PointTable::PointTable(PointForm form, CDPDataPt& point) : m_form(form) {
  for (unsigned int column = 0; column < point.GetNumCols(); ++column) {
    m_names.push_back(point.GetStringHeaderForCol(column).Str());
    m_widths.push_back(std::max(m_names.back().size(), kNarrowest));
  }
  if (form == PointForm::kJson) {
    m_header = "[";
    return;
  }
  m_header = form == PointForm::kCsv ? "Date,Time" : fmt::format("{:<10}  {:<8}", "Date", "Time");
  for (std::size_t column = 0; column < m_names.size(); ++column) {
    AppendCell(m_header, column, m_names[column]);
  }
  m_header += '\n';
}

const std::string& PointTable::Line(CDPDataPt& point) {
  unsigned short date = 0;
  unsigned long time = 0;
  point.GetDPDateTime(date, time);
  const std::string dateText = DateText(CZRDate(date));
  const std::string timeText = TimeText(CZRTime(static_cast<unsigned>(time)));
  if (m_form == PointForm::kJson) {
    WriteJson(point, dateText, timeText);
    return m_line;
  }
  const bool csv = m_form == PointForm::kCsv;
  m_line = csv ? fmt::format("{},{}", dateText, timeText)
               : fmt::format("{:<10}  {:<8}", dateText, timeText);
  for (unsigned int column = 0; column < m_widths.size(); ++column) {
    AppendCell(m_line, column,
               csv ? ExactText(point, column) : point.GetStringValForCol(column).Str());
  }
  m_line += '\n';
  return m_line;
}

std::string_view PointTable::Footer() const {
  return m_form == PointForm::kJson ? "\n]\n" : "";
}

void PointTable::AppendCell(std::string& line, std::size_t column, const std::string& text) const {
  line += m_form == PointForm::kCsv ? fmt::format(",{}", text)
                                    : fmt::format("  {:>{}}", text, m_widths[column]);
}

// Written here, a line a point: a series is too long to be built in memory first, and a library of
// JSON writes the digits of a double. Neither names nor texts hold anything that JSON would escape.
void PointTable::WriteJson(CDPDataPt& point, const std::string& date, const std::string& time) {
  const auto quoted = [](const std::string& text) {
    return text == "null" ? text : fmt::format("\"{}\"", text);
  };
  m_line = m_isFirst ? "\n" : ",\n";
  m_isFirst = false;
  m_line += fmt::format("  {{\"Date\": {}, \"Time\": {}", quoted(date), quoted(time));
  for (unsigned int column = 0; column < m_names.size(); ++column) {
    const std::string text = ExactText(point, column);
    // Infinities and what is no number have no digits, which JSON wants.
    const bool hasDigits = text.find_first_of("0123456789") != std::string::npos;
    m_line += fmt::format(", \"{}\": {}", m_names[column], hasDigits ? text : quoted(text));
  }
  m_line += '}';
}

}  // namespace pxd::tool
