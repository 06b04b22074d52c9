// What pxd sessions tells beyond the week itself, and pxd exchanges.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "command_fixture.h"

namespace {

using namespace pxd_test;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class SessionsCommand : public CommandTest {};

TEST_F(SessionsCommand, AMomentHasItsNextAndItsNearestCloses) {
  EXPECT_THAT(Run("sessions 'Mon-Fri 09:30-16:00' --at '2024-03-06 12:00:20'").out,
              EndsWith("\n\n"
                       "  next session           2024-03-07 09:30:20 to 2024-03-07 16:00:20\n"
                       "  next weekly close      2024-03-08 16:00:00\n"
                       "  next monthly close     2024-03-29 16:00:00\n"
                       "  nearest daily close    2024-03-06 16:00:00\n"
                       "    its session opened   2024-03-06 09:30:00\n"));
}

TEST_F(SessionsCommand, TheToleranceDecidesOnTheNearestClose) {
  const std::string at = "sessions 'Mon-Fri 09:30-16:00' --at '2024-03-06 12:00' --tolerance ";
  for (const char* span : {"4h", "240m", "14400s", "1d"}) {
    EXPECT_THAT(Run(at + span).out, HasSubstr("nearest daily close    2024-03-06 16:00:00\n"));
  }
  for (const char* span : {"239m", "14399s", "0d"}) {
    EXPECT_THAT(Run(at + span).out, EndsWith("nearest daily close    none within the tolerance\n"));
  }
  for (const char* span : {"4", "h", "4x", "-1h", "65536d", "''"}) {
    const Ran ran = Run(at + span);
    EXPECT_EQ(ran.status, 2) << span;
    EXPECT_EQ(ran.out, "");
  }
}

TEST_F(SessionsCommand, TheCompactFormTellsWhatIsLostInIt) {
  EXPECT_THAT(Run("sessions 'Mon-Fri 09:30-16:00 reset 30' --uni").out,
              EndsWith("\nCompact form:\n"
                       "  09:30-16:00 on Mon,Tue,Wed,Thu,Fri: ends the trading day\n"
                       "  reset 30 min\n"
                       "Nothing is lost in it.\n"));
  EXPECT_THAT(Run("sessions 'Mon 09:00-11:30 part; Mon 12:30-15:30 dribble 10; Tue 09:00-12:00' "
                  "--uni")
                  .out,
              EndsWith("\nCompact form:\n"
                       "  12:30-15:30 on Mon: ends the trading day\n"
                       "  09:00-11:30 on Mon: part of the trading day\n"
                       "  reset 0 min\n"
                       "Lost in it:\n"
                       "  Mon 12:30 - 15:30      ends the trading day, dribble 10 min\n"
                       "  Tue 09:00 - 12:00      ends the trading day\n"
                       "Comes back instead:\n"
                       "  Mon 12:30 - 15:30      ends the trading day\n"));
}

TEST_F(SessionsCommand, AnOffsetMovesTheWeek) {
  EXPECT_THAT(Run("sessions 'Mon,Tue 09:30-16:00' --offset 90").out,
              HasSubstr("Machine form: 2:2100,2490,0,0,1;3540,3930,0,0,1\n"));
  EXPECT_THAT(Run("sessions 'Mon,Tue 09:30-16:00' --offset -2010").out,
              StartsWith("Week:\n  Sun 00:00 - 06:30 "));
  for (const char* minutes : {"10081", "-10081", "x"}) {
    EXPECT_EQ(Run(std::string("sessions 'Mon 09:30-16:00' --offset ") + minutes).status, 2);
  }
}

TEST_F(SessionsCommand, ARepairTellsWhatItTrimmed) {
  const char* const rough = "'Mon 09:00-11:30 reset 120 dribble 40; Mon 12:00-13:00'";
  EXPECT_EQ(Run(std::string("sessions ") + rough).status, 2);
  EXPECT_EQ(Run(std::string("sessions --make-valid ") + rough).out,
            "Trimmed:\n"
            "  Mon 09:00 - 11:30      dribble 29 min, was 40\n"
            "  Mon 09:00 - 11:30      reset 29 min, was 120\n"
            "\n"
            "Week:\n"
            "  Mon 09:00 - 11:30      ends the trading day, dribble 29 min, reset 29 min\n"
            "  Mon 12:00 - 13:00      ends the trading day\n"
            "\n"
            "Machine form: 2:1980,2130,29,29,1;2160,2220,0,0,1\n"
            "Valid: yes\n");
  EXPECT_EQ(Run("sessions --make-valid '2:1980,2130,120,40,1;2160,2220,0,0,1'").out,
            Run(std::string("sessions --make-valid ") + rough).out);
  EXPECT_THAT(Run("sessions --make-valid 'Mon 09:00-11:30'").out,
              StartsWith("Nothing was trimmed.\n\nWeek:\n"));
}

TEST_F(SessionsCommand, WhatARepairCantMendIsTold) {
  const struct {
    const char* text;
    const char* err;
  } kRows[] = {
      {"'Mon 09:00-11:30; Mon 11:00-13:00'",
       "pxd: --make-valid: shorter windows don't help: the session Mon 11:00 - 13:00 collides with "
       "Mon 09:00 - 11:30\n"},
      {"'2:3000,3100,0,0,1;100,200,0,0,1'",
       "pxd: --make-valid: shorter windows don't help: the session Sun 01:40 - 03:20 stands out of "
       "order"},
      {"'0:'", "pxd: --make-valid: shorter windows don't help: there is no session"},
  };
  for (const auto& row : kRows) {
    const Ran ran = Run(std::string("sessions --make-valid ") + row.text);
    EXPECT_EQ(ran.status, 1) << row.text;
    EXPECT_EQ(ran.out, "");
    EXPECT_THAT(ran.err, StartsWith(row.err));
  }
  EXPECT_EQ(Run("sessions --make-valid nonsense").status, 2);
}

TEST_F(SessionsCommand, ExchangesAreFoundByCodeNameOrWords) {
  const std::string head = " Code  Name      Description\n";
  EXPECT_EQ(Run("exchanges NYSE").out, head + "  124  NYSE      New York Stock Exchange(NYSE)\n");
  EXPECT_EQ(Run("exchanges nyse").out, Run("exchanges 124").out);
  EXPECT_EQ(Run("exchanges US").out,
            head + "    0  US        United States\n  300  US        United States\n")
      << "a short name hides the words in which it stands";
  EXPECT_EQ(Run("exchanges toronto").out, head + "  143  TSE       Toronto Exchange\n");
  const std::string all = Run("exchanges").out;
  EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 1 + 112);
  const Ran none = Run("exchanges 65535");
  EXPECT_EQ(none.status, 1);
  EXPECT_EQ(none.out, "");
  EXPECT_EQ(none.err, "pxd: no exchange has the code, the short name or the words \"65535\"\n");
}

}  // namespace
