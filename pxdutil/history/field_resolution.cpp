#include <pxdutil/history/field_resolution.h>

#include <pxdutil/history/detail/catalogue.h>
#include <pxdutil/history/detail/stored_forms.h>

using pxd::detail::CatalogueEntryOf;
using pxd::detail::NumberIn;

namespace {

constexpr std::uint8_t kFormat = 1;
constexpr unsigned short kDayUnit = 4;

// Texts fit a buffer of this many characters, NUL included; callers have one of just that size.
constexpr int kTextBuffer = 300;

// Field types of the catalogue.
constexpr unsigned char kPrice = 0;
constexpr unsigned char kVolume = 1;
constexpr unsigned char kNoHistory = 2;
constexpr unsigned char kRecord = 3;

// What HasVolume says of where the volume stands.
constexpr int kVolumeIsTheValue = 0;
constexpr int kVolumeOfTick = 1;
constexpr int kVolumeOfBar = 7;

bool IsTick(const CFieldResoln& pair) {
  return pair.GetResoln().GetResolnUnitType() == CResoln::ResolnTypeTick;
}

unsigned char FieldTypeOf(const CFieldResoln& pair) {
  return CatalogueEntryOf(pair.GetField().GetFieldVal()).GetFieldType();
}

// What surrounds quantity and unit in the forms for people.
struct Frame {
  const char* before;
  const char* behind;
};

const Frame* FrameOf(StringFormat format) {
  static constexpr Frame kPlain = {" ", ""};
  static constexpr Frame kTabbed = {"\t", ""};
  static constexpr Frame kBracketed = {" [", "]"};
  switch (format) {
    case StringFormatPlain:
      return &kPlain;
    case StringFormatTabbed:
      return &kTabbed;
    case StringFormatBracketed:
      return &kBracketed;
    case StringFormatMachine:
      return nullptr;
  }
  return nullptr;
}

bool IsKnown(StringFormat format) {
  return format >= StringFormatPlain && format <= StringFormatBracketed;
}

// Takes the item up to the next comma off `rest`. Without a comma there is no whole item, and
// nothing changes.
bool TakeItem(CString& rest, CString& item) {
  const int comma = rest.Find(',');
  if (comma < 0) {
    return false;
  }
  item = rest.Left(comma);
  rest = rest.Mid(comma + 1);
  return true;
}

}  // namespace

unsigned long CFieldResoln::GetDWORD() const {
  const std::uint32_t high = std::uint32_t{m_pair.wFieldID} << 16;
  const std::uint32_t low = m_pair.resolution.wUnit * 4096U + m_pair.resolution.wQuantity;
  return high + low;
}

CString CFieldResoln::GetString(StringFormat format) const {
  if (!IsKnown(format)) {
    return {};
  }
  const CString& name = CatalogueEntryOf(m_pair.wFieldID).Description();
  const CString unit = CResoln::GetStringForResolnUnit(m_pair.resolution.wUnit);
  const int quantity = m_pair.resolution.wQuantity;

  CString text;
  if (const Frame* const frame = FrameOf(format); frame == nullptr) {
    text.Format("%u,%s,%d,%u", unsigned{m_pair.wFieldID}, name.GetString(), quantity,
                unsigned{m_pair.resolution.wUnit});
  } else if (unit.IsEmpty()) {
    text = name.GetString();
  } else {
    // The plural goes behind everything, a closing bracket included: other modules know the texts
    // in this form.
    text.Format("%s%s%d %s%s%s", name.GetString(), frame->before, quantity, unit.GetString(),
                frame->behind, quantity > 1 ? "s" : "");
  }
  return text.Left(kTextBuffer - 1);
}

int CFieldResoln::SetString(const CString& text, StringFormat format) {
  if (!IsKnown(format)) {
    return 0;
  }
  if (format != StringFormatMachine) {
    return 1;
  }
  CString rest = text;
  CString item;
  if (TakeItem(rest, item)) {
    m_pair.wFieldID = NumberIn(item);
  }
  TakeItem(rest, item);  // the name
  if (TakeItem(rest, item)) {
    CResoln resoln = GetResoln();
    resoln.SetResolnQty(NumberIn(item));
    if (!rest.IsEmpty()) {
      resoln.SetResolnUnit(NumberIn(rest));
    }
    SetResoln(resoln);
  }
  return 1;
}

int CFieldResoln::HasOHLC() const {
  static_cast<void>(CatalogueEntryOf(m_pair.wFieldID));
  const bool isRecord = m_pair.wFieldID >= 200 && m_pair.wFieldID <= 202;  // bid, trade and ask
  return isRecord && !IsTick(*this) ? 1 : 0;
}

int CFieldResoln::HasPrice() const {
  const unsigned char type = FieldTypeOf(*this);
  const bool hasPrice = type == kPrice || type == kNoHistory || type == kRecord;
  return hasPrice && IsTick(*this) ? 1 : 0;
}

int CFieldResoln::HasVolume(int& kind) const {
  switch (FieldTypeOf(*this)) {
    case kVolume:
      kind = kVolumeIsTheValue;
      return 1;
    case kRecord:
      kind = IsTick(*this) ? kVolumeOfTick : kVolumeOfBar;
      return 1;
    default:
      return 0;
  }
}

int CFieldResoln::HasOpenInterest() const {
  return m_pair.resolution.wUnit == kDayUnit ? 1 : 0;
}

int CFieldResoln::GetStoreDateWithEachElement() const {
  switch (GetResoln().GetResolnUnitType()) {
    case CResoln::ResolnTypeTick:
    case CResoln::ResolnTypeSecond:
    case CResoln::ResolnTypeMinute:
      return 0;
    case CResoln::ResolnTypeDay:
    case CResoln::ResolnTypeWeek:
    case CResoln::ResolnTypeMonth:
    case CResoln::ResolnTypeYear:
      return 1;
  }
  return 0;
}

int CFieldResoln::CanBeSampledInto(const CFieldResoln&) const {
  return 0;
}

void CFieldResoln::GetArOfAllFieldResolns(CArray<CFieldResoln, CFieldResoln>&) {}

void CFieldResoln::GetArOfAllDerivableFieldResolns(
    CArray<CFieldResoln, CFieldResoln>& pairs) const {
  pairs.RemoveAll();
}

void CFieldResoln::Serialize(CArchive& archive) {
  if (!archive.IsLoading()) {
    archive << kFormat;
    pxd::detail::StoreRecord(archive, m_pair);
    return;
  }
  std::uint8_t format = 0;
  archive >> format;
  if (format == kFormat) {
    pxd::detail::LoadRecord(archive, m_pair);
  }
}
