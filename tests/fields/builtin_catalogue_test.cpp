#include <pxdutil/fields/field_info_mgr.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pxdutil/reference/toolbox.h>

#include "support.h"

namespace {

using namespace fields_test;
using testing::ElementsAre;
using testing::Pair;

// The catalogue once more, listed from another side: the ids of the plain rows by kind, the names
// of all rows by id, and the other rows letter by letter.
struct Kind {
  int dataType;
  int fieldType;
  std::size_t count;
  Ids ids;
};

const std::vector<Kind> kKinds = {
    {0, 0, 4, {346, 347, 367, 431}},
    {0, 1, 5, {344, 368, 386, 394, 398}},
    {0, 2, 85, {5,   18,  27,  32,  74,  76,  94,  108, 167, 190, 196, 207, 210, 217, 218,
                221, 224, 225, 227, 229, 230, 232, 233, 234, 235, 238, 239, 248, 249, 253,
                256, 257, 258, 259, 260, 261, 262, 263, 273, 274, 275, 282, 283, 284, 286,
                287, 288, 289, 290, 294, 297, 298, 299, 300, 301, 315, 316, 317, 318, 319,
                331, 332, 335, 340, 356, 365, 370, 371, 372, 377, 405, 406, 410, 411, 425,
                429, 430, 443, 449, 450, 451, 458, 481, 484, 493}},
    {0, 4, 62, {321, 322, 323, 324, 325, 326, 327, 328, 334, 342, 349, 357, 369, 378, 379, 380,
                381, 382, 383, 384, 385, 387, 388, 391, 392, 393, 395, 396, 397, 400, 401, 402,
                403, 404, 407, 408, 409, 413, 415, 416, 419, 427, 428, 432, 433, 435, 440, 441,
                442, 447, 475, 479, 480, 482, 483, 489, 490, 491, 492, 516, 517, 518}},
    {1, 2, 37, {9,   12,  16,  17,  31,  96,  199, 208, 209, 211, 219, 242, 243,
                244, 245, 246, 247, 264, 265, 272, 338, 341, 343, 348, 351, 399,
                412, 414, 417, 418, 420, 426, 445, 446, 487, 497, 515}},
    {2, 2, 11, {66, 102, 212, 213, 228, 276, 280, 350, 373, 374, 421}},
    {3, 2, 7, {281, 345, 375, 376, 389, 390, 422}},
};

const std::map<int, std::string> kNames = {{5, "Base Code"},
                                           {7, "Bid"},
                                           {8, "Bid Size"},
                                           {9, "BidExg"},
                                           {10, "Ask"},
                                           {11, "Ask Size"},
                                           {12, "AskExg"},
                                           {14, "Trade Volume"},
                                           {16, "Exchange Traded"},
                                           {17, "Exchange Listed"},
                                           {18, "News Count"},
                                           {27, "Yield"},
                                           {31, "Symbol Name"},
                                           {32, "Strike"},
                                           {62, "Description"},
                                           {66, "DeliveryDate"},
                                           {74, "Settlement"},
                                           {76, "PE Ratio"},
                                           {94, "Earnings"},
                                           {96, "Headline"},
                                           {102, "ExpDate"},
                                           {108, "MM ID"},
                                           {167, "Dividend"},
                                           {190, "Category"},
                                           {195, "Headline Count"},
                                           {196, "Minutes Delayed"},
                                           {199, "CUSIP"},
                                           {200, "Bid Record"},
                                           {201, "Trade Record"},
                                           {202, "Ask Record"},
                                           {207, "Datafeed ID"},
                                           {208, "Datafeed Name"},
                                           {209, "Symbol Root"},
                                           {210, "Field ID"},
                                           {211, "Field Description"},
                                           {212, "Last Trading Date"},
                                           {213, "First Notice Date"},
                                           {217, "Point Value"},
                                           {218, "MinMove"},
                                           {219, "Sessions"},
                                           {221, "Expiration Style"},
                                           {224, "Option Type"},
                                           {225, "Margin"},
                                           {227, "Field Mask"},
                                           {228, "Last Date"},
                                           {229, "NumDaysBack"},
                                           {230, "Daily Limit"},
                                           {232, "Bar Open"},
                                           {233, "Bar High"},
                                           {234, "Bar Low"},
                                           {235, "Bar Close"},
                                           {238, "Bar UpVol"},
                                           {239, "Bar DownVol"},
                                           {242, "Keyword"},
                                           {243, "News Source"},
                                           {244, "News Source List"},
                                           {245, "Symbol List"},
                                           {246, "News Category"},
                                           {247, "Underlying Name"},
                                           {248, "Bar UnchVol"},
                                           {249, "Bar TotalVol"},
                                           {253, "Bar OpenInt"},
                                           {256, "Bar Status"},
                                           {257, "Field Type"},
                                           {258, "Exact Match"},
                                           {259, "Match Whole Word"},
                                           {260, "Match Case"},
                                           {261, "SearchStory"},
                                           {262, "StoryID"},
                                           {263, "Has Body"},
                                           {264, "News Symbol"},
                                           {265, "News Story Filename"},
                                           {272, "History Settings"},
                                           {273, "Bar Ext Status"},
                                           {274, "NumTradeDaysBack"},
                                           {275, "NumBarsBack"},
                                           {276, "Start Date"},
                                           {280, "Date"},
                                           {281, "Time"},
                                           {282, "Open"},
                                           {283, "High"},
                                           {284, "Low"},
                                           {285, "Close"},
                                           {286, "UpVol"},
                                           {287, "DownVol"},
                                           {288, "UnchVol"},
                                           {289, "TotalVol"},
                                           {290, "OpenInterest"},
                                           {294, "Expired"},
                                           {297, "Exchange Time Zone"},
                                           {298, "Time Zone"},
                                           {299, "Date Of Sessions"},
                                           {300, "Multiple News Symbols"},
                                           {301, "Multiple News Keywords"},
                                           {307, "DateLastBid"},
                                           {308, "DateLastAsk"},
                                           {309, "Time Last Bid"},
                                           {310, "Time Last Ask"},
                                           {315, "PrevDate"},
                                           {316, "PrevTime"},
                                           {317, "PrevClose"},
                                           {318, "PrevVol"},
                                           {319, "PrevOpenInt"},
                                           {321, "Bar Up Ticks"},
                                           {322, "Bar Down Ticks"},
                                           {323, "Bar Unchg Ticks"},
                                           {324, "Bar Total Ticks"},
                                           {325, "UpTicks"},
                                           {326, "DownTicks"},
                                           {327, "UnchgTicks"},
                                           {328, "TotalTicks"},
                                           {331, "ElementSize"},
                                           {332, "NumElements"},
                                           {334, "GMT Offset"},
                                           {335, "Feed Status"},
                                           {338, "Story"},
                                           {340, "DatafeedConnect"},
                                           {341, "DatafeedDisconnect"},
                                           {342, "Collection ID"},
                                           {343, "MM Name"},
                                           {344, "MM Size"},
                                           {345, "MM Time"},
                                           {346, "MM Price"},
                                           {347, "MM 100ths"},
                                           {348, "MM Exchange"},
                                           {349, "MM Status"},
                                           {350, "MM Date"},
                                           {351, "MM Type"},
                                           {356, "RegExpression"},
                                           {357, "SymList SubCategory ID"},
                                           {365, "TransactionID"},
                                           {367, "T&S Price"},
                                           {368, "T&S Volume"},
                                           {369, "T&S Tick Type"},
                                           {370, "T&S MinBack"},
                                           {371, "T&S TicksBack"},
                                           {372, "T&S AllPrices"},
                                           {373, "T&S StartDate"},
                                           {374, "T&S EndDate"},
                                           {375, "T&S StartTime"},
                                           {376, "T&S EndTime"},
                                           {377, "T&S TickMask"},
                                           {378, "OC Leap Year"},
                                           {379, "OC ExpDate Low"},
                                           {380, "OC ExpDate High"},
                                           {381, "OC Expirations"},
                                           {382, "OC Strikes"},
                                           {383, "OC Strikes Low"},
                                           {384, "OC Strikes High"},
                                           {385, "OC Type"},
                                           {386, "OC Open Int"},
                                           {387, "FDCN Bit Flags"},
                                           {388, "8 UpDown Bit Pairs"},
                                           {389, "Trade Start Time"},
                                           {390, "Trade End Time"},
                                           {391, "EOD Keep Days"},
                                           {392, "Tick Keep Days"},
                                           {393, "News Keep Days"},
                                           {394, "Shares Outstanding"},
                                           {395, "Dividend Month"},
                                           {396, "Dividend Day"},
                                           {397, "Dividend Frequency"},
                                           {398, "Contract Size"},
                                           {399, "Entitle Exchange"},
                                           {400, "Num Options"},
                                           {401, "12MonthHigh Month"},
                                           {402, "12MonthHigh Day"},
                                           {403, "12MonthLow Month"},
                                           {404, "12MonthLow Day"},
                                           {405, "Estimated EPS"},
                                           {406, "BETA"},
                                           {407, "SIC Code"},
                                           {408, "Display Type"},
                                           {409, "Last Bid Arrow"},
                                           {410, "12MonthHigh"},
                                           {411, "12MonthLow"},
                                           {412, "Entitlement App Name"},
                                           {413, "Entitlement App ID"},
                                           {414, "Entitlement Name"},
                                           {415, "Entitlement ID"},
                                           {416, "Entitlement Value"},
                                           {417, "Entitlement Prog ID"},
                                           {418, "SymList Category Name"},
                                           {419, "SymList Category ID"},
                                           {420, "SymList SubCategory Name"},
                                           {421, "Bar Date"},
                                           {422, "Bar Time"},
                                           {425, "ReloadCache"},
                                           {426, "SymList RootCategory Name"},
                                           {427, "SymList RootCategory ID"},
                                           {428, "SymList Display List"},
                                           {429, "News Status"},
                                           {430, "Entitlement Value Type"},
                                           {431, "Last"},
                                           {432, "Tick Trade Options"},
                                           {433, "OC Filter Flag"},
                                           {435, "Synch State"},
                                           {436, "After Market Trade Record"},
                                           {440, "Exchange Min From GMT"},
                                           {441, "Local Min From GMT"},
                                           {442, "Tick Trade Exchange"},
                                           {443, "VWAP"},
                                           {445, "ECN List"},
                                           {446, "ECN Reference Number"},
                                           {447, "ECN Minimum Shares"},
                                           {448, "ECN Aggregate Depth"},
                                           {449, "ECN LevelII Data"},
                                           {450, "ECN Aggregate"},
                                           {451, "ECN Order Levels"},
                                           {458, "SendEmptyBars"},
                                           {475, "Future Type"},
                                           {479, "Put Volume"},
                                           {480, "Call Volume"},
                                           {481, "PutCall Volume Ratio"},
                                           {482, "Put OpenInterest"},
                                           {483, "Call OpenInterest"},
                                           {484, "Implied Volatility"},
                                           {485, "Option Chart Record"},
                                           {486, "CCA Chart Record"},
                                           {487, "Corrections"},
                                           {489, "Bar Put Volume"},
                                           {490, "Bar Call Volume"},
                                           {491, "Bar Put OpenInterest"},
                                           {492, "Bar Call OpenInterest"},
                                           {493, "Bar Implied Volatility"},
                                           {497, "Ticker name extension"},
                                           {515, "Conversion formulas"},
                                           {516, "Conversion bars"},
                                           {517, "Bar Conversion Winning"},
                                           {518, "Bar Conversion Loosing"},
                                           {521, "Conversion Chart Record"}};

// clang-format off
const std::map<int, std::string> kWholeLines = {
    {7, R"({Bid,7,0,0,1,0,0,1,1,1,0,{7},{},{{1,{{1,1}}},{2,{{2,1},{2,5},{4,1}}}}})"},
    {8, R"({Bid Size,8,0,1,1,0,0,1,0,0,1,{8},{},{}})"},
    {10, R"({Ask,10,0,0,1,0,0,1,1,1,0,{10},{},{{1,{{1,1}}},{2,{{2,1},{2,5},{4,1}}}}})"},
    {11, R"({Ask Size,11,0,1,1,0,0,1,0,0,1,{11},{},{}})"},
    {14, R"({Trade Volume,14,0,1,1,0,0,1,0,0,1,{14},{},{}})"},
    {62, R"({Description,62,1,2,1,0,0,0,0,0,0,{62},{},{}})"},
    {195, R"({Headline Count,195,0,2,1,0,0,0,0,0,0,{195},{},{}})"},
    {200, R"({Bid Record,200,0,3,0,1,0,1,1,1,1,{7,8},{},{{5,{{1,1}}},{6,{{2,1},{2,5},{4,1}}}}})"},
    {201, R"({Trade Record,201,0,3,0,1,0,1,1,1,1,{285,14,321,322},{{{4,1},{282,283,284,285,289,290,232,233,234,235,249,318,319,324,253}},{{5,1},{282,283,284,285,289,290,232,233,234,235,249,318,319,324,253}},{{6,1},{282,283,284,285,289,290,232,233,234,235,249,318,319,324,253}}},{{5,{{1,1}}},{6,{{2,1},{2,5},{4,1}}}}})"},
    {202, R"({Ask Record,202,0,3,0,1,0,1,1,1,1,{10,11},{},{{5,{{1,1}}},{6,{{2,1},{2,5},{4,1}}}}})"},
    {285, R"({Close,285,0,0,0,0,0,0,0,0,0,{285},{},{{1,{{1,1}}},{2,{{2,1},{2,5},{4,1}}}}})"},
    {307, R"({DateLastBid,307,2,2,1,0,0,0,0,0,0,{307},{},{}})"},
    {308, R"({DateLastAsk,308,2,2,1,0,0,0,0,0,0,{308},{},{}})"},
    {309, R"({Time Last Bid,309,3,2,1,0,0,0,0,0,0,{309},{},{}})"},
    {310, R"({Time Last Ask,310,3,2,1,0,0,0,0,0,0,{310},{},{}})"},
    {436, R"({After Market Trade Record,436,0,3,0,1,0,1,1,1,1,{285,14},{{{4,1},{232,233,234,235,249,253,324}},{{5,1},{232,233,234,235,249,253,324}},{{6,1},{232,233,234,235,249,253,324}}},{{5,{{1,1}}},{6,{{2,1},{2,5},{4,1}}}}})"},
    {448, R"({ECN Aggregate Depth,448,0,2,0,0,0,0,0,0,0,{460},{},{}})"},
    {485, R"({Option Chart Record,485,0,3,0,0,0,0,0,0,0,{485},{{{4,1},{489,490,491,492,493}},{{5,1},{489,490,491,492,493}},{{6,1},{489,490,491,492,493}}},{{5,{{1,1}}},{6,{{2,1},{2,5},{4,1}}}}})"},
    {486, R"({CCA Chart Record,486,0,3,0,0,0,0,0,0,0,{486},{{{4,1},{487}},{{5,1},{487}},{{6,1},{487}}},{{5,{{1,1}}},{6,{{2,1},{2,5},{4,1}}}}})"},
    {521, R"({Conversion Chart Record,521,0,3,0,1,0,1,1,1,1,{521},{{{4,1},{517,518}},{{5,1},{517,518}},{{6,1},{517,518}}},{{5,{{1,1}}},{6,{{2,1},{2,5},{4,1}}}}})"},
};
// clang-format on

// The line of each id.
std::map<int, std::string> ExpectedLines() {
  std::map<int, std::string> lines = kWholeLines;
  for (const Kind& kind : kKinds) {
    for (const int id : kind.ids) {
      const std::string number = std::to_string(id);
      const bool fresh = lines
                             .emplace(id, "{" + kNames.at(id) + "," + number + "," +
                                              std::to_string(kind.dataType) + "," +
                                              std::to_string(kind.fieldType) + ",0,0,0,0,0,0,0,{" +
                                              number + "},{},{}}")
                             .second;
      EXPECT_TRUE(fresh) << id;
    }
  }
  return lines;
}

std::string BuiltText() {
  CString text;
  CFieldInfoMgr().BuildFieldInfoFile(text);
  return text.Str();
}

std::vector<std::string> BuiltLines() {
  std::vector<std::string> lines;
  const std::string text = BuiltText();
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = text.find("\r\n", at);
    if (end == std::string::npos) {
      ADD_FAILURE() << "a line without its end: " << text.substr(at);
      break;
    }
    lines.push_back(text.substr(at, end - at));
    at = end + 2;
  }
  return lines;
}

