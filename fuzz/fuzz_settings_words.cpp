// Reads history settings as hosts and people write them. What is taken must come back from its own
// machine form; what is refused must be explained in one line.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <tools/pxd/settings_words.h>

#include "require.h"

namespace {

using fuzz::Require;
using namespace pxd::tool;

void RequireExplained(const std::string& error) {
  Require(!error.empty(), "a refused text wasn't explained");
  Require(error.find('\n') == std::string::npos, "an error took more than a line");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const BuiltInCatalogue catalogue;
  const std::string_view text(reinterpret_cast<const char*>(data), size);

  SettingsText settings;
  std::string error;
  if (ReadSettings(catalogue, text, settings, error)) {
    for (const CFieldHistorySetting& line : settings.lines) {
      const std::string machine = line.GetString(StringFormatMachine).Str();
      SettingsText again;
      Require(ReadSettings(catalogue, machine, again, error), "a line's own form was refused");
      Require(again.lines.size() == 1 && again.lines[0] == line && again.notes.empty(),
              "a line changed on its way through its own form");
    }
  } else {
    RequireExplained(error);
  }

  CFieldHistorySetting line;
  if (!ReadSetting(catalogue, text, line, error)) {
    RequireExplained(error);
  }
  CFieldResoln pair;
  if (!ReadPair(catalogue, text, pair, error)) {
    RequireExplained(error);
  }
  return 0;
}
