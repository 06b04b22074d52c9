#include "field_words.h"

#include <fmt/format.h>

#include <array>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string_view>

#include "resolution_words.h"

namespace pxd::tool {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::array<std::string_view, 4> kValues = {"number", "text", "date", "time"};
constexpr std::array<std::string_view, 5> kKinds = {"price", "volume", "no history", "record",
                                                    "count"};

template <std::size_t N>
std::string WordOr(const std::array<std::string_view, N>& words, unsigned char code) {
  return code < N ? std::string(words[code]) : fmt::format("{}", code);
}

struct FlagWord {
  int (CZRGSFieldInfo::*get)() const;
  std::string_view word;
};
constexpr std::array<FlagWord, 7> kFlags = {{
    {&CZRGSFieldInfo::GetIsStorable, "storable"},
    {&CZRGSFieldInfo::GetStoreInSnapshot, "snapshot"},
    {&CZRGSFieldInfo::GetIsProvidedByServer, "from the server"},
    {&CZRGSFieldInfo::GetIsAffectedByStockSplit, "split"},
    {&CZRGSFieldInfo::GetIsAffectedByDistribution, "distribution"},
    {&CZRGSFieldInfo::GetIsAffectedByPriceMultiplier, "price multiplier"},
    {&CZRGSFieldInfo::GetIsAffectedByVolumeMultiplier, "volume multiplier"},
}};

std::vector<std::string> FlagWords(const CZRGSFieldInfo& row) {
  std::vector<std::string> words;
  for (const FlagWord& flag : kFlags) {
    if ((row.*flag.get)() != 0) {
      words.emplace_back(flag.word);
    }
  }
  return words;
}

std::string Joined(const std::vector<std::string>& words) {
  return words.empty() ? "-" : fmt::format("{}", fmt::join(words, ", "));
}

struct Update {
  CResoln resolution;
  const CZRListEx<CField>* fields;
};

// A row doesn't list the resolutions for which it has an update list; it answers for each.
std::vector<Update> UpdatesOf(const CZRGSFieldInfo& row) {
  std::vector<Update> updates;
  for (std::uint16_t unit = kUnitTick; unit <= kUnitYear; ++unit) {
    const CResoln resolution(ZRGS_RESOLUTION{unit, 1});
    if (const CZRListEx<CField>* fields = row.GetUpdateFieldIDListPtr(resolution)) {
      updates.push_back({resolution, fields});
    }
  }
  return updates;
}

std::vector<CResoln> ResolutionsOf(const CZRGSFieldInfo& row) {
  CZRListEx<CResoln> list(10);
  CFieldInfoMgr::m_pInstance->GetResolutionsForField(row.GetFieldID(), list);
  return {list.begin(), list.end()};
}

std::string NamesOf(const BuiltInCatalogue& catalogue, const CZRListEx<CField>& fields) {
  std::vector<std::string> names;
  for (const CField& field : fields) {
    names.push_back(
        fmt::format("{} {}", field.GetFieldVal(), FieldName(catalogue, field.GetFieldVal())));
  }
  return Joined(names);
}

std::string StorageText(const CStorageSetting& setting) {
  std::vector<std::string> names;
  for (const CResoln& resolution : setting.GetResolnList()) {
    names.push_back(ResolutionText(resolution));
  }
  return fmt::format("{} (data point {})", Joined(names), setting.GetDataPtID());
}

Json ResolutionJson(const CResoln& resolution) {
  return {{"name", ResolutionText(resolution)},
          {"unit", resolution.GetResolnUnit()},
          {"quantity", resolution.GetResolnQty()}};
}

Json FieldsJson(const BuiltInCatalogue& catalogue, const CZRListEx<CField>& fields) {
  Json array = Json::array();
  for (const CField& field : fields) {
    array.push_back(
        {{"id", field.GetFieldVal()}, {"name", FieldName(catalogue, field.GetFieldVal())}});
  }
  return array;
}

Json RowJson(const BuiltInCatalogue& catalogue, const CZRGSFieldInfo& row) {
  Json json = {{"id", row.GetFieldID()},
               {"name", row.Description().Str()},
               {"value", WordOr(kValues, row.GetFieldDataType())},
               {"kind", WordOr(kKinds, row.GetFieldType())},
               {"size", row.GetFieldSize()},
               {"flags", FlagWords(row)},
               {"made_of", FieldsJson(catalogue, row.GetAtomicFieldIDList())}};
  Json updates = Json::array();
  for (const Update& update : UpdatesOf(row)) {
    updates.push_back({{"resolution", ResolutionJson(update.resolution)},
                       {"fields", FieldsJson(catalogue, *update.fields)}});
  }
  json["updates"] = std::move(updates);
  Json stored = Json::array();
  for (const CStorageSetting& setting : row.GetStorageSettingList()) {
    Json resolutions = Json::array();
    for (const CResoln& resolution : setting.GetResolnList()) {
      resolutions.push_back(ResolutionJson(resolution));
    }
    stored.push_back({{"data_point", setting.GetDataPtID()}, {"resolutions", resolutions}});
  }
  json["stored"] = std::move(stored);
  return json;
}

std::string TextOf(const Json& json) {
  return json.dump(2) + '\n';
}

}  // namespace

