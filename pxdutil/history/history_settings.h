// CHistorySettings: which field is kept at which resolution, and for how many days.
//
// A table has up to 30 lines (CFieldHistorySetting), for one symbol or a class of symbols. From it
// follow the fields that a quote must carry so that the history can be written, and the record of a
// quote in the quote file. CHistorySettingsTemplate is a table that a user saved under a name.
//
//   CHistorySettings settings;
//   settings.CreateDefaultSettings(0);
//   settings.AddSetting(ZRGS_FIELD_HISTORY_SETTINGS{{202, {4, 1}}, 500});  // Ask Record, 1 Day
//   if (settings.IsFieldIDNeededForHistory(285) != 0) ...
//
// All are values and belong to one thread at a time. A table asks the catalogue about its lines
// whenever it changes, so a table with lines needs a manager in CFieldInfoMgr::m_pInstance; without
// one, a change is a fault. A line whose field has no entry there is kept and needs no field;
// sorting it or telling its text is a fault. A change for which memory runs out changes nothing.
#ifndef PXDUTIL_HISTORY_HISTORY_SETTINGS_H
#define PXDUTIL_HISTORY_HISTORY_SETTINGS_H

#include <cstdint>
#include <span>

#include <pxdutil/foundation/export.h>
#include <pxdutil/foundation/field_value.h>
#include <pxdutil/foundation/list.h>
#include <pxdutil/foundation/object.h>
#include <pxdutil/foundation/text.h>
#include <pxdutil/history/field_resolution.h>

class CArchive;
class CComboBox;
class CZRGSQuote;

#pragma pack(push, 1)

// A line as it stands in an archive.
struct ZRGS_FIELD_HISTORY_SETTINGS {
  ZRGS_FIELD_RESOLUTION fieldResolution;  // what is kept
  std::uint16_t wNumDays;                 // for how many days
};

// A table as it stands in an archive.
struct ZRGS_HISTORY_SETTINGS {
  std::uint8_t bCount;  // bits 3 to 7: how many lines are in use; bits 0 to 2 are the host's
  ZRGS_FIELD_HISTORY_SETTINGS settings[30];  // those in use first
};

#pragma pack(pop)

static_assert(sizeof(ZRGS_FIELD_HISTORY_SETTINGS) == 8, "a stored line");
static_assert(sizeof(ZRGS_HISTORY_SETTINGS) == 241, "a stored table");

// One line: a field at a resolution, and the number of days for which it is kept.
class PXDUTIL_API CFieldHistorySetting {
 public:
  // The same name within the class.
  using StringFormat = ::StringFormat;

  // All 0.
  CFieldHistorySetting() = default;
  CFieldHistorySetting(const ZRGS_FIELD_HISTORY_SETTINGS& setting) : m_setting(setting) {}

  // The record, out and in, as it is.
  operator ZRGS_FIELD_HISTORY_SETTINGS() const { return m_setting; }
  void SetHS(ZRGS_FIELD_HISTORY_SETTINGS setting) { m_setting = setting; }

  // What is kept, and for how many days, 0 to 65535.
  [[nodiscard]] CFieldResoln GetFieldResoln() const { return {m_setting.fieldResolution}; }
  void SetFieldResoln(const CFieldResoln& pair) { m_setting.fieldResolution = pair; }
  [[nodiscard]] unsigned short GetNumDays() const { return m_setting.wNumDays; }
  void SetNumDays(unsigned short days) { m_setting.wNumDays = days; }

  // Field, resolution and days.
  friend bool operator==(const CFieldHistorySetting& a, const CFieldHistorySetting& b) {
    return a.GetFieldResoln() == b.GetFieldResoln() && a.GetNumDays() == b.GetNumDays();
  }
  friend bool operator!=(const CFieldHistorySetting& a, const CFieldHistorySetting& b) {
    return !(a == b);
  }
  // 1 where field and resolution are equal, whatever the days.
  [[nodiscard]] int HasSamePointType(const CFieldHistorySetting& other) const {
    return GetFieldResoln() == other.GetFieldResoln() ? 1 : 0;
  }

