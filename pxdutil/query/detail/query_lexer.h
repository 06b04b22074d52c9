// The lexer of the query language: which token begins at a place of the text.
//
// At each place the grammar allows a few tokens only, so the parser asks for those and reads
// nothing ahead: a word costs one comparison with a constant. TokenAt tells what stands at a place,
// whatever it is. Both go by the one table of words and signs.
#ifndef PXDUTIL_QUERY_DETAIL_QUERY_LEXER_H
#define PXDUTIL_QUERY_DETAIL_QUERY_LEXER_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include <pxdutil/query/detail/query_tokens.h>

namespace pxd::detail {

struct QueryToken {
  TOKEN_TYPE type;
  // Those of a string with its quotes; empty, but in its place, at the end of the text and for text
  // that begins no token.
  std::string_view text;
};

// The token that begins at `at`, which isn't a blank, of a text that ends at `end` in a NUL.
[[nodiscard]] QueryToken TokenAt(const char* at, const char* end);

[[nodiscard]] constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// What goes on with a number once a digit has begun one, in any order.
inline constexpr std::array<bool, 256> kInNumber = [] {
  std::array<bool, 256> is = {};
  for (const char c : std::string_view("0123456789.+-eE")) {
    is[static_cast<unsigned char>(c)] = true;
  }
  return is;
}();
[[nodiscard]] constexpr bool IsInNumber(char c) {
  return kInNumber[static_cast<unsigned char>(c)];
}

// Whether the first and the last bytes of two texts are the same, as many as an Int has.
template <class Int>
[[nodiscard]] inline bool HaveSameEnds(const char* a, const char* b, std::size_t size) {
  const auto difference = [=](std::size_t at) {
    Int fromA;
    Int fromB;
    std::memcpy(&fromA, a + at, sizeof(Int));
    std::memcpy(&fromB, b + at, sizeof(Int));
    return fromA ^ fromB;
  };
  return (difference(0) | difference(size - sizeof(Int))) == 0;
}

// As memcmp says, of a word of the language: two pieces, which may overlap, cover any of them. Of a
// memcmp the compiler makes a call where it takes a word for a rare one.
template <std::size_t kSize>
[[nodiscard]] inline bool IsSame(const char* a, const char* b) {
  static_assert(kSize >= 2 && kSize <= 16);
  if constexpr (kSize >= 8) {
    return HaveSameEnds<std::uint64_t>(a, b, kSize);
  } else if constexpr (kSize >= 4) {
    return HaveSameEnds<std::uint32_t>(a, b, kSize);
  } else {
    return HaveSameEnds<std::uint16_t>(a, b, kSize);
  }
}

// A place in a text that moves from token to token. It stays at text that begins no token: nothing
// fits there, so a text that can't be read to its end can't be parsed.
class QueryLexer {
 public:
  // The text must outlive the lexer. Its NUL ends whatever is looked at one character at a time.
  explicit QueryLexer(const char* text)
      : m_place(text), m_end(text + std::strlen(text)), m_first(*text) {}

  // Where the current token begins.
  [[nodiscard]] const char* Place() const {
    const char* place = m_place;
    while (*place == ' ') {
      ++place;
    }
    return place;
  }
  [[nodiscard]] bool AtEnd() const { return Place() == m_end; }
  [[nodiscard]] QueryToken Token() const { return TokenAt(Place(), m_end); }

  // Whether the word or sign is the current token. A blank mostly stands ahead of a word.
  template <TOKEN_TYPE kToken>
  [[nodiscard]] bool Is() {
    constexpr std::size_t kLongestSign = 2;
    if constexpr (kLengthOf < kToken >> kLongestSign) {
      SkipBlanks();
      return FitsARowOf<kToken>();
    } else {
      return Find([this] { return FitsARowOf<kToken>(); });
    }
  }

  [[nodiscard]] bool IsNumber() {
    return Find([this] { return IsDigit(m_first); });
  }
  // The current token, which was found to be a number.
  [[nodiscard]] std::string_view Number() const {
    const char* at = m_place + 1;
    while (IsInNumber(*at)) {
      ++at;
    }
    return Until(at);
  }
  // Whether that number is no more than a few digits, as nearly all numbers are; then also how
  // many, and what they are worth.
  [[nodiscard]] bool IsShortNumber(std::size_t& length, std::uint32_t& value) const {
    value = static_cast<std::uint32_t>(m_first - '0');
    constexpr std::size_t kShort = 5;
    for (length = 1; length <= kShort; ++length) {
      const char c = m_place[length];
      if (!IsDigit(c)) {
        return !IsInNumber(c);
      }
      value = value * 10 + static_cast<std::uint32_t>(c - '0');
    }
    return false;
  }

  // The string with its quotes, or nothing.
  [[nodiscard]] std::string_view String() {
    if (!Find([this] { return m_first == '"'; })) {
      return {};
    }
    const char* at = m_place + 1;
    // Most values are shorter than it takes to call the search that is quicker for long ones.
    constexpr int kShort = 16;
    for (int i = 0; i < kShort; ++i, ++at) {
      if (*at == '"') {
        return Until(at + 1);
      }
      if (*at == '\0') {
        return {};
      }
    }
    const void* const quote = std::memchr(at, '"', static_cast<std::size_t>(m_end - at));
    return quote != nullptr ? Until(static_cast<const char*>(quote) + 1) : std::string_view();
  }

  // Leaves the current token, which ends there.
  void MoveTo(const char* end) {
    m_place = end;
    m_first = *end;
  }
  // The same, of a token that was found to be current and has so many characters.
  void MoveBy(std::size_t length) { MoveTo(m_place + length); }

 private:
  void SkipBlanks() {
    while (m_first == ' ') {
      m_first = *++m_place;
    }
  }

  // The answer to a question about the current token. Most signs, numbers and strings touch what is
  // ahead of them, so blanks are looked for only where the answer would be no.
  template <class Question>
  bool Find(const Question& question) {
    if (question()) {
      return true;
    }
    if (m_first != ' ') {
      return false;
    }
    SkipBlanks();
    return question();
  }

  template <TOKEN_TYPE kToken>
  [[nodiscard]] bool FitsARowOf() const {
    constexpr TokenRows kRows = RowsOf(kToken);
    static_assert(kRows.count == 1 || kRows.count == 2, "numbers, strings and ends have no rows");
    return Fits<kRows.first>() || (kRows.count == 2 && Fits<kRows.first + kRows.count - 1>());
  }

  template <std::size_t kRow>
  [[nodiscard]] bool Fits() const {
    constexpr std::string_view kText = kTokenTable[kRow].text;
    if (m_first != kText.front()) {
      return false;
    }
    if constexpr (kText.size() > 1) {
      if (static_cast<std::size_t>(m_end - m_place) < kText.size() ||
          !IsSame<kText.size()>(m_place, kText.data())) {
        return false;
      }
    }
    // A row ahead of this one may fit as well.
    if constexpr (BeginsRowAhead(kRow)) {
      return Token().type == kTokenTable[kRow].token;
    } else {
      return true;
    }
  }

  [[nodiscard]] std::string_view Until(const char* end) const {
    return {m_place, static_cast<std::size_t>(end - m_place)};
  }

  const char* m_place;  // of the current token, or of blanks ahead of it
  const char* m_end;
  char m_first;  // the character at the place, which settles most questions
};

}  // namespace pxd::detail

#endif
