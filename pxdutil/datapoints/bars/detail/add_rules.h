// In what the classes of bars differ when a point is offered to them: a row a class.
#ifndef PXDUTIL_DATAPOINTS_BARS_DETAIL_ADD_RULES_H
#define PXDUTIL_DATAPOINTS_BARS_DETAIL_ADD_RULES_H

#include <cstddef>
#include <optional>
#include <span>

#include <pxdutil/datapoints/calculated.h>
#include <pxdutil/datapoints/ticks.h>
#include <pxdutil/sessions/answer_span.h>

namespace pxd::detail {

// Merges the trades at the front that lie in the span, one after the other, and tells how many they
// were. The span must be one of those of the bar as it stands. `previous` is the point before them.
using MergeRunFunction = std::size_t(CDPCDataPtCalculated& bar,
                                     std::span<const CDPTDblDblTick> trades, const AnswerSpan& span,
                                     CDPCDataPtCalculated::TrendType& trend,
                                     const CDPDataPt* previous);

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
  // How a run of trades is merged; null where trades aren't moments.
  MergeRunFunction* mergeRun;
};

// The rules of a bar, null where its class isn't of this library or takes no points.
[[nodiscard]] const AddRules* FindAddRules(const CDPCDataPtCalculated& bar);

// All that merging a trade looks at in the point before it: its price, or none.
[[nodiscard]] std::optional<float> PriceLeftBy(const CDPDataPt* previous);

}  // namespace pxd::detail

#endif
