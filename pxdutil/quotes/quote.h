// CZRGSQuote: the self-describing record in which everything a server says of a symbol travels.
//
// A quote is a short list of typed fields in the order in which their ids first came. Each field is
// a node that names itself by a 16-bit id and carries a type, a status and the value's bytes. Nodes
// and their buffers come from one process-wide pool and go back to it, so a warm pool makes quotes
// without touching the heap:
//
//   CZRGSQuote::Init();
//   {
//     CZRGSQuote quote;
//     quote.AddFieldDate(3, 280, 35431);
//     quote.AddFieldFloat(3, 235, 101.25f);
//     double close = 0.0;
//     if (quote.GetFieldData(235, close)) ...
//   }
//   CZRGSQuote::UnInit();
//
// Threads: a quote belongs to one thread at a time; the pool is shared and locks itself, except in
// ReleaseField, Init and UnInit, which must not run beside other use of it.
#ifndef PXDUTIL_QUOTES_QUOTE_H
#define PXDUTIL_QUOTES_QUOTE_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include <pxdutil/foundation/export.h>
#include <pxdutil/foundation/inline_vector.h>
#include <pxdutil/foundation/spin_mutex.h>
#include <pxdutil/foundation/text.h>

namespace pxd::detail {
class NodePool;
}

class PXDUTIL_API CZRGSQuote {
 public:
  // Type codes: what the bytes of a value are. Numbers are little-endian. Code 12 has no name and
  // reads as nothing; code 15 is refused.
  enum FieldType : int {
    QFTYPE_TIME = 0,      // 4 bytes: seconds since midnight
    QFTYPE_DATE = 1,      // 2 bytes: Julian day
    QFTYPE_STRING = 2,    // text
    QFTYPE_PIECES = 3,    // a signed character, then a signed 32-bit number, unaligned
    QFTYPE_DOUBLE = 4,    // 8 bytes
    QFTYPE_FLOAT = 5,     // 4 bytes
    QFTYPE_LONG = 6,      // 4 bytes, signed
    QFTYPE_ULONG = 7,     // 4 bytes, unsigned
    QFTYPE_SHORT = 8,     // 2 bytes, signed
    QFTYPE_USHORT = 9,    // 2 bytes, unsigned
    QFTYPE_CHAR = 10,     // 1 byte, signed
    QFTYPE_BYTE = 11,     // 1 byte, unsigned
    QFTYPE_STREAM = 13,   // bytes, read like text
    QFTYPE_NOVALUE = 14,  // only says that the id is present
  };

#pragma pack(push, 1)

  // A field node. Owned by exactly one of: a quote, the pool, or the caller of CreateField.
  struct ZRGS_QUOTE_FIELD {
    std::uint16_t wFieldID;      // the catalogue's id
    std::uint16_t wIndirectID;   // stored by SetIndirectQuote, not read here
    std::uint16_t wSize;         // value bytes at pData
    std::uint16_t wCapacity;     // bytes allocated at pData; survives recycling
    std::uint32_t dwRecords;     // records announced by this field
    std::uint8_t bTypeStatus;    // low 4 bits the status, high 4 bits the type code
    std::uint8_t bIndirectFlag;  // stored by SetIndirectQuote, not read here
    unsigned char* pData;        // owned by the node, allocated with new[]; survives recycling
  };

  // What GetFieldInfo tells of a field and of its quote; all 0 where the field is absent.
  struct ZRGS_FIELD_INFO {
    std::uint8_t bStatus;         // the field's status, 0 to 15
    std::uint8_t bDateTimeFlags;  // bit 0: a time is known; bit 1: a date is known
    std::uint16_t wDate;          // as GetDate gives it
    std::uint32_t dwTime;         // as GetTime gives it
  };

#pragma pack(pop)

  // Opens the pool. A precondition of every form that adds a field. Calling it again does nothing.
  static void Init();
  // Frees what the pool holds and closes it. Call it after the last quote is gone: nodes in quotes
  // that live on aren't reclaimed.
  static void UnInit();

  // A node from the pool, the caller's until it is added or released. Of the status and the type
  // the low 4 bits count. Null where the pool isn't open or no memory is left. A null `data` gives
  // a value of zeros.
  [[nodiscard]] static ZRGS_QUOTE_FIELD* CreateField(unsigned char status, unsigned char type,
                                                     unsigned short id, unsigned char* data,
                                                     unsigned short size);
  // The same from another node's status, type, id and value; the rest of it isn't copied.
  [[nodiscard]] static ZRGS_QUOTE_FIELD* CreateField(const ZRGS_QUOTE_FIELD* field);
  // Gives a node back. Takes no lock: not to be called beside other use of the pool.
  static void ReleaseField(ZRGS_QUOTE_FIELD* field);

