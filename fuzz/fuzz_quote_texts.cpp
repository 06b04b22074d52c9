// Tells in words of fields of every type, fills a column with values, and reads and writes news.
//
// The input's first byte picks one of the three by its value modulo 3. What is read stands in
// blocks of exactly its size, so that the address sanitizer sees a byte read or written beyond.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

#include <pxdutil/quotes/field_item.h>
#include <pxdutil/quotes/news.h>
#include <pxdutil/quotes/quote.h>

#include "require.h"

namespace {

using fuzz::Require;
using Block = std::vector<unsigned char>;

// Hands out the input in pieces; behind its end there are zeros and empty blocks.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : m_next(data), m_end(data + size) {}
  [[nodiscard]] bool IsEmpty() const { return m_next == m_end; }
  unsigned char Byte() { return IsEmpty() ? std::uint8_t{0} : *m_next++; }
  unsigned Word() {
    const unsigned low = Byte();
    return low | static_cast<unsigned>(Byte()) << 8;
  }
  Block Bytes(std::size_t wanted) {
    const std::size_t size = std::min(wanted, static_cast<std::size_t>(m_end - m_next));
    const std::uint8_t* const first = m_next;
    m_next += size;
    return {first, m_next};
  }
  Block Rest() { return Bytes(static_cast<std::size_t>(m_end - m_next)); }

 private:
  const std::uint8_t* m_next;
  const std::uint8_t* m_end;
};

// Each field: its id in two bytes, type and status in one, the size of its value in one, the value.
void TellOfFields(Input input) {
  while (!input.IsEmpty()) {
    CZRGSQuote::ZRGS_QUOTE_FIELD field{};
    field.wFieldID = static_cast<std::uint16_t>(input.Word());
    field.bTypeStatus = input.Byte();
    Block value = input.Bytes(input.Byte());
    field.wSize = static_cast<std::uint16_t>(value.size());
    field.wCapacity = field.wSize;
    field.pData = value.empty() ? nullptr : value.data();

    const int type = field.bTypeStatus >> 4;
    const bool isText = type == CZRGSQuote::QFTYPE_STRING || type == CZRGSQuote::QFTYPE_STREAM;
    const CString text = CZRGSQuote::GetDataString(&field);
    Require(text.Find('\0') == -1, "a text goes beyond its NUL");
    Require(text.GetLength() <= (isText ? field.wSize : 99), "a text is too long");
    const char* const name = CZRGSQuote::GetFieldName(&field);
    Require(name == nullptr || *name != '\0', "a name is empty");
    Require(*CZRGSQuote::GetStatusString(&field) != '\0', "a status has no word");
    Require(CZRGSQuote::GetTypeString(&field).IsEmpty() == (type == 12 || type == 15),
            "a type has no word");
    Require(CZRGSQuote::GetDataSize(&field) == field.wSize, "a value has another size");
    void* const prefixed = !isText || value.size() >= 2 ? field.pData : nullptr;
    const unsigned size = CZRGSQuote::GetDataSize(static_cast<unsigned char>(type), prefixed);
    Require(size <= (isText ? 65535U : 8U), "a type has too large a size");
    static_cast<void>(CZRGSQuote::GetDoubleValue(&field));
  }
}

