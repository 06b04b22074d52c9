// What must hold whatever the input is.
#ifndef PXDUTIL_FUZZ_REQUIRE_H
#define PXDUTIL_FUZZ_REQUIRE_H

#include <pxdutil/foundation/fault.h>

namespace fuzz {

// Ends the run, and so shows the input, where something doesn't hold.
inline void Require(bool holds, const char* what) {
  if (!holds) {
    pxd::Fault(what);
  }
}

}  // namespace fuzz

#endif  // PXDUTIL_FUZZ_REQUIRE_H
