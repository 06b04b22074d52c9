// Files: bytes in a file of the system (CFile), in memory (CMemFile), and lines of text
// (CStdioFile).
//
// A failed operation throws a CFileException*; Open reports by its result instead. A file belongs
// to one thread at a time.
#ifndef PXDUTIL_FOUNDATION_FILE_H
#define PXDUTIL_FOUNDATION_FILE_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <vector>

#include <pxdutil/foundation/exception.h>
#include <pxdutil/foundation/object.h>
#include <pxdutil/foundation/text.h>

class PXDUTIL_API CFile : public CObject {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CFile);

 public:
  // How a file is opened; combined with |.
  enum OpenFlags : unsigned int {
    modeRead = 0x0000,        // for reading; without modeCreate the file must exist, here and below
    modeWrite = 0x0001,       // for writing, from the start of the file over what is there
    modeReadWrite = 0x0002,   // for both
    shareDenyWrite = 0x0020,  // accepted; enforced only where the system locks files by itself
    modeCreate = 0x1000,      // made anew, or emptied where it exists
    typeText = 0x4000,        // CStdioFile turns line ends into LF and back; also without either
    typeBinary = 0x8000,      // CStdioFile leaves line ends as they stand
  };

  // What an offset of Seek counts from: the file's start, the present place, the file's end.
  enum SeekPosition : unsigned int { begin = 0, current = 1, end = 2 };

  CFile() = default;
  // Opens the file, or throws a CFileException*.
  CFile(const char* path, unsigned int flags);
  CFile(const CFile&) = delete;
  CFile& operator=(const CFile&) = delete;
  // Closes the file; what can't be written then is lost without a word, so Close() first.
  ~CFile() override;

  // Opens the file and returns 1, or returns 0 and fills `error` where it is given. A directory is
  // refused. A file that was open is closed first.
  virtual int Open(const char* path, unsigned int flags, CFileException* error = nullptr);

  // Reads up to `count` bytes and returns how many there were: fewer only at the end of the file.
  virtual unsigned int Read(void* buffer, unsigned int count);
  // Writes all `count` bytes or throws.
  virtual void Write(const void* buffer, unsigned int count);
  // Moves the place of the next byte and returns it, counted from the file's start.
  virtual std::uint64_t Seek(std::int64_t offset, unsigned int from);
  // Seek to either end; SeekToEnd gives the file's length.
  void SeekToBegin() { Seek(0, begin); }
  std::uint64_t SeekToEnd() { return Seek(0, end); }
  // The place of the next byte, counted from the file's start.
  [[nodiscard]] virtual std::uint64_t GetPosition() const;
  // The length in bytes.
  [[nodiscard]] virtual std::uint64_t GetLength() const;
  // Hands what was written to the system.
  virtual void Flush();
  // Flushes and closes; the file may be opened again. Closing a closed file does nothing.
  virtual void Close();

  // The path given at opening, empty where there is none.
  [[nodiscard]] const CString& GetFilePath() const noexcept { return m_strFileName; }

 protected:
  // Throw a CFileException* with this file's path: of a cause, or of an errno value.
  [[noreturn]] void Throw(int cause) const;
  [[noreturn]] void ThrowErrno(int error) const;
  // The stream, or an exception where no file is open.
  [[nodiscard]] std::FILE* Stream() const;

  // The path, which exceptions carry; a derived class sets it where it opens.
  CString m_strFileName;

 private:
  struct CloseStream {
    void operator()(std::FILE* stream) const noexcept { std::fclose(stream); }
  };
  enum class LastAction { kNone, kRead, kWrite };
  void TurnTo(LastAction action);

  std::unique_ptr<std::FILE, CloseStream> m_stream;
  LastAction m_lastAction = LastAction::kNone;
  bool m_isReadable = false;
};

// A file in memory, growing as it is written.
class PXDUTIL_API CMemFile : public CFile {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CMemFile);

 public:
  CMemFile() = default;
  // A file that holds a copy of `size` bytes, placed at its start.
  CMemFile(const void* bytes, std::size_t size);

  // A file in memory has no path to open: always 0.
  int Open(const char* path, unsigned int flags, CFileException* error = nullptr) override;
  unsigned int Read(void* buffer, unsigned int count) override;
  void Write(const void* buffer, unsigned int count) override;
  std::uint64_t Seek(std::int64_t offset, unsigned int from) override;
  [[nodiscard]] std::uint64_t GetPosition() const override { return m_position; }
  [[nodiscard]] std::uint64_t GetLength() const override { return m_bytes.size(); }
  void Flush() override {}
  // Empties the file.
  void Close() override;

  // The bytes, valid until the next write.
  [[nodiscard]] const std::vector<unsigned char>& GetBytes() const noexcept { return m_bytes; }

 private:
  std::vector<unsigned char> m_bytes;
  std::size_t m_position = 0;
};

// A file read and written by lines.
class PXDUTIL_API CStdioFile : public CFile {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CStdioFile);

 public:
  CStdioFile() = default;
  // Opens the file, or throws a CFileException*.
  CStdioFile(const char* path, unsigned int flags);

  int Open(const char* path, unsigned int flags, CFileException* error = nullptr) override;

  // Reads the next line without its end and returns 1, or returns 0 at the end of the file. In text
  // mode both CR LF and LF end a line, on every system; a last line needs no end.
  virtual int ReadString(CString& line);
  // Writes the text. In text mode each LF is written as the system ends its lines.
  virtual void WriteString(const char* text);

 private:
  bool m_text = true;
};

#endif
