#include <pxdutil/foundation/fault.h>

#include <cstdio>
#include <cstdlib>

namespace pxd {

void Fault(const char* what) noexcept {
  std::fprintf(stderr, "pxdutil: fault: %s\n", what);
  std::fflush(stderr);
  std::abort();
}

}  // namespace pxd
