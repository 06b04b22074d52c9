// pxd settings, run as people run it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "command_fixture.h"

namespace {

using namespace pxd_test;
using testing::HasSubstr;
using testing::StartsWith;

class SettingsCommand : public CommandTest {};

TEST_F(SettingsCommand, ATextIsSortedAndShownInEveryForm) {
  const Ran ran = Run("settings '2:201,Trade Record,5,3,1000;202,Ask Record,1,4,50000'");
  EXPECT_EQ(ran.status, 0);
  EXPECT_EQ(ran.err, "");
  EXPECT_EQ(ran.out,
            "Settings of 2 lines, in order:\n"
            "  Ask Record\t1 Day\t50000 days\n"
            "  Trade Record\t5 Minutes\t1000 days\n"
            "\n"
            "Plain form:   Ask Record 1 Day 50000 days, Trade Record 5 Minutes 1000 days\n"
            "Machine form: 2:202,Ask Record,1,4,50000;201,Trade Record,5,3,1000\n"
            "\n"
            "A quote must carry:\n"
            "   285 Close\n"
            "    14 Trade Volume\n"
            "   321 Bar Up Ticks\n"
            "   322 Bar Down Ticks\n"
            "    10 Ask\n"
            "    11 Ask Size\n");
}

TEST_F(SettingsCommand, WhatIsShownReadsBack) {
  const std::string out = Run("settings --default 1").out;
  const std::string mark = "Machine form: ";
  const std::size_t begin = out.find(mark) + mark.size();
  const std::string machine = out.substr(begin, out.find('\n', begin) - begin);
  EXPECT_EQ(machine,
            "6:202,Ask Record,1,3,1000;202,Ask Record,1,4,50000;200,Bid Record,1,3,1000;"
            "200,Bid Record,1,4,50000;201,Trade Record,1,3,1000;201,Trade Record,1,4,50000");
  EXPECT_THAT(Run("settings '" + machine + "'").out, HasSubstr(mark + machine + "\n"));
}

TEST_F(SettingsCommand, BarsThatUpdateFieldsTellThem) {
  const std::string out = Run("settings --add '436, 1 Day, 10'").out;
  EXPECT_THAT(out, HasSubstr("A quote must carry:\n"
                             "   285 Close\n"
                             "    14 Trade Volume\n"
                             "\n"
                             "Its bars also update:\n"
                             "   232 Bar Open\n"
                             "   233 Bar High\n"
                             "   234 Bar Low\n"
                             "   235 Bar Close\n"
                             "   249 Bar TotalVol\n"
                             "   253 Bar OpenInt\n"
                             "   324 Bar Total Ticks\n"));
  // Daily trade bars come with the server's own day.
  EXPECT_THAT(Run("settings --add '201, 1 Day, 10'").out,
              HasSubstr("A quote must carry:\n  nothing\n"));
}

TEST_F(SettingsCommand, LinesAreAddedAndRemoved) {
  const Ran ran =
      Run("settings --default 4 --add 'ask record, 30s, 7' --add 'Bid Record, 1t, 2'"
          " --remove '201, 1 Day' --remove 'trade record, 1 minute'");
  EXPECT_EQ(ran.status, 0) << ran.err;
  EXPECT_THAT(ran.out, HasSubstr("Machine form: 3:202,Ask Record,30,2,7;200,Bid Record,1,1,2;"
                                 "201,Trade Record,1,1,15\n"));
}

TEST_F(SettingsCommand, TheLargerNumberOfDaysHolds) {
  const Ran ran = Run("settings '201,Trade Record,5,3,10' --add '201, 5m, 20' --add '201, 5m, 3'");
  EXPECT_THAT(ran.out, HasSubstr("Machine form: 1:201,Trade Record,5,3,20\n"));
  const std::string note =
      "pxd: note: \"Trade Record 5 Minutes\" stands there twice; the larger number of days holds, "
      "20\n";
  EXPECT_EQ(ran.err, note + note);
}

TEST_F(SettingsCommand, OddTextsAreNoted) {
  const Ran ran = Run("settings '3:7,Bidd,1,1,5;'");
  EXPECT_EQ(ran.status, 0);
  EXPECT_EQ(ran.err,
            "pxd: note: line 1: field 7 is called \"Bid\", not \"Bidd\"\n"
            "pxd: note: the text tells of 3 lines and has 1\n"
            "pxd: note: field 7 \"Bid\" isn't among those that users may store\n");
  EXPECT_THAT(Run("settings '0:'").out, StartsWith("Settings of 0 lines, in order:\n"));
}

TEST_F(SettingsCommand, BadLinesAreToldWithTheirNumber) {
  const struct {
    const char* arguments;
    const char* err;
  } kRows[] = {
      {"settings", "expected settings: a text, --default or --add"},
      {"settings --default 9", "--default"},
      {"settings 'x:201'", "\"x\" is no count"},
      {"settings '201'",
       "line 1, \"201\": has 1 items; expected id, name, quantity, unit and days, with no comma in "
       "the name"},
      {"settings '201,Trade Record,1,4,5;201,Trade, Record,1,4,5'", "line 2, "},
      {"settings '6,Six,1,4,5'", "the catalogue has no field \"6\""},
      {"settings '70000,x,1,4,5'", "the catalogue has no field \"70000\""},
      {"settings '201,Trade Record,0,4,5'", "\"0\" is no quantity; expected 1 to 4095"},
      {"settings '201,Trade Record,4096,4,5'", "\"4096\" is no quantity; expected 1 to 4095"},
      {"settings '201,Trade Record,1,8,5'", "\"8\" is no unit; expected 1 (Tick) to 7 (Year)"},
      {"settings '201,Trade Record,1,4,65536'",
       "\"65536\" is no number of days; expected 0 to 65535"},
      {"settings --add '201'", "--add: \"201\": \"\" is no number of days"},
      {"settings --add 'Trade, 1d, 5'", "\"Trade\" is no field of the catalogue"},
      {"settings --add '201, 1x, 5'", "\"1x\" is no resolution"},
      {"settings --add '201, 4096s, 5'", "a setting's quantity is at most 4095"},
      {"settings --default 0 --remove '201'", "--remove: \"201\""},
  };
  for (const auto& row : kRows) {
    const Ran ran = Run(row.arguments);
    EXPECT_EQ(ran.status, 2) << row.arguments;
    EXPECT_EQ(ran.out, "");
    EXPECT_THAT(ran.err, StartsWith("pxd: "));
    EXPECT_THAT(ran.err, HasSubstr(row.err));
    EXPECT_EQ(ran.err.find('\n'), ran.err.size() - 1) << ran.err;
  }
  const Ran missing = Run("settings --default 0 --remove '201, 2m'");
  EXPECT_EQ(missing.status, 1);
  EXPECT_EQ(missing.err, "pxd: --remove: the settings have no \"Trade Record 2 Minutes\"\n");
}

TEST_F(SettingsCommand, ATableHasNoMoreThan30Lines) {
  std::string text;
  for (int seconds = 1; seconds <= 30; ++seconds) {
    text += "201,Trade Record," + std::to_string(seconds) + ",2,5;";
  }
  EXPECT_THAT(Run("settings '" + text + "'").out, StartsWith("Settings of 30 lines"));
  const Ran full = Run("settings '" + text + "201,Trade Record,31,2,5'");
  EXPECT_EQ(full.status, 1);
  EXPECT_EQ(full.err,
            "pxd: \"Trade Record 31 Seconds\" has no room: a table has at most 30 lines\n");
}

}  // namespace
