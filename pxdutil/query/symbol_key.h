// SYMBOL_KEY: what a symbol is known by in a host's tables. No query class uses it; it holds the
// same four values that a symbol data query opens with.
//
//   std::map<SYMBOL_KEY, Chart, BySymbol> charts;  // BySymbol asks a.Compare(b) < 0
//
// A plain value; share it between threads as you would a std::string.
#ifndef PXDUTIL_QUERY_SYMBOL_KEY_H
#define PXDUTIL_QUERY_SYMBOL_KEY_H

#include <cstdint>
#include <string>

#include <pxdutil/foundation/export.h>

struct PXDUTIL_API SYMBOL_KEY {
  std::uint8_t dataSource = 0;  // the feed, as condition 207 names it
  std::uint8_t category = 0;    // the kind of symbol, as condition 190 names it
  std::uint16_t exchange = 0;   // the code of the exchange
  std::string symbol;           // the symbol's name

  // 1 where all four are equal, else 0; and the opposite.
  int operator==(const SYMBOL_KEY& other) const;
  int operator!=(const SYMBOL_KEY& other) const { return *this == other ? 0 : 1; }

  // Orders by the symbol first: below 0 where this one sorts before the other. Among equal symbols
  // the larger number comes first, by data source, exchange and then category: 1 where this key's
  // number is the smaller, -1 where it is the larger, 0 where all are equal.
  [[nodiscard]] int Compare(const SYMBOL_KEY& other) const;
};

#endif