  // The pair's text in the plain, the tabbed or the machine form, with the days behind it:
  // "Trade Record 1 Day 50000 days", "201,Trade Record,1,4,50000". Empty for any other form.
  [[nodiscard]] CString GetString(StringFormat format) const;
  // Reads the machine form, all of it from the text: what the text lacks becomes unset or 0. A text
  // without a comma does nothing. Returns 1, also for the plain and the tabbed form, which do
  // nothing, and 0 for any other.
  int SetString(const CString& text, StringFormat format);

 private:
  ZRGS_FIELD_HISTORY_SETTINGS m_setting = {{0, {0, 0}}, 0};
};

static_assert(sizeof(CFieldHistorySetting) == 8, "a line is passed by value");

class PXDUTIL_API CHistorySettings : public CObject {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CHistorySettings);

 public:
  // The same name within the class.
  using StringFormat = ::StringFormat;

  // What AddSetting and ChangeSettings answer instead of an index.
  static constexpr int kBadIndex = -1;
  static constexpr int kTableFull = -2;
  static constexpr int kAlreadyThere = -3;

  // A new table on the heap, owned by the caller.
  static CObject* CreateObject();

  // An empty table.
  CHistorySettings() = default;
  // Takes the 241 bytes as they are. A count of 31 is read as 30.
  CHistorySettings(const ZRGS_HISTORY_SETTINGS& table);
  // Copies take the 241 bytes, unused lines included, and ask the catalogue anew.
  CHistorySettings(const CHistorySettings& other);
  CHistorySettings& operator=(const CHistorySettings& other);
  ~CHistorySettings() override = default;
  // The 241 bytes as they stand.
  operator ZRGS_HISTORY_SETTINGS() const { return m_HS; }

  // The number of lines in use, 0 to 30.
  [[nodiscard]] int GetCount() const;
  // Line `index` of the 30, in use or not; beyond them is a fault. A change through the pointer
  // leaves the needed fields as they were.
  [[nodiscard]] CFieldHistorySetting GetSetting(int index) const;
  [[nodiscard]] ZRGS_FIELD_HISTORY_SETTINGS* GetFHSetting(int index);

  // The index of the first line of this field and resolution, whatever its days, or -1.
  [[nodiscard]] int GetSettingIdx(const CFieldResoln& pair) const;
  [[nodiscard]] int HasSetting(const CFieldHistorySetting& setting) const;
  [[nodiscard]] int HasFieldResolutionSetting(const CFieldHistorySetting& setting) const;

  // Whether the lines in use are equal, in order and with their days.
  friend bool operator==(const CHistorySettings& a, const CHistorySettings& b) {
    return a.HasSameLines(b);
  }
  friend bool operator!=(const CHistorySettings& a, const CHistorySettings& b) {
    return !a.HasSameLines(b);
  }

  // Appends the line and returns its index; kTableFull at 30 lines, whatever they are. A pair that
  // is there already isn't added: it gets the larger number of days, and the answer is
  // kAlreadyThere.
  int AddSetting(const CFieldHistorySetting& setting);
  // Replaces the line and returns its index; kAlreadyThere where another line has the pair, also
  // for an index that isn't there, else kBadIndex for such an index.
  int ChangeSettings(int index, const CFieldHistorySetting& setting);
  // Drops one line and returns 1, or 0 for an index that isn't there. The lines behind it move down
  // one place, but for the last in use, which stays and is what falls off the end: of a, b, c
  // without the first remain b, b.
  int RemoveSettings(int index);
  // Empties the table.
  void RemoveAllSettings();
  // Orders the lines by the field's name, then by unit, then by quantity. The fields needed keep
  // the order of the table before.
  void SortSettings();

  // Adds those lines of a kind of symbol (0 to 8) whose pairs aren't there yet.
  void CreateDefaultSettings(unsigned char kind);
  // The lines of kind 0.
  void CreateDefaultSettingsFDCN();

  // Copies the first `maxIds` of the ids of which the fields in the table are composed, in the
  // order of the table, each once. Returns how many it copied.
  int GetFieldIDListNeededForHistory(unsigned short* const ids, int maxIds) const;
  // 1 where the field is needed, composed or updated; else 0.
  [[nodiscard]] int IsFieldIDNeededForHistory(unsigned short id) const;

  // Writes the needed values that the quote has to `buffer`, of `size` bytes: date, time and number
  // of items in 8 bytes, then 11 bytes an item, its id, status and value as a double. A field of
  // status 0 counts as absent; one that is both composed and updated comes twice. Items end where
  // the next would not leave a byte free. Returns the bytes used, or 0 without items, where the 8
  // bytes are written all the same; below a `size` of 19 nothing is written.
  unsigned int BuildQuoteFileData(CZRGSQuote& quote, void* buffer, unsigned int size) const;

  // The lines in the plain form, with ", " between them; in the machine form "n:" and the lines
  // with ";" between them, or "0:" alone with `bSkip`. Empty for any other form.
  [[nodiscard]] CString GetString(StringFormat format, bool bSkip) const;
  // Adds (AddSetting) the lines of a text in the machine form to those that are there. The number
  // in front isn't read. A line without a comma adds the line of zeros. Always 0.
  int SetString(const CString& text, StringFormat format);

  // Fill a list for the user's choice of a field (those of the catalogue that may be stored; item
  // data is the id) and of a resolution (item data is the unit times 256 plus the quantity), and
  // select what is given, or else the first item.
  static void FillFieldCB(CComboBox& box, unsigned short fieldID);
  static void FillResolnCB(CComboBox& box, unsigned char unit, unsigned char qty);

  // A format byte 1 and the 241 bytes. Loading doesn't look at the format byte, and leaves the
  // table as it was where the bytes are cut short.
  void Serialize(CArchive& archive) override;

 protected:
  // Works the three lists out of the table and the catalogue. Where memory runs out, they are as
  // they were.
  void SetFieldLists();

  // Packed, directly behind the object's header.
  ZRGS_HISTORY_SETTINGS m_HS = {};
  // Ids without doubles: of which the fields are composed, which a bar updates, and both together.
  CZRListEx<CField> m_AtomicFieldList{10};
  CZRListEx<CField> m_UpdateFieldList{10};
  CZRListEx<CField> m_AllFieldList{10};

 private:
  template <class Change>
  void ChangeTable(Change change);
  void SetTable(const ZRGS_HISTORY_SETTINGS& table);
  void SetCount(int count);
  [[nodiscard]] std::span<const ZRGS_FIELD_HISTORY_SETTINGS> Lines() const;
  [[nodiscard]] bool HasSameLines(const CHistorySettings& other) const;
  void AddMissing(std::span<const ZRGS_FIELD_HISTORY_SETTINGS> lines);
};

