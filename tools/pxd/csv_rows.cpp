#include "csv_rows.h"

#include <limits>

#include "csv_scanner.h"

namespace pxd::tool {

bool ReadCsv(std::string_view text, std::vector<CsvRow>& rows) {
  CsvScanner csv(std::numeric_limits<std::size_t>::max());
  csv.Give(text);
  while (csv.Next() || csv.Finish()) {
    rows.push_back({csv.Line(), {csv.Fields().begin(), csv.Fields().end()}});
    if (csv.RowFault() != CsvScanner::Fault::kNone) {
      return false;
    }
  }
  return true;
}

}  // namespace pxd::tool
