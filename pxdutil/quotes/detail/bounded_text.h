// Text whose NUL may be missing.
#ifndef PXDUTIL_QUOTES_DETAIL_BOUNDED_TEXT_H
#define PXDUTIL_QUOTES_DETAIL_BOUNDED_TEXT_H

#include <cstddef>
#include <cstring>
#include <string_view>

namespace pxd::detail {

// The characters at `text` ahead of its NUL, or the first `limit` where none of them is one. What
// is behind the NUL needn't be there. A null `text` is empty.
inline std::string_view TextUpTo(const void* text, std::size_t limit) {
  if (text == nullptr || limit == 0) {
    return {};
  }
  const char* const first = static_cast<const char*>(text);
  const void* const nul = std::memchr(first, '\0', limit);
  return {first,
          nul != nullptr ? static_cast<std::size_t>(static_cast<const char*>(nul) - first) : limit};
}

}  // namespace pxd::detail

#endif
