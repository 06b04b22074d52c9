// What the tests of the quote share: an open pool, nodes outside any quote, and short readers.
//
// Nodes are packed, and a comparison macro binds a reference to what it is given; where a member
// may be misaligned, a unary + hands over a copy.
#ifndef PXDUTIL_TESTS_QUOTES_QUOTE_FIXTURE_H
#define PXDUTIL_TESTS_QUOTES_QUOTE_FIXTURE_H

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include <pxdutil/quotes/quote.h>

namespace pxd::test {

using Field = CZRGSQuote::ZRGS_QUOTE_FIELD;
using FieldInfo = ZRGS_FIELD_INFO;
using Bytes = std::vector<unsigned char>;
using Ids = std::vector<unsigned short>;

static_assert(!std::is_polymorphic_v<CZRGSQuote>);
static_assert(std::is_same_v<FieldInfo, CZRGSQuote::ZRGS_FIELD_INFO>);
static_assert(sizeof(FieldInfo) == 8);

constexpr unsigned short kDate = 280;
constexpr unsigned short kTime = 281;

class Quote : public testing::Test {
 protected:
  Quote() { CZRGSQuote::Init(); }
  ~Quote() override { CZRGSQuote::UnInit(); }
};

inline Bytes BytesOf(const Field& field) {
  return field.wSize == 0 ? Bytes{} : Bytes(field.pData, field.pData + field.wSize);
}

// A node outside any quote. A copied vector has a block of exactly its size, so the address
// sanitizer sees a reader that goes beyond the value.
class LooseField {
 public:
  LooseField(unsigned char type, const Bytes& bytes, unsigned short id = 1,
             unsigned char status = 3)
      : m_bytes(bytes) {
    const auto size = static_cast<std::uint16_t>(bytes.size());
    m_field = {
        id, 0, size, size, 0, static_cast<std::uint8_t>((type << 4) | status), 0, m_bytes.data()};
  }
  LooseField(const LooseField&) = delete;
  LooseField& operator=(const LooseField&) = delete;
  operator const Field*() const { return &m_field; }
  Field* operator->() { return &m_field; }

 private:
  Bytes m_bytes;
  Field m_field{};
};

inline Ids IdsOf(const CZRGSQuote& quote) {
  Ids ids;
  for (unsigned short i = 0; i < quote.GetNumField(); ++i) {
    ids.push_back(quote.GetField(i)->wFieldID);
  }
  return ids;
}

inline double NumberOf(const CZRGSQuote& quote, unsigned short id) {
  double value = -999.0;
  EXPECT_EQ(quote.GetFieldData(id, value), 1) << id;
  return value;
}

// Two bytes to add where the value doesn't matter; as a Julian day they are 35431.
inline unsigned char g_value[] = {0x67, 0x8A};

}  // namespace pxd::test

#endif
