// What ExplainQuery says of texts that fail, and of those that don't.
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <pxdutil/query/explain_query.h>

namespace {

using pxd::ExplainQuery;
using pxd::QueryExplanation;
using pxd::QueryRule;
using pxd::QueryStage;

struct Row {
  std::string text;
  QueryStage stage;
  QueryRule rule;
  std::size_t position;
  std::string found;
  std::string expected;  // with " | " between
};

std::string Joined(const std::vector<std::string>& names) {
  std::ostringstream all;
  for (std::size_t i = 0; i < names.size(); ++i) {
    all << (i == 0 ? "" : " | ") << names[i];
  }
  return all.str();
}

void ExpectRefusals(const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    const QueryExplanation why = ExplainQuery(row.text);
    EXPECT_FALSE(why.accepted) << row.text;
    EXPECT_EQ(why.stage, row.stage) << row.text << '\n' << why.message;
    EXPECT_EQ(why.rule, row.rule) << row.text << '\n' << why.message;
    EXPECT_EQ(why.position, row.position) << row.text << '\n' << why.message;
    EXPECT_EQ(why.found, row.found) << row.text << '\n' << why.message;
    EXPECT_EQ(Joined(why.expected), row.expected) << row.text << '\n' << why.message;
  }
}

// A text in two parts; what is refused begins the second.
Row At(const std::string& before, const std::string& from, QueryStage stage, QueryRule rule,
       const std::string& found, const std::string& expected) {
  return {before + from, stage, rule, before.size(), found, expected};
}
Row Unexpected(const std::string& before, const std::string& from, const std::string& found,
               const std::string& expected) {
  return At(before, from, QueryStage::Grammar, QueryRule::Unexpected, found, expected);
}
Row Unknown(const std::string& before, const std::string& from, const std::string& found,
            const std::string& expected) {
  return At(before, from, QueryStage::Lexical, QueryRule::UnknownText, found, expected);
}
Row Limit(QueryRule rule, const std::string& before, const std::string& from,
          const std::string& found, const std::string& expected = "") {
  return At(before, from, QueryStage::Grammar, rule, found, expected);
}
Row Check(QueryRule rule, const std::string& before, const std::string& from,
          const std::string& found) {
  return At(before, from, QueryStage::Check, rule, found, "");
}

const std::string kVerbs =
    R"("REQUEST" | "ADVISE" | "MODIFY" | "SYNCH" | "UPDATE" | "COMMIT" | "END" | "ENDQUERY")";
const std::string kOpening = R"("BEGINQUERY" | )" + kVerbs;
const std::string kCharts =
    R"("TICKCHART" | "BARCHART" | "VOLUMECHART" | "ANALYSIS" | "PRICECHART" | "OPTIONCHART" | )"
    R"("CCACHART" | "CONVERSIONCHART")";

TEST(ExplainQuery, SaysNothingOfATextThatIsFine) {
  const std::string text = R"(REQUEST 7,10 FROM SYMBOL_DATA WHERE 31="ABC")";
  const QueryExplanation why = ExplainQuery(text);
  EXPECT_TRUE(why.accepted);
  EXPECT_EQ(why.stage, QueryStage::Accepted);
  EXPECT_EQ(why.rule, QueryRule::None);
  EXPECT_EQ(why.position, text.size());
  EXPECT_EQ(why.found, "");
  EXPECT_TRUE(why.expected.empty());
  EXPECT_EQ(why.message, "");
}

TEST(ExplainQuery, NamesWhatAQueryBeginsWith) {
  ExpectRefusals({
      Unexpected("", "", "end of text", kOpening),
      Unexpected("  ", "", "end of text", kOpening),
      Unexpected("", "FROM NEWS", "FROM", kOpening),
      Unknown("", "HELLO 7", "HELLO", kOpening),
      Unexpected("BEGINQUERY ", "7", "7", kVerbs),
      Unexpected("END ", "", "end of text", "a transaction number"),
      Unexpected("END ", "\"42\"", "\"42\"", "a transaction number"),
      Unexpected("END 42 ", "43", "43", "end of text"),
  });
}

TEST(ExplainQuery, NamesWhatGoesOnWithAWhatList) {
  const std::string what = R"("CHART" | a field id (number))";
  ExpectRefusals({
      Unexpected("REQUEST ", "TICK", "TICK", what + R"( | "FROM")"),
      Unexpected("REQUEST 7 ", "8 FROM NEWS", "8", R"("," | "FROM")"),
      Unknown("REQUEST 7 ", "from NEWS", "from", R"("," | "FROM")"),
      // The comma promised more; FROM alone is what a parser stumbles over, not what is missing.
      Unexpected("MODIFY 7,", "TICK FROM NEWS", "TICK", what),
      Unexpected("SYNCH ", "7 FROM NEWS", "7", R"("FROM")"),
  });
}

