#include <pxdutil/datapoints/data_point.h>

#include <cstddef>

PXDUTIL_DEFINE_RUNTIME_CLASS(CDPDataPt, CObject, kNoSchema, nullptr)
PXDUTIL_DEFINE_RUNTIME_CLASS(CDPADataPtAr, CObject, kNoSchema, nullptr)

void CDPDataPt::GetDPValueInfoForColEx(unsigned int col, CField& field, CDPValueInfo& info,
                                       CDPValue& value) const {
  GetDPValueForCol(col, value);
  GetDPValueInfoForCol(col, field, info);
}

void CDPDataPt::GetDPValueForColEx(unsigned int col, CDPValue& value, unsigned char) const {
  GetDPValueForCol(col, value);
}

void CDPDataPt::SetDPValueForColEx(unsigned int col, CDPValue& value, unsigned char) {
  SetDPValueForCol(col, value);
}

void CDPDataPt::ResetPrevDailyRec() {}

double CDPDataPt::GetDoubleValForCol(unsigned int) const {
  return 0.0;
}

void CDPDataPt::SetDoubleValForCol(unsigned int, double) {}

void CDPDataPt::SetZRDateTime(unsigned short, unsigned long) {}

int CDPDataPt::HasDblValBetween(double, double) const {
  return 0;
}

int CDPDataPt::HasVolBetween(double, double) const {
  return 0;
}

int CDPDataPt::HasDblValDifferenceGreaterThan(double, CDPDataPt*) const {
  return 0;
}

void CDPDataPt::SetToNull() {
  ClearFlags();
}

bool CDPDataPt::IsAnEndOfMinuteTick() const {
  return false;
}

bool CDPDataPt::IsAnEndOfSecondTick() const {
  return false;
}

CDPDataPt* CDPADataPtAr::GetAt(unsigned int index) const {
  return reinterpret_cast<CDPDataPt*>(reinterpret_cast<unsigned char*>(m_first) +
                                      std::size_t{index} * m_first->GetObjectSize());
}

unsigned int CDPADataPtAr::GetBufSizeInBytes() const {
  return m_first->GetObjectSize() * m_count;
}
