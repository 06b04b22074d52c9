// Reading a field node, bounded by the bytes that it holds, and filling one.
#ifndef PXDUTIL_QUOTES_DETAIL_NODE_H
#define PXDUTIL_QUOTES_DETAIL_NODE_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include <pxdutil/foundation/packed.h>
#include <pxdutil/quotes/detail/bounded_text.h>
#include <pxdutil/quotes/quote.h>

namespace pxd::detail {

using QuoteField = CZRGSQuote::ZRGS_QUOTE_FIELD;

inline unsigned char TypeOf(const QuoteField& field) {
  return field.bTypeStatus >> 4;
}

inline unsigned char StatusOf(const QuoteField& field) {
  return field.bTypeStatus & 0x0F;
}

// The T that stands `offset` bytes into the value, 0 where the value ends before it does.
template <class T>
T ValueOf(const QuoteField& field, std::size_t offset = 0) {
  return field.pData != nullptr && field.wSize >= offset + sizeof(T)
             ? LoadAs<T>(field.pData + offset)
             : T{};
}

// The value as text, up to its NUL or, where it has none, up to its end.
inline std::string_view TextOf(const QuoteField& field) {
  return TextUpTo(field.pData, field.wSize);
}

// The number that the value's text begins with, as atof reads it.
double NumberInText(const QuoteField& field);

// The body of CZRGSQuote::GetDoubleValue.
inline double NumberOf(const QuoteField& field) {
  switch (TypeOf(field)) {
    case CZRGSQuote::QFTYPE_TIME:
    case CZRGSQuote::QFTYPE_ULONG:
      return ValueOf<std::uint32_t>(field);
    case CZRGSQuote::QFTYPE_DATE:
    case CZRGSQuote::QFTYPE_USHORT:
      return ValueOf<std::uint16_t>(field);
    case CZRGSQuote::QFTYPE_STRING:
    case CZRGSQuote::QFTYPE_STREAM:
      return NumberInText(field);
    case CZRGSQuote::QFTYPE_DOUBLE:
      return ValueOf<double>(field);
    case CZRGSQuote::QFTYPE_FLOAT:
      return static_cast<double>(ValueOf<float>(field));
    case CZRGSQuote::QFTYPE_LONG:
      return ValueOf<std::int32_t>(field);
    case CZRGSQuote::QFTYPE_SHORT:
      return ValueOf<std::int16_t>(field);
    case CZRGSQuote::QFTYPE_CHAR:
      return ValueOf<std::int8_t>(field);
    case CZRGSQuote::QFTYPE_BYTE:
      return ValueOf<std::uint8_t>(field);
    default:
      return 0.0;
  }
}

// Makes a clean node one of this kind, id and size; of the status and the type the low 4 bits
// count.
inline void Describe(QuoteField& node, unsigned char status, unsigned char type, unsigned short id,
                     std::uint16_t size) {
  node.wFieldID = id;
  node.bTypeStatus = static_cast<std::uint8_t>((status & 0x0F) | (type << 4));
  node.wSize = size;
}

// Puts as many bytes into the node as it says that it has, zeros where `data` is null. It must have
// room for them.
inline void StoreValue(QuoteField& node, const void* data) {
  if (node.wSize > 0 && data != nullptr) {
    std::memcpy(node.pData, data, node.wSize);
  } else if (node.wSize > 0) {
    std::memset(node.pData, 0, node.wSize);
  }
}

}  // namespace pxd::detail

#endif
