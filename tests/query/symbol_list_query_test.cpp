#include <pxdutil/query/symbol_list_query.h>

#include <map>
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
using Query = CZRGSClientSYMLISTQuery;
using Where = CZRGSClientSYMLISTQueryWHEREClause;

// The symbol list type 4 needs nothing beside itself.
QueryBuilder Plain() {
  return QueryBuilder(QUERY_TYPE_SYMBOL_LIST).What({359}).Where(366, "4");
}

TEST(SymbolListWhere, EveryConditionReachesItsAccessor) {
  const AccessorCase<Where> cases[] = {
      {17, "12345678", Read<&Where::GetExchangeName>, "1234567"},
      {17, "NYSE", Read<&Where::GetExchangeListed>, "0"},
      {31, "us:IBM", Read<&Where::GetSymbolName>, "IBM"},
      {31, "1234567890123456789012345678901", Read<&Where::GetSymbolName>,
       "123456789012345678901234567890"},
      {209, "1234567890123456789012345678901", Read<&Where::GetSymbolRoot>,
       "123456789012345678901234567890"},
      {247, "1234567890123456789012345678901", Read<&Where::GetSymbolRoot>,
       "123456789012345678901234567890"},
      {62, "bank", Read<&Where::GetDescription>, "bank"},
      {62, "", Read<&Where::GetDescription>, ""},
      {62, "1234567890123456789012345678901234567890123456789012", Read<&Where::GetDescription>,
       "12345678901234567890123456789012345678901234567890"},
      {62, "bank", Read<&Where::GetDescriptionOperator>, "0"},
      {190, "16", Read<&Where::GetCategory>, "16"},
      {190, "272", Read<&Where::GetCategory>, "16"},
      {207, "3", Read<&Where::GetDataSource>, "3"},
      {209, "US:ES", Read<&Where::GetSymbolRoot>, "ES"},
      {209, "ES", Read<&Where::IsUnderlyingSymbol>, "false", "false"},
      {247, "US:ES", Read<&Where::GetSymbolRoot>, "ES"},
      {247, "ES", Read<&Where::IsUnderlyingSymbol>, "true", "false"},
      {258, "2", Read<&Where::IsExactMatch>, "true", "false"},
      {258, "0", Read<&Where::IsExactMatch>, "false", "false"},
      {258, "4294967296", Read<&Where::IsExactMatch>, "true", "false"},
      {294, "-1", Read<&Where::GetExpired>, "true"},
      {294, "0", Read<&Where::GetExpired>, "false"},
      {297, "12345678", Read<&Where::GetExchangeTimeName>, "1234567"},
      {297, "", Read<&Where::GetExchangeTimeName>, ""},
      {298, "0", Read<&Where::GetTimeZone>, "true", "false"},
      {357, "70000", Read<&Where::GetSubCategoryID>, "70000"},
      {358, "25", Read<&Where::GetRankedListSize>, "25"},
      {359, "12345678", Read<&Where::GetListTypeID>, "1234567"},
      {359, "A", Read<&Where::GetSymbolListRootID>, kAbsent},
      {364, "name", Read<&Where::GetListTypeName>, "name"},
      {364, "1234567890123456789012345678901234567890123456789012", Read<&Where::GetListTypeName>,
       "12345678901234567890123456789012345678901234567890"},
      {364, "name", Read<&Where::GetSymbolListRootID>, "2"},
      {366, "7", Read<&Where::GetSymbolListType>, "7", "4"},
      {379, "01/31/1997", Read<&Where::GetOptionExpDateLow>, "day 35461"},
      {379, "soon", Read<&Where::GetOptionExpDateLow>, "day 65535"},
      {380, "01/31/1997", Read<&Where::GetOptionExpDateHigh>, "day 35461"},
      {380, "", Read<&Where::GetOptionExpDateHigh>, "day 65535"},
      {381, "6", Read<&Where::GetOptionExpirations>, "6"},
      {382, "12", Read<&Where::GetOptionStrikes>, "12"},
      {383, "12.5", Read<&Where::GetOptionStrikeLow>, "12.500000"},
      {383, "", Read<&Where::GetOptionStrikeLow>, "0.000000"},
      {384, "-1e2", Read<&Where::GetOptionStrikeHigh>, "-100.000000"},
      {385, "1", Read<&Where::GetOptionType>, "1"},
      {386, "500", Read<&Where::GetOptionOpenInt>, "500"},
      {419, "8", Read<&Where::GetCategoryID>, "8"},
      {426, "8", Read<&Where::GetSymbolListRootID>, "8"},
      {426, "8", Read<&Where::GetCategoryID>, kAbsent},
      {426, "1", Read<&Where::GetSymbolListRootID>, "1"},
      {426, "1", Read<&Where::GetCategoryID>, "1"},
      {428, "1", Read<&Where::GetSymbolListDisplay>, "true"},
      {428, "0", Read<&Where::GetSymbolListDisplay>, "false"},
      {433, "4294967295", Read<&Where::GetOptionFilterFlag>, "4294967295"},
      {444, "1", Read<&Where::GetOptionableOnly>, "true"},
      {444, "", Read<&Where::GetOptionableOnly>, "false"},
      {475, "2", Read<&Where::GetFutureTypeFlag>, "2"},
      {486, "3", Read<&Where::GetSymbolListFlag>, "3", "0"},
      {486, "3", Read<&Where::GetNoLongerTrading>, "true"},
      {486, "2", Read<&Where::GetSymbolListFlag>, "2", "0"},
      {486, "2", Read<&Where::GetNoLongerTrading>, kAbsent},
      {486, "-1", Read<&Where::GetNoLongerTrading>, "true"},
      {511, "US", Read<&Where::GetCountryCode>, "US", ""},
      {524, "300", Read<&Where::GetCurrencyCode>, "300", "0"},
      // No condition reaches these.
      {486, "3", Read<&Where::GetBrowseDirection>, kAbsent},
      {486, "3", Read<&Where::GetBrowseType>, kAbsent},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(testing::Message() << row.field << "=\"" << row.value << '"');
    Query without;
    ASSERT_EQ(without.Create(Plain()), 1);
    EXPECT_EQ(row.read(*without.GetWHEREClause()), row.without);
    Query with;
    ASSERT_EQ(with.Create(Plain().Where(row.field, row.value)), 1);
    EXPECT_EQ(row.read(*with.GetWHEREClause()), row.expected);
  }
}

