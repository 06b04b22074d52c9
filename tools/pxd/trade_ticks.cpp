#include "trade_ticks.h"

namespace pxd::tool {
namespace {

// Fields of the catalogue, and the status of a value as it comes from the market.
constexpr unsigned short kFieldClose = 235;
constexpr unsigned short kFieldVolume = 249;
constexpr unsigned short kFieldDate = 280;
constexpr unsigned short kFieldTime = 281;
constexpr unsigned char kRealTime = 4;

constexpr unsigned int kDirectionColumn = 2;

}  // namespace

const CDPTDblDblTick& TradeTicks::TickOf(const Trade& trade) {
  m_quote.Empty(1);
  m_quote.AddFieldDate(kRealTime, kFieldDate, trade.when.GetDate().GetJulianDate());
  m_quote.AddFieldTime(kRealTime, kFieldTime, trade.when.GetTime().GetTime());
  m_quote.AddFieldDouble(kRealTime, kFieldClose, trade.price);
  m_quote.AddFieldDouble(kRealTime, kFieldVolume, trade.volume);
  m_tick.SetFromQuote(m_quote);

  if (!m_isFirst && trade.price != m_lastPrice) {
    m_direction = trade.price > m_lastPrice ? 1 : -1;
  }
  m_isFirst = false;
  m_lastPrice = trade.price;
  CDPValue direction(m_direction);
  m_tick.SetDPValueForCol(kDirectionColumn, direction);
  return m_tick;
}

}  // namespace pxd::tool
