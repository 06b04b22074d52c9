// pxd fields, run as people run it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>

#include "command_fixture.h"

namespace {

using namespace pxd_test;
using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;

class FieldsCommand : public CommandTest {};

std::ptrdiff_t LineCount(const std::string& text) {
  return std::count(text.begin(), text.end(), '\n');
}

TEST_F(FieldsCommand, AllFieldsAreATable) {
  const Ran ran = Run("fields");
  EXPECT_EQ(ran.status, 0) << ran.err;
  EXPECT_EQ(LineCount(ran.out), 1 + 231);
  EXPECT_THAT(ran.out, StartsWith("  Id  Name "));
  EXPECT_THAT(ran.out, HasSubstr("\n   8  Bid Size                    number  volume      "
                                 "snapshot, split, volume multiplier\n"));
}

TEST_F(FieldsCommand, TheStorableOnesAreFive) {
  const json fields = json::parse(Run("fields --storable --json").out);
  ASSERT_EQ(fields.size(), 5U);
  const int ids[] = {200, 201, 202, 436, 521};
  for (std::size_t i = 0; i < fields.size(); ++i) {
    EXPECT_EQ(fields[i]["id"], ids[i]);
  }
}

TEST_F(FieldsCommand, OneFieldIsShownWhole) {
  const Ran ran = Run("fields --id 436");
  EXPECT_EQ(ran.status, 0) << ran.err;
  EXPECT_EQ(ran.out,
            "436 After Market Trade Record\n"
            "  value               number\n"
            "  kind                record\n"
            "  flags               storable, split, distribution, price multiplier, volume "
            "multiplier\n"
            "  made of             285 Close, 14 Trade Volume\n"
            "  updated at 1 Day    232 Bar Open, 233 Bar High, 234 Bar Low, 235 Bar Close, 249 Bar "
            "TotalVol, 253 Bar OpenInt, 324 Bar Total Ticks\n"
            "  updated at 1 Week   232 Bar Open, 233 Bar High, 234 Bar Low, 235 Bar Close, 249 Bar "
            "TotalVol, 253 Bar OpenInt, 324 Bar Total Ticks\n"
            "  updated at 1 Month  232 Bar Open, 233 Bar High, 234 Bar Low, 235 Bar Close, 249 Bar "
            "TotalVol, 253 Bar OpenInt, 324 Bar Total Ticks\n"
            "  stored at           1 Tick (data point 5)\n"
            "  stored at           1 Second, 5 Seconds, 1 Day (data point 6)\n");
  EXPECT_EQ(Run("fields --name 'after market trade record'").out, ran.out)
      << "letters of either case";
}

TEST_F(FieldsCommand, OneFieldIsShownWholeAsJson) {
  const json field = json::parse(Run("fields --id 448 --json").out);
  EXPECT_EQ(field["name"], "ECN Aggregate Depth");
  EXPECT_EQ(field["kind"], "no history");
  EXPECT_EQ(field["flags"], json::array());
  // The field that it names has no row, and so no name.
  EXPECT_EQ(field["made_of"], json::parse(R"([{"id": 460, "name": "460"}])"));
  EXPECT_EQ(field["stored"], json::array());
  const json bid = json::parse(Run("fields --id 7 --json").out);
  EXPECT_EQ(bid["size"], 4);
  EXPECT_EQ(bid["stored"][1]["data_point"], 2);
  EXPECT_EQ(bid["stored"][1]["resolutions"][1],
            json::parse(R"({"name": "5 Seconds", "unit": 2, "quantity": 5})"));
}

TEST_F(FieldsCommand, APartOfANameFindsAllThatHaveIt) {
  const Ran ran = Run("fields --name aggregate");
  EXPECT_EQ(LineCount(ran.out), 3);
  EXPECT_THAT(ran.out, HasSubstr("\n 448  ECN Aggregate Depth "));
  EXPECT_THAT(ran.out, HasSubstr("\n 450  ECN Aggregate "));
  EXPECT_EQ(json::parse(Run("fields --name aggregate --json").out).size(), 2U);
}

TEST_F(FieldsCommand, ResolutionsAreListed) {
  EXPECT_EQ(Run("fields --resolutions 201").out, "1 Tick\n1 Second\n5 Seconds\n1 Day\n");
  EXPECT_EQ(Run("fields --resolutions 'trade record'").out, Run("fields --resolutions 201").out);
  EXPECT_EQ(json::parse(Run("fields --resolutions 201 --json").out)[3],
            json::parse(R"({"name": "1 Day", "unit": 4, "quantity": 1})"));
  const Ran none = Run("fields --resolutions 8");
  EXPECT_EQ(none.status, 0);
  EXPECT_EQ(none.out, "");
  EXPECT_EQ(none.err, "pxd: \"Bid Size\" is stored in no resolution\n");
}

TEST_F(FieldsCommand, WhatIsntThereIsTold) {
  const struct {
    const char* arguments;
    int status;
    const char* err;
  } kRows[] = {
      {"fields --id 6", 1, "--id: the catalogue has no field 6"},
      {"fields --id 70000", 1, "--id: the catalogue has no field 70000"},
      {"fields --name xyzzy", 1, "--name: the catalogue has no field with \"xyzzy\" in its name"},
      {"fields --resolutions 6", 2, "--resolutions: \"6\" is no field of the catalogue"},
      {"fields --id 7 --storable", 2, "--id"},
      {"fields --check none", 1, "none: can't be read: No such file or directory"},
      {"fields --check .", 1, ".: is a directory; expected a file to read"},
      {"fields --write .", 1, ".: the catalogue can't be written there"},
      {"fields --write none/c", 1, "none/c: the catalogue can't be written there"},
  };
  for (const auto& row : kRows) {
    const Ran ran = Run(row.arguments);
    EXPECT_EQ(ran.status, row.status) << row.arguments;
    EXPECT_THAT(ran.err, StartsWith("pxd: ")) << row.arguments;
    EXPECT_THAT(ran.err, HasSubstr(row.err)) << row.arguments;
    EXPECT_EQ(LineCount(ran.err), 1) << ran.err;
    EXPECT_EQ(ran.out, "");
  }
}

TEST_F(FieldsCommand, AFileThatWasWrittenIsGood) {
  EXPECT_EQ(Run("fields --write c").err, "pxd: c: the catalogue is there, 231 fields\n");
  const Ran ran = Run("fields --check c");
  EXPECT_EQ(ran.status, 0) << ran.err;
  EXPECT_EQ(ran.out, "c: a good catalogue of 231 fields\n");
  Write("damaged", "x");
  EXPECT_EQ(Run("fields --write damaged").status, 0);
  EXPECT_EQ(Contents("damaged"), Contents("c")) << "a damaged file is replaced";
}

TEST_F(FieldsCommand, WhatIsWrongWithAFileIsToldWithItsLine) {
  Run("fields --write good");
  const std::string good = Contents("good");
  const auto replaced = [&good](const std::string& what, const std::string& by) {
    std::string text = good;
    return text.replace(text.find(what), what.size(), by);
  };
  const std::string lines = good.substr(0, good.size() - 15);
  std::string otherVersion = good;
  otherVersion[good.size() - 2] = 31;
  const struct {
    std::string bytes;
    const char* words;
  } kRows[] = {
      {replaced("Bid Size", "Bid Sise"),
       "c:3: edited or damaged: the checksum doesn't fit; this is the first line that isn't built "
       "in"},
      {replaced("{Bid Size,8,0,1,1,0,0,1,0,0,1", "{Bid Size,8,0,1,1,0,0,1,0,0,2"), "c:3: "},
      {replaced("{Bid Size,8,", "{Bid Size,7,"), "c:3: "},
      {replaced("{Bid Size,8,", "{Bid,Size,8,"),
       "c:3: There should be 14 parameters for the FieldInfo line, but I found 15"},
      {otherVersion, "c: is of another version of the catalogue"},
      {lines, "c: doesn't end with VersionInfo, a checksum and a version; the file is cut short"},
      {lines + "VersionInfo", "c: doesn't end with VersionInfo"},
      {"", "c: doesn't end with VersionInfo"},
      {"hello\n", "c:1: There should be 14 parameters"},
  };
  for (const auto& row : kRows) {
    Write("c", row.bytes);
    const Ran ran = Run("fields --check c");
    EXPECT_EQ(ran.status, 1) << row.words;
    EXPECT_THAT(ran.err, StartsWith(std::string("pxd: ") + row.words));
    EXPECT_EQ(LineCount(ran.err), 1) << ran.err;
    EXPECT_EQ(ran.out, "");
  }
}

}  // namespace
