// Lookups stand on the path of every trade, so once their caches are warm they take no memory.
#include <gtest/gtest.h>
#include <pxdutil/sessions/session.h>

#include "session_helpers.h"
#include "tests/support/allocation_counter.h"

namespace {

TEST(SessionAllocation, WarmLookupsTakeNoMemory) {
  const CZRGSSession week(session_test::Weekdays(30, 10));
  const auto lookUpEverything = [&] {
    for (const auto reset :
         {CZRGSSession::ResetNone, CZRGSSession::ResetDay, CZRGSSession::ResetWeek,
          CZRGSSession::ResetMonth, CZRGSSession::ResetYear}) {
      CZRDateTime start;
      CZRDateTime end;
      CZRGSSession::Status status;
      unsigned long index;
      week.GetSessionInfo(reset, session_test::Day(3, 12, 0), start, end, status, index);
    }
    CZRDateTime open;
    CZRDateTime close;
    unsigned long index;
    week.GetNextDailyResetSessionInfo(session_test::Day(3, 12, 0), open, close, index);
    week.GetPreviousDailyResetDateTime(open, 1);
  };
  const pxd::test::AllocationCounter cold;
  lookUpEverything();
  EXPECT_GT(cold.Count(), 0U) << "the counter doesn't count";
  const pxd::test::AllocationCounter warm;
  lookUpEverything();
  EXPECT_EQ(warm.Count(), 0U);
}

}  // namespace
