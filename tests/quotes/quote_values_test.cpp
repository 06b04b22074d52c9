#include "tests/quotes/quote_fixture.h"

namespace {

using namespace pxd::test;

TEST_F(Quote, TypeCodesHaveTheirNumbers) {
  EXPECT_EQ(CZRGSQuote::QFTYPE_TIME, 0);
  EXPECT_EQ(CZRGSQuote::QFTYPE_DATE, 1);
  EXPECT_EQ(CZRGSQuote::QFTYPE_STRING, 2);
  EXPECT_EQ(CZRGSQuote::QFTYPE_PIECES, 3);
  EXPECT_EQ(CZRGSQuote::QFTYPE_DOUBLE, 4);
  EXPECT_EQ(CZRGSQuote::QFTYPE_FLOAT, 5);
  EXPECT_EQ(CZRGSQuote::QFTYPE_LONG, 6);
  EXPECT_EQ(CZRGSQuote::QFTYPE_ULONG, 7);
  EXPECT_EQ(CZRGSQuote::QFTYPE_SHORT, 8);
  EXPECT_EQ(CZRGSQuote::QFTYPE_USHORT, 9);
  EXPECT_EQ(CZRGSQuote::QFTYPE_CHAR, 10);
  EXPECT_EQ(CZRGSQuote::QFTYPE_BYTE, 11);
  EXPECT_EQ(CZRGSQuote::QFTYPE_STREAM, 13);
  EXPECT_EQ(CZRGSQuote::QFTYPE_NOVALUE, 14);
}

TEST_F(Quote, GetFieldDataLeavesItsArgumentWhereThereIsNone) {
  CZRGSQuote quote;
  quote.AddFieldString(3, 5, "101.25");
  double value = 7.0;
  EXPECT_EQ(quote.GetFieldData(6, value), 0);
  EXPECT_EQ(value, 7.0);
  EXPECT_EQ(quote.GetFieldData(5, value), 1);
  EXPECT_EQ(value, 101.25);
}

// One row a type code: how eight bytes read as a number.
TEST_F(Quote, EachTypeReadsAsANumberOfItsOwn) {
  struct Row {
    unsigned char type;
    Bytes bytes;
    double number;
  };
  const Row rows[] = {
      {0, {0x98, 0xBA, 0xDC, 0xFE}, 4275878552.0},
      {0, {1, 0, 0, 0}, 1.0},
      {1, {0xFE, 0xFF}, 65534.0},
      {2, {'1', '.', '5', 0}, 1.5},
      {2, {'-', '2', 'x', 0}, -2.0},
      {2, {'x', 0}, 0.0},
      {2, {' ', '7', 0, '8'}, 7.0},
      {3, {1, 2, 0, 0, 0}, 0.0},
      {4, {0, 0, 0, 0, 0, 0, 0xF8, 0x3F}, 1.5},
      {5, {0, 0, 0xC0, 0x3F}, 1.5},
      {5, {0xCD, 0xCC, 0xCC, 0x3D}, static_cast<double>(0.1F)},
      {6, {0xFE, 0xFF, 0xFF, 0xFF}, -2.0},
      {6, {0, 0, 0, 0x80}, -2147483648.0},
      {7, {0xFF, 0xFF, 0xFF, 0xFF}, 4294967295.0},
      {7, {0, 0, 0, 0x80}, 2147483648.0},
      {7, {0xFF, 0xFF, 0xFF, 0x7F}, 2147483647.0},
      {8, {0xFE, 0xFF}, -2.0},
      {9, {0xFE, 0xFF}, 65534.0},
      {10, {0xFE}, -2.0},
      {10, {0x7F}, 127.0},
      {11, {0xFE}, 254.0},
      {12, {1, 1, 1, 1, 1, 1, 1, 1}, 0.0},
      {13, {'2', '.', '5', 0}, 2.5},
      {14, {1}, 0.0},
      {15, {1, 1, 1, 1, 1, 1, 1, 1}, 0.0},
  };
  for (const Row& row : rows) {
    const LooseField field(row.type, row.bytes);
    EXPECT_EQ(CZRGSQuote::GetDoubleValue(field), row.number) << int{row.type};
  }
}

TEST_F(Quote, AValueShorterThanItsTypeReadsAsZero) {
  const std::size_t sizes[16] = {4, 2, 0, 0, 8, 4, 4, 4, 2, 2, 1, 1, 0, 0, 0, 0};
  for (unsigned char type = 0; type < 16; ++type) {
    for (std::size_t size = 0; size < sizes[type]; ++size) {
      const LooseField field(type, Bytes(size, 0x3F));
      EXPECT_EQ(CZRGSQuote::GetDoubleValue(field), 0.0) << int{type} << ' ' << size;
      EXPECT_EQ(CZRGSQuote::GetDateValue(field), 0) << int{type} << ' ' << size;
      EXPECT_EQ(CZRGSQuote::GetTimeValue(field), 0U) << int{type} << ' ' << size;
    }
    if (sizes[type] > 0) {
      EXPECT_NE(CZRGSQuote::GetDoubleValue(LooseField(type, Bytes(sizes[type], 0x3F))), 0.0);
    }
  }
}

TEST_F(Quote, AValueWithoutBytesReadsAsZeroOverARecycledBufferToo) {
  CZRGSQuote quote;
  quote.AddFieldString(3, 1, "123456789");
  quote.Empty(1);
  for (unsigned char type = 0; type < 16; ++type) {
    quote.AddField(3, type, 1, nullptr, 0);
    EXPECT_EQ(CZRGSQuote::GetDoubleValue(quote.GetField(0)), 0.0) << int{type};
  }
}

TEST_F(Quote, TextEndsWithItsNodeWhereItHasNoTerminator) {
  for (const unsigned char type : Bytes{2, 13}) {
    EXPECT_EQ(CZRGSQuote::GetDoubleValue(LooseField(type, {'1', '2', '3'})), 123.0);
    EXPECT_EQ(CZRGSQuote::GetDoubleValue(LooseField(type, {'1'})), 1.0);
    EXPECT_EQ(CZRGSQuote::GetDoubleValue(LooseField(type, {})), 0.0);
    EXPECT_EQ(CZRGSQuote::GetDoubleValue(LooseField(type, Bytes(65535, '0'))), 0.0);
  }
  CZRGSQuote quote;
  quote.AddFieldString(3, 1, "98765");
  quote.Empty(1);
  quote.AddFieldString(3, 1, "12", 2);  // "765" still stands behind it in the buffer
  EXPECT_EQ(NumberOf(quote, 1), 12.0);
}

TEST_F(Quote, OnlyTimesAndUnsignedNumbersAreTimes) {
  for (unsigned char type = 0; type < 16; ++type) {
    const LooseField field(type, {0x98, 0xBA, 0xDC, 0xFE, 0, 0, 0, 0});
    EXPECT_EQ(CZRGSQuote::GetTimeValue(field), type == 0 || type == 7 ? 0xFEDCBA98UL : 0UL)
        << int{type};
  }
}

TEST_F(Quote, OnlyDatesAndUnsignedNumbersAreDates) {
  for (unsigned char type = 0; type < 16; ++type) {
    const LooseField field(type, {0x98, 0xBA, 0xDC, 0xFE, 0, 0, 0, 0});
    EXPECT_EQ(CZRGSQuote::GetDateValue(field), type == 1 || type == 7 ? 0xBA98 : 0) << int{type};
  }
}

TEST_F(Quote, TypeTwelvePassesAndReadsAsNothing) {
  CZRGSQuote quote;
  EXPECT_EQ(quote.AddField(LooseField(12, {1, 2, 3, 4}, 5), 1), 1);
  EXPECT_EQ(quote.IsValid(), 1);
  EXPECT_EQ(NumberOf(quote, 5), 0.0);
}

}  // namespace
