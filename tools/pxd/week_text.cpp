#include "week_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "moment.h"
#include "session_words.h"

namespace pxd::tool {
namespace {

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

constexpr std::array<std::string_view, 7> kDays = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};

std::string DaysOf(unsigned char mask) {
  std::string days;
  for (std::size_t day = 0; day < kDays.size(); ++day) {
    if ((mask >> day & 1) != 0) {
      days += fmt::format("{}{}", days.empty() ? "" : ",", kDays[day]);
    }
  }
  return days.empty() ? "no day" : days;
}

std::string MinuteOfDay(unsigned minute) {
  return fmt::format("{:02}:{:02}", minute / 60, minute % 60);
}

// The lines of `lines` that `others` doesn't have.
std::string LinesWithout(const std::string& lines, const std::string& others) {
  std::string left;
  for (std::size_t at = 0; at < lines.size();) {
    const std::size_t end = lines.find('\n', at) + 1;
    const std::string line = lines.substr(at, end - at);
    if (others.find(line) == std::string::npos) {
      left += line;
    }
    at = end;
  }
  return left;
}

}  // namespace

std::string PeriodsText(const ZRGS_SESSION& week, const CZRDateTime& moment) {
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

std::string ClosesText(const ZRGS_SESSION& week, const CZRDateTime& moment,
                       const CZRDateTimeSpan& tolerance) {
  const CZRGSSession calendar(week);
  std::string text;
  const auto line = [&text](std::string_view what, const std::string& words) {
    text += fmt::format("  {:<22} {}\n", what, words);
  };
  CZRDateTime open;
  CZRDateTime close;
  calendar.GetNextSessionCloseDT(CZRGSSession::ResetNone, moment, open, close);
  line("next session", fmt::format("{} to {}", MomentOrDash(open), MomentOrDash(close)));
  close.SetNullDateTime();
  calendar.GetNextWeeklySessionCloseDT(moment, close);
  line("next weekly close", MomentOrDash(close));
  close.SetNullDateTime();
  calendar.GetNextMonthlySessionCloseDT(moment, close);
  line("next monthly close", MomentOrDash(close));

  const bool isNear =
      calendar.GetSessionInfoNearest(CZRGSSession::ResetDay, moment, tolerance, close) != 0;
  line("nearest daily close", isNear ? MomentText(close) : "none within the tolerance");
  if (isNear) {
    calendar.GetStartOfSessionInfoNearest(CZRGSSession::ResetDay, moment, tolerance, open);
    line("  its session opened", MomentText(open));
  }
  return text;
}

std::string CompactText(const ZRGS_SESSION& week) {
  std::array<unsigned long, 2> ranges{};
  std::array<unsigned char, 2> masks{};
  unsigned int count = 0;
  unsigned short reset = 0;
  CZRGSSession::BuildUNI_SESSIONFromZRGS_SESSION(week, ranges.data(), masks.data(), count, reset);
  std::string text = "\nCompact form:\n";
  constexpr std::array<std::string_view, 2> kSlots = {"ends the trading day",
                                                      "part of the trading day"};
  for (std::size_t slot = 0; slot < count && slot < kSlots.size(); ++slot) {
    text +=
        fmt::format("  {}-{} on {}: {}\n", MinuteOfDay(ranges[slot] & 0xFFFF),
                    MinuteOfDay(ranges[slot] >> 16U & 0xFFFF), DaysOf(masks[slot]), kSlots[slot]);
  }
  text += fmt::format("  reset {} min\n", reset);

  ZRGS_SESSION back;
  CZRGSSession::BuildZRGS_SESSIONFromUNI_SESSION(ranges.data(), masks.data(), count, reset, back);
  const std::string before = WeekText(week);
  const std::string after = WeekText(back);
  const std::string lost = LinesWithout(before, after);
  const std::string instead = LinesWithout(after, before);
  if (lost.empty() && instead.empty()) {
    return text + "Nothing is lost in it.\n";
  }
  text += lost.empty() ? "" : "Lost in it:\n" + lost;
  text += instead.empty() ? "" : "Comes back instead:\n" + instead;
  return text;
}

std::string TrimmedText(const ZRGS_SESSION& before, const ZRGS_SESSION& after) {
  std::string text;
  const std::size_t count = std::min(before.sessions.size(), after.sessions.size());
  for (std::size_t i = 0; i < count; ++i) {
    const auto line = [&](std::string_view window, unsigned was, unsigned is) {
      if (was != is) {
        text += fmt::format("  {:<22} {} {} min, was {}\n", SessionText(after.sessions[i]), window,
                            is, was);
      }
    };
    line("dribble", before.sessions[i].DribbleMinutes, after.sessions[i].DribbleMinutes);
    line("reset", before.sessions[i].ResetMinutes, after.sessions[i].ResetMinutes);
  }
  return text;
}

}  // namespace pxd::tool
