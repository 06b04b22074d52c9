// 64-bit file places on 32-bit systems too; must stand before the system's headers.
#define _FILE_OFFSET_BITS 64  // NOLINT(bugprone-reserved-identifier)

#include <pxdutil/foundation/file.h>
#include <pxdutil/foundation/file_path.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <limits>
#include <string_view>
#include <system_error>

#if !defined(_WIN32)
#include <sys/types.h>
#endif

PXDUTIL_DEFINE_RUNTIME_CLASS(CFile, CObject, kNoSchema, nullptr)
PXDUTIL_DEFINE_RUNTIME_CLASS(CMemFile, CFile, kNoSchema, nullptr)
PXDUTIL_DEFINE_RUNTIME_CLASS(CStdioFile, CFile, kNoSchema, nullptr)

namespace {

int SeekStream(std::FILE* stream, std::int64_t offset, int origin) {
#if defined(_WIN32)
  return _fseeki64(stream, offset, origin);
#else
  return fseeko(stream, static_cast<off_t>(offset), origin);
#endif
}

std::int64_t TellStream(std::FILE* stream) {
#if defined(_WIN32)
  return _ftelli64(stream);
#else
  return ftello(stream);
#endif
}

const char* StreamMode(unsigned int flags) {
  const bool creates = (flags & CFile::modeCreate) != 0;
  if ((flags & CFile::modeReadWrite) != 0) {
    return creates ? "w+b" : "r+b";
  }
  if ((flags & CFile::modeWrite) != 0) {
    return creates ? "wb" : "r+b";
  }
  return creates ? "w+b" : "rb";
}

int OriginOf(unsigned int from) {
  switch (from) {
    case CFile::begin:
      return SEEK_SET;
    case CFile::current:
      return SEEK_CUR;
    default:
      return SEEK_END;
  }
}

}  // namespace

CFile::CFile(const char* path, unsigned int flags) {
  CFileException error;
  if (CFile::Open(path, flags, &error) == 0) {
    Throw(error.m_cause);
  }
}

CFile::~CFile() = default;

int CFile::Open(const char* path, unsigned int flags, CFileException* error) {
  m_stream.reset();
  m_lastAction = LastAction::kNone;
  m_strFileName = path;

  const char* const mode = StreamMode(flags);
  m_isReadable = std::string_view(mode) != "wb";
  int failure = 0;
  std::error_code ignored;
  if (path == nullptr || *path == '\0') {
    failure = ENOENT;
  } else if (std::filesystem::is_directory(pxd::FilePath(path), ignored)) {
    failure = EISDIR;  // some systems open a directory and fail at the first read
  } else {
    errno = 0;
    m_stream.reset(std::fopen(path, mode));
    if (m_stream == nullptr) {
      failure = errno != 0 ? errno : EIO;
    }
  }
  if (failure == 0) {
    return 1;
  }
  if (error != nullptr) {
    error->m_cause = CFileException::CauseOfErrno(failure);
    error->m_strFileName = m_strFileName;
  }
  return 0;
}

unsigned int CFile::Read(void* buffer, unsigned int count) {
  if (count == 0) {
    return 0;
  }
  TurnTo(LastAction::kRead);
  if (!m_isReadable) {
    ThrowErrno(EBADF);  // some C libraries take it for the end of the file
  }
  errno = 0;
  const std::size_t got = std::fread(buffer, 1, count, Stream());
  if (got < count && std::ferror(Stream()) != 0) {
    const int error = errno;
    std::clearerr(Stream());
    ThrowErrno(error);
  }
  return static_cast<unsigned int>(got);
}

void CFile::Write(const void* buffer, unsigned int count) {
  if (count == 0) {
    return;
  }
  TurnTo(LastAction::kWrite);
  errno = 0;
  if (std::fwrite(buffer, 1, count, Stream()) != count) {
    ThrowErrno(errno);
  }
}

std::uint64_t CFile::Seek(std::int64_t offset, unsigned int from) {
  if (SeekStream(Stream(), offset, OriginOf(from)) != 0) {
    Throw(CFileException::badSeek);
  }
  m_lastAction = LastAction::kNone;
  return GetPosition();
}

std::uint64_t CFile::GetPosition() const {
  const std::int64_t place = TellStream(Stream());
  if (place < 0) {
    Throw(CFileException::badSeek);
  }
  return static_cast<std::uint64_t>(place);
}

