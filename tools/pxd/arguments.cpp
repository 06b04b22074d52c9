#include "arguments.h"

#include <fmt/format.h>

// The only place that includes it: it takes seconds to compile.
#include <CLI/CLI.hpp>
#include <type_traits>

#include "failure.h"
#include "streams.h"
#include "words.h"

namespace pxd::tool {
namespace {

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

template <class Value>
CLI::Option* Bound(CLI::App& app, const Option& option, Value& target) {
  if constexpr (std::is_same_v<Value, bool>) {
    return app.add_flag(option.names, target, option.help);
  } else {
    CLI::Option* added = app.add_option(option.names, target, option.help);
    if constexpr (std::is_same_v<Value, std::vector<std::string>>) {
      added->expected(1)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    }
    return added;
  }
}

CLI::Validator CheckOf(const OptionLimits& limits) {
  // The descriptions would stand in the help, which says it in its own words.
  if (!limits.most) {
    return CLI::Validator(CLI::NonNegativeNumber).description("");
  }
  return CLI::Range(limits.least, *limits.most).description("");
}

void Add(CLI::App& app, const Option& option) {
  CLI::Option* added =
      std::visit([&](auto* target) { return Bound(app, option, *target); }, option.target);
  if (option.isRequired) {
    added->required();
  }
  if (!option.valueName.empty()) {
    added->type_name(option.valueName);
  }
  if (option.limits) {
    added->check(CheckOf(*option.limits));
  }
  if (!option.excludes.empty()) {
    added->excludes(app.get_option(option.excludes));
  }
}

void Add(CLI::App& app, const Command& command, int& status) {
  CLI::App* added = app.add_subcommand(command.name, command.summary);
  added->footer(command.notes.empty() ? "" : '\n' + command.notes);
  if (command.choice) {
    auto* choice = added->add_option_group(command.choice->title, command.choice->help);
    choice->require_option(0, 1);
    for (const Option& option : command.choice->options) {
      Add(*choice, option);
    }
  }
  for (const Option& option : command.options) {
    Add(*added, option);
  }
  added->callback([&command, &status] { status = command.run(); });
}

}  // namespace

int RunArguments(const Program& program, int argc, const char* const* argv) {
  CLI::App app(program.summary, program.name);
  app.set_help_flag(std::string(kHelpNames), std::string(kHelpHelp));
  app.set_version_flag(std::string(kVersionName), program.name + ' ' + program.version,
                       std::string(kVersionHelp));
  // A word is the same on every system: "/x" is a path.
  app.allow_windows_style_options(false);
  app.require_subcommand(1);
  app.footer('\n' + program.notes);
  app.get_formatter()->column_width(34);
  int status = kExitOk;
  for (const Command& command : program.commands) {
    Add(app, command, status);
  }
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return AnswerOf(app, error);
  }
  return status;
}

}  // namespace pxd::tool
