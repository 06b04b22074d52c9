#include "bar_feed.h"

#include <fmt/format.h>

#include <algorithm>

#include <pxdutil/datapoints/bars/bar_builder.h>
#include <pxdutil/datapoints/calculated.h>
#include <pxdutil/datapoints/ohlc_bars.h>

#include "resolution_words.h"

namespace pxd::tool {
namespace {

using Calculated = CDPCDataPtCalculated;

// An empty bar of the pair, which is one that CanBuild.
std::unique_ptr<Calculated> MakeBar(const CFieldResoln& pair) {
  return std::unique_ptr<Calculated>(static_cast<Calculated*>(pair.CreateDataPt()));
}

// The same field at one minute, of which longer bars are built.
CFieldResoln MinutesOf(const CFieldResoln& pair) {
  CFieldResoln minutes = pair;
  minutes.SetResoln(CResoln(ZRGS_RESOLUTION{kUnitMinute, 1}));
  return minutes;
}

// What all feeds keep: the calendar, the counts, and the latest moment so far.
class FeedBase : public BarFeed {
 public:
  FeedBase(const ZRGS_SESSION& week, PointSink& sink) : m_calendar(week), m_sink(sink) {}

  std::size_t OfferAll(std::span<const CDPTDblDblTick> ticks) final {
    std::size_t firstLate = ticks.size();
    std::size_t taken = 0;
    for (std::size_t i = 0; i < ticks.size(); ++i) {
      const CZRDateTime moment = ticks[i].GetDPST().GetDateTime();
      if (moment >= m_latest) {
        m_latest = moment;
        continue;
      }
      firstLate = std::min(firstLate, i);
      TakeRun(ticks.subspan(taken, i - taken));
      ++m_counts.late;
      ++(TakeLate(ticks[i]) ? m_counts.taken : m_counts.leftOut);
      taken = i + 1;
    }
    TakeRun(ticks.subspan(taken));
    return firstLate;
  }

  [[nodiscard]] FeedCounts Counts() const override { return m_counts; }

 protected:
  // How many of the ticks were taken.
  virtual std::size_t TakeInOrder(std::span<const CDPTDblDblTick> ticks) = 0;
  // Whether the tick was taken.
  virtual bool TakeLate(const CDPTDblDblTick&) { return false; }

  void Emit(CDPDataPt& point) {
    ++m_counts.points;
    m_sink.Take(point);
  }

  // The close of the session in which, or in whose dribble window, the moment falls; null where it
  // falls in none.
  CZRDateTime SessionCloseAt(const CZRDateTime& moment) const {
    CZRDateTime open;
    CZRDateTime close;
    CZRGSSession::Status status = CZRGSSession::StatusClosed;
    unsigned long index = 0;
    m_calendar.GetSessionInfo(CZRGSSession::ResetNone, moment, open, close, status, index);
    const bool trades = status == CZRGSSession::StatusOpen || status == CZRGSSession::StatusDribble;
    return trades ? close : CZRDateTime();
  }

  CZRGSSession m_calendar;
  PointSink& m_sink;

 private:
  void TakeRun(std::span<const CDPTDblDblTick> ticks) {
    const std::size_t taken = TakeInOrder(ticks);
    m_counts.taken += taken;
    m_counts.outside += ticks.size() - taken;
  }

  FeedCounts m_counts;
  CZRDateTime m_latest{CZRDate(0), CZRTime(0U)};
};

bool IsTaken(BarBuilder::Result result) {
  return result == Calculated::AddIncluded || result == Calculated::AddStartedNewBar;
}

class IntradayFeed final : public FeedBase, private BarSink {
 public:
  IntradayFeed(const CFieldResoln& pair, const ZRGS_SESSION& week, PointSink& sink)
      : FeedBase(week, sink),
        m_bar(MakeBar(pair)),
        m_builder(*m_bar, pair.GetResoln(), m_calendar, *this) {}

  void Finish() override { m_builder.Finish(); }

 protected:
  std::size_t TakeInOrder(std::span<const CDPTDblDblTick> ticks) override {
    return m_builder.Add(ticks);
  }
  bool TakeLate(const CDPTDblDblTick& tick) override { return m_builder.AddLate(tick); }

 private:
  void Take(Calculated& bar) override { Emit(bar); }

  std::unique_ptr<Calculated> m_bar;
  BarBuilder m_builder;
};

class PeriodFeed final : public BarFeed, private PointSink, private BarSink {
 public:
  PeriodFeed(const CFieldResoln& pair, const ZRGS_SESSION& week, PointSink& sink)
      : m_calendar(week),
        m_sink(sink),
        m_bar(MakeBar(pair)),
        m_builder(*m_bar, pair.GetResoln(), m_calendar, *this),
        m_minutes(MinutesOf(pair), week, *this) {}

  // One by one, since the ticks in a minute are counted as it is handed on.
  std::size_t OfferAll(std::span<const CDPTDblDblTick> ticks) override {
    std::size_t firstLate = ticks.size();
    for (std::size_t i = 0; i < ticks.size(); ++i) {
      if (m_minutes.Offer(ticks[i])) {
        firstLate = std::min(firstLate, i);
      }
    }
    return firstLate;
  }

  void Finish() override {
    m_minutes.Finish();
    m_builder.Finish();
  }

