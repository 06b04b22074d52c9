// The lexer of the query language: takes a text apart into tokens, one at a time.
#ifndef PXDUTIL_QUERY_DETAIL_QUERY_LEXER_H
#define PXDUTIL_QUERY_DETAIL_QUERY_LEXER_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include <pxdutil/query/detail/query_tokens.h>

namespace pxd::detail {

// The rows of the search table by their first character, each group in the table's order, so that a
// look-up meets the very rows that a walk over the whole table could hit, in the same order.
struct TokenRowsByFirst {
  std::array<std::uint8_t, kTokenTable.size()> rows = {};
  std::array<std::uint8_t, 257> begins = {};  // of the group of a character; the next one ends it
};

[[nodiscard]] constexpr TokenRowsByFirst GroupTokenRows() {
  TokenRowsByFirst groups;
  std::size_t filled = 0;
  for (std::size_t first = 0; first < 256; ++first) {
    groups.begins[first] = static_cast<std::uint8_t>(filled);
    for (std::size_t row = 0; row < kTokenTable.size(); ++row) {
      if (static_cast<unsigned char>(kTokenTable[row].text[0]) == first) {
        groups.rows[filled++] = static_cast<std::uint8_t>(row);
      }
    }
  }
  groups.begins[256] = static_cast<std::uint8_t>(filled);
  return groups;
}

inline constexpr TokenRowsByFirst kTokenRowsByFirst = GroupTokenRows();

// What goes on with a number once a digit has begun one, in any order.
[[nodiscard]] constexpr bool IsInNumber(char c) {
  return (c >= '0' && c <= '9') || c == '.' || c == '+' || c == '-' || c == 'e' || c == 'E';
}

class QueryLexer {
 public:
  // The text has no NUL in it and must outlive the lexer.
  explicit QueryLexer(std::string_view text)
      : m_current(text.data()), m_end(text.data() + text.size()), m_text(text.data(), 0) {}

  // Reads the next token. At the end of the text, and at text that begins no token, it stays: a
  // text that can't be read to its end can't be parsed, so nothing needs to ask whether a step
  // went well.
  void Advance() {
    if (AtStop()) {
      return;
    }
    while (m_current != m_end && *m_current == ' ') {
      ++m_current;
    }
    if (m_current == m_end) {
      Take(TOKEN_TYPE::EndOfText, 0);
      return;
    }
    const char first = *m_current;
    if (first >= '0' && first <= '9') {
      TakeNumber();
    } else if (first == '"') {
      TakeString();
    } else {
      TakeRow(static_cast<unsigned char>(first));
    }
  }

  [[nodiscard]] TOKEN_TYPE Token() const { return m_token; }
  // Whether Advance leads nowhere any more.
  [[nodiscard]] bool AtStop() const {
    return m_token == TOKEN_TYPE::EndOfText || m_token == TOKEN_TYPE::Unknown;
  }
  // The token's characters, those of a string with its quotes; empty, but in its place, for what is
  // no token and at the end.
  [[nodiscard]] std::string_view Text() const { return m_text; }

 private:
  void Take(TOKEN_TYPE token, std::size_t length) {
    m_token = token;
    m_text = {m_current, length};
    m_current += length;
  }

  void TakeNumber() {
    const char* behind = m_current + 1;
    while (behind != m_end && IsInNumber(*behind)) {
      ++behind;
    }
    Take(TOKEN_TYPE::Number, static_cast<std::size_t>(behind - m_current));
  }

  void TakeString() {
    const char* const content = m_current + 1;
    const void* const quote = std::memchr(content, '"', static_cast<std::size_t>(m_end - content));
    if (quote == nullptr) {
      Take(TOKEN_TYPE::Unknown, 0);
      return;
    }
    Take(TOKEN_TYPE::String,
         static_cast<std::size_t>(static_cast<const char*>(quote) - m_current) + 1);
  }

  void TakeRow(unsigned char first) {
    const std::string_view rest(m_current, static_cast<std::size_t>(m_end - m_current));
    for (std::size_t i = kTokenRowsByFirst.begins[first]; i < kTokenRowsByFirst.begins[first + 1U];
         ++i) {
      const TokenRow& row = kTokenTable[kTokenRowsByFirst.rows[i]];
      if (Begins(rest, row.text)) {
        Take(row.token, row.text.size());
        return;
      }
    }
    Take(TOKEN_TYPE::Unknown, 0);
  }

  // Most rows are told apart by their second or third character, where a loop is quicker than a
  // call.
  [[nodiscard]] static bool Begins(std::string_view text, std::string_view row) {
    if (text.size() < row.size()) {
      return false;
    }
    for (std::size_t i = 1; i < row.size(); ++i) {
      if (text[i] != row[i]) {
        return false;
      }
    }
    return true;
  }

  const char* m_current;
  const char* m_end;
  TOKEN_TYPE m_token = TOKEN_TYPE::None;
  std::string_view m_text;
};

}  // namespace pxd::detail

#endif
