#include <pxdutil/foundation/archive.h>

#include <algorithm>
#include <limits>
#include <string>

#include <pxdutil/foundation/file.h>

namespace {

// The 16-bit number that announces wide text ahead of the usual length prefix.
constexpr std::uint16_t kWideMark = 0xFFFE;
constexpr std::uint8_t kByteEscape = 0xFF;
constexpr std::uint16_t kWordEscape = 0xFFFF;

constexpr std::uint32_t kReplacement = 0xFFFD;

void AppendUtf8(std::string& out, std::uint32_t code) {
  const auto tail = [&](unsigned int shift) {
    out += static_cast<char>(0x80 | ((code >> shift) & 0x3F));
  };
  if (code < 0x80) {
    out += static_cast<char>(code);
  } else if (code < 0x800) {
    out += static_cast<char>(0xC0 | (code >> 6));
    tail(0);
  } else if (code < 0x10000) {
    out += static_cast<char>(0xE0 | (code >> 12));
    tail(6);
    tail(0);
  } else {
    out += static_cast<char>(0xF0 | (code >> 18));
    tail(12);
    tail(6);
    tail(0);
  }
}

// Turns UTF-16 units, given one at a time, into UTF-8. Half a surrogate pair becomes U+FFFD.
class WideText {
 public:
  void Take(std::uint16_t unit) {
    const bool high = unit >= 0xD800 && unit < 0xDC00;
    const bool low = unit >= 0xDC00 && unit < 0xE000;
    if (low && m_high != 0) {
      AppendUtf8(m_text, 0x10000U + ((m_high - 0xD800U) << 10U) + (unit - 0xDC00U));
      m_high = 0;
      return;
    }
    EndPair();
    if (high) {
      m_high = unit;
    } else {
      AppendUtf8(m_text, low ? kReplacement : unit);
    }
  }
  std::string Finish() {
    EndPair();
    return std::move(m_text);
  }

 private:
  void EndPair() {
    if (m_high != 0) {
      AppendUtf8(m_text, kReplacement);
      m_high = 0;
    }
  }

  std::string m_text;
  std::uint32_t m_high = 0;
};

}  // namespace

CArchive::CArchive(CFile* file, unsigned int mode)
    : m_file(file), m_mode((mode & load) != 0 ? load : store) {}

CArchive::~CArchive() {
  try {
    Close();
  } catch (CException* e) {
    e->Delete();
  } catch (...) {  // a file in memory runs out of it with std::bad_alloc
  }
}

CArchive& CArchive::operator<<(const CString& text) {
  RequireStoring();
  const auto length = static_cast<std::uint32_t>(text.GetLength());
  if (length < kByteEscape) {
    *this << static_cast<std::uint8_t>(length);
  } else if (length < kWideMark) {
    *this << kByteEscape << static_cast<std::uint16_t>(length);
  } else {
    *this << kByteEscape << kWordEscape << length;
  }
  Write(text.GetString(), length);
  return *this;
}

std::uint32_t CArchive::ReadTextLength(bool& wide) {
  wide = false;
  for (;;) {
    std::uint8_t byte = 0;
    *this >> byte;
    if (byte != kByteEscape) {
      return byte;
    }
    std::uint16_t word = 0;
    *this >> word;
    if (word == kWideMark && !wide) {
      wide = true;
      continue;
    }
    if (word != kWordEscape) {
      return word;
    }
    std::uint32_t length = 0;
    *this >> length;
    return length;
  }
}

// Hands `byteCount` bytes over in pieces of the buffer's size, so that memory grows with the bytes
// that are there and not with the length that was announced. Pieces are even but for the last.
template <class AppendChunk>
void CArchive::ReadInSteps(std::uint64_t byteCount, AppendChunk append) {
  std::array<unsigned char, kBufferSize> piece;
  while (byteCount > 0) {
    const auto wanted = static_cast<unsigned int>(std::min<std::uint64_t>(byteCount, piece.size()));
    if (Read(piece.data(), wanted) < wanted) {
      Throw(CArchiveException::endOfFile);
    }
    append(piece.data(), wanted);
    byteCount -= wanted;
  }
}

