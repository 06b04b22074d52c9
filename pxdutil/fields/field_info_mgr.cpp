#include <pxdutil/fields/field_info_mgr.h>

#include <algorithm>

CFieldInfoMgr* CFieldInfoMgr::m_pInstance = nullptr;

namespace {

// The field type of values without history, which have no resolutions.
constexpr unsigned char kNoHistory = 2;

// The name and the unit that stand for having no resolution.
constexpr const char* kNoResolution = "None";
constexpr unsigned short kNoResolutionUnit = 8;

CString NameOf(const CResoln& resoln) {
  CString name;
  resoln.GetStringForResolution(name);
  return name;
}

// Calls visit(resolution) for each resolution in which the field may be stored, in order, until it
// answers true; returns whether it did.
template <class Visit>
bool AnyResolution(const CZRGSFieldInfo& info, Visit visit) {
  for (const CStorageSetting& setting : info.GetStorageSettingList()) {
    for (const CResoln& resoln : setting.GetResolnList()) {
      if (visit(resoln)) {
        return true;
      }
    }
  }
  return false;
}

template <class Rows, class Wanted>
void AppendRows(const Rows& rows, CFieldInfoMgr::FieldInfoList& list, Wanted wanted) {
  for (const auto& row : rows) {
    if (row != nullptr && wanted(*row)) {
      list.AddTail(row.get());
    }
  }
}

}  // namespace

CFieldInfoMgr::CFieldInfoMgr() {
  m_pInstance = this;
}

CFieldInfoMgr::~CFieldInfoMgr() {
  m_pInstance = nullptr;
}

CString CFieldInfoMgr::GetErrorString(RetValEnum result) {
  switch (result) {
    case RetSuccess:
      return "NO ERROR";
    case RetFieldIDNotFound:
      return "Field ID not found";
    case RetFieldIDExists:
      return "Field ID already exists";
    case RetInvalidFieldInfo:
      return "One of the Field Info values is invalid";
  }
  return "";
}

CFieldInfoMgr::RetValEnum CFieldInfoMgr::AddField(unsigned short id, const CZRGSFieldInfo& info) {
  if (info.AreAllFieldsValid() == 0 || id >= FIELDINFO_MAXID) {
    return RetInvalidFieldInfo;
  }
  if (m_vFieldInfo[id] != nullptr) {
    return RetFieldIDExists;
  }
  m_vFieldInfo[id] = std::make_unique<CZRGSFieldInfo>(info);
  return RetSuccess;
}

CFieldInfoMgr::RetValEnum CFieldInfoMgr::GetFieldDescription(unsigned short id,
                                                             CString& text) const {
  const CZRGSFieldInfo* info = GetFieldInfo(id);
  if (info == nullptr) {
    return RetFieldIDNotFound;
  }
  info->GetFieldDescription(text);
  return RetSuccess;
}

CFieldInfoMgr::RetValEnum CFieldInfoMgr::GetFieldInfoListAll(FieldInfoList& list) const {
  AppendRows(m_vFieldInfo, list, [](const CZRGSFieldInfo&) { return true; });
  return RetSuccess;
}

CFieldInfoMgr::RetValEnum CFieldInfoMgr::GetFieldInfoListStorable(FieldInfoList& list) const {
  AppendRows(m_vFieldInfo, list,
             [](const CZRGSFieldInfo& info) { return info.GetIsStorable() != 0; });
  return RetSuccess;
}

int CFieldInfoMgr::GetResolutionFromString(const CString& text, CResoln& resoln) const {
  if (text == kNoResolution) {
    resoln.SetResolnUnit(kNoResolutionUnit);
    resoln.SetResolnQty(1);
    return 1;
  }
  const auto matches = [&](const CResoln& candidate) {
    if (NameOf(candidate) != text) {
      return false;
    }
    resoln = candidate;
    return true;
  };
  const bool found = std::any_of(m_vFieldInfo.begin(), m_vFieldInfo.end(), [&](const auto& row) {
    return row != nullptr && AnyResolution(*row, matches);
  });
  return found ? 1 : 0;
}

int CFieldInfoMgr::GetResolutionsForField(const CString& fieldName, CStringArray& names) const {
  const auto row =
      std::find_if(m_vFieldInfo.begin(), m_vFieldInfo.end(), [&](const auto& candidate) {
        return candidate != nullptr && candidate->Description() == fieldName;
      });
  if (row == m_vFieldInfo.end()) {
    return 0;
  }
  if ((*row)->GetFieldType() == kNoHistory) {
    names.Add(kNoResolution);
    return 1;
  }
  AnyResolution(**row, [&](const CResoln& resoln) {
    const CString name = NameOf(resoln);
    if (std::find(names.begin(), names.end(), name) == names.end()) {
      names.Add(name);
    }
    return false;
  });
  return 1;
}

// Unlike the form for names this one has no word for a field without history, and says so by an
// empty list.
int CFieldInfoMgr::GetResolutionsForField(unsigned short id, CZRListEx<CResoln>& list) const {
  const CZRGSFieldInfo* info = GetFieldInfo(id);
  if (info == nullptr) {
    return 0;
  }
  if (info->GetFieldType() == kNoHistory) {
    list.RemoveAll();
    return 1;
  }
  AnyResolution(*info, [&](const CResoln& resoln) {
    if (list.Find(resoln) == nullptr) {
      list.AddTail(resoln);
    }
    return false;
  });
  return 1;
}

int CFieldInfoMgr::ResValidForField(const CString& fieldName, const CString& resolution) const {
  CStringArray names;
  GetResolutionsForField(fieldName, names);
  return std::find(names.begin(), names.end(), resolution) != names.end() ? 1 : 0;
}
