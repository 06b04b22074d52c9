// The words in which a field is told of: its name, type, value and status, and the sizes of values.
#include <cstring>
#include <limits>
#include <map>
#include <sstream>
#include <string>

#include "tests/quotes/quote_fixture.h"
#include "tests/support/allocation_counter.h"

namespace {

using namespace pxd::test;

// Every name, as "id name;".
constexpr const char kNames[] = R"(
5 BaseCode; 7 Bid; 8 BidSize; 9 BidExch; 10 Ask; 11 AskSize; 12 AskExch; 14 TrdVol;
16 Exchange Traded; 17 Exchange Listed; 18 NewsCount; 20 TimeOffset; 31 SymbolName; 32 Strike;
62 Description; 66 DeliveryDate; 74 Settlement; 102 ExpDate; 190 Category; 195 HeadLineCount;
196 MinutesDelayed; 199 CUSIP; 200 Bid&BidSize; 201 Last&TVol; 202 Ask&AskSize; 207 FeedID;
208 FeedName; 209 Root; 210 FieldID; 211 FieldDescription; 212 LastTradingDate;
213 FirstNoticeDate; 217 PointValue; 218 MinMove; 219 Sessions; 221 ExpirationStyle; 222 CFI;
224 OptionType; 225 Margin; 227 FieldMask; 228 LastDate; 229 NumdaysBack; 230 DailyLimit;
232 BarOpen; 233 BarHigh; 234 BarLow; 235 BarClose; 238 BarUpVol; 239 BarDownVol; 242 Keyword;
243 NewsSource; 244 HeadlineDays; 245 SymbolList; 246 CategoryList; 247 Underlying;
248 BarUnchVol; 249 BarTotVol; 253 BarOpenInt; 256 BarStatus; 257 FieldType; 258 ExactMatch;
259 MatchWholeWord; 260 MatchCase; 261 SearchStory; 262 StoryID; 263 HasBody; 265 StoryFileName;
272 HistSett; 273 BarExtStat; 274 NumTradDaysBack; 275 NumBarsBack; 276 Start Date;
280 ZeralDailyDate; 281 ZeralDailyTime; 282 ZeralDailyOpen; 283 ZeralDailyHigh; 284 ZeralDailyLow;
285 ZeralDailyClose; 286 ZeralDailyUpVol; 287 ZeralDailyDownVol; 288 ZeralDailyUnchVol;
289 ZeralDailyTotalVol; 290 ZeralDailyOpenInt; 294 Expired; 307 Date Last Bid; 308 Date Last Ask;
309 Time Last Bid; 310 Time Last Ask; 315 ZeralDailyPrevDate; 316 ZeralDailyPrevTime;
317 ZeralDailyPrevClose; 318 ZeralDailyPrevTotalVolume; 319 ZeralDailyPrevOpenInt; 321 BarUpTicks;
322 BarDownTicks; 323 BarUnchangedTicks; 324 BarTotalTicks; 325 ZeralDailyUpTicks;
326 ZeralDailyDownTicks; 327 ZeralDailyUnchangedTicks; 328 ZeralDailyTotalTicks; 335 Feed Status;
338 Story; 342 Collection ID; 343 Market Maker Name; 344 Market Maker Size; 345 Market Maker Time;
346 Market Maker Price; 347 Market Maker 100ths; 348 Market Maker Exchange;
349 Market Maker Status; 350 Market Maker Date; 357 SymList SubCategory ID;
367 Time & Sales Price; 368 Time & Sales Volume; 369 Time & Sales Type;
378 Option Chain Leap Year; 379 Option Chain ExpDate Low; 380 Option Chain ExpDate High;
381 Option Chain Expirations; 382 Option Chain Strikes; 383 Option Chain Strike Low;
384 Option Chain Strike High; 385 Option Chain Type; 386 Option Chain Open Interest;
387 Bit Flags; 388 8 UpDown Bit Pairs; 389 Trade Start Time; 390 Trade End Time;
391 EOD Keep Days; 392 Tick Keep Days; 393 News Keep Days; 398 Contract Size;
399 Entitle Exchange; 400 Num Options; 401 12MonthHigh Month; 402 12MonthHigh Day;
403 12MonthLow Month; 404 12MonthLow Day; 408 Display Type; 409 Last Bid Arrow;
412 Entitlement App Name; 413 Entitlement App ID; 414 Entitlement Name; 415 Entitlement ID;
416 Entitlement Value; 417 Entitlement Prog ID; 418 SymList Category Name;
419 SymList Category ID; 420 SymList SubCategory Name; 426 SymList RootCategory Name;
427 SymList RootCategory ID; 428 SymList Display; 429 News Status; 430 Entitlement Value Type;
431 Last; 432 Tick Trade Options; 433 Option Chain Filter Flag; 435 Synch State;
440 Exchange Min From GMT; 441 Local Min From GMT; 442 Trade Exchange Identifier; 443 VWAP;
445 ECN Code; 446 ECN Reference Number; 447 ECN System Code; 448 ECN Aggregate Depth;
449 ECN LevelII Data; 450 ECN Aggregate; 451 ECN Order Levels; 467 News Flags; 468 MsgCenter ID;
469 MsgCenter Title; 470 MsgCenter Web Address; 471 MsgCenter Priority; 472 MsgCenter Version;
473 Holidays; 474 MsgCenter CustomerID; 475 Future Type; 476 SymData Flag; 478 Start Time;
479 Put volume; 480 Call volume; 481 Put&Call volume ratio; 482 Put OpenInterest;
483 Call OpenInterest; 484 Implied volatility; 486 Symbol list flags; 488 CCA Records;
489 Bar Put volume; 490 Bar Call volume; 491 Bar Put OpenInterest; 492 Bar Call OpenInterest;
493 Bar Implied volatility; 494 Prefix type; 495 Prefix directory; 496 Prefix name;
497 Ticker extension; 498 Prefix file name; 499 File Resolution; 500 File Resolution Quantity;
501 File Last Avail Date; 502 Bars Remaining; 503 Future Valid Months; 504 Archive Message Record;
505 Archive Item ID; 506 Archive Item Record; 507 Archive Item Set ASAP; 508 Archive Item Delete;
524 Currency Code; 526 Last Ask Arrow;
)";

