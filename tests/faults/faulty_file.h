// Files whose device is full or broken behind a given byte.
#ifndef PXDUTIL_TESTS_FAULTS_FAULTY_FILE_H
#define PXDUTIL_TESTS_FAULTS_FAULTY_FILE_H

#include <algorithm>
#include <cstddef>
#include <limits>
#include <vector>

#include <pxdutil/foundation/file.h>

namespace faults_test {

using Bytes = std::vector<unsigned char>;

// A file in memory on a device with room for `room` bytes. A write beyond them stores what fits,
// as a device does, and throws.
class FullDevice : public CMemFile {
 public:
  explicit FullDevice(std::size_t room) : m_room(room) {}
  FullDevice(const Bytes& bytes, std::size_t room)
      : CMemFile(bytes.data(), bytes.size()), m_room(room) {}

  void Write(const void* buffer, unsigned int count) override {
    const auto place = static_cast<std::size_t>(GetPosition());
    const std::size_t left = place < m_room ? m_room - place : 0;
    CMemFile::Write(buffer, static_cast<unsigned int>(std::min<std::size_t>(count, left)));
    if (left < count) {
      throw new CFileException(CFileException::diskFull, "device");
    }
  }
  // Somebody has made room.
  void MakeRoom() { m_room = std::numeric_limits<std::size_t>::max(); }

 private:
  std::size_t m_room;
};

// What a broken file does with the bytes that it can't give.
enum class Break {
  kThrows,  // an error, as a damaged disk has it
  kEnds,    // as if the file ended there
};

// A file of which the bytes from `broken` on can't be read, and which gives at most `step` bytes at
// a time. `Base` is CMemFile, or CStdioFile for what reads lines.
template <class Base>
class BrokenFile : public Base {
 public:
  BrokenFile(const Bytes& bytes, std::size_t broken, Break how,
             unsigned int step = std::numeric_limits<unsigned int>::max())
      : m_memory(bytes.data(), bytes.size()), m_broken(broken), m_how(how), m_step(step) {}

  unsigned int Read(void* buffer, unsigned int count) override {
    const auto place = static_cast<std::size_t>(m_memory.GetPosition());
    const std::size_t left = place < m_broken ? m_broken - place : 0;
    if (left == 0 && count > 0 && place < m_memory.GetLength() && m_how == Break::kThrows) {
      throw new CFileException(CFileException::hardIO, "device");
    }
    return m_memory.Read(buffer,
                         static_cast<unsigned int>(std::min<std::size_t>({count, left, m_step})));
  }
  std::uint64_t Seek(std::int64_t offset, unsigned int from) override {
    return m_memory.Seek(offset, from);
  }
  [[nodiscard]] std::uint64_t GetPosition() const override { return m_memory.GetPosition(); }
  [[nodiscard]] std::uint64_t GetLength() const override { return m_memory.GetLength(); }

 private:
  CMemFile m_memory;
  std::size_t m_broken;
  Break m_how;
  unsigned int m_step;
};

}  // namespace faults_test

#endif
