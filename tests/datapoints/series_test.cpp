// Records moved at once, by Serialize and by the series functions, beside the same field by field.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include <gtest/gtest.h>

#include <pxdutil/datapoints/records.h>
#include <pxdutil/foundation/archive.h>
#include <pxdutil/foundation/file.h>

#include "tests/datapoints/bytes.h"

namespace {

using datapoints_test::Bytes;
using datapoints_test::Hex;

// A file in memory that keeps a list of what it was asked for, gives few bytes at a time where it
// is told to, and is full at some time.
class WatchedFile : public CMemFile {
 public:
  WatchedFile() = default;
  explicit WatchedFile(const Bytes& bytes) : CMemFile(bytes.data(), bytes.size()) {}

  unsigned int Read(void* buffer, unsigned int count) override {
    m_asked.push_back(count);
    return CMemFile::Read(buffer, std::min(count, m_mostAtOnce));
  }
  void Write(const void* buffer, unsigned int count) override {
    m_asked.push_back(count);
    if (m_asked.size() > m_writesUntilFull) {
      Throw(CFileException::diskFull);
    }
    CMemFile::Write(buffer, count);
  }

  std::vector<unsigned int> m_asked;
  unsigned int m_mostAtOnce = 4096;
  std::size_t m_writesUntilFull = 1000;
};

// The definition: one field after the other.
template <class Record>
constexpr bool kStamped = requires(Record record) {
  record.m_Date;
};

template <class Record>
constexpr std::size_t StoredFloats() {
  // Neither the stamp nor the tick word is a stored float.
  const std::size_t tickWord = requires(Record record) {
    record.m_TickDir;
  }
  ? 4 : 0;
  return (sizeof(Record) - (kStamped<Record> ? 6 : 0) - tickWord) / 4;
}

template <class Record>
constexpr std::size_t StoredSize() {
  return StoredFloats<Record>() * 4 + (kStamped<Record> ? 6 : 0);
}

template <class Record>
void StorePlainly(CArchive& archive, const std::vector<Record>& records) {
  for (const Record& record : records) {
    if constexpr (kStamped<Record>) {
      archive << std::uint16_t{record.m_Date} << std::uint32_t{record.m_Time};
    }
    for (std::size_t i = 0; i < StoredFloats<Record>(); ++i) {
      archive << record.GetFloat(i);
    }
  }
}

template <class Record>
void LoadPlainly(CArchive& archive, std::vector<Record>& records) {
  for (Record& record : records) {
    if constexpr (kStamped<Record>) {
      std::uint16_t date = 0;
      archive >> date;
      record.m_Date = date;
      std::uint32_t time = 0;
      archive >> time;
      record.m_Time = time;
    }
    for (std::size_t i = 0; i < StoredFloats<Record>(); ++i) {
      float value = 0.0F;
      archive >> value;
      record.SetFloat(i, value);
    }
  }
}

template <class Record>
void SerializeEach(CArchive& archive, std::vector<Record>& records) {
  for (Record& record : records) {
    record.Serialize(archive);
  }
}

// Every byte differs from its neighbours; among the floats are markers and NaNs.
template <class Record>
std::vector<Record> Series(std::size_t count, unsigned int seed) {
  std::vector<Record> records(count);
  for (Record& record : records) {
    unsigned char bytes[sizeof(Record)];
    for (unsigned char& byte : bytes) {
      seed = seed * 1103515245U + 12345U;
      byte = static_cast<unsigned char>(seed >> 16U);
    }
    // The old unit of 32-bit x86 would quiet a signalling NaN, which is allowed, but not alike.
    for (std::size_t i = kStamped<Record> ? 6 : 0; i + 4 <= sizeof bytes; i += 4) {
      bytes[i + 2] |= 0x40U;
    }
    std::memcpy(static_cast<void*>(&record), bytes, sizeof bytes);
  }
  return records;
}

template <class Record>
Bytes InMemory(const std::vector<Record>& records) {
  Bytes bytes(records.size() * sizeof(Record));
  if (!bytes.empty()) {
    std::memcpy(bytes.data(), records.data(), bytes.size());
  }
  return bytes;
}

// What an attempt left behind.
struct Outcome {
  int cause = -1;  // of the exception, -1 without one
  Bytes bytes;     // in the file, or of the records in memory
  Bytes rest;      // loading: what the archive still gives
  std::vector<unsigned int> asked;

