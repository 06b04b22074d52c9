// The bars of the older format: in what they differ.
#include <pxdutil/datapoints/old_bars.h>

#include <gtest/gtest.h>
#include <pxdutil/foundation/exception.h>

#include "tests/datapoints/build_helpers.h"
#include "tests/datapoints/bytes.h"
#include "tests/support/thrown.h"

namespace {

using namespace datapoints_test;

TEST(OldBars, StoreFlatRecords) {
  const char* const floats =
      "0000803f 00000040 00004040 00008040 0000a040 0000c040 0000e040 00000041";
  const CZRDateTime at(CZRDate(static_cast<unsigned short>(0x8A67)), CZRTime(0x00012345));
  auto old = Counting<CDPCDblOHLCUDUTOld>(at, 1);
  EXPECT_EQ(Stored(old), Hex(std::string("678a 45230100 ") + floats));
  EXPECT_EQ(Stored(old).size(), 38U);
  auto oldO = Counting<CDPCDblOHLCUDUTOOld>(at, 1);
  oldO.SetDoubleValForCol(8, 9);
  EXPECT_EQ(Stored(oldO), Hex(std::string("678a 45230100 ") + floats + "00001041"));
  EXPECT_EQ(Stored(oldO).size(), 42U);
}

TEST(OldBars, OneHasTheNewerClassesNumberOfColumnsAsMeant) {
  CDPCDblOHLCUDUTOOld bar;
  EXPECT_EQ(bar.GetNumCols(), 13U);
  EXPECT_EQ(CDPCDblOHLCUDUTOOld::m_NumCols, 13U);
  EXPECT_EQ(std::size(CDPCDblOHLCUDUTOOld::m_ColHeaderStringArray), 9U);
  EXPECT_EQ(CDPCDblOHLCUDUTOld::m_NumCols, 8U);
  for (unsigned col = 9; col < bar.GetNumCols(); ++col) {
    EXPECT_EQ(bar.GetDataTypeForCol(col), CDPDataPt::DataTypeNone);
    EXPECT_STREQ(bar.GetStringHeaderForCol(col), "");
    CDPValue value(7.0F);
    bar.GetDPValueForCol(col, value);
    EXPECT_EQ(value.GetFloat(), 7.0F);
    EXPECT_NE(pxd::test::ThrownBy<CDPDataPtException>([&] { (void)bar.GetStringValForCol(col); }),
              nullptr);
  }
}

TEST(OldBars, SetToNullKeepsTheFlagsAsMeant) {
  auto old = Counting<CDPCDblOHLCUDUTOld>(session_test::Day(1, 16, 0), 1);
  auto oldO = Counting<CDPCDblOHLCUDUTOOld>(session_test::Day(1, 16, 0), 1);
  for (CDPDataPt* bar : std::initializer_list<CDPDataPt*>{&old, &oldO}) {
    bar->SetFlag(0x05);
    bar->SetToNull();
    EXPECT_TRUE(bar->HasFlag(0x01));
    EXPECT_TRUE(bar->HasFlag(0x04));
    EXPECT_FALSE(bar->HasFlag(0x02));
    EXPECT_EQ(bar->IsNull(), 1);
  }
}

TEST(OldBars, AnyPriceOf0IsANullPriceInBoth) {
  for (unsigned col = 0; col < 8; ++col) {
    auto old = Counting<CDPCDblOHLCUDUTOld>(session_test::Day(1, 16, 0), 1);
    auto oldO = Counting<CDPCDblOHLCUDUTOOld>(session_test::Day(1, 16, 0), 1);
    old.SetDoubleValForCol(col, 0);
    oldO.SetDoubleValForCol(col, 0);
    EXPECT_EQ(old.HasNullPrice(), col < 4 ? 1 : 0);
    EXPECT_EQ(oldO.HasNullPrice(), col < 4 ? 1 : 0);
  }
}

TEST(OldBars, OpenInterestMakesABarNotNull) {
  CDPCDblOHLCUDUTOOld bar;
  bar.SetDoubleValForCol(8, 1);
  EXPECT_EQ(bar.IsNull(), 0);
}

}  // namespace
