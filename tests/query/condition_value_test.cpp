#include <pxdutil/query/detail/condition_value.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include <pxdutil/query/detail/symbol_text.h>

namespace {

using pxd::detail::ConditionValue;
using pxd::detail::KeepSymbol;
using pxd::detail::ReadFloat;
using pxd::detail::ReadInteger;

constexpr long long kMost = std::numeric_limits<long long>::max();
constexpr long long kLeast = std::numeric_limits<long long>::min();

TEST(ConditionValue, ReadsTheIntegerAtTheFront) {
  const struct {
    const char* text;
    long long value;
  } cases[] = {
      {"", 0},
      {"0", 0},
      {"42", 42},
      {"-3", -3},
      {"+3", 3},
      {"  7", 7},
      {"\t\n\v\f\r7", 7},
      {"7 8", 7},
      {"12e3", 12},
      {"1.9", 1},
      {"0x10", 0},
      {"abc", 0},
      {"- 3", 0},
      {"--3", 0},
      {"+-3", 0},
      {"-", 0},
      {"007", 7},
      {"70000", 70000},
      {"9223372036854775806", kMost - 1},
      {"9223372036854775807", kMost},
      {"9223372036854775808", kMost},
      {"99999999999999999999999999", kMost},
      {"-9223372036854775807", kLeast + 1},
      {"-9223372036854775808", kLeast},
      {"-9223372036854775809", kLeast},
      {"-99999999999999999999999999", kLeast},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(ReadInteger(row.text), row.value) << '"' << row.text << '"';
  }
}

TEST(ConditionValue, ReadsTheFloatAtTheFront) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  const struct {
    const char* text;
    float value;
  } cases[] = {
      {"", 0.0F},
      {"1.5", 1.5F},
      {"-1.5", -1.5F},
      {"+1.5", 1.5F},
      {" 2.25x", 2.25F},
      {".5", 0.5F},
      {"5.", 5.0F},
      {"1e3", 1000.0F},
      {"1,5", 1.0F},
      {"abc", 0.0F},
      {"--1", 0.0F},
      {"+-1", 0.0F},
      {"1e", 1.0F},
      {"1e+", 1.0F},
      {"0x1p3", 8.0F},
      {"-0xA", -10.0F},
      {"0x", 0.0F},
      {"0xg", 0.0F},
      {"0x-1", 0.0F},
      {"inf", kInfinity},
      {"-INFINITY", -kInfinity},
      {"1e39", kInfinity},
      {"1e999", kInfinity},
      {"-1e999", -kInfinity},
      {"1e-999", 0.0F},
      {"1e999999999999999999999", kInfinity},
      {"1e-99999999999999999999", 0.0F},
      {"0e999", 0.0F},
      {"0x1p99999", kInfinity},
      {"0x1p-99999", 0.0F},
      {"3.4028235e38", std::numeric_limits<float>::max()},
  };
  for (const auto& row : cases) {
    EXPECT_EQ(ReadFloat(row.text), row.value) << '"' << row.text << '"';
  }
  EXPECT_NE(ReadFloat("nan"), ReadFloat("nan"));
}

TEST(ConditionValue, OnlyAZeroThatIsWrittenHasASign) {
  for (const char* signless : {"-", "-abc", "- 1", "--0", "-.", "-e5"}) {
    EXPECT_EQ(ReadFloat(signless), 0.0F) << signless;
    EXPECT_FALSE(std::signbit(ReadFloat(signless))) << signless;
  }
  for (const char* negative : {"-0", "-.0", "-0x", "-0xg", "-1e-999"}) {
    EXPECT_EQ(ReadFloat(negative), 0.0F) << negative;
    EXPECT_TRUE(std::signbit(ReadFloat(negative))) << negative;
  }
}

TEST(ConditionValue, ReadsLongFloatsWithoutAnExponent) {
  const std::string zeros(400, '0');
  EXPECT_EQ(ReadFloat("1" + zeros), std::numeric_limits<float>::infinity());
  EXPECT_EQ(ReadFloat("0." + zeros + "1"), 0.0F);
  EXPECT_EQ(ReadFloat("1" + zeros + "e-400"), 1.0F);
  EXPECT_EQ(ReadFloat("0." + zeros + "1e401"), 1.0F);
}

