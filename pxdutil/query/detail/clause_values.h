// How a clause keeps a value and whether it was given, once for all clauses.
//
// A clause either has a bit a value in a few flag bytes (FlagBytes) or a word beside the value
// (Worded). Either way an accessor follows one rule: it fills its argument and says true where the
// value was given, and leaves its argument alone where it wasn't.
#ifndef PXDUTIL_QUERY_DETAIL_CLAUSE_VALUES_H
#define PXDUTIL_QUERY_DETAIL_CLAUSE_VALUES_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <type_traits>
#include <utility>

#include <pxdutil/foundation/text.h>

namespace pxd::detail {

// Text of up to kSize - 1 characters; what is longer loses its end.
template <std::size_t kSize>
class FixedText {
 public:
  FixedText& operator=(const char* text) {
    const std::size_t length = text != nullptr ? (std::min)(std::strlen(text), kSize - 1) : 0;
    m_text.fill('\0');
    std::copy_n(text, length, m_text.begin());
    return *this;
  }
  [[nodiscard]] const char* c_str() const { return m_text.data(); }
  [[nodiscard]] bool empty() const { return m_text[0] == '\0'; }

 private:
  std::array<char, kSize> m_text = {};
};

// A member's value in the type in which an accessor gives it. Text is lent, not copied.
template <class Out, class Value>
Out Given(const Value& value) {
  return static_cast<Out>(value);
}
template <class Out>
Out Given(const std::string& text) {
  if constexpr (std::is_same_v<Out, std::string>) {
    return text;
  } else {
    return text.c_str();
  }
}
template <class Out, std::size_t kSize>
Out Given(const FixedText<kSize>& text) {
  return text.c_str();
}

// The accessor rule.
template <class Value, class Out>
bool GiveIf(bool isGiven, const Value& value, Out& out) {
  if (isGiven) {
    out = Given<Out>(value);
  }
  return isGiven;
}

// Stores what a setter was handed into its member, cut to the member's width. A null text is empty.
//
// It has a name that no host would choose: data points have bases in this namespace, so that a
// host's own Store(file, points) looks for candidates here too.
template <class Value, class Argument>
void StoreInMember(Value& member, const Argument& argument) {
  member = static_cast<Value>(argument);
}
inline void StoreInMember(std::string& member, const char* text) {
  member = text != nullptr ? text : "";
}
template <std::size_t kSize>
void StoreInMember(FixedText<kSize>& member, const char* text) {
  member = text;
}

// Flags of a clause, a bit each. Bit is an enumeration that counts from 0.
template <class Bit, std::size_t kBytes>
class FlagBytes {
 public:
  [[nodiscard]] bool Has(Bit bit) const { return (m_bytes[Place(bit)] & Mask(bit)) != 0; }
  void Set(Bit bit, bool on = true) {
    std::uint8_t& byte = m_bytes[Place(bit)];
    byte = static_cast<std::uint8_t>(on ? byte | Mask(bit) : byte & ~Mask(bit));
  }
  void ClearAll() { m_bytes.fill(0); }

  // An accessor's body and a setter's body, for a value whose presence is `bit`.
  template <class Value, class Out>
  bool Give(Bit bit, const Value& value, Out& out) const {
    return GiveIf(Has(bit), value, out);
  }
  template <class Value, class Argument>
  void Keep(Bit bit, Value& member, const Argument& argument) {
    StoreInMember(member, argument);
    Set(bit);
  }

 private:
  static constexpr std::size_t Place(Bit bit) { return static_cast<std::size_t>(bit) / 8; }
  static constexpr unsigned Mask(Bit bit) { return 1U << (static_cast<unsigned>(bit) % 8); }

  std::array<std::uint8_t, kBytes> m_bytes = {};
};

// A value with its presence in the 32-bit word behind it.
template <class Value>
class Worded {
 public:
  template <class Out>
  bool Give(Out& out) const {
    return GiveIf(IsSet(), m_value, out);
  }
  template <class Argument>
  void Keep(const Argument& argument) {
    StoreInMember(m_value, argument);
    m_isSet = 1;
  }
  [[nodiscard]] bool IsSet() const { return m_isSet != 0; }
  [[nodiscard]] const Value& Get() const { return m_value; }
  [[nodiscard]] Value& Get() { return m_value; }

 private:
  Value m_value{};
  std::uint32_t m_isSet = 0;
};

// A record on the heap, or none. Its copies are deep, so that a clause that owns one copies member
// by member like any other.
template <class Record>
class OwnedRecord {
 public:
  OwnedRecord() = default;
  OwnedRecord(const OwnedRecord& other)
      : m_record(other.m_record ? std::make_unique<Record>(*other.m_record) : nullptr) {}
  OwnedRecord(OwnedRecord&&) noexcept = default;
  OwnedRecord& operator=(const OwnedRecord& other) {
    OwnedRecord copy(other);  // made first: `other` may be this record
    m_record = std::move(copy.m_record);
    return *this;
  }
  OwnedRecord& operator=(OwnedRecord&&) noexcept = default;
  ~OwnedRecord() = default;

  // Replaces the record by a fresh one. False, with no record, where there is no memory for it.
  bool Renew() {
    Free();
    m_record.reset(new (std::nothrow) Record());
    return m_record != nullptr;
  }
  void Free() { m_record.reset(); }

  [[nodiscard]] const Record* Get() const { return m_record.get(); }
  [[nodiscard]] Record* Get() { return m_record.get(); }

 private:
  std::unique_ptr<Record> m_record;
};

}  // namespace pxd::detail

#endif
