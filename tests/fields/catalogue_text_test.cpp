#include <pxdutil/fields/field_info_mgr.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support.h"

namespace {

using namespace fields_test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

// Opens the parsers.
class Parsers : public CFieldInfoMgr {
 public:
  using CFieldInfoMgr::ParseAtomicFieldIDList;
  using CFieldInfoMgr::ParseFieldInfo;
  using CFieldInfoMgr::ParseResoln;
  using CFieldInfoMgr::ParseResolnList;
  using CFieldInfoMgr::ParseResolnUpdateFieldList;
  using CFieldInfoMgr::ParseResolnUpdateFieldListList;
  using CFieldInfoMgr::ParseStorageSetting;
  using CFieldInfoMgr::ParseStorageSettingList;
  using CFieldInfoMgr::ReadFieldInfoList;
};

// Every parser but that of a line leaves this as it is.
const char* const kOldError = "old words";

// A list that has an item and then breaks off, though its brackets count up: it can stand in a line
// that is itself well-formed.
const char* const kBrokenList = "{5,6}}{{}";

std::string Line(const std::string& head, const std::string& booleans = "0,0,0,0,0,0,0",
                 const std::string& lists = "{},{},{}") {
  return "{" + head + "," + booleans + "," + lists + "}";
}

struct IdsRow {
  const char* text;
  int result;
  Ids ids;
};

void ExpectIds(const IdsRow& row) {
  SCOPED_TRACE(row.text);
  CZRListEx<CField> list(10);
  CString error = kOldError;
  EXPECT_EQ(Parsers::ParseAtomicFieldIDList(row.text, list, error), row.result);
  EXPECT_EQ(Plain(list), row.ids);
  EXPECT_EQ(error, kOldError);
}

TEST(ParseAtomicList, ReadsIds) {
  ExpectIds({"{7}", 1, {7}});
  ExpectIds({"{285,14,321,322}", 1, {285, 14, 321, 322}});
}

TEST(ParseAtomicList, NoItemsAreAnEmptyListWhateverTheBracketsSayOnPurpose) {
  ExpectIds({"{}", 1, {}});
  ExpectIds({"", 1, {}});
  ExpectIds({"7", 1, {}});
  ExpectIds({"{7", 1, {}});
  ExpectIds({"{7}}", 1, {}});
}

TEST(ParseAtomicList, ItemsInBrokenBracketsFailAndNothingIsRead) {
  ExpectIds({"{5,6}}", 0, {}});
  ExpectIds({kBrokenList, 0, {}});
}

TEST(ParseAtomicList, NumbersAreReadAsFarAsTheyGoAndCutTo16BitsOnPurpose) {
  ExpectIds({"{x,,5y, 6,+7}", 1, {0, 0, 5, 6, 7}});
  ExpectIds({"{65535,65536,65537,-1}", 1, {65535, 0, 1, 65535}});
}

TEST(ParseAtomicList, AppendsToTheListItIsGiven) {
  CZRListEx<CField> list = Fields({1});
  CString error;
  EXPECT_EQ(Parsers::ParseAtomicFieldIDList("{2}", list, error), 1);
  EXPECT_THAT(Plain(list), ElementsAre(1, 2));
}

struct ResolnRow {
  const char* text;
  int result;
  Resolution resoln;
};

// Each starts from 7 Minutes.
void ExpectResoln(const ResolnRow& row) {
  SCOPED_TRACE(row.text);
  CResoln resoln = MakeResoln(3, 7);
  CString error = kOldError;
  EXPECT_EQ(Parsers::ParseResoln(row.text, resoln, error), row.result);
  EXPECT_EQ(Plain(resoln), row.resoln);
  EXPECT_EQ(error, kOldError);
}

TEST(ParseResolution, ReadsUnitAndQuantity) {
  ExpectResoln({"{4,1}", 1, {4, 1}});
  ExpectResoln({"{8,65535}", 1, {8, 65535}});
  ExpectResoln({"{65540,65537}", 1, {4, 1}});
}

TEST(ParseResolution, ABadUnitIsIgnoredAndNoQuantityIsOneOnPurpose) {
  ExpectResoln({"{0,5}", 1, {3, 5}});
  ExpectResoln({"{9,5}", 1, {3, 5}});
  ExpectResoln({"{x,y}", 1, {3, 1}});
  ExpectResoln({"{4,0}", 1, {4, 1}});
}

TEST(ParseResolution, WantsExactlyTwoItemsInWholeBrackets) {
  for (const char* text : {"", "{}", "{4}", "{4,1,1}", "4,1", "{4,1", "{4,1}}", "{4,1,{}"}) {
    ExpectResoln({text, 0, {3, 7}});
  }
}

struct ResolnListRow {
  const char* text;
  int result;
  Resolutions resolns;
};

void ExpectResolns(const ResolnListRow& row) {
  SCOPED_TRACE(row.text);
  CZRListEx<CResoln> list(10);
  CString error = kOldError;
  EXPECT_EQ(Parsers::ParseResolnList(row.text, list, error), row.result);
  EXPECT_EQ(Plain(list), row.resolns);
  EXPECT_EQ(error, kOldError);
}

TEST(ParseResolutionList, ReadsResolutions) {
  ExpectResolns({"{{1,1}}", 1, {{1, 1}}});
  ExpectResolns({"{{2,1},{2,5},{4,1}}", 1, {{2, 1}, {2, 5}, {4, 1}}});
}

TEST(ParseResolutionList, MustNotBeEmptyUnlikeTheOtherLists) {
  ExpectResolns({"{}", 0, {}});
  ExpectResolns({"", 0, {}});
  ExpectResolns({"x", 0, {}});
}

TEST(ParseResolutionList, BrokenBracketsFailAndNothingIsRead) {
  ExpectResolns({"{{1,1},{2,1}}}", 0, {}});
  ExpectResolns({"{{1,1},{2,1},{}", 0, {}});
}

TEST(ParseResolutionList, ABadItemRepeatsWhatWasReadBeforeOnPurpose) {
  ExpectResolns({"{{4,1},x,{2,5}}", 1, {{4, 1}, {4, 1}, {2, 5}}});
  ExpectResolns({"{x,{4,1}}", 1, {{0, 0}, {4, 1}}});
  ExpectResolns({"{{4,2},{9,7}}", 1, {{4, 2}, {4, 7}}});
  ExpectResolns({"{,}", 1, {{0, 0}, {0, 0}}});
}

struct UpdateRow {
  const char* text;
  int result;
  Resolution resoln;
  Ids ids;
};

void ExpectUpdate(const UpdateRow& row) {
  SCOPED_TRACE(row.text);
  CResolnAndUpdateFieldList entry;
  CString error = kOldError;
  EXPECT_EQ(Parsers::ParseResolnUpdateFieldList(row.text, entry, error), row.result);
  EXPECT_EQ(Plain(entry.m_Resoln), row.resoln);
  EXPECT_EQ(Plain(entry.m_FieldList), row.ids);
  EXPECT_EQ(error, kOldError);
}

TEST(ParseUpdateEntry, ReadsAResolutionAndIds) {
  ExpectUpdate({"{{4,1},{517,518}}", 1, {4, 1}, {517, 518}});
  ExpectUpdate({"{{4,1},{}}", 1, {4, 1}, {}});
}

TEST(ParseUpdateEntry, ItemsBehindTheSecondAndBrokenBracketsDoNotMatterOnPurpose) {
  ExpectUpdate({"{{4,1},{1},{2},x}", 1, {4, 1}, {1}});
  ExpectUpdate({"{{4,1},{1},{}", 1, {4, 1}, {1}});
}

TEST(ParseUpdateEntry, IdsWithoutBracketsAreAnEmptyListOnPurpose) {
  ExpectUpdate({"{{4,1},517}", 1, {4, 1}, {}});
}

TEST(ParseUpdateEntry, AMissingItemOrABadResolutionFails) {
  ExpectUpdate({"", 0, {0, 0}, {}});
  ExpectUpdate({"{}", 0, {0, 0}, {}});
  ExpectUpdate({"{x,{1}}", 0, {0, 0}, {}});
  ExpectUpdate({"{{4,1}}", 0, {4, 1}, {}});
  ExpectUpdate({"{{4,1},{5,6}}{{}}", 0, {4, 1}, {}});
}

struct UpdateListRow {
  const char* text;
  int result;
  std::vector<std::pair<Resolution, Ids>> entries;
};

void ExpectUpdates(const UpdateListRow& row) {
  SCOPED_TRACE(row.text);
  CZRListEx<CResolnAndUpdateFieldList> list(10);
  CString error = kOldError;
  EXPECT_EQ(Parsers::ParseResolnUpdateFieldListList(row.text, list, error), row.result);
  std::vector<std::pair<Resolution, Ids>> entries;
  for (const CResolnAndUpdateFieldList& entry : list) {
    entries.emplace_back(Plain(entry.m_Resoln), Plain(entry.m_FieldList));
  }
  EXPECT_EQ(entries, row.entries);
  EXPECT_EQ(error, kOldError);
}

TEST(ParseUpdateList, ReadsEntries) {
  ExpectUpdates({"{{{4,1},{1,2}},{{5,1},{3}}}", 1, {{{4, 1}, {1, 2}}, {{5, 1}, {3}}}});
}

TEST(ParseUpdateList, NoItemsAreAnEmptyListWhateverTheBracketsSayOnPurpose) {
  for (const char* text : {"{}", "", "x", "{x}}"}) {
    ExpectUpdates({text, 1, {}});
  }
}

TEST(ParseUpdateList, ItemsInBrokenBracketsFailAndNothingIsRead) {
  ExpectUpdates({"{{{4,1},{1}},{{5,1},{2}}}}", 0, {}});
}

TEST(ParseUpdateList, OnlyTheLastEntryDecidesOnPurpose) {
  ExpectUpdates({"{x,{{5,1},{2}}}", 1, {{{5, 1}, {2}}}});
  ExpectUpdates({"{{{4,1},{1}},x}", 0, {{{4, 1}, {1}}}});
  ExpectUpdates({"{x,{{4,1},{1}},y}", 0, {{{4, 1}, {1}}}});
}

struct SettingRow {
  const char* text;
  int result;
  int dataPtID;
  Resolutions resolns;
};

void ExpectSetting(const SettingRow& row) {
  SCOPED_TRACE(row.text);
  CStorageSetting setting = Setting(99, {{7, 7}});
  CString error = kOldError;
  EXPECT_EQ(Parsers::ParseStorageSetting(row.text, setting, error), row.result);
  EXPECT_EQ(setting.GetDataPtID(), row.dataPtID);
  EXPECT_EQ(Plain(setting.GetResolnList()), row.resolns);
  EXPECT_EQ(error, kOldError);
}

TEST(ParseStorageEntry, ReadsAnIdAndResolutions) {
  ExpectSetting({"{5,{{1,1}}}", 1, 5, {{1, 1}}});
  ExpectSetting({"{6,{{2,1},{2,5},{4,1}}}", 1, 6, {{2, 1}, {2, 5}, {4, 1}}});
  ExpectSetting({"{257,{{1,1}}}", 1, 1, {{1, 1}}});
  ExpectSetting({"{x,{{1,1}}}", 1, 0, {{1, 1}}});
}

TEST(ParseStorageEntry, WantsExactlyTwoItems) {
  for (const char* text : {"", "{}", "{5}", "{5,{{1,1}},6}", "5"}) {
    ExpectSetting({text, 0, 99, {{7, 7}}});
  }
}

TEST(ParseStorageEntry, TwoItemsInBrokenBracketsAreTakenOnPurpose) {
  ExpectSetting({"{5,{{1,1}},{}", 1, 5, {{1, 1}}});
}

TEST(ParseStorageEntry, AfterABadListTheIdIsStoredAllTheSame) {
  ExpectSetting({"{5,{}}", 0, 5, {{7, 7}}});
  ExpectSetting({"{5,x}", 0, 5, {{7, 7}}});
}

struct SettingListRow {
  const char* text;
  int result;
  Settings settings;
};

void ExpectSettings(const SettingListRow& row) {
  SCOPED_TRACE(row.text);
  CZRListEx<CStorageSetting> list(10);
  CString error = kOldError;
  EXPECT_EQ(Parsers::ParseStorageSettingList(row.text, list, error), row.result);
  EXPECT_EQ(Plain(list), row.settings);
  EXPECT_EQ(error, kOldError);
}

TEST(ParseStorageList, ReadsSettings) {
  ExpectSettings({"{{5,{{1,1}}},{6,{{2,1},{4,1}}}}", 1, {{5, {{1, 1}}}, {6, {{2, 1}, {4, 1}}}}});
  ExpectSettings({"{}", 1, {}});
}

TEST(ParseStorageList, BrokenBracketsFailAlsoWithoutItemsUnlikeTheOtherLists) {
  for (const char* text : {"", "x", "{5", "{5}}", kBrokenList}) {
    ExpectSettings({text, 0, {}});
  }
}

TEST(ParseStorageList, ABadSettingIsTakenAsFarAsItWasReadOnPurpose) {
  ExpectSettings({"{{5,{{1,1}}},x,{6,{}},{7}}", 1, {{5, {{1, 1}}}, {0, {}}, {6, {}}, {0, {}}}});
}

TEST(ParseLine, PutsEachPositionInItsPlace) {
  CZRGSFieldInfo info;
  CString error = kOldError;
  EXPECT_EQ(Parsers::ParseFieldInfo(Line("Some Name,201,2,3", "1,1,0,1,0,1,0",
                                         "{285,14},{{{4,1},{282}}},{{5,{{1,1}}}}"),
                                    info, error),
            1);
  EXPECT_EQ(info.GetFieldDescription(), "Some Name");
  EXPECT_EQ(info.GetFieldID(), 201);
  EXPECT_EQ(info.GetFieldDataType(), 2);
  EXPECT_EQ(info.GetFieldType(), 3);
  EXPECT_EQ(info.GetStoreInSnapshot(), 1);
  EXPECT_EQ(info.GetIsStorable(), 1);
  EXPECT_EQ(info.GetIsProvidedByServer(), 0);
  EXPECT_EQ(info.GetIsAffectedByStockSplit(), 4);
  EXPECT_EQ(info.GetIsAffectedByDistribution(), 0);
  EXPECT_EQ(info.GetIsAffectedByPriceMultiplier(), 16);
  EXPECT_EQ(info.GetIsAffectedByVolumeMultiplier(), 0);
  EXPECT_THAT(Plain(info.GetAtomicFieldIDList()), ElementsAre(285, 14));
  ASSERT_NE(info.GetUpdateFieldIDListPtr(MakeResoln(4, 1)), nullptr);
  EXPECT_THAT(Plain(*info.GetUpdateFieldIDListPtr(MakeResoln(4, 1))), ElementsAre(282));
  EXPECT_THAT(Plain(info.GetStorageSettingList()), ElementsAre(Pair(5, ElementsAre(Pair(1, 1)))));
  EXPECT_EQ(error, kOldError);
}

TEST(ParseLine, EachBooleanPositionSetsItsOwnFlag) {
  int (CZRGSFieldInfo::*const getters[])() const = {
      &CZRGSFieldInfo::GetStoreInSnapshot,
      &CZRGSFieldInfo::GetIsStorable,
      &CZRGSFieldInfo::GetIsProvidedByServer,
      &CZRGSFieldInfo::GetIsAffectedByStockSplit,
      &CZRGSFieldInfo::GetIsAffectedByDistribution,
      &CZRGSFieldInfo::GetIsAffectedByPriceMultiplier,
      &CZRGSFieldInfo::GetIsAffectedByVolumeMultiplier,
  };
  for (std::size_t set = 0; set < 7; ++set) {
    std::string booleans = "0,0,0,0,0,0,0";
    booleans[2 * set] = '1';
    CZRGSFieldInfo info;
    CString error;
    ASSERT_EQ(Parsers::ParseFieldInfo(Line("n,1,0,0", booleans), info, error), 1);
    for (std::size_t read = 0; read < 7; ++read) {
      EXPECT_EQ((info.*getters[read])() != 0, read == set) << set << ' ' << read;
    }
  }
}

TEST(ParseLine, NumbersAreCutToTheirMembersAndNonNumbersAreZeroOnPurpose) {
  CZRGSFieldInfo info;
  CString error;
  EXPECT_EQ(Parsers::ParseFieldInfo(Line(" n ,65541,257,-1"), info, error), 1);
  EXPECT_EQ(info.GetFieldDescription(), " n ");
  EXPECT_EQ(info.GetFieldID(), 5);
  EXPECT_EQ(info.GetFieldDataType(), 1);
  EXPECT_EQ(info.GetFieldType(), 255);
  EXPECT_EQ(Parsers::ParseFieldInfo(Line(",x,,{7}"), info, error), 1);
  EXPECT_EQ(info.GetFieldDescription(), "");
  EXPECT_EQ(info.GetFieldID(), 0);
  EXPECT_EQ(info.GetFieldDataType(), 0);
  EXPECT_EQ(info.GetFieldType(), 0);
}

struct LineErrorRow {
  std::string line;
  const char* error;
};

TEST(ParseLine, RefusesWithWords) {
  const char* const boolean = "Expecting a 0 or a 1 for boolean value";
  const char* const atomic = "Error parsing Atomic Field ID List : old words";
  const LineErrorRow rows[] = {
      {"{n,1,0,0,0,0,0,0,0,0,0,{},{}}",
       "There should be 14 parameters for the FieldInfo line, but I found 13"},
      {"{n,1,0,0,0,0,0,0,0,0,0,{},{},{},}",
       "There should be 14 parameters for the FieldInfo line, but I found 15"},
      {"", "There should be 14 parameters for the FieldInfo line, but I found 0"},
      {"{}", "There should be 14 parameters for the FieldInfo line, but I found 0"},
      {"n,1,0,0,0,0,0,0,0,0,0,{},{},{}",
       "There should be 14 parameters for the FieldInfo line, but I found 0"},
      {Line("n,1,0,0") + "}",
       "There should be 14 parameters for the FieldInfo line, but I found 13"},
      {Line("n,1,0,0", "2,0,0,0,0,0,0"), boolean},
      {Line("n,1,0,0", "0,0,0,0,0,0,2"), boolean},
      {Line("n,1,0,0", "0,0,-1,0,0,0,0"), boolean},
      {Line("n,1,0,0", "0,0,0,4294967296,0,0,0"), boolean},
      {Line("n,1,0,0", "0,0,0,0,0,0,0", std::string(kBrokenList) + ",{},{}"), atomic},
      // The update list says what the atomic list says: meant.
      {Line("n,1,0,0", "0,0,0,0,0,0,0", "{}," + std::string(kBrokenList) + ",{}"), atomic},
      {Line("n,1,0,0", "0,0,0,0,0,0,0", "{},{x},{}"), atomic},
      {Line("n,1,0,0", "0,0,0,0,0,0,0", "{},{},x"),
       "Error parsing Storage Setting List : old words"},
  };
  for (const LineErrorRow& row : rows) {
    CZRGSFieldInfo info;
    CString error = kOldError;
    EXPECT_EQ(Parsers::ParseFieldInfo(row.line, info, error), 0) << row.line;
    EXPECT_EQ(error.Str(), row.error) << row.line;
  }
}

TEST(ParseLine, FourteenItemsInBrokenBracketsFailWithoutWordsOnPurpose) {
  CZRGSFieldInfo info;
  CString error = kOldError;
  EXPECT_EQ(Parsers::ParseFieldInfo("{n,1,0,0,0,0,0,0,0,0,0,{},{},{},{x}", info, error), 0);
  EXPECT_EQ(error, kOldError);
  EXPECT_EQ(info.GetFieldDescription(), "");
}

TEST(ParseLine, BooleansAreReadAsNumbersOnPurpose) {
  CZRGSFieldInfo info;
  CString error;
  EXPECT_EQ(Parsers::ParseFieldInfo(Line("n,1,0,0", "x,1y,,01, 1,+1,-0"), info, error), 1);
  EXPECT_EQ(info.GetStoreInSnapshot(), 0);
  EXPECT_EQ(info.GetIsStorable(), 1);
  EXPECT_EQ(info.GetIsProvidedByServer(), 0);
  EXPECT_EQ(info.GetIsAffectedByStockSplit(), 4);
  EXPECT_EQ(info.GetIsAffectedByDistribution(), 8);
  EXPECT_EQ(info.GetIsAffectedByPriceMultiplier(), 16);
  EXPECT_EQ(info.GetIsAffectedByVolumeMultiplier(), 0);
}

TEST(ParseLine, AFailureLeavesTheEarlierPositionsStored) {
  CZRGSFieldInfo info;
  info.SetAtomicFieldList(Fields({9}));
  info.SetIsAffectedByPriceMultiplier(1);
  CString error;
  EXPECT_EQ(Parsers::ParseFieldInfo(Line("n,5,1,2", "1,1,0,2,0,0,0", "{7},{},{}"), info, error), 0);
  EXPECT_EQ(info.GetFieldDescription(), "n");
  EXPECT_EQ(info.GetFieldID(), 5);
  EXPECT_EQ(info.GetFieldDataType(), 1);
  EXPECT_EQ(info.GetFieldType(), 2);
  EXPECT_EQ(info.GetStoreInSnapshot(), 1);
  EXPECT_EQ(info.GetIsStorable(), 1);
  EXPECT_EQ(info.GetIsAffectedByStockSplit(), 0);
  EXPECT_EQ(info.GetIsAffectedByPriceMultiplier(), 16);
  EXPECT_THAT(Plain(info.GetAtomicFieldIDList()), ElementsAre(9));
}

TEST(ParseLine, ABadStorageListLeavesTheListsBeforeItStored) {
  CZRGSFieldInfo info;
  CString error;
  EXPECT_EQ(
      Parsers::ParseFieldInfo(Line("n,5,1,2", "0,0,0,0,0,0,0", "{7},{{{4,1},{8}}},x"), info, error),
      0);
  EXPECT_THAT(Plain(info.GetAtomicFieldIDList()), ElementsAre(7));
  EXPECT_NE(info.GetUpdateFieldIDListPtr(MakeResoln(4, 1)), nullptr);
}

TEST(ParseLine, ASilentlyBadStorageEntryPassesWhereABadUpdateEntryFailsOnPurpose) {
  CZRGSFieldInfo info;
  CString error;
  EXPECT_EQ(Parsers::ParseFieldInfo(Line("n,5,1,2", "0,0,0,0,0,0,0", "{},{},{x}"), info, error), 1);
  EXPECT_EQ(Parsers::ParseFieldInfo(Line("n,5,1,2", "0,0,0,0,0,0,0", "{},{x},{}"), info, error), 0);
}

TEST(LoadCatalogue, ReadsLinesToTheEndOfTheFile) {
  CFieldInfoMgr catalogue;
  CString error = kOldError;
  EXPECT_EQ(
      Load(catalogue, Line("a,5,0,0") + "\r\n" + Line("b,6,0,0") + "\n" + Line("c,7,0,0"), error),
      1);
  EXPECT_EQ(RowCount(catalogue), 3);
  EXPECT_EQ(catalogue.GetFieldInfo(7)->GetFieldDescription(), "c");
  EXPECT_EQ(error, kOldError);
}

TEST(LoadCatalogue, AnEmptyFileLoadsNothingAndSucceeds) {
  CFieldInfoMgr catalogue;
  EXPECT_EQ(Load(catalogue, ""), 1);
  EXPECT_EQ(RowCount(catalogue), 0);
}

TEST(LoadCatalogue, NothingBehindVersionInfoIsRead) {
  CFieldInfoMgr catalogue;
  EXPECT_EQ(Load(catalogue, Line("a,5,0,0") + "\r\nVersionInfo\x01\x02\x20" + std::string(1, '\0') +
                                "\r\n" + Line("b,6,0,0") + "\r\nrubbish"),
            1);
  EXPECT_EQ(RowCount(catalogue), 1);
}

TEST(LoadCatalogue, OnlyALineThatBeginsWithVersionInfoEndsTheReading) {
  CFieldInfoMgr catalogue;
  CString error;
  EXPECT_EQ(Load(catalogue, "VersionInf", error), 0);
  EXPECT_EQ(Load(catalogue, " VersionInfo", error), 0);
  EXPECT_EQ(Load(catalogue, "versioninfo", error), 0);
  EXPECT_EQ(Load(catalogue, "VersionInformation", error), 1);
}

TEST(LoadCatalogue, ErrorsNameTheLineCountedFromOne) {
  struct Row {
    std::string text;
    const char* error;
  };
  const std::string good = Line("a,5,0,0") + "\r\n";
  const Row rows[] = {
      {"{n,1,0,0,0,0,0,0,0,0,0,{},{}}",
       "Line 1:There should be 14 parameters for the FieldInfo line, but I found 13"},
      {good + "\r\n", "Line 2:There should be 14 parameters for the FieldInfo line, but I found 0"},
      {good + Line("b,6,0,0", "0,0,0,0,0,2,0"), "Line 2:Expecting a 0 or a 1 for boolean value"},
      {good + Line("b,6,0,0") + "\n" + Line("c,7,0,0", "0,0,0,0,0,0,0", "{},{x},{}"),
       "Line 3:Error parsing Atomic Field ID List : "},
      {good + Line("b,6,0,0", "0,0,0,0,0,0,0", "{},{},"),
       "Line 2:Error parsing Storage Setting List : "},
      {good + Line("b,5,0,0"), "Line 2:Field ID already exists"},
      {good + Line("b,522,0,0"), "Line 2:One of the Field Info values is invalid"},
  };
  for (const Row& row : rows) {
    CFieldInfoMgr catalogue;
    CString error;
    EXPECT_EQ(Load(catalogue, row.text, error), 0) << row.text;
    EXPECT_EQ(error.Str(), row.error) << row.text;
  }
}

TEST(LoadCatalogue, WordsFromBeforeAreNotClearedOnPurpose) {
  CFieldInfoMgr catalogue;
  CString error = "old words";
  EXPECT_EQ(Load(catalogue, Line("n,1,0,0", "0,0,0,0,0,0,0", "{},{x},{}"), error), 0);
  EXPECT_EQ(error, "Line 1:Error parsing Atomic Field ID List : old words");
  error = "old words";
  EXPECT_EQ(Load(catalogue, "{n,1,0,0,0,0,0,0,0,0,0,{},{},{},{x}", error), 0);
  EXPECT_EQ(error, "Line 1:old words");
}

TEST(LoadCatalogue, ADuplicateStopsTheLoadAndTheFirstRowStays) {
  CFieldInfoMgr catalogue;
  CString error = kOldError;
  EXPECT_EQ(
      Load(catalogue, Line("a,5,0,0") + "\n" + Line("b,5,0,0") + "\n" + Line("c,6,0,0"), error), 0);
  EXPECT_EQ(error, "Line 2:Field ID already exists");
  EXPECT_EQ(RowCount(catalogue), 1);
  EXPECT_EQ(catalogue.GetFieldInfo(5)->GetFieldDescription(), "a");
}

TEST(LoadCatalogue, ASecondLoadFailsAtItsFirstLine) {
  CFieldInfoMgr catalogue;
  const std::string text = Line("a,5,0,0") + "\r\n" + Line("b,6,0,0") + "\r\n";
  CString error;
  EXPECT_EQ(Load(catalogue, text, error), 1);
  EXPECT_EQ(Load(catalogue, text, error), 0);
  EXPECT_EQ(error, "Line 1:Field ID already exists");
}

TEST(LoadCatalogue, NothingRemainsFromTheLineBefore) {
  CFieldInfoMgr catalogue;
  EXPECT_EQ(Load(catalogue, Line("a,5,1,3", "1,1,1,1,1,1,1", "{1},{{{4,1},{2}}},{{5,{{1,1}}}}") +
                                "\n" + Line("b,6,0,0")),
            1);
  const CZRGSFieldInfo* second = catalogue.GetFieldInfo(6);
  ASSERT_NE(second, nullptr);
  CZRGSFieldInfo expected;
  expected.SetFieldID(6);
  expected.SetFieldDescription("b");
  EXPECT_EQ(*second == expected, 1);
  EXPECT_EQ(second->GetUpdateFieldIDListPtr(MakeResoln(4, 1)), nullptr);
}

TEST(LoadCatalogue, TheReaderHasASecondName) {
  Parsers catalogue;
  TextFile file(Line("a,5,0,0"));
  CString error;
  EXPECT_EQ(catalogue.ReadFieldInfoList(file, error), 1);
  EXPECT_NE(catalogue.GetFieldInfo(5), nullptr);
}

TEST(HostileCatalogueText, LongAndDeepLinesAreRefusedOrRead) {
  struct Row {
    std::string text;
    int result;
  };
  const std::string deep = std::string(100000, '{') + std::string(100000, '}');
  const Row rows[] = {
      {std::string(1000000, '{'), 0},
      {std::string(1000000, '}'), 0},
      {"{" + std::string(100000, ',') + "}", 0},
      {deep, 0},
      {Line(std::string(1000000, 'n') + ",5,0,0"), 1},
      {Line("n," + std::string(100000, '9') + ",0,0"), 0},  // no id of the catalogue
      {Line("n,5,0,0", "0,0,0,0,0,0,0", deep + "," + deep + "," + deep), 0},
      {Line("n,5,0,0", "0,0,0,0,0,0,0", "{},{}," + deep), 1},
      {std::string(100000, '\0'), 0},
  };
  for (const Row& row : rows) {
    CFieldInfoMgr catalogue;
    EXPECT_EQ(Load(catalogue, row.text), row.result) << row.text.substr(0, 40);
  }
}

TEST(HostileCatalogueText, ANulEndsANumberButNotALine) {
  CFieldInfoMgr catalogue;
  EXPECT_EQ(Load(catalogue, Line(std::string("n\0m", 3) + "," +
                                 std::string("5\0"
                                             "6",
                                             3) +
                                 ",0,0")),
            1);
  ASSERT_NE(catalogue.GetFieldInfo(5), nullptr);
  EXPECT_EQ(catalogue.GetFieldInfo(5)->GetFieldDescription().Str(), std::string("n\0m", 3));
}

// Whatever the bytes are, a load ends with 0 or 1, says why where it is 0, and adds no more rows
// than there are lines.
TEST(HostileCatalogueText, SpoiltLinesDoNoHarm) {
  const std::string sound = Line("Trade Record,201,0,3", "0,1,0,1,1,1,1",
                                 "{285,14},{{{4,1},{282,283}},{{5,1},{282}}},"
                                 "{{5,{{1,1}}},{6,{{2,1},{2,5},{4,1}}}}");
  const std::string alphabet = std::string("{},019-x \r\n", 11) + std::string(1, '\0');
  std::mt19937 random(20250);
  for (int round = 0; round < 5000; ++round) {
    std::string text = sound;
    for (int change = 0; change < 4; ++change) {
      const std::size_t at = random() % text.size();
      if (random() % 4 == 0) {
        text.erase(at, 1);
      } else {
        text[at] = alphabet[random() % alphabet.size()];
      }
    }
    CFieldInfoMgr catalogue;
    CString error;
    const int result = Load(catalogue, text, error);
    const auto lines = std::count(text.begin(), text.end(), '\n') + 1;
    ASSERT_LE(RowCount(catalogue), lines) << text;
    ASSERT_EQ(error.IsEmpty(), result == 1) << text;
    ASSERT_TRUE(result == 1 || error.Str().starts_with("Line ")) << text;
  }
}

}  // namespace
