#include "series_file.h"

#include <fmt/format.h>

#include <filesystem>
#include <system_error>

#include <pxdutil/datapoints/ohlc_bars.h>
#include <pxdutil/datapoints/old_bars.h>
#include <pxdutil/foundation/file_path.h>

#include "failure.h"
#include "resolution_words.h"

namespace pxd::tool {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void FailWith(const std::string& path, const std::string& what) {
  throw Failure(kExitBadData, fmt::format("{}: {}", path, what));
}

}  // namespace

std::unique_ptr<CDPDataPt> MakePoint(const CFieldResoln& pair) {
  std::unique_ptr<CDPDataPt> point(pair.CreateDataPt());
  if (point == nullptr || StoredSize(*point) == 0) {
    throw Failure(kExitBadUsage,
                  fmt::format("--field: nothing is stored of \"{}\"; expected a record, such as "
                              "\"Trade Record\"",
                              pair.GetString(StringFormatPlain).GetString()));
  }
  return point;
}

std::unique_ptr<CDPDataPt> MakeOldPoint(const CDPDataPt& point) {
  if (point.IsKindOf(RUNTIME_CLASS(CDPCDblOHLCUDUTO)) != 0) {
    return std::make_unique<CDPCDblOHLCUDUTOOld>();
  }
  if (point.IsKindOf(RUNTIME_CLASS(CDPCDblOHLCUDUT)) != 0) {
    return std::make_unique<CDPCDblOHLCUDUTOld>();
  }
  return nullptr;
}

std::uint64_t StoredSize(CDPDataPt& point) {
  CMemFile file;
  CArchive archive(&file, CArchive::store);
  point.Serialize(archive);
  archive.Close();
  return file.GetLength();
}

SeriesWriter::SeriesWriter(const std::string& path) : m_file(path) {
  m_archive.emplace(&m_file.File(), CArchive::store);
}

void SeriesWriter::Append(CDPDataPt& point) {
  m_file.Guarded([&] { point.Serialize(*m_archive); });
}

void SeriesWriter::Finish() {
  m_file.Guarded([this] { m_archive->Close(); });
  m_file.Finish();
}

SeriesReader::SeriesReader(const std::string& path, const CFieldResoln& pair, bool old)
    : m_path(path), m_pair(pair), m_point(MakePoint(pair)) {
  if (old) {
    m_old = MakeOldPoint(*m_point);
    if (m_old == nullptr) {
      throw Failure(kExitBadUsage,
                    "ticks have no old format; expected --old with a resolution of "
                    "bars");
    }
  }
  std::error_code error;
  const fs::file_status status = fs::status(FilePath(path), error);
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    FailWith(path, fs::is_directory(status) ? "is a directory; expected a stored series"
                                            : "is no regular file; expected a stored series");
  }
  CFileException failed;
  if (m_file.Open(path.c_str(), CFile::modeRead | CFile::typeBinary, &failed) == 0) {
    FailWith(path, "can't be read: " + WordsOf(new CFileException(failed.m_cause)));
  }
  m_recordSize = StoredSize(old ? *m_old : *m_point);
  m_records = m_file.GetLength() / m_recordSize;
  m_rest = m_file.GetLength() % m_recordSize;
  m_archive.emplace(&m_file, CArchive::load);
}

CDPDataPt* SeriesReader::Next() {
  if (m_read == m_records) {
    return nullptr;
  }
  try {
    if (m_old != nullptr) {
      m_old->Serialize(*m_archive);
      m_point->SetEqualTo(m_old.get());
    } else {
      m_point->Serialize(*m_archive);
    }
  } catch (CException* exception) {
    // The file became shorter meanwhile, or the disk failed.
    FailWith(m_path, fmt::format("can't be read behind record {}: {}", m_read, WordsOf(exception)));
  }
  ++m_read;
  return m_point.get();
}

std::string SeriesReader::WhatIsCutShort() const {
  if (m_rest == 0) {
    return {};
  }
  return fmt::format(
      "{}: the file ends inside a record: {} bytes behind {} whole ones; expected records of {} "
      "bytes, as {}{} has",
      m_path, m_rest, m_records, m_recordSize, ResolutionText(m_pair.GetResoln()),
      m_old != nullptr ? " in the old format" : "");
}

}  // namespace pxd::tool
