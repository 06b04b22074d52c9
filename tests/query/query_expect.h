// Rows of query texts and of what they become.
#ifndef PXDUTIL_TESTS_QUERY_QUERY_EXPECT_H
#define PXDUTIL_TESTS_QUERY_QUERY_EXPECT_H

#include <cstring>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <pxdutil/query/client_query.h>

#include "query_print.h"

namespace pxd::test {

// A record as a caller's memory may be, with the result of a parse into it.
struct Outcome {
  int result;
  std::string printed;  // "untouched" where nothing was written
};

[[nodiscard]] inline Outcome Parse(const std::string& text) {
  const auto out = std::make_unique<QUERY_INFO>();
  const auto before = std::make_unique<QUERY_INFO>();
  std::memset(out.get(), 0xA5, sizeof *out);
  std::memset(before.get(), 0xA5, sizeof *before);
  const int result = CZRGSClientQuery::GetQueryInfo(text.c_str(), *out);
  const bool untouched = SameBytes(*out, *before);
  return {result, untouched ? "untouched" : Print(*out)};
}

struct Row {
  std::string text;
  std::string printed;
};

inline void ExpectAccepted(const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    const Outcome outcome = Parse(row.text);
    EXPECT_EQ(outcome.result, 1) << row.text;
    EXPECT_EQ(outcome.printed, row.printed) << row.text;
  }
}

// Sentences whose chart can't be built.
inline void ExpectRefusedButFilled(const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    const Outcome outcome = Parse(row.text);
    EXPECT_EQ(outcome.result, 0) << row.text;
    EXPECT_EQ(outcome.printed, row.printed) << row.text;
  }
}

inline void ExpectNoSentence(const std::vector<std::string>& texts) {
  for (const std::string& text : texts) {
    const Outcome outcome = Parse(text);
    EXPECT_EQ(outcome.result, 0) << text;
    EXPECT_EQ(outcome.printed, "untouched") << text;
  }
}

// `count` times piece(i), with commas between.
template <class Piece>
std::string Repeated(int count, std::string_view between, Piece&& piece) {
  std::ostringstream text;
  for (int i = 0; i < count; ++i) {
    text << (i == 0 ? "" : between) << piece(i);
  }
  return text.str();
}

[[nodiscard]] inline std::string Numbers(int count) {
  return Repeated(count, ",", [](int i) { return std::to_string(i + 1); });
}

}  // namespace pxd::test

#endif
