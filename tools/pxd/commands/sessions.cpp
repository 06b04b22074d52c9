// pxd sessions: a week of sessions as people read it, and where a moment falls in it.
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <array>
#include <memory>
#include <string>
#include <string_view>

#include <pxdutil/sessions/session.h>

#include "../failure.h"
#include "../moment.h"
#include "../session_words.h"
#include "../streams.h"
#include "../words.h"
#include "commands.h"

namespace pxd::tool {
namespace {

struct SessionsSettings {
  std::string text;
  std::string moment;
};

struct Period {
  CZRGSSession::ResetType type;
  std::string_view name;
};
constexpr std::array<Period, 5> kPeriods = {{{CZRGSSession::ResetNone, "session"},
                                             {CZRGSSession::ResetDay, "day"},
                                             {CZRGSSession::ResetWeek, "week"},
                                             {CZRGSSession::ResetMonth, "month"},
                                             {CZRGSSession::ResetYear, "year"}}};

std::string_view StatusWords(CZRGSSession::Status status) {
  switch (status) {
    case CZRGSSession::StatusClosed:
      return "closed";
    case CZRGSSession::StatusInPeriod:
      return "in period";
    case CZRGSSession::StatusOpen:
      return "open";
    case CZRGSSession::StatusDribble:
      return "dribble";
    case CZRGSSession::StatusReset:
      return "reset";
  }
  return "";
}

std::string FlagWords(unsigned short flags) {
  std::string words;
  if ((flags & CZRGSSession::kFollowsReset) != 0) {
    words += "follows a reset";
  }
  if ((flags & CZRGSSession::kEndsInReset) != 0) {
    words += words.empty() ? "ends in a reset" : ", ends in a reset";
  }
  return words.empty() ? "-" : words;
}

// What a look-up leaves alone is shown as "-".
std::string MomentOrDash(const CZRDateTime& moment) {
  return moment.IsNullDateTime() != 0 ? "-" : MomentText(moment);
}

std::string AnswersAt(const ZRGS_SESSION& week, const CZRDateTime& moment) {
  std::string text = fmt::format("\nAt {}:\n", MomentText(moment));
  text += fmt::format("  {:<8} {:<6} {:<10} {:<20} {:<20} {}\n", "Period", "Answer", "Status",
                      "Open", "Close", "Flags");
  for (const Period& period : kPeriods) {
    const CZRGSSession calendar(week);
    CZRDateTime open;
    CZRDateTime close;
    CZRGSSession::Status status = CZRGSSession::StatusClosed;
    unsigned long index = 0;
    unsigned short flags = 0;
    const auto answer =
        calendar.GetSessionInfo(period.type, moment, open, close, status, index, flags);
    text += fmt::format("  {:<8} {:<6} {:<10} {:<20} {:<20} {}\n", period.name,
                        answer == CZRGSSession::ReturnOK ? "ok" : "fail", StatusWords(status),
                        MomentOrDash(open), MomentOrDash(close), FlagWords(flags));
  }
  return text;
}

void RunSessions(const SessionsSettings& settings) {
  const ZRGS_SESSION week = SessionsOption("sessions", settings.text);
  std::string text = "Week:\n" + WeekText(week);
  text += fmt::format("\nMachine form: {}\n", MachineText(week));
  text += fmt::format("Valid: {}\n", CZRGSSession::IsValid(week) != 0 ? "yes" : "no");
  if (!settings.moment.empty()) {
    const auto moment = ReadDateTime(Trim(settings.moment));
    if (!moment || !IsInCalendarYears(*moment)) {
      throw Failure(kExitBadUsage,
                    fmt::format("--at: {} is no moment; expected one such as \"2024-03-04 09:31\", "
                                "from {}",
                                Quoted(settings.moment), kCalendarYears));
    }
    text += AnswersAt(week, *moment);
  }
  Output output;
  output.Write(text);
  output.Finish();
}

}  // namespace

void AddSessionsCommand(CLI::App& app, int&) {
  auto settings = std::make_shared<SessionsSettings>();
  CLI::App* command = app.add_subcommand("sessions", "Show and check a week of sessions");
  command->footer(
      "\nTEXT is what --sessions of 'pxd bars' takes: \"Mon-Fri 09:30-16:00\", or the machine "
      "form.\n"
      "The trading week starts with the session behind the longest gap, the earliest where gaps "
      "are\n"
      "equal; where the calendar can't hold that order, with the first one that opens in the week\n"
      "from Sunday.\n"
      "\nA year always answers \"fail\", with its open and close where they are known.");
  command->add_option("TEXT", settings->text, "The week of sessions")->required();
  command->add_option("--at", settings->moment, "Tell where this moment falls, for every period")
      ->type_name("\"YYYY-MM-DD HH:MM[:SS]\"");
  command->callback([settings] { RunSessions(*settings); });
}

}  // namespace pxd::tool
