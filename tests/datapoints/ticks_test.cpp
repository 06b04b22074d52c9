// The ticks: what the common interface doesn't tell of them.
#include <pxdutil/datapoints/ticks.h>

#include <cstdint>
#include <limits>

#include <gtest/gtest.h>
#include <pxdutil/fields/field_info_mgr.h>

#include "tests/datapoints/bytes.h"

namespace {

using namespace datapoints_test;

TEST(TradeTick, TheWordIsSplitForValuesAndWholeForTexts) {
  struct Case {
    long word;
    long up;
    long down;
    const char* text;
  };
  constexpr std::int32_t max = std::numeric_limits<std::int32_t>::max();
  for (const Case& c : {Case{-5, 0, 5, "-5"}, Case{5, 5, 0, "5"}, Case{0, 0, 0, "0"},
                        Case{max, max, 0, "2147483647"}, Case{-max, 0, max, "-2147483647"}}) {
    CDPTDblDblTick tick;
    tick.SetValues(1, 2, c.word);
    CDPValue value;
    tick.GetDPValueForCol(2, value);
    EXPECT_EQ(value.GetLong(), c.up) << c.word;
    tick.GetDPValueForCol(3, value);
    EXPECT_EQ(value.GetLong(), c.down) << c.word;
    EXPECT_STREQ(tick.GetStringValForCol(2), c.text);
    EXPECT_STREQ(tick.GetStringValForCol(3), c.text);
    EXPECT_EQ(tick.GetDoubleValForCol(2), 0.0);
    EXPECT_EQ(tick.GetDoubleValForCol(3), 0.0);
  }
}

TEST(TradeTick, TheLowestWordWrapsWhenItIsNegated) {
  constexpr long min = std::numeric_limits<std::int32_t>::min();
  CDPTDblDblTick tick;
  tick.SetValues(1, 2, min);
  CDPValue value;
  tick.GetDPValueForCol(2, value);
  EXPECT_EQ(value.GetLong(), 0);
  tick.GetDPValueForCol(3, value);
  EXPECT_EQ(value.GetLong(), min);
  EXPECT_STREQ(tick.GetStringValForCol(3), "-2147483648");
}

TEST(TradeTick, BothWordColumnsStoreTheRawWordAsMeant) {
  for (const unsigned col : {2U, 3U}) {
    for (const long word : {5L, -5L, 0L}) {
      CDPTDblDblTick tick;
      CDPValue value(word);
      tick.SetDPValueForCol(col, value);
      EXPECT_EQ(+tick.GetDPST().m_TickDir, word) << col;
    }
  }
  CDPTDblDblTick tick;
  CDPValue five(5L);
  tick.SetDPValueForCol(3, five);
  CDPValue up;
  tick.GetDPValueForCol(2, up);
  EXPECT_EQ(up.GetLong(), 5);
}

TEST(TradeTick, DoublesAreCutIntoTheWordAndSaturate) {
  struct Case {
    double value;
    std::int32_t word;
  };
  constexpr std::int32_t max = std::numeric_limits<std::int32_t>::max();
  constexpr std::int32_t min = std::numeric_limits<std::int32_t>::min();
  for (const Case& c :
       {Case{3.9, 3}, Case{-3.9, -3}, Case{0.5, 0}, Case{1e10, max}, Case{-1e10, min},
        Case{2147483646.5, max - 1}, Case{std::numeric_limits<double>::quiet_NaN(), 0}}) {
    for (const unsigned col : {2U, 3U}) {
      CDPTDblDblTick tick;
      tick.SetDoubleValForCol(col, c.value);
      EXPECT_EQ(+tick.GetDPST().m_TickDir, c.word) << c.value;
    }
  }
}

TEST(TradeTick, TextsOfTheWordColumnsAreRefusedThoughTheyExistAsMeant) {
  for (const unsigned col : {2U, 3U}) {
    CDPTDblDblTick tick;
    try {
      tick.SetStringValForCol(col, "5");
      FAIL() << "must throw";
    } catch (CDPDataPtException* error) {
      EXPECT_EQ(error->m_Error, CDPDataPtException::DPErrorGeneral);
      error->Delete();
    }
    EXPECT_EQ(+tick.GetDPST().m_TickDir, 0);
  }
}

TEST(TradeTick, TheWordColumnsHaveHeadersAndKinds) {
  CDPTDblDblTick tick;
  EXPECT_STREQ(tick.GetStringHeaderForCol(2), "UpTick");
  EXPECT_STREQ(tick.GetStringHeaderForCol(3), "DnTick");
  EXPECT_EQ(tick.GetDataTypeForCol(2), CDPDataPt::DataTypeTickDir);
  EXPECT_EQ(tick.GetDataTypeForCol(3), CDPDataPt::DataTypeTickDir);
}

TEST(TradeTick, SetValuesStoresAllThree) {
  CDPTDblDblTick tick;
  tick.SetValues(1.25F, 16777217, -3);
  EXPECT_EQ(+tick.GetDPST().m_Price, 1.25F);
  EXPECT_EQ(+tick.GetDPST().m_Vol, 16777216.0F);
  EXPECT_EQ(+tick.GetDPST().m_TickDir, -3);
}

TEST(TradeTick, SetValuesCutsItsNumbersTo32Bits) {
  // Where a long has 64 bits the upper half is dropped; where it has 32 there is none.
  constexpr std::int64_t turn = std::int64_t{1} << 32;
  CDPTDblDblTick tick;
  tick.SetValues(1, static_cast<long>(turn + 7), static_cast<long>(turn - 3));
  EXPECT_EQ(+tick.GetDPST().m_Vol, 7.0F);
  EXPECT_EQ(+tick.GetDPST().m_TickDir, -3);
  tick.SetValues(1, static_cast<long>(turn - 1), static_cast<long>(turn + 5));
  EXPECT_EQ(+tick.GetDPST().m_Vol, -1.0F);
  EXPECT_EQ(+tick.GetDPST().m_TickDir, 5);
}

TEST(TradeTick, NullKeepsTheWordAsMeantAndNothingAsksForIt) {
  CDPTDblDblTick tick;
  tick.SetValues(1, 2, 3);
  tick.SetToNull();
  EXPECT_EQ(+tick.GetDPST().m_TickDir, 3);
  EXPECT_EQ(tick.IsNull(), 1);
  const CDPTDblDblTick fresh;
  EXPECT_EQ(+fresh.GetDPST().m_TickDir, 0);
  EXPECT_EQ(tick == fresh, 1);
}

TEST(TradeTick, SampleValuesLeaveTheWord) {
  CDPTDblDblTick tick;
  tick.SetValues(9, 9, 9);
  tick.SetToDummyData(0);
  EXPECT_EQ(+tick.GetDPST().m_TickDir, 9);
  EXPECT_EQ(+tick.GetDPST().m_Vol, 2.0F);
}

TEST(TradeTick, EveryCopyTakesTheWordAndStorageLosesIt) {
  CDPTDblDblTick tick;
  tick.SetValues(1, 2, 3);
  CDPTDblDblTick assigned;
  assigned = tick;
  EXPECT_EQ(+assigned.GetDPST().m_TickDir, 3);
  CDPTDblDblTick set;
  set.SetEqualTo(&tick);
  EXPECT_EQ(+set.GetDPST().m_TickDir, 3);
  CDPSTDblDblTick record;
  tick.GetDPST(record);
  EXPECT_EQ(+record.m_TickDir, 3);
  CDPTDblDblTick fromRecord;
  fromRecord = record;
  EXPECT_EQ(+fromRecord.GetDPST().m_TickDir, 3);
  CDPTDblDblTick loaded;
  Load(loaded, Stored(tick));
  EXPECT_EQ(+loaded.GetDPST().m_TickDir, 0);
}

TEST(ValueTick, DoublesIgnoreTheColumnAsMeant) {
  CDPTDblTick tick;
  tick.SetDoubleValForCol(7, 2.5);
  EXPECT_EQ(tick.GetDoubleValForCol(7), 2.5);
  EXPECT_EQ(tick.GetDoubleValForCol(0), 2.5);
}

// ---- The catalogue ----

class TickColumns : public testing::Test {
 protected:
  TickColumns() {
    AddField(201, 3, {285, 14, 321, 322, 400});
    AddField(285, 0, {});
    AddField(14, 1, {});
    AddField(321, 4, {});
    AddField(322, 2, {});
    testing::FLAGS_gtest_death_test_style = "threadsafe";
  }
  void AddField(unsigned short id, unsigned char type, std::initializer_list<int> parts) {
    CZRGSFieldInfo info;
    info.SetFieldID(id);
    info.SetFieldType(type);
    CZRListEx<CField> list{10};
    for (const int part : parts) {
      list.AddTail(CField(static_cast<unsigned short>(part)));
    }
    info.SetAtomicFieldList(list);
    ASSERT_EQ(m_catalogue.AddField(id, info), CFieldInfoMgr::RetSuccess);
  }
  static void Expect(const CDPDataPt& tick, unsigned col, unsigned short field, unsigned short id,
                     unsigned type, unsigned size) {
    CDPValueInfo info;
    tick.GetDPValueInfoForCol(col, CField(field), info);
    EXPECT_EQ(info.GetFieldID(), id);
    EXPECT_EQ(info.GetFieldType(), type);
    EXPECT_EQ(info.GetDataSize(), size);
  }

