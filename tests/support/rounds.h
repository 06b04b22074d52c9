// How often a test goes round that makes up its inputs.
#ifndef PXDUTIL_TESTS_SUPPORT_ROUNDS_H
#define PXDUTIL_TESTS_SUPPORT_ROUNDS_H

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define PXDUTIL_TESTS_ARE_SANITIZED 1
#endif
#elif defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define PXDUTIL_TESTS_ARE_SANITIZED 1
#endif

namespace pxd::test {

// As many as are given, or a tenth of them under a sanitizer, where each takes ten times as long
// and the fuzz targets go further anyway. Use it also for what the rounds must at least have met.
template <class Number>
constexpr Number Rounds(Number all) {
#if defined(PXDUTIL_TESTS_ARE_SANITIZED)
  return all / 10;
#else
  return all;
#endif
}

}  // namespace pxd::test

#endif
