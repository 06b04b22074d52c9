// Trades from CSV, as a stream: any number of rows in the memory of one.
//
// The first row names the columns. Bytes come in pieces of any size, which needn't end where rows
// do:
//
//   TradesCsv csv(options, sink);
//   while (there is more) if (!csv.Feed(piece)) report(csv.ErrorLine(), csv.Error());
//   if (!csv.Finish()) report(...);
//
// Fields may be quoted and hold line ends then; lines end with LF, CR LF or CR; a byte order mark
// and blank lines are passed over. A row is bad if its number of columns isn't the header's, if a
// date, time, price or volume can't be read or is out of range, or if it is longer than
// kLongestRow. One parser belongs to one thread.
#ifndef PXDUTIL_TOOLS_PXD_TRADES_CSV_H
#define PXDUTIL_TOOLS_PXD_TRADES_CSV_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <pxdutil/sessions/date_time.h>

#include "csv_scanner.h"
#include "trade_columns.h"

namespace pxd::tool {

struct Trade {
  CZRDateTime when;        // on the exchange's clock
  double price = 0.0;      // finite as a 32-bit float
  double volume = 0.0;     // the same, and not negative
  std::uint64_t line = 0;  // where the row starts, from 1
};

class TradeSink {
 public:
  virtual ~TradeSink() = default;
  virtual void Take(const Trade& trade) = 0;
};

struct TradeOptions {
  ColumnNames columns;
  // Seconds that move the file's clock to the exchange's.
  std::int32_t shift = 0;
  // Bad rows are counted and passed over. A bad header isn't a row.
  bool skipBad = false;
};

class TradesCsv {
 public:
  static constexpr std::size_t kLongestRow = 64 * std::size_t{1024};

  // `sink` must outlive the parser.
  TradesCsv(const TradeOptions& options, TradeSink& sink);

  // False at the first bad row, or a bad header: then nothing more may be fed.
  bool Feed(std::string_view bytes);
  // The end of the bytes: the last row may lack its line end.
  bool Finish();

  // Behind a false result: what is wrong and what was expected, and the line where the row starts.
  [[nodiscard]] const std::string& Error() const { return m_error; }
  [[nodiscard]] std::uint64_t ErrorLine() const { return m_csv.Line(); }

  [[nodiscard]] std::uint64_t BadRows() const { return m_badRows; }
  // The first bad row that was passed over: its line and what was wrong with it.
  [[nodiscard]] std::uint64_t FirstBadLine() const { return m_firstBadLine; }
  [[nodiscard]] const std::string& FirstBadError() const { return m_firstBadError; }

 private:
  bool TakeBytes(std::string_view bytes);
  bool TakeRow();
  bool TakeHeader();
  bool RowIsBad(std::string problem);
  bool ReadValues(std::string& problem);
  std::string_view ReadValue(ColumnRole role, std::string_view text);
  CZRDate DateOf(std::string_view text);
  bool Complete(std::string& problem);

  TradeOptions m_options;
  TradeSink& m_sink;
  TradeColumns m_columns;
  CsvScanner m_csv{kLongestRow};

  bool m_hasHeader = false;
  // What of a byte order mark has come so far; the whole of it once it is decided.
  std::size_t m_markBytes = 0;
  bool m_markDecided = false;

  // The row that is being read; what it doesn't have is null.
  CZRDate m_date;
  CZRTime m_time;
  CZRDateTime m_stamp;
  Trade m_trade;
  // The date that was read last, and its text; empty for none.
  std::string m_lastDateText;
  CZRDate m_lastDate;

  std::string m_error;
  std::uint64_t m_badRows = 0;
  std::uint64_t m_firstBadLine = 0;
  std::string m_firstBadError;
};

}  // namespace pxd::tool

#endif
