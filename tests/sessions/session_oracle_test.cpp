// The lookups against a slow and obvious second opinion, on generated calendars.
//
// The oracle knows no places in the week and no normalised list. It writes every minute of one
// trading week down, as a wall clock would pass them, with what holds in it; and it finds opens and
// closes by stepping a calendar minute by minute until the clock shows the session's minute.
#include <pxdutil/sessions/session.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "random_calendar.h"
#include "session_helpers.h"
#include "tests/support/rounds.h"

namespace {

using session_test::Info;
using session_test::kWeek;
using session_test::MakeCalendar;
using session_test::Numbers;
using session_test::Text;

// ---- The oracle -------------------------------------------------------------------------------

// Seconds of a calendar that began on a Sunday at 00:00, and that Sunday.
constexpr unsigned short kSomeSunday = 45291;  // 31 December 2023

struct Moment {
  std::int64_t minute;  // since the Sunday
  int second;

  [[nodiscard]] int WeekMinute() const {
    return static_cast<int>(((minute % kWeek) + kWeek) % kWeek);
  }
  [[nodiscard]] CZRDateTime DateTime() const {
    const std::int64_t days = kSomeSunday + minute / 1440;
    return CZRDateTime(CZRDate(static_cast<unsigned short>(days)),
                       CZRTime(static_cast<unsigned>(minute % 1440 * 60 + second)));
  }
};

struct Answer {
  CZRGSSession::Status status = CZRGSSession::StatusClosed;
  bool found = false;
  Moment start = {0, 0};
  Moment end = {0, 0};
  std::size_t index = 0;
};

class Oracle {
 public:
  explicit Oracle(const ZRGS_SESSION& list) : m_list(list.sessions) {
    // What is written later wins, so the last session goes first.
    m_bySession.fill(Cell{});
    m_byDay.fill(Cell{});
    for (std::size_t i = m_list.size(); i-- > 0;) {
      const Cell window{CZRGSSession::StatusReset, true, i, i};
      WriteSession(m_bySession, window, i, i);
    }
    std::vector<std::array<std::size_t, 2>> days;
    std::size_t first = 0;
    for (std::size_t i = 0; i < m_list.size(); ++i) {
      if (m_list[i].ResetFlag != 0) {
        days.push_back({first, i});
        first = i + 1;
      }
    }
    std::reverse(days.begin(), days.end());
    for (const auto& [opens, closes] : days) {
      WriteSession(m_byDay, Cell{CZRGSSession::StatusReset, true, opens, closes}, opens, closes);
    }
  }

  [[nodiscard]] Answer Session(const Moment& at) const { return Read(m_bySession, at); }
  [[nodiscard]] Answer Day(const Moment& at) const { return Read(m_byDay, at); }

 private:
  struct Cell {
    CZRGSSession::Status status = CZRGSSession::StatusClosed;
    bool found = false;
    std::size_t first = 0;
    std::size_t last = 0;
  };
  // One cell for each minute on the clock, the minute of the week from Sunday.
  using Clock = std::array<Cell, kWeek>;

  // Writes the sessions `first` to `last`, the time between them and the windows behind them,
  // stopping where the trading week is round.
  void WriteSession(Clock& clock, Cell cell, std::size_t first, std::size_t last) const {
    const int weekStart = m_list.front().OpenMinute % kWeek;
    int minute = m_list[first].OpenMinute % kWeek;
    bool fresh = true;
    const auto step = [&](CZRGSSession::Status status) {
      if (minute == weekStart && !(fresh && first == 0)) {
        return false;
      }
      fresh = false;
      cell.status = status;
      clock[static_cast<std::size_t>(minute)] = cell;
      minute = (minute + 1) % kWeek;
      return true;
    };
    for (std::size_t i = first; i <= last; ++i) {
      while (minute != m_list[i].OpenMinute % kWeek) {
        if (!step(CZRGSSession::StatusInPeriod)) {
          return;
        }
      }
      while (minute != m_list[i].CloseMinute % kWeek) {
        if (!step(CZRGSSession::StatusOpen)) {
          return;
        }
      }
    }
    const int dribble = m_list[last].DribbleMinutes;
    const int longer = std::max<int>(dribble, m_list[last].ResetMinutes);
    for (int i = 0; i < longer; ++i) {
      if (!step(i < dribble ? CZRGSSession::StatusDribble : CZRGSSession::StatusReset)) {
        return;
      }
    }
  }

  [[nodiscard]] Answer Read(const Clock& clock, const Moment& at) const {
    const Cell& cell = clock[static_cast<std::size_t>(at.WeekMinute())];
    Answer answer;
    answer.status = cell.status;
    answer.found = cell.found;
    answer.index = cell.first;
    if (!cell.found) {
      return answer;
    }
    answer.start = {at.minute, 0};
    while (answer.start.WeekMinute() != m_list[cell.first].OpenMinute % kWeek) {
      --answer.start.minute;
    }
    answer.end = answer.start;
    for (std::size_t i = cell.first; i <= cell.last; ++i) {
      while (answer.end.WeekMinute() != m_list[i].CloseMinute % kWeek) {
        ++answer.end.minute;
      }
    }
    return answer;
  }

