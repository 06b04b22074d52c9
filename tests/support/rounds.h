// How often a test goes round that makes up its inputs.
#ifndef PXDUTIL_TESTS_SUPPORT_ROUNDS_H
#define PXDUTIL_TESTS_SUPPORT_ROUNDS_H

namespace pxd::test {

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define PXDUTIL_TESTS_ARE_SANITIZED 1
#endif
#elif defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define PXDUTIL_TESTS_ARE_SANITIZED 1
#endif

// A round of what isn't optimised takes ten times as long, and some forty times under a sanitizer,
// where the fuzz targets go further anyway.
#if defined(PXDUTIL_TESTS_ARE_SANITIZED)
inline constexpr int kOneRoundOf = 40;
#elif defined(__OPTIMIZE__) || defined(_MSC_VER)
inline constexpr int kOneRoundOf = 1;
#else
inline constexpr int kOneRoundOf = 10;
#endif

// As many as are given, or a part of them where each is slow. Use it also for what the rounds must
// at least have met.
template <class Number>
constexpr Number Rounds(Number all) {
  return all / static_cast<Number>(kOneRoundOf);
}

}  // namespace pxd::test

#endif
