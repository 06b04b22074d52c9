#include "streams.h"

#include <fmt/format.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include <pxdutil/foundation/file_path.h>

#include "failure.h"

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>
#endif

namespace pxd::tool {
namespace {

[[noreturn]] void FailToWrite() {
  throw Failure(kExitBadData, "standard output can't be written: " + WordsOf(errno));
}

}  // namespace

Input::Input(const std::string& path) : m_name(path == "-" ? "standard input" : path) {
  if (path == "-") {
    m_stream.reset(stdin);
    return;
  }
  std::error_code error;
  if (std::filesystem::is_directory(FilePath(path), error)) {
    throw Failure(kExitBadData, path + ": is a directory; expected a file to read");
  }
  m_stream.reset(std::fopen(path.c_str(), "rb"));
  if (m_stream == nullptr) {
    throw Failure(kExitBadData, fmt::format("{}: can't be read: {}", path, WordsOf(errno)));
  }
  const std::uintmax_t size = std::filesystem::file_size(FilePath(path), error);
  m_size = error ? 0 : size;
}

std::size_t Input::Read(char* buffer, std::size_t size) {
  const std::size_t count = std::fread(buffer, 1, size, m_stream.get());
  if (count == 0 && std::ferror(m_stream.get()) != 0) {
    throw Failure(kExitBadData, fmt::format("{}: can't be read: {}", m_name, WordsOf(errno)));
  }
  return count;
}

std::string WholeText(Input& input, std::size_t most) {
  std::string text;
  std::array<char, 16 * 1024> buffer;
  while (const std::size_t count = input.Read(buffer.data(), buffer.size())) {
    text.append(buffer.data(), count);
    if (text.size() > most) {
      throw Failure(kExitBadData, fmt::format("{}: is larger than {} bytes", input.Name(), most));
    }
  }
  return text;
}

void Output::Write(std::string_view text) {
  if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) {
    FailToWrite();
  }
}

void Output::Finish() {
  if (std::fflush(stdout) != 0) {
    FailToWrite();
  }
}

void KeepLineEnds() {
#if defined(_WIN32)
  for (std::FILE* const stream : {stdin, stdout, stderr}) {
    _setmode(_fileno(stream), _O_BINARY);
  }
#endif
}

void Say(std::string_view text) {
  fmt::print(stderr, "pxd: {}\n", text);
}

}  // namespace pxd::tool