TEST(SymbolListWhere, TakesTheseFieldsAndNoOther) {
  const std::vector<int> listed = {17,  31,  62,  190, 207, 209, 247, 258, 294, 297, 298, 357,
                                   358, 359, 364, 366, 379, 380, 381, 382, 383, 384, 385, 386,
                                   419, 425, 426, 428, 433, 444, 475, 486, 511, 524};
  EXPECT_EQ(
      pxd::test::AcceptedFields<Query>(Plain(), [](int field) { return field == 366 ? "4" : "1"; }),
      listed);
}

TEST(SymbolListWhere, SomeTextsMustNotBeEmpty) {
  for (const int field : {17, 31, 209, 247, 359, 364}) {
    Query query;
    EXPECT_EQ(query.Create(Plain().Where(field, "")), 0) << field;
    EXPECT_EQ(query.Create(Plain().Where(field, "A")), 1) << field;
  }
  for (const int field : {62, 297, 511}) {
    Query query;
    EXPECT_EQ(query.Create(Plain().Where(field, "")), 1) << field;
  }
}

TEST(SymbolListWhere, TheDescriptionKeepsItsOperatorInAByte) {
  for (const std::uint32_t op : {0U, 1U, 2U, 0x1FFU}) {
    Query query;
    ASSERT_EQ(query.Create(Plain().Where(62, "bank", op)), 1);
    EXPECT_EQ(Read<&Where::GetDescriptionOperator>(*query.GetWHEREClause()),
              std::to_string(op & 0xFF));
  }
  Query query;
  ASSERT_EQ(query.Create(Plain().Where(31, "IBM", 2)), 1);
  EXPECT_EQ(Read<&Where::GetDescriptionOperator>(*query.GetWHEREClause()), kAbsent);
}

