// CStrListParser: splits a bracketed, separated text into the list of its items.
//
//   CStrListParser items('{', '}', ',');
//   if (items.Parse("{a,{b,c},d}") == 0) {
//     // three items: "a", "{b,c}" and "d"
//   }
//
// The parser is the list. It belongs to one thread at a time.
#ifndef PXDUTIL_REFERENCE_LIST_PARSER_H
#define PXDUTIL_REFERENCE_LIST_PARSER_H

#include <pxdutil/foundation/export.h>
#include <pxdutil/foundation/list.h>
#include <pxdutil/foundation/text.h>

class PXDUTIL_API CStrListParser : public CStringList {
 public:
  // The three characters that have a meaning; where two are the same, the bracket counts, and the
  // opening one first.
  CStrListParser(char openBracket, char closeBracket, char separator)
      : CStringList(10), m_open(openBracket), m_close(closeBracket), m_separator(separator) {}

  // Replaces the items by those of `text`. Returns 0 for success and 1 for failure: note the
  // polarity.
  //
  // The text must begin with the opening and end with the closing bracket, and its brackets must
  // match. Items stand between the separators outside of any inner brackets; they are taken as they
  // stand, blanks and inner brackets included, and may be empty. An opening and a closing bracket
  // alone are the empty list. After a failure the items that were complete before it stay.
  int Parse(const CString& text);

 private:
  char m_open;
  char m_close;
  char m_separator;
};

#endif
