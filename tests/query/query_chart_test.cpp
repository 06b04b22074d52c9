// Charts in query texts: their forms, and the check that they can be built.
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <pxdutil/query/detail/parsed_query.h>

#include "query_expect.h"

namespace {

using pxd::test::ExpectAccepted;
using pxd::test::ExpectNoSentence;
using pxd::test::ExpectRefusedButFilled;
using pxd::test::Parse;

TEST(QueryChart, EachChartHasItsForm) {
  ExpectAccepted({
      {"REQUEST CHART(TICKCHART,1000,201) FROM NEWS",
       "type 1; chart; kind 1; count 1000; field 201"},
      {"REQUEST CHART(TICKCHART,4294967295,7) FROM NEWS",
       "type 1; chart; kind 1; count 4294967295; field 7"},
      {"REQUEST CHART(BARCHART,5,MINUTE,200) FROM NEWS",
       "type 1; chart; kind 2; quantity 5 unit 3; field 200"},
      {"REQUEST CHART(VOLUMECHART,70000,202) FROM NEWS",
       "type 1; chart; kind 4; count 70000; field 202"},
      {"REQUEST CHART(OPTIONCHART,1,DAILY,485) FROM NEWS",
       "type 1; chart; kind 5; quantity 1 unit 4; field 485"},
      {"REQUEST CHART(CCACHART,487) FROM NEWS", "type 1; chart; kind 6; field 487"},
      {"REQUEST CHART(CONVERSIONCHART,1,TICK,521) FROM NEWS",
       "type 1; chart; kind 7; quantity 1 unit 1; field 521"},
      {"REQUEST CHART(PRICECHART,30,201) FROM NEWS",
       "type 1; chart; kind 8; quantity 30 unit 3; field 201"},
      {"REQUEST CHART ( TICKCHART , 5 , 201 , 8 ) FROM NEWS",
       "type 1; chart; kind 1; count 5; field 201; snapshot 8"},
  });
  ExpectNoSentence({
      "REQUEST CHART FROM NEWS",
      "REQUEST CHART() FROM NEWS",
      "REQUEST CHART(TICKCHART) FROM NEWS",
      "REQUEST CHART(TICKCHART,5) FROM NEWS",
      "REQUEST CHART(TICKCHART,5,201 FROM NEWS",
      "REQUEST CHART TICKCHART,5,201 FROM NEWS",
      "REQUEST CHART(TICKCHART 5,201) FROM NEWS",
      "REQUEST CHART(TICKCHART,5 201) FROM NEWS",
      "REQUEST CHART(TICKCHART,5,MINUTE,201) FROM NEWS",
      "REQUEST CHART(BARCHART,5,201) FROM NEWS",
      "REQUEST CHART(BARCHART,5 MINUTE,201) FROM NEWS",
      "REQUEST CHART(BARCHART,5,MINUTE 201) FROM NEWS",
      "REQUEST CHART(BARCHART,5,MINUTE;201) FROM NEWS",
      "REQUEST CHART(CCACHART,5,487) FROM NEWS",
      "REQUEST CHART(TIME,5,201) FROM NEWS",
  });
}

TEST(QueryChart, EachUnitHasItsCode) {
  const std::vector<std::string> units = {"TICK",   "SECOND",  "MINUTE", "DAILY",
                                          "WEEKLY", "MONTHLY", "YEARLY"};
  for (std::size_t i = 0; i < units.size(); ++i) {
    ExpectAccepted(
        {{"REQUEST CHART(BARCHART,2," + units[i] + ",201) FROM NEWS",
          "type 1; chart; kind 2; quantity 2 unit " + std::to_string(i + 1) + "; field 201"}});
  }
  ExpectNoSentence({"REQUEST CHART(BARCHART,2,TIME,201) FROM NEWS",
                    "REQUEST CHART(BARCHART,2,3,201) FROM NEWS"});
}

TEST(QueryChart, ThreeChartsShowOneFieldEach) {
  ExpectNoSentence({
      "REQUEST CHART(OPTIONCHART,1,DAILY,484) FROM NEWS",
      "REQUEST CHART(OPTIONCHART,1,DAILY,486) FROM NEWS",
      "REQUEST CHART(CCACHART,486) FROM NEWS",
      "REQUEST CHART(CCACHART,488) FROM NEWS",
      "REQUEST CHART(CONVERSIONCHART,1,DAILY,520) FROM NEWS",
      "REQUEST CHART(CONVERSIONCHART,1,DAILY,522) FROM NEWS",
  });
}

TEST(QueryChart, SomeSeparatorsOfChartsAreNotLookedAtOnPurpose) {
  for (const std::string separator : {",", "=", "(", ")", "FROM", "\"x\"", "7 ", "END", "<>"}) {
    ExpectAccepted({
        {"REQUEST CHART(OPTIONCHART,1,DAILY" + separator + "485) FROM NEWS",
         "type 1; chart; kind 5; quantity 1 unit 4; field 485"},
        {"REQUEST CHART(CONVERSIONCHART,1,DAILY" + separator + "521) FROM NEWS",
         "type 1; chart; kind 7; quantity 1 unit 4; field 521"},
        {"REQUEST CHART(ANALYSIS,1,DAILY,601 " + separator + "2) FROM NEWS",
         "type 1; chart; kind 3; quantity 1 unit 4; field 201; analysis 601; value 2 0 0"},
    });
    if (separator != ",") {
      ExpectNoSentence({"REQUEST CHART(BARCHART,1,DAILY" + separator + "201) FROM NEWS",
                        "REQUEST CHART(ANALYSIS,1,DAILY" + separator + "601,2) FROM NEWS"});
    }
  }
  // It has to be a token, and there has to be one.
  ExpectNoSentence({"REQUEST CHART(OPTIONCHART,1,DAILY;485) FROM NEWS",
                    "REQUEST CHART(OPTIONCHART,1,DAILY 485) FROM NEWS",
                    "REQUEST CHART(OPTIONCHART,1,DAILY", "REQUEST CHART(ANALYSIS,1,DAILY,601"});
}

TEST(QueryChart, AnalysisChartsTakeTheParametersOfTheirKind) {
  const std::string query = "REQUEST CHART(ANALYSIS,5,MINUTE,";
  const std::string printed = "type 1; chart; kind 3; quantity 5 unit 3; field 201; analysis ";
  ExpectAccepted({
      {query + "600,1.5,3,4) FROM NEWS", printed + "600; value 1.5 3 4"},
      {query + "600,1.5,3,0) FROM NEWS", printed + "600; value 1.5 3 0"},
      {query + "600,1.5,2147483648,4294967295) FROM NEWS",
       printed + "600; value 1.5 -2147483648 -1"},
      {query + "601,1.5) FROM NEWS", printed + "601; value 1.5 0 0"},
      {query + "602,15e-1) FROM NEWS", printed + "602; value 1.5 0 0"},
      {query + "603,1.5e0) FROM NEWS", printed + "603; value 1.5 0 0"},
      {query + "604,1.5,3) FROM NEWS", printed + "604; value 1.5 3 0"},
      {query + "604,1.5,0) FROM NEWS", printed + "604; value 1.5 0 0"},
      {query + "605,1.5) FROM NEWS", printed + "605; value 1.5 0 0"},
      {query + "606,1.5) FROM NEWS", printed + "606; value 1.5 0 0"},
      // What follows the parameters is the snapshot list.
      {query + "601,1.5,3,4) FROM NEWS",
       "type 1; chart; kind 3; quantity 5 unit 3; field 201; analysis 601; value 1.5 0 0; "
       "snapshot 3,4"},
      {query + "66136,1.5,3,4) FROM NEWS", printed + "600; value 1.5 3 4"},
  });
  ExpectNoSentence(
      {query + "599,1.5) FROM NEWS", query + "607,1.5) FROM NEWS", query + "201,1.5) FROM NEWS",
       query + "600,1.5) FROM NEWS", query + "600,1.5,3) FROM NEWS", query + "604,1.5) FROM NEWS",
       query + "601) FROM NEWS", query + "601,MINUTE) FROM NEWS", query + "600,1.5 3,4) FROM NEWS",
       query + "600,1.5,3 4) FROM NEWS", query + "601,-1.5) FROM NEWS"});
}

// Only a chart that broke off can leave some for the next one.
TEST(QueryChart, AnAnalysisClearsTheParametersThatItDoesNotTake) {
  const std::string broken =
      "REQUEST CHART(ANALYSIS,5,MINUTE,600,1.5,3,4 7,CHART(ANALYSIS,5,MINUTE,";
  const std::string printed = "type 1; chart; kind 3; quantity 5 unit 3; field 201; analysis ";
  ExpectAccepted({{broken + "601,2.5) FROM NEWS", printed + "601; value 2.5 0 0; what 7"},
                  {broken + "604,2.5,9) FROM NEWS", printed + "604; value 2.5 9 0; what 7"}});
}

TEST(QueryChart, QuantitiesAreCutTo16Bits) {
  ExpectAccepted({
      {"REQUEST CHART(BARCHART,65537,MINUTE,201) FROM NEWS",
       "type 1; chart; kind 2; quantity 1 unit 3; field 201"},
      {"REQUEST CHART(PRICECHART,65956,201) FROM NEWS",
       "type 1; chart; kind 8; quantity 420 unit 3; field 201"},
  });
  ExpectRefusedButFilled({{"REQUEST CHART(BARCHART,65536,MINUTE,201) FROM NEWS",
                           "type 1; chart; kind 2; quantity 0 unit 3; field 201"}});
}

TEST(QueryChart, ChartFormsGoOnWhereTheOneBeforeBrokeOffOnPurpose) {
  ExpectAccepted({
      // The count of the first form stays in the size that the second one doesn't write.
      {"REQUEST CHART(TICKCHART,65537 CCACHART,487) FROM NEWS",
       "type 1; chart; kind 6; quantity 1 unit 1; field 487"},
      {"REQUEST CHART(OPTIONCHART,5,DAILY,484 CCACHART,487) FROM NEWS",
       "type 1; chart; kind 6; quantity 5 unit 4; field 487"},
      {"REQUEST CHART(BARCHART ANALYSIS,5,MINUTE,601,2) FROM NEWS",
       "type 1; chart; kind 3; quantity 5 unit 3; field 201; analysis 601; value 2 0 0"},
      // The price chart's check writes the unit.
      {"REQUEST CHART(TICKCHART,65537 PRICECHART,7,201) FROM NEWS",
       "type 1; chart; kind 8; quantity 7 unit 3; field 201"},
  });
  // They are tried in one order, and none twice.
  ExpectNoSentence({"REQUEST CHART(CCACHART TICKCHART,5,201) FROM NEWS",
                    "REQUEST CHART(TICKCHART TICKCHART,5,201) FROM NEWS"});
}

TEST(QueryChart, AFieldListIsTriedWhereAChartBrokeOffOnPurpose) {
  ExpectAccepted({
      {"REQUEST CHART(7,8 FROM NEWS", "type 1; what 7,8"},
      {"REQUEST CHART(TICKCHART,5,201 7,8 FROM NEWS",
       "type 1; kind 1; count 5; field 201; what 7,8"},
      {"REQUEST CHART 7,CHART(CCACHART,487) FROM NEWS", "type 1; chart; kind 6; field 487; what 7"},
      // A second chart goes on with the snapshot list of the first.
      {"REQUEST CHART(TICKCHART,5,201,8,9 7,CHART(CCACHART,487,10) FROM NEWS",
       "type 1; chart; kind 6; quantity 0 unit 5; field 487; snapshot 8,9,10; what 7"},
  });
}

// The snapshot lists of both charts share ten places.
TEST(QueryChart, ASecondChartAddsToTheSnapshotListUntilItIsFull) {
  const auto query = [](int first, const std::string& second) {
    return "REQUEST CHART(TICKCHART,5,201," + pxd::test::Numbers(first) + " 7,CHART(CCACHART,487" +
           second + ") FROM NEWS";
  };
  const std::string printed = "type 1; chart; kind 6; quantity 0 unit 5; field 487; snapshot ";
  ExpectAccepted({
      {query(9, ",11"), printed + pxd::test::Numbers(9) + ",11; what 7"},
      {query(10, ""), printed + pxd::test::Numbers(10) + "; what 7"},
  });
  ExpectNoSentence({query(9, ",11,12"), query(10, ",11"), query(10, ",")});
}

TEST(QueryChart, AnUnknownAnalysisFailsBeforeTheTokenBehindItOnPurpose) {
  ExpectRefusedButFilled(
      {{R"(REQUEST CHART(ANALYSIS,5,MINUTE,599 7 FROM NEWS WHERE 1="" AND END 3)",
        R"(type 0; transaction 3; kind 3; quantity 5 unit 3; analysis 599; what 7; where 1="")"},
       {"MODIFY CHART(ANALYSIS,5,MINUTE,599 FROM NEWS",
        "type 1; verb 2; kind 3; quantity 5 unit 3; analysis 599"},
       {"MODIFY CHART(ANALYSIS,5,MINUTE,607 FROM NEWS",
        "type 1; verb 2; kind 3; quantity 5 unit 3; analysis 607"}});
}

TEST(QueryChart, WhatAFailedChartReadStaysInTheRecordOnPurpose) {
  ExpectAccepted({
      {"MODIFY CHART(TICKCHART,5 FROM NEWS", "type 1; verb 2; kind 1; count 5"},
      {"MODIFY CHART(TICKCHART,5,201 FROM NEWS", "type 1; verb 2; kind 1; count 5; field 201"},
      {"MODIFY CHART(CCACHART,488 FROM NEWS", "type 1; verb 2; kind 6; field 488"},
      // The quantity is there, the unit is what the form before left.
      {"MODIFY CHART(TICKCHART,65537 BARCHART,5,FROM NEWS",
       "type 1; verb 2; kind 2; quantity 5 unit 1"},
      // The field that an analysis shows is set at its end.
      {"MODIFY CHART(ANALYSIS,5,MINUTE,600,1.5,3 FROM NEWS",
       "type 1; verb 2; kind 3; quantity 5 unit 3; analysis 600; value 1.5 3 0"},
      {"MODIFY CHART(CCACHART,487,8,9,FROM NEWS",
       "type 1; verb 2; kind 6; field 487; snapshot 8,9"},
  });
  ExpectRefusedButFilled({
      {"MODIFY CHART(TICKCHART FROM NEWS", "type 1; verb 2; kind 1"},
  });
}

TEST(ChartCheck, CountsAndQuantitiesAreNotZero) {
  ExpectRefusedButFilled({
      {"REQUEST CHART(TICKCHART,0,201) FROM NEWS", "type 1; chart; kind 1; field 201"},
      {"REQUEST CHART(VOLUMECHART,4294967296,201) FROM NEWS", "type 1; chart; kind 4; field 201"},
      {"REQUEST CHART(BARCHART,0,SECOND,201) FROM NEWS",
       "type 1; chart; kind 2; quantity 0 unit 2; field 201"},
      {"REQUEST CHART(OPTIONCHART,0,DAILY,485) FROM NEWS",
       "type 1; chart; kind 5; quantity 0 unit 4; field 485"},
      {"REQUEST CHART(CONVERSIONCHART,0,DAILY,521) FROM NEWS",
       "type 1; chart; kind 7; quantity 0 unit 4; field 521"},
      {"REQUEST CHART(ANALYSIS,0,DAILY,601,1) FROM NEWS",
       "type 1; chart; kind 3; quantity 0 unit 4; field 201; analysis 601; value 1 0 0"},
      {"REQUEST CHART(ANALYSIS,0,DAILY,600,1,2,3) FROM NEWS",
       "type 1; chart; kind 3; quantity 0 unit 4; field 201; analysis 600; value 1 2 3"},
  });
}

TEST(ChartCheck, APriceChartCoversAtMost420MinutesAndGetsItsUnitEitherWay) {
  ExpectAccepted({{"REQUEST CHART(PRICECHART,420,201) FROM NEWS",
                   "type 1; chart; kind 8; quantity 420 unit 3; field 201"},
                  {"REQUEST CHART(PRICECHART,0,201) FROM NEWS",
                   "type 1; chart; kind 8; quantity 0 unit 3; field 201"}});
  ExpectRefusedButFilled({{"REQUEST CHART(PRICECHART,421,201) FROM NEWS",
                           "type 1; chart; kind 8; quantity 421 unit 3; field 201"},
                          {"REQUEST CHART(PRICECHART,65535,201) FROM NEWS",
                           "type 1; chart; kind 8; quantity 65535 unit 3; field 201"}});
}

TEST(ChartCheck, ABarChartBySecondsIsNotLimitedHere) {
  for (const std::string quantity : {"1", "3600", "3601", "65535"}) {
    ExpectAccepted({{"REQUEST CHART(BARCHART," + quantity + ",SECOND,201) FROM NEWS",
                     "type 1; chart; kind 2; quantity " + quantity + " unit 2; field 201"}});
  }
}

TEST(ChartCheck, AnOptionChartGoesNeitherByTicksNorByMinutes) {
  for (const std::string unit : {"TICK", "MINUTE"}) {
    const std::string code = unit == "TICK" ? "1" : "3";
    ExpectRefusedButFilled({{"REQUEST CHART(OPTIONCHART,1," + unit + ",485) FROM NEWS",
                             "type 1; chart; kind 5; quantity 1 unit " + code + "; field 485"}});
  }
  for (const std::string unit : {"SECOND", "DAILY", "WEEKLY", "MONTHLY", "YEARLY"}) {
    EXPECT_EQ(Parse("REQUEST CHART(OPTIONCHART,1," + unit + ",485) FROM NEWS").result, 1) << unit;
  }
}

TEST(ChartCheck, AnAnalysisValueIsAboveZero) {
  for (const std::string kind : {"601", "602", "603", "605", "606"}) {
    EXPECT_EQ(Parse("REQUEST CHART(ANALYSIS,1,DAILY," + kind + ",0.0) FROM NEWS").result, 0);
    EXPECT_EQ(Parse("REQUEST CHART(ANALYSIS,1,DAILY," + kind + ",1e-60) FROM NEWS").result, 0);
    EXPECT_EQ(Parse("REQUEST CHART(ANALYSIS,1,DAILY," + kind + ",0.001) FROM NEWS").result, 1);
    EXPECT_EQ(Parse("REQUEST CHART(ANALYSIS,1,DAILY," + kind + ",1e99) FROM NEWS").result, 1);
  }
  EXPECT_EQ(Parse("REQUEST CHART(ANALYSIS,1,DAILY,604,0,5) FROM NEWS").result, 0);
  EXPECT_EQ(Parse("REQUEST CHART(ANALYSIS,1,DAILY,604,1,0) FROM NEWS").result, 1);
  EXPECT_EQ(Parse("REQUEST CHART(ANALYSIS,1,DAILY,600,0,5,6) FROM NEWS").result, 0);
  EXPECT_EQ(Parse("REQUEST CHART(ANALYSIS,1,DAILY,600,1,0,6) FROM NEWS").result, 0);
  EXPECT_EQ(Parse("REQUEST CHART(ANALYSIS,1,DAILY,600,1,5,0) FROM NEWS").result, 1);
}

// No text can say these values, but other makers of records can.
TEST(ChartCheck, ANegativeValuePassesUnder600AndNotANumberEverywhere) {
  pxd::detail::ParsedQuery query = {};
  query.chartKind = QUERY_CHART_ANALYSIS;
  query.chartSize.resolution = {4, 1};
  query.analysisParam1 = 1;
  const float nan = std::numeric_limits<float>::quiet_NaN();
  for (std::uint16_t kind = 599; kind <= 607; ++kind) {
    query.analysisType = kind;
    const bool known = kind >= 600 && kind <= 606;
    query.analysisValue = -1.0F;
    EXPECT_EQ(CheckChart(query) == pxd::QueryRule::None, kind == 600) << kind;
    query.analysisValue = nan;
    EXPECT_EQ(CheckChart(query) == pxd::QueryRule::None, known) << kind;
    query.analysisValue = -0.0F;
    EXPECT_NE(CheckChart(query), pxd::QueryRule::None) << kind;
  }
}

TEST(ChartCheck, GoesByTheKindAloneOnPurpose) {
  // No chart was read whole, and in the second query none is asked for at all.
  ExpectRefusedButFilled({
      {"MODIFY CHART(TICKCHART FROM NEWS", "type 1; verb 2; kind 1"},
      {"REQUEST CHART(TICKCHART,0 END 42", "type 0; transaction 42; kind 1"},
      {"MODIFY CHART(ANALYSIS,5,MINUTE FROM NEWS", "type 1; verb 2; kind 3; quantity 5 unit 3"},
      {"MODIFY CHART(ANALYSIS,5,MINUTE,600,1.5,FROM NEWS",
       "type 1; verb 2; kind 3; quantity 5 unit 3; analysis 600; value 1.5 0 0"},
      {"REQUEST CHART(PRICECHART,421 FROM SCANNING", "type 21; kind 8; quantity 421 unit 3"},
  });
  ExpectAccepted({
      {"MODIFY CHART(CCACHART FROM NEWS", "type 1; verb 2; kind 6"},
      {"MODIFY CHART(PRICECHART FROM NEWS", "type 1; verb 2; kind 8; quantity 0 unit 3"},
      {"MODIFY CHART(ANALYSIS,5,MINUTE,601,1.5 FROM NEWS",
       "type 1; verb 2; kind 3; quantity 5 unit 3; field 201; analysis 601; value 1.5 0 0"},
  });
}

}  // namespace
