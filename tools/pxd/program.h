// A program's command line as data: its commands, the options and arguments of each, what is said
// of them and where their values go. Reading the arguments (arguments.h), the help, the manual page
// and the completions of the shells all come from it.
//
//   Command ShowCommand() {
//     auto settings = std::make_shared<ShowSettings>();
//     return {.name = "show",
//             .summary = "Show a stored series",
//             .options = {{.names = "FILE", .target = &settings->file, .help = "The stored
//             series"},
//                         {.names = "--csv", .target = &settings->csv, .help = "CSV, no table"}},
//             .run = [settings] { return RunShow(*settings); }};
//   }
#ifndef PXDUTIL_TOOLS_PXD_PROGRAM_H
#define PXDUTIL_TOOLS_PXD_PROGRAM_H

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace pxd::tool {

// Where a value goes. An option with a bool is a flag and takes no value; one with a vector may be
// repeated. What is optional stays empty where the option isn't given.
using OptionTarget =
    std::variant<bool*, int*, unsigned*, std::uint64_t*, std::optional<unsigned>*, std::string*,
                 std::optional<std::string>*, std::vector<std::string>*>;

// The whole numbers that an option takes, both ends included. Without a most, the least is 0.
struct OptionLimits {
  std::int64_t least = 0;
  std::optional<std::int64_t> most{};
};

// Every member has a default here and below, so that a table says only what is so.
struct Option {
  // "-o,--output"; a name without a dash is that of an argument, which goes by its place.
  std::string names{};
  OptionTarget target = static_cast<bool*>(nullptr);
  std::string help{};
  // What stands for the value in the help, as FILE; for options that aren't flags.
  std::string valueName{};
  bool isRequired = false;
  std::optional<OptionLimits> limits{};
  // A name of an option ahead of this one that can't be given along with it.
  std::string excludes{};
  // What a shell offers for the value: the names of files, or these words.
  bool takesFile = false;
  std::vector<std::string> words{};
};

// Options of which at most one may be given.
struct OptionChoice {
  std::string title{};
  std::string help{};
  std::vector<Option> options{};
};

struct Command {
  std::string name{};
  std::string summary{};
  // What the help ends with: lines in paragraphs, those that begin with blanks as they stand.
  std::string notes{};
  std::vector<Option> options{};
  std::optional<OptionChoice> choice{};
  // Called with the values in their places; returns the exit status, or throws Failure. It keeps
  // the places alive, so a command that lost it must not be read.
  std::function<int()> run{};
};

// A section of the manual page that the help has no place for.
struct ManualSection {
  std::string title{};
  std::string text{};
};

struct Program {
  std::string name{};
  std::string summary{};
  std::string version{};
  std::string notes{};
  // For the manual page alone, in the form of notes.
  std::string description{};
  std::vector<ManualSection> manual{};
  std::vector<Command> commands{};
};

// The names of an option, one by one.
std::vector<std::string> NamesOf(const Option& option);
// What goes by its place and not by a name.
bool IsArgument(const Option& option);
bool IsFlag(const Option& option);
bool IsRepeatable(const Option& option);
// The options and arguments of a command, with those of its choice ahead.
std::vector<Option> AllOptions(const Command& command);

// What every program and command knows beside its own.
inline constexpr std::string_view kHelpNames = "-h,--help";
inline constexpr std::string_view kHelpHelp = "Print this help message and exit";
inline constexpr std::string_view kVersionName = "--version";
inline constexpr std::string_view kVersionHelp = "Print the version and exit";

}  // namespace pxd::tool

#endif
