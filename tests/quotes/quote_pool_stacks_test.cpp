// The pool as its users see it, one stack, although each thread keeps nodes of its own.
#include <algorithm>
#include <atomic>
#include <cstdint>
#include <optional>
#include <random>
#include <set>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <pxdutil/quotes/detail/node_pool.h>
#include <pxdutil/quotes/quote.h>

#include "tests/support/allocation_counter.h"

namespace {

using Field = CZRGSQuote::ZRGS_QUOTE_FIELD;
using pxd::test::AllocationCounter;
using pxd::test::BlocksInUse;
using pxd::test::ScarceMemory;

// More than a thread ever keeps.
constexpr std::size_t kMany = 1000;

class QuotePoolStacks : public testing::Test {
 protected:
  QuotePoolStacks() { CZRGSQuote::Init(); }
  ~QuotePoolStacks() override { CZRGSQuote::UnInit(); }

  static Field* Take() { return CZRGSQuote::CreateField(3, 2, 1, nullptr, 0); }
  static std::vector<Field*> Take(std::size_t count) {
    std::vector<Field*> nodes(count);
    for (Field*& node : nodes) {
      node = Take();
    }
    return nodes;
  }
  static void Give(const std::vector<Field*>& nodes) {
    for (Field* node : nodes) {
      CZRGSQuote::ReleaseField(node);
    }
  }
  template <class Work>
  static void OnAThread(Work work) {
    std::thread(work).join();
  }
};

// Waits until `flag` has that value.
void Await(const std::atomic<int>& flag, int value) {
  while (flag.load() != value) {
    std::this_thread::yield();
  }
}

TEST_F(QuotePoolStacks, HandOutWhatOneStackWould) {
  std::vector<Field*> taken;
  std::vector<Field*> free;  // the one stack
  std::mt19937 random(1);
  for (int round = 0; round < 200; ++round) {
    const bool gives = random() % 2 == 0;
    const std::size_t count = random() % 300;
    for (std::size_t i = 0; i < count; ++i) {
      if (gives && !taken.empty()) {
        std::swap(taken[random() % taken.size()], taken.back());
        CZRGSQuote::ReleaseField(taken.back());
        free.push_back(taken.back());
        taken.pop_back();
      } else if (!gives) {
        const AllocationCounter counter;
        Field* const node = Take();
        if (free.empty()) {
          ASSERT_EQ(counter.Count(), 1U);
        } else {
          ASSERT_EQ(node, free.back()) << round;
          ASSERT_EQ(counter.Count(), 0U);
          free.pop_back();
        }
        taken.push_back(node);
      }
    }
  }
  Give(taken);
}

TEST_F(QuotePoolStacks, AQuoteOfMoreFieldsThanAThreadKeepsGivesAllBackInOrder) {
  std::vector<Field*> nodes;
  {
    CZRGSQuote quote;
    for (unsigned short id = 1; id <= 300; ++id) {
      quote.AddFieldByte(3, id, 1);
      nodes.push_back(quote.GetField(static_cast<unsigned short>(id - 1)));
    }
  }
  for (std::size_t i = nodes.size(); i > 0; --i) {
    ASSERT_EQ(Take(), nodes[i - 1]) << i;
  }
  Give(nodes);
}

TEST_F(QuotePoolStacks, WithoutMemoryForTheSharedStackANodeThatDoesNotFitIsFreed) {
  const std::vector<Field*> nodes = Take(kMany);
  {
    const ScarceMemory none(0);
    Give(nodes);
  }
  // What fitted is still a stack without doubles.
  std::set<Field*> seen;
  for (Field* node : Take(kMany)) {
    EXPECT_TRUE(seen.insert(node).second);
  }
  Give({seen.begin(), seen.end()});
}

TEST_F(QuotePoolStacks, AThreadThatEndsLeavesItsNodesToTheOthers) {
  std::vector<Field*> nodes;
  OnAThread([&] {
    nodes = Take(kMany);
    Give(nodes);
  });
  const AllocationCounter counter;
  for (std::size_t i = nodes.size(); i > 0; --i) {
    ASSERT_EQ(Take(), nodes[i - 1]) << "the last given is the first taken, on whatever thread";
  }
  EXPECT_EQ(counter.Count(), 0U);
  Give(nodes);
}

TEST_F(QuotePoolStacks, ANodeMayBeReleasedOnAnotherThreadThanItWasTakenOn) {
  const std::vector<Field*> nodes = Take(10);
  OnAThread([&] {
    Give(nodes);
    EXPECT_EQ(Take(), nodes[9]);
    CZRGSQuote::ReleaseField(nodes[9]);
  });
  EXPECT_EQ(Take(), nodes[9]);
  CZRGSQuote::ReleaseField(nodes[9]);
}

TEST_F(QuotePoolStacks, UnInitFreesWhatALivingThreadKeeps) {
  std::atomic<int> step{0};
  std::thread thread([&] {
    Give(Take(kMany));
    step = 1;
    Await(step, 2);
    const AllocationCounter counter;
    Field* const node = Take();
    EXPECT_EQ(counter.Count(), 1U) << "the pool is empty after UnInit, for every thread";
    CZRGSQuote::ReleaseField(node);
    step = 3;
  });
  Await(step, 1);
  CZRGSQuote::UnInit();
  CZRGSQuote::Init();
  step = 2;
  Await(step, 3);
  thread.join();
}

TEST_F(QuotePoolStacks, AThreadMayEndAfterUnInit) {
  std::atomic<int> step{0};
  std::thread thread([&] {
    Give(Take(kMany));
    step = 1;
    Await(step, 2);
  });
  Await(step, 1);
  CZRGSQuote::UnInit();
  EXPECT_EQ(Take(), nullptr);
  step = 2;
  thread.join();
  CZRGSQuote::Init();
  const AllocationCounter counter;
  CZRGSQuote::ReleaseField(Take());
  EXPECT_GE(counter.Count(), 1U) << "the thread had nothing left to give";
}

TEST_F(QuotePoolStacks, ThreadsMayEndWhileThePoolIsInUseAndWhileItCloses) {
  for (int round = 0; round < 20; ++round) {
    std::atomic<int> done{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
      threads.emplace_back([&] {
        Give(Take(200));
        ++done;
      });
    }
    Give(Take(200));
    Await(done, 4);
    CZRGSQuote::UnInit();
    for (std::thread& thread : threads) {
      thread.join();
    }
    CZRGSQuote::Init();
  }
}

TEST_F(QuotePoolStacks, AThreadThatEndsWithoutMemoryToLeaveItsNodesFreesThem) {
  if (!pxd::detail::kThreadsKeepNodes) {
    GTEST_SKIP() << "threads keep no nodes here";
  }
  const std::size_t before = BlocksInUse();
  std::optional<ScarceMemory> scarce;
  OnAThread([&] {
    Give(Take(5));
    scarce.emplace(0);
  });
  scarce.reset();
  EXPECT_EQ(BlocksInUse(), before);
}

TEST_F(QuotePoolStacks, AThreadsOwnQuotesMayOutliveItsNodes) {
  std::vector<Field*> nodes;
  OnAThread([&] {
    // Made before the thread first meets the pool, so destroyed after it has left it.
    static thread_local CZRGSQuote quote;
    for (unsigned short id = 1; id <= 5; ++id) {
      quote.AddFieldByte(3, id, 1);
      nodes.push_back(quote.GetField(static_cast<unsigned short>(id - 1)));
    }
  });
  const AllocationCounter counter;
  for (std::size_t i = nodes.size(); i > 0; --i) {
    EXPECT_EQ(Take(), nodes[i - 1]);
  }
  EXPECT_EQ(counter.Count(), 0U);
  Give(nodes);
}

// One thread builds, another drops: the nodes come round, and memory stops growing.
TEST_F(QuotePoolStacks, AThreadThatOnlyBuildsGetsTheNodesOfOneThatOnlyDrops) {
  constexpr std::size_t kBatch = 50;
  std::vector<CZRGSQuote> quotes(kBatch);
  std::atomic<int> step{0};
  constexpr int kRounds = 40;
  std::thread dropper([&] {
    for (int round = 0; round < kRounds; ++round) {
      Await(step, 2 * round + 1);
      for (CZRGSQuote& quote : quotes) {
        quote.Empty(1);
      }
      step = 2 * round + 2;
    }
  });
  std::size_t late = 0;
  for (int round = 0; round < kRounds; ++round) {
    const AllocationCounter counter;
    for (CZRGSQuote& quote : quotes) {
      for (unsigned short id = 1; id <= 10; ++id) {
        quote.AddFieldDouble(3, id, round);
      }
    }
    late += round >= kRounds / 2 ? counter.Count() : 0;
    step = 2 * round + 1;
    Await(step, 2 * round + 2);
  }
  dropper.join();
  EXPECT_EQ(late, 0U);
}

// The typed forms take a short way where all is at hand, and must do what the generic form does.
TEST_F(QuotePoolStacks, TypedFormsAddWhatTheGenericFormAdds) {
  struct Form {
    unsigned char type;
    std::size_t size;
    int (*add)(CZRGSQuote& quote, unsigned short id);
  };
  constexpr Form kForms[] = {
      {0, 4, [](CZRGSQuote& q, unsigned short id) { return q.AddFieldTime(0x13, id, 0x01020304); }},
      {1, 2, [](CZRGSQuote& q, unsigned short id) { return q.AddFieldDate(0x13, id, 0x0304); }},
      {6, 4, [](CZRGSQuote& q, unsigned short id) { return q.AddFieldLong(0x13, id, 0x01020304); }},
      {7, 4,
       [](CZRGSQuote& q, unsigned short id) { return q.AddFieldULong(0x13, id, 0x01020304); }},
      {8, 2, [](CZRGSQuote& q, unsigned short id) { return q.AddFieldShort(0x13, id, 0x0304); }},
      {9, 2, [](CZRGSQuote& q, unsigned short id) { return q.AddFieldUShort(0x13, id, 0x0304); }},
      {10, 1, [](CZRGSQuote& q, unsigned short id) { return q.AddFieldChar(0x13, id, 4); }},
      {11, 1, [](CZRGSQuote& q, unsigned short id) { return q.AddFieldByte(0x13, id, 4); }},
  };
  unsigned char value[] = {4, 3, 2, 1};
  for (const Form& form : kForms) {
    // No node at hand; a node without a buffer, with one that is too small, one that fits and one
    // that is larger.
    for (const int room : {-1, 0, 1, 2, 4, 8}) {
      CZRGSQuote::UnInit();
      CZRGSQuote::Init();
      const auto prepare = [&] {
        if (room >= 0) {
          CZRGSQuote::ReleaseField(
              CZRGSQuote::CreateField(3, 2, 1, nullptr, static_cast<unsigned short>(room)));
        }
      };
      CZRGSQuote typed;
      CZRGSQuote generic;
      prepare();
      ASSERT_EQ(form.add(typed, 7), 1);
      prepare();
      ASSERT_EQ(generic.AddField(0x13, form.type, 7, value, static_cast<unsigned long>(form.size)),
                1);
      const Field a = *typed.GetField(0);
      const Field b = *generic.GetField(0);
      EXPECT_EQ(+a.wFieldID, +b.wFieldID);
      EXPECT_EQ(+a.wIndirectID, +b.wIndirectID);
      EXPECT_EQ(+a.wSize, +b.wSize);
      EXPECT_EQ(+a.wCapacity, +b.wCapacity) << int{form.type} << ' ' << room;
      EXPECT_EQ(+a.dwRecords, +b.dwRecords);
      EXPECT_EQ(+a.bTypeStatus, +b.bTypeStatus);
      EXPECT_EQ(+a.bIndirectFlag, +b.bIndirectFlag);
      EXPECT_TRUE(std::equal(a.pData, a.pData + a.wSize, b.pData)) << int{form.type};
    }
  }
}

// The list of a quote keeps its order and its ids where it leaves the room inside the object.
TEST_F(QuotePoolStacks, ListsOfAllLengthsKeepOneEntryAnId) {
  for (unsigned short length = 1; length <= 130; ++length) {
    CZRGSQuote quote;
    for (int pass = 1; pass <= 2; ++pass) {
      for (unsigned short id = 1; id <= length; ++id) {
        quote.AddFieldUShort(3, id, static_cast<unsigned short>(pass * 1000 + id));
      }
      ASSERT_EQ(quote.GetNumField(), length);
    }
    for (unsigned short id = 1; id <= length; ++id) {
      const Field* const field = quote.GetField(static_cast<unsigned short>(id - 1));
      ASSERT_EQ(field->wFieldID, id);
      ASSERT_EQ(CZRGSQuote::GetDoubleValue(field), 2000.0 + id);
    }
  }
}

}  // namespace
