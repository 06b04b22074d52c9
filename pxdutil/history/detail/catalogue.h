// The catalogue as history needs it: always there, and with an entry for every field asked for.
#ifndef PXDUTIL_HISTORY_DETAIL_CATALOGUE_H
#define PXDUTIL_HISTORY_DETAIL_CATALOGUE_H

#include <pxdutil/fields/field_info_mgr.h>
#include <pxdutil/foundation/fault.h>

namespace pxd::detail {

[[nodiscard]] inline const CFieldInfoMgr& Catalogue() {
  if (CFieldInfoMgr::m_pInstance == nullptr) {
    Fault("history needs a catalogue, and there is no manager of one");
  }
  return *CFieldInfoMgr::m_pInstance;
}

[[nodiscard]] inline const CZRGSFieldInfo& CatalogueEntryOf(unsigned short id) {
  const CZRGSFieldInfo* const entry = Catalogue().GetFieldInfo(id);
  if (entry == nullptr) {
    Fault("history was asked of a field without a catalogue entry");
  }
  return *entry;
}

}  // namespace pxd::detail

#endif
