#include <limits>
#include <string>

#include <gtest/gtest.h>
#include <pxdutil/query/client_query.h>

namespace {

std::string Stripped(std::string text, unsigned long field) {
  CZRGSClientQuery::StripFieldID(text, field);
  return text;
}

TEST(StripFieldID, TakesOutAConditionAndTheAndBehindIt) {
  // The blank behind the AND stays.
  EXPECT_EQ(Stripped(R"(365="5" AND 31="A")", 365), R"( 31="A")");
  EXPECT_EQ(Stripped(R"(REQUEST 7 FROM NEWS WHERE 31="A" AND 365="5" AND 32="B")", 365),
            R"(REQUEST 7 FROM NEWS WHERE 31="A" AND  32="B")");
  EXPECT_EQ(Stripped(R"(365="5"AND31="A")", 365), R"(31="A")");
}

TEST(StripFieldID, TheLastConditionStaysWhereNothingFollowsIt) {
  EXPECT_EQ(Stripped(R"(31="A" AND 365="5")", 365), R"(31="A" AND 365="5")");
  EXPECT_EQ(Stripped(R"(365="5")", 365), R"(365="5")");
}

TEST(StripFieldID, AnAndInFrontStays) {
  EXPECT_EQ(Stripped(R"(31="A" AND 365="5" GROUP_BY 7)", 365), R"(31="A" AND  GROUP_BY 7)");
  EXPECT_EQ(Stripped(R"(365="5" )", 365), " ");
}

TEST(StripFieldID, TakesTheFirstOfSeveral) {
  EXPECT_EQ(Stripped(R"(1="a" AND 1="b" AND 2="c")", 1), R"( 1="b" AND 2="c")");
}

TEST(StripFieldID, FindsAnIdAtTheEndOfALongerOneOnPurpose) {
  EXPECT_EQ(Stripped(R"(365="5" AND 31="A")", 65), R"(3 31="A")");
  EXPECT_EQ(Stripped(R"(365="5" AND 65="6" AND 31="A")", 65), R"(3 65="6" AND 31="A")");
}

TEST(StripFieldID, DoesNotFindAnIdWithABlankBehindItOnPurpose) {
  EXPECT_EQ(Stripped(R"(365 ="5" AND 31="A")", 365), R"(365 ="5" AND 31="A")");
  EXPECT_EQ(Stripped(R"(365>"5" AND 31="A")", 365), R"(365>"5" AND 31="A")");
  EXPECT_EQ(Stripped(R"(365= "5" AND 31="A")", 365), R"( 31="A")");
}

TEST(StripFieldID, RemovesUpToTheNextAndAnywhereOnPurpose) {
  EXPECT_EQ(Stripped(R"(365="5" GROUP_BY 7 AND x)", 365), " x");
  EXPECT_EQ(Stripped(R"(365="5" OR 31="BAND" AND 32="C")", 365), R"(" AND 32="C")");
  // An AND inside the removed value is no conjunction.
  EXPECT_EQ(Stripped(R"(365="AND" AND 31="A")", 365), R"( 31="A")");
}

TEST(StripFieldID, WithoutTwoQuotesBehindTheHitNothingHappens) {
  EXPECT_EQ(Stripped("365=5 AND 31=A", 365), "365=5 AND 31=A");
  EXPECT_EQ(Stripped("365=\"5 AND 31=A", 365), "365=\"5 AND 31=A");
  EXPECT_EQ(Stripped("\"x\" 365=", 365), "\"x\" 365=");
}

TEST(StripFieldID, QuotesOfALaterConditionServeOnPurpose) {
  EXPECT_EQ(Stripped(R"(365=5 AND 31="A" AND 32="B")", 365), R"( 32="B")");
}

TEST(StripFieldID, WithoutTheFieldNothingHappens) {
  EXPECT_EQ(Stripped("", 365), "");
  EXPECT_EQ(Stripped(R"(31="A" AND 32="B")", 365), R"(31="A" AND 32="B")");
  EXPECT_EQ(Stripped("36", 365), "36");
}

TEST(StripFieldID, TakesAnyNumber) {
  EXPECT_EQ(Stripped(R"(0="5" AND 31="A")", 0), R"( 31="A")");
  const unsigned long most = std::numeric_limits<unsigned long>::max();
  EXPECT_EQ(Stripped(std::to_string(most) + R"(="5" AND 31="A")", most), R"( 31="A")");
}

TEST(StripFieldID, ANulIsACharacterLikeAnyOther) {
  std::string text(R"(1="?" AND 2="A")");
  text[3] = '\0';
  EXPECT_EQ(Stripped(text, 1), R"( 2="A")");
}

}  // namespace
