// The pool of field nodes, and what reads a node without its quote.
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <new>
#include <string>
#include <string_view>

#include <pxdutil/quotes/detail/node.h>
#include <pxdutil/quotes/quote.h>

pxd::SpinMutex CZRGSQuote::m_Crit;
bool CZRGSQuote::m_bInitialized = false;
std::vector<CZRGSQuote::ZRGS_QUOTE_FIELD*> CZRGSQuote::m_vFieldPool;

namespace {

using pxd::detail::StatusOf;
using pxd::detail::TypeOf;
using pxd::detail::ValueOf;

using Field = pxd::detail::QuoteField;

void FreeNode(Field* node) {
  delete[] node->pData;
  delete node;
}

double NumberInText(const Field& field) {
  const std::string_view text = pxd::detail::TextOf(field);
  if (text.empty()) {
    return 0.0;
  }
  const bool hasNul = text.size() < field.wSize;
  return hasNul ? std::atof(text.data()) : std::atof(std::string(text).c_str());
}

}  // namespace

void CZRGSQuote::Init() {
  m_bInitialized = true;
}

void CZRGSQuote::UnInit() {
  if (!m_bInitialized) {
    return;
  }
  for (Field* node : m_vFieldPool) {
    FreeNode(node);
  }
  std::vector<Field*>().swap(m_vFieldPool);  // an empty list assigned would keep its room
  m_bInitialized = false;
}

CZRGSQuote::ZRGS_QUOTE_FIELD* CZRGSQuote::CreateField(unsigned char status, unsigned char type,
                                                      unsigned short id, unsigned char* data,
                                                      unsigned short size) {
  return TakeNode(status, type, id, data, size);
}

CZRGSQuote::ZRGS_QUOTE_FIELD* CZRGSQuote::CreateField(const ZRGS_QUOTE_FIELD* field) {
  if (field == nullptr) {
    return nullptr;
  }
  return TakeNode(StatusOf(*field), TypeOf(*field), field->wFieldID, field->pData, field->wSize);
}

CZRGSQuote::ZRGS_QUOTE_FIELD* CZRGSQuote::TakeNode(unsigned char status, unsigned char type,
                                                   unsigned short id, const void* data,
                                                   std::size_t size) {
  if (!m_bInitialized) {
    return nullptr;
  }
  Field* node = nullptr;
  {
    const std::lock_guard lock(m_Crit);
    if (!m_vFieldPool.empty()) {
      node = m_vFieldPool.back();
      m_vFieldPool.pop_back();
    }
  }
  if (node == nullptr) {
    node = new (std::nothrow) Field{};
    if (node == nullptr) {
      return nullptr;
    }
  }
  const auto kept = static_cast<std::uint16_t>(size);
  if (kept > 0 && (node->pData == nullptr || node->wCapacity < kept)) {
    delete[] node->pData;
    node->pData = new (std::nothrow) unsigned char[kept];
    node->wCapacity = node->pData != nullptr ? kept : std::uint16_t{0};
    if (node->pData == nullptr) {
      const std::lock_guard lock(m_Crit);
      PushClean(node);
      return nullptr;
    }
  }
  node->wFieldID = id;
  node->bTypeStatus = static_cast<std::uint8_t>((status & 0x0F) | (type << 4));
  node->wSize = kept;
  if (kept > 0) {
    if (data != nullptr) {
      std::memcpy(node->pData, data, kept);
    } else {
      std::memset(node->pData, 0, kept);
    }
  }
  return node;
}

void CZRGSQuote::ReleaseField(ZRGS_QUOTE_FIELD* field) {
  if (m_bInitialized && field != nullptr) {
    PushClean(field);
  }
}

// Clears what isn't kept and puts the node on the pool; the caller holds the lock where one is due.
void CZRGSQuote::PushClean(ZRGS_QUOTE_FIELD* node) {
  node->bTypeStatus = 0;
  node->wFieldID = 0;
  node->wSize = 0;
  node->wIndirectID = 0;
  node->dwRecords = 0;
  node->bIndirectFlag = 0;
  try {
    m_vFieldPool.push_back(node);
  } catch (const std::bad_alloc&) {
    FreeNode(node);  // nodes come back from destructors too, which must not throw
  }
}

void CZRGSQuote::ReleaseAll() {
  if (m_bInitialized && !m_vFields.empty()) {
    const std::lock_guard lock(m_Crit);
    for (Field* field : m_vFields) {
      PushClean(field);
    }
  }
}

unsigned long CZRGSQuote::GetTimeValue(const ZRGS_QUOTE_FIELD* field) {
  switch (TypeOf(*field)) {
    case QFTYPE_TIME:
    case QFTYPE_ULONG:
      return ValueOf<std::uint32_t>(*field);
    default:
      return 0;
  }
}

unsigned short CZRGSQuote::GetDateValue(const ZRGS_QUOTE_FIELD* field) {
  switch (TypeOf(*field)) {
    case QFTYPE_DATE:
      return ValueOf<std::uint16_t>(*field);
    case QFTYPE_ULONG:
      return static_cast<std::uint16_t>(ValueOf<std::uint32_t>(*field));
    default:
      return 0;
  }
}

double CZRGSQuote::GetDoubleValue(const ZRGS_QUOTE_FIELD* field) {
  switch (TypeOf(*field)) {
    case QFTYPE_TIME:
    case QFTYPE_ULONG:
      return ValueOf<std::uint32_t>(*field);
    case QFTYPE_DATE:
    case QFTYPE_USHORT:
      return ValueOf<std::uint16_t>(*field);
    case QFTYPE_STRING:
    case QFTYPE_STREAM:
      return NumberInText(*field);
    case QFTYPE_DOUBLE:
      return ValueOf<double>(*field);
    case QFTYPE_FLOAT:
      return static_cast<double>(ValueOf<float>(*field));
    case QFTYPE_LONG:
      return ValueOf<std::int32_t>(*field);
    case QFTYPE_SHORT:
      return ValueOf<std::int16_t>(*field);
    case QFTYPE_CHAR:
      return ValueOf<std::int8_t>(*field);
    case QFTYPE_BYTE:
      return ValueOf<std::uint8_t>(*field);
    default:
      return 0.0;
  }
}
