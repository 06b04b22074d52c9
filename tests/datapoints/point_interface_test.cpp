// The interface of all data points, over every concrete class.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>
#include <pxdutil/foundation/exception.h>

#include "tests/datapoints/bytes.h"
#include "tests/datapoints/point_specs.h"
#include "tests/sessions/session_helpers.h"
#include "tests/support/allocation_counter.h"
#include "tests/support/thrown.h"

namespace {

using namespace datapoints_test;
using pxd::test::ThrownBy;

constexpr int kHeader = static_cast<int>(sizeof(void*));
// What objects are longer than on a target with 4-byte pointers.
constexpr int kLonger = kHeader - 4;

const CZRDateTime kAt = session_test::At(3, 4, 2024, 9, 31);

class Points : public testing::TestWithParam<PointSpec> {
 protected:
  const PointSpec& spec = GetParam();
  std::unique_ptr<CDPDataPt> point = spec.make();

  [[nodiscard]] bool IsCnv() const { return spec.name == "CDPCnv"; }
  [[nodiscard]] bool IsPlain() const { return spec.stored == 0; }
  [[nodiscard]] bool IsTick() const { return spec.base == RUNTIME_CLASS(CDPTDataPtTick); }
  // The number of columns whose values are real.
  [[nodiscard]] unsigned Real() const { return static_cast<unsigned>(spec.columns.size()); }
  // The first column that doesn't exist: the trade tick has two more behind its floats.
  [[nodiscard]] unsigned Beyond() const { return spec.name == "CDPTDblDblTick" ? 4 : Real(); }

  void Set(CDPDataPt& to, unsigned col, double number) const {
    CDPValue value(static_cast<float>(number));
    if (IsCnv()) {
      value.SetDouble(number);
    }
    to.SetDPValueForCol(col, value);
  }
  [[nodiscard]] double Get(const CDPDataPt& from, unsigned col) const {
    CDPValue value;
    from.GetDPValueForCol(col, value);
    return IsCnv() ? value.GetDouble() : static_cast<double>(value.GetFloat());
  }
  // 10, 11, 12, ... in the columns, behind a stamp.
  void Fill(CDPDataPt& to) const {
    for (unsigned col = 0; col < Real(); ++col) {
      Set(to, col, 10.0 + col);
    }
    to.SetZRDateTime(kAt);
  }
  [[nodiscard]] std::unique_ptr<CDPDataPt> Filled() const {
    auto filled = spec.make();
    Fill(*filled);
    return filled;
  }
};

INSTANTIATE_TEST_SUITE_P(All, Points, testing::ValuesIn(PointSpecs()),
                         [](const auto& test) { return test.param.name; });

TEST_P(Points, TheirRunTimeRecordTellsAllOfThem) {
  const CRuntimeClass* const record = spec.record;
  EXPECT_EQ(point->GetRuntimeClass(), record);
  EXPECT_EQ(record->m_lpszClassName, spec.name);
  EXPECT_EQ(record->m_nObjectSize, spec.size + kLonger);
  EXPECT_EQ(record->m_wSchema, 0xFFFFU);
  EXPECT_EQ(record->m_pfnCreateObject, nullptr);
  EXPECT_EQ(record->CreateObject(), nullptr);
  EXPECT_EQ(record->m_pfnGetBaseClass(), spec.base);
  EXPECT_EQ(record->m_pNextClass, nullptr);
  EXPECT_EQ(record->m_pClassInit, nullptr);
  EXPECT_TRUE(point->IsKindOf(spec.base));
  EXPECT_TRUE(point->IsKindOf(RUNTIME_CLASS(CDPDataPt)));
  EXPECT_TRUE(point->IsKindOf(RUNTIME_CLASS(CObject)));
}

TEST_P(Points, AreOfNoOtherClass) {
  for (const PointSpec& other : PointSpecs()) {
    EXPECT_EQ(point->IsKindOf(other.record) != 0, other.name == spec.name) << other.name;
  }
}

TEST_P(Points, AreAsLargeAsTheyAndTheirArraysSay) {
  const auto size = static_cast<unsigned>(spec.size + kLonger);
  EXPECT_EQ(point->GetObjectSize(), size);
  const CDPADataPtAr array(point.get(), 10);
  EXPECT_EQ(array.GetBufSizeInBytes(), 10 * size);
  const auto* const first = reinterpret_cast<const unsigned char*>(point.get());
  for (const unsigned index : {0U, 1U, 7U, 100000U}) {
    const std::size_t away = std::size_t{index} * size;
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(array.GetAt(index)),
              reinterpret_cast<std::uintptr_t>(first) + away);
    EXPECT_EQ(array[index], array.GetAt(index));
  }
}

TEST_P(Points, StoreTheirRecordAlone) {
  Fill(*point);
  point->SetFlag(0xFF);
  EXPECT_EQ(Stored(*point).size(), static_cast<std::size_t>(spec.stored));
  if (spec.stored != 0) {
    const Bytes bytes = Stored(*point);
    Bytes start = {0, 0, 0, 0, 0, 0};
    const unsigned date = kAt.GetDate().GetJulianDate();
    start[0] = static_cast<unsigned char>(date & 0xFF);
    start[1] = static_cast<unsigned char>(date >> 8);
    // 9:31:00 is 34260, 0x85D4.
    start[2] = 0xD4;
    start[3] = 0x85;
    const Bytes floats = Hex("00002041");  // 10
    start.insert(start.end(), floats.begin(), floats.end());
    EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + 10), start);
    auto loaded = spec.make();
    Load(*loaded, bytes);
    EXPECT_EQ(loaded->IsEqualTo(point.get()), 1);
    EXPECT_FALSE(loaded->HasFlag(0xFF));
  }
}

