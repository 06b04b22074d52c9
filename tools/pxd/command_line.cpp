#include "command_line.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <exception>
#include <string>

#include <pxdutil/version.h>

#include "commands/commands.h"
#include "failure.h"
#include "streams.h"
#include "words.h"

namespace pxd::tool {
namespace {

constexpr const char* kFooter =
    "\nExit status: 0 for success, 1 for bad data, 2 for bad usage.\n"
    "'pxd COMMAND --help' tells more of a command.";

std::string CommandNames(const CLI::App& app) {
  std::string names;
  for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
    names += fmt::format("{}{}", names.empty() ? "" : ", ", command->get_name());
  }
  return names;
}

// Help and version go to standard output; what is wrong goes to standard error in one line.
int AnswerOf(const CLI::App& app, const CLI::ParseError& error) {
  if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
    Output output;
    const bool version = error.get_name() == "CallForVersion";
    output.Write(version ? std::string(error.what()) + '\n' : app.help());
    output.Finish();
    return kExitOk;
  }
  if (const auto rest = app.remaining(); app.get_subcommands().empty() && !rest.empty()) {
    Say(fmt::format("{} is no command; expected one of {}", Quoted(rest[0]), CommandNames(app)));
    return kExitBadUsage;
  }
  std::string words = error.what();
  while (!words.empty() && words.back() == '\n') {
    words.pop_back();
  }
  Say(fmt::format("{}; see 'pxd --help'", words));
  return kExitBadUsage;
}

int Run(int argc, const char* const* argv) {
  CLI::App app("Market data on the command line: bars that close where the market closes", "pxd");
  app.set_version_flag("--version", "pxd " PXDUTIL_VERSION, "Print the version and exit");
  app.require_subcommand(1);
  app.footer(kFooter);
  app.get_formatter()->column_width(34);
  int status = kExitOk;
  AddBarsCommand(app, status);
  AddShowCommand(app, status);
  AddExportCommand(app, status);
  AddAdjustCommand(app, status);
  AddSessionsCommand(app, status);
  AddFieldsCommand(app, status);
  AddSettingsCommand(app, status);
  AddQueryCommand(app, status);
  AddQuoteCommand(app, status);
  AddExchangesCommand(app, status);
  AddSampleCommand(app, status);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return AnswerOf(app, error);
  }
  return status;
}

}  // namespace

int RunCommandLine(int argc, const char* const* argv) {
  try {
    return Run(argc, argv);
  } catch (const Failure& failure) {
    Say(failure.what());
    return failure.Status();
  } catch (const std::exception& error) {
    Say(error.what());
    return kExitBadData;
  }
}

}  // namespace pxd::tool
