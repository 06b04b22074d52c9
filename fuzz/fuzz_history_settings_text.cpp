// Reads pairs, lines and tables of history settings from text, in every form.
//
// The input's first byte picks the form by its value modulo 6, four known and two unknown; the rest
// is the text. What a table takes from it must come back from the table's own text.
#include <cstddef>
#include <cstdint>

#include <pxdutil/history/history_settings.h>

#include "history_catalogue.h"
#include "require.h"

namespace {

using fuzz::Require;

// Whether a pair's text reads back as that pair: a reader repairs the unit and the quantity, and
// only fields with an entry have a text.
bool IsPlain(const CFieldResoln& pair) {
  const CResoln resoln = pair.GetResoln();
  return resoln.GetResolnQty() != 0 && resoln.GetResolnUnit() >= 1 && resoln.GetResolnUnit() <= 8;
}

void ReadPair(const CString& text, StringFormat format) {
  CFieldResoln pair;
  const int known = pair.SetString(text, format);
  Require(known == (format <= StringFormatBracketed ? 1 : 0), "a form is known or it isn't");
  Require(format == StringFormatMachine || pair == CFieldResoln(), "a form for people was read");
  if (!fuzz::HasEntry(pair)) {
    return;
  }
  Require(pair.GetString(format).GetLength() <= 299, "a pair's text is too long");
  CFieldResoln again;
  again.SetString(pair.GetString(StringFormatMachine), StringFormatMachine);
  Require(again == pair || !IsPlain(pair), "a pair came back changed");
}

void ReadLine(const CString& text, StringFormat format) {
  CFieldHistorySetting line;
  line.SetString(text, format);
  if (!fuzz::HasEntry(line.GetFieldResoln())) {
    return;
  }
  CFieldHistorySetting again;
  again.SetString(line.GetString(StringFormatMachine), StringFormatMachine);
  Require(again == line || !IsPlain(line.GetFieldResoln()), "a line came back changed");
}

void ReadTable(const CString& text, StringFormat format) {
  CHistorySettings settings;
  Require(settings.SetString(text, format) == 0, "reading a table reports nothing");
  Require(settings.GetCount() >= 0 && settings.GetCount() <= 30, "a table has up to 30 lines");
  const CHistorySettings before = settings;
  settings.SetString(text, format);
  Require(settings == before, "a text read twice added something new");
  fuzz::DropLinesWithoutEntry(settings);
  bool isPlain = true;
  for (int i = 0; i < settings.GetCount(); ++i) {
    isPlain = isPlain && IsPlain(settings.GetSetting(i).GetFieldResoln());
  }
  static_cast<void>(settings.GetString(format, true));
  CHistorySettings again;
  again.SetString(settings.GetString(StringFormatMachine, false), StringFormatMachine);
  Require(again == settings || !isPlain, "a table came back changed");
  settings.SortSettings();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::LoadCatalogue();
  if (size > 0) {
    const auto format = static_cast<StringFormat>(data[0] % 6);
    const CString text(reinterpret_cast<const char*>(data + 1), static_cast<int>(size - 1));
    ReadPair(text, format);
    ReadLine(text, format);
    ReadTable(text, format);
  }
  return 0;
}
