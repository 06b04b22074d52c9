#include <pxdutil/datapoints/short_bars.h>

#include <pxdutil/datapoints/detail/record_point_impl.h>

PXDUTIL_DEFINE_RUNTIME_CLASS(CDPCDblC, CDPCDataPtCalculated, kNoSchema, nullptr)
PXDUTIL_DEFINE_RUNTIME_CLASS(CDPCDblDblC, CDPCDataPtCalculated, kNoSchema, nullptr)
PXDUTIL_DEFINE_RUNTIME_CLASS(CDPCDblDblH, CDPCDataPtCalculated, kNoSchema, nullptr)
PXDUTIL_DEFINE_RUNTIME_CLASS(CDPCDblDblL, CDPCDataPtCalculated, kNoSchema, nullptr)

template class pxd::detail::RecordPoint<CDPCDblC, CDPCDataPtCalculated, CDPSTDblC,
                                        pxd::detail::kCloseRules>;
template class pxd::detail::RecordPoint<CDPCDblDblC, CDPCDataPtCalculated, CDPSTDblDblC,
                                        pxd::detail::kCloseVolumeRules>;
template class pxd::detail::RecordPoint<CDPCDblDblH, CDPCDataPtCalculated, CDPSTDblDblH,
                                        pxd::detail::kHighVolumeRules>;
template class pxd::detail::RecordPoint<CDPCDblDblL, CDPCDataPtCalculated, CDPSTDblDblL,
                                        pxd::detail::kLowVolumeRules>;
