// What the tests of the catalogue share: readable forms of its lists, and text files in memory.
#ifndef PXDUTIL_TESTS_FIELDS_SUPPORT_H
#define PXDUTIL_TESTS_FIELDS_SUPPORT_H

#include <string>
#include <utility>
#include <vector>

#include <pxdutil/fields/field_info_mgr.h>
#include <pxdutil/foundation/file.h>

namespace fields_test {

using Ids = std::vector<int>;
using Resolution = std::pair<int, int>;  // unit and quantity
using Resolutions = std::vector<Resolution>;

inline CResoln MakeResoln(unsigned short unit, unsigned short quantity) {
  return CResoln(ZRGS_RESOLUTION{unit, quantity});
}

inline Resolution Plain(const CResoln& resoln) {
  return {resoln.GetResolnUnit(), resoln.GetResolnQty()};
}

inline Ids Plain(const CZRListEx<CField>& list) {
  Ids ids;
  for (const CField& field : list) {
    ids.push_back(field.GetFieldVal());
  }
  return ids;
}

inline Resolutions Plain(const CZRListEx<CResoln>& list) {
  Resolutions resolutions;
  for (const CResoln& resoln : list) {
    resolutions.push_back(Plain(resoln));
  }
  return resolutions;
}

using Settings = std::vector<std::pair<int, Resolutions>>;

inline Settings Plain(const CZRListEx<CStorageSetting>& list) {
  Settings settings;
  for (const CStorageSetting& setting : list) {
    settings.emplace_back(setting.GetDataPtID(), Plain(setting.GetResolnList()));
  }
  return settings;
}

inline std::vector<std::string> Plain(const CStringArray& array) {
  std::vector<std::string> texts;
  for (const CString& text : array) {
    texts.push_back(text.Str());
  }
  return texts;
}

inline CZRListEx<CField> Fields(const Ids& ids) {
  CZRListEx<CField> list(10);
  for (const int id : ids) {
    list.AddTail(CField(static_cast<unsigned short>(id)));
  }
  return list;
}

inline CZRListEx<CResolnAndUpdateFieldList> OneUpdate(const CResoln& resoln, const Ids& ids) {
  CResolnAndUpdateFieldList entry;
  entry.m_Resoln = resoln;
  entry.m_FieldList = Fields(ids);
  CZRListEx<CResolnAndUpdateFieldList> list(10);
  list.AddTail(entry);
  return list;
}

inline CStorageSetting Setting(unsigned char dataPtID, const Resolutions& resolutions) {
  CStorageSetting setting;
  setting.SetDataPtID(dataPtID);
  for (const auto& [unit, quantity] : resolutions) {
    setting.AddResoln(
        MakeResoln(static_cast<unsigned short>(unit), static_cast<unsigned short>(quantity)));
  }
  return setting;
}

// A text file that is read from memory.
class TextFile : public CStdioFile {
 public:
  explicit TextFile(const std::string& text) : m_memory(text.data(), text.size()) {}
  unsigned int Read(void* buffer, unsigned int count) override {
    return m_memory.Read(buffer, count);
  }

 private:
  CMemFile m_memory;
};

// Loads `text` and tells the result; `error` as the manager leaves it.
inline int Load(CFieldInfoMgr& catalogue, const std::string& text, CString& error) {
  TextFile file(text);
  return catalogue.LoadFromFile(file, error);
}

inline int Load(CFieldInfoMgr& catalogue, const std::string& text) {
  CString error;
  return Load(catalogue, text, error);
}

inline int RowCount(const CFieldInfoMgr& catalogue) {
  CFieldInfoMgr::FieldInfoList list;
  catalogue.GetFieldInfoListAll(list);
  return static_cast<int>(list.GetCount());
}

}  // namespace fields_test

#endif
