#include <pxdutil/foundation/archive.h>

#include <bit>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <limits>
#include <new>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <pxdutil/foundation/file.h>

#include "tests/support/allocation_counter.h"
#include "tests/support/thrown.h"

namespace {

using Bytes = std::vector<unsigned char>;
using pxd::test::ThrownBy;

constexpr std::size_t kBufferSize = 4096;

// A file in memory that has a name, hands its bytes out in small portions, and fails from a given
// byte on.
class FaultyFile : public CMemFile {
 public:
  explicit FaultyFile(const Bytes& bytes = {}) : CMemFile(bytes.data(), bytes.size()) {
    m_strFileName = "faulty.dat";
  }
  unsigned int Read(void* buffer, unsigned int count) override {
    if (GetPosition() >= failsAt) {
      Throw(CFileException::hardIO);
    }
    const std::uint64_t left = failsAt - GetPosition();
    return CMemFile::Read(
        buffer, static_cast<unsigned int>(std::min<std::uint64_t>({count, portion, left})));
  }
  void Write(const void* buffer, unsigned int count) override {
    const std::uint64_t left = failsAt - GetPosition();
    CMemFile::Write(buffer, static_cast<unsigned int>(std::min<std::uint64_t>(count, left)));
    if (count > left) {
      Throw(CFileException::diskFull);
    }
  }

  std::uint64_t failsAt = std::numeric_limits<std::uint64_t>::max();
  unsigned int portion = std::numeric_limits<unsigned int>::max();
};

Bytes Joined(Bytes head, const Bytes& tail) {
  head.insert(head.end(), tail.begin(), tail.end());
  return head;
}

// One operation in both directions, and the bytes of its value.
struct Operation {
  std::string name;
  Bytes bytes;
  std::function<void(CArchive&)> store;
  // Loads over another value. Tells whether the stored value arrived; where the load throws, sets
  // `untouched` to whether the other value still stands.
  std::function<bool(CArchive&, bool& untouched)> load;

  friend void PrintTo(const Operation& operation, std::ostream* out) { *out << operation.name; }
};

template <class T>
Operation Operator(const char* name, T value, T other, Bytes bytes) {
  return {name, std::move(bytes), [value](CArchive& archive) { archive << value; },
          [value, other](CArchive& archive, bool& untouched) {
            T target = other;
            try {
              archive >> target;
            } catch (...) {
              untouched = target == other;
              throw;
            }
            return target == value;
          }};
}

Operation Count(const char* name, std::uint32_t value, Bytes bytes) {
  return {name, std::move(bytes), [value](CArchive& archive) { archive.WriteCount(value); },
          [value](CArchive& archive, bool& untouched) {
            untouched = true;
            return archive.ReadCount() == value;
          }};
}

Operation Text(const char* name, std::size_t length, const Bytes& prefix) {
  const CString value(std::string(length, 'x'));
  return Operator<CString>(name, value, "as it was", Joined(prefix, Bytes(length, 'x')));
}

const std::vector<Operation>& Operations() {
  static const std::vector<Operation> kOperations = {
      Operator<std::uint8_t>("Byte", 0xFE, 1, {0xFE}),
      Operator<std::int8_t>("SignedByte", -2, 1, {0xFE}),
      Operator<char>("Char", 'A', 'b', {0x41}),
      Operator<std::uint16_t>("Word", 0xFEDC, 1, {0xDC, 0xFE}),
      Operator<std::int16_t>("SignedWord", -2, 1, {0xFE, 0xFF}),
      Operator<std::uint32_t>("DWord", 0xFEDCBA98U, 1, {0x98, 0xBA, 0xDC, 0xFE}),
      Operator<std::int32_t>("SignedDWord", -2, 1, {0xFE, 0xFF, 0xFF, 0xFF}),
      Operator<float>("Float", 1.5F, 7.0F, {0x00, 0x00, 0xC0, 0x3F}),
      Operator<float>("MarkerFloat", std::bit_cast<float>(0x7F7FFFFEU), 7.0F,
                      {0xFE, 0xFF, 0x7F, 0x7F}),
      Count("CountZero", 0, {0x00, 0x00}),
      Count("CountBelowTheEscape", 0xFFFE, {0xFE, 0xFF}),
      Count("CountAtTheEscape", 0xFFFF, {0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x00}),
      Count("CountBeyond", 0x10000, {0xFF, 0xFF, 0x00, 0x00, 0x01, 0x00}),
      Count("CountLargest", 0xFFFFFFFFU, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}),
      Operator<CString>("ShortText", "IBM", "as it was", {0x03, 'I', 'B', 'M'}),
      Operator<CString>("TextWithNul", CString(std::string("a\0b", 3)), "as it was",
                        {0x03, 'a', 0x00, 'b'}),
      Operator<CString>("HighText", "\xE9\xFF", "as it was", {0x02, 0xE9, 0xFF}),
      Text("EmptyText", 0, {0x00}),
      Text("TextOf254", 254, {0xFE}),
      Text("TextOf255", 255, {0xFF, 0xFF, 0x00}),
      Text("TextOf256", 256, {0xFF, 0x00, 0x01}),
      Text("TextOfFFFD", 0xFFFD, {0xFF, 0xFD, 0xFF}),
      Text("TextOfFFFE", 0xFFFE, {0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0x00, 0x00}),
      Text("TextOfFFFF", 0xFFFF, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x00}),
      Text("TextOf10000", 0x10000, {0xFF, 0xFF, 0xFF, 0x00, 0x00, 0x01, 0x00}),
  };
  return kOperations;
}

