// What every concrete data point class promises, one entry a class, for tests that run over all of
// them through the common interface.
#ifndef PXDUTIL_TESTS_DATAPOINTS_POINT_SPECS_H
#define PXDUTIL_TESTS_DATAPOINTS_POINT_SPECS_H

#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <pxdutil/datapoints/ohlc_bars.h>
#include <pxdutil/datapoints/old_bars.h>
#include <pxdutil/datapoints/plain_points.h>
#include <pxdutil/datapoints/short_bars.h>
#include <pxdutil/datapoints/ticks.h>

namespace datapoints_test {

struct ColumnSpec {
  std::string header;
  unsigned short field;
  unsigned char fieldType;
  CDPDataPt::DataType dataType;
  bool price;  // shown with "%.7G", else "%.0f"
};

// What an operation does for a column that doesn't exist.
enum class Unknown { kThrows, kThrowsPlain, kNothing };

struct PointSpec {
  std::string name;
  std::unique_ptr<CDPDataPt> (*make)();
  std::unique_ptr<CDPDataPt> (*copy)(const CDPDataPt&);
  const CRuntimeClass* record;
  const CRuntimeClass* base;
  int size;    // on a target with 4-byte pointers
  int stored;  // bytes that Serialize writes
  std::vector<ColumnSpec> columns;
  unsigned numCols;
  std::string unknownText;  // "!" where asking throws
  Unknown setText;
  bool readsDoubles;
  bool writesDoubles;
  Unknown doubleColumn;  // of the double operations
  int fieldMatch;        // what GetColForColField answers on a match; -1 where it never matches
  bool givesDateTimeParts;
  bool takesDateTimeParts;
  bool ohlc;
  bool hasVolume;  // HasVolBetween looks at volumes
  bool keepsFlagsWhenNulled;
  std::vector<float> dummies;  // empty where SetToDummyData does nothing
};

inline void PrintTo(const PointSpec& spec, std::ostream* out) {
  *out << spec.name;
}

template <class Point>
std::unique_ptr<CDPDataPt> MakePoint() {
  return std::make_unique<Point>();
}
template <class Point>
std::unique_ptr<CDPDataPt> CopyPoint(const CDPDataPt& point) {
  return std::make_unique<Point>(static_cast<const Point&>(point));
}

inline std::vector<PointSpec> PointSpecs() {
  using P = CDPDataPt;
  const auto ohlc = [](std::size_t count) {
    std::vector<ColumnSpec> columns = {{"Open", 232, 0, P::DataTypePrice, true},
                                       {"High", 233, 0, P::DataTypePrice, true},
                                       {"Low", 234, 0, P::DataTypePrice, true},
                                       {"Close", 235, 0, P::DataTypePrice, true},
                                       {"Up Vol.", 238, 1, P::DataTypeVolume, false},
                                       {"Down Vol.", 239, 1, P::DataTypeVolume, false},
                                       {"Unch. Vol.", 248, 1, P::DataTypeVolume, false},
                                       {"Tot. Vol.", 249, 1, P::DataTypeVolume, false},
                                       {"Up Ticks", 321, 1, P::DataTypeCount, false},
                                       {"Down Ticks", 322, 1, P::DataTypeCount, false},
                                       {"Unch. Ticks", 323, 1, P::DataTypeCount, false},
                                       {"Tot. Ticks", 324, 1, P::DataTypeCount, false},
                                       {"Open Int.", 253, 1, P::DataTypeCount, false}};
    columns.resize(count);
    return columns;
  };
  const auto priceAnd = [](const char* header, unsigned short field, bool volume) {
    std::vector<ColumnSpec> columns = {{header, field, 0, P::DataTypePrice, true}};
    if (volume) {
      columns.push_back({"Volume", 249, 1, P::DataTypeVolume, false});
    }
    return columns;
  };
  auto oldO = ohlc(8);
  oldO.push_back({"Open Int.", 253, 2, P::DataTypeCount, false});
  const CRuntimeClass* const tick = RUNTIME_CLASS(CDPTDataPtTick);
  const CRuntimeClass* const bar = RUNTIME_CLASS(CDPCDataPtCalculated);
  constexpr Unknown kThrows = Unknown::kThrows;
  constexpr Unknown kNothing = Unknown::kNothing;

#define PXDUTIL_POINT(X) #X, &MakePoint < X>, &CopyPoint < X>, RUNTIME_CLASS(X)
  return {
      // The single-value tick ignores the column of its doubles; see its own tests.
      {PXDUTIL_POINT(CDPTDblTick),
       tick,
       15,
       10,
       priceAnd("Value", 0, false),
       1,
       "ERROR",
       Unknown::kThrowsPlain,
       true,
       true,
       kNothing,
       -1,
       true,
       false,
       false,
       false,
       false,
       {1}},
      {PXDUTIL_POINT(CDPTDblDblTick),
       tick,
       23,
       14,
       priceAnd("Price", 0, true),
       4,
       "ERROR",
       kThrows,
       true,
       true,
       kNothing,
       -1,
       true,
       true,
       false,
       true,
       false,
       {1, 2}},
      {PXDUTIL_POINT(CDPCDblC),
       bar,
       15,
       10,
       priceAnd("Close", 235, false),
       1,
       "",
       kThrows,
       false,
       false,
       kNothing,
       1,
       false,
       false,
       false,
       false,
       false,
       {1.5F}},
      {PXDUTIL_POINT(CDPCDblDblC),
       bar,
       19,
       14,
       priceAnd("Close", 235, true),
       2,
       "",
       kThrows,
       false,
       false,
       kNothing,
       0,
       false,
       false,
       false,
       false,
       false,
       {1.5F}},
      {PXDUTIL_POINT(CDPCDblDblH),
       bar,
       19,
       14,
       priceAnd("High", 233, true),
       2,
       "",
       kThrows,
       true,
       false,
       kNothing,
       0,
       false,
       false,
       false,
       true,
       false,
       {1.6F, 1001}},
      {PXDUTIL_POINT(CDPCDblDblL),
       bar,
       19,
       14,
       priceAnd("Low", 234, true),
       2,
       "",
       kThrows,
       true,
       false,
       kNothing,
       0,
       true,
       false,
       false,
       true,
       false,
       {1.5F}},
      {PXDUTIL_POINT(CDPCDblOHLCUDUT),
       bar,
       59,
       54,
       ohlc(12),
       12,
       "!",
       kThrows,
       true,
       true,
       kThrows,
       1,
       true,
       true,
       true,
       true,
       false,
       {2, 4, 0, 3, 1000, 1100, 1200, 3300, 10, 11, 12, 33}},
      {PXDUTIL_POINT(CDPCDblOHLCUDUTO),
       bar,
       121,
       58,
       ohlc(13),
       13,
       "!",
       kThrows,
       true,
       true,
       kThrows,
       1,
       true,
       true,
       true,
       true,
       false,
       {2, 4, 0, 3, 1000, 1100, 1200, 3300, 10, 11, 12, 33, 1001}},
      {PXDUTIL_POINT(CDPCDblOHLCUDUTOld),
       bar,
       43,
       38,
       ohlc(8),
       8,
       "!",
       kThrows,
       true,
       true,
       kThrows,
       1,
       true,
       false,
       true,
       false,
       true,
       {2, 4, 0, 3, 1000, 1100, 1200, 3300}},
      // Nine columns, and the newer class's number of them.
      {PXDUTIL_POINT(CDPCDblOHLCUDUTOOld),
       bar,
       47,
       42,
       oldO,
       13,
       "!",
       kThrows,
       true,
       true,
       kThrows,
       1,
       true,
       false,
       true,
       false,
       true,
       {2, 4, 0, 3, 1000, 1100, 1200, 3300, 1001}},
      {PXDUTIL_POINT(CDPOptDaily),
       bar,
       67,
       0,
       {{"Put Volume", 489, 1, P::DataTypeVolume, false},
        {"Call Volume", 490, 1, P::DataTypeVolume, false},
        {"Put Open Int.", 491, 1, P::DataTypeVolume, false},
        {"Call Open Int.", 492, 1, P::DataTypeVolume, false},
        {"Implied Volatility", 493, 1, P::DataTypePrice, false}},
       5,
       "N/A",
       kNothing,
       false,
       false,
       kNothing,
       1,
       true,
       true,
       false,
       false,
       true,
       {}},
      {PXDUTIL_POINT(CDPCnv),
       bar,
       28,
       0,
       {{"Winning", 517, 2, P::DataTypeVolume, false},
        {"Loosing", 518, 2, P::DataTypeVolume, false}},
       2,
       "N/A",
       kNothing,
       false,
       false,
       kNothing,
       1,
       true,
       true,
       false,
       false,
       true,
       {}},
  };
#undef PXDUTIL_POINT
}

}  // namespace datapoints_test

#endif
