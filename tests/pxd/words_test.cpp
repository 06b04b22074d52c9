// The small readers of text: dates, times, shifts and resolutions.
#include <gtest/gtest.h>

#include <string>

#include <tools/pxd/moment.h>
#include <tools/pxd/progress.h>
#include <tools/pxd/resolution_words.h>
#include <tools/pxd/words.h>

using namespace pxd::tool;

namespace {

CZRDateTime At(unsigned month, unsigned day, unsigned year, unsigned hour, unsigned minute,
               unsigned second = 0) {
  return CZRDateTime(CZRDate(month, day, year), CZRTime(hour, minute, second));
}

TEST(Words, ALineOfATerminalHasNoControlCharacters) {
  EXPECT_EQ(OneLine("Z\xC3\xBCrich \\ \"~"), "Z\xC3\xBCrich \\ \"~");
  EXPECT_EQ(OneLine(std::string_view("\0a\x1b[0m\n\x7f\x1f", 9)), "?a?[0m???");
}

TEST(Words, QuotedTextFitsOnOneLineAndIsCut) {
  EXPECT_EQ(Quoted("abc"), "\"abc\"");
  EXPECT_EQ(Quoted(std::string_view("a\0b\x1b\n", 5)), "\"a?b??\"");
  EXPECT_EQ(Quoted(std::string(40, 'x')), '"' + std::string(40, 'x') + '"');
  EXPECT_EQ(Quoted(std::string(41, 'x')), '"' + std::string(40, 'x') + "...\"");
}

TEST(Words, SplitKeepsEmptyPartsAndTrims) {
  EXPECT_EQ(Split("a ; b;;", ';'), (std::vector<std::string_view>{"a", "b", "", ""}));
  EXPECT_EQ(Split("", ';'), (std::vector<std::string_view>{""}));
  EXPECT_EQ(SplitAtBlanks("  a \t b "), (std::vector<std::string_view>{"a", "b"}));
  EXPECT_TRUE(SplitAtBlanks(" \t").empty());
}

TEST(Words, LinesKeepBlanksAndEmptyLinesButNoEnd) {
  EXPECT_EQ(Lines("a\n\n  b \n"), (std::vector<std::string_view>{"a", "", "  b "}));
  EXPECT_EQ(Lines("a\nb"), (std::vector<std::string_view>{"a", "b"}));
  EXPECT_EQ(Lines("\n"), (std::vector<std::string_view>{""}));
  EXPECT_TRUE(Lines("").empty());
}

TEST(Words, WholeNumberTakesDigitsAloneUpToTheMost) {
  EXPECT_EQ(WholeNumber("7", 9U), 7U);
  EXPECT_EQ(WholeNumber("9", 9U), 9U);
  EXPECT_EQ(WholeNumber("10", 9U), std::nullopt);
  EXPECT_EQ(WholeNumber("", 9U), std::nullopt);
  EXPECT_EQ(WholeNumber("-1", 9), std::nullopt);
  EXPECT_EQ(WholeNumber("1x", 9U), std::nullopt);
  EXPECT_EQ(WholeNumber("99999999999999999999", ~0U), std::nullopt);
}

TEST(Moment, DatesAreReadWholeOrNotAtAll) {
  EXPECT_EQ(ReadDate("2024-03-04"), CZRDate(3, 4, 2024));
  EXPECT_EQ(ReadDate("20240304"), CZRDate(3, 4, 2024));
  EXPECT_EQ(ReadDate("2024-02-29"), CZRDate(2, 29, 2024));
  for (const char* bad :
       {"", "2024", "2024-3-4", "2023-02-29", "2024-03-04 ", "2024-0304", "202403-04", "2024-13-01",
        "2024-00-01", "1899-12-29", "2079-06-04", "03/04/2024", "2024-03-04T", "9999-99-99"}) {
    EXPECT_EQ(ReadDate(bad), CZRDate()) << bad;
  }
}

TEST(Moment, TimesLoseTheirFractions) {
  const struct {
    const char* text;
    CZRTime time;
  } kRows[] = {
      {"09:31", CZRTime(9, 31, 0)},
      {"9:31", CZRTime(9, 31, 0)},
      {"09:31:07", CZRTime(9, 31, 7)},
      {"00:00:00", CZRTime(0, 0, 0)},
      {"23:59:59.999999999", CZRTime(23, 59, 59)},
      {"01:23:45", CZRTime(1, 23, 45)},
      {"9:31:07.123", CZRTime(9, 31, 7)},
      {"09:31:07,5", CZRTime(9, 31, 7)},
      {"09:31:07Z", CZRTime(9, 31, 7)},
      {"09:31:07.1+01:00", CZRTime(9, 31, 7)},
      {"09:31:07-0500", CZRTime(9, 31, 7)},
  };
  for (const auto& row : kRows) {
    EXPECT_EQ(ReadTime(row.text), row.time) << row.text;
  }
  for (const char* bad : {"",           "9",        "24:00",          "23:60",    "23:59:60",
                          "09:31:",     "09:31:7",  "09:31:07.",      "09:31x",   "09/31:07",
                          "09:31;07",   "0::31:07", "09:3/:07",       "09:31:0:", "29:31:07",
                          "09:61:07",   "09:31:61", "\xB0\x39:31:07", "-1:00",    "09:31:07+1",
                          "09:31:07 Z", "0931"}) {
    EXPECT_EQ(ReadTime(bad), CZRTime()) << bad;
  }
}

TEST(Moment, DateTimesHaveABlankOrATBetweenTheParts) {
  EXPECT_EQ(ReadDateTime("2024-03-04T09:31:00.123Z"), At(3, 4, 2024, 9, 31));
  EXPECT_EQ(ReadDateTime("2024-03-04 09:31"), At(3, 4, 2024, 9, 31));
  EXPECT_EQ(ReadDateTime("2024-03-04"), At(3, 4, 2024, 0, 0));
  for (const char* bad : {"", "2024-03-04T", "2024-03-04_09:31", "2024-03-04  09:31", "09:31"}) {
    EXPECT_EQ(ReadDateTime(bad), CZRDateTime()) << bad;
  }
}

TEST(Moment, ShiftsAreBelowADay) {
  EXPECT_EQ(ReadShift("-05:00"), -18000);
  EXPECT_EQ(ReadShift("+05:30"), 19800);
  EXPECT_EQ(ReadShift("+00:00"), 0);
  EXPECT_EQ(ReadShift("-23:59"), -86340);
  for (const char* bad : {"", "05:00", "-", "-5", "+24:00", "-05:00Z", "--5:00"}) {
    EXPECT_EQ(ReadShift(bad), std::nullopt) << bad;
  }
}

TEST(Moment, AShiftCrossesMidnightBothWays) {
  EXPECT_EQ(Shifted(At(3, 4, 2024, 2, 0), -18000), At(3, 3, 2024, 21, 0));
  EXPECT_EQ(Shifted(At(12, 31, 2024, 23, 0), 3600), At(1, 1, 2025, 0, 0));
  EXPECT_EQ(Shifted(At(3, 4, 2024, 5, 0), -18000), At(3, 4, 2024, 0, 0));
}

TEST(Moment, AMomentOutsideTheCalendarsYearsIsRefused) {
  EXPECT_EQ(Shifted(At(3, 1, 1900, 0, 0), 0), At(3, 1, 1900, 0, 0));
  EXPECT_EQ(Shifted(At(3, 1, 1900, 0, 0), -1), CZRDateTime());
  EXPECT_EQ(Shifted(At(3, 31, 2079, 23, 59, 59), 0), At(3, 31, 2079, 23, 59, 59));
  EXPECT_EQ(Shifted(At(3, 31, 2079, 23, 59, 59), 1), CZRDateTime());
  EXPECT_EQ(Shifted(At(12, 30, 1899, 0, 0), -3600), CZRDateTime());
}

TEST(Moment, TextIsIsoAndSaysNull) {
  EXPECT_EQ(MomentText(At(3, 4, 2024, 9, 5, 7)), "2024-03-04 09:05:07");
  EXPECT_EQ(MomentText(CZRDateTime()), "null");
  EXPECT_EQ(DateText(CZRDate()), "null");
  EXPECT_EQ(TimeText(CZRTime()), "null");
  EXPECT_EQ(TimeText(CZRTime(86400U)), "86400");
  EXPECT_EQ(TimeText(CZRTime(86399U)), "23:59:59");
}

TEST(ResolutionWords, BothFormsAreRead) {
  const struct {
    const char* text;
    unsigned short unit;
    unsigned short quantity;
  } kRows[] = {
      {"5 Minutes", 3, 5}, {"5 minutes", 3, 5}, {"1 MINUTE", 3, 1},
      {"5m", 3, 5},        {"5min", 3, 5},      {"1t", 1, 1},
      {"3 Ticks", 1, 3},   {"30s", 2, 30},      {"30 sec", 2, 30},
      {"1d", 4, 1},        {"1 Day", 4, 1},     {"1w", 5, 1},
      {"2 Weeks", 5, 2},   {"1mo", 6, 1},       {"1 Month", 6, 1},
      {"1y", 7, 1},        {"1 year", 7, 1},    {" 65535 s ", 2, 65535},
  };
  for (const auto& row : kRows) {
    CResoln resolution;
    std::string error;
    ASSERT_TRUE(ReadResolution(row.text, resolution, error)) << row.text << ": " << error;
    EXPECT_EQ(resolution.GetResolnUnit(), row.unit) << row.text;
    EXPECT_EQ(resolution.GetResolnQty(), row.quantity) << row.text;
  }
}

TEST(ResolutionWords, WhatTheLibraryWritesIsReadBack) {
  for (std::uint16_t unit = 1; unit <= 7; ++unit) {
    for (const std::uint16_t quantity : std::initializer_list<std::uint16_t>{1, 2, 60}) {
      const CResoln resolution(ZRGS_RESOLUTION{unit, quantity});
      CResoln back;
      std::string error;
      ASSERT_TRUE(ReadResolution(ResolutionText(resolution), back, error)) << error;
      EXPECT_EQ(back, resolution);
    }
  }
}

TEST(ResolutionWords, AnythingElseIsRefusedAndLeavesTheOutputAlone) {
  for (const char* bad : {"", "m", "Minutes", "0m", "65536 s", "5 Hours", "5 mm", "-5m", "5.5m",
                          "5 m x", "1 minutess"}) {
    CResoln resolution(ZRGS_RESOLUTION{3, 9});
    std::string error;
    EXPECT_FALSE(ReadResolution(bad, resolution, error)) << bad;
    EXPECT_EQ(resolution, CResoln(ZRGS_RESOLUTION{3, 9}));
    EXPECT_EQ(error, Quoted(bad) +
                         " is no resolution; expected a number of 1 to 65535 and a unit, such as "
                         "\"5 Minutes\", \"1 Day\", 1t, 30s, 5m, 1d, 1w or 1mo");
  }
}

TEST(Progress, ShowsTheShareAndTheCount) {
  EXPECT_EQ(ProgressText(0, 100, 0), "[..............................]   0%  0 trades");
  EXPECT_EQ(ProgressText(50, 100, 1234567),
            "[###############...............]  50%  1,234,567 trades");
  EXPECT_EQ(ProgressText(100, 100, 12), "[##############################] 100%  12 trades");
  EXPECT_EQ(ProgressText(150, 100, 12), "[##############################] 100%  12 trades")
      << "a file may grow while it is read";
  EXPECT_EQ(ProgressText(5, 0, 1000), "1,000 trades");
}

TEST(Progress, NumbersAreGroupedByThousands) {
  EXPECT_EQ(Grouped(0), "0");
  EXPECT_EQ(Grouped(999), "999");
  EXPECT_EQ(Grouped(1000), "1,000");
  EXPECT_EQ(Grouped(18446744073709551615U), "18,446,744,073,709,551,615");
}

}  // namespace