TEST_P(Points, LoadAsManyBytesAsTheyStore) {
  Fill(*point);
  const auto before = spec.copy(*point);
  Bytes bytes = Stored(*point);
  bytes.push_back(0x77);
  CMemFile file(bytes.data(), bytes.size());
  CArchive archive(&file, CArchive::load);
  point->Serialize(archive);
  EXPECT_EQ(point->IsEqualTo(before.get()), 1);
  std::uint8_t behind = 0;
  archive >> behind;
  EXPECT_EQ(behind, 0x77);
}

TEST_P(Points, SerializeTouchesNoHeap) {
  CMemFile file;
  CArchive archive(&file, CArchive::store);
  const pxd::test::AllocationCounter allocations;
  for (int i = 0; i < 50; ++i) {
    point->Serialize(archive);
  }
  EXPECT_EQ(allocations.Count(), 0U);
}

TEST_P(Points, StartNullWithoutFlags) {
  EXPECT_FALSE(point->HasFlag(0xFF));
  EXPECT_EQ(point->IsNull(), 1);
  EXPECT_EQ(point->HasNullPrice(), 1);
  EXPECT_EQ(point->HasDeleteValue(), 0);
  EXPECT_EQ(
      point->GetZRDateTime(),
      IsCnv() ? CZRDateTime(CZRDate(static_cast<unsigned short>(0)), CZRTime(0)) : CZRDateTime());
  for (unsigned col = 0; col < Real(); ++col) {
    EXPECT_EQ(Get(*point, col), 0.0);
  }
}

// A conversion answers by a mark of its own, which none of this clears.
TEST_P(Points, AreNullByTheirStampAndEveryValue) {
  for (unsigned col = 0; col < Real(); ++col) {
    auto one = spec.make();
    Set(*one, col, 1);
    EXPECT_EQ(one->IsNull(), IsCnv() ? 1 : 0) << col;
    Set(*one, col, -0.0);
    EXPECT_EQ(one->IsNull(), 1) << "minus 0 is 0, column " << col;
  }
  const CZRDate nullDate(CZRDate::GetNullJulianDate());
  const CZRTime nullTime(CZRTime::GetNullTime());
  point->SetZRDateTime(CZRDateTime(nullDate, CZRTime(0)));
  const bool byDateAlone = spec.name == "CDPOptDaily";
  EXPECT_EQ(point->IsNull(), IsCnv() || byDateAlone ? 1 : 0);
  point->SetZRDateTime(CZRDateTime(CZRDate(static_cast<unsigned short>(0xFFFE)), nullTime));
  EXPECT_EQ(point->IsNull(), IsCnv() ? 1 : 0);
  point->SetZRDateTime(CZRDateTime(nullDate, nullTime));
  EXPECT_EQ(point->IsNull(), 1);
}

TEST_P(Points, HaveANullPriceByTheFirstValueOrByThePricesTheirClassAsks) {
  const bool all = IsPlain() || spec.name == "CDPCDblOHLCUDUTO";
  const unsigned prices = spec.ohlc ? 4 : 1;
  for (const double zero : {0.0, -0.0}) {
    auto zeros = Filled();
    for (unsigned col = 0; col < Real(); ++col) {
      auto one = Filled();
      EXPECT_EQ(one->HasNullPrice(), 0);
      Set(*one, col, zero);
      EXPECT_EQ(one->HasNullPrice(), !all && col < prices ? 1 : 0) << col;
      Set(*zeros, col, zero);
    }
    EXPECT_EQ(zeros->HasNullPrice(), 1) << "whatever the stamp";
  }
}

TEST_P(Points, DescribeTheirColumns) {
  EXPECT_EQ(point->GetNumCols(), spec.numCols);
  for (unsigned col = 0; col < Real(); ++col) {
    const ColumnSpec& column = spec.columns[col];
    EXPECT_STREQ(point->GetStringHeaderForCol(col), column.header.c_str());
    EXPECT_EQ(point->GetDataTypeForCol(col), column.dataType) << col;
    if (IsTick()) {
      continue;  // described by the catalogue
    }
    CDPValueInfo info;
    point->GetDPValueInfoForCol(col, CField(999), info);
    EXPECT_EQ(info.GetFieldID(), column.field) << col;
    EXPECT_EQ(info.GetFieldType(), column.fieldType) << col;
    EXPECT_EQ(info.GetDataSize(), IsCnv() ? 8U : 4U) << col;

    CField field(999);
    CDPValueInfo infoEx;
    CDPValue value;
    Set(*point, col, 7);
    point->GetDPValueInfoForColEx(col, field, infoEx, value);
    EXPECT_EQ(infoEx.GetFieldID(), column.field) << col;
    EXPECT_EQ(infoEx.GetFieldType(), column.fieldType) << col;
    EXPECT_EQ(infoEx.GetDataSize(), IsCnv() ? 8U : 4U) << col;
    EXPECT_EQ(IsCnv() ? value.GetDouble() : static_cast<double>(value.GetFloat()), 7.0) << col;
  }
}

