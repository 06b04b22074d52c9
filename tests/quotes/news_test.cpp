// News records and their handles. Records under test stand in blocks of exactly their size, so that
// the address sanitizer sees a byte read or written beyond them.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <numeric>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include <pxdutil/quotes/news.h>

#include "tests/support/allocation_counter.h"

namespace {

using Bytes = std::vector<unsigned char>;

static_assert(!std::is_copy_constructible_v<CZRGSNews> && !std::is_copy_assignable_v<CZRGSNews>);
static_assert(!std::is_polymorphic_v<CZRGSNews>);
static_assert(sizeof(ZRGS_NEWS_DATA_TYPE) == 4);

// The plain 0 would do for a null record too.
constexpr unsigned short kSmallest = 0;

// A record of one byte value throughout.
std::unique_ptr<ZRGS_NEWS> Filled(unsigned char byte) {
  auto record = std::make_unique<ZRGS_NEWS>();
  std::memset(record.get(), byte, sizeof(ZRGS_NEWS));
  return record;
}

// A caller's buffer under a handle.
class Wrapped {
 public:
  explicit Wrapped(std::size_t size, char byte = 'z')
      : m_size(size), m_bytes(std::make_unique<char[]>(size)) {
    std::fill_n(m_bytes.get(), size, byte);
    news = std::make_unique<CZRGSNews>(m_bytes.get(), static_cast<unsigned short>(size));
  }
  [[nodiscard]] std::string Text() const { return {m_bytes.get(), m_size}; }
  [[nodiscard]] char* Data() { return m_bytes.get(); }

  std::unique_ptr<CZRGSNews> news;