  friend bool operator==(const Outcome&, const Outcome&) = default;
};

template <class Work>
int CauseOf(Work work) {
  try {
    work();
  } catch (CArchiveException* e) {
    const int cause = e->m_cause;
    e->Delete();
    return cause;
  } catch (CFileException* e) {
    const int cause = 100 + e->m_cause;
    e->Delete();
    return cause;
  }
  return -1;
}

// `before` bytes stand in the archive ahead of the records.
template <class Record, class Store>
Outcome StoreBy(Store store, std::vector<Record> records, std::size_t before, std::size_t full) {
  WatchedFile file;
  file.m_writesUntilFull = full;
  CArchive archive(&file, CArchive::store);
  for (std::size_t i = 0; i < before; ++i) {
    archive << std::uint8_t{0xEE};
  }
  Outcome outcome;
  outcome.cause = CauseOf([&] {
    store(archive, records);
    archive.Close();
  });
  outcome.bytes = file.GetBytes();
  outcome.asked = file.m_asked;
  return outcome;
}

template <class Record, class LoadSeries>
Outcome LoadBy(LoadSeries load, std::vector<Record> records, std::size_t before, const Bytes& bytes,
               unsigned int mostAtOnce) {
  WatchedFile file(bytes);
  file.m_mostAtOnce = mostAtOnce;
  CArchive archive(&file, CArchive::load);
  Outcome outcome;
  outcome.cause = CauseOf([&] {
    for (std::size_t i = 0; i < before; ++i) {
      std::uint8_t byte = 0;
      archive >> byte;
    }
    load(archive, records);
  });
  outcome.bytes = InMemory(records);
  outcome.asked = file.m_asked;
  outcome.rest.resize(16);
  outcome.rest.resize(archive.Read(outcome.rest.data(), 16));
  return outcome;
}

template <class Record>
class SeriesOf : public testing::Test {
 protected:
  using Records = std::vector<Record>;

  static constexpr auto kPlainStore = [](CArchive& a, Records& r) { StorePlainly(a, r); };
  static constexpr auto kPlainLoad = [](CArchive& a, Records& r) { LoadPlainly(a, r); };
  static constexpr auto kEach = [](CArchive& a, Records& r) { SerializeEach(a, r); };
  static constexpr auto kStore = [](CArchive& a, Records& r) { pxd::StoreRecords(a, r); };
  static constexpr auto kLoad = [](CArchive& a, Records& r) { pxd::LoadRecords(a, r); };

  static Bytes PlainBytes(const Records& records, std::size_t before) {
    return StoreBy<Record>(kPlainStore, records, before, 1000).bytes;
  }
};

using AllRecords =
    testing::Types<CDPSDblC, CDPSTDblC, CDPSDblTick, CDPSTDblTick, CDPSDblDblC, CDPSTDblDblC,
                   CDPSDblDblH, CDPSTDblDblH, CDPSDblDblL, CDPSTDblDblL, CDPSDblDblTick,
                   CDPSTDblDblTick, CDPSDblOHLCUDUT, CDPSTDblOHLCUDUT, CDPSDblOHLCUDUTO,
                   CDPSTDblOHLCUDUTO, CDPSDblOHLCUDUTOld, CDPSTDblOHLCUDUTOld, CDPSDblOHLCUDUTOOld,
                   CDPSTDblOHLCUDUTOOld>;
TYPED_TEST_SUITE(SeriesOf, AllRecords);

TYPED_TEST(SeriesOf, AreStoredAsFieldByField) {
  const std::size_t perBuffer = 4096 / StoredSize<TypeParam>();
  for (const std::size_t count : {std::size_t{0}, std::size_t{1}, std::size_t{2}, perBuffer - 1,
                                  perBuffer, perBuffer + 1, perBuffer * 3 + 2}) {
    const auto records = Series<TypeParam>(count, 7);
    for (const std::size_t before : {0U, 1U, 2U, 3U, 5U, 4095U, 4096U}) {
      const Outcome plain = StoreBy<TypeParam>(this->kPlainStore, records, before, 1000);
      ASSERT_EQ(plain.bytes.size(), before + count * StoredSize<TypeParam>());
      EXPECT_TRUE(StoreBy<TypeParam>(this->kEach, records, before, 1000) == plain) << count;
      EXPECT_TRUE(StoreBy<TypeParam>(this->kStore, records, before, 1000) == plain) << count;
    }
  }
}

TYPED_TEST(SeriesOf, StopAtAFullDiskAsFieldByField) {
  const auto records = Series<TypeParam>(4096 / StoredSize<TypeParam>() * 4, 7);
  // A byte and four times the buffer, or nearly so where no whole record ends there.
  const std::size_t writes = StoreBy<TypeParam>(this->kPlainStore, records, 1, 1000).asked.size();
  EXPECT_GE(writes, 4U);
  for (std::size_t full = 0; full <= writes; ++full) {
    const Outcome plain = StoreBy<TypeParam>(this->kPlainStore, records, 1, full);
    EXPECT_EQ(plain.cause, full < writes ? 100 + CFileException::diskFull : -1) << full;
    EXPECT_TRUE(StoreBy<TypeParam>(this->kEach, records, 1, full) == plain) << full;
    EXPECT_TRUE(StoreBy<TypeParam>(this->kStore, records, 1, full) == plain) << full;
  }
}

TYPED_TEST(SeriesOf, AreLoadedAsFieldByField) {
  const std::size_t perBuffer = 4096 / StoredSize<TypeParam>();
  for (const std::size_t count : {std::size_t{0}, std::size_t{1}, std::size_t{2}, perBuffer - 1,
                                  perBuffer, perBuffer + 1, perBuffer * 3 + 2}) {
    const auto records = Series<TypeParam>(count, 7);
    const auto target = Series<TypeParam>(count, 99);
    for (const std::size_t before : {0U, 1U, 2U, 3U, 5U, 4095U, 4096U}) {
      Bytes bytes = this->PlainBytes(records, before);
      bytes.insert(bytes.end(), 10, 0x55);
      for (const unsigned int most : {4096U, 1U, 7U, 1000U}) {
        const Outcome plain = LoadBy<TypeParam>(this->kPlainLoad, target, before, bytes, most);
        ASSERT_EQ(plain.cause, -1);
        ASSERT_EQ(plain.rest, Bytes(10, 0x55));
        EXPECT_TRUE(LoadBy<TypeParam>(this->kEach, target, before, bytes, most) == plain) << count;
        EXPECT_TRUE(LoadBy<TypeParam>(this->kLoad, target, before, bytes, most) == plain) << count;
      }
    }
  }
}

TYPED_TEST(SeriesOf, KeepWhatArrivedOfAShortFileAsFieldByField) {
  const std::size_t size = StoredSize<TypeParam>();
  const std::size_t count = 4096 / size + 2;
  const Bytes whole = this->PlainBytes(Series<TypeParam>(count, 7), 0);
  const auto target = Series<TypeParam>(count, 99);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    // All places in the first two records, and all around the end of the archive's buffer.
    if (length > 2 * size && length + size < 4096) {
      continue;
    }
    const Bytes bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
    const Outcome plain = LoadBy<TypeParam>(this->kPlainLoad, target, 0, bytes, 4096);
    EXPECT_EQ(plain.cause, CArchiveException::endOfFile);
    EXPECT_TRUE(LoadBy<TypeParam>(this->kEach, target, 0, bytes, 4096) == plain) << length;
    EXPECT_TRUE(LoadBy<TypeParam>(this->kLoad, target, 0, bytes, 4096) == plain) << length;
  }
}

