// Accessors of WHERE clauses as rows of a table: what a condition makes an accessor say.
#ifndef PXDUTIL_TESTS_QUERY_ACCESSORS_H
#define PXDUTIL_TESTS_QUERY_ACCESSORS_H

#include <algorithm>
#include <initializer_list>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include <pxdutil/query/query_info.h>
#include <pxdutil/sessions/date_time.h>
#include <pxdutil/sessions/session.h>
#include "tests/query/everything.h"

namespace pxd::test {

// Two values of each type, to see that an absent value leaves an argument alone whatever it was.
template <class Value>
Value Sentinel(bool second) {
  if constexpr (std::is_same_v<Value, const char*>) {
    return second ? "second sentinel" : "sentinel";
  } else if constexpr (std::is_same_v<Value, std::string>) {
    return second ? "second sentinel" : "sentinel";
  } else if constexpr (std::is_same_v<Value, CZRDate>) {
    return CZRDate(static_cast<unsigned short>(second ? 12345 : 54321));
  } else if constexpr (std::is_same_v<Value, CZRTime>) {
    return CZRTime(second ? 12345U : 54321U);
  } else if constexpr (std::is_same_v<Value, ZRGS_SESSION>) {
    ZRGS_SESSION session;
    session.sessions.resize(second ? 2 : 1);
    return session;
  } else {
    return static_cast<Value>(second ? 1 : 0);
  }
}

// The text of what an accessor with an argument gives.
template <class Where, class Base, class Value>
std::string ReadGiven(const Where& where, bool (Base::*get)(Value&) const) {
  Value values[2] = {Sentinel<Value>(false), Sentinel<Value>(true)};
  if ((where.*get)(values[0])) {
    EXPECT_TRUE((where.*get)(values[1]));
    EXPECT_EQ(Print(values[0]), Print(values[1])) << "an accessor gave two values";
    return Print(values[0]);
  }
  EXPECT_FALSE((where.*get)(values[1]));
  EXPECT_EQ(Print(values[0]), Print(Sentinel<Value>(false))) << "an absent value was written";
  EXPECT_EQ(Print(values[1]), Print(Sentinel<Value>(true))) << "an absent value was written";
  return kAbsent;
}
template <class Where, class Base, class Value>
std::string ReadGiven(const Where& where, Value (Base::*get)() const) {
  return Print((where.*get)());
}
template <auto kGet, class Where>
std::string Read(const Where& where) {
  return ReadGiven(where, kGet);
}

// One condition, and what one accessor says behind it and without it.
template <class Where>
struct AccessorCase {
  int field;
  const char* value;
  std::string (*read)(const Where&);
  std::string expected;
  std::string without = kAbsent;
};

// The field ids, of all there are, that a class accepts in a condition. `plain` is an accepted
// query without conditions of its own or with few of them; `valueFor` gives a good value for any
// listed field.
template <class Query, class Builder, class ValueFor>
std::vector<int> AcceptedFields(Builder plain, ValueFor valueFor) {
  std::vector<int> accepted;
  const auto count = plain->dwConditionCount;
  for (int field = 0; field <= 0xFFFF; ++field) {
    plain->dwConditionCount = count;
    plain.Where(field, valueFor(field));
    Query query;
    if (query.Create(plain) != 0) {
      accepted.push_back(field);
    }
  }
  return accepted;
}

}  // namespace pxd::test

#endif
