// Archives and catalogues on devices that fail at one byte or another.
#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <pxdutil/datapoints/ohlc_bars.h>
#include <pxdutil/datapoints/plain_points.h>
#include <pxdutil/datapoints/ticks.h>
#include <pxdutil/fields/field_info_mgr.h>
#include <pxdutil/foundation/archive.h>
#include <pxdutil/foundation/exception.h>
#include <pxdutil/foundation/file.h>
#include <pxdutil/history/history_settings.h>

#include "tests/faults/faulty_file.h"
#include "tests/history/support.h"
#include "tests/support/thrown.h"

#if !defined(_WIN32)
#include <sys/resource.h>
#endif

namespace {

using faults_test::Break;
using faults_test::BrokenFile;
using faults_test::Bytes;
using faults_test::FullDevice;
using pxd::test::ThrownBy;

namespace fs = std::filesystem;

using Bar = CDPCDblOHLCUDUT;

// Enough bars that an archive hands them to its file in several pieces.
constexpr unsigned int kBars = 100;

Bar NthBar(unsigned int n) {
  Bar bar;
  bar.SetToDummyData(n);
  return bar;
}

void StoreBars(CFile& file, unsigned int first, unsigned int count) {
  CArchive archive(&file, CArchive::store);
  for (unsigned int n = first; n < first + count; ++n) {
    Bar bar = NthBar(n);
    bar.Serialize(archive);
  }
  archive.Close();
}

// How many whole bars the bytes hold, each of which must be the one that was stored there.
unsigned int CountBars(const Bytes& bytes) {
  CMemFile file(bytes.data(), bytes.size());
  CArchive archive(&file, CArchive::load);
  unsigned int count = 0;
  const auto ended = ThrownBy<CArchiveException>([&] {
    for (;; ++count) {
      Bar bar;
      bar.Serialize(archive);
      Bar wanted = NthBar(count);
      ASSERT_NE(bar.IsEqualTo(&wanted), 0) << count;
    }
  });
  EXPECT_TRUE(ended != nullptr && ended->m_cause == CArchiveException::endOfFile);
  return count;
}

const Bytes& StoredBars() {
  static const Bytes bytes = [] {
    CMemFile file;
    StoreBars(file, 0, kBars);
    return file.GetBytes();
  }();
  return bytes;
}

TEST(FullDevice, WhatWasStoredAheadStaysReadableUpToTheLastWholeRecord) {
  const Bytes& whole = StoredBars();
  const std::size_t size = whole.size() / kBars;
  ASSERT_EQ(size * kBars, whole.size());
  for (std::size_t room = 0; room <= whole.size(); ++room) {
    FullDevice file(room);
    const auto error = ThrownBy<CFileException>([&] { StoreBars(file, 0, kBars); });
    ASSERT_EQ(error != nullptr, room < whole.size()) << room;
    ASSERT_TRUE(error == nullptr || error->m_cause == CFileException::diskFull);
    const Bytes& stored = file.GetBytes();
    ASSERT_EQ(stored.size(), room);
    ASSERT_TRUE(std::equal(stored.begin(), stored.end(), whole.begin())) << room;
    if (room % 97 < 2) {
      ASSERT_EQ(CountBars(stored), room / size) << room;
    }
  }
}

TEST(FullDevice, BarsOfAnEarlierDayAreNotTouchedByAFailedAppend) {
  const Bytes& whole = StoredBars();
  const std::size_t size = whole.size() / kBars;
  const Bytes earlier(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(10 * size));
  for (std::size_t room = earlier.size(); room < whole.size(); room += 41) {
    FullDevice file(earlier, room);
    file.SeekToEnd();
    ASSERT_NE(ThrownBy<CFileException>([&] { StoreBars(file, 10, kBars - 10); }), nullptr) << room;
    ASSERT_EQ(CountBars(file.GetBytes()), room / size) << room;
  }
}

// Bytes that come behind a failed write would stand at the wrong place, also where the device has
// room again.
TEST(FullDevice, AnArchiveWhoseFileFailedStoresNothingMore) {
  const Bytes& whole = StoredBars();
  for (const std::size_t room : {std::size_t{0}, std::size_t{100}, std::size_t{4095}}) {
    FullDevice file(room);
    {
      CArchive archive(&file, CArchive::store);
      EXPECT_NE(ThrownBy<CFileException>([&] {
                  for (unsigned int n = 0; n < kBars; ++n) {
                    Bar bar = NthBar(n);
                    bar.Serialize(archive);
                  }
                }),
                nullptr);
      file.MakeRoom();
      EXPECT_NE(ThrownBy<CArchiveException>([&] { archive << std::int32_t{1}; }), nullptr);
      EXPECT_NE(ThrownBy<CArchiveException>([&] { archive.Write(whole.data(), 5000); }), nullptr);
      EXPECT_EQ(ThrownBy<CException>([&] { archive.Close(); }), nullptr);
    }
    const Bytes& stored = file.GetBytes();
    EXPECT_EQ(stored.size(), room);
    EXPECT_TRUE(std::equal(stored.begin(), stored.end(), whole.begin()));
  }
}

TEST(FullDevice, AFailureAtTheCloseIsToldOnce) {
  FullDevice file(3);
  CArchive archive(&file, CArchive::store);
  archive << std::int32_t{1};
  EXPECT_NE(ThrownBy<CFileException>([&] { archive.Close(); }), nullptr);
  EXPECT_EQ(ThrownBy<CException>([&] { archive.Close(); }), nullptr);
  EXPECT_EQ(file.GetBytes().size(), 3U);
}

// Everything that is stored, with the bytes it takes.
struct Stored {
  const char* name;
  std::function<void(CArchive&)> store;
  std::function<void(CArchive&)> load;
};

template <class T>
Stored Record(const char* name, const T& value) {
  return {name,
          [value](CArchive& archive) {
            T copy(value);
            copy.Serialize(archive);
          },
          [](CArchive& archive) {
            T fresh;
            fresh.Serialize(archive);
          }};
}

template <class Point>
Stored PointRecord(const char* name) {
  Point point;
  point.SetToDummyData(5);
  return Record(name, point);
}

class FaultyFile : public history_test::WithCatalogue {
 protected:
  static std::vector<Stored> Everything() {
    CHistorySettingsTemplate named;
    const CHistorySettings table =
        history_test::Table({history_test::Line(201, 4, 1, 7), history_test::Line(202, 3, 5, 9)});
    named.SetName("a name of more than a few letters");
    named.SetHistSettings(&table);
    const CString longText(std::string(9000, 'x'));
    return {
        PointRecord<CDPTDblTick>("tick"),
        PointRecord<CDPTDblDblTick>("trade tick"),
        PointRecord<CDPCDblOHLCUDUT>("bar"),
        PointRecord<CDPCDblOHLCUDUTO>("daily bar"),
        Record("resolution", CResoln(ZRGS_RESOLUTION{4, 1})),
        Record("pair", history_test::Pair(201, 3, 5)),
        Record("setting", fields_test::Setting(4, {{3, 1}, {3, 5}, {4, 1}})),
        Record("table", table),
        Record("template", named),
        {"long text", [longText](CArchive& archive) { archive << longText; },
         [](CArchive& archive) {
           CString text;
           archive >> text;
         }},
        {"counts",
         [](CArchive& archive) {
           archive.WriteCount(5);
           archive.WriteCount(70'000);
         },
         [](CArchive& archive) {
           EXPECT_EQ(archive.ReadCount(), 5U);
           EXPECT_EQ(archive.ReadCount(), 70'000U);
         }},
    };
  }
};

Bytes BytesOf(const Stored& thing) {
  CMemFile file;
  CArchive archive(&file, CArchive::store);
  thing.store(archive);
  archive.Close();
  return file.GetBytes();
}

TEST_F(FaultyFile, EveryStoreTellsAFullDeviceAtEveryByte) {
  for (const Stored& thing : Everything()) {
    const Bytes whole = BytesOf(thing);
    ASSERT_FALSE(whole.empty()) << thing.name;
    for (std::size_t room = 0; room < whole.size(); ++room) {
      FullDevice file(room);
      const auto error = ThrownBy<CFileException>([&] {
        CArchive archive(&file, CArchive::store);
        thing.store(archive);
        archive.Close();
      });
      ASSERT_NE(error, nullptr) << thing.name << ' ' << room;
      const Bytes& stored = file.GetBytes();
      ASSERT_EQ(stored.size(), room) << thing.name;
      ASSERT_TRUE(std::equal(stored.begin(), stored.end(), whole.begin())) << thing.name;
    }
  }
}

TEST_F(FaultyFile, EveryLoadTellsABrokenFileAtEveryByte) {
  for (const Stored& thing : Everything()) {
    const Bytes whole = BytesOf(thing);
    for (std::size_t broken = 0; broken < whole.size(); ++broken) {
      {
        BrokenFile<CMemFile> file(whole, broken, Break::kThrows);
        CArchive archive(&file, CArchive::load);
        const auto error = ThrownBy<CFileException>([&] { thing.load(archive); });
        ASSERT_NE(error, nullptr) << thing.name << ' ' << broken;
        ASSERT_EQ(error->m_cause, +CFileException::hardIO);
      }
      BrokenFile<CMemFile> file(whole, broken, Break::kEnds);
      CArchive archive(&file, CArchive::load);
      const auto error = ThrownBy<CArchiveException>([&] { thing.load(archive); });
      ASSERT_NE(error, nullptr) << thing.name << ' ' << broken;
      ASSERT_EQ(error->m_cause, +CArchiveException::endOfFile);
    }
  }
}

TEST_F(FaultyFile, EveryLoadTakesBytesInAnyPieces) {
  for (const Stored& thing : Everything()) {
    const Bytes whole = BytesOf(thing);
    for (const unsigned int step : {1U, 2U, 3U, 7U, 4095U}) {
      BrokenFile<CMemFile> file(whole, whole.size(), Break::kThrows, step);
      CArchive archive(&file, CArchive::load);
      ASSERT_EQ(ThrownBy<CException>([&] { thing.load(archive); }), nullptr)
          << thing.name << ' ' << step;
      archive.Close();
      ASSERT_EQ(file.GetPosition(), whole.size()) << thing.name << ' ' << step;
    }
  }
}

TEST_F(FaultyFile, BarsAheadOfADamagedPlaceAreRead) {
  const Bytes& whole = StoredBars();
  const std::size_t size = whole.size() / kBars;
  for (std::size_t broken = 0; broken < whole.size(); broken += 53) {
    BrokenFile<CMemFile> file(whole, broken, Break::kThrows);
    CArchive archive(&file, CArchive::load);
    unsigned int count = 0;
    const auto error = ThrownBy<CFileException>([&] {
      for (;; ++count) {
        Bar bar;
        bar.Serialize(archive);
        Bar wanted = NthBar(count);
        ASSERT_NE(bar.IsEqualTo(&wanted), 0) << count;
      }
    });
    ASSERT_NE(error, nullptr);
    ASSERT_EQ(count, broken / size) << broken;
  }
}

TEST_F(FaultyFile, ATableThatCannotBeReadLeavesTheOneThatWas) {
  CHistorySettings other = history_test::Table({history_test::Line(202, 4, 1, 7)});
  const Bytes whole = history_test::StoredForm(other);
  for (std::size_t broken = 0; broken < whole.size(); ++broken) {
    CHistorySettings table = history_test::Table({history_test::Line(201, 3, 1, 5)});
    const auto ids = history_test::NeededIds(table);
    BrokenFile<CMemFile> file(whole, broken, Break::kThrows);
    CArchive archive(&file, CArchive::load);
    ASSERT_NE(ThrownBy<CFileException>([&] { table.Serialize(archive); }), nullptr);
    ASSERT_EQ(history_test::Plain(table), (history_test::PlainLines{{201, 3, 1, 5}}));
    ASSERT_EQ(history_test::NeededIds(table), ids);
  }
}

TEST(FaultyCatalogue, RowsAheadOfADamagedPlaceStay) {
  CString text;
  CFieldInfoMgr builtIn;
  builtIn.BuildFieldInfoFile(text);
  const Bytes bytes(text.GetString(), text.GetString() + text.GetLength());
  for (std::size_t broken = 0; broken < bytes.size(); broken += 199) {
    CFieldInfoMgr catalogue;
    BrokenFile<CStdioFile> file(bytes, broken, Break::kThrows);
    CString error;
    const auto thrown = ThrownBy<CFileException>([&] { catalogue.LoadFromFile(file, error); });
    ASSERT_NE(thrown, nullptr) << broken;
    const auto lines =
        std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(broken), '\n');
    ASSERT_EQ(fields_test::RowCount(catalogue), lines) << broken;
  }
}

#if !defined(_WIN32)

// The system gives no file more than `bytes`, as long as this lives.
class SmallFiles {
 public:
  explicit SmallFiles(std::size_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &m_limit);
    rlimit small = m_limit;
    small.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &small);
  }
  SmallFiles(const SmallFiles&) = delete;
  SmallFiles& operator=(const SmallFiles&) = delete;
  ~SmallFiles() {
    setrlimit(RLIMIT_FSIZE, &m_limit);
    std::signal(SIGXFSZ, m_handler);
  }

