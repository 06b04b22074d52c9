// The plain records of prices: what a data point really is, and the stored format of all history.
//
// Each comes in two forms: CDPS..., the values alone, and CDPST..., the same values behind a date
// and a time. What the letters of a name say: Dbl a value, DblDbl a value and a volume; C, H, L
// close, high, low; Tick a tick's value; OHLC open, high, low, close; UDUT up, down, unchanged,
// total, of volume and of ticks; O open interest; Old the older format without tick counts.
//
//   CDPSTDblOHLCUDUT bar;
//   bar.SetFromQuote(quote);
//   bar.Serialize(archive);  // 54 bytes
//   pxd::StoreRecords(archive, bars);  // a vector of them
//
// Every value is a 32-bit float, whatever it counts, so whole numbers above 2^24 lose their last
// digits. Records are packed to one byte, hold no heap memory, and start as zeros; copying copies
// all of them. A reference to one of their members may be misaligned: copy the value instead.
//
// Every record has the same operations (ValueRecord and Stamped below).
#ifndef PXDUTIL_DATAPOINTS_RECORDS_H
#define PXDUTIL_DATAPOINTS_RECORDS_H

#include <cstdint>
#include <span>

#include <pxdutil/datapoints/markers.h>
#include <pxdutil/datapoints/record_tables.h>
#include <pxdutil/foundation/export.h>
#include <pxdutil/foundation/packed.h>
#include <pxdutil/sessions/date_time.h>

class CArchive;
class CZRGSQuote;

#pragma pack(push, 1)

namespace pxd {

// The operations of a value record over its table. Values is the record, which derives from this
// and begins with its floats.
template <class Values>
struct PXDUTIL_API ValueRecord {
  // Makes all values 0.
  void SetToNull();
  // 1 where every float is 0, -0 too; else 0.
  [[nodiscard]] int IsNull() const;
  // 1 where the first value is 0; in CDPSDblOHLCUDUT and the old bars, where any of Open, High, Low
  // and Close is; in CDPSDblOHLCUDUTO only where all four are.
  [[nodiscard]] int HasNullPrice() const;
  // The fields in order, little-endian, nothing between them. A load that fails keeps what arrived.
  // The tick word is never stored.
  void Serialize(CArchive& archive);
  // Fills the record by field id and returns 1. A required field that is missing ends it with 0,
  // and what was read stays. CDPSDblDblH and CDPSDblDblL answer 0 always, CDPSDblOHLCUDUT and
  // CDPSDblOHLCUDUTO also where all values are 0.
  int SetFromQuote(const CZRGSQuote& quote);
  // Adds the fields in order, with status 3, and returns 1.
  int AppendToQuote(CZRGSQuote& quote) const;

  // The float of a column, which must be one of the stored ones.
  [[nodiscard]] float GetFloat(std::size_t column) const {
    return LoadFloat(static_cast<const Values*>(this), column);
  }
  // Puts `value` there.
  void SetFloat(std::size_t column, float value) {
    StoreFloat(static_cast<Values*>(this), column, value);
  }

  // 1 or 0: whether all floats are equal by value. A NaN equals nothing.
  friend int operator==(const Values& a, const Values& b) { return a.HasFloatsOf(b) ? 1 : 0; }
  friend int operator!=(const Values& a, const Values& b) { return a.HasFloatsOf(b) ? 0 : 1; }

 protected:
  // The body of ==.
  [[nodiscard]] bool HasFloatsOf(const ValueRecord& other) const;
  // How many floats files and quotes carry.
  static constexpr std::size_t kStored = RecordTable<Values>::rules.stored;
};

// The date and time in front of a stamped record.
struct PXDUTIL_API Stamp {
  std::uint16_t m_Date = 0;  // Julian day
  std::uint32_t m_Time = 0;  // seconds since midnight