TEST(ExplainQuery, AWhatListThatIsMissingIsMissedWhereItShouldStand) {
  ExpectRefusals({
      Limit(QueryRule::WhatMissing, "REQUEST ", "FROM NEWS", "FROM",
            R"("CHART" | a field id (number))"),
  });
}

TEST(ExplainQuery, AWhatListThatBrokeOffIsToldEvenBehindItsSource) {
  ExpectRefusals({
      Unexpected("REQUEST 7,", "FROM NEWS", "FROM", R"("CHART" | a field id (number))"),
      Unexpected("REQUEST CHART(TICKCHART,5 ", "FROM NEWS", "FROM", "\",\""),
      Limit(QueryRule::ChartField, "REQUEST CHART(CCACHART,", "486 FROM NEWS", "486"),
  });
}

TEST(ExplainQuery, NamesTheSources) {
  const QueryExplanation why = ExplainQuery("REQUEST 7 FROM TICK");
  EXPECT_EQ(why.position, 15U);
  EXPECT_EQ(why.expected.size(), 24U);
  EXPECT_EQ(why.expected.front(), "\"SYMBOL_DATA\"");
  EXPECT_EQ(why.expected.back(), "\"SCANNING\"");
}

TEST(ExplainQuery, NamesWhatGoesOnWithAChart) {
  ExpectRefusals({
      Unexpected("REQUEST CHART ", "TICKCHART", "TICKCHART", "\"(\""),
      Unexpected("REQUEST CHART(", "TICK", "TICK", kCharts),
      Unexpected("REQUEST CHART(TICKCHART ", "5", "5", "\",\""),
      Unexpected("REQUEST CHART(TICKCHART,", "MINUTE", "MINUTE", "a count (number)"),
      Unexpected("REQUEST CHART(BARCHART,", "MINUTE", "MINUTE", "a quantity (number)"),
      Unexpected("REQUEST CHART(BARCHART,5,", "201", "201",
                 R"("TICK" | "SECOND" | "MINUTE" | "DAILY" | "WEEKLY" | "MONTHLY" | "YEARLY")"),
      Unexpected("REQUEST CHART(BARCHART,5,MINUTE,", ")", ")", "a field id (number)"),
      Unexpected("REQUEST CHART(BARCHART,5,MINUTE,201 ", "8", "8", "\",\" | \")\""),
      Unexpected("REQUEST CHART(BARCHART,5,MINUTE,201,", ")", ")", "a field id (number)"),
      Unexpected("REQUEST CHART(BARCHART,5,MINUTE,201) ", "7 FROM NEWS", "7", R"("FROM")"),
      Unexpected("REQUEST CHART(OPTIONCHART,5,DAILY", "", "end of text", "\",\""),
      Unexpected("REQUEST CHART(ANALYSIS,5,DAILY,", ")", ")", "a kind of analysis (600 to 606)"),
      Unexpected("REQUEST CHART(ANALYSIS,5,DAILY,600,", ")", ")", "the analysis value (number)"),
      Unexpected("REQUEST CHART(ANALYSIS,5,DAILY,600,1", ")", ")", "\",\""),
      Unexpected("REQUEST CHART(ANALYSIS,5,DAILY,600,1,", ")", ")",
                 "the second analysis parameter (number)"),
      Unexpected("REQUEST CHART(ANALYSIS,5,DAILY,600,1,2,", ")", ")",
                 "the third analysis parameter (number)"),
  });
}

TEST(ExplainQuery, NamesWhatGoesOnWithConditionsAndGroups) {
  ExpectRefusals({
      Unexpected("REQUEST 7 FROM NEWS ", "7", "7", R"("WHERE" | end of text)"),
      Unexpected("REQUEST 7 FROM NEWS ", "ENDQUERY", "ENDQUERY", R"("WHERE" | end of text)"),
      Unexpected("REQUEST 7 FROM NEWS ", "GROUP_BY 7", "GROUP_BY", R"("WHERE" | end of text)"),
      Unexpected("REQUEST 7 FROM NEWS WHERE ", "", "end of text", "a field id (number)"),
      Unexpected("REQUEST 7 FROM NEWS WHERE 31 ", "\"A\"", "\"A\"", R"("=" | "<>" | "!=" | ">")"),
      Unexpected("REQUEST 7 FROM NEWS WHERE 229=", "30", "30", "a quoted value"),
      Unknown("REQUEST 7 FROM NEWS WHERE 31=", "ABC AND", "ABC", "a quoted value"),
      Unexpected(R"(REQUEST 7 FROM NEWS WHERE 31="A" )", "32", "32",
                 R"("AND" | "GROUP_BY" | end of text)"),
      Unexpected(R"(REQUEST 7 FROM NEWS WHERE 31="A" GROUP_BY )", "", "end of text",
                 "a group id (number)"),
      Unexpected(R"(REQUEST 7 FROM NEWS WHERE 31="A" GROUP_BY 7 )", "8", "8",
                 R"("," | end of text)"),
      Unexpected(R"(REQUEST 7 FROM NEWS WHERE 31="A" GROUP_BY 7,)", "", "end of text",
                 "a transaction number"),
  });
}

