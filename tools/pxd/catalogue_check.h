// What is wrong with a catalogue file, for the person who edits or ships it.
#ifndef PXDUTIL_TOOLS_PXD_CATALOGUE_CHECK_H
#define PXDUTIL_TOOLS_PXD_CATALOGUE_CHECK_H

#include <string>
#include <string_view>

namespace pxd::tool {

struct CatalogueVerdict {
  bool isGood = false;
  // One line: what is wrong and where, or what the file holds.
  std::string words;
};

// Checks the file's lines, its checksum and its version. `builtIn` are the lines of the built-in
// catalogue, for where an edited file leaves them. Other catalogues of the process are forgotten
// (CFieldInfoMgr::m_pInstance).
CatalogueVerdict CheckCatalogue(const std::string& path, std::string_view builtIn);

}  // namespace pxd::tool

#endif
