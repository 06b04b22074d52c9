#include <pxdutil/foundation/text.h>

#include <algorithm>
#include <cstdio>

namespace {

std::string_view ViewOf(const char* text) noexcept {
  return text != nullptr ? std::string_view(text) : std::string_view();
}

char LowerAscii(char c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

int PlaceOrNone(std::size_t place) noexcept {
  return place == std::string::npos ? -1 : static_cast<int>(place);
}

}  // namespace

CString CString::Left(int count) const {
  return Mid(0, count);
}

CString CString::Right(int count) const {
  const int wanted = std::clamp(count, 0, GetLength());
  return Mid(GetLength() - wanted, wanted);
}

CString CString::Mid(int first) const {
  return Mid(first, GetLength());
}

CString CString::Mid(int first, int count) const {
  const int from = std::clamp(first, 0, GetLength());
  const int wanted = std::clamp(count, 0, GetLength() - from);
  return CString(m_text.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(wanted)));
}

int CString::Find(char wanted, int start) const noexcept {
  return start < 0 ? -1 : PlaceOrNone(m_text.find(wanted, static_cast<std::size_t>(start)));
}

int CString::Find(const char* wanted, int start) const noexcept {
  if (start < 0 || wanted == nullptr) {
    return -1;
  }
  return PlaceOrNone(m_text.find(wanted, static_cast<std::size_t>(start)));
}

int CString::ReverseFind(char wanted) const noexcept {
  return PlaceOrNone(m_text.rfind(wanted));
}

int CString::Compare(const char* other) const noexcept {
  return std::string_view(m_text).compare(ViewOf(other));
}

int CString::CompareNoCase(const char* other) const noexcept {
  const std::string_view a = m_text;
  const std::string_view b = ViewOf(other);
  const auto [at_a, at_b] =
      std::mismatch(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return LowerAscii(x) == LowerAscii(y); });
  if (at_a == a.end() || at_b == b.end()) {
    return static_cast<int>(at_a != a.end()) - static_cast<int>(at_b != b.end());
  }
  return static_cast<unsigned char>(LowerAscii(*at_a)) -
         static_cast<unsigned char>(LowerAscii(*at_b));
}

void CString::Format(const char* format, ...) {
  // The arguments may point into this text, so the new one is made beside it.
  CString made;
  std::va_list args;
  va_start(args, format);
  made.AppendFormatV(format, args);
  va_end(args);
  *this = std::move(made);
}

void CString::AppendFormat(const char* format, ...) {
  CString made;
  std::va_list args;
  va_start(args, format);
  made.AppendFormatV(format, args);
  va_end(args);
  *this += made;
}

void CString::AppendFormatV(const char* format, std::va_list args) {
  char small[128];
  std::va_list again;
  va_copy(again, args);
  const int length = std::vsnprintf(small, sizeof small, format, args);
  if (length < 0) {
    va_end(again);
    return;
  }
  const auto size = static_cast<std::size_t>(length);
  if (size < sizeof small) {
    m_text.append(small, size);
  } else {
    const std::size_t old_size = m_text.size();
    m_text.resize(old_size + size + 1);  // vsnprintf writes its NUL too
    std::vsnprintf(m_text.data() + old_size, size + 1, format, again);
    m_text.resize(old_size + size);
  }
  va_end(again);
}
