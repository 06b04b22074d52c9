// CDPCDataPtCalculated: the abstract base of points that stand for a span of time and are built
// from smaller points.
//
// A caller feeds a bar ticks or smaller bars in the order of time, and the bar decides for each
// whether it belongs to it. A bar's time stamp is the date-time at which it closes, which comes
// from the trading calendar and the resolution. The caller's loop:
//
//   auto result = bar.AddDataPt(&point, resolution, calendar, 0, trend, previous);
//   if (result == CDPCDataPtCalculated::AddBarComplete) {
//     store(bar);
//     result = bar.AddDataPt(&point, resolution, calendar, 1, trend, previous);
//   }
//
// pxd::BarBuilder is that loop, for whole series.
//
// A bar, and the calendar it is given, belong to one thread at a time: look-ups write to the
// calendar's caches.
#ifndef PXDUTIL_DATAPOINTS_CALCULATED_H
#define PXDUTIL_DATAPOINTS_CALCULATED_H

#include <pxdutil/datapoints/data_point.h>

class CResoln;
class CZRGSSession;

namespace pxd {
class BarBuilder;
struct AnswerSpan;
}  // namespace pxd
namespace pxd::detail {
class SlotMemo;
struct AddRules;
}  // namespace pxd::detail

#pragma pack(push, 1)

class PXDUTIL_API CDPCDataPtCalculated : public CDPDataPt {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CDPCDataPtCalculated);

 public:
  // Where a point fell; the same values as CZRGSSession::Status.
  enum DPTStatus : int {
    DPTStatusClosed = 0,    // outside the period and its windows
    DPTStatusInPeriod = 1,  // in the period, between two of its sessions
    DPTStatusOpen = 2,      // in a session
    DPTStatusDribble = 3,   // behind the close, in the dribble window
    DPTStatusReset = 4,     // behind the dribble window, in the reset window
  };

  // What became of a point that was offered.
  enum AddDataPtReturn : int {
    AddStartedNewBar = 0,   // the bar was cleared, and the point is the first of the next one
    AddBarComplete = 1,     // the point wasn't taken: the bar is complete, or was cleared at close
    AddOutsideSession = 2,  // the point wasn't taken: no trading then, and nothing to complete
    AddIncluded = 3,        // the point was merged into the bar
  };

  // The direction of the last tick that a merge took in; other merges leave it.
  enum TrendType : int {
    TrendUp = 1,    // counted as an up tick
    TrendDown = 2,  // counted as a down tick
  };

  // Offers a point. With `startNew` 0 a complete bar is left for the caller to take; with another
  // value it is cleared and the point starts the next. `prev` is the point before `pt` in the
  // series, or null; the old-format bars look at it.
  virtual AddDataPtReturn AddDataPt(const CDPDataPt* pt, const CResoln& resoln,
                                    const CZRGSSession& session, int startNew, TrendType& trend,
                                    const CDPDataPt* prev) = 0;
  // Merges a point without looking at its time. Points of classes that this one doesn't build from
  // are dropped without a word; classes are told by the exact run-time class.
  virtual void IncludeDataPtData(const CDPDataPt* pt, TrendType& trend, const CDPDataPt* prev) = 0;
  // 1 if `dt` is past this bar: it falls into no session or into a bar that closes later; else 0.
  virtual int CheckCloseTime(const CZRDateTime& dt, const CResoln& resoln,
                             const CZRGSSession& session) const;

 protected:
  // The close of the bar into which `dt` falls, with the calendar's status. Status 0 goes with a
  // null `close`.
  static DPTStatus GetNextBarCloseDateTime(const CZRGSSession& session, const CResoln& resoln,
                                           const CZRDateTime& dt, CZRDateTime& close);

  // The one body of AddDataPt, by the class's rules.
  AddDataPtReturn AddByRules(const pxd::detail::AddRules& rules, const CDPDataPt* pt,
                             const CResoln& resoln, const CZRGSSession& session, int startNew,
                             TrendType& trend, const CDPDataPt* prev);

 private:
  friend class pxd::BarBuilder;

  // GetNextBarCloseDateTime where `slots`, which may be null, don't know it; they get it to keep.
  static DPTStatus AskBarClose(const CZRGSSession& session, const CResoln& resoln,
                               const CZRDateTime& dt, CZRDateTime& close,
                               pxd::detail::SlotMemo* slots);
  // The same, asked of the calendar; `span`, where given, becomes a span round `dt` in which the
  // answer is the same, or stays as it is where none is known.
  static DPTStatus FindBarClose(const CZRGSSession& session, const CResoln& resoln,
                                const CZRDateTime& dt, CZRDateTime& close, pxd::AnswerSpan* span);
  // The moment by which a point is placed.
  static CZRDateTime MomentByRules(const pxd::detail::AddRules& rules, const CDPDataPt& pt);
  // AddDataPt of a point that falls there.
  AddDataPtReturn AddPlaced(const pxd::detail::AddRules& rules, DPTStatus status,
                            const CZRDateTime& close, const CDPDataPt* pt, int startNew,
                            TrendType& trend, const CDPDataPt* prev);
};

#pragma pack(pop)

// Declares the two building operations in a class of bars.
#define PXDUTIL_DECLARE_BUILDING                                                         \
  AddDataPtReturn AddDataPt(const CDPDataPt* pt, const CResoln& resoln,                  \
                            const CZRGSSession& session, int startNew, TrendType& trend, \
                            const CDPDataPt* prev) override;                             \
  void IncludeDataPtData(const CDPDataPt* pt, TrendType& trend, const CDPDataPt* prev) override

#endif
