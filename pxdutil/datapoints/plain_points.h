// The two calculated points that carry no prices: CDPOptDaily, the day's volume, open interest and
// implied volatility of an option chain, and CDPCnv, a conversion point with two numbers.
//
// Neither is stored by Serialize, adjusted, written to a quote or shown as text ("N/A"), and
// AddDataPt takes nothing: a caller merges with IncludeDataPtData.
#ifndef PXDUTIL_DATAPOINTS_PLAIN_POINTS_H
#define PXDUTIL_DATAPOINTS_PLAIN_POINTS_H

#include <array>
#include <cstdint>

#include <pxdutil/datapoints/calculated.h>
#include <pxdutil/datapoints/detail/visible.h>
#include <pxdutil/datapoints/records.h>

#pragma pack(push, 1)

// The record of CDPOptDaily, behind a date and a time.
struct PXDUTIL_API CDPRecOptDaily : pxd::Stamp {
  // The day's contracts traded, and those left open.
  std::uint32_t m_PutVol = 0;
  std::uint32_t m_CallVol = 0;
  std::int32_t m_PutOpenInt = 0;
  std::int32_t m_CallOpenInt = 0;
  // The implied volatility, as the server states it.
  float m_ImpliedVol = 0.0F;
  // While a bar is built: how many samples of implied volatility it took in, and their sum.
  std::uint8_t m_VolCount = 0;
  float m_VolSum = 0.0F;

  CDPRecOptDaily() = default;
  CDPRecOptDaily(const CDPRecOptDaily&) = default;
  // Copies all but m_VolSum.
  CDPRecOptDaily& operator=(const CDPRecOptDaily& other);

  // Zeros, behind the null date and time.
  void SetToNull();
  // 1 if the date is null and the five numbers are 0; the time plays no part.
  [[nodiscard]] int IsNull() const;
  // 1 if the five numbers are 0.
  [[nodiscard]] int HasNullPrice() const;
  // Fills the record but for the two of the building. 1, or 0 at the first field that is missing,
  // with what was read before it kept.
  int SetFromQuote(const CZRGSQuote& quote);
  // The number of a column, 0 to 4. Setting cuts towards zero, and saturates.
  [[nodiscard]] double GetNumber(unsigned int col) const;
  void SetNumber(unsigned int col, double number);

  // Date, time and the five numbers.
  friend int operator==(const CDPRecOptDaily& a, const CDPRecOptDaily& b) {
    return a.Equals(b) ? 1 : 0;
  }
  friend int operator!=(const CDPRecOptDaily& a, const CDPRecOptDaily& b) {
    return a.Equals(b) ? 0 : 1;
  }

 private:
  [[nodiscard]] bool Equals(const CDPRecOptDaily& other) const;
};

// The record of CDPCnv, behind a date and a time.
struct PXDUTIL_API CDPRecCnv : pxd::Stamp {
  // The two numbers, fields 517 and 518.
  double m_Winning = 0.0;
  double m_Losing = 0.0;
  // 1 until a point is merged in.
  std::uint8_t m_IsNull = 1;

  // Date, time and both numbers 0 (the null date isn't used here), and m_IsNull 1.
  void SetToNull() { *this = CDPRecCnv(); }
  // m_IsNull as it is; whether both numbers are 0.
  [[nodiscard]] int IsNull() const { return m_IsNull; }
  [[nodiscard]] int HasNullPrice() const { return m_Winning == 0.0 && m_Losing == 0.0 ? 1 : 0; }
  // Fills all but m_IsNull, with results as CDPRecOptDaily's.
  int SetFromQuote(const CZRGSQuote& quote);
  // The number of a column, 0 or 1.
  [[nodiscard]] double GetNumber(unsigned int col) const { return col == 0 ? m_Winning : m_Losing; }
  void SetNumber(unsigned int col, double number) {
    if (col == 0) {
      m_Winning = number;
    } else {
      m_Losing = number;
    }
  }
  // Whether m_Winning is the marker.
  [[nodiscard]] bool IsAnEndOfMinuteTick() const;
  [[nodiscard]] bool IsAnEndOfSecondTick() const;

  // Date, time and both numbers, not m_IsNull.
  friend int operator==(const CDPRecCnv& a, const CDPRecCnv& b) { return a.Equals(b) ? 1 : 0; }
  friend int operator!=(const CDPRecCnv& a, const CDPRecCnv& b) { return a.Equals(b) ? 0 : 1; }

 private:
  [[nodiscard]] bool Equals(const CDPRecCnv& other) const {
    return HasStampOf(other) && m_Winning == other.m_Winning && m_Losing == other.m_Losing;
  }
};

static_assert(sizeof(CDPRecOptDaily) == 31);
static_assert(sizeof(CDPRecCnv) == 23);