TEST(ExplainQuery, TellsALexicalErrorFromOneOfGrammar) {
  ExpectRefusals({
      Unknown("REQUEST", "\t7", "\t7", R"("CHART" | a field id (number) | "FROM")"),
      Unknown("REQUEST ", "-5 FROM NEWS", "-5", R"("CHART" | a field id (number) | "FROM")"),
      Unknown("REQUEST 7 FROM NEWS ", "\xE2\x82\xAC", "\xE2\x82\xAC", R"("WHERE" | end of text)"),
      At("REQUEST 7 FROM NEWS WHERE 31=", "\"ABC AND", QueryStage::Lexical,
         QueryRule::UnfinishedString, "\"ABC", "a quoted value"),
      // Only so much of it is shown.
      Unknown("END 42 ", std::string(100, 'x'), std::string(32, 'x'), "end of text"),
  });
}

std::string Fields(int count) {
  std::string text = "1";
  for (int i = 1; i < count; ++i) {
    text += ",1";
  }
  return text;
}

TEST(ExplainQuery, NamesTheLimitThatATextGoesBeyond) {
  std::string conditions = "REQUEST 7 FROM NEWS WHERE ";
  for (int i = 0; i < 20; ++i) {
    conditions += "1=\"A\" AND ";
  }
  const std::string value = '"' + std::string(4096, 'v') + '"';
  const std::string number = "12345678901234567890";
  ExpectRefusals({
      Limit(QueryRule::TooManyFields, "REQUEST " + Fields(100) + ",", "7 FROM NEWS", "7"),
      Limit(QueryRule::TooManyFields, "REQUEST " + Fields(100) + ",", "CHART(CCACHART,487)",
            "CHART"),
      Limit(QueryRule::TooManySnapshotFields, "REQUEST CHART(CCACHART,487," + Fields(10) + ",",
            "7) FROM NEWS", "7"),
      Limit(QueryRule::TooManyConditions, conditions, "2=\"B\"", "2"),
      Limit(QueryRule::TooManyGroupNumbers,
            "REQUEST 7 FROM NEWS WHERE 1=\"A\" GROUP_BY 5," + Fields(100) + ",", "42", "42"),
      Limit(QueryRule::ValueTooLong, "REQUEST 7 FROM NEWS WHERE 31=", value, value),
      Limit(QueryRule::NumberTooLong, "END ", number, number),
      Limit(QueryRule::NumberTooLong, "REQUEST 7,", number + " FROM NEWS", number),
      Limit(QueryRule::LessThan, "REQUEST 7 FROM NEWS WHERE 31", "<\"A\"", "<",
            R"("=" | "<>" | "!=" | ">")"),
      Limit(QueryRule::ChartField, "MODIFY CHART(OPTIONCHART,1,DAILY,", "484) FROM NEWS", "484"),
      Limit(QueryRule::ChartField, "REQUEST CHART(CCACHART,", "486) FROM NEWS", "486"),
      Limit(QueryRule::ChartField, "REQUEST CHART(CONVERSIONCHART,1,DAILY,", "520) FROM NEWS",
            "520"),
      Limit(QueryRule::AnalysisType, "REQUEST CHART(ANALYSIS,1,DAILY,", "599,1) FROM NEWS", "599"),
      Limit(QueryRule::AnalysisType, "REQUEST CHART(ANALYSIS,1,DAILY,", "607,1) FROM NEWS", "607"),
  });
}

