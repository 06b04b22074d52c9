// Splits CSV into rows of fields, as a stream: any number of rows in the memory of one.
//
// Bytes come in pieces of any size, which needn't end where rows do:
//
//   CsvScanner csv(longestRow);
//   for (csv.Give(piece); csv.Next();) use(csv.Fields());   // for each piece
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

  // The next piece, which must stay where it is until it is used up. The one before is forgotten.
  void Give(std::string_view bytes);
  // Goes on to the end of a row. True where one stands complete, or is bad; false where the piece
  // is used up first.
  bool Next();
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

  // The bytes up to ',' in the order of their codes, all that a plain row is cut at among them. The
  // search looks at many bytes at once, since few are any of these, and so runs ahead of the rows.
  class Stops {
   public:
    void Begin(std::string_view bytes);
    // Forgets those ahead of `place`, which doesn't go back.
    void SkipTo(const char* place);
    // The next one, the end of the bytes where there is none.
    const char* Next();

   private:
    static constexpr std::ptrdiff_t kBlock = 64;

    static std::uint64_t Among(const char* block, const char* end);

    const char* m_block = nullptr;
    const char* m_end = nullptr;
    // A bit for each byte of the block, the first the lowest: whether it is one that is still to
    // come.
    std::uint64_t m_found = 0;
  };

  bool NextPlain();
  bool Take(char c);
  bool TakeFirst(char c);
  void TakePlain(char c);
  bool EndField(char c);
  bool EndRow();
  bool Fail(Fault fault, char last);
  void CountLine(char c);

  std::size_t m_longestRow;
  // What is left of the piece.
  const char* m_at = nullptr;
  const char* m_end = nullptr;
  Stops m_stops;

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
