// Points as lines of text, by the walk over their columns: a table for people, or CSV.
#ifndef PXDUTIL_TOOLS_PXD_POINT_TABLE_H
#define PXDUTIL_TOOLS_PXD_POINT_TABLE_H

#include <string>
#include <vector>

#include <pxdutil/datapoints/data_point.h>

namespace pxd::tool {

enum class PointForm {
  kTable,  // aligned, prices with 7 digits as the library shows them
  kCsv,    // ISO date and time, and as many digits as bring each float back
};

class PointTable {
 public:
  // `point` is of the class whose columns the lines have.
  PointTable(PointForm form, CDPDataPt& point);

  // The line of headers, with its end.
  [[nodiscard]] const std::string& Header() const { return m_header; }
  // The point's line, with its end; valid until the next call.
  const std::string& Line(CDPDataPt& point);

 private:
  void AppendCell(std::string& line, std::size_t column, const std::string& text) const;

  PointForm m_form;
  std::vector<std::size_t> m_widths;
  std::string m_header;
  std::string m_line;
};

}  // namespace pxd::tool

#endif
