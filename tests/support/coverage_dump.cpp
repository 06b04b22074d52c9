// A process that ends through a fault leaves no coverage figures behind by itself, and every fault
// has its death test. Part of the test programs of coverage builds alone.
#include <csignal>
#include <cstdlib>

extern "C" void __gcov_dump();  // NOLINT(bugprone-reserved-identifier): the compiler's own name

namespace {

void DumpAndEnd(int) {
  __gcov_dump();
  std::signal(SIGABRT, SIG_DFL);
  std::abort();
}

[[maybe_unused]] const auto g_before = std::signal(SIGABRT, &DumpAndEnd);

}  // namespace
