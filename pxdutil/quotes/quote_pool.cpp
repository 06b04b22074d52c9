// The pool of field nodes, and what reads a node without its quote.
#include <algorithm>
#include <cstdlib>
#include <mutex>
#include <new>
#include <string>
#include <string_view>

#include <pxdutil/quotes/detail/node.h>
#include <pxdutil/quotes/detail/node_pool.h>
#include <pxdutil/quotes/quote.h>

pxd::SpinMutex CZRGSQuote::m_Crit;
bool CZRGSQuote::m_bInitialized = false;
std::vector<CZRGSQuote::ZRGS_QUOTE_FIELD*> CZRGSQuote::m_vFieldPool;

namespace {

using pxd::detail::NodePool;
using pxd::detail::StatusOf;
using pxd::detail::TypeOf;
using pxd::detail::ValueOf;

using Field = pxd::detail::QuoteField;

void FreeNode(Field* node) {
  delete[] node->pData;
  delete node;
}

}  // namespace

namespace pxd::detail {

#if defined(__MINGW32__)
constinit NodeStack t_nodes;
#else
constinit thread_local NodeStack t_nodes;
#endif

double NumberInText(const QuoteField& field) {
  const std::string_view text = TextOf(field);
  if (text.empty()) {
    return 0.0;
  }
  const bool hasNul = text.size() < field.wSize;
  return hasNul ? std::atof(text.data()) : std::atof(std::string(text).c_str());
}

namespace {

// Guarded by the pool's lock.
NodeStack* g_stacks = nullptr;

// How many nodes go between a thread's stack and the shared one at a time: half a stack, so that a
// thread has as many more to take as to give before it needs the lock again.
constexpr std::uint32_t kBatch = NodeStack::kMostNodes / 2;

// Clears all but the buffer.
void Clean(QuoteField& node) {
  node.wFieldID = 0;
  node.wIndirectID = 0;
  node.wSize = 0;
  node.dwRecords = 0;
  node.bTypeStatus = 0;
  node.bIndirectFlag = 0;
}

}  // namespace

// A thread-local object whose end is the end of its thread's stack.
class ThreadEnd {
 public:
  explicit ThreadEnd(NodeStack& own) : m_own(own) {}
  ThreadEnd(const ThreadEnd&) = delete;
  ThreadEnd& operator=(const ThreadEnd&) = delete;
  ~ThreadEnd() { NodePool::Close(m_own); }

