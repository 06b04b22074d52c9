// The words from which the tests write queries.
#ifndef PXDUTIL_TESTS_QUERY_QUERY_WORDS_H
#define PXDUTIL_TESTS_QUERY_QUERY_WORDS_H

#include <string_view>

#include <pxdutil/query/query_info.h>

namespace pxd::test {

// By eQueryType; where several words mean one type, the writer picks among the rows.
struct Source {
  std::string_view word;
  QUERY_TYPE type;
};
inline constexpr Source kSources[] = {
    {"NEWS", QUERY_TYPE_NEWS},
    {"TIME", QUERY_TYPE_TIME},
    {"SYMBOL_LIST", QUERY_TYPE_SYMBOL_LIST},
    {"SYMBOL_DATA", QUERY_TYPE_SYMBOL_DATA},
    {"QUOTE", QUERY_TYPE_SYMBOL_DATA},
    {"CHART", QUERY_TYPE_SYMBOL_DATA},
    {"SYMBOL_INFO", QUERY_TYPE_SYMBOL_DATA},
    {"FEED_INFO", QUERY_TYPE_FEED_INFO},
    {"SERVER_INFO", QUERY_TYPE_SERVER_INFO},
    {"EDIT_DATA", QUERY_TYPE_EDIT_DATA},
    {"FEED_STATUS", QUERY_TYPE_FEED_STATUS},
    {"CONNECT_DATAFEED", QUERY_TYPE_CONNECT_DATAFEED},
    {"NASDAQ_LEVELII", QUERY_TYPE_NASDAQ_LEVELII},
    {"TIME_SALES", QUERY_TYPE_TIME_SALES},
    {"ENTITLEMENTS", QUERY_TYPE_ENTITLEMENTS},
    {"FUNDAMENTAL", QUERY_TYPE_FUNDAMENTAL},
    {"ARCHIVE_INFO", QUERY_TYPE_ARCHIVE_INFO},
    {"ARCHIVE", QUERY_TYPE_ARCHIVE},
    {"ECN_INFO", QUERY_TYPE_ECN_INFO},
    {"MESSAGE", QUERY_TYPE_MESSAGE},
    {"SYMBOL_PREFIX", QUERY_TYPE_SYMBOL_PREFIX},
    {"ARCHIVE_MSGS", QUERY_TYPE_ARCHIVE_MSGS},
    {"ARCHIVE_ITEMS", QUERY_TYPE_ARCHIVE_ITEMS},
    {"SCANNING", QUERY_TYPE_SCANNING},
};
inline constexpr std::string_view kVerbs[] = {"REQUEST", "ADVISE", "MODIFY",
                                              "SYNCH",   "UPDATE", "COMMIT"};
inline constexpr std::string_view kUnits[] = {"",      "TICK",   "SECOND",  "MINUTE",
                                              "DAILY", "WEEKLY", "MONTHLY", "YEARLY"};
inline constexpr std::string_view kCharts[] = {"",         "TICKCHART",       "BARCHART",
                                               "ANALYSIS", "VOLUMECHART",     "OPTIONCHART",
                                               "CCACHART", "CONVERSIONCHART", "PRICECHART"};
inline constexpr std::string_view kOperators[] = {"=", "<>", ">"};

}  // namespace pxd::test

#endif
