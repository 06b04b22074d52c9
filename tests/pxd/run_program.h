// Runs the program under test as people run it.
#ifndef PXDUTIL_TESTS_PXD_RUN_PROGRAM_H
#define PXDUTIL_TESTS_PXD_RUN_PROGRAM_H

#include <filesystem>
#include <string>

namespace pxd_test {

// Runs pxd in `folder` and returns its exit status, or -1 where it didn't end by itself. What it
// prints goes to the files `output` and .err there.
//
// The arguments are a shell's: quote what has blanks, and "<name" gives standard input. Windows has
// no such shell, so of its language no more than this works there.
int RunPxd(const std::filesystem::path& folder, const std::string& arguments,
           const std::string& output = ".out");

}  // namespace pxd_test

#endif
