// The text and compact forms of a calendar.
#include <pxdutil/sessions/session.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <optional>
#include <utility>

#include <pxdutil/sessions/detail/week.h>

using namespace pxd::detail;

namespace {

constexpr std::size_t kDayTimeSize = 28;

// Takes tokens off a text, each with separators of its own: it skips leading separators and ends a
// token at the next one.
class Tokens {
 public:
  explicit Tokens(const char* text) : m_rest(text) {}

  // The number that the next token begins with, 0 where it begins with none; nothing at the end of
  // the text. Numbers beyond 32 bits are taken as the largest or smallest there is.
  std::optional<std::int32_t> Number(const char* separators) {
    m_rest += std::strspn(m_rest, separators);
    if (*m_rest == '\0') {
      return std::nullopt;
    }
    // No separator can be part of a number, so the conversion ends within the token.
    const long long value = std::strtoll(m_rest, nullptr, 10);
    m_rest += std::strcspn(m_rest, separators);
    m_rest += *m_rest != '\0' ? 1 : 0;
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(std::clamp<long long>(value, Limits::min(), Limits::max()));
  }

 private:
  const char* m_rest;
};

// The next session of the machine text form, if it is complete.
std::optional<ZRGS_SESSION_INFO> ReadSession(Tokens& tokens) {
  std::array<std::uint16_t, 5> words{};
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::optional<std::int32_t> value = tokens.Number(i + 1 < words.size() ? "," : ";");
    if (!value) {
      return std::nullopt;
    }
    words[i] = static_cast<std::uint16_t>(*value);
  }
  ZRGS_SESSION_INFO session;
  session.OpenMinute = words[0];
  session.CloseMinute = words[1];
  session.ResetMinutes = words[2];
  session.DribbleMinutes = words[3] & 0x7FFF;
  session.ResetFlag = words[4] & 1;
  return session;
}

// A range of the compact form on the day that begins at the minute `base`.
ZRGS_SESSION_INFO SessionOfRange(unsigned long range, int base) {
  ZRGS_SESSION_INFO session;
  session.OpenMinute = static_cast<std::uint16_t>((range & 0xFFFF) + static_cast<unsigned>(base));
  session.CloseMinute =
      static_cast<std::uint16_t>((range >> 16 & 0xFFFF) + static_cast<unsigned>(base));
  if (session.CloseMinute < session.OpenMinute) {
    session.CloseMinute = static_cast<std::uint16_t>(session.CloseMinute + kMinutesPerDay);
  }
  return session;
}

// Whether a session with its windows takes no more than a day. The length is a 16-bit word.
bool FitsIntoADay(const ZRGS_SESSION_INFO& session) {
  const int end = EffectiveEnd(session);
  const int wrap = session.OpenMinute > end ? kMinutesPerWeek : 0;
  return static_cast<std::uint16_t>(end + wrap - session.OpenMinute) <= kMinutesPerDay;
}

// Whether a list built from outside can be used.
bool IsUsable(const SessionList& sessions) {
  if (sessions.empty() || sessions.size() > kMaxSessions || !FitsIntoADay(sessions.front())) {
    return false;
  }
  OverlapCheck check(sessions.front(), false);
  for (std::size_t i = 1; i < sessions.size(); ++i) {
    if (check.Step(sessions[i]) != OverlapCheck::kNone || !FitsIntoADay(sessions[i])) {
      return false;
    }
  }
  return true;
}

}  // namespace

void CZRGSSession::BuildStringFromZRGS_SESSION(const ZRGS_SESSION& session, CString& out) {
  out.Format("%u:", static_cast<unsigned>(session.sessions.size()));
  const char* separator = "";
  for (const ZRGS_SESSION_INFO& info : session.sessions) {
    out.AppendFormat("%s%u,%u,%u,%u,%u", separator, unsigned{info.OpenMinute},
                     unsigned{info.CloseMinute}, unsigned{info.ResetMinutes},
                     unsigned{info.DribbleMinutes}, unsigned{info.ResetFlag});
    separator = ";";
  }
}

void CZRGSSession::BuildZRGS_SESSIONFromString(const char* text, ZRGS_SESSION& out) {
  out.sessions.clear();
  if (text == nullptr) {
    return;
  }
  Tokens tokens(text);
  const std::optional<std::int32_t> count = tokens.Number(":;,");
  if (!count) {
    return;
  }
  for (std::int32_t i = 0; i < *count; ++i) {
    const std::optional<ZRGS_SESSION_INFO> session = ReadSession(tokens);
    if (!session) {
      return;  // what was complete stays, and stays unchecked
    }
    out.sessions.push_back(*session);
  }
  if (IsValid(out) == 0) {
    out.sessions.clear();
  }
}

