#include "command_line.h"

#include <exception>

#include <pxdutil/version.h>

#include "arguments.h"
#include "commands/commands.h"
#include "failure.h"
#include "streams.h"

namespace pxd::tool {
namespace {

constexpr const char* kDescription =
    "pxd turns trades into bars whose edges are those of the trading sessions: a bar of five\n"
    "minutes counts from the open, the last one is cut at the close, a late print joins the\n"
    "session's last bar, and an overnight session is one trading day. It also shows, exports and\n"
    "restates stored series, and tells what weeks of sessions, fields, settings, queries, quotes\n"
    "and exchange codes mean.\n"
    "\nWhat is asked for goes to standard output; summaries, notes and errors go to standard\n"
    "error.";

// Each line of the examples can be run, one after the other.
constexpr const char* kExamples =
    "A made-up week of trades, its bars of five minutes, the first of them, and all as JSON:\n"
    "  pxd sample -o trades.csv\n"
    "  pxd bars trades.csv --sessions \"Mon-Fri 09:30-16:00\" --resolution 5m -o 5m.bars\n"
    "  pxd show 5m.bars --resolution 5m --head 10\n"
    "  pxd export 5m.bars --resolution 5m --to json -o bars.json\n"
    "The same bars after a split of two new shares for one:\n"
    "  pxd adjust 5m.bars --resolution 5m --split 2:1 -o split.bars\n"
    "The session and the day, week and month in which a moment falls:\n"
    "  pxd sessions \"Sun-Thu 18:00-17:00\" --at \"2024-03-04 09:31\"\n"
    "A field of the catalogue:\n"
    "  pxd fields --id 201";

constexpr const char* kFiles =
    "Trades are CSV with a line of column names; see bars.\n"
    "\nA stored series holds records of one kind, one behind the other and nothing else, with\n"
    "numbers in little-endian order. It doesn't say which kind: the field and the resolution do,\n"
    "and have to be given again wherever it is read. A result takes its place only when all of it\n"
    "has been written, so that a file is never half of one.\n"
    "\nRows of quotes are CSV; see quote. The catalogue file is lines of text with a checksum; "
    "see\n"
    "fields.";

constexpr const char* kStatus =
    "0 for success, 1 for bad data (what was read or had to be written is at fault), 2 for bad\n"
    "usage (the command line is at fault).";

}  // namespace

Program PxdProgram() {
  return {.name = "pxd",
          .summary = "Market data on the command line: bars that close where the market closes",
          .version = PXDUTIL_VERSION,
          .notes =
              "Exit status: 0 for success, 1 for bad data, 2 for bad usage.\n"
              "'pxd COMMAND --help' tells more of a command.",
          .description = kDescription,
          .manual = {{"EXIT STATUS", kStatus}, {"FILES", kFiles}, {"EXAMPLES", kExamples}},
          .commands = {BarsCommand(), ShowCommand(), ExportCommand(), AdjustCommand(),
                       SessionsCommand(), FieldsCommand(), SettingsCommand(), QueryCommand(),
                       QuoteCommand(), ExchangesCommand(), SampleCommand()}};
}

int RunCommandLine(int argc, const char* const* argv) {
  try {
    return RunArguments(PxdProgram(), argc, argv);
  } catch (const Failure& failure) {
    Say(failure.what());
    return failure.Status();
  } catch (const std::exception& error) {
    Say(error.what());
    return kExitBadData;
  }
}

}  // namespace pxd::tool
