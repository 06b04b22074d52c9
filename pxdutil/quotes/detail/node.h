// Readers of a field node, bounded by the bytes that it holds.
#ifndef PXDUTIL_QUOTES_DETAIL_NODE_H
#define PXDUTIL_QUOTES_DETAIL_NODE_H

#include <cstddef>
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

}  // namespace pxd::detail

#endif