class FieldWords : public Quote {};

std::map<unsigned, std::string> NamesExpected() {
  std::map<unsigned, std::string> names;
  std::istringstream in(kNames);
  unsigned id = 0;
  std::string name;
  while (in >> id && std::getline(in >> std::ws, name, ';')) {
    names[id] = name;
  }
  return names;
}

const char* NameOf(unsigned short id) {
  return CZRGSQuote::GetFieldName(LooseField(3, {}, id));
}

std::string TextOf(unsigned char type, const Bytes& bytes) {
  return CZRGSQuote::GetDataString(LooseField(type, bytes)).Str();
}

Bytes BytesOf(double value) {
  Bytes bytes(sizeof value);
  std::memcpy(bytes.data(), &value, sizeof value);
  return bytes;
}

TEST_F(FieldWords, EveryIdHasItsNameOrNone) {
  const std::map<unsigned, std::string> names = NamesExpected();
  ASSERT_EQ(names.size(), 211U);
  for (unsigned id = 0; id <= 0xFFFF; ++id) {
    const char* const name = NameOf(static_cast<unsigned short>(id));
    if (const auto expected = names.find(id); expected != names.end()) {
      EXPECT_STREQ(name, expected->second.c_str()) << id;
    } else {
      EXPECT_EQ(name, nullptr) << id;
    }
  }
}

TEST_F(FieldWords, AGapAndWhatIsOutsideTheTableIsNull) {
  EXPECT_EQ(NameOf(4), nullptr);
  EXPECT_STREQ(NameOf(5), "BaseCode");
  EXPECT_EQ(NameOf(6), nullptr);
  EXPECT_STREQ(NameOf(7), "Bid");
  EXPECT_EQ(NameOf(525), nullptr);
  EXPECT_STREQ(NameOf(526), "Last Ask Arrow");
  EXPECT_EQ(NameOf(527), nullptr);
}

TEST_F(FieldWords, BarDateAndBarTimeAreMeantToHaveNoName) {
  EXPECT_EQ(NameOf(421), nullptr);
  EXPECT_EQ(NameOf(422), nullptr);
}

