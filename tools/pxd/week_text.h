// Answers about a week of sessions, as people read them.
#ifndef PXDUTIL_TOOLS_PXD_WEEK_TEXT_H
#define PXDUTIL_TOOLS_PXD_WEEK_TEXT_H

#include <string>

#include <pxdutil/sessions/session.h>

namespace pxd::tool {

// Where the moment falls, by every period.
std::string PeriodsText(const ZRGS_SESSION& week, const CZRDateTime& moment);

// What closes next after the moment, and which trading day closes nearest to it.
std::string ClosesText(const ZRGS_SESSION& week, const CZRDateTime& moment,
                       const CZRDateTimeSpan& tolerance);

// The compact form, and what doesn't come back from it.
std::string CompactText(const ZRGS_SESSION& week);

// The windows that a repair trimmed, a line each; empty where there are none.
std::string TrimmedText(const ZRGS_SESSION& before, const ZRGS_SESSION& after);

}  // namespace pxd::tool

#endif
