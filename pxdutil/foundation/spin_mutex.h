// A lock that spins for a while before it blocks, for sections of a few instructions.
//
// Taking it free costs one atomic exchange. It meets the standard's BasicLockable, so
// std::lock_guard serves. It is constant-initialised and may be a static object.
#ifndef PXDUTIL_FOUNDATION_SPIN_MUTEX_H
#define PXDUTIL_FOUNDATION_SPIN_MUTEX_H

#include <atomic>

#include <pxdutil/foundation/export.h>

namespace pxd {

// Not recursive: a thread that takes it twice waits for itself.
class SpinMutex {
 public:
  // How often a taken lock is looked at before the thread blocks.
  static constexpr int kSpinCount = 1024;

  constexpr SpinMutex() = default;
  SpinMutex(const SpinMutex&) = delete;
  SpinMutex& operator=(const SpinMutex&) = delete;

  // Takes the lock, waiting as long as another thread holds it.
  void lock() noexcept {
    if (!TryTake()) {
      LockContended();
    }
  }
  // Gives back the lock, which this thread must hold.
  void unlock() noexcept {
    if (m_state.exchange(kFree, std::memory_order_release) == kAwaited) {
      WakeSleepers();
    }
  }

 private:
  enum State : int { kFree, kTaken, kAwaited };

  bool TryTake() noexcept {
    int expected = kFree;
    return m_state.compare_exchange_strong(expected, kTaken, std::memory_order_acquire,
                                           std::memory_order_relaxed);
  }

  // Tells the processor that this is a waiting loop, so that the other thread gets the cache line
  // and the pipeline.
  static void Pause() noexcept {
#if defined(__GNUC__) && (defined(__i386__) || defined(__x86_64__))
    __builtin_ia32_pause();
#endif
  }

  void LockContended() noexcept {
    for (int spin = 0; spin < kSpinCount; ++spin) {
      Pause();
      if (m_state.load(std::memory_order_relaxed) == kFree && TryTake()) {
        return;
      }
    }
    // From here on the lock is taken as awaited: whoever gives it back wakes a sleeper.
    while (m_state.exchange(kAwaited, std::memory_order_acquire) != kFree) {
      SleepWhileAwaited();
    }
  }

  // Both may come back, or wake threads, without a cause: who wakes looks again.
  PXDUTIL_API void SleepWhileAwaited() noexcept;
  PXDUTIL_API void WakeSleepers() noexcept;

  std::atomic<int> m_state{kFree};
};

}  // namespace pxd

#endif
