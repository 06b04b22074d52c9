#include "csv_scanner.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

namespace pxd::tool {
namespace {

constexpr char kMark = '"';
constexpr char kSeparator = ',';

constexpr bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}

constexpr bool IsLineEnd(char c) {
  return c == '\n' || c == '\r';
}

// The bytes at which the search through a plain row stops: marks, separators and line ends. It
// looks at eight bytes at a time, since most of them are none.
class Stops {
 public:
  explicit Stops(std::string_view bytes) : m_bytes(bytes) {}

  // Where the next one stands; the size of the bytes where there is none.
  std::size_t Next() {
    while (m_found == 0) {
      if (m_next >= m_bytes.size()) {
        return m_bytes.size();
      }
      m_begin = m_next;
      m_next += kStep;
      m_found = Among(WordAt(m_begin));
    }
    static_assert(std::endian::native == std::endian::little, "the first byte must be the lowest");
    const auto place = static_cast<std::size_t>(std::countr_zero(m_found)) / 8;
    m_found &= m_found - 1;
    return m_begin + place;
  }

 private:
  static constexpr std::size_t kStep = sizeof(std::uint64_t);
  static constexpr std::uint64_t kEach = 0x0101010101010101U;
  static constexpr std::uint64_t kLow = kEach * 0x7F;

  // Behind the end there are zeros, which are no stops.
  [[nodiscard]] std::uint64_t WordAt(std::size_t begin) const {
    std::uint64_t word = 0;
    if (m_bytes.size() - begin >= kStep) {
      std::memcpy(&word, m_bytes.data() + begin, kStep);
    } else {
      std::memcpy(&word, m_bytes.data() + begin, m_bytes.size() - begin);
    }
    return word;
  }

  // The top bit of each byte that isn't `c`; the other bits mean nothing.
  static std::uint64_t Others(std::uint64_t word, char c) {
    const std::uint64_t different = word ^ (kEach * static_cast<unsigned char>(c));
    return ((different & kLow) + kLow) | different;
  }

  // The top bit of each byte at which to stop.
  static std::uint64_t Among(std::uint64_t word) {
    return ~(Others(word, kSeparator) & Others(word, '\n') & Others(word, '\r') &
             Others(word, kMark)) &
           (kEach * 0x80);
  }

  std::string_view m_bytes;
  std::size_t m_begin = 0;
  std::size_t m_next = 0;
  std::uint64_t m_found = 0;
};

std::string_view WithoutBlanks(const char* first, const char* last) {
  while (first != last && IsBlank(*first)) {
    ++first;
  }
  while (first != last && IsBlank(last[-1])) {
    --last;
  }
  return {first, static_cast<std::size_t>(last - first)};
}

}  // namespace

bool CsvScanner::Next(std::string_view& bytes) {
  while (!bytes.empty()) {
    if (m_place == Place::kBetweenRows && NextPlain(bytes)) {
      return true;
    }
    if (bytes.empty()) {
      return false;
    }
    const char c = bytes.front();
    bytes.remove_prefix(1);
    if (Take(c)) {
      return true;
    }
  }
  return false;
}

// Splits a row that lies in `bytes` whole and has no quotation mark, which most rows do. Blank
// lines in front of it are taken off in any case.
bool CsvScanner::NextPlain(std::string_view& bytes) {
  const char* at = bytes.data();
  const char* const end = at + bytes.size();
  for (; at != end && (IsBlank(*at) || IsLineEnd(*at)); ++at) {
    CountLine(*at);
  }
  bytes.remove_prefix(static_cast<std::size_t>(at - bytes.data()));

  // A row that is too long is left to the count of the careful way.
  const std::string_view row = bytes.substr(0, m_longestRow);
  Stops stops(row);
  m_fields.clear();
  for (std::size_t first = 0;;) {
    const std::size_t stop = stops.Next();
    if (stop == row.size() || row[stop] == kMark) {
      return false;
    }
    m_fields.push_back(WithoutBlanks(row.data() + first, row.data() + stop));
    first = stop + 1;
    if (row[stop] != kSeparator) {
      m_rowLine = m_line;
      m_fault = Fault::kNone;
      m_behindCarriageReturn = false;
      CountLine(row[stop]);
      bytes.remove_prefix(first);
      return true;
    }
  }
}