// The catalogue says "Bid Record", "News Source List" and "ECN List" of these.
TEST_F(FieldWords, NamesAreMeantToDifferFromTheCatalogue) {
  EXPECT_STREQ(NameOf(200), "Bid&BidSize");
  EXPECT_STREQ(NameOf(244), "HeadlineDays");
  EXPECT_STREQ(NameOf(445), "ECN Code");
}

TEST_F(FieldWords, TypesByCode) {
  const char* const names[16] = {
      "QFTYPE_TIME",
      "QFTYPE_DATE",
      "QFTYPE_STRING",
      "QFTYPE_PIECES",
      "QFTYPE_DOUBLE",
      "QFTYPE_FLOAT",
      "QFTYPE_LONG",
      "QFTYPE_ULONG",
      "QFTYPE_SHORT",
      "QFTYPE_USHORT",
      "QFTYPE_CHAR",
      "QFTYPE_BYTE",
      "",
      "QFTYPE_STREAM",
      "QFTYPE_NOVALUE",
      "",
  };
  for (unsigned char type = 0; type < 16; ++type) {
    for (const unsigned char status : Bytes{0, 15}) {
      EXPECT_STREQ(CZRGSQuote::GetTypeString(LooseField(type, {}, 1, status)), names[type]);
    }
  }
}

TEST_F(FieldWords, StatusesByNumber) {
  const char* const words[16] = {
      "NotDefined", "NotChanged", "Changed", "Don'tKnow", "Real-Time", "Correction", "?", "?",
      "?",          "?",          "?",       "?",         "?",         "?",          "?", "?"};
  for (unsigned char status = 0; status < 16; ++status) {
    for (const unsigned char type : Bytes{0, 15}) {
      EXPECT_STREQ(CZRGSQuote::GetStatusString(LooseField(type, {}, 1, status)), words[status]);
    }
  }
}

TEST_F(FieldWords, AStatusWithoutAWordIsMeantToBeValid) {
  CZRGSQuote quote;
  quote.AddFieldByte(6, 5, 1);
  EXPECT_STREQ(CZRGSQuote::GetStatusString(quote.GetField(0)), "?");
  EXPECT_EQ(quote.IsValid(), 1);
}

TEST_F(FieldWords, AFieldWithoutAValueReadsAsUnknownStatus) {
  CZRGSQuote quote;
  quote.AddFieldNoValue(5, 6);
  EXPECT_STREQ(CZRGSQuote::GetStatusString(quote.GetField(0)), "?");
  EXPECT_STREQ(CZRGSQuote::GetDataString(quote.GetField(0)), "0");
}

TEST_F(FieldWords, ValuesByType) {
  struct Row {
    unsigned char type;
    Bytes bytes;
    std::string text;
  };
  const Row rows[] = {
      {0, {0, 0, 0, 0}, "00:00:00"},
      {0, {0x7F, 0x51, 0x01, 0}, "23:59:59"},
      {0, {0x80, 0x51, 0x01, 0}, ""},
      {0, {0xFF, 0xFF, 0xFF, 0xFF}, ""},
      {1, {0x67, 0x8A}, "01/01/1997"},
      {1, {0, 0}, "12/30/1899"},
      {1, {0xFE, 0xFF}, "06/03/2079"},
      {1, {0xFF, 0xFF}, ""},
      {2, {'a', 'b', 0}, "ab"},
      {2, {0}, ""},
      {3, {'+', 12, 0, 0, 0}, "12/'+'"},
      {3, {'-', 0xFE, 0xFF, 0xFF, 0xFF}, "-2/'-'"},
      {3, {'x', 0, 0, 0, 0x80}, "-2147483648/'x'"},
      {4, {0, 0, 0, 0, 0, 0, 0xF8, 0x3F}, "1.500000"},
      {4, {0, 0, 0, 0, 0, 0, 0, 0x80}, "-0.000000"},
      {5, {0, 0, 0xC0, 0x3F}, "1.500000"},
      {5, {0xCD, 0xCC, 0xCC, 0xBD}, "-0.100000"},
      {6, {0xFE, 0xFF, 0xFF, 0xFF}, "-2"},
      {6, {0xFF, 0xFF, 0xFF, 0x7F}, "2147483647"},
      {7, {0xFE, 0xFF, 0xFF, 0xFF}, "4294967294"},
      {8, {0xFE, 0xFF}, "-2"},
      {8, {0xFF, 0x7F}, "32767"},
      {9, {0xFE, 0xFF}, "65534"},
      {10, {'A'}, "A"},
      {10, {0xFE}, "\xFE"},
      {11, {0xFE}, "254"},
      {11, {'A'}, "65"},
      {12, {1, 1, 1, 1, 1, 1, 1, 1}, ""},
      {13, {'a', 'b', 0, 'c'}, "ab"},
      {14, {'A'}, ""},
      {15, {1, 1, 1, 1, 1, 1, 1, 1}, ""},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(TextOf(row.type, row.bytes), row.text) << int{row.type} << ' ' << row.text;
  }
}

