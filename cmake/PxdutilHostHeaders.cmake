# The headers of Debian's packages for a cross build, which must not see the rest of /usr/include.
#
# pxdutil_host_headers(variable name...): the folder ${variable} holds links to /usr/include/<name>.
function(pxdutil_host_headers variable)
  set(folder "${PROJECT_BINARY_DIR}/host_headers")
  file(MAKE_DIRECTORY "${folder}")
  foreach(name IN LISTS ARGN)
    if(EXISTS "/usr/include/${name}" AND NOT EXISTS "${folder}/${name}")
      file(CREATE_LINK "/usr/include/${name}" "${folder}/${name}" SYMBOLIC)
    endif()
  endforeach()
  set(${variable} "${folder}" PARENT_SCOPE)
endfunction()