class ArchiveOperation : public testing::TestWithParam<Operation> {
 protected:
  // The places around which something may go wrong: the first bytes and the last.
  static std::vector<std::size_t> Places(std::size_t size) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < size; ++i) {
      if (i < 300 || i + 10 > size) {
        places.push_back(i);
      }
    }
    return places;
  }
};

INSTANTIATE_TEST_SUITE_P(All, ArchiveOperation, testing::ValuesIn(Operations()),
                         [](const auto& row) { return row.param.name; });

TEST_P(ArchiveOperation, StoresTheseBytes) {
  CMemFile file;
  CArchive archive(&file, CArchive::store);
  GetParam().store(archive);
  archive.Close();
  EXPECT_EQ(file.GetBytes(), GetParam().bytes);
}

TEST_P(ArchiveOperation, LoadsThemBackAndNoMore) {
  FaultyFile file(Joined(GetParam().bytes, {0x77}));
  CArchive archive(&file, CArchive::load);
  bool untouched = false;
  EXPECT_TRUE(GetParam().load(archive, untouched));
  std::uint8_t behind = 0;
  archive >> behind;
  EXPECT_EQ(behind, 0x77);
}

TEST_P(ArchiveOperation, StoringIntoALoadingArchiveIsRefused) {
  FaultyFile file(GetParam().bytes);
  CArchive archive(&file, CArchive::load);
  const auto error = ThrownBy<CArchiveException>([&] { GetParam().store(archive); });
  ASSERT_NE(error, nullptr);
  EXPECT_EQ(error->m_cause, 2);
  EXPECT_STREQ(error->m_strFileName, "faulty.dat");
  bool untouched = false;
  EXPECT_TRUE(GetParam().load(archive, untouched)) << "the refusal must not disturb the archive";
}

TEST_P(ArchiveOperation, LoadingFromAStoringArchiveIsRefused) {
  FaultyFile file;
  CArchive archive(&file, CArchive::store);
  bool untouched = false;
  const auto error = ThrownBy<CArchiveException>([&] { GetParam().load(archive, untouched); });
  ASSERT_NE(error, nullptr);
  EXPECT_EQ(error->m_cause, 4);
  EXPECT_STREQ(error->m_strFileName, "faulty.dat");
  EXPECT_TRUE(untouched);
  archive.Close();
  EXPECT_EQ(file.GetLength(), 0U);
}

TEST_P(ArchiveOperation, ACutAtAnyByteIsTheEndOfTheFile) {
  const Bytes& bytes = GetParam().bytes;
  for (const std::size_t cut : Places(bytes.size())) {
    FaultyFile file(Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(cut)));
    CArchive archive(&file, CArchive::load);
    bool untouched = false;
    const auto error = ThrownBy<CArchiveException>([&] { GetParam().load(archive, untouched); });
    ASSERT_NE(error, nullptr) << cut;
    EXPECT_EQ(error->m_cause, 3) << cut;
    EXPECT_STREQ(error->m_strFileName, "faulty.dat");
    EXPECT_TRUE(untouched) << cut;
  }
}

