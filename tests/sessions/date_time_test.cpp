#include <pxdutil/sessions/date_time.h>

#include <string>

#include <gtest/gtest.h>

namespace {

constexpr unsigned short kNullDate = 0xFFFF;
constexpr unsigned kNullTime = 0xFFFFFFFF;

// ---- CZRDate ----------------------------------------------------------------------------------

struct KnownDay {
  unsigned month, day, year;
  unsigned short julian;
};

TEST(Date, CountsFrom30December1899) {
  const KnownDay days[] = {
      {12, 30, 1899, 0},   {12, 31, 1899, 1},     {1, 1, 1900, 2},      {2, 28, 1900, 60},
      {3, 1, 1900, 61},    {1, 1, 1970, 25569},   {1, 1, 1997, 35431},  {2, 29, 2000, 36585},
      {3, 1, 2000, 36586}, {12, 31, 2000, 36891}, {6, 3, 2079, 0xFFFE},
  };
  for (const KnownDay& known : days) {
    EXPECT_EQ(CZRDate(known.month, known.day, known.year).GetJulianDate(), known.julian);
    unsigned month = 0;
    unsigned day = 0;
    unsigned year = 0;
    CZRDate(known.julian).GetDate(month, day, year);
    EXPECT_EQ(month, known.month);
    EXPECT_EQ(day, known.day);
    EXPECT_EQ(year, known.year);
  }
}

// The oracle counts days one by one, with the month lengths and the leap year rule in the open.
TEST(Date, AgreesWithACalendarCountedDayByDay) {
  const unsigned lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  unsigned month = 12;
  unsigned day = 30;
  unsigned year = 1899;
  int weekday = 7;  // 30 December 1899 was a Saturday
  for (unsigned julian = 0; julian <= 0xFFFE; ++julian) {
    const CZRDate date(static_cast<unsigned short>(julian));
    ASSERT_EQ(date.GetMonth(), month) << julian;
    ASSERT_EQ(date.GetDay(), day) << julian;
    ASSERT_EQ(date.GetYear(), year) << julian;
    ASSERT_EQ(CZRDate(month, day, year).GetJulianDate(), julian);
    ASSERT_EQ(CZRDateTime(date, CZRTime(0)).GetDayOfWeek(), weekday) << julian;

    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    const unsigned length = lengths[month - 1] + (month == 2 && leap ? 1 : 0);
    weekday = weekday % 7 + 1;
    if (++day > length) {
      day = 1;
      if (++month > 12) {
        month = 1;
        ++year;
      }
    }
  }
  EXPECT_EQ(month, 6U);
  EXPECT_EQ(day, 4U);
  EXPECT_EQ(year, 2079U);
}

TEST(Date, TheDayAfterNewYearsEveIsNewYear) {
  CZRDate date;
  date.SetDate(12, 31, 2000);
  date.SetDate(static_cast<unsigned short>(date.GetJulianDate() + 1));
  EXPECT_EQ(date, CZRDate(1, 1, 2001));
  EXPECT_EQ(date.GetMonth(), 1U);
  EXPECT_EQ(date.GetDay(), 1U);
  EXPECT_EQ(date.GetYear(), 2001U);
}

TEST(Date, SevenLessIsTheSameWeekdayOfTheWeekBefore) {
  const CZRDate date(3, 4, 2020);
  const CZRDate before(static_cast<unsigned short>(date.GetJulianDate() - 7));
  EXPECT_EQ(before, CZRDate(2, 26, 2020));
  EXPECT_EQ(CZRDateTime(date, 0).GetDayOfWeek(), CZRDateTime(before, 0).GetDayOfWeek());
}

TEST(Date, WhatNamesNoDayInRangeIsNull) {
  const unsigned bad[][3] = {
      {12, 29, 1899},
      {6, 4, 2079},
      {0, 1, 2000},
      {13, 1, 2000},
      {1, 0, 2000},
      {1, 32, 2000},
      {2, 29, 1900},
      {2, 29, 2001},
      {2, 30, 2000},
      {4, 31, 2000},
      {1, 1, 0},
      {1, 1, 97},
      {257, 1, 2000},
      {1, 257, 2000},
      {1, 1, 2000 + 65536},
      {0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF},
  };
  for (const auto& parts : bad) {
    EXPECT_EQ(CZRDate(parts[0], parts[1], parts[2]).GetJulianDate(), kNullDate)
        << parts[0] << '/' << parts[1] << '/' << parts[2];
    CZRDate set(100);
    set.SetDate(parts[0], parts[1], parts[2]);
    EXPECT_EQ(set.GetJulianDate(), kNullDate);
  }
}

TEST(Date, IsNullFromTheStartAndThePartsOfNullAreZero) {
  const CZRDate date;
  EXPECT_EQ(date.GetJulianDate(), kNullDate);
  EXPECT_EQ(CZRDate::GetNullJulianDate(), kNullDate);
  EXPECT_EQ(date.GetMonth(), 0U);
  EXPECT_EQ(date.GetDay(), 0U);
  EXPECT_EQ(date.GetYear(), 0U);
}

TEST(Date, TextOutHasTwoTwoAndFourDigits) {
  char buffer[100];
  EXPECT_EQ(CZRDate::j2Text(35431, buffer), buffer);
  EXPECT_STREQ(buffer, "01/01/1997");
  EXPECT_STREQ(CZRDate::j2Text(0, buffer), "12/30/1899");
  EXPECT_STREQ(CZRDate::j2Text(0xFFFE, buffer), "06/03/2079");
  EXPECT_STREQ(CZRDate::j2Text(kNullDate, buffer), "");
}

TEST(Date, ReadsTextsOfADay) {
  const struct {
    const char* text;
    unsigned short julian;
  } rows[] = {
      {"01/01/1997", 35431}, {"1/1/1997", 35431}, {"1/01/1997", 35431},
      {"2/29/2000", 36585},  {"12/30/1899", 0},   {"06/03/2079", 0xFFFE},
  };
  for (const auto& row : rows) {
    CZRDate date;
    EXPECT_NE(date.SetDate(row.text), 0) << row.text;
    EXPECT_EQ(date.GetJulianDate(), row.julian) << row.text;
  }
}

TEST(Date, RefusesOtherTextsAndStaysAsItWas) {
  const char* const bad[] = {
      "",           "1",          "1/1",        "1/1/",      "1/1/97",    "1/1/997",
      "1/1/19970",  "001/1/1997", "1/001/1997", " 1/1/1997", "1/1/1997 ", "1 /1/1997",
      "+1/1/1997",  "-1/1/1997",  "1-1-1997",   "1/1/1997x", "x/1/1997",  "02/30/2000",
      "2/29/1900",  "0/1/2000",   "13/1/2000",  "1/0/2000",  "1/32/2000", "12/29/1899",
      "06/04/2079", "1//1/1997",  "//",         "1/1/1 97",  "1/1/02000",
  };
  for (const char* text : bad) {
    CZRDate date(1234);
    EXPECT_EQ(date.SetDate(text), 0) << text;
    EXPECT_EQ(date.GetJulianDate(), 1234) << text;
  }
  CZRDate date(1234);
  EXPECT_EQ(date.SetDate(static_cast<const char*>(nullptr)), 0);
  EXPECT_EQ(date.GetJulianDate(), 1234);
}

TEST(Date, TextOutReadsBackAsTheSameDay) {
  for (unsigned julian = 0; julian <= 0xFFFE; julian += 17) {
    char buffer[100];
    CZRDate::j2Text(static_cast<unsigned short>(julian), buffer);
    CZRDate date;
    ASSERT_NE(date.SetDate(buffer), 0) << buffer;
    ASSERT_EQ(date.GetJulianDate(), julian) << buffer;
  }
}

// ---- CZRTime ----------------------------------------------------------------------------------

TEST(Time, JoinsAndPartsHourMinuteAndSecond) {
  const CZRTime time(12, 15, 30);
  EXPECT_EQ(time.GetTime(), 44130U);
  EXPECT_EQ(time.GetHour(), 12U);
  EXPECT_EQ(time.GetMinute(), 15U);
  EXPECT_EQ(time.GetSecond(), 30U);
  EXPECT_EQ(CZRTime(0).GetTime(), 0U);
  const CZRTime last(86399);
  EXPECT_EQ(last, CZRTime(23, 59, 59));
  EXPECT_EQ(last.GetHour(), 23U);
  EXPECT_EQ(last.GetMinute(), 59U);
  EXPECT_EQ(last.GetSecond(), 59U);
}

TEST(Time, WhatNamesNoTimeOfDayIsNull) {
  EXPECT_EQ(CZRTime(24, 0, 0).GetTime(), kNullTime);
  EXPECT_EQ(CZRTime(0, 60, 0).GetTime(), kNullTime);
  EXPECT_EQ(CZRTime(0, 0, 60).GetTime(), kNullTime);
}

TEST(Time, IsNullFromTheStartAndThePartsOfNullAreZero) {
  const CZRTime time;
  EXPECT_EQ(time.GetTime(), kNullTime);
  EXPECT_EQ(CZRTime::GetNullTime(), kNullTime);
  EXPECT_EQ(time.GetHour(), 0U);
  EXPECT_EQ(time.GetMinute(), 0U);
  EXPECT_EQ(time.GetSecond(), 0U);
}

TEST(Time, TextOutHasThreePairsOfDigits) {
  char buffer[100];
  EXPECT_EQ(CZRTime::Time2String(44130, 1, 1, buffer), buffer);
  EXPECT_STREQ(buffer, "12:15:30");
  EXPECT_STREQ(CZRTime::Time2String(0, 1, 1, buffer), "00:00:00");
  EXPECT_STREQ(CZRTime::Time2String(86399, 1, 1, buffer), "23:59:59");
  EXPECT_STREQ(CZRTime::Time2String(86400, 1, 1, buffer), "");
  EXPECT_STREQ(CZRTime::Time2String(kNullTime, 1, 1, buffer), "");
}

TEST(Time, ReadsTextsOfATimeOfDay) {
  const struct {
    const char* text;
    unsigned seconds;
  } rows[] = {
      {"12:15:30", 44130}, {"12:15", 44100}, {"0:0", 0},          {"0:0:0", 0},
      {"9:5:7", 32707},    {"09:30", 34200}, {"23:59:59", 86399},
  };
  for (const auto& row : rows) {
    CZRTime time;
    EXPECT_NE(time.SetTime(row.text, 1, 1), 0) << row.text;
    EXPECT_EQ(time.GetTime(), row.seconds) << row.text;
  }
}

TEST(Time, RefusesOtherTextsAndStaysAsItWas) {
  const char* const bad[] = {
      "",       "9",      "9:",     ":30",      "24:00",  "12:60",      "12:00:60", "12:00:",
      "012:00", "12:000", " 12:00", "12:00 ",   "+1:00",  "-1:00",      "12.00",    "12:00:00:00",
      "12:00x", "x12:00", "12 :00", "12:0:000", "12::00", "12:00:00.5",
  };
  for (const char* text : bad) {
    CZRTime time(77);
    EXPECT_EQ(time.SetTime(text, 1, 1), 0) << text;
    EXPECT_EQ(time.GetTime(), 77U) << text;
  }
  CZRTime time(77);
  EXPECT_EQ(time.SetTime(nullptr, 1, 1), 0);
  EXPECT_EQ(time.GetTime(), 77U);
}

// ---- CZRDateTimeSpan --------------------------------------------------------------------------

TEST(Span, CarriesWholeDaysOutOfItsSeconds) {
  const struct {
    unsigned short days;
    unsigned long seconds;
    unsigned short wantDays;
    unsigned long wantSeconds;
  } rows[] = {
      {0, 0, 0, 0},        {0, 86399, 0, 86399}, {0, 86400, 1, 0},
      {0, 90000, 1, 3600}, {3, 172801, 5, 1},    {65535, 86400, 0, 0},
  };
  for (const auto& row : rows) {
    const CZRDateTimeSpan span(row.days, row.seconds);
    EXPECT_EQ(span.GetNumDays(), row.wantDays);
    EXPECT_EQ(span.GetNumSeconds(), row.wantSeconds);
  }
}

TEST(Span, DividesExactly) {
  for (unsigned long seconds = 1; seconds < 200000; seconds += 7) {
    const CZRDateTimeSpan one(3, seconds);
    CZRDateTimeSpan many = one;
    many *= 21;
    ASSERT_EQ(static_cast<int>(one / one), 1);
    ASSERT_EQ(static_cast<int>(many / one), 21);
  }
  EXPECT_EQ(static_cast<double>(CZRDateTimeSpan(2, 0)),
            2 * static_cast<double>(CZRDateTimeSpan(1, 0)));
}

TEST(Span, MultipliesAsAWhole) {
  CZRDateTimeSpan span(1, 43200);
  EXPECT_EQ(&(span *= 3), &span);
  EXPECT_EQ(span, CZRDateTimeSpan(4, 43200));
  span *= 0;
  EXPECT_EQ(span, CZRDateTimeSpan(0, 0));
}

TEST(Span, WrapsItsDaysAndKeepsItsSecondsBelowADay) {
  CZRDateTimeSpan long_span(65535, 86399);
  long_span *= 2147483647;
  EXPECT_EQ(long_span.GetNumDays(),
            static_cast<unsigned short>(65535LL * 2147483647LL + 86399LL * 2147483647LL / 86400));
  EXPECT_EQ(long_span.GetNumSeconds(), static_cast<unsigned long>(86399LL * 2147483647LL % 86400));
  CZRDateTimeSpan back(0, 1);
  back *= -1;
  EXPECT_EQ(back.GetNumDays(), 65535);
  EXPECT_EQ(back.GetNumSeconds(), 86399UL);
}

TEST(Span, IsOrderedByItsLength) {
  EXPECT_LT(CZRDateTimeSpan(0, 86399), CZRDateTimeSpan(1, 0));
  EXPECT_LT(CZRDateTimeSpan(1, 0), CZRDateTimeSpan(1, 1));
  EXPECT_EQ(CZRDateTimeSpan(0, 86400), CZRDateTimeSpan(1, 0));
}

// ---- CZRDateTime ------------------------------------------------------------------------------

CZRDateTime At(unsigned short julian, unsigned seconds) {
  return CZRDateTime(CZRDate(julian), CZRTime(seconds));
}

TEST(DateTime, OneSecondBeforeMidnightPlusOneIsTheNextDay) {
  CZRDateTime value(CZRDate(12, 31, 1999), CZRTime(23, 59, 59));
  EXPECT_EQ(&(value += CZRDateTimeSpan(0, 1)), &value);
  EXPECT_EQ(value.GetDate(), CZRDate(1, 1, 2000));
  EXPECT_EQ(value.GetTime(), CZRTime(0));
}

TEST(DateTime, ASpanOverMidnightTakesTheDaysBack) {
  CZRDateTime value = At(1000, 3600);
  EXPECT_EQ(&(value -= CZRDateTimeSpan(2, 3601)), &value);
  EXPECT_EQ(value, At(997, 86399));
  value = At(1000, 3600);
  value -= CZRDateTimeSpan(2, 3600);
  EXPECT_EQ(value, At(998, 0));
}

TEST(DateTime, DifferenceMovesTheEarlierToTheLater) {
  const struct {
    CZRDateTime later, earlier;
    CZRDateTimeSpan span;
  } rows[] = {
      {At(10, 5), At(10, 5), CZRDateTimeSpan(0, 0)},
      {At(10, 5), At(9, 6), CZRDateTimeSpan(0, 86399)},
      {At(10, 5), At(9, 5), CZRDateTimeSpan(1, 0)},
      {At(10, 5), At(3, 4), CZRDateTimeSpan(7, 1)},
      // To a later value: the days wrap, the seconds stay below one day.
      {At(10, 5), At(10, 6), CZRDateTimeSpan(65535, 86399)},
      {At(10, 5), At(11, 5), CZRDateTimeSpan(65535, 0)},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.later - row.earlier, row.span);
    CZRDateTime moved = row.earlier;
    moved += row.span;
    EXPECT_EQ(moved, row.later);
    moved -= row.span;
    EXPECT_EQ(moved, row.earlier);
  }
}

