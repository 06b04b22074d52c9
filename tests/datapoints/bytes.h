// Bytes written out as hexadecimal digits, and what a point or record stores and loads.
#ifndef PXDUTIL_TESTS_DATAPOINTS_BYTES_H
#define PXDUTIL_TESTS_DATAPOINTS_BYTES_H

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include <pxdutil/foundation/archive.h>
#include <pxdutil/foundation/file.h>

namespace datapoints_test {

using Bytes = std::vector<unsigned char>;

// The bytes of "01 02ff"; blanks are only for the eye.
inline Bytes Hex(const std::string& digits) {
  Bytes bytes;
  std::string pair;
  for (const char digit : digits) {
    if (digit != ' ') {
      pair += digit;
    }
    if (pair.size() == 2) {
      bytes.push_back(static_cast<unsigned char>(std::stoul(pair, nullptr, 16)));
      pair.clear();
    }
  }
  return bytes;
}

template <class Serializable>
Bytes Stored(Serializable& thing) {
  CMemFile file;
  CArchive archive(&file, CArchive::store);
  thing.Serialize(archive);
  archive.Flush();
  return file.GetBytes();
}

// Loads `thing` from `bytes`; an exception passes through.
template <class Serializable>
void Load(Serializable& thing, const Bytes& bytes) {
  CMemFile file(bytes.data(), bytes.size());
  CArchive archive(&file, CArchive::load);
  thing.Serialize(archive);
}

// The bytes of an object as they lie in memory.
template <class Object>
Bytes InMemory(const Object& object) {
  Bytes bytes(sizeof object);
  std::memcpy(bytes.data(), static_cast<const void*>(&object), sizeof object);
  return bytes;
}

inline float FloatOf(std::uint32_t bits) {
  return std::bit_cast<float>(bits);
}
inline std::uint32_t BitsOf(float value) {
  return std::bit_cast<std::uint32_t>(value);
}

}  // namespace datapoints_test

#endif
