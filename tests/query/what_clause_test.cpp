#include <pxdutil/query/what_clause.h>

#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "tests/query/query_builder.h"

namespace {

using pxd::test::QueryBuilder;

static_assert(
    std::is_base_of_v<CArray<unsigned short, unsigned short>, CZRGSClientQueryWHATClause>);
static_assert(std::is_base_of_v<CObject, CZRGSClientQueryWHATClause>);

std::vector<unsigned> FieldsOf(const CZRGSClientQueryWHATClause& what) {
  return {what.begin(), what.end()};
}

TEST(WhatClause, HoldsTheFieldsInTheirOrder) {
  CZRGSClientQueryWHATClause what;
  EXPECT_EQ(what.Create(QueryBuilder().What({7, 10, 7, 65535})), 1);
  EXPECT_EQ(FieldsOf(what), (std::vector<unsigned>{7, 10, 7, 65535}));
}

TEST(WhatClause, TakesAnEmptyList) {
  CZRGSClientQueryWHATClause what;
  EXPECT_EQ(what.Create(QueryBuilder()), 1);
  EXPECT_EQ(what.GetSize(), 0);
}

TEST(WhatClause, FindsTheFirstPlaceOfAField) {
  CZRGSClientQueryWHATClause what;
  EXPECT_EQ(what.Find(0), -1);
  what.Create(QueryBuilder().What({7, 10, 7}));
  EXPECT_EQ(what.Find(7), 0);
  EXPECT_EQ(what.Find(10), 1);
  EXPECT_EQ(what.Find(8), -1);
}

TEST(WhatClause, ReplacesItsListOnASecondCreate) {
  CZRGSClientQueryWHATClause what;
  what.Create(QueryBuilder().What({7, 10}));
  what.Create(QueryBuilder().What({11}));
  EXPECT_EQ(FieldsOf(what), (std::vector<unsigned>{11}));
}

TEST(WhatClause, EndsWithTheRecordsArrayWhateverTheCountSays) {
  QueryBuilder info;
  for (int i = 0; i < 100; ++i) {
    info.What({1000 + i});
  }
  for (const std::uint32_t count : {100U, 101U, 0xFFFFFFFFU}) {
    info->dwWhatCount = count;
    CZRGSClientQueryWHATClause what;
    EXPECT_EQ(what.Create(info), 1);
    ASSERT_EQ(what.GetSize(), 100);
    EXPECT_EQ(what[99], 1099);
  }
}

TEST(WhatClause, CopiesAreIndependent) {
  CZRGSClientQueryWHATClause what;
  what.Create(QueryBuilder().What({7, 10}));
  CZRGSClientQueryWHATClause copy(what);
  what.Create(QueryBuilder().What({11}));
  EXPECT_EQ(FieldsOf(copy), (std::vector<unsigned>{7, 10}));
  copy = what;
  EXPECT_EQ(FieldsOf(copy), (std::vector<unsigned>{11}));
}

// A host may have clauses of its own.
struct ChoosyClause : CZRGSClientQueryWHATClause {
  int Create(const QUERY_INFO& info) override {
    return CZRGSClientQueryWHATClause::Create(info) != 0 && Find(7) >= 0 ? 1 : 0;
  }
};

TEST(WhatClause, CreateIsVirtual) {
  ChoosyClause choosy;
  CZRGSClientQueryWHATClause& what = choosy;
  EXPECT_EQ(what.Create(QueryBuilder().What({8})), 0);
  EXPECT_EQ(what.Create(QueryBuilder().What({8, 7})), 1);
}

}  // namespace
