// How a command of pxd ends early: with an exit status, and words for the person who ran it.
#ifndef PXDUTIL_TOOLS_PXD_FAILURE_H
#define PXDUTIL_TOOLS_PXD_FAILURE_H

#include <stdexcept>
#include <string>

#include <pxdutil/foundation/exception.h>

namespace pxd::tool {

enum ExitStatus : int {
  kExitOk = 0,
  kExitBadData = 1,   // what was read or had to be written is at fault
  kExitBadUsage = 2,  // the command line is at fault
};

// Thrown by value, printed once as "pxd: MESSAGE".
class Failure : public std::runtime_error {
 public:
  Failure(ExitStatus status, const std::string& message)
      : std::runtime_error(message), m_status(status) {}

  [[nodiscard]] ExitStatus Status() const noexcept { return m_status; }

 private:
  ExitStatus m_status;
};

// What the library's exception says, without the path that it may put in front; the exception is
// released.
std::string WordsOf(CException* exception);

// The system's words for an errno value.
std::string WordsOf(int error);

}  // namespace pxd::tool

#endif