TEST(SymbolListWhere, AListTypeIDImpliesARootOnlyBehindItsListType) {
  const struct {
    const char* listType;
    std::string root;
  } cases[] = {{"0", kAbsent}, {"1", kAbsent}, {"2", "3"}, {"3", kAbsent},
               {"4", kAbsent}, {"5", "3"},     {"6", "3"}, {"7", kAbsent}};
  for (const auto& row : cases) {
    Where where;
    where.Create(QueryBuilder().Where(366, row.listType).Where(359, "A"));
    EXPECT_EQ(Read<&Where::GetSymbolListRootID>(where), row.root) << row.listType;
    Where reversed;
    reversed.Create(QueryBuilder().Where(359, "A").Where(366, row.listType));
    EXPECT_EQ(Read<&Where::GetSymbolListRootID>(reversed), kAbsent) << row.listType;
  }
}

TEST(SymbolListWhere, ImpliedValuesGiveWayToThoseBeforeThem) {
  const auto rootOf = [](const QUERY_INFO& info) {
    Where where;
    where.Create(info);
    return Read<&Where::GetSymbolListRootID>(where);
  };
  const auto categoryOf = [](const QUERY_INFO& info) {
    Where where;
    where.Create(info);
    return Read<&Where::GetCategoryID>(where);
  };
  const auto info = [] { return QueryBuilder().Where(366, "2"); };
  EXPECT_EQ(rootOf(info().Where(426, "0").Where(359, "A")), "0");
  EXPECT_EQ(rootOf(info().Where(359, "A").Where(426, "0")), "0");
  EXPECT_EQ(rootOf(info().Where(364, "A")), "2");
  EXPECT_EQ(rootOf(info().Where(364, "A").Where(359, "A")), "2");
  EXPECT_EQ(rootOf(info().Where(359, "A").Where(364, "A")), "3");
  EXPECT_EQ(rootOf(info().Where(426, "9").Where(364, "A")), "9");
  EXPECT_EQ(categoryOf(info().Where(426, "1")), "1");
  EXPECT_EQ(categoryOf(info().Where(419, "8").Where(426, "1")), "8");
  EXPECT_EQ(categoryOf(info().Where(426, "1").Where(419, "8")), "8");
  EXPECT_EQ(categoryOf(info().Where(426, "2")), kAbsent);
  // A root id that is only implied asks for no category.
  EXPECT_EQ(categoryOf(info().Where(364, "A")), kAbsent);
}

// The rules of a valid query once more, in the words of a list, to compare all combinations with.
struct Facts {
  int type;  // -1 for none
  int root;  // -1 for none
  bool exchange;
  bool listTypeID;
  bool listTypeName;
  int category;  // -1 for none
  bool symbolRoot;
  bool description;
  bool symbolName;
  bool advise;
};

bool ShouldBeValid(const Facts& f) {
  if (f.type == -1) {
    return false;
  }
  if (f.type == 2 || f.type == 5 || f.type == 6) {
    return ((f.exchange || f.listTypeID) && f.root == 3) || (f.listTypeID && f.root == 1) ||
           (!f.listTypeID && !f.listTypeName) || f.root >= 2 || !f.listTypeID;
  }
  if (f.category == 15) {
    return (f.symbolRoot && f.type == 0) || (f.description && f.type == 0);
  }
  const bool isFound = (f.symbolName && f.type == 0) || (f.description && f.type == 0) ||
                       (f.symbolRoot && f.type == 1) || (f.symbolName && f.type == 3);
  return isFound || (!f.advise && (f.type == 4 || f.type == 7));
}

