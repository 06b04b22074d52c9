#include <gtest/gtest.h>

#include <cstddef>

#include <pxdutil/sessions/detail/slot_memo.h>
#include <pxdutil/sessions/detail/week_index.h>

#include "session_helpers.h"

using namespace session_test;

namespace {

using pxd::detail::Slot;
using pxd::detail::SlotMemo;
using pxd::detail::SlotsOf;

CResoln Minutes(unsigned short quantity) {
  return CResoln(ZRGS_RESOLUTION{3, quantity});
}

const CZRDate kDate = Day(1, 0, 0).GetDate();

CZRDateTime At(unsigned seconds) {
  return CZRDateTime(kDate, CZRTime(seconds));
}

Slot From(unsigned from, unsigned until) {
  return {{kDate, from, until}, CZRGSSession::StatusOpen, At(until)};
}

TEST(SlotMemo, FindsAMomentOfTheSpanThatWasKeptLast) {
  SlotMemo memo;
  EXPECT_EQ(memo.Find(CResoln(), CZRDateTime()), nullptr) << "nothing is known to begin with";
  memo.Keep(Minutes(5), From(600, 900));
  ASSERT_NE(memo.Find(Minutes(5), At(600)), nullptr);
  EXPECT_EQ(memo.Find(Minutes(5), At(600))->close, At(900));
  EXPECT_EQ(memo.Find(Minutes(5), At(600))->status, CZRGSSession::StatusOpen);
  EXPECT_NE(memo.Find(Minutes(5), At(899)), nullptr);
  EXPECT_EQ(memo.Find(Minutes(5), At(900)), nullptr);
  EXPECT_EQ(memo.Find(Minutes(5), At(599)), nullptr);
  memo.Keep(Minutes(5), From(900, 1200));
  EXPECT_EQ(memo.Find(Minutes(5), At(600)), nullptr);
  EXPECT_NE(memo.Find(Minutes(5), At(900)), nullptr);
}

TEST(SlotMemo, KeepsTheUsualResolutionsOfACalendarSideBySide) {
  const CResoln usual[] = {Minutes(1),
                           Minutes(5),
                           Minutes(15),
                           Minutes(30),
                           Minutes(60),
                           CResoln(ZRGS_RESOLUTION{4, 1}),
                           CResoln(ZRGS_RESOLUTION{5, 1})};
  SlotMemo memo;
  unsigned until = 1000;
  for (const CResoln& resolution : usual) {
    memo.Keep(resolution, From(0, until++));
  }
  until = 1000;
  for (const CResoln& resolution : usual) {
    ASSERT_NE(memo.Find(resolution, At(5)), nullptr);
    EXPECT_EQ(memo.Find(resolution, At(5))->close, At(until++));
  }
}

TEST(SlotMemo, NoResolutionFindsThatOfAnother) {
  SlotMemo memo;
  for (unsigned short quantity = 1; quantity <= 100; ++quantity) {
    memo.Keep(Minutes(quantity), From(0, 1000U + quantity));
    EXPECT_NE(memo.Find(Minutes(quantity), At(5)), nullptr);
    for (unsigned short other = 1; other <= 100; ++other) {
      const Slot* const slot = memo.Find(Minutes(other), At(5));
      EXPECT_TRUE(slot == nullptr || slot->close == At(1000U + other)) << quantity << ' ' << other;
    }
  }
}

TEST(SlotMemo, ForgetsWhereTheFirstOpenIsAnother) {
  SlotMemo memo;
  memo.CountFrom(0);
  memo.Keep(Minutes(5), From(600, 900));
  memo.CountFrom(0);
  EXPECT_NE(memo.Find(Minutes(5), At(600)), nullptr);
  memo.CountFrom(1);
  EXPECT_EQ(memo.Find(Minutes(5), At(600)), nullptr);
  memo.CountFrom(0);
  EXPECT_EQ(memo.Find(Minutes(5), At(600)), nullptr);
}

TEST(SlotMemo, ACalendarHasOneAsLongAsItAnswersFromItsIndex) {
  CZRGSSession calendar(Weekdays(0, 0));
  const auto ask = [](const CZRGSSession& asked, CZRGSSession::ResetType period,
                      const CZRDateTime& dt) {
    CZRDateTime open;
    CZRDateTime close;
    auto status = CZRGSSession::StatusClosed;
    unsigned long index = 0;
    asked.GetSessionInfo(period, dt, open, close, status, index);
  };
  EXPECT_EQ(SlotsOf(calendar), nullptr);
  for (int i = 0; i < 100; ++i) {
    ask(calendar, CZRGSSession::ResetNone, Day(1, 12, 0));
  }
  SlotMemo* const slots = SlotsOf(calendar);
  ASSERT_NE(slots, nullptr);
  slots->Keep(Minutes(5), From(600, 900));
  EXPECT_EQ(SlotsOf(calendar), slots);
  EXPECT_NE(slots->Find(Minutes(5), At(600)), nullptr);

  // Behind a month that its moment doesn't lie in, the next look-up counts the list afresh. Sunday
  // 31 March 2024 is behind the last close of March.
  ask(calendar, CZRGSSession::ResetMonth, session_test::At(3, 31, 2024, 12, 0));
  EXPECT_EQ(SlotsOf(calendar), nullptr);
  ask(calendar, CZRGSSession::ResetNone, Day(1, 12, 0));
  EXPECT_NE(SlotsOf(calendar), nullptr);

  calendar.GetSessionPtr()->sessions.front().OpenMinute += 1;
  ASSERT_NE(SlotsOf(calendar), nullptr);
  EXPECT_EQ(SlotsOf(calendar)->Find(Minutes(5), At(600)), nullptr);
  calendar.Clear();
  EXPECT_EQ(SlotsOf(calendar), nullptr);

  // Brought up for a copy, and never asked.
  CZRGSSession counted(Weekdays(0, 0));
  const CZRGSSession copy(counted, 1);
  pxd::AnswerSpan span;
  EXPECT_TRUE(counted.FindAnswerSpan(CZRGSSession::ResetNone, Day(1, 12, 0), span));
  EXPECT_EQ(SlotsOf(counted), nullptr);
}

}  // namespace
