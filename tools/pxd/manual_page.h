// The manual page of a program, in the man macros of troff.
#ifndef PXDUTIL_TOOLS_PXD_MANUAL_PAGE_H
#define PXDUTIL_TOOLS_PXD_MANUAL_PAGE_H

#include <string>

#include "program.h"

namespace pxd::tool {

// The page of section 1. It bears no date, so that the same sources give the same bytes.
std::string ManualPage(const Program& program);

}  // namespace pxd::tool

#endif
