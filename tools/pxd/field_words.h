// Rows of the catalogue as people and programs read them.
#ifndef PXDUTIL_TOOLS_PXD_FIELD_WORDS_H
#define PXDUTIL_TOOLS_PXD_FIELD_WORDS_H

#include <string>
#include <vector>

#include "catalogue.h"

namespace pxd::tool {

// A table with a line a row.
std::string FieldTable(const std::vector<const CZRGSFieldInfo*>& rows);
// All of one row.
std::string FieldCard(const BuiltInCatalogue& catalogue, const CZRGSFieldInfo& row);
// The names of the resolutions in which the field may be stored, a line each.
std::string ResolutionLines(const CZRGSFieldInfo& row);

// The same as JSON: an array of objects, one object, an array of objects with name, unit and
// quantity.
std::string FieldTableJson(const BuiltInCatalogue& catalogue,
                           const std::vector<const CZRGSFieldInfo*>& rows);
std::string FieldCardJson(const BuiltInCatalogue& catalogue, const CZRGSFieldInfo& row);
std::string ResolutionsJson(const CZRGSFieldInfo& row);

}  // namespace pxd::tool

#endif
