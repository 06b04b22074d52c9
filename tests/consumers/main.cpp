// What a user's first program does: every public header, one object, one exported function.
#include <cstdio>
#include <cstring>

#include <pxdutil/pxdutil.h>

int main(int argc, char** argv) {
  if (argc != 2 || std::strcmp(argv[1], PXDUTIL_VERSION) != 0) {
    std::fprintf(stderr, "the headers say version %s\n", PXDUTIL_VERSION);
    return 1;
  }
  InitPXDUtilDll();

  CMemFile file;
  CArchive out(&file, CArchive::store);
  out << CString("bars");
  out.Close();
  return file.GetLength() == 5 ? 0 : 1;
}
