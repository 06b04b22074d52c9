// The catalogue and the tables of history settings while memory runs out.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <pxdutil/datapoints/data_point.h>
#include <pxdutil/foundation/archive.h>
#include <pxdutil/foundation/file.h>
#include <pxdutil/foundation/host_types.h>

#include "tests/faults/refusals.h"
#include "tests/fields/support.h"
#include "tests/history/support.h"

namespace {

using faults_test::Attempt;
using faults_test::RefuseEachAllocation;

namespace fs = std::filesystem;

constexpr const char* kTwoLines =
    "{First of two fields with names that are long,1,0,3,1,1,1,1,1,1,1,{7,8,9},"
    "{{{3,1},{31,32,33}},{{4,1},{41}}},{{4,{{3,1},{3,5}}},{5,{{4,1}}}}}\r\n"
    "{Second of two fields with names that are long,2,0,3,1,1,1,1,1,1,1,{7},{},{{4,{{3,1}}}}}\r\n";

TEST(CatalogueMemory, LoadingStopsBehindAWholeRow) {
  RefuseEachAllocation([](Attempt& attempt) {
    CFieldInfoMgr catalogue;
    fields_test::TextFile file(kTwoLines);
    CString error;
    int loaded = 0;
    const bool done = attempt.Run([&] { loaded = catalogue.LoadFromFile(file, error); });
    EXPECT_EQ(loaded, done ? 1 : 0);
    const int rows = fields_test::RowCount(catalogue);
    EXPECT_TRUE(done ? rows == 2 : rows <= 2) << rows;
    if (rows > 0) {
      EXPECT_EQ(fields_test::Plain(catalogue.GetFieldInfo(1)->GetAtomicFieldIDList()),
                (fields_test::Ids{7, 8, 9}));
      EXPECT_EQ(catalogue.GetFieldInfo(1)->GetStorageSettingList().GetCount(), 2);
      EXPECT_NE(catalogue.GetFieldInfo(1)->GetUpdateFieldIDListPtr(fields_test::MakeResoln(4, 1)),
                nullptr);
    }
  });
}

TEST(CatalogueMemory, ABadLineIsToldOrMemoryIsMissing) {
  RefuseEachAllocation([](Attempt& attempt) {
    CFieldInfoMgr catalogue;
    fields_test::TextFile file("{A name that is long enough to be on the heap,1\r\n");
    CString error;
    int loaded = 1;
    if (attempt.Run([&] { loaded = catalogue.LoadFromFile(file, error); })) {
      EXPECT_EQ(loaded, 0);
      EXPECT_EQ(error.Find("Line 1:"), 0);
    }
    EXPECT_EQ(fields_test::RowCount(catalogue), 0);
  });
}

// A host that got std::bad_alloc frees what it can and tries again; a second load into rows that
// are there would be a fault.
TEST(CatalogueMemory, TheBuiltInRowsCanBeLoadedAfterAFailure) {
  // Each refusal costs a whole load, so of the thousands of allocations a prime step is taken.
  constexpr std::size_t kStep = 101;
  std::size_t asked = 0;
  {
    CFieldInfoMgr catalogue;
    const pxd::test::AllocationCounter counter;
    pxd::LoadBuiltInCatalogue(catalogue);
    asked = counter.Count();
  }
  ASSERT_GT(asked, 1000U);
  for (std::size_t granted = 0; granted < asked; granted += granted < 100 ? 1 : kStep) {
    const std::size_t before = pxd::test::BlocksInUse();
    {
      CFieldInfoMgr catalogue;
      Attempt attempt(granted, 1);
      ASSERT_FALSE(attempt.Run([&] { pxd::LoadBuiltInCatalogue(catalogue); })) << granted;
      ASSERT_EQ(fields_test::RowCount(catalogue), 0) << granted;
      pxd::LoadBuiltInCatalogue(catalogue);
      ASSERT_EQ(fields_test::RowCount(catalogue), 231) << granted;
    }
    const std::size_t behind = pxd::test::BlocksInUse();
    ASSERT_EQ(behind, before) << granted;
  }
}

TEST(CatalogueMemory, ARowIsAddedWholeOrNotAtAll) {
  RefuseEachAllocation([](Attempt& attempt) {
    CFieldInfoMgr catalogue;
    CZRGSFieldInfo row;
    row.SetFieldDescription("a name that is long enough to be on the heap");
    row.SetAtomicFieldList(fields_test::Fields({1, 2}));
    row.SetResolnUpdateFieldList(fields_test::OneUpdate(fields_test::MakeResoln(4, 1), {5, 6}));
    const bool done =
        attempt.Run([&] { EXPECT_EQ(catalogue.AddField(9, row), CFieldInfoMgr::RetSuccess); });
    EXPECT_EQ(catalogue.GetFieldInfo(9) != nullptr, done);
    if (!done) {
      EXPECT_EQ(catalogue.AddField(9, row), CFieldInfoMgr::RetSuccess);
    }
  });
}

TEST(CatalogueMemory, UpdateListsAreTheOldOnesOrTheNew) {
  RefuseEachAllocation([](Attempt& attempt) {
    CZRGSFieldInfo row;
    row.SetResolnUpdateFieldList(fields_test::OneUpdate(fields_test::MakeResoln(4, 1), {5, 6}));
    const auto next = fields_test::OneUpdate(fields_test::MakeResoln(3, 1), {7, 8, 9});
    const bool done = attempt.Run([&] { row.SetResolnUpdateFieldList(next); });
    const auto* const days = row.GetUpdateFieldIDListPtr(fields_test::MakeResoln(4, 1));
    const auto* const minutes = row.GetUpdateFieldIDListPtr(fields_test::MakeResoln(3, 1));
    EXPECT_EQ(days != nullptr, !done);
    EXPECT_EQ(minutes != nullptr, done);
    EXPECT_EQ(fields_test::Plain(done ? *minutes : *days),
              done ? (fields_test::Ids{7, 8, 9}) : (fields_test::Ids{5, 6}));
  });
}

TEST(CatalogueMemory, LookUpsAnswerOrThrowAndChangeNothing) {
  CFieldInfoMgr catalogue;
  ASSERT_EQ(fields_test::Load(catalogue, kTwoLines), 1);
  RefuseEachAllocation([&](Attempt& attempt) {
    attempt.Run([&] {
      CFieldInfoMgr::FieldInfoList list;
      catalogue.GetFieldInfoListAll(list);
      EXPECT_EQ(list.GetCount(), 2);
      CFieldInfoMgr::FieldInfoList storable;
      catalogue.GetFieldInfoListStorable(storable);
      EXPECT_EQ(storable.GetCount(), 2);
    });
    attempt.Run([&] {
      CString text;
      EXPECT_EQ(catalogue.GetFieldDescription(1, text), CFieldInfoMgr::RetSuccess);
      CStringArray names;
      EXPECT_EQ(catalogue.GetResolutionsForField(text, names), 1);
      EXPECT_EQ(names.GetSize(), 3);
      EXPECT_EQ(catalogue.ResValidForField(text, names[0]), 1);
      CResoln resoln;
      EXPECT_EQ(catalogue.GetResolutionFromString(names[0], resoln), 1);
      CZRListEx<CResoln> list;
      EXPECT_EQ(catalogue.GetResolutionsForField(static_cast<unsigned short>(1), list), 1);
      EXPECT_EQ(list.GetCount(), 3);
    });
    EXPECT_EQ(fields_test::RowCount(catalogue), 2);
  });
}

TEST(CatalogueMemory, AFileIsTheOldOneOrTheNew) {
  const fs::path folder = fs::path(testing::TempDir()) / "pxdutil_catalogue_memory";
  fs::remove_all(folder);
  fs::create_directory(folder);
  const std::string path = (folder / "fields.txt").string();
  const auto contents = [&] {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
  };
  RefuseEachAllocation([&](Attempt& attempt) {
    CFieldInfoMgr catalogue;
    std::ofstream(path, std::ios::binary) << "what was there";
    int result = 0;
    if (!attempt.Run([&] { result = catalogue.Create(path.c_str()); })) {
      result = 0;
    }
    const std::string now = contents();
    EXPECT_TRUE(result == 1 ? now.size() > 10'000 : now == "what was there") << result;
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1) << "a file was left over";
  });
  fs::remove_all(folder);
}

// ---- History settings ----

class SettingsMemory : public history_test::WithCatalogue {};

// Whether the needed fields are those of the table, and not of one before or half worked out.
void ExpectListsOfTable(const CHistorySettings& settings) {
  const CHistorySettings fresh(static_cast<ZRGS_HISTORY_SETTINGS>(settings));
  EXPECT_EQ(history_test::NeededIds(settings), history_test::NeededIds(fresh));
  for (int id = 0; id < 530; ++id) {
    ASSERT_EQ(settings.IsFieldIDNeededForHistory(static_cast<unsigned short>(id)),
              fresh.IsFieldIDNeededForHistory(static_cast<unsigned short>(id)))
        << id;
  }
}

// Lets `change` run on a table of three lines, and expects the old table or the new one, each with
// its own lists.
template <class Change>
void ChangeWithoutMemory(Change change) {
  RefuseEachAllocation([&](Attempt& attempt) {
    CHistorySettings settings = history_test::Table({history_test::Line(201, 4, 1, 50000),
                                                     history_test::Line(201, 3, 1, 1000),
                                                     history_test::Line(200, 3, 5, 10)});
    CHistorySettings wanted(settings);
    change(wanted);
    const auto before = history_test::Plain(settings);
    const bool done = attempt.Run([&] { change(settings); });
    EXPECT_EQ(history_test::Plain(settings), done ? history_test::Plain(wanted) : before);
    ExpectListsOfTable(settings);
  });
}

TEST_F(SettingsMemory, AnAddedLineIsThereWithItsFieldsOrNotAtAll) {
  ChangeWithoutMemory([](CHistorySettings& s) { s.AddSetting(history_test::Line(202, 4, 1, 9)); });
}

TEST_F(SettingsMemory, MoreDaysAreThereOrNot) {
  ChangeWithoutMemory(
      [](CHistorySettings& s) { s.AddSetting(history_test::Line(201, 3, 1, 2000)); });
}

TEST_F(SettingsMemory, AChangedLineIsTheOldOneOrTheNew) {
  ChangeWithoutMemory(
      [](CHistorySettings& s) { s.ChangeSettings(2, history_test::Line(202, 3, 1, 2)); });
}

TEST_F(SettingsMemory, ARemovedLineIsGoneWithItsFieldsOrNotAtAll) {
  ChangeWithoutMemory([](CHistorySettings& s) { s.RemoveSettings(0); });
}

TEST_F(SettingsMemory, AnAssignedTableIsTheOldOneOrTheNew) {
  const CHistorySettings other = history_test::Table({history_test::Line(202, 4, 1, 7)});
  ChangeWithoutMemory([&](CHistorySettings& s) { s = other; });
}

TEST_F(SettingsMemory, ALoadedTableIsTheOldOneOrTheNew) {
  CHistorySettings other = history_test::Table({history_test::Line(202, 4, 1, 7)});
  const auto bytes = history_test::StoredForm(other);
  ChangeWithoutMemory([&](CHistorySettings& s) {
    CMemFile file(bytes.data(), bytes.size());
    CArchive archive(&file, CArchive::load);
    s.Serialize(archive);
  });
}

// Several lines are added one after the other; those that were stay.
TEST_F(SettingsMemory, LinesOfATextAndDefaultsComeOneByOne) {
  RefuseEachAllocation([](Attempt& attempt) {
    CHistorySettings settings;
    attempt.Run([&] { settings.CreateDefaultSettings(0); });
    EXPECT_LE(settings.GetCount(), 5);
    ExpectListsOfTable(settings);
    CHistorySettings read;
    attempt.Run([&] {
      read.SetString("2:201,Trade Record with a long name,1,3,5;202,Ask,1,4,7",
                     StringFormatMachine);
    });
    EXPECT_LE(read.GetCount(), 2);
    ExpectListsOfTable(read);
  });
}

TEST_F(SettingsMemory, AskingForTextsChangesNothing) {
  RefuseEachAllocation([](Attempt& attempt) {
    CHistorySettings settings = history_test::Table(
        {history_test::Line(201, 4, 1, 50000), history_test::Line(202, 3, 1, 1000)});
    const auto before = history_test::Plain(settings);
    attempt.Run([&] {
      EXPECT_FALSE(settings.GetString(StringFormatPlain, false).IsEmpty());
      EXPECT_FALSE(settings.GetString(StringFormatMachine, false).IsEmpty());
      settings.SortSettings();
      CComboBox box;
      CHistorySettings::FillFieldCB(box, 201);
      CHistorySettings::FillResolnCB(box, 3, 1);
    });
    EXPECT_EQ(history_test::Plain(settings).size(), before.size());
    ExpectListsOfTable(settings);
  });
}

TEST_F(SettingsMemory, PointsAreMadeWholeOrNotAtAll) {
  RefuseEachAllocation([](Attempt& attempt) {
    CDPDataPt* point = nullptr;
    CDPDataPt* points = nullptr;
    attempt.Run([&] { point = history_test::Pair(201, 3, 1).CreateDataPt(); });
    attempt.Run([&] { points = history_test::Pair(201, 4, 1).CreateDataPtArray(1000); });
    if (points != nullptr) {
      const CDPADataPtAr array(points, 1000);
      EXPECT_NE(array.GetAt(999)->IsNull(), 0);
    }
    delete point;
    CFieldResoln::DeleteDataPtArray(points);
  });
}

TEST_F(SettingsMemory, ATemplateIsStoredAndLoadedOrThrows) {
  CHistorySettingsTemplate original;
  original.SetName("a template with a name that is long enough to be on the heap");
  const CHistorySettings table = history_test::Table({history_test::Line(202, 4, 1, 7)});
  original.SetHistSettings(&table);
  const auto bytes = history_test::StoredForm(original);
  RefuseEachAllocation([&](Attempt& attempt) {
    CHistorySettingsTemplate loaded;
    CMemFile file(bytes.data(), bytes.size());
    CArchive archive(&file, CArchive::load);
    const bool done = attempt.Run([&] { loaded.Serialize(archive); });
    EXPECT_EQ(loaded.GetHistSettings()->GetCount(), done ? 1 : 0);
    ExpectListsOfTable(*loaded.GetHistSettings());
  });
}

}  // namespace
