#include "command_line.h"

int main(int argc, char** argv) {
  return pxd::tool::RunCommandLine(argc, argv);
}