  CFieldInfoMgr m_catalogue;
  CDPTDblTick m_value;
  CDPTDblDblTick m_trade;
};

TEST_F(TickColumns, OfAValueAreTheFieldItselfWhateverTheColumn) {
  for (const unsigned col : {0U, 1U, 99U}) {
    Expect(m_value, col, 285, 285, 0, 4);
    Expect(m_value, col, 322, 322, 2, 8);
    Expect(m_value, col, 201, 201, 3, 0);
  }
}

TEST_F(TickColumns, OfATradeAreTheElementsOfItsRecordField) {
  Expect(m_trade, 0, 201, 285, 0, 4);
  Expect(m_trade, 1, 201, 14, 1, 4);
  Expect(m_trade, 2, 201, 321, 4, 4);
  Expect(m_trade, 3, 201, 322, 2, 8);
}

TEST_F(TickColumns, TheExFormReadsTheValueToo) {
  m_trade.SetValues(1.5F, 2, 3);
  CField field(201);
  CDPValueInfo info;
  CDPValue value;
  m_trade.GetDPValueInfoForColEx(2, field, info, value);
  EXPECT_EQ(info.GetFieldID(), 321);
  EXPECT_EQ(value.GetLong(), 3);
}

TEST_F(TickColumns, OfAFieldWithoutAnEntryAreAFault) {
  CDPValueInfo info;
  EXPECT_DEATH(m_value.GetDPValueInfoForCol(0, CField(500), info), "fault");
  EXPECT_DEATH(m_value.GetDPValueInfoForCol(0, CField(522), info), "fault");
  EXPECT_DEATH(m_value.GetDPValueInfoForCol(0, CField(), info), "fault");
  EXPECT_DEATH(m_trade.GetDPValueInfoForCol(0, CField(522), info), "fault");
}

TEST_F(TickColumns, BeyondTheListOrOfAnElementWithoutAnEntryAreAFault) {
  CDPValueInfo info;
  EXPECT_DEATH(m_trade.GetDPValueInfoForCol(4, CField(201), info), "fault") << "400 has no entry";
  EXPECT_DEATH(m_trade.GetDPValueInfoForCol(5, CField(201), info), "fault");
  EXPECT_DEATH(m_trade.GetDPValueInfoForCol(0xFFFFFFFF, CField(201), info), "fault");
  EXPECT_DEATH(m_trade.GetDPValueInfoForCol(0, CField(285), info), "fault") << "no list at all";
}

TEST(TickColumnsWithoutCatalogue, AreAFault) {
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  ASSERT_EQ(CFieldInfoMgr::m_pInstance, nullptr);
  const CDPTDblTick tick;
  CDPValueInfo info;
  EXPECT_DEATH(tick.GetDPValueInfoForCol(0, CField(285), info), "fault");
}

}  // namespace
