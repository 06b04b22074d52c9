// For how long an answer of the calendar holds.
#include <algorithm>
#include <cstdint>
#include <memory>

#include <pxdutil/sessions/detail/month_memo.h>
#include <pxdutil/sessions/detail/week.h>
#include <pxdutil/sessions/detail/week_index.h>

using namespace pxd::detail;

namespace {

// Near the ends of all days the answers wrap round them.
constexpr int kEndOfDays = 14;

// A moment as seconds since the midnight of `date`.
std::int64_t SecondsFrom(CZRDate date, const CZRDateTime& moment) {
  const std::int64_t days = std::int64_t{moment.GetDate().GetJulianDate()} - date.GetJulianDate();
  return days * pxd::kSecondsPerDay + moment.GetTime().GetTime();
}

// The seconds of a day round one of them, cut down step by step.
struct Cut {
  std::int64_t now;
  std::int64_t from = 0;
  std::int64_t until = pxd::kSecondsPerDay;

  // Something changes at a second of the day.
  void At(std::int64_t second) {
    if (second <= now) {
      from = std::max(from, second);
    } else {
      until = std::min(until, second);
    }
  }

  // The answers of a week hold from one place to another, of which `now` is at `place`.
  void ToReach(const WeekIndex& index, std::int64_t place) {
    const WeekIndex::Reach reach = index.ReachAt(place);
    if (reach.from > place - pxd::kSecondsPerDay) {
      At(now + reach.from - place);
    }
    if (reach.until < place + pxd::kSecondsPerDay) {
      At(now + reach.until - place);
    }
  }
};

}  // namespace

bool CZRGSSession::FindAnswerSpan(ResetType reset, const CZRDateTime& dt,
                                  pxd::AnswerSpan& span) const {
  const int day = dt.GetDate().GetJulianDate();
  if (reset < ResetNone || reset > ResetMonth || m_sessions.sessions.empty() ||
      m_isNormalized != 1 || !IsCountedFromFirstOpen() || day < kEndOfDays ||
      day > CZRDate::GetNullJulianDate() - kEndOfDays ||
      dt.GetTime().GetTime() >= pxd::kSecondsPerDay) {
    return false;
  }
  if (m_index == nullptr) {
    m_index = std::make_unique<WeekIndex>(m_normalized.sessions);
  }
  Cut cut{dt.GetTime().GetTime()};
  // Before the first open a look-up counts from elsewhere.
  const std::int64_t place = PlaceInWeek(dt, m_sessions.sessions.front().OpenMinute);
  cut.At(cut.now - place);
  cut.ToReach(*m_index, place < 0 ? place + kEndOfWeekBefore : place);
  if (reset == ResetWeek) {
    cut.ToReach(*m_index, place < 0 ? place + kOneDay : place);
  }
  if (reset == ResetMonth) {
    const CZRDate date = dt.GetDate();
    const MonthSpan* month =
        m_months != nullptr
            ? m_months->Find(m_sessions.sessions, FirstOfMonth(date), FirstOfNextMonth(date))
            : nullptr;
    if (month == nullptr) {
      return false;
    }
    cut.At(SecondsFrom(date, month->start));
    cut.At(SecondsFrom(date, month->limit));
  }
  span = {dt.GetDate(), static_cast<unsigned>(cut.from), static_cast<unsigned>(cut.until)};
  return true;
}
