// What holds for every record, however it came about: no class reads past it, a copy of a query
// says what the query says, and whoever explains a refusal agrees with whoever refuses.
#include <cstdint>
#include <cstring>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <pxdutil/query/detail/query_class.h>
#include <pxdutil/query/detail/query_refusal.h>
#include <pxdutil/query/query_values.h>
#include "tests/query/everything.h"
#include "tests/query/query_builder.h"
#include "tests/support/rounds.h"

namespace {

using pxd::detail::RefusalOf;
using pxd::detail::VisitQueryOf;
using pxd::test::EverythingOf;
using pxd::test::QueryBuilder;

constexpr const char* kValues[] = {
    "",     "0",          "1",     "2",    "3",          "4",    "7",
    "15",   "-1",         "70000", "us:A", "01/31/1997", "9:30", "1:2010,2400,0,0,1",
    "soon", "4294967296", "12.5",  "US",   "NYSE",       "x",
};
constexpr int kFields[] = {7,   17,  31,  62,  190, 207, 209, 219, 228, 229, 247, 258, 272,
                           275, 276, 280, 281, 297, 298, 299, 303, 335, 340, 343, 357, 359,
                           364, 365, 366, 370, 377, 379, 383, 412, 425, 426, 428, 434, 435,
                           438, 439, 445, 446, 449, 458, 466, 468, 476, 478, 486, 502, 504,
                           505, 506, 507, 510, 511, 514, 520, 524, 525};

class RandomQuery {
 public:
  explicit RandomQuery(unsigned seed) : m_random(seed) {}

  QueryBuilder Next() {
    QueryBuilder info(static_cast<QUERY_TYPE>(Below(22)), static_cast<std::uint8_t>(Below(6)));
    for (unsigned i = Below(3); i > 0; --i) {
      info.What({kFields[Below(std::size(kFields))]});
    }
    if (Below(2) == 0) {
      info.Chart(Below(10), static_cast<std::uint16_t>(Below(9)),
                 static_cast<std::uint16_t>(Below(3)));
    }
    for (unsigned i = Below(4); i > 0; --i) {
      info.Where(kFields[Below(std::size(kFields))], kValues[Below(std::size(kValues))], Below(3));
    }
    if (Below(4) == 0) {
      info.GroupBy(Below(3), {41, 42});
    }
    return info;
  }
  // The same with counts and texts that no parser would have written.
  QueryBuilder NextHostile() {
    QueryBuilder info = Next();
    const std::uint32_t counts[] = {0, 1, 10, 11, 20, 21, 100, 101, 0x7FFFFFFF, 0xFFFFFFFF};
    info->dwWhatCount = counts[Below(std::size(counts))];
    info->dwConditionCount = counts[Below(std::size(counts))];
    info->dwSnapShotCount = counts[Below(std::size(counts))];
    info->wGroupBySize = static_cast<std::int16_t>(Below(65536));
    if (Below(2) == 0) {
      info->dwChartKind = counts[Below(std::size(counts))];
    }
    for (QUERY_CONDITION& condition : info->conditions) {
      if (Below(4) == 0) {
        condition.wFieldID = static_cast<std::uint16_t>(kFields[Below(std::size(kFields))]);
        std::memset(condition.szValue, "17:/ "[Below(5)], sizeof(condition.szValue));
      }
    }
    return info;
  }

 private:
  unsigned Below(std::size_t limit) { return static_cast<unsigned>(m_random() % limit); }

  std::mt19937 m_random;
};

void ExpectThatAllAgree(const QUERY_INFO& info) {
  const auto values = pxd::TypedValues(info);
  const auto refusal = RefusalOf(info);
  const bool hasClass = VisitQueryOf(info.eQueryType, [&](auto& query) {
    const bool created = query.Create(info) != 0;
    EXPECT_EQ(created, !refusal.has_value());
    EXPECT_EQ(created, values.has_value());
    EXPECT_LE(query.GetWHATClause()->GetSize(), 100);
    const std::string said = EverythingOf(query);
    auto copy = query;
    EXPECT_EQ(EverythingOf(copy), said);
    auto assigned = copy;
    assigned.Create(QueryBuilder());
    assigned = copy;
    EXPECT_EQ(EverythingOf(assigned), said);
    copy.Create(QueryBuilder());
    EXPECT_EQ(EverythingOf(query), said) << "a change to a copy reached the original";
  });
  if (!hasClass) {
    EXPECT_FALSE(refusal.has_value());
    EXPECT_FALSE(values.has_value());
  }
  if (refusal.has_value()) {
    EXPECT_NE(refusal->rule, nullptr);
    EXPECT_LT(refusal->condition, 20);
    EXPECT_LT(refusal->whatField, 100);
  }
}

TEST(QueryProperties, ExplanationsAndValuesAgreeWithCreate) {
  RandomQuery random(1);
  int taken = 0;
  for (int round = 0; round < pxd::test::Rounds(20'000) && !testing::Test::HasFailure(); ++round) {
    const QueryBuilder info = random.Next();
    ExpectThatAllAgree(info);
    taken += pxd::TypedValues(info).has_value() ? 1 : 0;
  }
  EXPECT_GT(taken, pxd::test::Rounds(500))
      << "the random queries are too seldom good to tell anything";
}

TEST(QueryProperties, NoRecordIsReadBeyondItsArrays) {
  RandomQuery random(2);
  for (int round = 0; round < 3'000 && !testing::Test::HasFailure(); ++round) {
    ExpectThatAllAgree(random.NextHostile());
  }
}

}  // namespace
