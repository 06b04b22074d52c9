// Runs a piece of code again and again, and each time the heap says no at another place.
//
//   RefuseEachAllocation([](Attempt& attempt) {
//     CString text;
//     const bool done = attempt.Run([&] { text = MakeIt(); });
//     EXPECT_EQ(text, done ? "made" : "");
//   });
//
// The scenario prepares what it needs with all the memory there is, lets the code under test run
// inside Run, and looks at what that left behind. What it made must be gone when it returns: the
// number of blocks in use is compared.
#ifndef PXDUTIL_TESTS_FAULTS_REFUSALS_H
#define PXDUTIL_TESTS_FAULTS_REFUSALS_H

#include <cstddef>
#include <limits>
#include <new>

#include <gtest/gtest.h>

#include "tests/support/allocation_counter.h"

namespace faults_test {

// One run of a scenario.
class Attempt {
 public:
  Attempt(std::size_t granted, std::size_t refusals) : m_granted(granted), m_refusals(refusals) {}

  // Lets `action` run with what this attempt leaves it. True where it came to its end, false where
  // it threw std::bad_alloc; everything else passes through. Several runs of one attempt count on.
  template <class Action>
  bool Run(Action&& action) {
    const std::size_t left = m_asked < m_granted ? m_granted - m_asked : 0;
    const pxd::test::ScarceMemory scarce(left, m_refusals - m_refused);
    bool done = true;
    try {
      action();
    } catch (const std::bad_alloc&) {
      done = false;
    }
    m_asked += scarce.Asked();
    m_refused += scarce.Refused();
    return done;
  }

  [[nodiscard]] std::size_t Refused() const { return m_refused; }

 private:
  std::size_t m_granted;
  std::size_t m_refusals;
  std::size_t m_asked = 0;
  std::size_t m_refused = 0;
};

// Runs `scenario` with its first allocation refused, then its second, and so on until none is:
// once so that only this one fails, as in a program that frees memory and goes on, and once so that
// all behind it fail too.
template <class Scenario>
void RefuseEachAllocation(Scenario&& scenario) {
  constexpr std::size_t kAll = std::numeric_limits<std::size_t>::max();
  {
    Attempt all(kAll, kAll);  // whatever is made once a process is made here
    scenario(all);
  }
  for (const std::size_t refusals : {std::size_t{1}, kAll}) {
    for (std::size_t granted = 0;; ++granted) {
      const std::size_t before = pxd::test::BlocksInUse();
      Attempt attempt(granted, refusals);
      scenario(attempt);
      const std::size_t behind = pxd::test::BlocksInUse();
      ASSERT_FALSE(testing::Test::HasFailure()) << "at refusal " << granted;
      ASSERT_EQ(behind, before) << "blocks in use behind refusal " << granted;
      if (attempt.Refused() == 0) {
        ASSERT_GT(granted, 0U) << "the scenario asked for no memory";
        break;
      }
    }
  }
}

}  // namespace faults_test

#endif
