#include <pxdutil/foundation/spin_mutex.h>

#include <chrono>
#include <mutex>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

TEST(SpinMutex, LosesNoCountBetweenThreads) {
  constexpr int kThreads = 4;
  constexpr int kRounds = 50000;
  pxd::SpinMutex mutex;
  long count = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&] {
      for (int i = 0; i < kRounds; ++i) {
        const std::lock_guard lock(mutex);
        ++count;
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(count, static_cast<long>(kThreads) * kRounds);
}

TEST(SpinMutex, WakesEveryThreadThatWentToSleep) {
  constexpr int kSleepers = 3;
  pxd::SpinMutex mutex;
  int woken = 0;
  std::vector<std::thread> threads;
  {
    const std::lock_guard lock(mutex);
    for (int t = 0; t < kSleepers; ++t) {
      threads.emplace_back([&] {
        const std::lock_guard inner(mutex);
        ++woken;
      });
    }
    // Far longer than a thread spins.
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(woken, 0);
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(woken, kSleepers);
}

TEST(SpinMutex, MayBeTakenAgainOnceItIsFree) {
  pxd::SpinMutex mutex;
  for (int i = 0; i < 3; ++i) {
    mutex.lock();
    mutex.unlock();
  }
  const std::lock_guard lock(mutex);
}

}  // namespace
