// The program itself, run as people run it: what it prints, where, and with what exit status.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <pxdutil/datapoints/old_bars.h>
#include <pxdutil/foundation/archive.h>
#include <pxdutil/foundation/file.h>
#include <pxdutil/version.h>

#include "command_fixture.h"

namespace {

using namespace pxd_test;

class Command : public CommandTest {};

// Three trades in two minutes, and one outside.
constexpr const char* kTrades =
    "date,time,price,volume\n"
    "2024-03-04,09:30:00.5,10.5,100\n"
    "2024-03-04,09:30:59,10.25,50\n"
    "2024-03-04,09:31:00,11,200\n"
    "2024-03-04,17:00:00,12,1\n";
constexpr const char* kOptions = " --sessions 'Mon-Fri 09:30-16:00' --resolution '1 Minute' ";

constexpr const char* kTable =
    "Date        Time           Open       High        Low      Close    Up Vol.  Down Vol.  "
    "Unch. Vol.  Tot. Vol.   Up Ticks  Down Ticks  Unch. Ticks  Tot. Ticks\n"
    "2024-03-04  09:31:00       10.5       10.5      10.25      10.25        100         50  "
    "         0        150          1           1            0           2\n"
    "2024-03-04  09:32:00         11         11         11         11        200          0  "
    "         0        200          1           0            0           1\n";
constexpr const char* kCsv =
    "Date,Time,Open,High,Low,Close,Up Vol.,Down Vol.,Unch. Vol.,Tot. Vol.,Up Ticks,Down "
    "Ticks,Unch. Ticks,Tot. Ticks\n"
    "2024-03-04,09:31:00,10.5,10.5,10.25,10.25,100,50,0,150,1,1,0,2\n"
    "2024-03-04,09:32:00,11,11,11,11,200,0,0,200,1,0,0,1\n";

// The summary without the time, which is never the same.
std::string WithoutTime(const std::string& err) {
  const std::size_t begin = err.find("time taken");
  if (begin == std::string::npos) {
    return err;
  }
  return err.substr(0, begin) + err.substr(err.find('\n', begin) + 1);
}

constexpr const char* kSummary =
    "trades read                            4\n"
    "  taken                                3\n"
    "  outside any session                  1\n"
    "bars written                           2\n";

TEST_F(Command, HelpIsThereOnAllLevels) {
  const Ran all = Run("--help");
  EXPECT_EQ(all.status, 0);
  EXPECT_EQ(all.err, "");
  for (const std::string command : {"bars", "show", "export", "adjust", "sessions", "fields",
                                    "settings", "query", "quote", "exchanges", "sample"}) {
    EXPECT_NE(all.out.find("  " + command), std::string::npos) << command;
    const Ran one = Run(command + " --help");
    EXPECT_EQ(one.status, 0);
    EXPECT_EQ(one.err, "");
    EXPECT_NE(one.out.find("Usage: pxd " + command), std::string::npos) << one.out;
  }
  EXPECT_NE(Run("bars --help").out.find("100t counts 100\ntrades a bar"), std::string::npos)
      << "how tick bars count";
}

TEST_F(Command, VersionIsTheLibrarys) {
  const Ran ran = Run("--version");
  EXPECT_EQ(ran.status, 0);
  EXPECT_EQ(ran.out, "pxd " PXDUTIL_VERSION "\n");
  EXPECT_EQ(ran.err, "");
}

TEST_F(Command, BadUsageIsToldInOneLineWithStatus2) {
  Write("t.csv", kTrades);
  const std::string sessions = " --sessions 'Mon-Fri 09:30-16:00'";
  const struct {
    std::string arguments;
    std::string words;
  } kRows[] = {
      {"", "A subcommand is required"},
      {"nonsense", "\"nonsense\" is no command; expected one of bars, show"},
      {"bars", "TRADES is required"},
      {"bars t.csv --resolution 1m", "--sessions is required"},
      {"bars t.csv" + sessions, "--resolution is required"},
      {"bars t.csv --resolution 1m --sessions nonsense",
       "--sessions: \"nonsense\" is no group of sessions; expected days and times, as in "
       "\"Mon-Fri 09:30-16:00\""},
      {"bars t.csv --resolution 5x" + sessions,
       "--resolution: \"5x\" is no resolution; expected a number of 1 to 65535 and a unit"},
      {"bars t.csv --resolution 1y" + sessions,
       "--resolution: bars of years can't be built, since the calendar closes no year"},
      {"bars t.csv --resolution 2d" + sessions, "--resolution: bars of 2 Days can't be built"},
      {"bars t.csv --resolution 1m --time-shift 5" + sessions,
       "--time-shift: \"5\" is no shift; expected +HH:MM or -HH:MM below a day, as in -05:00"},
      {"bars t.csv --resolution 1m --frob" + sessions, "--frob"},
      {"show t.csv", "--resolution is required"},
      {"show t.csv --resolution 1t --old",
       "ticks have no old format; expected --old with a resolution of bars"},
      {"show t.csv --resolution 1m --head x", "--head"},
      {"show t.csv --resolution 1m --head -1", "--head"},
      {"sessions", "TEXT is required"},
      {"sessions 'Mon 09:30-16:00; Mon 15:00-17:00'",
       "sessions: the session Mon 15:00 - 17:00 collides with Mon 09:30 - 16:00"},
      {"sessions 'Mon 09:30-16:00' --at yesterday",
       "--at: \"yesterday\" is no moment; expected one such as \"2024-03-04 09:31\", from "
       "1900-03-01 to 2079-03-31"},
      {"sessions 'Mon 09:30-16:00' --at 2079-04-01",
       "--at: \"2079-04-01\" is no moment; expected one such as \"2024-03-04 09:31\", from "
       "1900-03-01 to 2079-03-31"},
      {"sample --market moon", "--market: \"moon\" is no market; expected stocks or overnight"},
      {"sample --seed -1", "--seed"},
      {"sample --days 0", "--days"},
      {"sample --days 2501", "--days"},
  };
  for (const auto& row : kRows) {
    const Ran ran = Run(row.arguments);
    EXPECT_EQ(ran.status, 2) << row.arguments;
    EXPECT_EQ(ran.out, "") << row.arguments;
    EXPECT_EQ(ran.err.substr(0, 5), "pxd: ") << ran.err;
    EXPECT_NE(ran.err.find(row.words), std::string::npos) << ran.err;
    EXPECT_EQ(ran.err.find('\n'), ran.err.size() - 1) << ran.err;
  }
}

TEST_F(Command, BarsGoToTheScreenAsATable) {
  Write("t.csv", kTrades);
  const Ran ran = Run(std::string("bars t.csv") + kOptions);
  EXPECT_EQ(ran.status, 0);
  EXPECT_EQ(ran.out, kTable);
  EXPECT_EQ(WithoutTime(ran.err), kSummary);
  EXPECT_NE(ran.err, WithoutTime(ran.err));
}

TEST_F(Command, BarsGoToTheScreenAsCsv) {
  Write("t.csv", kTrades);
  EXPECT_EQ(Run(std::string("bars t.csv --csv") + kOptions).out, kCsv);
}

TEST_F(Command, ADashIsStandardInput) {
  Write("t.csv", kTrades);
  EXPECT_EQ(Run(std::string("bars - --csv") + kOptions + "<t.csv").out, kCsv);
  Write("bad.csv", "date,time,price,volume\nx,09:30,1,1\n");
  const Ran bad = Run(std::string("bars -") + kOptions + "<bad.csv");
  EXPECT_EQ(bad.status, 1);
  EXPECT_EQ(
      bad.err,
      "pxd: standard input:2: \"x\" in column \"date\"; expected a date such as 2024-03-04\n");
}

TEST_F(Command, StoredBarsAreShownAgain) {
  Write("t.csv", kTrades);
  const Ran built = Run(std::string("bars t.csv -o bars.dat") + kOptions);
  EXPECT_EQ(built.status, 0);
  EXPECT_EQ(built.out, "");
  EXPECT_EQ(WithoutTime(built.err), kSummary);
  const std::string bytes = Contents("bars.dat");
  ASSERT_EQ(bytes.size(), 108U);
  // 4 March 2024 is day 45355, B12B; 09:31:00 is 34260, 85D4.
  EXPECT_EQ(bytes.substr(0, 10), std::string("\x2B\xB1\xD4\x85\x00\x00\x00\x00\x28\x41", 10));

  EXPECT_EQ(Run("show bars.dat --resolution 1m").out, kTable);
  EXPECT_EQ(Run("show bars.dat --resolution '1 Minute' --csv").out, kCsv);
  const std::string table = kTable;
  EXPECT_EQ(Run("show bars.dat --resolution 1m --head 1").out,
            table.substr(0, table.find('\n', table.find('\n') + 1) + 1));
  EXPECT_EQ(Run("show bars.dat --resolution 1m --head 0").out,
            table.substr(0, table.find('\n') + 1));
  EXPECT_EQ(Names(), (std::vector<std::string>{"bars.dat", "t.csv"})) << "nothing else is left";
}

TEST_F(Command, CsvGoesToTheScreenAlsoBesideAFile) {
  Write("t.csv", kTrades);
  const Ran built = Run(std::string("bars t.csv --csv -o bars.dat") + kOptions);
  EXPECT_EQ(built.out, kCsv);
  EXPECT_EQ(Contents("bars.dat").size(), 108U);
}

TEST_F(Command, EveryResolutionStoresItsOwnRecords) {
  Write("t.csv", kTrades);
  const struct {
    const char* resolution;
    std::size_t bytes;
  } kRows[] = {{"1t", 3 * 14}, {"2t", 2 * 54}, {"30s", 3 * 54}, {"5m", 54},
               {"1d", 58},     {"1w", 58},     {"1mo", 58}};
  for (const auto& row : kRows) {
    const std::string resolution = row.resolution;
    const Ran ran =
        Run("bars t.csv -o b --sessions 'Mon-Fri 09:30-16:00' --resolution " + resolution);
    EXPECT_EQ(ran.status, 0) << ran.err;
    EXPECT_EQ(Contents("b").size(), row.bytes) << resolution;
    const Ran shown = Run("show b --resolution " + resolution);
    EXPECT_EQ(shown.status, 0) << shown.err;
    // What is shown of a file is what is shown without one, but for a tick's direction.
    if (resolution != "1t") {
      EXPECT_EQ(shown.out,
                Run("bars t.csv --sessions 'Mon-Fri 09:30-16:00' --resolution " + resolution).out);
    }
  }
}

TEST_F(Command, ATimeShiftMovesTheFilesClock) {
  Write("t.csv", "timestamp,price,size\n2024-03-04T14:30:00Z,10,1\n");
  EXPECT_EQ(Run("bars t.csv --csv --time-shift -05:00 --sessions 'Mon-Fri 09:30-16:00' "
                "--resolution 1d")
                .out,
            "Date,Time,Open,High,Low,Close,Up Vol.,Down Vol.,Unch. Vol.,Tot. Vol.,Up Ticks,Down "
            "Ticks,Unch. Ticks,Tot. Ticks,Open Int.\n"
            "2024-03-04,16:00:00,10,10,10,10,1,0,0,1,1,0,0,1,0\n");
}

TEST_F(Command, ColumnsAreNamed) {
  Write("q.csv", "date,time,bid,ask\n2024-03-04,09:30:00.462,1.38817,1.38884\n");
  const Ran ran = Run(
      std::string("bars q.csv --csv --price bid --volume none --date DATE --time Time") + kOptions);
  EXPECT_EQ(ran.status, 0) << ran.err;
  EXPECT_NE(ran.out.find("\n2024-03-04,09:31:00,1.38817,1.38817,1.38817,1.38817,0,0,0,0,1,0,0,1\n"),
            std::string::npos)
      << ran.out;
}

TEST_F(Command, ABadRowStopsWithItsLine) {
  Write("t.csv", std::string(kTrades) + "2024-03-04,09:33,abc,1\n");
  const Ran ran = Run(std::string("bars t.csv -o b") + kOptions);
  EXPECT_EQ(ran.status, 1);
  EXPECT_EQ(ran.err,
            "pxd: t.csv:6: \"abc\" in column \"price\"; expected a number that a 32-bit float can "
            "hold, such as 101.25\n");
  EXPECT_EQ(Names(), (std::vector<std::string>{"t.csv"})) << "no half a file";
}

TEST_F(Command, AFailureLeavesAnOlderFileAlone) {
  Write("t.csv", std::string(kTrades) + "bad\n");
  Write("b", "old");
  EXPECT_EQ(Run(std::string("bars t.csv -o b") + kOptions).status, 1);
  EXPECT_EQ(Contents("b"), "old");
  EXPECT_EQ(Names(), (std::vector<std::string>{"b", "t.csv"}));
}

TEST_F(Command, BadRowsAreCountedWhereTheyMayBeSkipped) {
  Write("t.csv", "date,time,price,volume\nbad\n2024-03-04,09:30,1,1\nworse,,\n");
  const Ran ran = Run(std::string("bars t.csv --skip-bad") + kOptions);
  EXPECT_EQ(ran.status, 0);
  EXPECT_EQ(
      WithoutTime(ran.err),
      "trades read                            1\n"
      "  taken                                1\n"
      "  outside any session                  0\n"
      "bars written                           1\n"
      "bad rows skipped                       2\n"
      "pxd: t.csv:2: the first bad row: the row has 1 columns; expected 4, as the header has\n");
}

TEST_F(Command, TradesBackInTimeAreReported) {
  Write("t.csv",
        "date,time,price,volume\n2024-03-04,09:31:30,1,1\n2024-03-04,09:31:10,2,1\n"
        "2024-03-04,09:30:10,3,1\n");
  const Ran ran = Run(std::string("bars t.csv") + kOptions);
  EXPECT_EQ(ran.status, 0);
  EXPECT_EQ(WithoutTime(ran.err),
            "trades read                            3\n"
            "  taken                                2\n"
            "  outside any session                  0\n"
            "  back in time, left out               1\n"
            "bars written                           1\n"
            "pxd: t.csv:3: the first of 2 trades that go back in time; 1 left out; expected trades "
            "in the order of time\n");
}

TEST_F(Command, FilesThatCantBeReadOrWrittenAreToldInOneLine) {
  Write("t.csv", kTrades);
  Write("empty.csv", "");
  Write("garbage.csv", std::string("\x7f"
                                   "ELF\0\1\2\3\"\n",
                                   10));
  fs::create_directory(m_folder / "folder");
  const std::string options = kOptions;
  const struct {
    std::string arguments;
    std::string err;
  } kRows[] = {
      {"bars none.csv" + options, "none.csv: can't be read: No such file or directory"},
      {"bars folder" + options, "folder: is a directory; expected a file to read"},
      {"bars empty.csv" + options,
       "empty.csv:1: the file is empty; expected a header line with the names of the columns"},
      {"bars garbage.csv" + options,
       "garbage.csv:1: a quotation mark stands where none may; expected it round a whole field, "
       "and doubled inside it"},
      {"bars t.csv -o folder" + options, "folder: is a directory; expected a file to write"},
      {"bars t.csv -o none/b" + options, "none/b: can't be written: no such file"},
      {"show /none --resolution 1m", "/none: can't be read: no such file"},
      {"show none --resolution 1m", "none: can't be read: no such file"},
      {"show folder --resolution 1m", "folder: is a directory; expected a stored series"},
      {"sample -o folder", "folder: is a directory; expected a file to write"},
  };
  for (const auto& row : kRows) {
    const Ran ran = Run(row.arguments);
    EXPECT_EQ(ran.status, 1) << row.arguments;
    EXPECT_EQ(ran.err, "pxd: " + row.err + "\n") << row.arguments;
  }
}

#if defined(_WIN32)

TEST_F(Command, AFullDiskIsTold) {
  GTEST_SKIP() << "Windows has no device that is always full";
}

TEST_F(Command, ATerminalSeesHowFarItIs) {
  GTEST_SKIP() << "Windows has no program to open a terminal with";
}

#else

// Windows says "no such file" of the first, opens no folder as an input, and has no such device.
TEST_F(Command, PlacesThatAreNoFilesAreToldInOneLine) {
  fs::create_directory(m_folder / "folder");
  Write("t.csv", kTrades);
  const struct {
    std::string arguments;
    std::string err;
  } kRows[] = {
      {std::string("bars t.csv -o t.csv/b") + kOptions,
       "t.csv/b: can't be written: not a path to a file"},
      {std::string("bars -") + kOptions + "<folder",
       "standard input: can't be read: Is a directory"},
      {"show /dev/null --resolution 1m", "/dev/null: is no regular file; expected a stored series"},
  };
  for (const auto& row : kRows) {
    const Ran ran = Run(row.arguments);
    EXPECT_EQ(ran.status, 1) << row.arguments;
    EXPECT_EQ(ran.err, "pxd: " + row.err + "\n") << row.arguments;
  }
}

TEST_F(Command, AFullDiskIsTold) {
  if (!fs::exists("/dev/full")) {
    GTEST_SKIP() << "this system has no device that is always full";
  }
  Write("t.csv", kTrades);
  const struct {
    std::string arguments;
    std::string err;
  } kRows[] = {
      {std::string("bars t.csv -o /dev/full") + kOptions,
       "pxd: /dev/full: can't be written: no space left\n"},
      {"sample -o /dev/full", "pxd: /dev/full: can't be written: no space left\n"},
  };
  for (const auto& row : kRows) {
    const Ran ran = Run(row.arguments);
    EXPECT_EQ(ran.status, 1) << row.arguments;
    EXPECT_EQ(ran.err, row.err);
  }
  const std::string screen = "pxd: standard output can't be written: No space left on device\n";
  for (const std::string& arguments :
       {std::string("bars t.csv") + kOptions, std::string("sample"), std::string("--help"),
        std::string("sessions 'Mon 09:30-16:00'")}) {
    EXPECT_EQ(RunPxd(m_folder, arguments, "/dev/full"), 1) << arguments;
    EXPECT_EQ(ReadFile(m_folder / ".err"), screen) << arguments;
  }
  EXPECT_TRUE(fs::is_character_file("/dev/full")) << "a device is written to, never replaced";
}

TEST_F(Command, ATerminalSeesHowFarItIs) {
  // An input that takes its time: the bar waits half a second before it first shows.
  const std::string feed =
      "(printf 'date,time,price,volume\\n2024-03-04,09:30,1,1\\n'; sleep 1; "
      "printf '2024-03-04,09:31,1,1\\n')";
  if (std::system("script -qec true /dev/null >/dev/null 2>&1") != 0) {
    GTEST_SKIP() << "there is no program to open a terminal with";
  }
  Write("run.sh", feed + " | '" + PXD_PROGRAM +
                      "' bars - --sessions 'daily 00:00-24:00' --resolution 1m >bars.txt\n");
  const std::string command = "cd '" + m_folder.string() +
                              "' && script -qec 'sh run.sh' /dev/null </dev/null >screen.txt 2>&1";
  EXPECT_EQ(std::system(command.c_str()), 0);
  const std::string screen = Contents("screen.txt");
  EXPECT_NE(screen.find("\r\x1b[K2 trades"), std::string::npos) << screen;
  EXPECT_LT(screen.find("2 trades\r\x1b[K"), screen.find("trades read")) << "wiped out at the end";
  EXPECT_EQ(Contents("bars.txt").find('\x1b'), std::string::npos);
}

#endif

TEST_F(Command, AFolderThatMayNotBeWrittenIsTold) {
  fs::create_directory(m_folder / "locked");
  fs::permissions(m_folder / "locked", fs::perms::owner_read | fs::perms::owner_exec);
  if (std::ofstream(m_folder / "locked" / "probe")) {
    GTEST_SKIP() << "this user may write everywhere";
  }
  const Ran ran = Run("sample -o locked/s.csv");
  EXPECT_EQ(ran.status, 1);
  EXPECT_EQ(ran.err, "pxd: locked/s.csv: can't be written: access denied\n");
}

TEST_F(Command, ALinkIsWrittenThrough) {
  Write("t.csv", kTrades);
  Write("real", "old");
  if (!MakeLink("link", "real")) {
    GTEST_SKIP() << "no links can be made here";
  }
  EXPECT_EQ(Run(std::string("bars t.csv -o link") + kOptions).status, 0);
  EXPECT_TRUE(fs::is_symlink(m_folder / "link"));
  EXPECT_EQ(Contents("real").size(), 108U);
}

TEST_F(Command, ATruncatedSeriesIsShownUpToItsLastWholeRecord) {
  Write("t.csv", kTrades);
  Run(std::string("bars t.csv -o b") + kOptions);
  Write("cut", Contents("b").substr(0, 107));
  const Ran ran = Run("show cut --resolution 1m");
  EXPECT_EQ(ran.status, 1);
  const std::string table = kTable;
  EXPECT_EQ(ran.out, table.substr(0, table.find('\n', table.find('\n') + 1) + 1));
  EXPECT_EQ(
      ran.err,
      "pxd: cut: the file ends inside a record: 53 bytes behind 1 whole ones; expected records "
      "of 54 bytes, as 1 Minute has\n");
  Write("nothing", "");
  EXPECT_EQ(Run("show nothing --resolution 1m").status, 0);
}

TEST_F(Command, OldSeriesAreShownTakenIntoTheNew) {
  const auto store = [this](const char* name, auto old) {
    const float values[] = {2, 4, 1, 3, 10, 20, 30, 60, 7};
    for (unsigned int column = 0;
         column < 9 && old.GetDataTypeForCol(column) != CDPDataPt::DataTypeNone; ++column) {
      CDPValue value(values[column]);
      old.SetDPValueForCol(column, value);
    }
    old.SetZRDateTime(CZRDateTime(CZRDate(3, 4, 2024), CZRTime(9, 35, 0)));
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    old.Serialize(archive);
    archive.Close();
    Write(name, std::string(file.GetBytes().begin(), file.GetBytes().end()));
  };
  store("minutes", CDPCDblOHLCUDUTOld());
  store("days", CDPCDblOHLCUDUTOOld());
  EXPECT_EQ(Contents("minutes").size(), 38U);
  EXPECT_EQ(Contents("days").size(), 42U);
  const std::string head =
      "Date,Time,Open,High,Low,Close,Up Vol.,Down Vol.,Unch. Vol.,Tot. Vol.,Up Ticks,Down "
      "Ticks,Unch. Ticks,Tot. Ticks";
  EXPECT_EQ(Run("show minutes --old --csv --resolution 5m").out,
            head + "\n2024-03-04,09:35:00,2,4,1,3,10,20,30,60,0,0,0,0\n");
  EXPECT_EQ(Run("show days --old --csv --resolution 1d").out,
            head + ",Open Int.\n2024-03-04,09:35:00,2,4,1,3,10,20,30,60,0,0,0,0,7\n");
  const Ran wrong = Run("show days --old --resolution 5m");
  EXPECT_EQ(wrong.status, 1);
  EXPECT_EQ(
      wrong.err,
      "pxd: days: the file ends inside a record: 4 bytes behind 1 whole ones; expected records "
      "of 38 bytes, as 5 Minutes in the old format has\n");
}

TEST_F(Command, SessionsShowsTheWeekInEveryForm) {
  const Ran ran = Run("sessions 'Mon,Tue 09:30-16:00 dribble 10 reset 30'");
  EXPECT_EQ(ran.status, 0);
  EXPECT_EQ(ran.out,
            "Week:\n"
            "  Mon 09:30 - 16:00      ends the trading day, dribble 10 min, reset 30 min\n"
            "  Tue 09:30 - 16:00      ends the trading day, dribble 10 min, reset 30 min\n"
            "\n"
            "Machine form: 2:2010,2400,30,10,1;3450,3840,30,10,1\n"
            "Valid: yes\n");
  EXPECT_EQ(Run("sessions '2:2010,2400,30,10,1;3450,3840,30,10,1'").out, ran.out);
}

TEST_F(Command, SessionsAnswersForAMomentByEveryPeriod) {
  const Ran ran = Run("sessions 'Mon-Fri 09:30-16:00 dribble 10 reset 30' --at '2024-03-04 16:05'");
  EXPECT_EQ(ran.status, 0);
  // A year answers "fail" whatever it knows; 29 December 2023 was the last trading day before.
  const std::size_t begin = ran.out.find("\nAt ");
  EXPECT_EQ(
      ran.out.substr(begin, ran.out.find("\n\n", begin) + 1 - begin),
      "\nAt 2024-03-04 16:05:00:\n"
      "  Period   Answer Status     Open                 Close                Flags\n"
      "  session  ok     dribble    2024-03-04 09:30:00  2024-03-04 16:00:00  follows a reset, "
      "ends in a reset\n"
      "  day      ok     dribble    2024-03-04 09:30:00  2024-03-04 16:00:00  follows a reset, "
      "ends in a reset\n"
      "  week     ok     open       2024-03-04 09:30:00  2024-03-08 16:00:00  follows a reset, "
      "ends in a reset\n"
      "  month    ok     dribble    2024-03-01 09:30:00  2024-03-29 16:00:00  follows a reset, "
      "ends in a reset\n"
      "  year     fail   open       2024-01-01 09:30:00  2024-12-31 16:00:00  follows a reset, "
      "ends in a reset\n");
  const Ran closed = Run("sessions 'Mon-Fri 09:30-16:00' --at '2024-03-09 12:00'");
  EXPECT_NE(
      closed.out.find("  session  ok     closed     -                    -                    "
                      "follows a reset\n"),
      std::string::npos)
      << closed.out;
}

TEST_F(Command, TheSampleIsBuiltAndReadBack) {
  const Ran sample = Run("sample -o s.csv");
  EXPECT_EQ(sample.status, 0);
  EXPECT_EQ(sample.err, "read it with --sessions \"Mon-Fri 09:30-16:00 dribble 10 reset 30\"\n");
  EXPECT_EQ(Run("sample").out, Contents("s.csv"));
  EXPECT_NE(Run("sample --seed 2").out, Contents("s.csv"));
  EXPECT_LT(Run("sample --days 1").out.size(), Contents("s.csv").size());
  const Ran days =
      Run("bars s.csv --sessions 'Mon-Fri 09:30-16:00 dribble 10 reset 30' "
          "--resolution 1d --csv");
  EXPECT_EQ(days.status, 0);
  EXPECT_EQ(std::count(days.out.begin(), days.out.end(), '\n'), 6);
  EXPECT_NE(days.err.find("  outside any session                  0\n"), std::string::npos)
      << days.err;

  EXPECT_EQ(Run("sample --market Overnight -o o.csv").status, 0);
  const Ran nights =
      Run("bars o.csv --sessions 'Sun-Thu 18:00-17:00 dribble 5 reset 30' "
          "--resolution 1d --csv");
  EXPECT_EQ(std::count(nights.out.begin(), nights.out.end(), '\n'), 6);
  EXPECT_NE(nights.out.find("\n2024-03-04,17:00:00,"), std::string::npos) << nights.out;
}

}  // namespace
