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

// The base of all exceptions.
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
  // What went wrong.
  enum Cause : int {
    none = 0,              // nothing yet
    genericException = 1,  // none of the others
    readOnly = 2,          // something was to be stored into an archive that loads
    endOfFile = 3,         // the bytes ran out before the value was complete
    writeOnly = 4,         // something was to be loaded from an archive that stores
  };

  // `cause` is a Cause, `fileName` the path of the file under the archive, empty where it has none.
  explicit CArchiveException(int cause = none, const CString& fileName = CString())
      : m_cause(cause), m_strFileName(fileName) {}
  int GetErrorMessage(char* buffer, unsigned int bufferSize,
                      unsigned int* helpContext = nullptr) const override;

  int m_cause;            // a Cause
  CString m_strFileName;  // the path of the file, empty where it has none
};

// A failure of a file.
class PXDUTIL_API CFileException : public CException {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CFileException);

 public:
  // What went wrong. The gaps are numbers of causes that can't arise here.
  enum Cause : int {
    none = 0,               // nothing yet
    genericException = 1,   // none of the others
    fileNotFound = 2,       // there is no such file, or no such folder
    badPath = 3,            // what the path leads through is no folder; a file in memory has none
    tooManyOpenFiles = 4,   // the process or the system has too many files open
    accessDenied = 5,       // the system forbids it, or the path names a folder
    invalidFile = 6,        // no file is open
    badSeek = 9,            // no such place: before the start of the file, or in what has no places
    hardIO = 10,            // the device failed
    sharingViolation = 11,  // somebody else holds the file
    diskFull = 13,          // there is no room for what was written
    endOfFile = 14,         // the file ended too early
  };

  // `cause` is a Cause, `fileName` the path of the file, empty where it has none.
  explicit CFileException(int cause = none, const CString& fileName = CString())
      : m_cause(cause), m_strFileName(fileName) {}
  int GetErrorMessage(char* buffer, unsigned int bufferSize,
                      unsigned int* helpContext = nullptr) const override;

  // The cause that an errno value of the C library stands for.
  [[nodiscard]] static int CauseOfErrno(int error) noexcept;

  int m_cause;            // a Cause
  CString m_strFileName;  // the path of the file, empty where it has none
};

// A column operation on a data point was given a column that the point hasn't.
class PXDUTIL_API CDPDataPtException : public CException {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CDPDataPtException);

 public:
  // Which words GetErrorMessage puts round the message.
  enum CDPDataPtExceptionError : std::int32_t {
    DPErrorGeneral = 0,  // CDataPoinException : Mesg="..." and a line end
    DPErrorPlain = 1,    // the message and a line end
  };

  // The general error with the message "Error".
  CDPDataPtException() : CDPDataPtException(DPErrorGeneral, "Error") {}
  // Keeps both as they are.
  CDPDataPtException(CDPDataPtExceptionError error, CString message)
      : m_strMessage(std::move(message)), m_Error(error) {}

  // The text is cut at 255 characters before it is cut to the buffer. Returns 1.
  int GetErrorMessage(char* buffer, unsigned int bufferSize,
                      unsigned int* helpContext = nullptr) const override;

  CString m_strMessage;             // the message without the words round it
  CDPDataPtExceptionError m_Error;  // which words those are
};

// The same names without their class, which is how hosts know them.
using CDPDataPtExceptionError = CDPDataPtException::CDPDataPtExceptionError;
inline constexpr CDPDataPtExceptionError DPErrorGeneral = CDPDataPtException::DPErrorGeneral;
inline constexpr CDPDataPtExceptionError DPErrorPlain = CDPDataPtException::DPErrorPlain;

#endif
