// pxd adjust, pxd export and --field, run as people run them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include <pxdutil/datapoints/ohlc_bars.h>
#include <pxdutil/datapoints/ticks.h>
#include <pxdutil/foundation/archive.h>
#include <pxdutil/foundation/file.h>

#include "command_fixture.h"

namespace {

using namespace pxd_test;
using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;

// Stored series, and the points of one that was stored.
class SeriesCommands : public CommandTest {
 protected:
  template <class Point>
  static Point MakePoint(const std::vector<float>& values, unsigned minute) {
    Point point;
    for (unsigned int column = 0; column < values.size(); ++column) {
      CDPValue value(values[column]);
      point.SetDPValueForCol(column, value);
    }
    point.SetZRDateTime(CZRDateTime(CZRDate(3, 4, 2024), CZRTime(9, minute, 0)));
    return point;
  }

  template <class Point>
  void Store(const std::string& name, std::vector<Point> points) {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    for (Point& point : points) {
      point.Serialize(archive);
    }
    archive.Close();
    Write(name, std::string(file.GetBytes().begin(), file.GetBytes().end()));
  }

  // The first points of the file.
  template <class Point>
  std::vector<Point> Load(const std::string& name, std::size_t count) {
    const std::string bytes = Contents(name);
    CMemFile file(bytes.data(), bytes.size());
    CArchive archive(&file, CArchive::load);
    std::vector<Point> points(count);
    for (Point& point : points) {
      point.Serialize(archive);
    }
    return points;
  }

  static float At(CDPDataPt& point, unsigned int column) {
    CDPValue value;
    point.GetDPValueForCol(column, value);
    return value.GetFloat();
  }

