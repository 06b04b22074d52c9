// CString: narrow text, the form in which the library takes and gives words.
//
// It is a value: copied by assignment, compared by its characters, backed by a std::string. A NUL
// may stand inside it. It converts to `const char*` and to std::string_view at no cost.
#ifndef PXDUTIL_FOUNDATION_TEXT_H
#define PXDUTIL_FOUNDATION_TEXT_H

#include <compare>
#include <concepts>
#include <cstdarg>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include <pxdutil/foundation/export.h>

// Has the compiler check the arguments of a function with the format of printf. Places count from
// 1; a member function has its object at 1.
#if defined(__GNUC__)
#define PXDUTIL_PRINTF(format_index, first_arg) \
  __attribute__((format(printf, format_index, first_arg)))
#else
#define PXDUTIL_PRINTF(format_index, first_arg)
#endif

class PXDUTIL_API CString {
 public:
  CString() = default;
  // A null pointer gives the empty text.
  CString(const char* text) : m_text(text != nullptr ? text : "") {}
  // The first `length` characters at `text`; a length below 1 or a null pointer gives the empty
  // text.
  CString(const char* text, int length)
      : m_text(text != nullptr && length > 0 ? std::string(text, static_cast<std::size_t>(length))
                                             : std::string()) {}
  // Takes over the characters.
  CString(std::string text) : m_text(std::move(text)) {}

  // A null pointer gives the empty text.
  CString& operator=(const char* text) {
    m_text = text != nullptr ? text : "";
    return *this;
  }

  // The characters, valid as long as this text isn't changed; those of the pointers end in a NUL.
  operator const char*() const noexcept { return m_text.c_str(); }
  operator std::string_view() const noexcept { return m_text; }
  [[nodiscard]] const char* GetString() const noexcept { return m_text.c_str(); }
  // The characters as a standard string, valid as long as this text isn't changed.
  [[nodiscard]] const std::string& Str() const noexcept { return m_text; }

  // The number of characters; whether there are none; and away with all of them.
  [[nodiscard]] int GetLength() const noexcept { return static_cast<int>(m_text.size()); }
  [[nodiscard]] bool IsEmpty() const noexcept { return m_text.empty(); }
  void Empty() noexcept { m_text.clear(); }

  // The character at `index`, 0 where the index is out of range.
  [[nodiscard]] char GetAt(int index) const noexcept {
    return index >= 0 && index < GetLength() ? m_text[static_cast<std::size_t>(index)] : '\0';
  }
  // A template, so that no index type makes it compete with the conversion to a pointer.
  template <std::integral Index>
  char operator[](Index index) const noexcept {
    return GetAt(static_cast<int>(index));
  }

  // Parts of the text. Counts and places are clamped to the text: a negative one counts as 0.
  [[nodiscard]] CString Left(int count) const;
  [[nodiscard]] CString Right(int count) const;
  [[nodiscard]] CString Mid(int first) const;
  [[nodiscard]] CString Mid(int first, int count) const;

  // The place of the first (last) occurrence at or behind `start`, -1 where there is none.
  [[nodiscard]] int Find(char wanted, int start = 0) const noexcept;
  [[nodiscard]] int Find(const char* wanted, int start = 0) const noexcept;
  [[nodiscard]] int ReverseFind(char wanted) const noexcept;

  // Below 0, 0 or above 0 as this text is before, equal to or behind `other`; by unsigned
  // characters. The NoCase form treats the letters A to Z as a to z.
  [[nodiscard]] int Compare(const char* other) const noexcept;
  [[nodiscard]] int CompareNoCase(const char* other) const noexcept;

  // Replaces the text by, or appends, what printf would write. The result is never cut.
  void Format(const char* format, ...) PXDUTIL_PRINTF(2, 3);
  void AppendFormat(const char* format, ...) PXDUTIL_PRINTF(2, 3);

  // Appends the text or the character; a null pointer appends nothing.
  CString& operator+=(const CString& tail) {
    m_text += tail.m_text;
    return *this;
  }
  CString& operator+=(const char* tail) {
    if (tail != nullptr) {
      m_text += tail;
    }
    return *this;
  }
  CString& operator+=(char tail) {
    m_text += tail;
    return *this;
  }

  // The characters in order.
  [[nodiscard]] auto begin() const noexcept { return m_text.begin(); }
  [[nodiscard]] auto end() const noexcept { return m_text.end(); }

  // The one text behind the other; a null pointer counts as empty.
  friend CString operator+(CString head, const CString& tail) { return head += tail; }
  friend CString operator+(CString head, const char* tail) { return head += tail; }
  friend CString operator+(const char* head, const CString& tail) { return CString(head) += tail; }
  friend CString operator+(CString head, char tail) { return head += tail; }

  // As Compare: character by character, a NUL inside a CString included. A null pointer counts as
  // the empty text.
  friend bool operator==(const CString& a, const CString& b) noexcept {
    return a.m_text == b.m_text;
  }
  friend bool operator==(const CString& a, const char* b) noexcept { return a.Compare(b) == 0; }
  friend std::strong_ordering operator<=>(const CString& a, const CString& b) noexcept {
    return a.m_text <=> b.m_text;
  }
  friend std::strong_ordering operator<=>(const CString& a, const char* b) noexcept {
    return a.Compare(b) <=> 0;
  }

 private:
  void AppendFormatV(const char* format, std::va_list args) PXDUTIL_PRINTF(2, 0);

  std::string m_text;
};

#endif
