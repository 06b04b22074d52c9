// Everything that the library stores, made from fixed values.
#ifndef PXDUTIL_TESTS_STORED_BYTES_STORED_PARTS_H
#define PXDUTIL_TESTS_STORED_BYTES_STORED_PARTS_H

#include <string>
#include <vector>

namespace stored_bytes_test {

struct Part {
  std::string name;
  std::string bytes;
};

// All kinds in the order of docs/formats.md. `folder` is where the catalogue's file may stand for a
// moment. Works with the process's node pool and catalogue, so that nobody else may.
std::vector<Part> StoredParts(const std::string& folder);

}  // namespace stored_bytes_test

#endif
