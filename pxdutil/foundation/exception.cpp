#include <pxdutil/foundation/exception.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <string_view>

PXDUTIL_DEFINE_RUNTIME_CLASS(CException, CObject, kNoSchema, nullptr)
PXDUTIL_DEFINE_RUNTIME_CLASS(CArchiveException, CException, kNoSchema, nullptr)
PXDUTIL_DEFINE_RUNTIME_CLASS(CFileException, CException, kNoSchema, nullptr)
PXDUTIL_DEFINE_RUNTIME_CLASS(CDPDataPtException, CException, kNoSchema, nullptr)

namespace {

// Copies what fits of `text`, and a NUL behind it.
int CopyOut(std::string_view text, char* buffer, unsigned int bufferSize) {
  if (bufferSize > 0) {
    buffer[text.copy(buffer, bufferSize - 1)] = '\0';
  }
  return 1;
}

int CopyOutWithFile(std::string_view words, const CString& fileName, char* buffer,
                    unsigned int bufferSize) {
  const CString text = fileName.IsEmpty() ? CString(std::string(words))
                                          : fileName + ": " + std::string(words).c_str();
  return CopyOut(text, buffer, bufferSize);
}

std::string_view ArchiveWords(int cause) {
  switch (cause) {
    case CArchiveException::none:
      return "no error";
    case CArchiveException::readOnly:
      return "a store operation on an archive that loads";
    case CArchiveException::endOfFile:
      return "the archive ended in the middle of a value";
    case CArchiveException::writeOnly:
      return "a load operation on an archive that stores";
  }
  return "archive error";
}

// One row a cause: what the C library says, and what people are told.
struct FileCause {
  int cause;
  int error;
  std::string_view words;
};

constexpr FileCause kFileCauses[] = {
    {CFileException::none, 0, "no error"},
    {CFileException::fileNotFound, ENOENT, "no such file"},
    {CFileException::badPath, ENOTDIR, "not a path to a file"},
    {CFileException::tooManyOpenFiles, EMFILE, "too many open files"},
    {CFileException::tooManyOpenFiles, ENFILE, "too many open files"},
    {CFileException::accessDenied, EACCES, "access denied"},
    {CFileException::accessDenied, EPERM, "access denied"},
    {CFileException::accessDenied, EROFS, "access denied"},
    {CFileException::accessDenied, EISDIR, "access denied"},
    {CFileException::invalidFile, EBADF, "not an open file"},
    {CFileException::badSeek, EINVAL, "a place outside the file"},
    {CFileException::hardIO, EIO, "an input or output error"},
    {CFileException::sharingViolation, EBUSY, "in use elsewhere"},
    {CFileException::diskFull, ENOSPC, "no space left"},
    {CFileException::diskFull, EFBIG, "no space left"},
};

}  // namespace

int CException::GetErrorMessage(char* buffer, unsigned int bufferSize, unsigned int*) const {
  CopyOut({}, buffer, bufferSize);
  return 0;
}

int CArchiveException::GetErrorMessage(char* buffer, unsigned int bufferSize, unsigned int*) const {
  return CopyOutWithFile(ArchiveWords(m_cause), m_strFileName, buffer, bufferSize);
}

int CFileException::GetErrorMessage(char* buffer, unsigned int bufferSize, unsigned int*) const {
  const auto* row = std::find_if(std::begin(kFileCauses), std::end(kFileCauses),
                                 [this](const FileCause& r) { return r.cause == m_cause; });
  const std::string_view words = row != std::end(kFileCauses) ? row->words : "file error";
  return CopyOutWithFile(words, m_strFileName, buffer, bufferSize);
}

int CFileException::CauseOfErrno(int error) noexcept {
  const auto* row = std::find_if(std::begin(kFileCauses), std::end(kFileCauses),
                                 [error](const FileCause& r) { return r.error == error; });
  return row != std::end(kFileCauses) ? row->cause : static_cast<int>(genericException);
}

int CDPDataPtException::GetErrorMessage(char* buffer, unsigned int bufferSize,
                                        unsigned int*) const {
  char local[256];
  // "DataPoin" is how hosts have always seen this text, and some of them look for it.
  if (m_Error == DPErrorPlain) {
    std::snprintf(local, sizeof local, "%s\n", m_strMessage.GetString());
  } else {
    std::snprintf(local, sizeof local, "CDataPoinException : Mesg=\"%s\"\n",
                  m_strMessage.GetString());
  }
  return CopyOut(local, buffer, bufferSize);
}
