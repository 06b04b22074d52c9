// The ordered containers of the library's interfaces: CList and CZRListEx (linked), CArray
// (contiguous), and their forms for texts. Each is backed by a standard container and offers
// begin/end beside the framework's names.
//
//   for (POSITION at = list.GetHeadPosition(); at != nullptr;) {
//     use(list.GetNext(at));
//   }
//
// A POSITION stays valid until its own element is removed. Indices and positions aren't checked.
#ifndef PXDUTIL_FOUNDATION_LIST_H
#define PXDUTIL_FOUNDATION_LIST_H

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <list>
#include <utility>
#include <vector>

#include <pxdutil/foundation/object.h>
#include <pxdutil/foundation/text.h>

// The place of an element in a list; null is no place.
struct PXDUTIL_POSITION;
using POSITION = PXDUTIL_POSITION*;

// A doubly linked list. ARG is the type in which elements are passed.
template <class T, class ARG = const T&>
class CList : public CObject {
 private:
  struct Node {
    T value;
    typename std::list<Node>::iterator self;
  };
  using Nodes = std::list<Node>;

  // Walks the values; Base is an iterator over the nodes.
  template <class Base, class Value>
  class ValueIterator {
   public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = T;
    using difference_type = std::ptrdiff_t;
    using pointer = Value*;
    using reference = Value&;

    ValueIterator() = default;
    explicit ValueIterator(Base at) : m_at(at) {}
    reference operator*() const { return m_at->value; }
    pointer operator->() const { return &m_at->value; }
    ValueIterator& operator++() {
      ++m_at;
      return *this;
    }
    ValueIterator operator++(int) { return ValueIterator(m_at++); }
    ValueIterator& operator--() {
      --m_at;
      return *this;
    }
    ValueIterator operator--(int) { return ValueIterator(m_at--); }
    friend bool operator==(const ValueIterator&, const ValueIterator&) = default;

   private:
    Base m_at;
  };

 public:
  // Bidirectional iterators over the elements, valid until their own element is removed.
  using iterator = ValueIterator<typename Nodes::iterator, T>;
  using const_iterator = ValueIterator<typename Nodes::const_iterator, const T>;

  // The block size is a hint of the framework's and changes nothing here.
  explicit CList(std::ptrdiff_t blockSize = 10) { static_cast<void>(blockSize); }
  // Copies the elements; places in the other list stay in that.
  CList(const CList& other) : CObject(other) { Append(other); }
  // Where memory runs out, the list is as it was.
  CList& operator=(const CList& other) {
    if (this != &other) {
      *this = CList(other);
    }
    return *this;
  }
  // Takes over the elements, with their places.
  CList(CList&& other) noexcept : CObject(other), m_nodes(std::move(other.m_nodes)) {}
  CList& operator=(CList&& other) noexcept {
    m_nodes = std::move(other.m_nodes);
    return *this;
  }
  ~CList() override = default;

  // The number of elements.
  [[nodiscard]] std::ptrdiff_t GetCount() const noexcept {
    return static_cast<std::ptrdiff_t>(m_nodes.size());
  }
  [[nodiscard]] std::ptrdiff_t GetSize() const noexcept { return GetCount(); }
  // Whether there are none.
  [[nodiscard]] bool IsEmpty() const noexcept { return m_nodes.empty(); }

  // The first and the last element. The list must not be empty.
  [[nodiscard]] T& GetHead() { return m_nodes.front().value; }
  [[nodiscard]] const T& GetHead() const { return m_nodes.front().value; }
  [[nodiscard]] T& GetTail() { return m_nodes.back().value; }
  [[nodiscard]] const T& GetTail() const { return m_nodes.back().value; }

  // Adds a copy of the element in front or behind, and returns its place.
  POSITION AddHead(ARG value) { return Insert(m_nodes.begin(), value); }
  POSITION AddTail(ARG value) { return Insert(m_nodes.end(), value); }
  // Takes the first or the last element out and returns it. The list must not be empty.
  T RemoveHead() { return Take(m_nodes.begin()); }
  T RemoveTail() { return Take(std::prev(m_nodes.end())); }
  // Empties the list.
  void RemoveAll() noexcept { m_nodes.clear(); }

