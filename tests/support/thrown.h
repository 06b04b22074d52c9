// Exceptions here are thrown by pointer; this catches one and owns it.
//
//   const auto error = pxd::test::ThrownBy<CArchiveException>([&] { archive >> value; });
//   ASSERT_NE(error, nullptr);
//   EXPECT_EQ(error->m_cause, CArchiveException::endOfFile);
#ifndef PXDUTIL_TESTS_SUPPORT_THROWN_H
#define PXDUTIL_TESTS_SUPPORT_THROWN_H

#include <memory>

#include <pxdutil/foundation/exception.h>

namespace pxd::test {

struct DeleteException {
  void operator()(CException* e) const { e->Delete(); }
};

// The E that `action` throws, null where it throws nothing. Anything else passes through.
template <class E, class Action>
[[nodiscard]] std::unique_ptr<E, DeleteException> ThrownBy(Action&& action) {
  try {
    action();
  } catch (E* e) {
    return std::unique_ptr<E, DeleteException>(e);
  }
  return nullptr;
}

}  // namespace pxd::test

#endif
