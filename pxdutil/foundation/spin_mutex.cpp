#include <pxdutil/foundation/spin_mutex.h>

// GNU's library without futexes, as on Windows, looks at the value and goes to sleep in two steps:
// a wake-up between them is lost, and with it the thread.
#if defined(__GLIBCXX__) && !defined(_GLIBCXX_HAVE_LINUX_FUTEX)
#define PXDUTIL_ATOMICS_LOSE_WAKE_UPS 1
#endif

#if defined(PXDUTIL_ATOMICS_LOSE_WAKE_UPS)

#include <condition_variable>
#include <mutex>
#include <new>

namespace {

// Where the sleepers of all locks sleep. Few get here, so they needn't be told apart.
struct Gate {
  std::mutex mutex;
  std::condition_variable changed;
};

// Never destroyed: threads may still wait while the process ends.
Gate& TheGate() {
  alignas(Gate) static unsigned char storage[sizeof(Gate)];
  static Gate* const gate = new (storage) Gate;
  return *gate;
}

}  // namespace

void pxd::SpinMutex::SleepWhileAwaited() noexcept {
  Gate& gate = TheGate();
  std::unique_lock lock(gate.mutex);
  gate.changed.wait(lock, [this] { return m_state.load() != kAwaited; });
}

void pxd::SpinMutex::WakeSleepers() noexcept {
  Gate& gate = TheGate();
  // Whoever has seen the lock awaited sleeps by the time this gets the mutex.
  { const std::lock_guard lock(gate.mutex); }
  gate.changed.notify_all();
}

#else

void pxd::SpinMutex::SleepWhileAwaited() noexcept {
  m_state.wait(kAwaited, std::memory_order_relaxed);
}

void pxd::SpinMutex::WakeSleepers() noexcept {
  m_state.notify_one();
}

#endif
