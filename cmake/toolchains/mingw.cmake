# Windows from Debian: MinGW-w64 with POSIX threads, x86-64 or, with -DPXDUTIL_MINGW=i686, 32 bits.
#
# Debian has no Windows builds of fmt, CLI11 and nlohmann-json. Their headers are all that pxd needs, so
# they are linked into a folder of their own here: the rest of /usr/include is another system's.
set(CMAKE_SYSTEM_NAME Windows)
set(PXDUTIL_MINGW "x86_64" CACHE STRING "The processor: x86_64 or i686")
set_property(CACHE PXDUTIL_MINGW PROPERTY STRINGS x86_64 i686)
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES PXDUTIL_MINGW)
set(CMAKE_SYSTEM_PROCESSOR "${PXDUTIL_MINGW}")

set(pxdutil_triple "${PXDUTIL_MINGW}-w64-mingw32")
set(CMAKE_C_COMPILER "${pxdutil_triple}-gcc-posix")
set(CMAKE_CXX_COMPILER "${pxdutil_triple}-g++-posix")
set(CMAKE_RC_COMPILER "${pxdutil_triple}-windres")

set(CMAKE_FIND_ROOT_PATH "/usr/${pxdutil_triple}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)  # also where CMAKE_PREFIX_PATH says
