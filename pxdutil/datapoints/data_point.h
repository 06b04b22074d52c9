// CDPDataPt: one point in time on a chart or in a history file, seen as a row of numbered columns.
//
// Ticks, bars, daily option records and conversion points all derive from it. A grid, an exporter
// or a chart walks any series without knowing its class:
//
//   for (unsigned int col = 0; col < point.GetNumCols(); ++col) {
//     show(point.GetStringHeaderForCol(col), point.GetStringValForCol(col));
//   }
//
// Objects are plain values packed to one byte: a virtual table pointer, a flag byte, and directly
// behind it the record. They hold no heap memory and are stepped by GetObjectSize() in arrays. A
// point belongs to one thread at a time.
//
// A column out of range is ignored by the operations on CDPValue; those on texts and doubles answer
// or throw as each class says, always with a CDPDataPtException* "Error: Invalid column".
#ifndef PXDUTIL_DATAPOINTS_DATA_POINT_H
#define PXDUTIL_DATAPOINTS_DATA_POINT_H

#include <cstdint>

#include <pxdutil/foundation/export.h>
#include <pxdutil/foundation/field_value.h>
#include <pxdutil/foundation/object.h>
#include <pxdutil/foundation/text.h>
#include <pxdutil/sessions/date_time.h>

class CZRGSQuote;

#pragma pack(push, 1)

class PXDUTIL_API CDPDataPt : public CObject {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CDPDataPt);

 public:
  // What a column holds.
  enum DataType : int {
    DataTypePrice = 0,    // a price or a value
    DataTypeVolume = 1,   // a volume
    DataTypeCount = 2,    // a tick count or open interest
    DataTypeTickDir = 3,  // a part of a tick's signed up/down word
    DataTypeNone = 4,     // there is no such column
  };

  // What AdjustData does to each value x, and to which values.
  enum AdjustOperation : unsigned int {
    AdjustAdd = 0,         // x + factor
    AdjustSubtract = 1,    // x - factor
    AdjustMultiply = 2,    // x * factor
    AdjustDivide = 3,      // x / factor; for prices and volumes of OHLC bars x * (1 / factor)
    AdjustReciprocal = 4,  // 1 / x, and 0 stays 0
  };
  // The values that AdjustData restates. Which columns these are, each class says.
  enum AdjustTarget : int {
    AdjustPrices = 0,   // prices and values
    AdjustVolumes = 1,  // volumes
    AdjustOpenInt = 2,  // open interest
  };

  // The flag of the callers' that outlives SetToNull.
  static constexpr unsigned char kLastingFlag = 0x02;

  // Stores or loads the record; flags aren't stored.
  void Serialize(CArchive& archive) override = 0;

  // How many columns a point has; they are numbered from 0.
  [[nodiscard]] virtual unsigned int GetNumCols() const = 0;
  // The column's header; `col` must be in range.
  virtual CString GetStringHeaderForCol(unsigned int col) = 0;
  // The object's packed size in bytes, which is the stride of arrays of its class.
  [[nodiscard]] virtual unsigned int GetObjectSize() const = 0;
  // Looks up the column of the field `colField`; no class uses `field`. 1 and the column, or 0.
  // Some classes set the column and answer 0 all the same, as they say.
  virtual int GetColForColField(const CField& field, const CField& colField,
                                unsigned int& col) const = 0;
  // The field, kind and width of a column. Ticks describe theirs by `field`, others ignore it.
  virtual void GetDPValueInfoForCol(unsigned int col, CField field, CDPValueInfo& info) const = 0;
  // The column's value and description in one step.
  virtual void GetDPValueInfoForColEx(unsigned int col, CField& field, CDPValueInfo& info,
                                      CDPValue& value) const;
  // The value of a column, in the member of CDPValue that goes with its kind.
  virtual void GetDPValueForCol(unsigned int col, CDPValue& value) const = 0;
  // The forms with a selector, the unit code of the bar's resolution, matter to classes that hold a
  // second, running daily record.
  virtual void GetDPValueForColEx(unsigned int col, CDPValue& value, unsigned char selector) const;
  // Writes the value of a column from that member; and the same with a selector.
  virtual void SetDPValueForCol(unsigned int col, CDPValue& value) = 0;
  virtual void SetDPValueForColEx(unsigned int col, CDPValue& value, unsigned char selector);
  // Clears the running daily record of classes that hold one.
  virtual void ResetPrevDailyRec();
  // What the column holds, DataTypeNone where there is no such column.
  virtual CDPDataPt::DataType GetDataTypeForCol(unsigned int col) = 0;
  // The column's value as text: prices with 7 digits, counts as whole numbers, "N/A" where a class
  // has none.
  virtual CString GetStringValForCol(unsigned int col) = 0;
  // Text that isn't a number stores 0.
  virtual void SetStringValForCol(unsigned int col, CString text) = 0;
  // Reads or writes a column as a double; 0.0, and nothing, in classes without columns for doubles.
  [[nodiscard]] virtual double GetDoubleValForCol(unsigned int col) const;
  virtual void SetDoubleValForCol(unsigned int col, double value);
  // The date and time as one value.
  virtual CZRDateTime GetZRDateTime() = 0;
  // The date and time of the record. A fault in CDPCDblC, CDPCDblDblC and CDPCDblDblH.
  virtual void GetDPDateTime(unsigned short& date, unsigned long& time) const = 0;
  // Stores both in CDPTDblDblTick, CDPCDblOHLCUDUT, CDPCDblOHLCUDUTO, CDPOptDaily and CDPCnv; all
  // others do nothing here and are set through the next form.
  virtual void SetZRDateTime(unsigned short date, unsigned long time);
  virtual void SetZRDateTime(CZRDateTime dateTime) = 0;
  // Whether the value lies strictly between the limits; whether an OHLC bar overlaps the range.
  virtual int HasDblValBetween(double low, double high) const;
  // Whether a volume lies strictly between the limits.
  virtual int HasVolBetween(double low, double high) const;
  // Whether a price differs from `other`'s, of the same class, by more than the share |threshold|.
  virtual int HasDblValDifferenceGreaterThan(double threshold, CDPDataPt* other) const;
  // Fills the record from a quote, adds the record's fields to one; see each record for the result.
  virtual int SetFromQuote(CZRGSQuote& quote) = 0;
  virtual int AppendToQuote(CZRGSQuote& quote) const = 0;
  // Sample values for previews; the date is 1 January 1997 plus the low 16 bits of `index` days.
  virtual void SetToDummyData(unsigned int index) = 0;
  // Compares date, time and values with those of `other`, of the same class; flags don't count.
  virtual int IsEqualTo(CDPDataPt* other) const = 0;
  // Copies the record of `other`, of the same class, and leaves the flags.
  virtual void SetEqualTo(CDPDataPt* other) = 0;
  // Makes the point null and clears all flags but kLastingFlag; the base does the latter.
  virtual void SetToNull();
  // 1 or 0: whether the record is null; whether its price is; whether it is marked as deleted
  // (markers.h).
  [[nodiscard]] virtual int IsNull() const = 0;
  [[nodiscard]] virtual int HasNullPrice() const = 0;
  [[nodiscard]] virtual int HasDeleteValue() const = 0;
  // Whether this is no trade but a mark of time (markers.h); false in all but ticks and CDPCnv.
  [[nodiscard]] virtual bool IsAnEndOfMinuteTick() const;
  [[nodiscard]] virtual bool IsAnEndOfSecondTick() const;
  // Restates the values of a target in place. 1 where the class has adjustments at all, whatever
  // was changed, else 0. An operation or target that isn't listed changes nothing, and nothing is
  // guarded: dividing by 0 gives infinities, and markers and nulls are adjusted like any value.
  virtual int AdjustData(unsigned int operation, float factor, int target) = 0;

  // Whether a flag of `mask` is set.
  [[nodiscard]] bool HasFlag(unsigned char mask) const { return (m_Flags & mask) != 0; }
  // Sets the flags of `mask`; the others stay.
  void SetFlag(unsigned char mask) { m_Flags |= mask; }

 protected:
  CDPDataPt() = default;
  CDPDataPt(const CDPDataPt&) = default;
  // Flags belong to the object and not to its value: assignment leaves them.
  CDPDataPt& operator=(const CDPDataPt&) { return *this; }

  // Clears all flags but kLastingFlag.
  void ClearFlags() { m_Flags &= kLastingFlag; }

  // The callers' flag bits.
  std::uint8_t m_Flags = 0;
};