TEST_P(Points, FindTheColumnOfAField) {
  for (unsigned col = 0; col < Real(); ++col) {
    unsigned found = 99;
    const int result = point->GetColForColField(CField(1), CField(spec.columns[col].field), found);
    EXPECT_EQ(result, spec.fieldMatch < 0 ? 0 : spec.fieldMatch) << col;
    EXPECT_EQ(found, spec.fieldMatch < 0 ? 99U : col);
  }
  for (const unsigned short field :
       std::vector<unsigned short>{0, 231, 236, 325, 494, 519, 0xFFFF}) {
    unsigned found = 99;
    EXPECT_EQ(point->GetColForColField(CField(235), CField(field), found), 0);
    EXPECT_EQ(found, 99U) << field;
  }
}

TEST_P(Points, EachColumnIsItsOwn) {
  Fill(*point);
  for (unsigned col = 0; col < Real(); ++col) {
    EXPECT_EQ(Get(*point, col), 10.0 + col);
    CDPValue value;
    point->GetDPValueForColEx(col, value, 0);
    EXPECT_EQ(IsCnv() ? value.GetDouble() : static_cast<double>(value.GetFloat()), 10.0 + col);
  }
}

TEST_P(Points, ColumnsOutOfRangeAreAnsweredAsEachOperationSays) {
  for (const unsigned col : {Beyond(), Beyond() + 1, 13U, 0xFFFFFFFFU}) {
    SCOPED_TRACE(col);
    Fill(*point);
    const Bytes before = Stored(*point);
    CDPValue value(77.0);
    point->GetDPValueForCol(col, value);
    EXPECT_EQ(value.GetDouble(), 77.0);
    for (const unsigned char selector : std::vector<unsigned char>{0, 4, 5, 6}) {
      point->GetDPValueForColEx(col, value, selector);
      EXPECT_EQ(value.GetDouble(), 77.0);
      point->SetDPValueForColEx(col, value, selector);
    }
    point->SetDPValueForCol(col, value);
    EXPECT_EQ(point->GetDataTypeForCol(col), CDPDataPt::DataTypeNone);
    if (!IsTick()) {
      CDPValueInfo info;
      info.SetFieldID(1);
      info.SetFieldType(9);
      info.SetDataSize(5);
      point->GetDPValueInfoForCol(col, CField(), info);
      EXPECT_EQ(info.GetFieldID(), 1);
      EXPECT_EQ(info.GetFieldType(), 9);
      EXPECT_EQ(info.GetDataSize(), 5U);
      CField field;
      point->GetDPValueInfoForColEx(col, field, info, value);
      EXPECT_EQ(info.GetFieldID(), 1);
      EXPECT_EQ(info.GetFieldType(), 9);
      // The OHLC bars set the size before they look at the column.
      EXPECT_EQ(info.GetDataSize(), spec.ohlc ? 4U : 5U);
      EXPECT_EQ(value.GetDouble(), 77.0);
    }

    const auto expect = [](Unknown unknown, const auto& action) {
      const auto error = ThrownBy<CDPDataPtException>(action);
      if (unknown == Unknown::kNothing) {
        EXPECT_EQ(error, nullptr);
        return;
      }
      ASSERT_NE(error, nullptr);
      EXPECT_EQ(error->m_Error, unknown == Unknown::kThrows ? CDPDataPtException::DPErrorGeneral
                                                            : CDPDataPtException::DPErrorPlain);
      EXPECT_STREQ(error->m_strMessage, "Error: Invalid column");
    };
    if (spec.unknownText == "!") {
      expect(Unknown::kThrows, [&] { (void)point->GetStringValForCol(col); });
    } else {
      EXPECT_STREQ(point->GetStringValForCol(col), spec.unknownText.c_str());
    }
    expect(spec.setText, [&] { point->SetStringValForCol(col, "5"); });
    if (spec.name != "CDPTDblTick") {
      double number = -1;
      expect(spec.doubleColumn, [&] { number = point->GetDoubleValForCol(col); });
      EXPECT_EQ(number, spec.doubleColumn == Unknown::kThrows ? -1.0 : 0.0);
      expect(spec.name == "CDPTDblDblTick" ? Unknown::kThrows : spec.doubleColumn,
             [&] { point->SetDoubleValForCol(col, 5); });
    }
    EXPECT_EQ(Stored(*point), before) << "nothing was written";
  }
}

TEST_P(Points, ShowTheirColumnsAsText) {
  struct Text {
    float value;
    const char* price;
    const char* count;
  };
  const Text texts[] = {
      {0, "0", "0"},
      {1.5F, "1.5", "2"},
      {2.5F, "2.5", "2"},
      {-3, "-3", "-3"},
      {0.1F, "0.1", "0"},
      {1234567, "1234567", "1234567"},
      {12345678, "1.234568E+07", "12345678"},
      {0.0000125F, "1.25E-05", "0"},
      {3.4028234664e38F, "3.402823E+38", "340282346638528859811704183484516925440"},
      {-3.4028234664e38F, "-3.402823E+38", "-340282346638528859811704183484516925440"}};
  for (unsigned col = 0; col < Real(); ++col) {
    for (const Text& text : texts) {
      Set(*point, col, static_cast<double>(text.value));
      EXPECT_STREQ(point->GetStringValForCol(col), IsPlain()                 ? "N/A"
                                                   : spec.columns[col].price ? text.price
                                                                             : text.count)
          << col;
    }
  }
}

