#include <pxdutil/query/news_query.h>

#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/query/accessors.h"
#include "tests/query/query_builder.h"

namespace {

using pxd::test::AccessorCase;
using pxd::test::kAbsent;
using pxd::test::QueryBuilder;
using pxd::test::Read;
using Query = CZRGSClientNEWSQuery;
using What = CZRGSClientNEWSQueryWHATClause;
using Where = CZRGSClientNEWSQueryWHEREClause;

QueryBuilder Plain() {
  return QueryBuilder(QUERY_TYPE_NEWS).What({243});
}

// -1 for no type.
int TypeOf(std::initializer_list<int> fields) {
  What what;
  EXPECT_EQ(what.Create(QueryBuilder(QUERY_TYPE_NEWS).What(fields)), 1);
  What::QUERYTYPE type{};
  What::QUERYTYPE other = What::Story;
  const bool isKnown = what.GetQueryType(type);
  EXPECT_EQ(what.GetQueryType(other), isKnown);
  EXPECT_EQ(type == other, isKnown) << "an unknown type was written, or a known one not";
  return isKnown ? static_cast<int>(type) : -1;
}

TEST(NewsWhat, NeedsAField) {
  What what;
  EXPECT_EQ(what.Create(QueryBuilder(QUERY_TYPE_NEWS)), 0);
  EXPECT_EQ(what.Create(QueryBuilder(QUERY_TYPE_NEWS).What({7})), 1);
}

TEST(NewsWhat, ItsTypeFollowsFromTheExactList) {
  EXPECT_EQ(TypeOf({243}), 0);
  EXPECT_EQ(TypeOf({190}), 1);
  EXPECT_EQ(TypeOf({31}), 2);
  EXPECT_EQ(TypeOf({263, 243, 280, 281, 96, 245, 246, 262}), 3);
  EXPECT_EQ(TypeOf({263, 243, 280, 281, 96, 245, 246, 262, 7, 243}), 3);
  EXPECT_EQ(TypeOf({265}), 4);
  EXPECT_EQ(TypeOf({243, 190}), -1);
  EXPECT_EQ(TypeOf({243, 243}), -1);
  EXPECT_EQ(TypeOf({7}), -1);
  EXPECT_EQ(TypeOf({263, 243, 280, 281, 96, 245, 246}), -1);
  EXPECT_EQ(TypeOf({263, 243, 281, 280, 96, 245, 246, 262}), -1);
  EXPECT_EQ(TypeOf({7, 263, 243, 280, 281, 96, 245, 246, 262}), -1);
}

TEST(NewsWhere, EveryConditionReachesItsAccessor) {
  const std::string longText(4000, 'x');
  const AccessorCase<Where> cases[] = {
      {31, "US:IBM", Read<&Where::GetSymbol>, "US:IBM"},  // news symbols keep their prefix
      {31, "", Read<&Where::GetSymbol>, ""},
      {190, "stocks", Read<&Where::GetCategory>, "stocks"},
      {195, "50", Read<&Where::GetHeadlineCount>, "50"},
      {195, "-50", Read<&Where::GetHeadlineCount>, "-50"},
      {195, "", Read<&Where::GetHeadlineCount>, "0"},
      {207, "258", Read<&Where::GetDataSource>, "2"},
      {228, "01/31/1997", Read<&Where::GetLastDate>, "day 35461"},
      {228, "soon", Read<&Where::GetLastDate>, kAbsent},
      {242, "oil", Read<&Where::GetKeyword>, "oil"},
      {243, "wire", Read<&Where::GetNewsSource>, "wire"},
      {244, "3", Read<&Where::GetHeadlineDays>, "3"},
      {259, "1", Read<&Where::GetMatchWholeWord>, "true"},
      {259, "0", Read<&Where::GetMatchWholeWord>, "false"},
      {260, "2", Read<&Where::GetMatchCase>, "true"},
      {260, "x", Read<&Where::GetMatchCase>, "false"},
      {261, "-1", Read<&Where::GetSearchStory>, "true"},
      {261, "", Read<&Where::GetSearchStory>, "false"},
      {262, "S1", Read<&Where::GetStoryID>, "S1"},
      {262, "S1", Read<&Where::GetStoryIdHi>, kAbsent},
      {276, "01/31/1997", Read<&Where::GetStartDate>, "day 35461"},
      {276, "", Read<&Where::GetStartDate>, kAbsent},
      {300, longText.c_str(), Read<&Where::GetMultipleSymbols>, longText},
      {301, "oil;gas", Read<&Where::GetMultipleKeywords>, "oil;gas"},
      {342, "C1", Read<&Where::GetNewsCollectionID>, "C1"},
      {356, "o.l", Read<&Where::GetRegularExpression>, "o.l"},
      {437, "65536", Read<&Where::GetNewsProviderID>, "0"},
      {437, "65535", Read<&Where::GetNewsProviderID>, "65535"},
      {452, "12", Read<&Where::GetNewsSearchFieldID>, "12"},
      {453, "name", Read<&Where::GetNewsSearchFieldName>, "name"},
      {455, "item", Read<&Where::GetNewsSearchFieldItem>, "item"},
      {455, "", Read<&Where::GetNewsSearchFieldItem>, ""},
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

TEST(NewsWhere, TakesTheseFieldsAndNoOther) {
  const std::vector<int> listed = {31,  190, 195, 207, 228, 242, 243, 244, 259, 260, 261,
                                   262, 276, 300, 301, 342, 356, 425, 437, 452, 453, 455};
  EXPECT_EQ(pxd::test::AcceptedFields<Query>(Plain(), [](int) { return "1"; }), listed);
}

TEST(NewsWhere, ReloadCacheIsAcceptedAndChangesNothing) {
  Query query;
  EXPECT_EQ(query.Create(Plain().Where(425, "1")), 1);
  const Where& where = *query.GetWHEREClause();
  EXPECT_EQ(Read<&Where::GetSymbol>(where), kAbsent);
  EXPECT_EQ(Read<&Where::GetHeadlineCount>(where), kAbsent);
  EXPECT_EQ(Read<&Where::GetMatchCase>(where), kAbsent);
}

TEST(NewsQuery, TakesEveryVerb) {
  for (std::uint8_t verb = 0; verb < 8; ++verb) {
    Query query;
    ASSERT_EQ(query.Create(Plain().Verb(verb)), 1);
    EXPECT_EQ(query.IsAdvise(), verb == QUERY_VERB_ADVISE);
    EXPECT_EQ(query.GetWHEREClause()->IsAdvise(), verb == QUERY_VERB_ADVISE);
  }
}

struct OpenWhere : Where {
  using Where::SetCategory;
  using Where::SetDataSource;
  using Where::SetHeadlineCount;
  using Where::SetHeadlineDays;
  using Where::SetKeyword;
  using Where::SetLastDate;
  using Where::SetMatchCase;
  using Where::SetMatchWholeWord;
  using Where::SetMultipleKeywords;
  using Where::SetMultipleSymbols;
  using Where::SetNewsCollectionID;
  using Where::SetNewsProviderID;
  using Where::SetNewsSearchFieldID;
  using Where::SetNewsSearchFieldItem;
  using Where::SetNewsSearchFieldName;
  using Where::SetNewsSource;
  using Where::SetRegularExpression;
  using Where::SetSearchStory;
  using Where::SetStartDate;
  using Where::SetStoryID;
  using Where::SetStoryIdHi;
  using Where::SetSymbol;
};

TEST(NewsWhere, TheSecondStoryIDHasASetterAlone) {
  OpenWhere where;
  where.SetStoryIdHi("high");
  where.SetStoryID(nullptr);
  EXPECT_EQ(Read<&Where::GetStoryIdHi>(where), "high");
  EXPECT_EQ(Read<&Where::GetStoryID>(where), "");
}

TEST(NewsQuery, CopiesAndASecondCreateKeepTheValues) {
  Query query;
  ASSERT_EQ(query.Create(Plain().Where(31, "IBM")), 1);
  Query copy(query);
  const Query& self = copy;
  copy = self;
  ASSERT_EQ(query.Create(QueryBuilder(QUERY_TYPE_NEWS).What({190}).Where(242, "oil")), 1);
  EXPECT_EQ(Read<&Where::GetSymbol>(*query.GetWHEREClause()), "IBM");
  EXPECT_EQ(Read<&Where::GetKeyword>(*query.GetWHEREClause()), "oil");
  EXPECT_EQ(Read<&Where::GetKeyword>(*copy.GetWHEREClause()), kAbsent);
  EXPECT_EQ(copy.GetWHATClause()->Find(243), 0);
  copy = query;
  EXPECT_EQ(Read<&Where::GetKeyword>(*copy.GetWHEREClause()), "oil");
}

}  // namespace
