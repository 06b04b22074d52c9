// CResoln: how wide a data point is, such as 1 Tick, 5 Minutes or 1 Day.
//
// ZRGS_RESOLUTION is the plain record that messages and queries carry; CResoln wraps one to name,
// order and compare resolutions, and to say whether data of one can be built into another:
//
//   CResoln five(ZRGS_RESOLUTION{3, 5});  // 5 Minutes
//   if (five.CanBeSampledInto(target, calendar)) ...
//
// Both are plain values of 4 bytes without locks or heap. A bad unit or quantity is ignored or
// repaired, never reported, and where a calculation would divide by zero its answer is 0.
#ifndef PXDUTIL_SESSIONS_RESOLUTION_H
#define PXDUTIL_SESSIONS_RESOLUTION_H

#include <cstdint>

#include <pxdutil/foundation/export.h>
#include <pxdutil/foundation/text.h>
#include <pxdutil/sessions/date_time.h>

class CArchive;
class CZRGSSession;

#pragma pack(push, 1)

// A unit code (see CResoln) and how many of the unit.
struct ZRGS_RESOLUTION {
  std::uint16_t wUnit;      // a unit code, 1 to 8
  std::uint16_t wQuantity;  // how many of the unit, at least 1
};

#pragma pack(pop)

static_assert(sizeof(ZRGS_RESOLUTION) == 4, "a resolution is two 16-bit words");

class PXDUTIL_API CResoln {
 public:
  // The kind of a unit. The unit codes are 1 Tick, 2 Second, 3 Minute, 4 Day, 5 Week, 6 Month and
  // 7 Year; code 8 has no name and, as any other code, the type of a tick.
  enum ResolnUnitTypeEnum : int {
    ResolnTypeTick = 0,    // unit code 1, and all that are no other
    ResolnTypeSecond = 1,  // unit code 2
    ResolnTypeMinute = 2,  // unit code 3
    ResolnTypeDay = 3,     // unit code 4
    ResolnTypeWeek = 4,    // unit code 5
    ResolnTypeMonth = 5,   // unit code 6
    ResolnTypeYear = 6,    // unit code 7
  };

  // Unit and quantity 0.
  constexpr CResoln() = default;
  // Takes the record as it is.
  constexpr CResoln(ZRGS_RESOLUTION resolution) : m_resolution(resolution) {}

  // The unit in the high 4 bits and the quantity in the low 12. A quantity above 4095 spills into
  // the unit.
  constexpr operator unsigned short() const {
    return static_cast<unsigned short>(m_resolution.wUnit * 4096U + m_resolution.wQuantity);
  }

  // Takes a unit code of 1 to 8 and ignores any other.
  constexpr void SetResolnUnit(unsigned short unit) {
    if (unit >= 1 && unit <= 8) {
      m_resolution.wUnit = unit;
    }
  }
  // The unit as its code, and as the kind that the code stands for.
  [[nodiscard]] constexpr unsigned short GetResolnUnit() const { return m_resolution.wUnit; }
  [[nodiscard]] ResolnUnitTypeEnum GetResolnUnitType() const;

  // Takes the quantity; 0 becomes 1.
  constexpr void SetResolnQty(unsigned short qty) { m_resolution.wQuantity = qty != 0 ? qty : 1; }
  // The quantity as it stands, so 0 where it was never set.
  [[nodiscard]] constexpr unsigned short GetResolnQty() const { return m_resolution.wQuantity; }

  // The unit's name in the singular ("Minute"); empty for code 8 and for codes that are no unit.
  [[nodiscard]] static CString GetStringForResolnUnit(unsigned short unit);
  [[nodiscard]] CString GetStringForResolnUnit() const;
  // Quantity and name, in the plural above 1: "1 Minute", "3 Ticks". Without a name `out` is
  // emptied.
  void GetStringForResolution(CString& out) const;

  // The length of one data point. A tick, and code 8, counts as a second; a week, a month or a year
  // has no fixed length and gives 0, as does any other code.
  [[nodiscard]] CZRDateTimeSpan GetDateTimeSpan() const;

  // Unit and quantity are equal: 60 seconds differ from 1 minute.
  friend constexpr bool operator==(const CResoln& a, const CResoln& b) {
    return a.GetResolnUnit() == b.GetResolnUnit() && a.GetResolnQty() == b.GetResolnQty();
  }
  friend constexpr bool operator!=(const CResoln& a, const CResoln& b) { return !(a == b); }
  // By unit, then by quantity. There is no > and no >=.
  friend constexpr bool operator<(const CResoln& a, const CResoln& b) {
    return a.GetResolnUnit() != b.GetResolnUnit() ? a.GetResolnUnit() < b.GetResolnUnit()
                                                  : a.GetResolnQty() < b.GetResolnQty();
  }
  friend constexpr bool operator<=(const CResoln& a, const CResoln& b) { return a < b || a == b; }

  // 1 where this resolution is a whole multiple of `other`, else 0. Only ticks, seconds and minutes
  // are judged by quantity, each against its own kind. Minutes divide by every other kind but days,
  // though seconds divide by seconds alone; days and longer divide by everything.
  int IsEvenlyDivisibleBy(const CResoln& other) const;

  // 1 where data of this resolution can be rolled up into `target` under the calendar, else 0.
  int CanBeSampledInto(const CResoln& target, const CZRGSSession& session) const;

  // Loading reads one 16-bit word with the unit in its low 4 bits and the quantity in its high 12,
  // the reverse of operator unsigned short. Storing writes the word 0 whatever the object holds.
  void Serialize(CArchive& archive);

 protected:
  // 1 where every session of the calendar opens, and closes with its dribble window, on a boundary
  // of this resolution. Only seconds and minutes can fail.
  int CheckSessionCompatibility(const CZRGSSession& session) const;

 private:
  ZRGS_RESOLUTION m_resolution = {0, 0};
};

// The same names without their class, which is how hosts know them.
using ResolnUnitTypeEnum = CResoln::ResolnUnitTypeEnum;
inline constexpr ResolnUnitTypeEnum ResolnTypeTick = CResoln::ResolnTypeTick;
inline constexpr ResolnUnitTypeEnum ResolnTypeSecond = CResoln::ResolnTypeSecond;
inline constexpr ResolnUnitTypeEnum ResolnTypeMinute = CResoln::ResolnTypeMinute;
inline constexpr ResolnUnitTypeEnum ResolnTypeDay = CResoln::ResolnTypeDay;
inline constexpr ResolnUnitTypeEnum ResolnTypeWeek = CResoln::ResolnTypeWeek;
inline constexpr ResolnUnitTypeEnum ResolnTypeMonth = CResoln::ResolnTypeMonth;
inline constexpr ResolnUnitTypeEnum ResolnTypeYear = CResoln::ResolnTypeYear;

static_assert(sizeof(CResoln) == 4, "a resolution is passed by value in a register");

#endif
