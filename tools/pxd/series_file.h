// Stored series: records one after the other, with nothing that says of what kind they are. Reader
// and writer go by the field and the resolution.
#ifndef PXDUTIL_TOOLS_PXD_SERIES_FILE_H
#define PXDUTIL_TOOLS_PXD_SERIES_FILE_H

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include <pxdutil/datapoints/data_point.h>
#include <pxdutil/foundation/archive.h>
#include <pxdutil/foundation/file.h>
#include <pxdutil/history/field_resolution.h>

#include "whole_file.h"

namespace pxd::tool {

// A null point of the class in which the library stores the field at the resolution. Failure where
// there is none. Needs the catalogue.
std::unique_ptr<CDPDataPt> MakePoint(const CFieldResoln& pair);
// A null point of the older format of the point's class; null for a class that has none.
std::unique_ptr<CDPDataPt> MakeOldPoint(const CDPDataPt& point);

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
  // With `old` the file holds records of the older format, which Next takes into the new.
  SeriesReader(const std::string& path, const CFieldResoln& pair, bool old);

  // The next point, this object's and valid until the next call; null behind the last.
  CDPDataPt* Next();

  // What is wrong with the end of the file, in one line; empty where it ends with a whole record.
  [[nodiscard]] std::string WhatIsCutShort() const;
  // A point of the class that Next gives, for its columns.
  [[nodiscard]] CDPDataPt& Point() { return *m_point; }

 private:
  std::string m_path;
  CFieldResoln m_pair;
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
