// A column of values. Members are packed: a unary + hands a comparison a copy.
#include <array>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include <pxdutil/quotes/field_item.h>

#include "tests/support/allocation_counter.h"

namespace {

using pxd::test::AllocationCounter;
using Bytes = std::vector<unsigned char>;

static_assert(!std::is_polymorphic_v<CFieldItem>);
static_assert(sizeof(CFieldItem) == 22 + sizeof(void*));

CFieldItem Column(int type, int elemSize) {
  CFieldItem item;
  item.m_nFieldID = 235;
  item.m_nType = type;
  item.m_nElemSize = elemSize;
  return item;
}

void Store(CFieldItem& item, Bytes value, int maxCount) {
  item.storeFieldValue(value.data(), maxCount);
}

void Store(CFieldItem& item, std::string text, int maxCount) {
  item.storeFieldValue(text.data(), maxCount);
}

Bytes BufferOf(const CFieldItem& item) {
  return item.m_pValues == nullptr ? Bytes{}
                                   : Bytes(item.m_pValues, item.m_pValues + item.m_nBufSize);
}

void ExpectFresh(const CFieldItem& item) {
  EXPECT_EQ(+item.m_nFieldID, -1);
  EXPECT_EQ(+item.m_nType, 0);
  EXPECT_EQ(+item.m_nElemSize, 0);
  EXPECT_EQ(+item.m_nBufSize, 0);
  EXPECT_EQ(+item.m_wCount, 0);
  EXPECT_TRUE(item.m_pValues == nullptr);
  EXPECT_EQ(+item.m_bBorrowed, 0);
}

// The members stand in this order and without gaps.
TEST(FieldItem, MembersArePacked) {
  const CFieldItem item;
  const auto at = [&item](const void* member) {
    return static_cast<const char*>(member) - reinterpret_cast<const char*>(&item);
  };
  EXPECT_EQ(at(&item.m_nFieldID), 0);
  EXPECT_EQ(at(&item.m_nType), 4);
  EXPECT_EQ(at(&item.m_nElemSize), 8);
  EXPECT_EQ(at(&item.m_nBufSize), 12);
  EXPECT_EQ(at(&item.m_wCount), 16);
  EXPECT_EQ(at(&item.m_pValues), 18);
  EXPECT_EQ(at(&item.m_bBorrowed), static_cast<std::ptrdiff_t>(18 + sizeof(void*)));
}

TEST(FieldItem, StartsWithoutAFieldAndWithoutMemory) {
  const AllocationCounter counter;
  const CFieldItem item;
  ExpectFresh(item);
  EXPECT_EQ(counter.Count(), 0U);
}

TEST(FieldItem, ValuesStandEndToEndInAZeroedBuffer) {
  CFieldItem item = Column(8, 2);
  Store(item, Bytes{1, 2}, 3);
  EXPECT_EQ(+item.m_nBufSize, 6);
  EXPECT_EQ(BufferOf(item), (Bytes{1, 2, 0, 0, 0, 0}));
  Store(item, Bytes{3, 4}, 3);
  EXPECT_EQ(+item.m_wCount, 2);
  EXPECT_EQ(BufferOf(item), (Bytes{1, 2, 3, 4, 0, 0}));
}

// What three bytes become in two places of three, by type code: whole, a text, one byte or nothing.
TEST(FieldItem, EachTypeStoresInItsWay) {
  enum Way { kNothing, kWhole, kText, kByte };
  const std::array<Way, 20> ways = {kWhole,   kWhole,   kText,    kNothing, kWhole,
                                    kWhole,   kWhole,   kWhole,   kWhole,   kWhole,
                                    kNothing, kByte,    kNothing, kWhole,   kNothing,
                                    kNothing, kNothing, kNothing, kNothing, kNothing};
  const Bytes buffers[] = {{0, 0, 0, 0, 0, 0},
                           {'a', 'b', 'c', 'a', 'b', 'c'},
                           {'a', 'b', 0, 'a', 'b', 0},
                           {'a', 'a', 0, 0, 0, 0}};
  for (int type = -1; type < 20; ++type) {
    const Way way = type < 0 ? kNothing : ways[static_cast<std::size_t>(type)];
    CFieldItem item = Column(type, 3);
    Store(item, Bytes{'a', 'b', 'c'}, 2);
    Store(item, Bytes{'a', 'b', 'c'}, 2);
    EXPECT_EQ(BufferOf(item), buffers[way]) << type;
    EXPECT_EQ(+item.m_wCount, way == kNothing ? 0 : 2) << type;
  }
}

TEST(FieldItem, ACharacterIsMeantNotToBeStoredAlthoughItIsARealType) {
  CFieldItem item = Column(10, 1);
  Store(item, Bytes{'x'}, 4);
  EXPECT_EQ(+item.m_wCount, 0);
  EXPECT_EQ(BufferOf(item), Bytes(4, 0));  // the room is made all the same
}

TEST(FieldItem, AByteIsMeantToStandAtItsIndexWhateverTheSizeOfAValue) {
  CFieldItem item = Column(11, 4);
  Store(item, Bytes{0xAA}, 2);
  Store(item, Bytes{0xBB}, 2);
  EXPECT_EQ(BufferOf(item), (Bytes{0xAA, 0xBB, 0, 0, 0, 0, 0, 0}));
}

TEST(FieldItem, TextsAreCutSoThatTheirPlaceEndsInAZero) {
  struct Row {
    std::string text;
    Bytes place;
  };
  const Row rows[] = {
      {"", {0, 0, 0, 0}},           {"ab", {'a', 'b', 0, 0}},      {"abc", {'a', 'b', 'c', 0}},
      {"abcd", {'a', 'b', 'c', 0}}, {"abcde", {'a', 'b', 'c', 0}},
  };
  for (const Row& row : rows) {
    CFieldItem item = Column(2, 4);
    Store(item, row.text, 1);
    EXPECT_EQ(BufferOf(item), row.place) << row.text;
    EXPECT_EQ(+item.m_wCount, 1) << row.text;
  }
}

// A text isn't followed by a zero of its own: the fill has put it there.
TEST(FieldItem, AShorterTextIsMeantToLeaveWhatStoodBehindItsEnd) {
  CFieldItem item = Column(2, 4);
  Store(item, std::string("abc"), 1);
  item.m_wCount = 0;
  Store(item, std::string("x"), 1);
  EXPECT_EQ(BufferOf(item), (Bytes{'x', 'b', 'c', 0}));
}

TEST(FieldItem, ATextIsReadNoFurtherThanItIsKept) {
  CFieldItem item = Column(2, 4);
  Store(item, Bytes{'a', 'b', 'c'}, 1);  // no NUL, and nothing behind the third
  EXPECT_EQ(BufferOf(item), (Bytes{'a', 'b', 'c', 0}));
}

TEST(FieldItem, AFullItemTakesNothing) {
  CFieldItem item = Column(9, 2);
  for (int i = 0; i < 5; ++i) {
    Store(item, Bytes{1, 0}, 2);
  }
  EXPECT_EQ(+item.m_wCount, 2);
  EXPECT_EQ(BufferOf(item), (Bytes{1, 0, 1, 0}));
}

TEST(FieldItem, NoRoomMeansNoBuffer) {
  for (const int maxCount : {0, -1, std::numeric_limits<int>::min()}) {
    CFieldItem item = Column(9, 2);
    Store(item, Bytes{1, 0}, maxCount);
    EXPECT_TRUE(item.m_pValues == nullptr) << maxCount;
    EXPECT_EQ(+item.m_wCount, 0) << maxCount;
  }
}

TEST(FieldItem, NothingIsWrittenBehindTheBuffer) {
  for (const int type : {2, 6, 11}) {
    CFieldItem item = Column(type, 4);
    Store(item, Bytes{1, 1, 1, 1}, 1);
    item.m_wCount = 4;  // the first index that isn't there, for a byte too
    const Bytes before = BufferOf(item);
    Store(item, Bytes{2, 2, 2, 2}, 100);
    EXPECT_EQ(BufferOf(item), before) << type;
    EXPECT_EQ(+item.m_wCount, 4) << type;
  }
}

TEST(FieldItem, APlaceThatOnlyPartlyFitsTakesNothing) {
  unsigned char buffer[8] = {};
  for (const int type : {2, 6}) {
    CFieldItem item = Column(type, 4);
    item.m_pValues = buffer;
    item.m_bBorrowed = 1;
    item.m_nBufSize = 7;
    item.m_wCount = 1;
    Store(item, Bytes{9, 9, 9, 9}, 2);
    EXPECT_EQ(+item.m_wCount, 1) << type;
    EXPECT_EQ(BufferOf(item), Bytes(7, 0)) << type;
    item.m_nBufSize = 8;
    Store(item, Bytes{9, 9, 9, 9}, 2);
    EXPECT_EQ(+item.m_wCount, 2) << type;
    EXPECT_NE(BufferOf(item), Bytes(8, 0)) << type;
    std::fill(std::begin(buffer), std::end(buffer), static_cast<unsigned char>(0));
  }
}

TEST(FieldItem, DamagedMembersWriteNothing) {
  CFieldItem item = Column(6, 4);
  Store(item, Bytes{1, 1, 1, 1}, 2);
  const Bytes before = BufferOf(item);
  item.m_wCount = -1;
  Store(item, Bytes{2, 2, 2, 2}, 2);
  EXPECT_EQ(BufferOf(item), before);
  item.m_wCount = 1;
  item.m_nElemSize = std::numeric_limits<std::int32_t>::max();
  Store(item, Bytes{2, 2, 2, 2}, 2);
  EXPECT_EQ(BufferOf(item), before);
  item.m_nElemSize = std::numeric_limits<std::int32_t>::min();
  Store(item, Bytes{2, 2, 2, 2}, 2);
  EXPECT_EQ(BufferOf(item), before);
  item.m_nElemSize = 4;
  item.m_wCount = 0;
  const std::int32_t size = item.m_nBufSize;
  item.m_nBufSize = -8;
  Store(item, Bytes{2, 2, 2, 2}, 2);
  item.m_nBufSize = size;
  EXPECT_EQ(BufferOf(item), before);
}

TEST(FieldItem, ANullValueIsNotStored) {
  for (const int type : {2, 6, 11}) {
    CFieldItem item = Column(type, 4);
    item.storeFieldValue(nullptr, 2);
    EXPECT_EQ(+item.m_wCount, 0) << type;
    EXPECT_EQ(BufferOf(item), Bytes(8, 0)) << type;
  }
}

TEST(FieldItem, TheCountStopsAheadOfItsLimit) {
  CFieldItem item = Column(11, 1);
  item.m_wCount = 32766;
  Store(item, Bytes{7}, 40000);
  EXPECT_EQ(+item.m_nBufSize, 40000);
  EXPECT_EQ(+item.m_wCount, 32767);
  Store(item, Bytes{7}, 40000);
  EXPECT_EQ(+item.m_wCount, 32767);
  EXPECT_EQ(+item.m_pValues[32766], 7);
  EXPECT_EQ(+item.m_pValues[32767], 0);
}

TEST(FieldItem, ABufferBeyondItsSizesRangeIsNotMade) {
  CFieldItem item = Column(6, std::numeric_limits<std::int32_t>::max());
  EXPECT_THROW(Store(item, Bytes{1}, 2), std::bad_alloc);
  EXPECT_THROW(Store(item, Bytes{1}, std::numeric_limits<int>::max()), std::bad_alloc);
  EXPECT_TRUE(item.m_pValues == nullptr);
  EXPECT_EQ(+item.m_nBufSize, 0);
}

TEST(FieldItem, WithoutMemoryNothingChanges) {
  CFieldItem item = Column(6, 4);
  Bytes value = {1, 2, 3, 4};
  {
    const pxd::test::ScarceMemory none(0);
    EXPECT_THROW(item.storeFieldValue(value.data(), 2), std::bad_alloc);
  }
  EXPECT_EQ(+item.m_nBufSize, 0);
  EXPECT_EQ(+item.m_wCount, 0);
  item.storeFieldValue(value.data(), 2);
  const pxd::test::ScarceMemory theItemAlone(1);
  EXPECT_THROW(std::make_unique<CFieldItem>(item), std::bad_alloc);
}

TEST(FieldItem, OnlyTheFirstValueNeedsMemory) {
  CFieldItem item = Column(6, 4);
  Bytes value = {1, 2, 3, 4};
  item.storeFieldValue(value.data(), 100);
  const AllocationCounter counter;
  for (int i = 0; i < 200; ++i) {
    item.storeFieldValue(value.data(), 100);
  }
  EXPECT_EQ(+item.m_wCount, 100);
  EXPECT_EQ(counter.Count(), 0U);
}

TEST(FieldItem, ACopyHasABufferOfItsOwn) {
  CFieldItem item = Column(9, 2);
  Store(item, Bytes{1, 2}, 2);
  item.m_bBorrowed = 1;
  const CFieldItem copy(item);
  item.m_bBorrowed = 0;
  EXPECT_EQ(+copy.m_nFieldID, 235);
  EXPECT_EQ(+copy.m_nType, 9);
  EXPECT_EQ(+copy.m_nElemSize, 2);
  EXPECT_EQ(+copy.m_wCount, 1);
  EXPECT_EQ(+copy.m_bBorrowed, 0);
  EXPECT_TRUE(copy.m_pValues != item.m_pValues);
  EXPECT_EQ(BufferOf(copy), (Bytes{1, 2, 0, 0}));
}

TEST(FieldItem, ACopyOfAnItemWithoutBufferHasNone) {
  CFieldItem item = Column(9, 2);
  item.m_nBufSize = 4;
  item.m_wCount = 2;
  const AllocationCounter counter;
  const CFieldItem copy(item);
  EXPECT_EQ(counter.Count(), 0U);
  EXPECT_TRUE(copy.m_pValues == nullptr);
  EXPECT_EQ(+copy.m_nBufSize, 4);
  EXPECT_EQ(+copy.m_wCount, 2);
}

TEST(FieldItem, AssignmentIsMeantToShareTheBuffer) {
  CFieldItem item = Column(9, 2);
  Store(item, Bytes{1, 2}, 2);
  CFieldItem other;
  other = item;
  EXPECT_TRUE(other.m_pValues == item.m_pValues);
  EXPECT_EQ(+other.m_bBorrowed, 0);  // so both would free it: one must be told that it borrows
  other.m_bBorrowed = 1;
  Store(other, Bytes{3, 4}, 2);
  EXPECT_EQ(BufferOf(item), (Bytes{1, 2, 3, 4}));
  EXPECT_EQ(+item.m_wCount, 1);
  EXPECT_EQ(+other.m_wCount, 2);
}

TEST(FieldItem, AssignmentIsMeantToForgetTheOldBuffer) {
  unsigned char buffer[2] = {5, 6};
  CFieldItem item = Column(9, 2);
  item.m_pValues = buffer;
  item.m_nBufSize = 2;
  item.m_bBorrowed = 1;
  item = CFieldItem();
  ExpectFresh(item);
  EXPECT_EQ(buffer[0], 5);
}

TEST(FieldItem, TransferMovesTheBuffer) {
  CFieldItem source = Column(9, 2);
  Store(source, Bytes{1, 2}, 2);
  const unsigned char* const buffer = source.m_pValues;
  CFieldItem target = Column(6, 4);
  Store(target, Bytes{9, 9, 9, 9}, 2);  // freed, as the leak sanitizer sees
  target.transfer(source);
  EXPECT_TRUE(target.m_pValues == buffer);
  EXPECT_EQ(+target.m_nType, 9);
  EXPECT_EQ(+target.m_wCount, 1);
  EXPECT_TRUE(source.m_pValues == nullptr);
  EXPECT_EQ(+source.m_nFieldID, 235);
  EXPECT_EQ(+source.m_nBufSize, 4);
  EXPECT_EQ(+source.m_wCount, 1);
}

TEST(FieldItem, TransferLeavesABorrowedBufferToItsOwner) {
  unsigned char buffer[2] = {5, 6};
  CFieldItem target = Column(9, 2);
  target.m_pValues = buffer;
  target.m_nBufSize = 2;
  target.m_bBorrowed = 1;
  CFieldItem source = Column(9, 2);
  Store(source, Bytes{1, 2}, 1);
  target.transfer(source);
  EXPECT_EQ(+target.m_bBorrowed, 0);
  EXPECT_EQ(BufferOf(target), (Bytes{1, 2}));
  EXPECT_EQ(buffer[0], 5);
}

TEST(FieldItem, TransferCarriesWhatIsBorrowed) {
  unsigned char buffer[2] = {5, 6};
  CFieldItem source = Column(9, 2);
  source.m_pValues = buffer;
  source.m_nBufSize = 2;
  source.m_bBorrowed = 1;
  CFieldItem target;
  target.transfer(source);
  EXPECT_TRUE(target.m_pValues == buffer);
  EXPECT_EQ(+target.m_bBorrowed, 1);
}

TEST(FieldItem, TransferToItselfChangesNothing) {
  CFieldItem item = Column(9, 2);
  Store(item, Bytes{1, 2}, 1);
  CFieldItem& same = item;
  item.transfer(same);
  EXPECT_EQ(BufferOf(item), (Bytes{1, 2}));
}

TEST(FieldItem, TransferBetweenItemsThatShareKeepsTheBuffer) {
  for (const int borrowed : {0, 1}) {
    CFieldItem item = Column(9, 2);
    Store(item, Bytes{1, 2}, 1);
    CFieldItem sharing;
    sharing = item;
    sharing.m_bBorrowed = borrowed;
    item.transfer(sharing);
    EXPECT_TRUE(sharing.m_pValues == nullptr);
    EXPECT_EQ(+item.m_bBorrowed, 0);
    EXPECT_EQ(BufferOf(item), (Bytes{1, 2}));
  }
}

TEST(FieldItem, ResetFreesAndStartsAnew) {
  CFieldItem item = Column(9, 2);
  Store(item, Bytes{1, 2}, 1);
  item.reset();
  ExpectFresh(item);
  item.reset();
  ExpectFresh(item);
}

TEST(FieldItem, ResetLeavesABorrowedBufferToItsOwner) {
  unsigned char buffer[2] = {5, 6};
  CFieldItem item = Column(9, 2);
  item.m_pValues = buffer;
  item.m_nBufSize = 2;
  item.m_bBorrowed = 1;
  item.reset();
  ExpectFresh(item);
  EXPECT_EQ(buffer[0], 5);
}

}  // namespace
