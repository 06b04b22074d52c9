// How wide a bar is, as people write it: "5 Minutes", "1 Day", or short 30s, 5m, 1d, 1w, 1mo.
#ifndef PXDUTIL_TOOLS_PXD_RESOLUTION_WORDS_H
#define PXDUTIL_TOOLS_PXD_RESOLUTION_WORDS_H

#include <string>
#include <string_view>

#include <pxdutil/sessions/resolution.h>

namespace pxd::tool {

// The unit codes of CResoln.
enum ResolutionUnit : unsigned short {
  kUnitTick = 1,
  kUnitSecond = 2,
  kUnitMinute = 3,
  kUnitDay = 4,
  kUnitWeek = 5,
  kUnitMonth = 6,
  kUnitYear = 7,
};

// A quantity of 1 to 65535 and a unit, in letters of either case, with or without a blank between
// them. The unit is a name in the singular or plural, or t, s, m, d, w, mo, y. On any other text
// the result is false, `out` stays as it was and `error` says what was expected.
bool ReadResolution(std::string_view text, CResoln& out, std::string& error);

// "5 Minutes".
std::string ResolutionText(const CResoln& resolution);

}  // namespace pxd::tool

#endif
