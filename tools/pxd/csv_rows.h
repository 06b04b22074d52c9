// Rows of a short CSV text.
#ifndef PXDUTIL_TOOLS_PXD_CSV_ROWS_H
#define PXDUTIL_TOOLS_PXD_CSV_ROWS_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace pxd::tool {

struct CsvRow {
  std::uint64_t line = 0;  // where it starts, from 1
  std::vector<std::string> fields;
};

// Splits the text into its rows; fields may be quoted. Lines that are blank are no rows. False
// where a quotation mark stands where none may; `rows` are then those before it, and the last of
// them holds only the line of the fault.
bool ReadCsv(std::string_view text, std::vector<CsvRow>& rows);

}  // namespace pxd::tool

#endif
