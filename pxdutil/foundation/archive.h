// CArchive: values to and from the bytes of a file.
//
// An archive either stores or loads. Each scalar takes its own width, little-endian, with no tag
// and no padding, so the bytes are the same on every machine:
//
//   CMemFile file;
//   CArchive out(&file, CArchive::store);
//   out << std::uint16_t{35431} << 1.5f;  // 67 8A 00 00 C0 3F
//   out.Close();
//
// Storing into an archive that loads throws a CArchiveException* with the cause readOnly, loading
// from one that stores with writeOnly, and loading past the end with endOfFile. Failures of the
// file pass through, and an archive whose file failed stores nothing more. An archive belongs to
// one thread at a time; the file must outlive it.
#ifndef PXDUTIL_FOUNDATION_ARCHIVE_H
#define PXDUTIL_FOUNDATION_ARCHIVE_H

#include <array>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

#include <pxdutil/foundation/exception.h>
#include <pxdutil/foundation/export.h>
#include <pxdutil/foundation/text.h>

class CFile;

namespace pxd::detail {
class ArchiveBuffer;
}

class PXDUTIL_API CArchive {
 public:
  // Which way an archive goes.
  enum Mode : unsigned int { store = 0, load = 1 };

  // An archive over `file`, which must be open and stays the caller's.
  CArchive(CFile* file, unsigned int mode);
  CArchive(const CArchive&) = delete;
  CArchive& operator=(const CArchive&) = delete;
  // Closes the archive. A failure can't be told from here and is dropped, so Close() first.
  ~CArchive();

  // Which of the two it is; neither once it is closed.
  [[nodiscard]] bool IsStoring() const noexcept { return m_mode == store; }
  [[nodiscard]] bool IsLoading() const noexcept { return m_mode == load; }

  // The file under the archive, the caller's; null once the archive is closed.
  [[nodiscard]] CFile* GetFile() const noexcept { return m_file; }

  // The value in its own width: 1 byte for the 8-bit kinds, 2 for the 16-bit, 4 for all others.
  CArchive& operator<<(char value) { return Put(value); }
  CArchive& operator<<(std::int8_t value) { return Put(value); }
  CArchive& operator<<(std::uint8_t value) { return Put(value); }
  CArchive& operator<<(std::int16_t value) { return Put(value); }
  CArchive& operator<<(std::uint16_t value) { return Put(value); }
  CArchive& operator<<(std::int32_t value) { return Put(value); }
  CArchive& operator<<(std::uint32_t value) { return Put(value); }
  CArchive& operator<<(float value) { return Put(value); }
  // The length as a prefix of 1, 3 or 7 bytes, then the characters; no terminator.
  CArchive& operator<<(const CString& text);

  // The value in its own width, as above. A load that fails leaves its target as it was.
  CArchive& operator>>(char& value) { return Get(value); }
  CArchive& operator>>(std::int8_t& value) { return Get(value); }
  CArchive& operator>>(std::uint8_t& value) { return Get(value); }
  CArchive& operator>>(std::int16_t& value) { return Get(value); }
  CArchive& operator>>(std::uint16_t& value) { return Get(value); }
  CArchive& operator>>(std::int32_t& value) { return Get(value); }
  CArchive& operator>>(std::uint32_t& value) { return Get(value); }
  CArchive& operator>>(float& value) { return Get(value); }
  // Wide text is taken too and becomes UTF-8. A length that the bytes don't bear out costs no more
  // memory than the bytes that are there.
  CArchive& operator>>(CString& text);

  // The bytes as they stand.
  void Write(const void* bytes, unsigned int count);
  // Up to `count` bytes; returns how many there were, fewer only at the end of the file.
  unsigned int Read(void* bytes, unsigned int count);

  // A number of things to come: below 0xFFFF it takes 2 bytes, else FF FF and 4 bytes. A count that
  // was read is only a claim; make room as the things arrive.
  void WriteCount(std::uint32_t count);
  [[nodiscard]] std::uint32_t ReadCount();

  // Storing: hands what is buffered to the file. Loading: moves the file back to the first byte
  // that wasn't taken, so that another reader goes on from there.
  void Flush();
  // Flushes and lets go of the file, which stays open. A closed archive neither stores nor loads.
  // Closing twice does nothing.
  void Close();

 private:
  friend class pxd::detail::ArchiveBuffer;

  static constexpr std::size_t kBufferSize = 4096;
  static constexpr unsigned int kClosed = 2;

  template <class T>
  CArchive& Put(T value) {
    RequireStoring();
    if (kBufferSize - m_end < sizeof(T)) {
      FlushStored();
    }
    const T bytes = LittleEndian(value);
    std::memcpy(m_buffer.data() + m_end, &bytes, sizeof(T));
    m_end += sizeof(T);
    return *this;
  }

  template <class T>
  CArchive& Get(T& value) {
    RequireLoading();
    if (m_end - m_next < sizeof(T)) {
      Fill(sizeof(T));
    }
    T bytes;
    std::memcpy(&bytes, m_buffer.data() + m_next, sizeof(T));
    m_next += sizeof(T);
    value = LittleEndian(bytes);
    return *this;
  }

  template <class T>
  static T LittleEndian(T value) noexcept {
    if constexpr (std::endian::native == std::endian::big && sizeof(T) > 1) {
      auto bytes = std::bit_cast<std::array<unsigned char, sizeof(T)>>(value);
      for (std::size_t i = 0; i < sizeof(T) / 2; ++i) {
        std::swap(bytes[i], bytes[sizeof(T) - 1 - i]);
      }
      return std::bit_cast<T>(bytes);
    } else {
      return value;
    }
  }

  void RequireStoring() const {
    if (m_mode != store) {
      Throw(CArchiveException::readOnly);
    }
  }
  void RequireLoading() const {
    if (m_mode != load) {
      Throw(CArchiveException::writeOnly);
    }
  }

  [[noreturn]] void Throw(int cause) const;
  void FlushStored();
  template <class Action>
  void HandOver(Action action);
  // Makes at least `wanted` unread bytes stand in the buffer, or throws endOfFile.
  void Fill(std::size_t wanted);
  [[nodiscard]] std::uint32_t ReadTextLength(bool& wide);
  template <class AppendChunk>
  void ReadInSteps(std::uint64_t byteCount, AppendChunk append);

  CFile* m_file;
  unsigned int m_mode;  // a Mode, or kClosed
  // Loading: the unread bytes are those from m_next up to m_end. Storing: those up to m_end wait.
  std::size_t m_next = 0;
  std::size_t m_end = 0;
  std::array<unsigned char, kBufferSize> m_buffer;
};

#endif