  // The value as a number, a Julian day or a time of day. A type that doesn't fit, a missing value
  // and one shorter than its type read as 0; text is read as atof reads it, up to its NUL or end.
  [[nodiscard]] static double GetDoubleValue(const ZRGS_QUOTE_FIELD* field);
  [[nodiscard]] static unsigned short GetDateValue(const ZRGS_QUOTE_FIELD* field);
  [[nodiscard]] static unsigned long GetTimeValue(const ZRGS_QUOTE_FIELD* field);

  // Words for logs and diagnostic displays. The field must be there; its value may be short or
  // missing.

  // The short name of the field's id, null where the id has none. The field catalogue's names are
  // others, meant for users.
  [[nodiscard]] static const char* GetFieldName(const ZRGS_QUOTE_FIELD* field);
  // "QFTYPE_TIME" and so on; empty for codes 12 and 15.
  [[nodiscard]] static CString GetTypeString(const ZRGS_QUOTE_FIELD* field);
  // The value: HH:MM:SS, MM/DD/YYYY, the text up to its NUL or end, or the number; a QFTYPE_PIECES
  // as its number, a slash and the character in single quotes. Beyond text, at most 99 characters.
  // A value shorter than its type reads as 0. Empty for QFTYPE_NOVALUE and codes 12 and 15.
  [[nodiscard]] static CString GetDataString(const ZRGS_QUOTE_FIELD* field);
  // The word for statuses 0 to 5, "?" for all others, 8 among them.
  [[nodiscard]] static const char* GetStatusString(const ZRGS_QUOTE_FIELD* field);
  // The bytes of the field's value.
  [[nodiscard]] static unsigned int GetDataSize(const ZRGS_QUOTE_FIELD* field);
  // The bytes that a value of this type code takes in a buffer of values laid end to end: texts and
  // streams say so themselves, by the 16-bit length that `data` begins with (0 where it is null),
  // which a node's value doesn't have. `data` is read for those two alone. A QFTYPE_PIECES counts
  // 4, one byte less than it has. 0 for code 12 and for what is no type.
  [[nodiscard]] static unsigned int GetDataSize(unsigned char type, void* data);

  // An empty quote; the argument is accepted and ignored.
  CZRGSQuote() = default;
  explicit CZRGSQuote(unsigned short unused);
  // Copies values, ids, types, statuses and the tag; what SetIndirectQuote and SetDate or SetTime
  // set isn't carried over. Assigning a quote to itself empties it. Where memory runs out, throws
  // std::bad_alloc and leaves the target without fields.
  CZRGSQuote(const CZRGSQuote& other);
  CZRGSQuote& operator=(const CZRGSQuote& other);
  ~CZRGSQuote();

  // Adding. An id that the quote has keeps its place and gets the new value. Each form returns 1,
  // or 0 and changes nothing where it gets no node; a list that can't grow throws std::bad_alloc.
  //
  // A quote derives its date and time once, from fields 280 and 281, and keeps them. Only the forms
  // marked (*) make a quote that found neither look again.

  // (*) With `bCopy` 0 the quote takes over the node itself. A type code of 15 is refused with 0,
  // and the node stays the caller's.
  int AddField(const ZRGS_QUOTE_FIELD* field, int bCopy);
  // Any type, of which the low 4 bits count. Of `size` the low 16 bits count.
  int AddField(unsigned char status, unsigned char type, unsigned short id, void* data,
               unsigned long size);
  int AddFieldTime(unsigned char status, unsigned short id, unsigned long value);   // (*)
  int AddFieldDate(unsigned char status, unsigned short id, unsigned short value);  // (*)
  // The text with its NUL.
  int AddFieldString(unsigned char status, unsigned short id, const char* text);
  // `size` bytes as they stand.
  int AddFieldString(unsigned char status, unsigned short id, const char* text,
                     unsigned short size);
  // The value as it is, in the type that the name says.
  int AddFieldDouble(unsigned char status, unsigned short id, double value);
  int AddFieldFloat(unsigned char status, unsigned short id, float value);
  int AddFieldLong(unsigned char status, unsigned short id, long value);
  int AddFieldULong(unsigned char status, unsigned short id, unsigned long value);
  int AddFieldShort(unsigned char status, unsigned short id, short value);
  int AddFieldUShort(unsigned char status, unsigned short id, unsigned short value);
  int AddFieldChar(unsigned char status, unsigned short id, char value);
  int AddFieldByte(unsigned char status, unsigned short id, unsigned char value);
  // A field of status 8 whose value is zeros: types 2, 4 to 9 and 11; 0 for every other type.
  int AddFieldNoValue(unsigned short id, long type);

