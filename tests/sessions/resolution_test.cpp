#include <pxdutil/sessions/resolution.h>

#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <pxdutil/foundation/archive.h>
#include <pxdutil/foundation/exception.h>
#include <pxdutil/foundation/file.h>
#include <pxdutil/sessions/session.h>

#include "session_helpers.h"

namespace {

using session_test::Info;
using session_test::List;

CResoln R(unsigned short unit, unsigned short quantity) {
  return CResoln(ZRGS_RESOLUTION{unit, quantity});
}

TEST(Resolution, StartsWithZeroes) {
  const CResoln resolution;
  EXPECT_EQ(resolution.GetResolnUnit(), 0);
  EXPECT_EQ(resolution.GetResolnQty(), 0);
}

TEST(Resolution, TakesTheRecordAsItIs) {
  CResoln resolution = R(9, 0);
  EXPECT_EQ(resolution.GetResolnUnit(), 9);
  EXPECT_EQ(resolution.GetResolnQty(), 0);
  resolution = ZRGS_RESOLUTION{3, 5};
  EXPECT_EQ(resolution.GetResolnUnit(), 3);
  EXPECT_EQ(resolution.GetResolnQty(), 5);
}

TEST(Resolution, NamesTypesAndSpansOfTheUnits) {
  const struct {
    unsigned short unit;
    const char* name;
    CResoln::ResolnUnitTypeEnum type;
    CZRDateTimeSpan spanOfSeven;
  } rows[] = {
      {0, "", CResoln::ResolnTypeTick, CZRDateTimeSpan(0, 0)},
      {1, "Tick", CResoln::ResolnTypeTick, CZRDateTimeSpan(0, 7)},
      {2, "Second", CResoln::ResolnTypeSecond, CZRDateTimeSpan(0, 7)},
      {3, "Minute", CResoln::ResolnTypeMinute, CZRDateTimeSpan(0, 420)},
      {4, "Day", CResoln::ResolnTypeDay, CZRDateTimeSpan(7, 0)},
      {5, "Week", CResoln::ResolnTypeWeek, CZRDateTimeSpan(0, 0)},
      {6, "Month", CResoln::ResolnTypeMonth, CZRDateTimeSpan(0, 0)},
      {7, "Year", CResoln::ResolnTypeYear, CZRDateTimeSpan(0, 0)},
      {8, "", CResoln::ResolnTypeTick, CZRDateTimeSpan(0, 7)},
      {9, "", CResoln::ResolnTypeTick, CZRDateTimeSpan(0, 0)},
      {65535, "", CResoln::ResolnTypeTick, CZRDateTimeSpan(0, 0)},
  };
  int type = 0;
  for (const auto& row : rows) {
    const CResoln resolution = R(row.unit, 7);
    EXPECT_STREQ(CResoln::GetStringForResolnUnit(row.unit), row.name) << row.unit;
    EXPECT_STREQ(resolution.GetStringForResolnUnit(), row.name) << row.unit;
    EXPECT_EQ(resolution.GetResolnUnitType(), row.type) << row.unit;
    EXPECT_EQ(resolution.GetDateTimeSpan(), row.spanOfSeven) << row.unit;
    if (row.unit >= 1 && row.unit <= 7) {
      EXPECT_EQ(static_cast<int>(row.type), type++);
    }
  }
}

TEST(Resolution, SpanOfManyMinutesCarriesIntoDays) {
  EXPECT_EQ(R(3, 1440).GetDateTimeSpan(), CZRDateTimeSpan(1, 0));
  EXPECT_EQ(R(3, 65535).GetDateTimeSpan(), CZRDateTimeSpan(45, 44100));
  EXPECT_EQ(R(4, 65535).GetDateTimeSpan(), CZRDateTimeSpan(65535, 0));
}

TEST(Resolution, IgnoresUnitsOutside1To8) {
  CResoln resolution = R(3, 1);
  constexpr unsigned short kBad[] = {0, 9, 65535};
  for (const unsigned short bad : kBad) {
    resolution.SetResolnUnit(bad);
    EXPECT_EQ(resolution.GetResolnUnit(), 3);
  }
  for (unsigned short unit = 1; unit <= 8; ++unit) {
    resolution.SetResolnUnit(unit);
    EXPECT_EQ(resolution.GetResolnUnit(), unit);
  }
}

TEST(Resolution, AQuantityOfZeroBecomesOne) {
  CResoln resolution = R(3, 5);
  resolution.SetResolnQty(0);
  EXPECT_EQ(resolution.GetResolnQty(), 1);
  resolution.SetResolnQty(65535);
  EXPECT_EQ(resolution.GetResolnQty(), 65535);
}

TEST(Resolution, TextHasAnSAboveOne) {
  const struct {
    unsigned short unit, quantity;
    const char* text;
  } rows[] = {
      {3, 1, "1 Minute"}, {3, 2, "2 Minutes"}, {3, 5, "5 Minutes"},        {4, 1, "1 Day"},
      {1, 3, "3 Ticks"},  {7, 0, "0 Year"},    {6, 65535, "65535 Months"}, {8, 1, ""},
      {0, 1, ""},         {9, 2, ""},
  };
  for (const auto& row : rows) {
    CString text("left over");
    R(row.unit, row.quantity).GetStringForResolution(text);
    EXPECT_STREQ(text, row.text);
  }
}

TEST(Resolution, PacksTheUnitHighAndTheQuantityLow) {
  EXPECT_EQ(static_cast<unsigned short>(R(3, 5)), 12293);
  EXPECT_EQ(static_cast<unsigned short>(R(8, 4095)), 0x8FFF);
  EXPECT_EQ(static_cast<unsigned short>(R(16, 1)), 1);
}

TEST(Resolution, APackedQuantityAbove4095SpillsIntoTheUnitAndThatIsMeant) {
  EXPECT_EQ(static_cast<unsigned short>(R(3, 4096)), 0x4000);
  EXPECT_EQ(static_cast<unsigned short>(R(3, 65535)), 0x2FFF);
}

TEST(Resolution, IsOrderedByUnitThenQuantity) {
  const CResoln rising[] = {R(1, 9), R(2, 1), R(2, 2), R(3, 1)};
  for (int i = 0; i < 4; ++i) {
    for (int j = 0; j < 4; ++j) {
      EXPECT_EQ(rising[i] == rising[j], i == j);
      EXPECT_EQ(rising[i] != rising[j], i != j);
      EXPECT_EQ(rising[i] < rising[j], i < j);
      EXPECT_EQ(rising[i] <= rising[j], i <= j);
    }
  }
}

TEST(ResolutionMultiple, IsJudgedByKind) {
  const struct {
    CResoln multiple, of;
    int result;
  } rows[] = {
      // Ticks against ticks by quantity; against the companion always; against others never.
      {R(1, 6), R(1, 3), 1},
      {R(1, 6), R(1, 4), 0},
      {R(1, 6), R(8, 4), 1},
      {R(1, 6), R(2, 3), 0},
      {R(8, 6), R(1, 3), 1},
      {R(8, 6), R(1, 4), 0},
      {R(8, 6), R(8, 4), 1},
      {R(0, 6), R(1, 3), 1},
      {R(9, 6), R(3, 3), 0},
      // Seconds against seconds alone.
      {R(2, 30), R(2, 15), 1},
      {R(2, 30), R(2, 7), 0},
      {R(2, 30), R(3, 1), 0},
      {R(2, 30), R(1, 1), 0},
      {R(2, 30), R(8, 1), 0},
      // Minutes against minutes by length.
      {R(3, 60), R(3, 15), 1},
      {R(3, 60), R(3, 60), 1},
      {R(3, 60), R(3, 7), 0},
      {R(3, 60), R(3, 120), 0},
      {R(3, 5), R(4, 1), 0},
      // Two days less a minute, and two days: the lengths are compared without their days.
      {R(3, 2879), R(3, 1439), 1},
      {R(3, 2880), R(3, 7), 0},
      // Days and longer against anything.
      {R(4, 1), R(3, 7), 1},
      {R(4, 1), R(4, 3), 1},
      {R(5, 1), R(6, 1), 1},
      {R(6, 1), R(7, 5), 1},
      {R(7, 1), R(1, 5), 1},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.multiple.IsEvenlyDivisibleBy(row.of), row.result)
        << row.multiple.GetResolnUnit() << ',' << row.multiple.GetResolnQty() << " by "
        << row.of.GetResolnUnit() << ',' << row.of.GetResolnQty();
  }
}

