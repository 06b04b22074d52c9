// The stored bytes are one file, stored_bytes.bin, and each target makes that file: so what one of
// them writes every other reads. expected.py says what must stand in it.
#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "stored_parts.h"

namespace {

using stored_bytes_test::Part;
using stored_bytes_test::StoredParts;

std::uint32_t NumberAt(const std::string& text, std::size_t at) {
  std::uint32_t number = 0;
  for (int i = 3; i >= 0; --i) {
    number = number << 8 | static_cast<unsigned char>(text.at(at + static_cast<std::size_t>(i)));
  }
  return number;
}

// Each part stands behind its name and its length: the name's length and the bytes' in 4 bytes
// each.
std::vector<Part> ReadParts(const std::string& path) {
  std::ostringstream content;
  content << std::ifstream(path, std::ios::binary).rdbuf();
  const std::string text = content.str();
  std::vector<Part> parts;
  for (std::size_t at = 0; at < text.size();) {
    Part part;
    for (std::string* const piece : {&part.name, &part.bytes}) {
      const std::size_t size = NumberAt(text, at);
      *piece = text.substr(at + 4, size);
      at += 4 + size;
    }
    parts.push_back(part);
  }
  return parts;
}

std::string Hex(const std::string& bytes) {
  std::ostringstream text;
  for (const char c : bytes) {
    text << "0123456789abcdef"[static_cast<unsigned char>(c) >> 4]
         << "0123456789abcdef"[static_cast<unsigned char>(c) & 0x0F] << ' ';
  }
  return text.str();
}

TEST(StoredBytes, AreTheSameFileOnEveryTarget) {
  const std::vector<Part> expected = ReadParts(PXDUTIL_STORED_BYTES);
  const std::vector<Part> made = StoredParts(testing::TempDir());
  ASSERT_FALSE(expected.empty());
  ASSERT_EQ(made.size(), expected.size());
  for (std::size_t i = 0; i < made.size(); ++i) {
    EXPECT_EQ(made[i].name, expected[i].name);
    ASSERT_EQ(made[i].bytes.size(), expected[i].bytes.size()) << made[i].name;
    std::size_t at = 0;
    while (at < made[i].bytes.size() && made[i].bytes[at] == expected[i].bytes[at]) {
      ++at;
    }
    EXPECT_EQ(Hex(made[i].bytes.substr(at, 16)), Hex(expected[i].bytes.substr(at, 16)))
        << made[i].name << ", from byte " << at;
  }
}

}  // namespace