// The catalogue that is loaded from the built-in lines.
class LoadedCatalogue : public testing::Test {
 protected:
  void SetUp() override {
    CString error;
    ASSERT_EQ(Load(m_catalogue, BuiltText(), error), 1) << error.GetString();
    ASSERT_EQ(error, "");
  }

  // The row of `id`, which must be there.
  [[nodiscard]] const CZRGSFieldInfo& Row(unsigned short id) const {
    static const CZRGSFieldInfo none;
    const CZRGSFieldInfo* row = m_catalogue.GetFieldInfo(id);
    EXPECT_NE(row, nullptr) << id;
    return row != nullptr ? *row : none;
  }

  // The ids of the rows for which `wanted` holds.
  template <class Wanted>
  [[nodiscard]] Ids RowsWhere(Wanted wanted) const {
    Ids ids;
    CFieldInfoMgr::FieldInfoList list;
    m_catalogue.GetFieldInfoListAll(list);
    for (const CZRGSFieldInfo* row : list) {
      if (wanted(*row)) {
        ids.push_back(row->GetFieldID());
      }
    }
    return ids;
  }

  CFieldInfoMgr m_catalogue;
};

TEST(BuiltInCatalogue, TheListingOfThisTestIsWhole) {
  EXPECT_EQ(kNames.size(), 231U);
  EXPECT_EQ(kWholeLines.size(), 20U);
  std::size_t plain = 0;
  for (const Kind& kind : kKinds) {
    EXPECT_EQ(kind.ids.size(), kind.count);
    plain += kind.ids.size();
  }
  EXPECT_EQ(plain, 211U);
  const std::map<int, std::string> lines = ExpectedLines();
  ASSERT_EQ(lines.size(), 231U);
  for (const auto& [id, line] : lines) {
    EXPECT_TRUE(line.starts_with("{" + kNames.at(id) + "," + std::to_string(id) + ",")) << line;
  }
}