  // Makes the null date and the null time.
  void SetStampToNull() {
    m_Date = CZRDate::GetNullJulianDate();
    m_Time = CZRTime::GetNullTime();
  }
  // Whether both are null.
  [[nodiscard]] bool IsStampNull() const {
    return m_Date == CZRDate::GetNullJulianDate() && m_Time == CZRTime::GetNullTime();
  }
  // Whether both are equal.
  [[nodiscard]] bool HasStampOf(const Stamp& other) const {
    return m_Date == other.m_Date && m_Time == other.m_Time;
  }
  // The two as one value, out and in.
  [[nodiscard]] CZRDateTime GetDateTime() const {
    return CZRDateTime(CZRDate(m_Date), CZRTime(m_Time));
  }
  void SetDateTime(const CZRDateTime& dateTime) {
    m_Date = dateTime.GetDate().GetJulianDate();
    m_Time = dateTime.GetTime().GetTime();
  }
  // Takes date and time from the first of the fields that the quote has. Whether both were there;
  // a date that was found stays also where the time is missing.
  bool ReadFrom(const CZRGSQuote& quote, const StampFields& fields);
};

// A value record behind a stamp.
template <class Values>
struct PXDUTIL_API Stamped : Stamp, Values {
  // The record without the stamp.
  using ValueRecordType = Values;

  // Makes the stamp null and all values 0.
  void SetToNull() {
    SetStampToNull();
    Values::SetToNull();
  }
  // 1 where the stamp is null and every float is 0; else 0.
  [[nodiscard]] int IsNull() const { return IsStampNull() && Values::IsNull() != 0 ? 1 : 0; }
  // The same as those of the record, with the date and the time in front.
  void Serialize(CArchive& archive);
  int SetFromQuote(const CZRGSQuote& quote);
  int AppendToQuote(CZRGSQuote& quote) const;

  // 1 or 0: whether stamp and floats are equal.
  friend int operator==(const Stamped& a, const Stamped& b) { return a.Equals(b) ? 1 : 0; }
  friend int operator!=(const Stamped& a, const Stamped& b) { return a.Equals(b) ? 0 : 1; }

 private:
  [[nodiscard]] bool Equals(const Stamped& other) const {
    return HasStampOf(other) && Values::HasFloatsOf(other);
  }
};

// The records whose order in time can be asked. The sense reads the other way round, and stays.
template <class Values>
struct PXDUTIL_API OrderedStamped : Stamped<Values> {
  // 1 if this record's date is greater than `other`'s, or the dates are equal and its time is
  // greater; else 0.
  [[nodiscard]] int IsOlder(const OrderedStamped& other) const {
    return this->GetDateTime() > other.GetDateTime() ? 1 : 0;
  }
};

}  // namespace pxd

// A close.
struct PXDUTIL_API CDPSDblC : pxd::ValueRecord<CDPSDblC> {
  // The price.
  float m_Close = 0.0F;
};

// A tick of a single value.
struct PXDUTIL_API CDPSDblTick : pxd::ValueRecord<CDPSDblTick> {
  // The value, or a marker.
  float m_Value = 0.0F;

  // Whether the value is the marker (markers.h).
  [[nodiscard]] bool IsAnEndOfMinuteTick() const { return m_Value == pxd::kEndOfMinute; }
  [[nodiscard]] bool IsAnEndOfSecondTick() const { return m_Value == pxd::kEndOfSecond; }
};

// A close and its volume.
struct PXDUTIL_API CDPSDblDblC : pxd::ValueRecord<CDPSDblDblC> {
  // The price, and how much was traded.
  float m_Close = 0.0F;
  float m_Vol = 0.0F;
};

// A high and its volume.
struct PXDUTIL_API CDPSDblDblH : pxd::ValueRecord<CDPSDblDblH> {
  // The price, and how much was traded.
  float m_High = 0.0F;
  float m_Vol = 0.0F;
};

// A low and its volume.
struct PXDUTIL_API CDPSDblDblL : pxd::ValueRecord<CDPSDblDblL> {
  // The price, and how much was traded.
  float m_Low = 0.0F;
  float m_Vol = 0.0F;
};

// A trade.
struct PXDUTIL_API CDPSDblDblTick : pxd::ValueRecord<CDPSDblDblTick> {
  // The price or a marker, and how much was traded.
  float m_Price = 0.0F;
  float m_Vol = 0.0F;
  // Above 0 up ticks, below 0 down ticks. Lives in memory alone: it is neither stored nor in
  // quotes, and loading keeps it.
  std::int32_t m_TickDir = 0;

  // Makes the values and the tick word 0.
  void SetToNull() {
    ValueRecord::SetToNull();
    m_TickDir = 0;
  }
  // Whether the price is the marker (markers.h).
  [[nodiscard]] bool IsAnEndOfMinuteTick() const { return m_Price == pxd::kEndOfMinute; }
  [[nodiscard]] bool IsAnEndOfSecondTick() const { return m_Price == pxd::kEndOfSecond; }
};

