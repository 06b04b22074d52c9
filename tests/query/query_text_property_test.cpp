// What holds for every query text, asked of tens of thousands of them.
#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include <gtest/gtest.h>
#include <pxdutil/query/client_query.h>
#include <pxdutil/query/explain_query.h>
#include <pxdutil/query/query_values.h>
#include <pxdutil/query/query_words.h>

#include "literal_parser.h"
#include "query_print.h"
#include "query_texts.h"
#include "tests/support/rounds.h"

namespace {

using pxd::test::Random;
using pxd::test::Rounds;

// Two records with the same wild contents, so that what isn't written shows.
class Twins {
 public:
  Twins() : m_first(std::make_unique<QUERY_INFO>()), m_second(std::make_unique<QUERY_INFO>()) {}

  // Holds the parser, the literal one and the explanation to each other.
  void Compare(const std::string& text) {
    std::memset(m_first.get(), 0xA5, sizeof(QUERY_INFO));
    std::memset(m_second.get(), 0xA5, sizeof(QUERY_INFO));
    const int result = CZRGSClientQuery::GetQueryInfo(text.c_str(), *m_first);
    const int expected = pxd::test::LiteralGetQueryInfo(text.c_str(), *m_second);
    ASSERT_EQ(result, expected) << text;
    ASSERT_TRUE(pxd::test::SameBytes(*m_first, *m_second)) << text << '\n'
                                                           << pxd::test::Print(*m_first) << '\n'
                                                           << pxd::test::Print(*m_second);

    const pxd::QueryExplanation why = pxd::ExplainQuery(text);
    const bool isRefusedByClass = why.stage == pxd::QueryStage::Class;
    ASSERT_EQ(why.accepted || isRefusedByClass, result != 0) << text << '\n' << why.message;
    if (result != 0) {
      const bool hasClass = !pxd::QueryClassName(m_first->eQueryType).empty();
      ASSERT_EQ(isRefusedByClass, hasClass && !pxd::TypedValues(*m_first)) << text;
    }
    ASSERT_EQ(why.accepted, why.stage == pxd::QueryStage::Accepted);
    ASSERT_EQ(why.accepted, why.rule == pxd::QueryRule::None);
    ASSERT_EQ(why.accepted, why.message.empty());
    ASSERT_LE(why.position, text.size());
    const bool filled = m_first->bRequestType != 0xA5;
    if (!why.accepted) {
      ASSERT_EQ(filled, isRefusedByClass || why.stage == pxd::QueryStage::Check) << text << '\n'
                                                                                 << why.message;
      ASSERT_FALSE(why.found.empty()) << text;
      const bool atEnd = why.position == text.size();
      ASSERT_EQ(atEnd ? "end of text" : text.substr(why.position, why.found.size()), why.found);
    }
    ++(isRefusedByClass ? m_refusedByClass
       : why.accepted   ? m_accepted
       : filled         ? m_refused
                        : m_broken);
  }

  // Sentences that GetQueryInfo accepts.
  [[nodiscard]] std::size_t Accepted() const { return m_accepted + m_refusedByClass; }
  [[nodiscard]] std::size_t RefusedByClass() const { return m_refusedByClass; }
  // By the check of the chart alone.
  [[nodiscard]] std::size_t Refused() const { return m_refused; }
  [[nodiscard]] std::size_t Broken() const { return m_broken; }

