// Queries while memory runs out.
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <pxdutil/query/archive_queries.h>
#include <pxdutil/query/client_query.h>
#include <pxdutil/query/explain_query.h>
#include <pxdutil/query/general_query.h>
#include <pxdutil/query/news_query.h>
#include <pxdutil/query/query_values.h>
#include <pxdutil/query/service_queries.h>
#include <pxdutil/query/symbol_data_query.h>
#include <pxdutil/query/symbol_list_query.h>
#include <pxdutil/query/time_sales_query.h>

#include "tests/faults/refusals.h"

namespace {

using faults_test::Attempt;
using faults_test::RefuseEachAllocation;

// Values that are too long to be kept without a block of their own.
constexpr const char* kTexts[] = {
    (R"(ADVISE 7,10,CHART(BARCHART,5,MINUTE,201,8,11) FROM SYMBOL_DATA WHERE)"
     R"( 31="ABCDEFGHIJKLMNOPQRSTUVWXYZ" AND 229="30" AND 365="42" GROUP_BY 7,41,42)"),
    R"(REQUEST 96 FROM NEWS WHERE 242="a keyword of more than a few letters")",
    R"(REQUEST 31,62 FROM SYMBOL_LIST WHERE 366="0" AND 62="words of more than a few letters")",
    R"(REQUEST 367 FROM TIME_SALES WHERE 31="A SYMBOL OF MANY LETTERS")",
    R"(REQUEST 415 FROM ENTITLEMENTS WHERE 417="a program of more than a few letters")",
    R"(ADVISE 468 FROM MESSAGE)",
    R"(REQUEST 7 FROM NOWHERE WHERE 31="A")",
    R"(REQUEST 7 FROM SYMBOL_DATA WHERE 31="A" AND 31)",
    R"(REQUEST 7 FROM SYMBOL_DATA WHERE 365="42")",
    "",
};

TEST(QueryMemory, ATextIsParsedTheSameOrNotAtAll) {
  for (const char* const text : kTexts) {
    SCOPED_TRACE(text);
    const auto wanted = std::make_unique<QUERY_INFO>();
    const int result = CZRGSClientQuery::GetQueryInfo(text, *wanted);
    RefuseEachAllocation([&](Attempt& attempt) {
      auto info = std::make_unique<QUERY_INFO>();
      const auto before = std::make_unique<QUERY_INFO>(*info);
      int again = -1;
      // Asking takes no memory. The text of its own gives the loop something to refuse.
      const bool done = attempt.Run([&] {
        const std::string own(text + std::string(64, ' '));
        again = CZRGSClientQuery::GetQueryInfo(own.c_str(), *info);
      });
      if (done) {
        EXPECT_EQ(again, result);
        EXPECT_EQ(std::memcmp(info.get(), wanted.get(), sizeof(QUERY_INFO)), 0);
      }
    });
  }
}

TEST(QueryMemory, AnExplanationIsTheSameOrTellsOfMemoryOrThrows) {
  for (const char* const text : kTexts) {
    SCOPED_TRACE(text);
    const pxd::QueryExplanation wanted = pxd::ExplainQuery(text);
    RefuseEachAllocation([&](Attempt& attempt) {
      attempt.Run([&] {
        const auto why = std::make_unique<pxd::QueryExplanation>(pxd::ExplainQuery(text));
        const bool isSame = why->accepted == wanted.accepted && why->stage == wanted.stage &&
                            why->rule == wanted.rule && why->position == wanted.position &&
                            why->found == wanted.found && why->expected == wanted.expected &&
                            why->message == wanted.message;
        // A class that gets no memory for its lists refuses the query, and that is explained.
        const bool tellsOfMemory = why->stage == pxd::QueryStage::Class &&
                                   why->message.find("memory") != std::string::npos;
        EXPECT_TRUE(isSame || tellsOfMemory) << why->message;
      });
    });
  }
}

TEST(QueryMemory, TypedValuesAreTheSameOrNoneOrThrow) {
  for (const char* const text : kTexts) {
    SCOPED_TRACE(text);
    const auto info = std::make_unique<QUERY_INFO>();
    if (CZRGSClientQuery::GetQueryInfo(text, *info) == 0) {
      continue;
    }
    const auto wanted = pxd::TypedValues(*info);
    RefuseEachAllocation([&](Attempt& attempt) {
      bool isSame = false;
      bool isNone = false;
      const bool done = attempt.Run([&] {
        const auto atLeastOne = std::make_unique<int>(1);
        const auto values = pxd::TypedValues(*info);
        isSame = values == wanted;
        isNone = !values.has_value();
      });
      EXPECT_TRUE(!done || isSame || (isNone && attempt.Refused() > 0));
    });
  }
}

// An object whose Create failed is thrown away; a fresh one takes the query.
template <class Query>
void CreateWithoutMemory(const char* text) {
  SCOPED_TRACE(text);
  const auto info = std::make_unique<QUERY_INFO>();
  ASSERT_EQ(CZRGSClientQuery::GetQueryInfo(text, *info), 1);
  int wanted = 0;
  {
    Query query;
    wanted = query.Create(*info);
  }
  ASSERT_EQ(wanted, 1);
  RefuseEachAllocation([&](Attempt& attempt) {
    auto query = std::make_unique<Query>();
    int created = 0;
    const bool done = attempt.Run([&] {
      const auto atLeastOne = std::make_unique<int>(1);
      created = query->Create(*info);
    });
    EXPECT_TRUE(created == 1 || attempt.Refused() > 0);
    EXPECT_TRUE(done || created == 0);
    if (created == 1) {
      // A copy stands on its own.
      std::optional<Query> copy;
      attempt.Run([&] { copy.emplace(*query); });
      query.reset();
      copy.reset();
    }
    Query fresh;
    EXPECT_EQ(fresh.Create(*info), 1);
  });
}

TEST(QueryMemory, AQueryIsBuiltOrRefused) {
  CreateWithoutMemory<CZRGSClientSYMDATAQuery>(kTexts[0]);
  CreateWithoutMemory<CZRGSClientNEWSQuery>(kTexts[1]);
  CreateWithoutMemory<CZRGSClientSYMLISTQuery>(kTexts[2]);
  CreateWithoutMemory<CZRGSClientTimeSalesQuery>(kTexts[3]);
  CreateWithoutMemory<CZRGSClientGENERALQuery>(kTexts[4]);
  CreateWithoutMemory<CZRGSClientMESSAGEQuery>(kTexts[5]);
}

// The second Create frees what the first one made, also where it fails.
TEST(QueryMemory, ASecondCreateThatFailsLeavesNothingHalfOwned) {
  const auto info = std::make_unique<QUERY_INFO>();
  ASSERT_EQ(CZRGSClientQuery::GetQueryInfo(kTexts[0], *info), 1);
  RefuseEachAllocation([&](Attempt& attempt) {
    CZRGSClientSYMDATAQuery query;
    ASSERT_EQ(query.Create(*info), 1);
    int created = 0;
    attempt.Run([&] { created = query.Create(*info); });
    if (created == 1) {
      EXPECT_EQ(query.GetWHEREClause()->GetGroupBySize(), 2);
    }
    EXPECT_EQ(query.Create(*info), 1);
    EXPECT_EQ(query.GetWHEREClause()->GetGroupBySize(), 2);
    CZRGSClientSYMDATAQuery other;
    attempt.Run([&] { other = query; });
    EXPECT_EQ(query.GetWHEREClause()->GetGroupBySize(), 2);
  });
}

TEST(QueryMemory, AFieldIsStrippedOrTheTextStays) {
  RefuseEachAllocation([](Attempt& attempt) {
    const std::string before = R"(REQUEST 7 FROM SYMBOL_DATA WHERE 31="A" AND 365="42" AND 9="x")";
    std::string text = before;
    const bool done = attempt.Run([&] {
      const auto atLeastOne = std::make_unique<int>(1);
      CZRGSClientQuery::StripFieldID(text, 365);
    });
    EXPECT_EQ(text.find("365") == std::string::npos, done) << text;
    EXPECT_TRUE(done || text == before);
  });
}

}  // namespace
