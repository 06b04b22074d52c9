#include "shell_completion.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#include "words.h"

namespace pxd::tool {
namespace {

std::string Joined(const std::vector<std::string>& words, std::string_view separator) {
  return fmt::format("{}", fmt::join(words, separator));
}

// The text in single quotes, as all three shells read it but for a quotation mark in it.
std::string ShellQuoted(std::string_view text, std::string_view quote = "'\\''") {
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'') {
      quoted += quote;
    } else {
      quoted += c;
    }
  }
  return quoted + '\'';
}

// Help and version, as options like any other.
Option HelpOption() {
  return {.names = std::string(kHelpNames), .help = std::string(kHelpHelp)};
}
Option VersionOption() {
  return {.names = std::string(kVersionName), .help = std::string(kVersionHelp)};
}

// What goes by a name.
std::vector<Option> NamedOptions(const Command& command) {
  std::vector<Option> named = {HelpOption()};
  for (const Option& option : AllOptions(command)) {
    if (!IsArgument(option)) {
      named.push_back(option);
    }
  }
  return named;
}

bool TakesFileArgument(const Command& command) {
  return std::any_of(command.options.begin(), command.options.end(),
                     [](const Option& option) { return IsArgument(option) && option.takesFile; });
}

std::vector<std::string> CommandNames(const Program& program) {
  std::vector<std::string> names;
  for (const Command& command : program.commands) {
    names.push_back(command.name);
  }
  return names;
}

// The lines of bash that offer one kind of value.
constexpr std::string_view kBashFiles =
    "compopt -o filenames 2>/dev/null; mapfile -t COMPREPLY < <(compgen -f -- \"$current\")";
std::string BashWords(const std::vector<std::string>& words) {
  return fmt::format("mapfile -t COMPREPLY < <(compgen -W {} -- \"$current\")",
                     ShellQuoted(Joined(words, " ")));
}

// The branches for what follows an option that takes a value.
std::string BashValues(const Command& command) {
  std::string branches;
  for (const Option& option : NamedOptions(command)) {
    if (IsFlag(option)) {
      continue;
    }
    std::vector<std::string> patterns;
    for (const std::string& name : NamesOf(option)) {
      patterns.push_back(ShellQuoted(command.name + ' ' + name));
    }
    const std::string offer = option.takesFile       ? std::string(kBashFiles)
                              : option.words.empty() ? ":"
                                                     : BashWords(option.words);
    branches += fmt::format("    {}) {}; return ;;\n", Joined(patterns, " | "), offer);
  }
  return branches;
}

std::string BashNames(const Command& command) {
  std::vector<std::string> names;
  for (const Option& option : NamedOptions(command)) {
    const auto some = NamesOf(option);
    names.insert(names.end(), some.begin(), some.end());
  }
  return fmt::format("    {}:-*) {} ;;\n", command.name, BashWords(names)) +
         (TakesFileArgument(command) ? fmt::format("    {}:*) {} ;;\n", command.name, kBashFiles)
                                     : "");
}

// A description within the brackets of zsh's _arguments.
std::string ZshDescribed(std::string_view text) {
  std::string described;
  for (const char c : text) {
    if (c == '[' || c == ']' || c == ':' || c == '\\') {
      described += '\\';
    }
    described += c;
  }
  return described;
}

std::string ZshValue(const Option& option, const std::string& name) {
  const std::string action = option.takesFile       ? "_files"
                             : option.words.empty() ? " "
                                                    : '(' + Joined(option.words, " ") + ')';
  return fmt::format(":{}:{}", ZshDescribed(name), action);
}

// The rows of an option in _arguments, one for each of its names.
std::vector<std::string> ZshRows(const Option& option) {
  if (IsArgument(option)) {
    const std::string optional = option.isRequired ? ":" : "::";
    return {ShellQuoted(optional + ZshValue(option, option.names).substr(1))};
  }
  const auto names = NamesOf(option);
  const std::string shuts = IsRepeatable(option) ? "*"
                            : names.size() > 1   ? '(' + Joined(names, " ") + ')'
                                                 : "";
  std::vector<std::string> rows;
  for (const std::string& name : names) {
    // A value follows --name in the next word or behind "=", and -n right away too.
    const std::string join = IsFlag(option) ? "" : name.starts_with("--") ? "=" : "+";
    rows.push_back(
        ShellQuoted(fmt::format("{}{}{}[{}]{}", shuts, name, join, ZshDescribed(option.help),
                                IsFlag(option) ? "" : ZshValue(option, option.valueName))));
  }
  return rows;
}