  // The place of the first and of the last element, null in an empty list.
  [[nodiscard]] POSITION GetHeadPosition() const {
    return m_nodes.empty() ? nullptr : PlaceOf(m_nodes.front());
  }
  [[nodiscard]] POSITION GetTailPosition() const {
    return m_nodes.empty() ? nullptr : PlaceOf(m_nodes.back());
  }
  // The element at `at`, which then moves to the next (previous) one, null behind the last (first).
  T& GetNext(POSITION& at) { return StepOn(at).value; }
  const T& GetNext(POSITION& at) const { return StepOn(at).value; }
  T& GetPrev(POSITION& at) { return StepBack(at).value; }
  const T& GetPrev(POSITION& at) const { return StepBack(at).value; }

  // The element at a place, another in its stead, and away with it.
  [[nodiscard]] T& GetAt(POSITION at) { return NodeAt(at).value; }
  [[nodiscard]] const T& GetAt(POSITION at) const { return NodeAt(at).value; }
  void SetAt(POSITION at, ARG value) { NodeAt(at).value = value; }
  void RemoveAt(POSITION at) { m_nodes.erase(NodeAt(at).self); }
  // Adds a copy of the element before or behind that at `at`, and returns its place. A null `at`
  // inserts at the head (before) or the tail (after).
  POSITION InsertBefore(POSITION at, ARG value) {
    return Insert(at != nullptr ? NodeAt(at).self : m_nodes.begin(), value);
  }
  POSITION InsertAfter(POSITION at, ARG value) {
    return Insert(at != nullptr ? std::next(NodeAt(at).self) : m_nodes.end(), value);
  }

  // The first element equal to `value`, behind `after` where it is given; null where there is none.
  [[nodiscard]] POSITION Find(ARG value, POSITION after = nullptr) const {
    auto at = after != nullptr ? std::next(typename Nodes::const_iterator(NodeAt(after).self))
                               : m_nodes.begin();
    at = std::find_if(at, m_nodes.end(), [&](const Node& node) { return node.value == value; });
    return at != m_nodes.end() ? PlaceOf(*at) : nullptr;
  }
  // The place of element `index`, null where the index is out of range.
  [[nodiscard]] POSITION FindIndex(std::ptrdiff_t index) const {
    return index >= 0 && index < GetCount() ? PlaceOf(*std::next(m_nodes.begin(), index)) : nullptr;
  }

  // The elements in order.
  [[nodiscard]] iterator begin() { return iterator(m_nodes.begin()); }
  [[nodiscard]] iterator end() { return iterator(m_nodes.end()); }
  [[nodiscard]] const_iterator begin() const { return const_iterator(m_nodes.begin()); }
  [[nodiscard]] const_iterator end() const { return const_iterator(m_nodes.end()); }

 private:
  static POSITION PlaceOf(const Node& node) {
    return reinterpret_cast<POSITION>(const_cast<Node*>(&node));
  }
  static Node& NodeAt(POSITION at) { return *reinterpret_cast<Node*>(at); }

  POSITION Insert(typename Nodes::iterator before, ARG value) {
    const auto at = m_nodes.insert(before, Node{value, {}});
    at->self = at;
    return PlaceOf(*at);
  }
  T Take(typename Nodes::iterator at) {
    T value = std::move(at->value);
    m_nodes.erase(at);
    return value;
  }
  Node& StepOn(POSITION& at) const {
    Node& node = NodeAt(at);
    const auto next = std::next(typename Nodes::const_iterator(node.self));
    at = next != m_nodes.end() ? PlaceOf(*next) : nullptr;
    return node;
  }
  Node& StepBack(POSITION& at) const {
    Node& node = NodeAt(at);
    at = typename Nodes::const_iterator(node.self) != m_nodes.begin()
             ? PlaceOf(*std::prev(node.self))
             : nullptr;
    return node;
  }
  void Append(const CList& other) {
    for (const T& value : other) {
      Insert(m_nodes.end(), value);
    }
  }

  Nodes m_nodes;
};

// A list that compares: equal when the elements are equal, in order.
template <class T>
class CZRListEx : public CList<T, const T&> {
 public:
  // The block size changes nothing, as in a CList.
  explicit CZRListEx(std::ptrdiff_t blockSize = 10) : CList<T, const T&>(blockSize) {}

