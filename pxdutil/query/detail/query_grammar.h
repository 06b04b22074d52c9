// The grammar's families as tables: verbs, sources, operators, units and charts.
#ifndef PXDUTIL_QUERY_DETAIL_QUERY_GRAMMAR_H
#define PXDUTIL_QUERY_DETAIL_QUERY_GRAMMAR_H

#include <array>
#include <cstdint>

#include <pxdutil/query/detail/query_tokens.h>
#include <pxdutil/query/query_info.h>

namespace pxd::detail {

// Whether a verb has a WHAT list.
enum class WhatDemand : std::uint8_t {
  Needed,   // yes; a query without one fails, though only behind its source
  Allowed,  // it may, and what is wrong with it is overlooked
  None,     // FROM follows the verb at once
};

struct VerbRow {
  TOKEN_TYPE word;
  QUERY_VERB verb;
  WhatDemand what;
};
inline constexpr std::array<VerbRow, 6> kVerbs = {{
    {TOKEN_TYPE::Request, QUERY_VERB_REQUEST, WhatDemand::Needed},
    {TOKEN_TYPE::Advise, QUERY_VERB_ADVISE, WhatDemand::Needed},
    {TOKEN_TYPE::Modify, QUERY_VERB_MODIFY, WhatDemand::Allowed},
    {TOKEN_TYPE::Synch, QUERY_VERB_SYNCH, WhatDemand::None},
    {TOKEN_TYPE::Update, QUERY_VERB_UPDATE, WhatDemand::Allowed},
    {TOKEN_TYPE::Commit, QUERY_VERB_COMMIT, WhatDemand::None},
}};

struct SourceRow {
  TOKEN_TYPE word;
  QUERY_TYPE type;
};
inline constexpr std::array<SourceRow, 24> kSources = {{
    {TOKEN_TYPE::SymbolData, QUERY_TYPE_SYMBOL_DATA},
    {TOKEN_TYPE::Quote, QUERY_TYPE_SYMBOL_DATA},
    {TOKEN_TYPE::Chart, QUERY_TYPE_SYMBOL_DATA},
    {TOKEN_TYPE::SymbolInfo, QUERY_TYPE_SYMBOL_DATA},
    {TOKEN_TYPE::SymbolList, QUERY_TYPE_SYMBOL_LIST},
    {TOKEN_TYPE::News, QUERY_TYPE_NEWS},
    {TOKEN_TYPE::TimeSales, QUERY_TYPE_TIME_SALES},
    {TOKEN_TYPE::Time, QUERY_TYPE_TIME},
    {TOKEN_TYPE::FeedInfo, QUERY_TYPE_FEED_INFO},
    {TOKEN_TYPE::ServerInfo, QUERY_TYPE_SERVER_INFO},
    {TOKEN_TYPE::EditData, QUERY_TYPE_EDIT_DATA},
    {TOKEN_TYPE::FeedStatus, QUERY_TYPE_FEED_STATUS},
    {TOKEN_TYPE::ConnectDataFeed, QUERY_TYPE_CONNECT_DATAFEED},
    {TOKEN_TYPE::NasdaqLevelII, QUERY_TYPE_NASDAQ_LEVELII},
    {TOKEN_TYPE::Entitlements, QUERY_TYPE_ENTITLEMENTS},
    {TOKEN_TYPE::Fundamental, QUERY_TYPE_FUNDAMENTAL},
    {TOKEN_TYPE::ArchiveInfo, QUERY_TYPE_ARCHIVE_INFO},
    {TOKEN_TYPE::Archive, QUERY_TYPE_ARCHIVE},
    {TOKEN_TYPE::EcnInfo, QUERY_TYPE_ECN_INFO},
    {TOKEN_TYPE::Message, QUERY_TYPE_MESSAGE},
    {TOKEN_TYPE::SymbolPrefix, QUERY_TYPE_SYMBOL_PREFIX},
    {TOKEN_TYPE::ArchiveMsgs, QUERY_TYPE_ARCHIVE_MSGS},
    {TOKEN_TYPE::ArchiveItems, QUERY_TYPE_ARCHIVE_ITEMS},
    {TOKEN_TYPE::Scanning, QUERY_TYPE_SCANNING},
}};

// There is no row for "<": of the two inequalities the language has ">" alone.
struct OperatorRow {
  TOKEN_TYPE word;
  QUERY_OPERATOR op;
};
inline constexpr std::array<OperatorRow, 3> kOperators = {{
    {TOKEN_TYPE::Equal, QUERY_OPERATOR_EQUAL},
    {TOKEN_TYPE::NotEqual, QUERY_OPERATOR_NOT_EQUAL},
    {TOKEN_TYPE::Greater, QUERY_OPERATOR_GREATER},
}};

// The unit codes of CResoln.
struct UnitRow {
  TOKEN_TYPE word;
  std::uint16_t unit;
};
inline constexpr std::uint16_t kTickUnit = 1;
inline constexpr std::uint16_t kMinuteUnit = 3;
inline constexpr std::array<UnitRow, 7> kUnits = {{
    {TOKEN_TYPE::Tick, kTickUnit},
    {TOKEN_TYPE::Second, 2},
    {TOKEN_TYPE::Minute, kMinuteUnit},
    {TOKEN_TYPE::Daily, 4},
    {TOKEN_TYPE::Weekly, 5},
    {TOKEN_TYPE::Monthly, 6},
    {TOKEN_TYPE::Yearly, 7},
}};

// How a chart says the width of its points.
enum class ChartSizeForm : std::uint8_t {
  None,        // not at all
  Count,       // one number, the whole of the size
  Quantity,    // one number, the quantity of a resolution that keeps the unit it has
  Resolution,  // a number and a unit
};

// What stands between the size and the field.
enum class ChartSeparator : std::uint8_t {
  Comma,
  Anything,  // one token, whatever it is
};

struct ChartRow {
  TOKEN_TYPE word;
  QUERY_CHART_KIND kind;
  ChartSizeForm size;
  ChartSeparator separator;
  std::uint16_t onlyField;  // the one field that it shows; 0 where any will do
};
// In the order in which they are tried. That order shows, since a chart that breaks off within one
// form may go on with a later one.
inline constexpr std::array<ChartRow, 8> kCharts = {{
    {TOKEN_TYPE::TickChart, QUERY_CHART_TICK, ChartSizeForm::Count, ChartSeparator::Comma, 0},
    {TOKEN_TYPE::BarChart, QUERY_CHART_BAR, ChartSizeForm::Resolution, ChartSeparator::Comma, 0},
    {TOKEN_TYPE::VolumeChart, QUERY_CHART_VOLUME, ChartSizeForm::Count, ChartSeparator::Comma, 0},
    {TOKEN_TYPE::Analysis, QUERY_CHART_ANALYSIS, ChartSizeForm::Resolution, ChartSeparator::Comma,
     0},
    {TOKEN_TYPE::PriceChart, QUERY_CHART_PRICE, ChartSizeForm::Quantity, ChartSeparator::Comma, 0},
    {TOKEN_TYPE::OptionChart, QUERY_CHART_OPTION, ChartSizeForm::Resolution,
     ChartSeparator::Anything, 485},
    {TOKEN_TYPE::CcaChart, QUERY_CHART_CCA, ChartSizeForm::None, ChartSeparator::Comma, 487},
    {TOKEN_TYPE::ConversionChart, QUERY_CHART_CONVERSION, ChartSizeForm::Resolution,
     ChartSeparator::Anything, 521},
}};

// An analysis chart has the number of its kind in the place of a field, and always shows trades.
inline constexpr std::uint16_t kFirstAnalysis = 600;
inline constexpr std::uint16_t kLastAnalysis = 606;
inline constexpr std::uint16_t kAnalysisWithTwoParams = 600;
inline constexpr std::uint16_t kAnalysisWithOneParam = 604;
inline constexpr std::uint16_t kAnalysedField = 201;

inline constexpr std::uint16_t kLongestPriceChart = 420;  // minutes

}  // namespace pxd::detail

#endif
