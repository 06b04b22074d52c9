// What the harnesses of history share: the built-in catalogue as the process's own, and tables of
// lines that have an entry there, since lines without one have no text.
#ifndef PXDUTIL_FUZZ_HISTORY_CATALOGUE_H
#define PXDUTIL_FUZZ_HISTORY_CATALOGUE_H

#include <pxdutil/fields/field_info_mgr.h>
#include <pxdutil/history/history_settings.h>

namespace fuzz {

// Loads the catalogue, once.
inline void LoadCatalogue() {
  struct BuiltIn {
    BuiltIn() { pxd::LoadBuiltInCatalogue(rows); }
    CFieldInfoMgr rows;
  };
  static const BuiltIn catalogue;
}

inline bool HasEntry(const CFieldResoln& pair) {
  return CFieldInfoMgr::m_pInstance->GetFieldInfo(pair.GetField().GetFieldVal()) != nullptr;
}

// Leaves the lines whose field has an entry, each pair once.
inline void DropLinesWithoutEntry(CHistorySettings& settings) {
  const CHistorySettings all = settings;
  settings.RemoveAllSettings();
  for (int i = 0; i < all.GetCount(); ++i) {
    if (HasEntry(all.GetSetting(i).GetFieldResoln())) {
      settings.AddSetting(all.GetSetting(i));
    }
  }
}

}  // namespace fuzz

#endif
