// The words of the query language for the codes in a QUERY_INFO, for logs and displays.
//
//   log("%s from %s", pxd::QueryVerbWord(info.bRequestType).data(),
//       pxd::QuerySourceWord(info.eQueryType).data());
//
// All of them live as long as the process, end in a NUL, and are empty for a code that has no word.
#ifndef PXDUTIL_QUERY_QUERY_WORDS_H
#define PXDUTIL_QUERY_QUERY_WORDS_H

#include <cstdint>
#include <string_view>

#include <pxdutil/foundation/export.h>
#include <pxdutil/query/query_info.h>

namespace pxd {

// "REQUEST" and so on, of a QUERY_INFO::bRequestType.
[[nodiscard]] PXDUTIL_API std::string_view QueryVerbWord(std::uint8_t verb);
// "NEWS" and so on; of the four words for symbol data "SYMBOL_DATA". Empty for an end query.
[[nodiscard]] PXDUTIL_API std::string_view QuerySourceWord(QUERY_TYPE type);
// "BARCHART" and so on, of a QUERY_INFO::dwChartKind. Empty for no chart.
[[nodiscard]] PXDUTIL_API std::string_view QueryChartWord(std::uint32_t chartKind);
// "=", "<>" and ">", of a QUERY_CONDITION::dwOperator.
[[nodiscard]] PXDUTIL_API std::string_view QueryOperatorWord(std::uint32_t op);
// The name of the class that takes a query of this source apart, such as "CZRGSClientNEWSQuery".
// Empty for an end query, and for the sources that are left to the host.
[[nodiscard]] PXDUTIL_API std::string_view QueryClassName(QUERY_TYPE type);

}  // namespace pxd

#endif
