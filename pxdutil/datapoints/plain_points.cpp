#include <pxdutil/datapoints/plain_points.h>

#include <algorithm>

#include <pxdutil/datapoints/markers.h>
#include <pxdutil/foundation/numeric.h>
#include <pxdutil/quotes/quote.h>

PXDUTIL_DEFINE_RUNTIME_CLASS(CDPOptDaily, CDPCDataPtCalculated, kNoSchema, nullptr)
PXDUTIL_DEFINE_RUNTIME_CLASS(CDPCnv, CDPCDataPtCalculated, kNoSchema, nullptr)

namespace {

constexpr unsigned char kDaySelector = 4;

// What a column's value is: CDPOptDaily shows floats, CDPCnv doubles.
struct ColumnKind {
  std::uint8_t fieldType;
  unsigned int size;
};
constexpr ColumnKind KindOf(const CDPRecOptDaily&) {
  return {1, 4};
}
constexpr ColumnKind KindOf(const CDPRecCnv&) {
  return {2, 8};
}

// Date, time, and then each column's field, of which every one is required.
template <class Record, std::size_t N>
int FillFromQuote(Record& record, const std::array<pxd::detail::PlainColumn, N>& columns,
                  const CZRGSQuote& quote) {
  if (!record.ReadFrom(quote, pxd::kPlainThenBarStamp)) {
    return 0;
  }
  for (unsigned int col = 0; col < N; ++col) {
    double number = 0.0;
    if (quote.GetFieldData(columns[col].field, number) == 0) {
      return 0;
    }
    record.SetNumber(col, number);
  }
  return 1;
}

}  // namespace

CDPRecOptDaily& CDPRecOptDaily::operator=(const CDPRecOptDaily& other) {
  Stamp::operator=(other);
  m_PutVol = other.m_PutVol;
  m_CallVol = other.m_CallVol;
  m_PutOpenInt = other.m_PutOpenInt;
  m_CallOpenInt = other.m_CallOpenInt;
  m_ImpliedVol = other.m_ImpliedVol;
  m_VolCount = other.m_VolCount;
  return *this;
}

void CDPRecOptDaily::SetToNull() {
  *this = CDPRecOptDaily();
  m_VolSum = 0.0F;
  SetStampToNull();
}

int CDPRecOptDaily::IsNull() const {
  return m_Date == CZRDate::GetNullJulianDate() && HasNullPrice() != 0 ? 1 : 0;
}

int CDPRecOptDaily::HasNullPrice() const {
  return m_PutVol == 0 && m_CallVol == 0 && m_PutOpenInt == 0 && m_CallOpenInt == 0 &&
                 m_ImpliedVol == 0.0F
             ? 1
             : 0;
}

bool CDPRecOptDaily::Equals(const CDPRecOptDaily& other) const {
  return HasStampOf(other) && m_PutVol == other.m_PutVol && m_CallVol == other.m_CallVol &&
         m_PutOpenInt == other.m_PutOpenInt && m_CallOpenInt == other.m_CallOpenInt &&
         m_ImpliedVol == other.m_ImpliedVol;
}

double CDPRecOptDaily::GetNumber(unsigned int col) const {
  switch (col) {
    case 0:
      return m_PutVol;
    case 1:
      return m_CallVol;
    case 2:
      return m_PutOpenInt;
    case 3:
      return m_CallOpenInt;
    default:
      return static_cast<double>(m_ImpliedVol);
  }
}

void CDPRecOptDaily::SetNumber(unsigned int col, double number) {
  switch (col) {
    case 0:
      m_PutVol = pxd::Saturated<std::uint32_t>(number);
      break;
    case 1:
      m_CallVol = pxd::Saturated<std::uint32_t>(number);
      break;
    case 2:
      m_PutOpenInt = pxd::Saturated<std::int32_t>(number);
      break;
    case 3:
      m_CallOpenInt = pxd::Saturated<std::int32_t>(number);
      break;
    default:
      m_ImpliedVol = static_cast<float>(number);
      break;
  }
}

int CDPRecOptDaily::SetFromQuote(const CZRGSQuote& quote) {
  return FillFromQuote(*this, pxd::detail::kOptDailyColumns, quote);
}

