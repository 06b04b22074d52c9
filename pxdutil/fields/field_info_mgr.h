// CFieldInfoMgr: the field catalogue of the process, one row per field id.
//
// The host builds one manager at start-up, brings its catalogue file up to date and loads it:
//
//   CFieldInfoMgr catalogue;
//   CString error;
//   if (catalogue.Create(path) == 1) {
//     CStdioFile file(path, CFile::modeRead | CFile::typeText);
//     if (catalogue.LoadFromFile(file, error) == 0) ...  // `error` says in which line and why
//   }
//
// From then on everybody reads it through m_pInstance. Loading must be complete before a second
// thread looks anything up; after it the catalogue is only read, from any thread. Rows stay valid
// as long as the manager.
//
// The file holds one line per field, {name,id,data type,field type,seven flags,atomic list,update
// list,storage list}, and behind the last line the word VersionInfo with a checksum and a version.
#ifndef PXDUTIL_FIELDS_FIELD_INFO_MGR_H
#define PXDUTIL_FIELDS_FIELD_INFO_MGR_H

#include <array>
#include <memory>

#include <pxdutil/fields/field_info.h>
#include <pxdutil/foundation/export.h>
#include <pxdutil/foundation/list.h>
#include <pxdutil/foundation/object.h>
#include <pxdutil/foundation/text.h>

class CFieldInfoMgr;
class CStdioFile;

namespace pxd {

// What the last four bytes of a catalogue file say of it; CFieldInfoMgr::Create replaces a file for
// anything but kGood. The lines themselves aren't looked at.
enum class CatalogueTrailer {
  kGood,          // a checksum and a version that are right
  kUnreadable,    // no file, or one that can't be read
  kTooShort,      // fewer than four bytes
  kOtherVersion,  // of another version, or no catalogue at all
  kBadChecksum,   // of this version, but edited or damaged
};
// Reads the trailer of the file at `path`.
[[nodiscard]] PXDUTIL_API CatalogueTrailer CheckCatalogueTrailer(const char* path);

// Adds the rows of the built-in catalogue, for hosts that keep no catalogue file. Rows that are
// there already are a fault. Where memory runs out, no row is added.
PXDUTIL_API void LoadBuiltInCatalogue(CFieldInfoMgr& catalogue);

}  // namespace pxd

namespace pxd::detail {
struct CatalogueInside;
}  // namespace pxd::detail

class PXDUTIL_API CFieldInfoMgr : public CObject {
 public:
  // What the operations answer.
  enum RetValEnum : int {
    RetSuccess = 0,           // done
    RetFieldIDNotFound = 1,   // no row has the id
    RetFieldIDExists = 2,     // a row has the id already, and stays
    RetInvalidFieldInfo = 3,  // the id is above the highest there can be
  };

  // Rows of the catalogue, which stay its own.
  using FieldInfoList = CList<const CZRGSFieldInfo*, const CZRGSFieldInfo*>;

  // The manager that was built last, null once any manager is gone.
  static CFieldInfoMgr* m_pInstance;

  // An empty catalogue, which becomes m_pInstance.
  CFieldInfoMgr();
  CFieldInfoMgr(const CFieldInfoMgr&) = delete;
  CFieldInfoMgr& operator=(const CFieldInfoMgr&) = delete;
  // Frees all rows and sets m_pInstance to null.
  ~CFieldInfoMgr() override;

  // Makes sure that a valid catalogue file of this version stands at `path`, without loading it. A
  // valid file isn't touched; any other, also one that was edited by hand, is replaced by the
  // built-in catalogue, and a missing one is written. The file is complete at every moment: the
  // new one is written beside it and then put in its place. Returns 1, or 0 where the file can't be
  // written; what was there is then as before.
  int Create(const char* path);
  // Replaces `text` by the lines of the built-in catalogue.
  void BuildFieldInfoFile(CString& text);
  // Adds a row for every line up to the end of the file or to its VersionInfo, and returns 1. The
  // checksum isn't looked at. At the first bad line it stops and returns 0, with "Line n:" and the
  // reason in `error`; the rows before it stay.
  int LoadFromFile(CStdioFile& file, CString& error);

