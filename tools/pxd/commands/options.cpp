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

Option SeriesFile(std::string& file) {
  return {.names = "FILE",
          .target = &file,
          .help = "The stored series",
          .isRequired = true,
          .takesFile = true};
}

Option SeriesResolution(SeriesOptions& options) {
  return {.names = "--resolution",
          .target = &options.resolution,
          .help = "The resolution of the series, as \"5 Minutes\" or 5m",
          .valueName = "TEXT",
          .isRequired = true};
}

Option SeriesField(SeriesOptions& options) {
  return {.names = "--field",
          .target = &options.field,
          .help = "The field that is stored, a name or an id ('pxd fields'; Trade Record)",
          .valueName = "FIELD"};
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
