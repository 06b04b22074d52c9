#include <pxdutil/foundation/file.h>

#if defined(__linux__)
#include <sys/stat.h>
#endif

#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include <pxdutil/foundation/file_path.h>

#include "tests/support/thrown.h"

namespace {

using pxd::test::ThrownBy;

// A path of the running test's own, removed behind it.
class FileOnDisk : public testing::Test {
 protected:
  FileOnDisk()
      : m_path(testing::TempDir() + "pxdutil_" +
               testing::UnitTest::GetInstance()->current_test_info()->name() + ".tmp") {
    std::filesystem::remove_all(m_path);
  }
  ~FileOnDisk() override {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }

  [[nodiscard]] const char* Path() const { return m_path.c_str(); }
  void Put(const std::string& content) const { std::ofstream(m_path, std::ios::binary) << content; }
  [[nodiscard]] std::string Content() const {
    std::ifstream in(m_path, std::ios::binary);
    std::ostringstream content;
    content << in.rdbuf();
    return content.str();
  }

 private:
  std::string m_path;
};

std::string ReadAll(CFile& file) {
  char buffer[100];
  return {buffer, file.Read(buffer, sizeof buffer)};
}

TEST_F(FileOnDisk, FlagsHaveTheValuesThatHostsUse) {
  EXPECT_EQ(static_cast<unsigned int>(CFile::modeRead), 0U);
  EXPECT_EQ(static_cast<unsigned int>(CFile::modeWrite), 1U);
  EXPECT_EQ(static_cast<unsigned int>(CFile::modeReadWrite), 2U);
  EXPECT_EQ(static_cast<unsigned int>(CFile::shareDenyWrite), 0x20U);
  EXPECT_EQ(static_cast<unsigned int>(CFile::modeCreate), 0x1000U);
  EXPECT_EQ(static_cast<unsigned int>(CFile::typeText), 0x4000U);
  EXPECT_EQ(static_cast<unsigned int>(CFile::typeBinary), 0x8000U);
}

TEST_F(FileOnDisk, IsWrittenAndReadBack) {
  {
    CFile file(Path(), CFile::modeWrite | CFile::modeCreate);
    file.Write("abc", 3);
    file.Write("de", 2);
    EXPECT_EQ(file.GetPosition(), 5U);
    EXPECT_EQ(file.GetLength(), 5U);
    file.Close();
  }
  CFile file;
  ASSERT_EQ(file.Open(Path(), CFile::modeRead | CFile::shareDenyWrite), 1);
  EXPECT_STREQ(file.GetFilePath(), Path());
  EXPECT_EQ(file.GetLength(), 5U);
  EXPECT_EQ(ReadAll(file), "abcde");
  EXPECT_EQ(ReadAll(file), "");
}

TEST_F(FileOnDisk, CreateEmptiesAFileThatExists) {
  Put("old content");
  CFile file(Path(), CFile::modeWrite | CFile::modeCreate);
  file.Close();
  EXPECT_EQ(Content(), "");
}

TEST_F(FileOnDisk, WriteWithoutCreateKeepsTheRest) {
  Put("abcdef");
  CFile file(Path(), CFile::modeWrite);
  file.Write("XY", 2);
  file.Close();
  EXPECT_EQ(Content(), "XYcdef");
}

TEST_F(FileOnDisk, ReadWriteMayTurnBetweenTheTwo) {
  CFile file(Path(), CFile::modeReadWrite | CFile::modeCreate);
  file.Write("abcdef", 6);
  file.SeekToBegin();
  char two[2];
  ASSERT_EQ(file.Read(two, 2), 2U);
  file.Write("XY", 2);
  ASSERT_EQ(file.Read(two, 2), 2U);
  EXPECT_EQ(std::string(two, 2), "ef");
  file.Close();
  EXPECT_EQ(Content(), "abXYef");
}

TEST_F(FileOnDisk, LengthDoesNotMoveThePlace) {
  Put("abcdef");
  CFile file(Path(), CFile::modeRead);
  char c = 0;
  file.Read(&c, 1);
  EXPECT_EQ(file.GetLength(), 6U);
  EXPECT_EQ(file.GetPosition(), 1U);
  EXPECT_EQ(ReadAll(file), "bcdef");
}

TEST_F(FileOnDisk, SeeksFromAllThreePlaces) {
  Put("abcdef");
  CFile file(Path(), CFile::modeRead);
  EXPECT_EQ(file.Seek(2, CFile::begin), 2U);
  EXPECT_EQ(file.Seek(1, CFile::current), 3U);
  EXPECT_EQ(ReadAll(file), "def");
  EXPECT_EQ(file.Seek(-1, CFile::end), 5U);
  EXPECT_EQ(ReadAll(file), "f");
  EXPECT_EQ(file.SeekToEnd(), 6U);
  file.SeekToBegin();
  EXPECT_EQ(ReadAll(file), "abcdef");
}

TEST_F(FileOnDisk, ASeekBeforeTheStartThrows) {
  Put("abc");
  CFile file(Path(), CFile::modeRead);
  const auto error = ThrownBy<CFileException>([&] { file.Seek(-1, CFile::begin); });
  ASSERT_NE(error, nullptr);
  EXPECT_EQ(error->m_cause, CFileException::badSeek);
  EXPECT_STREQ(error->m_strFileName, Path());
}

TEST_F(FileOnDisk, OpenTellsWhyItFailed) {
  CFile file;
  CFileException error;
  EXPECT_EQ(file.Open(Path(), CFile::modeRead, &error), 0);
  EXPECT_EQ(error.m_cause, CFileException::fileNotFound);
  EXPECT_STREQ(error.m_strFileName, Path());
  EXPECT_EQ(file.Open(Path(), CFile::modeRead), 0);
  EXPECT_EQ(file.Open(Path(), CFile::modeWrite), 0);
  EXPECT_EQ(file.Open("", CFile::modeRead, &error), 0);
  EXPECT_EQ(file.Open(nullptr, CFile::modeRead, &error), 0);
  EXPECT_EQ(error.m_cause, CFileException::fileNotFound);
}

TEST_F(FileOnDisk, TheConstructorThrowsWhereOpenFails) {
  for (const bool lines : {false, true}) {
    const auto error = ThrownBy<CFileException>([&] {
      if (lines) {
        const CStdioFile file(Path(), CFile::modeRead);
      } else {
        const CFile file(Path(), CFile::modeRead);
      }
    });
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->m_cause, CFileException::fileNotFound);
    EXPECT_STREQ(error->m_strFileName, Path());
  }
}