 private:
  std::unique_ptr<QUERY_INFO> m_first;
  std::unique_ptr<QUERY_INFO> m_second;
  std::size_t m_accepted = 0;
  std::size_t m_refusedByClass = 0;
  std::size_t m_refused = 0;
  std::size_t m_broken = 0;
};

TEST(QueryProperty, AWrittenRecordParsesBackToItself) {
  Random random(20240304);
  const auto read = std::make_unique<QUERY_INFO>();
  for (int i = 0; i < 6000; ++i) {
    const auto query = pxd::test::RandomQuery(random);
    const std::string text = pxd::test::WriteQuery(*query, random);
    std::memset(read.get(), 0xA5, sizeof *read);
    ASSERT_EQ(CZRGSClientQuery::GetQueryInfo(text.c_str(), *read), 1) << text;
    ASSERT_TRUE(pxd::test::SameBytes(*read, *query)) << text << '\n'
                                                     << pxd::test::Print(*query) << '\n'
                                                     << pxd::test::Print(*read);
  }
}

TEST(QueryProperty, ParserExplanationAndLiteralParserAgreeOnValidTexts) {
  Random random(1);
  Twins twins;
  for (int i = 0; i < 3000; ++i) {
    const auto query = pxd::test::RandomQuery(random);
    ASSERT_NO_FATAL_FAILURE(twins.Compare(pxd::test::WriteQuery(*query, random)));
  }
  EXPECT_EQ(twins.Accepted(), 3000U);
  EXPECT_GT(twins.RefusedByClass(), 1000U);
}

TEST(QueryProperty, TheyAgreeOnTokenSoup) {
  Random random(2);
  Twins twins;
  for (int i = 0; i < Rounds(40000); ++i) {
    ASSERT_NO_FATAL_FAILURE(twins.Compare(pxd::test::TokenSoup(random)));
  }
  // All three ways of ending are met often.
  EXPECT_GT(twins.Accepted(), Rounds(500U));
  EXPECT_GT(twins.Refused(), Rounds(200U));
  EXPECT_GT(twins.Broken(), Rounds(5000U));
}

TEST(QueryProperty, TheyAgreeOnMutations) {
  Random random(3);
  Twins twins;
  for (int i = 0; i < Rounds(20000); ++i) {
    const auto query = pxd::test::RandomQuery(random);
    const std::string text = pxd::test::WriteQuery(*query, random);
    ASSERT_NO_FATAL_FAILURE(twins.Compare(pxd::test::Mutated(text, random)));
  }
  EXPECT_GT(twins.Accepted(), Rounds(1000U));
  EXPECT_GE(twins.Refused(), Rounds(6U));
  EXPECT_GT(twins.Broken(), Rounds(5000U));
}

TEST(QueryProperty, TheyAgreeOnTextsCutAtEveryCharacter) {
  Random random(4);
  Twins twins;
  for (int i = 0; i < 100; ++i) {
    std::string text;
    do {
      text = pxd::test::WriteQuery(*pxd::test::RandomQuery(random), random);
    } while (text.size() > 400);
    for (std::size_t length = 0; length <= text.size(); ++length) {
      ASSERT_NO_FATAL_FAILURE(twins.Compare(text.substr(0, length)));
    }
  }
}

TEST(QueryProperty, TheyAgreeOnTheCorpusOfTheFuzzer) {
  Twins twins;
  std::size_t files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(PXDUTIL_QUERY_CORPUS)) {
    std::ifstream in(entry.path(), std::ios::binary);
    ASSERT_TRUE(in.good()) << entry.path();
    const std::string bytes{std::istreambuf_iterator<char>(in), {}};
    ASSERT_NO_FATAL_FAILURE(twins.Compare(bytes.substr(0, bytes.find('\0'))));
    ++files;
  }
  EXPECT_GT(files, 20U);
}

// Each thing that is said to be expected leads further, or to the end.
TEST(QueryProperty, WhatIsExpectedLeadsOn) {
  Random random(5);
  std::size_t tried = 0;
  for (int i = 0; i < 4000; ++i) {
    std::string text = pxd::test::TokenSoup(random);
    if (i % 2 == 0) {
      text = pxd::test::WriteQuery(*pxd::test::RandomQuery(random), random);
      text.resize(std::min<std::size_t>(text.size(), pxd::test::Pick(random, 0, 200)));
    }
    const pxd::QueryExplanation why = pxd::ExplainQuery(text);
    for (const std::string& expected : why.expected) {
      std::string piece = "600";  // a number that is a field id and a kind of analysis too
      if (expected == "end of text") {
        piece.clear();
      } else if (expected == "a quoted value") {
        piece = "\"A\"";
      } else if (expected.front() == '"') {
        piece = expected.substr(1, expected.size() - 2);
      }
      const std::string mended = text.substr(0, why.position) + ' ' + piece;
      const pxd::QueryExplanation then = pxd::ExplainQuery(mended);
      const bool leadsOn = then.accepted || then.stage == pxd::QueryStage::Check ||
                           then.stage == pxd::QueryStage::Class || then.position == mended.size();
      // Two faults that may still show: the number isn't the one field that a chart shows, and a
      // WHAT list that broke off earlier is only missed behind its source.
      const bool otherFault =
          then.rule == pxd::QueryRule::ChartField || then.position < why.position;
      ASSERT_TRUE(leadsOn || otherFault) << mended << '\n' << why.message << '\n' << then.message;
      ++tried;
    }
  }
  EXPECT_GT(tried, 5000U);
}

}  // namespace
