// How this room reads numbers from texts and plain records from archives.
#ifndef PXDUTIL_HISTORY_DETAIL_STORED_FORMS_H
#define PXDUTIL_HISTORY_DETAIL_STORED_FORMS_H

#include <array>
#include <cstdint>
#include <cstdlib>

#include <pxdutil/foundation/archive.h>
#include <pxdutil/foundation/packed.h>

namespace pxd::detail {

// The number that `text` begins with, 0 where it begins with none; its low 16 bits.
[[nodiscard]] inline unsigned short NumberIn(const char* text) {
  return static_cast<unsigned short>(std::strtoll(text, nullptr, 10));
}

template <class Record>
void StoreRecord(CArchive& archive, const Record& record) {
  archive.Write(&record, sizeof(Record));
}

// Takes the record whole or, where the archive ends within it, throws and leaves it as it was.
template <class Record>
void LoadRecord(CArchive& archive, Record& record) {
  std::array<std::uint8_t, sizeof(Record)> bytes;
  for (std::uint8_t& byte : bytes) {
    archive >> byte;
  }
  record = LoadAs<Record>(bytes.data());
}

}  // namespace pxd::detail

#endif
