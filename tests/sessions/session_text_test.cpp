#include <pxdutil/sessions/session.h>

#include <string>

#include <gtest/gtest.h>

#include "session_helpers.h"

namespace {

using session_test::Info;
using session_test::List;
using session_test::Text;
using session_test::Weekdays;

std::string ReadAndWrite(const char* text) {
  ZRGS_SESSION list = List({Info(7, 8)});
  CZRGSSession::BuildZRGS_SESSIONFromString(text, list);
  return Text(list);
}

std::string Groups(int count) {
  std::string text;
  for (int i = 0; i < count; ++i) {
    text +=
        (i > 0 ? ";" : "") + std::to_string(i * 30) + "," + std::to_string(i * 30 + 10) + ",0,0,1";
  }
  return text;
}

// ---- Machine text form ------------------------------------------------------------------------

TEST(SessionText, WritesTheCountAndFiveNumbersASession) {
  EXPECT_EQ(Text(List({})), "0:");
  EXPECT_EQ(Text(List({Info(2010, 2400), Info(3450, 3840)})), "2:2010,2400,0,0,1;3450,3840,0,0,1");
  EXPECT_EQ(Text(List({Info(65535, 65534, 65533, 32767, 0)})), "1:65535,65534,65533,32767,0");
}

TEST(SessionText, ReplacesWhatTheTextHeld) {
  CString text("old");
  CZRGSSession::BuildStringFromZRGS_SESSION(List({}), text);
  EXPECT_STREQ(text, "0:");
}

TEST(SessionText, ReadsWhatItWrites) {
  for (const char* text :
       {"1:2010,2400,0,0,1", "2:2010,2400,0,0,1;3450,3840,0,0,1", "1:9960,240,5,32767,0",
        "3:10,20,1,2,0;30,40,3,4,1;50,60,5,6,0", "1:65535,65534,65533,32767,1"}) {
    EXPECT_EQ(ReadAndWrite(text), text);
  }
}

TEST(SessionText, ReadsNothingFromNothing) {
  for (const char* text : {"", "0:", "0", ":", ";,:;", "-1:10,20,0,0,1", "x", "x:10,20,0,0,1"}) {
    EXPECT_EQ(ReadAndWrite(text), "0:") << text;
  }
  EXPECT_EQ(ReadAndWrite(nullptr), "0:");
}

TEST(SessionText, ATextThatEndsEarlyKeepsWhatWasCompleteUncheckedAndThatIsMeant) {
  EXPECT_EQ(ReadAndWrite("2:10,20,0,0,1"), "1:10,20,0,0,1");
  EXPECT_EQ(ReadAndWrite("3:10,20,0,0,1;15,30,0,0,1"), "2:10,20,0,0,1;15,30,0,0,1");
  EXPECT_EQ(ReadAndWrite("2:10,20,0,0,1;30,40,0,0"), "1:10,20,0,0,1");
  EXPECT_EQ(ReadAndWrite("1:10,20,0,0"), "0:");
  EXPECT_EQ(ReadAndWrite("1:10"), "0:");
  EXPECT_EQ(ReadAndWrite("1:"), "0:");
}

TEST(SessionText, AHugeCountStopsWhereTheTextEnds) {
  EXPECT_EQ(ReadAndWrite("4000000000:"), "0:");
  EXPECT_EQ(ReadAndWrite("4000000000:10,20,0,0,1"), "1:10,20,0,0,1");
  EXPECT_EQ(ReadAndWrite("99999999999999999999999999:10,20,0,0,1"), "1:10,20,0,0,1");
  EXPECT_EQ(ReadAndWrite("2147483647:"
                         "10,20,0,0,1"),
            "1:10,20,0,0,1");
}

TEST(SessionText, AnInvalidListComesOutEmpty) {
  EXPECT_EQ(ReadAndWrite("2:10,20,0,0,1;15,30,0,0,1"), "0:");
}

TEST(SessionText, TakesUpTo256Groups) {
  EXPECT_EQ(ReadAndWrite(("256:" + Groups(256)).c_str()), "256:" + Groups(256));
  EXPECT_EQ(ReadAndWrite(("257:" + Groups(257)).c_str()), "0:");
}

TEST(SessionText, GroupsBeyondTheCountAreIgnored) {
  EXPECT_EQ(ReadAndWrite("1:10,20,0,0,1;15,30,0,0,1"), "1:10,20,0,0,1");
  EXPECT_EQ(ReadAndWrite(("2:" + Groups(300)).c_str()), "2:" + Groups(2));
}

TEST(SessionText, NumbersAreReadFromTheFrontOfTheirTokensAndNarrowed) {
  const struct {
    const char* text;
    const char* list;
  } rows[] = {
      {"1:10,20,0,0,2", "1:10,20,0,0,0"},  // the flag is bit 0
      {"1:10,20,0,0,3", "1:10,20,0,0,1"},
      {"1:10,20,0,32768,1", "1:10,20,0,0,1"},  // a dribble is 15 bits
      {"1:10,20,0,65535,1", "1:10,20,0,32767,1"},
      {"1:70000,65536,65537,0,1", "1:4464,0,1,0,1"},
      {"1:-1,20,0,0,1", "1:65535,20,0,0,1"},
      {"1: 10,\t20,+3,4x,1y", "1:10,20,3,4,1"},
      {"1:a,,b,c,d,e", "1:0,0,0,0,0"},
      {"1:10,20,0,0,1,5", "1:10,20,0,0,1"},   // the flag's token ends at a semicolon alone
      {";,1,;:10,20,0,0,1", "1:0,20,0,0,1"},  // the open reads ";:10", which begins with none
      {"::1:10,20,0,0,1", "1:10,20,0,0,1"},   // leading separators are skipped
      {"1;,,10,,20,,0,0,;;1", "1:10,20,0,0,1"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ReadAndWrite(row.text), row.list) << row.text;
  }
}

// ---- Display text -----------------------------------------------------------------------------

TEST(SessionDisplay, NamesDaysAndMinutes) {
  CString text;
  CZRGSSession(List({Info(2010, 2400), Info(0, 4320 + 570), Info(5760, 10079)}))
      .GetDisplayString(text);
  EXPECT_STREQ(text, "Mon 09:30 - Mon 16:00, Sun 00:00 - Wed 09:30, Thr 00:00 - Sat 23:59");
}

TEST(SessionDisplay, TheEndOfTheWeekHasNoNameAndThatIsMeant) {
  CString text;
  CZRGSSession(List({Info(8640, 10080), Info(65535, 10081)})).GetDisplayString(text);
  EXPECT_STREQ(text, "Sat 00:00 -  00:00,  12:15 -  00:01");
}

TEST(SessionDisplay, GoesBehindWhatTheTextHeld) {
  CString text("Hours: ");
  CZRGSSession().GetDisplayString(text);
  EXPECT_STREQ(text, "Hours: ");
  CZRGSSession(List({Info(3450, 3840)})).GetDisplayString(text);
  EXPECT_STREQ(text, "Hours: Tue 09:30 - Tue 16:00");
}

// ---- Compact form -----------------------------------------------------------------------------

struct Compact {
  unsigned long ranges[2] = {0, 0};
  unsigned char masks[2] = {0, 0};
  unsigned int count = 99;
  unsigned short reset = 99;
};

constexpr unsigned long Range(unsigned long start, unsigned long end) {
  return (end << 16) + start;
}

Compact ToCompact(const ZRGS_SESSION& list) {
  Compact compact;
  CZRGSSession::BuildUNI_SESSIONFromZRGS_SESSION(list, compact.ranges, compact.masks, compact.count,
                                                 compact.reset);
  return compact;
}

// The list's text, with "!" in front where the form was refused.
std::string FromCompact(const Compact& compact) {
  ZRGS_SESSION list = List({Info(7, 8)});
  const bool good = CZRGSSession::BuildZRGS_SESSIONFromUNI_SESSION(
      compact.ranges, compact.masks, compact.count, compact.reset, list);
  return (good ? "" : "!") + Text(list);
}

const char* const kRefused = "!1:2010,2400,0,0,1";

TEST(SessionCompact, FiveEqualWeekdaysGoOutAndComeBack) {
  const Compact compact = ToCompact(Weekdays(30, 10));
  EXPECT_EQ(compact.count, 1U);
  EXPECT_EQ(compact.ranges[0], 960UL * 65536 + 570);
  EXPECT_EQ(compact.masks[0], 62);
  EXPECT_EQ(compact.masks[1], 0);
  EXPECT_EQ(compact.reset, 30);
  EXPECT_EQ(FromCompact(compact), Text(Weekdays(30, 0)));
}

TEST(SessionCompact, AnEmptyListSetsTheCountAlone) {
  const Compact compact = ToCompact(List({}));
  EXPECT_EQ(compact.count, 0U);
  EXPECT_EQ(compact.reset, 99);
  EXPECT_EQ(compact.ranges[0], 0U);
}

TEST(SessionCompact, SessionsWithoutTheFlagTakeTheSecondSlot) {
  const Compact compact = ToCompact(List({Info(2010, 2160, 5, 0, 0), Info(2220, 2400, 9),
                                          Info(3450, 3600, 7, 0, 0), Info(3660, 3840, 8)}));
  EXPECT_EQ(compact.count, 2U);
  EXPECT_EQ(compact.ranges[0], Range(780, 960));
  EXPECT_EQ(compact.masks[0], 6);
  EXPECT_EQ(compact.ranges[1], Range(570, 720));
  EXPECT_EQ(compact.masks[1], 6);
  EXPECT_EQ(compact.reset, 9);
  EXPECT_EQ(FromCompact(compact),
            "4:2010,2160,0,0,0;2220,2400,9,0,1;3450,3600,0,0,0;3660,3840,9,0,1");
}

TEST(SessionCompact, TheKindThatComesLastDecidesTheResetAndThatIsMeant) {
  EXPECT_EQ(ToCompact(List({Info(10, 20, 5, 0, 1), Info(30, 40, 6, 0, 0)})).reset, 6);
  EXPECT_EQ(ToCompact(List({Info(10, 20, 5, 0, 0), Info(30, 40, 6, 0, 1)})).reset, 6);
  EXPECT_EQ(ToCompact(List({Info(10, 20, 5, 0, 1), Info(1450, 1460, 6, 0, 1)})).reset, 5);
}

TEST(SessionCompact, UnflaggedSessionsAloneLeaveTheFirstSlotUnwrittenAndThatIsMeant) {
  Compact compact;
  compact.ranges[0] = 12345;
  CZRGSSession::BuildUNI_SESSIONFromZRGS_SESSION(List({Info(2010, 2400, 3, 0, 0)}), compact.ranges,
                                                 compact.masks, compact.count, compact.reset);
  EXPECT_EQ(compact.count, 1U);
  EXPECT_EQ(compact.ranges[0], 12345U);
  EXPECT_EQ(compact.ranges[1], Range(570, 960));
  EXPECT_EQ(compact.masks[1], 2);
  // On the way back a count of 1 hides the second slot.
  EXPECT_EQ(FromCompact(compact), kRefused);
}

TEST(SessionCompact, ASessionAtAnotherTimeIsDropped) {
  const Compact compact =
      ToCompact(List({Info(2010, 2400), Info(3451, 3840), Info(4890, 5281), Info(6330, 6720)}));
  EXPECT_EQ(compact.count, 1U);
  EXPECT_EQ(compact.ranges[0], Range(570, 960));
  EXPECT_EQ(compact.masks[0], 1 << 1 | 1 << 4);
}

TEST(SessionCompact, MaskBitsAreOnlyEverSet) {
  Compact compact;
  compact.masks[0] = 0x41;
  CZRGSSession::BuildUNI_SESSIONFromZRGS_SESSION(List({Info(2010, 2400)}), compact.ranges,
                                                 compact.masks, compact.count, compact.reset);
  EXPECT_EQ(compact.masks[0], 0x43);
}

TEST(SessionCompact, DaysBehindTheWeekHaveNoBitInTheByte) {
  EXPECT_EQ(ToCompact(List({Info(7 * 1440, 7 * 1440 + 1)})).masks[0], 0x80);
  EXPECT_EQ(ToCompact(List({Info(8 * 1440, 8 * 1440 + 1)})).masks[0], 0);
  EXPECT_EQ(ToCompact(List({Info(65535, 65535)})).masks[0], 0);
  EXPECT_EQ(ToCompact(List({Info(65535, 65535)})).count, 1U);
}

TEST(SessionCompact, BuildsTheSessionsOfADayInOrderOfTime) {
  const struct {
    unsigned long main, second;
    unsigned short reset;
    const char* list;
  } rows[] = {
      {Range(570, 720), Range(780, 960), 4, "2:2010,2160,4,0,1;2220,2400,0,0,0"},
      {Range(780, 960), Range(570, 720), 4, "2:2010,2160,0,0,0;2220,2400,4,0,1"},
      {Range(570, 779), Range(780, 960), 0, "2:2010,2219,0,0,1;2220,2400,0,0,0"},
      // Where main ends as the second begins they don't change places, and so stand out of order.
      {Range(570, 780), Range(780, 960), 0, kRefused},
      // The reset window may reach up to the second, not into it.
      {Range(570, 776), Range(780, 960), 4, "2:2010,2216,4,0,1;2220,2400,0,0,0"},
      {Range(570, 777), Range(780, 960), 4, kRefused},
  };
  for (const auto& row : rows) {
    Compact compact;
    compact.ranges[0] = row.main;
    compact.ranges[1] = row.second;
    compact.masks[0] = compact.masks[1] = 2;
    compact.count = 2;
    compact.reset = row.reset;
    EXPECT_EQ(FromCompact(compact), row.list) << row.main << ' ' << row.second;
  }
}

TEST(SessionCompact, ARangeOverMidnightClosesOnTheNextDay) {
  Compact compact;
  compact.ranges[0] = Range(1320, 240);
  compact.count = 1;
  compact.reset = 0;
  compact.masks[0] = 1 << 5;
  EXPECT_EQ(FromCompact(compact), "1:8520,8880,0,0,1");
}

TEST(SessionCompact, AMainRangeThatStaysBelowItsOpenIsMovedOnASecondDay) {
  // On Monday 3440 to 1940, a day on 3380, and another on 4820.
  Compact compact;
  compact.ranges[0] = Range(2000, 500);
  compact.count = 1;
  compact.reset = 0;
  compact.masks[0] = 1 << 1;
  EXPECT_EQ(FromCompact(compact), "1:3440,4820,0,0,1");
  // On Saturday 10640 to 12020, which this time is taken back by a week.
  compact.masks[0] = 1 << 6;
  EXPECT_EQ(FromCompact(compact), "1:10640,1940,0,0,1");
}

TEST(SessionCompact, ARangeOverTheEndOfTheWeekStaysUnwrappedAndThatIsMeant) {
  Compact compact;
  compact.ranges[0] = Range(1320, 240);
  compact.count = 1;
  compact.reset = 0;
  compact.masks[0] = 1 << 6;
  EXPECT_EQ(FromCompact(compact), "1:9960,10320,0,0,1");
  compact.masks[0] = 0x7F;
  EXPECT_EQ(FromCompact(compact).substr(0, 2), "7:");
}

TEST(SessionCompact, TheMainMaskCountsWhateverTheCount) {
  Compact compact;
  compact.ranges[0] = Range(570, 960);
  compact.masks[0] = 2;
  compact.count = 0;
  compact.reset = 0;
  EXPECT_EQ(FromCompact(compact), "1:2010,2400,0,0,1");
}

TEST(SessionCompact, NoSessionWithItsWindowLastsLongerThanADay) {
  const struct {
    unsigned long range;
    unsigned short reset;
    unsigned char mask;
    bool good;
  } rows[] = {
      {Range(0, 1380), 60, 2, true},
      {Range(0, 1380), 61, 2, false},
      {Range(0, 1440), 0, 2, true},
      {Range(0, 1441), 0, 2, false},
      {Range(0, 1440), 0, 0x7F, true},
      {Range(0, 1440), 1, 0x7F, false},
      // Counted round the end of the week: 22:00 to 04:00 and a window of 18 hours or more.
      {Range(1320, 240), 1080, 0x40, true},
      {Range(1320, 240), 1081, 0x40, false},
      // The second one too long.
      {Range(0, 60), 1380, 6, true},
      {Range(0, 60), 1381, 6, false},
      {Range(5000, 0), 0, 0x40, false},
      // The sum wraps at 16 bits: 24:00 less a minute, on the next day.
      {Range(0, 65535), 0, 2, true},
  };
  for (const auto& row : rows) {
    Compact compact;
    compact.ranges[0] = row.range;
    compact.masks[0] = row.mask;
    compact.count = 1;
    compact.reset = row.reset;
    const std::string list = FromCompact(compact);
    EXPECT_EQ(list != kRefused, row.good) << list;
    EXPECT_EQ(list[0] != '!', row.good) << list;
  }
}

TEST(SessionCompact, AFirstSessionOverTheEndOfTheWeekDoesntWrapTheLaterOnes) {
  // 9960 to 240 of the next week, then 10000 to 10050 and 12840 to 3120: behind a wrap the second
  // one's end, above the first open, would be refused.
  Compact compact;
  compact.ranges[0] = Range(9960, 10320);
  compact.masks[0] = 1 << 0 | 1 << 2;
  compact.ranges[1] = Range(8560, 8610);
  compact.masks[1] = 1 << 1;
  compact.count = 2;
  compact.reset = 0;
  EXPECT_EQ(FromCompact(compact), "3:9960,10320,0,0,1;10000,10050,0,0,0;12840,13200,0,0,1");
}

TEST(SessionCompact, AFormWithoutDaysBecomesTheDefault) {
  Compact compact;
  compact.count = 2;
  EXPECT_EQ(FromCompact(compact), kRefused);
}

}  // namespace
