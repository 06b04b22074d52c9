// What hosts count on in the shapes of the query classes, checked by the compiler for all of them.
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

}  // namespace
