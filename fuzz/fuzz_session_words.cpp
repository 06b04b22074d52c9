// Reads a week of sessions as a person writes it. What is taken must be a valid calendar that comes
// back from its own words and from its machine form; what is refused must be explained.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <tools/pxd/session_words.h>

#include "require.h"

using fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace pxd::tool;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  ZRGS_SESSION rough;
  std::string roughError;
  const bool isRough = ReadRoughSessions(text, rough, roughError);
  Require(isRough == roughError.empty(), "a refused list wasn't explained");

  ZRGS_SESSION week;
  std::string error;
  if (!ReadSessions(text, week, error)) {
    Require(!error.empty(), "a refused week wasn't explained");
    Require(error.find('\n') == std::string::npos, "an error took more than a line");
    return 0;
  }
  Require(CZRGSSession::IsValid(week) != 0, "an invalid week was taken");
  const std::string machine = MachineText(week);
  Require(isRough && MachineText(rough) == machine, "the same text was read in two ways");
  ZRGS_SESSION again;
  Require(ReadSessions(machine, again, error), "a week's machine form was refused");
  Require(MachineText(again) == machine, "a week changed on its way through the machine form");
  Require(!WeekText(week).empty(), "a week has no words");
  return 0;
}
