#include <array>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pxdutil/datapoints/ohlc_bars.h>
#include <pxdutil/datapoints/plain_points.h>
#include <pxdutil/datapoints/short_bars.h>
#include <pxdutil/datapoints/ticks.h>

#include "support.h"

namespace {

using namespace history_test;

std::string ClassOf(const CDPDataPt* point) {
  return point != nullptr ? point->GetRuntimeClass()->m_lpszClassName : "";
}

std::string ClassOfOne(const CFieldResoln& pair) {
  const std::unique_ptr<CDPDataPt> point(pair.CreateDataPt());
  return ClassOf(point.get());
}

struct DeleteArray {
  void operator()(CDPDataPt* points) const { CFieldResoln::DeleteDataPtArray(points); }
};
using PointArray = std::unique_ptr<CDPDataPt, DeleteArray>;

std::string ClassOfArray(const CFieldResoln& pair) {
  const PointArray points(pair.CreateDataPtArray(3));
  return ClassOf(points.get());
}

// The resolutions that count as one width, and what each kind of field has there.
constexpr std::size_t kKinds = 9;
struct KindOfField {
  unsigned short id;
  const char* what;
};
constexpr std::array<KindOfField, kKinds> kFields = {{
    {201, "a record"},
    {486, "a record that isn't offered"},
    {485, "the option record"},
    {521, "the conversion record"},
    {7, "a price with storage forms"},
    {431, "a price"},
    {8, "a volume"},
    {5, "a field without history"},
    {321, "a count"},
}};

struct WidthRow {
  const char* width;
  std::vector<ZRGS_RESOLUTION> resolutions;
  std::array<const char*, kKinds> one;
  std::array<const char*, kKinds> array;
};

class PointFactory : public WithCatalogue, public testing::WithParamInterface<WidthRow> {};

TEST_P(PointFactory, PicksTheClassByFieldAndWidth) {
  for (std::size_t i = 0; i < kKinds; ++i) {
    for (const ZRGS_RESOLUTION& resolution : GetParam().resolutions) {
      const CFieldResoln pair(ZRGS_FIELD_RESOLUTION{kFields[i].id, resolution});
      SCOPED_TRACE(std::string(kFields[i].what) + ", unit " + std::to_string(resolution.wUnit) +
                   ", quantity " + std::to_string(resolution.wQuantity));
      EXPECT_EQ(ClassOfOne(pair), GetParam().one[i]);
      EXPECT_EQ(ClassOfArray(pair), GetParam().array[i]);
    }
  }
}

// Units 0 and 9 and above are no units and have the type of ticks, as unit 8 has.
const WidthRow kWidths[] = {
    {"OneTick",
     {{1, 1}, {8, 1}, {0, 1}, {9, 1}, {65535, 1}},
     {"CDPTDblDblTick", "CDPTDblDblTick", "CDPTDblDblTick", "CDPCnv", "", "", "", "CDPTDblTick",
      ""},
     {"CDPTDblDblTick", "CDPTDblDblTick", "CDPTDblDblTick", "CDPTDblDblTick", "", "", "", "", ""}},
    {"Bar",
     {{1, 2}, {1, 65535}, {8, 2}, {0, 2}, {9, 2}, {2, 1}, {2, 5}, {2, 0}, {3, 0}, {3, 1}, {3, 5}},
     {"CDPCDblOHLCUDUT", "CDPCDblOHLCUDUT", "CDPCDblOHLCUDUT", "CDPCnv", "", "", "", "", ""},
     {"CDPCDblOHLCUDUT", "CDPCDblOHLCUDUT", "CDPCDblOHLCUDUT", "CDPCDblOHLCUDUT", "", "", "", "",
      ""}},
    {"DayAndLonger",
     {{4, 1}, {4, 0}, {4, 9}, {5, 1}, {6, 1}, {7, 1}, {7, 65535}},
     {"CDPCDblOHLCUDUTO", "CDPCDblOHLCUDUTO", "CDPOptDaily", "CDPCnv", "", "", "", "", ""},
     {"CDPCDblOHLCUDUTO", "CDPCDblOHLCUDUTO", "CDPCDblOHLCUDUTO", "CDPCDblOHLCUDUTO", "", "", "",
      "", ""}},
    {"NoTick",
     {{1, 0}, {8, 0}, {0, 0}, {9, 0}},
     {"", "", "", "CDPCnv", "", "", "", "", ""},
     {"", "", "", "", "", "", "", "", ""}},
};

INSTANTIATE_TEST_SUITE_P(Widths, PointFactory, testing::ValuesIn(kWidths),
                         [](const auto& row) { return std::string(row.param.width); });

using PointFactoryRules = WithCatalogue;

TEST_F(PointFactoryRules, TheStaticAndTheMemberFormsAgree) {
  const CResoln day(ZRGS_RESOLUTION{4, 1});
  const std::unique_ptr<CDPDataPt> point(CFieldResoln::CreateDataPt(CField(485), day));
  EXPECT_EQ(ClassOf(point.get()), "CDPOptDaily");
  const PointArray points(CFieldResoln::CreateDataPtArray(CField(485), day, 2));
  EXPECT_EQ(ClassOf(points.get()), "CDPCDblOHLCUDUTO");
}

TEST_F(PointFactoryRules, APriceHasNoPointAndThatIsMeant) {
  // The catalogue lists storage for the field at 1 Tick, 1 Second, 5 Seconds and 1 Day.
  for (const ZRGS_RESOLUTION resolution : {ZRGS_RESOLUTION{1, 1}, {2, 1}, {2, 5}, {4, 1}}) {
    const CFieldResoln bid(ZRGS_FIELD_RESOLUTION{7, resolution});
    EXPECT_EQ(bid.CreateDataPt(), nullptr);
    EXPECT_EQ(bid.CreateDataPtArray(1), nullptr);
  }
}

TEST_F(PointFactoryRules, LongBarsHaveTheClassWithOpenInterestAndThatIsMeant) {
  for (const int unit : {5, 6, 7}) {
    EXPECT_EQ(ClassOfOne(Pair(201, unit, 1)), "CDPCDblOHLCUDUTO");
    EXPECT_EQ(Pair(201, unit, 1).HasOpenInterest(), 0);
  }
}

TEST_F(PointFactoryRules, ArraysKnowNoClassesOfTheirOwnFor521And485AndThatIsMeant) {
  EXPECT_EQ(ClassOfArray(Pair(521, 4, 1)), "CDPCDblOHLCUDUTO");
  EXPECT_EQ(ClassOfArray(Pair(521, 1, 1)), "CDPTDblDblTick");
  EXPECT_EQ(ClassOfArray(Pair(485, 4, 1)), "CDPCDblOHLCUDUTO");
  EXPECT_EQ(ClassOfArray(Pair(5, 1, 1)), "");
}

TEST_F(PointFactoryRules, A485OfAnotherTypeIsStillTheOptionRecord) {
  // The id is tested ahead of the type.
  CFieldInfoMgr catalogue;
  CZRGSFieldInfo info;
  info.SetFieldType(0);
  ASSERT_EQ(catalogue.AddField(485, info), 0);
  EXPECT_EQ(ClassOfOne(Pair(485, 4, 1)), "CDPOptDaily");
  EXPECT_EQ(ClassOfArray(Pair(485, 4, 1)), "");
  EXPECT_EQ(ClassOfOne(Pair(485, 3, 1)), "");
}

TEST(PointFactoryWithoutManager, StillMakesConversionPoints) {
  ASSERT_EQ(CFieldInfoMgr::m_pInstance, nullptr);
  for (const ZRGS_RESOLUTION resolution : {ZRGS_RESOLUTION{1, 1}, {4, 1}, {0, 0}, {99, 7}}) {
    EXPECT_EQ(ClassOfOne(CFieldResoln(ZRGS_FIELD_RESOLUTION{521, resolution})), "CDPCnv");
  }
}

// What holds for every class that the factory makes.
template <class Point>
struct MadeBy;
template <>
struct MadeBy<CDPCnv> {
  static CFieldResoln Pair() { return history_test::Pair(521, 3, 1); }
};
template <>
struct MadeBy<CDPTDblDblTick> {
  static CFieldResoln Pair() { return history_test::Pair(201, 1, 1); }
};
template <>
struct MadeBy<CDPTDblTick> {
  static CFieldResoln Pair() { return history_test::Pair(5, 1, 1); }
};
template <>
struct MadeBy<CDPCDblOHLCUDUT> {
  static CFieldResoln Pair() { return history_test::Pair(201, 3, 5); }
};
template <>
struct MadeBy<CDPOptDaily> {
  static CFieldResoln Pair() { return history_test::Pair(485, 4, 1); }
};
template <>
struct MadeBy<CDPCDblOHLCUDUTO> {
  static CFieldResoln Pair() { return history_test::Pair(201, 4, 1); }
};

template <class Point>
class MadePoint : public WithCatalogue {};
using SingleClasses = testing::Types<CDPCnv, CDPTDblDblTick, CDPTDblTick, CDPCDblOHLCUDUT,
                                     CDPOptDaily, CDPCDblOHLCUDUTO>;
TYPED_TEST_SUITE(MadePoint, SingleClasses);

TYPED_TEST(MadePoint, IsAFreshObjectOfItsOwn) {
  const CFieldResoln pair = MadeBy<TypeParam>::Pair();
  const std::unique_ptr<CDPDataPt> first(pair.CreateDataPt());
  const std::unique_ptr<CDPDataPt> second(pair.CreateDataPt());
  ASSERT_NE(first, nullptr);
  ASSERT_NE(second, nullptr);
  EXPECT_NE(first, second);
  EXPECT_EQ(first->GetRuntimeClass(), TypeParam::GetThisClass());
  EXPECT_EQ(first->GetObjectSize(), sizeof(TypeParam));
  EXPECT_EQ(first->IsNull(), 1);
  EXPECT_FALSE(first->HasFlag(0xFF));
}

template <class Point>
class MadeArray : public WithCatalogue {};
using ArrayClasses = testing::Types<CDPTDblDblTick, CDPCDblOHLCUDUT, CDPCDblOHLCUDUTO>;
TYPED_TEST_SUITE(MadeArray, ArrayClasses);

TYPED_TEST(MadeArray, HoldsFreshPointsOneBehindTheOther) {
  constexpr unsigned int kCount = 5;
  const PointArray points(MadeBy<TypeParam>::Pair().CreateDataPtArray(kCount));
  ASSERT_NE(points, nullptr);
  const CDPADataPtAr view(points.get(), kCount);
  EXPECT_EQ(view.GetBufSizeInBytes(), kCount * sizeof(TypeParam));
  for (unsigned int i = 0; i < kCount; ++i) {
    EXPECT_EQ(view[i]->GetRuntimeClass(), TypeParam::GetThisClass());
    EXPECT_EQ(view[i]->IsNull(), 1);
    view[i]->SetToDummyData(i);
  }
}

TYPED_TEST(MadeArray, CanBeReleasedThroughItsOwnClass) {
  CDPDataPt* const points = MadeBy<TypeParam>::Pair().CreateDataPtArray(4);
  ASSERT_NE(points, nullptr);
  delete[] static_cast<TypeParam*>(points);
}

TYPED_TEST(MadeArray, OfNoneIsReleasedAsAnyOther) {
  CDPDataPt* const points = MadeBy<TypeParam>::Pair().CreateDataPtArray(0);
  ASSERT_NE(points, nullptr);
  CFieldResoln::DeleteDataPtArray(points);
}

TEST(MadeArrayRelease, OfNullDoesNothing) {
  CFieldResoln::DeleteDataPtArray(nullptr);
}

TEST(MadeArrayReleaseDeathTest, OfPointsOfAnotherClassIsAFault) {
  CDPCnv conversion;
  CDPCDblC bar;
  EXPECT_DEATH(CFieldResoln::DeleteDataPtArray(&conversion), "didn't make");
  EXPECT_DEATH(CFieldResoln::DeleteDataPtArray(&bar), "didn't make");
}

using PointFactoryDeathTest = WithCatalogue;

TEST_F(PointFactoryDeathTest, AFieldWithoutAnEntryIsAFaultAtEveryResolution) {
  // Also where nothing could be made, as at quantity 0 of ticks: the look-up comes first.
  for (const int id : {6, 460, 522, 65535}) {
    for (const ZRGS_RESOLUTION resolution : {ZRGS_RESOLUTION{1, 1}, {3, 1}, {4, 1}, {1, 0}}) {
      const CFieldResoln pair = Pair(id, resolution.wUnit, resolution.wQuantity);
      EXPECT_DEATH(static_cast<void>(pair.CreateDataPt()), "without a catalogue entry");
      EXPECT_DEATH(static_cast<void>(pair.CreateDataPtArray(1)), "without a catalogue entry");
    }
  }
}

TEST(PointFactoryWithoutRowDeathTest, AnArrayOf521IsAFaultThoughAPointIsNot) {
  const CFieldInfoMgr empty;
  EXPECT_EQ(ClassOfOne(Pair(521, 4, 1)), "CDPCnv");
  EXPECT_DEATH(static_cast<void>(Pair(521, 4, 1).CreateDataPtArray(1)),
               "without a catalogue entry");
}

TEST(PointFactoryWithoutManagerDeathTest, IsAFault) {
  ASSERT_EQ(CFieldInfoMgr::m_pInstance, nullptr);
  EXPECT_DEATH(static_cast<void>(Pair(201, 4, 1).CreateDataPt()), "no manager");
  EXPECT_DEATH(static_cast<void>(Pair(521, 4, 1).CreateDataPtArray(1)), "no manager");
}

}  // namespace
