// In what the data point classes over price records differ from one another: a row a class.
#ifndef PXDUTIL_DATAPOINTS_DETAIL_POINT_RULES_H
#define PXDUTIL_DATAPOINTS_DETAIL_POINT_RULES_H

#include <array>
#include <cstddef>
#include <cstdint>

#include <pxdutil/datapoints/detail/visible.h>

namespace pxd::detail {

// What GetStringValForCol answers for a column that doesn't exist.
enum class UnknownText : std::uint8_t { kThrows, kSaysError, kIsEmpty };

// What GetColForColField answers.
enum class FieldMatch : std::uint8_t {
  kNever,       // 0, and the column is left alone
  kFoundIsOne,  // 1 on a match
  kFoundIsNil,  // the column is set on a match, and the answer is 0 all the same
};

// Which operations on doubles the class has.
enum class Doubles : std::uint8_t { kNone, kReads, kReadsAndWrites };

// What HasVolBetween looks at.
enum class VolumeTest : std::uint8_t { kNone, kSecondColumn, kFourVolumes };

// How AdjustDivide divides the values of a run.
enum class Division : std::uint8_t {
  kDirect,      // x / factor
  kReciprocal,  // x * (1 / factor), which differs in the last bits
};

// A run of columns that an adjustment target touches.
struct AdjustRun {
  std::uint8_t first;
  std::uint8_t count;
  Division division;
};

inline constexpr AdjustRun kNoRun = {0, 0, Division::kDirect};

struct PointRules {
  UnknownText unknownText;
  FieldMatch fieldMatch;
  Doubles doubles;
  VolumeTest volumeTest;
  bool ohlc;                // the first four columns are Open, High, Low, Close
  bool givesDateTimeParts;  // has GetDPDateTime
  bool takesDateTimeParts;  // has SetZRDateTime(date, time)
  bool ignoresTarget;       // AdjustData touches its prices whatever the target
  // By target: prices, volumes, open interest.
  std::array<AdjustRun, 3> adjusts;
  // What SetToDummyData stores, from the first column on; columns beyond keep their value.
  std::array<float, 13> dummies;
  std::size_t dummyCount;
};

inline constexpr AdjustRun kFirstValue = {0, 1, Division::kDirect};
inline constexpr AdjustRun kSecondValue = {1, 1, Division::kDirect};
inline constexpr AdjustRun kOhlcPrices = {0, 4, Division::kReciprocal};
inline constexpr AdjustRun kOhlcVolumes = {4, 4, Division::kReciprocal};

// Ticks.
PXDUTIL_VISIBLE inline constexpr PointRules kTickRules = {UnknownText::kSaysError,
                                                          FieldMatch::kNever,
                                                          Doubles::kReadsAndWrites,
                                                          VolumeTest::kNone,
                                                          false,
                                                          true,
                                                          false,
                                                          true,
                                                          {kFirstValue, kNoRun, kNoRun},
                                                          {1.0F},
                                                          1};

PXDUTIL_VISIBLE inline constexpr PointRules kTradeTickRules = {UnknownText::kSaysError,
                                                               FieldMatch::kNever,
                                                               Doubles::kReadsAndWrites,
                                                               VolumeTest::kSecondColumn,
                                                               false,
                                                               true,
                                                               true,
                                                               false,
                                                               {kFirstValue, kSecondValue, kNoRun},
                                                               {1.0F, 2.0F},
                                                               2};

// Short bars. Their volume is never adjusted, although the trade tick's is.
constexpr PointRules ShortBar(FieldMatch match, Doubles doubles, VolumeTest volumeTest,
                              bool givesDateTimeParts, std::array<float, 13> dummies,
                              std::size_t dummyCount) {
  return {UnknownText::kIsEmpty,
          match,
          doubles,
          volumeTest,
          false,
          givesDateTimeParts,
          false,
          false,
          {kFirstValue, kNoRun, kNoRun},
          dummies,
          dummyCount};
}

PXDUTIL_VISIBLE inline constexpr PointRules kCloseRules =
    ShortBar(FieldMatch::kFoundIsOne, Doubles::kNone, VolumeTest::kNone, false, {1.5F}, 1);
PXDUTIL_VISIBLE inline constexpr PointRules kCloseVolumeRules =
    ShortBar(FieldMatch::kFoundIsNil, Doubles::kNone, VolumeTest::kNone, false, {1.5F}, 1);
PXDUTIL_VISIBLE inline constexpr PointRules kHighVolumeRules = ShortBar(
    FieldMatch::kFoundIsNil, Doubles::kReads, VolumeTest::kSecondColumn, false, {1.6F, 1001.0F}, 2);
PXDUTIL_VISIBLE inline constexpr PointRules kLowVolumeRules =
    ShortBar(FieldMatch::kFoundIsNil, Doubles::kReads, VolumeTest::kSecondColumn, true, {1.5F}, 1);

// OHLC bars.
constexpr PointRules OhlcBar(VolumeTest volumeTest, bool takesDateTimeParts, AdjustRun openInterest,
                             std::array<float, 13> dummies, std::size_t dummyCount) {
  return {UnknownText::kThrows,
          FieldMatch::kFoundIsOne,
          Doubles::kReadsAndWrites,
          volumeTest,
          true,
          true,
          takesDateTimeParts,
          false,
          {kOhlcPrices, kOhlcVolumes, openInterest},
          dummies,
          dummyCount};
}

inline constexpr std::array<float, 13> kOhlcDummies = {2,    4,  0,  3,  1000, 1100, 1200,
                                                       3300, 10, 11, 12, 33,   1001};
inline constexpr std::array<float, 13> kOldDummies = {2, 4, 0, 3, 1000, 1100, 1200, 3300, 1001};

PXDUTIL_VISIBLE inline constexpr PointRules kOhlcRules =
    OhlcBar(VolumeTest::kFourVolumes, true, kNoRun, kOhlcDummies, 12);
PXDUTIL_VISIBLE inline constexpr PointRules kOhlcOpenIntRules =
    OhlcBar(VolumeTest::kFourVolumes, true, {12, 1, Division::kDirect}, kOhlcDummies, 13);
PXDUTIL_VISIBLE inline constexpr PointRules kOldOhlcRules =
    OhlcBar(VolumeTest::kNone, false, kNoRun, kOldDummies, 8);
PXDUTIL_VISIBLE inline constexpr PointRules kOldOhlcOpenIntRules =
    OhlcBar(VolumeTest::kNone, false, {8, 1, Division::kDirect}, kOldDummies, 9);

}  // namespace pxd::detail

#endif
