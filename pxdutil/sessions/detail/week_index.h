// The answers of a counted week, worked out beforehand for each stretch of it.
//
// The answers change only where a session opens or closes or a window ends, so a week of n sessions
// has at most 4n + 1 stretches, and a look-up is a search among them instead of a walk through all
// sessions.
#ifndef PXDUTIL_SESSIONS_DETAIL_WEEK_INDEX_H
#define PXDUTIL_SESSIONS_DETAIL_WEEK_INDEX_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include <pxdutil/sessions/detail/slot_memo.h>
#include <pxdutil/sessions/detail/week.h>
#include <pxdutil/sessions/session.h>

namespace pxd::detail {

// In which session, or which window behind one, a place lies.
struct SessionAnswer {
  CZRGSSession::Status status = CZRGSSession::StatusClosed;
  // Where the status isn't StatusClosed: the session, and its open and close as places.
  std::size_t index = 0;
  std::int64_t open = 0;
  std::int64_t close = 0;
  // What a look-up or-s into its flags.
  unsigned short flags = 0;
};

// In which trading day a place lies.
struct DayAnswer {
  CZRGSSession::Status status = CZRGSSession::StatusClosed;
  // Where the status isn't StatusClosed: the day's open and close as places.
  std::int64_t open = 0;
  std::int64_t close = 0;
};

// Which window behind the close of a session a place lies in: the dribble window first.
[[nodiscard]] CZRGSSession::Status WindowAt(std::int64_t place, const ZRGS_SESSION_INFO& session);

// What the answers are: by a walk through the list.
[[nodiscard]] SessionAnswer AskSessions(const SessionList& sessions, std::int64_t place);
[[nodiscard]] DayAnswer AskDays(const SessionList& sessions, std::int64_t place);

class WeekIndex {
 public:
  // The answers of all places of a stretch.
  struct Stretch {
    SessionAnswer session;
    DayAnswer day;
  };

  explicit WeekIndex(const SessionList& sessions);

  [[nodiscard]] const Stretch& At(std::int64_t place) const { return m_stretches[Find(place)]; }

  // Where the stretch of `place` begins, and where it ends.
  struct Reach {
    std::int64_t from;
    std::int64_t until;
  };
  [[nodiscard]] Reach ReachAt(std::int64_t place) const {
    const std::size_t found = Find(place);
    return {m_starts[found], m_starts[found + 1]};
  }

  // The list that the answers were counted from, where it is known.
  [[nodiscard]] bool IsCountOf(const SessionList& sessions) const {
    return AreSame(sessions, m_countedFrom);
  }
  void RememberCountOf(const SessionList& sessions) { m_countedFrom = sessions; }

  // What users of the answers made of them.
  [[nodiscard]] SlotMemo& Slots() { return m_slots; }

 private:
  static constexpr std::int64_t kHoursPerWeek = kSecondsPerWeek / kSecondsPerHour;

  // The stretch of `place`: the last one that begins at or before it.
  [[nodiscard]] std::size_t Find(std::int64_t place) const {
    const std::int64_t hour = place / kSecondsPerHour;
    std::size_t found = place >= 0 && hour < kHoursPerWeek
                            ? m_firstOfHour[static_cast<std::size_t>(hour)]
                            : FindAnywhere(place);
    while (m_starts[found + 1] <= place) {
      ++found;
    }
    return found;
  }
  [[nodiscard]] std::size_t FindAnywhere(std::int64_t place) const;

  // Where the stretches begin, the first before all places, and behind them a place that no other
  // is behind.
  std::vector<std::int64_t> m_starts;
  std::vector<Stretch> m_stretches;
  // The stretch with which each hour of the week begins. Few hours hold more than one other.
  std::array<std::uint32_t, kHoursPerWeek> m_firstOfHour;
  SessionList m_countedFrom;
  SlotMemo m_slots;
};

// The slots of a calendar as long as its look-ups of sessions, days and weeks are answered from its
// index, which no edit of the list changes but one of the first open; else null. Those of months
// may change without it.
[[nodiscard]] inline SlotMemo* SlotsOf(const CZRGSSession& calendar) {
  const SessionList& sessions = calendar.m_sessions.sessions;
  if (calendar.m_index == nullptr || calendar.m_local == nullptr ||
      calendar.m_local->m_isNormalized != 1 || sessions.empty()) {
    return nullptr;
  }
  SlotMemo& slots = calendar.m_index->Slots();
  slots.CountFrom(sessions.front().OpenMinute);
  return &slots;
}

}  // namespace pxd::detail

#endif