int CDPRecCnv::SetFromQuote(const CZRGSQuote& quote) {
  return FillFromQuote(*this, pxd::detail::kCnvColumns, quote);
}

bool CDPRecCnv::IsAnEndOfMinuteTick() const {
  return m_Winning == static_cast<double>(pxd::kEndOfMinute);
}

bool CDPRecCnv::IsAnEndOfSecondTick() const {
  return m_Winning == static_cast<double>(pxd::kEndOfSecond);
}

namespace pxd::detail {

#define PXDUTIL_PLAIN_TEMPLATE template <class Self, class RecordType, const auto& kColumns>
#define PXDUTIL_PLAIN PlainPoint<Self, RecordType, kColumns>

PXDUTIL_PLAIN_TEMPLATE
void PXDUTIL_PLAIN::Serialize(CArchive&) {}

PXDUTIL_PLAIN_TEMPLATE
unsigned int PXDUTIL_PLAIN::GetNumCols() const {
  return m_NumCols;
}

PXDUTIL_PLAIN_TEMPLATE
CString PXDUTIL_PLAIN::GetStringHeaderForCol(unsigned int col) {
  return col < kColumns.size() ? CString(kColumns[col].header) : CString();
}

PXDUTIL_PLAIN_TEMPLATE
unsigned int PXDUTIL_PLAIN::GetObjectSize() const {
  return static_cast<unsigned int>(sizeof(Self));
}

PXDUTIL_PLAIN_TEMPLATE
int PXDUTIL_PLAIN::GetColForColField(const CField&, const CField& colField,
                                     unsigned int& col) const {
  const auto found = std::find_if(kColumns.begin(), kColumns.end(), [&](const PlainColumn& column) {
    return column.field == colField.GetFieldVal();
  });
  if (found == kColumns.end()) {
    return 0;
  }
  col = static_cast<unsigned int>(found - kColumns.begin());
  return 1;
}

PXDUTIL_PLAIN_TEMPLATE
void PXDUTIL_PLAIN::GetDPValueInfoForCol(unsigned int col, CField, CDPValueInfo& info) const {
  if (col < kColumns.size()) {
    const ColumnKind kind = KindOf(m_Record);
    info.SetFieldID(kColumns[col].field);
    info.SetFieldType(kind.fieldType);
    info.SetDataSize(kind.size);
  }
}

PXDUTIL_PLAIN_TEMPLATE
void PXDUTIL_PLAIN::GetDPValueForCol(unsigned int col, CDPValue& value) const {
  this->GetDPValueForColEx(col, value, kDaySelector);
}

PXDUTIL_PLAIN_TEMPLATE
void PXDUTIL_PLAIN::SetDPValueForCol(unsigned int col, CDPValue& value) {
  this->SetDPValueForColEx(col, value, kDaySelector);
}

PXDUTIL_PLAIN_TEMPLATE
CDPDataPt::DataType PXDUTIL_PLAIN::GetDataTypeForCol(unsigned int col) {
  return col < kColumns.size() ? kColumns[col].dataType : DataTypeNone;
}

PXDUTIL_PLAIN_TEMPLATE
CString PXDUTIL_PLAIN::GetStringValForCol(unsigned int) {
  return "N/A";
}

PXDUTIL_PLAIN_TEMPLATE
void PXDUTIL_PLAIN::SetStringValForCol(unsigned int, CString) {}

PXDUTIL_PLAIN_TEMPLATE
CZRDateTime PXDUTIL_PLAIN::GetZRDateTime() {
  return m_Record.GetDateTime();
}

PXDUTIL_PLAIN_TEMPLATE
void PXDUTIL_PLAIN::GetDPDateTime(unsigned short& date, unsigned long& time) const {
  date = m_Record.m_Date;
  time = m_Record.m_Time;
}

PXDUTIL_PLAIN_TEMPLATE
void PXDUTIL_PLAIN::SetZRDateTime(unsigned short date, unsigned long time) {
  m_Record.m_Date = date;
  m_Record.m_Time = static_cast<std::uint32_t>(time);
}

PXDUTIL_PLAIN_TEMPLATE
void PXDUTIL_PLAIN::SetZRDateTime(CZRDateTime dateTime) {
  m_Record.SetDateTime(dateTime);
}

PXDUTIL_PLAIN_TEMPLATE
int PXDUTIL_PLAIN::SetFromQuote(CZRGSQuote& quote) {
  return m_Record.SetFromQuote(quote);
}

PXDUTIL_PLAIN_TEMPLATE
int PXDUTIL_PLAIN::AppendToQuote(CZRGSQuote&) const {
  return 0;
}

PXDUTIL_PLAIN_TEMPLATE
void PXDUTIL_PLAIN::SetToDummyData(unsigned int) {}

PXDUTIL_PLAIN_TEMPLATE
int PXDUTIL_PLAIN::IsEqualTo(CDPDataPt* other) const {
  return other->IsKindOf(Self::GetThisClass()) &&
                 m_Record == static_cast<const Self*>(other)->GetDPST()
             ? 1
             : 0;
}

PXDUTIL_PLAIN_TEMPLATE
void PXDUTIL_PLAIN::SetToNull() {
  m_Record.SetToNull();
}

PXDUTIL_PLAIN_TEMPLATE
int PXDUTIL_PLAIN::IsNull() const {
  return m_Record.IsNull();
}

PXDUTIL_PLAIN_TEMPLATE
int PXDUTIL_PLAIN::HasNullPrice() const {
  return m_Record.HasNullPrice();
}

PXDUTIL_PLAIN_TEMPLATE
int PXDUTIL_PLAIN::HasDeleteValue() const {
  return 0;
}

PXDUTIL_PLAIN_TEMPLATE
int PXDUTIL_PLAIN::AdjustData(unsigned int, float, int) {
  return 0;
}

PXDUTIL_PLAIN_TEMPLATE
CDPCDataPtCalculated::AddDataPtReturn PXDUTIL_PLAIN::AddDataPt(const CDPDataPt*, const CResoln&,
                                                               const CZRGSSession&, int, TrendType&,
                                                               const CDPDataPt*) {
  return AddOutsideSession;
}

#undef PXDUTIL_PLAIN_TEMPLATE
#undef PXDUTIL_PLAIN

template class PlainPoint<CDPOptDaily, CDPRecOptDaily, kOptDailyColumns>;
template class PlainPoint<CDPCnv, CDPRecCnv, kCnvColumns>;

}  // namespace pxd::detail

