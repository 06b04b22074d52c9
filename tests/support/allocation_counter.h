// What a piece of code asks of the heap, and how it behaves when the heap says no.
//
// A program that links pxdutil_test_allocations has its operators new and delete replaced. They
// serve from malloc, so the sanitizers still see every block. The counts are of the whole process:
// nothing else should run while one is taken.
#ifndef PXDUTIL_TESTS_SUPPORT_ALLOCATION_COUNTER_H
#define PXDUTIL_TESTS_SUPPORT_ALLOCATION_COUNTER_H

#include <cstddef>
#include <limits>

namespace pxd::test {

// Counts from its construction on.
class AllocationCounter {
 public:
  AllocationCounter();
  // How many blocks were asked for, and how many bytes they had together.
  [[nodiscard]] std::size_t Count() const;
  [[nodiscard]] std::size_t Bytes() const;

 private:
  std::size_t m_countBefore;
  std::size_t m_bytesBefore;
};

// As long as it lives the heap grants `granted` more blocks, refuses the `refusals` behind them,
// and grants whatever comes then. Only one at a time.
class ScarceMemory {
 public:
  explicit ScarceMemory(std::size_t granted,
                        std::size_t refusals = std::numeric_limits<std::size_t>::max());
  ScarceMemory(const ScarceMemory&) = delete;
  ScarceMemory& operator=(const ScarceMemory&) = delete;
  ~ScarceMemory();

  // How many blocks were asked for since it was made, and how many of them it refused.
  [[nodiscard]] std::size_t Asked() const;
  [[nodiscard]] std::size_t Refused() const;
};

// How many blocks of the process are in use.
[[nodiscard]] std::size_t BlocksInUse();

}  // namespace pxd::test

#endif
