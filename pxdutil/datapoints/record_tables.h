// The tables of the price records: their columns, and in what the records differ from one another.
//
// Nothing but data stands here. A record's values are a run of 32-bit floats in column order; a
// column's index is its float's place in that run.
#ifndef PXDUTIL_DATAPOINTS_RECORD_TABLES_H
#define PXDUTIL_DATAPOINTS_RECORD_TABLES_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include <pxdutil/datapoints/column.h>
#include <pxdutil/quotes/date_time_fields.h>

struct CDPSDblC;
struct CDPSDblTick;
struct CDPSDblDblC;
struct CDPSDblDblH;
struct CDPSDblDblL;
struct CDPSDblDblTick;
struct CDPSDblOHLCUDUT;
struct CDPSDblOHLCUDUTO;
struct CDPSDblOHLCUDUTOld;
struct CDPSDblOHLCUDUTOOld;

namespace pxd {

// What SetFromQuote answers once every required field was there.
enum class QuoteResult : std::uint8_t {
  kFilled,      // 1
  kNotTold,     // 0: callers of these records have never been told of success
  kAnyNonZero,  // 1 if any value is not 0
};

// What HasNullPrice looks at.
enum class NullPrice : std::uint8_t {
  kFirst,    // the first value
  kAnyOhlc,  // whether any of Open, High, Low, Close is 0
  kAllOhlc,  // whether all four are 0
};

// The quote fields of a record's date and time: the first one found counts. 0 is no field.
struct StampFields {
  std::uint16_t date;       // looked for first
  std::uint16_t otherDate;  // looked for where that is missing
  std::uint16_t time;       // looked for first
  std::uint16_t otherTime;  // looked for where that is missing
};

// The stamp of a quote, or else that of a bar; that of a bar alone; and that of a quote alone.
inline constexpr StampFields kPlainThenBarStamp = {kFieldDate, kFieldBarDate, kFieldTime,
                                                   kFieldBarTime};
inline constexpr StampFields kBarStamp = {kFieldBarDate, 0, kFieldBarTime, 0};
inline constexpr StampFields kPlainStamp = {kFieldDate, 0, kFieldTime, 0};

// In what the records differ beyond their columns.
struct RecordRules {
  std::size_t stored;       // how many leading columns are floats that files and quotes carry
  std::size_t required;     // how many of them a quote must carry
  QuoteResult quoteResult;  // what SetFromQuote answers
  NullPrice nullPrice;      // what HasNullPrice looks at
  StampFields readsStamp;   // where a quote's date and time are looked for
  StampFields writesStamp;  // where they are put
};

// The places of the columns of the OHLC bars.
inline constexpr std::size_t kOpen = 0;
inline constexpr std::size_t kHigh = 1;
inline constexpr std::size_t kLow = 2;
inline constexpr std::size_t kClose = 3;
inline constexpr std::size_t kPricesEnd = 4;      // Open up to, not including, here are prices
inline constexpr std::size_t kFirstVolume = 4;    // from here up to, not including, kVolumesEnd
inline constexpr std::size_t kVolumesEnd = 8;     // are volumes
inline constexpr std::size_t kSumsEnd = 12;       // volumes and tick counts are sums
inline constexpr std::size_t kOpenInterest = 12;  // in the bars that have it

// Every column of an OHLC bar; a bar with fewer has those in front.
inline constexpr std::array<Column, 13> kOhlcColumns = {{
    {"Open", 232, 0, CDPDataPt::DataTypePrice, TextForm::kPrice},
    {"High", 233, 0, CDPDataPt::DataTypePrice, TextForm::kPrice},
    {"Low", 234, 0, CDPDataPt::DataTypePrice, TextForm::kPrice},
    {"Close", 235, 0, CDPDataPt::DataTypePrice, TextForm::kPrice},
    {"Up Vol.", 238, 1, CDPDataPt::DataTypeVolume, TextForm::kCount},
    {"Down Vol.", 239, 1, CDPDataPt::DataTypeVolume, TextForm::kCount},
    {"Unch. Vol.", 248, 1, CDPDataPt::DataTypeVolume, TextForm::kCount},
    {"Tot. Vol.", 249, 1, CDPDataPt::DataTypeVolume, TextForm::kCount},
    {"Up Ticks", 321, 1, CDPDataPt::DataTypeCount, TextForm::kCount},
    {"Down Ticks", 322, 1, CDPDataPt::DataTypeCount, TextForm::kCount},
    {"Unch. Ticks", 323, 1, CDPDataPt::DataTypeCount, TextForm::kCount},
    {"Tot. Ticks", 324, 1, CDPDataPt::DataTypeCount, TextForm::kCount},
    {"Open Int.", 253, 1, CDPDataPt::DataTypeCount, TextForm::kCount},
}};

// The first N of them.
template <std::size_t N>
constexpr std::array<Column, N> FirstOhlcColumns() {
  static_assert(N <= kOhlcColumns.size());
  std::array<Column, N> columns{};
  std::copy_n(kOhlcColumns.begin(), N, columns.begin());
  return columns;
}

// Those of the older bars with open interest, where that stands behind the volumes.
constexpr std::array<Column, 9> OldColumnsWithOpenInterest() {
  std::array<Column, 9> columns{};
  std::copy_n(kOhlcColumns.begin(), 8, columns.begin());
  columns[8] = kOhlcColumns[kOpenInterest];
  columns[8].fieldType = 2;  // the older format described open interest as a plain number
  return columns;
}

// The columns of ticks and short bars that no OHLC bar has.
inline constexpr Column kValueColumn = {"Value", 235, 0, CDPDataPt::DataTypePrice,
                                        TextForm::kPrice};
inline constexpr Column kVolumeColumn = {"Volume", 249, 1, CDPDataPt::DataTypeVolume,
                                         TextForm::kCount};

// One specialisation a value record: `columns` and `rules`.
template <class Values>
struct RecordTable;

template <>
struct RecordTable<CDPSDblC> {
  static constexpr std::array<Column, 1> columns = {kOhlcColumns[kClose]};
  static constexpr RecordRules rules = {
      1, 1, QuoteResult::kFilled, NullPrice::kFirst, kPlainThenBarStamp, kBarStamp};
};

template <>
struct RecordTable<CDPSDblTick> {
  static constexpr std::array<Column, 1> columns = {kValueColumn};
  static constexpr RecordRules rules = RecordTable<CDPSDblC>::rules;
};

template <>
struct RecordTable<CDPSDblDblC> {
  static constexpr std::array<Column, 2> columns = {kOhlcColumns[kClose], kVolumeColumn};
  static constexpr RecordRules rules = {
      2, 2, QuoteResult::kFilled, NullPrice::kFirst, kPlainThenBarStamp, kBarStamp};
};

template <>
struct RecordTable<CDPSDblDblH> {
  static constexpr std::array<Column, 2> columns = {kOhlcColumns[kHigh], kVolumeColumn};
  static constexpr RecordRules rules = {
      2, 2, QuoteResult::kNotTold, NullPrice::kFirst, kPlainThenBarStamp, kBarStamp};
};

template <>
struct RecordTable<CDPSDblDblL> {
  static constexpr std::array<Column, 2> columns = {kOhlcColumns[kLow], kVolumeColumn};
  static constexpr RecordRules rules = RecordTable<CDPSDblDblH>::rules;
};

// The tick word behind the two floats shows as two columns more, which no file and no quote
// carries.
template <>
struct RecordTable<CDPSDblDblTick> {
  static constexpr std::array<Column, 4> columns = {{
      {"Price", 235, 0, CDPDataPt::DataTypePrice, TextForm::kPrice},
      kVolumeColumn,
      {"UpTick", 321, 4, CDPDataPt::DataTypeTickDir, TextForm::kCount},
      {"DnTick", 322, 4, CDPDataPt::DataTypeTickDir, TextForm::kCount},
  }};
  static constexpr RecordRules rules = RecordTable<CDPSDblDblC>::rules;
};

template <>
struct RecordTable<CDPSDblOHLCUDUT> {
  static constexpr std::array<Column, 12> columns = FirstOhlcColumns<12>();
  static constexpr RecordRules rules = {
      12, 4, QuoteResult::kAnyNonZero, NullPrice::kAnyOhlc, kPlainThenBarStamp, kBarStamp};
};

template <>
struct RecordTable<CDPSDblOHLCUDUTO> {
  static constexpr std::array<Column, 13> columns = kOhlcColumns;
  static constexpr RecordRules rules = {
      13, 4, QuoteResult::kAnyNonZero, NullPrice::kAllOhlc, kPlainThenBarStamp, kBarStamp};
};

// Reads the bar's fields and writes the plain ones, so it can't read the quote it wrote; servers
// and hosts of the older format rely on either half.
template <>
struct RecordTable<CDPSDblOHLCUDUTOld> {
  static constexpr std::array<Column, 8> columns = FirstOhlcColumns<8>();
  static constexpr RecordRules rules = {
      8, 4, QuoteResult::kFilled, NullPrice::kAnyOhlc, kBarStamp, kPlainStamp};
};

template <>
struct RecordTable<CDPSDblOHLCUDUTOOld> {
  static constexpr std::array<Column, 9> columns = OldColumnsWithOpenInterest();
  static constexpr RecordRules rules = {
      9, 4, QuoteResult::kFilled, NullPrice::kAnyOhlc, kPlainStamp, kPlainStamp};
};

}  // namespace pxd

#endif
