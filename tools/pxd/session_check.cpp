#include "session_check.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

#include "session_words.h"

namespace pxd::tool {
namespace {

std::string Collision(const ZRGS_SESSION_INFO& early, const ZRGS_SESSION_INFO& late,
                      std::uint32_t distance) {
  if (distance == 0 && LengthOf(early) == LengthOf(late)) {
    return fmt::format("the session {} is there twice", SessionText(early));
  }
  if (distance < LengthOf(early)) {
    return fmt::format("the session {} collides with {}", SessionText(late), SessionText(early));
  }
  const bool reset = early.ResetMinutes > early.DribbleMinutes;
  return fmt::format("the session {} opens in the {} window of {}, {} minutes long",
                     SessionText(late), reset ? "reset" : "dribble", SessionText(early),
                     WindowOf(early));
}

}  // namespace

std::uint32_t LengthOf(const ZRGS_SESSION_INFO& session) {
  const std::uint32_t open = session.OpenMinute % kMinutesPerWeek;
  const std::uint32_t close = session.CloseMinute % kMinutesPerWeek;
  return close > open ? close - open : close + kMinutesPerWeek - open;
}

std::uint32_t WindowOf(const ZRGS_SESSION_INFO& session) {
  return session.ResetFlag != 0
             ? std::max<std::uint32_t>(session.ResetMinutes, session.DribbleMinutes)
             : 0;
}

std::string CollisionIn(const ZRGS_SESSION& week) {
  std::vector<ZRGS_SESSION_INFO> sorted = week.sessions;
  std::stable_sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) {
    return a.OpenMinute % kMinutesPerWeek < b.OpenMinute % kMinutesPerWeek;
  });
  if (sorted.size() < 2) {
    return {};
  }
  for (std::size_t i = 0; i < sorted.size(); ++i) {
    const ZRGS_SESSION_INFO& early = sorted[i];
    const bool isLast = i + 1 == sorted.size();
    const ZRGS_SESSION_INFO& late = sorted[isLast ? 0 : i + 1];
    const std::uint32_t distance = late.OpenMinute % kMinutesPerWeek +
                                   (isLast ? kMinutesPerWeek : 0) -
                                   early.OpenMinute % kMinutesPerWeek;
    if (distance < LengthOf(early) + WindowOf(early)) {
      return Collision(early, late, distance);
    }
  }
  return {};
}

std::string WhyInvalid(const ZRGS_SESSION& week) {
  if (CZRGSSession::IsValid(week) != 0) {
    return {};
  }
  if (week.sessions.empty()) {
    return "there is no session; expected 1 to 256";
  }
  if (week.sessions.size() > 256) {
    return fmt::format("there are {} sessions; expected 1 to 256", week.sessions.size());
  }
  if (std::string collision = CollisionIn(week); !collision.empty()) {
    return collision;
  }
  // Nothing overlaps, so the order is at fault: the first prefix that fails ends with the culprit.
  ZRGS_SESSION prefix;
  for (const ZRGS_SESSION_INFO& session : week.sessions) {
    prefix.sessions.push_back(session);
    if (CZRGSSession::IsValid(prefix) == 0) {
      break;
    }
  }
  return fmt::format(
      "the session {} stands out of order; expected the sessions in the order of the week, "
      "passing its end at most once and inside a session",
      SessionText(prefix.sessions.back()));
}

}  // namespace pxd::tool
