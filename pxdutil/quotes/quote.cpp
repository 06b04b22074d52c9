#include <pxdutil/quotes/quote.h>

#include <cstring>
#include <new>

#include <pxdutil/quotes/date_time_fields.h>
#include <pxdutil/quotes/detail/node.h>
#include <pxdutil/quotes/detail/node_pool.h>

namespace {

constexpr std::uint8_t kTimeKnown = 1;
constexpr std::uint8_t kDateKnown = 2;

constexpr unsigned char kInvalidType = 15;
constexpr unsigned char kStatusWithoutValue = 8;
constexpr unsigned char kLargestStatus = 9;
constexpr std::size_t kMostFields = 199;

using pxd::detail::NodePool;
using pxd::detail::StatusOf;
using pxd::detail::TypeOf;

using Field = pxd::detail::QuoteField;

// The bytes that a field without a value gets by its type; 0 for types that can't be without one.
std::size_t SizeWithoutValue(long type) {
  switch (type) {
    case CZRGSQuote::QFTYPE_STRING:
    case CZRGSQuote::QFTYPE_BYTE:
      return 1;
    case CZRGSQuote::QFTYPE_SHORT:
    case CZRGSQuote::QFTYPE_USHORT:
      return 2;
    case CZRGSQuote::QFTYPE_FLOAT:
    case CZRGSQuote::QFTYPE_LONG:
    case CZRGSQuote::QFTYPE_ULONG:
      return 4;
    case CZRGSQuote::QFTYPE_DOUBLE:
      return 8;
    default:
      return 0;
  }
}

// Everything of `to` but its buffer becomes that of `from`; the value is copied, into a larger
// buffer where it doesn't fit.
void AssignNode(Field& to, const Field& from) {
  if (&to == &from) {
    return;
  }
  if (from.wSize > 0 && (to.pData == nullptr || to.wCapacity < from.wSize)) {
    auto* larger = new unsigned char[from.wSize];
    delete[] to.pData;
    to.pData = larger;
    to.wCapacity = from.wSize;
  }
  to.wFieldID = from.wFieldID;
  to.bTypeStatus = from.bTypeStatus;
  to.wSize = from.wSize;
  to.wIndirectID = from.wIndirectID;
  to.dwRecords = from.dwRecords;
  to.bIndirectFlag = from.bIndirectFlag;
  if (from.wSize > 0 && from.pData != nullptr) {
    std::memcpy(to.pData, from.pData, from.wSize);
  } else if (from.wSize > 0) {
    std::memset(to.pData, 0, from.wSize);
  }
}

}  // namespace

inline void CZRGSQuote::ApplyCacheRule() {
  if (m_bCached && m_bDateTimeFlags == 0) {
    m_bCached = false;
  }
}

// The list must have room for one more.
inline void CZRGSQuote::insertField(ZRGS_QUOTE_FIELD* node) {
  m_vFields.AppendInRoom(node);  // there it ends the walk
  const unsigned short id = node->wFieldID;
  Field** slot = m_vFields.begin();
  while ((*slot)->wFieldID != id) {
    ++slot;
  }
  if (slot + 1 == m_vFields.end()) {
    return;
  }
  m_vFields.pop_back();
  Field* const old = *slot;
  *slot = node;
  if (old != node && m_bInitialized) {
    NodePool::Give(&old, &old + 1);
  }
}

inline CZRGSQuote::ZRGS_QUOTE_FIELD* CZRGSQuote::Lookup(unsigned short id) const {
  for (Field* field : m_vFields) {
    if (field->wFieldID == id) {
      return field;
    }
  }
  return nullptr;
}

CZRGSQuote::CZRGSQuote(unsigned short) {}

CZRGSQuote::CZRGSQuote(const CZRGSQuote& other) {
  init(other);
}

CZRGSQuote& CZRGSQuote::operator=(const CZRGSQuote& other) {
  init(other);
  return *this;
}

CZRGSQuote::~CZRGSQuote() {
  Empty(1);
}

void CZRGSQuote::ReleaseAll() {
  if (m_bInitialized) {
    NodePool::Give(m_vFields.begin(), m_vFields.end());
  }
}

