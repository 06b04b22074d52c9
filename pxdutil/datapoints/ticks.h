// Ticks, the finest data points: one time, one value, and for trades a volume and a direction.
//
//   CDPTDblDblTick tick;
//   tick.SetFromQuote(quote);
//   tick.SetZRDateTime(CZRDateTime(CZRDate(3, 4, 2024), CZRTime(9, 31, 0)));
//
// A fresh tick is null. A tick's columns are described by the catalogue entry of the field it was
// made for, so GetDPValueInfoForCol needs CFieldInfoMgr::m_pInstance; a field without an entry is a
// fault.
#ifndef PXDUTIL_DATAPOINTS_TICKS_H
#define PXDUTIL_DATAPOINTS_TICKS_H

#include <pxdutil/datapoints/detail/record_point.h>

#pragma pack(push, 1)

// The abstract base of ticks. It adds nothing.
class PXDUTIL_API CDPTDataPtTick : public CDPDataPt {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CDPTDataPtTick);
};

// A tick of a single value.
class PXDUTIL_API CDPTDblTick
    : public pxd::detail::RecordPoint<CDPTDblTick, CDPTDataPtTick, CDPSTDblTick,
                                      pxd::detail::kTickRules> {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CDPTDblTick);

 public:
  using RecordPoint::operator=;

  // `col` is ignored: the one column is the field itself.
  void GetDPValueInfoForCol(unsigned int col, CField field, CDPValueInfo& info) const override;
  // Column 0 only; any other throws with DPErrorPlain.
  void SetStringValForCol(unsigned int col, CString text) override;
  // Both ignore `col`.
  [[nodiscard]] double GetDoubleValForCol(unsigned int col) const override;
  void SetDoubleValForCol(unsigned int col, double value) override;
  [[nodiscard]] bool IsAnEndOfMinuteTick() const override;
  [[nodiscard]] bool IsAnEndOfSecondTick() const override;
};

// A trade: price, volume and the tick word, whose sign is the direction and whose magnitude is the
// number of ticks netted into it. The word shows as two columns, "UpTick" and "DnTick".
class PXDUTIL_API CDPTDblDblTick
    : public pxd::detail::RecordPoint<CDPTDblDblTick, CDPTDataPtTick, CDPSTDblDblTick,
                                      pxd::detail::kTradeTickRules> {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CDPTDblDblTick);

 public:
  using RecordPoint::operator=;

  // Stores all three; the volume becomes a float, the tick word keeps its low 32 bits.
  void SetValues(float price, long volume, long tickDir);

  // Describes element `col` of the atomic list of `field`; beyond the list it is a fault.
  void GetDPValueInfoForCol(unsigned int col, CField field, CDPValueInfo& info) const override;
  // Columns 2 and 3 read the up and the down part of the tick word, as a long, but both write the
  // whole word as it is.
  void GetDPValueForCol(unsigned int col, CDPValue& value) const override;
  void SetDPValueForCol(unsigned int col, CDPValue& value) override;
  // Columns 2 and 3 show the whole signed word.
  CString GetStringValForCol(unsigned int col) override;
  // Columns 2 and 3 cut the value towards zero into the tick word; unknown ones throw.
  void SetDoubleValForCol(unsigned int col, double value) override;
  [[nodiscard]] bool IsAnEndOfMinuteTick() const override;
  [[nodiscard]] bool IsAnEndOfSecondTick() const override;

  // Takes `other` into this tick if it is a trade of the same time stamp and price: the volume is
  // added and the tick word goes one up or down by the sign of `other`'s. Whether it did.
  bool TickNetted(CDPDataPt* other);
};

static_assert(sizeof(CDPTDblTick) == 11 + sizeof(void*));
static_assert(sizeof(CDPTDblDblTick) == 19 + sizeof(void*));

#pragma pack(pop)

#if PXDUTIL_HAS_TEMPLATES
extern template class pxd::detail::RecordPoint<CDPTDblTick, CDPTDataPtTick, CDPSTDblTick,
                                               pxd::detail::kTickRules>;
extern template class pxd::detail::RecordPoint<CDPTDblDblTick, CDPTDataPtTick, CDPSTDblDblTick,
                                               pxd::detail::kTradeTickRules>;
#endif

#endif
