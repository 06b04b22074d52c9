#include <pxdutil/quotes/field_item.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <new>

#include <pxdutil/quotes/detail/bounded_text.h>
#include <pxdutil/quotes/quote.h>

namespace {

std::size_t SizeOrNone(std::int32_t size) {
  return static_cast<std::size_t>(std::max(size, std::int32_t{0}));
}

}  // namespace

CFieldItem::CFieldItem(const CFieldItem& other)
    : m_nFieldID(other.m_nFieldID),
      m_nType(other.m_nType),
      m_nElemSize(other.m_nElemSize),
      m_nBufSize(other.m_nBufSize),
      m_wCount(other.m_wCount) {
  if (other.m_pValues != nullptr) {
    const std::size_t size = SizeOrNone(m_nBufSize);
    m_pValues = new unsigned char[size];
    std::memcpy(m_pValues, other.m_pValues, size);
  }
}

CFieldItem::~CFieldItem() {
  if (m_bBorrowed == 0) {
    delete[] m_pValues;
  }
}

void CFieldItem::transfer(CFieldItem& source) {
  if (&source == this) {
    return;
  }
  const bool isOwner = m_bBorrowed == 0 && m_pValues != nullptr;
  const bool isShared = m_pValues == source.m_pValues;
  if (isOwner && !isShared) {
    delete[] m_pValues;
  }
  *this = source;
  if (isOwner && isShared) {
    m_bBorrowed = 0;  // the source may have borrowed from this very item
  }
  source.m_pValues = nullptr;
}

void CFieldItem::reset() {
  CFieldItem fresh;
  transfer(fresh);
}

void CFieldItem::storeFieldValue(void* value, int maxCount) {
  // The count has 16 bits, and one more would make it negative.
  constexpr int kMostValues = std::numeric_limits<std::int16_t>::max();
  if (m_wCount < 0 || m_wCount >= std::min(maxCount, kMostValues)) {
    return;
  }
  const std::size_t elemSize = SizeOrNone(m_nElemSize);
  if (m_pValues == nullptr) {
    const std::uint64_t wanted = std::uint64_t{elemSize} * static_cast<std::uint64_t>(maxCount);
    if (wanted > std::uint64_t{std::numeric_limits<std::int32_t>::max()}) {
      throw std::bad_alloc();
    }
    m_pValues = new unsigned char[static_cast<std::size_t>(wanted)]();
    m_nBufSize = static_cast<std::int32_t>(wanted);
  }
  if (value == nullptr) {
    return;
  }

  const auto index = static_cast<std::size_t>(m_wCount);
  const std::size_t bufferSize = SizeOrNone(m_nBufSize);
  // Copies `size` bytes to the place of this value, where places are `stride` bytes apart.
  const auto append = [&](std::size_t stride, std::size_t size) {
    if (std::uint64_t{index + 1} * stride <= bufferSize) {
      std::memcpy(m_pValues + index * stride, value, size);
      ++m_wCount;
    }
  };
  switch (m_nType) {
    case CZRGSQuote::QFTYPE_TIME:
    case CZRGSQuote::QFTYPE_DATE:
    case CZRGSQuote::QFTYPE_DOUBLE:
    case CZRGSQuote::QFTYPE_FLOAT:
    case CZRGSQuote::QFTYPE_LONG:
    case CZRGSQuote::QFTYPE_ULONG:
    case CZRGSQuote::QFTYPE_SHORT:
    case CZRGSQuote::QFTYPE_USHORT:
    case CZRGSQuote::QFTYPE_STREAM:
      append(elemSize, elemSize);
      break;
    case CZRGSQuote::QFTYPE_STRING:
      append(elemSize, elemSize > 0 ? pxd::detail::TextUpTo(value, elemSize - 1).size() : 0);
      break;
    case CZRGSQuote::QFTYPE_BYTE:
      append(1, 1);
      break;
    default:
      break;
  }
}
