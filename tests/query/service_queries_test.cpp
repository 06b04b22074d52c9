#include <pxdutil/query/service_queries.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <pxdutil/query/archive_queries.h>
#include "tests/query/accessors.h"
#include "tests/query/query_builder.h"

namespace {

using pxd::test::AcceptedFields;
using pxd::test::kAbsent;
using pxd::test::QueryBuilder;
using pxd::test::Read;

using Fields = std::vector<int>;

QueryBuilder Asking(const Fields& fields, std::uint8_t verb) {
  QueryBuilder info(QUERY_TYPE_NONE, verb);
  for (const int field : fields) {
    info.What({field});
  }
  return info;
}

template <class Query>
int Created(const QUERY_INFO& info) {
  Query query;
  return query.Create(info);
}

// The verbs, of the first eight numbers, under which a query is accepted.
template <class Query>
std::vector<int> AcceptedVerbs(QueryBuilder info) {
  std::vector<int> verbs;
  for (int verb = 0; verb < 8; ++verb) {
    if (Created<Query>(info.Verb(static_cast<std::uint8_t>(verb))) != 0) {
      verbs.push_back(verb);
    }
  }
  return verbs;
}

// The fields, of all there are, that make a list of their own.
template <class Query>
Fields AcceptedAlone(QueryBuilder info) {
  Fields fields;
  for (int field = 0; field <= 0xFFFF; ++field) {
    info->dwWhatCount = 0;
    if (Created<Query>(info.What({field})) != 0) {
      fields.push_back(field);
    }
  }
  return fields;
}

const char* One(int field) {
  static_cast<void>(field);
  return "1";
}

const std::vector<int> kEveryVerb = {0, 1, 2, 3, 4, 5, 6, 7};
const std::vector<int> kRequestOnly = {QUERY_VERB_REQUEST};
const std::vector<int> kAdviseOnly = {QUERY_VERB_ADVISE};

// ---- TIME ----

using TimeQuery = CZRGSClientTIMEQuery;
using TimeWhere = CZRGSClientTIMEQueryWHEREClause;

TEST(TimeQuery, AsksForDateOrTime) {
  const QueryBuilder info(QUERY_TYPE_TIME);
  EXPECT_EQ(AcceptedAlone<TimeQuery>(QueryBuilder(QUERY_TYPE_TIME)), (Fields{280, 281}));
  EXPECT_EQ(Created<TimeQuery>(info), 0);
  EXPECT_EQ(Created<TimeQuery>(Asking({7, 281}, QUERY_VERB_REQUEST)), 1);
  EXPECT_EQ(Created<TimeQuery>(Asking({7, 8}, QUERY_VERB_REQUEST)), 0);
}

TEST(TimeQuery, TakesEveryVerbAndThreeFields) {
  EXPECT_EQ(AcceptedVerbs<TimeQuery>(Asking({280}, 0)), kEveryVerb);
  EXPECT_EQ(AcceptedFields<TimeQuery>(Asking({280}, 0), One), (Fields{207, 297, 298}));
}

TEST(TimeQuery, ItsConditionsReachTheirAccessors) {
  TimeQuery query;
  ASSERT_EQ(query.Create(Asking({280}, QUERY_VERB_ADVISE)), 1);
  const TimeWhere& where = *query.GetWHEREClause();
  EXPECT_TRUE(query.IsAdvise());
  EXPECT_EQ(Read<&TimeWhere::GetDataSource>(where), kAbsent);
  EXPECT_FALSE(where.GetTimeZone());
  ASSERT_EQ(query.Create(Asking({280}, 0).Where(207, "258").Where(298, "0").Where(297, "NYSE")), 1);
  EXPECT_FALSE(query.IsAdvise());
  EXPECT_EQ(Read<&TimeWhere::GetDataSource>(where), "2");
  EXPECT_TRUE(where.GetTimeZone());
  // The condition is accepted, and that is all.
  EXPECT_EQ(Read<&TimeWhere::GetExchangeTimeZone>(where), kAbsent);
}

struct OpenTimeWhere : TimeWhere {
  using TimeWhere::SetExchangeTimeZone;
};

TEST(TimeQuery, TheExchangeTimeZoneHasASetterAlone) {
  OpenTimeWhere where;
  where.SetExchangeTimeZone(65535);
  EXPECT_EQ(Read<&TimeWhere::GetExchangeTimeZone>(where), "65535");
}

TEST(TimeQuery, ASecondCreateKeepsTheDataSourceAndTheFlag) {
  TimeQuery query;
  ASSERT_EQ(query.Create(Asking({280}, 0).Where(207, "9").Where(298, "0")), 1);
  ASSERT_EQ(query.Create(Asking({281}, 0)), 1);
  EXPECT_EQ(Read<&TimeWhere::GetDataSource>(*query.GetWHEREClause()), "9");
  EXPECT_TRUE(query.GetWHEREClause()->GetTimeZone());
  EXPECT_EQ(query.GetWHATClause()->Find(280), -1);
}

// ---- SERVER_INFO ----

using ServerInfoQuery = CZRGSClientSERVERINFOQuery;

TEST(ServerInfoQuery, AsksForOneOfTwoFields) {
  EXPECT_EQ(AcceptedAlone<ServerInfoQuery>(QueryBuilder()), (Fields{207, 208}));
  EXPECT_EQ(Created<ServerInfoQuery>(QueryBuilder()), 0);
  EXPECT_EQ(Created<ServerInfoQuery>(Asking({7, 208}, 0)), 1);
}

TEST(ServerInfoQuery, TakesEveryVerbAndNoCondition) {
  EXPECT_EQ(AcceptedVerbs<ServerInfoQuery>(Asking({207}, 0)), kEveryVerb);
  EXPECT_EQ(Created<ServerInfoQuery>(Asking({207}, 0).Where(207, "1")), 0);
  ServerInfoQuery query;
  ASSERT_EQ(query.Create(Asking({207}, QUERY_VERB_ADVISE)), 1);
  EXPECT_TRUE(query.IsAdvise());
  ASSERT_EQ(query.Create(Asking({207}, QUERY_VERB_REQUEST)), 1);
  EXPECT_FALSE(query.GetWHEREClause()->IsAdvise());
}

// ---- FEED_INFO ----

using FeedInfoQuery = CZRGSClientFEEDINFOQuery;
using FeedInfoWhere = CZRGSClientFEEDINFOQueryWHEREClause;

TEST(FeedInfoQuery, AsksForOneOfFourFields) {
  EXPECT_EQ(AcceptedAlone<FeedInfoQuery>(QueryBuilder().Where(207, "1")),
            (Fields{210, 211, 227, 257}));
  EXPECT_EQ(Created<FeedInfoQuery>(QueryBuilder().Where(207, "1")), 0);
}

TEST(FeedInfoQuery, NeedsExactlyOneConditionOnTheDataSource) {
  EXPECT_EQ(Created<FeedInfoQuery>(Asking({210}, 0)), 0);
  EXPECT_EQ(Created<FeedInfoQuery>(Asking({210}, 0).Where(207, "1")), 1);
  EXPECT_EQ(Created<FeedInfoQuery>(Asking({210}, 0).Where(207, "1").Where(207, "1")), 0);
  EXPECT_EQ(AcceptedFields<FeedInfoQuery>(Asking({210}, 0), One), (Fields{207}));
  FeedInfoQuery query;
  ASSERT_EQ(query.Create(Asking({210}, 0).Where(207, "")), 1);
  EXPECT_EQ(Read<&FeedInfoWhere::GetDataSource>(*query.GetWHEREClause()), "0");
}

TEST(FeedInfoQuery, TakesRequestAloneButRecordsTheAdviseThatItRefuses) {
  EXPECT_EQ(AcceptedVerbs<FeedInfoQuery>(Asking({210}, 0).Where(207, "1")), kRequestOnly);
  FeedInfoQuery query;
  EXPECT_EQ(query.Create(Asking({210}, QUERY_VERB_ADVISE).Where(207, "1")), 0);
  EXPECT_TRUE(query.IsAdvise());
  EXPECT_EQ(Read<&FeedInfoWhere::GetDataSource>(*query.GetWHEREClause()), kAbsent);
}

// ---- FEED_STATUS ----

using FeedStatusQuery = CZRGSClientFEEDSTATUSQuery;
using FeedStatusWhere = CZRGSClientFEEDSTATUSQueryWHEREClause;

TEST(FeedStatusQuery, AsksForItsFieldByAdviseAlone) {
  EXPECT_EQ(AcceptedAlone<FeedStatusQuery>(QueryBuilder(QUERY_TYPE_NONE, QUERY_VERB_ADVISE)),
            (Fields{335}));
  EXPECT_EQ(Created<FeedStatusQuery>(QueryBuilder(QUERY_TYPE_NONE, QUERY_VERB_ADVISE)), 0);
  EXPECT_EQ(Created<FeedStatusQuery>(Asking({7, 335}, QUERY_VERB_ADVISE)), 1);
  EXPECT_EQ(AcceptedVerbs<FeedStatusQuery>(Asking({335}, 0)), kAdviseOnly);
}

TEST(FeedStatusQuery, TakesAnyNumberOfDataSources) {
  EXPECT_EQ(AcceptedFields<FeedStatusQuery>(Asking({335}, QUERY_VERB_ADVISE), One), (Fields{207}));
  FeedStatusQuery query;
  ASSERT_EQ(query.Create(Asking({335}, QUERY_VERB_ADVISE)), 1);
  const FeedStatusWhere& where = *query.GetWHEREClause();
  EXPECT_EQ(Read<&FeedStatusWhere::GetDataSource>(where), kAbsent);
  EXPECT_TRUE(query.IsAdvise());
  ASSERT_EQ(query.Create(Asking({335}, QUERY_VERB_ADVISE).Where(207, "1").Where(207, "2")), 1);
  EXPECT_EQ(Read<&FeedStatusWhere::GetDataSource>(where), "2");
  EXPECT_FALSE(where.GetConnect());
}

struct OpenFeedStatusWhere : FeedStatusWhere {
  using FeedStatusWhere::SetConnect;
};

TEST(FeedStatusQuery, ConnectHasASetterAlone) {
  OpenFeedStatusWhere where;
  EXPECT_FALSE(where.GetConnect());
  where.SetConnect(true);
  EXPECT_TRUE(where.GetConnect());
}

// ---- CONNECT_DATAFEED ----

using ConnectQuery = CZRGSClientCONNECTDATAFEEDQuery;
using ConnectWhere = CZRGSClientCONNECTDATAFEEDQueryWHEREClause;

TEST(ConnectDatafeedQuery, AsksForOneWordAlone) {
  EXPECT_EQ(AcceptedAlone<ConnectQuery>(QueryBuilder()), (Fields{340, 341}));
  EXPECT_EQ(Created<ConnectQuery>(QueryBuilder()), 0);
  EXPECT_EQ(Created<ConnectQuery>(Asking({340, 341}, 0)), 0);
  EXPECT_EQ(Created<ConnectQuery>(Asking({340, 340}, 0)), 0);
  ConnectQuery query;
  EXPECT_FALSE(query.GetWHATClause()->GetConnect());
  ASSERT_EQ(query.Create(Asking({340}, 0)), 1);
  EXPECT_TRUE(query.GetWHATClause()->GetConnect());
  ASSERT_EQ(query.Create(Asking({341}, 0)), 1);
  EXPECT_FALSE(query.GetWHATClause()->GetConnect());
}

TEST(ConnectDatafeedQuery, TakesRequestAloneAndAnyNumberOfDataSources) {
  EXPECT_EQ(AcceptedVerbs<ConnectQuery>(Asking({340}, 0)), kRequestOnly);
  EXPECT_EQ(AcceptedFields<ConnectQuery>(Asking({340}, 0), One), (Fields{207}));
  ConnectQuery query;
  ASSERT_EQ(query.Create(Asking({340}, 0)), 1);
  EXPECT_EQ(Read<&ConnectWhere::GetDataSource>(*query.GetWHEREClause()), kAbsent);
  ASSERT_EQ(query.Create(Asking({340}, 0).Where(207, "1").Where(207, "2")), 1);
  EXPECT_EQ(Read<&ConnectWhere::GetDataSource>(*query.GetWHEREClause()), "2");
}

// ---- MESSAGE ----

using MessageQuery = CZRGSClientMESSAGEQuery;

TEST(MessageQuery, AsksForItsFieldByAdviseAlone) {
  EXPECT_EQ(AcceptedAlone<MessageQuery>(QueryBuilder(QUERY_TYPE_NONE, QUERY_VERB_ADVISE)),
            (Fields{468}));
  EXPECT_EQ(Created<MessageQuery>(QueryBuilder(QUERY_TYPE_NONE, QUERY_VERB_ADVISE)), 0);
  EXPECT_EQ(AcceptedVerbs<MessageQuery>(Asking({468}, 0)), kAdviseOnly);
}

TEST(MessageQuery, DoesNotLookAtItsConditionsOnPurpose) {
  MessageQuery query;
  ASSERT_EQ(query.Create(Asking({468}, QUERY_VERB_ADVISE).Where(31, "IBM").Where(7, "")), 1);
  EXPECT_TRUE(query.IsAdvise());
  EXPECT_TRUE(query.GetWHEREClause()->IsAdvise());
}

// ---- ARCHIVE and ARCHIVE_INFO ----

using ArchiveQuery = CZRGSClientARCHIVEQuery;
using ArchiveWhere = CZRGSClientARCHIVEQueryWHEREClause;
using ArchiveInfoQuery = CZRGSClientARCHIVE_INFOQuery;
using ArchiveInfoWhere = CZRGSClientARCHIVE_INFOQueryWHEREClause;

TEST(ArchiveQuery, AsksForAnything) {
  EXPECT_EQ(Created<ArchiveQuery>(QueryBuilder()), 1);
  EXPECT_EQ(Created<ArchiveInfoQuery>(QueryBuilder()), 1);
  ArchiveQuery query;
  ASSERT_EQ(query.Create(Asking({7, 8}, 0)), 1);
  EXPECT_EQ(query.GetWHATClause()->Find(8), 1);
  ArchiveInfoQuery info;
  ASSERT_EQ(info.Create(Asking({7, 8}, 0)), 1);
  EXPECT_EQ(info.GetWHATClause()->Find(8), 1);
}

TEST(ArchiveQuery, TakesRequestAlone) {
  EXPECT_EQ(AcceptedVerbs<ArchiveQuery>(QueryBuilder()), kRequestOnly);
  EXPECT_EQ(AcceptedVerbs<ArchiveInfoQuery>(QueryBuilder()), kRequestOnly);
}

TEST(ArchiveQuery, ItsConditionsReachTheirAccessors) {
  EXPECT_EQ(AcceptedFields<ArchiveQuery>(QueryBuilder(), One), (Fields{365, 466}));
  EXPECT_EQ(AcceptedFields<ArchiveInfoQuery>(QueryBuilder(), One), (Fields{365}));
  ArchiveQuery query;
  ASSERT_EQ(query.Create(QueryBuilder().Where(365, "0").Where(466, "")), 1);
  EXPECT_EQ(Read<&ArchiveWhere::GetTransactionID>(*query.GetWHEREClause()), kAbsent);
  EXPECT_EQ(Read<&ArchiveWhere::GetArchiveFlags>(*query.GetWHEREClause()), kAbsent);
  ASSERT_EQ(query.Create(QueryBuilder().Where(365, "42").Where(466, "-1")), 1);
  EXPECT_EQ(Read<&ArchiveWhere::GetTransactionID>(*query.GetWHEREClause()), "42");
  EXPECT_EQ(Read<&ArchiveWhere::GetArchiveFlags>(*query.GetWHEREClause()), "4294967295");
  ArchiveInfoQuery info;
  ASSERT_EQ(info.Create(QueryBuilder().Where(365, "41").Where(365, "0")), 1);
  EXPECT_EQ(Read<&ArchiveInfoWhere::GetTransactionID>(*info.GetWHEREClause()), kAbsent);
  ASSERT_EQ(info.Create(QueryBuilder().Where(365, "41")), 1);
  EXPECT_EQ(Read<&ArchiveInfoWhere::GetTransactionID>(*info.GetWHEREClause()), "41");
}

TEST(ArchiveQuery, ASecondCreateKeepsTheValues) {
  ArchiveQuery query;
  ASSERT_EQ(query.Create(Asking({7}, 0).Where(365, "42").Where(466, "3")), 1);
  ASSERT_EQ(query.Create(QueryBuilder()), 1);
  EXPECT_EQ(Read<&ArchiveWhere::GetTransactionID>(*query.GetWHEREClause()), "42");
  EXPECT_EQ(Read<&ArchiveWhere::GetArchiveFlags>(*query.GetWHEREClause()), "3");
  EXPECT_EQ(query.GetWHATClause()->GetSize(), 0);
  ArchiveInfoQuery info;
  ASSERT_EQ(info.Create(QueryBuilder().Where(365, "41")), 1);
  ASSERT_EQ(info.Create(QueryBuilder()), 1);
  EXPECT_EQ(Read<&ArchiveInfoWhere::GetTransactionID>(*info.GetWHEREClause()), "41");
}

// ---- All of them ----

// A query that each class accepts, with a value where the class has one.
template <class Query>
QueryBuilder Accepted();
template <>
QueryBuilder Accepted<TimeQuery>() {
  return Asking({280}, 0).Where(207, "9");
}
template <>
QueryBuilder Accepted<FeedInfoQuery>() {
  return Asking({210}, 0).Where(207, "9");
}
template <>
QueryBuilder Accepted<FeedStatusQuery>() {
  return Asking({335}, QUERY_VERB_ADVISE).Where(207, "9");
}
template <>
QueryBuilder Accepted<ConnectQuery>() {
  return Asking({340}, 0).Where(207, "9");
}

template <class Query>
class DataSourceQuery : public testing::Test {};
using DataSourceQueries = testing::Types<TimeQuery, FeedInfoQuery, FeedStatusQuery, ConnectQuery>;
TYPED_TEST_SUITE(DataSourceQuery, DataSourceQueries);

TYPED_TEST(DataSourceQuery, CopiesHoldTheirOwnValue) {
  TypeParam query;
  ASSERT_EQ(query.Create(Accepted<TypeParam>()), 1);
  TypeParam copy(query);
  const TypeParam& self = copy;
  copy = self;
  ASSERT_EQ(query.Create(Accepted<TypeParam>()), 1);
  unsigned char dataSource = 0;
  EXPECT_TRUE(copy.GetWHEREClause()->GetDataSource(dataSource));
  EXPECT_EQ(dataSource, 9);
  EXPECT_EQ(copy.GetWHATClause()->GetSize(), 1);
}

TYPED_TEST(DataSourceQuery, ARefusedSecondCreateKeepsTheDataSource) {
  TypeParam query;
  ASSERT_EQ(query.Create(Accepted<TypeParam>()), 1);
  EXPECT_EQ(query.Create(Accepted<TypeParam>().Where(7, "1")), 0);
  unsigned char dataSource = 0;
  EXPECT_TRUE(query.GetWHEREClause()->GetDataSource(dataSource));
  EXPECT_EQ(dataSource, 9);
}

}  // namespace