  // Prices, volumes, ticks and open interest; one with other values; one that is null.
  void StoreDays(const std::string& name) {
    using Bar = CDPCDblOHLCUDUTO;
    Store<Bar>(name, {MakePoint<Bar>({9, 10, 8, 9.5F, 4, 3, 2, 9, 1, 1, 1, 3, 9}, 31),
                      MakePoint<Bar>({1, 1, 1, 1, 1, 1, 1, 3, 1, 1, 1, 3, 1}, 32), Bar()});
  }
};

constexpr const char* kDays = " --resolution 1d ";

TEST_F(SeriesCommands, ASplitDividesPricesAndMultipliesVolumes) {
  StoreDays("days");
  const Ran ran = Run(std::string("adjust days --split 2:1 -o out") + kDays);
  EXPECT_EQ(ran.status, 0);
  EXPECT_EQ(ran.out, "");
  EXPECT_EQ(ran.err, "pxd: out: 2 points restated, 1 null or deleted ones left as they were\n");
  auto bars = Load<CDPCDblOHLCUDUTO>("out", 2);
  ASSERT_EQ(Contents("out").size(), 3U * 58U);
  const float expected[] = {4.5F, 5, 4, 4.75F, 8, 6, 4, 18, 1, 1, 1, 3, 9};
  for (unsigned int column = 0; column < 13; ++column) {
    EXPECT_EQ(At(bars[0], column), expected[column]) << column;
  }
  EXPECT_EQ(Contents("out").substr(116), Contents("days").substr(116)) << "a null bar stays";
}

TEST_F(SeriesCommands, AReverseSplitGoesTheOtherWay) {
  StoreDays("days");
  Run(std::string("adjust days --split 1:4 --in-place") + kDays);
  auto bars = Load<CDPCDblOHLCUDUTO>("days", 2);
  EXPECT_EQ(At(bars[0], 0), 36.0F);
  EXPECT_EQ(At(bars[0], 4), 1.0F);
}

TEST_F(SeriesCommands, EveryOperationAndTargetDoesWhatTheLibraryDoes) {
  const struct {
    const char* operation;
    CDPDataPt::AdjustOperation code;
    float factor;
  } kOperations[] = {{"add", AdjustAdd, 0.1F},
                     {"Subtract", AdjustSubtract, -0.1F},
                     {"multiply", AdjustMultiply, 3},
                     {"divide", AdjustDivide, 3},
                     {"reciprocal", AdjustReciprocal, 0}};
  const struct {
    const char* target;
    CDPDataPt::AdjustTarget code;
  } kTargets[] = {{"prices", AdjustPrices}, {"volumes", AdjustVolumes}, {"OpenInt", AdjustOpenInt}};
  StoreDays("days");
  for (const auto& operation : kOperations) {
    for (const auto& target : kTargets) {
      std::string arguments = std::string("adjust days -o out") + kDays + "--operation " +
                              operation.operation + " --target " + target.target;
      if (operation.code != AdjustReciprocal) {
        arguments += " --factor " + std::to_string(operation.factor);
      }
      const Ran ran = Run(arguments);
      EXPECT_EQ(ran.status, 0) << arguments << ran.err;
      auto expected = Load<CDPCDblOHLCUDUTO>("days", 2);
      auto bars = Load<CDPCDblOHLCUDUTO>("out", 2);
      for (std::size_t bar = 0; bar < 2; ++bar) {
        expected[bar].AdjustData(operation.code, operation.factor, target.code);
        EXPECT_EQ(bars[bar].IsEqualTo(&expected[bar]), 1) << arguments << ' ' << bar;
      }
    }
  }
}

TEST_F(SeriesCommands, TheInputIsReplacedOnlyWhereThatIsAskedFor) {
  StoreDays("days");
  const std::string before = Contents("days");
  std::vector<std::string> names = {"days"};
  const std::string split = std::string("adjust days --split 2:1") + kDays;
  std::vector<std::string> wrong = {split, split + "-o days", split + "-o ./days",
                                    split + "-o out --in-place"};
  if (MakeLink("link", "days")) {
    names.push_back("link");
    wrong.push_back(split + "-o link");
  }
  for (const std::string& arguments : wrong) {
    const Ran ran = Run(arguments);
    EXPECT_EQ(ran.status, 2) << arguments;
    EXPECT_EQ(Contents("days"), before);
  }
  EXPECT_EQ(Names(), names);
  EXPECT_EQ(Run(split + "--in-place").status, 0);
  EXPECT_NE(Contents("days"), before);
  EXPECT_EQ(Names(), names);
}

TEST_F(SeriesCommands, AFailureLeavesEverythingAsItWas) {
  StoreDays("days");
  const std::string cut = Contents("days").substr(0, 100);
  Write("cut", cut);
  const Ran ran = Run(std::string("adjust cut --split 2:1 --in-place") + kDays);
  EXPECT_EQ(ran.status, 1);
  EXPECT_EQ(ran.err,
            "pxd: cut: the file ends inside a record: 42 bytes behind 1 whole ones; expected "
            "records of 58 bytes, as 1 Day has\n");
  EXPECT_EQ(Contents("cut"), cut);
  EXPECT_EQ(Run(std::string("adjust none --split 2:1 -o out") + kDays).status, 1);
  EXPECT_EQ(Names(), (std::vector<std::string>{"cut", "days"}));
}

TEST_F(SeriesCommands, BadAdjustmentsAreTold) {
  StoreDays("days");
  const std::string file = std::string("adjust days -o out") + kDays;
  const struct {
    std::string arguments;
    const char* words;
  } kRows[] = {
      {file, "expected --split, or --operation with --target and --factor"},
      {file + "--split 2", "--split: \"2\" is no split; expected NEW:OLD"},
      {file + "--split 0:1", "--split: \"0:1\" is no split"},
      {file + "--split 2:1:1", "--split: \"2:1:1\" is no split"},
      {file + "--split 2:1000001", "whole shares of 1 to 1000000"},
      {file + "--split 2:1 --factor 2", "--factor"},
      {file + "--operation times --factor 2 --target prices",
       "--operation: \"times\" is none of add, subtract, multiply, divide, reciprocal"},
      {file + "--operation add --factor 2", "--operation also needs --target"},
      {file + "--operation add --factor 2 --target price",
       "--target: \"price\" is none of prices, volumes, openint"},
      {file + "--operation add --target prices", "--operation add also needs --factor"},
      {file + "--operation reciprocal --target prices --factor 1",
       "--factor: reciprocal takes none"},
      {file + "--operation divide --target prices --factor 0", "--factor: \"0\" is no factor"},
      {file + "--operation add --target prices --factor 1e99", "--factor: \"1e99\" is no factor"},
      {file + "--operation add --target prices --factor inf", "--factor: \"inf\" is no factor"},
      {file + "--operation add --target prices --factor 1x", "--factor: \"1x\" is no factor"},
      {file + "--split 2:1 --field xyzzy", "--field: \"xyzzy\" is no field of the catalogue"},
      {file + "--split 2:1 --field 521",
       "--field: nothing is stored of \"Conversion Chart Record 1 Day\"; expected a record"},
      {file + "--split 2:1 --field 7", "--field: nothing is stored of \"Bid 1 Day\""},
  };
  for (const auto& row : kRows) {
    const Ran ran = Run(row.arguments);
    EXPECT_EQ(ran.status, 2) << row.arguments;
    EXPECT_THAT(ran.err, StartsWith("pxd: "));
    EXPECT_THAT(ran.err, HasSubstr(row.words));
    EXPECT_EQ(ran.err.find('\n'), ran.err.size() - 1) << ran.err;
    EXPECT_EQ(Names(), std::vector<std::string>{"days"});
  }
}

// Floats whose shortest decimal form is told apart from its neighbours only by its last digit.
std::vector<float> AwkwardFloats() {
  return {0.1F,
          -0.0F,
          16777217.0F,
          1.0F / 3.0F,
          std::numeric_limits<float>::min(),
          std::numeric_limits<float>::denorm_min(),
          std::numeric_limits<float>::max(),
          std::nextafter(187.25F, 200.0F),
          123456.789F};
}

std::uint32_t BitsOf(float value) {
  std::uint32_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

TEST_F(SeriesCommands, ExportedFloatsReadBackToTheSameBits) {
  const auto floats = AwkwardFloats();
  std::vector<CDPCDblOHLCUDUT> bars;
  for (std::size_t i = 0; i + 4 <= floats.size(); ++i) {
    bars.push_back(MakePoint<CDPCDblOHLCUDUT>(
        {floats[i], floats[i + 1], floats[i + 2], floats[i + 3]}, static_cast<unsigned>(i)));
  }
  Store("bars", bars);
  const Ran csv = Run("export bars --resolution 5m --to csv");
  EXPECT_EQ(csv.status, 0) << csv.err;
  std::istringstream lines(csv.out);
  std::string line;
  std::getline(lines, line);
  EXPECT_THAT(line, StartsWith("Date,Time,Open,High,Low,Close,"));
  const json points = json::parse(Run("export bars --resolution 5m --to JSON").out);
  ASSERT_EQ(points.size(), bars.size());
  for (std::size_t i = 0; i < bars.size(); ++i) {
    ASSERT_TRUE(std::getline(lines, line));
    std::istringstream cells(line);
    std::string cell;
    std::getline(cells, cell, ',');
    EXPECT_EQ(cell, "2024-03-04");
    std::getline(cells, cell, ',');
    EXPECT_EQ(cell, "09:0" + std::to_string(i) + ":00");
    EXPECT_EQ(points[i]["Date"], "2024-03-04");
    EXPECT_EQ(points[i]["Time"], cell);
    const char* const names[] = {"Open", "High", "Low", "Close"};
    for (std::size_t column = 0; column < 4; ++column) {
      std::getline(cells, cell, ',');
      const std::uint32_t bits = BitsOf(floats[i + column]);
      EXPECT_EQ(BitsOf(std::strtof(cell.c_str(), nullptr)), bits) << cell;
      EXPECT_EQ(BitsOf(points[i][names[column]].get<float>()), bits) << cell;
    }
  }
}

TEST_F(SeriesCommands, WhatHasNoDigitsIsStillJson) {
  const float infinity = std::numeric_limits<float>::infinity();
  Store<CDPCDblOHLCUDUT>("bars",
                         {MakePoint<CDPCDblOHLCUDUT>(
                              {infinity, -infinity, std::numeric_limits<float>::quiet_NaN(), 1}, 1),
                          CDPCDblOHLCUDUT()});
  const json points = json::parse(Run("export bars --resolution 5m --to json").out);
  EXPECT_EQ(points[0]["Open"], "inf");
  EXPECT_EQ(points[0]["High"], "-inf");
  EXPECT_EQ(points[0]["Low"], "nan");
  EXPECT_EQ(points[0]["Close"], 1);
  EXPECT_TRUE(points[1]["Date"].is_null());
  EXPECT_TRUE(points[1]["Time"].is_null());
  Write("nothing", "");
  EXPECT_EQ(Run("export nothing --resolution 5m --to json").out, "[\n]\n");
}

TEST_F(SeriesCommands, AnExportGoesToAFileToo) {
  StoreDays("days");
  const Ran screen = Run(std::string("export days --to csv") + kDays);
  const Ran file = Run(std::string("export days --to csv -o out.csv") + kDays);
  EXPECT_EQ(file.status, 0) << file.err;
  EXPECT_EQ(file.out, "");
  EXPECT_EQ(Contents("out.csv"), screen.out);
  const Ran bad = Run(std::string("export days --to xml") + kDays);
  EXPECT_EQ(bad.status, 2);
  EXPECT_EQ(bad.err, "pxd: --to: \"xml\" is no form; expected csv or json\n");
}

TEST_F(SeriesCommands, ACutSeriesIsExportedUpToItsLastWholeRecord) {
  StoreDays("days");
  Write("cut", Contents("days").substr(0, 59));
  const Ran ran = Run(std::string("export cut --to json") + kDays);
  EXPECT_EQ(ran.status, 1);
  EXPECT_EQ(json::parse(ran.out).size(), 1U);
  EXPECT_THAT(ran.err, HasSubstr("the file ends inside a record: 1 bytes behind 1 whole ones"));
}

TEST_F(SeriesCommands, TheFieldDecidesOnTheClass) {
  // Of a field without history ticks are stored, one value each.
  Store<CDPTDblTick>("ticks", {MakePoint<CDPTDblTick>({42.5F}, 31)});
  const Ran ran = Run("show ticks --field 'ECN Aggregate Depth' --resolution 1t --csv");
  EXPECT_EQ(ran.status, 0) << ran.err;
  EXPECT_THAT(ran.out, HasSubstr("2024-03-04,09:31:00,42.5"));
  EXPECT_EQ(Run("show ticks --field 448 --resolution 1t --csv").out, ran.out);
  EXPECT_EQ(Run("show ticks --field 448 --resolution 5m").status, 2);
  const Ran old = Run("show ticks --field 448 --resolution 1t --old");
  EXPECT_EQ(old.err, "pxd: ticks have no old format; expected --old with a resolution of bars\n");
}

TEST_F(SeriesCommands, BarsAreBuiltOfAnyRecord) {
  Write("t.csv", "date,time,price,volume\n2024-03-04,09:30:00,10.5,100\n");
  const std::string bars = "bars t.csv --sessions 'Mon-Fri 09:30-16:00' --resolution 5m";
  const Ran asks = Run(bars + " --field 'ask record'");
  EXPECT_EQ(asks.status, 0) << asks.err;
  EXPECT_EQ(asks.out, Run(bars).out);
  const Ran bid = Run(bars + " --field Bid");
  EXPECT_EQ(bid.status, 2);
  EXPECT_EQ(bid.err,
            "pxd: --resolution: \"Bid 5 Minutes\" can't be built from trades; expected a record, "
            "such as \"Trade Record\"\n");
}

}  // namespace
