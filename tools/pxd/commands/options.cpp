#include <CLI/CLI.hpp>

#include "../failure.h"
#include "../resolution_words.h"
#include "../session_words.h"
#include "../streams.h"
#include "commands.h"

namespace pxd::tool {

ZRGS_SESSION SessionsOption(const std::string& option, const std::string& text) {
  ZRGS_SESSION week;
  std::string error;
  if (!ReadSessions(text, week, error)) {
    throw Failure(kExitBadUsage, option + ": " + error);
  }
  return week;
}

CResoln ResolutionOption(const std::string& text) {
  CResoln resolution;
  std::string error;
  if (!ReadResolution(text, resolution, error)) {
    throw Failure(kExitBadUsage, "--resolution: " + error);
  }
  return resolution;
}

void AddSeriesOptions(CLI::App& command, SeriesOptions& options) {
  command
      .add_option("--resolution", options.resolution,
                  "The resolution of the series, as \"5 Minutes\" or 5m")
      ->required()
      ->type_name("TEXT");
  command
      .add_option("--field", options.field,
                  "The field that is stored, a name or an id ('pxd fields'; Trade Record)")
      ->type_name("FIELD");
}

CFieldResoln PairOf(const BuiltInCatalogue& catalogue, const SeriesOptions& options) {
  CFieldResoln pair;
  pair.SetField(CField(catalogue.FieldOption("--field", options.field).GetFieldID()));
  pair.SetResoln(ResolutionOption(options.resolution));
  return pair;
}

void Print(const std::string& text) {
  Output output;
  output.Write(text);
  output.Finish();
}

}  // namespace pxd::tool
