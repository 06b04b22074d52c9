// The reading of the catalogue file: the lines, and the lists within a line.
//
// The list readers differ in what they take for an error, and hosts' edited files rely on how. Each
// difference stands where it is made.
#include <cstddef>
#include <cstdlib>

#include <pxdutil/fields/field_info_mgr.h>
#include <pxdutil/foundation/file.h>
#include <pxdutil/reference/list_parser.h>

namespace {

constexpr int kLineItems = 14;

constexpr const char* kAtomicListError = "Error parsing Atomic Field ID List : ";
constexpr const char* kStorageListError = "Error parsing Storage Setting List : ";

// The items of one bracketed list, taken from the front.
class Items {
 public:
  explicit Items(const CString& text)
      : m_broken(m_list.Parse(text) != 0), m_next(m_list.GetHeadPosition()) {}
  Items(const Items&) = delete;
  Items& operator=(const Items&) = delete;

  // Whether the text isn't a well-formed list. There may be items all the same: those that were
  // complete before the brackets went wrong.
  [[nodiscard]] bool Broken() const { return m_broken; }
  [[nodiscard]] std::ptrdiff_t Count() const { return m_list.GetCount(); }
  [[nodiscard]] bool HasNext() const { return m_next != nullptr; }
  // The next item; there must be one.
  [[nodiscard]] const CString& Next() { return m_list.GetNext(m_next); }

 private:
  CStrListParser m_list{'{', '}', ','};
  bool m_broken;
  POSITION m_next;
};

// The number that `text` begins with, cut to the width of T; 0 where it begins with none.
template <class T>
T NumberIn(const CString& text) {
  return static_cast<T>(std::strtoul(text, nullptr, 10));
}

// Puts `words` in front of `error` and returns the result of a failure.
int FailWith(const char* words, CString& error) {
  error = words + error;
  return 0;
}

}  // namespace

int CFieldInfoMgr::LoadFromFile(CStdioFile& file, CString& error) {
  return ReadFieldInfoList(file, error);
}

int CFieldInfoMgr::ReadFieldInfoList(CStdioFile& file, CString& error) {
  CZRGSFieldInfo info;
  CString line;
  for (int number = 1; file.ReadString(line) != 0; ++number) {
    if (line.Str().starts_with(kTrailerWord)) {
      break;
    }
    bool good = ParseFieldInfo(line, info, error) != 0;
    if (good) {
      const RetValEnum result = AddField(info.GetFieldID(), info);
      good = result == RetSuccess;
      if (!good) {
        error = GetErrorString(result);
      }
    }
    if (!good) {
      CString place;
      place.Format("Line %d:", number);
      return FailWith(place, error);
    }
  }
  return 1;
}

int CFieldInfoMgr::ParseFieldInfo(const CString& text, CZRGSFieldInfo& info, CString& error) {
  Items items(text);
  if (items.Count() != kLineItems) {
    error.Format("There should be %d parameters for the FieldInfo line, but I found %d", kLineItems,
                 static_cast<int>(items.Count()));
    return 0;
  }
  if (items.Broken()) {
    return 0;
  }

  info.SetFieldDescription(items.Next());
  info.SetFieldID(NumberIn<unsigned short>(items.Next()));
  info.SetFieldDataType(NumberIn<unsigned char>(items.Next()));
  info.SetFieldType(NumberIn<unsigned char>(items.Next()));

  constexpr void (CZRGSFieldInfo::*kBooleans[])(int) = {
      &CZRGSFieldInfo::SetStoreInSnapshot,
      &CZRGSFieldInfo::SetIsStorable,
      &CZRGSFieldInfo::SetIsProvidedByServer,
      &CZRGSFieldInfo::SetIsAffectedByStockSplit,
      &CZRGSFieldInfo::SetIsAffectedByDistribution,
      &CZRGSFieldInfo::SetIsAffectedByPriceMultiplier,
      &CZRGSFieldInfo::SetIsAffectedByVolumeMultiplier,
  };
  for (const auto set : kBooleans) {
    const long value = std::strtol(items.Next(), nullptr, 10);
    if (value != 0 && value != 1) {
      error = "Expecting a 0 or a 1 for boolean value";
      return 0;
    }
    (info.*set)(static_cast<int>(value));
  }

  CZRListEx<CField> atomicList;
  if (ParseAtomicFieldIDList(items.Next(), atomicList, error) == 0) {
    return FailWith(kAtomicListError, error);
  }
  info.SetAtomicFieldList(atomicList);

  CZRListEx<CResolnAndUpdateFieldList> updateList;
  if (ParseResolnUpdateFieldListList(items.Next(), updateList, error) == 0) {
    // The update list has never had words of its own.
    return FailWith(kAtomicListError, error);
  }
  info.SetResolnUpdateFieldList(updateList);

  CZRListEx<CStorageSetting> storageList;
  if (ParseStorageSettingList(items.Next(), storageList, error) == 0) {
    return FailWith(kStorageListError, error);
  }
  info.SetStorageSettingList(storageList);
  return 1;
}