  // Adds a copy of `info` under `id`; the id that `info` bears isn't looked at.
  RetValEnum AddField(unsigned short id, const CZRGSFieldInfo& info);

  // The row of `id`, or null.
  [[nodiscard]] const CZRGSFieldInfo* GetFieldInfo(unsigned short id) const {
    return id < FIELDINFO_MAXID ? m_vFieldInfo[id].get() : nullptr;
  }
  // The name of field `id`; where there is none, `text` stays as it was.
  RetValEnum GetFieldDescription(unsigned short id, CString& text) const;

  // Append all rows, or those that may be stored, in order of their ids.
  RetValEnum GetFieldInfoListAll(FieldInfoList& list) const;
  RetValEnum GetFieldInfoListStorable(FieldInfoList& list) const;

  // The resolution that is called `text` among those in which some field may be stored; "None" is
  // unit 8 and quantity 1. Returns 1, or 0 and leaves `resoln` as it was. A scan of all rows.
  int GetResolutionFromString(const CString& text, CResoln& resoln) const;

  // Appends the names of the resolutions in which the field of this name may be stored, each once;
  // "None" for a field without history. Returns 1, or 0 for an unknown field. A scan of all rows.
  int GetResolutionsForField(const CString& fieldName, CStringArray& names) const;
  // Appends the resolutions in which field `id` may be stored, each once; for a field without
  // history it empties `list` instead. Returns 1, or 0 for an unknown field.
  int GetResolutionsForField(unsigned short id, CZRListEx<CResoln>& list) const;
  // 1 where the field of this name may be stored in the resolution of this name, else 0.
  int ResValidForField(const CString& fieldName, const CString& resolution) const;

 protected:
  // The words for a result; empty for a value that isn't one.
  static CString GetErrorString(RetValEnum result);

  // The readers of the parts of a line. Each returns 1 for success and 0 for failure, appends to
  // the list it is given, and leaves what it had read before a failure. Only ParseFieldInfo writes
  // to `error`.
  static int ParseFieldInfo(const CString& text, CZRGSFieldInfo& info, CString& error);
  static int ParseAtomicFieldIDList(const CString& text, CZRListEx<CField>& list, CString& error);
  static int ParseResolnUpdateFieldListList(const CString& text,
                                            CZRListEx<CResolnAndUpdateFieldList>& list,
                                            CString& error);
  static int ParseResolnUpdateFieldList(const CString& text, CResolnAndUpdateFieldList& entry,
                                        CString& error);
  static int ParseStorageSettingList(const CString& text, CZRListEx<CStorageSetting>& list,
                                     CString& error);
  static int ParseStorageSetting(const CString& text, CStorageSetting& setting, CString& error);
  static int ParseResolnList(const CString& text, CZRListEx<CResoln>& list, CString& error);
  static int ParseResoln(const CString& text, CResoln& resoln, CString& error);
  int ReadFieldInfoList(CStdioFile& file, CString& error);

 private:
  friend struct pxd::detail::CatalogueInside;

  // The number of rows there can be: one above the highest id.
  static constexpr unsigned short FIELDINFO_MAXID = 522;
  // The version of the catalogue file.
  static constexpr unsigned short FIELDINFO_VERSION = 32;
  // The word that begins the file's trailer, where the lines end.
  static constexpr const char* kTrailerWord = "VersionInfo";

  // The row of an id stands at the id's place.
  std::array<std::unique_ptr<CZRGSFieldInfo>, FIELDINFO_MAXID> m_vFieldInfo;
};

// The same name without its class, which is how hosts know it.
using RetValEnum = CFieldInfoMgr::RetValEnum;

#endif
