// Column: what is known of one column of a record. The tables of columns are the single source of
// every class's headers, look-ups, texts, stored bytes and fields in quotes.
#ifndef PXDUTIL_DATAPOINTS_COLUMN_H
#define PXDUTIL_DATAPOINTS_COLUMN_H

#include <cstdint>

#include <pxdutil/datapoints/data_point.h>
#include <pxdutil/foundation/export.h>
#include <pxdutil/foundation/text.h>

namespace pxd {

// How a column's value is shown.
enum class TextForm : std::uint8_t {
  kPrice,  // "%.7G": seven digits, which is what a float holds
  kCount,  // "%.0f": a whole number
};

struct Column {
  const char* header;            // the words above the column
  std::uint16_t field;           // catalogue id, also the id in quotes
  std::uint8_t fieldType;        // code of CZRGSFieldInfo::GetFieldType
  CDPDataPt::DataType dataType;  // what the column holds
  TextForm text;                 // how its value is shown
};

// The width of a column's value in bytes.
inline constexpr unsigned int kColumnSize = 4;

// `value` in a column's text form. It is never cut: the largest float takes 39 digits.
[[nodiscard]] PXDUTIL_API CString FormatValue(TextForm form, float value);

// The number that `text` begins with, 0.0 where it begins with none.
[[nodiscard]] PXDUTIL_API double ScanValue(const CString& text);

}  // namespace pxd

#endif
