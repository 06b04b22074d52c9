#include "csv_scanner.h"

#include <algorithm>
#include <array>
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

static_assert(std::endian::native == std::endian::little, "the first byte must be the lowest");

// A bit for each of the eight bytes, the first the lowest: whether it is kSeparator or below.
constexpr std::uint64_t StopsAmong(std::uint64_t word) {
  constexpr std::uint64_t kEach = 0x0101010101010101U;
  constexpr std::uint64_t kRest = 0x7F - static_cast<std::uint64_t>(kSeparator);
  static_assert(kMark < kSeparator && '\n' < kSeparator && '\r' < kSeparator);
  // Above the separator the sum has the byte's top bit, if the byte itself hasn't.
  const std::uint64_t above = ((word & (kEach * 0x7F)) + kEach * kRest) | word;
  // The product moves the lowest bit of each byte to its place in the highest byte.
  return ((~above >> 7 & kEach) * 0x0102040810204080U) >> 56;
}

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

void CsvScanner::Stops::Begin(std::string_view bytes) {
  m_block = bytes.data();
  m_end = m_block + bytes.size();
  m_found = Among(m_block, m_end);
}

void CsvScanner::Stops::SkipTo(const char* place) {
  if (place - m_block < kBlock) {
    m_found &= ~std::uint64_t{0} << (place - m_block);
  } else {
    m_block = place;
    m_found = Among(m_block, m_end);
  }
}

inline const char* CsvScanner::Stops::Next() {
  while (m_found == 0) {
    if (m_end - m_block <= kBlock) {
      return m_end;
    }
    m_block += kBlock;
    m_found = Among(m_block, m_end);
  }
  const int place = std::countr_zero(m_found);
  m_found &= m_found - 1;
  return m_block + place;
}

std::uint64_t CsvScanner::Stops::Among(const char* block, const char* end) {
  // Behind the end there is what is no stop.
  std::array<char, kBlock> last;
  if (end - block < kBlock) {
    last.fill('x');
    std::copy(block, end, last.begin());
    block = last.data();
  }
  constexpr std::size_t kWord = sizeof(std::uint64_t);
  std::uint64_t found = 0;
  for (std::size_t i = 0; i < kBlock; i += kWord) {
    std::uint64_t word = 0;
    std::memcpy(&word, block + i, kWord);
    found |= StopsAmong(word) << i;
  }
  return found;
}

void CsvScanner::Give(std::string_view bytes) {
  m_at = bytes.data();
  m_end = m_at + bytes.size();
  m_stops.Begin(bytes);
}

bool CsvScanner::Next() {
  while (m_at != m_end) {
    if (m_place == Place::kBetweenRows && NextPlain()) {
      return true;
    }
    if (m_at == m_end) {
      return false;
    }
    if (Take(*m_at++)) {
      return true;
    }
  }
  return false;
}

// Splits a row that lies in the piece whole and has no quotation mark, which most rows do. Blank
// lines in front of it are passed over in any case.
bool CsvScanner::NextPlain() {
  for (; m_at != m_end && (IsBlank(*m_at) || IsLineEnd(*m_at)); ++m_at) {
    CountLine(*m_at);
  }
  m_stops.SkipTo(m_at);
  Stops stops = m_stops;
  m_fields.clear();
  // A row that is too long is left to the count of the careful way.
  const char* const limit =
      static_cast<std::size_t>(m_end - m_at) <= m_longestRow ? m_end : m_at + m_longestRow;
  const char* first = m_at;
  const char* stop = stops.Next();
  for (; stop < limit && !IsLineEnd(*stop); stop = stops.Next()) {
    if (*stop == kSeparator) {
      m_fields.push_back(WithoutBlanks(first, stop));
      first = stop + 1;
    } else if (*stop == kMark) {
      break;
    }
  }
  m_stops = stops;
  if (stop >= limit || *stop == kMark) {
    return false;
  }
  m_fields.push_back(WithoutBlanks(first, stop));
  m_rowLine = m_line;
  m_fault = Fault::kNone;
  m_behindCarriageReturn = false;
  CountLine(*stop);
  m_at = stop + 1;
  return true;
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
