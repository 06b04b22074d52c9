// pxd settings: which fields are kept at which resolutions, checked and shown in every form.
#include <fmt/format.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "../failure.h"
#include "../settings_words.h"
#include "../streams.h"
#include "commands.h"

namespace pxd::tool {
namespace {

constexpr unsigned kMostKind = 8;
constexpr int kMostLines = 30;

struct SettingsSettings {
  std::optional<std::string> text;
  std::optional<unsigned> kind;
  std::vector<std::string> add;
  std::vector<std::string> remove;
};

// Adds the line; what happened to it, if it wasn't simply added, goes to `notes`.
void Add(CHistorySettings& table, const CFieldHistorySetting& line,
         std::vector<std::string>& notes) {
  const std::string name = line.GetFieldResoln().GetString(StringFormatPlain).Str();
  const int result = table.AddSetting(line);
  if (result == CHistorySettings::kTableFull) {
    throw Failure(kExitBadData, fmt::format("\"{}\" has no room: a table has at most {} lines",
                                            name, kMostLines));
  }
  if (result == CHistorySettings::kAlreadyThere) {
    const int index = table.GetSettingIdx(line.GetFieldResoln());
    notes.push_back(fmt::format("\"{}\" stands there twice; the larger number of days holds, {}",
                                name, table.GetSetting(index).GetNumDays()));
  }
}

// Builds the table anew without the line: the table's own removal moves all lines but the last.
void Remove(CHistorySettings& table, const CFieldResoln& pair) {
  const int index = table.GetSettingIdx(pair);
  if (index < 0) {
    throw Failure(kExitBadData, fmt::format("--remove: the settings have no \"{}\"",
                                            pair.GetString(StringFormatPlain).GetString()));
  }
  const CHistorySettings all = table;
  table.RemoveAllSettings();
  for (int i = 0; i < all.GetCount(); ++i) {
    if (i != index) {
      table.AddSetting(all.GetSetting(i));
    }
  }
}

CHistorySettings TableOf(const SettingsSettings& settings, const BuiltInCatalogue& catalogue,
                         std::vector<std::string>& notes) {
  CHistorySettings table;
  if (settings.kind) {
    table.CreateDefaultSettings(static_cast<unsigned char>(*settings.kind));
  }
  std::string error;
  if (settings.text) {
    SettingsText text;
    if (!ReadSettings(catalogue, *settings.text, text, error)) {
      throw Failure(kExitBadUsage, error);
    }
    notes = text.notes;
    for (const CFieldHistorySetting& line : text.lines) {
      Add(table, line, notes);
    }
  }
  for (const std::string& text : settings.add) {
    CFieldHistorySetting line;
    if (!ReadSetting(catalogue, text, line, error)) {
      throw Failure(kExitBadUsage, "--add: " + error);
    }
    Add(table, line, notes);
  }
  for (const std::string& text : settings.remove) {
    CFieldResoln pair;
    if (!ReadPair(catalogue, text, pair, error)) {
      throw Failure(kExitBadUsage, "--remove: " + error);
    }
    Remove(table, pair);
  }
  table.SortSettings();
  return table;
}

void NoteUnstorable(const CHistorySettings& table, const BuiltInCatalogue& catalogue,
                    std::vector<std::string>& notes) {
  for (int i = 0; i < table.GetCount(); ++i) {
    const auto id = table.GetSetting(i).GetFieldResoln().GetField().GetFieldVal();
    if (const CZRGSFieldInfo* row = catalogue.Find(id);
        row != nullptr && row->GetIsStorable() == 0) {
      notes.push_back(fmt::format("field {} \"{}\" isn't among those that users may store", id,
                                  row->Description().Str()));
    }
  }
}

std::string FieldLine(const BuiltInCatalogue& catalogue, unsigned short id) {
  return fmt::format("  {:>4} {}\n", id, FieldName(catalogue, id));
}

// The fields without which no history can be written, and those that come with them.
std::string NeedsText(const CHistorySettings& table, const BuiltInCatalogue& catalogue) {
  std::vector<unsigned short> ids(0xFFFF);
  ids.resize(static_cast<std::size_t>(
      table.GetFieldIDListNeededForHistory(ids.data(), static_cast<int>(ids.size()))));
  std::string text = "\nA quote must carry:\n";
  std::vector<bool> isPart(0x10000, false);
  for (const unsigned short id : ids) {
    text += FieldLine(catalogue, id);
    isPart[id] = true;
  }
  if (ids.empty()) {
    text += "  nothing\n";
  }
  std::string updated;
  for (unsigned id = 0; id < isPart.size(); ++id) {
    const auto field = static_cast<unsigned short>(id);
    if (!isPart[id] && table.IsFieldIDNeededForHistory(field) != 0) {
      updated += FieldLine(catalogue, field);
    }
  }
  if (!updated.empty()) {
    text += "\nIts bars also update:\n" + updated;
  }
  return text;
}

void RunSettings(const SettingsSettings& settings) {
  if (!settings.text && !settings.kind && settings.add.empty()) {
    throw Failure(kExitBadUsage, "expected settings: a text, --default or --add");
  }
  const BuiltInCatalogue catalogue;
  std::vector<std::string> notes;
  const CHistorySettings table = TableOf(settings, catalogue, notes);
  NoteUnstorable(table, catalogue, notes);

  std::string text = fmt::format("Settings of {} lines, in order:\n", table.GetCount());
  for (int i = 0; i < table.GetCount(); ++i) {
    text += fmt::format("  {}\n", table.GetSetting(i).GetString(StringFormatTabbed).GetString());
  }
  text +=
      fmt::format("\nPlain form:   {}\n", table.GetString(StringFormatPlain, false).GetString());
  text +=
      fmt::format("Machine form: {}\n", table.GetString(StringFormatMachine, false).GetString());
  text += NeedsText(table, catalogue);
  for (const std::string& note : notes) {
    Say("note: " + note);
  }
  Print(text);
}

}  // namespace

Command SettingsCommand() {
  auto settings = std::make_shared<SettingsSettings>();
  return {
      .name = "settings",
      .summary = "Check and show history settings",
      .notes =
          "TEXT is the machine form that a host stores, lines of id, name, quantity, unit code "
          "and\n"
          "days: \"2:201,Trade Record,1,4,50000;201,Trade Record,5,3,1000\". Unit codes are 1 "
          "Tick,\n"
          "2 Second, 3 Minute, 4 Day, 5 Week, 6 Month and 7 Year. The default lines come first, "
          "then\n"
          "TEXT, then --add; --remove comes last. Of a field and resolution that stands there "
          "twice\n"
          "the larger number of days holds. A table has at most 30 lines.",
      .options = {{.names = "TEXT", .target = &settings->text, .help = "The settings to read"},
                  {.names = "--default",
                   .target = &settings->kind,
                   .help = "Begin with the lines of a kind of symbol, 0 to 8",
                   .valueName = "KIND",
                   .limits = OptionLimits{.least = 0, .most = kMostKind}},
                  {.names = "--add",
                   .target = &settings->add,
                   .help = "Add \"FIELD, RESOLUTION, DAYS\"; may be repeated",
                   .valueName = "TEXT"},
                  {.names = "--remove",
                   .target = &settings->remove,
                   .help = "Leave out \"FIELD, RESOLUTION\"; may be repeated",
                   .valueName = "TEXT"}},
      .run =
          [settings] {
            RunSettings(*settings);
            return kExitOk;
          },
  };
}

}  // namespace pxd::tool
