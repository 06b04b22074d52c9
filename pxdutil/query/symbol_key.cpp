#include <pxdutil/query/symbol_key.h>

#include <tuple>

int SYMBOL_KEY::operator==(const SYMBOL_KEY& other) const {
  return std::tie(dataSource, category, exchange, symbol) ==
                 std::tie(other.dataSource, other.category, other.exchange, other.symbol)
             ? 1
             : 0;
}

int SYMBOL_KEY::Compare(const SYMBOL_KEY& other) const {
  if (const int bySymbol = symbol.compare(other.symbol); bySymbol != 0) {
    return bySymbol;
  }
  const auto mine = std::tie(dataSource, exchange, category);
  const auto others = std::tie(other.dataSource, other.exchange, other.category);
  // Sorted containers of hosts are built on the two directions being opposite.
  return mine < others ? 1 : mine > others ? -1 : 0;
}
