// What shells complete of a program's command line: commands, options, and the values that are
// files or words.
#ifndef PXDUTIL_TOOLS_PXD_SHELL_COMPLETION_H
#define PXDUTIL_TOOLS_PXD_SHELL_COMPLETION_H

#include <string>

#include "program.h"

namespace pxd::tool {

// Scripts for the folder from which each shell loads its completions.
std::string BashCompletion(const Program& program);
std::string ZshCompletion(const Program& program);
std::string FishCompletion(const Program& program);

}  // namespace pxd::tool

#endif
