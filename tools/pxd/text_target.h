// Where a command's text goes: to the screen, or into a file that is there whole or not at all.
#ifndef PXDUTIL_TOOLS_PXD_TEXT_TARGET_H
#define PXDUTIL_TOOLS_PXD_TEXT_TARGET_H

#include <memory>
#include <string>
#include <string_view>

namespace pxd::tool {

class TextSink {
 public:
  virtual ~TextSink() = default;
  virtual void Take(std::string_view text) = 0;
};

// Failures are thrown as Failure. What was taken is sure to be there only after Finish.
class TextTarget : public TextSink {
 public:
  virtual void Finish() = 0;
};

// Standard output where the path is empty, else the file.
std::unique_ptr<TextTarget> MakeTextTarget(const std::string& path);

}  // namespace pxd::tool

#endif
