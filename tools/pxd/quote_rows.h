// A quote written down as CSV: a row a field, with its id, type, status and value.
//
//   id,type,status,value
//   280,date,4,2024-03-04
//   281,time,4,09:31:12
//   235,float,4,187.25
#ifndef PXDUTIL_TOOLS_PXD_QUOTE_ROWS_H
#define PXDUTIL_TOOLS_PXD_QUOTE_ROWS_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <pxdutil/quotes/quote.h>

#include "catalogue.h"

namespace pxd::tool {

// What was wrong, and in which line of the text, from 1.
struct QuoteRowError {
  std::uint64_t line = 0;
  std::string words;
};

// Adds a field for every row; a first row without an id is the header. An id is a number or a name
// of the catalogue, a type a name or a code, a status 0 to 15. Ids that come again are told in
// `notes` and keep their place. False, with the reason in `error`, at the first bad row; the quote
// then has the fields of the rows before it. Needs a QuotePool.
bool ReadQuoteRows(const BuiltInCatalogue& catalogue, std::string_view text, CZRGSQuote& quote,
                   std::vector<std::string>& notes, QuoteRowError& error);

// A table of the quote's fields.
std::string QuoteTable(const BuiltInCatalogue& catalogue, const CZRGSQuote& quote);

// Its date and time, and whether it is valid.
std::string QuoteSummary(const CZRGSQuote& quote);

}  // namespace pxd::tool

#endif