TEST(ResolutionMultiple, AWholeDayOfMinutesDividesByAnyMinutesAndThatIsMeant) {
  EXPECT_EQ(R(3, 1440).IsEvenlyDivisibleBy(R(3, 7)), 1);
  EXPECT_EQ(R(3, 1440).IsEvenlyDivisibleBy(R(3, 1440)), 1);
  EXPECT_EQ(R(3, 1440).IsEvenlyDivisibleBy(R(3, 0)), 1);
}

TEST(ResolutionMultiple, MinutesDivideByOtherKindsUnseenThoughSecondsDontAndThatIsMeant) {
  EXPECT_EQ(R(3, 5).IsEvenlyDivisibleBy(R(2, 7)), 1);
  EXPECT_EQ(R(3, 5).IsEvenlyDivisibleBy(R(0, 7)), 1);
  EXPECT_EQ(R(3, 5).IsEvenlyDivisibleBy(R(1, 7)), 1);
  EXPECT_EQ(R(3, 5).IsEvenlyDivisibleBy(R(8, 7)), 1);
  EXPECT_EQ(R(3, 5).IsEvenlyDivisibleBy(R(9, 7)), 1);
  EXPECT_EQ(R(3, 5).IsEvenlyDivisibleBy(R(5, 7)), 1);
  EXPECT_EQ(R(3, 5).IsEvenlyDivisibleBy(R(6, 7)), 1);
  EXPECT_EQ(R(3, 5).IsEvenlyDivisibleBy(R(7, 7)), 1);
  EXPECT_EQ(R(2, 300).IsEvenlyDivisibleBy(R(3, 5)), 0);
}