// A table under a name, from which tables of new symbols can be made.
class PXDUTIL_API CHistorySettingsTemplate : public CObject {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CHistorySettingsTemplate);

 public:
  // A new template on the heap, owned by the caller.
  static CObject* CreateObject();

  // The name; a null one is empty. It is valid as long as this object isn't changed.
  void SetName(const char* name) { m_strName = name; }
  [[nodiscard]] const CString& GetName() const { return m_strName; }

  // Whether this is the template for new symbols.
  [[nodiscard]] int IsDefault() const { return m_bDefault; }
  void SetDefault(int isDefault) { m_bDefault = isDefault; }

  // The table, which stays this object's.
  [[nodiscard]] CHistorySettings* GetHistSettings() { return &m_HistSettings; }
  [[nodiscard]] const CHistorySettings* GetHistSettings() const { return &m_HistSettings; }
  // Copies the table; null is ignored.
  void SetHistSettings(const CHistorySettings* settings);

  // A version byte 1, the name, the low byte of the default flag and the table. Loading stops
  // behind a version byte other than 1, and keeps it.
  void Serialize(CArchive& archive) override;

 protected:
  std::uint8_t m_bVersion = 1;      // the version byte as loaded
  CString m_strName;                // the name
  std::int32_t m_bDefault = 0;      // as SetDefault was given it
  CHistorySettings m_HistSettings;  // the table
};

#endif