// A bar of seconds, minutes or several ticks.
struct PXDUTIL_API CDPSDblOHLCUDUT : pxd::ValueRecord<CDPSDblOHLCUDUT> {
  // Prices.
  float m_Open = 0.0F;
  float m_High = 0.0F;
  float m_Low = 0.0F;
  float m_Close = 0.0F;
  // Volumes: traded at rising, falling and unchanged prices, and in all.
  float m_UpVol = 0.0F;
  float m_DownVol = 0.0F;
  float m_UnchVol = 0.0F;
  float m_TotVol = 0.0F;
  // Trades, counted in the same way.
  float m_UpTicks = 0.0F;
  float m_DownTicks = 0.0F;
  float m_UnchTicks = 0.0F;
  float m_TotTicks = 0.0F;
};

// A bar of a day or longer.
struct PXDUTIL_API CDPSDblOHLCUDUTO : pxd::ValueRecord<CDPSDblOHLCUDUTO> {
  // Prices.
  float m_Open = 0.0F;
  float m_High = 0.0F;
  float m_Low = 0.0F;
  float m_Close = 0.0F;
  // Volumes: traded at rising, falling and unchanged prices, and in all.
  float m_UpVol = 0.0F;
  float m_DownVol = 0.0F;
  float m_UnchVol = 0.0F;
  float m_TotVol = 0.0F;
  // Trades, counted in the same way.
  float m_UpTicks = 0.0F;
  float m_DownTicks = 0.0F;
  float m_UnchTicks = 0.0F;
  float m_TotTicks = 0.0F;
  // Contracts left open.
  float m_OpenInt = 0.0F;
};

// The older form of CDPSDblOHLCUDUT.
struct PXDUTIL_API CDPSDblOHLCUDUTOld : pxd::ValueRecord<CDPSDblOHLCUDUTOld> {
  // Prices.
  float m_Open = 0.0F;
  float m_High = 0.0F;
  float m_Low = 0.0F;
  float m_Close = 0.0F;
  // Volumes: traded at rising, falling and unchanged prices, and in all.
  float m_UpVol = 0.0F;
  float m_DownVol = 0.0F;
  float m_UnchVol = 0.0F;
  float m_TotVol = 0.0F;
};

// The older form of CDPSDblOHLCUDUTO.
struct PXDUTIL_API CDPSDblOHLCUDUTOOld : pxd::ValueRecord<CDPSDblOHLCUDUTOOld> {
  // Prices.
  float m_Open = 0.0F;
  float m_High = 0.0F;
  float m_Low = 0.0F;
  float m_Close = 0.0F;
  // Volumes: traded at rising, falling and unchanged prices, and in all.
  float m_UpVol = 0.0F;
  float m_DownVol = 0.0F;
  float m_UnchVol = 0.0F;
  float m_TotVol = 0.0F;
  // Contracts left open.
  float m_OpenInt = 0.0F;
};

// The same records behind a date and a time, as history is stored.
struct PXDUTIL_API CDPSTDblC : pxd::Stamped<CDPSDblC> {};
struct PXDUTIL_API CDPSTDblTick : pxd::Stamped<CDPSDblTick> {};
struct PXDUTIL_API CDPSTDblDblC : pxd::Stamped<CDPSDblDblC> {};
struct PXDUTIL_API CDPSTDblDblH : pxd::Stamped<CDPSDblDblH> {};
struct PXDUTIL_API CDPSTDblDblL : pxd::Stamped<CDPSDblDblL> {};
struct PXDUTIL_API CDPSTDblDblTick : pxd::OrderedStamped<CDPSDblDblTick> {};
struct PXDUTIL_API CDPSTDblOHLCUDUT : pxd::OrderedStamped<CDPSDblOHLCUDUT> {};
struct PXDUTIL_API CDPSTDblOHLCUDUTO : pxd::Stamped<CDPSDblOHLCUDUTO> {};
struct PXDUTIL_API CDPSTDblOHLCUDUTOld : pxd::Stamped<CDPSDblOHLCUDUTOld> {};
struct PXDUTIL_API CDPSTDblOHLCUDUTOOld : pxd::Stamped<CDPSDblOHLCUDUTOOld> {};

#pragma pack(pop)