std::string FieldTable(const std::vector<const CZRGSFieldInfo*>& rows) {
  std::string text =
      fmt::format("{:>4}  {:<26}  {:<6}  {:<10}  {}\n", "Id", "Name", "Value", "Kind", "Flags");
  for (const CZRGSFieldInfo* row : rows) {
    text += fmt::format("{:>4}  {:<26}  {:<6}  {:<10}  {}\n", row->GetFieldID(),
                        row->Description().Str(), WordOr(kValues, row->GetFieldDataType()),
                        WordOr(kKinds, row->GetFieldType()), Joined(FlagWords(*row)));
  }
  return text;
}

std::string FieldCard(const BuiltInCatalogue& catalogue, const CZRGSFieldInfo& row) {
  std::string text = fmt::format("{} {}\n", row.GetFieldID(), row.Description().Str());
  const auto line = [&text](std::string_view what, const std::string& words) {
    text += fmt::format("  {:<19} {}\n", what, words);
  };
  line("value", WordOr(kValues, row.GetFieldDataType()));
  line("kind", WordOr(kKinds, row.GetFieldType()));
  if (row.GetFieldSize() != 0) {
    line("size in bytes", fmt::format("{}", row.GetFieldSize()));
  }
  line("flags", Joined(FlagWords(row)));
  line("made of", NamesOf(catalogue, row.GetAtomicFieldIDList()));
  for (const Update& update : UpdatesOf(row)) {
    line("updated at " + ResolutionText(update.resolution), NamesOf(catalogue, *update.fields));
  }
  for (const CStorageSetting& setting : row.GetStorageSettingList()) {
    line("stored at", StorageText(setting));
  }
  return text;
}

std::string ResolutionLines(const CZRGSFieldInfo& row) {
  std::string text;
  for (const CResoln& resolution : ResolutionsOf(row)) {
    text += ResolutionText(resolution) + '\n';
  }
  return text;
}

std::string FieldTableJson(const BuiltInCatalogue& catalogue,
                           const std::vector<const CZRGSFieldInfo*>& rows) {
  Json array = Json::array();
  for (const CZRGSFieldInfo* row : rows) {
    array.push_back(RowJson(catalogue, *row));
  }
  return TextOf(array);
}

std::string FieldCardJson(const BuiltInCatalogue& catalogue, const CZRGSFieldInfo& row) {
  return TextOf(RowJson(catalogue, row));
}

std::string ResolutionsJson(const CZRGSFieldInfo& row) {
  Json array = Json::array();
  for (const CResoln& resolution : ResolutionsOf(row)) {
    array.push_back(ResolutionJson(resolution));
  }
  return TextOf(array);
}

}  // namespace pxd::tool