TEST_P(Points, ReadTheirColumnsFromText) {
  struct Text {
    const char* text;
    double value;
  };
  for (const Text& text : {Text{"12.5", 12.5}, Text{" -3 and more", -3}, Text{"1e3", 1000},
                           Text{"none", 0}, Text{"", 0}}) {
    for (unsigned col = 0; col < Real(); ++col) {
      Set(*point, col, 9);
      point->SetStringValForCol(col, text.text);
      EXPECT_EQ(Get(*point, col), IsPlain() ? 9.0 : text.value) << col << text.text;
    }
  }
}

TEST_P(Points, AnswerAndTakeDoublesAsTheClassSays) {
  Fill(*point);
  for (unsigned col = 0; col < Real(); ++col) {
    EXPECT_EQ(point->GetDoubleValForCol(col), spec.readsDoubles ? 10.0 + col : 0.0);
    point->SetDoubleValForCol(col, 0.1);
    EXPECT_EQ(Get(*point, col), spec.writesDoubles ? static_cast<double>(0.1F) : 10.0 + col);
  }
}

TEST_P(Points, TakeAndGiveTheirDateTime) {
  point->SetZRDateTime(kAt);
  EXPECT_EQ(point->GetZRDateTime(), kAt);
  point->SetZRDateTime(static_cast<unsigned short>(1234), 5678UL);
  const CZRDateTime other(CZRDate(static_cast<unsigned short>(1234)), CZRTime(5678));
  // In the other classes this form does nothing, as is meant.
  const CZRDateTime expected = spec.takesDateTimeParts ? other : kAt;
  EXPECT_EQ(point->GetZRDateTime(), expected);
  if (spec.givesDateTimeParts) {
    unsigned short date = 0;
    unsigned long time = 0;
    point->GetDPDateTime(date, time);
    EXPECT_EQ(date, expected.GetDate().GetJulianDate());
    EXPECT_EQ(time, expected.GetTime().GetTime());
  }
}

TEST_P(Points, GetDPDateTimeIsAFaultWhereItIsMissingAsMeant) {
  if (spec.givesDateTimeParts) {
    unsigned short date = 0;
    unsigned long time = 0;
    point->GetDPDateTime(date, time);
    EXPECT_NE(time, 1UL);
    return;
  }
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  unsigned short date = 0;
  unsigned long time = 0;
  EXPECT_DEATH(point->GetDPDateTime(date, time), "fault");
}

TEST_P(Points, FlagsAreTheCallers) {
  EXPECT_FALSE(point->HasFlag(0));
  point->SetFlag(0x04);
  EXPECT_TRUE(point->HasFlag(0x04));
  EXPECT_TRUE(point->HasFlag(0x06));
  EXPECT_FALSE(point->HasFlag(0x02));
  EXPECT_FALSE(point->HasFlag(0));
  point->SetFlag(0x01);
  EXPECT_TRUE(point->HasFlag(0x04)) << "flags add up";
}

TEST_P(Points, SetToNullClearsAllFlagsButOneInTheClassesThatDo) {
  Fill(*point);
  point->SetFlag(0x07);
  point->SetToNull();
  EXPECT_EQ(point->HasFlag(0x01), spec.keepsFlagsWhenNulled);
  EXPECT_TRUE(point->HasFlag(0x02));
  EXPECT_EQ(point->HasFlag(0x04), spec.keepsFlagsWhenNulled);
  EXPECT_EQ(point->IsNull(), 1);
  const auto fresh = spec.make();
  EXPECT_EQ(point->IsEqualTo(fresh.get()), 1);
}

TEST_P(Points, HasDeleteValueLooksAtTheFirstFloat) {
  Set(*point, 0, static_cast<double>(FloatOf(0x3F8E38DA)));
  EXPECT_EQ(point->HasDeleteValue(), IsPlain() ? 0 : 1);
  Set(*point, 0, static_cast<double>(FloatOf(0x3F8E38DB)));
  EXPECT_EQ(point->HasDeleteValue(), 0);
  if (Real() > 1) {
    Set(*point, 1, static_cast<double>(FloatOf(0x3F8E38DA)));
    EXPECT_EQ(point->HasDeleteValue(), 0);
  }
}

TEST_P(Points, OnlyTicksAndConversionsKnowTheEndOfPeriods) {
  const bool knows = IsTick() || IsCnv();
  Set(*point, 0, static_cast<double>(FloatOf(0x7F7FFFFF)));
  EXPECT_EQ(point->IsAnEndOfMinuteTick(), knows);
  EXPECT_FALSE(point->IsAnEndOfSecondTick());
  Set(*point, 0, static_cast<double>(FloatOf(0x7F7FFFFE)));
  EXPECT_FALSE(point->IsAnEndOfMinuteTick());
  EXPECT_EQ(point->IsAnEndOfSecondTick(), knows);
  Set(*point, 0, static_cast<double>(FloatOf(0x7F7FFFFD)));
  EXPECT_FALSE(point->IsAnEndOfMinuteTick());
  EXPECT_FALSE(point->IsAnEndOfSecondTick());
}

TEST_P(Points, HasDblValBetweenIsStrictOrAnOverlap) {
  struct Case {
    double low;
    double high;
    int between;
  };
  if (spec.ohlc) {
    Set(*point, 1, 20);  // high
    Set(*point, 2, 10);  // low
    for (const Case& c : {Case{5, 10, 0}, Case{5, 10.001, 1}, Case{12, 15, 1}, Case{5, 25, 1},
                          Case{20, 25, 0}, Case{19.999, 25, 1}, Case{15, 12, 1}}) {
      EXPECT_EQ(point->HasDblValBetween(c.low, c.high), c.between) << c.low << ' ' << c.high;
    }
    return;
  }
  Set(*point, 0, 10);
  for (const Case& c : {Case{10, 20, 0}, Case{5, 10, 0}, Case{5, 20, 1}, Case{9.999, 10.001, 1},
                        Case{20, 5, 0}, Case{11, 12, 0}}) {
    EXPECT_EQ(point->HasDblValBetween(c.low, c.high), IsPlain() ? 0 : c.between) << c.low;
  }
}

