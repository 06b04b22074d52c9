#include "run_program.h"

#if defined(_WIN32)

#define WIN32_LEAN_AND_MEAN
#define NOMINMAX 1
#include <windows.h>

#include <vector>

namespace pxd_test {
namespace {

struct CommandLine {
  std::vector<std::string> words;
  std::string input;
};

// Words between blanks; single quotes hold together what is between them.
CommandLine Split(const std::string& text) {
  CommandLine line;
  std::string word;
  bool isQuoted = false;
  bool hasWord = false;
  const auto end = [&] {
    if (hasWord && word.starts_with('<')) {
      line.input = word.substr(1);
    } else if (hasWord) {
      line.words.push_back(word);
    }
    word.clear();
    hasWord = false;
  };
  for (const char c : text) {
    if (c == '\'') {
      isQuoted = !isQuoted;
      hasWord = true;
    } else if (c == ' ' && !isQuoted) {
      end();
    } else {
      word += c;
      hasWord = true;
    }
  }
  end();
  return line;
}

// As the C runtime takes it apart again: backslashes count only in front of a quotation mark.
std::string Quoted(const std::string& word) {
  std::string text = "\"";
  std::size_t backslashes = 0;
  for (const char c : word) {
    text.append(c == '"' ? backslashes + 1 : 0, '\\');
    backslashes = c == '\\' ? backslashes + 1 : 0;
    text += c;
  }
  text.append(backslashes, '\\');
  return text + '"';
}

// A file that the program gets as one of its standard streams.
class Stream {
 public:
  Stream(const std::filesystem::path& path, bool isOutput) {
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    m_handle = CreateFileW(path.c_str(), isOutput ? GENERIC_WRITE : GENERIC_READ, FILE_SHARE_READ,
                           &inherited, isOutput ? CREATE_ALWAYS : OPEN_EXISTING,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
  }
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;
  ~Stream() { CloseHandle(m_handle); }

  [[nodiscard]] HANDLE Handle() const { return m_handle; }

 private:
  HANDLE m_handle;
};

}  // namespace

int RunPxd(const std::filesystem::path& folder, const std::string& arguments,
           const std::string& output) {
  const CommandLine line = Split(arguments);
  std::string command = "pxd";
  for (const std::string& word : line.words) {
    command += ' ' + Quoted(word);
  }
  const Stream in(line.input.empty() ? "NUL" : folder / line.input, false);
  const Stream out(folder / output, true);
  const Stream err(folder / ".err", true);
  STARTUPINFOA start = {};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = in.Handle();
  start.hStdOutput = out.Handle();
  start.hStdError = err.Handle();
  const std::string program = std::filesystem::absolute(PXD_PROGRAM).string();
  PROCESS_INFORMATION process = {};
  if (CreateProcessA(program.c_str(), command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                     folder.string().c_str(), &start, &process) == 0) {
    return -1;
  }
  WaitForSingleObject(process.hProcess, INFINITE);
  DWORD status = 0;
  GetExitCodeProcess(process.hProcess, &status);
  CloseHandle(process.hProcess);
  CloseHandle(process.hThread);
  return static_cast<int>(status);
}

}  // namespace pxd_test

#else

#include <sys/wait.h>

#include <cstdlib>

namespace pxd_test {

int RunPxd(const std::filesystem::path& folder, const std::string& arguments,
           const std::string& output) {
  const std::string command = "cd '" + folder.string() + "' && '" + PXD_PROGRAM + "' " + arguments +
                              " >" + output + " 2>.err";
  const int status = std::system(command.c_str());
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace pxd_test

#endif
