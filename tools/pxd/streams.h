// What a command reads from and writes to, with failures as Failure.
#ifndef PXDUTIL_TOOLS_PXD_STREAMS_H
#define PXDUTIL_TOOLS_PXD_STREAMS_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace pxd::tool {

// A file to read, or standard input for "-".
class Input {
 public:
  explicit Input(const std::string& path);

  // How messages name it.
  [[nodiscard]] const std::string& Name() const { return m_name; }
  // The bytes in it, 0 where that isn't known.
  [[nodiscard]] std::uint64_t Size() const { return m_size; }
  // Up to `size` bytes; 0 at the end.
  std::size_t Read(char* buffer, std::size_t size);

 private:
  struct CloseUnlessStandard {
    void operator()(std::FILE* stream) const noexcept {
      if (stream != stdin) {
        std::fclose(stream);
      }
    }
  };

  std::string m_name;
  std::uint64_t m_size = 0;
  std::unique_ptr<std::FILE, CloseUnlessStandard> m_stream;
};

// All that the input has; Failure where that is more than `most` bytes.
std::string WholeText(Input& input, std::size_t most);

// Standard output. What was written is sure to be there only after Finish.
class Output {
 public:
  void Write(std::string_view text);
  void Finish();
};

// Has the standard streams pass bytes as they are, where the system would change the ends of lines.
void KeepLineEnds();

// A line on standard error: "pxd: TEXT".
void Say(std::string_view text);

}  // namespace pxd::tool

#endif
