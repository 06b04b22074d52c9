#include <pxdutil/foundation/host_types.h>

CComboBox::~CComboBox() = default;

bool CComboBox::Has(int index) const {
  return index >= 0 && index < GetCount();
}

void CComboBox::ResetContent() {
  m_items.clear();
  m_selected = kError;
}

int CComboBox::AddString(const char* text) {
  m_items.push_back({CString(text), 0});
  return static_cast<int>(m_items.size()) - 1;
}

int CComboBox::SetItemData(int index, std::uintptr_t data) {
  if (!Has(index)) {
    return kError;
  }
  m_items[static_cast<std::size_t>(index)].data = data;
  return 0;
}

std::uintptr_t CComboBox::GetItemData(int index) const {
  return Has(index) ? At(index).data : static_cast<std::uintptr_t>(kError);
}

int CComboBox::GetCurSel() const {
  return m_selected;
}

int CComboBox::SetCurSel(int index) {
  m_selected = Has(index) ? index : kError;
  return m_selected;
}

int CComboBox::GetCount() const {
  return static_cast<int>(m_items.size());
}

int CComboBox::GetLBText(int index, CString& text) const {
  if (!Has(index)) {
    return kError;
  }
  text = At(index).text;
  return text.GetLength();
}
