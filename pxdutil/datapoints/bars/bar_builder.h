// BarBuilder: the caller's loop round AddDataPt, for whole series.
//
// It offers points to a bar, hands each finished bar on, and asks the calendar only when the answer
// it had may have changed, so most points of a feed cost no look-up at all:
//
//   class Store : public pxd::BarSink {
//     void Take(CDPCDataPtCalculated& bar) override { bar.Serialize(archive); }
//   } store;
//   CDPCDblOHLCUDUT bar;
//   pxd::BarBuilder builder(bar, CResoln(ZRGS_RESOLUTION{3, 5}), calendar, store);
//   builder.Add(trades);   // a series, or one point at a time
//   builder.Finish();
//
// The bars are those that the loop over AddDataPt gives, for every class and resolution. One thread
// at a time may use a builder, its bar and its calendar.
#ifndef PXDUTIL_DATAPOINTS_BARS_BAR_BUILDER_H
#define PXDUTIL_DATAPOINTS_BARS_BAR_BUILDER_H

#include <cstddef>
#include <span>

#include <pxdutil/datapoints/calculated.h>
#include <pxdutil/datapoints/ticks.h>
#include <pxdutil/sessions/answer_span.h>
#include <pxdutil/sessions/resolution.h>
#include <pxdutil/sessions/session.h>

namespace pxd {

// Takes finished bars, in the order of time.
class PXDUTIL_API BarSink {
 public:
  virtual ~BarSink();
  // `bar` is the builder's and changes afterwards; copy what is to stay. What this throws comes out
  // of the call that finished the bar, and that point isn't in any bar then.
  virtual void Take(CDPCDataPtCalculated& bar) = 0;
};

class PXDUTIL_API BarBuilder {
 public:
  // What became of a point.
  using Result = CDPCDataPtCalculated::AddDataPtReturn;

  // Builds in `bar`, which may hold a bar that was begun before. `bar`, `calendar` and `sink` must
  // outlive the builder, and the list of `calendar` mustn't change as long as it works.
  BarBuilder(CDPCDataPtCalculated& bar, const CResoln& resolution, const CZRGSSession& calendar,
             BarSink& sink);
  ~BarBuilder();
  BarBuilder(const BarBuilder&) = delete;
  BarBuilder& operator=(const BarBuilder&) = delete;

  // Offers the next point of the series. A bar that it completes goes to the sink, once; then the
  // point is offered again, as the first of the next. AddIncluded or AddStartedNewBar where it was
  // taken; AddOutsideSession, or AddBarComplete where it completed a bar, where it wasn't. With a
  // bar of a class of your own the point must stay as it is up to the next call, which hands it on
  // as the point before.
  Result Add(const CDPDataPt& point);
  // The same for each trade of a series; the number that were taken. The fastest way there is.
  std::size_t Add(std::span<const CDPTDblDblTick> trades);
  // Offers a point that came late: true where it belongs to the bar that is being built, and was
  // taken in. It finishes no bar and begins none.
  bool AddLate(const CDPDataPt& point);

  // Whether a bar is being built.
  [[nodiscard]] bool IsBuilding() const;
  // Whether the bar that is being built is over when a clock on the exchange shows `now`, though no
  // point has come to complete it: CheckCloseTime of the bar. False where none is being built.
  [[nodiscard]] bool IsOver(const CZRDateTime& now) const;
  // Hands on the bar that is being built, if there is one. Another may be begun behind it.
  void Finish();

  // The direction of the last trade that a bar took in; TrendUp before the first.
  [[nodiscard]] CDPCDataPtCalculated::TrendType Trend() const { return m_trend; }

 private:
  // Where a moment belongs: GetNextBarCloseDateTime of all moments in the span.
  struct Slot {
    AnswerSpan span;
    CDPCDataPtCalculated::DPTStatus status = CDPCDataPtCalculated::DPTStatusClosed;
    CZRDateTime close;
  };

  Result Offer(const CDPDataPt& point, bool startNew);
  const Slot& SlotOf(const CZRDateTime& moment);
  std::size_t MergeRun(std::span<const CDPTDblDblTick> trades);
  void RememberPrevious(const CDPDataPt& point);
  void HandOn();

  CDPCDataPtCalculated& m_bar;
  CResoln m_resolution;
  const CZRGSSession& m_calendar;
  BarSink& m_sink;
  // How the bar's class places points; null for classes that do so in a way of their own.
  const detail::AddRules* m_rules;
  Slot m_slot;
  CDPCDataPtCalculated::TrendType m_trend = CDPCDataPtCalculated::TrendUp;
  // The point before, or what stands for it, for the classes that look at it.
  const CDPDataPt* m_previous = nullptr;
  CDPTDblDblTick m_standIn;
};

}  // namespace pxd

#endif
