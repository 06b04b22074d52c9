// The writing of the catalogue file: the built-in lines, the check of a file that is there, and its
// replacement.
#include <algorithm>
#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include <pxdutil/fields/detail/builtin_catalogue.h>
#include <pxdutil/fields/field_info_mgr.h>
#include <pxdutil/foundation/fault.h>
#include <pxdutil/foundation/file.h>
#include <pxdutil/foundation/file_path.h>
#include <pxdutil/reference/toolbox.h>

namespace fs = std::filesystem;

// What the functions below need of the catalogue. They aren't friends themselves: on Windows a
// friend would lose its export.
struct pxd::detail::CatalogueInside {
  static constexpr unsigned short kVersion = CFieldInfoMgr::FIELDINFO_VERSION;
  static constexpr unsigned short kRows = CFieldInfoMgr::FIELDINFO_MAXID;

  static void RemoveRow(CFieldInfoMgr& catalogue, std::size_t id) {
    catalogue.m_vFieldInfo[id].reset();
  }
};

namespace {

using pxd::CatalogueTrailer;
using pxd::FilePath;
using pxd::FileText;
using pxd::detail::CatalogueInside;
using pxd::detail::PlainCatalogueRow;
using pxd::detail::WholeCatalogueRow;

// Behind VersionInfo: the checksum of all before it and the version, each low byte first.
constexpr std::size_t kTrailerSize = 4;

constexpr std::string_view kLineEnd = "\r\n";

void AppendRow(std::string& text, const PlainCatalogueRow& row) {
  const std::string id = std::to_string(row.id);
  text.append("{").append(row.name).append(",").append(id);
  text.append(",").append(std::to_string(static_cast<int>(row.dataType)));
  text.append(",").append(std::to_string(static_cast<int>(row.fieldType)));
  text.append(",0,0,0,0,0,0,0,{").append(id).append("},{},{}}").append(kLineEnd);
}

void AppendRow(std::string& text, const WholeCatalogueRow& row) {
  text.append(row.line).append(kLineEnd);
}

std::array<unsigned char, kTrailerSize> TrailerOf(unsigned short crc, unsigned short version) {
  std::array<unsigned char, kTrailerSize> bytes{};
  CToolBox::Word2Bytes(crc, &bytes[1], &bytes[0]);
  CToolBox::Word2Bytes(version, &bytes[3], &bytes[2]);
  return bytes;
}

// Reads until `bytes` is full; false where the file ends before.
bool ReadAll(CFile& file, unsigned char* bytes, std::size_t count) {
  return file.Read(bytes, static_cast<unsigned int>(count)) == count;
}

// The file is read in pieces: what stands in the catalogue's place may be of any size. The trailer
// comes first, since it is wrong in most files that aren't catalogues of this version.
CatalogueTrailer CheckTrailer(CFile& file, unsigned short version) {
  const std::uint64_t length = file.GetLength();
  if (length < kTrailerSize) {
    return CatalogueTrailer::kTooShort;
  }
  std::array<unsigned char, kTrailerSize> trailer{};
  file.Seek(static_cast<std::int64_t>(length - kTrailerSize), CFile::begin);
  if (!ReadAll(file, trailer.data(), trailer.size())) {
    return CatalogueTrailer::kUnreadable;
  }
  if (CToolBox::Bytes2Word(trailer[3], trailer[2]) != version) {
    return CatalogueTrailer::kOtherVersion;
  }

  file.SeekToBegin();
  unsigned short crc = pxd::kInitialCrc;
  std::array<unsigned char, 4096> piece{};
  for (std::uint64_t left = length - kTrailerSize; left > 0;) {
    const auto size = static_cast<std::size_t>(std::min<std::uint64_t>(left, piece.size()));
    if (!ReadAll(file, piece.data(), size)) {
      return CatalogueTrailer::kUnreadable;
    }
    crc =
        pxd::ContinueCrc(crc, std::string_view(reinterpret_cast<const char*>(piece.data()), size));
    left -= size;
  }
  return crc == CToolBox::Bytes2Word(trailer[1], trailer[0]) ? CatalogueTrailer::kGood
                                                             : CatalogueTrailer::kBadChecksum;
}

// A name in a folder that nothing has, for a file that is to become another; what still stands
// under it at the end is removed.
class TemporaryName {
 public:
  explicit TemporaryName(const fs::path& folder) {
    std::random_device random;
    do {
      m_path = folder / ("pxd" + std::to_string(random()) + ".tmp");
    } while (fs::exists(fs::symlink_status(m_path)));
  }
  TemporaryName(const TemporaryName&) = delete;
  TemporaryName& operator=(const TemporaryName&) = delete;
  ~TemporaryName() {
    std::error_code ignored;
    fs::remove(m_path, ignored);
  }

