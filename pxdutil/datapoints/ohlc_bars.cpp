#include <pxdutil/datapoints/ohlc_bars.h>

#include <pxdutil/datapoints/detail/record_point_impl.h>
#include <pxdutil/datapoints/ticks.h>
#include <pxdutil/foundation/numeric.h>

PXDUTIL_DEFINE_RUNTIME_CLASS(CDPCDblOHLCUDUT, CDPCDataPtCalculated, kNoSchema, nullptr)
PXDUTIL_DEFINE_RUNTIME_CLASS(CDPCDblOHLCUDUTO, CDPCDataPtCalculated, kNoSchema, nullptr)

template class pxd::detail::RecordPoint<CDPCDblOHLCUDUT, CDPCDataPtCalculated, CDPSTDblOHLCUDUT,
                                        pxd::detail::kOhlcRules>;
template class pxd::detail::RecordPoint<CDPCDblOHLCUDUTO, CDPCDataPtCalculated, CDPSTDblOHLCUDUTO,
                                        pxd::detail::kOhlcOpenIntRules>;

namespace {

constexpr unsigned char kDaySelector = 4;

bool ReadsDailyRecord(unsigned char selector) {
  return selector == 5 || selector == 6;
}

template <class Record>
void SetPrices(Record& record, float open, float high, float low, float close) {
  record.m_Open = open;
  record.m_High = high;
  record.m_Low = low;
  record.m_Close = close;
}

// Half of what is neither up nor down goes to each side.
template <class Record>
void ShareOutVolume(Record& record, long total, long up, long down) {
  // Three 32-bit numbers and their difference fit in 64 bits; the sums are cut back to 32.
  const std::int64_t wideUp = pxd::Low32(up);
  const std::int64_t wideDown = pxd::Low32(down);
  const std::int32_t rest =
      static_cast<std::int32_t>(std::int64_t{pxd::Low32(total)} - wideUp - wideDown);
  const std::int32_t share = rest / 2;
  record.m_TotVol = static_cast<float>(pxd::Low32(total));
  record.m_UpVol = static_cast<float>(pxd::WrappingAdd(pxd::Low32(up), share));
  record.m_DownVol = static_cast<float>(pxd::WrappingAdd(pxd::Low32(down), share));
  record.m_UnchVol = 0.0F;
}

// The same for ticks, in the unsigned width of Count, with the odd one to the up side.
template <class Count, class Record>
void ShareOutTicks(Record& record, unsigned long total, unsigned long up, unsigned long down) {
  const auto rest = static_cast<Count>(total - up - down);
  record.m_TotTicks = static_cast<float>(static_cast<std::uint32_t>(total));
  record.m_UpTicks = static_cast<float>(static_cast<std::uint32_t>(up + rest / 2 + rest % 2));
  record.m_DownTicks = static_cast<float>(static_cast<std::uint32_t>(down + rest / 2));
  record.m_UnchTicks = 0.0F;
}

// What a bar has in common with its old form: date, time, and the values up to the total volume.
template <class Record, class OldRecord>
void TakeOldForm(Record& record, const OldRecord& old) {
  record.m_Date = old.m_Date;
  record.m_Time = old.m_Time;
  for (std::size_t i = 0; i < pxd::kVolumesEnd; ++i) {
    record.SetFloat(i, old.GetFloat(i));
  }
  for (std::size_t i = pxd::kVolumesEnd; i < pxd::kSumsEnd; ++i) {
    record.SetFloat(i, 0.0F);
  }
}

}  // namespace

void CDPCDblOHLCUDUT::SetValues(float open, float high, float low, float close, long totVol,
                                long upVol, long downVol, unsigned short totTicks,
                                unsigned short upTicks, unsigned short downTicks) {
  SetPrices(m_Record, open, high, low, close);
  ShareOutVolume(m_Record, totVol, upVol, downVol);
  ShareOutTicks<std::uint16_t>(m_Record, totTicks, upTicks, downTicks);
}

void CDPCDblOHLCUDUT::SetEqualTo(CDPDataPt* other) {
  if (other->IsKindOf(RUNTIME_CLASS(CDPCDblOHLCUDUT))) {
    RecordPoint::SetEqualTo(other);
  } else {
    TakeOldForm(m_Record, pxd::detail::RecordOf<CDPSTDblOHLCUDUTOld>(*other));
  }
}

