# How every target of this tree is compiled. Nothing here touches global flags, so a project that
# takes pxdutil in through add_subdirectory keeps its own.

# Private settings of our own targets: the language, and the warnings where a developer asked for
# them to be errors.
function(pxdutil_own target)
  target_compile_features(${target} PRIVATE cxx_std_20)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    POSITION_INDEPENDENT_CODE ON)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 /permissive-)
  else()
    target_compile_options(${target} PRIVATE
      -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast
      -Wnon-virtual-dtor -Wcast-align -Wcast-qual -Wnull-dereference -Wdouble-promotion -Wformat=2
      -Wundef -Wextra-semi)
  endif()
  # Nobody replaces single functions of the shared library at load time, so they may be inlined
  # into one another like those of any other code.
  if(NOT MSVC)
    target_compile_options(${target} PRIVATE -fno-semantic-interposition)
  endif()
  # At -O3, GCC 12 takes the standard library's own joining of texts for overlapping copies.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-Wno-restrict>)
  endif()
  # Bars must come out the same on every target, and the old floating-point unit of 32-bit x86 keeps
  # more digits than a float has.
  if(NOT MSVC AND CMAKE_SIZEOF_VOID_P EQUAL 4 AND CMAKE_SYSTEM_PROCESSOR MATCHES "x86|i[3-6]86|AMD64")
    target_compile_options(${target} PRIVATE -msse2 -mfpmath=sse)
  endif()
  # A program for Windows brings the compiler's runtime in itself and starts on a bare system.
  get_target_property(type ${target} TYPE)
  if(MINGW AND type STREQUAL "EXECUTABLE")
    target_link_options(${target} PRIVATE -static)
  endif()
  if(PXDUTIL_DEVELOPER)
    if(MSVC)
      target_compile_options(${target} PRIVATE /WX)
    else()
      target_compile_options(${target} PRIVATE -Werror)
    endif()
  endif()
endfunction()

# The sources of one room of the library; called from that room's CMakeLists.txt.
function(pxdutil_room_sources)
  foreach(source IN LISTS ARGN)
    target_sources(pxdutil_objects PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}/${source}")
  endforeach()
endfunction()
