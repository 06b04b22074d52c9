// docs/query-language.md says what is true: every query on that page is run.
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <pxdutil/query/client_query.h>
#include <pxdutil/query/explain_query.h>

namespace {

struct Line {
  std::size_t number;
  std::string text;
};

// The lines of the page's fenced blocks with this mark.
std::vector<Line> Blocks(const std::string& mark) {
  std::ifstream page(PXDUTIL_QUERY_LANGUAGE_PAGE);
  EXPECT_TRUE(page.good()) << PXDUTIL_QUERY_LANGUAGE_PAGE;
  std::vector<Line> lines;
  const std::string fence = "```";
  std::string open;  // the mark of the block that the line stands in
  std::string line;
  for (std::size_t number = 1; std::getline(page, line); ++number) {
    if (line.rfind(fence, 0) != 0) {
      if (open == mark) {
        lines.push_back({number, line});
      }
    } else if (!open.empty()) {
      open.clear();
    } else {
      open = line.substr(fence.size());
      EXPECT_TRUE(open == "query" || open == "query-refused") << "line " << number;
    }
  }
  EXPECT_EQ(open, "") << "a block without its end";
  return lines;
}

int Read(const std::string& text) {
  const auto info = std::make_unique<QUERY_INFO>();
  return CZRGSClientQuery::GetQueryInfo(text.c_str(), *info);
}

TEST(QueryLanguagePage, ItsQueriesAreAccepted) {
  const std::vector<Line> lines = Blocks("query");
  EXPECT_GT(lines.size(), 20U);
  for (const Line& line : lines) {
    EXPECT_EQ(Read(line.text), 1) << "line " << line.number << ": " << line.text;
    EXPECT_EQ(pxd::ExplainQuery(line.text).message, "") << "line " << line.number;
  }
}

// The message stands under its query, with two blanks in front.
TEST(QueryLanguagePage, ItsRefusalsAreRefusedWithTheirMessages) {
  const std::vector<Line> lines = Blocks("query-refused");
  EXPECT_GT(lines.size(), 30U);
  ASSERT_EQ(lines.size() % 2, 0U) << "a query without its message";
  for (std::size_t i = 0; i < lines.size(); i += 2) {
    const Line& query = lines[i];
    const pxd::QueryExplanation why = pxd::ExplainQuery(query.text);
    const int expected = why.stage == pxd::QueryStage::Class ? 1 : 0;
    EXPECT_EQ(Read(query.text), expected) << "line " << query.number << ": " << query.text;
    EXPECT_EQ("  " + why.message, lines[i + 1].text)
        << "line " << query.number << ": " << query.text;
  }
}

}  // namespace
