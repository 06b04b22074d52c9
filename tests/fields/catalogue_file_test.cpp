#include <pxdutil/fields/field_info_mgr.h>

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <pxdutil/foundation/file.h>
#include <pxdutil/foundation/file_path.h>
#include <pxdutil/reference/toolbox.h>

#include "support.h"

#if !defined(_WIN32)
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <csignal>
#endif

namespace {

using namespace fields_test;
namespace fs = std::filesystem;

// A folder of its own for each test.
class CatalogueFile : public testing::Test {
 protected:
  void SetUp() override {
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    const auto ticks = std::chrono::steady_clock::now().time_since_epoch().count();
    m_folder = fs::path(testing::TempDir()) /
               ("pxdutil_" + std::string(test->name()) + "_" + std::to_string(ticks));
    ASSERT_TRUE(fs::create_directory(m_folder));
    m_path = m_folder / "fields.dat";
  }
  void TearDown() override {
    std::error_code ignored;
    fs::permissions(m_folder, fs::perms::owner_all, ignored);
    fs::remove_all(m_folder, ignored);
  }

  int Create() { return CFieldInfoMgr().Create(m_path.string().c_str()); }

  void Write(const std::string& bytes) const {
    std::ofstream(m_path, std::ios::binary | std::ios::trunc) << bytes;
  }
  [[nodiscard]] std::string Bytes() const {
    std::ostringstream bytes;
    bytes << std::ifstream(m_path, std::ios::binary).rdbuf();
    return bytes.str();
  }
  // How many things are in the folder: the catalogue, and what shouldn't be.
  [[nodiscard]] std::ptrdiff_t FolderSize() const {
    return std::distance(fs::directory_iterator(m_folder), fs::directory_iterator());
  }

