// The slots that were asked for last: for each resolution, a span of moments and the close of the
// bar that they belong to.
//
// Points come in the order of time, so that most fall where the point before fell. The memo is part
// of what a calendar has worked out beforehand and goes with it (SlotsOf in week_index.h).
#ifndef PXDUTIL_SESSIONS_DETAIL_SLOT_MEMO_H
#define PXDUTIL_SESSIONS_DETAIL_SLOT_MEMO_H

#include <array>
#include <cstddef>

#include <pxdutil/sessions/answer_span.h>
#include <pxdutil/sessions/resolution.h>

namespace pxd::detail {

// Where the moments of a span belong.
struct Slot {
  AnswerSpan span;
  int status = 0;  // as the calendar's
  CZRDateTime close;
};

class SlotMemo {
 public:
  // The slot of a moment, null where it isn't known.
  [[nodiscard]] const Slot* Find(const CResoln& resolution, const CZRDateTime& moment) const {
    const Entry& entry = m_entries[PlaceOf(resolution)];
    return entry.slot.span.Has(moment) && entry.resolution == resolution ? &entry.slot : nullptr;
  }

  void Keep(const CResoln& resolution, const Slot& slot) {
    m_entries[PlaceOf(resolution)] = {resolution, slot};
  }

  // Forgets all slots where the week's places are counted from another minute than before.
  void CountFrom(int firstOpen) {
    if (m_firstOpen != firstOpen) {
      m_firstOpen = firstOpen;
      m_entries = {};
    }
  }

 private:
  struct Entry {
    CResoln resolution;
    Slot slot;
  };
  static constexpr std::size_t kEntries = 16;

  // The usual resolutions of a calendar, 1 to 60 minutes, a day and a week, have places of their
  // own.
  static std::size_t PlaceOf(const CResoln& resolution) {
    return (resolution.GetResolnQty() + 5U * resolution.GetResolnUnit()) % kEntries;
  }

  int m_firstOpen = -1;
  std::array<Entry, kEntries> m_entries;
};

}  // namespace pxd::detail

#endif
