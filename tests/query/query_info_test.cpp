#include <pxdutil/query/query_info.h>

#include <cstddef>

#include <gtest/gtest.h>

namespace {

// Servers exchange the record as bytes, so a member that moves breaks them.
TEST(QueryInfo, MembersFollowEachOtherWithoutGaps) {
  EXPECT_EQ(offsetof(QUERY_INFO, eQueryType), 0U);
  EXPECT_EQ(offsetof(QUERY_INFO, dwTransactionID), 4U);
  EXPECT_EQ(offsetof(QUERY_INFO, bRequestType), 8U);
  EXPECT_EQ(offsetof(QUERY_INFO, bHasChart), 9U);
  EXPECT_EQ(offsetof(QUERY_INFO, dwChartKind), 13U);
  EXPECT_EQ(offsetof(QUERY_INFO, wPrimaryField), 17U);
  EXPECT_EQ(offsetof(QUERY_INFO, chartSize), 19U);
  EXPECT_EQ(offsetof(QUERY_INFO, fAnalysisValue), 23U);
  EXPECT_EQ(offsetof(QUERY_INFO, dwAnalysisParam1), 27U);
  EXPECT_EQ(offsetof(QUERY_INFO, dwAnalysisParam2), 31U);
  EXPECT_EQ(offsetof(QUERY_INFO, wAnalysisType), 35U);
  EXPECT_EQ(offsetof(QUERY_INFO, wSnapShotFields), 37U);
  EXPECT_EQ(offsetof(QUERY_INFO, dwSnapShotCount), 57U);
  EXPECT_EQ(offsetof(QUERY_INFO, dwGroupByID), 61U);
  EXPECT_EQ(offsetof(QUERY_INFO, dwGroupByList), 65U);
  EXPECT_EQ(offsetof(QUERY_INFO, wGroupBySize), 465U);
  EXPECT_EQ(offsetof(QUERY_INFO, wWhatFields), 467U);
  EXPECT_EQ(offsetof(QUERY_INFO, dwWhatCount), 667U);
  EXPECT_EQ(offsetof(QUERY_INFO, conditions), 671U);
  EXPECT_EQ(offsetof(QUERY_INFO, dwConditionCount), 82711U);
  EXPECT_EQ(offsetof(QUERY_CONDITION, dwOperator), 2U);
  EXPECT_EQ(offsetof(QUERY_CONDITION, szValue), 6U);
}

}  // namespace
