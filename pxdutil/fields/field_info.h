// CZRGSFieldInfo: one row of the field catalogue, all that is known of a field apart from its
// value.
//
// A row says what kind of value the field holds, which corporate actions and multipliers change it,
// of which simpler fields it is made, which fields must be recomputed with it, and at which
// resolutions it may be stored. CStorageSetting and CResolnAndUpdateFieldList are the elements of
// its lists.
//
//   const CZRGSFieldInfo* trade = CFieldInfoMgr::m_pInstance->GetFieldInfo(201);
//   if (trade != nullptr && trade->GetIsAffectedByStockSplit()) ...
//
// All three are values: copies are deep. An object may be read from any thread as long as nobody
// changes it.
#ifndef PXDUTIL_FIELDS_FIELD_INFO_H
#define PXDUTIL_FIELDS_FIELD_INFO_H

#include <cstdint>
#include <map>

#include <pxdutil/foundation/export.h>
#include <pxdutil/foundation/field_value.h>
#include <pxdutil/foundation/list.h>
#include <pxdutil/foundation/object.h>
#include <pxdutil/foundation/text.h>
#include <pxdutil/sessions/resolution.h>

class CArchive;

// One way in which a field may be stored: the kind of data point, and the resolutions in that kind.
class PXDUTIL_API CStorageSetting : public CObject {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CStorageSetting);

 public:
  // A new setting on the heap, owned by the caller.
  static CObject* CreateObject();

  // Always 0: two settings never compare equal, not even one with itself.
  int operator==(const CStorageSetting& other) const;
  int operator!=(const CStorageSetting& other) const;

  // The kind of data point: a code of the storage entries in the catalogue file.
  [[nodiscard]] unsigned char GetDataPtID() const { return m_bDataPtID; }
  void SetDataPtID(unsigned char id) { m_bDataPtID = id; }

  // Appends the resolution.
  void AddResoln(const CResoln& resoln) { m_ResolnList.AddTail(resoln); }
  // Replaces `list` by a copy of the resolutions.
  void GetResolnList(CZRListEx<CResoln>& list) const { list = m_ResolnList; }
  // The resolutions, valid as long as this object isn't changed.
  [[nodiscard]] const CZRListEx<CResoln>& GetResolnList() const { return m_ResolnList; }
  // Replaces the resolutions by a copy of `list`.
  void SetResolnList(const CZRListEx<CResoln>& list) { m_ResolnList = list; }

  // Storing: a format byte 1, the data point id, a 32-bit count and the resolutions. Loading reads
  // the same, whatever the format byte, and appends the resolutions; a count below 1 is 0.
  void Serialize(CArchive& archive) override;

 private:
  std::uint8_t m_bDataPtID = 0;
  CZRListEx<CResoln> m_ResolnList{10};
};

// A resolution, and the ids of the fields that a bar of that resolution updates.
class PXDUTIL_API CResolnAndUpdateFieldList {
 public:
  // Whether the resolutions are equal, and the ids are, in order.
  bool operator==(const CResolnAndUpdateFieldList& other) const;

  CResoln m_Resoln;                   // the resolution of the bar
  CZRListEx<CField> m_FieldList{10};  // the ids that it updates
};

