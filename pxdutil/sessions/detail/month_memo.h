// The calendar months of a list that were looked up last.
//
// Where a month begins and ends takes two turns of the whole list to find out, and stays the same
// as long as the list does.
#ifndef PXDUTIL_SESSIONS_DETAIL_MONTH_MEMO_H
#define PXDUTIL_SESSIONS_DETAIL_MONTH_MEMO_H

#include <array>
#include <cstddef>

#include <pxdutil/sessions/detail/week.h>

namespace pxd::detail {

// A month of trading days: its open, its close, and where the windows behind that end.
struct MonthSpan {
  CZRDateTime start;
  CZRDateTime end;
  CZRDateTime limit;
};

class MonthMemo {
 public:
  // The month that begins on `first`, before the one that begins on `next`, for a list that stands
  // as it is now; null where it isn't known.
  [[nodiscard]] const MonthSpan* Find(const SessionList& sessions, CZRDate first,
                                      CZRDate next) const {
    const Entry& entry = m_entries[PlaceOf(first)];
    return entry.isKnown && entry.first == first && entry.next == next &&
                   AreSame(sessions, m_sessions)
               ? &entry.span
               : nullptr;
  }

  // Takes in a month. Those of another list are forgotten.
  const MonthSpan& Keep(const SessionList& sessions, CZRDate first, CZRDate next,
                        const MonthSpan& span) {
    if (!AreSame(sessions, m_sessions)) {
      m_sessions = sessions;
      m_entries = {};
    }
    Entry& entry = m_entries[PlaceOf(first)];
    entry = {true, first, next, span};
    return entry.span;
  }

 private:
  struct Entry {
    bool isKnown = false;
    // Null at the ends of all days: the days of December 1899 have no first, for one.
    CZRDate first;
    CZRDate next;
    MonthSpan span;
  };
  // A year and some.
  static constexpr std::size_t kEntries = 16;

  // Months have 28 to 31 days, so neighbours have places of their own.
  static std::size_t PlaceOf(CZRDate first) {
    return (first.GetJulianDate() + 15U) / 30U % kEntries;
  }

  SessionList m_sessions;
  std::array<Entry, kEntries> m_entries;
};

}  // namespace pxd::detail

#endif
