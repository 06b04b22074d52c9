# Compiles and runs the consumer with what pkg-config says of the installed library.
#
#   cmake -DPREFIX=... -DLIBDIR=... -DKIND=static|shared -DCXX=... -DVERSION=... -DFOLDER=... -P ...
cmake_minimum_required(VERSION 3.22)
find_program(PKG_CONFIG NAMES pkg-config pkgconf)
if(NOT PKG_CONFIG)
  message("skipped: pkg-config isn't here (scripts/setup test)")
  return()
endif()
set(ENV{PKG_CONFIG_PATH} "${PREFIX}/${LIBDIR}/pkgconfig")
set(static)
if(KIND STREQUAL "static")
  set(static --static)
endif()

function(ask out)
  execute_process(COMMAND ${PKG_CONFIG} ${ARGN} pxdutil
    OUTPUT_VARIABLE answer OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(answer UNIX_COMMAND "${answer}")
  set(${out} "${answer}" PARENT_SCOPE)
endfunction()

ask(version --modversion)
if(NOT version STREQUAL VERSION)
  message(FATAL_ERROR "pkg-config says version ${version}, expected ${VERSION}")
endif()
ask(flags ${static} --cflags)
ask(libraries ${static} --libs)
file(MAKE_DIRECTORY "${FOLDER}")
set(static_link)
if(KIND STREQUAL "static")
  set(static_link -static)
endif()
execute_process(
  COMMAND ${CXX} -std=c++20 ${flags} "${CMAKE_CURRENT_LIST_DIR}/../main.cpp" -o "${FOLDER}/consumer"
    ${static_link} ${libraries}
  COMMAND_ERROR_IS_FATAL ANY)
set(ENV{LD_LIBRARY_PATH} "${PREFIX}/${LIBDIR}")
execute_process(COMMAND "${FOLDER}/consumer" ${VERSION} ${KIND} COMMAND_ERROR_IS_FATAL ANY)