  // By == of the elements, whatever type that has.
  friend bool operator==(const CZRListEx& a, const CZRListEx& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const T& x, const T& y) { return static_cast<bool>(x == y); });
  }
};

// A list of texts.
class PXDUTIL_API CStringList : public CList<CString, const CString&> {
 public:
  // The block size changes nothing, as in a CList.
  explicit CStringList(std::ptrdiff_t blockSize = 10) : CList<CString, const CString&>(blockSize) {}
};

// A growing array. ARG is the type in which elements are passed.
template <class T, class ARG = const T&>
class CArray : public CObject {
 public:
  // The number of elements, the index of the last (-1 in an empty array), and whether there are
  // none.
  [[nodiscard]] std::ptrdiff_t GetSize() const noexcept {
    return static_cast<std::ptrdiff_t>(m_items.size());
  }
  [[nodiscard]] std::ptrdiff_t GetCount() const noexcept { return GetSize(); }
  [[nodiscard]] std::ptrdiff_t GetUpperBound() const noexcept { return GetSize() - 1; }
  [[nodiscard]] bool IsEmpty() const noexcept { return m_items.empty(); }
  // Cuts the array or fills it up with default elements; the second argument changes nothing here.
  void SetSize(std::ptrdiff_t size, std::ptrdiff_t growBy = -1) {
    static_cast<void>(growBy);
    m_items.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
  }
  // Empties the array.
  void RemoveAll() noexcept { m_items.clear(); }

  // Element `index`, which must be in range.
  [[nodiscard]] T& GetAt(std::ptrdiff_t index) { return m_items[Place(index)]; }
  [[nodiscard]] const T& GetAt(std::ptrdiff_t index) const { return m_items[Place(index)]; }
  [[nodiscard]] T& ElementAt(std::ptrdiff_t index) { return GetAt(index); }
  T& operator[](std::ptrdiff_t index) { return GetAt(index); }
  const T& operator[](std::ptrdiff_t index) const { return GetAt(index); }
  // Replaces element `index`; beyond the end SetAtGrow fills up to it with default elements.
  void SetAt(std::ptrdiff_t index, ARG value) { GetAt(index) = value; }
  void SetAtGrow(std::ptrdiff_t index, ARG value) {
    if (index < GetSize()) {
      SetAt(index, value);
    } else {
      T kept = value;  // it may be an element of this array, which growing moves
      SetSize(index + 1);
      GetAt(index) = std::move(kept);
    }
  }
  // Appends the element and returns its index.
  std::ptrdiff_t Add(ARG value) {
    m_items.push_back(value);
    return GetUpperBound();
  }
  // Inserts before element `index`, 0 up to the size. Removes `count` elements from `index` on,
  // which must be there.
  void InsertAt(std::ptrdiff_t index, ARG value) { m_items.insert(m_items.begin() + index, value); }
  void RemoveAt(std::ptrdiff_t index, std::ptrdiff_t count = 1) {
    m_items.erase(m_items.begin() + index, m_items.begin() + index + count);
  }
  // Replaces the elements by those of `other`.
  void Copy(const CArray& other) { m_items = other.m_items; }
  // Appends the elements of `other`, which may be this array, and returns the index of the first.
  std::ptrdiff_t Append(const CArray& other) {
    const std::ptrdiff_t first = GetSize();
    const std::ptrdiff_t count = other.GetSize();  // taken first: `other` may be this array
    for (std::ptrdiff_t i = 0; i < count; ++i) {
      m_items.push_back(other.GetAt(i));
    }
    return first;
  }
  // The elements side by side, valid until the array grows; null or not in an empty array.
  [[nodiscard]] T* GetData() noexcept { return m_items.data(); }
  [[nodiscard]] const T* GetData() const noexcept { return m_items.data(); }

  // The elements in order.
  [[nodiscard]] auto begin() noexcept { return m_items.begin(); }
  [[nodiscard]] auto end() noexcept { return m_items.end(); }
  [[nodiscard]] auto begin() const noexcept { return m_items.begin(); }
  [[nodiscard]] auto end() const noexcept { return m_items.end(); }

 private:
  static std::size_t Place(std::ptrdiff_t index) { return static_cast<std::size_t>(index); }

  std::vector<T> m_items;
};

// An array of texts.
class PXDUTIL_API CStringArray : public CArray<CString, const CString&> {};

#endif
