// What becomes of the symbols in WHERE conditions.
#ifndef PXDUTIL_QUERY_DETAIL_SYMBOL_TEXT_H
#define PXDUTIL_QUERY_DETAIL_SYMBOL_TEXT_H

#include <string>

namespace pxd::detail {

// Keeps at most 30 characters of `text` in `symbol`, and takes the market prefix "US:" off what it
// kept. Only a symbol that goes on behind the prefix has one, and only where no other ':' and no
// '.' follows, which would make the prefix part of a longer name. Returns whether it had one.
bool KeepSymbol(std::string& symbol, const char* text);

}  // namespace pxd::detail

#endif