CArchive& CArchive::operator>>(CString& text) {
  bool wide = false;
  const std::uint64_t length = ReadTextLength(wide);
  if (wide) {
    WideText out;
    ReadInSteps(length * 2, [&](const unsigned char* bytes, unsigned int count) {
      for (unsigned int i = 0; i + 1 < count; i += 2) {
        out.Take(static_cast<std::uint16_t>(bytes[i] | (bytes[i + 1] << 8)));
      }
    });
    text = CString(out.Finish());
  } else {
    std::string out;
    ReadInSteps(length, [&](const unsigned char* bytes, unsigned int count) {
      out.append(reinterpret_cast<const char*>(bytes), count);
    });
    text = CString(std::move(out));
  }
  return *this;
}

void CArchive::Write(const void* bytes, unsigned int count) {
  RequireStoring();
  if (count > kBufferSize - m_end) {
    FlushStored();
  }
  if (count > kBufferSize) {
    HandOver([&] { m_file->Write(bytes, count); });
  } else if (count > 0) {
    std::memcpy(m_buffer.data() + m_end, bytes, count);
    m_end += count;
  }
}

unsigned int CArchive::Read(void* bytes, unsigned int count) {
  RequireLoading();
  auto* out = static_cast<unsigned char*>(bytes);
  unsigned int left = count;
  for (;;) {
    const auto step = static_cast<unsigned int>(std::min<std::size_t>(left, m_end - m_next));
    if (step > 0) {
      std::memcpy(out, m_buffer.data() + m_next, step);
      m_next += step;
      out += step;
      left -= step;
    }
    if (left == 0) {
      break;
    }
    m_next = 0;
    m_end = 0;
    m_end = m_file->Read(m_buffer.data(), kBufferSize);
    if (m_end == 0) {
      break;
    }
  }
  return count - left;
}

void CArchive::WriteCount(std::uint32_t count) {
  if (count < kWordEscape) {
    *this << static_cast<std::uint16_t>(count);
  } else {
    *this << kWordEscape << count;
  }
}

std::uint32_t CArchive::ReadCount() {
  std::uint16_t word = 0;
  *this >> word;
  if (word != kWordEscape) {
    return word;
  }
  std::uint32_t count = 0;
  *this >> count;
  return count;
}

void CArchive::Flush() {
  if (m_mode == store) {
    FlushStored();
    HandOver([&] { m_file->Flush(); });
  } else if (m_mode == load && m_next != m_end) {
    const auto unread = static_cast<std::int64_t>(m_end - m_next);
    m_next = 0;
    m_end = 0;
    m_file->Seek(-unread, CFile::current);
  }
}

void CArchive::Close() {
  if (m_file != nullptr) {
    Flush();
    m_file = nullptr;
    m_mode = kClosed;
  }
}

void CArchive::FlushStored() {
  if (m_end > 0) {
    const auto count = static_cast<unsigned int>(m_end);
    m_end = 0;  // a failed write isn't tried again when the archive is closed
    HandOver([&] { m_file->Write(m_buffer.data(), count); });
  }
}

// Behind a failure the file ends where nobody knows, so nothing more is stored: it would stand at
// the wrong place.
template <class Action>
void CArchive::HandOver(Action action) {
  try {
    action();
  } catch (...) {
    m_mode = kClosed;
    throw;
  }
}

void CArchive::Fill(std::size_t wanted) {
  const std::size_t have = m_end - m_next;
  std::memmove(m_buffer.data(), m_buffer.data() + m_next, have);
  m_next = 0;
  m_end = have;
  while (m_end < wanted) {
    const unsigned int got =
        m_file->Read(m_buffer.data() + m_end, static_cast<unsigned int>(kBufferSize - m_end));
    if (got == 0) {
      Throw(CArchiveException::endOfFile);
    }
    m_end += got;
  }
}

void CArchive::Throw(int cause) const {
  throw new CArchiveException(cause, m_file != nullptr ? m_file->GetFilePath() : CString());
}
