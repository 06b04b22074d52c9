# Installs a build into an empty folder, so that nothing of an older one is taken for its own.
cmake_minimum_required(VERSION 3.22)
file(REMOVE_RECURSE "${PREFIX}")
execute_process(COMMAND ${CMAKE_COMMAND} --install "${BUILD}" --prefix "${PREFIX}"
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