void CDPCDblOHLCUDUT::SetToNull() {
  m_Record.SetToNull();
  ResetPrevDailyRec();
  ClearFlags();
}

bool CDPCDblOHLCUDUT::TickNetted(CDPDataPt* tick, TrendType& trend) {
  if (!tick->IsKindOf(RUNTIME_CLASS(CDPTDblDblTick))) {
    return false;
  }
  const CDPSTDblDblTick& trade = static_cast<const CDPTDblDblTick*>(tick)->GetDPST();
  if (!m_Record.HasStampOf(trade) || trade.m_Price != m_Record.m_Close) {
    return false;
  }
  IncludeDataPtData(tick, trend, nullptr);
  return true;
}

CDPCDblOHLCUDUTO::CDPCDblOHLCUDUTO() {
  CDPCDblOHLCUDUTO::ResetPrevDailyRec();
}

void CDPCDblOHLCUDUTO::SetValues(float open, float high, float low, float close, long totVol,
                                 long upVol, long downVol, unsigned long totTicks,
                                 unsigned long upTicks, unsigned long downTicks, long openInt) {
  SetPrices(m_Record, open, high, low, close);
  ShareOutVolume(m_Record, totVol, upVol, downVol);
  ShareOutTicks<std::uint32_t>(m_Record, totTicks, upTicks, downTicks);
  const std::int32_t interest = pxd::Low32(openInt);
  m_Record.m_OpenInt = interest == kNoOpenInterest ? 0.0F : static_cast<float>(interest);
}

void CDPCDblOHLCUDUTO::GetDPValueForCol(unsigned int col, CDPValue& value) const {
  GetDPValueForColEx(col, value, 0);
}

void CDPCDblOHLCUDUTO::SetDPValueForCol(unsigned int col, CDPValue& value) {
  SetDPValueForColEx(col, value, kDaySelector);
}

void CDPCDblOHLCUDUTO::GetDPValueForColEx(unsigned int col, CDPValue& value,
                                          unsigned char selector) const {
  if (ReadsDailyRecord(selector) && col < pxd::kOpenInterest) {
    value.SetFloat(m_PrevDailyRec.GetFloat(col));
  } else {
    RecordPoint::GetDPValueForCol(col, value);
  }
}

void CDPCDblOHLCUDUTO::SetDPValueForColEx(unsigned int col, CDPValue& value,
                                          unsigned char selector) {
  if (!IsStored(col)) {
    return;
  }
  const float number = value.GetFloat();
  if (col == pxd::kClose) {
    m_Record.m_Close = number;
    m_PrevDailyRec.m_Close = number;
  } else if (selector == kDaySelector || col == pxd::kOpenInterest) {
    m_Record.SetFloat(col, number);
  } else {
    if (col >= pxd::kFirstVolume) {
      const float increase = number - m_PrevDailyRec.GetFloat(col);
      m_Record.SetFloat(col, m_Record.GetFloat(col) + increase);
    }
    m_PrevDailyRec.SetFloat(col, number);
  }
}

void CDPCDblOHLCUDUTO::ResetPrevDailyRec() {
  m_PrevDailyRec.SetToNull();
  m_PrevDailyRec.m_High = pxd::kBelowAllPrices;
  m_PrevDailyRec.m_Low = pxd::kAboveAllPrices;
}

void CDPCDblOHLCUDUTO::SetEqualTo(CDPDataPt* other) {
  if (other->IsKindOf(RUNTIME_CLASS(CDPCDblOHLCUDUTO))) {
    *this = *static_cast<const CDPCDblOHLCUDUTO*>(other);
  } else {
    const auto old = pxd::detail::RecordOf<CDPSTDblOHLCUDUTOOld>(*other);
    TakeOldForm(m_Record, old);
    m_Record.m_OpenInt = old.m_OpenInt;
  }
}

void CDPCDblOHLCUDUTO::SetToNull() {
  m_Record.SetToNull();
  ResetPrevDailyRec();
  ClearFlags();
}