  const std::vector<ZRGS_SESSION_INFO>& m_list;
  Clock m_bySession;
  Clock m_byDay;
};

// ---- The comparison ---------------------------------------------------------------------------

std::vector<Moment> Moments(const ZRGS_SESSION& list, Numbers& numbers) {
  std::vector<Moment> moments;
  const std::int64_t week = kWeek * std::int64_t{2 + numbers.Below(50)};
  const auto around = [&](int minute) {
    moments.push_back({week + minute - 1, 59});
    moments.push_back({week + minute, 0});
    moments.push_back({week + minute, 59});
  };
  for (const ZRGS_SESSION_INFO& session : list.sessions) {
    around(session.OpenMinute);
    around(session.CloseMinute);
    around(session.CloseMinute + session.DribbleMinutes);
    around(session.CloseMinute + session.ResetMinutes);
  }
  for (int i = 0; i < 10; ++i) {
    moments.push_back({week + numbers.Below(kWeek), numbers.Below(60)});
  }
  return moments;
}

void Compare(const CZRGSSession& calendar, CZRGSSession::ResetType reset, const Answer& want,
             const Moment& at) {
  const CZRDateTime untouched(CZRDate(1), CZRTime(1));
  CZRDateTime start = untouched;
  CZRDateTime end = untouched;
  CZRGSSession::Status status = CZRGSSession::StatusClosed;
  unsigned long index = 999;
  ASSERT_EQ(calendar.GetSessionInfo(reset, at.DateTime(), start, end, status, index),
            CZRGSSession::ReturnOK);
  ASSERT_EQ(status, want.status) << ::testing::PrintToString(at.DateTime());
  ASSERT_EQ(start, want.found ? want.start.DateTime() : untouched)
      << ::testing::PrintToString(at.DateTime());
  ASSERT_EQ(end, want.found ? want.end.DateTime() : untouched)
      << ::testing::PrintToString(at.DateTime());
  if (reset == CZRGSSession::ResetNone) {
    ASSERT_EQ(index, want.found ? want.index : 999);
  } else {
    ASSERT_EQ(index, 0U);
  }
}

TEST(SessionOracle, AgreesOnSessionsAndDaysOfThousandsOfCalendars) {
  Numbers numbers(20260101);
  std::array<int, 5> seen{};
  for (int i = 0; i < pxd::test::Rounds(2000); ++i) {
    const ZRGS_SESSION list = MakeCalendar(numbers);
    ASSERT_EQ(CZRGSSession::IsValid(list), 1);
    const CZRGSSession calendar(list);
    const Oracle oracle(list);
    SCOPED_TRACE(Text(list));
    for (const Moment& at : Moments(list, numbers)) {
      const Answer session = oracle.Session(at);
      const Answer day = oracle.Day(at);
      ASSERT_NO_FATAL_FAILURE(Compare(calendar, CZRGSSession::ResetNone, session, at));
      ASSERT_NO_FATAL_FAILURE(Compare(calendar, CZRGSSession::ResetDay, day, at));
      ++seen[static_cast<std::size_t>(day.status)];
    }
  }
  // The comparison means something only if it has met every outcome often.
  for (const int count : seen) {
    EXPECT_GT(count, pxd::test::Rounds(1000));
  }
}

TEST(SessionOracle, TextsComeBackAsTheSameCalendar) {
  Numbers numbers(7);
  for (int i = 0; i < 2000; ++i) {
    const ZRGS_SESSION list = MakeCalendar(numbers);
    const std::string text = Text(list);
    ZRGS_SESSION back;
    CZRGSSession::BuildZRGS_SESSIONFromString(text.c_str(), back);
    ASSERT_EQ(Text(back), text);
  }
}

TEST(SessionOracle, CutTextsGiveTheSessionsThatWereComplete) {
  Numbers numbers(8);
  for (int i = 0; i < 50; ++i) {
    const std::string text = Text(MakeCalendar(numbers));
    for (std::size_t length = 0; length < text.size(); ++length) {
      ZRGS_SESSION back;
      CZRGSSession::BuildZRGS_SESSIONFromString(text.substr(0, length).c_str(), back);
      // Every number but the flag is followed by a separator, so what is complete is right.
      const std::string again = Text(back);
      const std::string groups = again.substr(again.find(':') + 1);
      const std::string all = text.substr(text.find(':') + 1);
      ASSERT_EQ(all.compare(0, groups.size(), groups), 0) << text.substr(0, length);
    }
  }
}

TEST(SessionOracle, CompactFormsOfRegularWeeksComeBack) {
  Numbers numbers(9);
  for (int i = 0; i < 2000; ++i) {
    const int open = numbers.Below(1000);
    const int close = open + 1 + numbers.Below(1400 - open);
    const int reset = numbers.Below(1440 - close);
    const int days = 1 + numbers.Below(127);
    ZRGS_SESSION list;
    for (int day = 0; day < 7; ++day) {
      if ((days >> day & 1) != 0) {
        list.sessions.push_back(Info(static_cast<unsigned>(day * 1440 + open),
                                     static_cast<unsigned>(day * 1440 + close),
                                     static_cast<unsigned>(reset)));
      }
    }
    unsigned long ranges[2] = {};
    unsigned char masks[2] = {};
    unsigned int count = 0;
    unsigned short backReset = 0;
    CZRGSSession::BuildUNI_SESSIONFromZRGS_SESSION(list, ranges, masks, count, backReset);
    ASSERT_EQ(masks[0], days);
    ZRGS_SESSION back;
    ASSERT_TRUE(
        CZRGSSession::BuildZRGS_SESSIONFromUNI_SESSION(ranges, masks, count, backReset, back));
    ASSERT_EQ(Text(back), Text(list));
  }
}

}  // namespace