TEST_F(FieldWords, ACharacterOfZeroEndsTheText) {
  EXPECT_EQ(TextOf(10, {0}), "");
  EXPECT_EQ(TextOf(3, {0, 12, 0, 0, 0}), "12/'");
}

TEST_F(FieldWords, FloatingTextsAreCutAt99Characters) {
  const std::string digits =
      "898846567431157953864652595394512366808988489471153286367150"
      "405788663379027504815663542386612037680";
  const double large = 0x1p1023;
  EXPECT_EQ(digits.size(), 99U);
  EXPECT_EQ(TextOf(4, BytesOf(large)), digits);
  EXPECT_EQ(TextOf(4, BytesOf(-large)), "-" + digits.substr(0, 98));
  // A float's largest has 39 digits, a point and six more: it fits.
  EXPECT_EQ(TextOf(5, {0xFF, 0xFF, 0x7F, 0x7F}), "340282346638528859811704183484516925440.000000");
}

TEST_F(FieldWords, LongTextsAreMeantToBeWhole) {
  for (const unsigned char type : Bytes{2, 13}) {
    EXPECT_EQ(TextOf(type, Bytes(65535, 'x')), std::string(65535, 'x')) << int{type};
  }
}

TEST_F(FieldWords, TextEndsWithItsNodeWhereItHasNoTerminator) {
  for (const unsigned char type : Bytes{2, 13}) {
    EXPECT_EQ(TextOf(type, {'1', '2', '3'}), "123");
    EXPECT_EQ(TextOf(type, {}), "");
  }
  CZRGSQuote quote;
  quote.AddFieldString(3, 1, "98765");
  quote.Empty(1);
  quote.AddFieldString(3, 1, "12", 2);  // "765" still stands behind it in the buffer
  EXPECT_STREQ(CZRGSQuote::GetDataString(quote.GetField(0)), "12");
}

TEST_F(FieldWords, AValueShorterThanItsTypeReadsAsZero) {
  struct Row {
    unsigned char type;
    std::size_t size;
    std::string zero;
  };
  const Row rows[] = {{0, 4, "00:00:00"}, {1, 2, "12/30/1899"}, {4, 8, "0.000000"},
                      {5, 4, "0.000000"}, {6, 4, "0"},          {7, 4, "0"},
                      {8, 2, "0"},        {9, 2, "0"},          {10, 1, ""},
                      {11, 1, "0"}};
  for (const Row& row : rows) {
    for (std::size_t size = 0; size < row.size; ++size) {
      EXPECT_EQ(TextOf(row.type, Bytes(size, 0x3F)), row.zero) << int{row.type} << ' ' << size;
    }
    if (row.type != 1 && row.type != 0) {
      EXPECT_NE(TextOf(row.type, Bytes(row.size, 0x3F)), row.zero) << int{row.type};
    }
  }
}

TEST_F(FieldWords, PiecesOfFourBytesHaveTheirCharacterAndTheNumberZero) {
  EXPECT_EQ(TextOf(3, {'+', 12, 0, 0}), "0/'+'");
  EXPECT_EQ(TextOf(3, {'+'}), "0/'+'");
  EXPECT_EQ(TextOf(3, {}), "0/'");
}

