// Quotes, field items, news and notifications while memory runs out.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <pxdutil/quotes/field_item.h>
#include <pxdutil/quotes/news.h>
#include <pxdutil/quotes/notification.h>
#include <pxdutil/quotes/quote.h>

#include "tests/faults/refusals.h"
#include "tests/support/add_forms.h"

namespace {

using faults_test::Attempt;
using faults_test::RefuseEachAllocation;
using pxd::test::AddForm;
using pxd::test::WithValueForms;

using Field = CZRGSQuote::ZRGS_QUOTE_FIELD;

// The pool, open as long as this lives.
class OpenPool {
 public:
  OpenPool() { CZRGSQuote::Init(); }
  OpenPool(const OpenPool&) = delete;
  OpenPool& operator=(const OpenPool&) = delete;
  ~OpenPool() { CZRGSQuote::UnInit(); }
};

// A quote's fields, copied out: a node may not be looked at twice.
struct Seen {
  unsigned short id;
  std::vector<unsigned char> bytes;
  unsigned char typeStatus;
  friend bool operator==(const Seen&, const Seen&) = default;
};

std::vector<Seen> Look(const CZRGSQuote& quote) {
  std::vector<Seen> fields;
  for (unsigned short i = 0; i < quote.GetNumField(); ++i) {
    const Field& node = *quote.GetField(i);
    fields.push_back({node.wFieldID,
                      node.wSize != 0
                          ? std::vector<unsigned char>(node.pData, node.pData + node.wSize)
                          : std::vector<unsigned char>(),
                      node.bTypeStatus});
  }
  return fields;
}

// Gives the quote `count` fields of 8 bytes, from `firstId` on.
void Fill(CZRGSQuote& quote, unsigned short firstId, int count) {
  for (int i = 0; i < count; ++i) {
    ASSERT_EQ(quote.AddFieldDouble(3, static_cast<unsigned short>(firstId + i), i + 0.5), 1);
  }
}

// Takes many nodes, checks that no two are one, and gives them back.
void ExpectSoundPool() {
  std::vector<Field*> nodes;
  for (unsigned short id = 1; id <= 100; ++id) {
    unsigned char value[8] = {};
    Field* const node = CZRGSQuote::CreateField(3, CZRGSQuote::QFTYPE_DOUBLE, id, value, 8);
    ASSERT_NE(node, nullptr);
    nodes.push_back(node);
  }
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    EXPECT_EQ(+nodes[i]->wFieldID, i + 1) << "two nodes were one";
    EXPECT_GE(+nodes[i]->wCapacity, 8);
    EXPECT_EQ(+nodes[i]->dwRecords, 0U);
  }
  for (Field* const node : nodes) {
    CZRGSQuote::ReleaseField(node);
  }
}

const std::vector<AddForm> kAddForms = WithValueForms({
    {"copied node",
     [](CZRGSQuote& q, unsigned short id) {
       unsigned char value[40] = "copied";
       const Field node{id, 0, 40, 40, 0, 0x23, 0, value};
       return q.AddField(&node, 1);
     }},
});

// Adds a field to a quote of `fields` fields by every form; 40 fields outgrow the room that a quote
// has inside, and a list that can't grow throws.
void AddByEveryForm(int fields, unsigned short id) {
  for (const AddForm& form : kAddForms) {
    SCOPED_TRACE(form.name);
    RefuseEachAllocation([&](Attempt& attempt) {
      const OpenPool pool;
      CZRGSQuote quote;
      Fill(quote, 1000, fields);
      const std::vector<Seen> before = Look(quote);
      int result = 0;
      const bool done = attempt.Run([&] { result = form.add(quote, id); });
      if (done && result == 1) {
        EXPECT_EQ(quote.GetFieldInfo(id).bStatus,
                  std::string(form.name) == "without value" ? 8 : 3);
      } else {
        EXPECT_TRUE(result == 0 && Look(quote) == before) << "a refused field changed the quote";
        EXPECT_EQ(form.add(quote, id), 1) << "with memory";
      }
      EXPECT_EQ(quote.IsValid(), 1);
      ExpectSoundPool();
    });
  }
}

TEST(QuoteMemory, EveryAddFormOfAnEmptyQuoteAddsTheFieldOrNothing) {
  AddByEveryForm(0, 7);
}

TEST(QuoteMemory, EveryAddFormThatReplacesAFieldLeavesTheOldOneOrTheNew) {
  AddByEveryForm(3, 1001);
}

TEST(QuoteMemory, EveryAddFormOfAFullListAddsTheFieldOrNothing) {
  AddByEveryForm(32, 7);
}

