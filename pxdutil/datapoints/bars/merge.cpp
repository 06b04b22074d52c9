// How each class of bars takes a point in.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <typeinfo>

#include <pxdutil/datapoints/bars/detail/add_rules.h>
#include <pxdutil/datapoints/ohlc_bars.h>
#include <pxdutil/datapoints/old_bars.h>
#include <pxdutil/datapoints/plain_points.h>
#include <pxdutil/datapoints/short_bars.h>
#include <pxdutil/datapoints/ticks.h>
#include <pxdutil/foundation/numeric.h>
#include <pxdutil/sessions/answer_span.h>

namespace {

using pxd::detail::AddRules;

// The record of `pt` if its exact class is Point, else null.
template <class Point>
const typename Point::Record* RecordIf(const CDPDataPt* pt) {
  return pt->GetRuntimeClass() == Point::GetThisClass() ? &static_cast<const Point*>(pt)->GetDPST()
                                                        : nullptr;
}

// Ties and NaNs keep what was there.
template <class Record>
void Widen(Record& bar, float high, float low) {
  if (bar.m_High < high) {
    bar.m_High = high;
  }
  if (low < bar.m_Low) {
    bar.m_Low = low;
  }
}

template <class Record>
void SetOpenHighLow(Record& bar, float price) {
  bar.m_Open = price;
  bar.m_High = price;
  bar.m_Low = price;
}

template <class To, class From>
void CopyFloats(To& to, const From& from, std::size_t first, std::size_t end) {
  for (std::size_t i = first; i < end; ++i) {
    to.SetFloat(i, from.GetFloat(i));
  }
}

template <class To, class From>
void AddFloats(To& to, const From& from, std::size_t first, std::size_t end) {
  for (std::size_t i = first; i < end; ++i) {
    to.SetFloat(i, to.GetFloat(i) + from.GetFloat(i));
  }
}

// The word without its sign, but for the one that has no other, and without a branch.
std::int32_t Magnitude(std::int32_t word) {
  const std::int32_t sign = word >> 31;
  const auto mask = static_cast<std::uint32_t>(sign);
  return static_cast<std::int32_t>((static_cast<std::uint32_t>(word) ^ mask) - mask);
}

// What a trade adds to sums. A tick is up or down by its sign, a word of 0 is down, and the
// unchanged sums belong to other sources.
struct Growth {
  explicit Growth(const CDPSTDblDblTick& tick)
      : side(tick.m_TickDir > 0 ? 0 : 1),
        volume(tick.m_Vol),
        ticks(static_cast<float>(Magnitude(tick.m_TickDir))) {}

  // 0 is up, 1 is down. It is a place and not a branch, since no one foresees which way trades go.
  std::size_t side;
  float volume;
  float ticks;
};

template <class Record>
void AddFloat(Record& bar, std::size_t column, float value) {
  bar.SetFloat(column, bar.GetFloat(column) + value);
}

// The sums and the close take a trade in.
template <class Record>
void GrowByTick(Record& bar, const CDPSTDblDblTick& tick) {
  const Growth growth(tick);
  AddFloat(bar, pxd::kFirstVolume + growth.side, growth.volume);
  AddFloat(bar, pxd::kVolumesEnd + growth.side, growth.ticks);
  bar.m_TotVol += growth.volume;
  bar.m_TotTicks += growth.ticks;
  bar.m_Close = tick.m_Price;
}

// The same for many trades, with the sums kept out of the bar meanwhile. Every sum takes in the
// same volumes in the same order, so that it rounds as theirs do.
class RunOfTicks {
 public:
  template <class Record>
  explicit RunOfTicks(const Record& bar)
      : m_sides{{bar.m_UpVol, bar.m_UpTicks}, {bar.m_DownVol, bar.m_DownTicks}},
        m_total{bar.m_TotVol, bar.m_TotTicks} {}

  void Take(const Growth& growth) {
    m_sides[growth.side].Grow(growth);
    m_total.Grow(growth);
  }