static_assert(sizeof(CDPDataPt) == sizeof(void*) + 1, "the record stands behind the flag byte");

#pragma pack(pop)

// The same names without their class, which is how hosts know them.
using AdjustOperation = CDPDataPt::AdjustOperation;
using AdjustTarget = CDPDataPt::AdjustTarget;
inline constexpr AdjustOperation AdjustAdd = CDPDataPt::AdjustAdd;
inline constexpr AdjustOperation AdjustSubtract = CDPDataPt::AdjustSubtract;
inline constexpr AdjustOperation AdjustMultiply = CDPDataPt::AdjustMultiply;
inline constexpr AdjustOperation AdjustDivide = CDPDataPt::AdjustDivide;
inline constexpr AdjustOperation AdjustReciprocal = CDPDataPt::AdjustReciprocal;
inline constexpr AdjustTarget AdjustPrices = CDPDataPt::AdjustPrices;
inline constexpr AdjustTarget AdjustVolumes = CDPDataPt::AdjustVolumes;
inline constexpr AdjustTarget AdjustOpenInt = CDPDataPt::AdjustOpenInt;

// A view of a packed array of points of one class. It doesn't own them.
class PXDUTIL_API CDPADataPtAr : public CObject {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CDPADataPtAr);

 public:
  // The `count` points from `first` on, which stay their owner's and must outlive the view.
  CDPADataPtAr(CDPDataPt* first, unsigned int count) : m_first(first), m_count(count) {}

  // Element `index`, which isn't checked.
  [[nodiscard]] CDPDataPt* GetAt(unsigned int index) const;
  CDPDataPt* operator[](unsigned int index) const { return GetAt(index); }
  // The bytes that all of them take.
  [[nodiscard]] unsigned int GetBufSizeInBytes() const;

 private:
  CDPDataPt* m_first;
  unsigned int m_count;
};

#endif
