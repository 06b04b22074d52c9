// Quotes on several threads over the one pool: each quote has one thread, the nodes go round.
#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <pxdutil/foundation/spin_mutex.h>
#include <pxdutil/quotes/quote.h>

namespace {

constexpr int kThreads = 4;

class QuoteThreads : public testing::Test {
 protected:
  QuoteThreads() { CZRGSQuote::Init(); }
  ~QuoteThreads() override { CZRGSQuote::UnInit(); }

  // Runs `work` on all threads at once; each gets its number.
  template <class Work>
  static void OnAllThreads(Work work) {
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
      threads.emplace_back([&work, t] { work(t); });
    }
    for (std::thread& thread : threads) {
      thread.join();
    }
  }
};

// Whether every field of the quote still holds what thread `t` wrote in round `round`.
bool HoldsItsOwn(const CZRGSQuote& quote, int t, int round) {
  for (unsigned short id = 1; id <= 10; ++id) {
    double value = 0.0;
    if (quote.GetFieldData(id, value) != 1 || value != t * 1000000.0 + round * 10.0 + id) {
      return false;
    }
  }
  return true;
}

void Fill(CZRGSQuote& quote, int t, int round) {
  for (unsigned short id = 1; id <= 10; ++id) {
    const double value = t * 1000000.0 + round * 10.0 + id;
    if (id % 2 == 0) {
      quote.AddFieldDouble(3, id, value);
    } else {
      quote.AddFieldString(3, id, std::to_string(value).c_str());
    }
  }
}

TEST_F(QuoteThreads, NoThreadEverSeesAnothersValues) {
  std::atomic<int> wrong{0};
  OnAllThreads([&](int t) {
    for (int round = 0; round < 500; ++round) {
      CZRGSQuote quote;
      Fill(quote, t, round);
      Fill(quote, t, round);  // each id replaces its node
      const CZRGSQuote copy(quote);
      CZRGSQuote taken;
      taken.TransferQuote(quote);
      if (!HoldsItsOwn(copy, t, round) || !HoldsItsOwn(taken, t, round) ||
          quote.GetNumField() != 0) {
        ++wrong;
      }
      taken = copy;
      taken.Empty(1);
    }
  });
  EXPECT_EQ(wrong.load(), 0);
}

TEST_F(QuoteThreads, AQuoteMayBeHandedToAnotherThread) {
  pxd::SpinMutex mutex;
  std::vector<CZRGSQuote*> waiting;
  std::atomic<int> wrong{0};
  OnAllThreads([&](int t) {
    for (int round = 0; round < 300; ++round) {
      auto* const quote = new CZRGSQuote;
      quote->m_dwTag = static_cast<std::uint32_t>(t * 1000 + round);
      Fill(*quote, t, round);
      CZRGSQuote* other = nullptr;
      mutex.lock();
      waiting.push_back(quote);
      if (waiting.size() > kThreads) {
        other = waiting.front();
        waiting.erase(waiting.begin());
      }
      mutex.unlock();
      if (other != nullptr) {
        const auto from = static_cast<int>(other->m_dwTag);
        if (!HoldsItsOwn(*other, from / 1000, from % 1000)) {
          ++wrong;
        }
        delete other;
      }
    }
  });
  for (const CZRGSQuote* quote : waiting) {
    delete quote;
  }
  EXPECT_EQ(wrong.load(), 0);
}

}  // namespace