  [[nodiscard]] FeedCounts Counts() const override {
    FeedCounts counts = m_minutes.Counts();
    counts.taken -= m_untaken;
    counts.outside += m_untaken;
    counts.points = m_points;
    return counts;
  }

 private:
  void Take(Calculated& bar) override {
    ++m_points;
    m_sink.Take(bar);
  }

  // A session may belong to no trading day; its minutes then have no place, nor have their ticks.
  void Take(CDPDataPt& minute) override {
    const std::uint64_t ticks = m_minutes.Counts().taken - m_ticksInMinutes;
    m_ticksInMinutes += ticks;
    if (!IsTaken(m_builder.Add(minute))) {
      m_untaken += ticks;
    }
  }

  CZRGSSession m_calendar;
  PointSink& m_sink;
  std::unique_ptr<Calculated> m_bar;
  BarBuilder m_builder;
  IntradayFeed m_minutes;
  std::uint64_t m_ticksInMinutes = 0;
  std::uint64_t m_untaken = 0;
  std::uint64_t m_points = 0;
};

class TickSeriesFeed final : public FeedBase {
 public:
  using FeedBase::FeedBase;
  void Finish() override {}

 protected:
  std::size_t TakeInOrder(std::span<const CDPTDblDblTick> ticks) override {
    std::size_t taken = 0;
    for (CDPTDblDblTick tick : ticks) {
      if (SessionCloseAt(tick.GetDPST().GetDateTime()).IsNullDateTime() == 0) {
        Emit(tick);
        ++taken;
      }
    }
    return taken;
  }
};

class TickBarFeed final : public FeedBase {
 public:
  TickBarFeed(const CFieldResoln& pair, const ZRGS_SESSION& week, PointSink& sink)
      : FeedBase(week, sink),
        m_ticksPerBar(pair.GetResoln().GetResolnQty()),
        m_bar(MakeBar(pair)) {}

  void Finish() override {
    if (m_ticks != 0) {
      Emit(*m_bar);
      m_bar->SetToNull();
      m_ticks = 0;
    }
  }

 protected:
  std::size_t TakeInOrder(std::span<const CDPTDblDblTick> ticks) override {
    const auto isTaken = [this](const CDPTDblDblTick& tick) { return Take(tick); };
    return static_cast<std::size_t>(std::count_if(ticks.begin(), ticks.end(), isTaken));
  }

 private:
  bool Take(const CDPTDblDblTick& tick) {
    const CZRDateTime moment = tick.GetDPST().GetDateTime();
    const CZRDateTime close = SessionCloseAt(moment);
    if (close.IsNullDateTime() != 0) {
      return false;
    }
    if (close != m_sessionClose) {
      Finish();
      m_sessionClose = close;
    }
    Calculated::TrendType trend = Calculated::TrendUp;
    m_bar->IncludeDataPtData(&tick, trend, nullptr);
    m_bar->SetZRDateTime(moment);
    if (++m_ticks == m_ticksPerBar) {
      Finish();
    }
    return true;
  }

  unsigned m_ticksPerBar;
  unsigned m_ticks = 0;
  std::unique_ptr<Calculated> m_bar;
  CZRDateTime m_sessionClose;
};

}  // namespace

bool CanBuild(const CFieldResoln& pair, const ZRGS_SESSION& week, std::string& error) {
  const CResoln resolution = pair.GetResoln();
  const unsigned short unit = resolution.GetResolnUnit();
  if (unit == kUnitYear) {
    error =
        "bars of years can't be built, since the calendar closes no year; expected months or "
        "shorter";
    return false;
  }
  const std::unique_ptr<CDPDataPt> point(pair.CreateDataPt());
  if (point == nullptr || (point->IsKindOf(RUNTIME_CLASS(CDPTDblDblTick)) == 0 &&
                           point->IsKindOf(RUNTIME_CLASS(CDPCDblOHLCUDUT)) == 0 &&
                           point->IsKindOf(RUNTIME_CLASS(CDPCDblOHLCUDUTO)) == 0)) {
    error = fmt::format(
        "\"{}\" can't be built from trades; expected a record, such as \"Trade Record\"",
        pair.GetString(StringFormatPlain).GetString());
    return false;
  }
  if (unit < kUnitDay) {
    return true;
  }
  if (resolution.GetResolnQty() != 1) {
    error = fmt::format(
        "bars of {} can't be built: a bar closes with every day, week or month; "
        "expected 1d, 1w or 1mo",
        ResolutionText(resolution));
    return false;
  }
  if (unit != kUnitWeek && CZRGSSession(week).GetNumResets() == 0) {
    error =
        "no session ends a trading day, so that no day closes; expected a session that isn't "
        "marked part";
    return false;
  }
  return true;
}

std::unique_ptr<BarFeed> MakeBarFeed(const CFieldResoln& pair, const ZRGS_SESSION& week,
                                     PointSink& sink) {
  const CResoln resolution = pair.GetResoln();
  if (resolution.GetResolnUnit() >= kUnitDay) {
    return std::make_unique<PeriodFeed>(pair, week, sink);
  }
  if (resolution.GetResolnUnit() != kUnitTick) {
    return std::make_unique<IntradayFeed>(pair, week, sink);
  }
  if (resolution.GetResolnQty() == 1) {
    return std::make_unique<TickSeriesFeed>(week, sink);
  }
  return std::make_unique<TickBarFeed>(pair, week, sink);
}

}  // namespace pxd::tool
