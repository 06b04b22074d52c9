#include <pxdutil/fields/field_info.h>

#include <array>
#include <cstddef>

#include <pxdutil/foundation/archive.h>

PXDUTIL_DEFINE_RUNTIME_CLASS(CStorageSetting, CObject, kNoSchema, &CStorageSetting::CreateObject)
PXDUTIL_DEFINE_RUNTIME_CLASS(CZRGSFieldInfo, CObject, kNoSchema, &CZRGSFieldInfo::CreateObject)

namespace {

constexpr std::uint8_t kStorageSettingFormat = 1;

// The only thing that a stored row consists of.
constexpr std::uint8_t kEmptyRowFormat = 0;

// The sizes of the values of field types 0 to 4.
constexpr std::array<int, 5> kFieldSizes = {4, 4, 8, 0, 4};

void SkipFormatByte(CArchive& archive) {
  std::uint8_t format = 0;
  archive >> format;
}

// Appends as many elements as the count in the archive says; a count below 1 says none. Each
// element takes bytes of the archive, so a count beyond them ends with the archive's exception.
template <class T>
void LoadAndAppend(CArchive& archive, CZRListEx<T>& list) {
  std::int32_t count = 0;
  archive >> count;
  for (std::int32_t i = 0; i < count; ++i) {
    T element;
    element.Serialize(archive);
    list.AddTail(element);
  }
}

}  // namespace

CObject* CStorageSetting::CreateObject() {
  return new CStorageSetting;
}

int CStorageSetting::operator==(const CStorageSetting&) const {
  return 0;
}

int CStorageSetting::operator!=(const CStorageSetting&) const {
  return 1;
}

void CStorageSetting::Serialize(CArchive& archive) {
  if (archive.IsLoading()) {
    SkipFormatByte(archive);
    archive >> m_bDataPtID;
    LoadAndAppend(archive, m_ResolnList);
    return;
  }
  archive << kStorageSettingFormat << m_bDataPtID
          << static_cast<std::int32_t>(m_ResolnList.GetCount());
  for (CResoln& resoln : m_ResolnList) {
    resoln.Serialize(archive);
  }
}

bool CResolnAndUpdateFieldList::operator==(const CResolnAndUpdateFieldList& other) const {
  return m_Resoln == other.m_Resoln && m_FieldList == other.m_FieldList;
}

CObject* CZRGSFieldInfo::CreateObject() {
  return new CZRGSFieldInfo;
}

int CZRGSFieldInfo::operator==(const CZRGSFieldInfo& other) const {
  const bool equal = m_wFieldID == other.m_wFieldID && m_bFieldType == other.m_bFieldType &&
                     m_bFieldDataType == other.m_bFieldDataType &&
                     m_strFieldDescription == other.m_strFieldDescription &&
                     m_bFlags == other.m_bFlags &&
                     m_AtomicFieldIDList == other.m_AtomicFieldIDList &&
                     m_StorageSettingList == other.m_StorageSettingList &&
                     m_bStoreInSnapshot == other.m_bStoreInSnapshot;
  return equal ? 1 : 0;
}

int CZRGSFieldInfo::operator!=(const CZRGSFieldInfo& other) const {
  return *this == other ? 0 : 1;
}

// The update lists aren't touched: stored rows never held them, so emptying a row to load it anew
// has always left them in place.
void CZRGSFieldInfo::Empty() {
  m_wFieldID = 0;
  m_bFieldType = 0;
  m_bFieldDataType = 0;
  m_strFieldDescription.Empty();
  m_bFlags = 0;
  m_bStoreInSnapshot = 0;
  m_AtomicFieldIDList.RemoveAll();
  m_StorageSettingList.RemoveAll();
}

int CZRGSFieldInfo::GetFieldSize() const {
  return m_bFieldType < kFieldSizes.size() ? kFieldSizes[m_bFieldType] : 0;
}

const CZRListEx<CField>* CZRGSFieldInfo::GetUpdateFieldIDListPtr(CResoln resoln) const {
  const auto at = m_UpdateFieldMap.find(resoln);
  return at != m_UpdateFieldMap.end() ? &at->second : nullptr;
}

void CZRGSFieldInfo::SetResolnUpdateFieldList(const CZRListEx<CResolnAndUpdateFieldList>& list) {
  std::map<CResoln, CZRListEx<CField>> map;
  for (const CResolnAndUpdateFieldList& entry : list) {
    map.try_emplace(entry.m_Resoln, entry.m_FieldList);
  }
  m_UpdateFieldMap.swap(map);
}

void CZRGSFieldInfo::EmptyUpdateFieldMap() {
  m_UpdateFieldMap.clear();
}

void CZRGSFieldInfo::Serialize(CArchive& archive) {
  if (!archive.IsLoading()) {
    archive << kEmptyRowFormat;
    return;
  }
  SkipFormatByte(archive);
  archive >> m_wFieldID >> m_bFieldType >> m_bFieldDataType >> m_strFieldDescription >> m_bFlags >>
      m_bStoreInSnapshot;
  LoadAndAppend(archive, m_AtomicFieldIDList);
  LoadAndAppend(archive, m_StorageSettingList);
}
