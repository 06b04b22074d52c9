// Which class of data point stands for a field at a resolution.
#include <pxdutil/datapoints/ohlc_bars.h>
#include <pxdutil/datapoints/plain_points.h>
#include <pxdutil/datapoints/ticks.h>
#include <pxdutil/history/detail/catalogue.h>
#include <pxdutil/history/field_resolution.h>

#include <algorithm>
#include <array>

namespace {

using pxd::detail::CatalogueEntryOf;

// How wide a point is, as far as its class goes.
enum class Width { kAny, kTick, kBar, kDaily, kNone };

Width WidthOf(const CResoln& resoln) {
  switch (resoln.GetResolnUnitType()) {
    case CResoln::ResolnTypeTick:
      if (resoln.GetResolnQty() == 0) {
        return Width::kNone;
      }
      return resoln.GetResolnQty() == 1 ? Width::kTick : Width::kBar;
    case CResoln::ResolnTypeSecond:
    case CResoln::ResolnTypeMinute:
      return Width::kBar;
    case CResoln::ResolnTypeDay:
    case CResoln::ResolnTypeWeek:
    case CResoln::ResolnTypeMonth:
    case CResoln::ResolnTypeYear:
      return Width::kDaily;
  }
  return Width::kNone;
}

// What a rule asks of the field: its id, or its type in the catalogue.
enum class By { kId, kType };

template <class Point>
CDPDataPt* MakeOne() {
  return new Point;
}

// An array of none has one element all the same: DeleteDataPtArray asks the first for its class.
template <class Point>
CDPDataPt* MakeArray(unsigned int count) {
  return new Point[std::max(count, 1U)];
}

template <class Point>
void DeleteArray(CDPDataPt* points) {
  delete[] static_cast<Point*>(points);
}

struct Rule {
  Width width;
  By by;
  unsigned short wanted;
  CDPDataPt* (*make)();
  CDPDataPt* (*makeArray)(unsigned int count);  // null where the class comes singly
  void (*deleteArray)(CDPDataPt* points);
  const CRuntimeClass* (*record)();  // the class's own

  [[nodiscard]] bool Takes(Width asked, unsigned short id, unsigned char type) const {
    return (width == Width::kAny || width == asked) && wanted == (by == By::kId ? id : type);
  }
};

template <class Point>
constexpr Rule Single(Width width, By by, unsigned short wanted) {
  return {width, by, wanted, &MakeOne<Point>, nullptr, nullptr, &Point::GetThisClass};
}

template <class Point>
constexpr Rule SingleOrArray(Width width, By by, unsigned short wanted) {
  return {width,
          by,
          wanted,
          &MakeOne<Point>,
          &MakeArray<Point>,
          &DeleteArray<Point>,
          &Point::GetThisClass};
}

constexpr unsigned short kConversionRecord = 521;
constexpr unsigned short kOptionRecord = 485;

// Field types of the catalogue.
constexpr unsigned short kNoHistory = 2;
constexpr unsigned short kRecord = 3;

// The first rule that fits decides; arrays go by those alone that have them, so 521 and 485, which
// are records by their type, come as records there. Prices (type 0) have no rule, also where the
// catalogue lists storage forms for them.
constexpr std::array<Rule, 6> kRules = {
    Single<CDPCnv>(Width::kAny, By::kId, kConversionRecord),
    SingleOrArray<CDPTDblDblTick>(Width::kTick, By::kType, kRecord),
    Single<CDPTDblTick>(Width::kTick, By::kType, kNoHistory),
    SingleOrArray<CDPCDblOHLCUDUT>(Width::kBar, By::kType, kRecord),
    Single<CDPOptDaily>(Width::kDaily, By::kId, kOptionRecord),
    SingleOrArray<CDPCDblOHLCUDUTO>(Width::kDaily, By::kType, kRecord),
};

}  // namespace

CDPDataPt* CFieldResoln::CreateDataPt(CField field, CResoln resoln) {
  const unsigned short id = field.GetFieldVal();
  // A conversion point is told by its id, so it can be made ahead of the catalogue.
  const unsigned char type = id == kConversionRecord ? 0 : CatalogueEntryOf(id).GetFieldType();
  const Width width = WidthOf(resoln);
  for (const Rule& rule : kRules) {
    if (rule.Takes(width, id, type)) {
      return rule.make();
    }
  }
  return nullptr;
}

CDPDataPt* CFieldResoln::CreateDataPt() const {
  return CreateDataPt(GetField(), GetResoln());
}

CDPDataPt* CFieldResoln::CreateDataPtArray(CField field, CResoln resoln, unsigned int count) {
  const unsigned short id = field.GetFieldVal();
  const unsigned char type = CatalogueEntryOf(id).GetFieldType();
  const Width width = WidthOf(resoln);
  for (const Rule& rule : kRules) {
    if (rule.makeArray != nullptr && rule.Takes(width, id, type)) {
      return rule.makeArray(count);
    }
  }
  return nullptr;
}

CDPDataPt* CFieldResoln::CreateDataPtArray(unsigned int count) const {
  return CreateDataPtArray(GetField(), GetResoln(), count);
}

void CFieldResoln::DeleteDataPtArray(CDPDataPt* points) {
  if (points == nullptr) {
    return;
  }
  const CRuntimeClass* const record = points->GetRuntimeClass();
  for (const Rule& rule : kRules) {
    if (rule.deleteArray != nullptr && rule.record() == record) {
      rule.deleteArray(points);
      return;
    }
  }
  pxd::Fault("DeleteDataPtArray was given points that CreateDataPtArray didn't make");
}
