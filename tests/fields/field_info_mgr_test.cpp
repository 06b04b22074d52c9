#include <pxdutil/fields/field_info_mgr.h>

#include <memory>
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

CZRGSFieldInfo Row(unsigned short id, const char* name, unsigned char fieldType = 0) {
  CZRGSFieldInfo info;
  info.SetFieldID(id);
  info.SetFieldDescription(name);
  info.SetFieldType(fieldType);
  return info;
}

CZRGSFieldInfo StoredRow(unsigned short id, const char* name,
                         const std::vector<Resolutions>& settings) {
  CZRGSFieldInfo info = Row(id, name);
  CZRListEx<CStorageSetting> list(10);
  for (const Resolutions& resolutions : settings) {
    list.AddTail(Setting(1, resolutions));
  }
  info.SetStorageSettingList(list);
  return info;
}

std::vector<int> IdsOf(const CFieldInfoMgr::FieldInfoList& list) {
  std::vector<int> ids;
  for (const CZRGSFieldInfo* info : list) {
    ids.push_back(info->GetFieldID());
  }
  return ids;
}

TEST(FieldInfoMgrInstance, IsTheLastManagerBuilt) {
  CFieldInfoMgr first;
  EXPECT_EQ(CFieldInfoMgr::m_pInstance, &first);
  CFieldInfoMgr second;
  EXPECT_EQ(CFieldInfoMgr::m_pInstance, &second);
}

TEST(FieldInfoMgrInstance, IsNullOnceAnyManagerIsGoneOnPurpose) {
  auto first = std::make_unique<CFieldInfoMgr>();
  CFieldInfoMgr second;
  first.reset();
  EXPECT_EQ(CFieldInfoMgr::m_pInstance, nullptr);
}

TEST(FieldInfoMgrAdd, TheHighestIdHasTheLastSlot) {
  CFieldInfoMgr catalogue;
  EXPECT_EQ(catalogue.AddField(521, Row(521, "last")), 0);
  ASSERT_NE(catalogue.GetFieldInfo(521), nullptr);
  EXPECT_EQ(catalogue.GetFieldInfo(521)->GetFieldDescription(), "last");
  EXPECT_EQ(catalogue.AddField(522, Row(522, "beyond")), 3);
  EXPECT_EQ(catalogue.GetFieldInfo(522), nullptr);
  EXPECT_EQ(catalogue.AddField(0xFFFF, Row(0xFFFF, "beyond")), 3);
  EXPECT_EQ(catalogue.GetFieldInfo(0xFFFF), nullptr);
}

TEST(FieldInfoMgrAdd, ATakenSlotStays) {
  CFieldInfoMgr catalogue;
  EXPECT_EQ(catalogue.AddField(0, Row(0, "first")), 0);
  EXPECT_EQ(catalogue.AddField(0, Row(0, "second")), 2);
  EXPECT_EQ(catalogue.GetFieldInfo(0)->GetFieldDescription(), "first");
}

TEST(FieldInfoMgrAdd, GoesByTheArgumentAndNotByTheRowsOwnId) {
  CFieldInfoMgr catalogue;
  EXPECT_EQ(catalogue.AddField(10, Row(9000, "odd")), 0);
  ASSERT_NE(catalogue.GetFieldInfo(10), nullptr);
  EXPECT_EQ(catalogue.GetFieldInfo(10)->GetFieldID(), 9000);
}

TEST(FieldInfoMgrAdd, StoresACopy) {
  CFieldInfoMgr catalogue;
  CZRGSFieldInfo row = Row(7, "Bid");
  catalogue.AddField(7, row);
  row.SetFieldDescription("changed");
  EXPECT_NE(catalogue.GetFieldInfo(7), &row);
  EXPECT_EQ(catalogue.GetFieldInfo(7)->GetFieldDescription(), "Bid");
}

TEST(FieldInfoMgrLookup, AFreshCatalogueHasNoRows) {
  const CFieldInfoMgr catalogue;
  for (int id = 0; id < 0x10000; ++id) {
    ASSERT_EQ(catalogue.GetFieldInfo(static_cast<unsigned short>(id)), nullptr) << id;
  }
}

