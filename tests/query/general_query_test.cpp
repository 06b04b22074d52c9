#include <pxdutil/query/general_query.h>

#include <cstring>
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
using Query = CZRGSClientGENERALQuery;
using What = CZRGSClientGENERALQueryWHATClause;
using Where = CZRGSClientGENERALQueryWHEREClause;

// A query that asks for nothing that its conditions could spoil.
QueryBuilder Plain() {
  return QueryBuilder(QUERY_TYPE_ECN_INFO).What({343});
}

TEST(GeneralWhat, NeedsAFieldOrAReasonToHaveNone) {
  const struct {
    const char* what;
    QueryBuilder info;
    int expected;
  } cases[] = {
      {"a field", QueryBuilder(QUERY_TYPE_ECN_INFO).What({343}), 1},
      {"REQUEST", QueryBuilder(QUERY_TYPE_ENTITLEMENTS, QUERY_VERB_REQUEST), 0},
      {"ADVISE", QueryBuilder(QUERY_TYPE_ENTITLEMENTS, QUERY_VERB_ADVISE), 0},
      {"MODIFY", QueryBuilder(QUERY_TYPE_ENTITLEMENTS, QUERY_VERB_MODIFY), 1},
      {"SYNCH", QueryBuilder(QUERY_TYPE_ENTITLEMENTS, QUERY_VERB_SYNCH), 0},
      {"UPDATE", QueryBuilder(QUERY_TYPE_ENTITLEMENTS, QUERY_VERB_UPDATE), 1},
      {"COMMIT", QueryBuilder(QUERY_TYPE_ENTITLEMENTS, QUERY_VERB_COMMIT), 1},
      {"SCANNING", QueryBuilder(QUERY_TYPE_SCANNING), 1},
      {"CCACHART", QueryBuilder(QUERY_TYPE_ENTITLEMENTS).Chart(QUERY_CHART_CCA, 0, 0), 1},
      {"BARCHART", QueryBuilder(QUERY_TYPE_ENTITLEMENTS).Chart(QUERY_CHART_BAR, 3, 5), 0},
  };
  for (const auto& row : cases) {
    What what;
    EXPECT_EQ(what.Create(row.info), row.expected) << row.what;
  }
}

