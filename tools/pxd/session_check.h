// Which session of a week runs into which.
#ifndef PXDUTIL_TOOLS_PXD_SESSION_CHECK_H
#define PXDUTIL_TOOLS_PXD_SESSION_CHECK_H

#include <cstdint>
#include <string>

#include <pxdutil/sessions/session.h>

namespace pxd::tool {

inline constexpr std::uint32_t kMinutesPerDay = 1440;
inline constexpr std::uint32_t kMinutesPerWeek = 10080;

// The session's length in minutes, 1 to a week; a close at or before the open lies a week later.
std::uint32_t LengthOf(const ZRGS_SESSION_INFO& session);

// The minutes of the week's windows that count in its validity: none without ResetFlag.
std::uint32_t WindowOf(const ZRGS_SESSION_INFO& session);

// Words for the first two sessions that overlap, windows included; empty where none do. Each
// session may stand anywhere in the list. It looks at the whole circle of the week, while
// CZRGSSession::IsValid leaves the last session's end unchecked.
std::string CollisionIn(const ZRGS_SESSION& week);

// Why a list isn't valid by CZRGSSession::IsValid; empty where it is.
std::string WhyInvalid(const ZRGS_SESSION& week);

}  // namespace pxd::tool

#endif
