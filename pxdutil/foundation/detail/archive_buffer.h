// The bytes that an archive takes and gives without asking its file, for code that has several
// values in their stored form and moves them at once.
//
// As long as a caller stays within Room and Waiting, the file sees the same reads and writes as if
// the values had gone one by one.
#ifndef PXDUTIL_FOUNDATION_DETAIL_ARCHIVE_BUFFER_H
#define PXDUTIL_FOUNDATION_DETAIL_ARCHIVE_BUFFER_H

#include <cstddef>
#include <cstring>

#include <pxdutil/foundation/archive.h>

namespace pxd::detail {

class ArchiveBuffer {
 public:
  // How many bytes Put can take; 0 unless the archive stores.
  static std::size_t Room(const CArchive& archive) noexcept {
    return archive.IsStoring() ? CArchive::kBufferSize - archive.m_end : 0;
  }
  static void Put(CArchive& archive, const void* bytes, std::size_t count) noexcept {
    std::memcpy(archive.m_buffer.data() + archive.m_end, bytes, count);
    archive.m_end += count;
  }

  // How many bytes Get can give; 0 unless the archive loads.
  static std::size_t Waiting(const CArchive& archive) noexcept {
    return archive.IsLoading() ? archive.m_end - archive.m_next : 0;
  }
  static void Get(CArchive& archive, void* bytes, std::size_t count) noexcept {
    std::memcpy(bytes, archive.m_buffer.data() + archive.m_next, count);
    archive.m_next += count;
  }
};

}  // namespace pxd::detail

#endif
