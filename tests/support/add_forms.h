// The forms in which a quote makes a field itself from a value.
#ifndef PXDUTIL_TESTS_SUPPORT_ADD_FORMS_H
#define PXDUTIL_TESTS_SUPPORT_ADD_FORMS_H

#include <iterator>
#include <vector>

#include <pxdutil/quotes/quote.h>

namespace pxd::test {

struct AddForm {
  const char* name;
  int (*add)(CZRGSQuote& quote, unsigned short id);
};

// The forms behind a test's own; each of them needs a node and a buffer.
inline std::vector<AddForm> WithValueForms(std::vector<AddForm> forms) {
  const AddForm made[] = {
      {"generic",
       [](CZRGSQuote& q, unsigned short id) {
         unsigned char value[40] = "generic";
         return q.AddField(3, CZRGSQuote::QFTYPE_STREAM, id, value, sizeof value);
       }},
      {"time", [](CZRGSQuote& q, unsigned short id) { return q.AddFieldTime(3, id, 34200); }},
      {"date", [](CZRGSQuote& q, unsigned short id) { return q.AddFieldDate(3, id, 35431); }},
      {"text",
       [](CZRGSQuote& q, unsigned short id) { return q.AddFieldString(3, id, "some text"); }},
      {"text of a size",
       [](CZRGSQuote& q, unsigned short id) { return q.AddFieldString(3, id, "some text", 4); }},
      {"double", [](CZRGSQuote& q, unsigned short id) { return q.AddFieldDouble(3, id, 1.0); }},
      {"float", [](CZRGSQuote& q, unsigned short id) { return q.AddFieldFloat(3, id, 1.0F); }},
      {"long", [](CZRGSQuote& q, unsigned short id) { return q.AddFieldLong(3, id, 1); }},
      {"unsigned long", [](CZRGSQuote& q, unsigned short id) { return q.AddFieldULong(3, id, 1); }},
      {"short", [](CZRGSQuote& q, unsigned short id) { return q.AddFieldShort(3, id, 1); }},
      {"unsigned short",
       [](CZRGSQuote& q, unsigned short id) { return q.AddFieldUShort(3, id, 1); }},
      {"char", [](CZRGSQuote& q, unsigned short id) { return q.AddFieldChar(3, id, 1); }},
      {"byte", [](CZRGSQuote& q, unsigned short id) { return q.AddFieldByte(3, id, 1); }},
      {"without value", [](CZRGSQuote& q, unsigned short id) { return q.AddFieldNoValue(id, 6); }},
  };
  forms.insert(forms.end(), std::begin(made), std::end(made));
  return forms;
}

}  // namespace pxd::test

#endif  // PXDUTIL_TESTS_SUPPORT_ADD_FORMS_H
