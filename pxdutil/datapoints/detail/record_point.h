// RecordPoint: the operations that all data point classes over a price record share, written once
// over the record's columns and the class's rules. Its bodies stand in record_point_impl.h, which
// the sources of the classes include.
#ifndef PXDUTIL_DATAPOINTS_DETAIL_RECORD_POINT_H
#define PXDUTIL_DATAPOINTS_DETAIL_RECORD_POINT_H

#include <array>
#include <cstddef>

#include <pxdutil/datapoints/data_point.h>
#include <pxdutil/datapoints/detail/point_rules.h>
#include <pxdutil/datapoints/record_tables.h>
#include <pxdutil/datapoints/records.h>
#include <pxdutil/foundation/export.h>

namespace pxd::detail {

template <class Values>
constexpr auto HeadersOf() {
  constexpr const auto& columns = RecordTable<Values>::columns;
  std::array<const char*, columns.size()> headers{};
  for (std::size_t i = 0; i < headers.size(); ++i) {
    headers[i] = columns[i].header;
  }
  return headers;
}

template <class Record>
Record NullRecord() {
  Record record;
  record.SetToNull();
  return record;
}

#pragma pack(push, 1)

// Self is the class that derives from this, Base the abstract class above it, RecordType the
// stamped record it holds.
template <class Self, class Base, class RecordType, const PointRules& kRules>
class PXDUTIL_API RecordPoint : public Base {
 public:
  using Record = RecordType;
  using Values = typename RecordType::ValueRecordType;

  // The number of columns and their headers.
  static constexpr unsigned int m_NumCols =
      static_cast<unsigned int>(RecordTable<Values>::columns.size());
  static constexpr auto m_ColHeaderStringArray = HeadersOf<Values>();

  // The distance in bytes from the object's start to its record.
  [[nodiscard]] static constexpr unsigned int GetDataOffset() {
    return static_cast<unsigned int>(sizeof(CDPDataPt));
  }

  void Serialize(CArchive& archive) override;
  [[nodiscard]] unsigned int GetNumCols() const override;
  CString GetStringHeaderForCol(unsigned int col) override;
  [[nodiscard]] unsigned int GetObjectSize() const override;
  int GetColForColField(const CField& field, const CField& colField,
                        unsigned int& col) const override;
  void GetDPValueInfoForCol(unsigned int col, CField field, CDPValueInfo& info) const override;
  void GetDPValueInfoForColEx(unsigned int col, CField& field, CDPValueInfo& info,
                              CDPValue& value) const override;
  void GetDPValueForCol(unsigned int col, CDPValue& value) const override;
  void SetDPValueForCol(unsigned int col, CDPValue& value) override;
  CDPDataPt::DataType GetDataTypeForCol(unsigned int col) override;
  CString GetStringValForCol(unsigned int col) override;
  void SetStringValForCol(unsigned int col, CString text) override;
  [[nodiscard]] double GetDoubleValForCol(unsigned int col) const override;
  void SetDoubleValForCol(unsigned int col, double value) override;
  CZRDateTime GetZRDateTime() override;
  void GetDPDateTime(unsigned short& date, unsigned long& time) const override;
  void SetZRDateTime(unsigned short date, unsigned long time) override;
  void SetZRDateTime(CZRDateTime dateTime) override;
  int HasDblValBetween(double low, double high) const override;
  int HasVolBetween(double low, double high) const override;
  int HasDblValDifferenceGreaterThan(double threshold, CDPDataPt* other) const override;
  int SetFromQuote(CZRGSQuote& quote) override;
  int AppendToQuote(CZRGSQuote& quote) const override;
  void SetToDummyData(unsigned int index) override;
  int IsEqualTo(CDPDataPt* other) const override;
  void SetEqualTo(CDPDataPt* other) override;
  void SetToNull() override;
  [[nodiscard]] int IsNull() const override;
  [[nodiscard]] int HasNullPrice() const override;
  [[nodiscard]] int HasDeleteValue() const override;
  int AdjustData(unsigned int operation, float factor, int target) override;

  // The record, in and out; flags stay.
  void GetDPST(Record& record) const { record = m_Record; }
  void SetDPST(const Record& record) { m_Record = record; }
  // The record as it stands in the point.
  [[nodiscard]] const Record& GetDPST() const { return m_Record; }
  // The class that users see, and not this base, is what an assignment gives.
  // NOLINTNEXTLINE(misc-unconventional-assign-operator)
  Self& operator=(const Record& record) {
    m_Record = record;
    return static_cast<Self&>(*this);
  }

  // 1 if date, time and values are equal; flags don't count.
  friend int operator==(const Self& a, const Self& b) { return a.GetDPST() == b.GetDPST(); }
  friend int operator!=(const Self& a, const Self& b) { return a.GetDPST() != b.GetDPST(); }

 protected:
  RecordPoint() = default;
  RecordPoint(const RecordPoint&) = default;
  RecordPoint& operator=(const RecordPoint&) = default;

  // Whether the column is one of the record's floats.
  [[nodiscard]] static bool IsStored(unsigned int col) {
    return col < RecordTable<Values>::rules.stored;
  }

  Record m_Record = NullRecord<Record>();
};

#pragma pack(pop)

}  // namespace pxd::detail

#endif