TEST(BuiltInCatalogue, HoldsTheExpectedLinesInOrderOfIds) {
  std::vector<std::string> expected;
  for (const auto& [id, line] : ExpectedLines()) {
    expected.push_back(line);
  }
  EXPECT_EQ(BuiltLines(), expected);
}

TEST(BuiltInCatalogue, BeginsAndEndsAsToldLetterByLetter) {
  const std::vector<std::string> lines = BuiltLines();
  ASSERT_EQ(lines.size(), 231U);
  EXPECT_EQ(lines.front(), "{Base Code,5,0,2,0,0,0,0,0,0,0,{5},{},{}}");
  EXPECT_EQ(lines[1], "{Bid,7,0,0,1,0,0,1,1,1,0,{7},{},{{1,{{1,1}}},{2,{{2,1},{2,5},{4,1}}}}}");
  EXPECT_EQ(lines.back(),
            "{Conversion Chart Record,521,0,3,0,1,0,1,1,1,1,{521},{{{4,1},{517,518}},"
            "{{5,1},{517,518}},{{6,1},{517,518}}},{{5,{{1,1}}},{6,{{2,1},{2,5},{4,1}}}}}");
}

// Worked out beforehand by a program of its own from the tables above.
TEST(BuiltInCatalogue, HasTheKnownLengthAndChecksums) {
  const std::string text = BuiltText();
  EXPECT_EQ(text.size(), 12451U);
  EXPECT_EQ(CToolBox::CalcCRC(CString(text)), 0xD161);
  EXPECT_EQ(CToolBox::CalcCRC(CString(text + "VersionInfo")), 0xB89D);
}

