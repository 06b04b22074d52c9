// The exceptions of the library. They are made on the heap and thrown by pointer; whoever catches
// one releases it with Delete():
//
//   try { bar.SetDoubleValForCol(99, 1.0); }
//   catch (CDPDataPtException* e) { ...; e->Delete(); }
#ifndef PXDUTIL_FOUNDATION_EXCEPTION_H
#define PXDUTIL_FOUNDATION_EXCEPTION_H

#include <cstdint>

#include <pxdutil/foundation/object.h>
#include <pxdutil/foundation/text.h>

class PXDUTIL_API CException : public CObject {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CException);

 public:
  // Frees the exception; it must have been made with new.
  void Delete() { delete this; }

  // Writes the exception's words to `buffer`: at most `bufferSize` - 1 characters and a NUL,
  // nothing where the size is 0. Returns 1 where the exception has words of its own, else 0.
  // `helpContext` is not used.
  virtual int GetErrorMessage(char* buffer, unsigned int bufferSize,
                              unsigned int* helpContext = nullptr) const;
};

// A failure of an archive.
class PXDUTIL_API CArchiveException : public CException {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CArchiveException);

 public:
  enum Cause : int {
    none = 0,
    genericException = 1,
    readOnly = 2,   // something was to be stored into an archive that loads
    endOfFile = 3,  // the bytes ran out before the value was complete
    writeOnly = 4,  // something was to be loaded from an archive that stores
  };

  explicit CArchiveException(int cause = none, const CString& fileName = CString())
      : m_cause(cause), m_strFileName(fileName) {}
  int GetErrorMessage(char* buffer, unsigned int bufferSize,
                      unsigned int* helpContext = nullptr) const override;

  int m_cause;
  CString m_strFileName;
};

// A failure of a file.
class PXDUTIL_API CFileException : public CException {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CFileException);

 public:
  enum Cause : int {
    none = 0,
    genericException = 1,
    fileNotFound = 2,
    badPath = 3,
    tooManyOpenFiles = 4,
    accessDenied = 5,
    invalidFile = 6,
    badSeek = 9,
    hardIO = 10,
    sharingViolation = 11,
    diskFull = 13,
    endOfFile = 14,
  };

  explicit CFileException(int cause = none, const CString& fileName = CString())
      : m_cause(cause), m_strFileName(fileName) {}
  int GetErrorMessage(char* buffer, unsigned int bufferSize,
                      unsigned int* helpContext = nullptr) const override;

  // The cause that an errno value of the C library stands for.
  [[nodiscard]] static int CauseOfErrno(int error) noexcept;

  int m_cause;
  CString m_strFileName;
};

// A column operation on a data point was given a column that the point hasn't.
class PXDUTIL_API CDPDataPtException : public CException {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CDPDataPtException);

 public:
  // Which words GetErrorMessage puts round the message.
  enum CDPDataPtExceptionError : std::int32_t {
    DPErrorGeneral = 0,
    DPErrorPlain = 1,
  };

  CDPDataPtException() : CDPDataPtException(DPErrorGeneral, "Error") {}
  CDPDataPtException(CDPDataPtExceptionError error, CString message)
      : m_strMessage(std::move(message)), m_Error(error) {}

  // The text is cut at 255 characters before it is cut to the buffer. Returns 1.
  int GetErrorMessage(char* buffer, unsigned int bufferSize,
                      unsigned int* helpContext = nullptr) const override;

  CString m_strMessage;
  CDPDataPtExceptionError m_Error;
};

// The same names without their class, which is how hosts know them.
using CDPDataPtExceptionError = CDPDataPtException::CDPDataPtExceptionError;
inline constexpr CDPDataPtExceptionError DPErrorGeneral = CDPDataPtException::DPErrorGeneral;
inline constexpr CDPDataPtExceptionError DPErrorPlain = CDPDataPtException::DPErrorPlain;

#endif