TEST_F(FieldWords, AMissingValueHasATextForEveryType) {
  CZRGSQuote quote;
  for (unsigned char type = 0; type < 16; ++type) {
    quote.AddField(3, type, type, nullptr, 0);
    ASSERT_EQ(+quote.GetField(type)->pData, nullptr);
    const CString text = CZRGSQuote::GetDataString(quote.GetField(type));
    EXPECT_EQ(text, TextOf(type, {}).c_str()) << int{type};
    EXPECT_EQ(CZRGSQuote::GetDataSize(quote.GetField(type)), 0U);
  }
}

TEST_F(FieldWords, ANodesSizeIsThatOfItsValue) {
  for (const std::size_t size : {0U, 1U, 5U, 65535U}) {
    EXPECT_EQ(CZRGSQuote::GetDataSize(LooseField(2, Bytes(size, 0xFF))), size);
  }
}

TEST_F(FieldWords, SizesByType) {
  const unsigned sizes[] = {4, 2, 0x1234, 4, 8, 4, 4, 4, 2, 2, 1, 1, 0, 0x1234, 1, 0};
  for (unsigned type = 0; type < 256; ++type) {
    // One byte in, so that the length is unaligned; a block of just the length's size.
    Bytes data = {0, 0x34, 0x12};
    EXPECT_EQ(CZRGSQuote::GetDataSize(static_cast<unsigned char>(type), data.data() + 1),
              type < 16 ? sizes[type] : 0U)
        << type;
  }
}

TEST_F(FieldWords, PiecesAreMeantToCountFourBytesThoughTheyHaveFive) {
  EXPECT_EQ(CZRGSQuote::GetDataSize(3, nullptr), 4U);
  EXPECT_EQ(TextOf(3, {'+', 0, 0, 0, 1}), "16777216/'+'");
}

TEST_F(FieldWords, OnlyTextsAndStreamsAreMeantToReadALengthInFront) {
  Bytes length = {3, 0, 'a', 'b', 'c'};
  EXPECT_EQ(CZRGSQuote::GetDataSize(2, length.data()), 3U);
  EXPECT_EQ(CZRGSQuote::GetDataSize(13, length.data()), 3U);
  EXPECT_EQ(CZRGSQuote::GetDataSize(LooseField(2, length)), 5U);
  for (unsigned char type = 0; type < 20; ++type) {
    if (type != 2 && type != 13) {
      // An address that nothing may read.
      const unsigned size = CZRGSQuote::GetDataSize(type, reinterpret_cast<void*>(1));
      EXPECT_EQ(size, CZRGSQuote::GetDataSize(type, nullptr)) << int{type};
    }
  }
  EXPECT_EQ(CZRGSQuote::GetDataSize(2, nullptr), 0U);
  EXPECT_EQ(CZRGSQuote::GetDataSize(13, nullptr), 0U);
}

TEST_F(FieldWords, TypeTwelveHasNoSizeAndNoText) {
  EXPECT_EQ(CZRGSQuote::GetDataSize(12, nullptr), 0U);
  EXPECT_EQ(TextOf(12, {'1', '2', 0, 0}), "");
  EXPECT_STREQ(CZRGSQuote::GetTypeString(LooseField(12, {})), "");
}

TEST_F(FieldWords, AFieldWithoutValueHasNoTextAndASizeOfOne) {
  EXPECT_EQ(TextOf(14, {'A'}), "");
  EXPECT_EQ(CZRGSQuote::GetDataSize(14, nullptr), 1U);
}

TEST_F(FieldWords, NamesAndShortTextsNeedNoMemory) {
  const LooseField date(1, {0x67, 0x8A}, kDate);
  const AllocationCounter counter;
  EXPECT_NE(CZRGSQuote::GetFieldName(date), nullptr);
  EXPECT_NE(CZRGSQuote::GetStatusString(date), nullptr);
  EXPECT_EQ(CZRGSQuote::GetTypeString(date).GetLength(), 11);
  EXPECT_EQ(CZRGSQuote::GetDataString(date).GetLength(), 10);
  EXPECT_EQ(counter.Count(), 0U);
}

}  // namespace
