// Reading and writing values that may stand at any address.
//
// Records and data points are packed to one byte, so a reference or pointer to one of their values
// may be misaligned. These functions copy the bytes instead; the compiler makes one move of them.
#ifndef PXDUTIL_FOUNDATION_PACKED_H
#define PXDUTIL_FOUNDATION_PACKED_H

#include <cstddef>
#include <cstring>
#include <type_traits>

namespace pxd {

// The T whose bytes stand at `address`.
template <class T>
[[nodiscard]] inline T LoadAs(const void* address) noexcept {
  static_assert(std::is_trivially_copyable_v<T>);
  T value;
  std::memcpy(&value, address, sizeof value);
  return value;
}

// Puts the bytes of `value` at `address`.
template <class T>
inline void StoreAs(void* address, const T& value) noexcept {
  static_assert(std::is_trivially_copyable_v<T>);
  std::memcpy(address, &value, sizeof value);
}

// Element `index` of a run of floats that begins at `run`.
[[nodiscard]] inline float LoadFloat(const void* run, std::size_t index) noexcept {
  return LoadAs<float>(static_cast<const unsigned char*>(run) + index * sizeof(float));
}

// Puts `value` in place of element `index` of a run of floats that begins at `run`.
inline void StoreFloat(void* run, std::size_t index, float value) noexcept {
  StoreAs(static_cast<unsigned char*>(run) + index * sizeof(float), value);
}

}  // namespace pxd

#endif
