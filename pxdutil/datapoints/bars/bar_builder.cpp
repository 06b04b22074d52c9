#include <pxdutil/datapoints/bars/bar_builder.h>

#include <optional>

#include <pxdutil/datapoints/bars/detail/add_rules.h>

namespace pxd {
namespace {

using Calculated = CDPCDataPtCalculated;

bool IsTaken(BarBuilder::Result result) {
  return result == Calculated::AddIncluded || result == Calculated::AddStartedNewBar;
}

}  // namespace

BarSink::~BarSink() = default;

BarBuilder::BarBuilder(Calculated& bar, const CResoln& resolution, const CZRGSSession& calendar,
                       BarSink& sink)
    : m_bar(bar),
      m_resolution(resolution),
      m_calendar(calendar),
      m_sink(sink),
      m_rules(detail::FindAddRules(bar)) {}

BarBuilder::~BarBuilder() = default;

const BarBuilder::Slot& BarBuilder::SlotOf(const CZRDateTime& moment) {
  if (!m_slot.span.Has(moment)) {
    m_slot.span = {};
    m_slot.status =
        Calculated::FindBarClose(m_calendar, m_resolution, moment, m_slot.close, &m_slot.span);
  }
  return m_slot;
}

BarBuilder::Result BarBuilder::Offer(const CDPDataPt& point, bool startNew) {
  const int start = startNew ? 1 : 0;
  if (m_rules == nullptr) {
    return m_bar.AddDataPt(&point, m_resolution, m_calendar, start, m_trend, m_previous);
  }
  const Slot& slot = SlotOf(Calculated::MomentByRules(*m_rules, point));
  return m_bar.AddPlaced(*m_rules, slot.status, slot.close, &point, start, m_trend, m_previous);
}

BarBuilder::Result BarBuilder::Add(const CDPDataPt& point) {
  Result result = Offer(point, false);
  if (result == Calculated::AddBarComplete) {
    HandOn();
    result = Offer(point, true);
    if (result == Calculated::AddBarComplete) {
      m_bar.SetToNull();  // a daily bar stays as it is over a point in the reset window
    }
  }
  RememberPrevious(point);
  return result;
}

std::size_t BarBuilder::Add(std::span<const CDPTDblDblTick> trades) {
  std::size_t taken = 0;
  while (!trades.empty()) {
    const std::size_t merged = MergeRun(trades);
    taken += merged;
    trades = trades.subspan(merged);
    if (!trades.empty()) {
      taken += IsTaken(Add(trades.front())) ? 1U : 0U;
      trades = trades.subspan(1);
    }
  }
  return taken;
}

// Merges the trades at the front that belong to the bar as it stands: AddDataPt would include each.
std::size_t BarBuilder::MergeRun(std::span<const CDPTDblDblTick> trades) {
  const bool takes =
      m_slot.status == Calculated::DPTStatusOpen || m_slot.status == Calculated::DPTStatusDribble;
  if (m_rules == nullptr || m_rules->mergeRun == nullptr || !takes ||
      m_slot.close != m_bar.GetZRDateTime()) {
    return 0;
  }
  const std::size_t merged = m_rules->mergeRun(m_bar, trades, m_slot.span, m_trend, m_previous);
  if (merged != 0) {
    RememberPrevious(trades[merged - 1]);
  }
  return merged;
}

bool BarBuilder::AddLate(const CDPDataPt& point) {
  return IsBuilding() && Offer(point, false) == Calculated::AddIncluded;
}

bool BarBuilder::IsBuilding() const {
  return m_bar.GetZRDateTime().IsNullDateTime() == 0;
}

bool BarBuilder::IsOver(const CZRDateTime& now) const {
  return IsBuilding() && m_bar.CheckCloseTime(now, m_resolution, m_calendar) != 0;
}

void BarBuilder::Finish() {
  if (IsBuilding()) {
    HandOn();
    m_bar.SetToNull();
  }
}

void BarBuilder::HandOn() {
  if (IsBuilding()) {
    m_sink.Take(m_bar);
  }
}

// The caller may use one object for all its points. What the library's bars look at in a point is
// its price, so a trade at that price stands for it.
void BarBuilder::RememberPrevious(const CDPDataPt& point) {
  if (m_rules == nullptr) {
    m_previous = &point;
  } else if (m_rules->consultsPrevious) {
    const std::optional<float> price = detail::PriceLeftBy(&point);
    m_standIn.SetDPST(CDPSTDblDblTick());  // any time stamp, but not the null one
    m_standIn.SetValues(price.value_or(0.0F), 0, 0);
    m_previous = price ? &m_standIn : nullptr;
  }
}

}  // namespace pxd