// The type and 4 in one byte, the size of a value in one, the room in one, then values of up to
// that size.
void FillColumn(Input input) {
  CFieldItem item;
  item.m_nType = input.Byte() - 4;
  item.m_nElemSize = input.Byte();
  const int room = input.Byte();
  const bool isText = item.m_nType == CZRGSQuote::QFTYPE_STRING;
  int given = 0;
  while (!input.IsEmpty()) {
    const auto size = static_cast<std::size_t>(item.m_nElemSize);
    Block value = input.Bytes(std::max<std::size_t>(size, 1));
    if (isText) {
      value.push_back('\0');
    } else {
      value.resize(std::max<std::size_t>(size, 1));
    }
    item.storeFieldValue(value.data(), room);
    ++given;
  }
  Require(item.m_wCount <= std::min(given, room), "more was stored than there was");
  Require(item.m_pValues == nullptr || item.m_nBufSize == item.m_nElemSize * room,
          "a buffer has another size");
  if (isText && item.m_pValues != nullptr) {
    for (int end = item.m_nElemSize; end > 0 && end <= item.m_nBufSize; end += item.m_nElemSize) {
      Require(item.m_pValues[end - 1] == 0, "a text fills its place");
    }
  }
  const CFieldItem copy(item);
  CFieldItem target;
  target.transfer(item);
  Require(item.m_pValues == nullptr, "two items hold one buffer");
  Require(copy.m_pValues == nullptr || std::memcmp(copy.m_pValues, target.m_pValues,
                                                   static_cast<std::size_t>(copy.m_nBufSize)) == 0,
          "a copy has other values");
}

// What an accessor hands out must lie in memory that is really there.
void ReadNews(const CZRGSNews& news) {
  if (news.GetType() == ZRGS_NEWS_FILE_NAME) {
    Require(std::strlen(news.GetFileName()) <= 259, "a file name is too long");
  }
  unsigned int size = 0;
  const auto* const data = static_cast<const unsigned char*>(news.GetRawData(size));
  Require(data != nullptr || size == 0, "no data has a size");
  if (news.GetType() == ZRGS_NEWS_RAW_DATA && data != nullptr) {
    Require(Block(data, data + size).size() == size, "data has another size");
  }
  static_cast<void>(news.GetDataFormat() + news.GetFlags() + news.GetStatus() + news.GetHint());
  Require(news.GetSize() == 273 || news.GetType() == ZRGS_NEWS_RAW_DATA ||
              news.GetZRGS_NEWS() == nullptr,
          "a record has another size");
}

void WriteNews(CZRGSNews& news, unsigned int claimed, const Block& story) {
  news.SetNewsHint(1, 0xFFFFFFFF, 1);
  ReadNews(news);
  const std::vector<char> name = [&story] {
    std::vector<char> text(story.begin(), story.end());
    text.push_back('\0');
    return text;
  }();
  news.SetNewsFileName(1, name.data());
  ReadNews(news);
  const auto size = std::min(claimed, static_cast<unsigned int>(story.size()));
  news.SetNewsRawData(1, story.data(), size);
  ReadNews(news);
  unsigned int stored = 0;
  const void* const data = news.GetRawData(stored);
  if (news.GetType() == ZRGS_NEWS_RAW_DATA && stored > 0) {
    Require(stored <= size && std::memcmp(data, story.data(), stored) == 0,
            "data came back changed");
  }
  news.SetFlags(0xFFFFFFFF);
}

// A capacity in two bytes, a size in two, then bytes: as a record that came in, and as a story that
// goes out, into a caller's buffer and into a record of the handle's own.
void HandleNews(Input input) {
  const auto capacity = static_cast<unsigned short>(input.Word());
  const unsigned claimed = input.Word();
  const Block bytes = input.Rest();

  auto buffer = std::make_unique<char[]>(bytes.size());
  std::copy(bytes.begin(), bytes.end(), buffer.get());
  const auto size = static_cast<unsigned short>(std::min<std::size_t>(bytes.size(), 65535));
  ReadNews(CZRGSNews(buffer.get(), size));

  buffer = std::make_unique<char[]>(capacity);
  CZRGSNews wrapped(buffer.get(), capacity);
  WriteNews(wrapped, claimed, bytes);
  CZRGSNews own(capacity);
  WriteNews(own, claimed, bytes);
  ReadNews(CZRGSNews(own.GetZRGS_NEWS()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  switch (input.Byte() % 3) {
    case 0:
      TellOfFields(input);
      break;
    case 1:
      FillColumn(input);
      break;
    default:
      HandleNews(input);
      break;
  }
  return 0;
}
