// Loads pairs, tables and templates of history settings from an archive, and works with what comes.
//
// The input's first byte picks the class by its value modulo 3. A table that loads whole must store
// the same bytes again, and every operation on it must keep to its 30 lines.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include <pxdutil/datapoints/data_point.h>
#include <pxdutil/foundation/archive.h>
#include <pxdutil/foundation/file.h>
#include <pxdutil/quotes/quote.h>

#include "history_catalogue.h"
#include "require.h"

namespace {

using fuzz::Require;

template <class T>
std::vector<unsigned char> StoredForm(T& object) {
  CMemFile file;
  CArchive archive(&file, CArchive::store);
  object.Serialize(archive);
  archive.Close();
  return file.GetBytes();
}

// Whether `object` loads whole.
template <class T>
bool Load(T& object, const std::uint8_t* data, std::size_t size) {
  CMemFile file(data, size);
  CArchive archive(&file, CArchive::load);
  try {
    object.Serialize(archive);
    return true;
  } catch (CArchiveException* e) {
    Require(e->m_cause == CArchiveException::endOfFile, "an archive failed without reason");
    e->Delete();
    return false;
  }
}

void UsePair(const CFieldResoln& pair) {
  if (!fuzz::HasEntry(pair)) {
    return;
  }
  int kind = 0;
  static_cast<void>(pair.HasOHLC() + pair.HasPrice() + pair.HasVolume(kind));
  const std::unique_ptr<CDPDataPt> point(pair.CreateDataPt());
  Require(point == nullptr || point->IsNull() == 1, "a fresh point isn't null");
  CFieldResoln::DeleteDataPtArray(pair.CreateDataPtArray(pair.GetResoln().GetResolnQty() % 5));
}

// Writes a quote that has every field needed, into a buffer of just `size` bytes.
void WriteQuote(const CHistorySettings& settings, unsigned int size) {
  CZRGSQuote::Init();
  {
    CZRGSQuote quote;
    for (unsigned short id = 0; id < 522; ++id) {
      if (settings.IsFieldIDNeededForHistory(id) != 0) {
        quote.AddFieldDouble(3, id, id);
      }
    }
    std::vector<unsigned char> buffer(size);
    const unsigned int used = settings.BuildQuoteFileData(quote, buffer.data(), size);
    Require(used == 0 || (used < size && (used - 8) % 11 == 0), "a record of odd length");
  }
  CZRGSQuote::UnInit();
}

// Edits a copy of the table by its own bytes.
void UseTable(const CHistorySettings& loaded) {
  CHistorySettings settings = loaded;
  Require(settings == loaded, "a copy differs");

  const ZRGS_HISTORY_SETTINGS bytes = loaded;
  const int hostBits = bytes.bCount & 7;
  for (int i = 0; i < loaded.GetCount(); ++i) {
    const CFieldHistorySetting line = loaded.GetSetting(i);
    UsePair(line.GetFieldResoln());
    switch (line.GetNumDays() % 4) {
      case 0:
        settings.AddSetting(line);
        break;
      case 1:
        settings.ChangeSettings(line.GetNumDays() % 40 - 5, line);
        break;
      case 2:
        settings.RemoveSettings(line.GetNumDays() % 40 - 5);
        break;
      default:
        settings.CreateDefaultSettings(static_cast<unsigned char>(line.GetNumDays() % 10));
        break;
    }
    Require(settings.GetCount() >= 0 && settings.GetCount() <= 30, "a table has up to 30 lines");
  }
  Require((ZRGS_HISTORY_SETTINGS(settings).bCount & 7) == hostBits, "the host's bits changed");

  WriteQuote(settings, bytes.settings[0].wNumDays % 600U);

  fuzz::DropLinesWithoutEntry(settings);
  settings.SortSettings();
  static_cast<void>(settings.GetString(StringFormatPlain, false));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::LoadCatalogue();
  if (size == 0) {
    return 0;
  }
  switch (data[0] % 3) {
    case 0: {
      CFieldResoln pair;
      if (Load(pair, data + 1, size - 1)) {
        UsePair(pair);
        Require(StoredForm(pair).size() == 7, "a stored pair has 7 bytes");
      }
      break;
    }
    case 1: {
      CHistorySettings settings;
      if (Load(settings, data + 1, size - 1)) {
        const std::vector<unsigned char> again = StoredForm(settings);
        Require(again.size() == 242 && std::equal(again.begin() + 1, again.end(), data + 2),
                "a table came back changed");
        UseTable(settings);
      }
      break;
    }
    default: {
      CHistorySettingsTemplate saved;
      if (Load(saved, data + 1, size - 1)) {
        CHistorySettingsTemplate copy;
        copy = saved;
        Require(StoredForm(copy) == StoredForm(saved), "a copied template differs");
        UseTable(*saved.GetHistSettings());
      }
      break;
    }
  }
  return 0;
}