TEST_P(Points, HasVolBetweenIsStrictOnTheVolumesOfTheClassesThatAsk) {
  for (unsigned col = 0; col < Real(); ++col) {
    auto one = spec.make();
    Set(*one, col, 10);
    const bool isVolume = spec.hasVolume && spec.columns[col].dataType == CDPDataPt::DataTypeVolume;
    EXPECT_EQ(one->HasVolBetween(9.999, 10.001), isVolume ? 1 : 0) << col;
    EXPECT_EQ(one->HasVolBetween(10, 20), 0) << col;
    EXPECT_EQ(one->HasVolBetween(5, 10), 0) << col;
  }
}

TEST_P(Points, RelativeDifferencesAreTakenByTheFirstPriceOrByAllFour) {
  const unsigned compared = IsPlain() ? 0 : spec.ohlc ? 4 : 1;
  for (unsigned col = 0; col < Real(); ++col) {
    auto own = spec.make();
    auto other = spec.make();
    for (unsigned i = 0; i < Real(); ++i) {
      Set(*own, i, 100);
      Set(*other, i, 100);
    }
    Set(*own, col, 110);
    const int differs = col < compared ? 1 : 0;
    EXPECT_EQ(own->HasDblValDifferenceGreaterThan(0.09, other.get()), differs) << col;
    EXPECT_EQ(own->HasDblValDifferenceGreaterThan(-0.09, other.get()), differs) << col;
    EXPECT_EQ(own->HasDblValDifferenceGreaterThan(0.1, other.get()), 0) << col;
    EXPECT_EQ(own->HasDblValDifferenceGreaterThan(0.0999, other.get()), differs) << col;
    // The base of the share is the other's price: 10 of 110.
    EXPECT_EQ(other->HasDblValDifferenceGreaterThan(0.0910, own.get()), 0) << col;
    EXPECT_EQ(other->HasDblValDifferenceGreaterThan(0.0909, own.get()), differs) << col;
    Set(*other, col, 0);
    EXPECT_EQ(own->HasDblValDifferenceGreaterThan(1e300, other.get()), differs) << "infinite";
    Set(*own, col, 0);
    EXPECT_EQ(own->HasDblValDifferenceGreaterThan(0, other.get()), 0) << "0 / 0";
  }
}

TEST_P(Points, RelativeDifferencesAreTakenInDouble) {
  if (IsPlain()) {
    EXPECT_EQ(point->HasDblValDifferenceGreaterThan(0, point.get()), 0);
    return;
  }
  // As a float, the share of one third would be rounded up past the threshold.
  auto own = spec.make();
  auto other = spec.make();
  for (unsigned i = 0; i < Real(); ++i) {
    Set(*own, i, 3);
    Set(*other, i, 3);
  }
  Set(*own, 0, 4);
  const double share = 1.0 / 3.0;
  EXPECT_EQ(own->HasDblValDifferenceGreaterThan(share, other.get()), 0);
  EXPECT_EQ(own->HasDblValDifferenceGreaterThan(std::nextafter(share, 0.0), other.get()), 1);
}

TEST_P(Points, AreEqualByStampAndValues) {
  auto own = Filled();
  auto other = Filled();
  other->SetFlag(0xFF);
  EXPECT_EQ(own->IsEqualTo(other.get()), 1) << "flags don't count";
  for (unsigned col = 0; col < Real(); ++col) {
    other = Filled();
    Set(*other, col, 99);
    EXPECT_EQ(own->IsEqualTo(other.get()), 0) << col;
  }
  other = Filled();
  other->SetZRDateTime(session_test::At(3, 4, 2024, 9, 31, 1));
  EXPECT_EQ(own->IsEqualTo(other.get()), 0);
  other->SetZRDateTime(session_test::At(3, 5, 2024, 9, 31));
  EXPECT_EQ(own->IsEqualTo(other.get()), 0);
}

TEST_P(Points, SetEqualToCopiesTheRecordAndNotTheFlags) {
  auto other = Filled();
  other->SetFlag(0x10);
  point->SetFlag(0x20);
  point->SetEqualTo(other.get());
  EXPECT_EQ(point->IsEqualTo(other.get()), 1);
  EXPECT_TRUE(point->HasFlag(0x20));
  EXPECT_FALSE(point->HasFlag(0x10));
}

TEST_P(Points, SetEqualToReadsAShorterPointNoFurtherThanItGoes) {
  CDPCDblC other;
  CDPValue value(99.0F);
  other.SetDPValueForCol(0, value);
  const CZRDateTime at = session_test::At(3, 5, 2024, 10, 0);
  other.SetZRDateTime(at);
  Fill(*point);
  point->SetEqualTo(&other);
  EXPECT_EQ(point->GetZRDateTime(), IsPlain() ? kAt : at);
  for (unsigned col = 0; col < Real(); ++col) {
    const double taken = col == 0 ? 99.0 : 0.0;
    EXPECT_EQ(Get(*point, col), IsPlain() ? 10.0 + col : taken) << col;
  }
}