TEST(FieldInfoMgrLookup, DescriptionLeavesTheTextWithoutARow) {
  CFieldInfoMgr catalogue;
  catalogue.AddField(7, Row(7, "Bid"));
  CString text = "before";
  EXPECT_EQ(catalogue.GetFieldDescription(8, text), 1);
  EXPECT_EQ(catalogue.GetFieldDescription(522, text), 1);
  EXPECT_EQ(text, "before");
  EXPECT_EQ(catalogue.GetFieldDescription(7, text), 0);
  EXPECT_EQ(text, "Bid");
}

TEST(FieldInfoMgrLookup, ListsAppendInOrderOfIds) {
  CFieldInfoMgr catalogue;
  CZRGSFieldInfo storable = Row(300, "c");
  storable.SetIsStorable(1);
  CZRGSFieldInfo allButStorable = Row(5, "a");
  allButStorable.SetFlags(0xFE);
  catalogue.AddField(300, storable);
  catalogue.AddField(5, allButStorable);
  storable.SetFieldID(200);
  catalogue.AddField(200, storable);

  CFieldInfoMgr::FieldInfoList list;
  EXPECT_EQ(catalogue.GetFieldInfoListAll(list), 0);
  EXPECT_THAT(IdsOf(list), ElementsAre(5, 200, 300));
  EXPECT_EQ(list.GetHead(), catalogue.GetFieldInfo(5));
  EXPECT_EQ(catalogue.GetFieldInfoListStorable(list), 0);
  EXPECT_THAT(IdsOf(list), ElementsAre(5, 200, 300, 200, 300));
}

TEST(FieldInfoMgrErrors, EachResultHasItsWords) {
  struct Opened : CFieldInfoMgr {
    using CFieldInfoMgr::GetErrorString;
  };
  const char* const words[] = {"NO ERROR", "Field ID not found", "Field ID already exists",
                               "One of the Field Info values is invalid", ""};
  for (int result = 0; result < 5; ++result) {
    EXPECT_EQ(Opened::GetErrorString(static_cast<CFieldInfoMgr::RetValEnum>(result)),
              words[result]);
  }
}

TEST(ResolutionFromString, NoneNeedsNoRows) {
  CFieldInfoMgr catalogue;
  CResoln resoln = MakeResoln(3, 7);
  EXPECT_EQ(catalogue.GetResolutionFromString("None", resoln), 1);
  EXPECT_EQ(Plain(resoln), Resolution(8, 1));
}

TEST(ResolutionFromString, FindsWhatSomeFieldMayBeStoredIn) {
  CFieldInfoMgr catalogue;
  catalogue.AddField(7, StoredRow(7, "Bid", {{{1, 1}}, {{2, 1}, {2, 5}, {4, 1}}}));
  catalogue.AddField(8, StoredRow(8, "Size", {{{3, 15}}}));
  const std::vector<std::pair<const char*, Resolution>> rows = {{"1 Tick", {1, 1}},
                                                                {"1 Second", {2, 1}},
                                                                {"5 Seconds", {2, 5}},
                                                                {"1 Day", {4, 1}},
                                                                {"15 Minutes", {3, 15}}};
  for (const auto& [text, expected] : rows) {
    CResoln resoln;
    EXPECT_EQ(catalogue.GetResolutionFromString(text, resoln), 1) << text;
    EXPECT_EQ(Plain(resoln), expected) << text;
  }
}

TEST(ResolutionFromString, IsExactAndLeavesWhatItCannotFind) {
  CFieldInfoMgr catalogue;
  catalogue.AddField(7, StoredRow(7, "Bid", {{{1, 1}}}));
  for (const char* text : {"", "1 tick", "1 Ticks", "1 Tick ", "2 Ticks", "none", "Tick"}) {
    CResoln resoln = MakeResoln(3, 7);
    EXPECT_EQ(catalogue.GetResolutionFromString(text, resoln), 0) << text;
    EXPECT_EQ(Plain(resoln), Resolution(3, 7)) << text;
  }
}

TEST(ResolutionFromString, EmptyTextFindsAResolutionWithoutANameOnPurpose) {
  CFieldInfoMgr catalogue;
  catalogue.AddField(7, StoredRow(7, "Bid", {{{1, 1}, {0, 4}}}));
  CResoln resoln;
  EXPECT_EQ(catalogue.GetResolutionFromString("", resoln), 1);
  EXPECT_EQ(Plain(resoln), Resolution(0, 4));
}

