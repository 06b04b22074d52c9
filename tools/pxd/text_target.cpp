#include "text_target.h"

#include "streams.h"
#include "whole_file.h"

namespace pxd::tool {
namespace {

class ToScreen final : public TextTarget {
 public:
  void Take(std::string_view text) override { m_output.Write(text); }
  void Finish() override { m_output.Finish(); }

 private:
  Output m_output;
};

class ToFile final : public TextTarget {
 public:
  explicit ToFile(const std::string& path) : m_file(path) {}
  void Take(std::string_view text) override { m_file.Write(text); }
  void Finish() override { m_file.Finish(); }

 private:
  WholeFile m_file;
};

}  // namespace

std::unique_ptr<TextTarget> MakeTextTarget(const std::string& path) {
  if (path.empty()) {
    return std::make_unique<ToScreen>();
  }
  return std::make_unique<ToFile>(path);
}

}  // namespace pxd::tool