TEST_P(Points, CopyConstructionCopiesTheFlagsToo) {
  Fill(*point);
  point->SetFlag(0x10);
  const auto copy = spec.copy(*point);
  EXPECT_EQ(copy->IsEqualTo(point.get()), 1);
  EXPECT_TRUE(copy->HasFlag(0x10));
}

TEST_P(Points, TakeSampleValues) {
  for (unsigned col = 0; col < Real(); ++col) {
    Set(*point, col, 9);
  }
  point->SetZRDateTime(kAt);
  point->SetToDummyData(65536 + 3);
  if (spec.dummies.empty()) {
    EXPECT_EQ(point->GetZRDateTime(), kAt) << "nothing is done";
  } else {
    // 1 January 1997 is day 35431.
    EXPECT_EQ(point->GetZRDateTime(),
              CZRDateTime(CZRDate(static_cast<unsigned short>(35434)), CZRTime(12, 15, 30)));
  }
  for (unsigned col = 0; col < Real(); ++col) {
    EXPECT_EQ(Get(*point, col),
              col < spec.dummies.size() ? static_cast<double>(spec.dummies[col]) : 9.0)
        << col;
  }
}

TEST_P(Points, ResetPrevDailyRecLeavesThePointItself) {
  Fill(*point);
  const auto before = spec.copy(*point);
  point->ResetPrevDailyRec();
  EXPECT_EQ(point->IsEqualTo(before.get()), 1);
}

// ---- What holds for the types themselves ----

template <class Point>
class PointTypes : public testing::Test {};
using Concrete = testing::Types<CDPTDblTick, CDPTDblDblTick, CDPCDblC, CDPCDblDblC, CDPCDblDblH,
                                CDPCDblDblL, CDPCDblOHLCUDUT, CDPCDblOHLCUDUTO, CDPCDblOHLCUDUTOld,
                                CDPCDblOHLCUDUTOOld, CDPOptDaily, CDPCnv>;
TYPED_TEST_SUITE(PointTypes, Concrete);

TYPED_TEST(PointTypes, ArePackedWithTheRecordBehindTheFlagByte) {
  EXPECT_EQ(TypeParam::GetDataOffset(), static_cast<unsigned>(kHeader + 1));
  static_assert(alignof(TypeParam) == 1);
  TypeParam point;
  EXPECT_EQ(sizeof(TypeParam), point.GetObjectSize());
  typename TypeParam::Record record;
  record.m_Date = 0x1234;
  record.m_Time = 0x56789ABC;
  point.SetDPST(record);
  Bytes bytes(sizeof record);
  std::memcpy(bytes.data(),
              reinterpret_cast<const unsigned char*>(&point) + TypeParam::GetDataOffset(),
              bytes.size());
  EXPECT_EQ(bytes, InMemory(record));
  EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + 6), Hex("3412 bc9a7856"));
}

TYPED_TEST(PointTypes, AnArrayIsWalkedByItsStride) {
  TypeParam points[3];
  points[2].SetFlag(1);
  const CDPADataPtAr array(points, 3);
  EXPECT_EQ(array[1], &points[1]);
  EXPECT_TRUE(array[2]->HasFlag(1));
  EXPECT_EQ(array.GetBufSizeInBytes(), sizeof points);
}

TYPED_TEST(PointTypes, StaticMembersAreWhatTheOperationsTell) {
  TypeParam point;
  EXPECT_EQ(TypeParam::m_NumCols, point.GetNumCols());
  const unsigned headers = static_cast<unsigned>(std::size(TypeParam::m_ColHeaderStringArray));
  for (unsigned col = 0; col < headers; ++col) {
    EXPECT_STREQ(point.GetStringHeaderForCol(col), TypeParam::m_ColHeaderStringArray[col]);
  }
}

TYPED_TEST(PointTypes, AssignmentAndTheRecordLeaveTheFlags) {
  TypeParam own;
  TypeParam other;
  CDPValue value(3.0F);
  if constexpr (std::is_same_v<TypeParam, CDPCnv>) {
    value.SetDouble(3.0);
  }
  other.SetDPValueForCol(0, value);
  other.SetZRDateTime(kAt);
  other.SetFlag(0x10);
  own.SetFlag(0x20);
  own = other;
  EXPECT_EQ(own == other, 1);
  EXPECT_TRUE(own.HasFlag(0x20));
  EXPECT_FALSE(own.HasFlag(0x10));
  typename TypeParam::Record record;
  other.GetDPST(record);
  TypeParam third;
  third.SetFlag(0x20);
  third.SetDPST(record);
  EXPECT_EQ(third == other, 1);
  EXPECT_TRUE(third.HasFlag(0x20));
  EXPECT_FALSE(third.HasFlag(0x10));
}

template <class Point>
class PricedTypes : public testing::Test {};
using Priced =
    testing::Types<CDPTDblTick, CDPTDblDblTick, CDPCDblC, CDPCDblDblC, CDPCDblDblH, CDPCDblDblL,
                   CDPCDblOHLCUDUT, CDPCDblOHLCUDUTO, CDPCDblOHLCUDUTOld, CDPCDblOHLCUDUTOOld>;
TYPED_TEST_SUITE(PricedTypes, Priced);

TYPED_TEST(PricedTypes, AreAssignedTheirRecordWithoutTheFlags) {
  typename TypeParam::Record record;
  record.m_Date = 1234;
  record.m_Time = 5678;
  record.SetFloat(0, 3);
  TypeParam point;
  point.SetFlag(0x20);
  TypeParam& assigned = point = record;
  EXPECT_EQ(&assigned, &point);
  EXPECT_EQ(InMemory(point.GetDPST()), InMemory(record));
  EXPECT_TRUE(point.HasFlag(0x20));
}

