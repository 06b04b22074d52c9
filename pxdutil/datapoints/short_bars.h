// Short bars: a close alone, or a close, a high or a low with the volume that goes with it.
#ifndef PXDUTIL_DATAPOINTS_SHORT_BARS_H
#define PXDUTIL_DATAPOINTS_SHORT_BARS_H

#include <pxdutil/datapoints/calculated.h>
#include <pxdutil/datapoints/detail/record_point.h>

#pragma pack(push, 1)

// The close.
class PXDUTIL_API CDPCDblC : public pxd::detail::RecordPoint<CDPCDblC, CDPCDataPtCalculated,
                                                             CDPSTDblC, pxd::detail::kCloseRules> {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CDPCDblC);

 public:
  using RecordPoint::operator=;
  PXDUTIL_DECLARE_BUILDING;
};

// The close and its volume. GetColForColField of this and the next two classes sets the column and
// answers 0 all the same; callers read the column.
class PXDUTIL_API CDPCDblDblC
    : public pxd::detail::RecordPoint<CDPCDblDblC, CDPCDataPtCalculated, CDPSTDblDblC,
                                      pxd::detail::kCloseVolumeRules> {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CDPCDblDblC);

 public:
  using RecordPoint::operator=;
  PXDUTIL_DECLARE_BUILDING;
};

// The high and its volume; of two points with the same high the newer one stays.
class PXDUTIL_API CDPCDblDblH
    : public pxd::detail::RecordPoint<CDPCDblDblH, CDPCDataPtCalculated, CDPSTDblDblH,
                                      pxd::detail::kHighVolumeRules> {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CDPCDblDblH);

 public:
  using RecordPoint::operator=;
  PXDUTIL_DECLARE_BUILDING;
};

// The low and its volume; of two points with the same low the newer one stays.
class PXDUTIL_API CDPCDblDblL
    : public pxd::detail::RecordPoint<CDPCDblDblL, CDPCDataPtCalculated, CDPSTDblDblL,
                                      pxd::detail::kLowVolumeRules> {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CDPCDblDblL);

 public:
  using RecordPoint::operator=;
  PXDUTIL_DECLARE_BUILDING;
};

static_assert(sizeof(CDPCDblC) == 11 + sizeof(void*));
static_assert(sizeof(CDPCDblDblC) == 15 + sizeof(void*));
static_assert(sizeof(CDPCDblDblH) == 15 + sizeof(void*));
static_assert(sizeof(CDPCDblDblL) == 15 + sizeof(void*));

#pragma pack(pop)

#if PXDUTIL_HAS_TEMPLATES
extern template class pxd::detail::RecordPoint<CDPCDblC, CDPCDataPtCalculated, CDPSTDblC,
                                               pxd::detail::kCloseRules>;
extern template class pxd::detail::RecordPoint<CDPCDblDblC, CDPCDataPtCalculated, CDPSTDblDblC,
                                               pxd::detail::kCloseVolumeRules>;
extern template class pxd::detail::RecordPoint<CDPCDblDblH, CDPCDataPtCalculated, CDPSTDblDblH,
                                               pxd::detail::kHighVolumeRules>;
extern template class pxd::detail::RecordPoint<CDPCDblDblL, CDPCDataPtCalculated, CDPSTDblDblL,
                                               pxd::detail::kLowVolumeRules>;
#endif

#endif
