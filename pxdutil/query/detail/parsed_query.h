// ParsedQuery: what the parser finds in a text, small enough for any stack.
//
// QUERY_INFO has 82,715 bytes, almost all of them room for values. Here a value is the place where
// it stands in the text, so a query that fails costs no large record at all, and one that
// succeeds fills the caller's record once.
#ifndef PXDUTIL_QUERY_DETAIL_PARSED_QUERY_H
#define PXDUTIL_QUERY_DETAIL_PARSED_QUERY_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

#include <pxdutil/query/query_info.h>
#include <pxdutil/query/query_rule.h>

namespace pxd::detail {

// The limits of a query are those of the record that it goes into.
inline constexpr std::size_t kMostWhatFields = std::extent_v<decltype(QUERY_INFO::wWhatFields)>;
inline constexpr std::size_t kMostSnapshotFields =
    std::extent_v<decltype(QUERY_INFO::wSnapShotFields)>;
inline constexpr std::size_t kMostConditions = std::extent_v<decltype(QUERY_INFO::conditions)>;
inline constexpr std::size_t kMostGroupNumbers = std::extent_v<decltype(QUERY_INFO::dwGroupByList)>;
inline constexpr std::size_t kLongestValue = sizeof(QUERY_CONDITION::szValue) - 1;

// A list and how many of its places count. The place behind them may hold what was read and then
// not counted; it shows in QUERY_INFO too.
template <class T, std::size_t Most>
struct ParsedList {
  std::array<T, Most> items;
  std::uint32_t count;
};

struct ParsedCondition {
  std::string_view value;  // in the text, without its quotes
  QUERY_OPERATOR op;
  std::uint16_t field;
};

// Starts as zeros: ParsedQuery query = {};
struct ParsedQuery {
  QUERY_TYPE type;
  std::uint32_t transactionID;
  std::uint8_t verb;
  bool hasChart;
  QUERY_CHART_KIND chartKind;
  std::uint16_t primaryField;
  QUERY_CHART_SIZE chartSize;
  float analysisValue;
  std::int32_t analysisParam1;
  std::int32_t analysisParam2;
  std::uint16_t analysisType;
  ParsedList<std::uint16_t, kMostSnapshotFields> snapshot;
  std::uint32_t groupByID;
  // A group counts once it was read whole.
  std::array<std::uint32_t, kMostGroupNumbers> groupNumbers;
  std::int16_t groupSize;
  ParsedList<std::uint16_t, kMostWhatFields> what;
  ParsedList<ParsedCondition, kMostConditions> conditions;
};

// Parses a text without a NUL in it into `query`, which is all zeros. Returns whether it is a
// sentence; where it isn't, `query` is left half filled. The values point into the text.
[[nodiscard]] bool ParseQuery(std::string_view text, ParsedQuery& query);

// The last check: whether the chart, if there is one, can be built. Gives the rule that it breaks,
// or None. It also gives a price chart its unit, which its text doesn't name.
[[nodiscard]] QueryRule CheckChart(ParsedQuery& query);

// Writes all of `out`.
void Expand(const ParsedQuery& query, QUERY_INFO& out);

}  // namespace pxd::detail

#endif
