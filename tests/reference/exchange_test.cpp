#include <pxdutil/reference/exchange.h>

#include <cstddef>
#include <cstring>
#include <iterator>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <pxdutil/foundation/host_types.h>
#include <pxdutil/sessions/session.h>

namespace {

std::string Text(const ZRGS_SESSION& list) {
  CString text;
  CZRGSSession::BuildStringFromZRGS_SESSION(list, text);
  return text.Str();
}

// Fills a text member, without a NUL where the text takes all of it.
template <std::size_t N>
void Fill(char (&member)[N], const std::string& text) {
  ASSERT_LE(text.size(), N);
  std::memcpy(member, text.data(), text.size());
}

// ---- The table --------------------------------------------------------------------------------

TEST(ExchangeTable, HasAllRowsInOrderAndATerminator) {
  const auto rows = pxd::ExchangeTable();
  ASSERT_EQ(rows.size(), 113U);
  for (std::size_t i = 1; i < rows.size(); ++i) {
    EXPECT_LE(rows[i - 1].wCode, rows[i].wCode) << i;
  }
  EXPECT_EQ(rows.back().wCode, 65535);
  EXPECT_STREQ(rows.back().pszAbbr, "");
  EXPECT_STREQ(rows.back().pszDescription, "");
}

TEST(ExchangeTable, CodesStandInThreeRangesWithGaps) {
  std::set<unsigned> expected;
  for (const auto& [from, to] : std::vector<std::pair<unsigned, unsigned>>{{0, 46},
                                                                           {52, 53},
                                                                           {91, 94},
                                                                           {99, 99},
                                                                           {104, 135},
                                                                           {141, 145},
                                                                           {149, 165},
                                                                           {299, 300},
                                                                           {65535, 65535}}) {
    for (unsigned code = from; code <= to; ++code) {
      expected.insert(code);
    }
  }
  std::multiset<unsigned> codes;
  for (const ZRGS_EXCHANGE_ROW& row : pxd::ExchangeTable()) {
    codes.insert(row.wCode);
  }
  EXPECT_EQ(std::set<unsigned>(codes.begin(), codes.end()), expected);
  // Those that stand twice make up the rest of the 113.
  EXPECT_EQ(codes.count(122), 2U);
  EXPECT_EQ(codes.count(142), 2U);
  EXPECT_EQ(expected.size() + 2, 113U);
}

TEST(ExchangeTable, EveryRowIsAsHostsKnowIt) {
  const struct {
    unsigned short code;
    const char* abbr;
    const char* description;
  } kRows[] = {
      {0, "US", "United States"},
      {1, "AT", "Austria"},
      {2, "AU", "Australia"},
      {3, "BE", "Belgium"},
      {4, "BR", "Brazil"},
      {5, "CA", "Canada"},
      {6, "CH", "Switzerland"},
      {7, "CL", "Chile"},
      {8, "CO", "Colombia"},
      {9, "DE", "Germany"},
      {10, "DK", "Denmark"},
      {11, "ES", "Spain"},
      {12, "FI", "Finland"},
      {13, "FR", "France"},
      {14, "GB", "United Kingdom"},
      {15, "GR", "Greece"},
      {16, "HK", "Hong Kong"},
      {17, "ID", "Indonesia"},
      {18, "IT", "Italy"},
      {19, "JP", "Japan"},
      {20, "KR", "Korea (Republic of)"},
      {21, "LU", "Luxembourg"},
      {22, "MX", "Mexico"},
      {23, "MY", "Malaysia"},
      {24, "NL", "Netherlands"},
      {25, "NO", "Norway"},
      {26, "NZ", "New Zealand"},
      {27, "PE", "Peru"},
      {28, "PH", "Philippines"},
      {29, "PK", "Pakistan"},
      {30, "PT", "Portugal"},
      {31, "SE", "Sweden"},
      {32, "SG", "Singapore"},
      {33, "TH", "Thailand"},
      {34, "TR", "Turkey"},
      {35, "TW", "Taiwan"},
      {36, "VE", "Venezuela"},
      {37, "ZA", "South Africa"},
      {38, "IA", "India"},
      {39, "CN", "China"},
      {40, "BG", "Bangladesh"},
      {41, "SL", "Sri Lanka"},
      {42, "UG", "Uruguay"},
      {43, "MO", "Morocco"},
      {44, "JO", "Jordan"},
      {45, "AG", "Argentina"},
      {46, "IL", "Israel"},
      {52, "WORLD", "World Information"},
      {53, "UNKNOWN", "Unknown Exchange"},
      {91, "EA", "S.America (Emerging Markets)"},
      {92, "EE", "Europe (Emerging Markets}"},  // the brace is the table's own
      {93, "EF", "Far East (Emerging Markets)"},
      {94, "EM", "M East,Africa(Emerging Markets)"},
      {99, "EH", "Eastern Hemisphere"},
      {104, "AMEX", "American Stock Exchange"},
      {105, "BOX", "Boston Stock Exchange"},
      {106, "CBOE", "Chicago Board Options Exchange"},
      {107, "CHXE", "Chicago Stock Exchange"},
      {108, "CBOT", "Chicago Board of Trade"},
      {109, "CME", "Chicago Mercantile Exchange"},
      {110, "CIN", "Cincinnati Stock Exchange"},
      {111, "COMEX", "Commodity Exchange Corporation"},
      {112, "AMEM", "AMEX Emerging Market"},
      {113, "FOREX", "Forex"},
      {114, "DC", "Discount Corp(Fixed Income)"},
      {115, "INS", "Instinet"},
      {116, "ISE", "International Securities Exchange"},
      {117, "IMM", "International Money Market(IMM)"},
      {118, "KCBT", "Kansas City Board of Trade"},
      {119, "MIDAM", "MidAmerica Commodity Exchange"},
      {120, "MW", "MidWest Stock Exchange"},
      {121, "MGE", "Minneapolis Grain Exchange"},
      {122, "NASDAQ", "NASDAQ National Market"},
      {122, "NASDQ", "NASDAQ National Market"},
      {123, "NASDS", "NASDAQ Small Cap"},
      {124, "NYSE", "New York Stock Exchange(NYSE)"},
      {125, "NYMEX", "New York Mercantile Exchange"},
      {126, "NYBOT", "New York Futures Exchange"},
      {127, "PCX", "Pacific Exchange"},
      {128, "OTCBB", "NASDAQ OTC BB (Domestic)"},
      {129, "OTC", "NASDAQ OTC BB (Foreign)"},
      {130, "PBT", "Philadelphia Board of Trade"},
      {131, "PHLX", "Philadelphia Stock Exchange"},
      {132, "ONCH", "One Chicago"},
      {133, "NQLX", "Nasdaq Liffe Markets"},
      {134, "ARCX", "Archipelago Exchange"},
      {135, "ADFN", "Nasdaq Alternative Display Format"},
      {141, "ASE", "Alberta Exchange"},
      {142, "MSE", "Montreal Exchange"},
      {142, "MSE", "Montreal Exchange"},
      {143, "TSE", "Toronto Exchange"},
      {144, "VE", "Vancouver Exchange"},
      {145, "WCG", "Winnipeg Commodity Exchange"},
      {149, "OETOB", "Australian Option Exchange"},
      {150, "DEFSE", "Frankfurt Stock Exchange"},
      {151, "DEFEX", "Reference Foreign Exchange Rates"},
      {152, "DENEU", "Neuer Markt"},
      {153, "DEWAX", "European Warrants Exchange"},
      {154, "DEBER", "Berlin Stock Exchange"},
      {155, "DEBRE", "Bremen Stock Exchange"},
      {156, "DEDUS", "Dusseldorf Stock Exchange"},
      {157, "DEXET", "Xetra Stock Exchange"},
      {158, "DEHAM", "Hamburg Stock Exchange"},
      {159, "DEHAN", "Hannover Stock Exchange"},
      {160, "DEMUN", "Munich Stock Exchange"},
      {161, "DESTU", "Stuttgart Stock Exchange"},
      {162, "EUDE", "EUREX"},
      {163, "IEIR", "Irish Stock Exchange"},
      {164, "FISH", "Helsinki Exchanges"},
      {165, "DEBI", "Deutsche B\xC3\xB6rse Index"},
      {299, "OPRA", "Option Price Reporting Authority"},
      {300, "US", "United States"},
  };
  const auto rows = pxd::ExchangeTable();
  ASSERT_EQ(rows.size(), std::size(kRows) + 1) << "the terminator comes last";
  for (std::size_t i = 0; i < std::size(kRows); ++i) {
    EXPECT_EQ(rows[i].wCode, kRows[i].code) << i;
    EXPECT_STREQ(rows[i].pszAbbr, kRows[i].abbr) << i;
    EXPECT_STREQ(rows[i].pszDescription, kRows[i].description) << i;
    const ZRGS_EXCHANGE_ROW* found = pxd::FindExchange(kRows[i].code);
    ASSERT_NE(found, nullptr) << kRows[i].code;
    EXPECT_EQ(found->wCode, kRows[i].code);
    EXPECT_STREQ(found->pszDescription, kRows[i].description);
  }
}

TEST(FindExchange, OfEqualRowsTheFirstIsFound) {
  const auto rows = pxd::ExchangeTable();
  EXPECT_EQ(pxd::FindExchange("US"), &rows[0]) << "not 300";
  EXPECT_STREQ(pxd::FindExchange(122)->pszAbbr, "NASDAQ");
  EXPECT_EQ(pxd::FindExchange("NASDQ")->wCode, 122);
  EXPECT_EQ(pxd::FindExchange("NASDQ"), pxd::FindExchange("NASDAQ") + 1);
  EXPECT_EQ(pxd::FindExchange("MSE"), pxd::FindExchange(142));
}

TEST(FindExchange, WhatIsntThereIsNull) {
  for (const int code : {47, 51, 103, 136, 298, 301, 65534, 65535}) {
    EXPECT_EQ(pxd::FindExchange(static_cast<unsigned short>(code)), nullptr) << code;
  }
  for (const char* abbr : {"", "us", "NYS", "NYSE ", "New York Stock Exchange(NYSE)"}) {
    EXPECT_EQ(pxd::FindExchange(abbr), nullptr) << abbr;
  }
}

// ---- The trading terms ------------------------------------------------------------------------

TEST(Exchange, AFreshOneIsAllZeros) {
  const CZRGSExchange exchange;
  const std::string zeros(sizeof exchange, '\0');
  EXPECT_EQ(std::memcmp(&exchange, zeros.data(), sizeof exchange), 0);
  EXPECT_STREQ(exchange.GetAbbr(), "");
  EXPECT_STREQ(exchange.GetDescription(), "");
  EXPECT_EQ(exchange.GetPriceScale(), 0);
  EXPECT_EQ(exchange.GetPointValue(), 0.0F);
  EXPECT_EQ(exchange.GetMinMove(), 0.0F);
  EXPECT_EQ(exchange.GetDailyLimit(), 0);
}

TEST(Exchange, MembersAreWhatTheAccessorsTell) {
  CZRGSExchange exchange;
  exchange.wCode = 109;
  Fill(exchange.szAbbr, "CME");
  Fill(exchange.szDescription, "Chicago Mercantile Exchange");
  Fill(exchange.szPointValue, "12.5");
  Fill(exchange.szMinMove, "-.25e1xx");
  exchange.bPriceScale = 200;
  exchange.wDailyLimit = 60000;
  const CZRGSExchange copy = exchange;
  EXPECT_EQ(copy.wCode, 109);
  EXPECT_STREQ(copy.GetAbbr(), "CME");
  EXPECT_STREQ(copy.GetDescription(), "Chicago Mercantile Exchange");
  EXPECT_EQ(copy.GetPointValue(), 12.5F);
  EXPECT_EQ(copy.GetMinMove(), -2.5F);
  EXPECT_EQ(copy.GetPriceScale(), 200);
  EXPECT_EQ(copy.GetDailyLimit(), 60000);
}

TEST(Exchange, NumbersAreReadAgainOnEachCall) {
  CZRGSExchange exchange;
  Fill(exchange.szPointValue, "1");
  EXPECT_EQ(exchange.GetPointValue(), 1.0F);
  Fill(exchange.szPointValue, "2");
  EXPECT_EQ(exchange.GetPointValue(), 2.0F);
}

TEST(Exchange, ANumberWithoutItsNulEndsWithItsArray) {
  CZRGSExchange exchange;
  Fill(exchange.szPointValue, "1234567890");
  Fill(exchange.szMinMove, "0.12500000");  // directly behind it
  EXPECT_EQ(exchange.GetPointValue(), 1234567890.0F);
  exchange.wDailyLimit = 0x3939;  // "99", directly behind the second
  EXPECT_EQ(exchange.GetMinMove(), 0.125F);
}

TEST(Exchange, WhatIsNoNumberIsWhatItsBeginningIs) {
  for (const char* text : {"", "abc", "--1"}) {
    CZRGSExchange exchange;
    Fill(exchange.szMinMove, text);
    EXPECT_EQ(exchange.GetMinMove(), 0.0F) << text;
  }
}

TEST(Exchange, SessionsComeFromTheCompactForm) {
  CZRGSExchange exchange;
  exchange.dwSessionTimes[0] = 570 | (960U << 16);  // 09:30 to 16:00
  exchange.bSessionDays[0] = 0x3E;                  // Monday to Friday
  exchange.dwReset1 = 20;
  exchange.dwReset2 = 10;
  ZRGS_SESSION week;
  exchange.GetSessions(week);
  EXPECT_EQ(Text(week),
            "5:2010,2400,30,0,1;3450,3840,30,0,1;4890,5280,30,0,1;6330,6720,30,0,1;"
            "7770,8160,30,0,1");
}

TEST(Exchange, TheSecondTimeRangeDecidesOnTheSecondSlot) {
  CZRGSExchange exchange;
  exchange.dwSessionTimes[0] = 750 | (930U << 16);
  exchange.bSessionDays[0] = 0x02;
  exchange.bSessionDays[1] = 0x02;
  ZRGS_SESSION week;
  exchange.GetSessions(week);
  EXPECT_EQ(week.sessions.size(), 1U) << "days alone are no second slot";
  exchange.dwSessionTimes[1] = 540 | (690U << 16);
  exchange.GetSessions(week);
  EXPECT_EQ(week.sessions.size(), 2U);
}

TEST(Exchange, TheTwoResetsAreAddedInSixteenBits) {
  CZRGSExchange exchange;
  exchange.dwSessionTimes[0] = 570 | (960U << 16);
  exchange.bSessionDays[0] = 0x02;
  exchange.dwReset1 = 0xFFFFFFFF;
  exchange.dwReset2 = 0x00010006;
  ZRGS_SESSION week;
  exchange.GetSessions(week);
  EXPECT_EQ(Text(week), "1:2010,2400,5,0,1");
}

TEST(Exchange, WithoutSessionsTheWeekIsMonday) {
  ZRGS_SESSION week;
  CZRGSExchange().GetSessions(week);
  EXPECT_EQ(Text(week), "1:2010,2400,0,0,1");
}

// ---- The choice in a list ---------------------------------------------------------------------

class ExchangeChoice : public testing::Test {
 protected:
  ExchangeChoice() {
    for (const std::uintptr_t data : {std::uintptr_t{124}, std::uintptr_t{0x1007A}}) {
      m_box.SetItemData(m_box.AddString("x"), data);
    }
  }
  CComboBox m_box;
};

TEST_F(ExchangeChoice, TheSelectedItemsCodeIsTheLowWordOfItsData) {
  unsigned short code = 7;
  EXPECT_EQ(CZRGSExchange::CB_GetSelExchange(m_box, code), 0) << "nothing is selected";
  EXPECT_EQ(code, 7);
  m_box.SetCurSel(1);
  EXPECT_EQ(CZRGSExchange::CB_GetSelExchange(m_box, code), 1);
  EXPECT_EQ(code, 122);
  m_box.SetItemData(1, static_cast<std::uintptr_t>(-1));
  code = 7;
  EXPECT_EQ(CZRGSExchange::CB_GetSelExchange(m_box, code), 0) << "no data";
  EXPECT_EQ(code, 7);
}

TEST_F(ExchangeChoice, TheFirstItemOfACodeIsSelected) {
  m_box.SetItemData(m_box.AddString("again"), 122);
  EXPECT_EQ(CZRGSExchange::CB_SetSelExchange(m_box, 122), 1);
  EXPECT_EQ(m_box.GetCurSel(), 1);
  EXPECT_EQ(CZRGSExchange::CB_SetSelExchange(m_box, 99), 0);
  EXPECT_EQ(m_box.GetCurSel(), 1) << "the selection stays";
}

TEST_F(ExchangeChoice, AnEmptyListHasNone) {
  CComboBox empty;
  EXPECT_EQ(CZRGSExchange::CB_SetSelExchange(empty, 0), 0);
  class Broken : public CComboBox {
    [[nodiscard]] int GetCount() const override { return -1; }
  } broken;
  EXPECT_EQ(CZRGSExchange::CB_SetSelExchange(broken, 0), 0);
}

}  // namespace
