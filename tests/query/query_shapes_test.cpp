// What hosts count on in the shapes of the query classes, checked by the compiler for all of them.
#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include <pxdutil/query/archive_queries.h>
#include <pxdutil/query/general_query.h>
#include <pxdutil/query/news_query.h>
#include <pxdutil/query/service_queries.h>
#include <pxdutil/query/symbol_data_query.h>
#include <pxdutil/query/symbol_list_query.h>
#include <pxdutil/query/time_sales_query.h>

#include "tests/query/query_builder.h"

namespace {

template <class QueryClass, class WhatClass, class WhereClass>
struct Trio {
  using Query = QueryClass;
  using What = WhatClass;
  using Where = WhereClass;
};

#define PXD_TRIO(type)                                               \
  Trio<CZRGSClient##type##Query, CZRGSClient##type##QueryWHATClause, \
       CZRGSClient##type##QueryWHEREClause>

template <class Trio>
class QueryShape : public testing::Test {};
using Trios =
    testing::Types<PXD_TRIO(SYMDATA), PXD_TRIO(SYMLIST), PXD_TRIO(NEWS), PXD_TRIO(TimeSales),
                   PXD_TRIO(TIME), PXD_TRIO(SERVERINFO), PXD_TRIO(FEEDINFO), PXD_TRIO(FEEDSTATUS),
                   PXD_TRIO(CONNECTDATAFEED), PXD_TRIO(MESSAGE), PXD_TRIO(ARCHIVE),
                   PXD_TRIO(ARCHIVE_INFO), PXD_TRIO(GENERAL)>;
TYPED_TEST_SUITE(QueryShape, Trios);

TYPED_TEST(QueryShape, AQueryIsAPlainPairOfItsClauses) {
  using Query = typename TypeParam::Query;
  using What = typename TypeParam::What;
  using Where = typename TypeParam::Where;
  static_assert(!std::is_polymorphic_v<Query>);
  static_assert(std::is_default_constructible_v<Query> && std::is_copy_constructible_v<Query> &&
                std::is_copy_assignable_v<Query>);
  static_assert(std::is_same_v<decltype(&Query::Create), int (Query::*)(const QUERY_INFO&)>);
  static_assert(
      std::is_same_v<decltype(std::declval<const Query&>().GetWHATClause()), const What*>);
  static_assert(
      std::is_same_v<decltype(std::declval<const Query&>().GetWHEREClause()), const Where*>);
  const Query query;
  const void* const start = &query;
  EXPECT_EQ(start, query.GetWHATClause()) << "the WHAT clause comes first";
  EXPECT_GT(static_cast<const void*>(query.GetWHEREClause()), start);
}

TYPED_TEST(QueryShape, AWhatClauseIsAnArrayWithAVirtualCreate) {
  using What = typename TypeParam::What;
  static_assert(std::is_base_of_v<CZRGSClientQueryWHATClause, What>);
  static_assert(std::is_copy_constructible_v<What> && std::is_copy_assignable_v<What>);
  What what;
  EXPECT_EQ(what.Find(0), -1);
  EXPECT_TRUE(what.IsKindOf(RUNTIME_CLASS(CObject)));
}

TYPED_TEST(QueryShape, AWhereClauseIsAPlainClassButForTheTwoThatHostsDelete) {
  using Where = typename TypeParam::Where;
  constexpr bool kHasVirtualDestructor =
      std::is_same_v<Where, CZRGSClientSYMDATAQueryWHEREClause> ||
      std::is_same_v<Where, CZRGSClientTimeSalesQueryWHEREClause>;
  static_assert(std::is_copy_constructible_v<Where> && std::is_copy_assignable_v<Where>);
  static_assert(std::is_same_v<decltype(&Where::Create), int (Where::*)(const QUERY_INFO&)>);
  EXPECT_EQ(std::is_polymorphic_v<Where>, kHasVirtualDestructor);
  EXPECT_EQ(std::has_virtual_destructor_v<Where>, kHasVirtualDestructor);
}

// ---- What Create returns ----

// Hosts compare with 1 as well as with 0.
TYPED_TEST(QueryShape, CreateOfEachClassGivesOneOrZero) {
  std::set<int> ofWhat;
  std::set<int> ofWhere;
  std::set<int> ofQuery;
  for (std::uint8_t verb = 0; verb < 4; ++verb) {
    for (const int asked : {7, 207, 210, 243, 280, 335, 340, 343, 359, 468}) {
      for (const int condition : {0, 7, 207, 366}) {
        pxd::test::QueryBuilder info(QUERY_TYPE_NONE, verb);
        info.What({asked});
        if (condition != 0) {
          info.Where(condition, "4");
        }
        ofWhat.insert(typename TypeParam::What().Create(info));
        ofWhere.insert(typename TypeParam::Where().Create(info));
        ofQuery.insert(typename TypeParam::Query().Create(info));
      }
    }
  }
  const std::set<int> kEither = {0, 1};
  EXPECT_TRUE(std::includes(kEither.begin(), kEither.end(), ofWhat.begin(), ofWhat.end()));
  EXPECT_EQ(ofWhat.count(1), 1U);
  EXPECT_EQ(ofWhere, kEither);
  EXPECT_TRUE(std::includes(kEither.begin(), kEither.end(), ofQuery.begin(), ofQuery.end()));
  EXPECT_EQ(ofQuery.count(0), 1U);
}

// ---- The types in which accessors give their values ----

// Hosts pass variables of exactly these types, so an accessor of another width doesn't compile
// there.
template <class Clause, class Value>
using Fills = bool (Clause::*)(Value&) const;
template <class Clause, class Value>
using Returns = Value (Clause::*)() const;

template <class Wanted, class... Accessors>
constexpr bool AllAre(Accessors...) {
  return (std::is_same_v<Accessors, Wanted> && ...);
}

struct GeneralAccessors {
  using Where = CZRGSClientGENERALQueryWHEREClause;
  static_assert(AllAre<Fills<Where, unsigned long>>(&Where::GetArchiveItemID,
                                                    &Where::GetTransactionID));
  static_assert(AllAre<Fills<Where, unsigned short>>(&Where::GetEntitlementAppID,
                                                     &Where::GetEntitlementID));
  static_assert(AllAre<bool (Where::*)(char*, short) const>(&Where::GetEntitlementProgID));
  static_assert(AllAre<Fills<Where, const char*>>(&Where::GetSymbol));
  static_assert(AllAre<Fills<Where, int>>(&Where::GetHistorySetting));
  static_assert(AllAre<Fills<Where, CZRDate>>(&Where::GetLastDate, &Where::GetStartDate));
  static_assert(AllAre<Returns<Where, unsigned long>>(&Where::GetSymDataFlag));
  static_assert(AllAre<Fills<Where, unsigned char>>(&Where::GetPrefixType));
  static_assert(AllAre<Fills<Where, std::string>>(&Where::GetPrefixDir, &Where::GetPrefixName,
                                                  &Where::GetHistFields));
  static_assert(AllAre<Returns<Where, bool>>(&Where::ReloadCache, &Where::IsAdvise,
                                             &Where::IsUpdate));
};

struct SymbolDataAccessors {
  using What = CZRGSClientSYMDATAQueryWHATClause;
  static_assert(AllAre<Returns<What, bool>>(&What::HasChartInfo));
  static_assert(AllAre<Returns<What, const What::CHART_INFO*>>(&What::GetChartInfo));
  static_assert(AllAre<Returns<What, unsigned short>>(&What::GetPrimaryField));

