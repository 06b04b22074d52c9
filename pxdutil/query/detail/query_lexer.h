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

// A number token, which has no text where none stands.
struct QueryNumber {
  std::string_view text;
  // The low 32 bits of the number that its first digits are, however many those be.
  std::uint32_t digits = 0;
};

[[nodiscard]] constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// What goes on with a number once a digit has begun one, in any order.
[[nodiscard]] constexpr bool IsInNumber(char c) {
  return IsDigit(c) || c == '.' || c == '+' || c == '-' || c == 'e' || c == 'E';
}

// A place in a text that moves from token to token. It stays at text that begins no token: nothing
// fits there, so a text that can't be read to its end can't be parsed.
class QueryLexer {
 public:
  // The text must outlive the lexer. Its NUL ends whatever is looked at one character at a time.
  explicit QueryLexer(const char* text) : m_place(text), m_end(text + std::strlen(text)) {
    Skip(0);
  }

  // Where the current token begins.
  [[nodiscard]] const char* Place() const { return m_place; }
  [[nodiscard]] bool AtEnd() const { return m_place == m_end; }
  [[nodiscard]] QueryToken Token() const { return TokenAt(m_place, m_end); }

  // Whether the word or sign is the current token.
  template <TOKEN_TYPE kToken>
  [[nodiscard]] bool Is() const {
    constexpr TokenRows kRows = RowsOf(kToken);
    static_assert(kRows.count == 1 || kRows.count == 2, "numbers, strings and ends have no words");
    return Fits<kRows.first>() || (kRows.count == 2 && Fits<kRows.first + kRows.count - 1>());
  }

  [[nodiscard]] QueryNumber Number() const {
    QueryNumber number;
    const char* at = m_place;
    for (; IsDigit(*at); ++at) {
      number.digits = number.digits * 10 + static_cast<std::uint32_t>(*at - '0');
    }
    if (at != m_place) {
      while (IsInNumber(*at)) {
        ++at;
      }
    }
    number.text = Until(at);
    return number;
  }

  // The string with its quotes, or nothing.
  [[nodiscard]] std::string_view String() const {
    if (*m_place != '"') {
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

  // Leaves the current token of so many characters behind, and the blanks behind it.
  void Skip(std::size_t length) {
    m_place += length;
    while (*m_place == ' ') {
      ++m_place;
    }
  }

 private:
  template <std::size_t kRow>
  [[nodiscard]] bool Fits() const {
    constexpr std::string_view kText = kTokenTable[kRow].text;
    if (*m_place != kText.front()) {
      return false;
    }
    if constexpr (kText.size() > 1) {
      if (static_cast<std::size_t>(m_end - m_place) < kText.size() ||
          std::memcmp(m_place, kText.data(), kText.size()) != 0) {
        return false;
      }
    }
    if constexpr (BeginsRowAhead(kRow)) {
      return Token().type == kTokenTable[kRow].token;
    } else {
      return true;
    }
  }

  [[nodiscard]] std::string_view Until(const char* end) const {
    return {m_place, static_cast<std::size_t>(end - m_place)};
  }

  const char* m_place;
  const char* m_end;
};

}  // namespace pxd::detail

#endif
