// Marker values: exact bit patterns that stand in a record's first float and say what the record
// is.
//
// They arrive from outside; the library recognises them and writes none of them there. They are
// compared with ==.
#ifndef PXDUTIL_DATAPOINTS_MARKERS_H
#define PXDUTIL_DATAPOINTS_MARKERS_H

#include <bit>
#include <cstdint>

namespace pxd {

// A bar that was deleted: 1.11111 as a float.
inline constexpr float kDeletedBar = std::bit_cast<float>(std::uint32_t{0x3F8E38DA});
// The end of a minute, the largest float, and the end of a second, the float just below it.
inline constexpr float kEndOfMinute = std::bit_cast<float>(std::uint32_t{0x7F7FFFFF});
inline constexpr float kEndOfSecond = std::bit_cast<float>(std::uint32_t{0x7F7FFFFE});

// What the high and the low of a running daily record start from, so that the first real price
// replaces them.
inline constexpr float kBelowAllPrices = -kEndOfMinute;
inline constexpr float kAboveAllPrices = kEndOfMinute;

}  // namespace pxd

#endif
