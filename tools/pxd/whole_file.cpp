#include "whole_file.h"

#include <fmt/format.h>

#include <filesystem>
#include <random>
#include <system_error>

#include <pxdutil/foundation/file_path.h>

namespace pxd::tool {
namespace {

namespace fs = std::filesystem;

std::string BesideName(const std::string& target) {
  return fmt::format("{}.{:08x}.part", target, std::random_device()());
}

}  // namespace

WholeFile::WholeFile(const std::string& path) : m_path(path), m_target(path) {
  std::error_code error;
  const fs::file_status status = fs::status(FilePath(path), error);
  if (fs::is_directory(status)) {
    throw Failure(kExitBadData, path + ": is a directory; expected a file to write");
  }
  const bool isNew = !fs::exists(status);
  if (isNew || fs::is_regular_file(status)) {
    // Moving a file over a link would replace the link and not what it points to.
    const fs::path asked = FilePath(path);
    const fs::path real = isNew ? asked : fs::canonical(asked, error);
    m_target = error && !isNew ? path : FileText(real);
    m_beside = BesideName(m_target);
  }
  CFileException failed;
  const std::string& written = m_beside.empty() ? m_target : m_beside;
  if (m_file.Open(written.c_str(), CFile::modeWrite | CFile::modeCreate | CFile::typeBinary,
                  &failed) == 0) {
    m_beside.clear();
    Fail(WordsOf(new CFileException(failed.m_cause)));
  }
}

WholeFile::~WholeFile() {
  if (m_finished || m_beside.empty()) {
    return;
  }
  try {
    m_file.Close();
  } catch (CException* exception) {
    exception->Delete();  // the file goes away
  }
  std::error_code error;
  fs::remove(FilePath(m_beside), error);
}

void WholeFile::Write(std::string_view text) {
  Guarded([&] { m_file.Write(text.data(), static_cast<unsigned int>(text.size())); });
}

void WholeFile::Finish() {
  Guarded([this] { m_file.Close(); });
  if (!m_beside.empty()) {
    std::error_code error;
    fs::rename(FilePath(m_beside), FilePath(m_target), error);
    if (error) {
      Fail(error.message());
    }
  }
  m_finished = true;
}

void WholeFile::FailWith(CException* exception) const {
  // The exception names the file beside, not the one that was asked for.
  if (exception->IsKindOf(RUNTIME_CLASS(CFileException))) {
    static_cast<CFileException*>(exception)->m_strFileName.Empty();
  }
  Fail(WordsOf(exception));
}

void WholeFile::Fail(const std::string& words) const {
  throw Failure(kExitBadData, fmt::format("{}: can't be written: {}", m_path, words));
}

}  // namespace pxd::tool