void CZRGSSession::WordToDayTimeString(unsigned short minute, char* buffer) {
  static constexpr const char* kDayNames[] = {"Sun", "Mon", "Tue", "Wed", "Thr", "Fri", "Sat"};
  const std::size_t day = minute / std::size_t{kMinutesPerDay};
  const int minuteOfDay = minute % kMinutesPerDay;
  std::snprintf(buffer, kDayTimeSize, "%s %02i:%02i", day < 7 ? kDayNames[day] : "",
                minuteOfDay / 60, minuteOfDay % 60);
}

void CZRGSSession::GetDisplayString(CString& out) const {
  const char* separator = "";
  for (const ZRGS_SESSION_INFO& info : m_sessions.sessions) {
    char open[kDayTimeSize];
    char close[kDayTimeSize];
    WordToDayTimeString(info.OpenMinute, open);
    WordToDayTimeString(info.CloseMinute, close);
    out.AppendFormat("%s%s - %s", separator, open, close);
    separator = ", ";
  }
}

void CZRGSSession::BuildUNI_SESSIONFromZRGS_SESSION(const ZRGS_SESSION& session,
                                                    unsigned long* ranges, unsigned char* masks,
                                                    unsigned int& count, unsigned short& reset) {
  count = 0;
  std::array<std::optional<unsigned long>, 2> slots;
  for (const ZRGS_SESSION_INFO& info : session.sessions) {
    const std::size_t slot = info.ResetFlag != 0 ? 0 : 1;
    const unsigned long start = info.OpenMinute % kMinutesPerDay;
    const unsigned long end = info.CloseMinute % kMinutesPerDay;
    const unsigned long range = (end << 16) + start;
    if (!slots[slot]) {
      slots[slot] = range;
      reset = info.ResetMinutes;
    }
    if (slots[slot] == range) {
      const unsigned long long bit = 1ULL << (info.OpenMinute / kMinutesPerDay);
      masks[slot] |= static_cast<unsigned char>(bit & 0xFF);
    }
  }
  for (std::size_t slot = 0; slot < slots.size(); ++slot) {
    if (slots[slot]) {
      ranges[slot] = *slots[slot];
      ++count;
    }
  }
}

bool CZRGSSession::BuildZRGS_SESSIONFromUNI_SESSION(const unsigned long* ranges,
                                                    const unsigned char* masks, unsigned int count,
                                                    unsigned short reset, ZRGS_SESSION& out) {
  SessionList& sessions = out.sessions;
  sessions.clear();
  for (int day = 0; day < 7; ++day) {
    const unsigned bit = 1U << day;
    const int base = day * kMinutesPerDay;
    const bool hasSecond = count > 1 && (masks[1] & bit) != 0;
    const bool hasMain = (masks[0] & bit) != 0;
    if (hasSecond) {
      sessions.push_back(SessionOfRange(ranges[1], base));
    }
    if (hasMain) {
      ZRGS_SESSION_INFO main = SessionOfRange(ranges[0], base);
      main.ResetMinutes = reset;
      main.ResetFlag = 1;
      if (main.CloseMinute < main.OpenMinute) {
        int close = static_cast<std::uint16_t>(main.CloseMinute + kMinutesPerDay);
        close -= close > kMinutesPerWeek ? kMinutesPerWeek : 0;
        main.CloseMinute = static_cast<std::uint16_t>(close);
      }
      sessions.push_back(main);
    }
    if (hasSecond && hasMain) {
      ZRGS_SESSION_INFO& second = sessions[sessions.size() - 2];
      ZRGS_SESSION_INFO& main = sessions.back();
      if (main.CloseMinute < second.OpenMinute) {
        std::swap(main, second);
      }
    }
  }
  return CorrectBuiltZRGS_SESSION(out);
}

bool CZRGSSession::CorrectBuiltZRGS_SESSION(ZRGS_SESSION& session) {
  if (IsUsable(session.sessions)) {
    return true;
  }
  invalidate_session(session);
  return false;
}

void CZRGSSession::invalidate_session(ZRGS_SESSION& session) {
  ZRGS_SESSION_INFO info;
  info.OpenMinute = 2010;
  info.CloseMinute = 2400;
  info.ResetFlag = 1;
  session.sessions.assign(1, info);
}