  template <class Record>
  void Store(Record& bar) const {
    bar.m_UpVol = m_sides[0].volume;
    bar.m_UpTicks = m_sides[0].ticks;
    bar.m_DownVol = m_sides[1].volume;
    bar.m_DownTicks = m_sides[1].ticks;
    bar.m_TotVol = m_total.volume;
    bar.m_TotTicks = m_total.ticks;
  }

 private:
  struct Sums {
    float volume;
    float ticks;
    void Grow(const Growth& growth) {
      volume += growth.volume;
      ticks += growth.ticks;
    }
  };
  Sums m_sides[2];
  Sums m_total;
};

CDPCDataPtCalculated::TrendType TrendOf(const CDPSTDblDblTick& tick) {
  return tick.m_TickDir > 0 ? CDPCDataPtCalculated::TrendUp : CDPCDataPtCalculated::TrendDown;
}

// High, low, close and the sums up to `sumsEnd` take in a bar that has the same columns there.
template <class To, class From>
void MergeBar(To& bar, const From& pt, std::size_t sumsEnd) {
  Widen(bar, pt.m_High, pt.m_Low);
  bar.m_Close = pt.m_Close;
  AddFloats(bar, pt, pxd::kFirstVolume, sumsEnd);
}

}  // namespace

void CDPCDblOHLCUDUT::IncludeDataPtData(const CDPDataPt* pt, TrendType& trend, const CDPDataPt*) {
  const bool wasNull = IsNull() != 0;
  const auto takeBar = [&](const auto& record) {
    if (wasNull) {
      CopyFloats(m_Record, record, 0, pxd::kSumsEnd);
    } else {
      MergeBar(m_Record, record, pxd::kSumsEnd);
    }
  };
  if (const auto* tick = RecordIf<CDPTDblDblTick>(pt); tick != nullptr) {
    if (wasNull) {
      SetOpenHighLow(m_Record, tick->m_Price);
    }
    Widen(m_Record, tick->m_Price, tick->m_Price);
    trend = TrendOf(*tick);
    GrowByTick(m_Record, *tick);
  } else if (const auto* bar = RecordIf<CDPCDblOHLCUDUT>(pt); bar != nullptr) {
    takeBar(*bar);
  } else if (const auto* daily = RecordIf<CDPCDblOHLCUDUTO>(pt); daily != nullptr) {
    takeBar(*daily);
  }
}

void CDPCDblOHLCUDUTO::IncludeDataPtData(const CDPDataPt* pt, TrendType& trend, const CDPDataPt*) {
  const bool wasNull = IsNull() != 0;
  if (const auto* tick = RecordIf<CDPTDblDblTick>(pt); tick != nullptr) {
    // The bar's own high and low come from its first tick and from bars; a tick moves those of the
    // running daily record.
    if (wasNull) {
      SetOpenHighLow(m_Record, tick->m_Price);
    }
    if (m_Record.m_Open == 0.0F) {
      m_Record.m_Open = tick->m_Price;
    }
    trend = TrendOf(*tick);
    GrowByTick(m_Record, *tick);
    GrowByTick(m_PrevDailyRec, *tick);
    Widen(m_PrevDailyRec, tick->m_Price, tick->m_Price);
    if (m_PrevDailyRec.m_Open == 0.0F) {
      m_PrevDailyRec.m_Open = tick->m_Price;
    }
  } else if (const auto* bar = RecordIf<CDPCDblOHLCUDUT>(pt); bar != nullptr) {
    if (wasNull) {
      CopyFloats(m_Record, *bar, 0, pxd::kSumsEnd);
      m_Record.m_OpenInt = 0.0F;
    } else {
      MergeBar(m_Record, *bar, pxd::kSumsEnd);
    }
  } else if (const auto* daily = RecordIf<CDPCDblOHLCUDUTO>(pt); daily != nullptr) {
    // A daily record counts from the start of its day: a second one of a day repeats the first.
    const bool sameDay =
        !wasNull && m_PrevDailyRec.IsNull() == 0 && m_PrevDailyRec.m_Date == daily->m_Date;
    if (wasNull) {
      CopyFloats(m_Record, *daily, 0, pxd::kOpenInterest + 1);
    } else {
      m_Record.m_Close = daily->m_Close;
      m_Record.m_OpenInt = daily->m_OpenInt;
      AddFloats(m_Record, *daily, pxd::kFirstVolume, pxd::kSumsEnd);
      if (sameDay) {
        for (std::size_t i = pxd::kFirstVolume; i < pxd::kSumsEnd; ++i) {
          m_Record.SetFloat(i, m_Record.GetFloat(i) - m_PrevDailyRec.GetFloat(i));
        }
      } else {
        Widen(m_Record, daily->m_High, daily->m_Low);
      }
    }
    CopyFloats(m_PrevDailyRec, *daily, 0, pxd::kOpenInterest + 1);
    m_PrevDailyRec.m_Date = daily->m_Date;
  }
}