std::uint64_t CFile::GetLength() const {
  std::FILE* stream = Stream();
  const auto here = static_cast<std::int64_t>(GetPosition());
  if (SeekStream(stream, 0, SEEK_END) != 0) {
    Throw(CFileException::badSeek);
  }
  const std::uint64_t length = GetPosition();
  if (SeekStream(stream, here, SEEK_SET) != 0) {
    Throw(CFileException::badSeek);
  }
  return length;
}

void CFile::Flush() {
  errno = 0;
  if (m_stream != nullptr && m_lastAction == LastAction::kWrite &&
      std::fflush(m_stream.get()) != 0) {
    ThrowErrno(errno);
  }
}

void CFile::Close() {
  if (m_stream != nullptr) {
    errno = 0;
    if (std::fclose(m_stream.release()) != 0) {
      ThrowErrno(errno);
    }
  }
}

void CFile::Throw(int cause) const {
  throw new CFileException(cause, m_strFileName);
}

void CFile::ThrowErrno(int error) const {
  // Not every C library says why a stream failed.
  Throw(CFileException::CauseOfErrno(error != 0 ? error : EIO));
}

std::FILE* CFile::Stream() const {
  if (m_stream == nullptr) {
    Throw(CFileException::invalidFile);
  }
  return m_stream.get();
}

// The C library wants a seek between a read and a write of one stream.
void CFile::TurnTo(LastAction action) {
  if (m_lastAction != action && m_lastAction != LastAction::kNone) {
    SeekStream(Stream(), 0, SEEK_CUR);
  }
  m_lastAction = action;
}

CMemFile::CMemFile(const void* bytes, std::size_t size)
    : m_bytes(static_cast<const unsigned char*>(bytes),
              static_cast<const unsigned char*>(bytes) + size) {}

int CMemFile::Open(const char*, unsigned int, CFileException* error) {
  if (error != nullptr) {
    error->m_cause = CFileException::badPath;
  }
  return 0;
}

unsigned int CMemFile::Read(void* buffer, unsigned int count) {
  if (m_position >= m_bytes.size()) {
    return 0;
  }
  const std::size_t got = std::min<std::size_t>(count, m_bytes.size() - m_position);
  if (got > 0) {
    std::memcpy(buffer, m_bytes.data() + m_position, got);
    m_position += got;
  }
  return static_cast<unsigned int>(got);
}

void CMemFile::Write(const void* buffer, unsigned int count) {
  if (count == 0) {
    return;
  }
  if (m_position > m_bytes.max_size() - count) {
    Throw(CFileException::diskFull);
  }
  if (m_bytes.size() - std::min(m_position, m_bytes.size()) < count) {
    m_bytes.resize(m_position + count);
  }
  std::memcpy(m_bytes.data() + m_position, buffer, count);
  m_position += count;
}

std::uint64_t CMemFile::Seek(std::int64_t offset, unsigned int from) {
  std::int64_t base = 0;
  if (from == current) {
    base = static_cast<std::int64_t>(m_position);
  } else if (from == end) {
    base = static_cast<std::int64_t>(m_bytes.size());
  }
  const bool overflows = offset > 0 && base > std::numeric_limits<std::int64_t>::max() - offset;
  if (overflows || base + offset < 0 ||
      static_cast<std::uint64_t>(base + offset) > std::numeric_limits<std::size_t>::max() / 2) {
    Throw(CFileException::badSeek);
  }
  m_position = static_cast<std::size_t>(base + offset);
  return m_position;
}

void CMemFile::Close() {
  m_bytes.clear();
  m_position = 0;
}

CStdioFile::CStdioFile(const char* path, unsigned int flags) {
  CFileException error;
  if (CStdioFile::Open(path, flags, &error) == 0) {
    Throw(error.m_cause);
  }
}

int CStdioFile::Open(const char* path, unsigned int flags, CFileException* error) {
  m_text = (flags & typeBinary) == 0;
  return CFile::Open(path, flags, error);
}

int CStdioFile::ReadString(CString& line) {
  std::string text;
  char c = '\0';
  bool any = false;
  bool ended = false;
  while (!ended && Read(&c, 1) == 1) {
    any = true;
    ended = c == '\n';
    if (!ended) {
      text += c;
    }
  }
  if (!any) {
    return 0;
  }
  if (m_text && ended && !text.empty() && text.back() == '\r') {
    text.pop_back();
  }
  line = CString(std::move(text));
  return 1;
}

void CStdioFile::WriteString(const char* text) {
  std::string out;
  for (const char* c = text; *c != '\0'; ++c) {
#if defined(_WIN32)
    if (m_text && *c == '\n') {
      out += '\r';
    }
#endif
    out += *c;
  }
  Write(out.data(), static_cast<unsigned int>(out.size()));
}
