#include <pxdutil/foundation/text.h>

#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace {

TEST(Text, IsEmptyByDefaultAndFromNull) {
  EXPECT_TRUE(CString().IsEmpty());
  EXPECT_TRUE(CString(static_cast<const char*>(nullptr)).IsEmpty());
  EXPECT_TRUE(CString(nullptr, 5).IsEmpty());
  EXPECT_TRUE(CString("abc", 0).IsEmpty());
  EXPECT_TRUE(CString("abc", -1).IsEmpty());
  CString text("abc");
  text = static_cast<const char*>(nullptr);
  EXPECT_EQ(text.GetLength(), 0);
  EXPECT_STREQ(text.GetString(), "");
}

TEST(Text, IsMadeFromEachKindOfText) {
  EXPECT_STREQ(CString("abc").GetString(), "abc");
  EXPECT_STREQ(CString("abcdef", 3).GetString(), "abc");
  EXPECT_STREQ(CString(std::string("abc")).GetString(), "abc");
  EXPECT_EQ(CString(std::string("a\0b", 3)).GetLength(), 3);
}

TEST(Text, ConvertsToPointerAndView) {
  const CString text("abc");
  const char* pointer = text;
  const std::string_view view = text;
  EXPECT_STREQ(pointer, "abc");
  EXPECT_EQ(view, "abc");
  EXPECT_EQ(text.Str(), "abc");
  EXPECT_EQ(std::string(text.begin(), text.end()), "abc");
}

TEST(Text, IsAValue) {
  CString a("one");
  CString b = a;
  a = "two";
  EXPECT_STREQ(b, "one");
  b = a;
  EXPECT_STREQ(b, "two");
  b.Empty();
  EXPECT_TRUE(b.IsEmpty());
  EXPECT_STREQ(a, "two");
}

TEST(Text, TakesAPartOfItself) {
  CString text("abcdef");
  text = text.GetString() + 2;
  EXPECT_STREQ(text, "cdef");
  text += text;
  EXPECT_STREQ(text, "cdefcdef");
  text += text.GetString();
  EXPECT_STREQ(text, "cdefcdefcdefcdef");
}

TEST(Text, CharactersOutOfRangeAreNul) {
  const CString text("ab");
  EXPECT_EQ(text.GetAt(0), 'a');
  EXPECT_EQ(text[1], 'b');
  EXPECT_EQ(text.GetAt(2), '\0');
  EXPECT_EQ(text.GetAt(-1), '\0');
  EXPECT_EQ(text[100], '\0');
}

TEST(Text, PartsAreClamped) {
  const CString text("abcd");
  EXPECT_STREQ(text.Left(2), "ab");
  EXPECT_STREQ(text.Left(4), "abcd");
  EXPECT_STREQ(text.Left(5), "abcd");
  EXPECT_STREQ(text.Left(0), "");
  EXPECT_STREQ(text.Left(-1), "");
  EXPECT_STREQ(text.Right(2), "cd");
  EXPECT_STREQ(text.Right(4), "abcd");
  EXPECT_STREQ(text.Right(5), "abcd");
  EXPECT_STREQ(text.Right(-1), "");
  EXPECT_STREQ(text.Mid(1), "bcd");
  EXPECT_STREQ(text.Mid(4), "");
  EXPECT_STREQ(text.Mid(5), "");
  EXPECT_STREQ(text.Mid(-3), "abcd");
  EXPECT_STREQ(text.Mid(1, 2), "bc");
  EXPECT_STREQ(text.Mid(1, 100), "bcd");
  EXPECT_STREQ(text.Mid(1, -1), "");
  EXPECT_STREQ(text.Mid(100, 100), "");
}

TEST(Text, FindsCharactersAndTexts) {
  const CString text("abcabc");
  EXPECT_EQ(text.Find('b'), 1);
  EXPECT_EQ(text.Find('b', 1), 1);
  EXPECT_EQ(text.Find('b', 2), 4);
  EXPECT_EQ(text.Find('b', 5), -1);
  EXPECT_EQ(text.Find('x'), -1);
  EXPECT_EQ(text.Find('a', 100), -1);
  EXPECT_EQ(text.Find('a', -1), -1);
  EXPECT_EQ(text.Find("ca"), 2);
  EXPECT_EQ(text.Find("abc", 1), 3);
  EXPECT_EQ(text.Find("abcd"), -1);
  EXPECT_EQ(text.Find("abc", 100), -1);
  EXPECT_EQ(text.Find("abc", -1), -1);
  EXPECT_EQ(text.Find(CString("bc")), 1);
  EXPECT_EQ(text.Find(static_cast<const char*>(nullptr)), -1);
  EXPECT_EQ(text.ReverseFind('b'), 4);
  EXPECT_EQ(text.ReverseFind('x'), -1);
  EXPECT_EQ(CString().ReverseFind('x'), -1);
}