  using Where = CZRGSClientSYMDATAQueryWHEREClause;
  static_assert(AllAre<Fills<Where, unsigned char>>(&Where::GetDataSource, &Where::GetCategory,
                                                    &Where::GetUserDefinedField));
  static_assert(AllAre<Fills<Where, unsigned short>>(
      &Where::GetExchangeListed, &Where::GetExchangeTimeZone, &Where::GetNumCalDaysBack,
      &Where::GetNumTradDaysBack, &Where::GetBarsBackMult));
  static_assert(AllAre<Fills<Where, unsigned long>>(&Where::GetTransactionID,
                                                    &Where::GetArchiveFlags, &Where::GetNumBarsBack,
                                                    &Where::GetCABitMask));
  static_assert(AllAre<Fills<Where, long>>(&Where::GetTickTradeMask));
  static_assert(AllAre<Fills<Where, const char*>>(&Where::GetSymbol, &Where::GetExchangeName,
                                                  &Where::GetEcnList, &Where::GetECNOrders));
  static_assert(AllAre<Fills<Where, ZRGS_SESSION>>(&Where::GetSession, &Where::GetFilterSession));
  static_assert(AllAre<Fills<Where, CZRDate>>(&Where::GetDateOfSessions, &Where::GetLastDate,
                                              &Where::GetStartDate));
  static_assert(AllAre<Fills<Where, CZRTime>>(&Where::GetLastTime, &Where::GetStartTime));
  static_assert(AllAre<Fills<Where, bool>>(&Where::GetSendEmptyBars, &Where::GetSendGhostBars));
  static_assert(AllAre<bool (Where::*)(int&, int&, unsigned long&) const>(&Where::GetECNInfo));
  static_assert(AllAre<Returns<Where, bool>>(&Where::GetTimeZone, &Where::IsAdvise,
                                             &Where::IsModify, &Where::IsSynch,
                                             &Where::HasChartInfo, &Where::HasGroupByInfo,
                                             &Where::IsGroupByAdd, &Where::GetSplitAdj,
                                             &Where::GetDistributionAdj, &Where::GetPriceMultiAdj,
                                             &Where::GetVolMultiAdj, &Where::GetHistoryInChunks));
  static_assert(AllAre<Returns<Where, unsigned long>>(&Where::GetSymDataFlag,
                                                      &Where::GetGroupByID));
  static_assert(AllAre<Returns<Where, long>>(&Where::GetBarsRemaining));
  static_assert(AllAre<Returns<Where, unsigned char>>(&Where::GetAccountCurrency));
  static_assert(AllAre<Returns<Where, const std::string&>>(&Where::GetCountryCode));
  static_assert(AllAre<Returns<Where, const Where::CHART_INFO*>>(&Where::GetChartInfo));
  static_assert(AllAre<Returns<Where, const std::uint32_t*>>(&Where::GetGroupByTransactionList));
  static_assert(AllAre<Returns<Where, short>>(&Where::GetGroupBySize));
  static_assert(AllAre<void (Where::*)(const CZRDate&, bool)>(&Where::SetStartDate));
};

struct SymbolListAccessors {
  using Where = CZRGSClientSYMLISTQueryWHEREClause;
  static_assert(AllAre<Fills<Where, const char*>>(&Where::GetSymbolRoot, &Where::GetSymbolName,
                                                  &Where::GetDescription, &Where::GetExchangeName,
                                                  &Where::GetExchangeTimeName,
                                                  &Where::GetListTypeID, &Where::GetListTypeName));
  static_assert(AllAre<Fills<Where, CZRDate>>(&Where::GetOptionExpDateLow,
                                              &Where::GetOptionExpDateHigh));
  static_assert(AllAre<Fills<Where, float>>(&Where::GetOptionStrikeLow,
                                            &Where::GetOptionStrikeHigh));
  static_assert(AllAre<Returns<Where, bool>>(&Where::IsExactMatch, &Where::IsUnderlyingSymbol,
                                             &Where::GetTimeZone, &Where::IsAdvise,
                                             &Where::IsQueryValid));
  static_assert(AllAre<Returns<Where, const std::string&>>(&Where::GetCountryCode));
};

struct NewsAccessors {
  using What = CZRGSClientNEWSQueryWHATClause;
  static_assert(AllAre<Fills<What, What::QUERYTYPE>>(&What::GetQueryType));

