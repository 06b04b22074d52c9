#include <pxdutil/datapoints/ticks.h>

#include <pxdutil/datapoints/detail/record_point_impl.h>
#include <pxdutil/fields/field_info_mgr.h>
#include <pxdutil/foundation/fault.h>
#include <pxdutil/foundation/numeric.h>

PXDUTIL_DEFINE_RUNTIME_CLASS(CDPTDataPtTick, CDPDataPt, kNoSchema, nullptr)
PXDUTIL_DEFINE_RUNTIME_CLASS(CDPTDblTick, CDPTDataPtTick, kNoSchema, nullptr)
PXDUTIL_DEFINE_RUNTIME_CLASS(CDPTDblDblTick, CDPTDataPtTick, kNoSchema, nullptr)

template class pxd::detail::RecordPoint<CDPTDblTick, CDPTDataPtTick, CDPSTDblTick,
                                        pxd::detail::kTickRules>;
template class pxd::detail::RecordPoint<CDPTDblDblTick, CDPTDataPtTick, CDPSTDblDblTick,
                                        pxd::detail::kTradeTickRules>;

namespace {

constexpr unsigned int kUpTickColumn = 2;
constexpr unsigned int kDownTickColumn = 3;

bool IsTickWordColumn(unsigned int col) {
  return col == kUpTickColumn || col == kDownTickColumn;
}

const CZRGSFieldInfo& CatalogueEntryOf(const CField& field) {
  const CFieldInfoMgr* const catalogue = CFieldInfoMgr::m_pInstance;
  const CZRGSFieldInfo* const entry =
      catalogue != nullptr ? catalogue->GetFieldInfo(field.GetFieldVal()) : nullptr;
  if (entry == nullptr) {
    pxd::Fault("a tick's column is described by a field without a catalogue entry");
  }
  return *entry;
}

void Describe(const CZRGSFieldInfo& entry, CDPValueInfo& info) {
  info.SetFieldID(entry.GetFieldID());
  info.SetFieldType(entry.GetFieldType());
  info.SetDataSize(static_cast<unsigned int>(entry.GetFieldSize()));
}

}  // namespace

void CDPTDblTick::GetDPValueInfoForCol(unsigned int, CField field, CDPValueInfo& info) const {
  Describe(CatalogueEntryOf(field), info);
}

void CDPTDblTick::SetStringValForCol(unsigned int col, CString text) {
  if (!IsStored(col)) {
    pxd::detail::ThrowInvalidColumn(CDPDataPtException::DPErrorPlain);
  }
  RecordPoint::SetStringValForCol(col, text);
}

double CDPTDblTick::GetDoubleValForCol(unsigned int) const {
  return RecordPoint::GetDoubleValForCol(0);
}

void CDPTDblTick::SetDoubleValForCol(unsigned int, double value) {
  RecordPoint::SetDoubleValForCol(0, value);
}

bool CDPTDblTick::IsAnEndOfMinuteTick() const {
  return m_Record.IsAnEndOfMinuteTick();
}

bool CDPTDblTick::IsAnEndOfSecondTick() const {
  return m_Record.IsAnEndOfSecondTick();
}

void CDPTDblDblTick::SetValues(float price, long volume, long tickDir) {
  m_Record.m_Price = price;
  m_Record.m_Vol = static_cast<float>(pxd::Low32(volume));
  m_Record.m_TickDir = pxd::Low32(tickDir);
}

void CDPTDblDblTick::GetDPValueInfoForCol(unsigned int col, CField field,
                                          CDPValueInfo& info) const {
  const CZRListEx<CField>& parts = CatalogueEntryOf(field).GetAtomicFieldIDList();
  POSITION at = parts.FindIndex(static_cast<std::ptrdiff_t>(col));
  if (at == nullptr) {
    pxd::Fault("a tick's column lies beyond the atomic list of its field");
  }
  Describe(CatalogueEntryOf(parts.GetAt(at)), info);
}

void CDPTDblDblTick::GetDPValueForCol(unsigned int col, CDPValue& value) const {
  const std::int32_t word = m_Record.m_TickDir;
  if (col == kUpTickColumn) {
    value.SetLong(word > 0 ? word : 0);
  } else if (col == kDownTickColumn) {
    value.SetLong(word < 0 ? pxd::WrappingNegate(word) : 0);
  } else {
    RecordPoint::GetDPValueForCol(col, value);
  }
}

void CDPTDblDblTick::SetDPValueForCol(unsigned int col, CDPValue& value) {
  if (IsTickWordColumn(col)) {
    m_Record.m_TickDir = pxd::Low32(value.GetLong());
  } else {
    RecordPoint::SetDPValueForCol(col, value);
  }
}

CString CDPTDblDblTick::GetStringValForCol(unsigned int col) {
  if (!IsTickWordColumn(col)) {
    return RecordPoint::GetStringValForCol(col);
  }
  CString text;
  text.Format("%d", int{m_Record.m_TickDir});
  return text;
}

void CDPTDblDblTick::SetDoubleValForCol(unsigned int col, double value) {
  if (IsTickWordColumn(col)) {
    m_Record.m_TickDir = pxd::Saturated<std::int32_t>(value);
  } else {
    RecordPoint::SetDoubleValForCol(col, value);
  }
}

bool CDPTDblDblTick::IsAnEndOfMinuteTick() const {
  return m_Record.IsAnEndOfMinuteTick();
}

bool CDPTDblDblTick::IsAnEndOfSecondTick() const {
  return m_Record.IsAnEndOfSecondTick();
}

bool CDPTDblDblTick::TickNetted(CDPDataPt* other) {
  if (!other->IsKindOf(RUNTIME_CLASS(CDPTDblDblTick))) {
    return false;
  }
  const CDPSTDblDblTick& tick = static_cast<const CDPTDblDblTick*>(other)->GetDPST();
  if (!m_Record.HasStampOf(tick) || m_Record.m_Price != tick.m_Price) {
    return false;
  }
  m_Record.m_TickDir = pxd::WrappingAdd(m_Record.m_TickDir, tick.m_TickDir < 0 ? -1 : 1);
  m_Record.m_Vol += tick.m_Vol;
  return true;
}
