// CFieldResoln: a field at a resolution, which is what a chart shows and a history file holds.
//
// "Trade Record" at 1 Tick is a stream of ticks, at 1 Day a series of daily bars. A pair knows its
// text forms and which parts its points have, and it makes the right point:
//
//   CFieldResoln daily(ZRGS_FIELD_RESOLUTION{201, {4, 1}});
//   std::unique_ptr<CDPDataPt> bar(daily.CreateDataPt());
//   if (bar == nullptr) ...  // nothing is stored in this pair
//
// A pair is a plain value of 6 bytes. Whatever asks the catalogue reads it through
// CFieldInfoMgr::m_pInstance: without a manager, or for a field without an entry, such a call is a
// fault. Any number of threads may use their own pairs once the catalogue is loaded.
#ifndef PXDUTIL_HISTORY_FIELD_RESOLUTION_H
#define PXDUTIL_HISTORY_FIELD_RESOLUTION_H

#include <cstdint>

#include <pxdutil/foundation/export.h>
#include <pxdutil/foundation/field_value.h>
#include <pxdutil/foundation/list.h>
#include <pxdutil/foundation/text.h>
#include <pxdutil/sessions/resolution.h>

class CArchive;
class CDPDataPt;

#pragma pack(push, 1)

// A pair as it stands in archives and settings.
struct ZRGS_FIELD_RESOLUTION {
  std::uint16_t wFieldID;      // the catalogue's id; 0xFFFF is unset
  ZRGS_RESOLUTION resolution;  // at which it is kept or shown
};

#pragma pack(pop)

static_assert(sizeof(ZRGS_FIELD_RESOLUTION) == 6, "a pair is stored as three 16-bit words");

// The text forms of pairs and of history settings. In the first two and the last a quantity above 1
// puts an "s" behind the whole text.
enum StringFormat : int {
  StringFormatPlain = 0,      // "Trade Record 5 Minutes"
  StringFormatTabbed = 1,     // the same with a tab behind the name
  StringFormatMachine = 2,    // "201,Trade Record,5,3": the one form that can be read back
  StringFormatBracketed = 3,  // "Trade Record [5 Minute]s"
};

class PXDUTIL_API CFieldResoln {
 public:
  // The same name within the class.
  using StringFormat = ::StringFormat;

  // The unset field, with unit and quantity 0.
  CFieldResoln() = default;
  // Takes the record as it is.
  CFieldResoln(const ZRGS_FIELD_RESOLUTION& pair) : m_pair(pair) {}

  // The record, out and in, as it is.
  operator ZRGS_FIELD_RESOLUTION() const { return m_pair; }
  [[nodiscard]] ZRGS_FIELD_RESOLUTION GetFieldResoln() const { return m_pair; }
  void SetFieldResoln(const ZRGS_FIELD_RESOLUTION& pair) { m_pair = pair; }

  // The halves. Neither a unit nor a quantity is repaired on its way in.
  [[nodiscard]] CField GetField() const { return {m_pair.wFieldID}; }
  void SetField(CField field) { m_pair.wFieldID = field.GetFieldVal(); }
  [[nodiscard]] CResoln GetResoln() const { return {m_pair.resolution}; }
  void SetResoln(CResoln resoln) {
    m_pair.resolution = {resoln.GetResolnUnit(), resoln.GetResolnQty()};
  }

  // Field, unit and quantity are equal.
  friend bool operator==(const CFieldResoln& a, const CFieldResoln& b) {
    return a.m_pair.wFieldID == b.m_pair.wFieldID && a.GetResoln() == b.GetResoln();
  }
  friend bool operator!=(const CFieldResoln& a, const CFieldResoln& b) { return !(a == b); }

  // The field in the high 16 bits, the unit in 4 and the quantity in 12. A quantity above 4095
  // carries into the unit, and so on upwards.
  [[nodiscard]] unsigned long GetDWORD() const;

  // The pair in a text form, at most 299 characters of it. A unit without a name leaves the field's
  // name alone, except in the machine form. An unknown form gives the empty text.
  [[nodiscard]] CString GetString(StringFormat format) const;
  // Reads the machine form and returns 1; items that are missing stay as they were, and the name is
  // skipped. A name with a comma in it shifts what stands behind it. The other three forms do
  // nothing and return 1, an unknown form does nothing and returns 0.
  int SetString(const CString& text, StringFormat format);

  // Which parts a point of this pair has, 1 or 0.
  [[nodiscard]] int HasOHLC() const;
  [[nodiscard]] int HasPrice() const;
  // Where there is a volume, `kind` becomes 0 for the volume of a field of volumes, and 1 (ticks)
  // or 7 (bars) for the volume within a record. Else it stays as it was.
  int HasVolume(int& kind) const;
  // By the unit Day alone: neither the field nor a longer unit plays a part.
  [[nodiscard]] int HasOpenInterest() const;

  // 1 for days and longer, whose points each carry their date; 0 for what is finer.
  [[nodiscard]] int GetStoreDateWithEachElement() const;
  // Always 1: times are stored in seconds.
  [[nodiscard]] int GetStoreTimeAsSecs() const { return 1; }

  // A new point of the class in which the pair is stored, owned by the caller; null for a pair that
  // isn't stored. Field 521 needs no catalogue and has a point at every resolution.
  [[nodiscard]] static CDPDataPt* CreateDataPt(CField field, CResoln resoln);
  [[nodiscard]] CDPDataPt* CreateDataPt() const;

  // A new array of `count` points, or null as above; single values, 485 and 521 have no arrays of
  // their own classes and come as records. The caller owns it, steps it by GetObjectSize() and
  // releases it with DeleteDataPtArray, or with delete[] on a pointer to the elements' class.
  [[nodiscard]] static CDPDataPt* CreateDataPtArray(CField field, CResoln resoln,
                                                    unsigned int count);
  [[nodiscard]] CDPDataPt* CreateDataPtArray(unsigned int count) const;
  // Frees an array of CreateDataPtArray, or nothing for null. A pointer to any other class is a
  // fault.
  static void DeleteDataPtArray(CDPDataPt* points);

  // Always 0: what can be built from what is told by resolutions (CResoln::CanBeSampledInto).
  int CanBeSampledInto(const CFieldResoln& target) const;
  // Leaves the array alone.
  static void GetArOfAllFieldResolns(CArray<CFieldResoln, CFieldResoln>& pairs);
  // Empties the array.
  void GetArOfAllDerivableFieldResolns(CArray<CFieldResoln, CFieldResoln>& pairs) const;

  // A format byte 1 and the 6 bytes of the pair. Behind any other format byte nothing is read, and
  // the object stays as it was, as it does where the bytes are cut short.
  void Serialize(CArchive& archive);

 private:
  ZRGS_FIELD_RESOLUTION m_pair = {CField::kUnset, {0, 0}};
};

static_assert(sizeof(CFieldResoln) == 6, "a pair is passed by value");

#endif