TEST(ResolutionMultiple, AZeroDivisorGivesZero) {
  EXPECT_EQ(R(1, 6).IsEvenlyDivisibleBy(R(1, 0)), 0);
  EXPECT_EQ(R(2, 6).IsEvenlyDivisibleBy(R(2, 0)), 0);
  EXPECT_EQ(R(3, 6).IsEvenlyDivisibleBy(R(3, 0)), 0);
  EXPECT_EQ(R(3, 6).IsEvenlyDivisibleBy(R(3, 1440)), 0);
}

TEST(ResolutionSampling, DaysGoIntoDaysUnderAnySession) {
  const CZRGSSession odd(List({Info(1, 2)}));
  EXPECT_EQ(R(4, 1).CanBeSampledInto(R(4, 3), odd), 1);
  EXPECT_EQ(R(4, 3).CanBeSampledInto(R(4, 1), odd), 1);
}

TEST(ResolutionSampling, SessionsMustStandOnTheBoundaries) {
  const struct {
    CResoln from, into;
    ZRGS_SESSION_INFO session;
    int result;
  } rows[] = {
      {R(3, 15), R(3, 30), Info(570, 960), 1},
      {R(3, 15), R(3, 30), Info(570, 965), 0},
      {R(3, 15), R(3, 30), Info(571, 960), 0},
      {R(3, 15), R(3, 30), Info(570, 960, 0, 5), 0},
      {R(3, 15), R(3, 30), Info(570, 960, 0, 15), 1},
      {R(3, 15), R(3, 30), Info(570, 955, 0, 5), 1},
      {R(3, 15), R(3, 30), Info(570, 960, 7, 0), 1},  // the reset window plays no part
      // The close and its window add up beyond 16 bits: 66000 and 65536.
      {R(3, 15), R(3, 30), Info(570, 60000, 0, 6000), 1},
      {R(3, 15), R(3, 30), Info(570, 65535, 0, 1), 0},
      {R(3, 15), R(3, 40), Info(570, 960), 0},  // no multiple
      {R(2, 30), R(2, 60), Info(571, 961), 1},
      {R(2, 7), R(2, 14), Info(7, 14), 1},
      {R(2, 7), R(2, 14), Info(7, 15), 0},
      {R(2, 7), R(2, 14), Info(8, 14), 0},
      {R(2, 7), R(2, 14), Info(7, 10, 0, 4), 1},
      {R(2, 7), R(3, 5), Info(7, 14), 1},
      {R(1, 3), R(3, 5), Info(571, 961), 1},  // ticks fit any calendar
      {R(8, 3), R(1, 5), Info(571, 961), 1},
      {R(5, 1), R(6, 1), Info(571, 961), 1},  // weeks aren't checked
      {R(3, 7), R(4, 1), Info(570, 960), 0},
      {R(4, 1), R(3, 5), Info(570, 960), 0},
  };
  for (const auto& row : rows) {
    const CZRGSSession calendar(List({row.session}));
    EXPECT_EQ(row.from.CanBeSampledInto(row.into, calendar), row.result)
        << row.from.GetResolnUnit() << ',' << row.from.GetResolnQty() << " into "
        << row.into.GetResolnUnit() << ',' << row.into.GetResolnQty() << " under "
        << row.session.OpenMinute << '-' << row.session.CloseMinute;
  }
}

