// Stored series: records one after the other, with nothing that says of what kind they are. Reader
// and writer go by the resolution.
#ifndef PXDUTIL_TOOLS_PXD_SERIES_FILE_H
#define PXDUTIL_TOOLS_PXD_SERIES_FILE_H

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include <pxdutil/datapoints/data_point.h>
#include <pxdutil/foundation/archive.h>
#include <pxdutil/foundation/file.h>
#include <pxdutil/sessions/resolution.h>

#include "whole_file.h"

namespace pxd::tool {

// A null point of the class that stores a trade series of this resolution: CDPTDblDblTick for one
// tick, CDPCDblOHLCUDUT up to minutes, CDPCDblOHLCUDUTO for days and longer.
std::unique_ptr<CDPDataPt> MakePoint(const CResoln& resolution);
// A null point of the older format of that class; null for ticks, which have none.
std::unique_ptr<CDPDataPt> MakeOldPoint(const CResoln& resolution);

// The bytes that a point of this class takes in a file.
std::uint64_t StoredSize(CDPDataPt& point);

// Writes a series, whole or not at all. Failures are thrown as Failure.
class SeriesWriter {
 public:
  explicit SeriesWriter(const std::string& path);

  void Append(CDPDataPt& point);
  void Finish();

 private:
  WholeFile m_file;
  std::optional<CArchive> m_archive;
};

// Reads a series up to the last whole record. Failures are thrown as Failure.
class SeriesReader {
 public:
  SeriesReader(const std::string& path, const CResoln& resolution, bool old);

  // The next point, this object's and valid until the next call; null behind the last.
  CDPDataPt* Next();

  [[nodiscard]] std::uint64_t Records() const { return m_records; }
  [[nodiscard]] std::uint64_t RecordSize() const { return m_recordSize; }
  // The bytes behind the last whole record.
  [[nodiscard]] std::uint64_t Rest() const { return m_rest; }
  // A point of the class that Next gives, for its columns.
  [[nodiscard]] CDPDataPt& Point() { return *m_point; }

 private:
  std::string m_path;
  std::unique_ptr<CDPDataPt> m_point;
  std::unique_ptr<CDPDataPt> m_old;
  CFile m_file;
  std::optional<CArchive> m_archive;
  std::uint64_t m_recordSize = 0;
  std::uint64_t m_records = 0;
  std::uint64_t m_rest = 0;
  std::uint64_t m_read = 0;
};

}  // namespace pxd::tool

#endif