TEST(SymbolListWhere, IsValidByTheRulesInEveryCombination) {
  int valid = 0;
  int combinations = 0;
  QueryBuilder info(QUERY_TYPE_SYMBOL_LIST);
  for (int type = -1; type <= 9; ++type) {
    for (int root = -1; root <= 4; ++root) {
      for (const int category : {-1, 0, 15}) {
        for (unsigned bits = 0; bits < 128; ++bits) {
          const Facts facts = {type,
                               root,
                               (bits & 1) != 0,
                               (bits & 2) != 0,
                               (bits & 4) != 0,
                               category,
                               (bits & 8) != 0,
                               (bits & 16) != 0,
                               (bits & 32) != 0,
                               (bits & 64) != 0};
          info->dwConditionCount = 0;
          info.Verb(facts.advise ? QUERY_VERB_ADVISE : QUERY_VERB_REQUEST);
          const auto add = [&](bool wanted, int field, const std::string& value) {
            if (wanted) {
              info.Where(field, value);
            }
          };
          // The list type id and name come first and the root last, so that nothing is implied but
          // the root of a name, which is then overwritten or, without a root, taken as the rule has
          // it.
          Facts expected = facts;
          add(facts.listTypeID, 359, "A");
          add(facts.listTypeName, 364, "A");
          if (facts.listTypeName && root == -1) {
            expected.root = 2;
          }
          add(type != -1, 366, std::to_string(type));
          add(root != -1, 426, std::to_string(root));
          add(facts.exchange, 17, "NYSE");
          add(category != -1, 190, std::to_string(category));
          add(facts.symbolRoot, 209, "ES");
          add(facts.description, 62, "bank");
          add(facts.symbolName, 31, "IBM");
          Where where;
          const int created = where.Create(info);
          ASSERT_EQ(created != 0, ShouldBeValid(expected))
              << "type " << type << ", root " << root << ", category " << category << ", bits "
              << bits;
          ASSERT_EQ(where.IsQueryValid(), created != 0);
          valid += created;
          ++combinations;
        }
      }
    }
  }
  EXPECT_EQ(combinations, 11 * 6 * 3 * 128);
  EXPECT_GT(valid, 0);
  EXPECT_LT(valid, combinations);
}

TEST(SymbolListWhere, EachRuleOfAValidQueryHasItsExample) {
  using Conditions = std::vector<std::pair<int, const char*>>;
  const struct {
    const char* rule;
    Conditions conditions;
    std::uint8_t verb;
    int expected;
  } cases[] = {
      {"no condition", {}, 0, 0},
      {"no list type", {{31, "IBM"}, {17, "NYSE"}, {209, "ES"}}, 0, 0},
      {"tree: an exchange under root 3", {{366, "2"}, {426, "3"}, {17, "NYSE"}}, 0, 1},
      {"tree: a list type id under root 1", {{366, "5"}, {426, "1"}, {359, "A"}}, 0, 1},
      {"tree: nothing at all", {{366, "6"}}, 0, 1},
      {"tree: a root of 2", {{366, "2"}, {426, "2"}, {359, "A"}}, 0, 1},
      {"tree: a list type name alone, root 0", {{366, "2"}, {364, "A"}, {426, "0"}}, 0, 1},
      {"tree: a list type id, root 0", {{366, "2"}, {359, "A"}, {426, "0"}}, 0, 0},
      {"tree: a list type id before its list type", {{359, "A"}, {366, "2"}}, 0, 0},
      {"tree: advise doesn't matter", {{366, "2"}}, QUERY_VERB_ADVISE, 1},
      {"category 15 with a root", {{366, "0"}, {190, "15"}, {209, "ES"}}, 0, 1},
      {"category 15 with a root, another type", {{366, "1"}, {190, "15"}, {209, "ES"}}, 0, 0},
      {"category 15 with a description", {{366, "0"}, {190, "15"}, {62, "x"}}, 0, 1},
      {"category 15 with a description, another type", {{366, "4"}, {190, "15"}, {62, "x"}}, 0, 0},
      {"category 15 with a symbol", {{366, "0"}, {190, "15"}, {31, "IBM"}}, 0, 0},
      {"type 0 with a symbol", {{366, "0"}, {31, "IBM"}}, 0, 1},
      {"type 0 with a description", {{366, "0"}, {62, "x"}}, 0, 1},
      {"type 0 with an exchange", {{366, "0"}, {17, "NYSE"}}, 0, 0},
      {"type 1 with a root", {{366, "1"}, {209, "ES"}}, 0, 1},
      {"type 1 with a symbol", {{366, "1"}, {31, "IBM"}}, 0, 0},
      {"type 3 with a symbol", {{366, "3"}, {31, "IBM"}}, QUERY_VERB_ADVISE, 1},
      {"type 3 with a root", {{366, "3"}, {209, "ES"}}, 0, 0},
      {"type 4", {{366, "4"}}, 0, 1},
      {"type 4 advised", {{366, "4"}}, QUERY_VERB_ADVISE, 0},
      {"type 4 advised with a symbol", {{366, "4"}, {31, "IBM"}}, QUERY_VERB_ADVISE, 0},
      {"type 7", {{366, "7"}}, 0, 1},
      {"type 8", {{366, "8"}, {31, "IBM"}}, 0, 0},
  };
  for (const auto& row : cases) {
    QueryBuilder info(QUERY_TYPE_SYMBOL_LIST, row.verb);
    for (const auto& [field, value] : row.conditions) {
      info.Where(field, value);
    }
    Where where;
    EXPECT_EQ(where.Create(info), row.expected) << row.rule;
  }
}

