// Writes what is installed beside pxd and says the same as its help: the manual page, and the
// completions of three shells. The build runs it.
#include <cstdio>
#include <exception>
#include <string>
#include <string_view>

#include "command_line.h"
#include "manual_page.h"
#include "shell_completion.h"
#include "text_target.h"

namespace {

using pxd::tool::Program;

struct Page {
  std::string_view file;
  std::string (*make)(const Program&);
};
constexpr Page kPages[] = {{"pxd.1", pxd::tool::ManualPage},
                           {"pxd.bash", pxd::tool::BashCompletion},
                           {"pxd.zsh", pxd::tool::ZshCompletion},
                           {"pxd.fish", pxd::tool::FishCompletion}};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: pxd_pages FOLDER\n", stderr);
    return 2;
  }
  try {
    const Program program = pxd::tool::PxdProgram();
    for (const Page& page : kPages) {
      const auto target =
          pxd::tool::MakeTextTarget(std::string(argv[1]) + '/' + std::string(page.file));
      target->Take(page.make(program));
      target->Finish();
    }
  } catch (const std::exception& error) {
    std::fprintf(stderr, "pxd_pages: %s\n", error.what());
    return 1;
  }
  return 0;
}
