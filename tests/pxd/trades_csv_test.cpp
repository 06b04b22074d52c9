// Trades from CSV: what is read, in pieces of any size, and every way in which a row is bad.
#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include <tools/pxd/moment.h>
#include <tools/pxd/trades_csv.h>

using namespace pxd::tool;

namespace {

class Collected final : public TradeSink {
 public:
  void Take(const Trade& trade) override { trades.push_back(trade); }
  std::vector<Trade> trades;
};

struct Outcome {
  std::vector<Trade> trades;
  std::string error;  // "LINE: what"; empty for success
  std::uint64_t badRows = 0;
  std::string firstBad;
};

Outcome Read(std::string_view text, const TradeOptions& options = {},
             std::size_t pieceSize = std::string::npos) {
  Collected collected;
  TradesCsv csv(options, collected);
  Outcome outcome;
  bool good = true;
  while (good && !text.empty()) {
    const std::string_view piece = text.substr(0, pieceSize);
    good = csv.Feed(piece);
    text.remove_prefix(piece.size());
  }
  good = good && csv.Finish();
  if (!good) {
    outcome.error = std::to_string(csv.ErrorLine()) + ": " + csv.Error();
  }
  outcome.trades = collected.trades;
  outcome.badRows = csv.BadRows();
  if (csv.BadRows() != 0) {
    outcome.firstBad = std::to_string(csv.FirstBadLine()) + ": " + csv.FirstBadError();
  }
  return outcome;
}

std::string Text(const Trade& trade) {
  return std::to_string(trade.line) + " " + MomentText(trade.when) + " " +
         std::to_string(trade.price) + " " + std::to_string(trade.volume);
}

std::vector<std::string> Texts(const Outcome& outcome) {
  std::vector<std::string> texts;
  for (const Trade& trade : outcome.trades) {
    texts.push_back(Text(trade));
  }
  if (!outcome.error.empty()) {
    texts.push_back("error " + outcome.error);
  }
  return texts;
}

const std::vector<std::string> kOneTrade = {"2 2024-03-04 09:31:00 101.250000 300.000000"};

TEST(TradesCsv, ColumnsAreFoundByTheirHeaderInAnyOrder) {
  for (const char* text : {
           "date,time,price,volume\n2024-03-04,09:31:00,101.25,300\n",
           "Volume,PRICE,Time,Date\n300,101.25,09:31,2024-03-04\n",
           "date,time_ns,price,size,side,sequence\n2024-03-04,09:31:00.999999999,101.25,300,B,7\n",
           "date,time_utc,last,qty\n20240304,9:31,101.25,300\n",
           "timestamp,close,size\n2024-03-04T09:31:00.123Z,101.25,300\n",
           "datetime,price,size\n2024-03-04 09:31,101.25,300\n",
           "time,price,size\n2024-03-04 09:31:00+02:00,101.25,300\n",
           "date,price,size\n2024-03-04 09:31:00,101.25,300\n",
           // A whole timestamp beside a date is the better one.
           "date,timestamp,price,size\n2024-03-05,2024-03-04T09:31:00,101.25,300\n",
           "sym,date,time,price,volume\nABC,2024-03-04,09:31:00,+101.25,3e2\n",
           "date,time,price,volume\n 2024-03-04 , 09:31:00 , 101.25 , 300 \n",
           "\"date\",\"time\",\"price\",\"volume\"\n\"2024-03-04\",\"09:31:00\",\"101.25\","
           "\"300\"\n",
           "date,time,price,volume\r\n2024-03-04,09:31:00,101.25,300\r\n",
           "date,time,price,volume\r2024-03-04,09:31:00,101.25,300\r",
           "date,time,price,volume\n2024-03-04,09:31:00,101.25,300",
           "\xEF\xBB\xBF"
           "date,time,price,volume\n2024-03-04,09:31:00,101.25,300\n",
       }) {
    EXPECT_EQ(Texts(Read(text)), kOneTrade) << text;
    EXPECT_EQ(Texts(Read(text, {}, 1)), kOneTrade) << "byte by byte: " << text;
  }
}

TEST(TradesCsv, PriceIsPreferredToLastAndClose) {
  EXPECT_EQ(Texts(Read("date,time,close,last,price,volume\n2024-03-04,09:31,1,2,101.25,300\n")),
            kOneTrade);
}

TEST(TradesCsv, ColumnsCanBeNamed) {
  TradeOptions options;
  options.columns = {"Day", "clock", "BID", "none"};
  EXPECT_EQ(
      Texts(Read("day,clock,bid,ask,volume\n2024-03-04,09:31:00.462,1.38817,1.38884,9\n", options)),
      (std::vector<std::string>{"2 2024-03-04 09:31:00 1.388170 0.000000"}));
  options.columns = {"", "", "", "lots"};
  EXPECT_EQ(Texts(Read("date,time,price,volume,lots\n2024-03-04,09:31,101.25,7,300\n", options)),
            kOneTrade);
}

TEST(TradesCsv, TheShiftMovesTheClockAcrossMidnight) {
  TradeOptions options;
  options.shift = -5 * 3600;
  EXPECT_EQ(Texts(Read("date,time,price,volume\n2024-03-04,02:31,1,0\n", options)),
            (std::vector<std::string>{"2 2024-03-03 21:31:00 1.000000 0.000000"}));
  options.shift = 9 * 3600;
  EXPECT_EQ(Texts(Read("date,time,price,volume\n2024-12-31,23:59:59,1,0\n", options)),
            (std::vector<std::string>{"2 2025-01-01 08:59:59 1.000000 0.000000"}));
}

TEST(TradesCsv, LinesAreCountedOverQuotedEndsAndBlankOnes) {
  for (const std::string end : {"\n", "\r\n", "\r"}) {
    const std::string text = "note,date,time,price,volume" + end +                        // 1
                             end +                                                        // 2
                             "\"a" + end + "b" + end + "\",2024-03-04,09:31,1,2" + end +  // 3 to 5
                             "  " + end +                                                 // 6
                             "c,2024-03-04,09:32,3,4" + end +                             // 7
                             "d,2024-03-04,09:33,x,4" + end;                              // 8
    const std::vector<std::string> expected = {
        "3 2024-03-04 09:31:00 1.000000 2.000000", "7 2024-03-04 09:32:00 3.000000 4.000000",
        "error 8: \"x\" in column \"price\"; expected a number that a 32-bit float can hold, such "
        "as 101.25"};
    for (const std::size_t piece : {std::size_t{1}, std::size_t{7}, text.size()}) {
      EXPECT_EQ(Texts(Read(text, {}, piece)), expected) << "pieces of " << piece;
    }
  }
}

TEST(TradesCsv, ABadRowSaysWhatIsWrongAndWhatWasExpected) {
  const std::string number = "; expected a number that a 32-bit float can hold, such as 101.25";
  const struct {
    std::string row;
    std::string error;
  } kRows[] = {
      {"2024-03-04,09:31,1", "the row has 3 columns; expected 4, as the header has"},
      {"2024-03-04,09:31,1,2,3", "the row has 5 columns; expected 4, as the header has"},
      {"garbage", "the row has 1 columns; expected 4, as the header has"},
      {"2024-02-30,09:31,1,2",
       "\"2024-02-30\" in column \"date\"; expected a date such as "
       "2024-03-04"},
      {",09:31,1,2", "\"\" in column \"date\"; expected a date such as 2024-03-04"},
      {"2024-03-04,25:00,1,2",
       "\"25:00\" in column \"time\"; expected a time such as "
       "09:31:00.123 or 2024-03-04T09:31:00.123Z"},
      {"1899-12-30,00:00,1,2",
       "the date 1899-12-30 is out of range; expected one from 1900-03-01 to 2079-03-31"},
      {"2079-04-01,00:00,1,2",
       "the date 2079-04-01 is out of range; expected one from 1900-03-01 to 2079-03-31"},
      {"2024-03-04,09:31,abc,2", "\"abc\" in column \"price\"" + number},
      {"2024-03-04,09:31,,2", "\"\" in column \"price\"" + number},
      {"2024-03-04,09:31,1.5x,2", "\"1.5x\" in column \"price\"" + number},
      {"2024-03-04,09:31,nan,2", "\"nan\" in column \"price\"" + number},
      {"2024-03-04,09:31,inf,2", "\"inf\" in column \"price\"" + number},
      {"2024-03-04,09:31,-inf,2", "\"-inf\" in column \"price\"" + number},
      {"2024-03-04,09:31,3.5e38,2", "\"3.5e38\" in column \"price\"" + number},
      {"2024-03-04,09:31,1e999,2", "\"1e999\" in column \"price\"" + number},
      {"2024-03-04,09:31,\"1,5\",2", "\"1,5\" in column \"price\"" + number},
      {"2024-03-04,09:31,0x10,2", "\"0x10\" in column \"price\"" + number},
      {std::string("2024-03-04,09:31,1\0,2", 21), "\"1?\" in column \"price\"" + number},
      {"2024-03-04,09:31,1,-2", "\"-2\" in column \"volume\"; expected a volume of 0 or more"},
      {"2024-03-04,09:31,1,many", "\"many\" in column \"volume\"" + number},
      {"2024-03-04,09:31,1\"2,3",
       "a quotation mark stands where none may; expected it round a whole field, and doubled "
       "inside it"},
      {"2024-03-04,09:31,\"1\"2,3",
       "a quotation mark stands where none may; expected it round a whole field, and doubled "
       "inside it"},
  };
  const std::string head = "date,time,price,volume\n2024-03-04,09:31,1,2\n";
  const std::string tail = "\n2024-03-04,09:32,3,4\n";
  TradeOptions skipping;
  skipping.skipBad = true;
  for (const auto& row : kRows) {
    EXPECT_EQ(Read(head + row.row + tail).error, "3: " + row.error) << row.row;
    EXPECT_EQ(Read(head + row.row).error, "3: " + row.error) << row.row;
    const Outcome skipped = Read(head + row.row + tail, skipping, 5);
    EXPECT_EQ(skipped.error, "");
    EXPECT_EQ(skipped.badRows, 1U) << row.row;
    EXPECT_EQ(skipped.firstBad, "3: " + row.error) << row.row;
    EXPECT_EQ(skipped.trades.size(), 2U) << row.row;
  }
}

TEST(TradesCsv, AnOddButGoodNumberIsTaken) {
  EXPECT_EQ(Texts(Read("date,time,price,volume\n2024-03-04,09:31,-37.63,0\n")),
            (std::vector<std::string>{"2 2024-03-04 09:31:00 -37.630000 0.000000"}));
  EXPECT_EQ(Read("date,time,price,volume\n2024-03-04,09:31,3.4028234e38,0\n").error, "");
}

TEST(TradesCsv, ANumberIsTheNearestToItsDigits) {
  std::mt19937 random(1);
  std::string text = "date,time,price,volume\n";
  std::vector<double> wanted;
  for (int row = 0; row < 20000; ++row) {
    // 15 digits are the most that are read in the short way.
    std::string digits;
    for (std::size_t left = 1 + random() % 18; left > 0; --left) {
      digits += static_cast<char>('0' + random() % 10);
    }
    if (random() % 4 != 0) {
      digits.insert(random() % (digits.size() + 1), ".");
    }
    text += "2024-03-04,09:31," + digits + ",0\n";
    wanted.push_back(std::strtod(digits.c_str(), nullptr));
  }
  const Outcome outcome = Read(text);
  ASSERT_EQ(outcome.error, "");
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    ASSERT_EQ(outcome.trades[i].price, wanted[i]) << i;
  }
}

