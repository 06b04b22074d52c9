// What the harnesses of history share: the built-in catalogue as the process's own, and tables of
// lines that have an entry there, since lines without one have no text.
#ifndef PXDUTIL_FUZZ_HISTORY_CATALOGUE_H
#define PXDUTIL_FUZZ_HISTORY_CATALOGUE_H

#include <string>

#include <pxdutil/fields/field_info_mgr.h>
#include <pxdutil/foundation/fault.h>
#include <pxdutil/foundation/file.h>
#include <pxdutil/history/history_settings.h>

namespace fuzz {

inline void Require(bool holds, const char* what) {
  if (!holds) {
    pxd::Fault(what);
  }
}

// A text file that stands in memory.
class Lines : public CStdioFile {
 public:
  explicit Lines(const std::string& text) : m_memory(text.data(), text.size()) {}
  unsigned int Read(void* buffer, unsigned int count) override {
    return m_memory.Read(buffer, count);
  }

 private:
  CMemFile m_memory;
};

// Loads the catalogue, once.
inline void LoadCatalogue() {
  static CFieldInfoMgr catalogue;
  static const bool isLoaded = [] {
    CString text;
    catalogue.BuildFieldInfoFile(text);
    Lines lines(text.Str());
    CString error;
    return catalogue.LoadFromFile(lines, error) == 1;
  }();
  Require(isLoaded, "the built-in catalogue doesn't load");
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
