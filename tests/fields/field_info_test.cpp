#include <pxdutil/fields/field_info.h>

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pxdutil/foundation/archive.h>
#include <pxdutil/foundation/file.h>

#include "support.h"

namespace {

using namespace fields_test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

using Bytes = std::vector<unsigned char>;

template <class T>
Bytes Stored(T& object) {
  CMemFile file;
  CArchive archive(&file, CArchive::store);
  object.Serialize(archive);
  archive.Close();
  return file.GetBytes();
}

// Loads the object and tells the cause of the archive's exception, `none` where there was none.
template <class T>
int LoadFrom(const Bytes& bytes, T& object) {
  CMemFile file(bytes.data(), bytes.size());
  CArchive archive(&file, CArchive::load);
  try {
    object.Serialize(archive);
  } catch (CArchiveException* exception) {
    const int cause = exception->m_cause;
    exception->Delete();
    return cause;
  }
  return CArchiveException::none;
}

struct FlagRow {
  const char* name;
  int (CZRGSFieldInfo::*get)() const;
  void (CZRGSFieldInfo::*set)(int);
  int bit;
};

constexpr FlagRow kFlags[] = {
    {"storable", &CZRGSFieldInfo::GetIsStorable, &CZRGSFieldInfo::SetIsStorable, 1},
    {"server", &CZRGSFieldInfo::GetIsProvidedByServer, &CZRGSFieldInfo::SetIsProvidedByServer, 2},
    {"split", &CZRGSFieldInfo::GetIsAffectedByStockSplit,
     &CZRGSFieldInfo::SetIsAffectedByStockSplit, 4},
    {"distribution", &CZRGSFieldInfo::GetIsAffectedByDistribution,
     &CZRGSFieldInfo::SetIsAffectedByDistribution, 8},
    {"price", &CZRGSFieldInfo::GetIsAffectedByPriceMultiplier,
     &CZRGSFieldInfo::SetIsAffectedByPriceMultiplier, 16},
    {"volume", &CZRGSFieldInfo::GetIsAffectedByVolumeMultiplier,
     &CZRGSFieldInfo::SetIsAffectedByVolumeMultiplier, 32},
};

TEST(FieldInfo, FreshOneIsZeroAndEmpty) {
  const CZRGSFieldInfo info;
  EXPECT_EQ(info.GetFieldID(), 0);
  EXPECT_EQ(info.GetFieldType(), 0);
  EXPECT_EQ(info.GetFieldDataType(), 0);
  EXPECT_EQ(info.GetFieldDescription(), "");
  EXPECT_EQ(info.GetStoreInSnapshot(), 0);
  for (const FlagRow& flag : kFlags) {
    EXPECT_EQ((info.*flag.get)(), 0) << flag.name;
  }
  EXPECT_TRUE(info.GetAtomicFieldIDList().IsEmpty());
  EXPECT_TRUE(info.GetStorageSettingList().IsEmpty());
  EXPECT_EQ(info.GetUpdateFieldIDListPtr(CResoln()), nullptr);
}

TEST(FieldInfo, AccessorsGiveBackWhatWasSet) {
  CZRGSFieldInfo info;
  info.SetFieldID(0xFEDC);
  info.SetFieldType(0xBA);
  info.SetFieldDataType(0x98);
  info.SetFieldDescription("Bid");
  info.SetStoreInSnapshot(7);
  EXPECT_EQ(info.GetFieldID(), 0xFEDC);
  EXPECT_EQ(info.GetFieldType(), 0xBA);
  EXPECT_EQ(info.GetFieldDataType(), 0x98);
  EXPECT_EQ(info.GetFieldDescription(), "Bid");
  CString text = "before";
  info.GetFieldDescription(text);
  EXPECT_EQ(text, "Bid");
  EXPECT_EQ(info.GetStoreInSnapshot(), 7);
}

TEST(FieldInfoFlags, AReadGivesTheBitAsItStands) {
  for (const FlagRow& flag : kFlags) {
    SCOPED_TRACE(flag.name);
    CZRGSFieldInfo info;
    info.SetFlags(static_cast<unsigned char>(flag.bit));
    for (const FlagRow& other : kFlags) {
      EXPECT_EQ((info.*other.get)(), other.bit == flag.bit ? flag.bit : 0) << other.name;
    }
  }
}

TEST(FieldInfoFlags, AWriteSetsForAnyNonzeroValueAndLeavesTheOthers) {
  for (const FlagRow& flag : kFlags) {
    for (const int value : {1, 2, 256, -1}) {
      SCOPED_TRACE(flag.name);
      CZRGSFieldInfo info;
      CZRGSFieldInfo expected;
      expected.SetFlags(static_cast<unsigned char>(0xC0 | flag.bit));
      info.SetFlags(0xC0);
      (info.*flag.set)(value);
      EXPECT_TRUE(info == expected) << value;
    }
  }
}

TEST(FieldInfoFlags, AWriteOfZeroClearsThatBitAlone) {
  for (const FlagRow& flag : kFlags) {
    SCOPED_TRACE(flag.name);
    CZRGSFieldInfo info;
    CZRGSFieldInfo expected;
    expected.SetFlags(static_cast<unsigned char>(0xFF & ~flag.bit));
    info.SetFlags(0xFF);
    (info.*flag.set)(0);
    EXPECT_TRUE(info == expected);
  }
}

TEST(FieldInfoFlags, SetFlagsReplacesTheWholeByte) {
  CZRGSFieldInfo info;
  info.SetFlags(0xFF);
  info.SetFlags(0x02);
  EXPECT_EQ(info.GetIsStorable(), 0);
  EXPECT_EQ(info.GetIsProvidedByServer(), 2);
  EXPECT_EQ(info.GetIsAffectedByVolumeMultiplier(), 0);
}

TEST(FieldInfo, SizeGoesByTheFieldType) {
  const int sizes[] = {4, 4, 8, 0, 4, 0, 0};
  CZRGSFieldInfo info;
  for (unsigned char type = 0; type < 7; ++type) {
    info.SetFieldType(type);
    EXPECT_EQ(info.GetFieldSize(), sizes[type]) << static_cast<int>(type);
  }
  info.SetFieldType(255);
  EXPECT_EQ(info.GetFieldSize(), 0);
}

TEST(FieldInfo, EveryRowPassesTheCheckOnPurpose) {
  CZRGSFieldInfo info;
  info.SetFieldID(0xFFFF);
  info.SetFieldType(0xFF);
  EXPECT_EQ(info.AreAllFieldsValid(), 1);
}

TEST(FieldInfoEquality, FreshOnesAreEqual) {
  EXPECT_EQ(CZRGSFieldInfo() == CZRGSFieldInfo(), 1);
  EXPECT_EQ(CZRGSFieldInfo() != CZRGSFieldInfo(), 0);
}

TEST(FieldInfoEquality, EachMemberCounts) {
  using Change = void (*)(CZRGSFieldInfo&);
  const Change changes[] = {
      [](CZRGSFieldInfo& info) { info.SetFieldID(1); },
      [](CZRGSFieldInfo& info) { info.SetFieldType(1); },
      [](CZRGSFieldInfo& info) { info.SetFieldDataType(1); },
      [](CZRGSFieldInfo& info) { info.SetFieldDescription("a"); },
      [](CZRGSFieldInfo& info) { info.SetFlags(0x80); },
      [](CZRGSFieldInfo& info) { info.SetAtomicFieldList(Fields({0})); },
      [](CZRGSFieldInfo& info) { info.SetStoreInSnapshot(1); },
  };
  for (const Change change : changes) {
    CZRGSFieldInfo changed;
    change(changed);
    CZRGSFieldInfo same;
    change(same);
    EXPECT_EQ(changed == CZRGSFieldInfo(), 0);
    EXPECT_EQ(CZRGSFieldInfo() == changed, 0);
    EXPECT_EQ(changed != CZRGSFieldInfo(), 1);
    EXPECT_EQ(changed == same, 1);
  }
}

TEST(FieldInfoEquality, NamesAndAtomicListsAreComparedExactlyAndInOrder) {
  CZRGSFieldInfo a;
  CZRGSFieldInfo b;
  a.SetFieldDescription("Bid");
  b.SetFieldDescription("bid");
  EXPECT_EQ(a == b, 0);
  b.SetFieldDescription("Bid");
  a.SetAtomicFieldList(Fields({7, 8}));
  b.SetAtomicFieldList(Fields({8, 7}));
  EXPECT_EQ(a == b, 0);
  b.SetAtomicFieldList(Fields({7, 8}));
  EXPECT_EQ(a == b, 1);
}

TEST(FieldInfoEquality, UpdateListsPlayNoPartOnPurpose) {
  CZRGSFieldInfo a;
  a.SetResolnUpdateFieldList(OneUpdate(MakeResoln(4, 1), {1, 2}));
  EXPECT_EQ(a == CZRGSFieldInfo(), 1);
}

TEST(FieldInfoEquality, ARowWithStorageSettingsEqualsNothingNotEvenItselfOnPurpose) {
  CZRListEx<CStorageSetting> settings(10);
  settings.AddTail(CStorageSetting());
  CZRGSFieldInfo a;
  a.SetStorageSettingList(settings);
  const CZRGSFieldInfo b = a;
  const CZRGSFieldInfo& itself = a;
  EXPECT_EQ(a == itself, 0);
  EXPECT_EQ(a == b, 0);
  EXPECT_EQ(a != b, 1);
  EXPECT_EQ(a == CZRGSFieldInfo(), 0);
}

TEST(FieldInfoUpdateLists, AreFoundByExactlyTheirResolution) {
  CZRGSFieldInfo info;
  info.SetResolnUpdateFieldList(OneUpdate(MakeResoln(4, 1), {282, 283}));
  const CZRListEx<CField>* list = info.GetUpdateFieldIDListPtr(MakeResoln(4, 1));
  ASSERT_NE(list, nullptr);
  EXPECT_THAT(Plain(*list), ElementsAre(282, 283));
  EXPECT_EQ(info.GetUpdateFieldIDListPtr(MakeResoln(4, 2)), nullptr);
  EXPECT_EQ(info.GetUpdateFieldIDListPtr(MakeResoln(4, 0)), nullptr);
  EXPECT_EQ(info.GetUpdateFieldIDListPtr(MakeResoln(3, 1)), nullptr);
  EXPECT_EQ(info.GetUpdateFieldIDListPtr(MakeResoln(5, 1)), nullptr);
}

TEST(FieldInfoUpdateLists, OfTwoWithTheSameResolutionTheFirstStays) {
  auto list = OneUpdate(MakeResoln(4, 1), {1});
  list.AddTail(OneUpdate(MakeResoln(5, 1), {2}).GetHead());
  list.AddTail(OneUpdate(MakeResoln(4, 1), {3}).GetHead());
  CZRGSFieldInfo info;
  info.SetResolnUpdateFieldList(list);
  EXPECT_THAT(Plain(*info.GetUpdateFieldIDListPtr(MakeResoln(4, 1))), ElementsAre(1));
  EXPECT_THAT(Plain(*info.GetUpdateFieldIDListPtr(MakeResoln(5, 1))), ElementsAre(2));
}

TEST(FieldInfoUpdateLists, SettingThemReplacesThemAll) {
  CZRGSFieldInfo info;
  info.SetResolnUpdateFieldList(OneUpdate(MakeResoln(4, 1), {1}));
  info.SetResolnUpdateFieldList(OneUpdate(MakeResoln(5, 1), {2}));
  EXPECT_EQ(info.GetUpdateFieldIDListPtr(MakeResoln(4, 1)), nullptr);
  EXPECT_NE(info.GetUpdateFieldIDListPtr(MakeResoln(5, 1)), nullptr);
}

TEST(FieldInfoUpdateLists, AreCopiesOfWhatWasGiven) {
  auto list = OneUpdate(MakeResoln(4, 1), {1});
  CZRGSFieldInfo info;
  info.SetResolnUpdateFieldList(list);
  list.GetHead().m_FieldList.AddTail(CField(2));
  EXPECT_THAT(Plain(*info.GetUpdateFieldIDListPtr(MakeResoln(4, 1))), ElementsAre(1));
}

TEST(FieldInfoUpdateLists, CanBeEmptiedByADerivedClass) {
  struct Opened : CZRGSFieldInfo {
    using CZRGSFieldInfo::EmptyUpdateFieldMap;
  };
  Opened info;
  info.SetResolnUpdateFieldList(OneUpdate(MakeResoln(4, 1), {1}));
  info.EmptyUpdateFieldMap();
  EXPECT_EQ(info.GetUpdateFieldIDListPtr(MakeResoln(4, 1)), nullptr);
}

CZRGSFieldInfo FullRow() {
  CZRGSFieldInfo info;
  info.SetFieldID(201);
  info.SetFieldType(3);
  info.SetFieldDataType(1);
  info.SetFieldDescription("Trade Record");
  info.SetFlags(0x3D);
  info.SetStoreInSnapshot(1);
  info.SetAtomicFieldList(Fields({285, 14}));
  info.SetResolnUpdateFieldList(OneUpdate(MakeResoln(4, 1), {282}));
  CZRListEx<CStorageSetting> settings(10);
  settings.AddTail(Setting(5, {{1, 1}}));
  info.SetStorageSettingList(settings);
  return info;
}

void ExpectFullRow(const CZRGSFieldInfo& info) {
  EXPECT_EQ(info.GetFieldID(), 201);
  EXPECT_EQ(info.GetFieldType(), 3);
  EXPECT_EQ(info.GetFieldDataType(), 1);
  EXPECT_EQ(info.GetFieldDescription(), "Trade Record");
  EXPECT_EQ(info.GetIsStorable(), 1);
  EXPECT_EQ(info.GetIsProvidedByServer(), 0);
  EXPECT_EQ(info.GetIsAffectedByVolumeMultiplier(), 32);
  EXPECT_EQ(info.GetStoreInSnapshot(), 1);
  EXPECT_THAT(Plain(info.GetAtomicFieldIDList()), ElementsAre(285, 14));
  const CZRListEx<CField>* updates = info.GetUpdateFieldIDListPtr(MakeResoln(4, 1));
  ASSERT_NE(updates, nullptr);
  EXPECT_THAT(Plain(*updates), ElementsAre(282));
  EXPECT_THAT(Plain(info.GetStorageSettingList()), ElementsAre(Pair(5, ElementsAre(Pair(1, 1)))));
}

TEST(FieldInfoCopies, AreDeep) {
  auto source = std::make_unique<CZRGSFieldInfo>(FullRow());
  const CZRGSFieldInfo constructed = *source;
  CZRGSFieldInfo assigned;
  assigned.SetAtomicFieldList(Fields({1, 2, 3}));
  assigned.SetResolnUpdateFieldList(OneUpdate(MakeResoln(7, 1), {4}));
  assigned = *source;
  EXPECT_NE(constructed.GetUpdateFieldIDListPtr(MakeResoln(4, 1)),
            source->GetUpdateFieldIDListPtr(MakeResoln(4, 1)));
  source.reset();
  ExpectFullRow(constructed);
  ExpectFullRow(assigned);
  EXPECT_EQ(assigned.GetUpdateFieldIDListPtr(MakeResoln(7, 1)), nullptr);
}

TEST(FieldInfoCopies, SelfAssignmentChangesNothing) {
  CZRGSFieldInfo info = FullRow();
  const CZRGSFieldInfo& itself = info;
  info = itself;
  ExpectFullRow(info);
}

TEST(FieldInfoEmpty, ClearsAllButTheUpdateListsOnPurpose) {
  CZRGSFieldInfo info = FullRow();
  info.Empty();
  EXPECT_EQ(info == CZRGSFieldInfo(), 1);
  const CZRListEx<CField>* updates = info.GetUpdateFieldIDListPtr(MakeResoln(4, 1));
  ASSERT_NE(updates, nullptr);
  EXPECT_THAT(Plain(*updates), ElementsAre(282));
}

// Format byte, id 201, type 3, data type 1, "Bid", flags 3D, snapshot 1, two atomic ids, one
// storage setting: its format byte, data point 6, two resolutions (2, 5) and (4, 1).
const Bytes kFullRecord = {
    0x77,                                            //
    0xC9, 0x00,                                      //
    0x03,                                            //
    0x01,                                            //
    0x03, 'B',  'i',  'd',                           //
    0x3D,                                            //
    0x01, 0x00, 0x00, 0x00,                          //
    0x02, 0x00, 0x00, 0x00, 0x1D, 0x01, 0x0E, 0x00,  //
    0x01, 0x00, 0x00, 0x00,                          //
    0x99, 0x06, 0x02, 0x00, 0x00, 0x00, 0x52, 0x00, 0x14, 0x00,
};

TEST(FieldInfoArchive, StoresOneZeroByteOnPurpose) {
  CZRGSFieldInfo info = FullRow();
  EXPECT_EQ(Stored(info), Bytes{0x00});
}

TEST(FieldInfoArchive, WhatItStoredCannotBeLoaded) {
  CZRGSFieldInfo info = FullRow();
  const Bytes stored = Stored(info);
  CZRGSFieldInfo loaded;
  EXPECT_EQ(LoadFrom(stored, loaded), CArchiveException::endOfFile);
}

TEST(FieldInfoArchive, LoadsAFullRecord) {
  CZRGSFieldInfo info;
  EXPECT_EQ(LoadFrom(kFullRecord, info), CArchiveException::none);
  EXPECT_EQ(info.GetFieldID(), 201);
  EXPECT_EQ(info.GetFieldType(), 3);
  EXPECT_EQ(info.GetFieldDataType(), 1);
  EXPECT_EQ(info.GetFieldDescription(), "Bid");
  EXPECT_EQ(info.GetIsStorable(), 1);
  EXPECT_EQ(info.GetIsProvidedByServer(), 0);
  EXPECT_EQ(info.GetIsAffectedByStockSplit(), 4);
  EXPECT_EQ(info.GetStoreInSnapshot(), 1);
  EXPECT_THAT(Plain(info.GetAtomicFieldIDList()), ElementsAre(285, 14));
  EXPECT_THAT(Plain(info.GetStorageSettingList()),
              ElementsAre(Pair(6, ElementsAre(Pair(2, 5), Pair(4, 1)))));
}

TEST(FieldInfoArchive, TheFormatByteIsSkippedWhateverItIs) {
  for (const unsigned char format : Bytes{0x00, 0x01, 0xFF}) {
    Bytes bytes = kFullRecord;
    bytes[0] = format;
    CZRGSFieldInfo info;
    EXPECT_EQ(LoadFrom(bytes, info), CArchiveException::none);
    EXPECT_EQ(info.GetFieldID(), 201);
  }
}

TEST(FieldInfoArchive, LoadingAppendsToTheListsAndLeavesTheUpdateListsOnPurpose) {
  CZRGSFieldInfo info = FullRow();
  EXPECT_EQ(LoadFrom(kFullRecord, info), CArchiveException::none);
  EXPECT_EQ(info.GetFieldDescription(), "Bid");
  EXPECT_THAT(Plain(info.GetAtomicFieldIDList()), ElementsAre(285, 14, 285, 14));
  EXPECT_EQ(info.GetStorageSettingList().GetCount(), 2);
  EXPECT_NE(info.GetUpdateFieldIDListPtr(MakeResoln(4, 1)), nullptr);
}

TEST(FieldInfoArchive, EveryCutRecordEndsInEndOfFile) {
  for (std::size_t size = 0; size < kFullRecord.size(); ++size) {
    const Bytes cut(kFullRecord.begin(), kFullRecord.begin() + static_cast<std::ptrdiff_t>(size));
    CZRGSFieldInfo info;
    EXPECT_EQ(LoadFrom(cut, info), CArchiveException::endOfFile) << size;
  }
}

// Behind these stand the two counts.
const Bytes kRecordHead = {0x00, 0x05, 0x00, 0x02, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};

Bytes WithTail(std::initializer_list<unsigned char> tail) {
  Bytes bytes = kRecordHead;
  bytes.insert(bytes.end(), tail);
  return bytes;
}

TEST(FieldInfoArchive, CountsOfZeroAndBelowReadNothing) {
  for (const unsigned char sign : Bytes{0x00, 0xFF}) {
    CZRGSFieldInfo info;
    EXPECT_EQ(LoadFrom(WithTail({sign, sign, sign, sign, 0x00, 0x00, 0x00, 0x80}), info),
              CArchiveException::none);
    EXPECT_EQ(info.GetFieldID(), 5);
    EXPECT_TRUE(info.GetAtomicFieldIDList().IsEmpty());
    EXPECT_TRUE(info.GetStorageSettingList().IsEmpty());
  }
}

TEST(FieldInfoArchive, AHostileAtomicCountEndsWithTheBytes) {
  CZRGSFieldInfo info;
  EXPECT_EQ(LoadFrom(WithTail({0xFF, 0xFF, 0xFF, 0x7F, 0x01, 0x00, 0x02, 0x00, 0x03}), info),
            CArchiveException::endOfFile);
  EXPECT_THAT(Plain(info.GetAtomicFieldIDList()), ElementsAre(1, 2));
}

TEST(FieldInfoArchive, HostileStorageCountsEndWithTheBytes) {
  CZRGSFieldInfo info;
  EXPECT_EQ(LoadFrom(WithTail({0x00, 0x00, 0x00, 0x00, 0xFF, 0xFF, 0xFF, 0x7F,  //
                               0x01, 0x05, 0x00, 0x00, 0x00, 0x00,              // a whole setting
                               0x01, 0x06, 0xFF, 0xFF, 0xFF, 0x7F, 0x11, 0x00}),
                     info),
            CArchiveException::endOfFile);
  EXPECT_THAT(Plain(info.GetStorageSettingList()), ElementsAre(Pair(5, IsEmpty())));
}

TEST(FieldInfoClass, IsCreatedByItsRecord) {
  const std::unique_ptr<CObject> object(RUNTIME_CLASS(CZRGSFieldInfo)->CreateObject());
  ASSERT_NE(object, nullptr);
  EXPECT_EQ(object->GetRuntimeClass(), RUNTIME_CLASS(CZRGSFieldInfo));
  EXPECT_STREQ(object->GetRuntimeClass()->m_lpszClassName, "CZRGSFieldInfo");
  EXPECT_EQ(object->GetRuntimeClass()->m_nObjectSize, static_cast<int>(sizeof(CZRGSFieldInfo)));
  EXPECT_TRUE(object->IsKindOf(RUNTIME_CLASS(CObject)));
  EXPECT_EQ(static_cast<CZRGSFieldInfo&>(*object) == CZRGSFieldInfo(), 1);
}

TEST(StorageSetting, FreshOneIsZeroAndEmpty) {
  const CStorageSetting setting;
  EXPECT_EQ(setting.GetDataPtID(), 0);
  EXPECT_TRUE(setting.GetResolnList().IsEmpty());
}

TEST(StorageSetting, HoldsAnIdAndResolutionsInOrder) {
  CStorageSetting setting = Setting(6, {{2, 1}, {2, 5}});
  setting.AddResoln(MakeResoln(4, 1));
  EXPECT_EQ(setting.GetDataPtID(), 6);
  CZRListEx<CResoln> list(10);
  list.AddTail(MakeResoln(7, 7));
  setting.GetResolnList(list);
  EXPECT_THAT(Plain(list), ElementsAre(Pair(2, 1), Pair(2, 5), Pair(4, 1)));
  list.RemoveHead();
  setting.SetResolnList(list);
  EXPECT_THAT(Plain(setting.GetResolnList()), ElementsAre(Pair(2, 5), Pair(4, 1)));
}

TEST(StorageSetting, CopiesAreDeep) {
  CStorageSetting setting = Setting(6, {{2, 1}});
  const CStorageSetting constructed = setting;
  CStorageSetting assigned = Setting(9, {{7, 1}});
  assigned = setting;
  setting.AddResoln(MakeResoln(4, 1));
  for (const CStorageSetting* copy : {&constructed, &std::as_const(assigned)}) {
    EXPECT_EQ(copy->GetDataPtID(), 6);
    EXPECT_THAT(Plain(copy->GetResolnList()), ElementsAre(Pair(2, 1)));
  }
}

TEST(StorageSetting, NeverEqualsAnythingNotEvenItselfOnPurpose) {
  const CStorageSetting setting;
  const CStorageSetting& itself = setting;
  EXPECT_EQ(setting == itself, 0);
  EXPECT_EQ(setting == CStorageSetting(), 0);
  EXPECT_EQ(setting != itself, 1);
}

// A stored resolution is the word 0, so the resolutions of a stored setting are lost: meant.
TEST(StorageSetting, StoresFormatIdCountAndResolutions) {
  CStorageSetting setting = Setting(6, {{2, 5}, {4, 1}});
  EXPECT_EQ(Stored(setting), (Bytes{0x01, 0x06, 0x02, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}));
  CStorageSetting empty = Setting(0xFF, {});
  EXPECT_EQ(Stored(empty), (Bytes{0x01, 0xFF, 0x00, 0x00, 0x00, 0x00}));
}

TEST(StorageSetting, LoadingAppendsTheResolutions) {
  CStorageSetting setting = Setting(1, {{7, 1}});
  EXPECT_EQ(LoadFrom({0xEE, 0x06, 0x02, 0x00, 0x00, 0x00, 0x52, 0x00, 0x14, 0x00}, setting),
            CArchiveException::none);
  EXPECT_EQ(setting.GetDataPtID(), 6);
  EXPECT_THAT(Plain(setting.GetResolnList()), ElementsAre(Pair(7, 1), Pair(2, 5), Pair(4, 1)));
}

TEST(StorageSetting, CountsOfZeroAndBelowEndTheRecord) {
  for (const unsigned char top : Bytes{0x00, 0x80}) {
    CStorageSetting setting;
    EXPECT_EQ(LoadFrom({0x01, 0x06, 0x00, 0x00, 0x00, top}, setting), CArchiveException::none);
    EXPECT_EQ(setting.GetDataPtID(), 6);
    EXPECT_TRUE(setting.GetResolnList().IsEmpty());
  }
}

TEST(StorageSetting, AHostileCountEndsWithTheBytes) {
  CStorageSetting setting;
  EXPECT_EQ(LoadFrom({0x01, 0x06, 0xFF, 0xFF, 0xFF, 0x7F, 0x14, 0x00, 0x15}, setting),
            CArchiveException::endOfFile);
  EXPECT_THAT(Plain(setting.GetResolnList()), ElementsAre(Pair(4, 1)));
}

TEST(StorageSetting, IsCreatedByItsRecord) {
  const std::unique_ptr<CObject> object(RUNTIME_CLASS(CStorageSetting)->CreateObject());
  ASSERT_NE(object, nullptr);
  EXPECT_EQ(object->GetRuntimeClass(), RUNTIME_CLASS(CStorageSetting));
  EXPECT_STREQ(object->GetRuntimeClass()->m_lpszClassName, "CStorageSetting");
}

TEST(ResolnAndUpdateFieldList, ComparesResolutionAndIdsInOrder) {
  const CResolnAndUpdateFieldList a = OneUpdate(MakeResoln(4, 1), {1, 2}).GetHead();
  const CResolnAndUpdateFieldList copy = a;
  CResolnAndUpdateFieldList assigned;
  assigned = a;
  EXPECT_TRUE(a == copy);
  EXPECT_TRUE(a == assigned);
  EXPECT_FALSE(a == OneUpdate(MakeResoln(4, 2), {1, 2}).GetHead());
  EXPECT_FALSE(a == OneUpdate(MakeResoln(4, 1), {2, 1}).GetHead());
  EXPECT_FALSE(a == OneUpdate(MakeResoln(4, 1), {1}).GetHead());
}

}  // namespace
