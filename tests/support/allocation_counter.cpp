#include "tests/support/allocation_counter.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr std::size_t kUnlimited = std::numeric_limits<std::size_t>::max();

std::atomic<std::size_t> g_count{0};
std::atomic<std::size_t> g_bytes{0};
std::atomic<std::size_t> g_inUse{0};

// What ScarceMemory limits: the requests since it was made, those that are granted first, and how
// many behind them are refused.
std::atomic<std::size_t> g_asked{0};
std::atomic<std::size_t> g_granted{kUnlimited};
std::atomic<std::size_t> g_refusals{0};

std::size_t RefusedAmong(std::size_t asked) noexcept {
  const std::size_t granted = g_granted.load();
  return asked > granted ? std::min(asked - granted, g_refusals.load()) : 0;
}

void* Allocate(std::size_t size) noexcept {
  const std::size_t before = g_asked.fetch_add(1);
  if (RefusedAmong(before + 1) > RefusedAmong(before)) {
    return nullptr;
  }
  g_count.fetch_add(1);
  g_bytes.fetch_add(size);
  void* const block = std::malloc(size != 0 ? size : 1);
  if (block != nullptr) {
    g_inUse.fetch_add(1);
  }
  return block;
}

void Free(void* block) noexcept {
  if (block != nullptr) {
    g_inUse.fetch_sub(1);
    std::free(block);
  }
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
  Free(block);
}
void operator delete[](void* block) noexcept {
  Free(block);
}
void operator delete(void* block, std::size_t) noexcept {
  Free(block);
}
void operator delete[](void* block, std::size_t) noexcept {
  Free(block);
}
void operator delete(void* block, const std::nothrow_t&) noexcept {
  Free(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept {
  Free(block);
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

ScarceMemory::ScarceMemory(std::size_t granted, std::size_t refusals) {
  g_asked.store(0);
  g_refusals.store(refusals);
  g_granted.store(granted);
}

ScarceMemory::~ScarceMemory() {
  g_granted.store(kUnlimited);
}

std::size_t ScarceMemory::Asked() const {
  return g_asked.load();
}

std::size_t ScarceMemory::Refused() const {
  return RefusedAmong(g_asked.load());
}

std::size_t BlocksInUse() {
  return g_inUse.load();
}

}  // namespace pxd::test
