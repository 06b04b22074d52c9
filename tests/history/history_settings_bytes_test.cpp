// The stored forms of tables and templates.
#include <functional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support.h"
#include "tests/support/thrown.h"

namespace {

using namespace history_test;
using testing::ElementsAre;
using testing::IsEmpty;

// Two lines and the host bits 101: 201 at 1 Day for 50000 days, 200 at 5 Minutes for 1000.
Bytes StoredTable(unsigned char format = 1) {
  Bytes bytes = {
      format,                                            //
      0x15,                                              // 00010 101
      0xC9,   0x00, 0x04, 0x00, 0x01, 0x00, 0x50, 0xC3,  //
      0xC8,   0x00, 0x03, 0x00, 0x05, 0x00, 0xE8, 0x03,  //
  };
  bytes.resize(242, 0x00);
  return bytes;
}

CHistorySettings SampleTable() {
  return Table({Line(201, 4, 1, 50000), Line(200, 3, 5, 1000)}, 5);
}

void ExpectEndOfFile(const std::function<void()>& action) {
  const auto error = pxd::test::ThrownBy<CArchiveException>(action);
  ASSERT_NE(error, nullptr);
  EXPECT_EQ(error->m_cause, CArchiveException::endOfFile);
}

using HistoryArchive = WithCatalogue;

TEST_F(HistoryArchive, AnEmptyTableIs242Bytes) {
  CHistorySettings settings;
  Bytes expected(242, 0x00);
  expected[0] = 1;
  EXPECT_EQ(StoredForm(settings), expected);
}

TEST_F(HistoryArchive, StoresTheTableAsItStands) {
  CHistorySettings settings = SampleTable();
  EXPECT_EQ(StoredForm(settings), StoredTable());
}

TEST_F(HistoryArchive, StoresUnusedLinesToo) {
  CHistorySettings settings = SampleTable();
  settings.RemoveAllSettings();
  Bytes expected = StoredTable();
  expected[1] = 0x05;
  EXPECT_EQ(StoredForm(settings), expected);
}

TEST_F(HistoryArchive, LoadsWhateverTheFormatByteAndRebuildsTheNeeds) {
  for (const unsigned char format : Bytes{0, 1, 2, 255}) {
    CHistorySettings settings = Table({Line(202, 3, 1, 1)});
    EXPECT_EQ(Load(settings, StoredTable(format)), 242U);
    EXPECT_TRUE(settings == SampleTable());
    EXPECT_THAT(NeededIds(settings), ElementsAre(7, 8));
    EXPECT_EQ(StoredForm(settings), StoredTable());  // always format 1
  }
}

TEST_F(HistoryArchive, TakesNoMoreThanItsBytes) {
  Bytes bytes = StoredTable();
  bytes.push_back(0x77);
  CHistorySettings settings;
  EXPECT_EQ(Load(settings, bytes), 242U);
}

TEST_F(HistoryArchive, CutShortItRaisesTheEndOfTheFileAndStays) {
  const Bytes whole = StoredTable();
  for (const std::ptrdiff_t length : {0, 1, 2, 9, 100, 241}) {
    CHistorySettings settings = Table({Line(202, 3, 1, 1)}, 2);
    const Bytes before = StoredForm(settings);
    const Bytes cut(whole.begin(), whole.begin() + length);
    ExpectEndOfFile([&] { Load(settings, cut); });
    EXPECT_EQ(StoredForm(settings), before) << length;
    EXPECT_THAT(NeededIds(settings), ElementsAre(10, 11));
  }
}

TEST_F(HistoryArchive, StandsHostileBytes) {
  Bytes bytes(242, 0xFF);
  CHistorySettings settings;
  EXPECT_EQ(Load(settings, bytes), 242U);
  EXPECT_EQ(settings.GetCount(), 30);  // not 31
  EXPECT_EQ(Plain(settings).back(), (PlainLine{65535, 65535, 65535, 65535}));
  EXPECT_THAT(NeededIds(settings), IsEmpty());
  bytes[0] = 1;
  EXPECT_EQ(StoredForm(settings), bytes);
}

TEST_F(HistoryArchive, AClosedArchiveIsRefused) {
  CMemFile file;
  CArchive archive(&file, CArchive::store);
  archive.Close();
  CHistorySettings settings;
  EXPECT_NE(pxd::test::ThrownBy<CArchiveException>([&] { settings.Serialize(archive); }), nullptr);
}

TEST(HistoryArchiveWithoutManagerDeathTest, LoadingLinesIsAFault) {
  ASSERT_EQ(CFieldInfoMgr::m_pInstance, nullptr);
  const Bytes table = [] {
    Bytes bytes = StoredTable();
    bytes[2] = 0xCA;  // 202
    return bytes;
  }();
  CHistorySettings settings;
  EXPECT_DEATH(Load(settings, table), "no manager");
}

// Version 1, "Stocks", the default flag, and the table.
Bytes StoredTemplate(unsigned char version = 1, unsigned char isDefault = 1) {
  Bytes bytes = {version, 0x06, 'S', 't', 'o', 'c', 'k', 's', isDefault};
  const Bytes table = StoredTable();
  bytes.insert(bytes.end(), table.begin(), table.end());
  return bytes;
}

class HistoryTemplate : public WithCatalogue {
 protected:
  static CHistorySettingsTemplate Stocks() {
    CHistorySettingsTemplate made;
    made.SetName("Stocks");
    made.SetDefault(1);
    const CHistorySettings table = SampleTable();
    made.SetHistSettings(&table);
    return made;
  }
};

TEST_F(HistoryTemplate, IsFreshWithoutNameDefaultOrLines) {
  CHistorySettingsTemplate fresh;
  EXPECT_EQ(fresh.GetName(), "");
  EXPECT_EQ(fresh.IsDefault(), 0);
  EXPECT_EQ(fresh.GetHistSettings()->GetCount(), 0);
  Bytes expected(2 + 1 + 242, 0x00);
  expected[0] = 1;
  expected[3] = 1;
  EXPECT_EQ(StoredForm(fresh), expected);
}

TEST_F(HistoryTemplate, KeepsWhatIsSet) {
  CHistorySettingsTemplate stocks = Stocks();
  EXPECT_EQ(stocks.GetName(), "Stocks");
  EXPECT_EQ(stocks.IsDefault(), 1);
  EXPECT_TRUE(*stocks.GetHistSettings() == SampleTable());
  EXPECT_THAT(NeededIds(*stocks.GetHistSettings()), ElementsAre(7, 8));
  stocks.SetDefault(-5);
  EXPECT_EQ(stocks.IsDefault(), -5);
  stocks.SetName(nullptr);
  EXPECT_EQ(stocks.GetName(), "");
}

TEST_F(HistoryTemplate, GivesItsOwnTable) {
  CHistorySettingsTemplate stocks = Stocks();
  stocks.GetHistSettings()->RemoveAllSettings();
  EXPECT_EQ(stocks.GetHistSettings()->GetCount(), 0);
  EXPECT_EQ(static_cast<const CHistorySettingsTemplate&>(stocks).GetHistSettings(),
            stocks.GetHistSettings());
}

TEST_F(HistoryTemplate, TakesACopyOfATableAndIgnoresNull) {
  CHistorySettingsTemplate stocks;
  CHistorySettings table = SampleTable();
  stocks.SetHistSettings(&table);
  table.RemoveAllSettings();
  stocks.SetHistSettings(nullptr);
  EXPECT_TRUE(*stocks.GetHistSettings() == SampleTable());
}

TEST_F(HistoryTemplate, IsCopiedWhole) {
  CHistorySettingsTemplate stocks = Stocks();
  ASSERT_EQ(Load(stocks, {9}), 1U);  // a version of its own
  CHistorySettingsTemplate assigned;
  assigned = stocks;
  CHistorySettingsTemplate copy(stocks);
  EXPECT_EQ(StoredForm(assigned), StoredTemplate(9));
  EXPECT_EQ(StoredForm(copy), StoredTemplate(9));
  EXPECT_THAT(NeededIds(*assigned.GetHistSettings()), ElementsAre(7, 8));
}

TEST_F(HistoryTemplate, StoresItsParts) {
  CHistorySettingsTemplate stocks = Stocks();
  EXPECT_EQ(StoredForm(stocks), StoredTemplate());
}

TEST_F(HistoryTemplate, StoresTheLowByteOfTheDefaultFlagAndThatIsMeant) {
  const struct {
    int isDefault;
    unsigned char stored;
  } kRows[] = {{0, 0}, {1, 1}, {255, 255}, {256, 0}, {0x1234, 0x34}, {-1, 255}};
  for (const auto& row : kRows) {
    CHistorySettingsTemplate stocks = Stocks();
    stocks.SetDefault(row.isDefault);
    EXPECT_EQ(StoredForm(stocks), StoredTemplate(1, row.stored));
    CHistorySettingsTemplate read;
    EXPECT_EQ(Load(read, StoredForm(stocks)), 9U + 242);
    EXPECT_EQ(read.IsDefault(), row.stored);
  }
}

TEST_F(HistoryTemplate, LoadsItsParts) {
  CHistorySettingsTemplate read;
  EXPECT_EQ(Load(read, StoredTemplate()), 9U + 242);
  EXPECT_EQ(read.GetName(), "Stocks");
  EXPECT_EQ(read.IsDefault(), 1);
  EXPECT_TRUE(*read.GetHistSettings() == SampleTable());
  EXPECT_THAT(NeededIds(*read.GetHistSettings()), ElementsAre(7, 8));
}

TEST_F(HistoryTemplate, OfAnotherVersionLoadsTheVersionAlone) {
  for (const unsigned char version : Bytes{0, 2, 255}) {
    CHistorySettingsTemplate stocks = Stocks();
    EXPECT_EQ(Load(stocks, StoredTemplate(version, 0)), 1U);
    EXPECT_EQ(stocks.GetName(), "Stocks");
    EXPECT_EQ(stocks.IsDefault(), 1);
    EXPECT_EQ(StoredForm(stocks), StoredTemplate(version));  // it stays with the object
  }
}

TEST_F(HistoryTemplate, CutShortRaisesTheEndOfTheFile) {
  const Bytes whole = StoredTemplate();
  for (const std::ptrdiff_t length : {0, 1, 2, 7, 8, 9, 10, 250}) {
    CHistorySettingsTemplate read;
    const Bytes cut(whole.begin(), whole.begin() + length);
    ExpectEndOfFile([&] { Load(read, cut); });
    EXPECT_EQ(read.GetHistSettings()->GetCount(), 0) << length;
  }
}

TEST_F(HistoryTemplate, ANameOfAHostileLengthRaisesTheEndOfTheFile) {
  CHistorySettingsTemplate read;
  ExpectEndOfFile([&] { Load(read, {0x01, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F, 'S', 't'}); });
  EXPECT_EQ(read.GetName(), "");
}

}  // namespace