namespace {

// The price before a trade, against which the old bars tell up from down.
struct Reference {
  bool found;  // it comes from the point before, and counts even if it is 0
  float price;
};

Reference PriceBefore(const CDPDataPt* prev, bool consultsPrev, float close) {
  const auto left = consultsPrev ? pxd::detail::PriceLeftBy(prev) : std::nullopt;
  return left ? Reference{true, *left} : Reference{false, close};
}

template <class Record>
void DivideVolume(Record& bar, const CDPSTDblDblTick& tick, const Reference& before) {
  const bool compares = before.found || before.price != 0.0F;
  if (compares && before.price < tick.m_Price) {
    bar.m_UpVol += tick.m_Vol;
  } else if (compares && before.price > tick.m_Price) {
    bar.m_DownVol += tick.m_Vol;
  } else {
    bar.m_UnchVol += tick.m_Vol;
  }
  bar.m_TotVol += tick.m_Vol;
  bar.m_Close = tick.m_Price;
}

}  // namespace

void CDPCDblOHLCUDUTOld::IncludeDataPtData(const CDPDataPt* pt, TrendType&, const CDPDataPt* prev) {
  const bool wasNull = IsNull() != 0;
  const auto takeBar = [&](const auto& record) {
    if (wasNull) {
      CopyFloats(m_Record, record, 0, pxd::kVolumesEnd);
    } else {
      MergeBar(m_Record, record, pxd::kVolumesEnd);
    }
  };
  if (const auto* tick = RecordIf<CDPTDblDblTick>(pt); tick != nullptr) {
    const Reference before = PriceBefore(prev, wasNull, m_Record.m_Close);
    if (wasNull) {
      SetOpenHighLow(m_Record, tick->m_Price);
    }
    Widen(m_Record, tick->m_Price, tick->m_Price);
    DivideVolume(m_Record, *tick, before);
  } else if (const auto* bar = RecordIf<CDPCDblOHLCUDUTOld>(pt); bar != nullptr) {
    takeBar(*bar);
  } else if (const auto* barWithInterest = RecordIf<CDPCDblOHLCUDUTOOld>(pt);
             barWithInterest != nullptr) {
    takeBar(*barWithInterest);
  }
}

void CDPCDblOHLCUDUTOOld::IncludeDataPtData(const CDPDataPt* pt, TrendType&,
                                            const CDPDataPt* prev) {
  const bool wasNull = IsNull() != 0;
  const auto takeBar = [&](const auto& record, float openInterest) {
    if (wasNull) {
      CopyFloats(m_Record, record, 0, pxd::kVolumesEnd);
      m_Record.m_OpenInt = openInterest;
    } else {
      MergeBar(m_Record, record, pxd::kVolumesEnd);
    }
  };
  if (const auto* tick = RecordIf<CDPTDblDblTick>(pt); tick != nullptr) {
    const float price = tick->m_Price;
    const Reference before = PriceBefore(prev, m_Record.m_Close == 0.0F, m_Record.m_Close);
    if (wasNull) {
      SetOpenHighLow(m_Record, price);
    }
    if (m_Record.m_Open == 0.0F) {
      m_Record.m_Open = price;
    }
    if (m_Record.m_Low == 0.0F) {
      m_Record.m_Low = price;  // a low of 0 counts as unset in this class
    }
    Widen(m_Record, price, price);
    DivideVolume(m_Record, *tick, before);
  } else if (const auto* bar = RecordIf<CDPCDblOHLCUDUTOld>(pt); bar != nullptr) {
    takeBar(*bar, 0.0F);
  } else if (const auto* barWithInterest = RecordIf<CDPCDblOHLCUDUTOOld>(pt);
             barWithInterest != nullptr) {
    takeBar(*barWithInterest, barWithInterest->m_OpenInt);
  }
}

