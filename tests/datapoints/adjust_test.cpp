// AdjustData, bit for bit.
#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "tests/datapoints/bytes.h"
#include "tests/datapoints/point_specs.h"

namespace {

using namespace datapoints_test;

constexpr unsigned kAdd = 0;
constexpr unsigned kSubtract = 1;
constexpr unsigned kMultiply = 2;
constexpr unsigned kDivide = 3;
constexpr unsigned kReciprocal = 4;

// Which columns a target touches, and whether a division is one by the reciprocal.
struct Touched {
  std::vector<unsigned> columns;
  bool byReciprocal;
};

Touched TouchedBy(const PointSpec& spec, int target) {
  if (spec.name == "CDPTDblTick") {
    return {{0}, false};  // whatever the target, as is meant
  }
  if (spec.ohlc) {
    if (target == 0) {
      return {{0, 1, 2, 3}, true};
    }
    if (target == 1) {
      return {{4, 5, 6, 7}, true};
    }
    if (target == 2 && spec.name == "CDPCDblOHLCUDUTO") {
      return {{12}, false};
    }
    if (target == 2 && spec.name == "CDPCDblOHLCUDUTOOld") {
      return {{8}, false};
    }
    return {{}, false};
  }
  if (target == 0) {
    return {{0}, false};
  }
  // Of the points with one volume only the trade adjusts it, as is meant.
  if (target == 1 && spec.name == "CDPTDblDblTick") {
    return {{1}, false};
  }
  return {{}, false};
}

class Adjust : public testing::TestWithParam<PointSpec> {
 protected:
  const PointSpec& spec = GetParam();

