// History settings as people and hosts write them.
//
// A host's text is the library's machine form, "1:201,Trade Record,1,4,50000": a count, and of
// every line the field's id and name, the quantity, the unit code and the days. The library reads
// what it can of it; here a text is checked, and people are told what is wrong and in which line.
// People write a line as "Trade Record, 1 Day, 50000".
#ifndef PXDUTIL_TOOLS_PXD_SETTINGS_WORDS_H
#define PXDUTIL_TOOLS_PXD_SETTINGS_WORDS_H

#include <string>
#include <string_view>
#include <vector>

#include <pxdutil/history/history_settings.h>

#include "catalogue.h"

namespace pxd::tool {

// What was read, in the order of the text.
struct SettingsText {
  std::vector<CFieldHistorySetting> lines;
  // What is odd about the text and does no harm, one line each.
  std::vector<std::string> notes;
};

// Reads a text in the machine form; its count may be missing. False, with the reason in `error`,
// where a line isn't one.
bool ReadSettings(const BuiltInCatalogue& catalogue, std::string_view text, SettingsText& out,
                  std::string& error);

// Reads "FIELD, RESOLUTION, DAYS", and without the days. The field is a name or an id. False, with
// the reason in `error`, where the text is none.
bool ReadSetting(const BuiltInCatalogue& catalogue, std::string_view text,
                 CFieldHistorySetting& out, std::string& error);
bool ReadPair(const BuiltInCatalogue& catalogue, std::string_view text, CFieldResoln& out,
              std::string& error);

}  // namespace pxd::tool

#endif
