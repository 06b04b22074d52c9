// When a bar closes, and what becomes of a point that is offered to it.
#include <algorithm>
#include <cstdint>
#include <limits>

#include <pxdutil/datapoints/calculated.h>

#include <pxdutil/datapoints/bars/detail/add_rules.h>
#include <pxdutil/sessions/detail/slot_memo.h>
#include <pxdutil/sessions/detail/week_index.h>
#include <pxdutil/sessions/resolution.h>
#include <pxdutil/sessions/session.h>

PXDUTIL_DEFINE_RUNTIME_CLASS(CDPCDataPtCalculated, CDPDataPt, kNoSchema, nullptr)

namespace {

// The period that a bar of this resolution stands for. The quantity plays no part in days and
// longer: a bar of two days closes with each day.
CZRGSSession::ResetType PeriodOf(const CResoln& resoln) {
  switch (resoln.GetResolnUnitType()) {
    case CResoln::ResolnTypeDay:
      return CZRGSSession::ResetDay;
    case CResoln::ResolnTypeWeek:
      return CZRGSSession::ResetWeek;
    case CResoln::ResolnTypeMonth:
      return CZRGSSession::ResetMonth;
    case CResoln::ResolnTypeYear:
      return CZRGSSession::ResetYear;
    case CResoln::ResolnTypeTick:
    case CResoln::ResolnTypeSecond:
    case CResoln::ResolnTypeMinute:
      break;
  }
  return CZRGSSession::ResetNone;
}

std::int64_t SecondsOf(const CZRDateTimeSpan& span) {
  return std::int64_t{span.GetNumDays()} * pxd::kSecondsPerDay +
         static_cast<std::int64_t>(span.GetNumSeconds());
}

// Within a session that runs from `open` to `close`, the end of the interval into which `moment`
// falls. Intervals are counted from the open; the last one is cut short at the close. False where
// there are no intervals to count.
bool IntervalEnd(const CResoln& resoln, const CZRDateTime& open, const CZRDateTime& moment,
                 CZRDateTime& close) {
  const CZRDateTimeSpan width = resoln.GetDateTimeSpan();
  const std::int64_t seconds = SecondsOf(width);
  if (seconds == 0 || moment < open) {
    return false;
  }
  // Only where a close has wrapped round all days is the number too large for its word, which then
  // holds the least there is, as processors convert it.
  const std::int64_t whole = SecondsOf(moment - open) / seconds;
  const bool fits = whole < std::numeric_limits<int>::max();
  CZRDateTimeSpan upToEnd = width;
  upToEnd *= (fits ? static_cast<int>(whole) : std::numeric_limits<int>::min()) + 1;
  CZRDateTime end = open;
  end += upToEnd;
  if (end <= close) {
    close = end;
  }
  return true;
}

// Cuts a span round `moment` down to the interval into which it falls.
void CutToInterval(const CResoln& resoln, const CZRDateTime& open, const CZRDateTime& moment,
                   pxd::AnswerSpan& span) {
  const std::int64_t width = SecondsOf(resoln.GetDateTimeSpan());
  const std::int64_t passed = SecondsOf(moment - open);
  const std::int64_t from = moment.GetTime().GetTime() - passed % width;
  span.from = static_cast<unsigned>(std::max<std::int64_t>(span.from, from));
  span.until = static_cast<unsigned>(std::min<std::int64_t>(span.until, from + width));
}

}  // namespace

CDPCDataPtCalculated::DPTStatus CDPCDataPtCalculated::GetNextBarCloseDateTime(
    const CZRGSSession& session, const CResoln& resoln, const CZRDateTime& dt, CZRDateTime& close) {
  pxd::detail::SlotMemo* const slots = pxd::detail::SlotsOf(session);
  const pxd::detail::Slot* const slot = slots != nullptr ? slots->Find(resoln, dt) : nullptr;
  if (slot == nullptr) {
    return AskBarClose(session, resoln, dt, close, slots);
  }
  close = slot->close;
  return static_cast<DPTStatus>(slot->status);
}

CDPCDataPtCalculated::DPTStatus CDPCDataPtCalculated::AskBarClose(const CZRGSSession& session,
                                                                  const CResoln& resoln,
                                                                  const CZRDateTime& dt,
                                                                  CZRDateTime& close,
                                                                  pxd::detail::SlotMemo* slots) {
  // Months may change though the slots stay.
  if (slots == nullptr || PeriodOf(resoln) == CZRGSSession::ResetMonth) {
    return FindBarClose(session, resoln, dt, close, nullptr);
  }
  pxd::AnswerSpan span;
  const DPTStatus status = FindBarClose(session, resoln, dt, close, &span);
  slots->Keep(resoln, {span, status, close});
  return status;
}

