#include "session_words.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "session_check.h"
#include "words.h"

namespace pxd::tool {
namespace {

constexpr std::size_t kMostSessions = 256;
constexpr unsigned kDays = 7;

struct DayWords {
  std::string_view name;
  std::string_view fullName;
  std::string_view otherName;  // "Thr" is how the library's own texts name the day
};
constexpr std::array<DayWords, kDays> kDayWords = {{{"Sun", "Sunday", "Sun"},
                                                    {"Mon", "Monday", "Mon"},
                                                    {"Tue", "Tuesday", "Tues"},
                                                    {"Wed", "Wednesday", "Weds"},
                                                    {"Thu", "Thursday", "Thr"},
                                                    {"Fri", "Friday", "Fri"},
                                                    {"Sat", "Saturday", "Sat"}}};

std::optional<unsigned> ReadDay(std::string_view word) {
  for (unsigned day = 0; day < kDays; ++day) {
    const DayWords& words = kDayWords[day];
    if (EqualNoCase(word, words.name) || EqualNoCase(word, words.fullName) ||
        EqualNoCase(word, words.otherName)) {
      return day;
    }
  }
  return std::nullopt;
}

// Days of the week, Sunday first.
using Days = std::array<bool, kDays>;

std::optional<Days> ReadDays(std::string_view text) {
  Days days{};
  if (EqualNoCase(text, "daily")) {
    days.fill(true);
    return days;
  }
  for (const std::string_view part : Split(text, ',')) {
    const std::vector<std::string_view> ends = Split(part, '-');
    const auto first = ReadDay(ends.front());
    const auto last = ReadDay(ends.back());
    if (ends.size() > 2 || !first || !last) {
      return std::nullopt;
    }
    for (unsigned day = *first; days[day] = true, day != *last;) {
      day = (day + 1) % kDays;
    }
  }
  return days;
}

// A minute of the day from HH:MM; 24:00 is its end.
std::optional<std::uint32_t> ReadMinute(std::string_view text) {
  const std::size_t colon = text.find(':');
  if (colon > 2 || text.size() - colon != 3) {
    return std::nullopt;
  }
  const auto hour = WholeNumber(text.substr(0, colon), 24U);
  const auto minute = WholeNumber(text.substr(colon + 1), 59U);
  if (!hour || !minute || *hour * 60 + *minute > kMinutesPerDay) {
    return std::nullopt;
  }
  return *hour * 60 + *minute;
}

struct Group {
  Days days{};
  std::uint32_t open = 0;
  std::uint32_t length = 0;
  std::uint16_t dribble = 0;
  std::uint16_t reset = 0;
  bool isPart = false;
};

// Reads one group; where it fails, `error` says why.
class GroupReader {
 public:
  explicit GroupReader(std::string& error) : m_error(error) {}

  std::optional<Group> Read(std::string_view text) {
    Group group;
    const std::vector<std::string_view> words = SplitAtBlanks(text);
    if (words.size() < 2) {
      return Fail(text,
                  "is no group of sessions; expected days and times, as in "
                  "\"Mon-Fri 09:30-16:00\"");
    }
    const auto days = ReadDays(words[0]);
    if (!days) {
      return Fail(words[0], "names no days; expected days as in Mon-Fri, Mon,Wed,Fri or daily");
    }
    group.days = *days;
    if (!ReadTimes(words[1], group)) {
      return std::nullopt;
    }
    for (std::size_t i = 2; i < words.size(); ++i) {
      if (EqualNoCase(words[i], "part")) {
        group.isPart = true;
        continue;
      }
      const bool dribble = EqualNoCase(words[i], "dribble");
      if (!dribble && !EqualNoCase(words[i], "reset")) {
        return Fail(words[i], "is no option; expected part, dribble N or reset N");
      }
      const std::string_view number = i + 1 < words.size() ? words[i + 1] : "";
      const auto minutes = WholeNumber(number, kMinutesPerWeek - 1);
      if (!minutes) {
        return Fail(number, fmt::format("is no length of the {} window; expected minutes below a "
                                        "week, as in \"{} 10\"",
                                        Lower(words[i]), Lower(words[i])));
      }
      (dribble ? group.dribble : group.reset) = static_cast<std::uint16_t>(*minutes);
      ++i;
    }
    return group;
  }

 private:
  std::optional<Group> Fail(std::string_view what, std::string_view why) {
    m_error = fmt::format("{} {}", Quoted(what), why);
    return std::nullopt;
  }