namespace {

// Both values of a tick or of a bar of the class itself, where `wanted` says so of the first.
template <class Tick, class Self, class Record, class Wanted>
void TakeValues(Record& own, const CDPDataPt* pt, Wanted wanted) {
  const auto take = [&](const auto& record) {
    if (wanted(record.GetFloat(0))) {
      CopyFloats(own, record, 0, pxd::RecordTable<typename Record::ValueRecordType>::rules.stored);
    }
  };
  if (const auto* tick = RecordIf<Tick>(pt); tick != nullptr) {
    take(*tick);
  } else if (const auto* bar = RecordIf<Self>(pt); bar != nullptr) {
    take(*bar);
  }
}

}  // namespace

void CDPCDblC::IncludeDataPtData(const CDPDataPt* pt, TrendType&, const CDPDataPt*) {
  TakeValues<CDPTDblTick, CDPCDblC>(m_Record, pt, [](float) { return true; });
}

void CDPCDblDblC::IncludeDataPtData(const CDPDataPt* pt, TrendType&, const CDPDataPt*) {
  TakeValues<CDPTDblDblTick, CDPCDblDblC>(m_Record, pt, [](float) { return true; });
}

void CDPCDblDblH::IncludeDataPtData(const CDPDataPt* pt, TrendType&, const CDPDataPt*) {
  const bool wasNull = IsNull() != 0;
  const float high = m_Record.m_High;
  TakeValues<CDPTDblDblTick, CDPCDblDblH>(m_Record, pt,
                                          [&](float value) { return wasNull || high <= value; });
}

void CDPCDblDblL::IncludeDataPtData(const CDPDataPt* pt, TrendType&, const CDPDataPt*) {
  const bool wasNull = IsNull() != 0;
  const float low = m_Record.m_Low;
  TakeValues<CDPTDblDblTick, CDPCDblDblL>(m_Record, pt,
                                          [&](float value) { return wasNull || low >= value; });
}

void CDPCnv::IncludeDataPtData(const CDPDataPt* pt, TrendType&, const CDPDataPt*) {
  if (const auto* record = RecordIf<CDPCnv>(pt); record != nullptr && pt->HasNullPrice() == 0) {
    m_Record.m_Winning = record->m_Winning;
    m_Record.m_Losing = record->m_Losing;
    m_Record.m_IsNull = 0;
  }
}

void CDPOptDaily::IncludeDataPtData(const CDPDataPt* pt, TrendType&, const CDPDataPt*) {
  const auto* const daily = RecordIf<CDPOptDaily>(pt);
  if (daily == nullptr) {
    return;
  }
  const bool wasNull = IsNull() != 0;
  const bool sameDay =
      !wasNull && m_PrevDailyRec.IsNull() == 0 && m_PrevDailyRec.m_Date == daily->m_Date;
  if (wasNull) {
    m_Record = *daily;
    m_Record.m_VolSum = daily->m_ImpliedVol;
    m_Record.m_VolCount = 1;
  } else {
    ++m_Record.m_VolCount;
    m_Record.m_PutVol += daily->m_PutVol;
    m_Record.m_CallVol += daily->m_CallVol;
    m_Record.m_PutOpenInt = daily->m_PutOpenInt;
    m_Record.m_CallOpenInt = daily->m_CallOpenInt;
    m_Record.m_VolSum += daily->m_ImpliedVol;
    if (sameDay) {
      m_Record.m_PutVol -= m_PrevDailyRec.m_PutVol;
      m_Record.m_CallVol -= m_PrevDailyRec.m_CallVol;
      m_Record.m_VolSum -= m_PrevDailyRec.m_ImpliedVol;
      --m_Record.m_VolCount;
    }
    m_Record.m_ImpliedVol = m_Record.m_VolCount != 0
                                ? m_Record.m_VolSum / static_cast<float>(m_Record.m_VolCount)
                                : 0.0F;
  }
  m_PrevDailyRec = *daily;
}

