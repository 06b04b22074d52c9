// pxd sessions: a week of sessions as people read it, and where a moment falls in it.
#include <fmt/format.h>

#include <memory>
#include <string>

#include <pxdutil/sessions/session.h>

#include "../failure.h"
#include "../moment.h"
#include "../session_check.h"
#include "../session_words.h"
#include "../week_text.h"
#include "../words.h"
#include "commands.h"

namespace pxd::tool {
namespace {

// A week, either way.
constexpr int kMostOffset = 10080;

struct SessionsSettings {
  std::string text;
  std::string moment;
  std::string tolerance = "1d";
  int offset = 0;
  bool compact = false;
  bool makeValid = false;
};

CZRDateTime MomentOption(const std::string& text) {
  const CZRDateTime moment = ReadDateTime(Trim(text));
  if (!IsInCalendarYears(moment)) {
    throw Failure(kExitBadUsage,
                  fmt::format("--at: {} is no moment; expected one such as \"2024-03-04 09:31\", "
                              "from {}",
                              Quoted(text), kCalendarYears));
  }
  return moment;
}

CZRDateTimeSpan ToleranceOption(const std::string& text) {
  const auto span = ReadSpan(text);
  if (!span) {
    throw Failure(
        kExitBadUsage,
        fmt::format("--tolerance: {} is no length of time; expected a number of 0 to 65535 "
                    "and a unit, such as 45s, 90m, 12h or 1d",
                    Quoted(text)));
  }
  return *span;
}

// The week of the text, repaired where that was asked for; what the repair trimmed goes to
// `trimmed`.
ZRGS_SESSION WeekOf(const SessionsSettings& settings, std::string& trimmed) {
  if (!settings.makeValid) {
    return SessionsOption("sessions", settings.text);
  }
  ZRGS_SESSION rough;
  std::string error;
  if (!ReadRoughSessions(settings.text, rough, error)) {
    throw Failure(kExitBadUsage, "sessions: " + error);
  }
  CZRGSSession calendar(rough);
  if (!calendar.MakeValid() || CZRGSSession::IsValid(calendar.GetSession()) == 0) {
    throw Failure(kExitBadData,
                  "--make-valid: shorter windows don't help: " + WhyInvalid(calendar.GetSession()));
  }
  trimmed = TrimmedText(rough, calendar.GetSession());
  return calendar.GetSession();
}

void RunSessions(const SessionsSettings& settings) {
  std::string trimmed;
  ZRGS_SESSION week = WeekOf(settings, trimmed);
  if (settings.offset != 0) {
    CZRGSSession calendar(week);
    calendar.ApplyOffset(settings.offset);
    week = calendar.GetSession();
  }
  std::string text;
  if (settings.makeValid) {
    text += trimmed.empty() ? "Nothing was trimmed.\n\n" : "Trimmed:\n" + trimmed + '\n';
  }
  text += "Week:\n" + WeekText(week);
  text += fmt::format("\nMachine form: {}\n", MachineText(week));
  text += fmt::format("Valid: {}\n", CZRGSSession::IsValid(week) != 0 ? "yes" : "no");
  if (settings.compact) {
    text += CompactText(week);
  }
  if (!settings.moment.empty()) {
    const CZRDateTime moment = MomentOption(settings.moment);
    const CZRDateTimeSpan tolerance = ToleranceOption(settings.tolerance);
    text += PeriodsText(week, moment) + '\n' + ClosesText(week, moment, tolerance);
  }
  Print(text);
}

}  // namespace

Command SessionsCommand() {
  auto settings = std::make_shared<SessionsSettings>();
  return {
      .name = "sessions",
      .summary = "Show and check a week of sessions",
      .notes =
          "TEXT is what --sessions of 'pxd bars' takes: \"Mon-Fri 09:30-16:00\", or the machine "
          "form.\n"
          "The trading week starts with the session behind the longest gap, the earliest where "
          "gaps "
          "are\n"
          "equal; where the calendar can't hold that order, with the first one that opens in the "
          "week\n"
          "from Sunday.\n"
          "\nA year always answers \"fail\", with its open and close where they are known. The "
          "next\n"
          "session is one that opens in this minute at the earliest; one that runs already is "
          "passed\n"
          "over. On Sunday, ahead of the first open, the week's answers are a day early.\n"
          "\nThe compact form holds one time of the day and some days for the sessions that end a "
          "trading\n"
          "day, and one for those that don't; dribble windows have no place in it.",
      .options =
          {{.names = "TEXT",
            .target = &settings->text,
            .help = "The week of sessions",
            .isRequired = true},
           {.names = "--at",
            .target = &settings->moment,
            .help = "Tell where this moment falls, for every period",
            .valueName = "\"YYYY-MM-DD HH:MM[:SS]\""},
           {.names = "--tolerance",
            .target = &settings->tolerance,
            .help = "How far off the nearest daily close may be, as 12h (1d)",
            .valueName = "SPAN"},
           {.names = "--uni",
            .target = &settings->compact,
            .help = "Also show the compact form, and what is lost in it"},
           {.names = "--offset",
            .target = &settings->offset,
            .help = "Move the week by so many minutes",
            .valueName = "MINUTES",
            .limits = OptionLimits{.least = -kMostOffset, .most = kMostOffset}},
           {.names = "--make-valid",
            .target = &settings->makeValid,
            .help = "Repair sessions whose windows run into the next, and say what was trimmed"}},
      .run =
          [settings] {
            RunSessions(*settings);
            return kExitOk;
          },
  };
}

}  // namespace pxd::tool
