#include "catalogue.h"

#include <fmt/format.h>

#include "failure.h"
#include "words.h"

namespace pxd::tool {

const CZRGSFieldInfo* BuiltInCatalogue::Find(std::string_view field) const {
  field = Trim(field);
  if (const auto id = WholeNumber<unsigned short>(field, 0xFFFF)) {
    return Find(*id);
  }
  for (const CZRGSFieldInfo* row : Rows(false)) {
    if (EqualNoCase(row->Description().Str(), field)) {
      return row;
    }
  }
  return nullptr;
}

const CZRGSFieldInfo& BuiltInCatalogue::FieldOption(const std::string& option,
                                                    const std::string& field) const {
  const CZRGSFieldInfo* row = Find(field);
  if (row == nullptr) {
    throw Failure(kExitBadUsage,
                  fmt::format("{}: {} is no field of the catalogue; expected a name or an id that "
                              "'pxd fields' lists",
                              option, Quoted(field)));
  }
  return *row;
}

std::vector<const CZRGSFieldInfo*> BuiltInCatalogue::Rows(bool storableOnly) const {
  CFieldInfoMgr::FieldInfoList list;
  if (storableOnly) {
    m_rows.GetFieldInfoListStorable(list);
  } else {
    m_rows.GetFieldInfoListAll(list);
  }
  return {list.begin(), list.end()};
}

std::string BuiltInCatalogue::FileLines() {
  CString lines;
  m_rows.BuildFieldInfoFile(lines);
  return lines.Str();
}

std::string FieldName(const BuiltInCatalogue& catalogue, unsigned short id) {
  const CZRGSFieldInfo* row = catalogue.Find(id);
  return row != nullptr ? row->Description().Str() : fmt::format("{}", id);
}

}  // namespace pxd::tool