TEST_P(ArchiveOperation, AReadErrorAtAnyByteLeavesTheTargetAsItWas) {
  for (const std::size_t place : Places(GetParam().bytes.size())) {
    FaultyFile file(GetParam().bytes);
    file.failsAt = place;
    CArchive archive(&file, CArchive::load);
    bool untouched = false;
    const auto error = ThrownBy<CFileException>([&] { GetParam().load(archive, untouched); });
    ASSERT_NE(error, nullptr) << place;
    EXPECT_EQ(error->m_cause, CFileException::hardIO) << place;
    EXPECT_TRUE(untouched) << place;
  }
}

TEST_P(ArchiveOperation, AWriteErrorAtAnyByteIsTold) {
  for (const std::size_t place : Places(GetParam().bytes.size())) {
    FaultyFile file;
    file.failsAt = place;
    const auto error = ThrownBy<CFileException>([&] {
      CArchive archive(&file, CArchive::store);
      GetParam().store(archive);
      archive.Close();
    });
    ASSERT_NE(error, nullptr) << place;
    EXPECT_EQ(error->m_cause, CFileException::diskFull) << place;
    EXPECT_EQ(file.GetLength(), place);
  }
}

TEST_P(ArchiveOperation, MayStandAcrossTheBuffersEnd) {
  const Bytes& bytes = GetParam().bytes;
  for (std::size_t before = 0; before <= std::min<std::size_t>(bytes.size(), 10); ++before) {
    const Bytes pad(kBufferSize - before, 0x11);
    FaultyFile file;
    {
      CArchive archive(&file, CArchive::store);
      for (const unsigned char byte : pad) {
        archive << byte;
      }
      GetParam().store(archive);
      archive << std::uint8_t{0x77};
      archive.Close();
    }
    ASSERT_EQ(file.GetBytes(), Joined(Joined(pad, bytes), {0x77})) << before;

    file.SeekToBegin();
    CArchive archive(&file, CArchive::load);
    std::uint8_t byte = 0;
    for (std::size_t i = 0; i < pad.size(); ++i) {
      archive >> byte;
    }
    bool untouched = false;
    ASSERT_TRUE(GetParam().load(archive, untouched)) << before;
    archive >> byte;
    ASSERT_EQ(byte, 0x77) << before;
  }
}

TEST_P(ArchiveOperation, ComesWholeFromAFileThatGivesAByteAtATime) {
  FaultyFile file(GetParam().bytes);
  file.portion = 1;
  CArchive archive(&file, CArchive::load);
  bool untouched = false;
  EXPECT_TRUE(GetParam().load(archive, untouched));
}

TEST(Archive, KnowsItsDirection) {
  CMemFile file;
  CArchive out(&file, CArchive::store);
  EXPECT_TRUE(out.IsStoring());
  EXPECT_FALSE(out.IsLoading());
  EXPECT_EQ(out.GetFile(), &file);
  CArchive in(&file, CArchive::load);
  EXPECT_FALSE(in.IsStoring());
  EXPECT_TRUE(in.IsLoading());
}

TEST(Archive, ScalarsCarryNoTagAndNoPadding) {
  CMemFile file;
  CArchive archive(&file, CArchive::store);
  archive << std::uint8_t{1} << std::uint32_t{2} << std::uint16_t{3} << 1.0F << CString("a");
  archive.Close();
  EXPECT_EQ(file.GetBytes(), (Bytes{1, 2, 0, 0, 0, 3, 0, 0x00, 0x00, 0x80, 0x3F, 1, 'a'}));
}

TEST(Archive, AQuietNanAndNegativeZeroTravelBitForBit) {
  CMemFile file;
  CArchive out(&file, CArchive::store);
  out << std::bit_cast<float>(0x7FC12345U) << std::bit_cast<float>(0x80000000U);
  out.Close();
  EXPECT_EQ(file.GetBytes(), (Bytes{0x45, 0x23, 0xC1, 0x7F, 0x00, 0x00, 0x00, 0x80}));
  file.SeekToBegin();
  CArchive in(&file, CArchive::load);
  float nan = 0;
  float zero = 1;
  in >> nan >> zero;
  EXPECT_EQ(std::bit_cast<std::uint32_t>(nan), 0x7FC12345U);
  EXPECT_EQ(std::bit_cast<std::uint32_t>(zero), 0x80000000U);
}

