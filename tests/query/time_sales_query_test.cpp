#include <pxdutil/query/time_sales_query.h>

#include <string>
#include <type_traits>
#include <vector>

#include <memory>

#include <gtest/gtest.h>

#include "tests/query/accessors.h"
#include "tests/query/query_builder.h"

namespace {

using pxd::test::AccessorCase;
using pxd::test::kAbsent;
using pxd::test::QueryBuilder;
using pxd::test::Read;
using Query = CZRGSClientTimeSalesQuery;
using What = CZRGSClientTimeSalesQueryWHATClause;
using Where = CZRGSClientTimeSalesQueryWHEREClause;

static_assert(std::has_virtual_destructor_v<Where>);

QueryBuilder Plain() {
  return QueryBuilder(QUERY_TYPE_TIME_SALES);
}

TEST(TimeSalesWhat, KnowsWhetherDateAndTimeAreWanted) {
  const struct {
    std::initializer_list<int> fields;
    bool date;
    bool time;
  } cases[] = {{{}, false, false},
               {{7}, false, false},
               {{280}, true, false},
               {{7, 281}, false, true},
               {{281, 7, 280}, true, true}};
  for (const auto& row : cases) {
    What what;
    ASSERT_EQ(what.Create(Plain().What(row.fields)), 1);
    EXPECT_EQ(what.WantDate(), row.date);
    EXPECT_EQ(what.WantTime(), row.time);
  }
}

TEST(TimeSalesWhere, EveryConditionReachesItsAccessor) {
  const AccessorCase<Where> cases[] = {
      {17, "12345678", Read<&Where::GetExchangeName>, "1234567"},
      {17, "", Read<&Where::GetExchangeName>, ""},
      {17, "NYSE", Read<&Where::GetExchangeListed>, "0"},
      {31, "us:IBM", Read<&Where::GetSymbol>, "IBM"},
      {31, "", Read<&Where::GetSymbol>, ""},
      {31, "1234567890123456789012345678901", Read<&Where::GetSymbol>,
       "123456789012345678901234567890"},
      {190, "256", Read<&Where::GetCategory>, "0"},
      {207, "3", Read<&Where::GetDataSource>, "3"},
      {298, "", Read<&Where::GetTimeZone>, "true", "false"},
      {370, "15", Read<&Where::GetNumMinutesBack>, "15"},
      {370, "-1", Read<&Where::GetNumMinutesBack>, "0"},
      {371, "100", Read<&Where::GetNumTicksBack>, "100"},
      {371, "-100", Read<&Where::GetNumTicksBack>, "0"},
      {371, "", Read<&Where::GetNumTicksBack>, "0"},
      {372, "5", Read<&Where::GetAllPrices>, "1"},
      {372, "0", Read<&Where::GetAllPrices>, "0"},
      {373, "01/31/1997", Read<&Where::GetStartDate>, "day 35461"},
      {373, "31/01/1997", Read<&Where::GetStartDate>, kAbsent},
      {374, "01/31/1997", Read<&Where::GetEndDate>, "day 35461"},
      {374, "", Read<&Where::GetEndDate>, kAbsent},
      {375, "09:30", Read<&Where::GetStartTime>, "second 34200"},
      {375, "24:00", Read<&Where::GetStartTime>, kAbsent},
      {376, "9:30:01", Read<&Where::GetEndTime>, "second 34201"},
      {376, "soon", Read<&Where::GetEndTime>, kAbsent},
      {377, "3", Read<&Where::GetTickMask>, "3"},
      {377, "0", Read<&Where::GetTickMask>, "7"},
      {377, "", Read<&Where::GetTickMask>, "7"},
      {377, "-1", Read<&Where::GetTickMask>, "-1"},
      {377, "65536", Read<&Where::GetTickMask>, "0"},
      {425, "2", Read<&Where::GetReloadCache>, "2"},
      {432, "-2", Read<&Where::GetTickTradeMask>, "-2"},
      {438, "1000", Read<&Where::GetMaxNumTicksBack>, "1000"},
      {438, "-1", Read<&Where::GetMaxNumTicksBack>, "0"},
      {476, "16", Read<&Where::GetSymDataFlag>, "16"},
      {476, "0", Read<&Where::GetSymDataFlag>, "0"},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(testing::Message() << row.field << "=\"" << row.value << '"');
    Query query;
    ASSERT_EQ(query.Create(Plain()), 1);
    EXPECT_EQ(row.read(*query.GetWHEREClause()), row.without);
    ASSERT_EQ(query.Create(Plain().Where(row.field, row.value)), 1);
    EXPECT_EQ(row.read(*query.GetWHEREClause()), row.expected);
  }
}

TEST(TimeSalesWhere, TakesTheseFieldsAndNoOther) {
  const std::vector<int> listed = {17,  31,  190, 207, 298, 370, 371, 372, 373,
                                   374, 375, 376, 377, 425, 432, 438, 476};
  EXPECT_EQ(pxd::test::AcceptedFields<Query>(Plain(), [](int) { return "1"; }), listed);
}

TEST(TimeSalesQuery, TakesEveryVerb) {
  for (std::uint8_t verb = 0; verb < 8; ++verb) {
    Query query;
    ASSERT_EQ(query.Create(Plain().Verb(verb)), 1);
    EXPECT_EQ(query.IsAdvise(), verb == QUERY_VERB_ADVISE);
  }
}

struct OpenWhere : Where {
  using Where::SetExchangeListed;
  using Where::SetTimeZone;
};

TEST(TimeSalesWhere, TheExchangeNumberHasASetterAlone) {
  OpenWhere where;
  where.SetExchangeListed(7);
  EXPECT_EQ(Read<&Where::GetExchangeListed>(where), "7");
  EXPECT_EQ(Read<&Where::GetExchangeName>(where), "");
}

TEST(TimeSalesQuery, CopiesAndASecondCreateKeepTheValues) {
  Query query;
  ASSERT_EQ(query.Create(Plain().What({280}).Where(31, "IBM").Where(298, "")), 1);
  Query copy(query);
  const Query& self = copy;
  copy = self;
  ASSERT_EQ(query.Create(Plain().Where(371, "5")), 1);
  EXPECT_EQ(Read<&Where::GetSymbol>(*query.GetWHEREClause()), "IBM");
  EXPECT_TRUE(query.GetWHEREClause()->GetTimeZone());
  EXPECT_TRUE(query.GetWHATClause()->WantDate());
  EXPECT_EQ(Read<&Where::GetNumTicksBack>(*copy.GetWHEREClause()), kAbsent);
  EXPECT_TRUE(copy.GetWHATClause()->WantDate());
  copy = query;
  EXPECT_EQ(Read<&Where::GetNumTicksBack>(*copy.GetWHEREClause()), "5");
}

TEST(TimeSalesWhat, ASecondCreateKeepsWhatTheFirstFound) {
  CZRGSClientTimeSalesQueryWHATClause what;
  const auto info = std::make_unique<QUERY_INFO>();
  info->wWhatFields[0] = 280;
  info->dwWhatCount = 1;
  ASSERT_EQ(what.Create(*info), 1);
  info->wWhatFields[0] = 281;
  ASSERT_EQ(what.Create(*info), 1);
  EXPECT_EQ(what.Find(280), -1);
  EXPECT_TRUE(what.WantDate());
  EXPECT_TRUE(what.WantTime());
  info->dwWhatCount = 0;
  ASSERT_EQ(what.Create(*info), 1);
  EXPECT_TRUE(what.WantDate());
  EXPECT_TRUE(what.WantTime());
}

}  // namespace
