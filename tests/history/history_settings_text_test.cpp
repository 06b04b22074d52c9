#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support.h"

namespace {

using namespace history_test;
using testing::ElementsAre;
using testing::IsEmpty;

using HistoryLineText = WithCatalogue;

TEST_F(HistoryLineText, HasThreeForms) {
  const struct {
    CFieldHistorySetting line;
    const char* plain;
    const char* tabbed;
    const char* machine;
  } kRows[] = {
      {Line(201, 4, 1, 50000), "Trade Record 1 Day 50000 days", "Trade Record\t1 Day\t50000 days",
       "201,Trade Record,1,4,50000"},
      {Line(200, 3, 5, 1), "Bid Record 5 Minutes 1 days", "Bid Record\t5 Minutes\t1 days",
       "200,Bid Record,5,3,1"},
      {Line(7, 8, 2, 0), "Bid 0 days", "Bid\t0 days", "7,Bid,2,8,0"},
      {Line(7, 2, 65535, 65535), "Bid 65535 Seconds 65535 days", "Bid\t65535 Seconds\t65535 days",
       "7,Bid,65535,2,65535"},
  };
  for (const auto& row : kRows) {
    EXPECT_EQ(row.line.GetString(StringFormatPlain), row.plain);
    EXPECT_EQ(row.line.GetString(StringFormatTabbed), row.tabbed);
    EXPECT_EQ(row.line.GetString(StringFormatMachine), row.machine);
    EXPECT_EQ(row.line.GetString(StringFormatBracketed), "");
    EXPECT_EQ(row.line.GetString(kUnknownForm), "");
    EXPECT_EQ(row.line.GetString(kNegativeForm), "");
  }
}

TEST_F(HistoryLineText, CutsThePairAndNotTheDays) {
  AddField(1, std::string(400, 'x'));
  EXPECT_EQ(Line(1, 3, 1, 1000).GetString(StringFormatPlain).Str(),
            std::string(299, 'x') + " 1000 days");
}

TEST_F(HistoryLineText, TheMachineFormReadsBack) {
  for (const CFieldHistorySetting& line :
       {Line(201, 4, 1, 50000), Line(521, 7, 65535, 65535), Line(7, 8, 4096, 0)}) {
    CFieldHistorySetting read;
    EXPECT_EQ(read.SetString(line.GetString(StringFormatMachine), StringFormatMachine), 1);
    EXPECT_EQ(Plain(read), Plain(line));
  }
}

TEST(HistoryLineRead, TakesThePairAheadOfTheLastCommaAndTheDaysBehindIt) {
  const struct {
    const char* text;
    PlainLine read;  // into 9 at 77 Weeks for 88 days
  } kRows[] = {
      {"", {9, 5, 77, 88}},
      {"201", {9, 5, 77, 88}},
      {"201,Trade Record,5,3,1000", {201, 3, 5, 1000}},
      {"201,Trade Record,5,3,", {201, 3, 5, 0}},
      {"201,Trade Record,5,3,x", {201, 3, 5, 0}},
      {"201,Trade Record,5,3,-1", {201, 3, 5, 65535}},
      {"201,Trade Record,5,3,65537", {201, 3, 5, 1}},
      // The pair starts anew, so what is missing is unset and not what was there.
      {"201,Trade Record,5,3", {201, 0, 0, 3}},  // the unit is taken for the days
      {"201,Trade Record,5", {201, 0, 0, 5}},
      {"201,1000", {65535, 0, 0, 1000}},
      {",", {65535, 0, 0, 0}},
      {",,", {0, 0, 0, 0}},
      {"201,Trade Record,5,9,1000", {201, 0, 5, 1000}},
      {"201,Trade Record,0,3,1000", {201, 3, 1, 1000}},
      {"201,Trade Record,5000,3,1000", {201, 3, 5000, 1000}},
  };
  for (const auto& row : kRows) {
    CFieldHistorySetting line = Line(9, 5, 77, 88);
    EXPECT_EQ(line.SetString(row.text, StringFormatMachine), 1) << row.text;
    EXPECT_EQ(Plain(line), row.read) << row.text;
  }
}

TEST(HistoryLineRead, OfOtherFormsChangesNothing) {
  const struct {
    StringFormat format;
    int result;
  } kRows[] = {{StringFormatPlain, 1},
               {StringFormatTabbed, 1},
               {StringFormatBracketed, 0},
               {kUnknownForm, 0},
               {kNegativeForm, 0}};
  for (const auto& row : kRows) {
    CFieldHistorySetting line = Line(9, 5, 77, 88);
    EXPECT_EQ(line.SetString("201,Trade Record,5,3,1000", row.format), row.result);
    EXPECT_THAT(Plain(line), ElementsAre(9, 5, 77, 88));
  }
}

using HistorySettingsText = WithCatalogue;

TEST_F(HistorySettingsText, HasAFormForPeopleAndOneForMachines) {
  const CHistorySettings settings = Table({Line(201, 4, 1, 50000), Line(200, 3, 5, 1000)});
  EXPECT_EQ(settings.GetString(StringFormatPlain, false),
            "Trade Record 1 Day 50000 days, Bid Record 5 Minutes 1000 days");
  EXPECT_EQ(settings.GetString(StringFormatMachine, false),
            "2:201,Trade Record,1,4,50000;200,Bid Record,5,3,1000");
  for (const StringFormat format :
       {StringFormatTabbed, StringFormatBracketed, kUnknownForm, kNegativeForm}) {
    EXPECT_EQ(settings.GetString(format, false), "");
    EXPECT_EQ(settings.GetString(format, true), "");
  }
}

TEST_F(HistorySettingsText, SkippingLeavesTheNumber0InTheMachineFormAlone) {
  const CHistorySettings settings = Table({Line(201, 4, 1, 50000), Line(200, 3, 5, 1000)});
  EXPECT_EQ(settings.GetString(StringFormatMachine, true), "0:");
  EXPECT_EQ(settings.GetString(StringFormatPlain, true),
            settings.GetString(StringFormatPlain, false));
}

TEST_F(HistorySettingsText, OfAnEmptyTable) {
  const CHistorySettings settings;
  EXPECT_EQ(settings.GetString(StringFormatPlain, false), "");
  EXPECT_EQ(settings.GetString(StringFormatMachine, false), "0:");
  EXPECT_EQ(settings.GetString(StringFormatMachine, true), "0:");
}

TEST_F(HistorySettingsText, OfOneLineHasNoSeparator) {
  const CHistorySettings settings = Table({Line(201, 1, 1, 15)});
  EXPECT_EQ(settings.GetString(StringFormatPlain, false), "Trade Record 1 Tick 15 days");
  EXPECT_EQ(settings.GetString(StringFormatMachine, false), "1:201,Trade Record,1,1,15");
}

TEST_F(HistorySettingsText, ReadsBackInItsOrder) {
  for (unsigned char kind = 0; kind <= 8; ++kind) {
    CHistorySettings settings;
    settings.CreateDefaultSettings(kind);
    CHistorySettings read;
    EXPECT_EQ(read.SetString(settings.GetString(StringFormatMachine, false), StringFormatMachine),
              0);
    EXPECT_TRUE(read == settings);
    EXPECT_EQ(NeededIds(read), NeededIds(settings));
  }
  CHistorySettings read;
  read.SetString(FullTable().GetString(StringFormatMachine, false), StringFormatMachine);
  EXPECT_TRUE(read == FullTable());
}

TEST_F(HistorySettingsText, AQuantityAbove4095ReadsBack) {
  const CHistorySettings settings = Table({Line(200, 3, 4096, 1), Line(200, 3, 65535, 2)});
  CHistorySettings read;
  read.SetString(settings.GetString(StringFormatMachine, false), StringFormatMachine);
  EXPECT_TRUE(read == settings);
}

TEST_F(HistorySettingsText, ANameWithACommaDoesNotReadBackAndThatIsMeant) {
  AddField(3, "Bid, high");
  const CHistorySettings settings = Table({Line(3, 4, 7, 10)});
  EXPECT_EQ(settings.GetString(StringFormatMachine, false), "1:3,Bid, high,7,4,10");
  CHistorySettings read;
  read.SetString(settings.GetString(StringFormatMachine, false), StringFormatMachine);
  // Quantity " high", which is 0 and becomes 1; unit "7,4".
  EXPECT_THAT(Plain(read), ElementsAre(PlainLine{3, 7, 1, 10}));
}

using HistorySettingsRead = WithCatalogue;

TEST_F(HistorySettingsRead, TakesTheLinesOfTheText) {
  const PlainLine bid = {200, 3, 5, 1000};
  const PlainLine ask = {202, 4, 1, 20};
  const PlainLine zeros = {0, 0, 0, 0};
  const struct {
    const char* text;
    PlainLines read;
  } kRows[] = {
      {"", {}},
      {"2:", {}},
      {":", {}},
      {"2:200,Bid Record,5,3,1000;202,Ask Record,1,4,20", {bid, ask}},
      {"2:200,Bid Record,5,3,1000;202,Ask Record,1,4,20;", {bid, ask}},
      // The number isn't read.
      {"77:200,Bid Record,5,3,1000", {bid}},
      {"-1:200,Bid Record,5,3,1000", {bid}},
      {"0:200,Bid Record,5,3,1000", {bid}},
      {"many of them:200,Bid Record,5,3,1000", {bid}},
      {":200,Bid Record,5,3,1000", {bid}},
      // Without a colon the lines begin at once; a later colon belongs to its line.
      {"200,Bid Record,5,3,1000;202,Ask Record,1,4,20", {bid, ask}},
      {"1:200,Bid: Record,5,3,1000", {bid}},
      // What stands ahead of the first colon is no line.
      {"202,Ask Record,1,4,20;1:200,Bid Record,5,3,1000", {bid}},
      // A line without a comma is the line of zeros, also an empty one.
      {"1:x", {zeros}},
      {"x", {zeros}},
      {";", {zeros}},
      {"1:;", {zeros}},
      {"3:;;;", {zeros}},
      {"2:;200,Bid Record,5,3,1000", {zeros, bid}},
      {"2:200,Bid Record,5,3,1000;x;202,Ask Record,1,4,20", {bid, zeros, ask}},
      {":::", {zeros}},
  };
  for (const auto& row : kRows) {
    CHistorySettings settings;
    EXPECT_EQ(settings.SetString(row.text, StringFormatMachine), 0) << row.text;
    EXPECT_EQ(Plain(settings), row.read) << row.text;
  }
}

TEST_F(HistorySettingsRead, AddsToWhatIsThereByTheRulesOfAdding) {
  CHistorySettings settings = Table({Line(201, 3, 1, 100), Line(200, 3, 1, 100)}, 5);
  EXPECT_EQ(settings.SetString("3:201,n,1,3,99;200,n,1,3,101;202,n,1,3,7", StringFormatMachine), 0);
  EXPECT_THAT(Plain(settings), ElementsAre(PlainLine{201, 3, 1, 100}, PlainLine{200, 3, 1, 101},
                                           PlainLine{202, 3, 1, 7}));
  EXPECT_EQ(+ZRGS_HISTORY_SETTINGS(settings).bCount, 3 << 3 | 5);
}

TEST_F(HistorySettingsRead, StopsAtThirtyLines) {
  std::string text = "100:";
  for (int i = 1; i <= 100; ++i) {
    text += "200,Bid Record," + std::to_string(i) + ",3,7;";
  }
  CHistorySettings settings;
  EXPECT_EQ(settings.SetString(text.c_str(), StringFormatMachine), 0);
  EXPECT_TRUE(settings == FullTable());
}

TEST_F(HistorySettingsRead, OfOtherFormsDoesNothing) {
  for (const StringFormat format : {StringFormatPlain, StringFormatTabbed, StringFormatBracketed,
                                    kUnknownForm, kNegativeForm}) {
    CHistorySettings settings = Table({Line(201, 3, 1, 100)});
    EXPECT_EQ(settings.SetString("1:200,Bid Record,5,3,1000", format), 0);
    EXPECT_EQ(settings.GetCount(), 1);
  }
}

TEST_F(HistorySettingsRead, StandsHostileText) {
  CHistorySettings settings;
  EXPECT_EQ(settings.SetString(CString(std::string(100000, ';')), StringFormatMachine), 0);
  EXPECT_THAT(Plain(settings), ElementsAre(PlainLine{0, 0, 0, 0}));
  EXPECT_EQ(settings.SetString(CString(std::string(100000, ',')), StringFormatMachine), 0);
  EXPECT_THAT(Plain(settings), ElementsAre(PlainLine{0, 0, 0, 0}, PlainLine{0, 0, 1, 0}));
  EXPECT_EQ(settings.SetString(CString("1:" + std::string(100000, '9') + ",n,1,1,1"),
                               StringFormatMachine),
            0);
  EXPECT_EQ(settings.GetCount(), 3);
}

using HistorySettingsTextDeathTest = WithCatalogue;

TEST_F(HistorySettingsTextDeathTest, AFieldWithoutAnEntryIsAFault) {
  for (const int id : {6, 460, 522}) {
    const CHistorySettings settings = Table({Line(201, 3, 1, 1), Line(id, 3, 1, 1)});
    EXPECT_DEATH(static_cast<void>(settings.GetString(StringFormatPlain, false)),
                 "without a catalogue entry");
    EXPECT_DEATH(static_cast<void>(settings.GetString(StringFormatMachine, false)),
                 "without a catalogue entry");
    EXPECT_DEATH(static_cast<void>(Line(id, 3, 1, 1).GetString(StringFormatTabbed)),
                 "without a catalogue entry");
    EXPECT_EQ(settings.GetString(StringFormatMachine, true), "0:");  // which tells no line
  }
}

}  // namespace
