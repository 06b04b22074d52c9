// pxd show: a stored series as a table or as CSV.
#include <CLI/CLI.hpp>
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

void AddShowCommand(CLI::App& app, int& status) {
  auto settings = std::make_shared<ShowSettings>();
  CLI::App* command = app.add_subcommand("show", "Show a stored series");
  command->footer(
      "\nA file doesn't say what it holds: give the field and the resolution with which it was\n"
      "stored. One whose length isn't a whole number of records is shown up to the last whole "
      "one,\n"
      "with exit status 1.");
  command->add_option("FILE", settings->file, "The stored series")->required();
  AddSeriesOptions(*command, settings->series);
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
