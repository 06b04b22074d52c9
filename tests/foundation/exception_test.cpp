#include <pxdutil/foundation/exception.h>

#include <cerrno>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/thrown.h"

namespace {

using Code = CDPDataPtException::CDPDataPtExceptionError;

// The words in a buffer of `size`, with the bytes behind it watched.
std::string Words(const CException& error, unsigned int size) {
  std::string buffer(size + 4, '#');
  unsigned int help = 77;
  EXPECT_EQ(error.GetErrorMessage(buffer.data(), size, &help), 1);
  EXPECT_EQ(help, 77U);
  EXPECT_EQ(buffer.substr(size), "####") << "written beyond the buffer";
  return size > 0 ? std::string(buffer.c_str()) : std::string();
}

TEST(DataPointException, HoldsItsCodeAndText) {
  const CDPDataPtException error(CDPDataPtException::DPErrorPlain, "Error: Invalid column");
  EXPECT_EQ(error.m_Error, 1);
  EXPECT_STREQ(error.m_strMessage, "Error: Invalid column");
}

TEST(DataPointException, ByDefaultIsTheGeneralError) {
  const CDPDataPtException error;
  EXPECT_EQ(error.m_Error, 0);
  EXPECT_STREQ(error.m_strMessage, "Error");
  EXPECT_EQ(Words(error, 100), "CDataPoinException : Mesg=\"Error\"\n");
}

TEST(DataPointException, PutsItsTextIntoTheWordsOfItsCode) {
  EXPECT_EQ(Words(CDPDataPtException(CDPDataPtException::DPErrorPlain, "x"), 100), "x\n");
  EXPECT_EQ(Words(CDPDataPtException(CDPDataPtException::DPErrorGeneral, "x"), 100),
            "CDataPoinException : Mesg=\"x\"\n");
}

TEST(DataPointException, CutsItsWordsToTheBuffer) {
  const CDPDataPtException error(CDPDataPtException::DPErrorPlain, "abc");
  EXPECT_EQ(Words(error, 0), "");
  EXPECT_EQ(Words(error, 1), "");
  EXPECT_EQ(Words(error, 2), "a");
  EXPECT_EQ(Words(error, 4), "abc");
  EXPECT_EQ(Words(error, 5), "abc\n");
  EXPECT_EQ(Words(error, 6), "abc\n");
}

TEST(DataPointException, WritesNothingIntoNoBuffer) {
  EXPECT_EQ(CDPDataPtException().GetErrorMessage(nullptr, 0), 1);
  EXPECT_EQ(CArchiveException().GetErrorMessage(nullptr, 0), 1);
}

TEST(DataPointException, CutsItsWordsAt255Characters) {
  const auto plain = [](std::size_t length) {
    return Words(
        CDPDataPtException(CDPDataPtException::DPErrorPlain, CString(std::string(length, 'x'))),
        1000);
  };
  EXPECT_EQ(plain(254), std::string(254, 'x') + "\n");
  EXPECT_EQ(plain(255), std::string(255, 'x'));
  EXPECT_EQ(plain(300), std::string(255, 'x'));
  EXPECT_EQ(
      Words(CDPDataPtException(CDPDataPtException::DPErrorGeneral, CString(std::string(300, 'x'))),
            1000),
      ("CDataPoinException : Mesg=\"" + std::string(300, 'x')).substr(0, 255));
}

TEST(DataPointException, IsThrownByPointerAndDeleted) {
  const auto error = pxd::test::ThrownBy<CException>(
      [] { throw new CDPDataPtException(Code::DPErrorGeneral, "Error: Invalid column"); });
  ASSERT_NE(error, nullptr);
  EXPECT_TRUE(error->IsKindOf(RUNTIME_CLASS(CDPDataPtException)));
  EXPECT_EQ(Words(*error, 100), "CDataPoinException : Mesg=\"Error: Invalid column\"\n");
}

TEST(PlainException, HasNoWordsOfItsOwn) {
  char buffer[4] = "abc";
  EXPECT_EQ(CException().GetErrorMessage(buffer, sizeof buffer), 0);
  EXPECT_STREQ(buffer, "");
}

TEST(ArchiveException, HasTheCausesThatHostsKnow) {
  EXPECT_EQ(static_cast<int>(CArchiveException::readOnly), 2);
  EXPECT_EQ(static_cast<int>(CArchiveException::endOfFile), 3);
  EXPECT_EQ(static_cast<int>(CArchiveException::writeOnly), 4);
}

TEST(ArchiveException, NamesTheFileInItsWords) {
  const CArchiveException error(CArchiveException::endOfFile, "bars.dat");
  const std::string words = Words(error, 200);
  EXPECT_EQ(words.rfind("bars.dat: ", 0), 0U) << words;
  EXPECT_GT(words.size(), std::string("bars.dat: ").size());
  EXPECT_EQ(Words(error, 5), "bars");
}

TEST(ArchiveException, EachCauseHasWordsOfItsOwn) {
  const std::string none = Words(CArchiveException(CArchiveException::none), 200);
  const std::string read_only = Words(CArchiveException(CArchiveException::readOnly), 200);
  const std::string write_only = Words(CArchiveException(CArchiveException::writeOnly), 200);
  const std::string end = Words(CArchiveException(CArchiveException::endOfFile), 200);
  EXPECT_NE(none, read_only);
  EXPECT_NE(read_only, write_only);
  EXPECT_NE(write_only, end);
  EXPECT_NE(Words(CArchiveException(999), 200), "");
}

TEST(FileException, KnowsTheCauseOfASystemError) {
  struct Row {
    int error;
    int cause;
  };
  constexpr Row kRows[] = {
      {0, CFileException::none},
      {ENOENT, CFileException::fileNotFound},
      {ENOTDIR, CFileException::badPath},
      {EMFILE, CFileException::tooManyOpenFiles},
      {ENFILE, CFileException::tooManyOpenFiles},
      {EACCES, CFileException::accessDenied},
      {EPERM, CFileException::accessDenied},
      {EROFS, CFileException::accessDenied},
      {EISDIR, CFileException::accessDenied},
      {EBADF, CFileException::invalidFile},
      {EINVAL, CFileException::badSeek},
      {EIO, CFileException::hardIO},
      {EBUSY, CFileException::sharingViolation},
      {ENOSPC, CFileException::diskFull},
      {EFBIG, CFileException::diskFull},
      {EDOM, CFileException::genericException},
  };
  for (const Row& row : kRows) {
    EXPECT_EQ(CFileException::CauseOfErrno(row.error), row.cause) << row.error;
  }
}

TEST(FileException, NamesTheFileInItsWords) {
  EXPECT_EQ(Words(CFileException(CFileException::diskFull, "a.txt"), 200).rfind("a.txt: ", 0), 0U);
  EXPECT_NE(Words(CFileException(CFileException::diskFull), 200), "");
  EXPECT_NE(Words(CFileException(4711), 200), "");
}

TEST(DataPointException, ItsCodesAreKnownWithoutTheirClassToo) {
  const CDPDataPtException error(DPErrorPlain, "x");
  EXPECT_EQ(error.m_Error, CDPDataPtException::DPErrorPlain);
  EXPECT_EQ(DPErrorGeneral, CDPDataPtException().m_Error);
}

}  // namespace