TYPED_TEST(SeriesOf, RefuseAnArchiveThatGoesTheOtherWay) {
  std::vector<TypeParam> records(2);
  std::vector<TypeParam> none;
  CMemFile file;
  CArchive loading(&file, CArchive::load);
  EXPECT_EQ(CauseOf([&] { pxd::StoreRecords(loading, records); }), CArchiveException::readOnly);
  EXPECT_EQ(CauseOf([&] { pxd::StoreRecords(loading, none); }), -1);
  CArchive storing(&file, CArchive::store);
  EXPECT_EQ(CauseOf([&] { pxd::LoadRecords(storing, records); }), CArchiveException::writeOnly);
  EXPECT_EQ(CauseOf([&] { pxd::LoadRecords(storing, none); }), -1);
  storing.Close();
  EXPECT_EQ(CauseOf([&] { pxd::StoreRecords(storing, records); }), CArchiveException::readOnly);
  EXPECT_EQ(CauseOf([&] { pxd::LoadRecords(storing, records); }), CArchiveException::writeOnly);
}

TEST(Series, OfTradesHasNoTickWords) {
  std::vector<CDPSTDblDblTick> trades(2);
  trades[0].m_Date = 0x0102;
  trades[0].m_Time = 0x03040506;
  trades[0].m_Price = 1.0F;
  trades[0].m_Vol = 2.0F;
  trades[0].m_TickDir = 77;
  trades[1] = trades[0];
  CMemFile file;
  CArchive out(&file, CArchive::store);
  pxd::StoreRecords(out, trades);
  out.Close();
  const Bytes one = Hex("0201 06050403 0000803f 00000040");
  Bytes two = one;
  two.insert(two.end(), one.begin(), one.end());
  EXPECT_EQ(file.GetBytes(), two);

  std::vector<CDPSTDblDblTick> loaded(2);
  loaded[1].m_TickDir = 5;
  file.SeekToBegin();
  CArchive in(&file, CArchive::load);
  pxd::LoadRecords(in, loaded);
  EXPECT_EQ(+loaded[1].m_TickDir, 5) << "loading keeps the tick word";
  EXPECT_EQ(+loaded[1].m_Vol, 2.0F);
}

}  // namespace
