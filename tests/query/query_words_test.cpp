#include <pxdutil/query/query_words.h>

#include <array>
#include <cstdint>
#include <string_view>

#include <gtest/gtest.h>

namespace {

TEST(QueryWords, VerbsAreNamed) {
  constexpr std::array<std::string_view, 6> kVerbs = {"REQUEST", "ADVISE", "MODIFY",
                                                      "SYNCH",   "UPDATE", "COMMIT"};
  for (std::uint8_t verb = 0; verb < kVerbs.size(); ++verb) {
    EXPECT_EQ(pxd::QueryVerbWord(verb), kVerbs[verb]);
  }
  EXPECT_EQ(pxd::QueryVerbWord(6), "");
  EXPECT_EQ(pxd::QueryVerbWord(255), "");
}

struct Source {
  std::string_view word;
  std::string_view className;
};

// By QUERY_TYPE.
constexpr std::array<Source, 22> kSources = {{
    {"", ""},
    {"NEWS", "CZRGSClientNEWSQuery"},
    {"TIME", "CZRGSClientTIMEQuery"},
    {"SYMBOL_LIST", "CZRGSClientSYMLISTQuery"},
    {"SYMBOL_DATA", "CZRGSClientSYMDATAQuery"},
    {"FEED_INFO", "CZRGSClientFEEDINFOQuery"},
    {"SERVER_INFO", "CZRGSClientSERVERINFOQuery"},
    {"EDIT_DATA", ""},
    {"FEED_STATUS", "CZRGSClientFEEDSTATUSQuery"},
    {"CONNECT_DATAFEED", "CZRGSClientCONNECTDATAFEEDQuery"},
    {"NASDAQ_LEVELII", ""},
    {"TIME_SALES", "CZRGSClientTimeSalesQuery"},
    {"ENTITLEMENTS", "CZRGSClientGENERALQuery"},
    {"FUNDAMENTAL", "CZRGSClientGENERALQuery"},
    {"ARCHIVE_INFO", "CZRGSClientARCHIVE_INFOQuery"},
    {"ARCHIVE", "CZRGSClientARCHIVEQuery"},
    {"ECN_INFO", "CZRGSClientGENERALQuery"},
    {"MESSAGE", "CZRGSClientMESSAGEQuery"},
    {"SYMBOL_PREFIX", "CZRGSClientGENERALQuery"},
    {"ARCHIVE_MSGS", "CZRGSClientGENERALQuery"},
    {"ARCHIVE_ITEMS", "CZRGSClientGENERALQuery"},
    {"SCANNING", "CZRGSClientGENERALQuery"},
}};

TEST(QueryWords, SourcesAndTheirClassesAreNamed) {
  for (std::size_t type = 0; type < kSources.size(); ++type) {
    const auto source = static_cast<QUERY_TYPE>(type);
    EXPECT_EQ(pxd::QuerySourceWord(source), kSources[type].word) << type;
    EXPECT_EQ(pxd::QueryClassName(source), kSources[type].className) << type;
  }
  EXPECT_EQ(pxd::QuerySourceWord(static_cast<QUERY_TYPE>(22)), "");
  EXPECT_EQ(pxd::QueryClassName(static_cast<QUERY_TYPE>(-1)), "");
}

TEST(QueryWords, ChartsAreNamed) {
  constexpr std::array<std::string_view, 9> kCharts = {"",         "TICKCHART",       "BARCHART",
                                                       "ANALYSIS", "VOLUMECHART",     "OPTIONCHART",
                                                       "CCACHART", "CONVERSIONCHART", "PRICECHART"};
  for (std::uint32_t kind = 0; kind < kCharts.size(); ++kind) {
    EXPECT_EQ(pxd::QueryChartWord(kind), kCharts[kind]);
  }
  EXPECT_EQ(pxd::QueryChartWord(9), "");
}

TEST(QueryWords, OperatorsAreNamed) {
  EXPECT_EQ(pxd::QueryOperatorWord(0), "=");
  EXPECT_EQ(pxd::QueryOperatorWord(1), "<>");
  EXPECT_EQ(pxd::QueryOperatorWord(2), ">");
  EXPECT_EQ(pxd::QueryOperatorWord(3), "");
}

}  // namespace
