#include <pxdutil/query/detail/condition_value.h>

#include <cstddef>

namespace pxd::detail {

ConditionValue::ConditionValue(const QUERY_CONDITION& condition)
    : m_operator(condition.dwOperator) {
  const std::string_view array(condition.szValue, sizeof(condition.szValue));
  const std::size_t length = array.find('\0');
  if (length == std::string_view::npos) {
    m_whole = array;
    m_text = m_whole;
  } else {
    m_text = array.substr(0, length);
  }
}

}  // namespace pxd::detail