  fs::path m_folder;
  fs::path m_path;
};

// What a catalogue file must hold: the lines, the word, the checksum and the version 32.
std::string WithTrailer(const std::string& lines, unsigned version = 32) {
  const std::string text = lines + "VersionInfo";
  const unsigned crc = CToolBox::CalcCRC(CString(text));
  std::string bytes = text;
  for (const unsigned byte : {crc & 0xFFU, crc >> 8, version & 0xFFU, version >> 8}) {
    bytes += static_cast<char>(byte);
  }
  return bytes;
}

std::string BuiltIn() {
  CString lines;
  CFieldInfoMgr().BuildFieldInfoFile(lines);
  return WithTrailer(lines.Str());
}

TEST_F(CatalogueFile, AMissingFileIsWrittenWithItsTrailer) {
  EXPECT_EQ(Create(), 1);
  const std::string bytes = Bytes();
  EXPECT_EQ(bytes, BuiltIn());
  EXPECT_EQ(FolderSize(), 1);
  // The last line, the word without a line end, two bytes of checksum, the version.
  ASSERT_GT(bytes.size(), 17U);
  EXPECT_EQ(bytes.substr(bytes.size() - 17, 13), "\r\nVersionInfo");
  EXPECT_EQ(bytes.substr(bytes.size() - 2), std::string("\x20\x00", 2));
}

TEST_F(CatalogueFile, WhatWasWrittenLoadsAsAHostLoadsIt) {
  CFieldInfoMgr catalogue;
  ASSERT_EQ(catalogue.Create(m_path.string().c_str()), 1);
  EXPECT_EQ(RowCount(catalogue), 0);  // writing isn't loading
  CStdioFile file(m_path.string().c_str(), CFile::modeRead | CFile::typeText);
  CString error;
  EXPECT_EQ(catalogue.LoadFromFile(file, error), 1);
  EXPECT_EQ(error, "");
  EXPECT_EQ(RowCount(catalogue), 231);
}

TEST_F(CatalogueFile, AValidFileIsNotTouched) {
  // Any lines will do, as long as the checksum and the version are right.
  const std::string bytes = WithTrailer("{some lines of another build}\r\n");
  Write(bytes);
  const auto old = fs::file_time_type::clock::now() - std::chrono::hours(24);
  fs::last_write_time(m_path, old);
  const auto before = fs::last_write_time(m_path);
  EXPECT_EQ(Create(), 1);
  EXPECT_EQ(Bytes(), bytes);
  EXPECT_EQ(fs::last_write_time(m_path), before);
  EXPECT_EQ(FolderSize(), 1);
}

TEST_F(CatalogueFile, AValidFileOfManyPiecesIsNotTouched) {
  for (const std::size_t size : {4096U - 11U, 4096U - 10U, 3U * 4096U, 1000000U}) {
    const std::string bytes = WithTrailer(std::string(size, 'x'));
    Write(bytes);
    EXPECT_EQ(Create(), 1);
    EXPECT_TRUE(Bytes() == bytes) << size;
  }
}

TEST_F(CatalogueFile, CreatingTwiceChangesNothingTheSecondTime) {
  EXPECT_EQ(Create(), 1);
  const auto written = fs::last_write_time(m_path);
  EXPECT_EQ(Create(), 1);
  EXPECT_EQ(fs::last_write_time(m_path), written);
}

TEST_F(CatalogueFile, AnyChangedByteMakesItWrittenAnew) {
  const std::string good = BuiltIn();
  for (const std::size_t at : {std::size_t{0}, good.size() / 2, good.size() - 5, good.size() - 4,
                               good.size() - 3, good.size() - 2, good.size() - 1}) {
    std::string bytes = good;
    bytes[at] = static_cast<char>(bytes[at] ^ 0x01);
    Write(bytes);
    EXPECT_EQ(Create(), 1);
    EXPECT_TRUE(Bytes() == good) << at;
  }
}

TEST_F(CatalogueFile, AnotherVersionIsReplaced) {
  for (const unsigned version : {0U, 31U, 33U, 0x2000U, 0x0120U}) {
    Write(WithTrailer("{}\r\n", version));
    EXPECT_EQ(Create(), 1);
    EXPECT_TRUE(Bytes() == BuiltIn()) << version;
  }
}

TEST_F(CatalogueFile, ShortFilesAreReplaced) {
  const std::string valid = WithTrailer("");
  for (const std::size_t size : {0U, 1U, 2U, 3U, 4U, 5U, 10U, 11U, 14U}) {
    Write(valid.substr(0, size));
    EXPECT_EQ(Create(), 1);
    EXPECT_TRUE(Bytes() == BuiltIn()) << size;
  }
}

// The checksum of no bytes is FFFF, so four bytes can be a valid file without a line: meant.
TEST_F(CatalogueFile, FourBytesCanBeAValidFileOnPurpose) {
  const std::string bytes("\xFF\xFF\x20\x00", 4);
  Write(bytes);
  EXPECT_EQ(Create(), 1);
  EXPECT_EQ(Bytes(), bytes);
}

TEST_F(CatalogueFile, AHugeFileIsReplacedWithoutBeingReadIntoMemory) {
  Write("x");
  fs::resize_file(m_path, 5'000'000'000);  // a hole: it takes no room
  EXPECT_EQ(Create(), 1);
  EXPECT_TRUE(Bytes() == BuiltIn());
}

TEST_F(CatalogueFile, AFolderInItsPlaceGivesZero) {
  fs::create_directory(m_path);
  EXPECT_EQ(Create(), 0);
  EXPECT_TRUE(fs::is_directory(m_path));
  EXPECT_EQ(FolderSize(), 1);
}

TEST_F(CatalogueFile, AMissingFolderGivesZero) {
  m_path = m_folder / "missing" / "fields.dat";
  EXPECT_EQ(Create(), 0);
  EXPECT_EQ(FolderSize(), 0);
}

TEST_F(CatalogueFile, NoPathGivesZero) {
  CFieldInfoMgr catalogue;
  EXPECT_EQ(catalogue.Create(""), 0);
  EXPECT_EQ(catalogue.Create(nullptr), 0);
}

TEST_F(CatalogueFile, APathWithoutAFolderIsInTheCurrentOne) {
  const fs::path before = fs::current_path();
  fs::current_path(m_folder);
  const int result = CFieldInfoMgr().Create("fields.dat");
  fs::current_path(before);
  EXPECT_EQ(result, 1);
  EXPECT_TRUE(Bytes() == BuiltIn());
  EXPECT_EQ(FolderSize(), 1);
}

TEST_F(CatalogueFile, AFolderWithANameBeyondAsciiWillDo) {
  const std::string folder = (m_folder / "folder").string() + "\x80\xE9";
  fs::create_directory(pxd::FilePath(folder));
  const std::string path = folder + "/fields.dat";
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(CFieldInfoMgr().Create(path.c_str()), 1);
    EXPECT_EQ(pxd::CheckCatalogueTrailer(path.c_str()), pxd::CatalogueTrailer::kGood);
    std::ofstream(pxd::FilePath(path)) << "damaged";
  }
}

TEST_F(CatalogueFile, BuildingTheTextReplacesWhatWasThere) {
  CString text = "before";
  CFieldInfoMgr().BuildFieldInfoFile(text);
  EXPECT_EQ(text.Find("before"), -1);
  EXPECT_EQ(text.Find("VersionInfo"), -1);
  EXPECT_TRUE(text.Str().starts_with("{Base Code,5,"));
}

#if !defined(_WIN32)

// Runs as a user whom permissions bind, since the superuser writes everywhere.
class AsOrdinaryUser {
 public:
  AsOrdinaryUser() : m_user(geteuid()) {
    if (m_user == 0 && seteuid(65534) != 0) {
      ADD_FAILURE() << "the superuser's rights can't be laid down";
    }
  }
  AsOrdinaryUser(const AsOrdinaryUser&) = delete;
  AsOrdinaryUser& operator=(const AsOrdinaryUser&) = delete;
  ~AsOrdinaryUser() {
    if (seteuid(m_user) != 0) {
      ADD_FAILURE() << "the superuser's rights can't be taken up again";
    }
  }

