// pxd query and pxd quote, run as people run them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "command_fixture.h"

namespace {

using namespace pxd_test;
using nlohmann::json;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class QueryCommand : public CommandTest {};
class QuoteCommand : public CommandTest {};

constexpr const char* kWorked =
    R"('BEGINQUERY ADVISE 7,10,CHART(BARCHART,5,MINUTE,201,8,11) FROM SYMBOL_DATA )"
    R"(WHERE 31="ABC" AND 229="30" AND 365="42" GROUP_BY 7,41,42')";

TEST_F(QueryCommand, AQueryIsShownPartByPart) {
  const Ran ran = Run(std::string("query ") + kWorked);
  EXPECT_EQ(ran.status, 0) << ran.err;
  EXPECT_EQ(ran.out,
            "Verb:    ADVISE\n"
            "Source:  SYMBOL_DATA\n"
            "What:    7 Bid, 10 Ask\n"
            "Chart:   BARCHART of 5 Minutes over 201 Trade Record, snapshot of 8 Bid Size, 11 Ask "
            "Size\n"
            "Where:   31 Symbol Name = \"ABC\"\n"
            "and      229 NumDaysBack = \"30\"\n"
            "and      365 TransactionID = \"42\"\n"
            "Group:   7 with the transactions 41, 42\n"
            "Class:   CZRGSClientSYMDATAQuery\n"
            "Values:  symbol: ABC\n"
            "         num calendar days back: 30\n"
            "         transaction id: 42\n");
}

TEST_F(QueryCommand, ProgramsReadItAsJson) {
  const json query = json::parse(Run(std::string("query --json ") + kWorked).out);
  EXPECT_EQ(query, json::parse(R"({
    "accepted": true,
    "verb": "ADVISE",
    "source": "SYMBOL_DATA",
    "what": [{"id": 7, "name": "Bid"}, {"id": 10, "name": "Ask"}],
    "chart": {"kind": "BARCHART", "field": {"id": 201, "name": "Trade Record"},
              "unit": 3, "quantity": 5,
              "snapshot": [{"id": 8, "name": "Bid Size"}, {"id": 11, "name": "Ask Size"}]},
    "where": [{"field": {"id": 31, "name": "Symbol Name"}, "operator": "=", "value": "ABC"},
              {"field": {"id": 229, "name": "NumDaysBack"}, "operator": "=", "value": "30"},
              {"field": {"id": 365, "name": "TransactionID"}, "operator": "=", "value": "42"}],
    "group": {"id": 7, "transactions": [41, 42]},
    "class": "CZRGSClientSYMDATAQuery",
    "values": [{"field": 31, "name": "symbol", "value": "ABC"},
               {"field": 229, "name": "num calendar days back", "value": "30"},
               {"field": 365, "name": "transaction id", "value": "42"}]
  })"));
  EXPECT_EQ(json::parse(Run("query --json 'END 42'").out),
            json::parse(R"({"accepted": true, "ends": 42})"));
}

TEST_F(QueryCommand, EveryKindOfChartIsShown) {
  const struct {
    const char* chart;
    const char* shown;
  } kRows[] = {
      {"TICKCHART,1000,201", "TICKCHART of 1000 over 201 Trade Record"},
      {"VOLUMECHART,70000,201", "VOLUMECHART of 70000 over 201 Trade Record"},
      {"ANALYSIS,1,DAILY,600,0.5,3,4",
       "ANALYSIS of 1 Day over 201 Trade Record, kind 600 with 0.5, 3, 4"},
      {"PRICECHART,420,201", "PRICECHART of 420 Minutes over 201 Trade Record"},
      {"OPTIONCHART,1,WEEKLY,485", "OPTIONCHART of 1 Week over 485 Option Chart Record"},
      {"CCACHART,487", "CCACHART over 487 "},
      {"CONVERSIONCHART,1,MONTHLY,521",
       "CONVERSIONCHART of 1 Month over 521 Conversion Chart Record"},
  };
  for (const auto& row : kRows) {
    const Ran ran =
        Run("query 'REQUEST CHART(" + std::string(row.chart) + ") FROM CHART WHERE 31=\"A\"'");
    EXPECT_EQ(ran.status, 0) << ran.err;
    EXPECT_THAT(ran.out, HasSubstr("What:    nothing\nChart:   " + std::string(row.shown)));
  }
}

TEST_F(QueryCommand, SourcesWithoutAClassSaySo) {
  EXPECT_THAT(Run("query 'REQUEST 7 FROM EDIT_DATA'").out,
              EndsWith("Class:   none; the host decides what it means\n"));
}

TEST_F(QueryCommand, ARefusedQueryHasACaretUnderThePlace) {
  const Ran ran = Run("query 'REQUEST 7 from NEWS'");
  EXPECT_EQ(ran.status, 1);
  EXPECT_EQ(ran.out, "");
  EXPECT_EQ(ran.err,
            "pxd: expected \",\" or \"FROM\" at offset 10, found \"from\": words are written in "
            "capitals\n"
            "  REQUEST 7 from NEWS\n"
            "            ^\n");
  const Ran refused = Run("query --json 'REQUEST 7 from NEWS'");
  EXPECT_EQ(refused.status, 1);
  const json why = json::parse(refused.out);
  EXPECT_EQ(why["accepted"], false);
  EXPECT_EQ(why["position"], 10);
  EXPECT_EQ(why["found"], "from");
  EXPECT_EQ(why["expected"], json::parse(R"(["\",\"", "\"FROM\""])"));
}

TEST_F(QueryCommand, TheClassOfTheSourceIsAskedToo) {
  const Ran ran = Run(R"(query 'REQUEST 7 FROM QUOTE WHERE 31="A" AND 62="B"')");
  EXPECT_EQ(ran.status, 1);
  EXPECT_THAT(ran.err, EndsWith("\n  REQUEST 7 FROM QUOTE WHERE 31=\"A\" AND 62=\"B\"\n" +
                                std::string(40, ' ') + "^\n"));
}

TEST_F(QueryCommand, ALongTextIsShownRoundThePlace) {
  const std::string value(300, '7');
  const Ran ran = Run("query 'REQUEST 7 FROM QUOTE WHERE 31=\"" + value + "\" AND x'");
  EXPECT_EQ(ran.status, 1);
  EXPECT_THAT(ran.err, EndsWith("\n  " + std::string(54, '7') + "\" AND x\n" +
                                std::string(62, ' ') + "^\n"));
  // At the end of the text there is no character, but there is a place.
  EXPECT_THAT(Run("query ''").err, EndsWith("found end of text\n  \n  ^\n"));
}

TEST_F(QueryCommand, StandardInputIsReadUpToItsLineEnd) {
  Write("q", "END 42\r\n");
  EXPECT_EQ(Run("query - <q").out, "End of the transaction 42\n");
  Write("q", "END\t42");
  EXPECT_THAT(Run("query - <q").err, EndsWith("\n  END?42\n     ^\n"));
  Write("q", std::string((1 << 20) + 1, ' '));
  EXPECT_EQ(Run("query - <q").err, "pxd: standard input: is larger than 1048576 bytes\n");
}

TEST_F(QueryCommand, AnyBytesOfAValueAreJson) {
  Write("q", "REQUEST 31 FROM SYMBOL_LIST WHERE 366=\"0\" AND 62=\"\xFF\n\"");
  const Ran ran = Run("query --json - <q");
  EXPECT_EQ(ran.status, 0) << ran.err;
  EXPECT_EQ(json::parse(ran.out)["where"][1]["value"], "\xEF\xBF\xBD\n");
  EXPECT_THAT(Run("query - <q").out, HasSubstr("62 Description = \"\xFF?\"\n"));
}

TEST_F(QuoteCommand, RowsBecomeAQuote) {
  Write("q.csv",
        "id,type,status,value\n"
        "280,date,4,2024-03-04\n"
        "281,QFTYPE_TIME,4,09:31:12\n"
        "bar close,float,3,187.25\n"
        "\n"
        "31,2,3,\"AB\"\"C\"\n"
        "9000,pieces,9,-12/'a'\n"
        "249,novalue,8,\n");
  const Ran ran = Run("quote q.csv");
  EXPECT_EQ(ran.status, 0) << ran.err;
  EXPECT_EQ(ran.err, "");
  EXPECT_EQ(ran.out,
            "   Id  Name                        Type            Status      Value\n"
            "  280  Date                        QFTYPE_DATE     Real-Time   03/04/2024\n"
            "  281  Time                        QFTYPE_TIME     Real-Time   09:31:12\n"
            "  235  Bar Close                   QFTYPE_FLOAT    Don'tKnow   187.250000\n"
            "   31  Symbol Name                 QFTYPE_STRING   Don'tKnow   AB\"C\n"
            " 9000  -                           QFTYPE_PIECES   ?           -12/'a'\n"
            "  249  Bar TotalVol                QFTYPE_NOVALUE  ?           \n"
            "\n"
            "Date:  2024-03-04\n"
            "Time:  09:31:12\n"
            "Valid: yes\n");
}

TEST_F(QuoteCommand, EveryTypeTakesItsLimits) {
  const struct {
    const char* type;
    const char* good;
    const char* bad;
  } kRows[] = {
      {"time", "23:59:59", "24:00:00"},
      {"date", "03/04/2024", "2024-02-30"},
      {"double", "1e308", "1e309"},
      {"float", "3e38", "4e38"},
      {"long", "-2147483648", "2147483648"},
      {"ulong", "4294967295", "-1"},
      {"short", "-32768", "32768"},
      {"ushort", "65535", "65536"},
      {"char", "-128", "128"},
      {"byte", "255", "256"},
      {"pieces", "2147483647/'x'", "1/a"},
      {"novalue", "", "0"},
      {"stream", "anything", nullptr},
      {"string", "anything", nullptr},
  };
  for (const auto& row : kRows) {
    Write("q", std::string("7,") + row.type + ",0," + row.good + "\n");
    EXPECT_EQ(Run("quote q").status, 0) << row.type << Run("quote q").err;
    if (row.bad != nullptr) {
      Write("q", std::string("7,") + row.type + ",0," + row.bad + "\n");
      const Ran ran = Run("quote q");
      EXPECT_EQ(ran.status, 1) << row.type;
      EXPECT_THAT(ran.err, StartsWith(std::string("pxd: q:1: \"") + row.bad +
                                      "\" is no value of the type " + row.type + "; expected "));
    }
  }
}

TEST_F(QuoteCommand, BadRowsAreToldWithTheirLine) {
  const struct {
    const char* rows;
    const char* err;
  } kRows[] = {
      {"7,float,4\n", "q:1: has 3 fields; expected id, type, status and value\n"},
      {"7,float,4,1\n8,float,4,1,2\n", "q:2: has 5 fields; expected id, type, status and value\n"},
      {"xyzzy,float,4,1\n",
       "q:1: \"xyzzy\" is no field; expected an id of 0 to 65535 or a name of the catalogue\n"},
      {"65536,float,4,1\n", "q:1: \"65536\" is no field"},
      {"7,real,4,1\n", "q:1: \"real\" is no type; expected one of time, date, string"},
      {"7,12,4,1\n", "q:1: \"12\" is no type"},
      {"7,float,16,1\n", "q:1: \"16\" is no status; expected 0 to 15\n"},
      {"7,float,4,\"1\n\n", "q:1: a quotation mark stands where none may"},
      {"7,string,4,\"a\nb\"\n7,float,4,x\n", "q:3: \"x\" is no value of the type float"},
      {"7,string,4,a\"b\n", "q:1: a quotation mark stands where none may"},
      {"7,byte,4,1\n\n\"8\"x,byte,4,1\n", "q:3: a quotation mark stands where none may"},
      {"7,byte,4,1\n\"8,byte,4,1\n9,byte,4,1\n", "q:2: a quotation mark stands where none may"},
      {"7,byte,4,1\n\"\n\",byte,4,1\n", "q:2: \"?\" is no field"},
  };
  for (const auto& row : kRows) {
    Write("q", row.rows);
    const Ran ran = Run("quote q");
    EXPECT_EQ(ran.status, 1) << row.rows;
    EXPECT_EQ(ran.out, "");
    EXPECT_THAT(ran.err, StartsWith(std::string("pxd: ") + row.err)) << row.rows;
    EXPECT_EQ(ran.err.find('\n'), ran.err.size() - 1) << ran.err;
  }
  EXPECT_EQ(Run("quote none").err, "pxd: none: can't be read: No such file or directory\n");
}

TEST_F(QuoteCommand, AFieldThatComesAgainKeepsItsPlace) {
  Write("q", "7,byte,0,1\n8,byte,0,2\n7,byte,0,3\n");
  const Ran ran = Run("quote q");
  EXPECT_EQ(ran.err, "pxd: note: line 3: field 7 was there already and is replaced\n");
  EXPECT_LT(ran.out.find("    7  Bid "), ran.out.find("    8  Bid Size"));
  EXPECT_THAT(ran.out, HasSubstr("\nDate:  none\nTime:  none\nValid: yes\n"));
}

TEST_F(QuoteCommand, AValueTakesOneLineOfTheTerminalWhateverItsBytes) {
  Write("q", "1,string,3,\"a\x1b[31m\nb\"\n");
  EXPECT_THAT(Run("quote q").out, HasSubstr("  a?[31m?b\n"));
}

TEST_F(QuoteCommand, AnInvalidQuoteSaysWhy) {
  Write("q", "");
  EXPECT_THAT(Run("quote q").out, EndsWith("Valid: no, since it has no field\n"));
  Write("q", "7,byte,10,1\n");
  EXPECT_THAT(Run("quote q").out,
              EndsWith("Valid: no, since field 7 has the status 10; expected at most 9\n"));
  std::string rows;
  for (int id = 1; id <= 200; ++id) {
    rows += std::to_string(id) + ",byte,0,1\n";
  }
  Write("q", rows);
  EXPECT_THAT(Run("quote q").out,
              EndsWith("Valid: no, since it has 200 fields; expected at most 199\n"));
}

}  // namespace