TEST(ExplainQuery, NamesWhyAChartCannotBeBuilt) {
  ExpectRefusals({
      Check(QueryRule::ChartCountZero, "REQUEST CHART(TICKCHART,", "0,201) FROM NEWS", "0"),
      Check(QueryRule::ChartCountZero, "REQUEST CHART(VOLUMECHART,", "4294967296,201) FROM NEWS",
            "4294967296"),
      Check(QueryRule::ChartQuantityZero, "REQUEST CHART(BARCHART,", "0,DAILY,201) FROM NEWS", "0"),
      Check(QueryRule::ChartQuantityZero, "REQUEST CHART(ANALYSIS,", "0,DAILY,601,1) FROM NEWS",
            "0"),
      Check(QueryRule::OptionChartUnit, "REQUEST CHART(OPTIONCHART,1,", "MINUTE,485) FROM NEWS",
            "MINUTE"),
      Check(QueryRule::AnalysisValue, "REQUEST CHART(ANALYSIS,1,DAILY,601,", "0.0) FROM NEWS",
            "0.0"),
      Check(QueryRule::AnalysisParameter, "REQUEST CHART(ANALYSIS,1,DAILY,600,1,", "0,2) FROM NEWS",
            "0"),
      Check(QueryRule::PriceChartTooLong, "REQUEST CHART(PRICECHART,", "421,201) FROM NEWS", "421"),
      // Overlooked by the sentence, and of no use.
      Check(QueryRule::ChartCountZero, "MODIFY CHART(", "TICKCHART FROM NEWS", "TICKCHART"),
      Check(QueryRule::AnalysisIncomplete, "MODIFY CHART(", "ANALYSIS,5,DAILY FROM NEWS",
            "ANALYSIS"),
      Check(QueryRule::AnalysisIncomplete, "MODIFY CHART(ANALYSIS,5,DAILY,", "599 FROM NEWS",
            "599"),
  });
}

TEST(ExplainQuery, TellsTheEndQueryWhereItCameFurther) {
  ExpectRefusals({
      Unexpected("REQUEST 7 END ", "", "end of text", "a transaction number"),
      Unknown("REQUEST FROM NEWS END ", "x", "x", "a transaction number"),
      Unexpected("REQUEST 7 END 42 ", "43", "43", "end of text"),
  });
}

TEST(ExplainQuery, WhatIsLeftOfABrokenChartIsNotTakenForAFieldList) {
  ExpectRefusals({
      Unexpected("REQUEST CHART(TICKCHART,5 ", "201) FROM NEWS", "201", "\",\""),
      Unexpected("MODIFY 7,CHART(TICKCHART,5 ", "201,8) FROM NEWS", "201", "\",\""),
  });
}

TEST(ExplainQuery, ARefusalThatALaterFormOvercomesIsForgotten) {
  EXPECT_TRUE(
      ExplainQuery("MODIFY CHART(OPTIONCHART,5,DAILY,484 CCACHART,487) FROM CHART").accepted);
  ExpectRefusals({Limit(QueryRule::ChartField, "REQUEST CHART(OPTIONCHART,5,DAILY,484 CCACHART,",
                        "486) FROM NEWS", "486")});
}

// What the class of a source refuses, with its own words behind the place.
struct Refusal {
  std::string before;  // up to the place
  std::string from;
  std::string found;
  std::string rule;
};

TEST(ExplainQuery, AClassRefusesAtTheFieldThatItNames) {
  const std::vector<Refusal> rows = {
      {"REQUEST 7 FROM ", "SYMBOL_DATA", "SYMBOL_DATA",
       "a symbol (31) is needed unless the verb is MODIFY or SYNCH"},
      {"REQUEST 7 FROM SYMBOL_DATA WHERE 31=\"A\" AND ", "62=\"B\"", "62",
       "no condition may name a field that its source doesn't know"},
      {"REQUEST 7 FROM QUOTE WHERE31=\"A\"AND", "439=\"1\"", "439",
       "the condition needs a chart in the query"},
      {"ADVISE 343,445,", "7 FROM ECN_INFO", "7",
       "ECN_INFO may only be asked for the fields 343 and 445"},
      {"REQUEST 504 FROM ", "ARCHIVE_MSGS", "ARCHIVE_MSGS", "ARCHIVE_MSGS needs the verb ADVISE"},
      {"REQUEST 207 FROM SERVER_INFO WHERE ", "207=\"1\"", "207", "SERVER_INFO takes no condition"},
  };
  for (const Refusal& row : rows) {
    const std::string text = row.before + row.from;
    const pxd::QueryExplanation why = ExplainQuery(text);
    EXPECT_FALSE(why.accepted) << text;
    EXPECT_EQ(why.stage, QueryStage::Class) << text;
    EXPECT_EQ(why.rule, QueryRule::RefusedByClass);
    EXPECT_EQ(why.position, row.before.size()) << text;
    EXPECT_EQ(why.found, row.found);
    EXPECT_TRUE(why.expected.empty());
    EXPECT_EQ(why.message, "the class of the source refuses it at offset " +
                               std::to_string(row.before.size()) + ", found \"" + row.found +
                               "\": " + row.rule);
  }
}

