// Query texts by the thousand: written from random records, and wild.
#ifndef PXDUTIL_TESTS_QUERY_QUERY_TEXTS_H
#define PXDUTIL_TESTS_QUERY_QUERY_TEXTS_H

#include <cstddef>
#include <memory>
#include <random>
#include <string>

#include <pxdutil/query/query_info.h>

namespace pxd::test {

using Random = std::mt19937;

// A whole number from `first` to `last`, the same on every platform for the same seed.
[[nodiscard]] inline unsigned Pick(Random& random, unsigned first, unsigned last) {
  return first + static_cast<unsigned>(random() % (static_cast<std::uint64_t>(last) - first + 1));
}

// A record that a text can say and that passes every check.
[[nodiscard]] std::unique_ptr<QUERY_INFO> RandomQuery(Random& random);

// The text of such a record. Blanks stand between its tokens at random, and where they needn't
// stand they may be missing.
[[nodiscard]] std::string WriteQuery(const QUERY_INFO& info, Random& random);

// A row of random tokens, most of them tokens of the language.
[[nodiscard]] std::string TokenSoup(Random& random);

// The text with a few of its characters or tokens changed, doubled, moved or taken out.
[[nodiscard]] std::string Mutated(std::string text, Random& random);

}  // namespace pxd::test

#endif
