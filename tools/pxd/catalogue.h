// The field catalogue as the commands use it: the built-in one, and fields by name or id.
#ifndef PXDUTIL_TOOLS_PXD_CATALOGUE_H
#define PXDUTIL_TOOLS_PXD_CATALOGUE_H

#include <string>
#include <string_view>
#include <vector>

#include <pxdutil/fields/field_info_mgr.h>

namespace pxd::tool {

// The built-in catalogue, which is the process's own as long as this object lives. One in a
// program.
class BuiltInCatalogue {
 public:
  BuiltInCatalogue() { LoadBuiltInCatalogue(m_rows); }

  // The row of an id, or of a name in letters of either case; null where there is none.
  [[nodiscard]] const CZRGSFieldInfo* Find(std::string_view field) const;
  [[nodiscard]] const CZRGSFieldInfo* Find(unsigned short id) const {
    return m_rows.GetFieldInfo(id);
  }
  // The same for what an option names; where there is none, Failure with the name of the option.
  [[nodiscard]] const CZRGSFieldInfo& FieldOption(const std::string& option,
                                                  const std::string& field) const;

  // All rows, or those that may be stored, in the order of their ids.
  [[nodiscard]] std::vector<const CZRGSFieldInfo*> Rows(bool storableOnly) const;

  // The lines of the catalogue file, with their ends.
  [[nodiscard]] std::string FileLines();
  // Brings the file at `path` up to date. False where it can't be written.
  bool WriteFile(const std::string& path) { return m_rows.Create(path.c_str()) == 1; }

 private:
  CFieldInfoMgr m_rows;
};

// The name of a field, or its number where it has no row.
std::string FieldName(const BuiltInCatalogue& catalogue, unsigned short id);

}  // namespace pxd::tool

#endif
