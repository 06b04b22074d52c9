// Rows and fields of CSV, where the bytes are cut anywhere.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <tools/pxd/csv_scanner.h>
#include "tests/support/rounds.h"

using namespace pxd::tool;

namespace {

using Fault = CsvScanner::Fault;

constexpr std::size_t kLongestRow = 40;

struct Row {
  std::uint64_t line;
  Fault fault;
  std::vector<std::string> fields;

  friend bool operator==(const Row&, const Row&) = default;
};

void PrintTo(const Row& row, std::ostream* out) {
  *out << row.line << " fault " << static_cast<int>(row.fault);
  for (const std::string& field : row.fields) {
    *out << " [" << field << ']';
  }
}

std::vector<Row> Rows(std::string_view text, std::size_t piece) {
  CsvScanner csv(kLongestRow);
  std::vector<Row> rows;
  const auto take = [&] {
    rows.push_back({csv.Line(), csv.RowFault(), {csv.Fields().begin(), csv.Fields().end()}});
  };
  while (!text.empty()) {
    // A copy of just the piece's size, so that reading past it is seen.
    const std::vector<char> bytes(
        text.begin(), text.begin() + static_cast<std::ptrdiff_t>(std::min(piece, text.size())));
    csv.Give({bytes.data(), bytes.size()});
    while (csv.Next()) {
      take();
    }
    EXPECT_FALSE(csv.Next()) << "the piece is used up";
    text.remove_prefix(bytes.size());
  }
  if (csv.Finish()) {
    take();
  }
  EXPECT_FALSE(csv.Finish()) << "the end comes once";
  return rows;
}

Row Good(std::uint64_t line, std::vector<std::string> fields) {
  return {line, Fault::kNone, std::move(fields)};
}

Row Bad(std::uint64_t line, Fault fault) {
  return {line, fault, {}};
}

TEST(CsvScanner, SplitsRowsIntoFieldsHoweverTheBytesAreCut) {
  const struct {
    std::string text;
    std::vector<Row> rows;
  } kCases[] = {
      {"", {}},
      {" \n\t\r\n\r\r\n", {}},
      {"a", {Good(1, {"a"})}},
      {"a,b\n", {Good(1, {"a", "b"})}},
      {",", {Good(1, {"", ""})}},
      {"a,,c,\n", {Good(1, {"a", "", "c", ""})}},
      {" a b\t, c \n", {Good(1, {"a b", "c"})}},
      {"a\nb\rc\r\nd", {Good(1, {"a"}), Good(2, {"b"}), Good(3, {"c"}), Good(4, {"d"})}},
      {"a\r\rb\n\nc\r\n\r\nd", {Good(1, {"a"}), Good(3, {"b"}), Good(5, {"c"}), Good(7, {"d"})}},
      {"\"a\"\n", {Good(1, {"a"})}},
      {"\"\",\"\"", {Good(1, {"", ""})}},
      {" \" a \" ,b\n", {Good(1, {" a ", "b"})}},
      {"\"a,\"\"b\"\"\",c\n", {Good(1, {"a,\"b\"", "c"})}},
      {"\"a\r\nb\n\",c\nd\n", {Good(1, {"a\r\nb\n", "c"}), Good(4, {"d"})}},
      {"a\"\nb\n", {Bad(1, Fault::kStrayMark), Good(2, {"b"})}},
      {"a,\"b\"c,d\ne\n", {Bad(1, Fault::kStrayMark), Good(2, {"e"})}},
      {"\"a\" \"b\"\nc\n", {Bad(1, Fault::kStrayMark), Good(2, {"c"})}},
      {"\"a\nb\"x\"y\nz\n", {Bad(1, Fault::kStrayMark), Good(3, {"z"})}},
      {"a\n\"b\nc\n", {Good(1, {"a"}), Bad(2, Fault::kOpenMark)}},
      {"a\"b", {Bad(1, Fault::kStrayMark)}},
      {std::string("a\0b,c\n", 6), {Good(1, {std::string("a\0b", 3), "c"})}},
  };
  for (const auto& one : kCases) {
    for (const std::size_t piece :
         {std::size_t{1}, std::size_t{2}, std::size_t{3}, one.text.size() + 1}) {
      EXPECT_EQ(Rows(one.text, piece), one.rows) << one.text << ", pieces of " << piece;
    }
  }
}

TEST(CsvScanner, ARowOfMoreThanSoManyBytesIsBadToTheEndOfItsLine) {
  const std::string longest = std::string(kLongestRow - 1, 'x');
  for (const std::size_t piece : {std::size_t{1}, std::size_t{7}, std::size_t{1000}}) {
    EXPECT_EQ(Rows("  " + longest + "\nb\n", piece),
              (std::vector<Row>{Good(1, {longest}), Good(2, {"b"})}));
    EXPECT_EQ(Rows(longest + "x\nb\n", piece),
              (std::vector<Row>{Bad(1, Fault::kTooLong), Good(2, {"b"})}));
    EXPECT_EQ(Rows(longest + "xyz\"\nb\n", piece),
              (std::vector<Row>{Bad(1, Fault::kTooLong), Good(2, {"b"})}));
    EXPECT_EQ(Rows("\"" + longest + "x\nb\n", piece),
              (std::vector<Row>{Bad(1, Fault::kTooLong), Good(2, {"b"})}));
  }
}

// A row that lies in the bytes whole is split in another way than one that comes in pieces.
TEST(CsvScanner, BothWaysOfSplittingAgree) {
  // Bytes one bit or one step off those that end fields are among them.
  constexpr std::string_view kAlphabet = "ab,,, \t-+#!\v\f\xAC\x8A\"\n\r";
  constexpr std::size_t kPlainLetters = kAlphabet.find('"');
  std::uint32_t state = 1;
  std::size_t rowsSeen = 0;
  for (int round = 0; round < pxd::test::Rounds(20000); ++round) {
    std::string text;
    const std::size_t size = 1 + static_cast<std::size_t>(round) % 200;
    // Most texts have no quotation mark.
    const std::size_t letters = round % 4 == 0 ? kAlphabet.size() : kPlainLetters;
    while (text.size() < size) {
      state = state * 1664525 + 1013904223;
      text += letters < kAlphabet.size() && state >> 29 == 0 ? '\n'
                                                             : kAlphabet[(state >> 16) % letters];
    }
    const std::vector<Row> whole = Rows(text, text.size());
    ASSERT_EQ(whole, Rows(text, 1)) << text;
    rowsSeen += whole.size();
  }
  EXPECT_GT(rowsSeen, pxd::test::Rounds(20000U));
}

}  // namespace
