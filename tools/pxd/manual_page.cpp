#include "manual_page.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>

#include "words.h"

namespace pxd::tool {
namespace {

struct Escape {
  char c;
  std::string_view troff;
};
// What troff would set as a typographer's sign, which no shell takes, or read as its own.
constexpr std::array<Escape, 7> kEscapes = {{{'\\', "\\e"},
                                             {'-', "\\-"},
                                             {'\'', "\\(aq"},
                                             {'"', "\\(dq"},
                                             {'^', "\\(ha"},
                                             {'~', "\\(ti"},
                                             {'`', "\\(ga"}}};

std::string Escaped(std::string_view text) {
  // A dot ahead of a line would begin a request.
  std::string escaped = text.substr(0, 1) == "." ? "\\&" : "";
  for (const char c : text) {
    const auto found = std::find_if(kEscapes.begin(), kEscapes.end(),
                                    [c](const Escape& row) { return row.c == c; });
    if (found == kEscapes.end()) {
      escaped += c;
    } else {
      escaped += found->troff;
    }
  }
  return escaped;
}

std::string Bold(std::string_view text) {
  return "\\fB" + Escaped(text) + "\\fR";
}
std::string Italic(std::string_view text) {
  return "\\fI" + Escaped(text) + "\\fR";
}

// Paragraphs are filled anew for the reader's width; lines that begin with blanks stay as they are.
std::string Prose(std::string_view text) {
  std::string page = ".PP\n";
  bool isAsItStands = false;
  for (const std::string_view line : Lines(text)) {
    const bool isLiteral = !line.empty() && line.front() == ' ';
    if (isLiteral != isAsItStands) {
      page += isLiteral ? ".RS 4\n.nf\n" : ".fi\n.RE\n";
      isAsItStands = isLiteral;
    }
    page += line.empty() ? ".PP\n" : Escaped(Trim(line)) + '\n';
  }
  return isAsItStands ? page + ".fi\n.RE\n" : page;
}

std::string Entry(std::string_view term, std::string_view words) {
  return fmt::format(".TP\n{}\n{}\n", term, Escaped(words));
}

std::string Names(const Option& option) {
  std::string names;
  for (const std::string& name : NamesOf(option)) {
    names += fmt::format("{}{}", names.empty() ? "" : ", ",
                         IsArgument(option) ? Italic(name) : Bold(name));
  }
  return option.valueName.empty() ? names : names + ' ' + Italic(option.valueName);
}

std::string Entry(const Option& option) {
  std::string words = option.help + '.';
  if (option.isRequired) {
    words += " Required.";
  }
  if (!option.excludes.empty()) {
    words += fmt::format(" Not along with {}.", option.excludes);
  }
  return Entry(Names(option), words);
}

// "pxd show --resolution TEXT [OPTION...] FILE".
std::string Synopsis(const Program& program, const Command& command) {
  std::string required;
  std::string arguments;
  for (const Option& option : command.options) {
    if (IsArgument(option)) {
      arguments += option.isRequired ? ' ' + Italic(option.names)
                                     : fmt::format(" [{}]", Italic(option.names));
    } else if (option.isRequired) {
      required += ' ' + Names(option);
    }
  }
  return fmt::format("{}{} [{}...]{}\n", Bold(program.name + ' ' + command.name), required,
                     Italic("OPTION"), arguments);
}

std::string Section(const Program& program, const Command& command) {
  std::string page = fmt::format(".SS {}\n.PP\n{}", Bold(command.name), Synopsis(program, command));
  page += fmt::format(".PP\n{}.\n", Escaped(command.summary));
  if (command.choice) {
    page +=
        fmt::format(".PP\n{}: {}\n", Escaped(command.choice->title), Escaped(command.choice->help));
  }
  for (const Option& option : AllOptions(command)) {
    page += Entry(option);
  }
  return page + Prose(command.notes);
}

std::string LowerFirst(std::string text) {
  text.front() = static_cast<char>(std::tolower(static_cast<unsigned char>(text.front())));
  return text;
}

std::string UpperAll(std::string text) {
  for (char& c : text) {
    c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  }
  return text;
}

}  // namespace

std::string ManualPage(const Program& program) {
  std::string page = fmt::format(".TH {} 1 \"\" \"{} {}\" \"User Commands\"\n",
                                 UpperAll(program.name), Escaped(program.name), program.version);
  page += fmt::format(".SH NAME\n{} \\- {}\n", program.name, Escaped(LowerFirst(program.summary)));
  page += fmt::format(".SH SYNOPSIS\n{} {} [{}...] [{}...]\n.br\n{} {} | {}\n", Bold(program.name),
                      Italic("COMMAND"), Italic("OPTION"), Italic("ARGUMENT"), Bold(program.name),
                      Bold("--help"), Bold(kVersionName));
  page += ".SH DESCRIPTION\n" + Prose(program.description);
  page += ".SH OPTIONS\n" + Entry(Option{.names = std::string(kHelpNames),
                                         .help = "Print a help message and exit; behind a command, "
                                                 "that of the command"});
  page += Entry(Option{.names = std::string(kVersionName), .help = std::string(kVersionHelp)});
  page += ".SH COMMANDS\n";
  for (const Command& command : program.commands) {
    page += Section(program, command);
  }
  for (const ManualSection& section : program.manual) {
    page += fmt::format(".SH {}\n{}", Escaped(section.title), Prose(section.text));
  }
  return page;
}

}  // namespace pxd::tool
