// Makes quotes and gives them back on many threads over the one pool, for a time or by number.
//
//   soak_quotes seconds 60        for the thread sanitizer
//   soak_quotes quotes 10000000   prints how much memory the process has as it goes, and fails
//   where
//                                 that grows
//
// Quotes are built, copied, moved into each other, and handed to other threads, so that a node goes
// back to the pool on another thread than the one that took it.
#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <mutex>
#include <random>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <pxdutil/foundation/fault.h>
#include <pxdutil/quotes/quote.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr unsigned kThreads = 8;
// Beyond what the first tenth needed; allocators keep a little more now and then.
constexpr long kGrowthAllowed = 2048;  // KiB

void Require(bool holds, const char* what) {
  if (!holds) {
    pxd::Fault(what);
  }
}

// Where threads leave quotes for each other.
class Shelf {
 public:
  // Puts a quote where one was, and takes that.
  std::unique_ptr<CZRGSQuote> Swap(std::size_t place, std::unique_ptr<CZRGSQuote> quote) {
    const std::lock_guard lock(m_mutex);
    std::swap(m_quotes[place % m_quotes.size()], quote);
    return quote;
  }

 private:
  std::mutex m_mutex;
  std::array<std::unique_ptr<CZRGSQuote>, 64> m_quotes;
};

// Field `id` says its own id, so that a node which two quotes share is found.
void Fill(CZRGSQuote& quote, unsigned first, unsigned count, bool asText) {
  for (unsigned i = 0; i < count; ++i) {
    const auto id = static_cast<unsigned short>(first + i);
    const int added = asText ? quote.AddFieldString(3, id, std::to_string(id).c_str())
                             : quote.AddFieldLong(3, id, id);
    Require(added == 1, "no node");
  }
}

void Check(const CZRGSQuote& quote) {
  for (unsigned short i = 0; i < quote.GetNumField(); ++i) {
    const CZRGSQuote::ZRGS_QUOTE_FIELD* const field = quote.GetField(i);
    Require(CZRGSQuote::GetDoubleValue(field) == field->wFieldID, "a node that two quotes share");
  }
}

void MakeOne(Shelf& shelf, std::mt19937& random) {
  auto quote = std::make_unique<CZRGSQuote>();
  const auto upTo = [&random](unsigned most) { return 1 + static_cast<unsigned>(random()) % most; };
  Fill(*quote, upTo(40), upTo(20), random() % 4 == 0);
  if (random() % 8 == 0) {
    CZRGSQuote copy(*quote);
    Fill(copy, 30, 10, false);
    quote->TransferQuote(copy);
  }
  Check(*quote);
  if (const auto other = shelf.Swap(random(), std::move(quote)); other != nullptr) {
    Check(*other);
  }
}

// The memory that the process has, in KiB; 0 where the system doesn't say.
long Resident() {
  std::ifstream file("/proc/self/status");
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with("VmRSS:")) {
      return std::strtol(line.c_str() + std::strlen("VmRSS:"), nullptr, 10);
    }
  }
  return 0;
}

// Lets the threads make quotes until `goesOn` says no, which gets the number begun.
template <class GoesOn>
void Run(GoesOn goesOn) {
  Shelf shelf;
  std::atomic<std::uint64_t> begun{0};
  std::vector<std::thread> threads;
  for (unsigned t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      std::mt19937 random(t);
      while (goesOn(begun.fetch_add(1))) {
        MakeOne(shelf, random);
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
}

int RunForSeconds(std::uint64_t seconds) {
  const auto end = Clock::now() + std::chrono::seconds(seconds);
  std::atomic<std::uint64_t> last{0};
  Run([&](std::uint64_t begun) {
    last.store(begun, std::memory_order_relaxed);
    return Clock::now() < end;
  });
  std::printf("%llu quotes on %u threads in %llu s\n", static_cast<unsigned long long>(last.load()),
              kThreads, static_cast<unsigned long long>(seconds));
  return 0;
}

int RunForQuotes(std::uint64_t quotes) {
  const auto started = Clock::now();
  const std::uint64_t tenth = quotes / 10;
  std::atomic<long> early{0};
  Run([&](std::uint64_t begun) {
    if (tenth > 0 && begun % tenth == 0 && begun > 0 && begun <= quotes) {
      const long resident = Resident();
      if (begun == tenth) {
        early.store(resident);
      }
      std::printf("%10llu quotes %8ld KiB\n", static_cast<unsigned long long>(begun), resident);
      std::fflush(stdout);
    }
    return begun < quotes;
  });
  const long growth = Resident() - early.load();
  const std::chrono::duration<double> took = Clock::now() - started;
  std::printf("%llu quotes on %u threads in %.1f s; grown by %ld KiB since the first tenth\n",
              static_cast<unsigned long long>(quotes), kThreads, took.count(), growth);
  return growth <= kGrowthAllowed ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string how = argc == 3 ? argv[1] : "";
  const std::uint64_t much = argc == 3 ? std::strtoull(argv[2], nullptr, 10) : 0;
  if (much == 0 || (how != "seconds" && how != "quotes")) {
    std::fprintf(stderr, "soak_quotes seconds N | soak_quotes quotes N\n");
    return 2;
  }
  CZRGSQuote::Init();
  const int result = how == "seconds" ? RunForSeconds(much) : RunForQuotes(much);
  CZRGSQuote::UnInit();
  return result;
}
