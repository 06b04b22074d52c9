// Loads stored points of one class from an archive until the bytes run out.
//
// The input's first byte picks the class by its value modulo the number of classes; the rest is the
// stored series. Each point that loads whole must take exactly the bytes of its record and store
// the same bytes again.
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include <pxdutil/datapoints/ohlc_bars.h>
#include <pxdutil/datapoints/old_bars.h>
#include <pxdutil/datapoints/plain_points.h>
#include <pxdutil/datapoints/short_bars.h>
#include <pxdutil/datapoints/ticks.h>
#include <pxdutil/fields/field_info.h>
#include <pxdutil/foundation/archive.h>
#include <pxdutil/foundation/file.h>
#include <pxdutil/sessions/resolution.h>

#include "require.h"

namespace {

using fuzz::Require;

std::vector<unsigned char> StoredForm(CObject& object) {
  CMemFile file;
  CArchive archive(&file, CArchive::store);
  object.Serialize(archive);
  archive.Close();
  return file.GetBytes();
}

// Whether the bytes are those that were read. Some machines make a signalling NaN a quiet one when
// they copy it, by one bit, so a byte may differ in that.
bool SameBytes(const std::vector<unsigned char>& stored, const unsigned char* read) {
  constexpr unsigned kQuiet = 0x40;
  for (std::size_t i = 0; i < stored.size(); ++i) {
    if (stored[i] != read[i] && stored[i] != (read[i] | kQuiet)) {
      return false;
    }
  }
  return true;
}

// Loads points until the archive ends, and stores each again.
template <class Point>
void LoadSeries(const unsigned char* data, std::size_t size) {
  CMemFile file(data, size);
  CArchive archive(&file, CArchive::load);
  std::size_t taken = 0;
  try {
    for (;;) {
      Point point;
      point.Serialize(archive);
      const std::vector<unsigned char> again = StoredForm(point);
      Require(again.size() <= size - taken, "a record took more bytes than there were");
      archive.Flush();  // moves the file back to the first byte that wasn't taken
      Require(file.GetPosition() == taken + again.size(),
              "a record is read and written at different lengths");
      Require(SameBytes(again, data + taken), "a record was stored otherwise than it was loaded");
      Point second;
      CMemFile copy(again.data(), again.size());
      CArchive reload(&copy, CArchive::load);
      second.Serialize(reload);
      Require(StoredForm(second) == again, "a record came back changed");
      taken += again.size();
      if (again.empty()) {
        return;  // a class that stores nothing
      }
    }
  } catch (CArchiveException* e) {
    Require(e->m_cause == CArchiveException::endOfFile, "an archive failed without reason");
    e->Delete();
  }
}

// Rows of the catalogue, which are read in a fuller form than they are written.
template <class Row>
void LoadRow(const unsigned char* data, std::size_t size) {
  CMemFile file(data, size);
  CArchive archive(&file, CArchive::load);
  Row row;
  try {
    row.Serialize(archive);
  } catch (CArchiveException* e) {
    Require(e->m_cause == CArchiveException::endOfFile, "an archive failed without reason");
    e->Delete();
  }
}

using Loader = void (*)(const unsigned char*, std::size_t);
constexpr std::array<Loader, 14> kLoaders = {
    &LoadSeries<CDPTDblTick>,        &LoadSeries<CDPTDblDblTick>,
    &LoadSeries<CDPCDblC>,           &LoadSeries<CDPCDblDblC>,
    &LoadSeries<CDPCDblDblH>,        &LoadSeries<CDPCDblDblL>,
    &LoadSeries<CDPCDblOHLCUDUT>,    &LoadSeries<CDPCDblOHLCUDUTO>,
    &LoadSeries<CDPCDblOHLCUDUTOld>, &LoadSeries<CDPCDblOHLCUDUTOOld>,
    &LoadSeries<CDPOptDaily>,        &LoadSeries<CDPCnv>,
    &LoadRow<CStorageSetting>,       &LoadRow<CZRGSFieldInfo>,
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 0) {
    kLoaders[data[0] % kLoaders.size()](data + 1, size - 1);
  }
  return 0;
}