 private:
  NodeStack& m_own;
};

void NodePool::Open(NodeStack& own) {
  if (!kThreadsKeepNodes || own.ended || own.limit > 0) {
    return;
  }
  static thread_local const ThreadEnd end(own);
  const std::lock_guard lock(CZRGSQuote::m_Crit);
  own.next = g_stacks;
  if (g_stacks != nullptr) {
    g_stacks->previous = &own;
  }
  g_stacks = &own;
  own.limit = NodeStack::kMostNodes;
}

// UnInit may run at the same time: a thread that ends doesn't use quotes.
void NodePool::Close(NodeStack& own) {
  const std::lock_guard lock(CZRGSQuote::m_Crit);
  own.ended = true;
  own.limit = 0;
  if (!ShareOldest(own, own.count)) {
    while (own.count > 0) {
      FreeNode(own.nodes[--own.count]);
    }
  }
  (own.previous != nullptr ? own.previous->next : g_stacks) = own.next;
  if (own.next != nullptr) {
    own.next->previous = own.previous;
  }
}

QuoteField* NodePool::TakeShared(NodeStack& own) {
  Open(own);
  {
    const std::lock_guard lock(CZRGSQuote::m_Crit);
    std::vector<QuoteField*>& shared = CZRGSQuote::m_vFieldPool;
    if (!shared.empty()) {
      QuoteField* const node = shared.back();
      shared.pop_back();
      const std::size_t more = std::min<std::size_t>(shared.size(), std::min(own.limit, kBatch));
      const std::size_t rest = shared.size() - more;
      std::copy_n(shared.data() + rest, more, own.nodes.data());
      shared.resize(rest);
      own.count = static_cast<std::uint32_t>(more);
      return node;
    }
  }
  return new (std::nothrow) QuoteField{};
}

QuoteField* NodePool::GrowBuffer(QuoteField* node, std::uint16_t size) {
  delete[] node->pData;
  node->pData = new (std::nothrow) unsigned char[size];
  node->wCapacity = node->pData != nullptr ? size : std::uint16_t{0};
  if (node->pData == nullptr) {
    Give(&node, &node + 1);
    return nullptr;
  }
  return node;
}

void NodePool::Give(QuoteField* const* begin, QuoteField* const* end) {
  NodeStack& own = t_nodes;
  QuoteField** top = own.nodes.data() + own.count;
  const std::size_t fitting =
      std::min<std::size_t>(own.limit - own.count, static_cast<std::size_t>(end - begin));
  own.count += static_cast<std::uint32_t>(fitting);
  for (QuoteField* const* const next = begin + fitting; begin != next; ++begin) {
    Clean(**begin);
    *top++ = *begin;
  }
  if (begin != end) {
    GiveMore(own, begin, end);
  }
}

void NodePool::GiveMore(NodeStack& own, QuoteField* const* begin, QuoteField* const* end) {
  Open(own);
  const std::lock_guard lock(CZRGSQuote::m_Crit);
  for (; begin != end; ++begin) {
    Clean(**begin);
    if (own.count < own.limit || (own.limit > 0 && ShareOldest(own, kBatch))) {
      own.nodes[own.count++] = *begin;
    } else if (own.limit > 0 || !Share(begin, 1)) {
      FreeNode(*begin);  // nodes come back from destructors too, which must not throw
    }
  }
}

// Puts the nodes on the shared stack; false, and nothing done, where that can't grow. The caller
// holds the lock.
bool NodePool::Share(QuoteField* const* nodes, std::uint32_t count) {
  try {
    CZRGSQuote::m_vFieldPool.insert(CZRGSQuote::m_vFieldPool.end(), nodes, nodes + count);
    return true;
  } catch (const std::bad_alloc&) {
    return false;
  }
}

// Moves the oldest nodes of a thread there; result and lock as above.
bool NodePool::ShareOldest(NodeStack& own, std::uint32_t count) {
  QuoteField** const nodes = own.nodes.data();
  if (!Share(nodes, count)) {
    return false;
  }
  std::copy(nodes + count, nodes + own.count, nodes);
  own.count -= count;
  return true;
}

void NodePool::FreeAll() {
  const std::lock_guard lock(CZRGSQuote::m_Crit);
  for (NodeStack* stack = g_stacks; stack != nullptr; stack = stack->next) {
    while (stack->count > 0) {
      FreeNode(stack->nodes[--stack->count]);
    }
  }
  for (QuoteField* node : CZRGSQuote::m_vFieldPool) {
    FreeNode(node);
  }
  // An empty list assigned would keep its room.
  std::vector<QuoteField*>().swap(CZRGSQuote::m_vFieldPool);
}

}  // namespace pxd::detail

void CZRGSQuote::Init() {
  m_bInitialized = true;
}

void CZRGSQuote::UnInit() {
  if (m_bInitialized) {
    NodePool::FreeAll();
    m_bInitialized = false;
  }
}

CZRGSQuote::ZRGS_QUOTE_FIELD* CZRGSQuote::CreateField(unsigned char status, unsigned char type,
                                                      unsigned short id, unsigned char* data,
                                                      unsigned short size) {
  Field* const node = m_bInitialized ? NodePool::Take(size) : nullptr;
  if (node != nullptr) {
    pxd::detail::Describe(*node, status, type, id, size);
    pxd::detail::StoreValue(*node, data);
  }
  return node;
}

CZRGSQuote::ZRGS_QUOTE_FIELD* CZRGSQuote::CreateField(const ZRGS_QUOTE_FIELD* field) {
  if (field == nullptr) {
    return nullptr;
  }
  return CreateField(StatusOf(*field), TypeOf(*field), field->wFieldID, field->pData, field->wSize);
}

void CZRGSQuote::ReleaseField(ZRGS_QUOTE_FIELD* field) {
  if (m_bInitialized && field != nullptr) {
    NodePool::Give(&field, &field + 1);
  }
}

unsigned long CZRGSQuote::GetTimeValue(const ZRGS_QUOTE_FIELD* field) {
  switch (TypeOf(*field)) {
    case QFTYPE_TIME:
    case QFTYPE_ULONG:
      return ValueOf<std::uint32_t>(*field);
    default:
      return 0;
  }
}

unsigned short CZRGSQuote::GetDateValue(const ZRGS_QUOTE_FIELD* field) {
  switch (TypeOf(*field)) {
    case QFTYPE_DATE:
      return ValueOf<std::uint16_t>(*field);
    case QFTYPE_ULONG:
      return static_cast<std::uint16_t>(ValueOf<std::uint32_t>(*field));
    default:
      return 0;
  }
}

double CZRGSQuote::GetDoubleValue(const ZRGS_QUOTE_FIELD* field) {
  return pxd::detail::NumberOf(*field);
}
