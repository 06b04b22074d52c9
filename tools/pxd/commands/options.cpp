#include "commands.h"

#include "../failure.h"
#include "../resolution_words.h"
#include "../session_words.h"

namespace pxd::tool {

ZRGS_SESSION SessionsOption(const std::string& option, const std::string& text) {
  ZRGS_SESSION week;
  std::string error;
  if (!ReadSessions(text, week, error)) {
    throw Failure(kExitBadUsage, option + ": " + error);
  }
  return week;
}

CResoln ResolutionOption(const std::string& text) {
  CResoln resolution;
  std::string error;
  if (!ReadResolution(text, resolution, error)) {
    throw Failure(kExitBadUsage, "--resolution: " + error);
  }
  return resolution;
}

}  // namespace pxd::tool
