// Turns trades into the library's ticks: the ones that a quote with a field for each value would
// fill, without the quote.
#ifndef PXDUTIL_TOOLS_PXD_TRADE_TICKS_H
#define PXDUTIL_TOOLS_PXD_TRADE_TICKS_H

#include <cstdint>

#include <pxdutil/datapoints/ticks.h>
#include <pxdutil/quotes/quote.h>

#include "trades_csv.h"

namespace pxd::tool {

// Opens the pool of quote fields for as long as it lives. One in a program, around all quotes.
class QuotePool {
 public:
  QuotePool() { CZRGSQuote::Init(); }
  ~QuotePool() { CZRGSQuote::UnInit(); }
  QuotePool(const QuotePool&) = delete;
  QuotePool& operator=(const QuotePool&) = delete;
};

class TradeTicks {
 public:
  // Makes `tick` that of the trade. Its tick word is 1 where the price is above the one before, -1
  // where it is below, and that of the trade before where it is the same; the first trade counts
  // up. Every trade has a say in the next one's direction, also one that no session takes.
  void Fill(CDPTDblDblTick& tick, const Trade& trade);
  CDPTDblDblTick TickOf(const Trade& trade) {
    CDPTDblDblTick tick;
    Fill(tick, trade);
    return tick;
  }

 private:
  bool m_isFirst = true;
  double m_lastPrice = 0.0;
  std::int32_t m_direction = 1;
};

}  // namespace pxd::tool

#endif
