#include "command_line.h"
#include "streams.h"

int main(int argc, char** argv) {
  pxd::tool::KeepLineEnds();
  return pxd::tool::RunCommandLine(argc, argv);
}
