#include "progress.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#if defined(_WIN32)
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX 1
#include <io.h>
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace pxd::tool {
namespace {

constexpr std::uint64_t kCells = 30;
constexpr auto kPatience = std::chrono::milliseconds(500);
constexpr auto kPeriod = std::chrono::milliseconds(100);
// Back to the line's start, and clear it.
constexpr std::string_view kWipe = "\r\x1b[K";

}  // namespace

std::string Grouped(std::uint64_t number) {
  const std::string digits = fmt::format("{}", number);
  std::string text;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (i != 0 && (digits.size() - i) % 3 == 0) {
      text += ',';
    }
    text += digits[i];
  }
  return text;
}

std::string ProgressText(std::uint64_t done, std::uint64_t total, std::uint64_t trades) {
  std::string count = Grouped(trades) + " trades";
  if (total == 0) {
    return count;
  }
  // A file may grow while it is read.
  const double share = std::min(1.0, static_cast<double>(done) / static_cast<double>(total));
  const auto full = static_cast<std::uint64_t>(share * static_cast<double>(kCells));
  return fmt::format("[{:#<{}}{:.<{}}] {:>3}%  {}", "", full, "", kCells - full,
                     static_cast<int>(share * 100.0), count);
}

bool IsTerminal(std::FILE* stream) {
#if defined(_WIN32)
  // A console that can't be asked to follow kWipe would show it.
  auto* const console = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
  DWORD mode = 0;
  return GetConsoleMode(console, &mode) != 0 &&
         SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
#else
  return isatty(fileno(stream)) != 0;
#endif
}

Progress::Progress(std::FILE* stream, std::uint64_t total)
    : m_stream(stream),
      m_total(total),
      m_isTerminal(IsTerminal(stream)),
      m_next(Clock::now() + kPatience) {}

Progress::~Progress() {
  Wipe();
}

void Progress::Show(std::uint64_t done, std::uint64_t trades) {
  const Clock::time_point now = Clock::now();
  if (!m_isTerminal || now < m_next) {
    return;
  }
  m_next = now + kPeriod;
  m_isShown = true;
  const std::string text = ProgressText(done, m_total, trades);
  std::fprintf(m_stream, "%s%s", kWipe.data(), text.c_str());
  std::fflush(m_stream);
}

void Progress::Wipe() {
  if (m_isShown) {
    std::fputs(kWipe.data(), m_stream);
    std::fflush(m_stream);
    m_isShown = false;
  }
}

}  // namespace pxd::tool
