// A calendar that has been asked often answers from what it worked out beforehand. It must answer
// as one that is asked for the first time, which walks through its list.
#include <gtest/gtest.h>

#include <array>
#include <tuple>
#include <utility>

#include <pxdutil/sessions/session.h>

#include "random_calendar.h"
#include "tests/support/rounds.h"

using namespace session_test;

namespace {

using Answer = std::tuple<int, CZRDateTime, CZRDateTime, int, unsigned long, unsigned short>;

const CZRDateTime kUntouched(CZRDate(7), CZRTime(7U));

constexpr std::array kPeriods = {CZRGSSession::ResetNone, CZRGSSession::ResetDay,
                                 CZRGSSession::ResetWeek, CZRGSSession::ResetMonth,
                                 CZRGSSession::ResetYear};

Answer Ask(const CZRGSSession& calendar, CZRGSSession::ResetType period, const CZRDateTime& dt) {
  CZRDateTime start = kUntouched;
  CZRDateTime end = kUntouched;
  CZRGSSession::Status status = CZRGSSession::StatusReset;
  unsigned long index = 999;
  unsigned short flags = 8;
  const int result = calendar.GetSessionInfo(period, dt, start, end, status, index, flags);
  return {result, start, end, status, index, flags};
}

// Any words at all, as a text from outside may bring them.
ZRGS_SESSION AnyList(Numbers& numbers) {
  ZRGS_SESSION list;
  for (int i = numbers.Below(30); i > 0; --i) {
    const auto word = [&](int limit) { return static_cast<unsigned>(numbers.Below(limit)); };
    const int limit = numbers.Chance(70) ? kWeek + 1 : 0x10000;
    list.sessions.push_back(Info(word(limit), word(limit), word(numbers.Chance(80) ? 300 : 0x10000),
                                 word(numbers.Chance(80) ? 300 : 0x8000),
                                 numbers.Chance(50) ? 1U : 0U));
  }
  return list;
}

// A moment near an edge of the week's minutes, at the ends of all days, or none.
CZRDateTime AnyMoment(Numbers& numbers) {
  if (numbers.Chance(3)) {
    return CZRDateTime(CZRDate(static_cast<unsigned short>(numbers.Below(0x10000))),
                       CZRTime(numbers.Chance(50) ? 0xFFFFFFFFU : 86400U));
  }
  const int day = numbers.Chance(10) ? numbers.Below(0x10000) : 45000 + numbers.Below(800);
  const int second = numbers.Chance(50) ? numbers.Below(86400) : 60 * numbers.Below(1440);
  return CZRDateTime(CZRDate(static_cast<unsigned short>(day)),
                     CZRTime(static_cast<unsigned>(second)));
}

TEST(SessionIndex, AnswersAsAFreshCalendarDoes) {
  Numbers numbers(20240304);
  for (int round = 0; round < pxd::test::Rounds(400); ++round) {
    const ZRGS_SESSION list = round % 2 == 0 ? MakeCalendar(numbers) : AnyList(numbers);
    const CZRGSSession calendar(list);
    for (int i = 0; i < 300; ++i) {
      const CZRGSSession::ResetType period =
          kPeriods[static_cast<std::size_t>(numbers.Below(static_cast<int>(kPeriods.size())))];
      const CZRDateTime dt = AnyMoment(numbers);
      ASSERT_EQ(Ask(calendar, period, dt), Ask(CZRGSSession(list), period, dt))
          << "round " << round << ", look-up " << i << ", period " << period << ", day "
          << dt.GetDate().GetJulianDate() << ", second " << dt.GetTime().GetTime();
    }
  }
}

// At every minute, and a second before it, of a week with all that a calendar can have.
TEST(SessionIndex, AnswersAlikeAtEveryEdge) {
  ZRGS_SESSION list;
  list.sessions = {Info(1020, 2400, 30, 10, 1), Info(2460, 3000, 0, 20, 0),
                   Info(3010, 3840, 10, 30, 1), Info(8900, 240, 60, 60, 1)};
  const CZRGSSession calendar(list);
  for (int minute = 0; minute < 2 * kWeek; ++minute) {
    for (const int second : {-1, 0}) {
      const int at = minute * 60 + second + 86400;
      const CZRDateTime dt(CZRDate(static_cast<unsigned short>(45000 + at / 86400)),
                           CZRTime(static_cast<unsigned>(at % 86400)));
      for (const auto period : {CZRGSSession::ResetNone, CZRGSSession::ResetDay,
                                CZRGSSession::ResetWeek, CZRGSSession::ResetMonth}) {
        ASSERT_EQ(Ask(calendar, period, dt), Ask(CZRGSSession(list), period, dt)) << minute;
      }
    }
  }
}

// The list can be edited in place at any time, and a month is always that of the list as it stands.
TEST(SessionIndex, AMonthFollowsEveryEditOfTheList) {
  Numbers numbers(5);
  CZRGSSession calendar(MakeCalendar(numbers));
  for (int i = 0; i < 2000; ++i) {
    if (numbers.Chance(10)) {
      *calendar.GetSessionPtr() = MakeCalendar(numbers);
    }
    const CZRDateTime dt = AnyMoment(numbers);
    const Answer answer = Ask(calendar, CZRGSSession::ResetMonth, dt);
    const Answer fresh = Ask(CZRGSSession(calendar.GetSession()), CZRGSSession::ResetMonth, dt);
    ASSERT_EQ(std::get<1>(answer), std::get<1>(fresh)) << i;
    ASSERT_EQ(std::get<2>(answer), std::get<2>(fresh)) << i;
  }
}

// Look-ups answer from the list as it stood when it was first asked. A look-up of a month makes the
// next one count the list afresh, as it stands; where the month is one that the moment lies in, it
// makes that look-up itself.
TEST(SessionIndex, AnEditShowsOnceBehindAMonth) {
  Numbers numbers(23);
  int shown = 0;
  for (int round = 0; round < 60; ++round) {
    const ZRGS_SESSION kept = MakeCalendar(numbers);
    ZRGS_SESSION edited = kept;
    CZRGSSession calendar(kept);
    Ask(calendar, CZRGSSession::ResetNone, Day(1, 12, 0));
    bool showsNext = false;
    for (int i = 0; i < 300; ++i) {
      if (numbers.Chance(5)) {
        edited = kept;
        if (numbers.Chance(60)) {
          ZRGS_SESSION_INFO& session = edited.sessions[static_cast<std::size_t>(
              numbers.Below(static_cast<int>(edited.sessions.size())))];
          session.CloseMinute = static_cast<std::uint16_t>((session.CloseMinute + 7) % kWeek);
          session.ResetFlag = session.ResetFlag == 0;
        }
        *calendar.GetSessionPtr() = edited;
      }
      const CZRDateTime dt = AnyMoment(numbers);
      if (numbers.Chance(10)) {
        const Answer month = Ask(calendar, CZRGSSession::ResetMonth, dt);
        showsNext = std::get<3>(month) == CZRGSSession::StatusClosed;
        continue;
      }
      const auto period = kPeriods[static_cast<std::size_t>(numbers.Below(3))];
      if (period == CZRGSSession::ResetWeek && showsNext) {
        continue;  // it looks twice, so that half of its answer is the edited list's
      }
      const ZRGS_SESSION& asked = showsNext ? edited : kept;
      shown += showsNext && CZRGSSession(kept).Compare(CZRGSSession(edited)) != 0 ? 1 : 0;
      showsNext = false;
      ASSERT_EQ(Ask(calendar, period, dt), Ask(CZRGSSession(asked), period, dt))
          << "round " << round << ", look-up " << i << ", period " << period;
    }
  }
  EXPECT_GT(shown, 20);
}

TEST(SessionAnswerSpan, EveryMomentOfItHasTheSameAnswer) {
  Numbers numbers(17);
  int found = 0;
  int lasting = 0;
  for (int round = 0; round < 300; ++round) {
    const ZRGS_SESSION list = round % 2 == 0 ? MakeCalendar(numbers) : AnyList(numbers);
    const CZRGSSession calendar(list);
    for (int i = 0; i < 60; ++i) {
      const CZRGSSession::ResetType period =
          kPeriods[static_cast<std::size_t>(numbers.Below(static_cast<int>(kPeriods.size())))];
      const CZRDateTime dt = AnyMoment(numbers);
      const Answer answer = Ask(calendar, period, dt);
      pxd::AnswerSpan span;
      if (!calendar.FindAnswerSpan(period, dt, span)) {
        continue;
      }
      ++found;
      ASSERT_TRUE(span.Has(dt));
      ASSERT_LE(span.until, 86400U);
      lasting += span.until - span.from > 600 ? 1 : 0;
      const auto length = static_cast<int>(span.until - span.from);
      for (const int second : {0, length - 1, numbers.Below(length), numbers.Below(length)}) {
        const CZRDateTime other(span.date, CZRTime(span.from + static_cast<unsigned>(second)));
        ASSERT_TRUE(span.Has(other));
        ASSERT_EQ(Ask(CZRGSSession(list), period, other), answer)
            << "round " << round << ", period " << period << ", day "
            << dt.GetDate().GetJulianDate() << ", seconds " << dt.GetTime().GetTime() << " and "
            << other.GetTime().GetTime();
      }
      EXPECT_FALSE(span.Has(CZRDateTime(span.date, CZRTime(span.until))));
      EXPECT_FALSE(span.from > 0 && span.Has(CZRDateTime(span.date, CZRTime(span.from - 1))));
    }
  }
  EXPECT_GT(found, 8000);
  EXPECT_GT(lasting, 4000);
}

TEST(SessionAnswerSpan, LastsFromTheOpenToTheClose) {
  const CZRGSSession calendar(Weekdays(30, 10));
  const auto spanAt = [&](CZRGSSession::ResetType period, unsigned hour, unsigned minute) {
    Ask(calendar, period, Day(1, hour, minute));
    pxd::AnswerSpan span;
    EXPECT_TRUE(calendar.FindAnswerSpan(period, Day(1, hour, minute), span));
    EXPECT_EQ(span.date, Day(1, 0, 0).GetDate());
    return std::pair(span.from, span.until);
  };
  constexpr unsigned kOpen = 34200;
  constexpr unsigned kClose = 57600;
  using Span = std::pair<unsigned, unsigned>;
  EXPECT_EQ(spanAt(CZRGSSession::ResetNone, 9, 30), Span(kOpen, kClose));
  EXPECT_EQ(spanAt(CZRGSSession::ResetNone, 9, 29), Span(0, kOpen));
  EXPECT_EQ(spanAt(CZRGSSession::ResetNone, 16, 0), Span(kClose, kClose + 600));
  EXPECT_EQ(spanAt(CZRGSSession::ResetNone, 16, 10), Span(kClose + 600, kClose + 1800));
  EXPECT_EQ(spanAt(CZRGSSession::ResetDay, 20, 0), Span(kClose + 1800, 86400));
}

TEST(SessionAnswerSpan, IsUnknownWhereTheAnswerMayComeFromElsewhere) {
  const CZRDateTime noon = Day(1, 12, 0);
  const auto isKnown = [](const CZRGSSession& calendar, CZRGSSession::ResetType period,
                          const CZRDateTime& dt) {
    Ask(calendar, period, dt);
    pxd::AnswerSpan span;
    return calendar.FindAnswerSpan(period, dt, span);
  };
  CZRGSSession calendar(Weekdays(0, 0));
  pxd::AnswerSpan span;
  EXPECT_FALSE(calendar.FindAnswerSpan(CZRGSSession::ResetNone, noon, span)) << "never asked";
  EXPECT_TRUE(isKnown(calendar, CZRGSSession::ResetNone, noon));
  EXPECT_FALSE(calendar.FindAnswerSpan(CZRGSSession::ResetMonth, noon, span)) << "no month asked";
  EXPECT_TRUE(isKnown(calendar, CZRGSSession::ResetMonth, noon));
  EXPECT_FALSE(isKnown(calendar, CZRGSSession::ResetYear, noon));
  EXPECT_FALSE(isKnown(calendar, static_cast<CZRGSSession::ResetType>(5), noon));
  EXPECT_FALSE(isKnown(calendar, CZRGSSession::ResetNone, CZRDateTime()));
  EXPECT_FALSE(isKnown(calendar, CZRGSSession::ResetNone, CZRDateTime(CZRDate(13), CZRTime(0U))));
  EXPECT_FALSE(isKnown(CZRGSSession(), CZRGSSession::ResetNone, noon));
  calendar.GetSessionPtr()->sessions.pop_back();
  EXPECT_FALSE(isKnown(calendar, CZRGSSession::ResetNone, noon)) << "edited";
}

}  // namespace
