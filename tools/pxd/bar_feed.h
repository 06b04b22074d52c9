// Builds points of a field at one resolution from ticks and hands each finished one on. The field's
// catalogue entry says of which class they are; it must be that of a record:
//
//   seconds, minutes   CDPCDblOHLCUDUT, fed with ticks; a late print in the dribble window goes
//                      into its session's last bar
//   days to months     CDPCDblOHLCUDUTO, fed with finished 1-minute bars, since a tick doesn't move
//                      the high and the low of such a bar
//   1 tick             the ticks themselves, as CDPTDblDblTick
//   several ticks      CDPCDblOHLCUDUT of so many taken ticks each, counted here, since the library
//                      has a tick stand for a second; a bar is stamped with its last tick, and the
//                      session's close ends the last bar early
//
// Ticks go back in time now and then. One that does is late: it is taken if it falls into the bar
// that is being built, and else left out, since stored series ascend. Ticks and bars of ticks leave
// out all that are late.
#ifndef PXDUTIL_TOOLS_PXD_BAR_FEED_H
#define PXDUTIL_TOOLS_PXD_BAR_FEED_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include <pxdutil/datapoints/data_point.h>
#include <pxdutil/datapoints/ticks.h>
#include <pxdutil/history/field_resolution.h>
#include <pxdutil/sessions/session.h>

namespace pxd::tool {

// Takes finished points, in the order of time. The point is the caller's and changes afterwards.
class PointSink {
 public:
  virtual ~PointSink() = default;
  virtual void Take(CDPDataPt& point) = 0;
};

struct FeedCounts {
  std::uint64_t taken = 0;
  std::uint64_t outside = 0;  // in no session, or in none of the period's
  std::uint64_t late = 0;     // all that went back in time; those that were taken count there too
  std::uint64_t leftOut = 0;  // the late ones that weren't taken
  std::uint64_t points = 0;   // points handed on

  friend bool operator==(const FeedCounts&, const FeedCounts&) = default;
};

class BarFeed {
 public:
  virtual ~BarFeed() = default;

  // Offers ticks; finished points go to the sink meanwhile. The place of the first tick that was
  // late, or their number where none was.
  virtual std::size_t OfferAll(std::span<const CDPTDblDblTick> ticks) = 0;
  // Offers one. Whether it was late.
  bool Offer(const CDPTDblDblTick& tick) { return OfferAll({&tick, 1}) == 0; }
  // Hands on the point that is still being built. Nothing may be offered behind it.
  virtual void Finish() = 0;
  [[nodiscard]] virtual FeedCounts Counts() const = 0;
};

// Whether a feed can build the pair under this week; if not, `error` says why. Only records are
// built; no years, days, weeks and months only one by one, days and months only where a session
// ends a trading day. Needs the catalogue, as a feed does.
bool CanBuild(const CFieldResoln& pair, const ZRGS_SESSION& week, std::string& error);

// A feed for a pair that CanBuild. `sink` must outlive it.
std::unique_ptr<BarFeed> MakeBarFeed(const CFieldResoln& pair, const ZRGS_SESSION& week,
                                     PointSink& sink);

}  // namespace pxd::tool

#endif
