// The pool of field nodes: one stack for the process, and a short one for each thread in front of
// it, so that a thread that builds and drops quotes meets no other.
//
// The two make one stack: what a thread gave back last it takes first. A thread that runs out takes
// nodes from the shared stack, one that has too many gives its oldest to it, many at a time. When a
// thread ends, all of its nodes go to the shared stack; UnInit empties every stack.
#ifndef PXDUTIL_QUOTES_DETAIL_NODE_POOL_H
#define PXDUTIL_QUOTES_DETAIL_NODE_POOL_H

#include <array>
#include <cstddef>
#include <cstdint>

#include <pxdutil/quotes/detail/node.h>
#include <pxdutil/quotes/quote.h>

namespace pxd::detail {

// The free nodes of one thread. Nobody else looks at them but UnInit, beside which no thread may
// use the pool. It has no destructor: quotes that are static or thread-local themselves come back
// to it when the thread's other objects are gone.
struct NodeStack {
  static constexpr std::uint32_t kMostNodes = 128;

  // How many nodes may stand here. 0 before the thread first needs the shared stack, and again when
  // it has ended: then every node goes to the shared stack at once.
  std::uint32_t limit = 0;
  std::uint32_t count = 0;
  std::array<QuoteField*, kMostNodes> nodes = {};
  // The list of all threads' stacks; guarded by the pool's lock.
  NodeStack* next = nullptr;
  NodeStack* previous = nullptr;
  bool ended = false;
};

#if defined(__MINGW32__)
// This compiler's thread-local objects may be destroyed after the memory that they stand in was
// freed, so no thread keeps nodes here: the limit stays 0.
inline constexpr bool kThreadsKeepNodes = false;
extern constinit NodeStack t_nodes;
#else
inline constexpr bool kThreadsKeepNodes = true;
extern constinit thread_local NodeStack t_nodes;
#endif

// All of it wants an open pool.
class NodePool {
 public:
  // A clean node with room for `size` bytes, of which it says nothing yet. Null where no memory is
  // left.
  static QuoteField* Take(std::uint16_t size) {
    NodeStack& own = t_nodes;
    QuoteField* const node = own.count > 0 ? own.nodes[--own.count] : TakeShared(own);
    if (node == nullptr || size == 0 || (node->pData != nullptr && node->wCapacity >= size)) {
      return node;
    }
    return GrowBuffer(node, size);
  }

  // The same where the thread has such a node at hand; else null, and nothing has happened. The
  // pool may be closed: then no thread has any.
  static QuoteField* TakeAtHand(std::uint16_t size) {
    NodeStack& own = t_nodes;
    if (own.count == 0) {
      return nullptr;
    }
    QuoteField* const node = own.nodes[own.count - 1];
    if (node->pData == nullptr || node->wCapacity < size) {
      return nullptr;
    }
    --own.count;
    return node;
  }

  // Cleans the nodes and gives them back, in order.
  static void Give(QuoteField* const* begin, QuoteField* const* end);

  // Frees every node of every stack.
  static void FreeAll();

 private:
  friend class ThreadEnd;

  static QuoteField* TakeShared(NodeStack& own);
  static QuoteField* GrowBuffer(QuoteField* node, std::uint16_t size);
  static void GiveMore(NodeStack& own, QuoteField* const* begin, QuoteField* const* end);
  static bool Share(QuoteField* const* nodes, std::uint32_t count);
  static void Open(NodeStack& own);
  static void Close(NodeStack& own);
  static bool ShareOldest(NodeStack& own, std::uint32_t count);
};

}  // namespace pxd::detail

#endif
