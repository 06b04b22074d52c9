#include "failure.h"

#include <cstring>
#include <system_error>

namespace pxd::tool {

std::string WordsOf(CException* exception) {
  char words[512];
  exception->GetErrorMessage(words, sizeof words);
  std::string text = words;
  if (exception->IsKindOf(RUNTIME_CLASS(CFileException))) {
    const auto* failed = static_cast<CFileException*>(exception);
    const std::string path = failed->m_strFileName.Str() + ": ";
    if (text.starts_with(path)) {
      text.erase(0, path.size());
    }
  }
  exception->Delete();
  return text;
}

std::string WordsOf(int error) {
  return std::generic_category().message(error);
}

}  // namespace pxd::tool