// A host's class sees the calls that one operation makes of another.
template <class Point>
struct Watched : Point {
  using Point::SetZRDateTime;
  void SetZRDateTime(CZRDateTime dateTime) override {
    ++stamped;
    Point::SetZRDateTime(dateTime);
  }
  void GetDPValueForCol(unsigned col, CDPValue& value) const override {
    ++gets;
    Point::GetDPValueForCol(col, value);
  }
  void SetDPValueForCol(unsigned col, CDPValue& value) override {
    ++sets;
    Point::SetDPValueForCol(col, value);
  }
  void GetDPValueInfoForCol(unsigned, CField, CDPValueInfo&) const override {
    ++infos;
    getsBeforeInfo = gets;
  }
  mutable int gets = 0;
  mutable int infos = 0;
  mutable int getsBeforeInfo = 0;
  int sets = 0;
  int stamped = 0;
};

TYPED_TEST(PricedTypes, ReachTheirOtherFormsThroughTheSlots) {
  Watched<TypeParam> point;
  CField field(235);
  CDPValueInfo info;
  CDPValue value(7.0F);
  point.GetDPValueInfoForColEx(0, field, info, value);
  EXPECT_EQ(point.infos, 1);
  EXPECT_EQ(point.getsBeforeInfo, 1) << "the value comes first";
  // The bar with a running record has the forms with a selector itself; see its own tests.
  const bool ownForms = std::is_same_v<TypeParam, CDPCDblOHLCUDUTO>;
  point.GetDPValueForColEx(0, value, 5);
  EXPECT_EQ(point.gets, ownForms ? 1 : 2);
  point.SetDPValueForColEx(0, value, 5);
  EXPECT_EQ(point.sets, ownForms ? 0 : 1);
  // The newer OHLC bars write the null stamp into their record.
  const bool plainNull =
      std::is_same_v<TypeParam, CDPCDblOHLCUDUT> || std::is_same_v<TypeParam, CDPCDblOHLCUDUTO>;
  point.SetToNull();
  EXPECT_EQ(point.stamped, plainNull ? 0 : 1);
}

// The selectors with which the short forms call those that take one.
template <class Point>
struct Selected : Point {
  void GetDPValueForColEx(unsigned, CDPValue&, unsigned char selector) const override {
    got = selector;
  }
  void SetDPValueForColEx(unsigned, CDPValue&, unsigned char selector) override { set = selector; }
  mutable int got = -1;
  int set = -1;
};

template <class Point>
void ExpectSelectors(int got, int set) {
  Selected<Point> point;
  CDPValue value;
  point.GetDPValueForCol(0, value);
  point.SetDPValueForCol(0, value);
  EXPECT_EQ(point.got, got);
  EXPECT_EQ(point.set, set);
}

TEST(PointsOfTwoRecords, TheirShortFormsCallTheOthersWithASelector) {
  ExpectSelectors<CDPCDblOHLCUDUTO>(0, 4);
  ExpectSelectors<CDPOptDaily>(4, 4);
  ExpectSelectors<CDPCnv>(4, 4);
}

template <class Point>
struct Opened : Point {
  using Point::_GetBaseClass;
};

TYPED_TEST(PointTypes, GiveTheirRecordAndTheirBasesWithoutAnObject) {
  constexpr bool isTick = std::is_base_of_v<CDPTDataPtTick, TypeParam>;
  EXPECT_EQ(TypeParam::GetThisClass(), TypeParam().GetRuntimeClass());
  EXPECT_EQ(Opened<TypeParam>::_GetBaseClass(),
            isTick ? RUNTIME_CLASS(CDPTDataPtTick) : RUNTIME_CLASS(CDPCDataPtCalculated));
}

// ---- The table of virtual operations ----

#if defined(__GNUC__) && (defined(__x86_64__) || defined(__i386__))

// The place of an operation in the table, which its pointer holds one above its distance in bytes.
// The exact signature picks it.
template <class Signature, class Class>
int PlaceOf(Signature Class::*operation) {
  std::intptr_t word = 0;
  static_assert(sizeof operation >= sizeof word);
  std::memcpy(&word, &operation, sizeof word);
  EXPECT_EQ(word % 2, 1) << "not virtual";
  return static_cast<int>(word / static_cast<std::intptr_t>(sizeof(void*)));
}

