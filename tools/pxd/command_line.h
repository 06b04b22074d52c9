// The command line of pxd: everything but main itself.
#ifndef PXDUTIL_TOOLS_PXD_COMMAND_LINE_H
#define PXDUTIL_TOOLS_PXD_COMMAND_LINE_H

#include "program.h"

namespace pxd::tool {

// The program with all its commands.
Program PxdProgram();

// Runs what the arguments ask for and returns the exit status: 0, 1 for bad data, 2 for bad usage.
int RunCommandLine(int argc, const char* const* argv);

}  // namespace pxd::tool

#endif