TEST_F(LoadedCatalogue, HasEveryRowUnderItsIdAndNoOther) {
  EXPECT_EQ(RowCount(m_catalogue), 231);
  for (unsigned short id = 0; id < 600; ++id) {
    const CZRGSFieldInfo* row = m_catalogue.GetFieldInfo(id);
    const auto name = kNames.find(id);
    ASSERT_EQ(row != nullptr, name != kNames.end()) << id;
    if (row != nullptr) {
      EXPECT_EQ(row->GetFieldID(), id);
      EXPECT_EQ(row->GetFieldDescription().Str(), name->second);
    }
  }
  EXPECT_EQ(m_catalogue.GetFieldInfo(6), nullptr);
}

TEST_F(LoadedCatalogue, ANameIsMisspeltOnPurpose) {
  EXPECT_EQ(Row(518).GetFieldDescription(), "Bar Conversion Loosing");
}

TEST_F(LoadedCatalogue, OffersFiveStorableFields) {
  CFieldInfoMgr::FieldInfoList list;
  m_catalogue.GetFieldInfoListStorable(list);
  Ids ids;
  for (const CZRGSFieldInfo* row : list) {
    ids.push_back(row->GetFieldID());
  }
  EXPECT_THAT(ids, ElementsAre(200, 201, 202, 436, 521));
}