std::string FishNames(const Option& option) {
  std::string names;
  for (const std::string& name : NamesOf(option)) {
    names += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
  }
  return names;
}

std::string FishQuoted(std::string_view text) {
  return ShellQuoted(text, "\\'");
}

std::string FishValue(const Option& option) {
  if (IsFlag(option)) {
    return "";
  }
  if (option.takesFile) {
    return " -r -F";
  }
  return option.words.empty() ? " -x" : " -x -a " + FishQuoted(Joined(option.words, " "));
}

std::string FishRow(const Program& program, const std::string& when, const Option& option) {
  return fmt::format("complete -c {} -n {}{}{} -d {}\n", program.name, FishQuoted(when),
                     FishNames(option), FishValue(option), FishQuoted(option.help));
}

}  // namespace

std::string BashCompletion(const Program& program) {
  std::string values;
  std::string names;
  for (const Command& command : program.commands) {
    values += BashValues(command);
    names += BashNames(command);
  }
  return fmt::format(R"(# bash completion for {0}
_{0}() {{
  local current="${{COMP_WORDS[COMP_CWORD]}}" previous="${{COMP_WORDS[COMP_CWORD-1]}}" command='' i
  COMPREPLY=()
  # bash makes a word of its own of the "=" in --name=value.
  if [[ $current == '=' ]]; then
    current=''
  elif [[ $previous == '=' && COMP_CWORD -gt 2 ]]; then
    previous="${{COMP_WORDS[COMP_CWORD-2]}}"
  fi
  for ((i = 1; i < COMP_CWORD; i++)); do
    if [[ ${{COMP_WORDS[i]}} != -* ]]; then
      command="${{COMP_WORDS[i]}}"
      break
    fi
  done
  case "$command $previous" in
{1}  esac
  case "$command:$current" in
    :-*) {2} ;;
    :*) {3} ;;
{4}  esac
}}
complete -F _{0} {0}
)",
                     program.name, values, BashWords({"-h", "--help", std::string(kVersionName)}),
                     BashWords(CommandNames(program)), names);
}

std::string ZshCompletion(const Program& program) {
  std::string commands;
  std::string branches;
  for (const Command& command : program.commands) {
    commands +=
        fmt::format("    {}\n", ShellQuoted(command.name + ':' + ZshDescribed(command.summary)));
    std::string rows;
    std::vector<Option> options = {HelpOption()};
    const auto own = AllOptions(command);
    options.insert(options.end(), own.begin(), own.end());
    for (const Option& option : options) {
      for (const std::string& row : ZshRows(option)) {
        rows += " \\\n        " + row;
      }
    }
    branches += fmt::format("    {})\n      _arguments -s{} ;;\n", command.name, rows);
  }
  std::string own;
  for (const Option& option : {HelpOption(), VersionOption()}) {
    for (const std::string& row : ZshRows(option)) {
      own += " \\\n    " + row;
    }
  }
  return fmt::format(R"(#compdef {0}
_{0}() {{
  local curcontext="$curcontext" state line
  local -a commands
  commands=(
{1}  )
  _arguments -C{2} \
    '1:command:->command' '*::argument:->argument' && return
  case $state in
    command) _describe command commands; return ;;
  esac
  case $words[1] in
{3}  esac
}}
_{0} "$@"
)",
                     program.name, commands, own, branches);
}

std::string FishCompletion(const Program& program) {
  constexpr const char* kNoCommandYet = "__fish_use_subcommand";
  std::string script = fmt::format("# fish completion for {0}\ncomplete -c {0} -f\n", program.name);
  for (const Option& option : {HelpOption(), VersionOption()}) {
    script += FishRow(program, kNoCommandYet, option);
  }
  for (const Command& command : program.commands) {
    script += fmt::format("complete -c {} -n {} -a {} -d {}\n", program.name, kNoCommandYet,
                          command.name, FishQuoted(command.summary));
    const std::string when = "__fish_seen_subcommand_from " + command.name;
    for (const Option& option : NamedOptions(command)) {
      script += FishRow(program, when, option);
    }
    if (TakesFileArgument(command)) {
      script += fmt::format("complete -c {} -n {} -F\n", program.name, FishQuoted(when));
    }
  }
  return script;
}

}  // namespace pxd::tool
