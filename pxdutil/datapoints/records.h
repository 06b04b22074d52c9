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
//
// Every value is a 32-bit float, whatever it counts, so whole numbers above 2^24 lose their last
// digits. Records are packed to one byte, hold no heap memory, and start as zeros; copying copies
// all of them. A reference to one of their members may be misaligned: copy the value instead.
//
// Operations of every record:
//   SetToNull      all values 0, and in a CDPST... the null date and time.
//   IsNull         1 if every float is 0 (-0 counts as 0), and in a CDPST... date and time are
//   null. HasNullPrice   1 if the first value is 0; CDPS...OHLCUDUT and the old bars: if any of
//   Open, High,
//                  Low, Close is; CDPS...OHLCUDUTO: only if all four are.
//   ==             1 if all floats are equal by value, and date and time.
//   Serialize      the fields in order, little-endian, nothing between them; a load that fails
//   keeps
//                  what arrived. The tick word is never stored.
//   SetFromQuote   fills the record by field id and returns 1. A required field that is missing
//                  ends it with 0, and what was read stays. CDPS...DblDblH and ...DblDblL answer 0
//                  always, CDPS...OHLCUDUT and ...OHLCUDUTO also where all values are 0.
//   AppendToQuote  adds the fields in order, with status 3; returns 1.
#ifndef PXDUTIL_DATAPOINTS_RECORDS_H
#define PXDUTIL_DATAPOINTS_RECORDS_H

#include <cstdint>

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
  void SetToNull();
  [[nodiscard]] int IsNull() const;
  [[nodiscard]] int HasNullPrice() const;
  void Serialize(CArchive& archive);
  int SetFromQuote(const CZRGSQuote& quote);
  int AppendToQuote(CZRGSQuote& quote) const;

  // The float of a column, which must be one of the stored ones.
  [[nodiscard]] float GetFloat(std::size_t column) const {
    return LoadFloat(static_cast<const Values*>(this), column);
  }
  void SetFloat(std::size_t column, float value) {
    StoreFloat(static_cast<Values*>(this), column, value);
  }

  friend int operator==(const Values& a, const Values& b) { return a.HasFloatsOf(b) ? 1 : 0; }
  friend int operator!=(const Values& a, const Values& b) { return a.HasFloatsOf(b) ? 0 : 1; }

 protected:
  [[nodiscard]] bool HasFloatsOf(const ValueRecord& other) const;
  static constexpr std::size_t kStored = RecordTable<Values>::rules.stored;
};

// The date and time in front of a stamped record.
struct PXDUTIL_API Stamp {
  std::uint16_t m_Date = 0;  // Julian day
  std::uint32_t m_Time = 0;  // seconds since midnight

  void SetStampToNull() {
    m_Date = CZRDate::GetNullJulianDate();
    m_Time = CZRTime::GetNullTime();
  }
  [[nodiscard]] bool IsStampNull() const {
    return m_Date == CZRDate::GetNullJulianDate() && m_Time == CZRTime::GetNullTime();
  }
  [[nodiscard]] bool HasStampOf(const Stamp& other) const {
    return m_Date == other.m_Date && m_Time == other.m_Time;
  }
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
  using ValueRecordType = Values;

  void SetToNull() {
    SetStampToNull();
    Values::SetToNull();
  }
  [[nodiscard]] int IsNull() const { return IsStampNull() && Values::IsNull() != 0 ? 1 : 0; }
  void Serialize(CArchive& archive);
  int SetFromQuote(const CZRGSQuote& quote);
  int AppendToQuote(CZRGSQuote& quote) const;

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

struct PXDUTIL_API CDPSDblC : pxd::ValueRecord<CDPSDblC> {
  float m_Close = 0.0F;
};

struct PXDUTIL_API CDPSDblTick : pxd::ValueRecord<CDPSDblTick> {
  float m_Value = 0.0F;

