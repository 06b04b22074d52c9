#include <pxdutil/sessions/session.h>

#include <cstring>
#include <memory>
#include <type_traits>

#include <gtest/gtest.h>

#include "session_helpers.h"

namespace {

using session_test::Info;
using session_test::List;
using session_test::Text;
using session_test::Weekdays;

template <class... Enumerations>
constexpr bool kArePlainInts = ((std::is_same_v<std::underlying_type_t<Enumerations>, int> &&
                                 std::is_convertible_v<Enumerations, int>)&&...);
static_assert(kArePlainInts<CZRGSSession::ResetType, CZRGSSession::Status, CZRGSSession::ReturnType,
                            CZRDateTime::CDateTimeLimit>);

TEST(Session, ItsRecordNamesItAndMakesOne) {
  const CRuntimeClass* record = RUNTIME_CLASS(CZRGSSession);
  EXPECT_STREQ(record->m_lpszClassName, "CZRGSSession");
  EXPECT_EQ(record->m_pfnGetBaseClass(), RUNTIME_CLASS(CObject));
  EXPECT_EQ(CZRGSSession::GetThisClass(), record);
  const std::unique_ptr<CObject> made(record->CreateObject());
  ASSERT_NE(made, nullptr);
  EXPECT_EQ(made->GetRuntimeClass(), record);
  EXPECT_EQ(static_cast<CZRGSSession&>(*made).GetNumSessions(), 0U);
  const std::unique_ptr<CObject> alsoMade(CZRGSSession::CreateObject());
  EXPECT_TRUE(alsoMade->IsKindOf(record));
}

TEST(Session, ItsInfoHasFourWordsInOrder) {
  const ZRGS_SESSION_INFO info = Info(0x0102, 0x0304, 0x0506, 0x7FFE, 1);
  std::uint16_t words[4];
  static_assert(sizeof words == sizeof info);
  std::memcpy(words, &info, sizeof words);
  EXPECT_EQ(words[0], 0x0102);
  EXPECT_EQ(words[1], 0x0304);
  EXPECT_EQ(words[2], 0x0506);
  EXPECT_EQ(words[3], 0xFFFE);
}

TEST(Session, EnumeratorsHaveTheirValues) {
  EXPECT_EQ(CZRGSSession::ResetNone, 0);
  EXPECT_EQ(CZRGSSession::ResetDay, 1);
  EXPECT_EQ(CZRGSSession::ResetWeek, 2);
  EXPECT_EQ(CZRGSSession::ResetMonth, 3);
  EXPECT_EQ(CZRGSSession::ResetYear, 4);
  EXPECT_EQ(CZRGSSession::StatusClosed, 0);
  EXPECT_EQ(CZRGSSession::StatusInPeriod, 1);
  EXPECT_EQ(CZRGSSession::StatusOpen, 2);
  EXPECT_EQ(CZRGSSession::StatusDribble, 3);
  EXPECT_EQ(CZRGSSession::StatusReset, 4);
  EXPECT_EQ(CZRGSSession::ReturnFail, 0);
  EXPECT_EQ(CZRGSSession::ReturnOK, 1);
}

TEST(Session, IsMadeFromNothingAListAnotherOrAText) {
  EXPECT_EQ(CZRGSSession().GetNumSessions(), 0U);
  const CZRGSSession week(Weekdays());
  EXPECT_EQ(week.GetNumSessions(), 5U);
  const CZRGSSession copy(week);
  EXPECT_EQ(Text(copy.GetSession()), Text(week.GetSession()));
  const CZRGSSession normalised(week, 1);
  EXPECT_EQ(Text(normalised.GetSession()), Text(week.GetSession()));
  const CZRGSSession read("1:2010,2400,7,8,1");
  EXPECT_EQ(Text(read.GetSession()), "1:2010,2400,7,8,1");
  EXPECT_EQ(CZRGSSession(static_cast<const char*>(nullptr)).GetNumSessions(), 0U);
}

TEST(Session, AssignmentReplacesTheList) {
  CZRGSSession week;
  week = Weekdays();
  EXPECT_EQ(week.GetNumSessions(), 5U);
  const CZRGSSession one(List({Info(1, 2)}));
  week = one;
  EXPECT_EQ(Text(week.GetSession()), "1:1,2,0,0,1");
  const CZRGSSession& itself = week;
  week = itself;
  EXPECT_EQ(Text(week.GetSession()), "1:1,2,0,0,1");
}

TEST(Session, CountsItsSessionsAndResets) {
  const CZRGSSession week(List({Info(10, 20, 0, 0, 0), Info(30, 40), Info(50, 60, 0, 0, 0)}));
  EXPECT_EQ(week.GetNumSessions(), 3U);
  EXPECT_EQ(week.GetNumResets(), 1U);
  EXPECT_EQ(CZRGSSession().GetNumResets(), 0U);
}

TEST(Session, AnIndexOutOfRangeReadsZeroes) {
  const CZRGSSession week(List({Info(10, 20, 30, 40)}));
  EXPECT_EQ(week.GetSessionInfo(0).OpenMinute, 10);
  EXPECT_EQ(week.GetReset(0), 30);
  for (const unsigned long index : {1UL, 0xFFFFFFFFUL}) {
    const ZRGS_SESSION_INFO none = week.GetSessionInfo(index);
    EXPECT_EQ(none.OpenMinute, 0);
    EXPECT_EQ(none.CloseMinute, 0);
    EXPECT_EQ(none.ResetMinutes, 0);
    EXPECT_EQ(none.DribbleMinutes, 0);
    EXPECT_EQ(none.ResetFlag, 0);
    EXPECT_EQ(week.GetReset(index), 0);
  }
}

TEST(Session, AnIndexOutOfRangeWritesNothing) {
  CZRGSSession week(List({Info(10, 20, 30, 40)}));
  week.SetSessionInfo(1, Info(1, 1, 1, 1));
  week.SetReset(1, 1);
  EXPECT_EQ(Text(week.GetSession()), "1:10,20,30,40,1");
  week.SetReset(0, 31);
  EXPECT_EQ(Text(week.GetSession()), "1:10,20,31,40,1");
  week.SetSessionInfo(0, Info(1, 2, 3, 4, 0));
  EXPECT_EQ(Text(week.GetSession()), "1:1,2,3,4,0");
}

TEST(Session, IsEditedThroughItsPointer) {
  CZRGSSession week;
  week.GetSessionPtr()->sessions.push_back(Info(1, 2));
  EXPECT_EQ(week.GetNumSessions(), 1U);
  CString text("old");
  week.GetSession(text);
  EXPECT_STREQ(text, "1:1,2,0,0,1");
}

TEST(Session, ClearLeavesNoSessions) {
  CZRGSSession week(Weekdays());
  week.Clear();
  EXPECT_EQ(week.GetNumSessions(), 0U);
}

TEST(SessionCompare, GoesByCountThenBySums) {
  const struct {
    ZRGS_SESSION a, b;
    int result;
  } rows[] = {
      {List({}), List({}), 0},
      {List({Info(9000, 9001)}), List({Info(1, 2), Info(3, 4)}), -1},
      {List({Info(1, 2), Info(3, 4)}), List({Info(9000, 9001)}), 1},
      {List({Info(1, 2)}), List({Info(1, 2)}), 0},
      {List({Info(1, 3)}), List({Info(1, 2)}), 1},
      {List({Info(1, 2)}), List({Info(1, 3)}), -1},
      {List({Info(1, 2), Info(5, 6)}), List({Info(1, 2), Info(5, 7)}), -1},
      {List({Info(2, 2), Info(5, 6)}), List({Info(1, 2), Info(5, 9)}), 1},
      {List({Info(1, 2, 0, 0, 1)}), List({Info(1, 2, 0, 0, 0)}), 1},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(CZRGSSession::Compare(row.a, row.b), row.result) << Text(row.a) << ' ' << Text(row.b);
    const CZRGSSession a(row.a);
    const CZRGSSession b(row.b);
    EXPECT_EQ(a.Compare(b), row.result);
    EXPECT_EQ(a == b, row.result == 0 ? 1 : 0);
    EXPECT_EQ(a != b, row.result == 0 ? 0 : 1);
    EXPECT_EQ(a == row.b, row.result == 0 ? 1 : 0);
    EXPECT_EQ(a != row.b, row.result == 0 ? 0 : 1);
  }
}

TEST(SessionCompare, EqualSumsAreEqualSessionsAndThatIsMeant) {
  EXPECT_EQ(CZRGSSession::Compare(List({Info(100, 200, 3, 4)}), List({Info(100, 200, 4, 3)})), 0);
  EXPECT_EQ(CZRGSSession::Compare(List({Info(100, 200, 0, 1, 0)}), List({Info(100, 200, 0, 0, 1)})),
            0);
  EXPECT_EQ(CZRGSSession::Compare(List({Info(65535, 1)}), List({Info(0, 0)})), 0)
      << "sums are 16 bits wide";
}

}  // namespace
