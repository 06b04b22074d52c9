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

// A list and how many of its places were filled. Nobody reads the others, so nobody clears them.
template <class T, std::size_t Most>
struct ParsedList {
  std::uint32_t count = 0;
  std::array<T, Most> items;
};

struct ParsedCondition {
  std::string_view value;  // in the text, without its quotes
  QUERY_OPERATOR op;
  std::uint16_t field;
};

// What the text doesn't give is 0, and lists begin empty: ParsedQuery query;
struct ParsedQuery {
  QUERY_TYPE type = QUERY_TYPE_NONE;
  std::uint32_t transactionID = 0;
  std::uint8_t verb = QUERY_VERB_REQUEST;
  bool hasChart = false;
  QUERY_CHART_KIND chartKind = QUERY_CHART_NONE;
  std::uint16_t primaryField = 0;
  QUERY_CHART_SIZE chartSize = {};
  float analysisValue = 0;
  std::int32_t analysisParam1 = 0;
  std::int32_t analysisParam2 = 0;
  std::uint16_t analysisType = 0;
  std::uint32_t groupByID = 0;
  // The numbers of the group stay in the record as they are read, and count once all of them were.
  std::int16_t groupSize = 0;
  // So do field and operator of a condition that broke off, which stands behind those that count.
  bool hasBrokenCondition = false;
  ParsedList<std::uint16_t, kMostSnapshotFields> snapshot;
  ParsedList<std::uint16_t, kMostWhatFields> what;
  ParsedList<ParsedCondition, kMostConditions> conditions;
  ParsedList<std::uint32_t, kMostGroupNumbers> groupNumbers;
};

// Parses a text into `query`, which is new. Returns whether it is a sentence; where it isn't,
// `query` is left half filled. The values point into the text.
[[nodiscard]] bool ParseQuery(const char* text, ParsedQuery& query);

// The last check: whether the chart, if there is one, can be built. Gives the rule that it breaks,
// or None. It also gives a price chart its unit, which its text doesn't name.
[[nodiscard]] QueryRule CheckChart(ParsedQuery& query);

// Writes all of `out`.
void Expand(const ParsedQuery& query, QUERY_INFO& out);

}  // namespace pxd::detail

#endif