 private:
  uid_t m_user;
};

TEST_F(CatalogueFile, AReadOnlyFolderGivesZeroAndKeepsTheOldFile) {
  Write("old");
  fs::permissions(m_path, fs::perms::all);
  fs::permissions(m_folder, static_cast<fs::perms>(0555));
  {
    const AsOrdinaryUser user;
    EXPECT_EQ(Create(), 0);
  }
  EXPECT_EQ(Bytes(), "old");
  EXPECT_EQ(FolderSize(), 1);
}

TEST_F(CatalogueFile, AReadOnlyFileGivesZeroAndStays) {
  Write("old");
  fs::permissions(m_path, static_cast<fs::perms>(0444));
  fs::permissions(m_folder, fs::perms::all);
  {
    const AsOrdinaryUser user;
    EXPECT_EQ(Create(), 0);
  }
  EXPECT_EQ(Bytes(), "old");
  EXPECT_EQ(FolderSize(), 1);
}

// Lets files grow no further than this, which the system reports as a full disk is reported.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t size) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &m_before);
    rlimit limit = m_before;
    limit.rlim_cur = size;
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &m_before);
    std::signal(SIGXFSZ, m_handler);
  }

 private:
  void (*m_handler)(int);
  rlimit m_before{};
};

TEST_F(CatalogueFile, AFullDiskGivesZeroAndKeepsTheOldFile) {
  Write("old");
  // At the first byte, in the middle, and at the last byte.
  for (const std::size_t size : {std::size_t{0}, std::size_t{5000}, BuiltIn().size() - 1}) {
    int result = 1;
    {
      const FileSizeLimit limit(size);
      result = Create();
    }
    EXPECT_EQ(result, 0) << size;
    EXPECT_EQ(Bytes(), "old") << size;
    EXPECT_EQ(FolderSize(), 1) << size;
  }
  const FileSizeLimit limit(BuiltIn().size());
  EXPECT_EQ(Create(), 1);
}

TEST_F(CatalogueFile, ALinkStaysAndWhatItLeadsToIsReplaced) {
  const fs::path real = m_folder / "real.dat";
  Write("old");
  fs::rename(m_path, real);
  fs::create_symlink(real, m_path);
  EXPECT_EQ(Create(), 1);
  EXPECT_TRUE(fs::is_symlink(m_path));
  m_path = real;
  EXPECT_TRUE(Bytes() == BuiltIn());
  EXPECT_EQ(FolderSize(), 2);
}

TEST_F(CatalogueFile, AReplacedFileKeepsItsPermissions) {
  Write("old");
  const auto permissions = static_cast<fs::perms>(0640);
  fs::permissions(m_path, permissions);
  EXPECT_EQ(Create(), 1);
  EXPECT_EQ(fs::status(m_path).permissions(), permissions);
}

TEST_F(CatalogueFile, APipeIsRefusedAtOnce) {
  ASSERT_EQ(mkfifo(m_path.c_str(), 0600), 0);
  EXPECT_EQ(Create(), 0);
  EXPECT_TRUE(fs::is_fifo(m_path));
  EXPECT_EQ(FolderSize(), 1);
}

#else

TEST_F(CatalogueFile, AReadOnlyFileGivesZeroAndStays) {
  Write("old");
  fs::permissions(m_path, fs::perms::owner_read);
  if (std::ofstream(m_path, std::ios::app)) {
    GTEST_SKIP() << "this user may write everywhere";
  }
  EXPECT_EQ(Create(), 0);
  EXPECT_EQ(Bytes(), "old");
  EXPECT_EQ(FolderSize(), 1);
  fs::permissions(m_path, fs::perms::all);
}

TEST_F(CatalogueFile, AFileThatIsInUseGivesZeroAndStays) {
  Write("old");
  {
    const CFile user(m_path.string().c_str(), CFile::modeRead);
    EXPECT_EQ(Create(), 0);
  }
  EXPECT_EQ(Bytes(), "old");
  EXPECT_EQ(FolderSize(), 1);
  EXPECT_EQ(Create(), 1);
}

#endif

TEST_F(CatalogueFile, TheTrailerTellsWhatIsWrongWithAFile) {
  const auto check = [this] { return pxd::CheckCatalogueTrailer(m_path.string().c_str()); };
  using pxd::CatalogueTrailer;
  EXPECT_EQ(check(), CatalogueTrailer::kUnreadable);
  Write("abc");
  EXPECT_EQ(check(), CatalogueTrailer::kTooShort);
  Write(WithTrailer("{a line}\r\n", 31));
  EXPECT_EQ(check(), CatalogueTrailer::kOtherVersion);
  std::string bytes = WithTrailer("{a line}\r\n");
  Write(bytes);
  EXPECT_EQ(check(), CatalogueTrailer::kGood);
  bytes[1] = 'A';
  Write(bytes);
  EXPECT_EQ(check(), CatalogueTrailer::kBadChecksum);
}

}  // namespace
