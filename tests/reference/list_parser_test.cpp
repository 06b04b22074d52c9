#include <pxdutil/reference/list_parser.h>

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> ItemsOf(const CStringList& list) {
  std::vector<std::string> items;
  for (const CString& item : list) {
    items.push_back(item.Str());
  }
  return items;
}

struct Row {
  const char* text;
  int result;
  std::vector<std::string> items;
};

// What is accepted, and what an accepted text consists of.
const std::vector<Row> kAccepted = {
    {"{}", 0, {}},
    {"{a}", 0, {"a"}},
    {"{a,b}", 0, {"a", "b"}},
    {"{a,{b,c},d}", 0, {"a", "{b,c}", "d"}},
    {"{,}", 0, {"", ""}},
    {"{a,,b}", 0, {"a", "", "b"}},
    {"{,a}", 0, {"", "a"}},
    {"{a,}", 0, {"a", ""}},
    {"{ a , b }", 0, {" a ", " b "}},
    {"{{}}", 0, {"{}"}},
    {"{{},{}}", 0, {"{}", "{}"}},
    {"{{{a,b},c},d}", 0, {"{{a,b},c}", "d"}},
};

// What is refused, and the items that were complete by then.
const std::vector<Row> kRefused = {
    {"", 1, {}},
    {"{", 1, {}},
    {"}", 1, {}},
    {"}{", 1, {}},
    {"a", 1, {}},
    {"a,b}", 1, {}},
    {"{a,b", 1, {}},
    {" {a}", 1, {}},
    {"{a} ", 1, {}},
    {"{a}}", 1, {}},
    {"{{a}", 1, {}},
    {"{a,b}}", 1, {"a"}},
    {"{a,b,{c}", 1, {"a", "b"}},
};

void ExpectRow(const Row& row) {
  SCOPED_TRACE(row.text);
  CStrListParser parser('{', '}', ',');
  EXPECT_EQ(parser.Parse(row.text), row.result);
  EXPECT_EQ(ItemsOf(parser), row.items);
}

TEST(StrListParser, SplitsAtDepthOneAlone) {
  for (const Row& row : kAccepted) {
    ExpectRow(row);
  }
}

TEST(StrListParser, RefusesWithOneAndKeepsWhatWasComplete) {
  for (const Row& row : kRefused) {
    ExpectRow(row);
  }
}

TEST(StrListParser, ParsingAgainReplacesTheItems) {
  CStrListParser parser('{', '}', ',');
  EXPECT_EQ(parser.Parse("{a,b,c}"), 0);
  EXPECT_EQ(parser.Parse("{d}"), 0);
  EXPECT_THAT(ItemsOf(parser), ElementsAre("d"));
  EXPECT_EQ(parser.Parse("nothing"), 1);
  EXPECT_THAT(ItemsOf(parser), IsEmpty());
}

// Only the end of the text makes the last item, so two lists side by side are one item: meant.
TEST(StrListParser, TwoListsSideBySideAreOneItemOnPurpose) {
  ExpectRow({"{a}{b}", 0, {"a}{b"}});
  ExpectRow({"{a},{b}", 0, {"a},{b"}});
  ExpectRow({"{}{}", 0, {"}{"}});
}

TEST(StrListParser, TakesItsThreeCharactersInOrder) {
  CStrListParser parser('(', ']', ';');
  EXPECT_EQ(parser.Parse("(a;(b;c];{d,e}]"), 0);
  EXPECT_THAT(ItemsOf(parser), ElementsAre("a", "(b;c]", "{d,e}"));
}

TEST(StrListParser, OneCharacterForBothBracketsNeverCloses) {
  CStrListParser parser('|', '|', ',');
  EXPECT_EQ(parser.Parse("|"), 1);
  EXPECT_EQ(parser.Parse("||"), 1);
  EXPECT_EQ(parser.Parse("|a,b|"), 1);
}

TEST(StrListParser, NulIsACharacterLikeAnyOther) {
  CStrListParser parser('{', '}', ',');
  EXPECT_EQ(parser.Parse(CString(std::string("{a\0b,c}", 7))), 0);
  EXPECT_THAT(ItemsOf(parser), ElementsAre(std::string("a\0b", 3), "c"));
}

TEST(StrListParser, DeepNestingCostsNoStack) {
  const std::string inner = std::string(1000000, '{') + std::string(1000000, '}');
  CStrListParser parser('{', '}', ',');
  EXPECT_EQ(parser.Parse(CString("{" + inner + ",b}")), 0);
  EXPECT_THAT(ItemsOf(parser), ElementsAre(inner, "b"));
}

TEST(StrListParser, IsAStringList) {
  CStrListParser parser('{', '}', ',');
  ASSERT_EQ(parser.Parse("{a,b}"), 0);
  const CStringList& list = parser;
  EXPECT_EQ(list.GetCount(), 2);
  EXPECT_EQ(list.GetHead(), "a");
  EXPECT_EQ(list.GetTail(), "b");
}

}  // namespace