class PXDUTIL_API CZRGSFieldInfo : public CObject {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CZRGSFieldInfo);

 public:
  // A new row on the heap, owned by the caller.
  static CObject* CreateObject();

  // 1 or 0. The update lists play no part, and a row with storage settings equals no row, not even
  // itself, because no two settings are equal.
  int operator==(const CZRGSFieldInfo& other) const;
  int operator!=(const CZRGSFieldInfo& other) const;

  // Sets everything to 0 and empty, apart from the update lists, which stay.
  void Empty();

  // The id by which quotes, queries and stored pairs know the field.
  [[nodiscard]] unsigned short GetFieldID() const { return m_wFieldID; }
  void SetFieldID(unsigned short id) { m_wFieldID = id; }

  // 0 a price, 1 a volume or size, 2 a value without history, 3 a record that is stored as a data
  // point, 4 a count or code.
  [[nodiscard]] unsigned char GetFieldType() const { return m_bFieldType; }
  void SetFieldType(unsigned char type) { m_bFieldType = type; }
  // The size of a value in bytes that goes with the field type; 0 for records and unknown types.
  [[nodiscard]] int GetFieldSize() const;

  // 0 a number, 1 text, 2 a date, 3 a time.
  [[nodiscard]] unsigned char GetFieldDataType() const { return m_bFieldDataType; }
  void SetFieldDataType(unsigned char type) { m_bFieldDataType = type; }

  // The name that users see.
  [[nodiscard]] CString GetFieldDescription() const { return m_strFieldDescription; }
  void GetFieldDescription(CString& text) const { text = m_strFieldDescription; }
  // The name without a copy, valid as long as this object isn't changed.
  [[nodiscard]] const CString& Description() const { return m_strFieldDescription; }
  void SetFieldDescription(const CString& text) { m_strFieldDescription = text; }

  // The flags. A read gives the flag's bit as it stands in the byte, so true isn't always 1; a
  // write sets it for any value but 0.

  // Whether the field may be the subject of a history setting.
  [[nodiscard]] int GetIsStorable() const { return m_bFlags & kStorable; }
  void SetIsStorable(int on) { SetFlag(kStorable, on); }
  // Whether the server provides the field.
  [[nodiscard]] int GetIsProvidedByServer() const { return m_bFlags & kProvidedByServer; }
  void SetIsProvidedByServer(int on) { SetFlag(kProvidedByServer, on); }
  // Whether a stock split changes values of the past.
  [[nodiscard]] int GetIsAffectedByStockSplit() const { return m_bFlags & kStockSplit; }
  void SetIsAffectedByStockSplit(int on) { SetFlag(kStockSplit, on); }
  // Whether a distribution changes values of the past.
  [[nodiscard]] int GetIsAffectedByDistribution() const { return m_bFlags & kDistribution; }
  void SetIsAffectedByDistribution(int on) { SetFlag(kDistribution, on); }
  // Whether the symbol's price multiplier scales the field.
  [[nodiscard]] int GetIsAffectedByPriceMultiplier() const { return m_bFlags & kPriceMultiplier; }
  void SetIsAffectedByPriceMultiplier(int on) { SetFlag(kPriceMultiplier, on); }
  // Whether the symbol's volume multiplier scales the field.
  [[nodiscard]] int GetIsAffectedByVolumeMultiplier() const { return m_bFlags & kVolumeMultiplier; }
  void SetIsAffectedByVolumeMultiplier(int on) { SetFlag(kVolumeMultiplier, on); }
  // Replaces all flags, unnamed bits included.
  void SetFlags(unsigned char flags) { m_bFlags = flags; }

  // Whether the field's current value belongs in the symbol's snapshot.
  [[nodiscard]] int GetStoreInSnapshot() const { return m_bStoreInSnapshot; }
  void SetStoreInSnapshot(int store) { m_bStoreInSnapshot = store; }

  // The ids of which the field is composed.
  [[nodiscard]] const CZRListEx<CField>& GetAtomicFieldIDList() const {
    return m_AtomicFieldIDList;
  }
  void SetAtomicFieldList(const CZRListEx<CField>& list) { m_AtomicFieldIDList = list; }

  // How the field may be stored.
  [[nodiscard]] const CZRListEx<CStorageSetting>& GetStorageSettingList() const {
    return m_StorageSettingList;
  }
  void SetStorageSettingList(const CZRListEx<CStorageSetting>& list) {
    m_StorageSettingList = list;
  }

  // The ids that a bar of exactly this resolution updates, or null; no other resolution that would
  // divide it is looked for. Valid until the update lists are replaced.
  [[nodiscard]] const CZRListEx<CField>* GetUpdateFieldIDListPtr(CResoln resoln) const;
  // Replaces the update lists. Of two with the same resolution the first stays.
  void SetResolnUpdateFieldList(const CZRListEx<CResolnAndUpdateFieldList>& list);

  // Always 1: the check that the catalogue makes of a new row passes every row.
  [[nodiscard]] int AreAllFieldsValid() const { return 1; }

  // Lopsided: storing writes one byte 0 and nothing of the row. Loading reads a full record, and
  // appends to the atomic and storage lists.
  void Serialize(CArchive& archive) override;

 protected:
  // Drops all update lists.
  void EmptyUpdateFieldMap();

 private:
  enum Flag : unsigned char {
    kStorable = 0x01,
    kProvidedByServer = 0x02,
    kStockSplit = 0x04,
    kDistribution = 0x08,
    kPriceMultiplier = 0x10,
    kVolumeMultiplier = 0x20,
  };
  void SetFlag(Flag flag, int on) {
    m_bFlags = static_cast<std::uint8_t>(on != 0 ? m_bFlags | flag : m_bFlags & ~flag);
  }

  std::uint16_t m_wFieldID = 0;
  std::uint8_t m_bFieldType = 0;
  std::uint8_t m_bFieldDataType = 0;
  CString m_strFieldDescription;
  std::uint8_t m_bFlags = 0;
  CZRListEx<CField> m_AtomicFieldIDList{10};
  std::map<CResoln, CZRListEx<CField>> m_UpdateFieldMap;
  CZRListEx<CStorageSetting> m_StorageSettingList{10};
  std::int32_t m_bStoreInSnapshot = 0;
};

#endif