  [[nodiscard]] bool Adjusts() const { return spec.stored != 0; }
  [[nodiscard]] unsigned Columns() const { return static_cast<unsigned>(spec.columns.size()); }
  [[nodiscard]] std::unique_ptr<CDPDataPt> PointOf(float number) const {
    auto point = spec.make();
    for (unsigned col = 0; col < Columns(); ++col) {
      CDPValue value(number);
      if (spec.name == "CDPCnv") {
        value.SetDouble(static_cast<double>(number));
      }
      point->SetDPValueForCol(col, value);
    }
    return point;
  }
  // Adjusts a point that holds `before` in every column, and expects the touched ones to become
  // `direct` or `reciprocal`.
  void Expect(unsigned operation, float factor, float before, float direct,
              float reciprocal) const {
    for (const int target : {0, 1, 2, 3, -1, 1000, std::numeric_limits<int>::min()}) {
      const auto point = PointOf(before);
      const auto untouched = PointOf(before);
      EXPECT_EQ(point->AdjustData(operation, factor, target), Adjusts() ? 1 : 0);
      if (!Adjusts()) {
        EXPECT_EQ(point->IsEqualTo(untouched.get()), 1);
        continue;
      }
      const Touched touched = TouchedBy(spec, target);
      for (unsigned col = 0; col < Columns(); ++col) {
        float expected = before;
        for (const unsigned column : touched.columns) {
          expected = column == col ? (touched.byReciprocal ? reciprocal : direct) : expected;
        }
        CDPValue value;
        point->GetDPValueForCol(col, value);
        EXPECT_EQ(BitsOf(value.GetFloat()), BitsOf(expected))
            << "column " << col << " target " << target << " is " << value.GetFloat();
      }
    }
  }
  void Expect(unsigned operation, float factor, float before, float after) const {
    Expect(operation, factor, before, after, after);
  }
};

INSTANTIATE_TEST_SUITE_P(All, Adjust, testing::ValuesIn(PointSpecs()),
                         [](const auto& test) { return test.param.name; });

TEST_P(Adjust, AddsSubtractsAndMultiplies) {
  Expect(kAdd, 1.5F, 10, 11.5F);
  Expect(kAdd, 1, 0, 1);  // a null isn't respected
  Expect(kSubtract, 1.5F, 10, 8.5F);
  Expect(kMultiply, 0.5F, 10, 5);
  Expect(kMultiply, 0, 10, 0);
  Expect(kMultiply, -1, 0, -0.0F);
  // No snapping and no clamping: the nearest float of the exact result. 0.1f is 0x3DCCCCCD, three
  // times that 0x3E99999A, and 2^24 + 1 a tie that goes to the even 2^24.
  Expect(kMultiply, 3, FloatOf(0x3DCCCCCD), FloatOf(0x3E99999A));
  Expect(kAdd, 1, 16777216, 16777216);
}

TEST_P(Adjust, DividesByTheReciprocalInTheRunsOfFour) {
  Expect(kDivide, 2, 9, 4.5F, 4.5F);
  Expect(kDivide, 3, 9, 3, 3);
  // The float nearest 1 / 47 is 0x3CAE4C41, a little less than that; 47 times it is rounded to
  // 0x3F7FFFFF, the float below 1.
  Expect(kDivide, 47, 47, 1, FloatOf(0x3F7FFFFF));
  // The float nearest 1 / 41 is 0x3CC7CE0C, a little less than that; 41 times it likewise.
  Expect(kDivide, 41, 41, 1, FloatOf(0x3F7FFFFF));
}

TEST_P(Adjust, DivisionBy0FollowsTheFloats) {
  const float infinity = std::numeric_limits<float>::infinity();
  Expect(kDivide, 0, 9, infinity);
  Expect(kDivide, -0.0F, 9, -infinity);
  for (const int target : {0, 1, 2}) {
    const auto point = PointOf(0);
    point->AdjustData(kDivide, 0, target);
    if (!Adjusts()) {
      continue;
    }
    for (const unsigned col : TouchedBy(spec, target).columns) {
      CDPValue value;
      point->GetDPValueForCol(col, value);
      EXPECT_NE(value.GetFloat(), value.GetFloat()) << "0 by 0 is a NaN";
    }
  }
}

TEST_P(Adjust, InvertsAllButZeros) {
  Expect(kReciprocal, 99, 4, 0.25F);
  Expect(kReciprocal, 0, 0, 0);
  Expect(kReciprocal, 0, -0.0F, -0.0F);
  // The float nearest one third.
  Expect(kReciprocal, 0, 3, FloatOf(0x3EAAAAAB));
}

TEST_P(Adjust, AnUnknownOperationChangesNothingAndAnswersTheSame) {
  for (const unsigned operation : {5U, 7U, 0xFFFFFFFFU}) {
    Expect(operation, 1, 10, 10);
  }
}

TEST_P(Adjust, MarkersAreValuesLikeAnyOther) {
  Expect(kMultiply, 2, FloatOf(0x3F8E38DA), FloatOf(0x400E38DA));
  // The float below half of 2^128 less 2^103.
  Expect(kMultiply, 0.5F, FloatOf(0x7F7FFFFF), FloatOf(0x7EFFFFFF));
}

TEST_P(Adjust, LeavesStampAndFlags) {
  auto point = PointOf(10);
  const CZRDateTime at(CZRDate(static_cast<unsigned short>(45000)), CZRTime(1234));
  point->SetZRDateTime(at);
  point->SetFlag(5);
  for (const int target : {0, 1, 2}) {
    point->AdjustData(kAdd, 1, target);
  }
  EXPECT_EQ(point->GetZRDateTime(), at);
  EXPECT_TRUE(point->HasFlag(1));
  EXPECT_TRUE(point->HasFlag(4));
}

TEST(AdjustReciprocal, SkipsZerosValueByValue) {
  CDPCDblOHLCUDUT bar;
  bar.SetValues(0, 4, 2, 0, 0, 0, 0, 0, 0, 0);
  EXPECT_EQ(bar.AdjustData(kReciprocal, 0, 0), 1);
  EXPECT_EQ(bar.GetDoubleValForCol(0), 0.0);
  EXPECT_EQ(bar.GetDoubleValForCol(1), 0.25);
  EXPECT_EQ(bar.GetDoubleValForCol(2), 0.5);
  EXPECT_EQ(bar.GetDoubleValForCol(3), 0.0);
}

TEST(AdjustBars, LeaveTheRunningDailyRecord) {
  CDPCDblOHLCUDUTO bar;
  bar.m_PrevDailyRec.m_Open = 5;
  bar.m_PrevDailyRec.m_UpVol = 6;
  bar.m_PrevDailyRec.m_OpenInt = 7;
  for (const int target : {0, 1, 2}) {
    bar.AdjustData(kAdd, 1, target);
  }
  EXPECT_EQ(+bar.m_PrevDailyRec.m_Open, 5.0F);
  EXPECT_EQ(+bar.m_PrevDailyRec.m_UpVol, 6.0F);
  EXPECT_EQ(+bar.m_PrevDailyRec.m_OpenInt, 7.0F);
}

TEST(AdjustTicks, LeaveTheTickWord) {
  CDPTDblDblTick tick;
  tick.SetValues(1, 2, 3);
  for (const int target : {0, 1, 2, 3}) {
    EXPECT_EQ(tick.AdjustData(kAdd, 1, target), 1);
  }
  EXPECT_EQ(+tick.GetDPST().m_TickDir, 3);
}

TEST(AdjustOperations, HaveTheirNumbers) {
  EXPECT_EQ(CDPDataPt::AdjustAdd, kAdd);
  EXPECT_EQ(CDPDataPt::AdjustSubtract, kSubtract);
  EXPECT_EQ(CDPDataPt::AdjustMultiply, kMultiply);
  EXPECT_EQ(CDPDataPt::AdjustDivide, kDivide);
  EXPECT_EQ(CDPDataPt::AdjustReciprocal, kReciprocal);
  EXPECT_EQ(CDPDataPt::AdjustPrices, 0);
  EXPECT_EQ(CDPDataPt::AdjustVolumes, 1);
  EXPECT_EQ(CDPDataPt::AdjustOpenInt, 2);
}

TEST(Adjust, ItsNamesAreKnownWithoutTheirClassToo) {
  CDPTDblTick tick;
  tick.SetDoubleValForCol(0, 3.0);
  EXPECT_EQ(tick.AdjustData(AdjustMultiply, 2.0F, AdjustPrices), 1);
  EXPECT_EQ(tick.GetDoubleValForCol(0), 6.0);
  const unsigned int operations[] = {AdjustAdd, AdjustSubtract, AdjustMultiply, AdjustDivide,
                                     AdjustReciprocal};
  for (unsigned int value = 0; value < 5; ++value) {
    EXPECT_EQ(operations[value], value);
  }
  EXPECT_EQ(AdjustPrices, 0);
  EXPECT_EQ(AdjustVolumes, 1);
  EXPECT_EQ(AdjustOpenInt, 2);
}

}  // namespace
