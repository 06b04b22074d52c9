#include "command_line.h"

#include <exception>

#include <pxdutil/version.h>

#include "arguments.h"
#include "commands/commands.h"
#include "failure.h"
#include "streams.h"

namespace pxd::tool {

Program PxdProgram() {
  return {.name = "pxd",
          .summary = "Market data on the command line: bars that close where the market closes",
          .version = PXDUTIL_VERSION,
          .notes =
              "Exit status: 0 for success, 1 for bad data, 2 for bad usage.\n"
              "'pxd COMMAND --help' tells more of a command.",
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
