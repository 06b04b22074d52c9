// Bars of an older format, without tick counts. They stay so that history stored in it can be read:
//
//   CDPCDblOHLCUDUTOld old;
//   old.Serialize(archive);
//   bar.SetEqualTo(&old);  // a CDPCDblOHLCUDUT; its tick counts become 0
//
// They also build, and divide volume by comparing each price with the one before it. Unlike the
// newer bars they leave their flags when they are made null.
#ifndef PXDUTIL_DATAPOINTS_OLD_BARS_H
#define PXDUTIL_DATAPOINTS_OLD_BARS_H

#include <pxdutil/datapoints/calculated.h>
#include <pxdutil/datapoints/detail/record_point.h>

#pragma pack(push, 1)

// The older form of CDPCDblOHLCUDUT.
class PXDUTIL_API CDPCDblOHLCUDUTOld
    : public pxd::detail::RecordPoint<CDPCDblOHLCUDUTOld, CDPCDataPtCalculated, CDPSTDblOHLCUDUTOld,
                                      pxd::detail::kOldOhlcRules> {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CDPCDblOHLCUDUTOld);

 public:
  using RecordPoint::operator=;
  void SetToNull() override;
  PXDUTIL_DECLARE_BUILDING;
};

// The older form of CDPCDblOHLCUDUTO.
class PXDUTIL_API CDPCDblOHLCUDUTOOld
    : public pxd::detail::RecordPoint<CDPCDblOHLCUDUTOOld, CDPCDataPtCalculated,
                                      CDPSTDblOHLCUDUTOOld, pxd::detail::kOldOhlcOpenIntRules> {
  PXDUTIL_DECLARE_RUNTIME_CLASS(CDPCDblOHLCUDUTOOld);

 public:
  // The newer form's number, although this class has nine columns: callers who walk the columns
  // beyond meet DataTypeNone, no value, and an exception for their text.
  static constexpr unsigned int m_NumCols = 13;

  using RecordPoint::operator=;
  void SetToNull() override;
  PXDUTIL_DECLARE_BUILDING;
};

static_assert(sizeof(CDPCDblOHLCUDUTOld) == 39 + sizeof(void*));
static_assert(sizeof(CDPCDblOHLCUDUTOOld) == 43 + sizeof(void*));

#pragma pack(pop)

#if PXDUTIL_HAS_TEMPLATES
extern template class pxd::detail::RecordPoint<CDPCDblOHLCUDUTOld, CDPCDataPtCalculated,
                                               CDPSTDblOHLCUDUTOld, pxd::detail::kOldOhlcRules>;
extern template class pxd::detail::RecordPoint<CDPCDblOHLCUDUTOOld, CDPCDataPtCalculated,
                                               CDPSTDblOHLCUDUTOOld,
                                               pxd::detail::kOldOhlcOpenIntRules>;
#endif

#endif
