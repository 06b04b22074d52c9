#include <string>

#include "tests/quotes/quote_fixture.h"

namespace {

using namespace pxd::test;

// One row an add form: the bytes it leaves, and whether it makes a quote that found neither date
// nor time look again. `add` adds the given id.
struct AddForm {
  const char* name;
  int (*add)(CZRGSQuote& quote, unsigned short id);
  unsigned char typeStatus;
  Bytes bytes;
  bool looksAgain;

  friend void PrintTo(const AddForm& form, std::ostream* out) { *out << form.name; }
};

const AddForm kAddForms[] = {
    {"AdoptedNode",
     [](CZRGSQuote& q, unsigned short id) {
       return q.AddField(CZRGSQuote::CreateField(4, 1, id, g_value, 2), 0);
     },
     0x14,
     {0x67, 0x8A},
     true},
    {"CopiedNode",
     [](CZRGSQuote& q, unsigned short id) {
       return q.AddField(LooseField(1, {0x67, 0x8A}, id, 4), 1);
     },
     0x14,
     {0x67, 0x8A},
     true},
    {"Time",
     [](CZRGSQuote& q, unsigned short id) { return q.AddFieldTime(4, id, 0x04030201); },
     0x04,
     {1, 2, 3, 4},
     true},
    {"Date",
     [](CZRGSQuote& q, unsigned short id) { return q.AddFieldDate(4, id, 35431); },
     0x14,
     {0x67, 0x8A},
     true},
    {"Generic",
     [](CZRGSQuote& q, unsigned short id) { return q.AddField(4, 1, id, g_value, 2); },
     0x14,
     {0x67, 0x8A},
     false},
    {"GenericTime",
     [](CZRGSQuote& q, unsigned short id) { return q.AddField(4, 0, id, g_value, 1); },
     0x04,
     {0x67},
     false},
    {"String",
     [](CZRGSQuote& q, unsigned short id) { return q.AddFieldString(4, id, "12"); },
     0x24,
     {'1', '2', 0},
     false},
    {"EmptyString",
     [](CZRGSQuote& q, unsigned short id) { return q.AddFieldString(4, id, ""); },
     0x24,
     {0},
     false},
    {"StringOfASize",
     [](CZRGSQuote& q, unsigned short id) { return q.AddFieldString(4, id, "123", 2); },
     0x24,
     {'1', '2'},
     false},
    {"Double",
     [](CZRGSQuote& q, unsigned short id) { return q.AddFieldDouble(4, id, 1.5); },
     0x44,
     {0, 0, 0, 0, 0, 0, 0xF8, 0x3F},
     false},
    {"Float",
     [](CZRGSQuote& q, unsigned short id) { return q.AddFieldFloat(4, id, 1.5F); },
     0x54,
     {0, 0, 0xC0, 0x3F},
     false},
    {"Long",
     [](CZRGSQuote& q, unsigned short id) { return q.AddFieldLong(4, id, -2); },
     0x64,
     {0xFE, 0xFF, 0xFF, 0xFF},
     false},
    {"ULong",
     [](CZRGSQuote& q, unsigned short id) { return q.AddFieldULong(4, id, 0xFEDCBA98UL); },
     0x74,
     {0x98, 0xBA, 0xDC, 0xFE},
     false},
    {"Short",
     [](CZRGSQuote& q, unsigned short id) { return q.AddFieldShort(4, id, -2); },
     0x84,
     {0xFE, 0xFF},
     false},
    {"UShort",
     [](CZRGSQuote& q, unsigned short id) { return q.AddFieldUShort(4, id, 0xFEDC); },
     0x94,
     {0xDC, 0xFE},
     false},
    {"Char",
     [](CZRGSQuote& q, unsigned short id) { return q.AddFieldChar(4, id, 'A'); },
     0xA4,
     {'A'},
     false},
    {"Byte",
     [](CZRGSQuote& q, unsigned short id) { return q.AddFieldByte(4, id, 0xFE); },
     0xB4,
     {0xFE},
     false},
    {"NoValue",
     [](CZRGSQuote& q, unsigned short id) { return q.AddFieldNoValue(id, 7); },
     0x78,
     {0, 0, 0, 0},
     false},
};

class QuoteAddForm : public testing::TestWithParam<AddForm> {
 protected:
  QuoteAddForm() { CZRGSQuote::Init(); }
  ~QuoteAddForm() override { CZRGSQuote::UnInit(); }
};

INSTANTIATE_TEST_SUITE_P(All, QuoteAddForm, testing::ValuesIn(kAddForms),
                         [](const auto& row) { return row.param.name; });

TEST_P(QuoteAddForm, AddsANodeOfItsTypeAndBytes) {
  CZRGSQuote quote;
  EXPECT_EQ(GetParam().add(quote, 0xFEDC), 1);
  ASSERT_EQ(quote.GetNumField(), 1U);
  const Field& field = *quote.GetField(0);
  EXPECT_EQ(field.wFieldID, 0xFEDC);
  EXPECT_EQ(field.bTypeStatus, GetParam().typeStatus);
  EXPECT_EQ(BytesOf(field), GetParam().bytes);
  EXPECT_EQ(field.wIndirectID, 0);
  EXPECT_EQ(field.dwRecords, 0U);
  EXPECT_EQ(field.bIndirectFlag, 0);
}

TEST_P(QuoteAddForm, TheSameIdTwiceKeepsThePlaceAndTakesTheNewValue) {
  CZRGSQuote quote;
  quote.AddFieldULong(5, 7, 99);
  quote.AddFieldULong(5, 8, 99);
  quote.SetIndirectQuote(7, 1, 2, 3);
  EXPECT_EQ(GetParam().add(quote, 7), 1);
  EXPECT_EQ(IdsOf(quote), (Ids{7, 8}));
  EXPECT_EQ(quote.GetField(0)->bTypeStatus, GetParam().typeStatus);
  EXPECT_EQ(BytesOf(*quote.GetField(0)), GetParam().bytes);
  EXPECT_EQ(quote.GetField(0)->dwRecords, 0U);
}

// The asymmetry is meant: four forms make a quote that found neither date nor time look again.
TEST_P(QuoteAddForm, MakesAQuoteWithoutDateAndTimeLookAgainOrNot) {
  CZRGSQuote quote;
  EXPECT_EQ(quote.GetDate(), 0);
  unsigned short date = 35431;
  EXPECT_EQ(quote.AddField(3, 1, kDate, &date, 2), 1);
  EXPECT_EQ(quote.GetDate(), 0);
  EXPECT_EQ(GetParam().add(quote, 999), 1);
  EXPECT_EQ(quote.GetDate(), GetParam().looksAgain ? 35431 : 0);
}

TEST_P(QuoteAddForm, NeverMakesAQuoteWithADateLookAgain) {
  CZRGSQuote quote;
  quote.AddFieldDate(3, kDate, 100);
  EXPECT_EQ(quote.GetDate(), 100);
  GetParam().add(quote, kDate);
  EXPECT_EQ(quote.GetDate(), 100);
  GetParam().add(quote, kTime);
  EXPECT_EQ(quote.GetTime(), 0U);
  EXPECT_EQ(quote.GetDate(), 100);
}

TEST_P(QuoteAddForm, NeverMakesAQuoteWithATimeLookAgain) {
  CZRGSQuote quote;
  quote.AddFieldTime(3, kTime, 100);
  EXPECT_EQ(quote.GetTime(), 100U);
  GetParam().add(quote, kDate);
  EXPECT_EQ(quote.GetDate(), 0);
  GetParam().add(quote, kTime);
  EXPECT_EQ(quote.GetTime(), 100U);
}

TEST_P(QuoteAddForm, CountsBeforeTheFirstLook) {
  CZRGSQuote quote;
  GetParam().add(quote, kDate);
  const bool is_date = (GetParam().typeStatus >> 4) == 1;
  EXPECT_EQ(quote.GetDate(), is_date ? 35431 : (GetParam().typeStatus == 0x74 ? 0xBA98 : 0));
}

TEST_F(Quote, AddFieldRefusesANodeOfTypeFifteenOnly) {
  CZRGSQuote quote;
  for (unsigned char type = 0; type <= 15; ++type) {
    const LooseField field(type, {1, 2}, type);
    EXPECT_EQ(quote.AddField(field, 1), type == 15 ? 0 : 1) << int{type};
  }
  EXPECT_EQ(quote.GetNumField(), 15U);
  LooseField adopted(15, {1});
  EXPECT_EQ(quote.AddField(adopted, 0), 0);
  EXPECT_EQ(quote.GetNumField(), 15U);
  EXPECT_EQ(adopted->wSize, 1) << "the node is still the caller's";
}

TEST_F(Quote, ARefusedNodeDoesNotMakeTheQuoteLookAgain) {
  CZRGSQuote quote;
  EXPECT_EQ(quote.GetDate(), 0);
  unsigned short date = 5;
  quote.AddField(3, 1, kDate, &date, 2);
  EXPECT_EQ(quote.AddField(LooseField(15, {1}), 1), 0);
  EXPECT_EQ(quote.GetDate(), 0);
}

TEST_F(Quote, TheGenericFormRefusesNoType) {
  CZRGSQuote quote;
  for (unsigned char type = 0; type <= 15; ++type) {
    EXPECT_EQ(quote.AddField(3, type, type, g_value, 2), 1) << int{type};
    EXPECT_EQ(quote.GetField(type)->bTypeStatus, (type << 4) | 3);
  }
  EXPECT_EQ(quote.IsValid(), 0);
}

TEST_F(Quote, AnAdoptedNodeIsTheNodeItselfAndACopyIsNot) {
  CZRGSQuote quote;
  Field* const node = CZRGSQuote::CreateField(3, 2, 5, g_value, 2);
  quote.AddField(node, 0);
  EXPECT_EQ(quote.GetField(0), node);
  node->dwRecords = 9;
  CZRGSQuote other;
  other.AddField(node, 1);
  EXPECT_NE(other.GetField(0), node);
  EXPECT_EQ(BytesOf(*other.GetField(0)), BytesOf(*node));
  EXPECT_EQ(other.GetField(0)->dwRecords, 0U);
}

TEST_F(Quote, ItsOwnNodeMayBeAddedAgain) {
  CZRGSQuote quote;
  quote.AddFieldString(3, 5, "abc");
  EXPECT_EQ(quote.AddField(quote.GetField(0), 1), 1);
  EXPECT_EQ(quote.AddField(quote.GetField(0), 0), 1);
  ASSERT_EQ(quote.GetNumField(), 1U);
  EXPECT_EQ(BytesOf(*quote.GetField(0)), (Bytes{'a', 'b', 'c', 0}));
}

TEST_F(Quote, OfAGenericSizeTheLowSixteenBitsCount) {
  const std::string text(70000, 'x');
  CZRGSQuote quote;
  EXPECT_EQ(quote.AddField(3, 2, 1, const_cast<char*>(text.data()), 65536 + 3), 1);
  EXPECT_EQ(BytesOf(*quote.GetField(0)), (Bytes{'x', 'x', 'x'}));
  EXPECT_EQ(quote.AddField(3, 2, 2, const_cast<char*>(text.data()), 65536), 1);
  EXPECT_EQ(quote.GetField(1)->wSize, 0);
}

TEST_F(Quote, AGenericSizeOfZeroLeavesNoBufferOrTheEarlierBytesOnlyTheSizeTells) {
  CZRGSQuote quote;
  EXPECT_EQ(quote.AddField(3, 2, 1, nullptr, 0), 1);
  const Field* const fresh = quote.GetField(0);
  EXPECT_EQ(fresh->wSize, 0);
  EXPECT_EQ(fresh->wCapacity, 0);
  EXPECT_EQ(+fresh->pData, nullptr);
  quote.Empty(1);

  quote.AddFieldString(3, 2, "old");
  const Field* const node = quote.GetField(0);
  quote.Empty(1);
  EXPECT_EQ(quote.AddField(3, 2, 1, nullptr, 0), 1);
  ASSERT_EQ(quote.GetField(0), node) << "the last node given back is the first taken";
  EXPECT_EQ(node->wSize, 0);
  EXPECT_EQ(node->wCapacity, 4);
  EXPECT_EQ(Bytes(node->pData, node->pData + 4), (Bytes{'o', 'l', 'd', 0}));
}

TEST_F(Quote, OversizedTextKeepsTheLowSixteenBitsOfItsSize) {
  struct Row {
    std::size_t length;
    unsigned int size;
  };
  // The size counts the terminator.
  for (const Row& row : {Row{65534, 65535}, Row{65535, 0}, Row{65536, 1}, Row{65540, 5}}) {
    CZRGSQuote quote;
    EXPECT_EQ(quote.AddFieldString(3, 1, std::string(row.length, '7').c_str()), 1);
    ASSERT_EQ(quote.GetNumField(), 1U);
    EXPECT_EQ(quote.GetField(0)->wSize, row.size) << row.length;
  }
}

TEST_F(Quote, NumbersAreCutToTheirThirtyTwoBits) {
  CZRGSQuote quote;
  quote.AddFieldLong(3, 1, -2147483647L - 1);
  quote.AddFieldULong(3, 2, 4294967295UL);
  quote.AddFieldTime(3, 3, 4294967295UL);
  EXPECT_EQ(BytesOf(*quote.GetField(0)), (Bytes{0, 0, 0, 0x80}));
  EXPECT_EQ(BytesOf(*quote.GetField(1)), (Bytes{0xFF, 0xFF, 0xFF, 0xFF}));
  EXPECT_EQ(BytesOf(*quote.GetField(2)), (Bytes{0xFF, 0xFF, 0xFF, 0xFF}));
}

TEST_F(Quote, AFieldWithoutAValueHasZerosByItsType) {
  struct Row {
    long type;
    std::size_t size;  // 0: refused
  };
  constexpr Row kRows[] = {{0, 0},  {1, 0},  {2, 1},  {3, 0},  {4, 8},  {5, 4},      {6, 4},
                           {7, 4},  {8, 2},  {9, 2},  {10, 0}, {11, 1}, {12, 0},     {13, 0},
                           {14, 0}, {15, 0}, {16, 0}, {18, 0}, {-1, 0}, {256 + 2, 0}};
  for (const Row& row : kRows) {
    CZRGSQuote quote;
    EXPECT_EQ(quote.AddFieldNoValue(100, row.type), row.size > 0 ? 1 : 0) << row.type;
    ASSERT_EQ(quote.GetNumField(), row.size > 0 ? 1U : 0U) << row.type;
    if (row.size > 0) {
      EXPECT_EQ(quote.GetField(0)->bTypeStatus, (row.type << 4) | 8) << row.type;
      EXPECT_EQ(BytesOf(*quote.GetField(0)), Bytes(row.size, 0)) << row.type;
    }
  }
}

TEST_F(Quote, AFieldWithoutAValueIsZeroOverARecycledBufferToo) {
  for (int i = 0; i < 2; ++i) {
    CZRGSQuote quote;
    quote.AddFieldDouble(3, 1, -1.0);
    quote.Empty(1);
    quote.AddFieldNoValue(1, 4);
    EXPECT_EQ(BytesOf(*quote.GetField(0)), Bytes(8, 0));
  }
}

TEST_F(Quote, FieldsStandInTheOrderOfTheirFirstArrival) {
  CZRGSQuote quote;
  for (const unsigned short id : Ids{9, 3, 7, 3, 1, 9}) {
    quote.AddFieldUShort(3, id, id);
  }
  EXPECT_EQ(IdsOf(quote), (Ids{9, 3, 7, 1}));
}

TEST_F(Quote, HoldsMoreFieldsThanFitInsideIt) {
  CZRGSQuote quote;
  for (unsigned short id = 0; id < 300; ++id) {
    quote.AddFieldUShort(3, id, id);
  }
  ASSERT_EQ(quote.GetNumField(), 300U);
  for (unsigned short id = 0; id < 300; ++id) {
    EXPECT_EQ(NumberOf(quote, id), static_cast<double>(id));
  }
}

}  // namespace
