// A stored series written as text.
#ifndef PXDUTIL_TOOLS_PXD_SERIES_TEXT_H
#define PXDUTIL_TOOLS_PXD_SERIES_TEXT_H

#include <cstdint>
#include <limits>
#include <string>

#include "failure.h"
#include "point_table.h"
#include "series_file.h"

namespace pxd::tool {

inline constexpr std::uint64_t kAllPoints = std::numeric_limits<std::uint64_t>::max();

// Writes the first `count` points to the file at `path`, or to standard output where that is empty.
// A series whose end is cut short is written up to there; that is said on standard error, and the
// result is kExitBadData.
ExitStatus WriteSeries(SeriesReader& series, PointForm form, std::uint64_t count,
                       const std::string& path);

}  // namespace pxd::tool

#endif
