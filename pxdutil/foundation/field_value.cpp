#include <pxdutil/foundation/field_value.h>

#include <pxdutil/foundation/archive.h>
#include <pxdutil/foundation/packed.h>

void CField::Serialize(CArchive& archive) {
  if (archive.IsStoring()) {
    archive << m_id;
  } else {
    archive >> m_id;
  }
}

CDPValueInfo::DataType CDPValueInfo::GetDataType() const {
  switch (m_FieldType) {
    case 0:
    case 1:
      return ValueFloat;
    case 4:
      return ValueLong;
    default:
      return ValueDouble;
  }
}

float CDPValue::GetFloat() const {
  return pxd::LoadAs<float>(m_bytes);
}

double CDPValue::GetDouble() const {
  return pxd::LoadAs<double>(m_bytes);
}

long CDPValue::GetLong() const {
  return pxd::LoadAs<std::int32_t>(m_bytes);
}

void CDPValue::SetFloat(float value) {
  pxd::StoreAs(m_bytes, value);
}

void CDPValue::SetDouble(double value) {
  pxd::StoreAs(m_bytes, value);
}

void CDPValue::SetLong(long value) {
  pxd::StoreAs(m_bytes, static_cast<std::int32_t>(value));
}

void* CDPValue::GetDataPtr(CDPValueInfo::DataType type) {
  switch (type) {
    case CDPValueInfo::ValueFloat:
    case CDPValueInfo::ValueLong:
    case CDPValueInfo::ValueDouble:
      return m_bytes;
  }
  return nullptr;
}