TEST(Archive, ReadGivesWhatThereIs) {
  FaultyFile file(Bytes{1, 2, 3});
  file.portion = 2;
  CArchive archive(&file, CArchive::load);
  unsigned char bytes[5] = {9, 9, 9, 9, 9};
  EXPECT_EQ(archive.Read(bytes, 0), 0U);
  EXPECT_EQ(archive.Read(bytes, 5), 3U);
  EXPECT_EQ(bytes[2], 3);
  EXPECT_EQ(bytes[3], 9);
  EXPECT_EQ(archive.Read(bytes, 5), 0U);
}

TEST(Archive, WriteAndReadOfBytesMindTheDirectionToo) {
  FaultyFile file(Bytes{1, 2, 3});
  unsigned char byte = 0;
  {
    CArchive archive(&file, CArchive::load);
    for (const unsigned int count : {0U, 1U}) {
      const auto error = ThrownBy<CArchiveException>([&] { archive.Write(&byte, count); });
      ASSERT_NE(error, nullptr);
      EXPECT_EQ(error->m_cause, 2);
      EXPECT_STREQ(error->m_strFileName, "faulty.dat");
    }
  }
  CArchive archive(&file, CArchive::store);
  for (const unsigned int count : {0U, 1U}) {
    const auto error = ThrownBy<CArchiveException>([&] { archive.Read(&byte, count); });
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->m_cause, 4);
    EXPECT_STREQ(error->m_strFileName, "faulty.dat");
  }
}

TEST(Archive, RawBytesOfEverySizeAroundTheBufferKeepTheirOrder) {
  for (const std::size_t size : {0U, 1U, 4095U, 4096U, 4097U, 8192U, 10000U}) {
    for (const std::size_t ahead : {0U, 1U, 4095U, 4096U}) {
      Bytes head(ahead);
      Bytes block(size);
      for (std::size_t i = 0; i < ahead; ++i) {
        head[i] = static_cast<unsigned char>(i % 251);
      }
      for (std::size_t i = 0; i < size; ++i) {
        block[i] = static_cast<unsigned char>(i % 253);
      }
      CMemFile file;
      CArchive out(&file, CArchive::store);
      out.Write(head.data(), static_cast<unsigned int>(head.size()));
      out.Write(block.data(), static_cast<unsigned int>(block.size()));
      out << std::uint8_t{0x77};
      out.Close();
      ASSERT_EQ(file.GetBytes(), Joined(Joined(head, block), {0x77})) << size << ' ' << ahead;

      file.SeekToBegin();
      CArchive in(&file, CArchive::load);
      Bytes back(ahead + size);
      ASSERT_EQ(in.Read(back.data(), static_cast<unsigned int>(ahead)), ahead);
      ASSERT_EQ(in.Read(back.data() + ahead, static_cast<unsigned int>(size)), size);
      ASSERT_EQ(back, Joined(head, block));
      std::uint8_t behind = 0;
      in >> behind;
      ASSERT_EQ(behind, 0x77);
    }
  }
}

TEST(Archive, AReaderOfSeveralFieldsKeepsThoseThatArrived) {
  CMemFile file("\x01\x00\x02", 3);
  CArchive archive(&file, CArchive::load);
  std::uint16_t first = 8;
  std::uint16_t second = 9;
  const auto error = ThrownBy<CArchiveException>([&] { archive >> first >> second; });
  ASSERT_NE(error, nullptr);
  EXPECT_EQ(first, 1);
  EXPECT_EQ(second, 9);
}

TEST(Archive, ClosingLeavesTheFileOpenAndReadable) {
  CMemFile file;
  {
    CArchive archive(&file, CArchive::store);
    archive << std::uint16_t{0x0201};
    archive.Close();
    archive.Close();
    EXPECT_EQ(archive.GetFile(), nullptr);
  }
  EXPECT_EQ(file.GetLength(), 2U);
  file.SeekToBegin();
  unsigned char bytes[2] = {};
  EXPECT_EQ(file.Read(bytes, 2), 2U);
  EXPECT_EQ(bytes[1], 2);
}