TEST(QuoteMemory, AnAdoptedNodeStaysTheCallersWhereTheListCannotGrow) {
  RefuseEachAllocation([](Attempt& attempt) {
    const OpenPool pool;
    CZRGSQuote quote;
    Fill(quote, 1000, 32);
    unsigned char value = 5;
    Field* const node = CZRGSQuote::CreateField(3, CZRGSQuote::QFTYPE_BYTE, 7, &value, 1);
    ASSERT_NE(node, nullptr);
    if (!attempt.Run([&] { EXPECT_EQ(quote.AddField(node, 0), 1); })) {
      EXPECT_EQ(quote.GetNumField(), 32U);
      EXPECT_EQ(+node->wFieldID, 7);
      CZRGSQuote::ReleaseField(node);
    }
    ExpectSoundPool();
  });
}

TEST(QuoteMemory, ACopyIsWholeOrThrowsAndLosesNoNode) {
  RefuseEachAllocation([](Attempt& attempt) {
    const OpenPool pool;
    CZRGSQuote source;
    Fill(source, 1, 40);
    source.m_dwTag = 9;
    const std::vector<Seen> wanted = Look(source);
    const bool done = attempt.Run([&] {
      const CZRGSQuote copy(source);
      EXPECT_EQ(copy.GetNumField(), 40U);
    });
    EXPECT_TRUE(done || attempt.Refused() > 0);
    EXPECT_TRUE(Look(source) == wanted);
    ExpectSoundPool();
  });
}

TEST(QuoteMemory, AnAssignmentThatFailsLeavesNoFieldAndNoDateOfFieldsThatAreGone) {
  RefuseEachAllocation([](Attempt& attempt) {
    const OpenPool pool;
    CZRGSQuote source;
    Fill(source, 1, 40);
    source.m_dwTag = 9;
    CZRGSQuote target;
    target.AddFieldDate(3, 280, 35431);
    target.m_dwTag = 5;
    EXPECT_EQ(target.GetFieldInfo(280).bDateTimeFlags, 2);
    if (attempt.Run([&] { target = source; })) {
      EXPECT_TRUE(Look(target) == Look(source));
      EXPECT_EQ(target.m_dwTag, 9U);
    } else {
      EXPECT_EQ(target.GetNumField(), 0U);
      target.AddFieldByte(3, 1, 1);
      EXPECT_EQ(target.GetFieldInfo(1).bDateTimeFlags, 0) << "a date without a field";
    }
    EXPECT_EQ(source.GetNumField(), 40U);
    ExpectSoundPool();
  });
}

TEST(QuoteMemory, ATransferMovesAllFieldsOrNone) {
  RefuseEachAllocation([](Attempt& attempt) {
    const OpenPool pool;
    CZRGSQuote source;
    Fill(source, 10, 30);
    source.m_dwTag = 9;
    CZRGSQuote target;
    Fill(target, 1, 20);
    target.m_dwTag = 5;
    const std::vector<Seen> from = Look(source);
    const std::vector<Seen> to = Look(target);
    if (attempt.Run([&] { target.TransferQuote(source); })) {
      EXPECT_EQ(source.GetNumField(), 0U);
      EXPECT_EQ(target.GetNumField(), 39U);  // 1 to 39
      EXPECT_EQ(target.m_dwTag, 9U);
    } else {
      EXPECT_TRUE(Look(source) == from);
      EXPECT_TRUE(Look(target) == to);
      EXPECT_EQ(target.m_dwTag, 5U);
    }
    ExpectSoundPool();
  });
}

TEST(QuoteMemory, ReplacingByALargerValueLeavesTheOldOneOrTheNew) {
  RefuseEachAllocation([](Attempt& attempt) {
    const OpenPool pool;
    CZRGSQuote quote;
    Fill(quote, 1, 2);
    const std::vector<Seen> before = Look(quote);
    unsigned char value[50] = "a longer value";
    const Field node{2, 0, 50, 50, 7, 0x23, 0, value};
    if (attempt.Run([&] { quote.ReplaceField(&node); })) {
      EXPECT_STREQ(CZRGSQuote::GetDataString(quote.GetField(1)), "a longer value");
    } else {
      EXPECT_TRUE(Look(quote) == before);
    }
    ExpectSoundPool();
  });
}

// Emptying and destroying must not throw, so a pool that can't grow frees the node instead.
TEST(QuoteMemory, FieldsGoBackWithoutMemory) {
  RefuseEachAllocation([](Attempt& attempt) {
    const OpenPool pool;
    auto first = std::make_unique<CZRGSQuote>();
    CZRGSQuote second;
    CZRGSQuote third;
    // More than a thread keeps for itself.
    Fill(*first, 1, 100);
    Fill(second, 1, 100);
    Fill(third, 1, 15);
    CZRGSQuote over;
    Fill(over, 1, 15);
    Field* const loose = CZRGSQuote::CreateField(3, CZRGSQuote::QFTYPE_BYTE, 7, nullptr, 1);
    EXPECT_TRUE(attempt.Run([&] {
      CZRGSQuote::ReleaseField(loose);
      first.reset();
      second.Empty(1);
      third.TransferQuote(over);  // every field goes over one that goes back
    }));
    EXPECT_EQ(second.GetNumField(), 0U);
    EXPECT_EQ(third.GetNumField(), 15U);
    ExpectSoundPool();
  });
}

