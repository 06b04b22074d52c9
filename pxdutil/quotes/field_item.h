// CFieldItem: a column of values of one field, laid out end to end in one buffer.
//
//   CFieldItem closes;
//   closes.m_nFieldID = 235;
//   closes.m_nType = CZRGSQuote::QFTYPE_FLOAT;
//   closes.m_nElemSize = sizeof(float);
//   closes.storeFieldValue(&close, 500);  // the first value makes room for all 500
//
// An item belongs to one thread at a time.
#ifndef PXDUTIL_QUOTES_FIELD_ITEM_H
#define PXDUTIL_QUOTES_FIELD_ITEM_H

#include <cstdint>

#include <pxdutil/foundation/export.h>

#pragma pack(push, 1)

// Packed, and open to its host: what the members say is what the operations go by. A reference to
// one of them may be misaligned, so read and write them by name.
class PXDUTIL_API CFieldItem {
 public:
  CFieldItem() = default;
  // Copies the values too, into a buffer of its own. Throws std::bad_alloc.
  CFieldItem(const CFieldItem& other);
  // Copies the members alone: both items then share one buffer, and what this item had in its own
  // is forgotten, not freed. Each of the two would free the shared buffer, so set m_bBorrowed in
  // all but one of them before they end; and call reset() before assigning to an item with a
  // buffer.
  CFieldItem& operator=(const CFieldItem& other) = default;
  // Frees the buffer unless it is borrowed.
  ~CFieldItem();

  // Frees what this item owned and takes over all that `source` holds. The source keeps its members
  // but for the pointer. An item that already shares the source's buffer ends as its only holder,
  // and still owns it if it did.
  void transfer(CFieldItem& source);

  // Frees the buffer unless it is borrowed, and makes the item as one newly constructed.
  void reset();

  // Appends one value, where m_wCount is still below `maxCount`, below 32767 and not negative. The
  // first makes the buffer: `maxCount` places of m_nElemSize bytes, all zero. By m_nType:
  //
  //   times, dates, numbers of 2 to 8 bytes, streams: m_nElemSize bytes at `value`
  //   QFTYPE_STRING: the text at `value` without its NUL, cut to m_nElemSize - 1 characters
  //   QFTYPE_BYTE: one byte, at the index m_wCount whatever m_nElemSize is
  //   all others, QFTYPE_CHAR and QFTYPE_PIECES among them: nothing
  //
  // A null `value`, and one whose place isn't within the m_nBufSize bytes, isn't stored either;
  // what isn't stored isn't counted. Throws std::bad_alloc, also for a buffer of 2 GiB or more.
  void storeFieldValue(void* value, int maxCount);

  std::int32_t m_nFieldID = -1;        // -1 for none
  std::int32_t m_nType = 0;            // a CZRGSQuote::FieldType
  std::int32_t m_nElemSize = 0;        // bytes of a value
  std::int32_t m_nBufSize = 0;         // bytes at m_pValues
  std::int16_t m_wCount = 0;           // values stored
  unsigned char* m_pValues = nullptr;  // allocated with new[]
  std::int32_t m_bBorrowed = 0;        // nonzero: the buffer isn't this item's to free
};

#pragma pack(pop)

static_assert(sizeof(CFieldItem) == 22 + sizeof(void*));

#endif
