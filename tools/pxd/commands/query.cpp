// pxd query: a request text taken apart, or why it is none.
#include <fmt/format.h>

#include <cstdio>
#include <memory>
#include <string>

#include <pxdutil/query/client_query.h>
#include <pxdutil/query/explain_query.h>

#include "../failure.h"
#include "../query_text.h"
#include "../streams.h"
#include "commands.h"

namespace pxd::tool {
namespace {

// More than any query can say: 20 values of 4095 characters, and the rest of it.
constexpr std::size_t kLargest = std::size_t{1} << 20;

struct QuerySettings {
  std::string text;
  bool json = false;
};

int RunQuery(const QuerySettings& settings) {
  std::string text = settings.text;
  if (text == "-") {
    Input input("-");
    text = WholeText(input, kLargest);
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) {
      text.pop_back();
    }
  }
  const QueryExplanation why = ExplainQuery(text);
  if (!why.accepted) {
    if (settings.json) {
      Print(ExplanationJson(why));
    } else {
      Say(why.message);
      fmt::print(stderr, "{}", CaretLines(text, why.position));
    }
    return kExitBadData;
  }
  const BuiltInCatalogue catalogue;
  const auto info = std::make_unique<QUERY_INFO>();
  if (CZRGSClientQuery::GetQueryInfo(text.c_str(), *info) == 0) {
    throw Failure(kExitBadData, "the query was refused without a reason");
  }
  Print(settings.json ? QueryCardJson(catalogue, *info) : QueryCard(catalogue, *info));
  return kExitOk;
}

}  // namespace

Command QueryCommand() {
  auto settings = std::make_shared<QuerySettings>();
  return {
      .name = "query",
      .summary = "Take a query apart, or say what is wrong with it",
      .notes =
          "TEXT is a sentence of the query language, such as\n"
          "  REQUEST 7,10 FROM SYMBOL_DATA WHERE 31=\"ABC\" AND 207=\"1\"\n"
          "in single quotes for the shell. docs/query-language.md tells of the language. A query "
          "that\n"
          "is refused is shown with a caret under the place, and ends with exit status 1.",
      .options = {{.names = "TEXT",
                   .target = &settings->text,
                   .help = "The query; - reads it from standard input",
                   .isRequired = true},
                  {.names = "--json", .target = &settings->json, .help = "JSON instead of lines"}},
      .run = [settings] { return RunQuery(*settings); },
  };
}

}  // namespace pxd::tool
