#include <pxdutil/query/symbol_key.h>

#include <string>
#include <type_traits>

#include <gtest/gtest.h>

namespace {

static_assert(!std::is_polymorphic_v<SYMBOL_KEY>);
static_assert(std::is_same_v<decltype(&SYMBOL_KEY::operator==),
                             int (SYMBOL_KEY::*)(const SYMBOL_KEY&) const>);

SYMBOL_KEY Key(int dataSource, int category, int exchange, const char* symbol) {
  SYMBOL_KEY key;
  key.dataSource = static_cast<std::uint8_t>(dataSource);
  key.category = static_cast<std::uint8_t>(category);
  key.exchange = static_cast<std::uint16_t>(exchange);
  key.symbol = symbol;
  return key;
}

TEST(SymbolKey, IsEqualByAllFour) {
  const SYMBOL_KEY key = Key(1, 2, 3, "IBM");
  EXPECT_EQ(key == Key(1, 2, 3, "IBM"), 1);
  EXPECT_EQ(key != Key(1, 2, 3, "IBM"), 0);
  for (const SYMBOL_KEY& other :
       {Key(9, 2, 3, "IBM"), Key(1, 9, 3, "IBM"), Key(1, 2, 9, "IBM"), Key(1, 2, 3, "ibm")}) {
    EXPECT_EQ(key == other, 0);
    EXPECT_EQ(key != other, 1);
  }
  EXPECT_TRUE(SYMBOL_KEY().symbol.empty());
}

TEST(SymbolKey, OrdersSymbolsUpwards) {
  EXPECT_LT(Key(0, 0, 0, "A").Compare(Key(9, 9, 9, "B")), 0);
  EXPECT_GT(Key(9, 9, 9, "B").Compare(Key(0, 0, 0, "A")), 0);
  EXPECT_LT(Key(0, 0, 0, "A").Compare(Key(0, 0, 0, "AA")), 0);
  EXPECT_EQ(Key(1, 2, 3, "A").Compare(Key(1, 2, 3, "A")), 0);
}

TEST(SymbolKey, OrdersNumbersDownwardsOnPurpose) {
  EXPECT_EQ(Key(1, 5, 5, "A").Compare(Key(2, 5, 5, "A")), 1);
  EXPECT_EQ(Key(2, 5, 5, "A").Compare(Key(1, 5, 5, "A")), -1);
  EXPECT_EQ(Key(5, 5, 1, "A").Compare(Key(5, 5, 2, "A")), 1);
  EXPECT_EQ(Key(5, 5, 2, "A").Compare(Key(5, 5, 1, "A")), -1);
  EXPECT_EQ(Key(5, 1, 5, "A").Compare(Key(5, 2, 5, "A")), 1);
  EXPECT_EQ(Key(5, 2, 5, "A").Compare(Key(5, 1, 5, "A")), -1);
}

TEST(SymbolKey, ComparesDataSourceThenExchangeThenCategory) {
  EXPECT_EQ(Key(1, 9, 9, "A").Compare(Key(2, 0, 0, "A")), 1);
  EXPECT_EQ(Key(5, 9, 1, "A").Compare(Key(5, 0, 2, "A")), 1);
}

TEST(SymbolKey, IsAValue) {
  SYMBOL_KEY key = Key(1, 2, 3, "IBM");
  const SYMBOL_KEY copy(key);
  key = Key(4, 5, 6, "XYZ");
  EXPECT_EQ(copy == Key(1, 2, 3, "IBM"), 1);
  EXPECT_EQ(key == Key(4, 5, 6, "XYZ"), 1);
}

}  // namespace
