// A second parser of the query language, for comparison: slow, plain, and written from the
// description of the language alone, with one function a production.
//
// It scans all 60 words for each token, keeps a whole QUERY_INFO at work and takes its numbers from
// the C library. It shares nothing with the library but QUERY_INFO itself.
#ifndef PXDUTIL_TESTS_QUERY_LITERAL_PARSER_H
#define PXDUTIL_TESTS_QUERY_LITERAL_PARSER_H

#include <pxdutil/query/query_info.h>

namespace pxd::test {

// As CZRGSClientQuery::GetQueryInfo.
[[nodiscard]] int LiteralGetQueryInfo(const char* text, QUERY_INFO& out);

}  // namespace pxd::test

#endif
