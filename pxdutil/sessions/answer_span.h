// For how long a calendar's answer holds: the result of CZRGSSession::FindAnswerSpan.
#ifndef PXDUTIL_SESSIONS_ANSWER_SPAN_H
#define PXDUTIL_SESSIONS_ANSWER_SPAN_H

#include <pxdutil/sessions/date_time.h>

namespace pxd {

// Moments of one day, in seconds since its midnight: `from` up to and without `until`, which is at
// most 86400. By default it holds none.
struct AnswerSpan {
  // The day, and its seconds: 0 <= from < until <= 86400 where there are any.
  CZRDate date;
  unsigned from = 0;
  unsigned until = 0;

  // Whether the span holds the moment.
  [[nodiscard]] bool Has(const CZRDateTime& moment) const {
    return moment.GetDate() == date && moment.GetTime().GetTime() - from < until - from;
  }
};

}  // namespace pxd

#endif
