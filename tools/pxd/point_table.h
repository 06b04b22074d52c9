// Points as lines of text, by the walk over their columns: a table for people, CSV or JSON.
#ifndef PXDUTIL_TOOLS_PXD_POINT_TABLE_H
#define PXDUTIL_TOOLS_PXD_POINT_TABLE_H

#include <string>
#include <string_view>
#include <vector>

#include <pxdutil/datapoints/data_point.h>

namespace pxd::tool {

enum class PointForm {
  kTable,  // aligned, prices with 7 digits as the library shows them
  kCsv,    // ISO date and time, and as many digits as bring each float back
  kJson,   // an array of objects with the same digits; a null date or time is null, and floats that
           // are no number are the texts "inf", "-inf" and "nan"
};

class PointTable {
 public:
  // `point` is of the class whose columns the lines have.
  PointTable(PointForm form, CDPDataPt& point);

  // What stands ahead of the first point.
  [[nodiscard]] const std::string& Header() const { return m_header; }
  // The point's line; valid until the next call.
  const std::string& Line(CDPDataPt& point);
  // What stands behind the last point.
  [[nodiscard]] std::string_view Footer() const;

 private:
  void AppendCell(std::string& line, std::size_t column, const std::string& text) const;
  void WriteJson(CDPDataPt& point, const std::string& date, const std::string& time);

  PointForm m_form;
  bool m_isFirst = true;
  std::vector<std::string> m_names;
  std::vector<std::size_t> m_widths;
  std::string m_header;
  std::string m_line;
};

}  // namespace pxd::tool

#endif