TEST(ResolutionsByName, AreAppendedOnceEach) {
  CFieldInfoMgr catalogue;
  catalogue.AddField(7, StoredRow(7, "Bid", {{{1, 1}}, {{2, 5}, {1, 1}, {4, 1}}}));
  CStringArray names;
  names.Add("4 Days");
  names.Add("1 Day");
  EXPECT_EQ(catalogue.GetResolutionsForField("Bid", names), 1);
  EXPECT_THAT(Plain(names), ElementsAre("4 Days", "1 Day", "1 Tick", "5 Seconds"));
}

TEST(ResolutionsByName, AFieldWithoutHistoryHasNone) {
  CFieldInfoMgr catalogue;
  CZRGSFieldInfo row = StoredRow(5, "Base Code", {{{1, 1}}});
  row.SetFieldType(2);
  catalogue.AddField(5, row);
  CStringArray names;
  names.Add("None");
  EXPECT_EQ(catalogue.GetResolutionsForField("Base Code", names), 1);
  EXPECT_THAT(Plain(names), ElementsAre("None", "None"));
}

TEST(ResolutionsByName, AnUnknownNameGivesNothing) {
  CFieldInfoMgr catalogue;
  catalogue.AddField(7, StoredRow(7, "Bid", {{{1, 1}}}));
  CStringArray names;
  EXPECT_EQ(catalogue.GetResolutionsForField("bid", names), 0);
  EXPECT_EQ(catalogue.GetResolutionsForField("", names), 0);
  EXPECT_EQ(names.GetSize(), 0);
}

TEST(ResolutionsByName, TheLowestIdOfANameCounts) {
  CFieldInfoMgr catalogue;
  catalogue.AddField(9, StoredRow(9, "Bid", {{{1, 1}}}));
  catalogue.AddField(8, StoredRow(8, "Bid", {{{4, 1}}}));
  CStringArray names;
  EXPECT_EQ(catalogue.GetResolutionsForField("Bid", names), 1);
  EXPECT_THAT(Plain(names), ElementsAre("1 Day"));
}

TEST(ResolutionsById, AreAppendedOnceEach) {
  CFieldInfoMgr catalogue;
  catalogue.AddField(7, StoredRow(7, "Bid", {{{1, 1}}, {{2, 5}, {1, 1}, {4, 1}}}));
  CZRListEx<CResoln> list(10);
  list.AddTail(MakeResoln(7, 1));
  list.AddTail(MakeResoln(4, 1));
  EXPECT_EQ(catalogue.GetResolutionsForField(7, list), 1);
  EXPECT_THAT(Plain(list), ElementsAre(Pair(7, 1), Pair(4, 1), Pair(1, 1), Pair(2, 5)));
}

TEST(ResolutionsById, AFieldWithoutHistoryEmptiesTheListOnPurpose) {
  CFieldInfoMgr catalogue;
  catalogue.AddField(5, Row(5, "Base Code", 2));
  CZRListEx<CResoln> list(10);
  list.AddTail(MakeResoln(4, 1));
  EXPECT_EQ(catalogue.GetResolutionsForField(5, list), 1);
  EXPECT_TRUE(list.IsEmpty());
}

TEST(ResolutionsById, AnUnknownIdLeavesTheList) {
  const CFieldInfoMgr catalogue;
  CZRListEx<CResoln> list(10);
  list.AddTail(MakeResoln(4, 1));
  for (const unsigned short id : std::vector<unsigned short>{5, 521, 522, 0xFFFF}) {
    EXPECT_EQ(catalogue.GetResolutionsForField(id, list), 0) << id;
  }
  EXPECT_THAT(Plain(list), ElementsAre(Pair(4, 1)));
}

TEST(ResolutionValidity, GoesByBothNamesExactly) {
  CFieldInfoMgr catalogue;
  catalogue.AddField(285, StoredRow(285, "Close", {{{1, 1}}}));
  catalogue.AddField(5, Row(5, "Base Code", 2));
  EXPECT_EQ(catalogue.ResValidForField("Close", "1 Tick"), 1);
  EXPECT_EQ(catalogue.ResValidForField("Close", "1 Day"), 0);
  EXPECT_EQ(catalogue.ResValidForField("Close", "1 tick"), 0);
  EXPECT_EQ(catalogue.ResValidForField("Close", "None"), 0);
  EXPECT_EQ(catalogue.ResValidForField("Base Code", "None"), 1);
  EXPECT_EQ(catalogue.ResValidForField("Unknown", "1 Tick"), 0);
  EXPECT_EQ(catalogue.ResValidForField("Unknown", "None"), 0);
}

}  // namespace