TEST_F(FileOnDisk, ADirectoryIsRefused) {
  std::filesystem::create_directory(Path());
  CFile file;
  CFileException error;
  EXPECT_EQ(file.Open(Path(), CFile::modeRead, &error), 0);
  EXPECT_EQ(error.m_cause, CFileException::accessDenied);
  EXPECT_EQ(file.Open(Path(), CFile::modeWrite | CFile::modeCreate), 0);
}

TEST_F(FileOnDisk, AFileThatIsNotOpenThrows) {
  CFile file;
  char c = 0;
  const auto cause = [](auto action) {
    const auto error = ThrownBy<CFileException>(action);
    return error != nullptr ? error->m_cause : 0;
  };
  EXPECT_EQ(cause([&] { file.Read(&c, 1); }), CFileException::invalidFile);
  EXPECT_EQ(cause([&] { file.Write(&c, 1); }), CFileException::invalidFile);
  EXPECT_EQ(cause([&] { file.Seek(0, CFile::begin); }), CFileException::invalidFile);
  EXPECT_EQ(cause([&] { static_cast<void>(file.GetPosition()); }), CFileException::invalidFile);
  EXPECT_EQ(cause([&] { static_cast<void>(file.GetLength()); }), CFileException::invalidFile);
  file.Flush();
  file.Close();
}

