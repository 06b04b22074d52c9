// A progress bar for inputs that take a while.
#ifndef PXDUTIL_TOOLS_PXD_PROGRESS_H
#define PXDUTIL_TOOLS_PXD_PROGRESS_H

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <string>

namespace pxd::tool {

// "[#####.....]  50%  1,234,567 trades"; without a known total (0) the count alone.
std::string ProgressText(std::uint64_t done, std::uint64_t total, std::uint64_t trades);

// A whole number with a comma at every third digit.
std::string Grouped(std::uint64_t number);

// Shows the bar where `stream` is a terminal, first after a while and then a few times a second,
// and wipes it out at the end.
class Progress {
 public:
  Progress(std::FILE* stream, std::uint64_t total);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void Show(std::uint64_t done, std::uint64_t trades);
  // Wipes the bar out; to be called ahead of anything else that goes to the terminal.
  void Wipe();

 private:
  using Clock = std::chrono::steady_clock;

  std::FILE* m_stream;
  std::uint64_t m_total;
  bool m_isTerminal;
  bool m_isShown = false;
  Clock::time_point m_next;
};

// Whether the stream is a terminal.
bool IsTerminal(std::FILE* stream);

}  // namespace pxd::tool

#endif
