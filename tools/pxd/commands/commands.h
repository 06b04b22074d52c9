// The commands of pxd, a file each.
#ifndef PXDUTIL_TOOLS_PXD_COMMANDS_COMMANDS_H
#define PXDUTIL_TOOLS_PXD_COMMANDS_COMMANDS_H

#include <string>

#include <pxdutil/history/field_resolution.h>
#include <pxdutil/sessions/resolution.h>
#include <pxdutil/sessions/session.h>

#include "../catalogue.h"

namespace CLI {
class App;
}

namespace pxd::tool {

// Each adds its command to the program. The command runs while the arguments are parsed; it throws
// Failure, or sets `status`. Both arguments must outlive the parsing.
void AddBarsCommand(CLI::App& app, int& status);
void AddShowCommand(CLI::App& app, int& status);
void AddSessionsCommand(CLI::App& app, int& status);
void AddSampleCommand(CLI::App& app, int& status);
void AddFieldsCommand(CLI::App& app, int& status);
void AddSettingsCommand(CLI::App& app, int& status);
void AddAdjustCommand(CLI::App& app, int& status);
void AddExportCommand(CLI::App& app, int& status);
void AddQueryCommand(CLI::App& app, int& status);
void AddQuoteCommand(CLI::App& app, int& status);
void AddExchangesCommand(CLI::App& app, int& status);

// The values of options that several commands share; bad usage is thrown as Failure with the name
// of the option.
ZRGS_SESSION SessionsOption(const std::string& option, const std::string& text);
CResoln ResolutionOption(const std::string& text);

// What a stored series is of.
struct SeriesOptions {
  std::string field = "Trade Record";
  std::string resolution;
};
void AddSeriesOptions(CLI::App& command, SeriesOptions& options);
CFieldResoln PairOf(const BuiltInCatalogue& catalogue, const SeriesOptions& options);

// Writes the text to standard output.
void Print(const std::string& text);

}  // namespace pxd::tool

#endif