TEST_F(LoadedCatalogue, TwoChartRecordsHaveStorageListsButAreNotStorableOnPurpose) {
  for (const unsigned short id : std::vector<unsigned short>{485, 486}) {
    EXPECT_EQ(Row(id).GetIsStorable(), 0) << id;
    EXPECT_EQ(Row(id).GetStorageSettingList().GetCount(), 2) << id;
  }
}

TEST_F(LoadedCatalogue, NoFieldIsMarkedAsProvidedByTheServer) {
  EXPECT_THAT(RowsWhere([](const CZRGSFieldInfo& row) { return row.GetIsProvidedByServer() != 0; }),
              ElementsAre());
}

TEST_F(LoadedCatalogue, ElevenFieldsBelongInTheSnapshot) {
  EXPECT_THAT(RowsWhere([](const CZRGSFieldInfo& row) { return row.GetStoreInSnapshot() != 0; }),
              ElementsAre(7, 8, 10, 11, 14, 62, 195, 307, 308, 309, 310));
}

TEST_F(LoadedCatalogue, ActionsAndMultipliersMarkPricesSizesAndStorableRecords) {
  const auto marked = [&](int (CZRGSFieldInfo::*get)() const) {
    return RowsWhere([&](const CZRGSFieldInfo& row) { return (row.*get)() != 0; });
  };
  EXPECT_THAT(marked(&CZRGSFieldInfo::GetIsAffectedByStockSplit),
              ElementsAre(7, 8, 10, 11, 14, 200, 201, 202, 436, 521));
  EXPECT_THAT(marked(&CZRGSFieldInfo::GetIsAffectedByDistribution),
              ElementsAre(7, 10, 200, 201, 202, 436, 521));
  EXPECT_THAT(marked(&CZRGSFieldInfo::GetIsAffectedByPriceMultiplier),
              ElementsAre(7, 10, 200, 201, 202, 436, 521));
  EXPECT_THAT(marked(&CZRGSFieldInfo::GetIsAffectedByVolumeMultiplier),
              ElementsAre(8, 11, 14, 200, 201, 202, 436, 521));
}

