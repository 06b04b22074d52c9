#include <pxdutil/foundation/object.h>

const CRuntimeClass CObject::classCObject = {
    "CObject", static_cast<int>(sizeof(CObject)), kNoSchema, nullptr, nullptr, nullptr, nullptr};

CObject::~CObject() = default;

const CRuntimeClass* CObject::GetRuntimeClass() const {
  return RUNTIME_CLASS(CObject);
}

void CObject::Serialize(CArchive&) {}

void CObject::AssertValid() const {}

void CObject::Dump(CDumpContext&) const {}

bool CObject::IsKindOf(const CRuntimeClass* record) const noexcept {
  return GetRuntimeClass()->IsDerivedFrom(record);
}

CObject* CRuntimeClass::CreateObject() const {
  return m_pfnCreateObject != nullptr ? m_pfnCreateObject() : nullptr;
}

bool CRuntimeClass::IsDerivedFrom(const CRuntimeClass* base) const noexcept {
  const CRuntimeClass* record = this;
  while (record != nullptr && record != base) {
    record = record->m_pfnGetBaseClass != nullptr ? record->m_pfnGetBaseClass() : nullptr;
  }
  return record != nullptr;
}

extern "C" void InitPXDUtilDll(void) {}
