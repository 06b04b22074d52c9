// pxd show: a stored series as a table or as CSV.
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>

#include "../failure.h"
#include "../point_table.h"
#include "../resolution_words.h"
#include "../series_file.h"
#include "../streams.h"
#include "commands.h"

namespace pxd::tool {
namespace {

struct ShowSettings {
  std::string file;
  std::string resolution;
  bool old = false;
  bool csv = false;
  std::uint64_t head = std::numeric_limits<std::uint64_t>::max();
};

int RunShow(const ShowSettings& settings) {
  const CResoln resolution = ResolutionOption(settings.resolution);
  SeriesReader series(settings.file, resolution, settings.old);
  PointTable table(settings.csv ? PointForm::kCsv : PointForm::kTable, series.Point());
  Output output;
  output.Write(table.Header());
  for (std::uint64_t shown = 0; shown < settings.head; ++shown) {
    CDPDataPt* point = series.Next();
    if (point == nullptr) {
      break;
    }
    output.Write(table.Line(*point));
  }
  output.Finish();
  if (series.Rest() == 0) {
    return kExitOk;
  }
  Say(
      fmt::format("{}: the file ends inside a record: {} bytes behind {} whole ones; expected "
                  "records of {} bytes, as {}{} has",
                  settings.file, series.Rest(), series.Records(), series.RecordSize(),
                  ResolutionText(resolution), settings.old ? " in the old format" : ""));
  return kExitBadData;
}

}  // namespace

void AddShowCommand(CLI::App& app, int& status) {
  auto settings = std::make_shared<ShowSettings>();
  CLI::App* command = app.add_subcommand("show", "Show a stored series");
  command->footer(
      "\nA file doesn't say what it holds: give the resolution with which it was stored. One "
      "whose\n"
      "length isn't a whole number of records is shown up to the last whole one, with exit status "
      "1.");
  command->add_option("FILE", settings->file, "The stored series")->required();
  command
      ->add_option("--resolution", settings->resolution,
                   "The resolution of the series, as \"5 Minutes\" or 5m")
      ->required()
      ->type_name("TEXT");
  command->add_flag(
      "--old", settings->old,
      "The series is in the old format without tick counts; show it taken into the new");
  command->add_flag("--csv", settings->csv, "CSV with every digit instead of a table");
  command->add_option("--head", settings->head, "Show only the first N records")
      ->check(CLI::NonNegativeNumber.description(""))
      ->type_name("N");
  command->callback([settings, &status] { status = RunShow(*settings); });
}

}  // namespace pxd::tool
