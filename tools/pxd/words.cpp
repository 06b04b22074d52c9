#include "words.h"

#include <algorithm>
#include <cstddef>

namespace pxd::tool {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::size_t kLongestQuoted = 40;

char LowerOf(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::string Lower(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), LowerOf);
  return lower;
}

bool EqualNoCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return LowerOf(x) == LowerOf(y); });
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  for (;;) {
    const std::size_t end = text.find(separator);
    parts.push_back(Trim(text.substr(0, end)));
    if (end == std::string_view::npos) {
      return parts;
    }
    text.remove_prefix(end + 1);
  }
}

std::vector<std::string_view> SplitAtBlanks(std::string_view text) {
  std::vector<std::string_view> parts;
  for (std::string_view word = TakeWord(text); !word.empty(); word = TakeWord(text)) {
    parts.push_back(word);
  }
  return parts;
}

std::vector<std::string_view> Lines(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    lines.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

std::string_view TakeWord(std::string_view& text) {
  text = Trim(text);
  const std::size_t end = std::min(text.find_first_of(kBlanks), text.size());
  const std::string_view word = text.substr(0, end);
  text.remove_prefix(end);
  return word;
}

std::string Quoted(std::string_view text) {
  const bool cut = text.size() > kLongestQuoted;
  std::string shown = "\"";
  for (const char c : text.substr(0, kLongestQuoted)) {
    shown += c >= ' ' && c <= '~' ? c : '?';
  }
  shown += cut ? "...\"" : "\"";
  return shown;
}

std::string OneLine(std::string_view text) {
  std::string line(text);
  std::replace_if(
      line.begin(), line.end(), [](char c) { return (c >= 0 && c < ' ') || c == '\x7F'; }, '?');
  return line;
}

}  // namespace pxd::tool