CDPCDataPtCalculated::DPTStatus CDPCDataPtCalculated::FindBarClose(const CZRGSSession& session,
                                                                   const CResoln& resoln,
                                                                   const CZRDateTime& dt,
                                                                   CZRDateTime& close,
                                                                   pxd::AnswerSpan* span) {
  const CZRGSSession::ResetType period = PeriodOf(resoln);
  CZRDateTime open;
  CZRGSSession::Status status = CZRGSSession::StatusClosed;
  unsigned long index = 0;
  bool found =
      dt.IsNullDateTime() == 0 &&
      session.GetSessionInfo(period, dt, open, close, status, index) == CZRGSSession::ReturnOK &&
      status != CZRGSSession::StatusClosed;
  const bool hasSpan = span != nullptr && session.FindAnswerSpan(period, dt, *span);
  if (found && period == CZRGSSession::ResetNone && status != CZRGSSession::StatusReset) {
    // A late print belongs to the session's last bar, wherever in the dribble window it falls.
    const CZRDateTime moment = status == CZRGSSession::StatusDribble ? close : dt;
    found = IntervalEnd(resoln, open, moment, close);
    if (found && hasSpan && status == CZRGSSession::StatusOpen) {
      CutToInterval(resoln, open, dt, *span);
    }
  }
  if (!found) {
    close.SetNullDateTime();
    return DPTStatusClosed;
  }
  return static_cast<DPTStatus>(status);
}

int CDPCDataPtCalculated::CheckCloseTime(const CZRDateTime& dt, const CResoln& resoln,
                                         const CZRGSSession& session) const {
  CZRDateTime close;
  if (GetNextBarCloseDateTime(session, resoln, dt, close) == DPTStatusClosed) {
    return 1;
  }
  // Asking a point for its date-time changes nothing, though the operation isn't const.
  return close > const_cast<CDPCDataPtCalculated*>(this)->GetZRDateTime() ? 1 : 0;
}

CZRDateTime CDPCDataPtCalculated::MomentByRules(const pxd::detail::AddRules& rules,
                                                const CDPDataPt& pt) {
  CZRDateTime moment = const_cast<CDPDataPt&>(pt).GetZRDateTime();
  if (rules.stepsBack && moment.IsNullDateTime() == 0 &&
      pt.GetRuntimeClass() != rules.momentClass) {
    moment -= CZRDateTimeSpan(0, 1);
  }
  return moment;
}

CDPCDataPtCalculated::AddDataPtReturn CDPCDataPtCalculated::AddByRules(
    const pxd::detail::AddRules& rules, const CDPDataPt* pt, const CResoln& resoln,
    const CZRGSSession& session, int startNew, TrendType& trend, const CDPDataPt* prev) {
  CZRDateTime close;
  const DPTStatus status =
      GetNextBarCloseDateTime(session, resoln, MomentByRules(rules, *pt), close);
  return AddPlaced(rules, status, close, pt, startNew, trend, prev);
}

CDPCDataPtCalculated::AddDataPtReturn CDPCDataPtCalculated::AddPlaced(
    const pxd::detail::AddRules& rules, DPTStatus status, const CZRDateTime& close,
    const CDPDataPt* pt, int startNew, TrendType& trend, const CDPDataPt* prev) {
  if (status == DPTStatusReset && rules.resetIsClosed) {
    status = DPTStatusClosed;
  }
  switch (status) {
    case DPTStatusClosed:
      if (IsNull() != 0) {
        return AddOutsideSession;
      }
      if (startNew != 0) {
        SetToNull();
      }
      return AddBarComplete;
    case DPTStatusInPeriod:
      return AddOutsideSession;
    case DPTStatusReset:
      return AddBarComplete;
    case DPTStatusOpen:
    case DPTStatusDribble:
      break;
  }

  const CZRDateTime stamp = GetZRDateTime();
  if (close == stamp) {
    IncludeDataPtData(pt, trend, prev);
    return AddIncluded;
  }
  const bool empty = stamp.IsNullDateTime() != 0;
  if (startNew == 0 && (!empty || rules.emptyBarWaits)) {
    return AddBarComplete;
  }
  if (!empty || rules.emptyBarWaits) {
    SetToNull();
  }
  IncludeDataPtData(pt, trend, prev);
  SetZRDateTime(close);
  return empty ? AddIncluded : AddStartedNewBar;
}
