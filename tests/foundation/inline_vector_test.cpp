#include <pxdutil/foundation/inline_vector.h>

#include <new>
#include <numeric>

#include <gtest/gtest.h>

#include "tests/support/allocation_counter.h"

namespace {

using Vector = pxd::InlineVector<int, 4>;

// The count is hidden from the optimiser, whose bounds warnings guess wrong once it unrolls growth.
void Fill(Vector& vector, int wanted) {
  const volatile int count = wanted;
  for (int i = 0; i < count; ++i) {
    vector.push_back(i);
  }
}

TEST(InlineVector, StartsEmpty) {
  Vector vector;
  EXPECT_TRUE(vector.empty());
  EXPECT_EQ(vector.size(), 0U);
  EXPECT_EQ(vector.begin(), vector.end());
}

TEST(InlineVector, KeepsOrderAcrossEveryGrowth) {
  for (int count = 0; count < 70; ++count) {
    Vector vector;
    Fill(vector, count);
    ASSERT_EQ(vector.size(), static_cast<std::size_t>(count));
    int expected = 0;
    for (const int value : vector) {
      ASSERT_EQ(value, expected++);
    }
    for (std::size_t i = 0; i < vector.size(); ++i) {
      ASSERT_EQ(vector[i], static_cast<int>(i));
    }
  }
}

TEST(InlineVector, AsksTheHeapOnlyBeyondItsInlineElements) {
  const pxd::test::AllocationCounter counter;
  Vector vector;
  Fill(vector, 4);
  EXPECT_EQ(counter.Count(), 0U);
  vector.push_back(4);
  EXPECT_EQ(counter.Count(), 1U);
}

TEST(InlineVector, ReserveMakesRoomAtOnce) {
  Vector vector;
  vector.reserve(100);
  const pxd::test::AllocationCounter counter;
  Fill(vector, 100);
  EXPECT_EQ(counter.Count(), 0U);
  vector.reserve(5);
  EXPECT_EQ(vector.size(), 100U);
}

TEST(InlineVector, ClearForgetsElementsAndKeepsRoom) {
  Vector vector;
  Fill(vector, 50);
  vector.clear();
  EXPECT_TRUE(vector.empty());
  const pxd::test::AllocationCounter counter;
  Fill(vector, 50);
  EXPECT_EQ(counter.Count(), 0U);
  EXPECT_EQ(std::accumulate(vector.begin(), vector.end(), 0), 49 * 50 / 2);
}

TEST(InlineVector, WithoutMemoryThrowsAndStaysAsItWas) {
  Vector vector;
  Fill(vector, 4);
  {
    const pxd::test::ScarceMemory none(0);
    EXPECT_THROW(vector.push_back(9), std::bad_alloc);
  }
  ASSERT_EQ(vector.size(), 4U);
  EXPECT_EQ(vector[3], 3);
  vector.push_back(4);
  EXPECT_EQ(vector[4], 4);
}

}  // namespace