 private:
  void (*m_handler)(int);
  rlimit m_limit{};
};

class RealFile : public testing::Test {
 protected:
  RealFile()
      : m_folder(fs::path(testing::TempDir()) /
                 (std::string("pxdutil_") +
                  testing::UnitTest::GetInstance()->current_test_info()->name())),
        m_path((m_folder / "file").string()) {
    fs::remove_all(m_folder);
    fs::create_directory(m_folder);
  }
  ~RealFile() override { fs::remove_all(m_folder); }

  [[nodiscard]] std::string Contents() const {
    std::ifstream file(m_path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  [[nodiscard]] std::ptrdiff_t FileCount() const {
    return std::distance(fs::directory_iterator(m_folder), {});
  }

  fs::path m_folder;
  std::string m_path;
};

TEST_F(RealFile, ThatCannotGrowKeepsTheRecordsThatFit) {
  const Bytes& whole = StoredBars();
  const std::size_t size = whole.size() / kBars;
  for (std::size_t room = 0; room < whole.size(); room += 997) {
    {
      const SmallFiles small(room);
      const auto error = ThrownBy<CFileException>([&] {
        CFile file(m_path.c_str(), CFile::modeCreate | CFile::modeWrite | CFile::typeBinary);
        StoreBars(file, 0, kBars);
        file.Close();
      });
      ASSERT_NE(error, nullptr) << room;
      ASSERT_EQ(error->m_cause, +CFileException::diskFull);
    }
    const std::string stored = Contents();
    ASSERT_EQ(stored.size(), room);
    ASSERT_EQ(CountBars(Bytes(stored.begin(), stored.end())), room / size);
  }
}

TEST_F(RealFile, ACatalogueThatCannotBeWrittenLeavesTheOneThatWas) {
  CFieldInfoMgr catalogue;
  ASSERT_EQ(catalogue.Create(m_path.c_str()), 1);
  const auto whole = static_cast<std::size_t>(fs::file_size(m_path));
  std::vector<std::size_t> rooms = {whole - 1, whole};
  for (std::size_t room = 0; room < whole; room += 401) {
    rooms.push_back(room);
  }
  for (const std::size_t room : rooms) {
    std::ofstream(m_path, std::ios::binary) << "what was there";
    int result = 1;
    {
      const SmallFiles small(room);
      result = catalogue.Create(m_path.c_str());
    }
    ASSERT_EQ(result, room < whole ? 0 : 1) << room;
    ASSERT_EQ(Contents() == "what was there", room < whole) << room;
    ASSERT_EQ(FileCount(), 1) << "a file was left over at " << room;
  }
}

#endif

}  // namespace
