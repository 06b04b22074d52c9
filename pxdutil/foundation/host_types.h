// Two types of the host's framework that the library's interfaces name: a moment (CTime) and a list
// control of its screens (CComboBox).
#ifndef PXDUTIL_FOUNDATION_HOST_TYPES_H
#define PXDUTIL_FOUNDATION_HOST_TYPES_H

#include <cstdint>
#include <vector>

#include <pxdutil/foundation/export.h>
#include <pxdutil/foundation/text.h>

// A moment as the host counts it: seconds since 1 January 1970, UTC.
class CTime {
 public:
  CTime() = default;
  // Any number of seconds, before 1970 too.
  explicit CTime(std::int64_t seconds) : m_seconds(seconds) {}
  // The seconds since 1 January 1970, UTC.
  [[nodiscard]] std::int64_t GetTime() const noexcept { return m_seconds; }
  friend auto operator<=>(const CTime&, const CTime&) = default;

 private:
  std::int64_t m_seconds = 0;
};

// A list of texts with a selection. This implementation keeps the items in memory; a host overrides
// the operations to drive a control of its own.
class PXDUTIL_API CComboBox {
 public:
  // What an operation answers for an index that isn't there.
  static constexpr int kError = -1;

  CComboBox() = default;
  CComboBox(const CComboBox&) = default;
  CComboBox& operator=(const CComboBox&) = default;
  virtual ~CComboBox();

  // Removes all items and the selection.
  virtual void ResetContent();
  // Appends an item with data 0 and returns its index.
  virtual int AddString(const char* text);
  // A word that belongs to the item. Both answer kError for an index that isn't there, SetItemData
  // else 0.
  virtual int SetItemData(int index, std::uintptr_t data);
  [[nodiscard]] virtual std::uintptr_t GetItemData(int index) const;
  // The selected index, -1 for none. An index that isn't there selects nothing and answers -1.
  [[nodiscard]] virtual int GetCurSel() const;
  virtual int SetCurSel(int index);
  // The number of items.
  [[nodiscard]] virtual int GetCount() const;
  // The item's text; an index that isn't there leaves `text` alone and answers kError, else the
  // text's length.
  virtual int GetLBText(int index, CString& text) const;

 private:
  struct Item {
    CString text;
    std::uintptr_t data = 0;
  };
  [[nodiscard]] bool Has(int index) const;
  [[nodiscard]] const Item& At(int index) const { return m_items[static_cast<std::size_t>(index)]; }

  std::vector<Item> m_items;
  int m_selected = kError;
};

#endif