TEST(ResolutionSampling, OneSessionThatDoesntFitIsEnough) {
  EXPECT_EQ(R(3, 15).CanBeSampledInto(R(3, 30), CZRGSSession(List({Info(0, 30), Info(45, 61)}))),
            0);
}

TEST(ResolutionSampling, ACalendarWithoutSessionsFitsAll) {
  EXPECT_EQ(R(3, 15).CanBeSampledInto(R(3, 30), CZRGSSession()), 1);
}

TEST(ResolutionSampling, MinutesOfWholeDaysHaveNoWidthAndFitNoSession) {
  EXPECT_EQ(R(3, 1440).CanBeSampledInto(R(4, 1), CZRGSSession(List({Info(0, 1440)}))), 0);
  EXPECT_EQ(R(2, 0).CanBeSampledInto(R(4, 1), CZRGSSession(List({Info(0, 1440)}))), 0);
}

TEST(ResolutionArchive, LoadsTheUnitFromTheLowBitsAndThatIsMeant) {
  CMemFile file;
  CArchive out(&file, CArchive::store);
  out << std::uint16_t{0x0053};
  out.Close();
  file.SeekToBegin();
  CArchive in(&file, CArchive::load);
  CResoln resolution;
  resolution.Serialize(in);
  EXPECT_EQ(resolution.GetResolnUnit(), 3);
  EXPECT_EQ(resolution.GetResolnQty(), 5);
}

TEST(ResolutionArchive, StoresZeroWhateverItHoldsAndThatIsMeant) {
  CMemFile file;
  CArchive out(&file, CArchive::store);
  CResoln resolution = R(3, 5);
  resolution.Serialize(out);
  out.Close();
  EXPECT_EQ(resolution, R(3, 5));
  ASSERT_EQ(file.GetLength(), 2U);
  file.SeekToBegin();
  CArchive in(&file, CArchive::load);
  resolution.Serialize(in);
  EXPECT_EQ(resolution, R(0, 0));
}

TEST(ResolutionArchive, AnArchiveThatEndsEarlyLeavesItAsItWas) {
  CMemFile file;
  CArchive in(&file, CArchive::load);
  CResoln resolution = R(3, 5);
  try {
    resolution.Serialize(in);
    FAIL() << "loaded from an empty file";
  } catch (CArchiveException* error) {
    EXPECT_EQ(error->m_cause, CArchiveException::endOfFile);
    error->Delete();
  }
  EXPECT_EQ(resolution, R(3, 5));
}

TEST(Resolution, ItsUnitTypesAreKnownWithoutTheirClassToo) {
  const ResolnUnitTypeEnum all[] = {ResolnTypeTick, ResolnTypeSecond, ResolnTypeMinute,
                                    ResolnTypeDay,  ResolnTypeWeek,   ResolnTypeMonth,
                                    ResolnTypeYear};
  for (int value = 0; value < 7; ++value) {
    EXPECT_EQ(static_cast<int>(all[value]), value);
  }
}

}  // namespace
