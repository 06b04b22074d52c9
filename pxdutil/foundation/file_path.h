// The standard library's paths for the texts by which CFile opens files, and back.
//
//   if (std::filesystem::is_directory(pxd::FilePath(name), error)) ...
//
// Elsewhere a text is a path. On Windows it is in the system's code page, which the standard
// library of some compilers doesn't ask for: they would look for another file than the one that
// opens. May be called from any thread.
#ifndef PXDUTIL_FOUNDATION_FILE_PATH_H
#define PXDUTIL_FOUNDATION_FILE_PATH_H

#include <filesystem>
#include <string>

#include <pxdutil/foundation/export.h>

namespace pxd {

// The path of the file that CFile::Open opens for the text.
[[nodiscard]] PXDUTIL_API std::filesystem::path FilePath(const std::string& text);
// The text by which CFile::Open opens the path. Characters that the system's code page lacks are
// lost.
[[nodiscard]] PXDUTIL_API std::string FileText(const std::filesystem::path& path);

}  // namespace pxd

#endif