TEST(Text, ComparesByUnsignedCharacters) {
  EXPECT_EQ(CString("b").Compare("b"), 0);
  EXPECT_LT(CString("a").Compare("b"), 0);
  EXPECT_GT(CString("b").Compare("a"), 0);
  EXPECT_LT(CString("ab").Compare("abc"), 0);
  EXPECT_GT(CString("\xE9").Compare("z"), 0);
  EXPECT_LT(CString("B").Compare("a"), 0);
  EXPECT_EQ(CString().Compare(nullptr), 0);
}

TEST(Text, ComparesWithoutCase) {
  EXPECT_EQ(CString("aBc").CompareNoCase("AbC"), 0);
  EXPECT_GT(CString("B").CompareNoCase("a"), 0);
  EXPECT_LT(CString("a").CompareNoCase("B"), 0);
  EXPECT_LT(CString("ab").CompareNoCase("ABC"), 0);
  EXPECT_GT(CString("ABC").CompareNoCase("ab"), 0);
  EXPECT_EQ(CString().CompareNoCase(nullptr), 0);
  EXPECT_GT(CString("\xE9").CompareNoCase("z"), 0);
}

TEST(Text, OperatorsCompareTextsAndPointersAlike) {
  const CString a("a");
  const CString b("b");
  EXPECT_TRUE(a == a);
  EXPECT_TRUE(a == "a");
  EXPECT_TRUE("a" == a);
  EXPECT_TRUE(a != b);
  EXPECT_TRUE(a != "b");
  EXPECT_TRUE("b" != a);
  EXPECT_TRUE(a < b);
  EXPECT_TRUE(a < "b");
  EXPECT_TRUE("a" < b);
  EXPECT_FALSE(b < a);
  EXPECT_TRUE(b > a);
  EXPECT_TRUE(a <= a);
  EXPECT_FALSE(CString(std::string("a\0b", 3)) == "a");
}

TEST(Text, Joins) {
  const CString ab("ab");
  EXPECT_STREQ(ab + CString("c"), "abc");
  EXPECT_STREQ(ab + "c", "abc");
  EXPECT_STREQ("c" + ab, "cab");
  EXPECT_STREQ(ab + 'c', "abc");
  EXPECT_STREQ(ab + static_cast<const char*>(nullptr), "ab");
  CString text;
  text += ab;
  text += "c";
  text += 'd';
  text += static_cast<const char*>(nullptr);
  EXPECT_STREQ(text, "abcd");
}

TEST(Text, FormatsAndAppends) {
  CString text("old");
  text.Format("%d-%s", 7, "x");
  EXPECT_STREQ(text, "7-x");
  text.AppendFormat("/%u", 9U);
  EXPECT_STREQ(text, "7-x/9");
  text.Format("%s", "");
  EXPECT_STREQ(text, "");
}

TEST(Text, FormattedTextIsNeverCut) {
  for (const std::size_t length : {126U, 127U, 128U, 129U, 5000U}) {
    const std::string wanted(length, 'x');
    CString text;
    text.Format("%s", wanted.c_str());
    EXPECT_EQ(text.Str(), wanted);
    text.AppendFormat("%s", wanted.c_str());
    EXPECT_EQ(text.Str(), wanted + wanted);
  }
}

TEST(Text, MayBeFormattedFromItself) {
  CString text("abc");
  text.Format("<%s>", text.GetString());
  EXPECT_STREQ(text, "<abc>");
  text.AppendFormat("%s", text.GetString());
  EXPECT_STREQ(text, "<abc><abc>");
}

TEST(Text, WhatCannotBeFormattedAddsNothing) {
  // In the C locale no character stands for this one.
  CString text("before");
  text.AppendFormat("%ls", L"\xFFFF");
  EXPECT_STREQ(text, "before");
}

}  // namespace
