// A file that is there whole or not at all.
#ifndef PXDUTIL_TOOLS_PXD_WHOLE_FILE_H
#define PXDUTIL_TOOLS_PXD_WHOLE_FILE_H

#include <string>
#include <string_view>

#include <pxdutil/foundation/file.h>

#include "failure.h"

namespace pxd::tool {

// Writes beside the file's place and moves the result there when it is complete. A path that is no
// regular file, such as a device, is written as it is. Failures are thrown as Failure.
class WholeFile {
 public:
  explicit WholeFile(const std::string& path);
  // Without Finish what was written is taken away again.
  ~WholeFile();
  WholeFile(const WholeFile&) = delete;
  WholeFile& operator=(const WholeFile&) = delete;

  void Write(std::string_view text);
  void Finish();

  // The file itself, for an archive; what its user may throw goes through Guarded.
  [[nodiscard]] CFile& File() { return m_file; }
  template <class Action>
  void Guarded(Action action) {
    try {
      action();
    } catch (CException* exception) {
      FailWith(exception);
    }
  }

 private:
  [[noreturn]] void FailWith(CException* exception) const;
  [[noreturn]] void Fail(const std::string& words) const;

  std::string m_path;    // as it was given
  std::string m_target;  // behind links
  std::string m_beside;  // empty where the target is written as it is
  CFile m_file;
  bool m_finished = false;
};

}  // namespace pxd::tool

#endif
