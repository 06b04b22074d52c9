// pxd::TypedValues: what the conditions of a query come to, in words.
//
//   if (const auto values = pxd::TypedValues(info)) {
//     for (const pxd::QueryValue& value : *values) std::cout << value.name << ": " << value.value;
//   }
//
// It serves people and logs; a program reads the values from the query classes themselves.
#ifndef PXDUTIL_QUERY_QUERY_VALUES_H
#define PXDUTIL_QUERY_QUERY_VALUES_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <pxdutil/foundation/export.h>
#include <pxdutil/query/query_info.h>

namespace pxd {

// One typed value of a query's WHERE clause.
struct QueryValue {
  std::uint16_t field = 0;  // the id of the field whose condition sets it
  std::string name;         // what it is, as its accessor is called: "num bars back"
  // A number in decimal, a flag as yes or no, a date as MM/DD/YYYY, a time as HH:MM:SS (both empty
  // where they are null), a calendar in its machine text form, and text as it is.
  std::string value;

  friend bool operator==(const QueryValue&, const QueryValue&) = default;
};

// Builds the query with the class that its source is meant for, and gives the values that the
// conditions set, in the order of their fields. A value that an accessor always gives is listed
// where it has a condition. Nothing where the class refuses the query or there is none. Safe to
// call from any thread.
[[nodiscard]] PXDUTIL_API std::optional<std::vector<QueryValue>> TypedValues(
    const QUERY_INFO& info);

}  // namespace pxd

#endif
