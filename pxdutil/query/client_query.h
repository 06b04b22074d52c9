// CZRGSClientQuery: reads a request text into a QUERY_INFO.
//
// A client asks the server in one line of text; docs/query-language.md describes the language:
//
//   auto info = std::make_unique<QUERY_INFO>();
//   if (CZRGSClientQuery::GetQueryInfo(R"(REQUEST 7,10 FROM SYMBOL_DATA WHERE 31="ABC")", *info)) {
//     // info->eQueryType is QUERY_TYPE_SYMBOL_DATA, info->dwWhatCount 2, ...
//   }
//
// All of it is static and shares nothing, so any number of threads may call it at once. Parsing
// allocates nothing and needs about 2 KB of stack. It reports by a bare yes or no; where somebody
// wants to know what is wrong with a text, pxd::ExplainQuery tells (explain_query.h).
#ifndef PXDUTIL_QUERY_CLIENT_QUERY_H
#define PXDUTIL_QUERY_CLIENT_QUERY_H

#include <string>

#include <pxdutil/foundation/export.h>
#include <pxdutil/query/query_info.h>

class PXDUTIL_API CZRGSClientQuery {
 public:
  // Parses a text up to its NUL. 1 where it is a sentence of the language and its chart, if it asks
  // for one, can be built; `out` is then written whole.
  //
  // 0 otherwise. Where the text is no sentence, or null, `out` stays as it was. Where only the
  // chart can't be built (a width of 0, an unfit unit), `out` is written as for success, so check
  // the result and not the record.
  //
  // Field ids are cut to 16 bits and other numbers to 32, without a check of their range.
  static int GetQueryInfo(const char* text, QUERY_INFO& out);

  // Takes the first condition on `field` out of a query text, with the "AND" behind it:
  // 365="5" AND 31="A" without 365 is  31="A", its blank left in front.
  //
  // It works on the bare characters: it looks for the id with "=" right behind it, so it doesn't
  // see a condition written with blanks there, takes 365= for a condition on 65, and the "AND"
  // it removes up to is the next one anywhere in the text. The text stays as it was where there is
  // no such condition, where no quoted value follows, and where the text ends with that value.
  static void StripFieldID(std::string& text, unsigned long field);
};

#endif
