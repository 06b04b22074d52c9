// The bodies of RecordPoint. Included by the sources that define the classes, and by nothing else.
#ifndef PXDUTIL_DATAPOINTS_DETAIL_RECORD_POINT_IMPL_H
#define PXDUTIL_DATAPOINTS_DETAIL_RECORD_POINT_IMPL_H

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include <pxdutil/datapoints/detail/record_point.h>
#include <pxdutil/datapoints/markers.h>
#include <pxdutil/foundation/archive.h>
#include <pxdutil/foundation/exception.h>
#include <pxdutil/foundation/fault.h>
#include <pxdutil/quotes/quote.h>

namespace pxd::detail {

[[noreturn]] inline void ThrowInvalidColumn(
    CDPDataPtException::CDPDataPtExceptionError error = CDPDataPtException::DPErrorGeneral) {
  throw new CDPDataPtException(error, "Error: Invalid column");
}

// The bytes of `point`'s record seen as a Record. A point of another class gives what its bytes
// say, never more of them than it has, and zeros behind them.
template <class Record>
Record RecordOf(const CDPDataPt& point) {
  Record record;
  const std::size_t size = point.GetObjectSize() - sizeof(CDPDataPt);
  unsigned char bytes[sizeof(Record)] = {};
  std::memcpy(bytes, reinterpret_cast<const unsigned char*>(&point) + sizeof(CDPDataPt),
              std::min(size, sizeof(Record)));
  std::memcpy(static_cast<void*>(&record), bytes, sizeof(Record));
  return record;
}

// The date and time of sample points.
inline void SetDummyStamp(Stamp& stamp, unsigned int index) {
  const CZRDate first(1, 1, 1997);
  stamp.m_Date = static_cast<std::uint16_t>(first.GetJulianDate() + index);
  stamp.m_Time = CZRTime(12, 15, 30).GetTime();
}

inline bool IsStrictlyBetween(float value, double low, double high) {
  const auto wide = static_cast<double>(value);
  return low < wide && wide < high;
}

inline float Adjusted(float value, unsigned int operation, float factor, Division division) {
  switch (operation) {
    case CDPDataPt::AdjustAdd:
      return value + factor;
    case CDPDataPt::AdjustSubtract:
      return value - factor;
    case CDPDataPt::AdjustMultiply:
      return value * factor;
    case CDPDataPt::AdjustDivide:
      return division == Division::kReciprocal ? value * (1.0F / factor) : value / factor;
    case CDPDataPt::AdjustReciprocal:
      return value == 0.0F ? value : 1.0F / value;
    default:
      return value;
  }
}

#define PXDUTIL_POINT_TEMPLATE \
  template <class Self, class Base, class RecordType, const PointRules& kRules>
#define PXDUTIL_POINT RecordPoint<Self, Base, RecordType, kRules>

PXDUTIL_POINT_TEMPLATE
void PXDUTIL_POINT::Serialize(CArchive& archive) {
  m_Record.Serialize(archive);
}

PXDUTIL_POINT_TEMPLATE
unsigned int PXDUTIL_POINT::GetNumCols() const {
  return Self::m_NumCols;
}

PXDUTIL_POINT_TEMPLATE
CString PXDUTIL_POINT::GetStringHeaderForCol(unsigned int col) {
  return col < m_ColHeaderStringArray.size() ? CString(m_ColHeaderStringArray[col]) : CString();
}

PXDUTIL_POINT_TEMPLATE
unsigned int PXDUTIL_POINT::GetObjectSize() const {
  return static_cast<unsigned int>(sizeof(Self));
}

PXDUTIL_POINT_TEMPLATE
int PXDUTIL_POINT::GetColForColField(const CField&, const CField& colField,
                                     unsigned int& col) const {
  if constexpr (kRules.fieldMatch == FieldMatch::kNever) {
    static_cast<void>(colField);
    static_cast<void>(col);
    return 0;
  } else {
    constexpr const auto& columns = RecordTable<Values>::columns;
    const auto found = std::find_if(columns.begin(), columns.end(), [&](const Column& column) {
      return column.field == colField.GetFieldVal();
    });
    if (found == columns.end()) {
      return 0;
    }
    col = static_cast<unsigned int>(found - columns.begin());
    return kRules.fieldMatch == FieldMatch::kFoundIsOne ? 1 : 0;
  }
}

PXDUTIL_POINT_TEMPLATE
void PXDUTIL_POINT::GetDPValueInfoForCol(unsigned int col, CField, CDPValueInfo& info) const {
  constexpr const auto& columns = RecordTable<Values>::columns;
  if (col < columns.size()) {
    info.SetFieldID(columns[col].field);
    info.SetFieldType(columns[col].fieldType);
    info.SetDataSize(kColumnSize);
  }
}

PXDUTIL_POINT_TEMPLATE
void PXDUTIL_POINT::GetDPValueInfoForColEx(unsigned int col, CField& field, CDPValueInfo& info,
                                           CDPValue& value) const {
  if constexpr (kRules.ohlc) {
    info.SetDataSize(kColumnSize);  // also for a column that doesn't exist
  }
  Base::GetDPValueInfoForColEx(col, field, info, value);
}

PXDUTIL_POINT_TEMPLATE
void PXDUTIL_POINT::GetDPValueForCol(unsigned int col, CDPValue& value) const {
  if (IsStored(col)) {
    value.SetFloat(m_Record.GetFloat(col));
  }
}

PXDUTIL_POINT_TEMPLATE
void PXDUTIL_POINT::SetDPValueForCol(unsigned int col, CDPValue& value) {
  if (IsStored(col)) {
    m_Record.SetFloat(col, value.GetFloat());
  }
}

PXDUTIL_POINT_TEMPLATE
CDPDataPt::DataType PXDUTIL_POINT::GetDataTypeForCol(unsigned int col) {
  constexpr const auto& columns = RecordTable<Values>::columns;
  return col < columns.size() ? columns[col].dataType : CDPDataPt::DataTypeNone;
}

PXDUTIL_POINT_TEMPLATE
CString PXDUTIL_POINT::GetStringValForCol(unsigned int col) {
  if (IsStored(col)) {
    return FormatValue(RecordTable<Values>::columns[col].text, m_Record.GetFloat(col));
  }
  switch (kRules.unknownText) {
    case UnknownText::kThrows:
      ThrowInvalidColumn();
    case UnknownText::kSaysError:
      return "ERROR";
    case UnknownText::kIsEmpty:
      break;
  }
  return {};
}

PXDUTIL_POINT_TEMPLATE
void PXDUTIL_POINT::SetStringValForCol(unsigned int col, CString text) {
  if (!IsStored(col)) {
    ThrowInvalidColumn();
  }
  m_Record.SetFloat(col, static_cast<float>(ScanValue(text)));
}

PXDUTIL_POINT_TEMPLATE
double PXDUTIL_POINT::GetDoubleValForCol(unsigned int col) const {
  if constexpr (kRules.doubles != Doubles::kNone) {
    if (IsStored(col)) {
      return static_cast<double>(m_Record.GetFloat(col));
    }
    if constexpr (kRules.ohlc) {
      ThrowInvalidColumn();
    }
  }
  return 0.0;
}

PXDUTIL_POINT_TEMPLATE
void PXDUTIL_POINT::SetDoubleValForCol(unsigned int col, double value) {
  if constexpr (kRules.doubles == Doubles::kReadsAndWrites) {
    if (!IsStored(col)) {
      ThrowInvalidColumn();
    }
    m_Record.SetFloat(col, static_cast<float>(value));
  } else {
    static_cast<void>(col);
    static_cast<void>(value);
  }
}

PXDUTIL_POINT_TEMPLATE
CZRDateTime PXDUTIL_POINT::GetZRDateTime() {
  return m_Record.GetDateTime();
}

PXDUTIL_POINT_TEMPLATE
void PXDUTIL_POINT::GetDPDateTime(unsigned short& date, unsigned long& time) const {
  if constexpr (kRules.givesDateTimeParts) {
    date = m_Record.m_Date;
    time = m_Record.m_Time;
  } else {
    static_cast<void>(date);
    static_cast<void>(time);
    Fault("GetDPDateTime of a class that doesn't have it");
  }
}

PXDUTIL_POINT_TEMPLATE
void PXDUTIL_POINT::SetZRDateTime(unsigned short date, unsigned long time) {
  if constexpr (kRules.takesDateTimeParts) {
    m_Record.m_Date = date;
    m_Record.m_Time = static_cast<std::uint32_t>(time);
  } else {
    Base::SetZRDateTime(date, time);
  }
}

PXDUTIL_POINT_TEMPLATE
void PXDUTIL_POINT::SetZRDateTime(CZRDateTime dateTime) {
  m_Record.SetDateTime(dateTime);
}

PXDUTIL_POINT_TEMPLATE
int PXDUTIL_POINT::HasDblValBetween(double low, double high) const {
  if constexpr (kRules.ohlc) {
    const auto barHigh = static_cast<double>(m_Record.GetFloat(kHigh));
    const auto barLow = static_cast<double>(m_Record.GetFloat(kLow));
    return barHigh > low && barLow < high ? 1 : 0;
  } else {
    return IsStrictlyBetween(m_Record.GetFloat(0), low, high) ? 1 : 0;
  }
}

PXDUTIL_POINT_TEMPLATE
int PXDUTIL_POINT::HasVolBetween(double low, double high) const {
  const auto anyIn = [&](std::size_t first, std::size_t end) {
    for (std::size_t i = first; i < end; ++i) {
      if (IsStrictlyBetween(m_Record.GetFloat(i), low, high)) {
        return 1;
      }
    }
    return 0;
  };
  switch (kRules.volumeTest) {
    case VolumeTest::kNone:
      break;
    case VolumeTest::kSecondColumn:
      return anyIn(1, 2);
    case VolumeTest::kFourVolumes:
      return anyIn(kFirstVolume, kVolumesEnd);
  }
  return 0;
}

PXDUTIL_POINT_TEMPLATE
int PXDUTIL_POINT::HasDblValDifferenceGreaterThan(double threshold, CDPDataPt* other) const {
  const Record theirs = RecordOf<Record>(*other);
  constexpr std::size_t count = kRules.ohlc ? kPricesEnd : 1;
  for (std::size_t i = 0; i < count; ++i) {
    const auto own = static_cast<double>(m_Record.GetFloat(i));
    const auto base = static_cast<double>(theirs.GetFloat(i));
    if (std::fabs((own - base) / base) > std::fabs(threshold)) {
      return 1;
    }
  }
  return 0;
}

PXDUTIL_POINT_TEMPLATE
int PXDUTIL_POINT::SetFromQuote(CZRGSQuote& quote) {
  return m_Record.SetFromQuote(quote);
}

PXDUTIL_POINT_TEMPLATE
int PXDUTIL_POINT::AppendToQuote(CZRGSQuote& quote) const {
  return m_Record.AppendToQuote(quote);
}

PXDUTIL_POINT_TEMPLATE
void PXDUTIL_POINT::SetToDummyData(unsigned int index) {
  SetDummyStamp(m_Record, index);
  for (std::size_t i = 0; i < kRules.dummyCount; ++i) {
    m_Record.SetFloat(i, kRules.dummies[i]);
  }
}

PXDUTIL_POINT_TEMPLATE
int PXDUTIL_POINT::IsEqualTo(CDPDataPt* other) const {
  return m_Record == RecordOf<Record>(*other);
}

PXDUTIL_POINT_TEMPLATE
void PXDUTIL_POINT::SetEqualTo(CDPDataPt* other) {
  m_Record = RecordOf<Record>(*other);
}

PXDUTIL_POINT_TEMPLATE
void PXDUTIL_POINT::SetToNull() {
  this->SetZRDateTime(CZRDateTime(CZRDateTime::LimitNull));
  m_Record.Values::ValueRecord::SetToNull();  // the floats alone: a tick keeps its tick word
  Base::SetToNull();
}

PXDUTIL_POINT_TEMPLATE
int PXDUTIL_POINT::IsNull() const {
  return m_Record.IsNull();
}

PXDUTIL_POINT_TEMPLATE
int PXDUTIL_POINT::HasNullPrice() const {
  return m_Record.HasNullPrice();
}

PXDUTIL_POINT_TEMPLATE
int PXDUTIL_POINT::HasDeleteValue() const {
  return m_Record.GetFloat(0) == kDeletedBar ? 1 : 0;
}

PXDUTIL_POINT_TEMPLATE
int PXDUTIL_POINT::AdjustData(unsigned int operation, float factor, int target) {
  constexpr const auto& runs = kRules.adjusts;
  const std::size_t index = kRules.ignoresTarget ? 0 : static_cast<std::size_t>(target);
  const AdjustRun run = index < runs.size() ? runs[index] : kNoRun;
  for (std::size_t i = run.first; i < std::size_t{run.first} + run.count; ++i) {
    m_Record.SetFloat(i, Adjusted(m_Record.GetFloat(i), operation, factor, run.division));
  }
  return 1;
}

#undef PXDUTIL_POINT_TEMPLATE
#undef PXDUTIL_POINT

}  // namespace pxd::detail

#endif
