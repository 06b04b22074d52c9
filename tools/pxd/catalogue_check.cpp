#include "catalogue_check.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>

#include <pxdutil/fields/field_info_mgr.h>
#include <pxdutil/foundation/file.h>

#include "failure.h"
#include "streams.h"
#include "words.h"

namespace pxd::tool {
namespace {

constexpr std::string_view kTrailerWord = "VersionInfo";
constexpr std::size_t kTrailerSize = 4;

// A catalogue is some 20 KB; what is far beyond isn't worth reading.
constexpr std::size_t kLargest = std::size_t{16} << 20;

// The number of the line, from 1, in which the first byte differs; 0 where both are equal.
std::size_t FirstDifference(std::string_view a, std::string_view b) {
  const std::size_t length = std::min(a.size(), b.size());
  const auto at = static_cast<std::size_t>(
      std::mismatch(a.begin(), a.begin() + static_cast<std::ptrdiff_t>(length), b.begin()).first -
      a.begin());
  if (at == length && a.size() == b.size()) {
    return 0;
  }
  return 1 + static_cast<std::size_t>(
                 std::count(a.begin(), a.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
}

// "FILE:3: reason" of the loader's "Line 3:reason".
std::string PlaceAndReason(const std::string& path, std::string_view error) {
  constexpr std::string_view kLine = "Line ";
  const std::size_t colon = std::min(error.find(':'), error.size());
  std::string_view reason = Trim(error.substr(std::min(colon + 1, error.size())));
  if (reason.empty()) {
    reason = "the brackets don't match";
  }
  return fmt::format("{}:{}: {}", path, error.substr(kLine.size(), colon - kLine.size()), reason);
}

}  // namespace

CatalogueVerdict CheckCatalogue(const std::string& path, std::string_view builtIn) {
  Input input(path);
  const std::string text = WholeText(input, kLargest);
  CFieldInfoMgr rows;
  CFieldInfoMgr::FieldInfoList list;
  try {
    CStdioFile file(path.c_str(), CFile::modeRead | CFile::typeText);
    CString error;
    if (rows.LoadFromFile(file, error) == 0) {
      return {false, PlaceAndReason(path, error.Str())};
    }
  } catch (CException* exception) {
    throw Failure(kExitBadData, fmt::format("{}: can't be read: {}", path, WordsOf(exception)));
  }
  rows.GetFieldInfoListAll(list);

  const std::string_view all = text;
  const std::string_view body =
      all.substr(0, all.size() - std::min(all.size(), kTrailerSize + kTrailerWord.size()));
  const std::size_t differs = FirstDifference(body, builtIn);
  if (all.substr(body.size(), kTrailerWord.size()) != kTrailerWord) {
    return {false, fmt::format("{}: doesn't end with {}, a checksum and a version; the file is cut "
                               "short, or no catalogue",
                               path, kTrailerWord)};
  }
  switch (CheckCatalogueTrailer(path.c_str())) {
    case CatalogueTrailer::kGood:
      break;
    case CatalogueTrailer::kBadChecksum:
      return {false, fmt::format("{}:{}: edited or damaged: the checksum doesn't fit; {}", path,
                                 std::max<std::size_t>(differs, 1),
                                 differs == 0 ? "the lines are the built-in ones"
                                              : "this is the first line that isn't built in")};
    case CatalogueTrailer::kOtherVersion:
      return {false, fmt::format("{}: is of another version of the catalogue", path)};
    case CatalogueTrailer::kUnreadable:
    case CatalogueTrailer::kTooShort:
      return {false, fmt::format("{}: was changed while it was read", path)};
  }
  return {true, fmt::format("{}: a good catalogue of {} fields{}", path, list.GetCount(),
                            differs == 0 ? "" : fmt::format("; line {} isn't built in", differs))};
}

}  // namespace pxd::tool