  using Where = CZRGSClientNEWSQueryWHEREClause;
  static_assert(AllAre<Fills<Where, const char*>>(
      &Where::GetSymbol, &Where::GetCategory, &Where::GetKeyword, &Where::GetNewsSource,
      &Where::GetStoryID, &Where::GetStoryIdHi, &Where::GetMultipleSymbols,
      &Where::GetMultipleKeywords, &Where::GetNewsCollectionID, &Where::GetRegularExpression,
      &Where::GetNewsSearchFieldName, &Where::GetNewsSearchFieldItem));
  static_assert(AllAre<Fills<Where, unsigned char>>(&Where::GetDataSource));
  static_assert(AllAre<Fills<Where, unsigned short>>(&Where::GetNewsProviderID,
                                                     &Where::GetNewsSearchFieldID));
  static_assert(AllAre<Fills<Where, CZRDate>>(&Where::GetLastDate, &Where::GetStartDate));
  static_assert(AllAre<Fills<Where, bool>>(&Where::GetMatchWholeWord, &Where::GetMatchCase,
                                           &Where::GetSearchStory));
  static_assert(AllAre<Returns<Where, bool>>(&Where::IsAdvise));
};

struct TimeSalesAccessors {
  using What = CZRGSClientTimeSalesQueryWHATClause;
  static_assert(AllAre<Returns<What, bool>>(&What::WantDate, &What::WantTime));

