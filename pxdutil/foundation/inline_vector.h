// A growing array whose first N elements stand inside the object, so that short lists cost no heap
// memory. For plain values only. Indices aren't checked.
#ifndef PXDUTIL_FOUNDATION_INLINE_VECTOR_H
#define PXDUTIL_FOUNDATION_INLINE_VECTOR_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <type_traits>

namespace pxd {

// T is trivially copyable, and N at least 1.
template <class T, std::size_t N>
class InlineVector {
  static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);

 public:
  // Empty. The room inside isn't cleared, since nothing behind size() is ever read; a defaulted
  // constructor that leaves it so would forbid constant lists.
  // NOLINTNEXTLINE(modernize-use-equals-default,cppcoreguidelines-pro-type-member-init)
  InlineVector() noexcept {}
  // Whoever holds pointers in such a list decides what copying means; the list doesn't.
  InlineVector(const InlineVector&) = delete;
  InlineVector& operator=(const InlineVector&) = delete;
  ~InlineVector() = default;

  // How many elements there are, and whether there are none.
  [[nodiscard]] std::size_t size() const noexcept { return m_size; }
  [[nodiscard]] bool empty() const noexcept { return m_size == 0; }
  // Element `index`, which must be below size().
  T& operator[](std::size_t index) noexcept { return data()[index]; }
  const T& operator[](std::size_t index) const noexcept { return data()[index]; }
  // The elements in order; reserve and push_back may move them.
  [[nodiscard]] T* begin() noexcept { return data(); }
  [[nodiscard]] T* end() noexcept { return data() + m_size; }
  [[nodiscard]] const T* begin() const noexcept { return data(); }
  [[nodiscard]] const T* end() const noexcept { return data() + m_size; }

  // Makes room for `count` elements in all; throws std::bad_alloc and changes nothing where there
  // is no memory.
  void reserve(std::size_t count) {
    if (count > m_capacity) {
      Grow(count);
    }
  }
  // Appends the element; throws as reserve.
  void push_back(T value) {
    reserve(m_size + 1);
    data()[m_size++] = value;
  }
  // Whether one more element can be appended without memory for it.
  [[nodiscard]] bool HasRoom() const noexcept { return m_size < m_capacity; }
  // Appends the element to a list that has room.
  void AppendInRoom(T value) noexcept { data()[m_size++] = value; }
  // Forgets the last element, which must be there.
  void pop_back() noexcept { --m_size; }
  // Forgets the elements and keeps the room.
  void clear() noexcept { m_size = 0; }

 private:
  [[nodiscard]] T* data() noexcept { return m_heap != nullptr ? m_heap.get() : m_inside.data(); }
  [[nodiscard]] const T* data() const noexcept {
    return m_heap != nullptr ? m_heap.get() : m_inside.data();
  }

  void Grow(std::size_t count) {
    const std::size_t capacity = (std::max)(count, m_capacity * 2);
    auto heap = std::make_unique<T[]>(capacity);
    std::copy(begin(), end(), heap.get());
    m_heap = std::move(heap);
    m_capacity = capacity;
  }

  std::size_t m_size = 0;
  std::size_t m_capacity = N;
  std::unique_ptr<T[]> m_heap;
  std::array<T, N> m_inside;
};

}  // namespace pxd

#endif
