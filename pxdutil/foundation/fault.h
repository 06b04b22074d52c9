// The end of the road for a broken precondition.
//
// Most bad input is repaired or ignored. A few calls have no meaningful answer at all (a data point
// asked for a column of a field that no catalogue describes, say); such a call is a fault, and the
// process ends as it does on a failed assertion, in release builds too.
#ifndef PXDUTIL_FOUNDATION_FAULT_H
#define PXDUTIL_FOUNDATION_FAULT_H

#include <pxdutil/foundation/export.h>

namespace pxd {

// Writes "pxdutil: fault: " and `what` to the standard error and aborts the process.
[[noreturn]] PXDUTIL_API void Fault(const char* what) noexcept;

}  // namespace pxd

#endif