namespace pxd::detail {

// A column of a point without prices. Their headers, fields and kinds stand in one table a class.
struct PlainColumn {
  const char* header;
  std::uint16_t field;
  CDPDataPt::DataType dataType;
};

PXDUTIL_VISIBLE inline constexpr std::array<PlainColumn, 5> kOptDailyColumns = {{
    {"Put Volume", 489, CDPDataPt::DataTypeVolume},
    {"Call Volume", 490, CDPDataPt::DataTypeVolume},
    {"Put Open Int.", 491, CDPDataPt::DataTypeVolume},
    {"Call Open Int.", 492, CDPDataPt::DataTypeVolume},
    {"Implied Volatility", 493, CDPDataPt::DataTypePrice},
}};

// "Loosing" is how the column and its catalogue entry are spelled.
PXDUTIL_VISIBLE inline constexpr std::array<PlainColumn, 2> kCnvColumns = {{
    {"Winning", 517, CDPDataPt::DataTypeVolume},
    {"Loosing", 518, CDPDataPt::DataTypeVolume},
}};

template <std::size_t N>
constexpr std::array<const char*, N> HeadersOf(const std::array<PlainColumn, N>& columns) {
  std::array<const char*, N> headers{};
  for (std::size_t i = 0; i < N; ++i) {
    headers[i] = columns[i].header;
  }
  return headers;
}

// What the two classes have in common, over the record and its columns.
template <class Self, class RecordType, const auto& kColumns>
class PXDUTIL_API PlainPoint : public CDPCDataPtCalculated {
 public:
  using Record = RecordType;

  static constexpr unsigned int m_NumCols = static_cast<unsigned int>(kColumns.size());
  static constexpr auto m_ColHeaderStringArray = HeadersOf(kColumns);
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
  void GetDPValueForCol(unsigned int col, CDPValue& value) const override;
  void SetDPValueForCol(unsigned int col, CDPValue& value) override;
  CDPDataPt::DataType GetDataTypeForCol(unsigned int col) override;
  // "N/A" for every column, and nothing.
  CString GetStringValForCol(unsigned int col) override;
  void SetStringValForCol(unsigned int col, CString text) override;
  CZRDateTime GetZRDateTime() override;
  void GetDPDateTime(unsigned short& date, unsigned long& time) const override;
  void SetZRDateTime(unsigned short date, unsigned long time) override;
  void SetZRDateTime(CZRDateTime dateTime) override;
  int SetFromQuote(CZRGSQuote& quote) override;
  int AppendToQuote(CZRGSQuote& quote) const override;
  void SetToDummyData(unsigned int index) override;
  // 0 for a point of another class.
  int IsEqualTo(CDPDataPt* other) const override;
  // Leaves the flags.
  void SetToNull() override;
  [[nodiscard]] int IsNull() const override;
  [[nodiscard]] int HasNullPrice() const override;
  [[nodiscard]] int HasDeleteValue() const override;
  int AdjustData(unsigned int operation, float factor, int target) override;
  // Takes nothing: AddOutsideSession.
  AddDataPtReturn AddDataPt(const CDPDataPt* pt, const CResoln& resoln, const CZRGSSession& session,
                            int startNew, TrendType& trend, const CDPDataPt* prev) override;

  // The record (the first, of two), in and out; flags stay.
  void GetDPST(Record& record) const { record = m_Record; }
  void SetDPST(const Record& record) { m_Record = record; }
  [[nodiscard]] const Record& GetDPST() const { return m_Record; }

  friend int operator==(const Self& a, const Self& b) { return a.GetDPST() == b.GetDPST(); }
  friend int operator!=(const Self& a, const Self& b) { return a.GetDPST() != b.GetDPST(); }

 protected:
  PlainPoint() = default;
  PlainPoint(const PlainPoint&) = default;
  PlainPoint& operator=(const PlainPoint&) = default;

  Record m_Record;
};

}  // namespace pxd::detail

// Holds a second record, the running figures of the present day, as CDPCDblOHLCUDUTO does.
class PXDUTIL_API CDPOptDaily
    : public pxd::detail::PlainPoint<CDPOptDaily, CDPRecOptDaily, pxd::detail::kOptDailyColumns> {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CDPOptDaily);

 public:
  // A null point.
  CDPOptDaily() { m_Record.SetToNull(); }

  // The selectors aren't mirrors of one another: 5 and 6 read the running record, and everything
  // but 4 writes it. Values pass as floats; writing cuts them towards zero.
  void GetDPValueForColEx(unsigned int col, CDPValue& value, unsigned char selector) const override;
  void SetDPValueForColEx(unsigned int col, CDPValue& value, unsigned char selector) override;
  // Copies both records of a CDPOptDaily, but for their m_VolSum; ignores any other class.
  void SetEqualTo(CDPDataPt* other) override;
  void IncludeDataPtData(const CDPDataPt* pt, TrendType& trend, const CDPDataPt* prev) override;

  // The running figures of the present day.
  CDPRecOptDaily m_PrevDailyRec;
};

// IsNull answers 1 until IncludeDataPtData takes a point in; filling the point in any other way
// doesn't change that.
class PXDUTIL_API CDPCnv
    : public pxd::detail::PlainPoint<CDPCnv, CDPRecCnv, pxd::detail::kCnvColumns> {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CDPCnv);

 public:
  // Both ignore the selector.
  void GetDPValueForColEx(unsigned int col, CDPValue& value, unsigned char selector) const override;
  void SetDPValueForColEx(unsigned int col, CDPValue& value, unsigned char selector) override;
  // Copies a CDPCnv that has a number other than 0; ignores any other point.
  void SetEqualTo(CDPDataPt* other) override;
  [[nodiscard]] bool IsAnEndOfMinuteTick() const override;
  [[nodiscard]] bool IsAnEndOfSecondTick() const override;
  void IncludeDataPtData(const CDPDataPt* pt, TrendType& trend, const CDPDataPt* prev) override;
};

static_assert(sizeof(CDPOptDaily) == 63 + sizeof(void*));
static_assert(sizeof(CDPCnv) == 24 + sizeof(void*));

#pragma pack(pop)

#endif