TEST(ExplainQuery, SourcesWithoutAClassRefuseNothing) {
  for (const char* text :
       {"END 42", "REQUEST 7 FROM EDIT_DATA WHERE 9999=\"x\"", "COMMIT FROM NASDAQ_LEVELII"}) {
    EXPECT_TRUE(ExplainQuery(text).accepted) << text;
  }
}

TEST(ExplainQuery, ATextEndsAtItsNul) {
  EXPECT_TRUE(ExplainQuery(std::string_view("END 42\0 rubbish", 15)).accepted);
  EXPECT_EQ(ExplainQuery(std::string_view("END\0 42", 7)).position, 3U);
  EXPECT_EQ(ExplainQuery(std::string_view()).found, "end of text");
  // And where the view ends, whatever stands behind it.
  EXPECT_TRUE(ExplainQuery(std::string_view("END 42\"", 6)).accepted);
}

struct Message {
  std::string text;
  std::string message;
};

TEST(ExplainQuery, PutsItInOneLineForPeople) {
  const std::vector<Message> messages = {
      {"REQUEST 7 from NEWS",
       R"(expected "," or "FROM" at offset 10, found "from": words are written in capitals)"},
      {"REQUEST 7 FROM",
       "expected \"SYMBOL_DATA\", \"QUOTE\", \"CHART\", \"SYMBOL_INFO\", "
       "\"SYMBOL_LIST\", \"NEWS\", \"TIME_SALES\", \"TIME\", \"FEED_INFO\" or one "
       "of 15 others at offset 14, found end of text"},
      {"REQUEST FROM NEWS", R"(expected "CHART" or a field id (number) at offset 8, found "FROM")"
                            ": only SCANNING goes without a WHAT list"},
      {"REQUEST 7 FROM NEWS WHERE 229=30", R"(expected a quoted value at offset 30, found "30")"},
      {"REQUEST 7 FROM NEWS WHERE 31='A'",
       R"(expected a quoted value at offset 29, found "'A'": a value stands in double quotes)"},
      {"REQUEST 7 FROM NEWS WHERE 31<\"A\"",
       R"(a condition has no operator "<": expected "=", "<>", "!=" or ">" at offset 28, found "<")"},
      {"REQUEST\t7 FROM NEWS",
       "expected \"CHART\", a field id (number) or \"FROM\" at offset 7, "
       "found \"\\x097\": blanks alone separate words"},
      {"REQUEST -7 FROM NEWS",
       "expected \"CHART\", a field id (number) or \"FROM\" at offset 8, "
       "found \"-7\": a number begins with a digit"},
      {"SYNCH FROM NEWS WHERE 1=\"A",
       "a quoted text has no closing quote: expected a quoted value at offset 24, found \"A"},
      {"SYNCH FROM NEWS WHERE 1 \"A\"",
       R"(expected "=", "<>", "!=" or ">" at offset 24, found "A")"},
      {"END 12345678901234567890",
       R"(a number has at most 19 characters at offset 4, found "12345678901234567890")"},
      {"REQUEST CHART(CCACHART,486) FROM NEWS",
       R"(CCACHART shows field 487 alone at offset 23, found "486")"},
      {"REQUEST CHART(OPTIONCHART,1,DAILY,484) FROM NEWS",
       R"(OPTIONCHART shows field 485 alone at offset 34, found "484")"},
      {"REQUEST CHART(CONVERSIONCHART,1,DAILY,520) FROM NEWS",
       R"(CONVERSIONCHART shows field 521 alone at offset 38, found "520")"},
      {"REQUEST CHART(ANALYSIS,1,DAILY,607,1) FROM NEWS",
       R"(the kind of an ANALYSIS is 600 to 606 at offset 31, found "607")"},
      {"REQUEST CHART(PRICECHART,421,201) FROM NEWS",
       R"(PRICECHART covers at most 420 minutes at offset 25, found "421")"},
      {"SYNCH FROM NEWS WHERE 1=\"" + std::string(4096, 'v') + '"',
       "a value has at most 4095 characters at offset 24, found \"" + std::string(39, 'v') + "..."},
  };
  for (const Message& row : messages) {
    EXPECT_EQ(ExplainQuery(row.text).message, row.message);
  }
}

}  // namespace
