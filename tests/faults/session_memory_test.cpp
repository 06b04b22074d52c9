// Calendars while memory runs out.
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include <pxdutil/sessions/session.h>

#include "tests/faults/refusals.h"

namespace {

using faults_test::Attempt;
using faults_test::RefuseEachAllocation;

constexpr const char* kWeek =
    "5:2010,2400,0,0,1;3450,3840,0,0,1;4890,5280,0,0,1;6330,6720,0,0,1;7770,8160,0,0,1;";
constexpr const char* kDay = "1:2010,2400,0,0,1;";

std::string TextOf(const CZRGSSession& calendar) {
  CString text;
  calendar.GetSession(text);
  return text.Str();
}

TEST(SessionMemory, AnAssignedCalendarIsTheOldOneOrTheNew) {
  const CZRGSSession week(kWeek);
  const std::string weekText = TextOf(week);
  const std::string dayText = TextOf(CZRGSSession(kDay));
  RefuseEachAllocation([&](Attempt& attempt) {
    CZRGSSession calendar(kDay);
    const bool done = attempt.Run([&] { calendar = week; });
    EXPECT_EQ(TextOf(calendar), done ? weekText : dayText);
    CZRGSSession record(kDay);
    const bool taken = attempt.Run([&] { record = week.GetSession(); });
    EXPECT_EQ(TextOf(record), taken ? weekText : dayText);
  });
}

TEST(SessionMemory, ConstructionAndTextsAreWholeOrThrow) {
  const std::string weekText = TextOf(CZRGSSession(kWeek));
  RefuseEachAllocation([&](Attempt& attempt) {
    attempt.Run([&] {
      const CZRGSSession week(kWeek);
      const CZRGSSession copy(week);
      const CZRGSSession normalized(week, 1);
      CString text;
      copy.GetSession(text);
      EXPECT_STREQ(text, weekText.c_str());
      week.GetDisplayString(text);
      EXPECT_GT(text.GetLength(), 40);
    });
    ZRGS_SESSION record;
    CZRGSSession::BuildZRGS_SESSIONFromString(kDay, record);
    const bool read =
        attempt.Run([&] { CZRGSSession::BuildZRGS_SESSIONFromString(kWeek, record); });
    EXPECT_LE(record.sessions.size(), 5U);
    EXPECT_TRUE(!read || record.sessions.size() == 5);
    CZRGSSession::BuildZRGS_SESSIONFromString(kWeek, record);
    EXPECT_EQ(record.sessions.size(), 5U);
  });
}

// Look-ups work on copies of the calendar that are made once; a refusal must leave them such that
// the next look-up is right.
TEST(SessionMemory, ALookUpAfterAFailureIsRight) {
  const CZRDateTime moment(CZRDate(static_cast<unsigned short>(45355)), CZRTime(36000U));
  const auto ask = [&](const CZRGSSession& week, CZRGSSession::ResetType period, CZRDateTime& open,
                       CZRDateTime& close) {
    CZRGSSession::Status status = CZRGSSession::StatusClosed;
    unsigned long index = 0;
    unsigned short flags = 0;
    week.GetSessionInfo(period, moment, open, close, status, index, flags);
    CZRDateTime nextOpen;
    CZRDateTime nextClose;
    week.GetNextDailyResetSessionInfo(moment, nextOpen, nextClose, index);
    week.GetNextWeeklySessionCloseDT(moment, nextClose);
    week.GetNextMonthlySessionCloseDT(moment, nextClose);
    week.GetNextYearlySessionCloseDT(moment, nextClose);
    CZRDateTime back = moment;
    week.GetPreviousDailyResetDateTime(back, 1);
  };
  for (int period = CZRGSSession::ResetNone; period <= CZRGSSession::ResetYear; ++period) {
    SCOPED_TRACE(period);
    const auto type = static_cast<CZRGSSession::ResetType>(period);
    CZRDateTime wantedOpen;
    CZRDateTime wantedClose;
    {
      const CZRGSSession fresh(kWeek);
      ask(fresh, type, wantedOpen, wantedClose);
    }
    RefuseEachAllocation([&](Attempt& attempt) {
      const CZRGSSession week(kWeek);
      CZRDateTime open;
      CZRDateTime close;
      attempt.Run([&] {
        const auto atLeastOne = std::make_unique<int>(1);
        ask(week, type, open, close);
      });
      ask(week, type, open, close);
      EXPECT_TRUE(open == wantedOpen);
      EXPECT_TRUE(close == wantedClose);
    });
  }
}

TEST(SessionMemory, ARepairLeavesAUsableCalendar) {
  RefuseEachAllocation([](Attempt& attempt) {
    CZRGSSession week(kWeek);
    attempt.Run([&] {
      const auto atLeastOne = std::make_unique<int>(1);
      week.MakeValid();
      week.ApplyOffset(600);
      week.FilterDribbleInSession();
      week.SetToNaturalSessions();
    });
    EXPECT_LE(TextOf(week).size(), 400U);
    week = CZRGSSession(kWeek);
    EXPECT_EQ(CZRGSSession::IsValid(week.GetSession()), 1);
  });
}

}  // namespace
