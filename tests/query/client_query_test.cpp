// Query texts and the records that they become.
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <pxdutil/query/client_query.h>
#include <pxdutil/query/detail/parsed_query.h>

#include "query_expect.h"
#include "tests/support/allocation_counter.h"

namespace {

using pxd::test::ExpectAccepted;
using pxd::test::ExpectNoSentence;
using pxd::test::Numbers;
using pxd::test::Repeated;

std::string Conditions(int count) {
  return Repeated(count, " AND ", [](int i) { return std::to_string(i + 1) + "=\"v\""; });
}

std::string PrintedConditions(int count) {
  return Repeated(count, " ", [](int i) { return std::to_string(i + 1) + "=\"v\""; });
}

TEST(GetQueryInfo, ReadsTheWholeOfARequest) {
  ExpectAccepted({{R"(BEGINQUERY ADVISE 7,10,CHART(BARCHART,5,MINUTE,201,8,11) FROM SYMBOL_DATA )"
                   R"(WHERE 31="ABC" AND 229="30" AND 365="42" GROUP_BY 7,41,42)",
                   R"(type 4; verb 1; chart; kind 2; quantity 5 unit 3; field 201; snapshot 8,11; )"
                   R"(group 7: 41,42; what 7,10; where 31="ABC" 229="30" 365="42")"}});
}

TEST(GetQueryInfo, AnEmptyTextIsNoSentence) {
  ExpectNoSentence({"", " ", "     "});
}

TEST(GetQueryInfo, NullIsNoText) {
  const auto out = std::make_unique<QUERY_INFO>();
  out->dwTransactionID = 5;
  EXPECT_EQ(CZRGSClientQuery::GetQueryInfo(nullptr, *out), 0);
  EXPECT_EQ(out->dwTransactionID, 5U);
}

TEST(GetQueryInfo, ATextMayStandInTheRecordThatItFills) {
  const std::string text = R"(REQUEST 7 FROM NEWS WHERE 31="ABC" AND 242="a word")";
  const auto expected = std::make_unique<QUERY_INFO>();
  ASSERT_EQ(CZRGSClientQuery::GetQueryInfo(text.c_str(), *expected), 1);
  const auto out = std::make_unique<QUERY_INFO>();
  char* const places[] = {reinterpret_cast<char*>(out.get()),
                          reinterpret_cast<char*>(out.get() + 1) - text.size() - 1};
  for (char* const place : places) {
    text.copy(place, text.size());
    place[text.size()] = '\0';
    EXPECT_EQ(CZRGSClientQuery::GetQueryInfo(place, *out), 1);
    EXPECT_EQ(std::memcmp(out.get(), expected.get(), sizeof(QUERY_INFO)), 0);
  }
}

TEST(GetQueryInfo, EndQueriesGiveTheirTransaction) {
  ExpectAccepted({
      {"END 42", "type 0; transaction 42"},
      {"ENDQUERY 42", "type 0; transaction 42"},
      {"END42", "type 0; transaction 42"},
      {" END  42 ", "type 0; transaction 42"},
      {"END 0", "type 0"},
      {"END 4294967297", "type 0; transaction 1"},
      {"END 12e3", "type 0; transaction 12"},
  });
  ExpectNoSentence({"END", "ENDQUERY", "END \"42\"", "END 42 43", "END END 42", "END 42 ENDQUERY",
                    "END -42", "42"});
}

TEST(GetQueryInfo, TheOpenerIsOptional) {
  ExpectAccepted({
      {"REQUEST 7 FROM NEWS", "type 1; what 7"},
      {"BEGINQUERY REQUEST 7 FROM NEWS", "type 1; what 7"},
      {"BEGINQUERYREQUEST7FROMNEWS", "type 1; what 7"},
  });
  ExpectNoSentence({"BEGINQUERY", "BEGINQUERY BEGINQUERY REQUEST 7 FROM NEWS"});
}

TEST(GetQueryInfo, AnEndQueryMayBeginWhereAStartQueryBrokeOffOnPurpose) {
  ExpectAccepted({
      {"BEGINQUERY END 42", "type 0; transaction 42"},
      {"REQUEST 7 END 42", "type 0; transaction 42; what 7"},
      {"ADVISE END 42", "type 0; transaction 42; verb 1"},
      {"SYNCH ENDQUERY 42", "type 0; transaction 42; verb 3"},
      {"REQUEST 7, END 42", "type 0; transaction 42; what 7"},
      {"REQUEST 7 FROM END 42", "type 0; transaction 42; what 7"},
      // Behind a source that needed a WHAT list.
      {"REQUEST FROM NEWS END 42", "type 0; transaction 42"},
      // The type goes, whatever else was stored stays.
      {R"(ADVISE 7,CHART(BARCHART,5,MINUTE,201,8) FROM NEWS WHERE 31="A" AND END 42)",
       R"(type 0; transaction 42; verb 1; chart; kind 2; quantity 5 unit 3; field 201; snapshot 8; )"
       R"(what 7; where 31="A")"},
  });
  // A start query that succeeds is followed by nothing.
  ExpectNoSentence({"REQUEST 7 FROM NEWS END 42", R"(REQUEST 7 FROM NEWS WHERE 31="A" END 42)"});
}

TEST(GetQueryInfo, NothingFollowsAStartQuery) {
  ExpectNoSentence({
      "BEGINQUERY REQUEST 7 FROM NEWS ENDQUERY",
      "REQUEST 7 FROM NEWS ENDQUERY 42",
      "REQUEST 7 FROM NEWS 7",
      "REQUEST 7 FROM NEWS NEWS",
      R"(REQUEST 7 FROM NEWS WHERE 31="A" WHERE 31="A")",
      R"(REQUEST 7 FROM NEWS WHERE 31="A" GROUP_BY 7 AND 31="A")",
  });
}

TEST(GetQueryInfo, EachVerbHasItsNumber) {
  ExpectAccepted({
      {"REQUEST 7 FROM NEWS", "type 1; what 7"},
      {"ADVISE 7 FROM NEWS", "type 1; verb 1; what 7"},
      {"MODIFY 7 FROM NEWS", "type 1; verb 2; what 7"},
      {"SYNCH FROM NEWS", "type 1; verb 3"},
      {"UPDATE 7 FROM NEWS", "type 1; verb 4; what 7"},
      {"COMMIT FROM NEWS", "type 1; verb 5"},
  });
}

TEST(GetQueryInfo, RequestAndAdviseNeedAWhatListButForScanning) {
  ExpectAccepted({
      {"REQUEST FROM SCANNING", "type 21"},
      {"ADVISE FROM SCANNING", "type 21; verb 1"},
      {"REQUEST 7, FROM SCANNING", "type 21; what 7"},
      {"REQUEST CHART(TICKCHART,5 FROM SCANNING", "type 21; kind 1; count 5"},
  });
  ExpectNoSentence({"REQUEST FROM NEWS", "ADVISE FROM SYMBOL_DATA", "REQUEST 7, FROM NEWS",
                    R"(REQUEST FROM NEWS WHERE 31="A")"});
}

TEST(GetQueryInfo, ModifyAndUpdateOverlookTheirWhatListOnPurpose) {
  ExpectAccepted({
      {"MODIFY FROM SYMBOL_DATA", "type 4; verb 2"},
      {"UPDATE FROM EDIT_DATA", "type 7; verb 4"},
      {"MODIFY 7, FROM NEWS", "type 1; verb 2; what 7"},
      {"UPDATE CHART( FROM NEWS", "type 1; verb 4"},
      {"MODIFY 7,8,CHART(CCACHART,486 FROM NEWS", "type 1; verb 2; kind 6; field 486; what 7,8"},
  });
  // What can't be overlooked is a token that FROM isn't.
  ExpectNoSentence({"MODIFY 7 8 FROM NEWS", "MODIFY TICK FROM NEWS"});
}

TEST(GetQueryInfo, SynchAndCommitTakeNoWhatList) {
  ExpectAccepted({{"SYNCH FROM SYMBOL_DATA", "type 4; verb 3"},
                  {R"(COMMIT FROM EDIT_DATA WHERE 365="1")", R"(type 7; verb 5; where 365="1")"}});
  ExpectNoSentence(
      {"SYNCH 7 FROM NEWS", "COMMIT 7 FROM NEWS", "SYNCH CHART(CCACHART,487) FROM NEWS"});
}

TEST(GetQueryInfo, EachSourceHasItsType) {
  const std::vector<std::pair<std::string, int>> sources = {{"NEWS", 1},
                                                            {"TIME", 2},
                                                            {"SYMBOL_LIST", 3},
                                                            {"SYMBOL_DATA", 4},
                                                            {"QUOTE", 4},
                                                            {"CHART", 4},
                                                            {"SYMBOL_INFO", 4},
                                                            {"FEED_INFO", 5},
                                                            {"SERVER_INFO", 6},
                                                            {"EDIT_DATA", 7},
                                                            {"FEED_STATUS", 8},
                                                            {"CONNECT_DATAFEED", 9},
                                                            {"NASDAQ_LEVELII", 10},
                                                            {"TIME_SALES", 11},
                                                            {"ENTITLEMENTS", 12},
                                                            {"FUNDAMENTAL", 13},
                                                            {"ARCHIVE_INFO", 14},
                                                            {"ARCHIVE", 15},
                                                            {"ECN_INFO", 16},
                                                            {"MESSAGE", 17},
                                                            {"SYMBOL_PREFIX", 18},
                                                            {"ARCHIVE_MSGS", 19},
                                                            {"ARCHIVE_ITEMS", 20},
                                                            {"SCANNING", 21}};
  for (const auto& [word, type] : sources) {
    ExpectAccepted({{"REQUEST 7 FROM " + word, "type " + std::to_string(type) + "; what 7"}});
  }
  ExpectNoSentence({"REQUEST 7 FROM", "REQUEST 7 FROM TICK", "REQUEST 7 FROM 7",
                    "REQUEST 7 FROM NEWS,TIME", "REQUEST 7 FROM \"NEWS\""});
}

TEST(GetQueryInfo, FieldIdsAreCutTo16BitsWithoutACheck) {
  ExpectAccepted({
      {"REQUEST 70000 FROM NEWS", "type 1; what 4464"},
      {"REQUEST 65535,65537 FROM NEWS", "type 1; what 65535,1"},
      {"REQUEST 12e3,1-2 FROM NEWS", "type 1; what 12,1"},
      {R"(REQUEST 7 FROM NEWS WHERE 70000="A")", R"(type 1; what 7; where 4464="A")"},
      // 485 and 65536.
      {"REQUEST CHART(OPTIONCHART,1,DAILY,66021) FROM NEWS",
       "type 1; chart; kind 5; quantity 1 unit 4; field 485"},
  });
}

TEST(GetQueryInfo, AListBeforeAChartNeedsItsComma) {
  ExpectAccepted({{"REQUEST 7,10,CHART(CCACHART,487) FROM NEWS",
                   "type 1; chart; kind 6; field 487; what 7,10"}});
  ExpectNoSentence({
      "REQUEST 7,10 CHART(CCACHART,487) FROM NEWS",
      "REQUEST CHART(CCACHART,487),7 FROM NEWS",
      "REQUEST CHART(CCACHART,487) 7 FROM NEWS",
      "REQUEST ,7 FROM NEWS",
      "REQUEST 7,,8 FROM NEWS",
      "REQUEST 7,10, FROM NEWS",
      "REQUEST 7,CHART(CCACHART,487),CHART(CCACHART,487) FROM NEWS",
  });
}

TEST(GetQueryInfo, ConditionsHaveThreeOperators) {
  ExpectAccepted({
      {R"(REQUEST 7 FROM NEWS WHERE 31="A")", R"(type 1; what 7; where 31="A")"},
      {R"(REQUEST 7 FROM NEWS WHERE 31<>"A")", R"(type 1; what 7; where 31<>"A")"},
      {R"(REQUEST 7 FROM NEWS WHERE 31!="A")", R"(type 1; what 7; where 31<>"A")"},
      {R"(REQUEST 7 FROM NEWS WHERE 31>"A")", R"(type 1; what 7; where 31>"A")"},
      {R"(REQUEST 7 FROM NEWS WHERE 31 = "A"AND 32 > "B")",
       R"(type 1; what 7; where 31="A" 32>"B")"},
  });
  // Of the two inequalities there is one alone.
  ExpectNoSentence({R"(REQUEST 7 FROM NEWS WHERE 31<"A")", R"(REQUEST 7 FROM NEWS WHERE 31=="A")",
                    R"(REQUEST 7 FROM NEWS WHERE 31>="A")",
                    R"(REQUEST 7 FROM NEWS WHERE 31< >"A")"});
}

TEST(GetQueryInfo, AValueIsQuotedWhateverItsFieldHolds) {
  ExpectNoSentence({"REQUEST 7 FROM NEWS WHERE 31=ABC", "REQUEST 7 FROM NEWS WHERE 229=30",
                    "REQUEST 7 FROM NEWS WHERE 31='A'", "REQUEST 7 FROM NEWS WHERE 31=NEWS",
                    R"(REQUEST 7 FROM NEWS WHERE "A"="A")"});
  ExpectAccepted({
      {R"(REQUEST 7 FROM NEWS WHERE 31="")", R"(type 1; what 7; where 31="")"},
      {"REQUEST 7 FROM NEWS WHERE 31=\"A\tB\r\nC \xFF\"",
       "type 1; what 7; where 31=\"A\tB\r\nC \xFF\""},
      {R"(REQUEST 7 FROM NEWS WHERE 31="AND 5=")", R"(type 1; what 7; where 31="AND 5=")"},
      {R"(REQUEST 7 FROM NEWS WHERE 31="A\")", R"(type 1; what 7; where 31="A\")"},
  });
}

TEST(GetQueryInfo, ConditionsAreJoinedByAndAlone) {
  ExpectNoSentence({
      "REQUEST 7 FROM NEWS WHERE",
      R"(REQUEST 7 FROM NEWS WHERE 31="A",32="B")",
      R"(REQUEST 7 FROM NEWS WHERE 31="A" 32="B")",
      R"(REQUEST 7 FROM NEWS WHERE 31="A" AND)",
      R"(REQUEST 7 FROM NEWS WHERE (31="A"))",
      R"(REQUEST 7 FROM NEWS AND 31="A")",
  });
}

TEST(GetQueryInfo, AGroupNeedsAWhereClause) {
  ExpectNoSentence({"REQUEST 7 FROM NEWS GROUP_BY 7", "REQUEST 7 FROM NEWS GROUP_BY 7,8",
                    R"(REQUEST 7 FROM NEWS WHERE 31="A" GROUP_BY)",
                    R"(REQUEST 7 FROM NEWS WHERE 31="A" GROUP_BY 7,)",
                    R"(REQUEST 7 FROM NEWS WHERE 31="A" GROUP_BY "7")",
                    R"(REQUEST 7 FROM NEWS WHERE 31="A" GROUP_BY 7 8)"});
  ExpectAccepted({
      {R"(REQUEST 7 FROM NEWS WHERE 31="A" GROUP_BY 7)",
       R"(type 1; group 7: ; what 7; where 31="A")"},
      {R"(REQUEST 7 FROM NEWS WHERE 31="A" GROUP_BY 4294967295,4294967296,9223372036854775807)",
       R"(type 1; group 4294967295: 0,4294967295; what 7; where 31="A")"},
  });
}

TEST(GetQueryInfo, WhatAFailedConditionReadStaysInTheRecordOnPurpose) {
  ExpectAccepted({
      {R"(REQUEST 7 FROM NEWS WHERE 31="A" AND 32> END 42)",
       R"(type 0; transaction 42; what 7; where 31="A"; left 32>"")"},
      {R"(REQUEST 7 FROM NEWS WHERE 31 END 42)", R"(type 0; transaction 42; what 7; left 31="")"},
      {R"(REQUEST 7 FROM NEWS WHERE 31<> END 42)",
       R"(type 0; transaction 42; what 7; left 31<>"")"},
  });
}

TEST(GetQueryInfo, AGroupThatBreaksOffKeepsItsNumbersUncountedOnPurpose) {
  ExpectAccepted({
      {R"(REQUEST 7 FROM NEWS WHERE 31="A" GROUP_BY 7,41,42,END 5)",
       R"(type 0; transaction 5; group 7:  left 41 left 42; what 7; where 31="A")"},
      {R"(REQUEST 7 FROM NEWS WHERE 31="A" GROUP_BY END 5)",
       R"(type 0; transaction 5; what 7; where 31="A")"},
      // At the limit the comma is still taken.
      {R"(REQUEST 7 FROM NEWS WHERE 31="A" GROUP_BY 7,)" +
           Repeated(100, ",", [](int) { return "9"; }) + ",END 5",
       R"(type 0; transaction 5; group 7: )" + Repeated(100, "", [](int) { return " left 9"; }) +
           R"(; what 7; where 31="A")"},
  });
}

TEST(GetQueryInfo, TextThatIsNoTokenIsNoSentence) {
  ExpectNoSentence({"REQUEST 7 from NEWS", "REQUEST\t7 FROM NEWS", "REQUEST 7 FROM NEWS\n",
                    "\xEF\xBB\xBFREQUEST 7 FROM NEWS", "REQUEST -7 FROM NEWS",
                    "REQUEST .7 FROM NEWS", "REQUEST 7 FROM NEWS;", "REQUEST 7 FROM NEWSX",
                    "REQUEST 7 FROM NEWS WHERE 31=\"A", "\x80", "END 42\xFF", "TIMEX"});
}

// Limits

TEST(GetQueryInfo, TheWhatListHoldsAHundredFields) {
  ExpectAccepted({
      {"REQUEST " + Numbers(99) + " FROM NEWS", "type 1; what " + Numbers(99)},
      {"REQUEST " + Numbers(100) + " FROM NEWS", "type 1; what " + Numbers(100)},
      {"REQUEST " + Numbers(99) + ",CHART(CCACHART,487) FROM NEWS",
       "type 1; chart; kind 6; field 487; what " + Numbers(99)},
  });
  ExpectNoSentence({
      "REQUEST " + Numbers(101) + " FROM NEWS",
      // A comma behind a full list is wrong already, also ahead of a chart.
      "REQUEST " + Numbers(100) + ", FROM NEWS",
      "REQUEST " + Numbers(100) + ",CHART(CCACHART,487) FROM NEWS",
  });
  ExpectAccepted(
      {{"MODIFY " + Numbers(100) + ", FROM NEWS", "type 1; verb 2; what " + Numbers(100)}});
}

TEST(GetQueryInfo, ASnapshotListHoldsTenFields) {
  const std::string chart = "REQUEST CHART(CCACHART,487,";
  ExpectAccepted({
      {chart + Numbers(9) + ") FROM NEWS",
       "type 1; chart; kind 6; field 487; snapshot " + Numbers(9)},
      {chart + Numbers(10) + ") FROM NEWS",
       "type 1; chart; kind 6; field 487; snapshot " + Numbers(10)},
  });
  ExpectNoSentence({chart + Numbers(11) + ") FROM NEWS", chart + Numbers(10) + ",) FROM NEWS",
                    chart + ") FROM NEWS"});
}

TEST(GetQueryInfo, AWhereClauseHoldsTwentyConditions) {
  const std::string query = "REQUEST 7 FROM NEWS WHERE ";
  ExpectAccepted({{query + Conditions(19), "type 1; what 7; where " + PrintedConditions(19)},
                  {query + Conditions(20), "type 1; what 7; where " + PrintedConditions(20)},
                  {query + Conditions(20) + " AND END 42",
                   "type 0; transaction 42; what 7; where " + PrintedConditions(20)}});
  ExpectNoSentence({query + Conditions(21)});
}

TEST(GetQueryInfo, AValueHas4095CharactersAtMost) {
  const auto query = [](std::size_t length) {
    return "REQUEST 7 FROM NEWS WHERE 31=\"" + std::string(length, 'v') + '"';
  };
  const auto printed = [](std::size_t length) {
    return "type 1; what 7; where 31=\"" + std::string(length, 'v') + '"';
  };
  ExpectAccepted({{query(4094), printed(4094)}, {query(4095), printed(4095)}});
  ExpectNoSentence({query(4096), query(100000)});
}

// It stays the current token, so no end query can begin behind it.
TEST(GetQueryInfo, AValueThatIsTooLongIsNotConsumedOnPurpose) {
  const auto query = [](std::size_t length, const std::string& behind) {
    return "REQUEST 7 FROM NEWS WHERE 31=\"" + std::string(length, 'v') + '"' + behind;
  };
  ExpectNoSentence({query(4096, " END 42"), query(4096, " AND END 42")});
  ExpectAccepted({{query(4095, " AND END 42"),
                   "type 0; transaction 42; what 7; where 31=\"" + std::string(4095, 'v') + '"'}});
}

TEST(GetQueryInfo, ANumberHas19CharactersAtMostWhereItIsConverted) {
  ExpectAccepted({{"END 0000000000000000042", "type 0; transaction 42"},
                  {"REQUEST 0000000000000000007 FROM NEWS", "type 1; what 7"},
                  {"END 1.................2", "type 0; transaction 1"}});
  const std::string longer = "00000000000000000005";
  ASSERT_EQ(longer.size(), 20U);
  ExpectNoSentence({
      "END " + longer,
      "REQUEST " + longer + " FROM NEWS",
      "REQUEST 7," + longer + " FROM NEWS",
      "REQUEST 7 FROM NEWS WHERE " + longer + "=\"A\"",
      "REQUEST 7 FROM NEWS WHERE 31=\"A\" GROUP_BY " + longer,
      "REQUEST 7 FROM NEWS WHERE 31=\"A\" GROUP_BY 7," + longer,
      "REQUEST CHART(TICKCHART," + longer + ",201) FROM NEWS",
      "REQUEST CHART(BARCHART," + longer + ",MINUTE,201) FROM NEWS",
      "REQUEST CHART(ANALYSIS,5,MINUTE,601," + longer + ") FROM NEWS",
      "REQUEST CHART(CCACHART,487," + longer + ") FROM NEWS",
      "END " + std::string(100000, '1'),
  });
}

TEST(GetQueryInfo, AnyNumberMayStandWhereATokenIsPassedOver) {
  ExpectAccepted({{"REQUEST CHART(OPTIONCHART,1,DAILY 00000000000000000005 485) FROM NEWS",
                   "type 1; chart; kind 5; quantity 1 unit 4; field 485"}});
}

TEST(GetQueryInfo, AGroupHoldsAHundredNumbers) {
  const std::string query = R"(REQUEST 7 FROM NEWS WHERE 31="A" GROUP_BY 5,)";
  for (const int count : {99, 100}) {
    ExpectAccepted({{query + Numbers(count),
                     "type 1; group 5: " + Numbers(count) + R"(; what 7; where 31="A")"}});
  }
  ExpectNoSentence(
      {query + Numbers(101), query + Numbers(101) + " END 42", query + Numbers(100) + ","});
}

// Costs

TEST(GetQueryInfo, AllocatesNothing) {
  const std::string query =
      R"(BEGINQUERY ADVISE 7,10,CHART(ANALYSIS,5,MINUTE,600,1.5e1,3,4,8,11) FROM SYMBOL_DATA )"
      R"(WHERE 31="ABC" AND 229="30" AND 365="42" GROUP_BY 7,41,42)";
  const auto out = std::make_unique<QUERY_INFO>();
  const pxd::test::AllocationCounter counter;
  const int good = CZRGSClientQuery::GetQueryInfo(query.c_str(), *out);
  const int bad = CZRGSClientQuery::GetQueryInfo("REQUEST 7 from NEWS", *out);
  EXPECT_EQ(counter.Count(), 0U);
  EXPECT_EQ(good, 1);
  EXPECT_EQ(bad, 0);
}

TEST(GetQueryInfo, NeedsLittleOfTheStack) {
  EXPECT_LE(sizeof(pxd::detail::ParsedQuery), 1600U);
}

}  // namespace
