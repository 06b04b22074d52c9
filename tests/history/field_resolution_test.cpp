#include <pxdutil/history/field_resolution.h>

#include <array>
#include <type_traits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support.h"
#include "tests/support/thrown.h"

namespace {

using namespace history_test;
using testing::ElementsAre;
using testing::IsEmpty;

static_assert(!std::is_polymorphic_v<CFieldResoln>);
static_assert(std::is_trivially_copyable_v<CFieldResoln>);
static_assert(sizeof(CFieldResoln) == sizeof(ZRGS_FIELD_RESOLUTION));

TEST(FieldResoln, IsUnsetByDefault) {
  const CFieldResoln pair;
  EXPECT_THAT(Plain(pair), ElementsAre(65535, 0, 0));
  EXPECT_FALSE(pair == Pair(0, 0, 0));
  EXPECT_TRUE(pair != Pair(0, 0, 0));
}

TEST(FieldResoln, TakesAndGivesTheRecordAsItIs) {
  // Neither unit 9 nor quantity 0 is repaired.
  const ZRGS_FIELD_RESOLUTION record = {201, {9, 0}};
  CFieldResoln pair(record);
  EXPECT_THAT(Plain(pair), ElementsAre(201, 9, 0));
  const ZRGS_FIELD_RESOLUTION copy = pair;
  EXPECT_EQ(+copy.wFieldID, 201);
  EXPECT_EQ(+copy.resolution.wUnit, 9);
  EXPECT_EQ(+copy.resolution.wQuantity, 0);
  pair.SetFieldResoln({7, {3, 5}});
  EXPECT_EQ(+pair.GetFieldResoln().wFieldID, 7);
  EXPECT_THAT(Plain(pair), ElementsAre(7, 3, 5));
}

TEST(FieldResoln, ItsHalvesAreSetApart) {
  CFieldResoln pair;
  pair.SetField(CField(485));
  EXPECT_THAT(Plain(pair), ElementsAre(485, 0, 0));
  pair.SetResoln(CResoln(ZRGS_RESOLUTION{9, 0}));
  EXPECT_THAT(Plain(pair), ElementsAre(485, 9, 0));
  EXPECT_TRUE(pair.GetField() == CField(485));
  EXPECT_TRUE(pair.GetResoln() == CResoln(ZRGS_RESOLUTION{9, 0}));
}

TEST(FieldResoln, IsEqualByFieldUnitAndQuantity) {
  const CFieldResoln pair = Pair(201, 3, 5);
  EXPECT_TRUE(pair == Pair(201, 3, 5));
  EXPECT_FALSE(pair != Pair(201, 3, 5));
  for (const CFieldResoln& other : {Pair(200, 3, 5), Pair(201, 4, 5), Pair(201, 3, 6)}) {
    EXPECT_FALSE(pair == other);
    EXPECT_TRUE(pair != other);
  }
}

TEST(FieldResolnDword, PacksFieldUnitAndQuantity) {
  const struct {
    CFieldResoln pair;
    unsigned long word;
  } kRows[] = {
      {Pair(0, 0, 0), 0},
      {Pair(201, 4, 1), 13189121},
      {Pair(201, 3, 4095), 201 * 65536 + 3 * 4096 + 4095},
      {Pair(65535, 15, 4095), 0xFFFFFFFF},
      {Pair(65535, 0, 0), 0xFFFF0000},
  };
  for (const auto& row : kRows) {
    EXPECT_EQ(row.pair.GetDWORD(), row.word);
  }
}

TEST(FieldResolnDword, AQuantityAbove4095CarriesIntoTheUnitAndThatIsMeant) {
  EXPECT_EQ(Pair(201, 3, 4096).GetDWORD(), Pair(201, 4, 0).GetDWORD());
  EXPECT_EQ(Pair(201, 3, 4097).GetDWORD(), 201UL * 65536 + 4 * 4096 + 1);
  EXPECT_EQ(Pair(201, 7, 65535).GetDWORD(), 201UL * 65536 + 7 * 4096 + 65535);
}

TEST(FieldResolnDword, WrapsAt32Bits) {
  // 4294901760 of the field, 268431360 of the unit and 65535, less 4294967296.
  EXPECT_EQ(Pair(65535, 65535, 65535).GetDWORD(), 268431359UL);
}

// What a point has, by the type of the field: 7 a price, 8 a volume, 5 without history, 201 a
// record, 321 a count.
using FieldResolnParts = WithCatalogue;

constexpr std::array<unsigned short, 6> kTickUnits = {1, 8, 0, 9, 16, 65535};
constexpr std::array<unsigned short, 6> kOtherUnits = {2, 3, 4, 5, 6, 7};

TEST_F(FieldResolnParts, OhlcStandsInTheThreeRecordsUnlessTheyAreTicks) {
  for (const int id : {5, 7, 8, 199, 200, 201, 202, 207, 321, 436, 485, 486, 521}) {
    for (const unsigned short unit : kTickUnits) {
      EXPECT_EQ(Pair(id, unit, 1).HasOHLC(), 0) << id << " in unit " << unit;
      EXPECT_EQ(Pair(id, unit, 2).HasOHLC(), 0) << id << " in unit " << unit;
    }
    for (const unsigned short unit : kOtherUnits) {
      EXPECT_EQ(Pair(id, unit, 1).HasOHLC(), id >= 200 && id <= 202 ? 1 : 0)
          << id << " in unit " << unit;
    }
  }
}

TEST_F(FieldResolnParts, ATickHasAPriceUnlessItIsAVolumeOrCount) {
  const struct {
    unsigned short id;
    int hasPrice;
  } kRows[] = {{7, 1}, {8, 0}, {5, 1}, {201, 1}, {321, 0}};
  for (const auto& row : kRows) {
    for (const unsigned short unit : kTickUnits) {
      EXPECT_EQ(Pair(row.id, unit, 1).HasPrice(), row.hasPrice) << row.id << " in unit " << unit;
      EXPECT_EQ(Pair(row.id, unit, 5).HasPrice(), row.hasPrice) << row.id << " in unit " << unit;
    }
    for (const unsigned short unit : kOtherUnits) {
      EXPECT_EQ(Pair(row.id, unit, 1).HasPrice(), 0) << row.id << " in unit " << unit;
    }
  }
}

TEST_F(FieldResolnParts, AVolumeSaysWhereItStands) {
  constexpr int kUntouched = -77;
  const struct {
    unsigned short id;
    int hasVolume;
    int kindOfTick;
    int kindOfOther;
  } kRows[] = {
      {7, 0, kUntouched, kUntouched},   {8, 1, 0, 0},
      {5, 0, kUntouched, kUntouched},   {201, 1, 1, 7},
      {321, 0, kUntouched, kUntouched},
  };
  for (const auto& row : kRows) {
    for (const unsigned short unit : kTickUnits) {
      int kind = kUntouched;
      EXPECT_EQ(Pair(row.id, unit, 1).HasVolume(kind), row.hasVolume);
      EXPECT_EQ(kind, row.kindOfTick) << row.id << " in unit " << unit;
    }
    for (const unsigned short unit : kOtherUnits) {
      int kind = kUntouched;
      EXPECT_EQ(Pair(row.id, unit, 1).HasVolume(kind), row.hasVolume);
      EXPECT_EQ(kind, row.kindOfOther) << row.id << " in unit " << unit;
    }
  }
}

TEST_F(FieldResolnParts, AFieldTypeBeyondTheKnownHasNothing) {
  AddField(3, "odd", 5);
  int kind = -77;
  EXPECT_EQ(Pair(3, 1, 1).HasPrice(), 0);
  EXPECT_EQ(Pair(3, 1, 1).HasVolume(kind), 0);
  EXPECT_EQ(Pair(3, 4, 1).HasVolume(kind), 0);
  EXPECT_EQ(kind, -77);
}

TEST(FieldResolnOpenInterest, GoesByTheDayAloneAndThatIsMeant) {
  // No catalogue is asked: any field will do, and weeks and longer have none.
  for (const int id : {0, 5, 201, 522, 65535}) {
    for (unsigned short unit = 0; unit <= 9; ++unit) {
      EXPECT_EQ(Pair(id, unit, 1).HasOpenInterest(), unit == 4 ? 1 : 0) << unit;
    }
    EXPECT_EQ(Pair(id, 4, 3).HasOpenInterest(), 1);
    EXPECT_EQ(Pair(id, 4, 0).HasOpenInterest(), 1);
  }
}

TEST(FieldResolnStorage, DaysAndLongerStoreTheirDateWithEachElement) {
  constexpr std::array<int, 10> kByUnit = {0, 0, 0, 0, 1, 1, 1, 1, 0, 0};
  for (unsigned short unit = 0; unit < kByUnit.size(); ++unit) {
    EXPECT_EQ(Pair(201, unit, 1).GetStoreDateWithEachElement(), kByUnit[unit]) << unit;
    EXPECT_EQ(Pair(201, unit, 1).GetStoreTimeAsSecs(), 1) << unit;
  }
  EXPECT_EQ(Pair(201, 3, 1440).GetStoreDateWithEachElement(), 0);
}

TEST(FieldResolnWithoutContent, SamplingIsAlwaysRefusedAndThatIsMeant) {
  EXPECT_EQ(Pair(201, 1, 1).CanBeSampledInto(Pair(201, 4, 1)), 0);
  EXPECT_EQ(Pair(201, 4, 1).CanBeSampledInto(Pair(201, 4, 1)), 0);
}

TEST(FieldResolnWithoutContent, TheListOfAllPairsIsLeftAloneAndThatIsMeant) {
  CArray<CFieldResoln, CFieldResoln> pairs;
  pairs.Add(Pair(7, 1, 1));
  CFieldResoln::GetArOfAllFieldResolns(pairs);
  ASSERT_EQ(pairs.GetSize(), 1);
  EXPECT_TRUE(pairs[0] == Pair(7, 1, 1));
}

TEST(FieldResolnWithoutContent, TheListOfDerivablePairsIsEmptied) {
  CArray<CFieldResoln, CFieldResoln> pairs;
  pairs.Add(Pair(7, 1, 1));
  Pair(201, 1, 1).GetArOfAllDerivableFieldResolns(pairs);
  EXPECT_EQ(pairs.GetSize(), 0);
}

TEST(FieldResolnArchive, StoresAFormatByteAndThePair) {
  CFieldResoln pair = Pair(201, 4, 0x1234);
  EXPECT_THAT(StoredForm(pair), ElementsAre(0x01, 0xC9, 0x00, 0x04, 0x00, 0x34, 0x12));
}

TEST(FieldResolnArchive, LoadsWhatItStored) {
  CFieldResoln pair;
  EXPECT_EQ(Load(pair, {0x01, 0xC8, 0x00, 0x09, 0x01, 0x00, 0x10}), 7U);
  EXPECT_THAT(Plain(pair), ElementsAre(200, 0x109, 4096));  // as it stands, unit 265 and all
}

TEST(FieldResolnArchive, OfAnotherFormatItReadsTheFormatByteAlone) {
  for (const unsigned char format : Bytes{0, 2, 255}) {
    CFieldResoln pair = Pair(201, 3, 5);
    EXPECT_EQ(Load(pair, {format, 0xC8, 0x00, 0x04, 0x00, 0x01, 0x00}), 1U);
    EXPECT_THAT(Plain(pair), ElementsAre(201, 3, 5));
    EXPECT_EQ(Load(pair, {format}), 1U);
  }
}

TEST(FieldResolnArchive, CutShortItRaisesTheEndOfTheFileAndStays) {
  const Bytes whole = {0x01, 0xC8, 0x00, 0x04, 0x00, 0x01, 0x00};
  for (std::size_t length = 0; length < whole.size(); ++length) {
    CFieldResoln pair = Pair(201, 3, 5);
    const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
    const auto error = pxd::test::ThrownBy<CArchiveException>([&] { Load(pair, cut); });
    ASSERT_NE(error, nullptr) << length;
    EXPECT_EQ(error->m_cause, CArchiveException::endOfFile);
    EXPECT_THAT(Plain(pair), ElementsAre(201, 3, 5));
  }
}

// A fault ends the process, so each of these runs in a child.
using FieldResolnDeathTest = WithCatalogue;

TEST_F(FieldResolnDeathTest, PartsOfAFieldWithoutAnEntryAreAFault) {
  int kind = 0;
  for (const int id : {6, 460, 522, 65535}) {
    for (const int unit : {1, 4}) {
      const CFieldResoln pair = Pair(id, unit, 1);
      EXPECT_DEATH(static_cast<void>(pair.HasOHLC()), "without a catalogue entry");
      EXPECT_DEATH(static_cast<void>(pair.HasPrice()), "without a catalogue entry");
      EXPECT_DEATH(pair.HasVolume(kind), "without a catalogue entry");
    }
  }
}

TEST(FieldResolnWithoutManagerDeathTest, PartsAreAFault) {
  ASSERT_EQ(CFieldInfoMgr::m_pInstance, nullptr);
  int kind = 0;
  EXPECT_DEATH(static_cast<void>(Pair(201, 1, 1).HasOHLC()), "no manager");
  EXPECT_DEATH(static_cast<void>(Pair(201, 1, 1).HasPrice()), "no manager");
  EXPECT_DEATH(Pair(201, 1, 1).HasVolume(kind), "no manager");
}

}  // namespace
