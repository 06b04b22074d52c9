// The words of the language, one by one.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <pxdutil/query/detail/query_lexer.h>
#include <pxdutil/query/detail/query_tokens.h>

namespace {

using pxd::detail::kTokenTable;
using pxd::detail::QueryLexer;
using pxd::detail::TOKEN_TYPE;

struct Word {
  std::string_view text;
  int token;
  std::size_t position;  // in the search table, from 1
};

constexpr Word kWords[] = {
    {"END", 0, 3},
    {"ENDQUERY", 1, 2},
    {"BEGINQUERY", 2, 4},
    {"REQUEST", 3, 5},
    {"ADVISE", 4, 6},
    {"FROM", 5, 7},
    {"WHERE", 6, 8},
    {"CHART", 7, 9},
    {"TICK", 8, 11},
    {"MINUTE", 9, 12},
    {"DAILY", 10, 13},
    {"WEEKLY", 11, 14},
    {"MONTHLY", 12, 15},
    {"YEARLY", 13, 16},
    {"NEWS", 14, 17},
    {"TIME", 15, 18},
    {"SYMBOL_LIST", 16, 19},
    {"SYMBOL_DATA", 17, 20},
    {"FEED_INFO", 18, 21},
    {"SERVER_INFO", 19, 22},
    {"AND", 20, 23},
    {",", 21, 24},
    {"(", 22, 25},
    {")", 23, 26},
    {"=", 26, 27},
    {"<>", 27, 28},
    {"!=", 27, 29},
    {"<", 28, 30},
    {">", 29, 31},
    {"TICKCHART", 31, 10},
    {"BARCHART", 32, 32},
    {"ANALYSIS", 33, 33},
    {"VOLUMECHART", 34, 34},
    {"QUOTE", 35, 35},
    {"SYMBOL_INFO", 36, 36},
    {"EDIT_DATA", 37, 37},
    {"FEED_STATUS", 38, 38},
    {"CONNECT_DATAFEED", 39, 39},
    {"NASDAQ_LEVELII", 40, 40},
    {"MODIFY", 41, 41},
    {"TIME_SALES", 42, 1},
    {"ENTITLEMENTS", 43, 42},
    {"FUNDAMENTAL", 44, 43},
    {"SYNCH", 45, 44},
    {"GROUP_BY", 46, 45},
    {"ARCHIVE_INFO", 47, 46},
    {"ARCHIVE", 48, 49},
    {"ECN_INFO", 49, 50},
    {"MESSAGE", 50, 51},
    {"OPTIONCHART", 51, 52},
    {"CCACHART", 52, 53},
    {"SYMBOL_PREFIX", 53, 54},
    {"UPDATE", 54, 55},
    {"COMMIT", 55, 56},
    {"ARCHIVE_MSGS", 56, 47},
    {"ARCHIVE_ITEMS", 57, 48},
    {"CONVERSIONCHART", 58, 57},
    {"SCANNING", 59, 58},
    {"PRICECHART", 60, 59},
    {"SECOND", 61, 60},
};

// The numbers of a text's tokens, up to the end (30) or to text that is none (-2).
std::vector<int> Tokens(const std::string& text) {
  QueryLexer lexer(text.c_str());
  std::vector<int> tokens;
  for (;;) {
    const pxd::detail::QueryToken token = lexer.Token();
    tokens.push_back(static_cast<int>(token.type));
    if (token.text.empty()) {
      return tokens;
    }
    lexer.MoveTo(token.text.data() + token.text.size());
  }
}

std::string FirstText(const std::string& text) {
  return std::string(QueryLexer(text.c_str()).Token().text);
}

TEST(QueryTokens, EachWordHasItsNumberAndItsPlaceInTheTable) {
  ASSERT_EQ(std::size(kWords), kTokenTable.size());
  for (const Word& word : kWords) {
    EXPECT_EQ(Tokens(std::string(word.text)), (std::vector<int>{word.token, 30})) << word.text;
    const pxd::detail::TokenRow& row = kTokenTable[word.position - 1];
    EXPECT_EQ(row.text, word.text);
    EXPECT_EQ(static_cast<int>(row.token), word.token) << word.text;
  }
}

TEST(QueryTokens, AWordNeedsNoDelimiterBehindIt) {
  for (const Word& word : kWords) {
    const std::string twice = std::string(word.text) + "FROM";
    // "<" with another sign behind it may be a different word, but FROM is none.
    EXPECT_EQ(Tokens(twice), (std::vector<int>{word.token, 5, 30})) << twice;
  }
  EXPECT_EQ(Tokens("FROMNEWS"), (std::vector<int>{5, 14, 30}));
  EXPECT_EQ(Tokens("TIMEX"), (std::vector<int>{15, -2}));
  EXPECT_EQ(Tokens("WHERE31"), (std::vector<int>{6, 24, 30}));
  EXPECT_EQ(Tokens("ENDEND"), (std::vector<int>{0, 0, 30}));
}

TEST(QueryTokens, ALongerWordWinsOverThoseThatBeginIt) {
  EXPECT_EQ(Tokens("TIME_SALES"), (std::vector<int>{42, 30}));
  EXPECT_EQ(Tokens("TIME_SALE"), (std::vector<int>{15, -2}));
  EXPECT_EQ(Tokens("ENDQUERY"), (std::vector<int>{1, 30}));
  EXPECT_EQ(Tokens("ENDQUER"), (std::vector<int>{0, -2}));
  EXPECT_EQ(Tokens("TICKCHART"), (std::vector<int>{31, 30}));
  EXPECT_EQ(Tokens("TICK CHART"), (std::vector<int>{8, 7, 30}));
  EXPECT_EQ(Tokens("ARCHIVE_ITEMS"), (std::vector<int>{57, 30}));
  EXPECT_EQ(Tokens("ARCHIVE_"), (std::vector<int>{48, -2}));
  EXPECT_EQ(Tokens("<><"), (std::vector<int>{27, 28, 30}));
  EXPECT_EQ(Tokens("< >"), (std::vector<int>{28, 29, 30}));
  EXPECT_EQ(Tokens("!"), (std::vector<int>{-2}));
}

TEST(QueryTokens, WordsAreCaseSensitive) {
  EXPECT_EQ(Tokens("from"), (std::vector<int>{-2}));
  EXPECT_EQ(Tokens("From"), (std::vector<int>{-2}));
  EXPECT_EQ(Tokens("FROm"), (std::vector<int>{-2}));
}

TEST(QueryTokens, AWordCutShortByTheEndIsNone) {
  for (const Word& word : kWords) {
    if (word.text.size() > 8) {
      EXPECT_EQ(Tokens(std::string(word.text, 0, word.text.size() - 1)).back(), -2) << word.text;
    }
  }
}

TEST(QueryTokens, TheBlankAloneSeparates) {
  EXPECT_EQ(Tokens("  FROM   NEWS  "), (std::vector<int>{5, 14, 30}));
  EXPECT_EQ(Tokens("FROM\tNEWS"), (std::vector<int>{5, -2}));
  EXPECT_EQ(Tokens("FROM\nNEWS"), (std::vector<int>{5, -2}));
  EXPECT_EQ(Tokens("FROM\rNEWS"), (std::vector<int>{5, -2}));
  EXPECT_EQ(Tokens("FROM\xA0NEWS"), (std::vector<int>{5, -2}));
}

TEST(QueryTokens, ANumberRunsOverDigitsPointsSignsAndExponents) {
  EXPECT_EQ(FirstText("1-2e+.,"), "1-2e+.");
  EXPECT_EQ(FirstText("7E8 9"), "7E8");
  EXPECT_EQ(FirstText("0123456789f"), "0123456789");
  EXPECT_EQ(Tokens("1 2"), (std::vector<int>{24, 24, 30}));
  EXPECT_EQ(Tokens("1/2"), (std::vector<int>{24, -2}));
  EXPECT_EQ(Tokens("1:2"), (std::vector<int>{24, -2}));
}

TEST(QueryTokens, ANumberCannotBeginWithASignOrAPoint) {
  EXPECT_EQ(Tokens("-5"), (std::vector<int>{-2}));
  EXPECT_EQ(Tokens("+5"), (std::vector<int>{-2}));
  EXPECT_EQ(Tokens(".5"), (std::vector<int>{-2}));
  EXPECT_EQ(Tokens("e5"), (std::vector<int>{-2}));
}

TEST(QueryTokens, ANumberSwallowsTheEOfAWordThatTouchesIt) {
  EXPECT_EQ(Tokens("42END"), (std::vector<int>{24, -2}));
  EXPECT_EQ(FirstText("42END"), "42E");
  EXPECT_EQ(Tokens("42FROM"), (std::vector<int>{24, 5, 30}));
}

TEST(QueryTokens, AStringRunsToTheNextQuoteWithoutEscapes) {
  EXPECT_EQ(FirstText(R"("AB C"7)"), "\"AB C\"");
  EXPECT_EQ(FirstText(R"("")"), "\"\"");
  EXPECT_EQ(Tokens(R"("A\"B")"), (std::vector<int>{25, -2}));
  EXPECT_EQ(Tokens(R"("A""B")"), (std::vector<int>{25, 25, 30}));
  EXPECT_EQ(Tokens("\"a\r\n\tb\xFF\x80\""), (std::vector<int>{25, 30}));
}

TEST(QueryTokens, AStringWithoutItsClosingQuoteIsNoToken) {
  EXPECT_EQ(Tokens("\"ABC"), (std::vector<int>{-2}));
  EXPECT_EQ(Tokens("\""), (std::vector<int>{-2}));
  QueryLexer lexer("7 \"ABC");
  lexer.MoveBy(1);
  EXPECT_EQ(lexer.Token().type, TOKEN_TYPE::Unknown);
  EXPECT_STREQ(lexer.Place(), "\"ABC");  // it stays at the quote
}

TEST(QueryTokens, EveryOtherByteBeginsNoToken) {
  const std::string_view begins = "TEBRAFWCMDYNS,()=<!>VQUGOP";
  for (int byte = 1; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    const bool isBlankDigitOrQuote = c == ' ' || c == '"' || (c >= '0' && c <= '9');
    if (!isBlankDigitOrQuote && begins.find(c) == std::string_view::npos) {
      EXPECT_EQ(Tokens(std::string(1, c)), (std::vector<int>{-2})) << byte;
      EXPECT_EQ(Tokens("FROM" + std::string(1, c)), (std::vector<int>{5, -2})) << byte;
    }
  }
}

TEST(QueryTokens, TheEndIsReadAgainAndAgain) {
  QueryLexer lexer("FROM ");
  lexer.MoveBy(4);
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(lexer.AtEnd());
    EXPECT_EQ(lexer.Token().type, TOKEN_TYPE::EndOfText);
    lexer.MoveBy(0);
  }
  EXPECT_EQ(Tokens(""), (std::vector<int>{30}));
  EXPECT_EQ(Tokens("   "), (std::vector<int>{30}));
}

template <std::size_t... kRow>
std::vector<TOKEN_TYPE> FittingWords(QueryLexer& lexer, std::index_sequence<kRow...>) {
  std::vector<TOKEN_TYPE> fitting;
  ((lexer.Is<kTokenTable[kRow].token>() ? fitting.push_back(kTokenTable[kRow].token) : void()),
   ...);
  return fitting;
}

// The parser asks for single tokens, and the table says which one there is.
TEST(QueryTokens, AskedForEachOneByOneTheOneThatStandsThereSaysYes) {
  std::vector<std::string> texts = {"", "7", "12e3,", "1234567", "\"\"", "\"A\"=", "\"open", "?"};
  for (const Word& word : kWords) {
    const std::string text(word.text);
    texts.insert(texts.end(), {text, text + "X", text + "FROM", text.substr(0, text.size() - 1)});
  }
  for (const std::string& text : texts) {
    QueryLexer lexer(text.c_str());
    const pxd::detail::QueryToken token = lexer.Token();
    std::vector<TOKEN_TYPE> fitting =
        FittingWords(lexer, std::make_index_sequence<kTokenTable.size()>());
    fitting.erase(std::unique(fitting.begin(), fitting.end()), fitting.end());  // "<>" and "!="
    const bool isNumber = token.type == TOKEN_TYPE::Number;
    const bool isString = token.type == TOKEN_TYPE::String;
    const bool isWord = !token.text.empty() && !isNumber && !isString;
    EXPECT_EQ(fitting, isWord ? std::vector<TOKEN_TYPE>{token.type} : std::vector<TOKEN_TYPE>{})
        << text;
    EXPECT_EQ(lexer.IsNumber(), isNumber) << text;
    EXPECT_EQ(isNumber ? lexer.Number() : "", isNumber ? token.text : "") << text;
    EXPECT_EQ(lexer.String(), isString ? token.text : "") << text;
    EXPECT_EQ(lexer.AtEnd(), token.type == TOKEN_TYPE::EndOfText) << text;
  }
}

// The quick way gives what the long one gives, or nothing.
TEST(QueryTokens, AFewDigitsAreAShortNumber) {
  struct Row {
    const char* text;
    std::size_t length;
    std::uint32_t value;
  };
  for (const Row& row : {Row{"0", 1, 0}, Row{"7,8", 1, 7}, Row{"42 ", 2, 42}, Row{"201)", 3, 201},
                         Row{"007=", 3, 7}, Row{"9999\"", 4, 9999}, Row{"65535F", 5, 65535}}) {
    QueryLexer lexer(row.text);
    ASSERT_TRUE(lexer.IsNumber());
    std::size_t length = 0;
    std::uint32_t value = 0;
    EXPECT_TRUE(lexer.IsShortNumber(length, value)) << row.text;
    EXPECT_EQ(length, row.length) << row.text;
    EXPECT_EQ(value, row.value) << row.text;
    EXPECT_EQ(lexer.Number().size(), row.length) << row.text;
  }
  for (const char* const text : {"7.", "1-2", "12e3", "42END", "201+", "123456", "1234567890"}) {
    QueryLexer lexer(text);
    ASSERT_TRUE(lexer.IsNumber());
    std::size_t length = 0;
    std::uint32_t value = 0;
    EXPECT_FALSE(lexer.IsShortNumber(length, value)) << text;
  }
}

TEST(QueryTokens, BlanksMayStandAheadOfAnyToken) {
  QueryLexer lexer("  FROM  ,  7  \"A\"  ");
  EXPECT_TRUE(lexer.Is<TOKEN_TYPE::From>());
  lexer.MoveBy(4);
  EXPECT_FALSE(lexer.Is<TOKEN_TYPE::Equal>());
  EXPECT_TRUE(lexer.Is<TOKEN_TYPE::Comma>());
  lexer.MoveBy(1);
  EXPECT_TRUE(lexer.IsNumber());
  lexer.MoveBy(1);
  EXPECT_EQ(lexer.String(), "\"A\"");
  lexer.MoveBy(3);
  EXPECT_TRUE(lexer.AtEnd());
}

TEST(QueryTokens, AStringOfAnyLengthRunsToItsQuote) {
  for (const std::size_t length : {0U, 1U, 14U, 15U, 16U, 17U, 31U, 32U, 33U, 4095U, 5000U}) {
    const std::string open = '"' + std::string(length, 'x');
    EXPECT_EQ(QueryLexer(open.c_str()).String(), "") << length;
    const std::string text = open + '"';
    EXPECT_EQ(QueryLexer((text + "\"y").c_str()).String().size(), text.size()) << length;
    EXPECT_EQ(FirstText(text + "\"y"), text) << length;
  }
}

}  // namespace
