// The OHLC bars: open, high, low, close, and the volumes and tick counts that went up, down,
// nowhere and in all. CDPCDblOHLCUDUT stands for seconds, minutes and several ticks,
// CDPCDblOHLCUDUTO, with open interest, for days and longer.
#ifndef PXDUTIL_DATAPOINTS_OHLC_BARS_H
#define PXDUTIL_DATAPOINTS_OHLC_BARS_H

#include <pxdutil/datapoints/calculated.h>
#include <pxdutil/datapoints/detail/record_point.h>

#pragma pack(push, 1)

class PXDUTIL_API CDPCDblOHLCUDUT
    : public pxd::detail::RecordPoint<CDPCDblOHLCUDUT, CDPCDataPtCalculated, CDPSTDblOHLCUDUT,
                                      pxd::detail::kOhlcRules> {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CDPCDblOHLCUDUT);

 public:
  using RecordPoint::operator=;

  // Fills the bar from figures that don't keep the unchanged amounts apart: these are shared out
  // between up and down. An odd unit of volume is lost, an odd tick goes up. The volumes keep their
  // low 32 bits; what is left of the ticks is counted in 16 bits.
  void SetValues(float open, float high, float low, float close, long totVol, long upVol,
                 long downVol, unsigned short totTicks, unsigned short upTicks,
                 unsigned short downTicks);

  // Copies a point of this class. Any other is read as the old form, CDPCDblOHLCUDUTOld: date, time
  // and eight values, and the tick counts become 0.
  void SetEqualTo(CDPDataPt* other) override;
  void SetToNull() override;
  PXDUTIL_DECLARE_BUILDING;

  // Takes in a trade of this bar's own time stamp at this bar's close. Whether it did.
  bool TickNetted(CDPDataPt* tick, TrendType& trend);
};

// Holds a second record, the last daily figures seen by a bar longer than a day, so that a running
// daily figure that is sent again and again adds to the bar just its increase. It isn't stored and
// not compared.
class PXDUTIL_API CDPCDblOHLCUDUTO
    : public pxd::detail::RecordPoint<CDPCDblOHLCUDUTO, CDPCDataPtCalculated, CDPSTDblOHLCUDUTO,
                                      pxd::detail::kOhlcOpenIntRules> {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CDPCDblOHLCUDUTO);

 public:
  // The open interest that says that there is none.
  static constexpr long kNoOpenInterest = -32080;

  // A null bar; the high and the low of the running daily record start beyond all prices.
  CDPCDblOHLCUDUTO();
  CDPCDblOHLCUDUTO(const CDPCDblOHLCUDUTO&) = default;
  CDPCDblOHLCUDUTO& operator=(const CDPCDblOHLCUDUTO&) = default;
  using RecordPoint::operator=;

  // As CDPCDblOHLCUDUT's, with ticks in 32 bits. An open interest of kNoOpenInterest stores 0.
  void SetValues(float open, float high, float low, float close, long totVol, long upVol,
                 long downVol, unsigned long totTicks, unsigned long upTicks,
                 unsigned long downTicks, long openInt);

  void GetDPValueForCol(unsigned int col, CDPValue& value) const override;
  void SetDPValueForCol(unsigned int col, CDPValue& value) override;
  // `selector` is the unit code of the bar's resolution. 5 (week) and 6 (month) read all columns
  // but open interest from the running daily record.
  void GetDPValueForColEx(unsigned int col, CDPValue& value, unsigned char selector) const override;
  // 4 (day) writes the bar, and Close in both records. Any other writes the running daily record:
  // Open, High and Low go there alone, Close to both, volumes and ticks there and their increase to
  // the bar, open interest to the bar.
  void SetDPValueForColEx(unsigned int col, CDPValue& value, unsigned char selector) override;
  void ResetPrevDailyRec() override;
  // As CDPCDblOHLCUDUT's, from CDPCDblOHLCUDUTOOld and with its open interest; the running daily
  // record then stays.
  void SetEqualTo(CDPDataPt* other) override;
  void SetToNull() override;
  PXDUTIL_DECLARE_BUILDING;

  // The running daily record.
  CDPSTDblOHLCUDUTO m_PrevDailyRec;
};

static_assert(sizeof(CDPCDblOHLCUDUT) == 55 + sizeof(void*));
static_assert(sizeof(CDPCDblOHLCUDUTO) == 117 + sizeof(void*));

#pragma pack(pop)

#if PXDUTIL_HAS_TEMPLATES
extern template class pxd::detail::RecordPoint<CDPCDblOHLCUDUT, CDPCDataPtCalculated,
                                               CDPSTDblOHLCUDUT, pxd::detail::kOhlcRules>;
extern template class pxd::detail::RecordPoint<CDPCDblOHLCUDUTO, CDPCDataPtCalculated,
                                               CDPSTDblOHLCUDUTO, pxd::detail::kOhlcOpenIntRules>;
#endif

#endif
