#include <cstring>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <pxdutil/quotes/quote.h>

#include "tests/support/add_forms.h"
#include "tests/support/allocation_counter.h"

namespace {

using Field = CZRGSQuote::ZRGS_QUOTE_FIELD;
using pxd::test::AddForm;
using pxd::test::AllocationCounter;
using pxd::test::ScarceMemory;
using pxd::test::WithValueForms;

Field* Create(unsigned short id, const std::string& bytes, unsigned char type = 2,
              unsigned char status = 3) {
  std::string copy = bytes;
  return CZRGSQuote::CreateField(status, type, id, reinterpret_cast<unsigned char*>(copy.data()),
                                 static_cast<unsigned short>(copy.size()));
}

std::string BytesOf(const Field& field) {
  return {reinterpret_cast<const char*>(field.pData), field.wSize};
}

// A pool that is fresh for each test.
class QuotePool : public testing::Test {
 protected:
  QuotePool() { CZRGSQuote::Init(); }
  ~QuotePool() override { CZRGSQuote::UnInit(); }
};

TEST_F(QuotePool, ANodeHoldsWhatItWasCreatedWith) {
  Field* const field = Create(0xFEDC, "abc", 0xD, 0x9);
  ASSERT_NE(field, nullptr);
  EXPECT_EQ(field->wFieldID, 0xFEDC);
  EXPECT_EQ(field->bTypeStatus, 0xD9);
  EXPECT_EQ(field->wSize, 3);
  EXPECT_EQ(field->wCapacity, 3);
  EXPECT_EQ(field->wIndirectID, 0);
  EXPECT_EQ(field->dwRecords, 0U);
  EXPECT_EQ(field->bIndirectFlag, 0);
  EXPECT_EQ(BytesOf(*field), "abc");
  CZRGSQuote::ReleaseField(field);
}

TEST_F(QuotePool, OfStatusAndTypeTheLowFourBitsCount) {
  Field* const field = Create(1, "a", 0xF2, 0xF3);
  EXPECT_EQ(field->bTypeStatus, 0x23);
  CZRGSQuote::ReleaseField(field);
}

TEST_F(QuotePool, ANodeIsPackedWithItsPointerBehindTheFlagBytes) {
  Field* const field = Create(0x0201, "abc", 0xA, 0xB);
  field->wIndirectID = 0x0403;
  field->dwRecords = 0x0C0B0A09;
  field->bIndirectFlag = 0x0D;
  unsigned char raw[14 + sizeof(void*)];
  ASSERT_EQ(sizeof(Field), sizeof raw);
  std::memcpy(raw, field, sizeof raw);
  const unsigned char expected[14] = {0x01, 0x02, 0x03, 0x04, 0x03, 0x00, 0x03,
                                      0x00, 0x09, 0x0A, 0x0B, 0x0C, 0xAB, 0x0D};
  EXPECT_EQ(std::memcmp(raw, expected, sizeof expected), 0);
  unsigned char* data = nullptr;
  std::memcpy(&data, raw + 14, sizeof data);
  EXPECT_EQ(data, +field->pData);
  CZRGSQuote::ReleaseField(field);
}

TEST_F(QuotePool, AReleasedNodeIsCleanAndKeepsItsBuffer) {
  Field* const field = Create(7, "abcdef");
  field->wIndirectID = 1;
  field->dwRecords = 2;
  field->bIndirectFlag = 3;
  unsigned char* const buffer = field->pData;
  CZRGSQuote::ReleaseField(field);
  EXPECT_EQ(field->wFieldID, 0);
  EXPECT_EQ(field->wIndirectID, 0);
  EXPECT_EQ(field->wSize, 0);
  EXPECT_EQ(field->dwRecords, 0U);
  EXPECT_EQ(field->bTypeStatus, 0);
  EXPECT_EQ(field->bIndirectFlag, 0);
  EXPECT_EQ(field->wCapacity, 6);
  EXPECT_EQ(+field->pData, buffer);
}

TEST_F(QuotePool, IsLastInFirstOut) {
  Field* const a = Create(1, "a");
  Field* const b = Create(2, "b");
  Field* const c = Create(3, "c");
  CZRGSQuote::ReleaseField(a);
  CZRGSQuote::ReleaseField(c);
  CZRGSQuote::ReleaseField(b);
  EXPECT_EQ(Create(4, "x"), b);
  EXPECT_EQ(Create(5, "x"), c);
  EXPECT_EQ(Create(6, "x"), a);
  Field* const fresh = Create(7, "x");
  EXPECT_TRUE(fresh != a && fresh != b && fresh != c);
  for (Field* field : {a, b, c, fresh}) {
    CZRGSQuote::ReleaseField(field);
  }
}

TEST_F(QuotePool, ABufferIsKeptWhereTheValueFitsAndNeverShrinks) {
  Field* field = Create(1, "12345678");
  unsigned char* const buffer = field->pData;
  for (const char* value : {"1", "1234567", "12345678"}) {
    CZRGSQuote::ReleaseField(field);
    const AllocationCounter counter;
    field = Create(2, value);
    EXPECT_EQ(+field->pData, buffer);
    EXPECT_EQ(field->wCapacity, 8);
    EXPECT_EQ(field->wSize, std::strlen(value));
    EXPECT_EQ(counter.Count(), 0U);
  }
  CZRGSQuote::ReleaseField(field);
}

TEST_F(QuotePool, ALargerValueGetsABufferOfExactlyItsSize) {
  Field* field = Create(1, "1234");
  CZRGSQuote::ReleaseField(field);
  field = Create(2, std::string(100, 'x'));
  EXPECT_EQ(field->wCapacity, 100);
  EXPECT_EQ(BytesOf(*field), std::string(100, 'x'));
  CZRGSQuote::ReleaseField(field);
}

TEST_F(QuotePool, ASizeOfZeroLeavesAFreshNodeWithoutABuffer) {
  Field* const field = CZRGSQuote::CreateField(3, 2, 9, nullptr, 0);
  EXPECT_EQ(+field->pData, nullptr);
  EXPECT_EQ(field->wCapacity, 0);
  EXPECT_EQ(field->wSize, 0);
  CZRGSQuote::ReleaseField(field);
}

TEST_F(QuotePool, ASizeOfZeroLeavesTheEarlierBytesBehindARecycledNode) {
  CZRGSQuote::ReleaseField(Create(1, "old"));
  Field* const field = CZRGSQuote::CreateField(3, 2, 9, nullptr, 0);
  EXPECT_EQ(field->wSize, 0);
  EXPECT_EQ(field->wCapacity, 3);
  EXPECT_EQ(std::memcmp(field->pData, "old", 3), 0);
  CZRGSQuote::ReleaseField(field);
}

TEST_F(QuotePool, ANodeFromANodeCopiesTheValueAndNotTheIndirectPart) {
  Field* const field = Create(7, "abc", 0xD, 4);
  field->wIndirectID = 1;
  field->dwRecords = 2;
  field->bIndirectFlag = 3;
  Field* const copy = CZRGSQuote::CreateField(field);
  ASSERT_NE(copy, nullptr);
  EXPECT_NE(copy, field);
  EXPECT_NE(+copy->pData, +field->pData);
  EXPECT_EQ(copy->wFieldID, 7);
  EXPECT_EQ(copy->bTypeStatus, 0xD4);
  EXPECT_EQ(BytesOf(*copy), "abc");
  EXPECT_EQ(copy->wIndirectID, 0);
  EXPECT_EQ(copy->dwRecords, 0U);
  EXPECT_EQ(copy->bIndirectFlag, 0);
  CZRGSQuote::ReleaseField(field);
  CZRGSQuote::ReleaseField(copy);
}

TEST_F(QuotePool, TheLargestValueHas65535Bytes) {
  const std::string bytes(65535, 'x');
  Field* const field = Create(1, bytes);
  EXPECT_EQ(BytesOf(*field), bytes);
  CZRGSQuote::ReleaseField(field);
}

TEST_F(QuotePool, ReleasingNullDoesNothing) {
  CZRGSQuote::ReleaseField(nullptr);
}

TEST_F(QuotePool, InitAndUnInitMayBeRepeated) {
  CZRGSQuote::ReleaseField(Create(1, "a"));
  CZRGSQuote::Init();
  EXPECT_EQ(AllocationCounter().Count(), 0U);
  {
    const AllocationCounter counter;
    Field* const field = Create(1, "a");
    EXPECT_EQ(counter.Count(), 0U) << "a second Init keeps the pool";
    CZRGSQuote::ReleaseField(field);
  }
  CZRGSQuote::UnInit();
  CZRGSQuote::UnInit();
  CZRGSQuote::Init();
  const AllocationCounter counter;
  Field* const field = Create(1, "a");
  EXPECT_EQ(counter.Count(), 2U) << "UnInit empties the pool: a node and its buffer are new";
  CZRGSQuote::ReleaseField(field);
}

TEST_F(QuotePool, AddingTheSameIdGivesTheFirstNodeBack) {
  CZRGSQuote quote;
  quote.AddFieldLong(3, 100, 1);
  Field* const first = quote.GetField(0);
  quote.AddFieldLong(3, 101, 1);
  quote.AddFieldLong(3, 100, 2);
  EXPECT_NE(quote.GetField(0), first);
  EXPECT_EQ(Create(5, "abcd"), first);
  CZRGSQuote::ReleaseField(first);
}

TEST_F(QuotePool, AQuoteGivesItsNodesBackInListOrder) {
  Field* nodes[3] = {};
  {
    CZRGSQuote quote;
    for (unsigned short i = 0; i < 3; ++i) {
      quote.AddFieldByte(3, i, 1);
      nodes[i] = quote.GetField(i);
    }
  }
  EXPECT_EQ(Create(1, "a"), nodes[2]);
  EXPECT_EQ(Create(1, "a"), nodes[1]);
  EXPECT_EQ(Create(1, "a"), nodes[0]);
  for (Field* node : nodes) {
    CZRGSQuote::ReleaseField(node);
  }
}

TEST_F(QuotePool, AssignmentRecyclesTheTargetsOwnNodes) {
  {  // the pool's own list grows when nodes first come back
    CZRGSQuote warm;
    warm.AddFieldDouble(3, 1, 1.0);
    warm.AddFieldDouble(3, 2, 1.0);
  }
  CZRGSQuote target;
  target.AddFieldDouble(3, 1, 1.0);
  Field* const own = target.GetField(0);
  CZRGSQuote source;
  source.AddFieldDouble(3, 2, 2.0);
  const AllocationCounter counter;
  target = source;
  EXPECT_EQ(target.GetField(0), own);
  EXPECT_EQ(counter.Count(), 0U);
}

// The point of the pool: once it is warm, quotes cost no heap memory.
TEST_F(QuotePool, AWarmPoolMakesAQuoteOfTwelveFieldsWithoutTheHeap) {
  const auto build = [] {
    CZRGSQuote quote;
    quote.AddFieldDate(3, 280, 35431);
    quote.AddFieldTime(3, 281, 34200);
    quote.AddFieldString(3, 1, "IBM");
    quote.AddFieldDouble(3, 2, 1.0);
    quote.AddFieldFloat(3, 3, 1.0F);
    quote.AddFieldLong(3, 4, 1);
    quote.AddFieldULong(3, 5, 1);
    quote.AddFieldShort(3, 6, 1);
    quote.AddFieldUShort(3, 7, 1);
    quote.AddFieldChar(3, 8, 'a');
    quote.AddFieldByte(3, 9, 1);
    quote.AddFieldNoValue(10, 4);
    EXPECT_EQ(quote.GetNumField(), 12U);
    EXPECT_EQ(quote.GetDate(), 35431);
    CZRGSQuote copy(quote);
    copy = quote;
    CZRGSQuote taken;
    taken.TransferQuote(copy);
    EXPECT_EQ(taken.GetNumField(), 12U);
    taken.Empty(1);
  };
  // Last in, first out hands small buffers to large values now and then; after a few rounds each
  // node has grown to the largest value that comes its way.
  for (int round = 0; round < 30; ++round) {
    build();
  }
  const AllocationCounter counter;
  for (int round = 0; round < 10; ++round) {
    build();
  }
  EXPECT_EQ(counter.Count(), 0U);
}

TEST_F(QuotePool, EachNodeHasOneOwner) {
  // Whatever is done with quotes, taking every node out of the pool again meets none twice.
  {
    CZRGSQuote a;
    CZRGSQuote b;
    for (unsigned short id = 0; id < 50; ++id) {
      a.AddFieldLong(3, id, id);
      b.AddFieldLong(3, static_cast<unsigned short>(id + 25), id);
    }
    a.TransferQuote(b);
    b = a;
    a.AddField(b.GetField(3), 1);
    a = *&a;
    CZRGSQuote c(b);
    c.Empty(1);
    c.Empty(1);
    c.AddField(Create(7, "adopted"), 0);
    c.AddField(c.GetField(0), 0);
    EXPECT_EQ(c.GetNumField(), 1U);
  }
  std::set<Field*> seen;
  for (int i = 0; i < 400; ++i) {
    Field* const field = CZRGSQuote::CreateField(0, 0, 1, nullptr, 0);
    EXPECT_TRUE(seen.insert(field).second);
  }
  for (Field* field : seen) {
    CZRGSQuote::ReleaseField(field);
  }
}

int AddWholeNode(CZRGSQuote& quote, unsigned short id, int copy) {
  unsigned char value[2] = {1, 0};
  // A node of the caller's own making, so that the pool isn't needed to make it.
  auto* const node = new Field{};
  node->wFieldID = id;
  node->bTypeStatus = 0x13;
  node->wSize = sizeof value;
  node->wCapacity = sizeof value;
  node->pData = new unsigned char[sizeof value]{value[0], value[1]};
  const int result = quote.AddField(node, copy);
  if (copy != 0 || result == 0) {
    EXPECT_EQ(node->wSize, 2) << "the node is still the caller's";
    delete[] node->pData;
    delete node;
  }
  return result;
}

// They are asked with the date field's id, so that each can also be asked about the cache rule.
const std::vector<AddForm> kAddForms = WithValueForms({
    {"adopted node", [](CZRGSQuote& q, unsigned short id) { return AddWholeNode(q, id, 0); }},
    {"copied node", [](CZRGSQuote& q, unsigned short id) { return AddWholeNode(q, id, 1); }},
    {"generic, no value",
     [](CZRGSQuote& q, unsigned short id) { return q.AddField(3, 1, id, nullptr, 0); }},
});

// No pool is open in these.
TEST(ClosedPool, GivesNoNode) {
  unsigned char value = 1;
  EXPECT_EQ(CZRGSQuote::CreateField(3, 11, 1, &value, 1), nullptr);
  const Field field{1, 0, 1, 1, 0, 0xB3, 0, &value};
  EXPECT_EQ(CZRGSQuote::CreateField(&field), nullptr);
}

TEST(ClosedPool, EveryAddFormAnswers0AndChangesNothing) {
  CZRGSQuote quote;
  quote.m_dwTag = 5;
  EXPECT_EQ(quote.GetDate(), 0);
  for (const AddForm& form : kAddForms) {
    EXPECT_EQ(form.add(quote, 280), 0) << form.name;
    EXPECT_EQ(quote.GetNumField(), 0U) << form.name;
  }
  EXPECT_EQ(quote.m_dwTag, 5U);
}

TEST(ClosedPool, ReleaseAndEmptyDoNothing) {
  CZRGSQuote::Init();
  CZRGSQuote quote;
  quote.AddFieldDate(3, 280, 35431);
  quote.AddFieldString(3, 1, "text");
  EXPECT_EQ(quote.GetDate(), 35431);
  Field* const loose = Create(9, "loose");
  CZRGSQuote::UnInit();

  CZRGSQuote::ReleaseField(loose);
  EXPECT_EQ(loose->wFieldID, 9) << "the node is neither cleaned nor freed";
  quote.Empty(0);
  EXPECT_EQ(quote.GetNumField(), 2U);
  quote.Empty(1);
  EXPECT_EQ(quote.GetNumField(), 2U);
  EXPECT_EQ(quote.GetDate(), 35431);
  quote.AddFieldDate(3, 280, 7);
  EXPECT_EQ(quote.GetField(0)->wSize, 2);

  CZRGSQuote::Init();  // the nodes are still good: give them to a pool again
  CZRGSQuote::ReleaseField(loose);
  quote.Empty(1);
  CZRGSQuote::UnInit();
}

TEST(ClosedPool, TransferLeavesTheNodesInBothQuotes) {
  CZRGSQuote::Init();
  CZRGSQuote from;
  from.m_dwTag = 77;
  from.AddFieldLong(3, 1, 5);
  CZRGSQuote to;
  CZRGSQuote::UnInit();
  to.TransferQuote(from);
  EXPECT_EQ(to.m_dwTag, 77U);
  ASSERT_EQ(to.GetNumField(), 1U);
  EXPECT_EQ(from.GetNumField(), 1U);
  EXPECT_EQ(to.GetField(0), from.GetField(0));

  CZRGSQuote::Init();
  to.Empty(0);
  from.Empty(1);
  CZRGSQuote::UnInit();
}

TEST_F(QuotePool, WithoutMemoryEveryAddFormAnswers0AndChangesNothing) {
  for (const AddForm& form : kAddForms) {
    if (std::string(form.name) == "adopted node" || std::string(form.name) == "generic, no value") {
      continue;  // adoption needs no memory; the other has no bytes, and a test of its own
    }
    CZRGSQuote::UnInit();
    CZRGSQuote::Init();
    CZRGSQuote quote;
    quote.AddFieldByte(3, 1, 1);
    // A node's memory is there or not; its buffer's is not.
    for (const std::size_t granted : {0U, 1U}) {
      int result = 1;
      if (std::string(form.name) == "copied node") {
        unsigned char value[2] = {1, 0};
        const Field node{280, 0, 2, 2, 0, 0x13, 0, value};
        const ScarceMemory scarce(granted);
        result = quote.AddField(&node, 1);
      } else {
        const ScarceMemory scarce(granted);
        result = form.add(quote, 280);
      }
      EXPECT_EQ(result, 0) << form.name << ' ' << granted;
      EXPECT_EQ(quote.GetNumField(), 1U) << form.name;
    }
    EXPECT_EQ(form.add(quote, 280), 1) << form.name;
    EXPECT_EQ(quote.GetNumField(), 2U) << form.name;
  }
}

TEST_F(QuotePool, WithoutMemoryForANodeAFieldWithoutBytesIsNotAddedEither) {
  CZRGSQuote quote;
  {
    const ScarceMemory none(0);
    EXPECT_EQ(quote.AddField(3, 2, 1, nullptr, 0), 0);
  }
  EXPECT_EQ(quote.GetNumField(), 0U);
}

TEST_F(QuotePool, AnAddThatFailedLeavesTheQuoteLookingForItsDateOrNot) {
  CZRGSQuote quote;
  EXPECT_EQ(quote.GetDate(), 0);  // it found neither, and remembers
  {
    const ScarceMemory none(0);
    EXPECT_EQ(quote.AddFieldDate(3, 280, 35431), 0);
  }
  unsigned short date = 35431;
  EXPECT_EQ(quote.AddField(3, 1, 280, &date, 2), 1);  // a form that doesn't make it look again
  EXPECT_EQ(quote.GetDate(), 0);
}

TEST_F(QuotePool, ACopyThatRunsOutOfMemoryThrowsAndLosesNoNode) {
  CZRGSQuote source;
  for (unsigned short id = 1; id <= 10; ++id) {
    source.AddFieldDouble(3, id, 1.0);
  }
  CZRGSQuote target;
  for (std::size_t granted = 0; granted < 20; ++granted) {
    CZRGSQuote::ReleaseField(CZRGSQuote::CreateField(0, 0, 1, nullptr, 0));
    const auto attempt = [&] {
      const ScarceMemory scarce(granted);
      target = source;
    };
    try {
      attempt();
      EXPECT_EQ(target.GetNumField(), 10U) << granted;
    } catch (const std::bad_alloc&) {
      EXPECT_EQ(target.GetNumField(), 0U) << granted;
    }
  }
  target = source;
  EXPECT_EQ(target.GetNumField(), 10U);
}

TEST_F(QuotePool, NoNodeIsMadeOfNoNode) {
  EXPECT_EQ(CZRGSQuote::CreateField(nullptr), nullptr);
}

}  // namespace
