// pxd quote: rows of id, type, status and value as the quote that they make.
#include <fmt/format.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "../failure.h"
#include "../quote_rows.h"
#include "../streams.h"
#include "../trade_ticks.h"
#include "commands.h"

namespace pxd::tool {
namespace {

// A quote has at most 65535 fields, most of them short.
constexpr std::size_t kLargest = std::size_t{64} << 20;

void RunQuote(const std::string& path) {
  Input input(path);
  const std::string rows = WholeText(input, kLargest);
  const BuiltInCatalogue catalogue;
  const QuotePool pool;
  CZRGSQuote quote;
  std::vector<std::string> notes;
  QuoteRowError error;
  if (!ReadQuoteRows(catalogue, rows, quote, notes, error)) {
    throw Failure(kExitBadData, fmt::format("{}:{}: {}", input.Name(), error.line, error.words));
  }
  for (const std::string& note : notes) {
    Say("note: " + note);
  }
  Print(QuoteTable(catalogue, quote) + QuoteSummary(quote));
}

}  // namespace

Command QuoteCommand() {
  auto path = std::make_shared<std::string>();
  return {
      .name = "quote",
      .summary = "Show the quote that rows of fields make",
      .notes =
          "A row is id,type,status,value; a first row that begins with \"id\" is a header. An id "
          "is "
          "a\n"
          "number or a name of the catalogue. Types are time (09:31:12), date (2024-03-04), "
          "string,\n"
          "pieces (12/'a'), double, float, long, ulong, short, ushort, char, byte, stream and "
          "novalue,\n"
          "or their codes. A status is 0 to 15.",
      .options = {{.names = "FILE",
                   .target = path.get(),
                   .help = "CSV file of rows; - is standard input",
                   .isRequired = true,
                   .takesFile = true}},
      .run =
          [path] {
            RunQuote(*path);
            return kExitOk;
          },
  };
}

}  // namespace pxd::tool