TEST(TradesCsv, APointAloneIsNoNumber) {
  EXPECT_NE(Read("date,time,price,volume\n2024-03-04,09:31,.,0\n").error, "");
  EXPECT_NE(Read("date,time,price,volume\n2024-03-04,09:31,1.2.3,0\n").error, "");
}

TEST(TradesCsv, ATimestampNeedsItsDate) {
  EXPECT_EQ(Read("time,price,volume\n09:31,1,2\n").error,
            "2: the row has a time but no date; expected both, or a timestamp");
  EXPECT_EQ(Read("date,price,volume\n2024-03-04,1,2\n").error,
            "2: the row has a date but no time; expected both, or a timestamp");
}

TEST(TradesCsv, AHeaderWithoutAColumnIsRefusedEvenWhenRowsMayBeBad) {
  const struct {
    const char* text;
    ColumnNames names;
    const char* error;
  } kRows[] = {
      {"", {}, "1: the file is empty; expected a header line with the names of the columns"},
      {"\n\n", {}, "1: the file is empty; expected a header line with the names of the columns"},
      {"\xEF\xBB",
       {},
       "1: the header has no column for the date and time; expected date and time, "
       "or one of timestamp, datetime, date_time, time, time_ns, time_utc, or the "
       "names by --date and --time; it has \"??\""},
      {"\n2024-03-04,09:31,1,2\n",
       {},
       "2: the header has no column for the date and time; expected date and time, or one of "
       "timestamp, datetime, date_time, time, time_ns, time_utc, or the names by --date and "
       "--time; it has \"2024-03-04, 09:31, 1, 2\""},
      {"date,time,volume\n",
       {},
       "1: the header has no column for the price; expected price, last, close, or the name by "
       "--price; it has \"date, time, volume\""},
      {"date,time,price\n",
       {},
       "1: the header has no column for the volume; expected volume, size, qty, or the name by "
       "--volume; it has \"date, time, price\""},
      {"date,time,price,volume\n",
       {"", "", "bid", ""},
       "1: the header has no column \"bid\" for the price; it has \"date, time, price, volume\""},
      {"date,time,price,volume\n",
       {"day", "", "", ""},
       "1: the header has no column \"day\" for the date; it has \"date, time, price, volume\""},
      {"date,time,price,volume\n",
       {"", "clock", "", ""},
       "1: the header has no column \"clock\" for the time; it has \"date, time, price, volume\""},
      {"date,time,price,volume\n",
       {"", "", "price", "price"},
       "1: the column \"price\" can't be the volume, since it is something else already"},
  };
  for (const auto& row : kRows) {
    TradeOptions options;
    options.columns = row.names;
    options.skipBad = true;
    EXPECT_EQ(Read(row.text, options).error, row.error) << row.text;
  }
}

