#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>

#include <gtest/gtest.h>
#include <pxdutil/query/detail/query_numbers.h>

namespace {

using pxd::detail::FloatIn;
using pxd::detail::IntegerIn;

TEST(QueryNumbers, AnIntegerEndsAtTheFirstCharacterThatIsNoDigit) {
  EXPECT_EQ(IntegerIn("0"), 0);
  EXPECT_EQ(IntegerIn("12e3"), 12);
  EXPECT_EQ(IntegerIn("1-2"), 1);
  EXPECT_EQ(IntegerIn("7.9"), 7);
  EXPECT_EQ(IntegerIn("0000000000000000042"), 42);
}

TEST(QueryNumbers, AnIntegerKeepsItsLow32Bits) {
  EXPECT_EQ(IntegerIn("2147483647"), 2147483647);
  EXPECT_EQ(IntegerIn("2147483648"), -2147483647 - 1);
  EXPECT_EQ(IntegerIn("4294967295"), -1);
  EXPECT_EQ(IntegerIn("4294967296"), 0);
  EXPECT_EQ(IntegerIn("4294967301"), 5);
  EXPECT_EQ(IntegerIn("9223372036854775806"), -2);
}

TEST(QueryNumbers, AnIntegerStopsAtTheLargestOf64Bits) {
  EXPECT_EQ(IntegerIn("9223372036854775807"), -1);
  EXPECT_EQ(IntegerIn("9223372036854775808"), -1);
  EXPECT_EQ(IntegerIn("9999999999999999999"), -1);
}

TEST(QueryNumbers, AFloatTakesWhatBeginsOne) {
  EXPECT_EQ(FloatIn("1.5"), 1.5F);
  EXPECT_EQ(FloatIn("3."), 3.0F);
  EXPECT_EQ(FloatIn("1.5e1"), 15.0F);
  EXPECT_EQ(FloatIn("1.e2"), 100.0F);
  EXPECT_EQ(FloatIn("2E+1"), 20.0F);
  EXPECT_EQ(FloatIn("25e-1"), 2.5F);
  EXPECT_EQ(FloatIn("2e"), 2.0F);
  EXPECT_EQ(FloatIn("2e+"), 2.0F);
  EXPECT_EQ(FloatIn("2e-."), 2.0F);
  EXPECT_EQ(FloatIn("1-2"), 1.0F);
  EXPECT_EQ(FloatIn("1.2.3"), 1.2F);
}

TEST(QueryNumbers, AFloatBeyondTheRangeIsInfiniteOrZero) {
  EXPECT_EQ(FloatIn("1e39"), HUGE_VALF);
  EXPECT_EQ(FloatIn("1e999"), HUGE_VALF);
  EXPECT_EQ(FloatIn("9e99999999999"), HUGE_VALF);
  EXPECT_EQ(FloatIn("1e-60"), 0.0F);
  EXPECT_EQ(FloatIn("1e-999"), 0.0F);
  EXPECT_EQ(FloatIn("1e-320"), 0.0F);
  EXPECT_EQ(FloatIn("0e999"), 0.0F);
}

TEST(QueryNumbers, AFloatIsRoundedToDoubleFirst) {
  // Half way between two floats and a little more, which the double in between loses.
  EXPECT_EQ(FloatIn("16777217.000000001"), 16777216.0F);
}

TEST(QueryNumbers, FloatsAreThoseOfTheCLibrary) {
  std::mt19937 random(7);
  constexpr char kCharacters[] = "0123456789012345678901234567890.+-eE";
  for (int i = 0; i < 200000; ++i) {
    std::string text(1, kCharacters[random() % 10]);
    const std::size_t length = random() % 19;
    while (text.size() <= length) {
      text += kCharacters[random() % (sizeof kCharacters - 1)];
    }
    text.resize(std::min<std::size_t>(text.size(), 19));
    const float expected = static_cast<float>(std::strtod(text.c_str(), nullptr));
    const float value = FloatIn(text);
    ASSERT_EQ(std::bit_cast<std::uint32_t>(value), std::bit_cast<std::uint32_t>(expected)) << text;
    ASSERT_EQ(IntegerIn(text), static_cast<std::int32_t>(std::strtoll(text.c_str(), nullptr, 10)))
        << text;
  }
}

}  // namespace