TEST(PointSlots, StandInOrderWithTheseSignatures) {
  using P = CDPDataPt;
  using B = CDPCDataPtCalculated;
  const std::vector<int> places = {
      PlaceOf<void(CArchive&)>(&P::Serialize),
      PlaceOf<void() const>(&P::AssertValid),
      PlaceOf<void(CDumpContext&) const>(&P::Dump),
      PlaceOf<unsigned() const>(&P::GetNumCols),
      PlaceOf<CString(unsigned)>(&P::GetStringHeaderForCol),
      PlaceOf<unsigned() const>(&P::GetObjectSize),
      PlaceOf<int(const CField&, const CField&, unsigned&) const>(&P::GetColForColField),
      PlaceOf<void(unsigned, CField, CDPValueInfo&) const>(&P::GetDPValueInfoForCol),
      PlaceOf<void(unsigned, CField&, CDPValueInfo&, CDPValue&) const>(&P::GetDPValueInfoForColEx),
      PlaceOf<void(unsigned, CDPValue&) const>(&P::GetDPValueForCol),
      PlaceOf<void(unsigned, CDPValue&, unsigned char) const>(&P::GetDPValueForColEx),
      PlaceOf<void(unsigned, CDPValue&)>(&P::SetDPValueForCol),
      PlaceOf<void(unsigned, CDPValue&, unsigned char)>(&P::SetDPValueForColEx),
      PlaceOf<void()>(&P::ResetPrevDailyRec),
      PlaceOf<P::DataType(unsigned)>(&P::GetDataTypeForCol),
      PlaceOf<CString(unsigned)>(&P::GetStringValForCol),
      PlaceOf<void(unsigned, CString)>(&P::SetStringValForCol),
      PlaceOf<double(unsigned) const>(&P::GetDoubleValForCol),
      PlaceOf<void(unsigned, double)>(&P::SetDoubleValForCol),
      PlaceOf<CZRDateTime()>(&P::GetZRDateTime),
      PlaceOf<void(unsigned short&, unsigned long&) const>(&P::GetDPDateTime),
      PlaceOf<void(unsigned short, unsigned long)>(&P::SetZRDateTime),
      PlaceOf<void(CZRDateTime)>(&P::SetZRDateTime),
      PlaceOf<int(double, double) const>(&P::HasDblValBetween),
      PlaceOf<int(double, double) const>(&P::HasVolBetween),
      PlaceOf<int(double, P*) const>(&P::HasDblValDifferenceGreaterThan),
      PlaceOf<int(CZRGSQuote&)>(&P::SetFromQuote),
      PlaceOf<int(CZRGSQuote&) const>(&P::AppendToQuote),
      PlaceOf<void(unsigned)>(&P::SetToDummyData),
      PlaceOf<int(P*) const>(&P::IsEqualTo),
      PlaceOf<void(P*)>(&P::SetEqualTo),
      PlaceOf<void()>(&P::SetToNull),
      PlaceOf<int() const>(&P::IsNull),
      PlaceOf<int() const>(&P::HasNullPrice),
      PlaceOf<int() const>(&P::HasDeleteValue),
      PlaceOf<bool() const>(&P::IsAnEndOfMinuteTick),
      PlaceOf<bool() const>(&P::IsAnEndOfSecondTick),
      PlaceOf<int(unsigned, float, int)>(&P::AdjustData),
      PlaceOf<B::AddDataPtReturn(const P*, const CResoln&, const CZRGSSession&, int, B::TrendType&,
                                 const P*)>(&B::AddDataPt),
      PlaceOf<void(const P*, B::TrendType&, const P*)>(&B::IncludeDataPtData),
      PlaceOf<int(const CZRDateTime&, const CResoln&, const CZRGSSession&) const>(
          &B::CheckCloseTime),
  };
  // Slots 2 to 42; a destructor, which is slot 1, takes two places here.
  ASSERT_EQ(places.size(), 41U);
  for (std::size_t i = 0; i < places.size(); ++i) {
    EXPECT_EQ(places[i], static_cast<int>(i) + 3) << "slot " << i + 2;
  }
  EXPECT_EQ(PlaceOf(&P::GetRuntimeClass), 0);
}

#endif

template <class... Enumerations>
constexpr bool kArePlainInts = ((std::is_same_v<std::underlying_type_t<Enumerations>, int> &&
                                 std::is_convertible_v<Enumerations, int>)&&...);
static_assert(
    kArePlainInts<CDPDataPt::DataType, CDPCDataPtCalculated::DPTStatus,
                  CDPCDataPtCalculated::AddDataPtReturn, CDPCDataPtCalculated::TrendType>);

TEST(PointBases, HaveTheirRunTimeRecords) {
  struct Row {
    const CRuntimeClass* record;
    const char* name;
    const CRuntimeClass* base;
  };
  for (const Row& row :
       {Row{RUNTIME_CLASS(CDPDataPt), "CDPDataPt", RUNTIME_CLASS(CObject)},
        Row{RUNTIME_CLASS(CDPTDataPtTick), "CDPTDataPtTick", RUNTIME_CLASS(CDPDataPt)},
        Row{RUNTIME_CLASS(CDPCDataPtCalculated), "CDPCDataPtCalculated",
            RUNTIME_CLASS(CDPDataPt)}}) {
    EXPECT_STREQ(row.record->m_lpszClassName, row.name);
    EXPECT_EQ(row.record->m_nObjectSize, kHeader + 1);
    EXPECT_EQ(row.record->m_wSchema, 0xFFFFU);
    EXPECT_EQ(row.record->m_pfnCreateObject, nullptr);
    EXPECT_EQ(row.record->m_pfnGetBaseClass(), row.base);
  }
}

TEST(PointBases, DataTypesHaveTheirValues) {
  EXPECT_EQ(CDPDataPt::DataTypePrice, 0);
  EXPECT_EQ(CDPDataPt::DataTypeVolume, 1);
  EXPECT_EQ(CDPDataPt::DataTypeCount, 2);
  EXPECT_EQ(CDPDataPt::DataTypeTickDir, 3);
  EXPECT_EQ(CDPDataPt::DataTypeNone, 4);
}

TEST(PointArray, KnowsItsClass) {
  EXPECT_STREQ(CDPADataPtAr(nullptr, 0).GetRuntimeClass()->m_lpszClassName, "CDPADataPtAr");
}

}  // namespace