TEST_F(FileOnDisk, TheWrongDirectionThrows) {
  Put("abc");
  {
    CFile file(Path(), CFile::modeRead);
    EXPECT_NE(ThrownBy<CFileException>([&] { file.Write("x", 1); }), nullptr);
  }
  CFile file(Path(), CFile::modeWrite | CFile::modeCreate);
  char c = 0;
  EXPECT_NE(ThrownBy<CFileException>([&] { file.Read(&c, 1); }), nullptr);
}

// Two bytes that mean other characters in other code pages.
TEST_F(FileOnDisk, ANameBeyondAsciiNamesOneFileToAll) {
  const std::string name = std::string(Path()) + "\x80\xE9";
  const std::filesystem::path path = pxd::FilePath(name);
  EXPECT_EQ(pxd::FileText(path), name);
  EXPECT_FALSE(std::filesystem::exists(path));
  CFile(name.c_str(), CFile::modeWrite | CFile::modeCreate).Write("abc", 3);
  EXPECT_TRUE(std::filesystem::exists(path));
  std::filesystem::remove(path);
  CFile file;
  EXPECT_EQ(file.Open(name.c_str(), CFile::modeRead), 0);
}

TEST_F(FileOnDisk, FlushHandsTheBytesToTheSystem) {
  CFile file(Path(), CFile::modeWrite | CFile::modeCreate);
  file.Write("abc", 3);
  file.Flush();
  EXPECT_EQ(Content(), "abc");
}

TEST_F(FileOnDisk, MayBeOpenedAgainAndClosedTwice) {
  CFile file(Path(), CFile::modeWrite | CFile::modeCreate);
  file.Write("abc", 3);
  file.Close();
  file.Close();
  ASSERT_EQ(file.Open(Path(), CFile::modeRead), 1);
  EXPECT_EQ(ReadAll(file), "abc");
  ASSERT_EQ(file.Open(Path(), CFile::modeRead), 1);
  EXPECT_EQ(ReadAll(file), "abc");
}

#if defined(__linux__)
TEST_F(FileOnDisk, AFullDiskIsToldWhenTheBytesGoOut) {
  CFile file("/dev/full", CFile::modeWrite);
  file.Write("abc", 3);
  auto error = ThrownBy<CFileException>([&] { file.Flush(); });
  ASSERT_NE(error, nullptr);
  EXPECT_EQ(error->m_cause, CFileException::diskFull);
  EXPECT_STREQ(error->m_strFileName, "/dev/full");
}

TEST_F(FileOnDisk, AFullDiskIsToldAtClosingToo) {
  CFile file("/dev/full", CFile::modeWrite);
  file.Write("abc", 3);
  const auto error = ThrownBy<CFileException>([&] { file.Close(); });
  ASSERT_NE(error, nullptr);
  EXPECT_EQ(error->m_cause, CFileException::diskFull);
  file.Close();
}

// At the front of a process's memory there is nothing to read.
TEST_F(FileOnDisk, AFileThatFailsToBeReadThrows) {
  constexpr const char* kMemory = "/proc/self/mem";
  if (!std::filesystem::exists(kMemory)) {
    GTEST_SKIP() << "there is no " << kMemory;
  }
  CFile file(kMemory, CFile::modeRead);
  const auto unread = ThrownBy<CFileException>([&] { ReadAll(file); });
  ASSERT_NE(unread, nullptr);
  EXPECT_EQ(unread->m_cause, CFileException::hardIO);
  EXPECT_STREQ(unread->m_strFileName, kMemory);
}

// A pipe has neither a length nor a place.
TEST_F(FileOnDisk, APipeHasNoPlace) {
  ASSERT_EQ(mkfifo(Path(), 0600), 0);
  CFile file(Path(), CFile::modeReadWrite);
  const auto error = ThrownBy<CFileException>([&] { static_cast<void>(file.GetPosition()); });
  ASSERT_NE(error, nullptr);
  EXPECT_EQ(error->m_cause, CFileException::badSeek);
}
#endif

