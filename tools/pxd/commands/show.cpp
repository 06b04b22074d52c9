// pxd show: a stored series as a table or as CSV.
#include <cstdint>
#include <memory>
#include <string>

#include "../point_table.h"
#include "../series_file.h"
#include "../series_text.h"
#include "commands.h"

namespace pxd::tool {
namespace {

struct ShowSettings {
  std::string file;
  SeriesOptions series;
  bool old = false;
  bool csv = false;
  std::uint64_t head = kAllPoints;
};

int RunShow(const ShowSettings& settings) {
  const BuiltInCatalogue catalogue;
  SeriesReader series(settings.file, PairOf(catalogue, settings.series), settings.old);
  return WriteSeries(series, settings.csv ? PointForm::kCsv : PointForm::kTable, settings.head, "");
}

}  // namespace

Command ShowCommand() {
  auto settings = std::make_shared<ShowSettings>();
  return {
      .name = "show",
      .summary = "Show a stored series",
      .notes =
          "A file doesn't say what it holds: give the field and the resolution with which it was\n"
          "stored. One whose length isn't a whole number of records is shown up to the last whole "
          "one,\n"
          "with exit status 1.",
      .options = {SeriesFile(settings->file),
                  SeriesResolution(settings->series),
                  SeriesField(settings->series),
                  {.names = "--old",
                   .target = &settings->old,
                   .help = "The series is in the old format without tick counts; show it taken "
                           "into the new"},
                  {.names = "--csv",
                   .target = &settings->csv,
                   .help = "CSV with every digit instead of a table"},
                  {.names = "--head",
                   .target = &settings->head,
                   .help = "Show only the first N records",
                   .valueName = "N",
                   .limits = OptionLimits()}},
      .run = [settings] { return RunShow(*settings); },
  };
}

}  // namespace pxd::tool