TEST(SymbolListQuery, ListTypes4And7OnlyGiveListTypes) {
  for (int type = 0; type <= 7; ++type) {
    const bool isLimited = type == 4 || type == 7;
    const auto info = [type] {
      return QueryBuilder(QUERY_TYPE_SYMBOL_LIST)
          .Where(366, std::to_string(type))
          .Where(31, "IBM")
          .Where(209, "ES");
    };
    Query query;
    EXPECT_EQ(query.Create(info().What({359})), 1) << type;
    EXPECT_EQ(query.Create(info().What({364, 359})), 1) << type;
    EXPECT_EQ(query.Create(info().What({31})) == 0, isLimited) << type;
    EXPECT_EQ(query.Create(info().What({359, 31})) == 0, isLimited) << type;
  }
}

TEST(SymbolListQuery, NeedsAField) {
  Query query;
  EXPECT_EQ(query.Create(QueryBuilder(QUERY_TYPE_SYMBOL_LIST).Where(366, "4")), 0);
}

TEST(SymbolListQuery, KnowsItsVerb) {
  for (std::uint8_t verb = 0; verb < 6; ++verb) {
    Query query;
    ASSERT_EQ(
        query.Create(
            QueryBuilder(QUERY_TYPE_SYMBOL_LIST, verb).What({31}).Where(366, "0").Where(31, "IBM")),
        1);
    EXPECT_EQ(query.IsAdvise(), verb == QUERY_VERB_ADVISE);
  }
}

struct OpenWhere : Where {
  using Where::SetBrowseDirection;
  using Where::SetBrowseType;
  using Where::SetExchangeListed;
};

TEST(SymbolListWhere, SomeValuesHaveASetterAlone) {
  OpenWhere where;
  where.SetBrowseDirection(1);
  where.SetBrowseType(2);
  where.SetExchangeListed(3);
  EXPECT_EQ(Read<&Where::GetBrowseDirection>(where), "1");
  EXPECT_EQ(Read<&Where::GetBrowseType>(where), "2");
  EXPECT_EQ(Read<&Where::GetExchangeListed>(where), "3");
}

TEST(SymbolListQuery, CopiesAndASecondCreateKeepTheValues) {
  Query query;
  ASSERT_EQ(query.Create(Plain().Where(31, "IBM").Where(511, "JP")), 1);
  Query copy(query);
  Query assigned;
  assigned = query;
  const Query& self = copy;
  copy = self;
  ASSERT_EQ(query.Create(Plain().Where(209, "ES")), 1);
  EXPECT_EQ(Read<&Where::GetSymbolRoot>(*query.GetWHEREClause()), "ES");
  for (const Query* other : {&query, &copy, &assigned}) {
    EXPECT_EQ(Read<&Where::GetSymbolName>(*other->GetWHEREClause()), "IBM");
    EXPECT_EQ(other->GetWHEREClause()->GetCountryCode(), "JP");
    EXPECT_EQ(other->GetWHATClause()->Find(359), 0);
  }
  EXPECT_EQ(Read<&Where::GetSymbolRoot>(*copy.GetWHEREClause()), kAbsent);
}

}  // namespace
