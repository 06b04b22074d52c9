# Run by cpack ahead of packing: Debian has manual pages and changelogs compressed. Without the time and
# the name in them the same files give the same bytes.
file(GLOB_RECURSE pages LIST_DIRECTORIES FALSE "${CPACK_TEMPORARY_DIRECTORY}/*")
list(FILTER pages INCLUDE REGEX "(/man/man1/[^/]*\\.1|/share/doc/[^/]*/changelog\\.Debian)$")
foreach(page IN LISTS pages)
  execute_process(COMMAND gzip -9nf "${page}" COMMAND_ERROR_IS_FATAL ANY)
endforeach()
