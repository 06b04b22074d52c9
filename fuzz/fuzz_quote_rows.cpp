// Reads a quote from rows of fields. What is refused must be explained in one line, with a line of
// the text; what is taken must be shown.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <pxdutil/quotes/quote.h>
#include <tools/pxd/quote_rows.h>

#include "require.h"

using fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace pxd::tool;
  static const BuiltInCatalogue catalogue;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  CZRGSQuote::Init();
  {
    CZRGSQuote quote;
    std::vector<std::string> notes;
    QuoteRowError error;
    if (!ReadQuoteRows(catalogue, text, quote, notes, error)) {
      const auto isLineEnd = [](char c) { return c == '\n' || c == '\r'; };
      const auto lines =
          static_cast<std::uint64_t>(std::count_if(text.begin(), text.end(), isLineEnd)) + 1;
      Require(error.line >= 1 && error.line <= lines, "an error stands in no line of the text");
      Require(!error.words.empty() && error.words.find('\n') == std::string::npos,
              "an error isn't one line");
    }
    Require(!QuoteTable(catalogue, quote).empty() && !QuoteSummary(quote).empty(),
            "a quote wasn't shown");
  }
  CZRGSQuote::UnInit();
  return 0;
}
