#include <pxdutil/quotes/news.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <string_view>

#include <pxdutil/foundation/packed.h>
#include <pxdutil/quotes/detail/bounded_text.h>

namespace {

constexpr std::size_t kTypeAt = offsetof(ZRGS_NEWS, eDataType);
constexpr std::size_t kFormatAt = offsetof(ZRGS_NEWS, dwDataFormat);
constexpr std::size_t kFlagsAt = offsetof(ZRGS_NEWS, dwFlags);
constexpr std::size_t kStatusAt = offsetof(ZRGS_NEWS, bStatus);
constexpr std::size_t kBodyAt = offsetof(ZRGS_NEWS, body);
// Raw data has its size ahead of it.
constexpr std::size_t kDataAt = kBodyAt + sizeof(std::uint32_t);

constexpr std::size_t kBodySize = sizeof(ZRGS_NEWS::body);
constexpr unsigned int kStandardSize = sizeof(ZRGS_NEWS);
// What GetSize adds to the data; it leaves out the status and the data's own size.
constexpr unsigned int kCountedHeader = 12;

}  // namespace

CZRGSNews::CZRGSNews(const ZRGS_NEWS* news) : m_pNews(const_cast<ZRGS_NEWS*>(news)) {}

CZRGSNews::CZRGSNews(char* const buffer, unsigned short capacity)
    : m_pNews(reinterpret_cast<ZRGS_NEWS*>(buffer)), m_bWritable(true), m_wCapacity(capacity) {}

// The capacity counts raw data, which begins behind the header: the block holds both.
CZRGSNews::CZRGSNews(unsigned short size)
    : m_bWritable(true),
      m_bOwned(true),
      m_wCapacity(static_cast<std::uint16_t>(std::min<unsigned int>(
          size + kStandardSize, std::numeric_limits<std::uint16_t>::max()))) {
  m_pNews = reinterpret_cast<ZRGS_NEWS*>(new (std::nothrow) char[kDataAt + m_wCapacity]());
}

CZRGSNews::~CZRGSNews() {
  if (m_bOwned) {
    delete[] reinterpret_cast<char*>(m_pNews);
  }
  m_pNews = nullptr;
}

// How many bytes are known to be there. A record that is only looked at has its standard size.
std::size_t CZRGSNews::Reach() const {
  if (m_pNews == nullptr) {
    return 0;
  }
  if (!m_bWritable) {
    return kStandardSize;
  }
  return m_bOwned ? kDataAt + m_wCapacity : m_wCapacity;
}

char* CZRGSNews::At(std::size_t offset) const {
  return reinterpret_cast<char*>(m_pNews) + offset;
}

template <class T>
T CZRGSNews::Load(std::size_t offset) const {
  return offset + sizeof(T) <= Reach() ? pxd::LoadAs<T>(At(offset)) : T{};
}

template <class T>
void CZRGSNews::Store(std::size_t offset, T value) {
  if (offset + sizeof(T) <= Reach()) {
    pxd::StoreAs(At(offset), value);
  }
}

// Whether the bytes ahead of `end` are there to be written.
bool CZRGSNews::CanWrite(std::size_t end) const {
  return m_bWritable && end <= Reach();
}

ZRGS_NEWS_DATA_TYPE CZRGSNews::GetType() const {
  return Load<ZRGS_NEWS_DATA_TYPE>(kTypeAt);
}

unsigned long CZRGSNews::GetDataFormat() const {
  return Load<std::uint32_t>(kFormatAt);
}

unsigned long CZRGSNews::GetFlags() const {
  return Load<std::uint32_t>(kFlagsAt);
}

unsigned char CZRGSNews::GetStatus() const {
  return Load<std::uint8_t>(kStatusAt);
}

unsigned long CZRGSNews::GetHint() const {
  return Load<std::uint32_t>(kBodyAt);
}

const char* CZRGSNews::GetFileName() const {
  const std::size_t reach = Reach();
  if (reach <= kBodyAt) {
    return "";
  }
  const char* const name = At(kBodyAt);
  const std::size_t room = std::min(kBodySize, reach - kBodyAt);
  const bool isEndless = pxd::detail::TextUpTo(name, room).size() == room;
  return isEndless && GetType() == ZRGS_NEWS_FILE_NAME ? "" : name;
}

const void* CZRGSNews::GetRawData(unsigned int& size) const {
  size = Load<std::uint32_t>(kBodyAt);
  const std::size_t reach = Reach();
  if (reach < kDataAt) {
    return nullptr;
  }
  if (m_bWritable && GetType() == ZRGS_NEWS_RAW_DATA) {
    size = static_cast<unsigned int>(std::min<std::size_t>(size, reach - kDataAt));
  }
  return At(kDataAt);
}

unsigned int CZRGSNews::GetSize() const {
  if (m_pNews == nullptr) {
    return 0;
  }
  if (GetType() != ZRGS_NEWS_RAW_DATA) {
    return kStandardSize;
  }
  return Load<std::uint32_t>(kBodyAt) + kCountedHeader;
}

ZRGS_NEWS* CZRGSNews::GetBuffer(unsigned int needed) {
  return m_bWritable && m_wCapacity >= needed ? m_pNews : nullptr;
}

void CZRGSNews::SetNewsHint(unsigned long format, unsigned long hint, unsigned char status) {
  if (CanWrite(kBodyAt + sizeof(std::uint32_t))) {
    Store(kTypeAt, ZRGS_NEWS_HINT);
    Store(kFormatAt, static_cast<std::uint32_t>(format));
    Store(kStatusAt, std::uint8_t{status});
    Store(kBodyAt, static_cast<std::uint32_t>(hint));
  }
}

// The body is written ahead of the header, since the name or the data may lie in this record.

void CZRGSNews::SetNewsFileName(unsigned long format, const char* name) {
  if (!CanWrite(kBodyAt + 1)) {
    return;
  }
  const std::size_t room = std::min(kBodySize, Reach() - kBodyAt) - 1;
  const std::string_view kept = pxd::detail::TextUpTo(name, room);
  if (!kept.empty()) {
    std::memmove(At(kBodyAt), kept.data(), kept.size());
  }
  *At(kBodyAt + kept.size()) = '\0';
  Store(kTypeAt, ZRGS_NEWS_FILE_NAME);
  Store(kFormatAt, static_cast<std::uint32_t>(format));
}

void CZRGSNews::SetNewsRawData(unsigned long format, const void* data, unsigned int size) {
  if (!CanWrite(kDataAt) || m_wCapacity < size || (data == nullptr && size > 0)) {
    return;
  }
  const std::size_t kept = std::min<std::size_t>(size, Reach() - kDataAt);
  if (data != nullptr) {
    std::memmove(At(kDataAt), data, kept);
  }
  Store(kTypeAt, ZRGS_NEWS_RAW_DATA);
  Store(kFormatAt, static_cast<std::uint32_t>(format));
  Store(kBodyAt, static_cast<std::uint32_t>(kept));
}

void CZRGSNews::SetType(ZRGS_NEWS_DATA_TYPE type) {
  if (m_bWritable) {
    Store(kTypeAt, type);
  }
}

void CZRGSNews::SetFlags(unsigned long flags) {
  Store(kFlagsAt, static_cast<std::uint32_t>(flags));
}