namespace pxd {

template <class Values>
void ValueRecord<Values>::SetToNull() {
  for (std::size_t i = 0; i < kStored; ++i) {
    SetFloat(i, 0.0F);
  }
}

template <class Values>
int ValueRecord<Values>::IsNull() const {
  for (std::size_t i = 0; i < kStored; ++i) {
    if (GetFloat(i) != 0.0F) {
      return 0;
    }
  }
  return 1;
}

template <class Values>
int ValueRecord<Values>::HasNullPrice() const {
  const auto isNull = [this](std::size_t column) { return GetFloat(column) == 0.0F; };
  switch (RecordTable<Values>::rules.nullPrice) {
    case NullPrice::kFirst:
      return isNull(0) ? 1 : 0;
    case NullPrice::kAnyOhlc:
      return isNull(kOpen) || isNull(kHigh) || isNull(kLow) || isNull(kClose) ? 1 : 0;
    case NullPrice::kAllOhlc:
      return isNull(kOpen) && isNull(kHigh) && isNull(kLow) && isNull(kClose) ? 1 : 0;
  }
  return 0;
}

template <class Values>
bool ValueRecord<Values>::HasFloatsOf(const ValueRecord& other) const {
  for (std::size_t i = 0; i < kStored; ++i) {
    if (!(GetFloat(i) == other.GetFloat(i))) {
      return false;
    }
  }
  return true;
}

}  // namespace pxd

// Every value record and its stamped form, for code and checks that run over all of them.
#define PXDUTIL_FOR_EACH_RECORD(X)           \
  X(CDPSDblC, CDPSTDblC)                     \
  X(CDPSDblTick, CDPSTDblTick)               \
  X(CDPSDblDblC, CDPSTDblDblC)               \
  X(CDPSDblDblH, CDPSTDblDblH)               \
  X(CDPSDblDblL, CDPSTDblDblL)               \
  X(CDPSDblDblTick, CDPSTDblDblTick)         \
  X(CDPSDblOHLCUDUT, CDPSTDblOHLCUDUT)       \
  X(CDPSDblOHLCUDUTO, CDPSTDblOHLCUDUTO)     \
  X(CDPSDblOHLCUDUTOld, CDPSTDblOHLCUDUTOld) \
  X(CDPSDblOHLCUDUTOOld, CDPSTDblOHLCUDUTOOld)

#if PXDUTIL_HAS_TEMPLATES
#define PXDUTIL_DECLARE_RECORD(values, stamped)    \
  extern template struct pxd::ValueRecord<values>; \
  extern template struct pxd::Stamped<values>;
PXDUTIL_FOR_EACH_RECORD(PXDUTIL_DECLARE_RECORD)
#undef PXDUTIL_DECLARE_RECORD
#endif

#define PXDUTIL_ASSERT_RECORD(values, stamped) static_assert(sizeof(stamped) == sizeof(values) + 6);
PXDUTIL_FOR_EACH_RECORD(PXDUTIL_ASSERT_RECORD)
#undef PXDUTIL_ASSERT_RECORD

namespace pxd {

// A series at once, for every record: StoreRecords(archive, span of const records) and
// LoadRecords(archive, span of records), to which vectors and arrays convert. Bytes, results and
// exceptions are those of Serialize called for one record after the other: a load that fails keeps
// the records and the fields that arrived. Storing into an archive that loads throws readOnly,
// loading from one that stores writeOnly, except where there are no records.
#define PXDUTIL_DECLARE_SERIES(values, stamped)                                       \
  PXDUTIL_API void StoreRecords(CArchive& archive, std::span<const values> records);  \
  PXDUTIL_API void StoreRecords(CArchive& archive, std::span<const stamped> records); \
  PXDUTIL_API void LoadRecords(CArchive& archive, std::span<values> records);         \
  PXDUTIL_API void LoadRecords(CArchive& archive, std::span<stamped> records);
PXDUTIL_FOR_EACH_RECORD(PXDUTIL_DECLARE_SERIES)
#undef PXDUTIL_DECLARE_SERIES

}  // namespace pxd

static_assert(sizeof(CDPSDblC) == 4 && sizeof(CDPSDblTick) == 4);
static_assert(sizeof(CDPSDblDblC) == 8 && sizeof(CDPSDblDblH) == 8 && sizeof(CDPSDblDblL) == 8);
static_assert(sizeof(CDPSDblDblTick) == 12);
static_assert(sizeof(CDPSDblOHLCUDUT) == 48 && sizeof(CDPSDblOHLCUDUTO) == 52);
static_assert(sizeof(CDPSDblOHLCUDUTOld) == 32 && sizeof(CDPSDblOHLCUDUTOOld) == 36);

#endif
