// pxd fields: the field catalogue, and the check of a catalogue file.
#include <fmt/format.h>

#include <memory>
#include <optional>
#include <string>

#include "../catalogue.h"
#include "../catalogue_check.h"
#include "../failure.h"
#include "../field_words.h"
#include "../streams.h"
#include "../words.h"
#include "commands.h"

namespace pxd::tool {
namespace {

struct FieldsSettings {
  std::optional<unsigned> id;
  std::string name;
  std::string resolutions;
  std::string write;
  std::string check;
  bool storable = false;
  bool json = false;
};

void PrintOne(const FieldsSettings& settings, const BuiltInCatalogue& catalogue,
              const CZRGSFieldInfo& row) {
  Print(settings.json ? FieldCardJson(catalogue, row) : FieldCard(catalogue, row));
}

void PrintById(const FieldsSettings& settings, const BuiltInCatalogue& catalogue) {
  const CZRGSFieldInfo* row =
      *settings.id > 0xFFFF ? nullptr : catalogue.Find(static_cast<unsigned short>(*settings.id));
  if (row == nullptr) {
    throw Failure(kExitBadData, fmt::format("--id: the catalogue has no field {}", *settings.id));
  }
  PrintOne(settings, catalogue, *row);
}

// All whose names hold the text; where one is called just so, that one alone.
void PrintByName(const FieldsSettings& settings, const BuiltInCatalogue& catalogue) {
  const std::string wanted = Lower(Trim(settings.name));
  std::vector<const CZRGSFieldInfo*> found;
  for (const CZRGSFieldInfo* row : catalogue.Rows(false)) {
    const std::string name = Lower(row->Description().Str());
    if (name == wanted) {
      PrintOne(settings, catalogue, *row);
      return;
    }
    if (name.find(wanted) != std::string::npos) {
      found.push_back(row);
    }
  }
  if (found.empty()) {
    throw Failure(kExitBadData,
                  fmt::format("--name: the catalogue has no field with {} in its name",
                              Quoted(settings.name)));
  }
  Print(settings.json ? FieldTableJson(catalogue, found) : FieldTable(found));
}

void PrintResolutions(const FieldsSettings& settings, const BuiltInCatalogue& catalogue) {
  const CZRGSFieldInfo& row = catalogue.FieldOption("--resolutions", settings.resolutions);
  if (settings.json) {
    Print(ResolutionsJson(row));
    return;
  }
  const std::string lines = ResolutionLines(row);
  if (lines.empty()) {
    Say(fmt::format("{} is stored in no resolution", Quoted(row.Description().Str())));
  }
  Print(lines);
}

void WriteFile(const std::string& path, BuiltInCatalogue& catalogue) {
  if (!catalogue.WriteFile(path)) {
    throw Failure(kExitBadData, fmt::format("{}: the catalogue can't be written there", path));
  }
  Say(fmt::format("{}: the catalogue is there, {} fields", path, catalogue.Rows(false).size()));
}

int CheckFile(const std::string& path, BuiltInCatalogue& catalogue) {
  const CatalogueVerdict verdict = CheckCatalogue(path, catalogue.FileLines());
  if (!verdict.isGood) {
    Say(verdict.words);
    return kExitBadData;
  }
  Print(verdict.words + '\n');
  return kExitOk;
}

int RunFields(const FieldsSettings& settings) {
  BuiltInCatalogue catalogue;
  if (!settings.write.empty()) {
    WriteFile(settings.write, catalogue);
  } else if (!settings.check.empty()) {
    return CheckFile(settings.check, catalogue);
  } else if (settings.id) {
    PrintById(settings, catalogue);
  } else if (!settings.name.empty()) {
    PrintByName(settings, catalogue);
  } else if (!settings.resolutions.empty()) {
    PrintResolutions(settings, catalogue);
  } else {
    const auto rows = catalogue.Rows(settings.storable);
    Print(settings.json ? FieldTableJson(catalogue, rows) : FieldTable(rows));
  }
  return kExitOk;
}

}  // namespace

Command FieldsCommand() {
  auto settings = std::make_shared<FieldsSettings>();
  return {
      .name = "fields",
      .summary = "Show the field catalogue, check a file of it",
      .notes =
          "Flags: storable, may be the subject of a history setting; snapshot, its current value\n"
          "belongs in a symbol's snapshot; split, distribution, price multiplier and volume\n"
          "multiplier, values of the past are restated for these.",
      .options = {{.names = "--json",
                   .target = &settings->json,
                   .help = "JSON instead of a table"}},
      .choice =
          OptionChoice{
              .title = "What to show",
              .help = "All fields, or one of",
              .options = {{.names = "--id",
                           .target = &settings->id,
                           .help = "The field of this id",
                           .valueName = "N",
                           .limits = OptionLimits()},
                          {.names = "--name",
                           .target = &settings->name,
                           .help = "The field of this name, or those with it in theirs",
                           .valueName = "TEXT"},
                          {.names = "--storable",
                           .target = &settings->storable,
                           .help = "The fields whose history may be stored"},
                          {.names = "--resolutions",
                           .target = &settings->resolutions,
                           .help = "The resolutions in which this field, a name or an id, is "
                                   "stored",
                           .valueName = "FIELD"},
                          {.names = "--write",
                           .target = &settings->write,
                           .help = "Write the catalogue file; one that is good already stays as it "
                                   "is",
                           .valueName = "FILE",
                           .takesFile = true},
                          {.names = "--check",
                           .target = &settings->check,
                           .help = "Say what is wrong with a catalogue file",
                           .valueName = "FILE",
                           .takesFile = true}}},
      .run = [settings] { return RunFields(*settings); },
  };
}

}  // namespace pxd::tool
