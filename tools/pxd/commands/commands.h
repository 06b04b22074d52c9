// The commands of pxd, a file each.
#ifndef PXDUTIL_TOOLS_PXD_COMMANDS_COMMANDS_H
#define PXDUTIL_TOOLS_PXD_COMMANDS_COMMANDS_H

#include <string>

#include <pxdutil/history/field_resolution.h>
#include <pxdutil/sessions/resolution.h>
#include <pxdutil/sessions/session.h>

#include "../catalogue.h"
#include "../program.h"

namespace pxd::tool {

// Each with settings of its own, which live as long as what runs it.
Command BarsCommand();
Command ShowCommand();
Command ExportCommand();
Command AdjustCommand();
Command SessionsCommand();
Command FieldsCommand();
Command SettingsCommand();
Command QueryCommand();
Command QuoteCommand();
Command ExchangesCommand();
Command SampleCommand();

// The values of options that several commands share; bad usage is thrown as Failure with the name
// of the option.
ZRGS_SESSION SessionsOption(const std::string& option, const std::string& text);
CResoln ResolutionOption(const std::string& text);

// What a stored series is of.
struct SeriesOptions {
  std::string field = "Trade Record";
  std::string resolution;
};
Option SeriesFile(std::string& file);
Option SeriesResolution(SeriesOptions& options);
Option SeriesField(SeriesOptions& options);
CFieldResoln PairOf(const BuiltInCatalogue& catalogue, const SeriesOptions& options);

// Writes the text to standard output.
void Print(const std::string& text);

}  // namespace pxd::tool

#endif