  bool ReadTimes(std::string_view text, Group& group) {
    const std::vector<std::string_view> ends = Split(text, '-');
    const auto open = ReadMinute(ends.front());
    const auto close = ReadMinute(ends.back());
    if (ends.size() != 2 || !open || !close || *open == kMinutesPerDay) {
      Fail(text,
           "is no time range; expected opening and closing times as in 09:30-16:00, from "
           "00:00 to 24:00");
      return false;
    }
    group.open = *open;
    group.length = *close > *open ? *close - *open : *close + kMinutesPerDay - *open;
    return true;
  }

  std::string& m_error;
};

ZRGS_SESSION_INFO SessionOf(const Group& group, unsigned day) {
  const std::uint32_t open = day * kMinutesPerDay + group.open;
  const std::uint32_t close = open + group.length;
  ZRGS_SESSION_INFO session;
  session.OpenMinute = static_cast<std::uint16_t>(open);
  session.CloseMinute =
      static_cast<std::uint16_t>(close > kMinutesPerWeek ? close - kMinutesPerWeek : close);
  session.ResetMinutes = group.reset;
  session.DribbleMinutes = group.dribble & 0x7FFF;
  session.ResetFlag = group.isPart ? 0 : 1;
  return session;
}

// Turns a list that is sorted by opens so that it begins behind the longest gap.
void StartBehindLongestGap(ZRGS_SESSION& week) {
  std::vector<ZRGS_SESSION_INFO>& sessions = week.sessions;
  std::size_t first = 0;
  std::uint32_t longest = 0;
  for (std::size_t i = 0; i < sessions.size(); ++i) {
    const ZRGS_SESSION_INFO& before = sessions[i == 0 ? sessions.size() - 1 : i - 1];
    const std::uint32_t apart = sessions[i].OpenMinute + (i == 0 ? kMinutesPerWeek : 0) -
                                before.OpenMinute - LengthOf(before);
    if (apart > longest) {
      longest = apart;
      first = i;
    }
  }
  ZRGS_SESSION turned = week;
  std::rotate(turned.sessions.begin(), turned.sessions.begin() + static_cast<int>(first),
              turned.sessions.end());
  if (CZRGSSession::IsValid(turned) != 0) {
    week = turned;
  }
}

// Whether the list that was read must be valid.
enum class Demand { kValid, kNothing };

bool ReadPeoplesForm(std::string_view text, Demand demand, ZRGS_SESSION& out, std::string& error) {
  ZRGS_SESSION week;
  std::vector<std::string_view> groups = Split(text, ';');
  if (groups.size() > 1 && groups.back().empty()) {
    groups.pop_back();
  }
  for (const std::string_view part : groups) {
    const auto group = GroupReader(error).Read(part);
    if (!group) {
      return false;
    }
    for (unsigned day = 0; day < kDays; ++day) {
      if (group->days[day]) {
        week.sessions.push_back(SessionOf(*group, day));
      }
    }
    if (week.sessions.size() > kMostSessions) {
      error = fmt::format("there are more than {} sessions", kMostSessions);
      return false;
    }
  }
  error = demand == Demand::kValid ? CollisionIn(week) : "";
  if (!error.empty()) {
    return false;
  }
  std::sort(week.sessions.begin(), week.sessions.end(),
            [](const auto& a, const auto& b) { return a.OpenMinute < b.OpenMinute; });
  StartBehindLongestGap(week);
  // A market that never closes ends its week in the minute in which it began. The look-ups count
  // from the first open, where that minute would be the week's start; a week later it is its end.
  ZRGS_SESSION_INFO& last = week.sessions.back();
  if (last.CloseMinute == week.sessions.front().OpenMinute) {
    last.CloseMinute = static_cast<std::uint16_t>(last.CloseMinute + kMinutesPerWeek);
  }
  error = demand == Demand::kValid ? WhyInvalid(week) : "";
  if (!error.empty()) {
    return false;
  }
  out = week;
  return true;
}

bool LooksLikeMachineForm(std::string_view text) {
  const std::size_t digits = text.find_first_not_of("0123456789");
  return digits > 0 && (digits == std::string_view::npos || text[digits] == ':');
}

// The library's reader stops where a text goes wrong and says nothing, so the form is checked
// ahead of it.
bool CheckMachineForm(std::string_view text, std::string& error) {
  const std::size_t colon = std::min(text.find(':'), text.size());
  const auto count = WholeNumber(text.substr(0, colon), 0xFFFFU);
  std::vector<std::string_view> groups;
  if (colon + 1 < text.size()) {
    groups = Split(text.substr(colon + 1), ';');
  }
  if (!count || colon == text.size() || *count != groups.size()) {
    error = fmt::format(
        "{} announces a number of sessions that isn't there; expected "
        "COUNT:OPEN,CLOSE,RESET,DRIBBLE,FLAG;... with COUNT groups",
        Quoted(text));
    return false;
  }
  // A close may lie behind the week's end, as that of a market that never closes.
  static constexpr std::array<unsigned, 5> kMost = {kMinutesPerWeek - 1, 2 * kMinutesPerWeek,
                                                    0xFFFF, 0x7FFF, 1};
  for (const std::string_view group : groups) {
    const std::vector<std::string_view> numbers = Split(group, ',');
    bool good = numbers.size() == kMost.size();
    for (std::size_t i = 0; good && i < kMost.size(); ++i) {
      good = WholeNumber(numbers[i], kMost[i]).has_value();
    }
    if (!good) {
      error = fmt::format(
          "{} is no session; expected OPEN,CLOSE,RESET,DRIBBLE,FLAG in minutes of "
          "the week, the flag 0 or 1, as in 2010,2400,0,0,1",
          Quoted(group));
      return false;
    }
  }
  return true;
}

bool ReadMachineForm(std::string_view text, Demand demand, ZRGS_SESSION& out, std::string& error) {
  if (!CheckMachineForm(text, error)) {
    return false;
  }
  // Which session is at fault can only be told from the list that the reader would empty.
  ZRGS_SESSION asGiven;
  for (const std::string_view group : Split(text.substr(text.find(':') + 1), ';')) {
    if (group.empty()) {
      continue;
    }
    ZRGS_SESSION one;
    CZRGSSession::BuildZRGS_SESSIONFromString(("1:" + std::string(group)).c_str(), one);
    asGiven.sessions.insert(asGiven.sessions.end(), one.sessions.begin(), one.sessions.end());
  }
  error = demand == Demand::kValid ? WhyInvalid(asGiven) : "";
  if (!error.empty()) {
    return false;
  }
  out = asGiven;
  return true;
}

bool ReadEitherForm(std::string_view text, Demand demand, ZRGS_SESSION& out, std::string& error) {
  const std::string_view whole = Trim(text);
  if (whole.empty()) {
    error = "the sessions are empty; expected for example \"Mon-Fri 09:30-16:00\"";
    return false;
  }
  return LooksLikeMachineForm(whole) ? ReadMachineForm(whole, demand, out, error)
                                     : ReadPeoplesForm(whole, demand, out, error);
}

std::string MinuteText(std::uint32_t minute) {
  return fmt::format("{:02}:{:02}", minute / 60, minute % 60);
}

}  // namespace

bool ReadSessions(std::string_view text, ZRGS_SESSION& out, std::string& error) {
  return ReadEitherForm(text, Demand::kValid, out, error);
}

bool ReadRoughSessions(std::string_view text, ZRGS_SESSION& out, std::string& error) {
  return ReadEitherForm(text, Demand::kNothing, out, error);
}

std::string SessionText(const ZRGS_SESSION_INFO& session) {
  const std::uint32_t open = session.OpenMinute % kMinutesPerWeek;
  const std::uint32_t close = open + LengthOf(session);
  const std::uint32_t openDay = open / kMinutesPerDay;
  const std::uint32_t closeDay = close / kMinutesPerDay;
  const std::string from =
      fmt::format("{} {}", kDayWords[openDay].name, MinuteText(open % kMinutesPerDay));
  if (closeDay == openDay) {
    return fmt::format("{} - {}", from, MinuteText(close % kMinutesPerDay));
  }
  if (close == (openDay + 1) * kMinutesPerDay) {
    return fmt::format("{} - 24:00", from);
  }
  return fmt::format("{} - {} {}", from, kDayWords[closeDay % kDays].name,
                     MinuteText(close % kMinutesPerDay));
}

std::string WeekText(const ZRGS_SESSION& week) {
  std::string text;
  for (const ZRGS_SESSION_INFO& session : week.sessions) {
    text += fmt::format("  {:<22}", SessionText(session));
    text += session.ResetFlag != 0 ? " ends the trading day" : " part of the trading day";
    if (session.DribbleMinutes != 0) {
      text += fmt::format(", dribble {} min", +session.DribbleMinutes);
    }
    if (session.ResetMinutes != 0) {
      text += fmt::format(", reset {} min", +session.ResetMinutes);
    }
    text += '\n';
  }
  return text;
}

std::string MachineText(const ZRGS_SESSION& week) {
  CString text;
  CZRGSSession::BuildStringFromZRGS_SESSION(week, text);
  return text.Str();
}

}  // namespace pxd::tool
