// The points without prices: what the common interface doesn't tell of them.
#include <pxdutil/datapoints/plain_points.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <vector>

#include <gtest/gtest.h>
#include <pxdutil/datapoints/short_bars.h>

#include "tests/datapoints/bytes.h"

namespace {

using namespace datapoints_test;

TEST(OptDailyRecord, LiesInMemoryInFieldOrder) {
  CDPRecOptDaily record;
  record.m_Date = 0x0102;
  record.m_Time = 0x03040506;
  record.m_PutVol = 1;
  record.m_CallVol = 2;
  record.m_PutOpenInt = -1;
  record.m_CallOpenInt = 4;
  record.m_ImpliedVol = 1;
  record.m_VolCount = 9;
  record.m_VolSum = 2;
  EXPECT_EQ(InMemory(record), Hex("0201 06050403 01000000 02000000 ffffffff 04000000 0000803f 09"
                                  "00000040"));
}

TEST(CnvRecord, LiesInMemoryInFieldOrder) {
  CDPRecCnv record;
  record.m_Date = 0x0102;
  record.m_Time = 0x03040506;
  record.m_Winning = 1;
  record.m_Losing = 2;
  EXPECT_EQ(InMemory(record), Hex("0201 06050403 000000000000f03f 0000000000000040 01"));
}

float Ex(const CDPOptDaily& point, unsigned col, unsigned char selector) {
  CDPValue value;
  point.GetDPValueForColEx(col, value, selector);
  return value.GetFloat();
}

TEST(OptDaily, ColumnsReadByTheirSign) {
  CDPRecOptDaily record;
  record.m_PutVol = 0xFFFFFFFF;
  record.m_CallVol = 0x80000000;
  record.m_PutOpenInt = -1;
  record.m_CallOpenInt = std::numeric_limits<std::int32_t>::min();
  record.m_ImpliedVol = 0.25F;
  CDPOptDaily point;
  point.SetDPST(record);
  EXPECT_EQ(Ex(point, 0, 4), 4294967296.0F);
  EXPECT_EQ(Ex(point, 1, 4), 2147483648.0F);
  EXPECT_EQ(Ex(point, 2, 4), -1.0F);
  EXPECT_EQ(Ex(point, 3, 4), -2147483648.0F);
  EXPECT_EQ(Ex(point, 4, 4), 0.25F);
}

TEST(OptDaily, WritesAreCutTowardsZeroAndSaturate) {
  struct Case {
    float value;
    std::uint32_t unsignedNumber;
    std::int32_t signedNumber;
  };
  constexpr std::int32_t max = std::numeric_limits<std::int32_t>::max();
  constexpr std::int32_t min = std::numeric_limits<std::int32_t>::min();
  for (const Case& c :
       {Case{3.9F, 3, 3}, Case{-3.9F, 0, -3}, Case{1e10F, 0xFFFFFFFF, max}, Case{-1e10F, 0, min},
        Case{3e9F, 3000000000U, max}, Case{std::numeric_limits<float>::quiet_NaN(), 0, 0}}) {
    CDPOptDaily point;
    for (unsigned col = 0; col < 5; ++col) {
      CDPValue value(c.value);
      point.SetDPValueForCol(col, value);
    }
    CDPRecOptDaily record;
    point.GetDPST(record);
    EXPECT_EQ(+record.m_PutVol, c.unsignedNumber);
    EXPECT_EQ(+record.m_CallVol, c.unsignedNumber);
    EXPECT_EQ(+record.m_PutOpenInt, c.signedNumber);
    EXPECT_EQ(+record.m_CallOpenInt, c.signedNumber);
    EXPECT_EQ(BitsOf(record.m_ImpliedVol), BitsOf(c.value));
  }
}

TEST(OptDaily, SelectorsOfReadsAndWritesArentMirrorsAsMeant) {
  for (const unsigned char selector : std::vector<unsigned char>{0, 1, 3, 4, 5, 6, 7, 255}) {
    for (unsigned col = 0; col < 5; ++col) {
      CDPOptDaily point;
      CDPValue value(7.0F);
      point.SetDPValueForColEx(col, value, selector);
      const bool wroteFirst = selector == 4;
      EXPECT_EQ(Ex(point, col, 4), wroteFirst ? 7.0F : 0.0F) << int{selector};
      EXPECT_EQ(Ex(point, col, 5), wroteFirst ? 0.0F : 7.0F) << int{selector};
      const bool readsRunning = selector == 5 || selector == 6;
      EXPECT_EQ(Ex(point, col, selector), readsRunning != wroteFirst ? 7.0F : 0.0F)
          << int{selector};
    }
  }
}

CDPRecOptDaily FullOption() {
  CDPRecOptDaily record;
  record.m_Date = 1;
  record.m_Time = 2;
  record.m_PutVol = 3;
  record.m_CallVol = 4;
  record.m_PutOpenInt = 5;
  record.m_CallOpenInt = 6;
  record.m_ImpliedVol = 7;
  record.m_VolCount = 8;
  record.m_VolSum = 9;
  return record;
}

TEST(OptDaily, SetToNullZeroesItsRecordAndLeavesTheOtherAndTheFlags) {
  CDPOptDaily point;
  point.SetDPST(FullOption());
  point.m_PrevDailyRec = FullOption();
  point.SetFlag(0x05);
  point.SetToNull();
  CDPRecOptDaily expected;
  expected.m_Date = 0xFFFF;
  expected.m_Time = 0xFFFFFFFF;
  EXPECT_EQ(InMemory(point.GetDPST()), InMemory(expected));
  EXPECT_EQ(+point.m_PrevDailyRec.m_PutVol, 3U);
  EXPECT_TRUE(point.HasFlag(0x01));
  EXPECT_TRUE(point.HasFlag(0x04));
  CDPRecOptDaily record;
  std::memset(static_cast<void*>(&record), 0x55, sizeof record);
  record.SetToNull();
  EXPECT_EQ(InMemory(record), InMemory(expected)) << "the sum too";
}

TEST(OptDaily, IsNullByItsDateAndNumbersWhateverTheTime) {
  CDPOptDaily point;
  point.SetZRDateTime(static_cast<unsigned short>(0xFFFF), 5UL);
  EXPECT_EQ(point.IsNull(), 1);
  point.SetZRDateTime(static_cast<unsigned short>(0xFFFE), 0xFFFFFFFFUL);
  EXPECT_EQ(point.IsNull(), 0);
  for (unsigned col = 0; col < 5; ++col) {
    CDPOptDaily one;
    CDPValue value(1.0F);
    one.SetDPValueForCol(col, value);
    EXPECT_EQ(one.IsNull(), 0);
    EXPECT_EQ(one.HasNullPrice(), 0);
  }
}

TEST(OptDaily, AssignmentCopiesBothRecordsButNotTheirSums) {
  CDPOptDaily source;
  // Built byte by byte, since assignment of a record leaves its sum too.
  CDPRecOptDaily record(FullOption());
  EXPECT_EQ(+record.m_VolSum, 9.0F) << "a copy takes all";
  source.SetDPST(record);
  source.m_PrevDailyRec = record;
  source.m_PrevDailyRec.m_VolSum = 9;
  for (const bool bySetEqualTo : {false, true}) {
    CDPOptDaily target;
    target.m_PrevDailyRec.m_VolSum = 1;
    if (bySetEqualTo) {
      target.SetEqualTo(&source);
    } else {
      target = source;
    }
    EXPECT_EQ(target == source, 1);
    EXPECT_EQ(+target.GetDPST().m_VolCount, 8);
    EXPECT_EQ(+target.m_PrevDailyRec.m_PutVol, 3U);
    EXPECT_EQ(+target.m_PrevDailyRec.m_VolCount, 8);
    EXPECT_EQ(+target.m_PrevDailyRec.m_VolSum, 1.0F);
  }
}

TEST(OptDaily, SamplesArentCompared) {
  CDPRecOptDaily a = FullOption();
  CDPRecOptDaily b = FullOption();
  b.m_VolCount = 99;
  b.m_VolSum = 99;
  EXPECT_EQ(a == b, 1);
  b.m_CallOpenInt = 99;
  EXPECT_EQ(a == b, 0);
}

TEST(PlainPointsOfAnotherClass, AreNeitherEqualNorCopied) {
  CDPOptDaily option;
  CDPCnv conversion;
  CDPCDblC close;
  for (CDPDataPt* other : std::initializer_list<CDPDataPt*>{&conversion, &close}) {
    EXPECT_EQ(option.IsEqualTo(other), 0);
    option.SetDPST(FullOption());
    option.SetEqualTo(other);
    EXPECT_EQ(+option.GetDPST().m_PutVol, 3U);
  }
  for (CDPDataPt* other : std::initializer_list<CDPDataPt*>{&option, &close}) {
    EXPECT_EQ(conversion.IsEqualTo(other), 0);
    conversion.SetEqualTo(other);
    EXPECT_EQ(conversion.HasNullPrice(), 1);
  }
}

CDPCnv Conversion(double winning, double losing) {
  CDPRecCnv record;
  record.m_Date = 45000;
  record.m_Time = 34260;
  record.m_Winning = winning;
  record.m_Losing = losing;
  record.m_IsNull = 0;
  CDPCnv point;
  point.SetDPST(record);
  return point;
}

TEST(Cnv, IsNullUntilAMergeWhateverElseFillsItAsMeant) {
  CDPCnv point;
  CDPValue value(1.5);
  point.SetDPValueForCol(0, value);
  point.SetZRDateTime(static_cast<unsigned short>(45000), 1UL);
  point.SetZRDateTime(CZRDateTime(CZRDate(static_cast<unsigned short>(45001)), CZRTime(1)));
  EXPECT_EQ(point.IsNull(), 1);
  EXPECT_EQ(point.HasNullPrice(), 0);
}

TEST(Cnv, SetToNullUsesDateAndTime0AndLeavesTheFlags) {
  CDPCnv point = Conversion(1, 2);
  EXPECT_EQ(point.IsNull(), 0);
  point.SetFlag(0x05);
  point.SetToNull();
  EXPECT_EQ(InMemory(point.GetDPST()), InMemory(CDPRecCnv()));
  EXPECT_EQ(+point.GetDPST().m_Date, 0);
  EXPECT_EQ(+point.GetDPST().m_Time, 0U);
  EXPECT_EQ(point.IsNull(), 1);
  EXPECT_TRUE(point.HasFlag(0x01));
}

TEST(Cnv, BothNumbersMustBe0ForANullPrice) {
  EXPECT_EQ(Conversion(0, 0).HasNullPrice(), 1);
  EXPECT_EQ(Conversion(0.5, 0).HasNullPrice(), 0);
  EXPECT_EQ(Conversion(0, 0.5).HasNullPrice(), 0);
}

TEST(Cnv, SetEqualToRefusesANullPriceAndAssignmentDoesNot) {
  CDPCnv nothing = Conversion(0, 0);
  CDPCnv point = Conversion(1, 2);
  point.SetEqualTo(&nothing);
  EXPECT_EQ(+point.GetDPST().m_Winning, 1.0);
  CDPCnv source = Conversion(3, 4);
  CDPCnv fresh;
  fresh.SetEqualTo(&source);
  EXPECT_EQ(fresh == source, 1);
  EXPECT_EQ(fresh.IsNull(), 0) << "the mark is copied";
  point = nothing;
  EXPECT_EQ(+point.GetDPST().m_Winning, 0.0);
}

TEST(Cnv, TheMarkIsntCompared) {
  CDPRecCnv a;
  CDPRecCnv b;
  b.m_IsNull = 0;
  EXPECT_EQ(a == b, 1);
  b.m_Losing = 1;
  EXPECT_EQ(a == b, 0);
}

TEST(Cnv, MarkersAreTheFloatsWidenedToDoubles) {
  struct Case {
    std::uint64_t bits;
    bool minute;
    bool second;
  };
  for (const Case& c :
       {Case{0x47EFFFFFE0000000, true, false}, Case{0x47EFFFFFC0000000, false, true},
        Case{0x47EFFFFFE0000001, false, false}, Case{0x47EFFFFFDFFFFFFF, false, false},
        Case{0x47EFFFFFC0000001, false, false}}) {
    CDPCnv point = Conversion(std::bit_cast<double>(c.bits), 0);
    EXPECT_EQ(point.IsAnEndOfMinuteTick(), c.minute);
    EXPECT_EQ(point.IsAnEndOfSecondTick(), c.second);
    CDPCnv losing = Conversion(0, std::bit_cast<double>(c.bits));
    EXPECT_FALSE(losing.IsAnEndOfMinuteTick());
    EXPECT_FALSE(losing.IsAnEndOfSecondTick());
  }
}

}  // namespace
