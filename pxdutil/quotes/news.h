// ZRGS_NEWS, the record in which a news item travels, and CZRGSNews, the handle that reads and
// writes one.
//
//   CZRGSNews news(static_cast<unsigned short>(story.size()));  // owns a record with room for it
//   news.SetNewsRawData(format, story.data(), static_cast<unsigned int>(story.size()));
//   Send(news.GetZRGS_NEWS());
//
//   const CZRGSNews received(record);  // only looks at it
//   unsigned int size = 0;
//   const void* const data = received.GetRawData(size);
//
// A handle, and the record under it, belong to one thread at a time.
#ifndef PXDUTIL_QUOTES_NEWS_H
#define PXDUTIL_QUOTES_NEWS_H

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include <pxdutil/foundation/export.h>

// What the body of a news record holds.
enum ZRGS_NEWS_DATA_TYPE : std::int32_t {
  ZRGS_NEWS_FILE_NAME = 0,  // the name of a file: NUL-terminated text
  ZRGS_NEWS_HINT = 1,       // a 32-bit hint
  ZRGS_NEWS_RAW_DATA = 2,   // a 32-bit size, then so many bytes, which may run beyond the record
};

#pragma pack(push, 1)

// The bytes of a news item as they travel. What format, flags and status mean is the server's.
struct ZRGS_NEWS {
  ZRGS_NEWS_DATA_TYPE eDataType;  // which form the body has
  std::uint32_t dwDataFormat;     // the server's
  std::uint32_t dwFlags;          // the server's
  std::uint8_t bStatus;           // the server's
  char body[260];                 // by eDataType; raw data may run on behind it
};

#pragma pack(pop)

static_assert(std::is_standard_layout_v<ZRGS_NEWS> && std::is_trivially_copyable_v<ZRGS_NEWS>);
static_assert(sizeof(ZRGS_NEWS) == 273 && offsetof(ZRGS_NEWS, body) == 13);

// A handle on a news record.
//
// A handle on a caller's buffer touches no byte beyond its capacity: what such a buffer is too
// small for reads as 0, and is dropped when written. A null record reads as 0, null or the empty
// text, and takes nothing.
class PXDUTIL_API CZRGSNews {
 public:
  // Looks at a record that stays the caller's and must outlive the handle. Not writable, capacity
  // 0.
  explicit CZRGSNews(const ZRGS_NEWS* news);
  // Wraps a buffer of `capacity` bytes that stays the caller's and must outlive the handle.
  // Writable. Its bytes are left as they are.
  CZRGSNews(char* const buffer, unsigned short capacity);
  // Owns a zeroed record with room for 273 bytes of raw data more than `size`, and that is its
  // capacity, 65535 at most. Writable. Where memory runs out the record is null.
  explicit CZRGSNews(unsigned short size);
  // A copy would have to say who owns the record.
  CZRGSNews(const CZRGSNews&) = delete;
  CZRGSNews& operator=(const CZRGSNews&) = delete;
  // Frees the record only where it is owned.
  ~CZRGSNews();

  // The record itself, null where there is none. It lives as long as the handle or the caller's
  // memory. Writing to a record that the handle only looks at is the caller's business.
  [[nodiscard]] ZRGS_NEWS* GetZRGS_NEWS() { return m_pNews; }
  [[nodiscard]] const ZRGS_NEWS* GetZRGS_NEWS() const { return m_pNews; }

  // The four words in front of the body, as they stand.
  [[nodiscard]] ZRGS_NEWS_DATA_TYPE GetType() const;
  [[nodiscard]] unsigned long GetDataFormat() const;
  [[nodiscard]] unsigned long GetFlags() const;
  [[nodiscard]] unsigned char GetStatus() const;

  // The body, read as one of its three forms. None of the three asks for the type: of a record of
  // another type they give the body as it stands.

  // The first 32 bits of the body.
  [[nodiscard]] unsigned long GetHint() const;
  // Points into the record. A file name without an end within the body is given as "".
  [[nodiscard]] const char* GetFileName() const;
  // Points into the record; `size` gets the size that stands in front of the data. Of raw data in
  // memory whose capacity the handle knows, no more than is there.
  const void* GetRawData(unsigned int& size) const;

  // 0 for a null record; else 273, but for raw data its size and 12. Those 12 count one header
  // field too few, so the data ends 5 bytes behind that: receivers count on the number as it is.
  [[nodiscard]] unsigned int GetSize() const;

  // The record, to be filled directly, or null unless it is writable and its capacity is at least
  // `needed`.
  [[nodiscard]] ZRGS_NEWS* GetBuffer(unsigned int needed);

  // Make the record one of that type. Nothing changes where the handle isn't writable. The flags
  // stay, and but for a hint the status too.

  // A hint, the one form that sets the status too.
  void SetNewsHint(unsigned long format, unsigned long hint, unsigned char status);
  // A name is cut to 259 characters, and in a smaller buffer to what fits; a null name counts as
  // "".
  void SetNewsFileName(unsigned long format, const char* name);
  // Nothing changes where the capacity is below `size`, or `data` is null and `size` isn't 0. In a
  // caller's buffer, whose capacity counts the header too, data and size are cut to what fits.
  // `data` may lie in the record itself.
  void SetNewsRawData(unsigned long format, const void* data, unsigned int size);

  // Only where the handle is writable.
  void SetType(ZRGS_NEWS_DATA_TYPE type);
  // In any case, also in a record that the handle otherwise only looks at: a receiver marks what it
  // was sent.
  void SetFlags(unsigned long flags);

  // A number of the caller's, kept in the handle and not in the record; 0 at first.
  void SetMapIndex(unsigned long index) { m_dwMapIndex = static_cast<std::uint32_t>(index); }
  [[nodiscard]] unsigned long GetMapIndex() const { return m_dwMapIndex; }

 private:
  [[nodiscard]] std::size_t Reach() const;
  [[nodiscard]] char* At(std::size_t offset) const;
  template <class T>
  [[nodiscard]] T Load(std::size_t offset) const;
  template <class T>
  void Store(std::size_t offset, T value);
  [[nodiscard]] bool CanWrite(std::size_t end) const;

  ZRGS_NEWS* m_pNews = nullptr;
  bool m_bWritable = false;
  bool m_bOwned = false;
  std::uint16_t m_wCapacity = 0;
  std::uint32_t m_dwMapIndex = 0;
};

#endif