TEST(ConditionValue, ReadsNumbersAsTheStandardRoutinesDo) {
  std::mt19937 random(7);
  const std::string alphabet = "0123456789.+-eExX pPnaif\t";
  for (int round = 0; round < 200'000; ++round) {
    std::string text;
    for (auto length = random() % 12; length > 0; --length) {
      text += alphabet[random() % alphabet.size()];
    }
    ASSERT_EQ(ReadInteger(text), std::strtoll(text.c_str(), nullptr, 10)) << text;
    // Where there is no number, some libraries give the 0 the sign that stands there.
    char* stop = nullptr;
    const double number = std::strtod(text.c_str(), &stop);
    const float expected = stop == text.c_str() ? 0.0F : static_cast<float>(number);
    const float actual = ReadFloat(text);
    const bool isSame = actual == expected && std::signbit(actual) == std::signbit(expected);
    ASSERT_TRUE(isSame || (actual != actual && expected != expected))
        << '"' << text << "\": " << actual << " for " << expected;
  }
}

TEST(ConditionValue, EndsWithItsArrayWhereThereIsNoNul) {
  const auto condition = std::make_unique<QUERY_CONDITION>();
  std::memset(condition->szValue, '7', sizeof(condition->szValue));
  const ConditionValue value(*condition);
  EXPECT_EQ(std::string(value.Text()), std::string(4096, '7'));
  EXPECT_EQ(value.Integer(), kMost);
}

TEST(ConditionValue, ReadsDatesAndTimesAndLeavesTheirTargetsWhereItCant) {
  const auto condition = std::make_unique<QUERY_CONDITION>();
  std::strcpy(condition->szValue, "1/31/1997");
  CZRDate date;
  EXPECT_TRUE(ConditionValue(*condition).ReadDate(date));
  EXPECT_EQ(date.GetJulianDate(), 35461);
  std::strcpy(condition->szValue, "09:30");
  EXPECT_FALSE(ConditionValue(*condition).ReadDate(date));
  EXPECT_EQ(date.GetJulianDate(), 35461);
  CZRTime time;
  EXPECT_TRUE(ConditionValue(*condition).ReadTime(time));
  EXPECT_EQ(time.GetTime(), 34200U);
}

TEST(SymbolText, LosesItsMarketPrefix) {
  const struct {
    const char* text;
    const char* kept;
    bool hadPrefix;
  } cases[] = {
      {"", "", false},
      {"IBM", "IBM", false},
      {"us:IBM", "IBM", true},
      {"US:IBM", "IBM", true},
      {"uS:IBM", "IBM", true},
      {"Us:I", "I", true},
      {"US:", "US:", false},
      {"US", "US", false},
      {"USA:B", "USA:B", false},
      {"US:A.B", "US:A.B", false},
      {"US:A:B", "US:A:B", false},
      {"US::", "US::", false},
      {"XS:IBM", "XS:IBM", false},
      {"UX:IBM", "UX:IBM", false},
      {"US.IBM", "US.IBM", false},
      {" US:IBM", " US:IBM", false},
      {"US:US:A", "US:US:A", false},
  };
  for (const auto& row : cases) {
    std::string symbol = "old";
    EXPECT_EQ(KeepSymbol(symbol, row.text), row.hadPrefix) << row.text;
    EXPECT_EQ(symbol, row.kept);
  }
}

TEST(SymbolText, IsCutBeforeItsPrefixIsLookedAt) {
  std::string symbol;
  EXPECT_FALSE(KeepSymbol(symbol, "123456789012345678901234567890X"));
  EXPECT_EQ(symbol, "123456789012345678901234567890");
  EXPECT_TRUE(KeepSymbol(symbol, "US:4567890123456789012345678901"));
  EXPECT_EQ(symbol, "456789012345678901234567890");
  // The point that would keep the prefix stands in what was cut off.
  EXPECT_TRUE(KeepSymbol(symbol, "US:456789012345678901234567890.B"));
  EXPECT_EQ(symbol, "456789012345678901234567890");
  EXPECT_FALSE(KeepSymbol(symbol, "US:45678901234567890123456789.B"));
  EXPECT_EQ(symbol, "US:45678901234567890123456789.");
}

}  // namespace
