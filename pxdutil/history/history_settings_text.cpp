// History settings for people: their text forms, and the lists from which they are chosen.
#include <pxdutil/history/history_settings.h>

#include <array>

#include <pxdutil/foundation/host_types.h>
#include <pxdutil/history/detail/catalogue.h>
#include <pxdutil/history/detail/stored_forms.h>

namespace {

// How the days stand behind the pair, null for a form that settings don't have.
const char* BeforeDays(StringFormat format) {
  switch (format) {
    case StringFormatPlain:
      return " ";
    case StringFormatTabbed:
      return "\t";
    case StringFormatMachine:
      return ",";
    case StringFormatBracketed:
      return nullptr;
  }
  return nullptr;
}

// Adds an item with its data, and selects it where it is the one.
void AddChoice(CComboBox& box, const CString& text, unsigned short data, bool isSelected,
               bool& isAnySelected) {
  const int index = box.AddString(text);
  box.SetItemData(index, data);
  if (isSelected) {
    box.SetCurSel(index);
    isAnySelected = true;
  }
}

// The resolutions that users are offered.
constexpr std::array<ZRGS_RESOLUTION, 9> kChoices = {{
    {1, 1},
    {3, 1},
    {3, 5},
    {3, 10},
    {3, 15},
    {3, 30},
    {4, 1},
    {6, 1},
    {7, 1},
}};

}  // namespace

CString CFieldHistorySetting::GetString(StringFormat format) const {
  const char* const between = BeforeDays(format);
  if (between == nullptr) {
    return {};
  }
  CString text = GetFieldResoln().GetString(format);
  text.AppendFormat("%s%u%s", between, unsigned{GetNumDays()},
                    format == StringFormatMachine ? "" : " days");
  return text;
}

int CFieldHistorySetting::SetString(const CString& text, StringFormat format) {
  if (BeforeDays(format) == nullptr) {
    return 0;
  }
  const int comma = text.ReverseFind(',');
  if (format == StringFormatMachine && comma >= 0) {
    CFieldResoln pair;
    pair.SetString(text.Left(comma), format);
    SetFieldResoln(pair);
    SetNumDays(pxd::detail::NumberIn(text.GetString() + comma + 1));
  }
  return 1;
}

CString CHistorySettings::GetString(StringFormat format, bool bSkip) const {
  CString text;
  const char* separator = "";
  switch (format) {
    case StringFormatPlain:
      separator = ", ";
      break;
    case StringFormatMachine:
      text.Format("%d:", bSkip ? 0 : GetCount());
      if (bSkip) {
        return text;
      }
      separator = ";";
      break;
    case StringFormatTabbed:
    case StringFormatBracketed:
      return text;
  }
  const char* before = "";
  for (const CFieldHistorySetting line : Lines()) {
    text += before;
    text += line.GetString(format);
    before = separator;
  }
  return text;
}

int CHistorySettings::SetString(const CString& text, StringFormat format) {
  if (format != StringFormatMachine || text.IsEmpty()) {
    return 0;
  }
  const auto add = [&](const CString& item) {
    CFieldHistorySetting line;
    line.SetString(item, format);
    AddSetting(line);
  };
  int from = text.Find(':') + 1;  // 0 where there is none
  for (int end = text.Find(';', from); end >= 0; end = text.Find(';', from)) {
    add(text.Mid(from, end - from));
    from = end + 1;
  }
  if (from < text.GetLength()) {
    add(text.Mid(from));
  }
  return 0;
}

void CHistorySettings::FillFieldCB(CComboBox& box, unsigned short fieldID) {
  box.ResetContent();
  CFieldInfoMgr::FieldInfoList storable;
  pxd::detail::Catalogue().GetFieldInfoListStorable(storable);
  bool isAnySelected = false;
  for (const CZRGSFieldInfo* const field : storable) {
    const unsigned short id = field->GetFieldID();
    AddChoice(box, field->Description(), id, id == fieldID, isAnySelected);
  }
  if (!isAnySelected) {
    box.SetCurSel(0);
  }
}

void CHistorySettings::FillResolnCB(CComboBox& box, unsigned char unit, unsigned char qty) {
  box.ResetContent();
  bool isAnySelected = false;
  for (const ZRGS_RESOLUTION choice : kChoices) {
    CString label;
    CResoln(choice).GetStringForResolution(label);
    AddChoice(box, label, static_cast<unsigned short>(choice.wUnit * 256 + choice.wQuantity),
              choice.wUnit == unit && choice.wQuantity == qty, isAnySelected);
  }
  if (!isAnySelected) {
    box.SetCurSel(0);
  }
}