TEST_F(LoadedCatalogue, StorageEntriesComeInTwoSets) {
  const Resolutions bars = {{2, 1}, {2, 5}, {4, 1}};
  const Settings simple = {{1, {{1, 1}}}, {2, bars}};
  const Settings record = {{5, {{1, 1}}}, {6, bars}};
  const std::set<int> simpleIds = {7, 10, 285};
  const std::set<int> recordIds = {200, 201, 202, 436, 485, 486, 521};
  for (const auto& [id, name] : kNames) {
    const Settings expected = simpleIds.contains(id)   ? simple
                              : recordIds.contains(id) ? record
                                                       : Settings();
    EXPECT_EQ(Plain(Row(static_cast<unsigned short>(id)).GetStorageSettingList()), expected) << id;
  }
}

TEST_F(LoadedCatalogue, AtomicListsHoldTheFieldItselfButForFive) {
  const std::map<int, Ids> composed = {
      {200, {7, 8}}, {201, {285, 14, 321, 322}}, {202, {10, 11}}, {436, {285, 14}}, {448, {460}}};
  for (const auto& [id, name] : kNames) {
    const auto other = composed.find(id);
    EXPECT_EQ(Plain(Row(static_cast<unsigned short>(id)).GetAtomicFieldIDList()),
              other != composed.end() ? other->second : Ids{id})
        << id;
  }
}

TEST_F(LoadedCatalogue, OneFieldIsMadeOfAnIdWithoutARowOnPurpose) {
  EXPECT_THAT(Plain(Row(448).GetAtomicFieldIDList()), ElementsAre(460));
  EXPECT_EQ(m_catalogue.GetFieldInfo(460), nullptr);
}