TEST(TradesCsv, AHeaderAloneHasNoTrades) {
  const Outcome outcome = Read("date,time,price,volume\n");
  EXPECT_EQ(outcome.error, "");
  EXPECT_TRUE(outcome.trades.empty());
}

TEST(TradesCsv, ARowIsAtMostSoLong) {
  const std::string head = "note,date,time,price,volume\n";
  const std::string rest = ",2024-03-04,09:31,1,2\n";
  const std::string longest(TradesCsv::kLongestRow - rest.size(), 'x');
  EXPECT_EQ(Read(head + longest + rest).trades.size(), 1U);
  const std::string error =
      "2: the row is longer than 65536 bytes; expected a row of a CSV file, with every quotation "
      "mark closed";
  EXPECT_EQ(Read(head + longest + 'x' + rest).error, error);
  EXPECT_EQ(Read(head + longest + 'x' + rest, {}, 1000).error, error);

  TradeOptions skipping;
  skipping.skipBad = true;
  const Outcome skipped = Read(head + longest + longest + rest + "a" + rest, skipping, 1000);
  EXPECT_EQ(skipped.firstBad, error);
  EXPECT_EQ(skipped.badRows, 1U);
  ASSERT_EQ(skipped.trades.size(), 1U);
  EXPECT_EQ(skipped.trades[0].line, 3U);
}

