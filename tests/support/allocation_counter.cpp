#include "tests/support/allocation_counter.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr std::int64_t kUnlimited = std::numeric_limits<std::int64_t>::max() / 2;

std::atomic<std::size_t> g_count{0};
std::atomic<std::size_t> g_bytes{0};
std::atomic<std::int64_t> g_granted{kUnlimited};

void* Allocate(std::size_t size) noexcept {
  if (g_granted.fetch_sub(1) <= 0) {
    return nullptr;
  }
  g_count.fetch_add(1);
  g_bytes.fetch_add(size);
  return std::malloc(size != 0 ? size : 1);
}

void* AllocateOrThrow(std::size_t size) {
  void* const block = Allocate(size);
  if (block == nullptr) {
    throw std::bad_alloc();
  }
  return block;
}

}  // namespace

void* operator new(std::size_t size) {
  return AllocateOrThrow(size);
}
void* operator new[](std::size_t size) {
  return AllocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return Allocate(size);
}
void operator delete(void* block) noexcept {
  std::free(block);
}
void operator delete[](void* block) noexcept {
  std::free(block);
}
void operator delete(void* block, std::size_t) noexcept {
  std::free(block);
}
void operator delete[](void* block, std::size_t) noexcept {
  std::free(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept {
  std::free(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept {
  std::free(block);
}

namespace pxd::test {

AllocationCounter::AllocationCounter()
    : m_countBefore(g_count.load()), m_bytesBefore(g_bytes.load()) {}

std::size_t AllocationCounter::Count() const {
  return g_count.load() - m_countBefore;
}

std::size_t AllocationCounter::Bytes() const {
  return g_bytes.load() - m_bytesBefore;
}

ScarceMemory::ScarceMemory(std::size_t granted) {
  g_granted.store(static_cast<std::int64_t>(granted));
}

ScarceMemory::~ScarceMemory() {
  g_granted.store(kUnlimited);
}

}  // namespace pxd::test
