// Loads scalars, texts, counts and raw bytes from an archive, in the order that the input asks for.
//
// The input's first byte says how many bytes of program follow; each of these picks one operation
// by its value modulo 10. What is left is the archive. Whatever loads must come back the same after
// it was stored and loaded again.
#include <array>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include <pxdutil/foundation/archive.h>
#include <pxdutil/foundation/file.h>

#include "require.h"

namespace {

using fuzz::Require;

// Floats are compared by their bits, since a NaN must come back too.
template <class T>
bool Same(const T& a, const T& b) {
  if constexpr (std::same_as<T, float>) {
    return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
  } else {
    return a == b;
  }
}

// What was loaded must survive being stored and loaded again. An exception on that way would look
// like the end of the input, so it is none that may leave from here.
template <class T, class Store, class Load>
void RequireReturn(const T& loaded, Store store, Load load) noexcept {
  CMemFile file;
  CArchive out(&file, CArchive::store);
  store(out, loaded);
  out.Close();
  file.SeekToBegin();
  CArchive again(&file, CArchive::load);
  T returned{};
  load(again, returned);
  Require(Same(loaded, returned), "a value came back changed");
  std::uint8_t none = 0;
  Require(again.Read(&none, 1) == 0, "a value left bytes behind");
}

template <class T>
void LoadValue(CArchive& in) {
  T loaded{};
  in >> loaded;
  RequireReturn(
      loaded, [](CArchive& out, const T& value) { out << value; },
      [](CArchive& again, T& value) { again >> value; });
}

void LoadCount(CArchive& in) {
  RequireReturn(
      in.ReadCount(), [](CArchive& out, std::uint32_t count) { out.WriteCount(count); },
      [](CArchive& again, std::uint32_t& count) { count = again.ReadCount(); });
}

void Run(CArchive& in, std::uint8_t operation) {
  switch (operation % 10) {
    case 0:
      return LoadValue<std::int8_t>(in);
    case 1:
      return LoadValue<std::uint8_t>(in);
    case 2:
      return LoadValue<std::int16_t>(in);
    case 3:
      return LoadValue<std::uint16_t>(in);
    case 4:
      return LoadValue<std::int32_t>(in);
    case 5:
      return LoadValue<std::uint32_t>(in);
    case 6:
      return LoadValue<float>(in);
    case 7:
      return LoadValue<CString>(in);
    case 8:
      return LoadCount(in);
    default: {
      std::array<unsigned char, 300> bytes;
      Require(in.Read(bytes.data(), operation) <= operation, "more bytes were read than asked for");
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::span<const std::uint8_t> input(data, size);
  if (input.empty() || input.size() - 1 < input[0]) {
    return 0;
  }
  const auto program = input.subspan(1, input[0]);
  const auto bytes = input.subspan(1 + program.size());

  CMemFile file;
  file.Write(bytes.data(), static_cast<unsigned int>(bytes.size()));
  file.SeekToBegin();
  CArchive in(&file, CArchive::load);
  try {
    for (const std::uint8_t operation : program) {
      Run(in, operation);
    }
  } catch (CArchiveException* e) {
    const bool ended = e->m_cause == CArchiveException::endOfFile;
    e->Delete();
    Require(ended, "loading failed for another reason than the end of the bytes");
  }
  return 0;
}
