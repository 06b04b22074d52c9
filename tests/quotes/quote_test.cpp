#include "tests/quotes/quote_fixture.h"

namespace {

using namespace pxd::test;

TEST_F(Quote, StartsEmptyWhateverItIsConstructedWith) {
  for (const unsigned short ignored : Ids{0, 1, 65535}) {
    CZRGSQuote quote(ignored);
    EXPECT_EQ(quote.GetNumField(), 0U);
    EXPECT_EQ(quote.m_dwTag, 0U);
    EXPECT_EQ(quote.GetField(0), nullptr);
    EXPECT_EQ(quote.GetRecords(), 0U);
    EXPECT_EQ(quote.GetDate(), 0);
    EXPECT_EQ(quote.GetTime(), 0U);
  }
}

TEST_F(Quote, GetFieldIsNullOutOfRange) {
  CZRGSQuote quote;
  quote.AddFieldByte(3, 5, 1);
  quote.AddFieldByte(3, 6, 1);
  const CZRGSQuote& same = quote;
  EXPECT_EQ(quote.GetField(1)->wFieldID, 6);
  EXPECT_EQ(same.GetField(1), quote.GetField(1));
  EXPECT_EQ(quote.GetField(2), nullptr);
  EXPECT_EQ(same.GetField(65535), nullptr);
}

TEST_F(Quote, FindFieldLeavesItsArgumentWhereThereIsNone) {
  CZRGSQuote quote;
  quote.AddFieldByte(3, 5, 1);
  const CZRGSQuote& same = quote;
  Field sentinel{};
  Field* field = &sentinel;
  const Field* constant = &sentinel;
  EXPECT_EQ(quote.FindField(6, field), 0);
  EXPECT_EQ(same.FindField(6, constant), 0);
  EXPECT_EQ(field, &sentinel);
  EXPECT_EQ(constant, &sentinel);
  EXPECT_EQ(quote.FindField(5, field), 1);
  EXPECT_EQ(same.FindField(5, constant), 1);
  EXPECT_EQ(field, quote.GetField(0));
  EXPECT_EQ(constant, quote.GetField(0));
}

TEST_F(Quote, TheRecordCountIsThatOfTheFieldThatStandsFirst) {
  CZRGSQuote quote;
  quote.AddFieldByte(3, 5, 1);
  quote.AddFieldByte(3, 6, 1);
  quote.SetIndirectQuote(6, 11, 22, 33);
  EXPECT_EQ(quote.GetRecords(), 0U);
  quote.SetIndirectQuote(5, 0xFEDC, 0xFEDCBA98UL, 0xFE);
  EXPECT_EQ(quote.GetRecords(), 0xFEDCBA98UL);
  EXPECT_EQ(quote.GetField(0)->wIndirectID, 0xFEDC);
  EXPECT_EQ(quote.GetField(0)->bIndirectFlag, 0xFE);
  EXPECT_EQ(quote.GetField(1)->wIndirectID, 11);
  EXPECT_EQ(quote.GetField(1)->dwRecords, 22U);
  EXPECT_EQ(quote.GetField(1)->bIndirectFlag, 33);
  quote.SetIndirectQuote(7, 1, 2, 3);
  EXPECT_EQ(quote.GetNumField(), 2U);
}

TEST_F(Quote, ACopyHasNoRecords) {
  CZRGSQuote quote;
  quote.AddFieldByte(3, 5, 1);
  quote.SetIndirectQuote(5, 1, 2, 3);
  const CZRGSQuote copy(quote);
  EXPECT_EQ(copy.GetRecords(), 0U);
  EXPECT_EQ(copy.GetField(0)->wIndirectID, 0);
  EXPECT_EQ(copy.GetField(0)->bIndirectFlag, 0);
  EXPECT_EQ(quote.GetRecords(), 2U);
}

TEST_F(Quote, MatchInfoSortsIdsIntoFoundAndMissing) {
  CZRGSQuote quote;
  for (const unsigned short id : Ids{10, 20, 30}) {
    quote.AddFieldByte(3, id, 1);
  }
  const unsigned short ids[] = {30, 5, 10, 30, 6};
  const Field* found[5] = {};
  unsigned short missing[5] = {};
  int found_count = -1;
  int missing_count = -1;
  quote.GetMatchInfo(ids, 5, found, found_count, missing, missing_count);
  ASSERT_EQ(found_count, 3);
  EXPECT_EQ(found[0], quote.GetField(2));
  EXPECT_EQ(found[1], quote.GetField(0));
  EXPECT_EQ(found[2], quote.GetField(2));
  EXPECT_EQ(found[3], nullptr);
  ASSERT_EQ(missing_count, 2);
  EXPECT_EQ(missing[0], 5);
  EXPECT_EQ(missing[1], 6);
}

TEST_F(Quote, MatchInfoOfNoIdsZeroesBothCounts) {
  CZRGSQuote quote;
  quote.AddFieldByte(3, 10, 1);
  const unsigned short id = 10;
  for (const int count : {0, -1}) {
    int found_count = 7;
    int missing_count = 7;
    quote.GetMatchInfo(&id, count, nullptr, found_count, nullptr, missing_count);
    EXPECT_EQ(found_count, 0);
    EXPECT_EQ(missing_count, 0);
  }
}

TEST_F(Quote, ReplaceFieldOfAnUnknownIdAnswers1AndAddsNothing) {
  CZRGSQuote quote;
  quote.AddFieldByte(3, 5, 1);
  EXPECT_EQ(quote.ReplaceField(LooseField(2, {'x'}, 6)), 1);
  EXPECT_EQ(quote.GetNumField(), 1U);
}

TEST_F(Quote, ReplaceFieldCopiesTheWholeNodeInPlace) {
  CZRGSQuote quote;
  quote.AddFieldByte(3, 5, 1);
  Field* const node = quote.GetField(0);
  LooseField larger(2, {'a', 'b', 'c'}, 5, 4);
  larger->wIndirectID = 1;
  larger->dwRecords = 2;
  larger->bIndirectFlag = 3;
  EXPECT_EQ(quote.ReplaceField(larger), 1);
  EXPECT_EQ(quote.GetField(0), node);
  EXPECT_EQ(node->bTypeStatus, 0x24);
  EXPECT_EQ(BytesOf(*node), (Bytes{'a', 'b', 'c'}));
  EXPECT_EQ(node->wCapacity, 3);
  EXPECT_EQ(node->wIndirectID, 1);
  EXPECT_EQ(quote.GetRecords(), 2U);
  EXPECT_EQ(node->bIndirectFlag, 3);

  unsigned char* const buffer = node->pData;
  quote.ReplaceField(LooseField(11, {9}, 5));
  EXPECT_EQ(+node->pData, buffer);
  EXPECT_EQ(node->wCapacity, 3);
  EXPECT_EQ(BytesOf(*node), (Bytes{9}));

  quote.ReplaceField(LooseField(13, {}, 5));
  EXPECT_EQ(node->wSize, 0);
  EXPECT_EQ(node->bTypeStatus, 0xD3);
  EXPECT_EQ(+node->pData, buffer);
  EXPECT_EQ(node->pData[0], 9);

  quote.ReplaceField(node);
  EXPECT_EQ(node->bTypeStatus, 0xD3);
}

TEST_F(Quote, EmptyWithoutReleaseForgetsItsNodes) {
  CZRGSQuote quote;
  quote.AddFieldString(3, 5, "abc");
  Field* const node = quote.GetField(0);
  quote.Empty(0);
  EXPECT_EQ(quote.GetNumField(), 0U);
  EXPECT_EQ(node->wFieldID, 5) << "the node is not cleaned";
  EXPECT_EQ(BytesOf(*node), (Bytes{'a', 'b', 'c', 0}));
  CZRGSQuote::ReleaseField(node);
}

TEST_F(Quote, ACopyHasNodesOfItsOwn) {
  CZRGSQuote quote;
  quote.m_dwTag = 77;
  quote.AddFieldString(4, 5, "abc");
  quote.AddFieldFloat(5, 6, 1.5F);
  const CZRGSQuote constructed(quote);
  CZRGSQuote assigned;
  assigned.AddFieldByte(3, 5, 1);
  assigned.AddFieldByte(3, 9, 1);
  assigned = quote;
  for (const CZRGSQuote* copy : {&constructed, static_cast<const CZRGSQuote*>(&assigned)}) {
    EXPECT_EQ(copy->m_dwTag, 77U);
    EXPECT_EQ(IdsOf(*copy), (Ids{5, 6}));
    EXPECT_NE(copy->GetField(0), quote.GetField(0));
    EXPECT_NE(+copy->GetField(0)->pData, +quote.GetField(0)->pData);
    EXPECT_EQ(copy->GetField(0)->bTypeStatus, 0x24);
    EXPECT_EQ(BytesOf(*copy->GetField(0)), (Bytes{'a', 'b', 'c', 0}));
    EXPECT_EQ(copy->GetField(1)->bTypeStatus, 0x55);
  }
}

TEST_F(Quote, TransferToItselfEmptiesItAndKeepsTheTag) {
  CZRGSQuote quote;
  quote.m_dwTag = 7;
  quote.AddFieldByte(3, 16, 1);
  quote.AddFieldByte(3, 17, 2);
  quote.TransferQuote(quote);
  EXPECT_EQ(quote.GetNumField(), 0U);
  EXPECT_EQ(quote.m_dwTag, 7U);
  quote.AddFieldByte(3, 16, 3);  // the nodes are in the pool, each once
  quote.AddFieldByte(3, 17, 4);
  EXPECT_NE(quote.GetField(0), quote.GetField(1));
}

TEST_F(Quote, ReplaceFieldTakesAMissingValueAsZeros) {
  CZRGSQuote quote;
  quote.AddFieldUShort(3, 16, 0xFFFF);
  CZRGSQuote::ZRGS_QUOTE_FIELD bare{};
  bare.wFieldID = 16;
  bare.wSize = 4;
  bare.bTypeStatus = CZRGSQuote::QFTYPE_ULONG << 4;
  EXPECT_EQ(quote.ReplaceField(&bare), 1);
  double value = 1.0;
  EXPECT_EQ(quote.GetFieldData(16, value), 1);
  EXPECT_EQ(value, 0.0);
}

TEST_F(Quote, AssignmentToItselfEmptiesItAndKeepsTheTag) {
  CZRGSQuote quote;
  quote.m_dwTag = 77;
  quote.AddFieldDate(3, kDate, 35431);
  const CZRGSQuote& same = quote;
  quote = same;
  EXPECT_EQ(quote.GetNumField(), 0U);
  EXPECT_EQ(quote.m_dwTag, 77U);
}

TEST_F(Quote, TransferMergesAndEmptiesTheSource) {
  CZRGSQuote to;
  to.m_dwTag = 1;
  to.AddFieldLong(3, 10, 100);
  to.AddFieldLong(3, 11, 110);
  CZRGSQuote from;
  from.m_dwTag = 2;
  from.AddFieldLong(3, 12, 121);
  from.AddFieldLong(3, 11, 111);
  from.SetIndirectQuote(12, 1, 2, 3);
  const Field* const node = from.GetField(0);
  to.TransferQuote(from);
  EXPECT_EQ(from.GetNumField(), 0U);
  EXPECT_EQ(from.m_dwTag, 2U);
  EXPECT_EQ(to.m_dwTag, 2U);
  EXPECT_EQ(IdsOf(to), (Ids{10, 11, 12}));
  EXPECT_EQ(to.GetField(2), node) << "moved, not copied";
  EXPECT_EQ(node->dwRecords, 2U);
  EXPECT_EQ(NumberOf(to, 10), 100.0);
  EXPECT_EQ(NumberOf(to, 11), 111.0);
}

TEST_F(Quote, TransferOfNothingTakesTheTag) {
  CZRGSQuote to;
  to.AddFieldByte(3, 1, 1);
  CZRGSQuote from;
  from.m_dwTag = 8;
  to.TransferQuote(from);
  EXPECT_EQ(to.m_dwTag, 8U);
  EXPECT_EQ(to.GetNumField(), 1U);
}

TEST_F(Quote, TransferStopsAtATypeOfFifteenWithTheNodesInBoth) {
  CZRGSQuote to;
  CZRGSQuote from;
  from.m_dwTag = 5;
  from.AddFieldByte(3, 1, 1);
  from.AddField(3, 15, 2, g_value, 1);
  from.AddFieldByte(3, 3, 1);
  to.TransferQuote(from);
  EXPECT_EQ(to.m_dwTag, 5U);
  EXPECT_EQ(IdsOf(to), (Ids{1}));
  EXPECT_EQ(IdsOf(from), (Ids{1, 2, 3}));
  EXPECT_EQ(to.GetField(0), from.GetField(0));
  to.Empty(0);  // one of the two has to let go
}

TEST_F(Quote, TransferOfManyFieldsKeepsTheirOrder) {
  CZRGSQuote to;
  CZRGSQuote from;
  Ids expected;
  for (unsigned short id = 0; id < 100; ++id) {
    (id < 40 ? to : from).AddFieldUShort(3, id, id);
    expected.push_back(id);
  }
  to.TransferQuote(from);
  EXPECT_EQ(IdsOf(to), expected);
}

TEST_F(Quote, IsValidFromOneToOneHundredNinetyNineFields) {
  CZRGSQuote quote;
  EXPECT_EQ(quote.IsValid(), 0);
  for (unsigned short count = 1; count <= 201; ++count) {
    quote.AddFieldByte(3, count, 1);
    EXPECT_EQ(quote.IsValid(), count <= 199 ? 1 : 0) << count;
  }
}

TEST_F(Quote, IsValidUpToStatusNineAndTypeFourteen) {
  for (unsigned char status = 0; status < 16; ++status) {
    for (unsigned char type = 0; type < 16; ++type) {
      CZRGSQuote quote;
      quote.AddFieldByte(3, 1, 1);
      quote.AddField(status, type, 2, g_value, 1);
      quote.AddFieldByte(3, 3, 1);
      EXPECT_EQ(quote.IsValid(), status <= 9 && type <= 14 ? 1 : 0)
          << int{status} << ' ' << int{type};
    }
  }
}

}  // namespace
