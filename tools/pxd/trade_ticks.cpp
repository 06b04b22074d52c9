#include "trade_ticks.h"

namespace pxd::tool {

void TradeTicks::Fill(CDPTDblDblTick& tick, const Trade& trade) {
  if (!m_isFirst && trade.price != m_lastPrice) {
    m_direction = trade.price > m_lastPrice ? 1 : -1;
  }
  m_isFirst = false;
  m_lastPrice = trade.price;

  CDPSTDblDblTick record;
  record.SetDateTime(trade.when);
  record.m_Price = static_cast<float>(trade.price);
  record.m_Vol = static_cast<float>(trade.volume);
  record.m_TickDir = m_direction;
  tick.SetDPST(record);
}

}  // namespace pxd::tool
