#include <pxdutil/query/query_words.h>

#include <algorithm>
#include <array>
#include <cstddef>

#include <pxdutil/query/detail/query_grammar.h>

namespace pxd {
namespace {

// The word of the first row that `is` the one, or nothing.
template <class Row, std::size_t kRows, class Is>
std::string_view WordOf(const std::array<Row, kRows>& rows, Is is) {
  const auto row = std::find_if(rows.begin(), rows.end(), is);
  if (row == rows.end()) {
    return "";
  }
  const auto token = std::find_if(detail::kTokenTable.begin(), detail::kTokenTable.end(),
                                  [&](const detail::TokenRow& t) { return t.token == row->word; });
  return token->text;
}

}  // namespace

std::string_view QueryVerbWord(std::uint8_t verb) {
  return WordOf(detail::kVerbs, [=](const detail::VerbRow& row) { return row.verb == verb; });
}

std::string_view QuerySourceWord(QUERY_TYPE type) {
  return WordOf(detail::kSources, [=](const detail::SourceRow& row) { return row.type == type; });
}

std::string_view QueryChartWord(std::uint32_t chartKind) {
  return WordOf(detail::kCharts,
                [=](const detail::ChartRow& row) { return row.kind == chartKind; });
}

std::string_view QueryOperatorWord(std::uint32_t op) {
  return WordOf(detail::kOperators, [=](const detail::OperatorRow& row) { return row.op == op; });
}

std::string_view QueryClassName(QUERY_TYPE type) {
  switch (type) {
    case QUERY_TYPE_NONE:
    case QUERY_TYPE_EDIT_DATA:
    case QUERY_TYPE_NASDAQ_LEVELII:
      break;
    case QUERY_TYPE_NEWS:
      return "CZRGSClientNEWSQuery";
    case QUERY_TYPE_TIME:
      return "CZRGSClientTIMEQuery";
    case QUERY_TYPE_SYMBOL_LIST:
      return "CZRGSClientSYMLISTQuery";
    case QUERY_TYPE_SYMBOL_DATA:
      return "CZRGSClientSYMDATAQuery";
    case QUERY_TYPE_FEED_INFO:
      return "CZRGSClientFEEDINFOQuery";
    case QUERY_TYPE_SERVER_INFO:
      return "CZRGSClientSERVERINFOQuery";
    case QUERY_TYPE_FEED_STATUS:
      return "CZRGSClientFEEDSTATUSQuery";
    case QUERY_TYPE_CONNECT_DATAFEED:
      return "CZRGSClientCONNECTDATAFEEDQuery";
    case QUERY_TYPE_TIME_SALES:
      return "CZRGSClientTimeSalesQuery";
    case QUERY_TYPE_ARCHIVE_INFO:
      return "CZRGSClientARCHIVE_INFOQuery";
    case QUERY_TYPE_ARCHIVE:
      return "CZRGSClientARCHIVEQuery";
    case QUERY_TYPE_MESSAGE:
      return "CZRGSClientMESSAGEQuery";
    case QUERY_TYPE_ENTITLEMENTS:
    case QUERY_TYPE_FUNDAMENTAL:
    case QUERY_TYPE_ECN_INFO:
    case QUERY_TYPE_SYMBOL_PREFIX:
    case QUERY_TYPE_ARCHIVE_MSGS:
    case QUERY_TYPE_ARCHIVE_ITEMS:
    case QUERY_TYPE_SCANNING:
      return "CZRGSClientGENERALQuery";
  }
  return "";
}

}  // namespace pxd
