// Lookups stand on the path of every trade, so once their caches are warm they take no memory.
#include <cstdlib>
#include <new>

#include <gtest/gtest.h>
#include <pxdutil/sessions/session.h>

#include "session_helpers.h"

namespace {

unsigned long g_allocations = 0;

}  // namespace

void* operator new(std::size_t size) {
  ++g_allocations;
  if (void* memory = std::malloc(size > 0 ? size : 1)) {
    return memory;
  }
  throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
  std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

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
  const unsigned long cold = g_allocations;
  lookUpEverything();
  const unsigned long warm = g_allocations;
  EXPECT_GT(warm, cold) << "the counter doesn't count";
  lookUpEverything();
  EXPECT_EQ(g_allocations, warm);
}

}  // namespace
