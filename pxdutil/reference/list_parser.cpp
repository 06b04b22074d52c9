#include <pxdutil/reference/list_parser.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace {

constexpr int kSuccess = 0;
constexpr int kFailure = 1;

}  // namespace

int CStrListParser::Parse(const CString& text) {
  RemoveAll();
  const std::string_view view = text;
  if (view.empty() || view.front() != m_open || view.back() != m_close) {
    return kFailure;
  }

  std::size_t depth = 0;
  std::size_t start = 0;  // the bracket or separator in front of the current item
  const auto add_item = [&](std::size_t end) {
    AddTail(CString(std::string(view.substr(start + 1, end - start - 1))));
  };
  for (std::size_t i = 0; i < view.size(); ++i) {
    if (view[i] == m_open) {
      ++depth;
    } else if (view[i] == m_close) {
      if (depth == 0) {
        return kFailure;
      }
      --depth;
      // The last item has no separator behind it. Two brackets alone hold no item, not an empty
      // one.
      if (depth == 0 && i == view.size() - 1 && i != 1) {
        add_item(i);
      }
    } else if (view[i] == m_separator && depth == 1) {
      add_item(i);
      start = i;
    }
  }
  return depth == 0 ? kSuccess : kFailure;
}