int CFieldInfoMgr::ParseAtomicFieldIDList(const CString& text, CZRListEx<CField>& list, CString&) {
  Items items(text);
  if (!items.HasNext()) {
    return 1;  // also for text without brackets
  }
  if (items.Broken()) {
    return 0;
  }
  while (items.HasNext()) {
    list.AddTail(CField(NumberIn<unsigned short>(items.Next())));
  }
  return 1;
}

// The failure of an entry shows only where the entry is the last one; any other bad entry is left
// out without a word.
int CFieldInfoMgr::ParseResolnUpdateFieldListList(const CString& text,
                                                  CZRListEx<CResolnAndUpdateFieldList>& list,
                                                  CString& error) {
  Items items(text);
  if (!items.HasNext()) {
    return 1;  // also for text without brackets
  }
  if (items.Broken()) {
    return 0;
  }
  int result = 1;
  while (items.HasNext()) {
    CResolnAndUpdateFieldList entry;
    result = ParseResolnUpdateFieldList(items.Next(), entry, error);
    if (result != 0) {
      list.AddTail(entry);
    }
  }
  return result;
}

// Neither the number of items nor the splitting is tested: two items are read where they are there,
// and nothing behind them matters.
int CFieldInfoMgr::ParseResolnUpdateFieldList(const CString& text, CResolnAndUpdateFieldList& entry,
                                              CString& error) {
  Items items(text);
  if (!items.HasNext() || ParseResoln(items.Next(), entry.m_Resoln, error) == 0) {
    return 0;
  }
  return items.HasNext() ? ParseAtomicFieldIDList(items.Next(), entry.m_FieldList, error) : 0;
}

// A bad setting is taken as far as it could be read.
int CFieldInfoMgr::ParseStorageSettingList(const CString& text, CZRListEx<CStorageSetting>& list,
                                           CString& error) {
  Items items(text);
  if (items.Broken()) {
    return 0;  // unlike the other lists, text without brackets isn't an empty list
  }
  while (items.HasNext()) {
    CStorageSetting setting;
    ParseStorageSetting(items.Next(), setting, error);
    list.AddTail(setting);
  }
  return 1;
}

int CFieldInfoMgr::ParseStorageSetting(const CString& text, CStorageSetting& setting,
                                       CString& error) {
  Items items(text);
  if (items.Count() != 2) {
    return 0;
  }
  setting.SetDataPtID(NumberIn<unsigned char>(items.Next()));
  CZRListEx<CResoln> resolnList;
  if (ParseResolnList(items.Next(), resolnList, error) == 0) {
    return 0;
  }
  setting.SetResolnList(resolnList);
  return 1;
}

// A bad resolution is taken too: it repeats the one before it, or as much of it as wasn't read.
int CFieldInfoMgr::ParseResolnList(const CString& text, CZRListEx<CResoln>& list, CString& error) {
  Items items(text);
  if (!items.HasNext() || items.Broken()) {
    return 0;  // unlike the other lists, this one must not be empty
  }
  CResoln resoln;
  while (items.HasNext()) {
    ParseResoln(items.Next(), resoln, error);
    list.AddTail(resoln);
  }
  return 1;
}

int CFieldInfoMgr::ParseResoln(const CString& text, CResoln& resoln, CString&) {
  Items items(text);
  if (items.Count() != 2 || items.Broken()) {
    return 0;
  }
  resoln.SetResolnUnit(NumberIn<unsigned short>(items.Next()));
  resoln.SetResolnQty(NumberIn<unsigned short>(items.Next()));
  return 1;
}
