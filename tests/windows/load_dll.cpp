// load_dll NAME: loads the library as a host does that knows no more than the name of its entry.
#include <windows.h>

#include <cstdio>

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("expected the name of a DLL\n", stderr);
    return 2;
  }
  const HMODULE module = LoadLibraryA(argv[1]);
  if (module == nullptr) {
    std::fprintf(stderr, "%s doesn't load: error %lu\n", argv[1], GetLastError());
    return 1;
  }
  // Through void*, since no function has the type that FARPROC claims.
  void* const address = reinterpret_cast<void*>(GetProcAddress(module, "InitPXDUtilDll"));
  if (address == nullptr) {
    std::fprintf(stderr, "%s exports no InitPXDUtilDll\n", argv[1]);
    return 1;
  }
  reinterpret_cast<void (*)()>(address)();
  reinterpret_cast<void (*)()>(address)();
  return FreeLibrary(module) != 0 ? 0 : 1;
}
