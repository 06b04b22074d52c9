#include "resolution_words.h"

#include <algorithm>
#include <cstdint>

#include "words.h"

namespace pxd::tool {
namespace {

struct UnitWords {
  ResolutionUnit unit;
  std::string_view shortForm;
  std::string_view otherForm;
};

// The long names come from the library.
constexpr UnitWords kUnits[] = {
    {kUnitTick, "t", "t"},    {kUnitSecond, "s", "sec"}, {kUnitMinute, "m", "min"},
    {kUnitDay, "d", "d"},     {kUnitWeek, "w", "w"},     {kUnitMonth, "mo", "mon"},
    {kUnitYear, "y", "year"},
};

bool Names(std::string_view word, const UnitWords& unit) {
  const std::string name = CResoln::GetStringForResolnUnit(unit.unit).Str();
  return EqualNoCase(word, unit.shortForm) || EqualNoCase(word, unit.otherForm) ||
         EqualNoCase(word, name) || EqualNoCase(word, name + "s");
}

}  // namespace

bool ReadResolution(std::string_view text, CResoln& out, std::string& error) {
  const std::string_view whole = Trim(text);
  const std::size_t digits = std::min(whole.find_first_not_of("0123456789"), whole.size());
  const auto quantity = WholeNumber<std::uint32_t>(whole.substr(0, digits), 0xFFFF);
  const std::string_view word = Trim(whole.substr(digits));
  const auto* unit = std::find_if(std::begin(kUnits), std::end(kUnits),
                                  [word](const UnitWords& row) { return Names(word, row); });
  if (!quantity || *quantity == 0 || unit == std::end(kUnits)) {
    error = Quoted(text) +
            " is no resolution; expected a number of 1 to 65535 and a unit, such as \"5 Minutes\", "
            "\"1 Day\", 1t, 30s, 5m, 1d, 1w or 1mo";
    return false;
  }
  out = CResoln(ZRGS_RESOLUTION{unit->unit, static_cast<std::uint16_t>(*quantity)});
  return true;
}

std::string ResolutionText(const CResoln& resolution) {
  CString text;
  resolution.GetStringForResolution(text);
  return text.Str();
}

}  // namespace pxd::tool
