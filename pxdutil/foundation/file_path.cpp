#include <pxdutil/foundation/file_path.h>

#if defined(_WIN32)
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX 1
#include <windows.h>
#endif

namespace pxd {

#if defined(_WIN32)

std::filesystem::path FilePath(const std::string& text) {
  const auto size = static_cast<int>(text.size());
  std::wstring wide(
      static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, text.data(), size, nullptr, 0)),
      L'\0');
  MultiByteToWideChar(CP_ACP, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

std::string FileText(const std::filesystem::path& path) {
  const std::wstring& wide = path.native();
  const auto size = static_cast<int>(wide.size());
  std::string text(static_cast<std::size_t>(WideCharToMultiByte(CP_ACP, 0, wide.data(), size,
                                                                nullptr, 0, nullptr, nullptr)),
                   '\0');
  WideCharToMultiByte(CP_ACP, 0, wide.data(), size, text.data(), static_cast<int>(text.size()),
                      nullptr, nullptr);
  return text;
}

#else

std::filesystem::path FilePath(const std::string& text) {
  return text;
}

std::string FileText(const std::filesystem::path& path) {
  return path.string();
}

#endif

}  // namespace pxd