namespace {

using TrendType = CDPCDataPtCalculated::TrendType;

// Hands on the records of the trades at the front that lie in the span, and counts them.
template <class Take>
std::size_t ForEachIn(const pxd::AnswerSpan span, std::span<const CDPTDblDblTick> trades,
                      Take take) {
  std::size_t taken = 0;
  for (const CDPTDblDblTick& trade : trades) {
    const CDPSTDblDblTick& tick = trade.GetDPST();
    if (!span.Has(tick.GetDateTime())) {
      break;
    }
    take(tick);
    ++taken;
  }
  return taken;
}

std::size_t MergeIntradayRun(CDPCDataPtCalculated& bar, std::span<const CDPTDblDblTick> trades,
                             const pxd::AnswerSpan& span, TrendType& trend, const CDPDataPt*) {
  auto& own = static_cast<CDPCDblOHLCUDUT&>(bar);
  CDPSTDblOHLCUDUT record = own.GetDPST();
  RunOfTicks sums(record);
  float high = record.m_High;
  float low = record.m_Low;
  const std::size_t taken = ForEachIn(span, trades, [&](const CDPSTDblDblTick& tick) {
    const float price = tick.m_Price;
    high = high < price ? price : high;
    low = price < low ? price : low;
    sums.Take(Growth(tick));
  });
  if (taken != 0) {
    const CDPSTDblDblTick& last = trades[taken - 1].GetDPST();
    record.m_High = high;
    record.m_Low = low;
    record.m_Close = last.m_Price;
    sums.Store(record);
    own.SetDPST(record);
    trend = TrendOf(last);
  }
  return taken;
}

std::size_t MergeDailyRun(CDPCDataPtCalculated& bar, std::span<const CDPTDblDblTick> trades,
                          const pxd::AnswerSpan& span, TrendType& trend, const CDPDataPt*) {
  auto& own = static_cast<CDPCDblOHLCUDUTO&>(bar);
  CDPSTDblOHLCUDUTO record = own.GetDPST();
  CDPSTDblOHLCUDUTO running = own.m_PrevDailyRec;
  RunOfTicks sums(record);
  RunOfTicks runningSums(running);
  float open = record.m_Open;
  float runningOpen = running.m_Open;
  float high = running.m_High;
  float low = running.m_Low;
  const std::size_t taken = ForEachIn(span, trades, [&](const CDPSTDblDblTick& tick) {
    const float price = tick.m_Price;
    open = open == 0.0F ? price : open;
    runningOpen = runningOpen == 0.0F ? price : runningOpen;
    high = high < price ? price : high;
    low = price < low ? price : low;
    const Growth growth(tick);
    sums.Take(growth);
    runningSums.Take(growth);
  });
  if (taken != 0) {
    const CDPSTDblDblTick& last = trades[taken - 1].GetDPST();
    record.m_Open = open;
    record.m_Close = last.m_Price;
    sums.Store(record);
    own.SetDPST(record);
    running.m_Open = runningOpen;
    running.m_High = high;
    running.m_Low = low;
    running.m_Close = last.m_Price;
    runningSums.Store(running);
    own.m_PrevDailyRec = running;
    trend = TrendOf(last);
  }
  return taken;
}

// For the classes that keep no sums, or look at the trade before.
std::size_t MergeOneByOne(CDPCDataPtCalculated& bar, std::span<const CDPTDblDblTick> trades,
                          const pxd::AnswerSpan& span, TrendType& trend,
                          const CDPDataPt* previous) {
  std::size_t taken = 0;
  while (taken < trades.size() && span.Has(trades[taken].GetDPST().GetDateTime())) {
    bar.IncludeDataPtData(&trades[taken], trend, previous);
    previous = &trades[taken];
    ++taken;
  }
  return taken;
}

constexpr const CRuntimeClass* kTrade = RUNTIME_CLASS(CDPTDblDblTick);
constexpr AddRules kDailyRules = {kTrade, true, false, false, false, &MergeDailyRun};
constexpr AddRules kIntradayRules = {kTrade, true, true, false, false, &MergeIntradayRun};
constexpr AddRules kLowRules = {kTrade, true, true, false, false, &MergeOneByOne};
// The old bars tell up from down by the price before.
constexpr AddRules kOldDailyRules = {kTrade, true, false, false, true, &MergeOneByOne};
constexpr AddRules kOldIntradayRules = {kTrade, true, true, false, true, &MergeOneByOne};
// The high's bar places every point at its own stamp; its siblings step back.
constexpr AddRules kHighRules = {kTrade, false, true, false, false, &MergeOneByOne};
constexpr AddRules kCloseVolumeRules = {kTrade, true, true, true, false, &MergeOneByOne};
constexpr AddRules kCloseRules = {RUNTIME_CLASS(CDPTDblTick), true, true, true, false, nullptr};

}  // namespace