TEST(TradesCsv, AQuotationMarkThatIsNeverClosedIsFoundAtTheEnd) {
  const std::string text = "date,time,price,volume\n2024-03-04,09:31,1,2\n2024-03-04,\"09:32,1,2\n";
  EXPECT_EQ(Read(text).error,
            "3: the file ends inside quotation marks; expected the mark that closes them");
  TradeOptions skipping;
  skipping.skipBad = true;
  EXPECT_EQ(Read(text, skipping).badRows, 1U);
  EXPECT_EQ(Read(text, skipping).trades.size(), 1U);
}

TEST(TradesCsv, BinaryGarbageIsRefusedInOneLine) {
  std::string garbage;
  std::uint32_t state = 1;
  for (int i = 0; i < 200000; ++i) {
    state = state * 1664525 + 1013904223;
    garbage += static_cast<char>(state >> 24);
  }
  for (const std::size_t start : {0U, 1U, 17U, 4096U}) {
    const Outcome outcome = Read(garbage.substr(start));
    EXPECT_NE(outcome.error, "");
    EXPECT_EQ(outcome.error.find('\n'), std::string::npos);
    EXPECT_LT(outcome.error.size(), 400U);
  }
}

TEST(TradesCsv, WhatTheSinkThrowsComesThrough) {
  class Throwing final : public TradeSink {
    void Take(const Trade&) override { throw 7; }
  } sink;
  TradesCsv csv({}, sink);
  EXPECT_THROW(csv.Feed("date,time,price,volume\n2024-03-04,09:31,1,2\n"), int);
}

}  // namespace
