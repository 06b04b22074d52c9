// ExplainQuery: what is wrong with a query text, and what could have stood there instead.
//
// CZRGSClientQuery::GetQueryInfo says yes or no, which is all that a server needs. Whoever writes a
// query wants to know more:
//
//   const pxd::QueryExplanation why = pxd::ExplainQuery("REQUEST 7 from NEWS");
//   // why.accepted   false
//   // why.position   10
//   // why.found      from
//   // why.expected   {"\",\"", "\"FROM\""}
//   // why.message    expected "," or "FROM" at offset 10, found "from": words are written in
//   //                capitals
//
// It runs the parser that GetQueryInfo runs and builds the query with the class of its source, so
// it always agrees with both. It keeps nothing between calls, so any number of threads may call it
// at once. It allocates what it returns, and meanwhile a copy of the text and, for one that parses,
// a QUERY_INFO.
#ifndef PXDUTIL_QUERY_EXPLAIN_QUERY_H
#define PXDUTIL_QUERY_EXPLAIN_QUERY_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <pxdutil/foundation/export.h>
#include <pxdutil/query/query_rule.h>

namespace pxd {

// What ExplainQuery tells of a text.
struct QueryExplanation {
  // Whether GetQueryInfo returns 1 for the text, and the class that its source is meant for takes
  // the query; end queries, and sources that are left to the host, have no class. The members below
  // then say Accepted, None, the text's length, and nothing.
  bool accepted = false;
  // What refused the text, and by which of its rules.
  QueryStage stage = QueryStage::Accepted;
  QueryRule rule = QueryRule::None;
  // Where: a count of characters from the start of the text, 0 for the first.
  std::size_t position = 0;
  // What stands there as it is written, a string with its quotes; "end of text" at the end. Text
  // that is no token is given up to the next blank, and at most 32 characters of it.
  std::string found;
  // What a well-formed query could have there: words and signs in quotes ("\"FROM\""), and things
  // in words ("a field id (number)"). Empty where the rule is about what was written and not about
  // its place. The parser may take more than is listed, where it overlooks what it shouldn't.
  std::vector<std::string> expected;
  // All of it in one line of printable ASCII, for people. The wording may change.
  std::string message;
};

// Explains a text, which ends at its first NUL if it has one. A text that breaks several rules is
// explained by the place at which the parser got no further.
[[nodiscard]] PXDUTIL_API QueryExplanation ExplainQuery(std::string_view text);

}  // namespace pxd

#endif
