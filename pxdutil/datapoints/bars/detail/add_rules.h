// In what the classes of bars differ when a point is offered to them: a row a class.
#ifndef PXDUTIL_DATAPOINTS_BARS_DETAIL_ADD_RULES_H
#define PXDUTIL_DATAPOINTS_BARS_DETAIL_ADD_RULES_H

#include <optional>

#include <pxdutil/foundation/object.h>

class CDPDataPt;

namespace pxd::detail {

struct AddRules {
  // Points of exactly this class are moments; all others are stamped with the end of their interval
  // and are placed a second earlier.
  const CRuntimeClass* momentClass;
  // Whether that step back is taken at all.
  bool stepsBack;
  // Whether a point in the reset window ends the bar as one after the close does. Otherwise the bar
  // is left alone there, whatever the caller asks.
  bool resetIsClosed;
  // Whether a bar without data, too, takes a point only where the caller asks for a new bar.
  bool emptyBarWaits;
  // Whether merging a trade looks at the point before it.
  bool consultsPrevious;
};

// The rules of a class of bars, null for a class that isn't of this library or takes no points.
[[nodiscard]] const AddRules* FindAddRules(const CRuntimeClass* bar);

// All that merging a trade looks at in the point before it: its price, or none.
[[nodiscard]] std::optional<float> PriceLeftBy(const CDPDataPt* previous);

}  // namespace pxd::detail

#endif