// Takes one byte. True where a row is complete with it, or bad.
bool CsvScanner::Take(char c) {
  if (m_place == Place::kInFaultyLine) {
    m_place = IsLineEnd(c) ? Place::kBetweenRows : m_place;
    CountLine(c);
    return false;
  }
  if (m_place == Place::kBetweenRows) {
    if (IsBlank(c) || IsLineEnd(c)) {
      CountLine(c);
      return false;
    }
    m_rowLine = m_line;
    m_place = Place::kBeforeField;
    m_text.clear();
    m_ends.clear();
    m_solid = 0;
  }
  CountLine(c);
  if (++m_rowBytes > m_longestRow) {
    return Fail(Fault::kTooLong, c);
  }
  switch (m_place) {
    case Place::kBeforeField:
      return TakeFirst(c);
    case Place::kInPlain:
      if (c == kMark) {
        return Fail(Fault::kStrayMark, c);
      }
      if (c == kSeparator || IsLineEnd(c)) {
        return EndField(c);
      }
      TakePlain(c);
      return false;
    case Place::kInMarks:
      if (c == kMark) {
        m_place = Place::kBehindMark;
      } else {
        m_text += c;
      }
      return false;
    case Place::kBehindMark:
      if (c == kMark) {
        m_text += c;
        m_place = Place::kInMarks;
        return false;
      }
      m_solid = m_text.size();
      m_place = Place::kBehindField;
      [[fallthrough]];
    case Place::kBehindField:
      if (IsBlank(c)) {
        return false;
      }
      return c == kSeparator || IsLineEnd(c) ? EndField(c) : Fail(Fault::kStrayMark, c);
    case Place::kBetweenRows:
    case Place::kInFaultyLine:
      break;
  }
  return false;
}

bool CsvScanner::TakeFirst(char c) {
  if (IsBlank(c)) {
    return false;
  }
  if (c == kSeparator || IsLineEnd(c)) {
    return EndField(c);
  }
  if (c == kMark) {
    m_place = Place::kInMarks;
    return false;
  }
  m_place = Place::kInPlain;
  TakePlain(c);
  return false;
}

void CsvScanner::TakePlain(char c) {
  m_text += c;
  if (!IsBlank(c)) {
    m_solid = m_text.size();
  }
}

// True where the row ends with the field.
bool CsvScanner::EndField(char c) {
  m_text.resize(m_solid);
  m_ends.push_back(m_solid);
  m_place = Place::kBeforeField;
  return IsLineEnd(c) && EndRow();
}

bool CsvScanner::EndRow() {
  m_fields.clear();
  std::size_t first = 0;
  for (const std::size_t end : m_ends) {
    m_fields.push_back(std::string_view(m_text).substr(first, end - first));
    first = end;
  }
  m_fault = Fault::kNone;
  m_place = Place::kBetweenRows;
  m_rowBytes = 0;
  return true;
}

bool CsvScanner::Fail(Fault fault, char last) {
  m_fields.clear();
  m_fault = fault;
  m_place = IsLineEnd(last) ? Place::kBetweenRows : Place::kInFaultyLine;
  m_rowBytes = 0;
  return true;
}

bool CsvScanner::Finish() {
  switch (m_place) {
    case Place::kBetweenRows:
    case Place::kInFaultyLine:
      return false;
    case Place::kInMarks:
      return Fail(Fault::kOpenMark, '\n');
    case Place::kBehindMark:
      m_solid = m_text.size();
      return EndField('\n');
    case Place::kBeforeField:
    case Place::kInPlain:
    case Place::kBehindField:
      return EndField('\n');
  }
  return false;
}

// CR LF is one line end.
void CsvScanner::CountLine(char c) {
  const bool secondHalf = std::exchange(m_behindCarriageReturn, c == '\r') && c == '\n';
  m_line += IsLineEnd(c) && !secondHalf ? 1U : 0U;
}

}  // namespace pxd::tool