TEST(GeneralWhere, EveryConditionReachesItsAccessor) {
  const AccessorCase<Where> cases[] = {
      {31, "us:IBM", Read<&Where::GetSymbol>, "IBM"},
      {31, "1234567890123456789012345678901", Read<&Where::GetSymbol>,
       "123456789012345678901234567890"},
      {31, "", Read<&Where::GetSymbol>, ""},
      {228, "01/31/1997", Read<&Where::GetLastDate>, "day 35461"},
      {228, "soon", Read<&Where::GetLastDate>, kAbsent},
      {228, "", Read<&Where::GetLastDate>, kAbsent},
      {272, "1", Read<&Where::GetHistorySetting>, "1"},
      {272, "0", Read<&Where::GetHistorySetting>, "0"},
      {272, "2", Read<&Where::GetHistorySetting>, "0"},
      {272, "65537", Read<&Where::GetHistorySetting>, "1"},
      {272, "", Read<&Where::GetHistorySetting>, "0"},
      {276, "1/2/1997", Read<&Where::GetStartDate>, "day 35432"},
      {276, "02/30/1997", Read<&Where::GetStartDate>, kAbsent},
      {365, "42", Read<&Where::GetTransactionID>, "42"},
      {365, "4294967295", Read<&Where::GetTransactionID>, "4294967295"},
      {365, "-1", Read<&Where::GetTransactionID>, "4294967295"},
      {365, "0", Read<&Where::GetTransactionID>, kAbsent},
      {413, "65535", Read<&Where::GetEntitlementAppID>, "65535"},
      {413, "70000", Read<&Where::GetEntitlementAppID>, "4464"},
      {413, "0", Read<&Where::GetEntitlementAppID>, "0"},
      {415, "12", Read<&Where::GetEntitlementID>, "12"},
      {415, "", Read<&Where::GetEntitlementID>, "0"},
      {425, "1", Read<&Where::ReloadCache>, "true", "false"},
      {425, "2", Read<&Where::ReloadCache>, "false", "false"},
      {425, "4294967297", Read<&Where::ReloadCache>, "false", "false"},
      {476, "48", Read<&Where::GetSymDataFlag>, "48", "0"},
      {494, "255", Read<&Where::GetPrefixType>, "255"},
      {494, "0", Read<&Where::GetPrefixType>, kAbsent},
      {495, "dir", Read<&Where::GetPrefixDir>, "dir"},
      {495, "", Read<&Where::GetPrefixDir>, ""},
      {496, "name", Read<&Where::GetPrefixName>, "name"},
      {505, "9", Read<&Where::GetArchiveItemID>, "9"},
      {505, "0", Read<&Where::GetArchiveItemID>, "0"},
      {510, "1,2", Read<&Where::GetHistFields>, "1,2"},
      {510, "", Read<&Where::GetHistFields>, ""},
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

TEST(GeneralWhere, TakesTheseFieldsAndNoOther) {
  const std::vector<int> listed = {31,  33,  34,  35,  37,  228, 272, 275, 276, 359, 365,
                                   413, 415, 417, 425, 426, 476, 494, 495, 496, 505, 510};
  EXPECT_EQ(pxd::test::AcceptedFields<Query>(Plain(), [](int) { return "1"; }), listed);
}

TEST(GeneralWhere, AnUnknownFieldFailsWhateverItsOperator) {
  for (const std::uint32_t op : {0U, 1U, 2U, 77U}) {
    Query query;
    EXPECT_EQ(query.Create(Plain().Where(7, "1", op)), 0);
  }
}

TEST(GeneralWhere, TheOperatorOfAKnownFieldIsNotLookedAt) {
  Query query;
  EXPECT_EQ(query.Create(Plain().Where(31, "IBM", QUERY_OPERATOR_NOT_EQUAL)), 1);
  EXPECT_EQ(Read<&Where::GetSymbol>(*query.GetWHEREClause()), "IBM");
}

TEST(GeneralWhere, ReloadCacheOnceSetIsNotTakenBack) {
  Query query;
  EXPECT_EQ(query.Create(Plain().Where(425, "1").Where(425, "0")), 1);
  EXPECT_TRUE(query.GetWHEREClause()->ReloadCache());
}

TEST(GeneralWhere, TheLastConditionOnAFieldCounts) {
  Query query;
  EXPECT_EQ(query.Create(Plain().Where(31, "A").Where(31, "B")), 1);
  EXPECT_EQ(Read<&Where::GetSymbol>(*query.GetWHEREClause()), "B");
}

TEST(GeneralWhere, TheProgIDFillsABufferOfAnySize) {
  Query query;
  ASSERT_EQ(query.Create(Plain()), 1);
  char buffer[64] = "untouched";
  EXPECT_FALSE(query.GetWHEREClause()->GetEntitlementProgID(buffer, sizeof(buffer)));
  EXPECT_STREQ(buffer, "untouched");

  const std::string text = "1234567890123456789012345678901234567890123456789012345";
  ASSERT_EQ(query.Create(Plain().Where(417, text)), 1);
  const Where& where = *query.GetWHEREClause();
  EXPECT_TRUE(where.GetEntitlementProgID(buffer, sizeof(buffer)));
  EXPECT_EQ(buffer, text.substr(0, 50));
  std::memset(buffer, 'x', sizeof(buffer));
  EXPECT_TRUE(where.GetEntitlementProgID(buffer, 4));
  EXPECT_EQ(std::string(buffer, 5), std::string("123\0x", 5));
  EXPECT_TRUE(where.GetEntitlementProgID(buffer, 1));
  EXPECT_STREQ(buffer, "");
  buffer[0] = 'x';
  EXPECT_TRUE(where.GetEntitlementProgID(buffer, 0));
  EXPECT_TRUE(where.GetEntitlementProgID(buffer, -5));
  EXPECT_EQ(buffer[0], 'x');
  EXPECT_TRUE(where.GetEntitlementProgID(nullptr, 10));
}

TEST(GeneralQuery, KnowsItsVerb) {
  for (std::uint8_t verb = 0; verb < 8; ++verb) {
    Query query;
    ASSERT_EQ(query.Create(Plain().Verb(verb)), 1);
    EXPECT_EQ(query.IsAdvise(), verb == QUERY_VERB_ADVISE);
    EXPECT_EQ(query.IsUpdate(), verb == QUERY_VERB_UPDATE);
    EXPECT_EQ(query.GetWHEREClause()->IsAdvise(), verb == QUERY_VERB_ADVISE);
    EXPECT_EQ(query.GetWHEREClause()->IsUpdate(), verb == QUERY_VERB_UPDATE);
  }
}

TEST(GeneralQuery, EverySourceHasItsRule) {
  const auto kRequest = QUERY_VERB_REQUEST;
  const auto kAdvise = QUERY_VERB_ADVISE;
  const auto kUpdate = QUERY_VERB_UPDATE;
  const struct {
    QUERY_TYPE type;
    std::uint8_t verb;
    std::initializer_list<int> fields;
    int conditionField;  // 0 for no condition
    const char* value;
    int expected;
  } cases[] = {
      // The symbol data flag decides, and any field may be asked for.
      {QUERY_TYPE_SYMBOL_DATA, kRequest, {7}, 476, "16", 1},
      {QUERY_TYPE_SYMBOL_DATA, kRequest, {7}, 476, "32", 1},
      {QUERY_TYPE_SYMBOL_DATA, kRequest, {7, 65535}, 476, "49", 1},
      {QUERY_TYPE_SYMBOL_DATA, kRequest, {7}, 476, "15", 0},
      {QUERY_TYPE_SYMBOL_DATA, kRequest, {7}, 476, "64", 0},
      {QUERY_TYPE_SYMBOL_DATA, kRequest, {7}, 0, "", 0},
      {QUERY_TYPE_ENTITLEMENTS, kRequest, {412, 413, 414, 415, 416, 417, 430}, 0, "", 1},
      {QUERY_TYPE_ENTITLEMENTS, kRequest, {411}, 0, "", 0},
      {QUERY_TYPE_ENTITLEMENTS, kRequest, {418}, 0, "", 0},
      {QUERY_TYPE_ENTITLEMENTS, kRequest, {429}, 0, "", 0},
      {QUERY_TYPE_ENTITLEMENTS, kRequest, {412, 431}, 0, "", 0},
      {QUERY_TYPE_ENTITLEMENTS, kUpdate, {}, 0, "", 1},
      {QUERY_TYPE_FUNDAMENTAL, kRequest, {210, 211, 257, 272, 297, 298, 509, 510}, 0, "", 1},
      {QUERY_TYPE_FUNDAMENTAL, kRequest, {4096}, 0, "", 1},
      {QUERY_TYPE_FUNDAMENTAL, kRequest, {32768}, 0, "", 1},
      {QUERY_TYPE_FUNDAMENTAL, kRequest, {4095}, 0, "", 0},
      {QUERY_TYPE_FUNDAMENTAL, kRequest, {32769}, 0, "", 0},
      {QUERY_TYPE_FUNDAMENTAL, kRequest, {212}, 0, "", 0},
      {QUERY_TYPE_FUNDAMENTAL, kAdvise, {4096}, 0, "", 0},
      {QUERY_TYPE_FUNDAMENTAL, kAdvise, {4096}, 31, "IBM", 1},
      {QUERY_TYPE_FUNDAMENTAL, kAdvise, {4096}, 31, "", 1},
      {QUERY_TYPE_FUNDAMENTAL, kAdvise, {4095}, 31, "IBM", 0},
      {QUERY_TYPE_ECN_INFO, kRequest, {343}, 0, "", 1},
      {QUERY_TYPE_ECN_INFO, kRequest, {343, 445}, 0, "", 1},
      {QUERY_TYPE_ECN_INFO, kRequest, {343, 7}, 0, "", 0},
      {QUERY_TYPE_SYMBOL_PREFIX, kRequest, {31, 62, 494, 495, 496, 498}, 0, "", 1},
      {QUERY_TYPE_SYMBOL_PREFIX, kRequest, {497}, 0, "", 0},
      {QUERY_TYPE_ARCHIVE_MSGS, kAdvise, {504}, 0, "", 1},
      {QUERY_TYPE_ARCHIVE_MSGS, kAdvise, {504, 504}, 0, "", 1},
      {QUERY_TYPE_ARCHIVE_MSGS, kAdvise, {504, 505}, 0, "", 0},
      {QUERY_TYPE_ARCHIVE_MSGS, kRequest, {504}, 0, "", 0},
      {QUERY_TYPE_ARCHIVE_ITEMS, kAdvise, {506}, 0, "", 1},
      {QUERY_TYPE_ARCHIVE_ITEMS, kAdvise, {506, 506}, 0, "", 1},
      {QUERY_TYPE_ARCHIVE_ITEMS, kAdvise, {507}, 0, "", 0},
      {QUERY_TYPE_ARCHIVE_ITEMS, kUpdate, {507}, 505, "9", 1},
      {QUERY_TYPE_ARCHIVE_ITEMS, kUpdate, {508}, 505, "0", 1},
      {QUERY_TYPE_ARCHIVE_ITEMS, kUpdate, {506}, 505, "9", 0},
      {QUERY_TYPE_ARCHIVE_ITEMS, kUpdate, {507}, 0, "", 0},
      {QUERY_TYPE_ARCHIVE_ITEMS, kUpdate, {507, 508}, 505, "9", 0},
      {QUERY_TYPE_ARCHIVE_ITEMS, kUpdate, {}, 505, "9", 0},
      {QUERY_TYPE_ARCHIVE_ITEMS, kRequest, {507}, 505, "9", 0},
      {QUERY_TYPE_SCANNING, kAdvise, {31, 36, 40}, 0, "", 1},
      {QUERY_TYPE_SCANNING, kAdvise, {38}, 0, "", 0},
      {QUERY_TYPE_SCANNING, kAdvise, {39}, 0, "", 0},
      {QUERY_TYPE_SCANNING, kAdvise, {}, 0, "", 1},
      {QUERY_TYPE_SCANNING, kUpdate, {31, 36, 40}, 365, "1", 1},
      {QUERY_TYPE_SCANNING, kUpdate, {31}, 0, "", 0},
      {QUERY_TYPE_SCANNING, kUpdate, {38}, 365, "1", 0},
      {QUERY_TYPE_SCANNING, kRequest, {38, 39}, 365, "1", 1},
      {QUERY_TYPE_SCANNING, kRequest, {38}, 365, "0", 0},
      {QUERY_TYPE_SCANNING, kRequest, {38}, 0, "", 0},
      {QUERY_TYPE_SCANNING, kRequest, {31}, 365, "1", 0},
      {QUERY_TYPE_SCANNING, kRequest, {36}, 365, "1", 0},
      {QUERY_TYPE_SCANNING, kRequest, {40}, 365, "1", 0},
      {QUERY_TYPE_SCANNING, kRequest, {37}, 365, "1", 0},
      {QUERY_TYPE_SCANNING, kRequest, {}, 365, "1", 1},
      {QUERY_TYPE_SCANNING, kRequest, {}, 0, "", 0},
  };
  for (const auto& row : cases) {
    QueryBuilder info(row.type, row.verb);
    info.What(row.fields);
    if (row.conditionField != 0) {
      info.Where(row.conditionField, row.value);
    }
    Query query;
    EXPECT_EQ(query.Create(info), row.expected)
        << "source " << row.type << ", verb " << int{row.verb} << ", "
        << testing::PrintToString(row.fields) << ", " << row.conditionField << "=" << row.value;
  }
}

TEST(GeneralQuery, RefusesEverySourceThatItDoesNotServe) {
  for (int type = -1; type < 30; ++type) {
    const bool isServed =
        type == 12 || type == 13 || type == 16 || type == 18 || type == 20 || type == 21;
    // ADVISE, a symbol and a transaction id: all that a source of these may need; no field.
    QueryBuilder info(static_cast<QUERY_TYPE>(type), QUERY_VERB_ADVISE);
    info.Chart(QUERY_CHART_CCA, 0, 0).Where(31, "IBM").Where(365, "1");
    Query query;
    EXPECT_EQ(query.Create(info) != 0, isServed || type == 19) << type;
  }
}

TEST(GeneralQuery, AnEmptyListPassesEveryTestOnFields) {
  for (const QUERY_TYPE type : {QUERY_TYPE_ENTITLEMENTS, QUERY_TYPE_FUNDAMENTAL,
                                QUERY_TYPE_ECN_INFO, QUERY_TYPE_SYMBOL_PREFIX}) {
    Query query;
    EXPECT_EQ(query.Create(QueryBuilder(type, QUERY_VERB_UPDATE)), 1) << type;
  }
}

struct OpenQuery : Query {
  using Query::verifyQueryType;
};
struct OpenWhere : Where {
  using Where::SetArchiveItemID;
  using Where::SetEntitlementAppID;
  using Where::SetEntitlementID;
  using Where::SetEntitlementProgID;
  using Where::SetHistFields;
  using Where::SetHistorySetting;
  using Where::SetLastDate;
  using Where::SetPrefixDir;
  using Where::SetPrefixName;
  using Where::SetPrefixType;
  using Where::SetReloadCache;
  using Where::SetStartDate;
  using Where::SetSymbolName;
  using Where::SetSymDataFlag;
  using Where::SetTransactionID;
};

TEST(GeneralQuery, JudgesAnEmptyQueryByItsSource) {
  const OpenQuery query;
  EXPECT_TRUE(query.verifyQueryType(QUERY_TYPE_ENTITLEMENTS));
  EXPECT_FALSE(query.verifyQueryType(QUERY_TYPE_SYMBOL_DATA));
  EXPECT_FALSE(query.verifyQueryType(QUERY_TYPE_NEWS));
}

TEST(GeneralWhere, ASetterStoresAndMarksItsValue) {
  OpenWhere where;
  where.SetArchiveItemID(1);
  where.SetEntitlementAppID(2);
  where.SetEntitlementID(3);
  where.SetEntitlementProgID("prog");
  where.SetSymbolName("US:IBM");
  where.SetHistorySetting(1);
  where.SetLastDate(CZRDate(100));
  where.SetStartDate(CZRDate(200));
  where.SetSymDataFlag(4);
  where.SetPrefixType(5);
  where.SetPrefixDir("dir");
  where.SetPrefixName(nullptr);
  where.SetTransactionID(6);
  where.SetHistFields("hist");
  where.SetReloadCache(true);
  char buffer[10];
  EXPECT_EQ(Read<&Where::GetArchiveItemID>(where), "1");
  EXPECT_EQ(Read<&Where::GetEntitlementAppID>(where), "2");
  EXPECT_EQ(Read<&Where::GetEntitlementID>(where), "3");
  EXPECT_TRUE(where.GetEntitlementProgID(buffer, sizeof(buffer)));
  EXPECT_STREQ(buffer, "prog");
  EXPECT_EQ(Read<&Where::GetSymbol>(where), "IBM");
  EXPECT_EQ(Read<&Where::GetHistorySetting>(where), "1");
  EXPECT_EQ(Read<&Where::GetLastDate>(where), "day 100");
  EXPECT_EQ(Read<&Where::GetStartDate>(where), "day 200");
  EXPECT_EQ(where.GetSymDataFlag(), 4U);
  EXPECT_EQ(Read<&Where::GetPrefixType>(where), "5");
  EXPECT_EQ(Read<&Where::GetPrefixDir>(where), "dir");
  EXPECT_EQ(Read<&Where::GetPrefixName>(where), "");
  EXPECT_EQ(Read<&Where::GetTransactionID>(where), "6");
  EXPECT_EQ(Read<&Where::GetHistFields>(where), "hist");
  EXPECT_TRUE(where.ReloadCache());
}

TEST(GeneralQuery, ASecondCreateKeepsTheValuesAndReplacesTheList) {
  Query query;
  ASSERT_EQ(query.Create(Plain().Where(31, "IBM").Verb(QUERY_VERB_ADVISE)), 1);
  ASSERT_EQ(query.Create(QueryBuilder(QUERY_TYPE_ECN_INFO).What({445}).Where(505, "9")), 1);
  EXPECT_EQ(Read<&Where::GetSymbol>(*query.GetWHEREClause()), "IBM");
  EXPECT_EQ(Read<&Where::GetArchiveItemID>(*query.GetWHEREClause()), "9");
  EXPECT_FALSE(query.IsAdvise());
  EXPECT_EQ(query.GetWHATClause()->GetSize(), 1);
  EXPECT_EQ(query.GetWHATClause()->Find(445), 0);
}

TEST(GeneralQuery, CopiesHoldTheirOwnValues) {
  Query query;
  ASSERT_EQ(query.Create(Plain().Where(31, "IBM").Where(510, "fields")), 1);
  Query copy(query);
  Query assigned;
  assigned = query;
  query.Create(Plain().Where(31, "XYZ").Where(510, "other"));
  for (const Query* other : {&copy, &assigned}) {
    EXPECT_EQ(Read<&Where::GetSymbol>(*other->GetWHEREClause()), "IBM");
    EXPECT_EQ(Read<&Where::GetHistFields>(*other->GetWHEREClause()), "fields");
    EXPECT_EQ(other->GetWHATClause()->Find(343), 0);
  }
  const Query& self = copy;
  copy = self;
  EXPECT_EQ(Read<&Where::GetSymbol>(*copy.GetWHEREClause()), "IBM");
}

}  // namespace