TEST(Archive, OnceClosedItNeitherStoresNorLoads) {
  CMemFile file;
  for (const CArchive::Mode mode : {CArchive::store, CArchive::load}) {
    CArchive archive(&file, mode);
    archive.Close();
    archive.Flush();
    EXPECT_FALSE(archive.IsStoring());
    EXPECT_FALSE(archive.IsLoading());
    std::uint8_t byte = 0;
    const auto stored = ThrownBy<CArchiveException>([&] { archive << byte; });
    ASSERT_NE(stored, nullptr);
    EXPECT_EQ(stored->m_cause, CArchiveException::readOnly);
    const auto loaded = ThrownBy<CArchiveException>([&] { archive >> byte; });
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(loaded->m_cause, CArchiveException::writeOnly);
  }
}

TEST(Archive, IsClosedByItsDestructor) {
  CMemFile file;
  {
    CArchive archive(&file, CArchive::store);
    archive << std::uint8_t{5};
  }
  EXPECT_EQ(file.GetBytes(), (Bytes{5}));
}

TEST(Archive, ItsDestructorDropsAFailureOfTheFile) {
  FaultyFile file;
  file.failsAt = 0;
  {
    CArchive archive(&file, CArchive::store);
    archive << std::uint8_t{5};
  }
  EXPECT_EQ(file.GetLength(), 0U);
}

TEST(Archive, ItsDestructorDropsWantOfMemoryToo) {
  class NoMemory : public CMemFile {
   public:
    void Write(const void*, unsigned int) override { throw std::bad_alloc(); }
  };
  NoMemory file;
  {
    CArchive archive(&file, CArchive::store);
    archive << std::uint8_t{5};
  }
  EXPECT_EQ(file.GetLength(), 0U);
}

TEST(Archive, AFailedWriteIsNotTriedAgain) {
  FaultyFile file;
  file.failsAt = 1;
  {
    CArchive archive(&file, CArchive::store);
    archive << std::uint32_t{0x04030201};
    EXPECT_NE(ThrownBy<CFileException>([&] { archive.Flush(); }), nullptr);
    file.failsAt = 100;
  }
  EXPECT_EQ(file.GetBytes(), (Bytes{1}));
}

TEST(Archive, FlushHandsOnWhatWasStored) {
  CMemFile file;
  CArchive archive(&file, CArchive::store);
  archive << std::uint8_t{5};
  EXPECT_EQ(file.GetLength(), 0U);
  archive.Flush();
  EXPECT_EQ(file.GetLength(), 1U);
}

TEST(Archive, FlushOfALoadGivesUnreadBytesBackToTheFile) {
  CMemFile file("\x01\x02\x03", 3);
  CArchive archive(&file, CArchive::load);
  std::uint8_t byte = 0;
  archive >> byte;
  archive.Flush();
  EXPECT_EQ(file.GetPosition(), 1U);
  archive >> byte;
  EXPECT_EQ(byte, 2);
  archive.Close();
  EXPECT_EQ(file.GetPosition(), 2U);
}

TEST(Archive, WorksOverAFileOnDiskAndNamesIt) {
  const std::string path = testing::TempDir() + "pxdutil_archive_on_disk.tmp";
  {
    CFile file(path.c_str(), CFile::modeWrite | CFile::modeCreate);
    CArchive archive(&file, CArchive::store);
    archive << std::uint32_t{7} << CString("x");
    archive.Close();
    file.Close();
  }
  {
    CFile file(path.c_str(), CFile::modeRead);
    CArchive archive(&file, CArchive::load);
    std::uint32_t number = 0;
    CString text;
    archive >> number >> text;
    EXPECT_EQ(number, 7U);
    EXPECT_STREQ(text, "x");
    const auto error = ThrownBy<CArchiveException>([&] { archive >> text; });
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->m_strFileName, path.c_str());
    EXPECT_STREQ(text, "x");
  }
  std::filesystem::remove(path);
}

// Wide text: what is read from the bytes behind the announcement FF FE FF.
CString Wide(const Bytes& prefix, const std::vector<std::uint16_t>& units) {
  Bytes bytes = Joined({0xFF, 0xFE, 0xFF}, prefix);
  for (const std::uint16_t unit : units) {
    bytes.push_back(static_cast<unsigned char>(unit & 0xFF));
    bytes.push_back(static_cast<unsigned char>(unit >> 8));
  }
  bytes.push_back(0x77);
  CMemFile file(bytes.data(), bytes.size());
  CArchive archive(&file, CArchive::load);
  CString text;
  std::uint8_t behind = 0;
  archive >> text >> behind;
  EXPECT_EQ(behind, 0x77);
  return text;
}