  [[nodiscard]] bool IsAnEndOfMinuteTick() const { return m_Value == pxd::kEndOfMinute; }
  [[nodiscard]] bool IsAnEndOfSecondTick() const { return m_Value == pxd::kEndOfSecond; }
};

struct PXDUTIL_API CDPSDblDblC : pxd::ValueRecord<CDPSDblDblC> {
  float m_Close = 0.0F;
  float m_Vol = 0.0F;
};

struct PXDUTIL_API CDPSDblDblH : pxd::ValueRecord<CDPSDblDblH> {
  float m_High = 0.0F;
  float m_Vol = 0.0F;
};

struct PXDUTIL_API CDPSDblDblL : pxd::ValueRecord<CDPSDblDblL> {
  float m_Low = 0.0F;
  float m_Vol = 0.0F;
};

struct PXDUTIL_API CDPSDblDblTick : pxd::ValueRecord<CDPSDblDblTick> {
  float m_Price = 0.0F;
  float m_Vol = 0.0F;
  // Above 0 up ticks, below 0 down ticks. Lives in memory alone: it is neither stored nor in
  // quotes, and loading keeps it.
  std::int32_t m_TickDir = 0;

  void SetToNull() {
    ValueRecord::SetToNull();
    m_TickDir = 0;
  }
  [[nodiscard]] bool IsAnEndOfMinuteTick() const { return m_Price == pxd::kEndOfMinute; }
  [[nodiscard]] bool IsAnEndOfSecondTick() const { return m_Price == pxd::kEndOfSecond; }
};

struct PXDUTIL_API CDPSDblOHLCUDUT : pxd::ValueRecord<CDPSDblOHLCUDUT> {
  float m_Open = 0.0F;
  float m_High = 0.0F;
  float m_Low = 0.0F;
  float m_Close = 0.0F;
  float m_UpVol = 0.0F;
  float m_DownVol = 0.0F;
  float m_UnchVol = 0.0F;
  float m_TotVol = 0.0F;
  float m_UpTicks = 0.0F;
  float m_DownTicks = 0.0F;
  float m_UnchTicks = 0.0F;
  float m_TotTicks = 0.0F;
};

struct PXDUTIL_API CDPSDblOHLCUDUTO : pxd::ValueRecord<CDPSDblOHLCUDUTO> {
  float m_Open = 0.0F;
  float m_High = 0.0F;
  float m_Low = 0.0F;
  float m_Close = 0.0F;
  float m_UpVol = 0.0F;
  float m_DownVol = 0.0F;
  float m_UnchVol = 0.0F;
  float m_TotVol = 0.0F;
  float m_UpTicks = 0.0F;
  float m_DownTicks = 0.0F;
  float m_UnchTicks = 0.0F;
  float m_TotTicks = 0.0F;
  float m_OpenInt = 0.0F;
};

struct PXDUTIL_API CDPSDblOHLCUDUTOld : pxd::ValueRecord<CDPSDblOHLCUDUTOld> {
  float m_Open = 0.0F;
  float m_High = 0.0F;
  float m_Low = 0.0F;
  float m_Close = 0.0F;
  float m_UpVol = 0.0F;
  float m_DownVol = 0.0F;
  float m_UnchVol = 0.0F;
  float m_TotVol = 0.0F;
};

struct PXDUTIL_API CDPSDblOHLCUDUTOOld : pxd::ValueRecord<CDPSDblOHLCUDUTOOld> {
  float m_Open = 0.0F;
  float m_High = 0.0F;
  float m_Low = 0.0F;
  float m_Close = 0.0F;
  float m_UpVol = 0.0F;
  float m_DownVol = 0.0F;
  float m_UnchVol = 0.0F;
  float m_TotVol = 0.0F;
  float m_OpenInt = 0.0F;
};

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

#define PXDUTIL_DECLARE_RECORD(values, stamped)    \
  extern template struct pxd::ValueRecord<values>; \
  extern template struct pxd::Stamped<values>;     \
  static_assert(sizeof(stamped) == sizeof(values) + 6);
PXDUTIL_FOR_EACH_RECORD(PXDUTIL_DECLARE_RECORD)
#undef PXDUTIL_DECLARE_RECORD

static_assert(sizeof(CDPSDblC) == 4 && sizeof(CDPSDblTick) == 4);
static_assert(sizeof(CDPSDblDblC) == 8 && sizeof(CDPSDblDblH) == 8 && sizeof(CDPSDblDblL) == 8);
static_assert(sizeof(CDPSDblDblTick) == 12);
static_assert(sizeof(CDPSDblOHLCUDUT) == 48 && sizeof(CDPSDblOHLCUDUTO) == 52);
static_assert(sizeof(CDPSDblOHLCUDUTOld) == 32 && sizeof(CDPSDblOHLCUDUTOOld) == 36);

#endif
