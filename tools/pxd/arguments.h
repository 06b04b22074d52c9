// Reads the arguments of a program, gives its help and its version, and runs the command that they
// name.
#ifndef PXDUTIL_TOOLS_PXD_ARGUMENTS_H
#define PXDUTIL_TOOLS_PXD_ARGUMENTS_H

#include "program.h"

namespace pxd::tool {

// The exit status: that of the command, or kExitBadUsage with a line on standard error. What the
// command throws passes through.
int RunArguments(const Program& program, int argc, const char* const* argv);

}  // namespace pxd::tool

#endif
