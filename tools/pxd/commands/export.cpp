// pxd export: a stored series for spreadsheets and scripts.
#include <fmt/format.h>

#include <memory>
#include <string>

#include "../failure.h"
#include "../point_table.h"
#include "../series_file.h"
#include "../series_text.h"
#include "../words.h"
#include "commands.h"

namespace pxd::tool {
namespace {

struct ExportSettings {
  std::string file;
  SeriesOptions series;
  std::string form;
  std::string output;
  bool old = false;
};

PointForm FormOption(const std::string& text) {
  if (EqualNoCase(text, "csv")) {
    return PointForm::kCsv;
  }
  if (EqualNoCase(text, "json")) {
    return PointForm::kJson;
  }
  throw Failure(kExitBadUsage,
                fmt::format("--to: {} is no form; expected csv or json", Quoted(text)));
}

int RunExport(const ExportSettings& settings) {
  const PointForm form = FormOption(settings.form);
  const BuiltInCatalogue catalogue;
  SeriesReader series(settings.file, PairOf(catalogue, settings.series), settings.old);
  return WriteSeries(series, form, kAllPoints, settings.output);
}

}  // namespace

Command ExportCommand() {
  auto settings = std::make_shared<ExportSettings>();
  return {
      .name = "export",
      .summary = "Write a stored series as CSV or JSON",
      .notes =
          "Dates and times are in ISO form, and every number has as many digits as bring its "
          "float\n"
          "back to the bit. A file whose length isn't a whole number of records is written up to "
          "the\n"
          "last whole one, with exit status 1.",
      .options = {SeriesFile(settings->file),
                  SeriesResolution(settings->series),
                  SeriesField(settings->series),
                  {.names = "--to",
                   .target = &settings->form,
                   .help = "The form: csv or json",
                   .valueName = "FORM",
                   .isRequired = true,
                   .words = {"csv", "json"}},
                  {.names = "-o,--output",
                   .target = &settings->output,
                   .help = "Write to this file instead of the screen",
                   .valueName = "FILE",
                   .takesFile = true},
                  {.names = "--old",
                   .target = &settings->old,
                   .help = "The series is in the old format without tick counts; write it taken "
                           "into the new"}},
      .run = [settings] { return RunExport(*settings); },
  };
}

}  // namespace pxd::tool