 private:
  std::size_t m_size;
  std::unique_ptr<char[]> m_bytes;
};

Bytes BytesOf(const CZRGSNews& news, std::size_t count) {
  const auto* const bytes = reinterpret_cast<const unsigned char*>(news.GetZRGS_NEWS());
  return {bytes, bytes + count};
}

std::string RawDataOf(const CZRGSNews& news) {
  unsigned int size = 12345;
  const void* const data = news.GetRawData(size);
  return data != nullptr ? std::string(static_cast<const char*>(data), size) : "null";
}

TEST(NewsRecord, HasItsFieldsAtTheirPlaces) {
  const Bytes bytes = {0x02, 0, 0, 0, 0x11, 0x12, 0x13, 0x14, 0x21, 0x22, 0x23, 0x24, 0x31, 0x41};
  ZRGS_NEWS record{};
  std::memcpy(&record, bytes.data(), bytes.size());
  EXPECT_EQ(sizeof record, 273U);
  EXPECT_EQ(ZRGS_NEWS_DATA_TYPE{record.eDataType}, ZRGS_NEWS_RAW_DATA);
  EXPECT_EQ(std::uint32_t{record.dwDataFormat}, 0x14131211U);
  EXPECT_EQ(std::uint32_t{record.dwFlags}, 0x24232221U);
  EXPECT_EQ(record.bStatus, 0x31);
  EXPECT_EQ(record.body[0], 0x41);
  EXPECT_EQ(sizeof record.body, 260U);
}

TEST(NewsRecord, DataTypesHaveTheirNumbers) {
  EXPECT_EQ(ZRGS_NEWS_FILE_NAME, 0);
  EXPECT_EQ(ZRGS_NEWS_HINT, 1);
  EXPECT_EQ(ZRGS_NEWS_RAW_DATA, 2);
}

TEST(News, AHandleReadsEveryField) {
  ZRGS_NEWS record{};
  const Bytes bytes = {0x01, 0,    0,    0,    0x11, 0x12, 0x13, 0x14, 0x21,
                       0x22, 0x23, 0x24, 0x31, 0x41, 0x42, 0x43, 0x44};
  std::memcpy(&record, bytes.data(), bytes.size());
  const CZRGSNews news(&record);
  EXPECT_EQ(news.GetZRGS_NEWS(), &record);
  EXPECT_EQ(news.GetType(), ZRGS_NEWS_HINT);
  EXPECT_EQ(news.GetDataFormat(), 0x14131211U);
  EXPECT_EQ(news.GetFlags(), 0x24232221U);
  EXPECT_EQ(news.GetStatus(), 0x31);
  EXPECT_EQ(news.GetHint(), 0x44434241U);
  EXPECT_EQ(news.GetSize(), 273U);
}

TEST(News, AHintIsWrittenByteForByte) {
  CZRGSNews news(kSmallest);
  news.SetFlags(0x24232221);
  news.SetNewsHint(0x14131211, 0x44434241, 0x31);
  EXPECT_EQ(BytesOf(news, 18), (Bytes{0x01, 0, 0, 0, 0x11, 0x12, 0x13, 0x14, 0x21, 0x22, 0x23, 0x24,
                                      0x31, 0x41, 0x42, 0x43, 0x44, 0}));
  EXPECT_EQ(news.GetSize(), 273U);
}

TEST(News, AFileNameIsWrittenByteForByte) {
  CZRGSNews news(kSmallest);
  news.SetNewsHint(1, 0xFFFFFFFF, 0x31);
  news.SetNewsFileName(0x14131211, "ab");
  EXPECT_EQ(BytesOf(news, 18),
            (Bytes{0, 0, 0, 0, 0x11, 0x12, 0x13, 0x14, 0, 0, 0, 0, 0x31, 'a', 'b', 0, 0xFF, 0}));
  EXPECT_STREQ(news.GetFileName(), "ab");
  EXPECT_EQ(news.GetSize(), 273U);
}

TEST(News, RawDataIsWrittenByteForByte) {
  CZRGSNews news(kSmallest);
  news.SetNewsHint(1, 0xFFFFFFFF, 0x31);
  news.SetNewsRawData(0x14131211, "story", 5);
  EXPECT_EQ(BytesOf(news, 23), (Bytes{2,    0, 0, 0, 0x11, 0x12, 0x13, 0x14, 0,   0,   0, 0,
                                      0x31, 5, 0, 0, 0,    's',  't',  'o',  'r', 'y', 0}));
  EXPECT_EQ(RawDataOf(news), "story");
}

TEST(News, TheSizeOfRawDataIsMeantToBeFiveBytesShortOfItsEnd) {
  const std::string story(100, 's');
  CZRGSNews news(100);
  news.SetNewsRawData(1, story.data(), 100);
  EXPECT_EQ(news.GetSize(), 112U);
  unsigned int size = 0;
  const auto* const data = static_cast<const char*>(news.GetRawData(size));
  EXPECT_EQ(data + size, reinterpret_cast<const char*>(news.GetZRGS_NEWS()) + 117);
}

TEST(News, TheSizeOfEmptyRawDataIsTwelve) {
  CZRGSNews news(kSmallest);
  news.SetNewsRawData(1, nullptr, 0);
  EXPECT_EQ(news.GetType(), ZRGS_NEWS_RAW_DATA);
  EXPECT_EQ(news.GetSize(), 12U);
  EXPECT_EQ(RawDataOf(news), "");
}

TEST(News, ATypeThatIsNoneHasTheStandardSize) {
  CZRGSNews news(kSmallest);
  for (const int type : {-1, 0, 1, 3, 255}) {
    news.SetType(static_cast<ZRGS_NEWS_DATA_TYPE>(type));
    EXPECT_EQ(news.GetType(), type);
    EXPECT_EQ(news.GetSize(), 273U) << type;
  }
}

// ---- Who may write ----

TEST(News, AHandleOnARecordChangesNothingInIt) {
  const auto record = Filled(0xEE);
  CZRGSNews news(record.get());
  news.SetNewsHint(1, 2, 3);
  news.SetNewsFileName(1, "name");
  news.SetNewsRawData(1, "", 0);
  news.SetType(ZRGS_NEWS_HINT);
  news.SetMapIndex(7);
  EXPECT_EQ(BytesOf(news, 273), Bytes(273, 0xEE));
}

TEST(News, AHandleOnARecordHandsOutNoBuffer) {
  const auto record = Filled(0);
  CZRGSNews news(record.get());
  EXPECT_EQ(news.GetBuffer(0), nullptr);
  EXPECT_EQ(news.GetBuffer(1), nullptr);
  EXPECT_EQ(news.GetZRGS_NEWS(), record.get());
}

TEST(News, FlagsAreMeantToBeWrittenInARecordThatIsOnlyLookedAt) {
  const auto record = Filled(0);
  CZRGSNews news(record.get());
  news.SetFlags(0x24232221);
  Bytes expected(273, 0);
  std::iota(expected.begin() + 8, expected.begin() + 12, static_cast<unsigned char>(0x21));
  EXPECT_EQ(BytesOf(news, 273), expected);
}

TEST(News, FlagsKeepTheirLow32Bits) {
  CZRGSNews news(kSmallest);
  news.SetFlags(0xFFFFFFFFUL);
  EXPECT_EQ(news.GetFlags(), 0xFFFFFFFFUL);
  EXPECT_EQ(news.GetDataFormat(), 0U);
  EXPECT_EQ(news.GetStatus(), 0U);
}

TEST(News, TheMapIndexIsTheHandlesAlone) {
  const auto record = Filled(0xEE);
  CZRGSNews news(record.get());
  EXPECT_EQ(news.GetMapIndex(), 0U);
  news.SetMapIndex(0xFFFFFFFE);
  EXPECT_EQ(news.GetMapIndex(), 0xFFFFFFFEU);
  EXPECT_EQ(BytesOf(news, 273), Bytes(273, 0xEE));
}

// ---- An own record ----

TEST(News, AnOwnRecordIsZeroed) {
  const CZRGSNews news(kSmallest);
  EXPECT_EQ(BytesOf(news, 273), Bytes(273, 0));
}

TEST(News, AnOwnCapacityIsMeantToBe273MoreThanAskedFor) {
  struct Row {
    unsigned short size;
    unsigned int capacity;
  };
  const Row rows[] = {{0, 273},       {1, 274},       {100, 373},    {65261, 65534},
                      {65262, 65535}, {65263, 65535}, {65535, 65535}};
  for (const Row& row : rows) {
    CZRGSNews news(row.size);
    EXPECT_EQ(news.GetBuffer(row.capacity), news.GetZRGS_NEWS()) << row.size;
    EXPECT_EQ(news.GetBuffer(row.capacity + 1), nullptr) << row.size;
  }
}

TEST(News, AnOwnRecordHoldsAsMuchRawDataAsItsCapacitySays) {
  for (const unsigned short size : std::initializer_list<unsigned short>{0, 27, 65262, 65535}) {
    CZRGSNews news(size);
    const std::size_t capacity = std::min(size + 273U, 65535U);
    const std::string story(capacity, 's');
    news.SetNewsRawData(1, story.data(), static_cast<unsigned int>(capacity));
    EXPECT_EQ(RawDataOf(news), story) << size;
    EXPECT_EQ(news.GetSize(), capacity + 12) << size;
  }
}

TEST(News, AnOwnRecordTakesTheBytesItStates) {
  const pxd::test::AllocationCounter counter;
  const CZRGSNews news(100);
  EXPECT_EQ(counter.Count(), 1U);
  EXPECT_EQ(counter.Bytes(), 373U + 17U);
}

TEST(News, RawDataAboveTheCapacityChangesNothing) {
  CZRGSNews news(kSmallest);
  news.SetNewsHint(1, 2, 3);
  const Bytes before = BytesOf(news, 273);
  const std::string story(70000, 's');
  news.SetNewsRawData(9, story.data(), 274);
  news.SetNewsRawData(9, story.data(), 70000);
  news.SetNewsRawData(9, story.data(), 0xFFFFFFFF);
  EXPECT_EQ(BytesOf(news, 273), before);
}

TEST(News, RawDataThatIsNotThereChangesNothing) {
  CZRGSNews news(kSmallest);
  news.SetNewsHint(1, 2, 3);
  news.SetNewsRawData(9, nullptr, 1);
  EXPECT_EQ(news.GetType(), ZRGS_NEWS_HINT);
  EXPECT_EQ(news.GetHint(), 2U);
}

TEST(News, RawDataMayComeFromTheRecordItself) {
  CZRGSNews news(kSmallest);
  news.SetNewsFileName(1, "abcdefghijkl");
  news.SetNewsRawData(1, news.GetFileName(), 12);
  EXPECT_EQ(RawDataOf(news), "abcdefghijkl");
  unsigned int size = 0;
  const auto* const data = static_cast<const char*>(news.GetRawData(size));
  news.SetNewsRawData(1, data + 2, 10);
  EXPECT_EQ(RawDataOf(news), "cdefghijkl");
  news.SetNewsRawData(1, "xyz", 4);
  news.SetNewsFileName(1, data + 1);
  EXPECT_STREQ(news.GetFileName(), "yz");
}

TEST(News, AFileNameIsCutTo259CharactersAndItsNul) {
  for (const std::size_t length : {0U, 1U, 258U, 259U, 260U, 300U, 5000U}) {
    CZRGSNews news(1000);
    const std::string name(length, 'n');
    std::memset(news.GetBuffer(1273), 'z', 1273);
    news.SetNewsFileName(1, name.c_str());
    EXPECT_EQ(news.GetFileName(), name.substr(0, 259)) << length;
    EXPECT_EQ(BytesOf(news, 274).back(), 'z') << length;  // the body's 260 bytes are its own
  }
}

TEST(News, ANullFileNameIsEmpty) {
  CZRGSNews news(kSmallest);
  news.SetNewsFileName(7, nullptr);
  EXPECT_EQ(news.GetDataFormat(), 7U);
  EXPECT_STREQ(news.GetFileName(), "");
}

TEST(News, WithoutMemoryTheRecordIsNull) {
  const pxd::test::ScarceMemory none(0);
  CZRGSNews news(100);
  EXPECT_EQ(news.GetZRGS_NEWS(), nullptr);
  EXPECT_EQ(news.GetBuffer(0), nullptr);
  EXPECT_EQ(news.GetSize(), 0U);
  news.SetNewsHint(1, 2, 3);
  news.SetNewsFileName(1, "name");
  news.SetNewsRawData(1, "raw", 3);
  news.SetType(ZRGS_NEWS_RAW_DATA);
  news.SetFlags(1);
  EXPECT_EQ(news.GetSize(), 0U);
}

TEST(News, ANullRecordReadsAsNothing) {
  CZRGSNews looking(nullptr);
  CZRGSNews wrapping(nullptr, 300);
  for (CZRGSNews* const news : {&looking, &wrapping}) {
    news->SetFlags(1);
    news->SetNewsHint(1, 2, 3);
    EXPECT_EQ(news->GetZRGS_NEWS(), nullptr);
    EXPECT_EQ(news->GetType(), 0);
    EXPECT_EQ(news->GetDataFormat(), 0U);
    EXPECT_EQ(news->GetFlags(), 0U);
    EXPECT_EQ(news->GetStatus(), 0);
    EXPECT_EQ(news->GetHint(), 0U);
    EXPECT_STREQ(news->GetFileName(), "");
    unsigned int size = 12345;
    EXPECT_EQ(news->GetRawData(size), nullptr);
    EXPECT_EQ(size, 0U);
    EXPECT_EQ(news->GetSize(), 0U);
    EXPECT_EQ(news->GetBuffer(0), nullptr);
  }
}

// ---- A caller's buffer ----

TEST(News, AWrappedBufferIsHandedOutUpToItsCapacity) {
  Wrapped wrapped(300);
  EXPECT_EQ(wrapped.news->GetBuffer(300), reinterpret_cast<ZRGS_NEWS*>(wrapped.Data()));
  EXPECT_EQ(wrapped.news->GetBuffer(301), nullptr);
  EXPECT_EQ(wrapped.Text(), std::string(300, 'z'));  // and isn't cleared
}

TEST(News, RawDataInAWrappedBufferIsCutToWhatFitsBehindItsHeader) {
  const std::string story(300, 's');
  struct Row {
    unsigned int size;
    unsigned int kept;
  };
  const Row rows[] = {{0, 0}, {82, 82}, {83, 83}, {84, 83}, {100, 83}};
  for (const Row& row : rows) {
    Wrapped wrapped(100);
    wrapped.news->SetNewsRawData(1, story.data(), row.size);
    EXPECT_EQ(RawDataOf(*wrapped.news), story.substr(0, row.kept)) << row.size;
    EXPECT_EQ(wrapped.news->GetSize(), row.kept + 12) << row.size;
    EXPECT_EQ(wrapped.Text().substr(17),
              story.substr(0, row.kept) + std::string(83 - row.kept, 'z'));
  }
  Wrapped wrapped(100);
  wrapped.news->SetNewsRawData(1, story.data(), 101);
  EXPECT_EQ(wrapped.Text(), std::string(100, 'z'));
}

TEST(News, AFileNameInAWrappedBufferIsCutToWhatFits) {
  for (const std::size_t capacity : {14U, 15U, 17U, 100U, 272U, 273U, 300U}) {
    Wrapped wrapped(capacity);
    wrapped.news->SetNewsFileName(1, std::string(400, 'n').c_str());
    const std::size_t length = std::min<std::size_t>(capacity - 14, 259);
    EXPECT_EQ(wrapped.news->GetFileName(), std::string(length, 'n')) << capacity;
    EXPECT_EQ(wrapped.Text().substr(13 + length, 2),
              std::string("\0z", 2).substr(0, capacity - 13 - length));
  }
}

// What doesn't fit as a whole is dropped as a whole.
TEST(News, ABufferTooSmallForItIsLeftAlone) {
  for (std::size_t capacity = 0; capacity <= 17; ++capacity) {
    Wrapped hint(capacity);
    hint.news->SetNewsHint(1, 2, 3);
    EXPECT_EQ(hint.Text() == std::string(capacity, 'z'), capacity < 17) << capacity;
    Wrapped name(capacity);
    name.news->SetNewsFileName(1, "");
    EXPECT_EQ(name.Text() == std::string(capacity, 'z'), capacity < 14) << capacity;
    Wrapped raw(capacity);
    raw.news->SetNewsRawData(1, "", 0);
    EXPECT_EQ(raw.Text() == std::string(capacity, 'z'), capacity < 17) << capacity;
    Wrapped type(capacity);
    type.news->SetType(ZRGS_NEWS_HINT);
    EXPECT_EQ(type.Text() == std::string(capacity, 'z'), capacity < 4) << capacity;
    Wrapped flags(capacity);
    flags.news->SetFlags(1);
    EXPECT_EQ(flags.Text() == std::string(capacity, 'z'), capacity < 12) << capacity;
  }
}

TEST(News, WhatASmallBufferDoesNotHoldReadsAsZero) {
  for (std::size_t capacity = 0; capacity <= 18; ++capacity) {
    Wrapped wrapped(capacity, '\1');
    const CZRGSNews& news = *wrapped.news;
    EXPECT_EQ(news.GetType(), capacity < 4 ? 0 : 0x01010101) << capacity;
    EXPECT_EQ(news.GetDataFormat(), capacity < 8 ? 0U : 0x01010101U) << capacity;
    EXPECT_EQ(news.GetFlags(), capacity < 12 ? 0U : 0x01010101U) << capacity;
    EXPECT_EQ(news.GetStatus(), capacity < 13 ? 0 : 1) << capacity;
    EXPECT_EQ(news.GetHint(), capacity < 17 ? 0U : 0x01010101U) << capacity;
    unsigned int size = 12345;
    EXPECT_EQ(news.GetRawData(size) == nullptr, capacity < 17) << capacity;
    EXPECT_EQ(size, capacity < 17 ? 0U : 0x01010101U) << capacity;
  }
}

// ---- A body that isn't what it says ----

TEST(News, ReadsOfAnotherTypeAreMeantToGiveTheBodyAsItStands) {
  CZRGSNews news(kSmallest);
  news.SetNewsFileName(1, "ABCDEFG");
  EXPECT_EQ(news.GetHint(), 0x44434241U);
  unsigned int size = 0;
  EXPECT_EQ(std::memcmp(news.GetRawData(size), "EFG", 4), 0);
  EXPECT_EQ(size, 0x44434241U);
  news.SetNewsHint(1, 0x00434241, 0);
  EXPECT_STREQ(news.GetFileName(), "ABC");
  news.SetNewsRawData(1, "story", 5);
  EXPECT_EQ(news.GetHint(), 5U);
  EXPECT_STREQ(news.GetFileName(), "\5");
}

// Only a file name is text, so only of a file name an end is asked for.
TEST(News, ABodyOfAnotherTypeIsGivenAsItStandsAlsoWithoutAnEnd) {
  for (const ZRGS_NEWS_DATA_TYPE type : {ZRGS_NEWS_HINT, ZRGS_NEWS_RAW_DATA}) {
    const auto record = Filled('x');
    std::memcpy(record.get(), &type, sizeof type);
    const CZRGSNews news(record.get());
    ASSERT_EQ(news.GetFileName(), record->body) << type;
    EXPECT_EQ(std::string(news.GetFileName(), 260), std::string(260, 'x')) << type;
  }
}

TEST(News, RawDataIsNoMoreThanABufferHolds) {
  const Bytes header = {2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
  for (const unsigned int claimed : {82U, 83U, 84U, 0xFFFFFFFFU}) {
    Wrapped wrapped(100);
    std::memcpy(wrapped.Data(), header.data(), header.size());
    std::memcpy(wrapped.Data() + 13, &claimed, sizeof claimed);
    EXPECT_EQ(RawDataOf(*wrapped.news), std::string(std::min(claimed, 83U), 'z'));
    EXPECT_EQ(wrapped.news->GetSize(), claimed + 12);  // as the record says it
  }
  CZRGSNews own(kSmallest);
  own.SetNewsRawData(1, "", 0);
  const unsigned int claimed = 274;
  std::memcpy(own.GetBuffer(273)->body, &claimed, sizeof claimed);
  EXPECT_EQ(RawDataOf(own).size(), 273U);
}

// Raw data runs beyond the standard record in a larger block, whose size the handle isn't told.
TEST(News, RawDataOfARecordThatIsOnlyLookedAtHasTheSizeThatItSays) {
  CZRGSNews made(1000);
  const std::string story(1000, 's');
  made.SetNewsRawData(1, story.data(), 1000);
  const CZRGSNews looking(made.GetZRGS_NEWS());
  EXPECT_EQ(RawDataOf(looking), story);
  EXPECT_EQ(looking.GetSize(), 1012U);
}

TEST(News, AFileNameWithoutAnEndIsEmpty) {
  const auto record = Filled('x');
  const std::uint32_t name = 0;
  std::memcpy(record.get(), &name, sizeof name);
  EXPECT_STREQ(CZRGSNews(record.get()).GetFileName(), "");
  record->body[259] = '\0';
  EXPECT_EQ(CZRGSNews(record.get()).GetFileName(), std::string(259, 'x'));
  Wrapped wrapped(100);
  wrapped.news->SetType(ZRGS_NEWS_FILE_NAME);
  EXPECT_STREQ(wrapped.news->GetFileName(), "");
  wrapped.Data()[99] = '\0';
  EXPECT_EQ(wrapped.news->GetFileName(), std::string(86, 'z'));
}

}  // namespace
