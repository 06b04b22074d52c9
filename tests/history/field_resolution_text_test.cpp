#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support.h"

namespace {

using namespace history_test;
using testing::ElementsAre;

using FieldResolnText = WithCatalogue;

TEST_F(FieldResolnText, HasFourForms) {
  const struct {
    CFieldResoln pair;
    const char* plain;
    const char* tabbed;
    const char* machine;
    const char* bracketed;
  } kRows[] = {
      {Pair(201, 1, 1), "Trade Record 1 Tick", "Trade Record\t1 Tick", "201,Trade Record,1,1",
       "Trade Record [1 Tick]"},
      {Pair(201, 1, 2), "Trade Record 2 Ticks", "Trade Record\t2 Ticks", "201,Trade Record,2,1",
       "Trade Record [2 Tick]s"},
      {Pair(200, 2, 30), "Bid Record 30 Seconds", "Bid Record\t30 Seconds", "200,Bid Record,30,2",
       "Bid Record [30 Second]s"},
      {Pair(7, 4, 1), "Bid 1 Day", "Bid\t1 Day", "7,Bid,1,4", "Bid [1 Day]"},
      {Pair(7, 5, 1), "Bid 1 Week", "Bid\t1 Week", "7,Bid,1,5", "Bid [1 Week]"},
      {Pair(7, 6, 3), "Bid 3 Months", "Bid\t3 Months", "7,Bid,3,6", "Bid [3 Month]s"},
      {Pair(7, 7, 65535), "Bid 65535 Years", "Bid\t65535 Years", "7,Bid,65535,7",
       "Bid [65535 Year]s"},
      // Quantity 0 is told as it is.
      {Pair(7, 3, 0), "Bid 0 Minute", "Bid\t0 Minute", "7,Bid,0,3", "Bid [0 Minute]"},
  };
  for (const auto& row : kRows) {
    EXPECT_EQ(row.pair.GetString(StringFormatPlain), row.plain);
    EXPECT_EQ(row.pair.GetString(StringFormatTabbed), row.tabbed);
    EXPECT_EQ(row.pair.GetString(StringFormatMachine), row.machine);
    EXPECT_EQ(row.pair.GetString(StringFormatBracketed), row.bracketed);
  }
}

TEST_F(FieldResolnText, ThePluralStandsBehindTheBracketAndThatIsMeant) {
  EXPECT_EQ(Pair(201, 3, 5).GetString(StringFormatBracketed), "Trade Record [5 Minute]s");
}

TEST_F(FieldResolnText, AUnitWithoutANameLeavesTheFieldsNameAlone) {
  for (const int unit : {0, 8, 9, 65535}) {
    for (const int quantity : {0, 1, 5}) {
      const CFieldResoln pair = Pair(201, unit, quantity);
      EXPECT_EQ(pair.GetString(StringFormatPlain), "Trade Record");
      EXPECT_EQ(pair.GetString(StringFormatTabbed), "Trade Record");
      EXPECT_EQ(pair.GetString(StringFormatBracketed), "Trade Record");
      EXPECT_EQ(pair.GetString(StringFormatMachine).Str(),
                "201,Trade Record," + std::to_string(quantity) + "," + std::to_string(unit));
    }
  }
}

TEST_F(FieldResolnText, AnUnknownFormIsEmpty) {
  EXPECT_EQ(Pair(201, 3, 5).GetString(kUnknownForm), "");
  EXPECT_EQ(Pair(201, 3, 5).GetString(kNegativeForm), "");
}

TEST_F(FieldResolnText, MayHave299Characters) {
  const std::string fits(292, 'x');  // " 1 Tick" makes it 299
  const std::string cut(293, 'x');
  const std::string alone(400, 'x');
  AddField(1, fits);
  AddField(2, cut);
  AddField(3, alone);
  EXPECT_EQ(Pair(1, 1, 1).GetString(StringFormatPlain).Str(), fits + " 1 Tick");
  EXPECT_EQ(Pair(1, 1, 2).GetString(StringFormatPlain).Str(), fits + " 2 Tick");
  EXPECT_EQ(Pair(2, 1, 1).GetString(StringFormatPlain).Str(), cut + " 1 Tic");
  EXPECT_EQ(Pair(3, 1, 1).GetString(StringFormatTabbed).Str(), std::string(299, 'x'));
  EXPECT_EQ(Pair(3, 8, 1).GetString(StringFormatPlain).Str(), std::string(299, 'x'));
  EXPECT_EQ(Pair(3, 1, 1).GetString(StringFormatMachine).Str(), "3," + std::string(297, 'x'));
  EXPECT_EQ(Pair(3, 1, 2).GetString(StringFormatBracketed).Str(), std::string(299, 'x'));
}

TEST_F(FieldResolnText, ANameIsNoFormat) {
  AddField(1, "100% %s %n");
  EXPECT_EQ(Pair(1, 1, 1).GetString(StringFormatPlain), "100% %s %n 1 Tick");
}

TEST_F(FieldResolnText, TheMachineFormReadsBack) {
  for (const CFieldResoln& pair :
       {Pair(201, 1, 1), Pair(521, 7, 65535), Pair(7, 3, 4096), Pair(200, 8, 1)}) {
    CFieldResoln read;
    EXPECT_EQ(read.SetString(pair.GetString(StringFormatMachine), StringFormatMachine), 1);
    EXPECT_EQ(Plain(read), Plain(pair));
  }
}

// Reading asks no catalogue.
TEST(FieldResolnRead, TakesWhatIsThere) {
  const struct {
    const char* text;
    PlainPair read;  // into 9 at 77 Weeks
  } kRows[] = {
      {"", {9, 5, 77}},
      {"201", {9, 5, 77}},
      {"201,", {201, 5, 77}},
      {"201,Trade Record", {201, 5, 77}},
      {"201,Trade Record,", {201, 5, 77}},
      {"201,Trade Record,5", {201, 5, 77}},  // no comma ends the quantity
      {"201,Trade Record,5,", {201, 5, 5}},  // and no unit behind it
      {"201,Trade Record,5,3", {201, 3, 5}},
      {"201,,5,3", {201, 3, 5}},
      {"201,another name,5,3", {201, 3, 5}},  // the name isn't looked at
      {"201,Trade Record,0,3", {201, 3, 1}},  // a quantity of 0 becomes 1
      {"201,Trade Record,x,3", {201, 3, 1}},
      {"201,Trade Record,5,0", {201, 5, 5}},  // a bad unit is ignored
      {"201,Trade Record,5,9", {201, 5, 5}},
      {"201,Trade Record,5,x", {201, 5, 5}},
      {"201,Trade Record,5,8", {201, 8, 5}},
      {"201,Trade Record,4096,3", {201, 3, 4096}},
      {"201,Trade Record,65535,3", {201, 3, 65535}},
      {",,,", {0, 5, 1}},
      {"x,y,z,u", {0, 5, 1}},
      {" 201, Trade Record,\t5, 3", {201, 3, 5}},
      {"+201x,n,5x,3x", {201, 3, 5}},
      {"-1,n,-1,3", {65535, 3, 65535}},  // low 16 bits
      {"65736,n,65541,65539", {200, 3, 5}},
      {"201,n,65536,3", {201, 3, 1}},  // 0 in 16 bits, and so 1
      {"201,n,5,3,4,1", {201, 3, 5}},  // the number that the rest begins with
  };
  for (const auto& row : kRows) {
    CFieldResoln pair = Pair(9, 5, 77);
    EXPECT_EQ(pair.SetString(row.text, StringFormatMachine), 1) << row.text;
    EXPECT_EQ(Plain(pair), row.read) << row.text;
  }
}

TEST(FieldResolnRead, ACommaInANameShiftsWhatFollowsAndThatIsMeant) {
  CFieldResoln pair;
  EXPECT_EQ(pair.SetString("201,Bid, Ask,5,3", StringFormatMachine), 1);
  EXPECT_THAT(Plain(pair), ElementsAre(201, 5, 1));  // quantity " Ask", unit "5,3"
  EXPECT_EQ(pair.SetString("202,High,60,5,3", StringFormatMachine), 1);
  EXPECT_THAT(Plain(pair), ElementsAre(202, 5, 60));
}

TEST(FieldResolnRead, StandsHostileText) {
  CFieldResoln pair;
  EXPECT_EQ(pair.SetString(CString(std::string(100000, ',')), StringFormatMachine), 1);
  EXPECT_THAT(Plain(pair), ElementsAre(0, 0, 1));
  EXPECT_EQ(pair.SetString(CString(std::string(100000, '9') + ",n,7,3"), StringFormatMachine), 1);
  EXPECT_EQ(pair.GetResoln().GetResolnQty(), 7);
  const CString withNul("201\0007,n\0,5\0006,3", 15);
  EXPECT_EQ(pair.SetString(withNul, StringFormatMachine), 1);
  EXPECT_EQ(pair.GetField().GetFieldVal(), 201);
}

TEST(FieldResolnRead, OfTheFormsForPeopleItDoesNothing) {
  for (const StringFormat format : {StringFormatPlain, StringFormatTabbed, StringFormatBracketed}) {
    for (const char* text : {"", "Trade Record 5 Minutes", "201,Trade Record,5,3"}) {
      CFieldResoln pair = Pair(9, 5, 77);
      EXPECT_EQ(pair.SetString(text, format), 1);
      EXPECT_THAT(Plain(pair), ElementsAre(9, 5, 77));
    }
  }
}

TEST(FieldResolnRead, RefusesAnUnknownForm) {
  for (const StringFormat format : {kUnknownForm, kNegativeForm, static_cast<StringFormat>(255)}) {
    CFieldResoln pair = Pair(9, 5, 77);
    EXPECT_EQ(pair.SetString("201,Trade Record,5,3", format), 0);
    EXPECT_THAT(Plain(pair), ElementsAre(9, 5, 77));
  }
}

using FieldResolnTextDeathTest = WithCatalogue;

TEST_F(FieldResolnTextDeathTest, AFieldWithoutAnEntryIsAFault) {
  for (const int id : {6, 460, 522, 65535}) {
    for (const StringFormat format :
         {StringFormatPlain, StringFormatTabbed, StringFormatMachine, StringFormatBracketed}) {
      EXPECT_DEATH(static_cast<void>(Pair(id, 1, 1).GetString(format)),
                   "without a catalogue entry");
    }
  }
}

TEST(FieldResolnTextWithoutManagerDeathTest, IsAFault) {
  ASSERT_EQ(CFieldInfoMgr::m_pInstance, nullptr);
  EXPECT_DEATH(static_cast<void>(Pair(201, 1, 1).GetString(StringFormatPlain)), "no manager");
}

}  // namespace
