// A query as people and programs read it.
#ifndef PXDUTIL_TOOLS_PXD_QUERY_TEXT_H
#define PXDUTIL_TOOLS_PXD_QUERY_TEXT_H

#include <string>
#include <string_view>

#include <pxdutil/query/explain_query.h>
#include <pxdutil/query/query_info.h>

#include "catalogue.h"

namespace pxd::tool {

// What an accepted query says, a line a part.
std::string QueryCard(const BuiltInCatalogue& catalogue, const QUERY_INFO& info);
// The same as a JSON object.
std::string QueryCardJson(const BuiltInCatalogue& catalogue, const QUERY_INFO& info);

// The text, or the part of it round the place, with a caret under the place.
std::string CaretLines(std::string_view text, std::size_t position);
// Why a query was refused, as a JSON object.
std::string ExplanationJson(const QueryExplanation& why);

}  // namespace pxd::tool

#endif
