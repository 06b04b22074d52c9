// What a host may call its own functions beside the library's headers.
#include <cstddef>
#include <vector>

#include <gtest/gtest.h>
#include <pxdutil/pxdutil.h>

namespace {

// As a host writes it that keeps its points in files of any kind.
std::size_t Store(CFile&, std::vector<CDPTDblTick>& points) {
  return points.size();
}

TEST(HostNames, AStoreOfPointsInAFileIsTheHostsOwn) {
  CMemFile file;
  std::vector<CDPTDblTick> ticks(2);
  EXPECT_EQ(Store(file, ticks), 2U);
}

}  // namespace
