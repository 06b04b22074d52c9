#include <cstdint>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include <pxdutil/foundation/archive.h>
#include <pxdutil/foundation/exception.h>
#include <pxdutil/foundation/file.h>

namespace {

// Stores `count` numbers and texts, loads them again and runs into the end; true if all came back.
bool StoresAndLoads(std::uint32_t first, std::uint32_t count) {
  CMemFile file;
  CArchive out(&file, CArchive::store);
  for (std::uint32_t i = first; i < first + count; ++i) {
    out << i << CString(std::to_string(i));
  }
  out.Close();
  file.SeekToBegin();
  CArchive in(&file, CArchive::load);
  for (std::uint32_t i = first; i < first + count; ++i) {
    std::uint32_t number = 0;
    CString text;
    in >> number >> text;
    if (number != i || text != CString(std::to_string(i))) {
      return false;
    }
  }
  try {
    std::uint8_t none = 0;
    in >> none;
  } catch (CArchiveException* e) {
    const bool ended =
        e->m_cause == CArchiveException::endOfFile && e->IsKindOf(RUNTIME_CLASS(CArchiveException));
    e->Delete();
    return ended;
  }
  return false;
}

TEST(ArchiveThreads, ArchivesOfTwoThreadsShareNothing) {
  bool one = false;
  bool two = false;
  std::thread first([&] { one = StoresAndLoads(0, 5000); });
  std::thread second([&] { two = StoresAndLoads(1'000'000, 5000); });
  first.join();
  second.join();
  EXPECT_TRUE(one);
  EXPECT_TRUE(two);
}

}  // namespace