TEST(QuoteMemory, TextsOfFieldsAreThereOrThrow) {
  RefuseEachAllocation([](Attempt& attempt) {
    const OpenPool pool;
    const std::string longText(200, 'x');
    CZRGSQuote quote;
    quote.AddFieldString(3, 1, longText.c_str());
    quote.AddFieldString(3, 2, longText.c_str(), 100);  // no NUL
    quote.AddFieldDouble(3, 3, 1e300);
    quote.AddFieldDate(3, 4, 35431);
    quote.AddFieldTime(3, 5, 34200);
    quote.AddFieldString(3, 6, "12.5", 4);  // no NUL: the number is read from a copy
    const std::vector<Seen> before = Look(quote);
    attempt.Run([&] {
      EXPECT_STREQ(CZRGSQuote::GetDataString(quote.GetField(0)), longText.c_str());
      EXPECT_EQ(CZRGSQuote::GetDataString(quote.GetField(1)).GetLength(), 100);
      EXPECT_FALSE(CZRGSQuote::GetDataString(quote.GetField(2)).IsEmpty());
      EXPECT_STREQ(CZRGSQuote::GetDataString(quote.GetField(3)), "01/01/1997");
      EXPECT_STREQ(CZRGSQuote::GetDataString(quote.GetField(4)), "09:30:00");
      EXPECT_EQ(CZRGSQuote::GetDoubleValue(quote.GetField(5)), 12.5);
      EXPECT_STREQ(CZRGSQuote::GetTypeString(quote.GetField(0)), "QFTYPE_STRING");
    });
    EXPECT_TRUE(Look(quote) == before);
  });
}

TEST(FieldItemMemory, AValueIsStoredOrNothingIs) {
  RefuseEachAllocation([](Attempt& attempt) {
    CFieldItem item;
    item.m_nType = CZRGSQuote::QFTYPE_DOUBLE;
    item.m_nElemSize = 8;
    double value = 2.5;
    const bool stored = attempt.Run([&] { item.storeFieldValue(&value, 4); });
    EXPECT_EQ(+item.m_wCount, stored ? 1 : 0);
    EXPECT_EQ(+item.m_nBufSize, stored ? 32 : 0);
    EXPECT_EQ(item.m_pValues != nullptr, stored);
    item.storeFieldValue(&value, 4);
    const int before = item.m_wCount;
    attempt.Run([&] {
      const CFieldItem copy(item);
      EXPECT_EQ(std::memcmp(copy.m_pValues, item.m_pValues, 32), 0);
    });
    CFieldItem target;
    EXPECT_TRUE(attempt.Run([&] { target.transfer(item); }));
    EXPECT_EQ(+target.m_wCount, before);
    EXPECT_TRUE(item.m_pValues == nullptr);
  });
}

TEST(NewsMemory, AHandleWithoutMemoryHoldsNothing) {
  RefuseEachAllocation([](Attempt& attempt) {
    std::unique_ptr<CZRGSNews> news;
    const bool made = attempt.Run([&] { news = std::make_unique<CZRGSNews>(100); });
    if (made) {
      const bool holds = news->GetBuffer(1) != nullptr;
      news->SetNewsRawData(1, "headline", 8);
      unsigned int size = 99;
      const void* const data = news->GetRawData(size);
      EXPECT_EQ(size, holds ? 8U : 0U);
      EXPECT_EQ(data != nullptr, holds);
      news->SetNewsFileName(1, "file");
      news->SetNewsHint(1, 2, 3);
      news->SetFlags(5);
      EXPECT_STREQ(news->GetFileName(), holds ? "\2" : "");
      EXPECT_EQ(news->GetFlags(), holds ? 5UL : 0UL);
    }
  });
}

TEST(NotificationMemory, WhatAnEnvelopeMakesIsItsOwnOrWasNeverMade) {
  RefuseEachAllocation([](Attempt& attempt) {
    const OpenPool pool;
    attempt.Run([] {
      CZRGSQuoteNotification notification(1);
      CZRGSQuote* quote = nullptr;
      EXPECT_TRUE(notification.GetQuote(quote));
      quote->AddFieldByte(3, 1, 1);
      const CZRGSQuoteNotification copy(notification);
    });
    attempt.Run([] {
      CZRGSHistoryDownloadNotification notification(1);
      CZRGSQuote* quote = nullptr;
      EXPECT_TRUE(notification.GetQuote(quote));
      const CZRGSHistoryDownloadNotification copy(notification);
    });
    attempt.Run([] {
      CZRGSNewsNotification notification(static_cast<unsigned short>(50));
      CZRGSNews* news = nullptr;
      EXPECT_TRUE(notification.GetNews(news));
      news->SetNewsHint(1, 2, 3);
      CZRGSNewsNotification other(static_cast<unsigned short>(10));
      other = notification;
    });
    ExpectSoundPool();
  });
}

}  // namespace
