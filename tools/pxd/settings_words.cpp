#include "settings_words.h"

#include <fmt/format.h>

#include <cstdint>
#include <optional>

#include "resolution_words.h"
#include "words.h"

namespace pxd::tool {
namespace {

// A pair packs its quantity into 12 bits and its days are a 16-bit word.
constexpr std::uint16_t kMostQuantity = 4095;
constexpr std::uint16_t kMostDays = 65535;

constexpr std::size_t kItems = 5;

CFieldHistorySetting SettingOf(const CZRGSFieldInfo& row, std::uint16_t unit,
                               std::uint16_t quantity, std::uint16_t days) {
  return {ZRGS_FIELD_HISTORY_SETTINGS{{row.GetFieldID(), {unit, quantity}}, days}};
}

// One line of the machine form.
bool ReadMachineLine(const BuiltInCatalogue& catalogue, std::string_view text, std::size_t number,
                     SettingsText& out, std::string& error) {
  const auto fail = [&](const std::string& what) {
    error = fmt::format("line {}, {}: {}", number, Quoted(text), what);
    return false;
  };
  const auto items = Split(text, ',');
  if (items.size() != kItems) {
    return fail(
        fmt::format("has {} items; expected id, name, quantity, unit and days, with no comma "
                    "in the name",
                    items.size()));
  }
  const auto id = WholeNumber<std::uint16_t>(items[0], 0xFFFF);
  const CZRGSFieldInfo* row = id ? catalogue.Find(*id) : nullptr;
  if (row == nullptr) {
    return fail(fmt::format("the catalogue has no field {}", Quoted(items[0])));
  }
  const auto quantity = WholeNumber<std::uint16_t>(items[2], kMostQuantity);
  if (!quantity || *quantity == 0) {
    return fail(
        fmt::format("{} is no quantity; expected 1 to {}", Quoted(items[2]), kMostQuantity));
  }
  const auto unit = WholeNumber<std::uint16_t>(items[3], kUnitYear);
  if (!unit || *unit == 0) {
    return fail(fmt::format("{} is no unit; expected 1 (Tick) to {} (Year)", Quoted(items[3]),
                            unsigned{kUnitYear}));
  }
  const auto days = WholeNumber<std::uint16_t>(items[4], kMostDays);
  if (!days) {
    return fail(
        fmt::format("{} is no number of days; expected 0 to {}", Quoted(items[4]), kMostDays));
  }
  if (items[1] != row->Description().Str()) {
    out.notes.push_back(fmt::format("line {}: field {} is called \"{}\", not {}", number, *id,
                                    row->Description().Str(), Quoted(items[1])));
  }
  out.lines.push_back(SettingOf(*row, *unit, *quantity, *days));
  return true;
}

// Takes what stands behind the last comma off the text.
std::string_view TakeLast(std::string_view& text) {
  const std::size_t comma = text.rfind(',');
  if (comma == std::string_view::npos) {
    return {};
  }
  const std::string_view last = Trim(text.substr(comma + 1));
  text = Trim(text.substr(0, comma));
  return last;
}

}  // namespace

bool ReadSettings(const BuiltInCatalogue& catalogue, std::string_view text, SettingsText& out,
                  std::string& error) {
  std::optional<std::size_t> told;
  if (const std::size_t colon = text.find(':'); colon != std::string_view::npos) {
    told = WholeNumber<std::size_t>(Trim(text.substr(0, colon)), kMostDays);
    if (!told) {
      error = fmt::format("{} is no count; expected the number of lines ahead of the colon",
                          Quoted(text.substr(0, colon)));
      return false;
    }
    text.remove_prefix(colon + 1);
  }
  text = Trim(text);
  if (!text.empty() && text.back() == ';') {
    text.remove_suffix(1);
  }
  if (!text.empty()) {
    for (const std::string_view line : Split(text, ';')) {
      if (!ReadMachineLine(catalogue, line, out.lines.size() + 1, out, error)) {
        return false;
      }
    }
  }
  if (told && *told != out.lines.size()) {
    out.notes.push_back(
        fmt::format("the text tells of {} lines and has {}", *told, out.lines.size()));
  }
  return true;
}

bool ReadPair(const BuiltInCatalogue& catalogue, std::string_view text, CFieldResoln& out,
              std::string& error) {
  std::string_view field = Trim(text);
  const std::string_view resolutionText = TakeLast(field);
  const CZRGSFieldInfo* row = catalogue.Find(field);
  if (row == nullptr) {
    error = fmt::format(
        "{}: {} is no field of the catalogue; expected a name or an id that 'pxd "
        "fields' lists",
        Quoted(text), Quoted(field));
    return false;
  }
  CResoln resolution;
  if (!ReadResolution(resolutionText, resolution, error)) {
    error = fmt::format("{}: {}", Quoted(text), error);
    return false;
  }
  if (resolution.GetResolnQty() > kMostQuantity) {
    error = fmt::format("{}: a setting's quantity is at most {}", Quoted(text), kMostQuantity);
    return false;
  }
  out.SetField(CField(row->GetFieldID()));
  out.SetResoln(resolution);
  return true;
}

bool ReadSetting(const BuiltInCatalogue& catalogue, std::string_view text,
                 CFieldHistorySetting& out, std::string& error) {
  std::string_view pairText = Trim(text);
  const std::string_view daysText = TakeLast(pairText);
  const auto days = WholeNumber<std::uint16_t>(daysText, kMostDays);
  if (!days) {
    error = fmt::format(
        "{}: {} is no number of days; expected FIELD, RESOLUTION, DAYS with 0 to {} "
        "days",
        Quoted(text), Quoted(daysText), kMostDays);
    return false;
  }
  CFieldResoln pair;
  if (!ReadPair(catalogue, pairText, pair, error)) {
    return false;
  }
  out.SetFieldResoln(pair);
  out.SetNumDays(*days);
  return true;
}

}  // namespace pxd::tool
