// In what the classes of bars differ when a point is offered to them: a row a class.
#ifndef PXDUTIL_DATAPOINTS_BARS_DETAIL_ADD_RULES_H
#define PXDUTIL_DATAPOINTS_BARS_DETAIL_ADD_RULES_H

#include <pxdutil/foundation/object.h>

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
};

}  // namespace pxd::detail

#endif