  using Where = CZRGSClientTimeSalesQueryWHEREClause;
  static_assert(AllAre<Fills<Where, unsigned char>>(&Where::GetDataSource, &Where::GetCategory));
  static_assert(AllAre<Fills<Where, unsigned short>>(&Where::GetExchangeListed));
  static_assert(AllAre<Fills<Where, const char*>>(&Where::GetSymbol, &Where::GetExchangeName));
  static_assert(AllAre<Fills<Where, int>>(&Where::GetAllPrices));
  static_assert(AllAre<Fills<Where, CZRDate>>(&Where::GetStartDate, &Where::GetEndDate));
  static_assert(AllAre<Fills<Where, CZRTime>>(&Where::GetStartTime, &Where::GetEndTime));
  static_assert(AllAre<Fills<Where, short>>(&Where::GetTickMask));
  static_assert(AllAre<Fills<Where, long>>(&Where::GetTickTradeMask));
  static_assert(AllAre<Returns<Where, bool>>(&Where::GetTimeZone, &Where::IsAdvise));
};

struct ServiceAccessors {
  using Time = CZRGSClientTIMEQueryWHEREClause;
  static_assert(AllAre<Fills<Time, unsigned char>>(&Time::GetDataSource));
  static_assert(AllAre<Fills<Time, unsigned short>>(&Time::GetExchangeTimeZone));
  static_assert(AllAre<Returns<Time, bool>>(&Time::GetTimeZone, &Time::IsAdvise));
  using ServerInfo = CZRGSClientSERVERINFOQueryWHEREClause;
  static_assert(AllAre<Returns<ServerInfo, bool>>(&ServerInfo::IsAdvise));
  using FeedInfo = CZRGSClientFEEDINFOQueryWHEREClause;
  static_assert(AllAre<Fills<FeedInfo, unsigned char>>(&FeedInfo::GetDataSource));
  static_assert(AllAre<Returns<FeedInfo, bool>>(&FeedInfo::IsAdvise));
  using FeedStatus = CZRGSClientFEEDSTATUSQueryWHEREClause;
  static_assert(AllAre<Fills<FeedStatus, unsigned char>>(&FeedStatus::GetDataSource));
  static_assert(AllAre<Returns<FeedStatus, bool>>(&FeedStatus::GetConnect, &FeedStatus::IsAdvise));
  using ConnectWhat = CZRGSClientCONNECTDATAFEEDQueryWHATClause;
  static_assert(AllAre<Returns<ConnectWhat, bool>>(&ConnectWhat::GetConnect));
  using Connect = CZRGSClientCONNECTDATAFEEDQueryWHEREClause;
  static_assert(AllAre<Fills<Connect, unsigned char>>(&Connect::GetDataSource));
  using Message = CZRGSClientMESSAGEQueryWHEREClause;
  static_assert(AllAre<Returns<Message, bool>>(&Message::IsAdvise));
  using Archive = CZRGSClientARCHIVEQueryWHEREClause;
  static_assert(AllAre<Fills<Archive, unsigned long>>(&Archive::GetTransactionID,
                                                      &Archive::GetArchiveFlags));
  using ArchiveInfo = CZRGSClientARCHIVE_INFOQueryWHEREClause;
  static_assert(AllAre<Fills<ArchiveInfo, unsigned long>>(&ArchiveInfo::GetTransactionID));
};

}  // namespace
