#include <pxdutil/datapoints/old_bars.h>

#include <pxdutil/datapoints/detail/record_point_impl.h>

PXDUTIL_DEFINE_RUNTIME_CLASS(CDPCDblOHLCUDUTOld, CDPCDataPtCalculated, kNoSchema, nullptr)
PXDUTIL_DEFINE_RUNTIME_CLASS(CDPCDblOHLCUDUTOOld, CDPCDataPtCalculated, kNoSchema, nullptr)

template class pxd::detail::RecordPoint<CDPCDblOHLCUDUTOld, CDPCDataPtCalculated,
                                        CDPSTDblOHLCUDUTOld, pxd::detail::kOldOhlcRules>;
template class pxd::detail::RecordPoint<CDPCDblOHLCUDUTOOld, CDPCDataPtCalculated,
                                        CDPSTDblOHLCUDUTOOld, pxd::detail::kOldOhlcOpenIntRules>;

namespace {

// RecordPoint::SetToNull, but for the flags.
template <class Point, class Record>
void SetToNullButFlags(Point& point, Record& record) {
  point.SetZRDateTime(CZRDateTime(CZRDateTime::LimitNull));
  record.Record::ValueRecordType::SetToNull();
}

}  // namespace

void CDPCDblOHLCUDUTOld::SetToNull() {
  SetToNullButFlags(*this, m_Record);
}

void CDPCDblOHLCUDUTOOld::SetToNull() {
  SetToNullButFlags(*this, m_Record);
}
