#include <pxdutil/sessions/resolution.h>

#include <pxdutil/foundation/archive.h>
#include <pxdutil/sessions/session.h>

namespace {

constexpr unsigned short kTickUnit = 1;
constexpr unsigned short kSecondUnit = 2;
constexpr unsigned short kDayUnit = 4;
// Goes along with ticks wherever resolutions are compared, and has no name.
constexpr unsigned short kTickCompanionUnit = 8;

struct Unit {
  const char* name;
  CResoln::ResolnUnitTypeEnum type;
  // The length of one: whole days, and seconds beside them.
  unsigned short days;
  unsigned long seconds;
};

// By unit code. Codes outside the table are as code 0.
constexpr Unit kUnits[] = {
    {"", CResoln::ResolnTypeTick, 0, 0},
    {"Tick", CResoln::ResolnTypeTick, 0, 1},
    {"Second", CResoln::ResolnTypeSecond, 0, 1},
    {"Minute", CResoln::ResolnTypeMinute, 0, pxd::kSecondsPerMinute},
    {"Day", CResoln::ResolnTypeDay, 1, 0},
    {"Week", CResoln::ResolnTypeWeek, 0, 0},
    {"Month", CResoln::ResolnTypeMonth, 0, 0},
    {"Year", CResoln::ResolnTypeYear, 0, 0},
    {"", CResoln::ResolnTypeTick, 0, 1},
};
static_assert(sizeof kUnits / sizeof kUnits[0] == kTickCompanionUnit + 1);

const Unit& UnitOf(unsigned short code) {
  return kUnits[code <= kTickCompanionUnit ? code : 0];
}

// Whether `divisor` goes into `value` without a rest; zero goes into nothing.
bool Divides(unsigned long divisor, unsigned long value) {
  return divisor != 0 && value % divisor == 0;
}

}  // namespace

CResoln::ResolnUnitTypeEnum CResoln::GetResolnUnitType() const {
  return UnitOf(GetResolnUnit()).type;
}

CString CResoln::GetStringForResolnUnit(unsigned short unit) {
  return UnitOf(unit).name;
}

CString CResoln::GetStringForResolnUnit() const {
  return GetStringForResolnUnit(GetResolnUnit());
}

void CResoln::GetStringForResolution(CString& out) const {
  CString name = GetStringForResolnUnit();
  if (name.IsEmpty()) {
    out.Empty();
    return;
  }
  if (GetResolnQty() > 1) {
    name += 's';
  }
  out.Format("%i %s", GetResolnQty(), name.GetString());
}

CZRDateTimeSpan CResoln::GetDateTimeSpan() const {
  const Unit& unit = UnitOf(GetResolnUnit());
  return CZRDateTimeSpan(static_cast<unsigned short>(unit.days * GetResolnQty()),
                         unit.seconds * GetResolnQty());
}

int CResoln::IsEvenlyDivisibleBy(const CResoln& other) const {
  switch (GetResolnUnitType()) {
    case ResolnTypeTick:
      return (other.GetResolnUnit() == kTickUnit &&
              Divides(other.GetResolnQty(), GetResolnQty())) ||
             other.GetResolnUnit() == kTickCompanionUnit;

    case ResolnTypeSecond:
      return other.GetResolnUnit() == kSecondUnit && Divides(other.GetResolnQty(), GetResolnQty());

    case ResolnTypeMinute: {
      if (other.GetResolnUnitType() == ResolnTypeDay) {
        return 0;
      }
      if (other.GetResolnUnitType() != ResolnTypeMinute) {
        // By kind alone: what remains is finer than a minute, or longer than a day and cut by
        // the calendar.
        return 1;
      }
      const CZRDateTimeSpan span = GetDateTimeSpan();
      if (span == CZRDateTimeSpan(1, 0)) {
        return 1;  // a whole day of minutes is cut by the sessions, not by the other's minutes
      }
      const unsigned long seconds = span.GetNumSeconds();
      const unsigned long otherSeconds = other.GetDateTimeSpan().GetNumSeconds();
      return seconds >= otherSeconds && Divides(otherSeconds, seconds);
    }

    case ResolnTypeDay:
    case ResolnTypeWeek:
    case ResolnTypeMonth:
    case ResolnTypeYear:
      return 1;
  }
  return 1;
}

int CResoln::CanBeSampledInto(const CResoln& target, const CZRGSSession& session) const {
  if (GetResolnUnit() == kDayUnit && target.GetResolnUnit() == kDayUnit) {
    return 1;
  }
  if (target.IsEvenlyDivisibleBy(*this) == 0) {
    return 0;
  }
  if (GetResolnUnit() == kTickUnit || GetResolnUnit() == kTickCompanionUnit) {
    return 1;
  }
  return CheckSessionCompatibility(session);
}

int CResoln::CheckSessionCompatibility(const CZRGSSession& session) const {
  unsigned long width = GetDateTimeSpan().GetNumSeconds();
  unsigned long stepsPerMinute = pxd::kSecondsPerMinute;
  switch (GetResolnUnitType()) {
    case ResolnTypeSecond:
      break;
    case ResolnTypeMinute:
      width /= pxd::kSecondsPerMinute;
      stepsPerMinute = 1;
      break;
    case ResolnTypeTick:
    case ResolnTypeDay:
    case ResolnTypeWeek:
    case ResolnTypeMonth:
    case ResolnTypeYear:
      return 1;
  }
  for (const ZRGS_SESSION_INFO& info : session.GetSession().sessions) {
    const unsigned long open = info.OpenMinute;
    const unsigned long end = 0UL + info.CloseMinute + info.DribbleMinutes;
    if (!Divides(width, open * stepsPerMinute) || !Divides(width, end * stepsPerMinute)) {
      return 0;
    }
  }
  return 1;
}

void CResoln::Serialize(CArchive& archive) {
  std::uint16_t word = 0;
  if (archive.IsLoading()) {
    archive >> word;
    m_resolution.wUnit = word & 0xF;
    m_resolution.wQuantity = static_cast<std::uint16_t>(word >> 4);
  } else {
    archive << word;
  }
}
