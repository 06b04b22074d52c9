// The OHLC bars: filling from figures, the running daily record, taking in old data.
#include <pxdutil/datapoints/ohlc_bars.h>

#include <cstdint>
#include <limits>
#include <vector>

#include <gtest/gtest.h>
#include <pxdutil/datapoints/old_bars.h>

#include "tests/datapoints/build_helpers.h"
#include "tests/datapoints/bytes.h"

namespace {

using namespace datapoints_test;

const CZRDateTime kAt = session_test::Day(1, 16, 0);

struct Share {
  long total;
  long up;
  long down;
  float upShare;
  float downShare;
};

TEST(SetValues, HalfTheUnchangedVolumeGoesToEachSideAndAnOddUnitIsLost) {
  for (const Share& c :
       {Share{101, 40, 40, 50, 50}, Share{100, 40, 40, 50, 50}, Share{80, 40, 40, 40, 40},
        Share{79, 40, 40, 40, 40}, Share{77, 40, 40, 39, 39}, Share{0, 0, 0, 0, 0}}) {
    CDPCDblOHLCUDUT bar;
    bar.SetValues(1, 4, 0.5F, 2, c.total, c.up, c.down, 0, 0, 0);
    CDPCDblOHLCUDUTO daily;
    daily.SetValues(1, 4, 0.5F, 2, c.total, c.up, c.down, 0, 0, 0, 5);
    const std::vector<float> expected = {1,         4,           0.5F, 2,
                                         c.upShare, c.downShare, 0,    static_cast<float>(c.total)};
    EXPECT_EQ(Floats(bar, 8), expected) << c.total;
    EXPECT_EQ(Floats(daily, 8), expected) << c.total;
    EXPECT_EQ(Float(daily, 12), 5.0F);
  }
}

TEST(SetValues, AnOddUnchangedTickGoesUp) {
  for (const Share& c : {Share{101, 40, 40, 51, 50}, Share{100, 40, 40, 50, 50},
                         Share{80, 40, 40, 40, 40}, Share{1, 0, 0, 1, 0}}) {
    CDPCDblOHLCUDUT bar;
    bar.SetValues(1, 1, 1, 1, 0, 0, 0, static_cast<unsigned short>(c.total),
                  static_cast<unsigned short>(c.up), static_cast<unsigned short>(c.down));
    CDPCDblOHLCUDUTO daily;
    daily.SetValues(1, 1, 1, 1, 0, 0, 0, static_cast<unsigned long>(c.total),
                    static_cast<unsigned long>(c.up), static_cast<unsigned long>(c.down), 0);
    for (const unsigned col : {8U, 9U, 10U, 11U}) {
      const float expected = col == 8    ? c.upShare
                             : col == 9  ? c.downShare
                             : col == 10 ? 0.0F
                                         : static_cast<float>(c.total);
      EXPECT_EQ(Float(bar, col), expected) << c.total << " column " << col;
      EXPECT_EQ(Float(daily, col), expected) << c.total << " column " << col;
    }
  }
}

TEST(SetValues, WhatIsLeftOfTheTicksWrapsInTheClassesWidths) {
  // 79 - 80 is 65535 in 16 bits: half is 32767, and one is odd.
  CDPCDblOHLCUDUT bar;
  bar.SetValues(1, 1, 1, 1, 0, 0, 0, 79, 40, 40);
  EXPECT_EQ(Float(bar, 8), 40.0F + 32768.0F);
  EXPECT_EQ(Float(bar, 9), 40.0F + 32767.0F);
  // A sum above 16 bits isn't cut.
  bar.SetValues(1, 1, 1, 1, 0, 0, 0, 0, 65535, 65535);
  // 0 - 131070 is 2 in 16 bits.
  EXPECT_EQ(Float(bar, 8), 65536.0F);
  EXPECT_EQ(Float(bar, 9), 65536.0F);
  // 2^32 - 1 in 32 bits: half is 2^31 - 1.
  CDPCDblOHLCUDUTO daily;
  daily.SetValues(1, 1, 1, 1, 0, 0, 0, 79, 40, 40, 0);
  EXPECT_EQ(Float(daily, 8), 2147483688.0F);
  EXPECT_EQ(Float(daily, 9), 2147483687.0F);
}

TEST(SetValues, UnsignedNumbersStayPositive) {
  CDPCDblOHLCUDUTO daily;
  daily.SetValues(1, 1, 1, 1, 0, 0, 0, 0xFFFFFFFFUL, 0xFFFFFFFFUL, 0, 0);
  EXPECT_EQ(Float(daily, 8), 4294967296.0F);
  EXPECT_EQ(Float(daily, 11), 4294967296.0F);
}

TEST(SetValues, VolumesAreSigned32BitNumbers) {
  constexpr std::int32_t max = std::numeric_limits<std::int32_t>::max();
  CDPCDblOHLCUDUT bar;
  // The rest, three times -max, is 2^31 + 3 modulo 2^32, so -2147483645; its half is -1073741822.
  bar.SetValues(1, 1, 1, 1, -max, max, max, 0, 0, 0);
  EXPECT_EQ(Float(bar, 7), -2147483648.0F);
  EXPECT_EQ(Float(bar, 4), 1073741824.0F);
  EXPECT_EQ(Float(bar, 5), 1073741824.0F);
}

TEST(SetValues, NumbersAreCutTo32BitsFirst) {
  // Where a long has 64 bits the upper half is dropped; where it has 32 there is none.
  constexpr std::int64_t turn = std::int64_t{1} << 32;
  CDPCDblOHLCUDUT bar;
  bar.SetValues(1, 4, 0.5F, 2, static_cast<long>(turn + 101), static_cast<long>(turn + 40), 40, 101,
                40, 40);
  EXPECT_EQ(Floats(bar, 12), (std::vector<float>{1, 4, 0.5F, 2, 50, 50, 0, 101, 51, 50, 0, 101}));
  CDPCDblOHLCUDUTO daily;
  daily.SetValues(1, 4, 0.5F, 2, static_cast<long>(turn + 101), 40, static_cast<long>(turn + 40),
                  static_cast<unsigned long>(turn + 101), 40, static_cast<unsigned long>(turn + 40),
                  static_cast<long>(turn + 9));
  EXPECT_EQ(Floats(daily, 13),
            (std::vector<float>{1, 4, 0.5F, 2, 50, 50, 0, 101, 51, 50, 0, 101, 9}));
}

TEST(SetValues, OneOpenInterestSaysThereIsNone) {
  struct Case {
    long given;
    float stored;
  };
  std::vector<Case> cases = {{-32080, 0}, {-32079, -32079}, {-32081, -32081}, {32080, 32080}};
  if (sizeof(long) > 4) {
    cases.push_back({static_cast<long>(0xFFFF82B0UL), 0});  // the same 32 bits
  }
  for (const Case& c : cases) {
    CDPCDblOHLCUDUTO bar;
    bar.SetValues(1, 1, 1, 1, 0, 0, 0, 0, 0, 0, c.given);
    EXPECT_EQ(Float(bar, 12), c.stored) << c.given;
  }
}

TEST(SetValues, LeavesStampFlagsAndTheRunningRecord) {
  CDPCDblOHLCUDUTO bar;
  bar.SetZRDateTime(kAt);
  bar.SetFlag(1);
  bar.m_PrevDailyRec.m_Open = 9;
  bar.SetValues(1, 1, 1, 1, 0, 0, 0, 0, 0, 0, 0);
  EXPECT_EQ(bar.GetZRDateTime(), kAt);
  EXPECT_TRUE(bar.HasFlag(1));
  EXPECT_EQ(+bar.m_PrevDailyRec.m_Open, 9.0F);
}

// ---- The running daily record ----

float Ex(const CDPCDblOHLCUDUTO& bar, unsigned col, unsigned char selector) {
  CDPValue value;
  bar.GetDPValueForColEx(col, value, selector);
  return value.GetFloat();
}
void SetEx(CDPCDblOHLCUDUTO& bar, unsigned col, float number, unsigned char selector) {
  CDPValue value(number);
  bar.SetDPValueForColEx(col, value, selector);
}

const std::vector<unsigned char> kSelectors = {0, 1, 3, 4, 5, 6, 7, 255};

TEST(RunningRecord, SelectorsOf5And6ReadItButForOpenInterest) {
  CDPCDblOHLCUDUTO bar = Counting<CDPCDblOHLCUDUTO>(kAt, 1);
  for (std::size_t i = 0; i < 13; ++i) {
    bar.m_PrevDailyRec.SetFloat(i, 100.0F + static_cast<float>(i));
  }
  for (const unsigned char selector : kSelectors) {
    for (unsigned col = 0; col < 13; ++col) {
      const bool running = (selector == 5 || selector == 6) && col != 12;
      EXPECT_EQ(Ex(bar, col, selector), (running ? 100.0F : 1.0F) + static_cast<float>(col))
          << col << ' ' << int{selector};
    }
  }
}

TEST(RunningRecord, WritesGoWhereSelectorAndColumnSay) {
  for (const unsigned char selector : kSelectors) {
    for (unsigned col = 0; col < 13; ++col) {
      CDPCDblOHLCUDUTO bar = Counting<CDPCDblOHLCUDUTO>(kAt, 10);
      for (std::size_t i = 0; i < 13; ++i) {
        bar.m_PrevDailyRec.SetFloat(i, 3);
      }
      SetEx(bar, col, 50, selector);
      const float before = 10.0F + static_cast<float>(col);
      float first = before;
      float running = 3;
      if (selector == 4) {
        first = 50;
        running = col == 3 ? 50.0F : 3.0F;
      } else if (col < 3) {
        running = 50;
      } else if (col == 3) {
        first = running = 50;
      } else if (col < 12) {
        first = before + 47;
        running = 50;
      } else {
        first = 50;
      }
      EXPECT_EQ(Float(bar, col), first) << col << ' ' << int{selector};
      EXPECT_EQ(bar.m_PrevDailyRec.GetFloat(col), running) << col << ' ' << int{selector};
    }
  }
}

TEST(RunningRecord, AFigureSentAgainAddsItsIncrease) {
  CDPCDblOHLCUDUTO bar;
  SetEx(bar, 4, 100, 5);
  SetEx(bar, 4, 130, 5);
  EXPECT_EQ(Float(bar, 4), 130.0F);
  EXPECT_EQ(Ex(bar, 4, 5), 130.0F);
  bar.ResetPrevDailyRec();
  SetEx(bar, 4, 20, 6);
  EXPECT_EQ(Float(bar, 4), 150.0F);
}

TEST(RunningRecord, TheIncreaseIsTakenBeforeItIsAdded) {
  // 1 + 2^24 would round to 2^24, and less 2^24 that is 0: the order shows.
  CDPCDblOHLCUDUTO bar;
  bar.SetDoubleValForCol(4, 1);
  bar.m_PrevDailyRec.m_UpVol = 16777216;
  SetEx(bar, 4, 16777216, 5);
  EXPECT_EQ(Float(bar, 4), 1.0F);
}

TEST(RunningRecord, TextsAndDoublesWriteTheBarAlone) {
  CDPCDblOHLCUDUTO bar;
  bar.SetDoubleValForCol(3, 5);
  bar.SetStringValForCol(3, "6");
  EXPECT_EQ(Float(bar, 3), 6.0F);
  EXPECT_EQ(+bar.m_PrevDailyRec.m_Close, 0.0F);
}

TEST(RunningRecord, ResetClearsItToTheExtremes) {
  for (const bool bySetToNull : {false, true}) {
    CDPCDblOHLCUDUTO bar = Counting<CDPCDblOHLCUDUTO>(kAt, 1);
    for (std::size_t i = 0; i < 13; ++i) {
      bar.m_PrevDailyRec.SetFloat(i, 5);
    }
    bar.m_PrevDailyRec.m_Date = 1;
    bar.m_PrevDailyRec.m_Time = 1;
    if (bySetToNull) {
      bar.SetToNull();
    } else {
      bar.ResetPrevDailyRec();
    }
    Bytes expected = Hex("ffff ffffffff 00000000 ffff7fff ffff7f7f");
    expected.resize(58);
    EXPECT_EQ(InMemory(bar.m_PrevDailyRec), expected);
    EXPECT_EQ(bar.IsNull(), bySetToNull ? 1 : 0);
  }
}

template <class Bar>
int ResetsBySetToNull() {
  struct Counted : Bar {
    void ResetPrevDailyRec() override { ++calls; }
    int calls = 0;
  };
  Counted bar;
  bar.SetToNull();
  return bar.calls;
}

TEST(RunningRecord, SetToNullResetsItThroughTheSlotAlsoWhereThereIsNone) {
  EXPECT_EQ(ResetsBySetToNull<CDPCDblOHLCUDUTO>(), 1);
  EXPECT_EQ(ResetsBySetToNull<CDPCDblOHLCUDUT>(), 1);
}

TEST(RunningRecord, IsCopiedWithTheBarButNotByTheRecordAndNotCompared) {
  CDPCDblOHLCUDUTO bar;
  bar.m_PrevDailyRec.m_UpVol = 7;
  CDPCDblOHLCUDUTO assigned;
  assigned = bar;
  EXPECT_EQ(+assigned.m_PrevDailyRec.m_UpVol, 7.0F);
  CDPCDblOHLCUDUTO set;
  set.SetEqualTo(&bar);
  EXPECT_EQ(+set.m_PrevDailyRec.m_UpVol, 7.0F);
  const CDPCDblOHLCUDUTO constructed(bar);
  EXPECT_EQ(+constructed.m_PrevDailyRec.m_UpVol, 7.0F);
  CDPSTDblOHLCUDUTO record;
  bar.GetDPST(record);
  CDPCDblOHLCUDUTO fromRecord;
  fromRecord.SetDPST(record);
  EXPECT_EQ(+fromRecord.m_PrevDailyRec.m_UpVol, 0.0F);
  EXPECT_EQ(fromRecord == bar, 1);
  EXPECT_EQ(fromRecord.IsEqualTo(&bar), 1);
}

// ---- Null prices and old data ----

TEST(NullPrice, OneZeroIsEnoughForTheMinuteBarAndAllFourAreNeededForTheDailyAsMeant) {
  for (unsigned zeroed = 0; zeroed < 16; ++zeroed) {
    auto bar = Counting<CDPCDblOHLCUDUT>(kAt, 1);
    auto daily = Counting<CDPCDblOHLCUDUTO>(kAt, 1);
    for (unsigned col = 0; col < 4; ++col) {
      if ((zeroed >> col & 1) != 0) {
        bar.SetDoubleValForCol(col, 0);
        daily.SetDoubleValForCol(col, 0);
      }
    }
    EXPECT_EQ(bar.HasNullPrice(), zeroed != 0 ? 1 : 0);
    EXPECT_EQ(daily.HasNullPrice(), zeroed == 15 ? 1 : 0);
  }
}

TEST(OldData, IsTakenInWithoutTickCounts) {
  auto bar = Counting<CDPCDblOHLCUDUT>(CZRDateTime(), 50);
  bar.SetFlag(4);
  auto old = Counting<CDPCDblOHLCUDUTOld>(kAt, 1);
  bar.SetEqualTo(&old);
  EXPECT_EQ(Floats(bar, 12), (std::vector<float>{1, 2, 3, 4, 5, 6, 7, 8, 0, 0, 0, 0}));
  EXPECT_EQ(bar.GetZRDateTime(), kAt);
  EXPECT_TRUE(bar.HasFlag(4));
}

TEST(OldData, IsTakenInWithItsOpenInterestAndLeavesTheRunningRecord) {
  const Bytes stored =
      Hex("678a 45230100 0000803f 00000040 00004040 00008040 0000a040 0000c040 0000e040 00000041"
          "00001041");
  ASSERT_EQ(stored.size(), 42U);
  CDPCDblOHLCUDUTOOld old;
  Load(old, stored);
  auto bar = Counting<CDPCDblOHLCUDUTO>(kAt, 50);
  bar.m_PrevDailyRec.m_UpVol = 7;
  bar.SetEqualTo(&old);
  EXPECT_EQ(Floats(bar, 13), (std::vector<float>{1, 2, 3, 4, 5, 6, 7, 8, 0, 0, 0, 0, 9}));
  EXPECT_EQ(bar.GetZRDateTime(),
            CZRDateTime(CZRDate(static_cast<unsigned short>(0x8A67)), CZRTime(0x00012345)));
  EXPECT_EQ(+bar.m_PrevDailyRec.m_UpVol, 7.0F);
}

// A host's own bar, with a record that tells the class it comes from.
template <class Bar>
struct Derived : Bar {
  const CRuntimeClass* GetRuntimeClass() const override {
    static const CRuntimeClass record = {
        "Derived", static_cast<int>(sizeof(Derived)), kNoSchema, nullptr, &Base, nullptr, nullptr};
    return &record;
  }
  static const CRuntimeClass* Base() { return Bar::GetThisClass(); }
};

TEST(OldData, ABarDerivedFromTheSameClassIsNotOld) {
  Derived<CDPCDblOHLCUDUT> minute;
  minute.SetDPST(Counting<CDPCDblOHLCUDUT>(kAt, 1).GetDPST());
  CDPCDblOHLCUDUT bar;
  bar.SetEqualTo(&minute);
  EXPECT_EQ(Floats(bar, 12), (std::vector<float>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
  Derived<CDPCDblOHLCUDUTO> daily;
  daily.SetDPST(Counting<CDPCDblOHLCUDUTO>(kAt, 1).GetDPST());
  daily.m_PrevDailyRec.m_UpVol = 7;
  CDPCDblOHLCUDUTO taken;
  taken.SetEqualTo(&daily);
  EXPECT_EQ(Floats(taken, 13), (std::vector<float>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}));
  EXPECT_EQ(+taken.m_PrevDailyRec.m_UpVol, 7.0F);
}

TEST(OldData, AThirdClassIsReadAsItsBytesLieAndNoFurther) {
  auto daily = Counting<CDPCDblOHLCUDUTO>(kAt, 1);
  CDPCDblOHLCUDUT bar;
  bar.SetEqualTo(&daily);
  EXPECT_EQ(Floats(bar, 12), (std::vector<float>{1, 2, 3, 4, 5, 6, 7, 8, 0, 0, 0, 0}));

  auto minute = Counting<CDPCDblOHLCUDUT>(kAt, 1);
  CDPCDblOHLCUDUTO fromMinute;
  fromMinute.SetEqualTo(&minute);
  EXPECT_EQ(Float(fromMinute, 12), 9.0F) << "the up ticks lie where open interest would";

  auto close = Counting<CDPCDblC>(kAt, 5);
  auto shortened = Counting<CDPCDblOHLCUDUTO>(CZRDateTime(), 50);
  shortened.SetEqualTo(&close);
  EXPECT_EQ(Floats(shortened, 13), (std::vector<float>{5, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(shortened.GetZRDateTime(), kAt);
}

}  // namespace