// One row a class: by which rules its points are placed.
#define PXDUTIL_FOR_EACH_BAR(X)            \
  X(CDPCDblOHLCUDUTO, kDailyRules)         \
  X(CDPCDblOHLCUDUTOOld, kOldDailyRules)   \
  X(CDPCDblOHLCUDUT, kIntradayRules)       \
  X(CDPCDblDblL, kLowRules)                \
  X(CDPCDblOHLCUDUTOld, kOldIntradayRules) \
  X(CDPCDblDblH, kHighRules)               \
  X(CDPCDblDblC, kCloseVolumeRules)        \
  X(CDPCDblC, kCloseRules)

#define PXDUTIL_DEFINE_ADD(bar, rules)                                                             \
  CDPCDataPtCalculated::AddDataPtReturn bar::AddDataPt(const CDPDataPt* pt, const CResoln& resoln, \
                                                       const CZRGSSession& session, int startNew,  \
                                                       TrendType& trend, const CDPDataPt* prev) {  \
    return AddByRules(rules, pt, resoln, session, startNew, trend, prev);                          \
  }
PXDUTIL_FOR_EACH_BAR(PXDUTIL_DEFINE_ADD)
#undef PXDUTIL_DEFINE_ADD

// A class that derives from one of these without a record of its own counts as a class of its own
// all the same, since it may place and merge points otherwise.
const AddRules* pxd::detail::FindAddRules(const CDPCDataPtCalculated& bar) {
  const std::type_info& type = typeid(bar);
#define PXDUTIL_RULES_ROW(bar, rules) \
  if (type == typeid(bar)) {          \
    return &::rules;                  \
  }
  PXDUTIL_FOR_EACH_BAR(PXDUTIL_RULES_ROW)
#undef PXDUTIL_RULES_ROW
  return nullptr;
}

// The prices are copied, since an optional takes references, and none may be formed to packed ones.
std::optional<float> pxd::detail::PriceLeftBy(const CDPDataPt* previous) {
  if (previous == nullptr || previous->IsNull() != 0) {
    return std::nullopt;
  }
  if (const auto* tick = RecordIf<CDPTDblDblTick>(previous); tick != nullptr) {
    return float{tick->m_Price};
  }
  if (const auto* bar = RecordIf<CDPCDblOHLCUDUTOld>(previous); bar != nullptr) {
    return float{bar->m_Close};
  }
  if (const auto* bar = RecordIf<CDPCDblOHLCUDUTOOld>(previous); bar != nullptr) {
    return float{bar->m_Close};
  }
  return 0.0F;
}