TEST(FileInMemory, GrowsAsItIsWritten) {
  CMemFile file;
  EXPECT_EQ(file.GetLength(), 0U);
  file.Write("abc", 3);
  EXPECT_EQ(file.GetLength(), 3U);
  EXPECT_EQ(file.GetPosition(), 3U);
  EXPECT_EQ(ReadAll(file), "");
  file.SeekToBegin();
  file.Write("XY", 2);
  EXPECT_EQ(ReadAll(file), "c");
  file.Write("", 0);
  EXPECT_EQ(file.GetLength(), 3U);
  file.Seek(2, CFile::begin);
  file.Write("zzz", 3);
  file.SeekToBegin();
  EXPECT_EQ(ReadAll(file), "XYzzz");
}

TEST(FileInMemory, HoldsACopyOfTheBytesItIsGiven) {
  char bytes[] = {'a', 'b'};
  CMemFile file(bytes, sizeof bytes);
  bytes[0] = 'x';
  EXPECT_EQ(ReadAll(file), "ab");
  CMemFile empty(nullptr, 0);
  EXPECT_EQ(ReadAll(empty), "");
}

TEST(FileInMemory, FillsAGapWithZeros) {
  CMemFile file;
  EXPECT_EQ(file.Seek(3, CFile::begin), 3U);
  EXPECT_EQ(file.GetLength(), 0U);
  EXPECT_EQ(ReadAll(file), "");
  file.Write("a", 1);
  EXPECT_EQ(file.GetBytes(), (std::vector<unsigned char>{0, 0, 0, 'a'}));
}

TEST(FileInMemory, RefusesImpossiblePlaces) {
  constexpr auto kMost = std::numeric_limits<std::int64_t>::max();
  CMemFile file("abc", 3);
  file.Seek(1, CFile::begin);
  const auto refused = [&](std::int64_t offset, unsigned int from) {
    const auto error = ThrownBy<CFileException>([&] { file.Seek(offset, from); });
    return error != nullptr && error->m_cause == CFileException::badSeek;
  };
  EXPECT_TRUE(refused(-1, CFile::begin));
  EXPECT_TRUE(refused(-2, CFile::current));
  EXPECT_TRUE(refused(-4, CFile::end));
  EXPECT_TRUE(refused(kMost, CFile::current));
  EXPECT_TRUE(refused(kMost, CFile::end));
  EXPECT_TRUE(refused(std::numeric_limits<std::int64_t>::min(), CFile::end));
  EXPECT_EQ(file.GetPosition(), 1U);
  EXPECT_EQ(file.Seek(-3, CFile::end), 0U);
}

TEST(FileInMemory, AWriteBeyondWhatMemoryCanHoldIsAFileError) {
  CMemFile file;
  file.Seek(static_cast<std::int64_t>(std::numeric_limits<std::size_t>::max() / 2), CFile::begin);
  const auto error = ThrownBy<CFileException>([&] { file.Write("abc", 3); });
  ASSERT_NE(error, nullptr);
  EXPECT_EQ(error->m_cause, CFileException::diskFull);
  EXPECT_EQ(file.GetLength(), 0U);
}

TEST(FileInMemory, HasNoPathToOpenAndIsEmptiedByClosing) {
  CMemFile file("abc", 3);
  CFileException error;
  EXPECT_EQ(file.Open("x", CFile::modeRead, &error), 0);
  EXPECT_NE(error.m_cause, CFileException::none);
  file.Close();
  EXPECT_EQ(file.GetLength(), 0U);
  EXPECT_EQ(file.GetPosition(), 0U);
}