void CDPOptDaily::GetDPValueForColEx(unsigned int col, CDPValue& value,
                                     unsigned char selector) const {
  if (col < m_NumCols) {
    const CDPRecOptDaily& record = selector == 5 || selector == 6 ? m_PrevDailyRec : m_Record;
    value.SetFloat(static_cast<float>(record.GetNumber(col)));
  }
}

void CDPOptDaily::SetDPValueForColEx(unsigned int col, CDPValue& value, unsigned char selector) {
  if (col < m_NumCols) {
    CDPRecOptDaily& record = selector == kDaySelector ? m_Record : m_PrevDailyRec;
    record.SetNumber(col, static_cast<double>(value.GetFloat()));
  }
}

void CDPOptDaily::SetEqualTo(CDPDataPt* other) {
  if (other->IsKindOf(RUNTIME_CLASS(CDPOptDaily))) {
    *this = *static_cast<const CDPOptDaily*>(other);
  }
}

void CDPCnv::GetDPValueForColEx(unsigned int col, CDPValue& value, unsigned char) const {
  if (col < m_NumCols) {
    value.SetDouble(m_Record.GetNumber(col));
  }
}

void CDPCnv::SetDPValueForColEx(unsigned int col, CDPValue& value, unsigned char) {
  if (col < m_NumCols) {
    m_Record.SetNumber(col, value.GetDouble());
  }
}

void CDPCnv::SetEqualTo(CDPDataPt* other) {
  if (other->IsKindOf(RUNTIME_CLASS(CDPCnv)) && other->HasNullPrice() == 0) {
    *this = *static_cast<const CDPCnv*>(other);
  }
}

bool CDPCnv::IsAnEndOfMinuteTick() const {
  return m_Record.IsAnEndOfMinuteTick();
}

bool CDPCnv::IsAnEndOfSecondTick() const {
  return m_Record.IsAnEndOfSecondTick();
}
