// Splits CSV into rows of fields, as a stream: any number of rows in the memory of one.
//
// Bytes come in pieces of any size, which needn't end where rows do:
//
//   CsvScanner csv(longestRow);
//   for (std::string_view piece = ...; csv.Next(piece);) use(csv.Fields());   // for each piece
//   if (csv.Finish()) use(csv.Fields());
//
// Rows end with LF, CR LF or CR; lines that are blank are no rows. Spaces and tabs round a field
// don't belong to it. A field may stand in quotation marks, hold commas, line ends and blanks then,
// and marks that are doubled; a mark anywhere else is a fault of its row, of which the rest of the
// line is passed over. One scanner belongs to one thread.
//
// It is written here rather than taken from a package since it must say in which line a row began,
// however the bytes were cut, and since most rows are plain: those are split where they lie.
#ifndef PXDUTIL_TOOLS_PXD_CSV_SCANNER_H
#define PXDUTIL_TOOLS_PXD_CSV_SCANNER_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace pxd::tool {

class CsvScanner {
 public:
  enum class Fault : std::uint8_t {
    kNone,
    kStrayMark,  // a quotation mark that neither opens nor closes a field
    kOpenMark,   // the bytes end inside quotation marks
    kTooLong,    // the row is longer than was allowed
  };

  // Rows may have up to `longestRow` bytes, the first of their line end among them.
  explicit CsvScanner(std::size_t longestRow) : m_longestRow(longestRow) {}

  // Takes bytes off the front of `bytes` up to the end of a row. True where one stands complete, or
  // is bad; false where `bytes` is used up first.
  bool Next(std::string_view& bytes);
  // The end of the bytes. True where they held one more row, which lacked its line end.
  bool Finish();

  // The row behind a true result, until the next call. A bad one has no fields.
  [[nodiscard]] std::span<const std::string_view> Fields() const { return m_fields; }
  [[nodiscard]] Fault RowFault() const { return m_fault; }
  // The line in which the row began, from 1.
  [[nodiscard]] std::uint64_t Line() const { return m_rowLine; }

 private:
  enum class Place : std::uint8_t {
    kBetweenRows,
    kBeforeField,  // in a row, where a field or blanks before it may come
    kInPlain,
    kInMarks,
    kBehindMark,    // either the second half of a doubled mark follows, or the field is over
    kBehindField,   // blanks behind a closing mark
    kInFaultyLine,  // the rest of a bad row's last line
  };

  bool NextPlain(std::string_view& bytes);
  bool Take(char c);
  bool TakeFirst(char c);
  void TakePlain(char c);
  bool EndField(char c);
  bool EndRow();
  bool Fail(Fault fault, char last);
  void CountLine(char c);

  std::size_t m_longestRow;
  Place m_place = Place::kBetweenRows;
  std::uint64_t m_line = 1;
  bool m_behindCarriageReturn = false;

  // The row that is being read. A plain one lies in the caller's bytes; any other is gathered.
  std::uint64_t m_rowLine = 1;
  std::size_t m_rowBytes = 0;
  std::string m_text;
  std::vector<std::size_t> m_ends;
  std::size_t m_solid = 0;  // where the text ends without the blanks behind a plain field

  std::vector<std::string_view> m_fields;
  Fault m_fault = Fault::kNone;
};

}  // namespace pxd::tool

#endif
