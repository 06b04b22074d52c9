// QUERY_INFO: what a request text says, as one flat record.
//
// CZRGSClientQuery::GetQueryInfo fills it from a text, and the query classes take it apart into
// typed values. The record holds no pointers, so a host may copy it, queue it or send it on:
//
//   auto info = std::make_unique<QUERY_INFO>();
//   if (CZRGSClientQuery::GetQueryInfo(text, *info) && info->eQueryType == QUERY_TYPE_SYMBOL_DATA)
//   ...
//
// It takes 82,715 bytes, most of them room for the values of 20 conditions, so it belongs on the
// heap, or on a stack that is known to be large. It is packed: its members are read and written by
// name, and neither references nor pointers to the numbers among them may be formed.
#ifndef PXDUTIL_QUERY_QUERY_INFO_H
#define PXDUTIL_QUERY_QUERY_INFO_H

#include <cstdint>
#include <type_traits>

#include <pxdutil/sessions/resolution.h>

// The source that a query asks, by the word behind FROM. A host picks the query class by it.
enum QUERY_TYPE : std::int32_t {
  QUERY_TYPE_NONE = 0,              // an end query, which names no source
  QUERY_TYPE_NEWS = 1,              // CZRGSClientNEWSQuery
  QUERY_TYPE_TIME = 2,              // CZRGSClientTIMEQuery
  QUERY_TYPE_SYMBOL_LIST = 3,       // CZRGSClientSYMLISTQuery
  QUERY_TYPE_SYMBOL_DATA = 4,       // CZRGSClientSYMDATAQuery; QUOTE, CHART and SYMBOL_INFO too
  QUERY_TYPE_FEED_INFO = 5,         // CZRGSClientFEEDINFOQuery
  QUERY_TYPE_SERVER_INFO = 6,       // CZRGSClientSERVERINFOQuery
  QUERY_TYPE_EDIT_DATA = 7,         // no class: the host decides what it means
  QUERY_TYPE_FEED_STATUS = 8,       // CZRGSClientFEEDSTATUSQuery
  QUERY_TYPE_CONNECT_DATAFEED = 9,  // CZRGSClientCONNECTDATAFEEDQuery
  QUERY_TYPE_NASDAQ_LEVELII = 10,   // no class: the host decides what it means
  QUERY_TYPE_TIME_SALES = 11,       // CZRGSClientTimeSalesQuery
  QUERY_TYPE_ENTITLEMENTS = 12,     // CZRGSClientGENERALQuery
  QUERY_TYPE_FUNDAMENTAL = 13,      // CZRGSClientGENERALQuery
  QUERY_TYPE_ARCHIVE_INFO = 14,     // CZRGSClientARCHIVE_INFOQuery
  QUERY_TYPE_ARCHIVE = 15,          // CZRGSClientARCHIVEQuery
  QUERY_TYPE_ECN_INFO = 16,         // CZRGSClientGENERALQuery
  QUERY_TYPE_MESSAGE = 17,          // CZRGSClientMESSAGEQuery
  QUERY_TYPE_SYMBOL_PREFIX = 18,    // CZRGSClientGENERALQuery
  QUERY_TYPE_ARCHIVE_MSGS = 19,     // CZRGSClientGENERALQuery
  QUERY_TYPE_ARCHIVE_ITEMS = 20,    // CZRGSClientGENERALQuery
  QUERY_TYPE_SCANNING = 21,         // CZRGSClientGENERALQuery
};

// The verb of a start query, as QUERY_INFO::bRequestType holds it.
enum QUERY_VERB : std::uint8_t {
  QUERY_VERB_REQUEST = 0,  // REQUEST
  QUERY_VERB_ADVISE = 1,   // ADVISE
  QUERY_VERB_MODIFY = 2,   // MODIFY
  QUERY_VERB_SYNCH = 3,    // SYNCH
  QUERY_VERB_UPDATE = 4,   // UPDATE
  QUERY_VERB_COMMIT = 5,   // COMMIT
};

// The kind of a chart, as QUERY_INFO::dwChartKind holds it.
enum QUERY_CHART_KIND : std::uint32_t {
  QUERY_CHART_NONE = 0,        // no chart was asked for
  QUERY_CHART_TICK = 1,        // TICKCHART: a point for so many ticks
  QUERY_CHART_BAR = 2,         // BARCHART: a point for a span of time
  QUERY_CHART_ANALYSIS = 3,    // ANALYSIS
  QUERY_CHART_VOLUME = 4,      // VOLUMECHART: a point for so much volume
  QUERY_CHART_OPTION = 5,      // OPTIONCHART
  QUERY_CHART_CCA = 6,         // CCACHART
  QUERY_CHART_CONVERSION = 7,  // CONVERSIONCHART
  QUERY_CHART_PRICE = 8,       // PRICECHART
};

// The operator of a condition, as QUERY_CONDITION::dwOperator holds it.
enum QUERY_OPERATOR : std::uint32_t {
  QUERY_OPERATOR_EQUAL = 0,      // "="
  QUERY_OPERATOR_NOT_EQUAL = 1,  // "<>" or "!="
  QUERY_OPERATOR_GREATER = 2,    // ">"
};

#pragma pack(push, 1)

// How wide a point of the chart is: by time, or the count of a tick or a volume chart. Which of the
// two it is follows from the kind of the chart.
union QUERY_CHART_SIZE {
  ZRGS_RESOLUTION resolution;  // of all charts but those two
  std::uint32_t dwCount;       // of a tick or a volume chart
};

// One WHERE condition.
struct QUERY_CONDITION {
  std::uint16_t wFieldID;    // the left side
  std::uint32_t dwOperator;  // a QUERY_OPERATOR
  char szValue[4096];        // the text between the quotes, with its NUL
};

// Whatever the text doesn't give is 0.
struct QUERY_INFO {
  QUERY_TYPE eQueryType;          // QUERY_TYPE_NONE for an end query
  std::uint32_t dwTransactionID;  // of an end query; a start query gives its own as condition 365
  std::uint8_t bRequestType;      // a QUERY_VERB
  std::int32_t bHasChart;         // 1 once a whole chart clause was read, else 0
  std::uint32_t dwChartKind;      // a QUERY_CHART_KIND; set by the chart's first word alone
  std::uint16_t wPrimaryField;    // the id of the field that the chart shows
  QUERY_CHART_SIZE chartSize;     // how wide its points are
  // The parameters of an analysis chart.
  float fAnalysisValue;
  std::int32_t dwAnalysisParam1;
  std::int32_t dwAnalysisParam2;
  std::uint16_t wAnalysisType;        // 600 to 606 in an analysis chart that was read whole
  std::uint16_t wSnapShotFields[10];  // the ids of the chart's snapshot list
  std::uint32_t dwSnapShotCount;      // how many of them
  std::uint32_t dwGroupByID;          // 0 means no group
  std::uint32_t dwGroupByList[100];   // the transaction numbers of the group
  std::int16_t wGroupBySize;          // how many of them
  std::uint16_t wWhatFields[100];     // the ids of the WHAT list, in text order
  std::uint32_t dwWhatCount;          // how many of them
  QUERY_CONDITION conditions[20];     // in text order
  std::uint32_t dwConditionCount;     // how many of them
};

#pragma pack(pop)

static_assert(std::is_standard_layout_v<QUERY_INFO> && std::is_trivially_copyable_v<QUERY_INFO>,
              "a query may be copied as bytes");
static_assert(sizeof(QUERY_CONDITION) == 4102, "a condition has the same bytes on every target");
static_assert(sizeof(QUERY_INFO) == 82715, "a query has the same bytes on every target");

#endif