class FileOfLines : public FileOnDisk {
 protected:
  std::vector<std::string> Lines(unsigned int flags) {
    CStdioFile file(Path(), flags);
    std::vector<std::string> lines;
    CString line;
    while (file.ReadString(line) != 0) {
      lines.push_back(line.Str());
    }
    return lines;
  }
  using Texts = std::vector<std::string>;
};

TEST_F(FileOfLines, BothLineEndsAreTakenOffInTextMode) {
  Put("one\r\ntwo\n\r\n\nlast\r\n");
  const Texts expected{"one", "two", "", "", "last"};
  EXPECT_EQ(Lines(CFile::modeRead | CFile::typeText), expected);
  EXPECT_EQ(Lines(CFile::modeRead), expected);
}

TEST_F(FileOfLines, ALastLineNeedsNoEnd) {
  Put("one\nlast");
  EXPECT_EQ(Lines(CFile::modeRead | CFile::typeText), (Texts{"one", "last"}));
  Put("one\n");
  EXPECT_EQ(Lines(CFile::modeRead | CFile::typeText), (Texts{"one"}));
  Put("");
  EXPECT_EQ(Lines(CFile::modeRead | CFile::typeText), (Texts{}));
}

TEST_F(FileOfLines, OnlyTheReturnAheadOfTheLineFeedIsTakenOff) {
  Put("a\rb\r\r\nc\r");
  EXPECT_EQ(Lines(CFile::modeRead | CFile::typeText), (Texts{"a\rb\r", "c\r"}));
}

TEST_F(FileOfLines, BinaryModeKeepsTheReturn) {
  Put("one\r\ntwo\n");
  EXPECT_EQ(Lines(CFile::modeRead | CFile::typeBinary), (Texts{"one\r", "two"}));
}

TEST_F(FileOfLines, AFailedReadLeavesTheLineAsItWas) {
  Put("");
  CStdioFile file(Path(), CFile::modeRead | CFile::typeText);
  CString line("as it was");
  EXPECT_EQ(file.ReadString(line), 0);
  EXPECT_STREQ(line, "as it was");
}

TEST_F(FileOfLines, LongLinesAndNulsComeWhole) {
  const std::string longest(100000, 'x');
  const std::string with_nul("a\0b", 3);
  Put(longest + "\r\n" + with_nul + "\n");
  EXPECT_EQ(Lines(CFile::modeRead | CFile::typeText), (Texts{longest, with_nul}));
}

TEST_F(FileOfLines, WhatIsWrittenInTextModeReadsBackTheSame) {
  {
    CStdioFile file(Path(), CFile::modeWrite | CFile::modeCreate | CFile::typeText);
    file.WriteString("one\ntwo\n");
    file.WriteString("");
    file.WriteString("last");
    file.Close();
  }
  EXPECT_EQ(Lines(CFile::modeRead | CFile::typeText), (Texts{"one", "two", "last"}));
}

TEST_F(FileOfLines, BinaryModeWritesTheTextAsItStands) {
  {
    CStdioFile file(Path(), CFile::modeWrite | CFile::modeCreate | CFile::typeBinary);
    file.WriteString("one\ntwo\r\n");
    file.Close();
  }
  EXPECT_EQ(Content(), "one\ntwo\r\n");
}

TEST(File, ReadingNoBytesTouchesNothing) {
  CFile closed;
  EXPECT_EQ(closed.Read(nullptr, 0), 0U);
}

TEST(File, KnowsItsClass) {
  EXPECT_STREQ(CMemFile().GetRuntimeClass()->m_lpszClassName, "CMemFile");
  EXPECT_STREQ(CStdioFile().GetRuntimeClass()->m_lpszClassName, "CStdioFile");
  EXPECT_STREQ(CFile().GetRuntimeClass()->m_lpszClassName, "CFile");
  EXPECT_STREQ(CFileException().GetRuntimeClass()->m_lpszClassName, "CFileException");
  EXPECT_NE(CStdioFile().IsKindOf(RUNTIME_CLASS(CFile)), 0);
}

}  // namespace
