#include <algorithm>
#include <cctype>
#include <iterator>
#include <string_view>
#include <vector>

#include "query_texts.h"
#include "query_words.h"

namespace pxd::test {

namespace {

constexpr std::string_view kPieces[] = {
    "BEGINQUERY",
    "END",
    "ENDQUERY",
    "FROM",
    "WHERE",
    "GROUP_BY",
    "AND",
    "CHART",
    "CHART(",
    "(",
    ")",
    ",",
    ",",
    ",",
    ",",
    "=",
    "=",
    "<>",
    "!=",
    "<",
    ">",
    "\"A\"",
    "\"\"",
    "\"30\"",
    "7",
    "10",
    "31",
    "42",
    "201",
    "485",
    "487",
    "521",
    "599",
    "600",
    "601",
    "604",
    "606",
    "607",
    "0",
    "420",
    "421",
    "70000",
    "65536",
    "65537",
    "12e3",
    "1-2",
    "1.5",
    "0.0",
    "1e40",
    "1e-50",
    "1e999",
    "2e",
    "3.e1",
    "4294967295",
    "9223372036854775808",
    "1234567890123456789",
    "12345678901234567890",
    "00000000000000000007",
    "5,MINUTE",
    "1,DAILY",
    "2,TICK",
    "3,SECOND",
    "31=\"ABC\"",
    "365=\"42\"",
    "7,",
    "10,CHART(",
    "from",
    "\t",
    "\"open",
    "'",
    "\x80",
    "-5",
    ".5",
    "END 42",
};

std::string_view RandomWord(Random& random) {
  switch (Pick(random, 0, 3)) {
    case 0:
      return kCharts[Pick(random, 1, 8)];
    case 1:
      return kUnits[Pick(random, 1, 7)];
    case 2:
      return kVerbs[Pick(random, 0, 5)];
    default:
      return kSources[Pick(random, 0, static_cast<unsigned>(std::size(kSources)) - 1)].word;
  }
}

std::string_view RandomPiece(Random& random) {
  return Pick(random, 0, 2) == 0
             ? RandomWord(random)
             : kPieces[Pick(random, 0, static_cast<unsigned>(std::size(kPieces)) - 1)];
}

// The places where a text may be cut without cutting a word.
std::vector<std::size_t> Seams(const std::string& text) {
  std::vector<std::size_t> seams = {0, text.size()};
  for (std::size_t i = 1; i < text.size(); ++i) {
    const bool wordBefore = std::isalnum(static_cast<unsigned char>(text[i - 1])) != 0;
    const bool wordHere = std::isalnum(static_cast<unsigned char>(text[i])) != 0;
    if (!(wordBefore && wordHere)) {
      seams.push_back(i);
    }
  }
  std::sort(seams.begin(), seams.end());
  return seams;
}

// Puts a number that is at some limit in the place of the next one.
void ReplaceNumber(std::string& text, std::size_t from, Random& random) {
  constexpr std::string_view kNumbers[] = {"0", "0", "421", "65536", "00000000000000000000"};
  const std::size_t first = text.find_first_of("0123456789", from);
  if (first == std::string::npos) {
    return;
  }
  const std::size_t end = std::min(text.find_first_not_of("0123456789", first), text.size());
  text.replace(first, end - first, kNumbers[Pick(random, 0, 4)]);
}

std::size_t RandomSeam(const std::string& text, Random& random) {
  const std::vector<std::size_t> seams = Seams(text);
  return seams[Pick(random, 0, static_cast<unsigned>(seams.size()) - 1)];
}

}  // namespace

std::string TokenSoup(Random& random) {
  std::string text;
  // Most begin as a query does, or nothing but their first token would ever be looked at.
  if (Pick(random, 0, 9) != 0) {
    text = std::string(kVerbs[Pick(random, 0, 5)]) + ' ';
    if (Pick(random, 0, 1) == 0) {
      text += Pick(random, 0, 1) == 0 ? "CHART(" : "7,CHART(";
      text += std::string(kCharts[Pick(random, 1, 8)]) + ',';
    }
  }
  const unsigned pieces = Pick(random, 0, 14);
  for (unsigned i = 0; i < pieces; ++i) {
    text += std::string(RandomPiece(random)) + (Pick(random, 0, 3) == 0 ? "" : " ");
  }
  constexpr std::string_view kEnds[] = {
      "", "", "FROM NEWS", "FROM SCANNING", "END 42", "FROM SYMBOL_DATA WHERE 31=\"A\""};
  return text + std::string(kEnds[Pick(random, 0, 5)]);
}

std::string Mutated(std::string text, Random& random) {
  const unsigned changes = Pick(random, 1, 3);
  for (unsigned i = 0; i < changes; ++i) {
    const std::size_t a = RandomSeam(text, random);
    const std::size_t b = RandomSeam(text, random);
    const std::size_t first = std::min(a, b);
    const std::size_t length = std::min<std::size_t>(std::max(a, b) - first, 24);
    switch (Pick(random, 0, 6)) {
      case 0:
        text.erase(first, length);
        break;
      case 6:
        ReplaceNumber(text, first, random);
        break;
      case 1:
        text.insert(first, RandomPiece(random));
        break;
      case 2:
        text.insert(std::max(a, b), std::string(text, first, length));
        break;
      case 3:
        text.replace(first, length, RandomPiece(random));
        break;
      case 4:
        text.insert(first, " END 42");
        break;
      default:
        if (!text.empty()) {
          text[Pick(random, 0, static_cast<unsigned>(text.size()) - 1)] =
              static_cast<char>(Pick(random, 1, 255));
        }
        break;
    }
  }
  return text;
}

}  // namespace pxd::test