  [[nodiscard]] const fs::path& Path() const { return m_path; }

 private:
  fs::path m_path;
};

// Puts a file that holds `text` and `trailer` in the place of `path`, all of it or nothing. Throws
// where that can't be done.
void ReplaceFile(const char* path, const CString& text,
                 const std::array<unsigned char, kTrailerSize>& trailer) {
  fs::path target = FilePath(path);
  const fs::file_status status = fs::status(target);
  const bool exists = fs::exists(status);
  if (exists) {
    // Renaming would replace files that their owner marked as not to be written, so ask first.
    const CFile writable(path, CFile::modeReadWrite | CFile::typeBinary);
    target = fs::canonical(target);  // a link stays, and what it leads to is replaced
  }

  const TemporaryName temporary(target.parent_path());
  {
    CFile file(FileText(temporary.Path()).c_str(), CFile::modeCreate | CFile::modeReadWrite |
                                                       CFile::shareDenyWrite | CFile::typeBinary);
    file.Write(text.GetString(), static_cast<unsigned int>(text.GetLength()));
    file.Write(trailer.data(), static_cast<unsigned int>(trailer.size()));
    file.Close();
  }
  if (exists) {
    fs::permissions(temporary.Path(), status.permissions());
  }
  fs::rename(temporary.Path(), target);
}

// A text file that stands in memory.
class LinesInMemory : public CStdioFile {
 public:
  explicit LinesInMemory(const CString& text)
      : m_memory(text.GetString(), static_cast<std::size_t>(text.GetLength())) {}
  unsigned int Read(void* buffer, unsigned int count) override {
    return m_memory.Read(buffer, count);
  }

 private:
  CMemFile m_memory;
};

}  // namespace

int CFieldInfoMgr::Create(const char* path) {
  if (path == nullptr || *path == '\0') {
    return 0;
  }
  // Devices and pipes are no place for a catalogue; one may wait forever at the first read.
  std::error_code ignored;
  if (fs::is_other(FilePath(path), ignored)) {
    return 0;
  }
  if (pxd::CheckCatalogueTrailer(path) == CatalogueTrailer::kGood) {
    return 1;
  }
  try {
    CString text;
    BuildFieldInfoFile(text);
    text += kTrailerWord;
    ReplaceFile(path, text, TrailerOf(CToolBox::CalcCRC(text), FIELDINFO_VERSION));
    return 1;
  } catch (CException* exception) {
    exception->Delete();
  } catch (...) {
    // Whatever it was, the file isn't written, and that is all the caller is told.
  }
  return 0;
}

void CFieldInfoMgr::BuildFieldInfoFile(CString& text) {
  std::string lines;
  const WholeCatalogueRow* whole = std::begin(pxd::detail::kWholeCatalogueRows);
  const WholeCatalogueRow* const wholeEnd = std::end(pxd::detail::kWholeCatalogueRows);
  for (const PlainCatalogueRow& plain : pxd::detail::kPlainCatalogueRows) {
    for (; whole != wholeEnd && whole->id < plain.id; ++whole) {
      AppendRow(lines, *whole);
    }
    AppendRow(lines, plain);
  }
  for (; whole != wholeEnd; ++whole) {
    AppendRow(lines, *whole);
  }
  text = CString(std::move(lines));
}

void pxd::LoadBuiltInCatalogue(CFieldInfoMgr& catalogue) {
  CString text;
  catalogue.BuildFieldInfoFile(text);
  LinesInMemory lines(text);
  CString error;
  std::bitset<CatalogueInside::kRows> before;
  for (unsigned short id = 0; id < CatalogueInside::kRows; ++id) {
    before[id] = catalogue.GetFieldInfo(id) != nullptr;
  }
  try {
    if (catalogue.LoadFromFile(lines, error) == 0) {
      Fault(error);
    }
  } catch (...) {
    // Rows of half a catalogue would be in the way when the host tries again.
    for (std::size_t id = 0; id < before.size(); ++id) {
      if (!before[id]) {
        CatalogueInside::RemoveRow(catalogue, id);
      }
    }
    throw;
  }
}

CatalogueTrailer pxd::CheckCatalogueTrailer(const char* path) {
  try {
    CFile file(path, CFile::modeRead | CFile::typeBinary);
    return CheckTrailer(file, CatalogueInside::kVersion);
  } catch (CFileException* exception) {
    exception->Delete();  // a file that can't be read is as good as none
    return CatalogueTrailer::kUnreadable;
  }
}
