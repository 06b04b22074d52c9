// Sizes and places in memory, to the byte. They are told for targets with 4-byte pointers; where a
// pointer has 8 bytes, the object header is that much longer and nothing else changes.
#include <cstddef>
#include <vector>

#include <gtest/gtest.h>

#include <pxdutil/datapoints/ohlc_bars.h>
#include <pxdutil/datapoints/old_bars.h>
#include <pxdutil/datapoints/plain_points.h>
#include <pxdutil/datapoints/short_bars.h>
#include <pxdutil/datapoints/ticks.h>

namespace {

constexpr std::size_t kPointer = sizeof(void*);
constexpr std::size_t kLonger = kPointer - 4;
static_assert(kPointer == 4 || kPointer == 8);

// The run-time record of a class: two numbers among five pointers.
static_assert(offsetof(CRuntimeClass, m_lpszClassName) == 0);
static_assert(offsetof(CRuntimeClass, m_nObjectSize) == kPointer);
static_assert(offsetof(CRuntimeClass, m_wSchema) == kPointer + 4);
static_assert(offsetof(CRuntimeClass, m_pfnCreateObject) == kPointer + 8);
static_assert(offsetof(CRuntimeClass, m_pfnGetBaseClass) == 2 * kPointer + 8);
static_assert(offsetof(CRuntimeClass, m_pNextClass) == 3 * kPointer + 8);
static_assert(offsetof(CRuntimeClass, m_pClassInit) == 4 * kPointer + 8);
static_assert(sizeof(CRuntimeClass) == 5 * kPointer + 8);

// One row a class: its size in the table of run-time records, and where its record stands.
#define PXD_POINT_CLASSES(X) \
  X(CDPTDblTick, 15)         \
  X(CDPTDblDblTick, 23)      \
  X(CDPCDblOHLCUDUT, 59)     \
  X(CDPCDblOHLCUDUTO, 121)   \
  X(CDPCDblDblC, 19)         \
  X(CDPCDblC, 15)            \
  X(CDPCDblDblH, 19)         \
  X(CDPCDblDblL, 19)         \
  X(CDPOptDaily, 67)         \
  X(CDPCnv, 28)              \
  X(CDPCDblOHLCUDUTOld, 43)  \
  X(CDPCDblOHLCUDUTOOld, 47)

static_assert(sizeof(CObject) == 4 + kLonger);
static_assert(sizeof(CDPDataPt) == 5 + kLonger);
static_assert(sizeof(CDPTDataPtTick) == 5 + kLonger);
static_assert(sizeof(CDPCDataPtCalculated) == 5 + kLonger);
#define PXD_ASSERT_LAYOUT(point, size)              \
  static_assert(sizeof(point) == (size) + kLonger); \
  static_assert(alignof(point) == 1);               \
  static_assert(point::GetDataOffset() == 5 + kLonger);
PXD_POINT_CLASSES(PXD_ASSERT_LAYOUT)

struct Row {
  const CRuntimeClass* record;
  std::size_t size;
};

TEST(ObjectLayout, RunTimeRecordsTellTheListedSizes) {
#define PXD_ROW(point, size) {RUNTIME_CLASS(point), size},
  const Row rows[] = {{RUNTIME_CLASS(CDPDataPt), 5},
                      {RUNTIME_CLASS(CDPTDataPtTick), 5},
                      {RUNTIME_CLASS(CDPCDataPtCalculated), 5},
                      PXD_POINT_CLASSES(PXD_ROW)};
  for (const Row& row : rows) {
    EXPECT_EQ(static_cast<std::size_t>(row.record->m_nObjectSize), row.size + kLonger)
        << row.record->m_lpszClassName;
  }
}

TEST(ObjectLayout, AnArrayOfBarsIsSteppedBy59Bytes) {
  constexpr unsigned kStride = 59 + kLonger;
  static_assert(sizeof(CDPCDblOHLCUDUT[10]) == 10 * kStride);
  std::vector<CDPCDblOHLCUDUT> bars(10);
  const CDPADataPtAr view(bars.data(), 10);
  EXPECT_EQ(view.GetBufSizeInBytes(), 10 * kStride);
  const auto* const first = reinterpret_cast<const unsigned char*>(view.GetAt(0));
  for (unsigned i = 0; i < 10; ++i) {
    EXPECT_EQ(reinterpret_cast<const unsigned char*>(view.GetAt(i)) - first,
              static_cast<std::ptrdiff_t>(i * kStride));
    EXPECT_EQ(view[i], &bars[i]);
  }
}

}  // namespace