TEST(WideText, BecomesNarrow) {
  EXPECT_STREQ(Wide({0}, {}), "");
  EXPECT_STREQ(Wide({3}, {'I', 'B', 'M'}), "IBM");
  EXPECT_STREQ(Wide({5}, {0x7F, 0x80, 0x7FF, 0x800, 0xFFFF}),
               "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF");
  EXPECT_STREQ(Wide({2}, {0xE9, 0x20AC}), "\xC3\xA9\xE2\x82\xAC");
}

TEST(WideText, JoinsSurrogatesAndReplacesHalves) {
  EXPECT_STREQ(Wide({2}, {0xD83D, 0xDE00}), "\xF0\x9F\x98\x80");
  EXPECT_STREQ(Wide({2}, {0xD800, 0xDC00}), "\xF0\x90\x80\x80");
  EXPECT_STREQ(Wide({2}, {0xDBFF, 0xDFFF}), "\xF4\x8F\xBF\xBF");
  EXPECT_STREQ(Wide({1}, {0xD83D}), "\xEF\xBF\xBD");
  EXPECT_STREQ(Wide({2}, {0xDE00, 'a'}),
               "\xEF\xBF\xBD"
               "a");
  EXPECT_STREQ(Wide({2}, {0xD83D, 'a'}),
               "\xEF\xBF\xBD"
               "a");
  EXPECT_STREQ(Wide({3}, {0xD83D, 0xD83D, 0xDE00}), "\xEF\xBF\xBD\xF0\x9F\x98\x80");
}

TEST(WideText, TakesEachWidthOfLength) {
  EXPECT_EQ(Wide({0xFF, 0x00, 0x01}, std::vector<std::uint16_t>(256, 'x')).Str(),
            std::string(256, 'x'));
  EXPECT_EQ(
      Wide({0xFF, 0xFF, 0xFF, 0x00, 0x00, 0x01, 0x00}, std::vector<std::uint16_t>(0x10000, 'x'))
          .Str(),
      std::string(0x10000, 'x'));
}

TEST(WideText, APairMayStandAcrossThePiecesInWhichItIsRead) {
  for (const std::size_t before : {2045U, 2046U, 2047U, 2048U}) {
    std::vector<std::uint16_t> units(before, 'x');
    units.push_back(0xD83D);
    units.push_back(0xDE00);
    const auto length = static_cast<std::uint16_t>(units.size());
    EXPECT_EQ(Wide({0xFF, static_cast<unsigned char>(length & 0xFF),
                    static_cast<unsigned char>(length >> 8)},
                   units)
                  .Str(),
              std::string(before, 'x') + "\xF0\x9F\x98\x80");
  }
}

TEST(WideText, ACutAtAnyByteIsTheEndOfTheFile) {
  const Bytes whole{0xFF, 0xFE, 0xFF, 0x02, 'a', 0x00, 'b', 0x00};
  for (std::size_t cut = 0; cut < whole.size(); ++cut) {
    CMemFile file(whole.data(), cut);
    CArchive archive(&file, CArchive::load);
    CString text("as it was");
    const auto error = ThrownBy<CArchiveException>([&] { archive >> text; });
    ASSERT_NE(error, nullptr) << cut;
    EXPECT_EQ(error->m_cause, 3);
    EXPECT_STREQ(text, "as it was");
  }
}

TEST(HostileLength, CostsNoMoreMemoryThanTheBytesThatAreThere) {
  const Bytes prefixes[] = {
      {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F},
      {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF},
      {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F},
      {0xFF, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF},
  };
  for (const Bytes& prefix : prefixes) {
    for (const std::size_t there : {3U, 100000U}) {
      const Bytes bytes = Joined(prefix, Bytes(there, 'x'));
      CMemFile file(bytes.data(), bytes.size());
      CArchive archive(&file, CArchive::load);
      CString text("as it was");
      const pxd::test::AllocationCounter counter;
      const auto error = ThrownBy<CArchiveException>([&] { archive >> text; });
      const std::size_t cost = counter.Bytes();
      ASSERT_NE(error, nullptr);
      EXPECT_EQ(error->m_cause, 3);
      EXPECT_STREQ(text, "as it was");
      // A growing text asks for a doubled block each time, four times its length in all at most;
      // two wide bytes make three narrow ones. The exception takes the small change.
      EXPECT_LE(cost, there * 6 + 1024);
    }
  }
}

}  // namespace
