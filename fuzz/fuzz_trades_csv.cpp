// Reads trades from CSV, in one piece and in many, and builds bars of them.
//
// The input's first byte says how large the pieces are and whether bad rows are skipped; the rest
// is the file. However the bytes are cut, the trades, the counts and the words of an error are the
// same.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <pxdutil/datapoints/ohlc_bars.h>
#include <pxdutil/quotes/quote.h>
#include <tools/pxd/bar_feed.h>
#include <tools/pxd/catalogue.h>
#include <tools/pxd/trade_ticks.h>
#include <tools/pxd/trades_csv.h>

#include "require.h"

namespace {

using fuzz::Require;
using namespace pxd::tool;

struct Outcome {
  bool good = false;
  std::vector<Trade> trades;
  std::uint64_t badRows = 0;
  std::uint64_t errorLine = 0;
  std::string error;

  friend bool operator==(const Outcome& a, const Outcome& b) {
    const auto same = [](const Trade& x, const Trade& y) {
      return x.when == y.when && x.price == y.price && x.volume == y.volume && x.line == y.line;
    };
    return a.good == b.good && a.badRows == b.badRows && a.error == b.error &&
           (a.good || a.errorLine == b.errorLine) &&
           std::equal(a.trades.begin(), a.trades.end(), b.trades.begin(), b.trades.end(), same);
  }
};

class Collect final : public TradeSink {
 public:
  explicit Collect(std::vector<Trade>& trades) : m_trades(trades) {}
  void Take(const Trade& trade) override { m_trades.push_back(trade); }

 private:
  std::vector<Trade>& m_trades;
};

Outcome ReadInPieces(std::string_view text, std::size_t piece, bool skipBad) {
  Outcome outcome;
  Collect sink(outcome.trades);
  TradeOptions options;
  options.skipBad = skipBad;
  TradesCsv csv(options, sink);
  bool good = true;
  while (good && !text.empty()) {
    good = csv.Feed(text.substr(0, piece));
    text.remove_prefix(std::min(piece, text.size()));
  }
  outcome.good = good && csv.Finish();
  outcome.badRows = csv.BadRows();
  if (!outcome.good) {
    outcome.error = csv.Error();
    outcome.errorLine = csv.ErrorLine();
    Require(!outcome.error.empty(), "a bad file wasn't explained");
  }
  return outcome;
}

class CheckOrder final : public PointSink {
 public:
  void Take(CDPDataPt& point) override {
    const CZRDateTime stamp = point.GetZRDateTime();
    Require(stamp.IsNullDateTime() == 0, "a bar without a time was handed on");
    Require(m_last.IsNullDateTime() != 0 || m_last <= stamp, "bars went back in time");
    m_last = stamp;
    m_bars.push_back(static_cast<const CDPCDblOHLCUDUT&>(point));
  }
  [[nodiscard]] const std::vector<CDPCDblOHLCUDUT>& Bars() const { return m_bars; }

 private:
  CZRDateTime m_last;
  std::vector<CDPCDblOHLCUDUT> m_bars;
};

// The bars of the ticks, of which so many are offered at a time, and what became of the ticks.
void Build(const std::vector<CDPTDblDblTick>& ticks, std::size_t atATime, CheckOrder& sink,
           FeedCounts& counts, std::size_t& firstLate) {
  ZRGS_SESSION week;
  CZRGSSession::BuildZRGS_SESSIONFromString(
      "5:2010,2400,30,10,1;3450,3840,30,10,1;4890,5280,30,10,1;6330,6720,30,10,1;7770,8160,30,10,1",
      week);
  const auto feed = MakeBarFeed(CFieldResoln(ZRGS_FIELD_RESOLUTION{201, {3, 1}}), week, sink);
  firstLate = ticks.size();
  for (std::span<const CDPTDblDblTick> rest = ticks; !rest.empty();) {
    const auto some = rest.first(std::min(atATime, rest.size()));
    const std::size_t late = feed->OfferAll(some);
    if (late != some.size()) {
      firstLate = std::min(firstLate, ticks.size() - rest.size() + late);
    }
    rest = rest.subspan(some.size());
  }
  feed->Finish();
  counts = feed->Counts();
  Require(counts.taken + counts.outside + counts.leftOut == ticks.size(), "a trade went missing");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    return 0;
  }
  const std::string_view text(reinterpret_cast<const char*>(data + 1), size - 1);
  const bool skipBad = (data[0] & 0x80) != 0;
  const std::size_t piece = (data[0] & 0x7FU) + std::size_t{1};
  const Outcome whole = ReadInPieces(text, text.size() + 1, skipBad);
  Require(whole == ReadInPieces(text, piece, skipBad), "where the bytes are cut made a difference");

  static const BuiltInCatalogue catalogue;
  CZRGSQuote::Init();
  {
    TradeTicks maker;
    std::vector<CDPTDblDblTick> ticks(whole.trades.size());
    for (std::size_t i = 0; i < ticks.size(); ++i) {
      maker.Fill(ticks[i], whole.trades[i]);
    }
    CheckOrder one;
    CheckOrder some;
    FeedCounts countsOfOne;
    FeedCounts countsOfSome;
    std::size_t lateOfOne = 0;
    std::size_t lateOfSome = 0;
    Build(ticks, 1, one, countsOfOne, lateOfOne);
    Build(ticks, piece, some, countsOfSome, lateOfSome);
    Require(countsOfOne == countsOfSome && lateOfOne == lateOfSome && one.Bars() == some.Bars(),
            "how many ticks were offered at a time made a difference");
  }
  CZRGSQuote::UnInit();
  return 0;
}
