// Calendars made up at random, the same ones on every machine.
#ifndef PXDUTIL_TESTS_SESSIONS_RANDOM_CALENDAR_H
#define PXDUTIL_TESTS_SESSIONS_RANDOM_CALENDAR_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

#include <pxdutil/sessions/session.h>

#include "session_helpers.h"

namespace session_test {

// The minutes of a week.
inline constexpr int kWeek = 10080;

// Numbers that are the same with every standard library.
class Numbers {
 public:
  explicit Numbers(std::uint32_t seed) : m_engine(seed) {}
  int Below(int limit) { return static_cast<int>(m_engine() % static_cast<std::uint32_t>(limit)); }
  bool Chance(int percent) { return Below(100) < percent; }

 private:
  std::mt19937 m_engine;
};

// A valid calendar of up to 12 sessions that starts anywhere in the week.
inline ZRGS_SESSION MakeCalendar(Numbers& numbers) {
  for (;;) {
    const int count = 1 + numbers.Below(12);
    std::vector<int> cuts;
    for (int i = 0; i < 2 * count; ++i) {
      cuts.push_back(numbers.Below(kWeek));
    }
    std::sort(cuts.begin(), cuts.end());
    cuts.erase(std::unique(cuts.begin(), cuts.end()), cuts.end());
    if (cuts.size() % 2 != 0) {
      cuts.pop_back();
    }
    const int firstOpen = numbers.Below(kWeek);
    ZRGS_SESSION list;
    for (std::size_t i = 0; i + 1 < cuts.size(); i += 2) {
      const int open = (firstOpen + cuts[i] - cuts[0]) % kWeek;
      int close = (firstOpen + cuts[i + 1] - cuts[0]) % kWeek;
      if (close == 0 && numbers.Chance(50)) {
        close = kWeek;  // both name the end of the week
      }
      const bool flagged = numbers.Chance(60);
      const int reset = numbers.Chance(50) ? numbers.Below(200) : 0;
      const int dribble = numbers.Chance(50) ? numbers.Below(200) : 0;
      list.sessions.push_back(Info(static_cast<unsigned>(open), static_cast<unsigned>(close),
                                   static_cast<unsigned>(reset), static_cast<unsigned>(dribble),
                                   flagged ? 1 : 0));
    }
    CZRGSSession calendar(list);
    if (!list.sessions.empty() && calendar.MakeValid()) {
      return calendar.GetSession();
    }
  }
}

}  // namespace session_test

#endif
