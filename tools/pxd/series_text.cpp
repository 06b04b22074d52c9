#include "series_text.h"

#include "streams.h"
#include "text_target.h"

namespace pxd::tool {

ExitStatus WriteSeries(SeriesReader& series, PointForm form, std::uint64_t count,
                       const std::string& path) {
  PointTable table(form, series.Point());
  const auto target = MakeTextTarget(path);
  target->Take(table.Header());
  for (std::uint64_t written = 0; written < count; ++written) {
    CDPDataPt* point = series.Next();
    if (point == nullptr) {
      break;
    }
    target->Take(table.Line(*point));
  }
  target->Take(table.Footer());
  target->Finish();
  if (const std::string what = series.WhatIsCutShort(); !what.empty()) {
    Say(what);
    return kExitBadData;
  }
  return kExitOk;
}

}  // namespace pxd::tool