  // How many fields the quote has.
  [[nodiscard]] unsigned int GetNumField() const;
  // The node at a place, null out of range. It stays the quote's.
  [[nodiscard]] ZRGS_QUOTE_FIELD* GetField(unsigned short index);
  [[nodiscard]] const ZRGS_QUOTE_FIELD* GetField(unsigned short index) const;
  // 1 and the node, or 0 and `field` as it was.
  int FindField(unsigned short id, ZRGS_QUOTE_FIELD*& field);
  int FindField(unsigned short id, const ZRGS_QUOTE_FIELD*& field) const;
  // 1 and GetDoubleValue of the field, or 0 and `value` as it was.
  int GetFieldData(unsigned short id, double& value) const;
  // The record count of the field that stands first, 0 for an empty quote.
  [[nodiscard]] unsigned long GetRecords() const;
  // The field's status, with the date and the time of the quote; all 0 where there is no such
  // field.
  [[nodiscard]] ZRGS_FIELD_INFO GetFieldInfo(unsigned short id) const;
  [[nodiscard]] ZRGS_FIELD_INFO GetFieldInfo(const ZRGS_QUOTE_FIELD* field) const;
  // Sorts `ids` into the nodes found and the ids missing. Both arrays must have room for `count`.
  void GetMatchInfo(const unsigned short* ids, int count, const ZRGS_QUOTE_FIELD** found,
                    int& foundCount, unsigned short* missing, int& missingCount) const;
  // The time-stamp fields, 280 and 281 ahead of 421 and 422. `date` and `time` are null where there
  // is none; the other four keep what they held.
  void GetDateTimeFields(const ZRGS_QUOTE_FIELD*& date, const ZRGS_QUOTE_FIELD*& time,
                         const ZRGS_QUOTE_FIELD*& askDate, const ZRGS_QUOTE_FIELD*& askTime,
                         const ZRGS_QUOTE_FIELD*& bidDate, const ZRGS_QUOTE_FIELD*& bidTime) const;
  // The quote's date as a Julian day and its time as seconds since midnight, derived on first need;
  // without such a field the value last held, 0 in a fresh quote.
  [[nodiscard]] unsigned short GetDate() const;
  [[nodiscard]] unsigned long GetTime() const;
  // Set the derived value, and with it that both are up to date. The fields stay as they are.
  void SetDate(unsigned short date);
  void SetTime(unsigned long time);

  // Copies `field` into the node with its id, if there is one. Always 1.
  int ReplaceField(const ZRGS_QUOTE_FIELD* field);
  // Stores the three values in the node with that id, if there is one.
  void SetIndirectQuote(unsigned short id, unsigned short indirectID, unsigned long records,
                        unsigned char indirectFlag);
  // Empties the quote. With `bRelease` 0 the nodes are forgotten, for callers who own them by now.
  void Empty(int bRelease);
  // Moves the fields of `source` into this quote, over those with the same ids, and empties it. At
  // a field of type code 15 the move stops, and what was moved so far stands in both quotes.
  void TransferQuote(CZRGSQuote& source);
  // 1 for 1 to 199 fields, each with a status of at most 9 and a type code of at most 14; else 0.
  [[nodiscard]] int IsValid() const;

  // A word of the caller's; copied and transferred with the quote.
  std::uint32_t m_dwTag = 0;

 private:
  friend class pxd::detail::NodePool;

  enum class CacheRule { kIgnore, kApply };

  // Quotes of up to this many fields need no memory for the list itself.
  static constexpr std::size_t kInlineFields = 32;

  int Add(CacheRule rule, unsigned char status, unsigned char type, unsigned short id,
          const void* data, std::size_t size);
  template <class T>
  int AddValue(CacheRule rule, unsigned char status, FieldType type, unsigned short id, T value);
  void ApplyCacheRule();
  void insertField(ZRGS_QUOTE_FIELD* node);
  void init(const CZRGSQuote& source);
  void Cache() const;
  void EnsureCached() const;
  [[nodiscard]] ZRGS_QUOTE_FIELD* Lookup(unsigned short id) const;
  void ReleaseAll();

  pxd::InlineVector<ZRGS_QUOTE_FIELD*, kInlineFields> m_vFields;
  mutable bool m_bCached = false;
  mutable std::uint8_t m_bDateTimeFlags = 0;
  mutable std::uint16_t m_wDate = 0;
  mutable std::uint32_t m_dwTime = 0;

  // Guards m_vFieldPool, the free nodes that no thread keeps for itself, and the list of those that
  // threads keep.
  static pxd::SpinMutex m_Crit;
  static bool m_bInitialized;
  static std::vector<ZRGS_QUOTE_FIELD*> m_vFieldPool;
};

// What GetFieldInfo tells, for hosts that name it without its class.
using ZRGS_FIELD_INFO = CZRGSQuote::ZRGS_FIELD_INFO;

static_assert(sizeof(CZRGSQuote::ZRGS_QUOTE_FIELD) == 14 + sizeof(void*));
static_assert(sizeof(CZRGSQuote::ZRGS_FIELD_INFO) == 8);

#endif