void CZRGSQuote::init(const CZRGSQuote& source) {
  ReleaseAll();
  m_vFields.clear();
  m_bCached = false;  // also where the copy fails: the fields that told the date are gone
  m_vFields.reserve(source.m_vFields.size());
  for (const Field* field : source.m_vFields) {
    if (Field* copy = CreateField(field); copy != nullptr) {
      m_vFields.push_back(copy);
    } else if (m_bInitialized) {
      // Half a copy would pass for a whole one.
      ReleaseAll();
      m_vFields.clear();
      throw std::bad_alloc();
    }
  }
  m_dwTag = source.m_dwTag;
  Cache();
}

int CZRGSQuote::Add(CacheRule rule, unsigned char status, unsigned char type, unsigned short id,
                    const void* data, std::size_t size) {
  m_vFields.reserve(m_vFields.size() + 1);  // what may throw comes ahead of what must be undone
  const auto kept = static_cast<std::uint16_t>(size);
  Field* const node = m_bInitialized ? NodePool::Take(kept) : nullptr;
  if (node == nullptr) {
    return 0;
  }
  pxd::detail::Describe(*node, status, type, id, kept);
  pxd::detail::StoreValue(*node, data);
  if (rule == CacheRule::kApply) {
    ApplyCacheRule();
  }
  insertField(node);
  return 1;
}

// What Add does, in as few steps as it takes where the list has room and the thread has a node.
template <class T>
inline int CZRGSQuote::AddValue(CacheRule rule, unsigned char status, FieldType type,
                                unsigned short id, T value) {
  if (m_vFields.HasRoom()) {
    if (Field* const node = NodePool::TakeAtHand(sizeof value); node != nullptr) {
      pxd::detail::Describe(*node, status, static_cast<unsigned char>(type), id, sizeof value);
      pxd::StoreAs(node->pData, value);
      if (rule == CacheRule::kApply) {
        ApplyCacheRule();
      }
      insertField(node);
      return 1;
    }
  }
  return Add(rule, status, static_cast<unsigned char>(type), id, &value, sizeof value);
}

int CZRGSQuote::AddField(const ZRGS_QUOTE_FIELD* field, int bCopy) {
  if (field == nullptr || TypeOf(*field) == kInvalidType) {
    return 0;
  }
  if (bCopy != 0) {
    return Add(CacheRule::kApply, StatusOf(*field), TypeOf(*field), field->wFieldID, field->pData,
               field->wSize);
  }
  if (!m_bInitialized) {
    return 0;
  }
  m_vFields.reserve(m_vFields.size() + 1);
  ApplyCacheRule();
  insertField(const_cast<Field*>(field));
  return 1;
}

int CZRGSQuote::AddField(unsigned char status, unsigned char type, unsigned short id, void* data,
                         unsigned long size) {
  return Add(CacheRule::kIgnore, status, type, id, data, size);
}

int CZRGSQuote::AddFieldTime(unsigned char status, unsigned short id, unsigned long value) {
  return AddValue(CacheRule::kApply, status, QFTYPE_TIME, id, static_cast<std::uint32_t>(value));
}

int CZRGSQuote::AddFieldDate(unsigned char status, unsigned short id, unsigned short value) {
  return AddValue(CacheRule::kApply, status, QFTYPE_DATE, id, std::uint16_t{value});
}

int CZRGSQuote::AddFieldString(unsigned char status, unsigned short id, const char* text) {
  const char* const there = text != nullptr ? text : "";
  return Add(CacheRule::kIgnore, status, QFTYPE_STRING, id, there, std::strlen(there) + 1);
}

int CZRGSQuote::AddFieldString(unsigned char status, unsigned short id, const char* text,
                               unsigned short size) {
  return Add(CacheRule::kIgnore, status, QFTYPE_STRING, id, text, size);
}

int CZRGSQuote::AddFieldDouble(unsigned char status, unsigned short id, double value) {
  return AddValue(CacheRule::kIgnore, status, QFTYPE_DOUBLE, id, value);
}

int CZRGSQuote::AddFieldFloat(unsigned char status, unsigned short id, float value) {
  return AddValue(CacheRule::kIgnore, status, QFTYPE_FLOAT, id, value);
}

