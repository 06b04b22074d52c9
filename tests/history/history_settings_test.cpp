#include <pxdutil/history/history_settings.h>

#include <cstring>
#include <memory>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support.h"

namespace {

using namespace history_test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

static_assert(!std::is_polymorphic_v<CFieldHistorySetting>);
static_assert(CHistorySettings::kBadIndex == -1);
static_assert(CHistorySettings::kTableFull == -2);
static_assert(CHistorySettings::kAlreadyThere == -3);

unsigned HostBits(const CHistorySettings& settings) {
  return ZRGS_HISTORY_SETTINGS(settings).bCount & 7U;
}

TEST(HistoryLine, IsZerosByDefault) {
  EXPECT_THAT(Plain(CFieldHistorySetting()), ElementsAre(0, 0, 0, 0));
}

TEST(HistoryLine, TakesAndGivesItsParts) {
  CFieldHistorySetting line = Line(201, 3, 5, 1000);
  const ZRGS_FIELD_HISTORY_SETTINGS record = line;
  EXPECT_EQ(+record.fieldResolution.wFieldID, 201);
  EXPECT_EQ(+record.fieldResolution.resolution.wUnit, 3);
  EXPECT_EQ(+record.fieldResolution.resolution.wQuantity, 5);
  EXPECT_EQ(+record.wNumDays, 1000);
  line.SetNumDays(65535);
  line.SetFieldResoln(Pair(7, 9, 0));
  EXPECT_THAT(Plain(line), ElementsAre(7, 9, 0, 65535));
  line.SetHS(record);
  EXPECT_THAT(Plain(line), ElementsAre(201, 3, 5, 1000));
}

TEST(HistoryLine, IsEqualWithItsDaysAndOfTheSamePointTypeWithout) {
  const CFieldHistorySetting line = Line(201, 3, 5, 1000);
  EXPECT_TRUE(line == Line(201, 3, 5, 1000));
  EXPECT_FALSE(line != Line(201, 3, 5, 1000));
  EXPECT_FALSE(line == Line(201, 3, 5, 999));
  EXPECT_TRUE(line != Line(201, 3, 5, 999));
  EXPECT_EQ(line.HasSamePointType(Line(201, 3, 5, 999)), 1);
  for (const auto& other : {Line(200, 3, 5, 1000), Line(201, 4, 5, 1000), Line(201, 3, 6, 1000)}) {
    EXPECT_TRUE(line != other);
    EXPECT_EQ(line.HasSamePointType(other), 0);
  }
}

TEST(HistorySettings, IsEmptyByDefault) {
  const CHistorySettings settings;  // needs no manager
  EXPECT_EQ(settings.GetCount(), 0);
  const ZRGS_HISTORY_SETTINGS bytes = settings;
  const ZRGS_HISTORY_SETTINGS zeros = {};
  EXPECT_EQ(std::memcmp(&bytes, &zeros, sizeof bytes), 0);
}

TEST(HistorySettings, NamesItselfAndIsMadeByName) {
  const std::unique_ptr<CObject> made(RUNTIME_CLASS(CHistorySettings)->CreateObject());
  ASSERT_NE(made, nullptr);
  EXPECT_EQ(made->GetRuntimeClass(), RUNTIME_CLASS(CHistorySettings));
  EXPECT_STREQ(made->GetRuntimeClass()->m_lpszClassName, "CHistorySettings");
  EXPECT_TRUE(made->IsKindOf(RUNTIME_CLASS(CObject)));
  const std::unique_ptr<CObject> saved(RUNTIME_CLASS(CHistorySettingsTemplate)->CreateObject());
  ASSERT_NE(saved, nullptr);
  EXPECT_EQ(saved->GetRuntimeClass(), RUNTIME_CLASS(CHistorySettingsTemplate));
  EXPECT_STREQ(saved->GetRuntimeClass()->m_lpszClassName, "CHistorySettingsTemplate");
}

using HistoryTable = WithCatalogue;

TEST_F(HistoryTable, StandsDirectlyBehindTheObjectsHeader) {
  const CHistorySettings settings = Table({Line(201, 3, 1, 1000)}, 5);
  const ZRGS_HISTORY_SETTINGS bytes = settings;
  const auto* const object = reinterpret_cast<const unsigned char*>(&settings);
  EXPECT_EQ(std::memcmp(object + sizeof(void*), &bytes, sizeof bytes), 0);
  EXPECT_EQ(object[sizeof(void*)], 1 << 3 | 5);
}

TEST_F(HistoryTable, CopiesAllBytesWithHostBitsAndUnusedLines) {
  ZRGS_HISTORY_SETTINGS bytes;
  std::memset(&bytes, 0xA5, sizeof bytes);
  bytes.bCount = 2 << 3 | 6;
  const CHistorySettings settings(bytes);
  EXPECT_EQ(settings.GetCount(), 2);
  const CHistorySettings copy(settings);
  CHistorySettings assigned;
  assigned = settings;
  for (const CHistorySettings* each :
       std::initializer_list<const CHistorySettings*>{&settings, &copy, &assigned}) {
    const ZRGS_HISTORY_SETTINGS again = *each;
    EXPECT_EQ(std::memcmp(&again, &bytes, sizeof bytes), 0);
  }
}

TEST_F(HistoryTable, AssigningItToItselfChangesNothing) {
  CHistorySettings settings = Table({Line(200, 4, 1, 10)});
  const CHistorySettings& same = settings;
  settings = same;
  EXPECT_THAT(Plain(settings), ElementsAre(PlainLine{200, 4, 1, 10}));
  EXPECT_THAT(NeededIds(settings), ElementsAre(7, 8));
}

TEST_F(HistoryTable, ACountOf31IsReadAs30) {
  ZRGS_HISTORY_SETTINGS bytes = FullTable();
  bytes.bCount = 31 << 3 | 2;
  CHistorySettings settings(bytes);
  EXPECT_EQ(settings.GetCount(), 30);
  EXPECT_EQ(settings.AddSetting(Line(201, 1, 1, 1)), -2);
  EXPECT_TRUE(settings == FullTable());
  EXPECT_EQ(settings.RemoveSettings(30), 0);
  EXPECT_EQ(settings.RemoveSettings(29), 1);
  EXPECT_EQ(settings.GetCount(), 29);
  EXPECT_EQ(HostBits(settings), 2U);
}

TEST_F(HistoryTable, GivesUnusedLinesAsTheyStand) {
  CHistorySettings settings = Table({Line(200, 3, 1, 7), Line(201, 3, 1, 8)});
  settings.RemoveAllSettings();
  EXPECT_THAT(Plain(settings.GetSetting(1)), ElementsAre(201, 3, 1, 8));
  EXPECT_THAT(Plain(settings.GetSetting(29)), ElementsAre(0, 0, 0, 0));
  EXPECT_EQ(+settings.GetFHSetting(0)->wNumDays, 7);
}

TEST_F(HistoryTable, AChangeThroughThePointerDoesNotRebuildTheNeedsAndThatIsMeant) {
  CHistorySettings settings = Table({Line(200, 3, 1, 7)});
  settings.GetFHSetting(0)->fieldResolution.wFieldID = 202;
  EXPECT_THAT(Plain(settings), ElementsAre(PlainLine{202, 3, 1, 7}));
  EXPECT_THAT(NeededIds(settings), ElementsAre(7, 8));
  EXPECT_THAT(NeededIds(CHistorySettings(settings)), ElementsAre(10, 11));
}

TEST_F(HistoryTable, FindsTheFirstLineOfAPairWhateverItsDays) {
  // Doubles come by removals and from stored tables.
  const CHistorySettings settings =
      Table({Line(200, 3, 1, 1), Line(201, 3, 1, 2), Line(201, 3, 1, 3)});
  EXPECT_EQ(settings.GetSettingIdx(Pair(201, 3, 1)), 1);
  EXPECT_EQ(settings.HasSetting(Line(201, 3, 1, 3)), 1);
  EXPECT_EQ(settings.HasFieldResolutionSetting(Line(201, 3, 1, 99)), 1);
  EXPECT_EQ(settings.GetSettingIdx(Pair(201, 3, 2)), -1);
  EXPECT_EQ(settings.HasSetting(Line(201, 4, 1, 2)), -1);
  EXPECT_EQ(settings.HasFieldResolutionSetting(Line(202, 3, 1, 2)), -1);
}

TEST_F(HistoryTable, DoesNotFindALineThatIsNotInUse) {
  CHistorySettings settings = Table({Line(201, 3, 1, 2)});
  settings.RemoveAllSettings();
  EXPECT_EQ(settings.GetSettingIdx(Pair(201, 3, 1)), -1);
}

TEST_F(HistoryTable, IsEqualByLinesInOrderWithDays) {
  const CHistorySettings settings = Table({Line(200, 3, 1, 1), Line(201, 3, 1, 2)}, 1);
  EXPECT_TRUE(settings == Table({Line(200, 3, 1, 1), Line(201, 3, 1, 2)}, 6));
  EXPECT_FALSE(settings != Table({Line(200, 3, 1, 1), Line(201, 3, 1, 2)}));
  EXPECT_FALSE(settings == Table({Line(201, 3, 1, 2), Line(200, 3, 1, 1)}));
  EXPECT_TRUE(settings != Table({Line(200, 3, 1, 1), Line(201, 3, 1, 3)}));
  EXPECT_TRUE(settings != Table({Line(200, 3, 1, 1)}));
  EXPECT_TRUE(CHistorySettings() == CHistorySettings());
}

using HistoryAdd = WithCatalogue;

TEST_F(HistoryAdd, AppendsAndGivesTheIndex) {
  CHistorySettings settings = Table({}, 7);
  EXPECT_EQ(settings.AddSetting(Line(201, 3, 1, 1000)), 0);
  EXPECT_EQ(settings.AddSetting(Line(201, 3, 5, 100)), 1);
  EXPECT_EQ(settings.AddSetting(Line(200, 3, 1, 10)), 2);
  EXPECT_THAT(Plain(settings), ElementsAre(PlainLine{201, 3, 1, 1000}, PlainLine{201, 3, 5, 100},
                                           PlainLine{200, 3, 1, 10}));
  EXPECT_EQ(HostBits(settings), 7U);
  EXPECT_THAT(NeededIds(settings), ElementsAre(285, 14, 321, 322, 7, 8));
}

TEST_F(HistoryAdd, TheThirtyFirstIsRefused) {
  CHistorySettings settings;
  for (int i = 0; i < 30; ++i) {
    EXPECT_EQ(settings.AddSetting(Line(200, 3, i + 1, 7)), i);
  }
  EXPECT_EQ(settings.AddSetting(Line(201, 3, 1, 7)), -2);
  EXPECT_EQ(settings.GetCount(), 30);
  EXPECT_TRUE(settings == FullTable());
}

TEST_F(HistoryAdd, AFullTableRefusesAlsoAPairThatItHasAndThatIsMeant) {
  CHistorySettings settings = FullTable();
  EXPECT_EQ(settings.AddSetting(Line(200, 3, 1, 999)), -2);
  EXPECT_TRUE(settings == FullTable());
}

TEST_F(HistoryAdd, APairThatIsThereKeepsTheLargerNumberOfDays) {
  const struct {
    unsigned short days;
    int kept;
  } kRows[] = {{99, 100}, {100, 100}, {101, 101}, {0, 100}, {65535, 65535}};
  for (const auto& row : kRows) {
    CHistorySettings settings = Table({Line(200, 3, 1, 7), Line(201, 3, 1, 100)});
    EXPECT_EQ(settings.AddSetting(Line(201, 3, 1, row.days)), -3);
    EXPECT_THAT(Plain(settings),
                ElementsAre(PlainLine{200, 3, 1, 7}, PlainLine{201, 3, 1, row.kept}));
  }
}

TEST_F(HistoryAdd, APairThatIsThereTwiceKeepsItsDays) {
  // The change of the first is refused because of the second.
  CHistorySettings settings = Table({Line(201, 3, 1, 1), Line(201, 3, 1, 2)});
  EXPECT_EQ(settings.AddSetting(Line(201, 3, 1, 50)), -3);
  EXPECT_THAT(Plain(settings), ElementsAre(PlainLine{201, 3, 1, 1}, PlainLine{201, 3, 1, 2}));
}

using HistoryChange = WithCatalogue;

TEST_F(HistoryChange, ReplacesTheLine) {
  CHistorySettings settings = Table({Line(200, 3, 1, 1), Line(201, 3, 1, 2)}, 3);
  EXPECT_EQ(settings.ChangeSettings(1, Line(202, 4, 1, 9)), 1);
  EXPECT_THAT(Plain(settings), ElementsAre(PlainLine{200, 3, 1, 1}, PlainLine{202, 4, 1, 9}));
  EXPECT_THAT(NeededIds(settings), ElementsAre(7, 8, 10, 11));
  EXPECT_EQ(HostBits(settings), 3U);
}

TEST_F(HistoryChange, OfTheDaysAloneTakesFewerToo) {
  CHistorySettings settings = Table({Line(200, 3, 1, 9)});
  EXPECT_EQ(settings.ChangeSettings(0, Line(200, 3, 1, 1)), 0);
  EXPECT_THAT(Plain(settings), ElementsAre(PlainLine{200, 3, 1, 1}));
}

TEST_F(HistoryChange, ToAPairOfAnotherLineIsRefused) {
  CHistorySettings settings = Table({Line(200, 3, 1, 1), Line(201, 3, 1, 2)});
  EXPECT_EQ(settings.ChangeSettings(0, Line(201, 3, 1, 9)), -3);
  EXPECT_EQ(settings.ChangeSettings(1, Line(200, 3, 1, 9)), -3);
  EXPECT_THAT(Plain(settings), ElementsAre(PlainLine{200, 3, 1, 1}, PlainLine{201, 3, 1, 2}));
}

TEST_F(HistoryChange, OfAnIndexThatIsNotThereIsRefused) {
  CHistorySettings settings = Table({Line(200, 3, 1, 1), Line(201, 3, 1, 2)});
  for (const int index : {-1, 2, 29, 30, 31, -2147483647 - 1, 2147483647}) {
    EXPECT_EQ(settings.ChangeSettings(index, Line(202, 3, 1, 9)), -1) << index;
    EXPECT_EQ(settings.ChangeSettings(index, Line(201, 3, 1, 9)), -3)
        << index << ": the pair is looked for first";
  }
  EXPECT_THAT(Plain(settings), ElementsAre(PlainLine{200, 3, 1, 1}, PlainLine{201, 3, 1, 2}));
  CHistorySettings empty;
  EXPECT_EQ(empty.ChangeSettings(0, Line(202, 3, 1, 9)), -1);
  EXPECT_EQ(empty.ChangeSettings(-1, Line(202, 3, 1, 9)), -1);
}

// Lines are told by their days: 1, 2, 3, ...
struct RemoveRow {
  int count;
  int index;
  std::vector<int> left;
};
class HistoryRemove : public WithCatalogue, public testing::WithParamInterface<RemoveRow> {};

TEST_P(HistoryRemove, StopsItsMoveOneLineShortAndThatIsMeant) {
  const RemoveRow& row = GetParam();
  ZRGS_HISTORY_SETTINGS table = {};
  table.bCount = static_cast<std::uint8_t>(row.count << 3 | 5);
  for (int i = 0; i < row.count; ++i) {
    table.settings[i] = Line(200, 3, i + 1, i + 1);
  }
  CHistorySettings settings(table);
  EXPECT_EQ(settings.RemoveSettings(row.index), 1);
  std::vector<int> left;
  for (const PlainLine& line : Plain(settings)) {
    EXPECT_EQ(line[2], line[3]);
    left.push_back(line[3]);
  }
  EXPECT_EQ(left, row.left);
  EXPECT_EQ(HostBits(settings), 5U);
}

INSTANTIATE_TEST_SUITE_P(
    Tables, HistoryRemove,
    testing::Values(RemoveRow{1, 0, {}}, RemoveRow{2, 0, {1}}, RemoveRow{2, 1, {1}},
                    RemoveRow{3, 0, {2, 2}}, RemoveRow{3, 1, {1, 2}}, RemoveRow{3, 2, {1, 2}},
                    RemoveRow{5, 0, {2, 3, 4, 4}}, RemoveRow{5, 1, {1, 3, 4, 4}},
                    RemoveRow{5, 3, {1, 2, 3, 4}}, RemoveRow{5, 4, {1, 2, 3, 4}}));

using HistoryRemoval = WithCatalogue;

TEST_F(HistoryRemoval, OfAnIndexThatIsNotThereDoesNothing) {
  CHistorySettings settings = Table({Line(200, 3, 1, 1), Line(201, 3, 1, 2)});
  for (const int index : {-1, 2, 29, 30, -2147483647 - 1, 2147483647}) {
    EXPECT_EQ(settings.RemoveSettings(index), 0) << index;
  }
  EXPECT_EQ(settings.GetCount(), 2);
  EXPECT_EQ(CHistorySettings().RemoveSettings(0), 0);
}

TEST_F(HistoryRemoval, RebuildsTheNeeds) {
  CHistorySettings settings = Table({Line(200, 3, 1, 1), Line(202, 3, 1, 2)});
  EXPECT_EQ(settings.RemoveSettings(0), 1);
  EXPECT_THAT(NeededIds(settings), ElementsAre(7, 8));  // of two the first stays
}

TEST_F(HistoryRemoval, OfAllKeepsTheHostBitsAndTheUnusedLines) {
  CHistorySettings settings = Table({Line(200, 3, 1, 1), Line(202, 3, 1, 2)}, 5);
  settings.RemoveAllSettings();
  EXPECT_EQ(settings.GetCount(), 0);
  EXPECT_EQ(+ZRGS_HISTORY_SETTINGS(settings).bCount, 5);
  EXPECT_THAT(Plain(settings.GetSetting(1)), ElementsAre(202, 3, 1, 2));
  EXPECT_THAT(NeededIds(settings), IsEmpty());
}

using HistorySort = WithCatalogue;

TEST_F(HistorySort, GoesByNameThenUnitThenQuantity) {
  CHistorySettings settings = Table({Line(201, 3, 1, 1), Line(200, 4, 1, 2), Line(200, 3, 5, 3),
                                     Line(202, 3, 1, 4), Line(200, 3, 1, 5), Line(200, 1, 9, 6)},
                                    3);
  settings.SortSettings();
  EXPECT_THAT(Plain(settings),
              ElementsAre(PlainLine{202, 3, 1, 4},  // Ask Record
                          PlainLine{200, 1, 9, 6},  // Bid Record
                          PlainLine{200, 3, 1, 5}, PlainLine{200, 3, 5, 3}, PlainLine{200, 4, 1, 2},
                          PlainLine{201, 3, 1, 1}));  // Trade Record
  EXPECT_EQ(HostBits(settings), 3U);
}

TEST_F(HistorySort, ComparesNamesByCharactersAndNotByIds) {
  AddField(1, "b");
  AddField(2, "B");
  AddField(3, "a");
  CHistorySettings settings = Table({Line(1, 1, 1, 0), Line(3, 1, 1, 0), Line(2, 1, 1, 0)});
  settings.SortSettings();
  EXPECT_THAT(Plain(settings),
              ElementsAre(PlainLine{2, 1, 1, 0}, PlainLine{3, 1, 1, 0}, PlainLine{1, 1, 1, 0}));
}

TEST_F(HistorySort, FieldsOfOneNameAreOneField) {
  AddField(1, "same");
  AddField(2, "same");
  CHistorySettings settings = Table({Line(1, 4, 1, 0), Line(2, 3, 1, 0), Line(1, 3, 2, 0)});
  settings.SortSettings();
  EXPECT_THAT(Plain(settings),
              ElementsAre(PlainLine{2, 3, 1, 0}, PlainLine{1, 3, 2, 0}, PlainLine{1, 4, 1, 0}));
}

TEST_F(HistorySort, ExchangesLinesOverAWholeTableAndThatIsMeant) {
  // The first line is exchanged with the third, which leaves the equal ones in reverse.
  CHistorySettings settings = Table({Line(201, 4, 1, 1), Line(201, 4, 1, 2), Line(200, 4, 1, 3)});
  settings.SortSettings();
  EXPECT_THAT(Plain(settings), ElementsAre(PlainLine{200, 4, 1, 3}, PlainLine{201, 4, 1, 2},
                                           PlainLine{201, 4, 1, 1}));
}

TEST_F(HistorySort, LeavesEqualLinesInTheirOrder) {
  CHistorySettings settings = Table({Line(201, 4, 1, 3), Line(201, 4, 1, 1), Line(201, 4, 1, 2)});
  settings.SortSettings();
  EXPECT_THAT(Plain(settings), ElementsAre(PlainLine{201, 4, 1, 3}, PlainLine{201, 4, 1, 1},
                                           PlainLine{201, 4, 1, 2}));
}

TEST_F(HistorySort, LeavesTheNeedsInTheirOldOrderAndThatIsMeant) {
  CHistorySettings settings = Table({Line(200, 3, 1, 0), Line(202, 3, 1, 0)});
  settings.SortSettings();
  EXPECT_THAT(Plain(settings), ElementsAre(PlainLine{202, 3, 1, 0}, PlainLine{200, 3, 1, 0}));
  EXPECT_THAT(NeededIds(settings), ElementsAre(7, 8, 10, 11));
  EXPECT_THAT(NeededIds(CHistorySettings(settings)), ElementsAre(10, 11, 7, 8));
}

TEST_F(HistorySort, OrdersAFullTable) {
  ZRGS_HISTORY_SETTINGS table = FullTable();
  for (int i = 0; i < 30; ++i) {
    table.settings[i] = Line(200, 3, 30 - i, 7);
  }
  CHistorySettings settings(table);
  settings.SortSettings();
  EXPECT_TRUE(settings == FullTable());
}

TEST(HistorySortOfNothing, NeedsNoManager) {
  CHistorySettings settings;
  settings.SortSettings();
  EXPECT_EQ(settings.GetCount(), 0);
}

struct DefaultsRow {
  int kind;
  PlainLines lines;
};
class HistoryDefaults : public WithCatalogue, public testing::WithParamInterface<DefaultsRow> {};

TEST_P(HistoryDefaults, AreThoseOfTheKind) {
  CHistorySettings settings;
  settings.CreateDefaultSettings(static_cast<unsigned char>(GetParam().kind));
  EXPECT_EQ(Plain(settings), GetParam().lines);
}

const PlainLines kWithTicks = {
    {201, 4, 1, 50000}, {201, 3, 1, 1000}, {201, 1, 1, 15}, {200, 3, 1, 1000}, {202, 3, 1, 1000}};
const PlainLines kWithDays = {{201, 4, 1, 50000}, {201, 3, 1, 1000}, {200, 3, 1, 1000},
                              {200, 4, 1, 50000}, {202, 3, 1, 1000}, {202, 4, 1, 50000}};
INSTANTIATE_TEST_SUITE_P(
    Kinds, HistoryDefaults,
    testing::Values(DefaultsRow{0, kWithTicks}, DefaultsRow{1, kWithDays},
                    DefaultsRow{2, kWithTicks}, DefaultsRow{3, kWithDays},
                    DefaultsRow{4, {{201, 4, 1, 50000}, {201, 3, 1, 1000}, {201, 1, 1, 15}}},
                    DefaultsRow{5, {}}, DefaultsRow{6, {{201, 4, 1, 50000}}},
                    DefaultsRow{7, {{201, 4, 1, 50000}}}, DefaultsRow{8, kWithDays},
                    DefaultsRow{9, {}}, DefaultsRow{255, {}}),
    [](const auto& row) { return "Kind" + std::to_string(row.param.kind); });

using HistoryDefaultRules = WithCatalogue;

TEST_F(HistoryDefaultRules, TheOtherDefaultsAreThoseOfKind0) {
  CHistorySettings settings;
  settings.CreateDefaultSettingsFDCN();
  EXPECT_EQ(Plain(settings), kWithTicks);
}

TEST_F(HistoryDefaultRules, AddOnlyWhatIsMissingAndKeepDays) {
  CHistorySettings settings = Table({Line(201, 1, 1, 3), Line(436, 4, 1, 8)}, 4);
  settings.CreateDefaultSettings(4);
  EXPECT_THAT(Plain(settings),
              ElementsAre(PlainLine{201, 1, 1, 3}, PlainLine{436, 4, 1, 8},
                          PlainLine{201, 4, 1, 50000}, PlainLine{201, 3, 1, 1000}));
  settings.CreateDefaultSettings(4);
  settings.CreateDefaultSettingsFDCN();
  EXPECT_THAT(Plain(settings), SizeIs(6));
  EXPECT_EQ(HostBits(settings), 4U);
}

TEST_F(HistoryDefaultRules, AFullTableStays) {
  CHistorySettings settings = FullTable();
  settings.CreateDefaultSettings(0);
  EXPECT_TRUE(settings == FullTable());
}

using HistorySettingsDeathTest = WithCatalogue;

TEST_F(HistorySettingsDeathTest, SortingAFieldWithoutAnEntryIsAFault) {
  for (const int id : {6, 460, 522}) {
    CHistorySettings one = Table({Line(id, 3, 1, 1)});
    EXPECT_DEATH(one.SortSettings(), "without a catalogue entry");
    CHistorySettings two = Table({Line(201, 3, 1, 1), Line(id, 3, 1, 1)});
    EXPECT_DEATH(two.SortSettings(), "without a catalogue entry");
  }
}

TEST_F(HistorySettingsDeathTest, ALineBeyondTheTableIsAFault) {
  CHistorySettings settings = FullTable();
  for (const int index : {-1, 30, 2147483647}) {
    EXPECT_DEATH(static_cast<void>(settings.GetSetting(index)), "doesn't have");
    EXPECT_DEATH(static_cast<void>(settings.GetFHSetting(index)), "doesn't have");
  }
}

TEST(HistorySettingsWithoutManagerDeathTest, AChangeIsAFault) {
  ASSERT_EQ(CFieldInfoMgr::m_pInstance, nullptr);
  CHistorySettings settings;
  EXPECT_DEATH(settings.AddSetting(Line(201, 3, 1, 1)), "no manager");
  EXPECT_DEATH(settings.CreateDefaultSettings(0), "no manager");
  EXPECT_DEATH(Table({Line(201, 3, 1, 1)}), "no manager");
}

}  // namespace