TEST(DateTime, WrapsItsDayNumberAtBothEnds) {
  CZRDateTime value = At(0xFFFF, 86399);
  value += CZRDateTimeSpan(0, 1);
  EXPECT_EQ(value, At(0, 0));
  value -= CZRDateTimeSpan(0, 1);
  EXPECT_EQ(value, At(0xFFFF, 86399));
}

TEST(DateTime, IsOrderedByDayThenSeconds) {
  const CZRDateTime rising[] = {At(1, 0), At(1, 1), At(1, 86399), At(2, 0), At(2, 5)};
  for (int i = 0; i < 5; ++i) {
    for (int j = 0; j < 5; ++j) {
      EXPECT_EQ(rising[i] == rising[j], i == j);
      EXPECT_EQ(rising[i] != rising[j], i != j);
      EXPECT_EQ(rising[i] < rising[j], i < j);
      EXPECT_EQ(rising[i] <= rising[j], i <= j);
      EXPECT_EQ(rising[i] > rising[j], i > j);
      EXPECT_EQ(rising[i] >= rising[j], i >= j);
    }
  }
}

TEST(DateTime, ComparesNullByItsBareNumbers) {
  const CZRDateTime null(CZRDateTime::LimitNull);
  EXPECT_GT(null, At(0xFFFE, 86399));
  EXPECT_GT(null, At(0xFFFF, 86399));
  EXPECT_EQ(null, At(0xFFFF, kNullTime));
}

TEST(DateTime, IsNullOnlyWithBothHalvesNull) {
  EXPECT_EQ(CZRDateTime::LimitNull, 2);
  EXPECT_NE(CZRDateTime().IsNullDateTime(), 0);
  EXPECT_NE(CZRDateTime(CZRDateTime::LimitNull).IsNullDateTime(), 0);
  EXPECT_EQ(At(0xFFFF, 0).IsNullDateTime(), 0);
  EXPECT_EQ(At(0, kNullTime).IsNullDateTime(), 0);
  CZRDateTime value = At(1, 2);
  EXPECT_EQ(value.IsNullDateTime(), 0);
  value.SetNullDateTime();
  EXPECT_NE(value.IsNullDateTime(), 0);
  EXPECT_EQ(value.GetDate().GetJulianDate(), kNullDate);
  EXPECT_EQ(value.GetTime().GetTime(), kNullTime);
  value.SetDateTime(CZRDate(35431), CZRTime(60));
  EXPECT_EQ(value, At(35431, 60));
}

TEST(DateTime, NewYear1997WasAWednesday) {
  EXPECT_EQ(CZRDateTime(CZRDate(1, 1, 1997), CZRTime(0)).GetDayOfWeek(), 4);
}

}  // namespace