int CZRGSQuote::AddFieldLong(unsigned char status, unsigned short id, long value) {
  return AddValue(CacheRule::kIgnore, status, QFTYPE_LONG, id, static_cast<std::int32_t>(value));
}

int CZRGSQuote::AddFieldULong(unsigned char status, unsigned short id, unsigned long value) {
  return AddValue(CacheRule::kIgnore, status, QFTYPE_ULONG, id, static_cast<std::uint32_t>(value));
}

int CZRGSQuote::AddFieldShort(unsigned char status, unsigned short id, short value) {
  return AddValue(CacheRule::kIgnore, status, QFTYPE_SHORT, id, std::int16_t{value});
}

int CZRGSQuote::AddFieldUShort(unsigned char status, unsigned short id, unsigned short value) {
  return AddValue(CacheRule::kIgnore, status, QFTYPE_USHORT, id, std::uint16_t{value});
}

int CZRGSQuote::AddFieldChar(unsigned char status, unsigned short id, char value) {
  return AddValue(CacheRule::kIgnore, status, QFTYPE_CHAR, id, value);
}

int CZRGSQuote::AddFieldByte(unsigned char status, unsigned short id, unsigned char value) {
  return AddValue(CacheRule::kIgnore, status, QFTYPE_BYTE, id, value);
}

int CZRGSQuote::AddFieldNoValue(unsigned short id, long type) {
  const std::size_t size = SizeWithoutValue(type);
  if (size == 0) {
    return 0;
  }
  return Add(CacheRule::kIgnore, kStatusWithoutValue, static_cast<unsigned char>(type), id, nullptr,
             size);
}

unsigned int CZRGSQuote::GetNumField() const {
  return static_cast<unsigned int>(m_vFields.size());
}

CZRGSQuote::ZRGS_QUOTE_FIELD* CZRGSQuote::GetField(unsigned short index) {
  return index < m_vFields.size() ? m_vFields[index] : nullptr;
}

const CZRGSQuote::ZRGS_QUOTE_FIELD* CZRGSQuote::GetField(unsigned short index) const {
  return index < m_vFields.size() ? m_vFields[index] : nullptr;
}

int CZRGSQuote::FindField(unsigned short id, ZRGS_QUOTE_FIELD*& field) {
  Field* const found = Lookup(id);
  if (found == nullptr) {
    return 0;
  }
  field = found;
  return 1;
}

int CZRGSQuote::FindField(unsigned short id, const ZRGS_QUOTE_FIELD*& field) const {
  const Field* const found = Lookup(id);
  if (found == nullptr) {
    return 0;
  }
  field = found;
  return 1;
}

int CZRGSQuote::GetFieldData(unsigned short id, double& value) const {
  const Field* const found = Lookup(id);
  if (found == nullptr) {
    return 0;
  }
  value = pxd::detail::NumberOf(*found);
  return 1;
}

unsigned long CZRGSQuote::GetRecords() const {
  return m_vFields.empty() ? 0 : m_vFields[0]->dwRecords;
}

CZRGSQuote::ZRGS_FIELD_INFO CZRGSQuote::GetFieldInfo(unsigned short id) const {
  return GetFieldInfo(Lookup(id));
}

CZRGSQuote::ZRGS_FIELD_INFO CZRGSQuote::GetFieldInfo(const ZRGS_QUOTE_FIELD* field) const {
  if (field == nullptr) {
    return {};
  }
  EnsureCached();
  return {StatusOf(*field), m_bDateTimeFlags, m_wDate, m_dwTime};
}

void CZRGSQuote::GetMatchInfo(const unsigned short* ids, int count, const ZRGS_QUOTE_FIELD** found,
                              int& foundCount, unsigned short* missing, int& missingCount) const {
  foundCount = 0;
  missingCount = 0;
  for (int i = 0; i < count; ++i) {
    if (const Field* field = Lookup(ids[i]); field != nullptr) {
      found[foundCount++] = field;
    } else {
      missing[missingCount++] = ids[i];
    }
  }
}

