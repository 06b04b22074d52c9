// The value of a condition, read as what its field means. A value always arrives as text.
#ifndef PXDUTIL_QUERY_DETAIL_CONDITION_VALUE_H
#define PXDUTIL_QUERY_DETAIL_CONDITION_VALUE_H

#include <cstdint>
#include <string>
#include <string_view>

#include <pxdutil/query/detail/query_numbers.h>
#include <pxdutil/query/query_info.h>
#include <pxdutil/sessions/date_time.h>

namespace pxd::detail {

// Looks into the condition, so it must not outlive it.
class ConditionValue {
 public:
  // A value without its NUL ends with its array.
  explicit ConditionValue(const QUERY_CONDITION& condition);

  // Ends in a NUL.
  [[nodiscard]] const char* Text() const { return m_text.data(); }
  [[nodiscard]] bool IsEmpty() const { return m_text.empty(); }
  [[nodiscard]] long long Integer() const { return ReadInteger(m_text); }
  [[nodiscard]] float Float() const { return ReadFloat(m_text); }
  [[nodiscard]] bool IsNonzero() const { return Integer() != 0; }
  // False, with `out` as it was, where the text is no date or time.
  bool ReadDate(CZRDate& out) const { return out.SetDate(Text()) != 0; }
  bool ReadTime(CZRTime& out) const { return out.SetTime(Text(), 0, 0) != 0; }
  [[nodiscard]] std::uint32_t Operator() const { return m_operator; }

 private:
  std::string m_whole;  // only holds what had no NUL
  std::string_view m_text;
  std::uint32_t m_operator;
};

}  // namespace pxd::detail

#endif