TEST_F(LoadedCatalogue, UpdateListsExistForDayWeekAndMonthOfFiveRecords) {
  const std::map<int, Ids> updates = {
      {201, {282, 283, 284, 285, 289, 290, 232, 233, 234, 235, 249, 318, 319, 324, 253}},
      {436, {232, 233, 234, 235, 249, 253, 324}},
      {485, {489, 490, 491, 492, 493}},
      {486, {487}},
      {521, {517, 518}}};
  for (const auto& [id, name] : kNames) {
    const auto expected = updates.find(id);
    for (unsigned short unit = 0; unit <= 8; ++unit) {
      const CZRListEx<CField>* list =
          Row(static_cast<unsigned short>(id)).GetUpdateFieldIDListPtr(MakeResoln(unit, 1));
      const bool wanted = expected != updates.end() && unit >= 4 && unit <= 6;
      ASSERT_EQ(list != nullptr, wanted) << id << ' ' << unit;
      if (wanted) {
        EXPECT_EQ(Plain(*list), expected->second) << id << ' ' << unit;
      }
    }
  }
}

TEST_F(LoadedCatalogue, AnUpdateListIsForExactlyItsResolution) {
  EXPECT_NE(Row(201).GetUpdateFieldIDListPtr(MakeResoln(4, 1)), nullptr);
  EXPECT_EQ(Row(201).GetUpdateFieldIDListPtr(MakeResoln(4, 2)), nullptr);
}

TEST_F(LoadedCatalogue, ACopyOfARowWithStorageSettingsIsUnequalOnPurpose) {
  const CZRGSFieldInfo first = Row(7);
  const CZRGSFieldInfo second = Row(7);
  EXPECT_EQ(first == second, 0);
  const CZRGSFieldInfo plain = Row(5);
  EXPECT_EQ(plain == Row(5), 1);
}

TEST_F(LoadedCatalogue, ResolutionsOfARecordStandInOrder) {
  CZRListEx<CResoln> list(10);
  EXPECT_EQ(m_catalogue.GetResolutionsForField(201, list), 1);
  EXPECT_THAT(Plain(list), ElementsAre(Pair(1, 1), Pair(2, 1), Pair(2, 5), Pair(4, 1)));
}

TEST_F(LoadedCatalogue, ASizeHasHistoryButNoResolutionsOnPurpose) {
  CZRListEx<CResoln> list(10);
  EXPECT_EQ(m_catalogue.GetResolutionsForField(8, list), 1);
  EXPECT_TRUE(list.IsEmpty());
  CStringArray names;
  EXPECT_EQ(m_catalogue.GetResolutionsForField("Bid Size", names), 1);
  EXPECT_EQ(names.GetSize(), 0);
}

TEST_F(LoadedCatalogue, AFieldWithoutHistoryIsNoneByNameAndEmptyById) {
  CStringArray names;
  EXPECT_EQ(m_catalogue.GetResolutionsForField("Base Code", names), 1);
  EXPECT_THAT(Plain(names), ElementsAre("None"));
  CZRListEx<CResoln> list(10);
  EXPECT_EQ(m_catalogue.GetResolutionsForField(5, list), 1);
  EXPECT_TRUE(list.IsEmpty());
}

TEST_F(LoadedCatalogue, ResolutionsAreNamed) {
  EXPECT_EQ(m_catalogue.ResValidForField("Close", "1 Tick"), 1);
  EXPECT_EQ(m_catalogue.ResValidForField("Close", "5 Seconds"), 1);
  EXPECT_EQ(m_catalogue.ResValidForField("Close", "1 Minute"), 0);
  CResoln resoln;
  EXPECT_EQ(m_catalogue.GetResolutionFromString("5 Seconds", resoln), 1);
  EXPECT_EQ(Plain(resoln), Resolution(2, 5));
  EXPECT_EQ(m_catalogue.GetResolutionFromString("1 Week", resoln), 0);
}

TEST(BuiltInCatalogue, IsLoadedWithoutAFile) {
  CFieldInfoMgr catalogue;
  pxd::LoadBuiltInCatalogue(catalogue);
  EXPECT_EQ(fields_test::RowCount(catalogue), 231);
  ASSERT_NE(catalogue.GetFieldInfo(201), nullptr);
  EXPECT_EQ(catalogue.GetFieldInfo(201)->Description().Str(), "Trade Record");
}

TEST(BuiltInCatalogueDeathTest, RowsThatAreThereAlreadyAreAFault) {
  CFieldInfoMgr catalogue;
  pxd::LoadBuiltInCatalogue(catalogue);
  EXPECT_DEATH(pxd::LoadBuiltInCatalogue(catalogue), "Line 1:");
}

}  // namespace