void CZRGSQuote::GetDateTimeFields(const ZRGS_QUOTE_FIELD*& date, const ZRGS_QUOTE_FIELD*& time,
                                   const ZRGS_QUOTE_FIELD*& askDate,
                                   const ZRGS_QUOTE_FIELD*& askTime,
                                   const ZRGS_QUOTE_FIELD*& bidDate,
                                   const ZRGS_QUOTE_FIELD*& bidTime) const {
  date = nullptr;
  time = nullptr;
  for (const Field* field : m_vFields) {
    if (TypeOf(*field) == QFTYPE_NOVALUE) {
      continue;
    }
    switch (field->wFieldID) {
      case pxd::kFieldDate:
        date = field;
        break;
      case pxd::kFieldBarDate:
        date = date != nullptr ? date : field;
        break;
      case pxd::kFieldTime:
        time = field;
        break;
      case pxd::kFieldBarTime:
        time = time != nullptr ? time : field;
        break;
      case pxd::kFieldDateLastAsk:
        askDate = field;
        break;
      case pxd::kFieldTimeLastAsk:
        askTime = field;
        break;
      case pxd::kFieldDateLastBid:
        bidDate = field;
        break;
      case pxd::kFieldTimeLastBid:
        bidTime = field;
        break;
      default:
        break;
    }
  }
}

// Only the plain date and time count here; a bar's own date and time say nothing of the quote.
void CZRGSQuote::Cache() const {
  m_bDateTimeFlags = 0;
  if (const Field* time = Lookup(pxd::kFieldTime); time != nullptr) {
    m_dwTime = static_cast<std::uint32_t>(GetTimeValue(time));
    m_bDateTimeFlags |= kTimeKnown;
  }
  if (const Field* date = Lookup(pxd::kFieldDate); date != nullptr) {
    m_wDate = GetDateValue(date);
    m_bDateTimeFlags |= kDateKnown;
  }
  m_bCached = true;
}

void CZRGSQuote::EnsureCached() const {
  if (!m_bCached) {
    Cache();
  }
}

unsigned short CZRGSQuote::GetDate() const {
  EnsureCached();
  return m_wDate;
}

unsigned long CZRGSQuote::GetTime() const {
  EnsureCached();
  return m_dwTime;
}

void CZRGSQuote::SetDate(unsigned short date) {
  m_wDate = date;
  m_bDateTimeFlags |= kDateKnown;
  m_bCached = true;
}

void CZRGSQuote::SetTime(unsigned long time) {
  m_dwTime = static_cast<std::uint32_t>(time);
  m_bDateTimeFlags |= kTimeKnown;
  m_bCached = true;
}

int CZRGSQuote::ReplaceField(const ZRGS_QUOTE_FIELD* field) {
  if (Field* const own = Lookup(field->wFieldID); own != nullptr) {
    AssignNode(*own, *field);
  }
  return 1;
}

void CZRGSQuote::SetIndirectQuote(unsigned short id, unsigned short indirectID,
                                  unsigned long records, unsigned char indirectFlag) {
  if (Field* const field = Lookup(id); field != nullptr) {
    field->wIndirectID = indirectID;
    field->dwRecords = static_cast<std::uint32_t>(records);
    field->bIndirectFlag = indirectFlag;
  }
}

void CZRGSQuote::Empty(int bRelease) {
  if (!m_bInitialized) {
    return;
  }
  if (bRelease != 0) {
    ReleaseAll();
  }
  m_vFields.clear();
  m_bCached = false;
}

void CZRGSQuote::TransferQuote(CZRGSQuote& source) {
  if (&source == this) {
    Empty(1);  // each field replaces itself, and the source ends empty
    return;
  }
  m_vFields.reserve(m_vFields.size() + source.m_vFields.size());
  m_dwTag = source.m_dwTag;
  for (Field* field : source.m_vFields) {
    if (TypeOf(*field) == kInvalidType) {
      return;
    }
    ApplyCacheRule();
    insertField(field);
  }
  if (m_bInitialized) {
    source.m_vFields.clear();
    source.m_bCached = false;
  }
}

int CZRGSQuote::IsValid() const {
  if (m_vFields.empty() || m_vFields.size() > kMostFields) {
    return 0;
  }
  for (const Field* field : m_vFields) {
    if (field == nullptr || StatusOf(*field) > kLargestStatus || TypeOf(*field) == kInvalidType) {
      return 0;
    }
  }
  return 1;
}
