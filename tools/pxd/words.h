// Small reading of text that people wrote: blanks, letters of either case, whole numbers, and how
// such text is shown again in a message.
#ifndef PXDUTIL_TOOLS_PXD_WORDS_H
#define PXDUTIL_TOOLS_PXD_WORDS_H

#include <charconv>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pxd::tool {

constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// Without the blanks, tabs and line ends at both ends.
constexpr std::string_view Trim(std::string_view text) {
  const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; };
  while (!text.empty() && isBlank(text.front())) {
    text.remove_prefix(1);
  }
  while (!text.empty() && isBlank(text.back())) {
    text.remove_suffix(1);
  }
  return text;
}

// The letters A to Z as a to z.
std::string Lower(std::string_view text);
bool EqualNoCase(std::string_view a, std::string_view b);

// The parts between the separators, trimmed; one empty part for the empty text.
std::vector<std::string_view> Split(std::string_view text, char separator);
// The parts between runs of blanks; none is empty.
std::vector<std::string_view> SplitAtBlanks(std::string_view text);

// The lines of the text, without their ends; one that the text ends with begins no further line.
std::vector<std::string_view> Lines(std::string_view text);

// Takes the first word off `text`: what stands ahead of a blank.
std::string_view TakeWord(std::string_view& text);

// The text in quotation marks, fit for one line of a terminal: what isn't printable becomes '?',
// and a long text is cut.
std::string Quoted(std::string_view text);

// The text as one line of a terminal: control characters become '?'.
std::string OneLine(std::string_view text);

// The whole text as a decimal number of digits alone that doesn't pass `most`.
template <class T>
std::optional<T> WholeNumber(std::string_view text, T most) {
  T value = 0;
  const char* const end = text.data() + text.size();
  if (text.empty() || !IsDigit(text.front())) {
    return std::nullopt;
  }
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end || value > most) {
    return std::nullopt;
  }
  return value;
}

}  // namespace pxd::tool

#endif
