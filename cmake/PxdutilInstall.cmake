# `cmake --install`: headers, both libraries, what find_package(pxdutil) and pkg-config read, and the
# papers. The components are runtime (the shared library), dev (what programs are built with) and
# tools (pxd; its rules stand beside it).
include(CMakePackageConfigHelpers)

set(pxdutil_package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/pxdutil")

install(TARGETS pxdutil pxdutil_static pxdutil_shared
  EXPORT pxdutilTargets
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT dev
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime NAMELINK_COMPONENT dev
  RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/pxdutil"
  DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
  COMPONENT dev
  FILES_MATCHING PATTERN "*.h")
install(EXPORT pxdutilTargets
  NAMESPACE pxdutil::
  DESTINATION "${pxdutil_package_dir}"
  COMPONENT dev)

configure_package_config_file(
  "${CMAKE_CURRENT_LIST_DIR}/pxdutilConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/pxdutilConfig.cmake"
  INSTALL_DESTINATION "${pxdutil_package_dir}")
# Before 1.0.0 a minor version may break what stood.
write_basic_package_version_file(
  "${PROJECT_BINARY_DIR}/pxdutilConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/pxdutilConfig.cmake"
  "${PROJECT_BINARY_DIR}/pxdutilConfigVersion.cmake"
  DESTINATION "${pxdutil_package_dir}"
  COMPONENT dev)

# pkg-config finds the prefix from where the file lies, so that an installed copy can be moved.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}" OR IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
  set(pxdutil_pc_prefix "${CMAKE_INSTALL_PREFIX}")
  set(pxdutil_pc_libdir "${CMAKE_INSTALL_FULL_LIBDIR}")
  set(pxdutil_pc_includedir "${CMAKE_INSTALL_FULL_INCLUDEDIR}")
else()
  file(RELATIVE_PATH pxdutil_pc_up "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
  string(REGEX REPLACE "/$" "" pxdutil_pc_up "${pxdutil_pc_up}")
  set(pxdutil_pc_prefix "\${pcfiledir}/${pxdutil_pc_up}")
  set(pxdutil_pc_libdir "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
  set(pxdutil_pc_includedir "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
set(pxdutil_pc_cflags)
set(pxdutil_pc_cflags_private)
if(WIN32)
  set(pxdutil_pc_cflags " -DPXDUTIL_SHARED")
  set(pxdutil_pc_cflags_private " -UPXDUTIL_SHARED")
endif()
configure_file("${CMAKE_CURRENT_LIST_DIR}/pxdutil.pc.in" "${PROJECT_BINARY_DIR}/pxdutil.pc" @ONLY)
if(NOT MSVC)
  install(FILES "${PROJECT_BINARY_DIR}/pxdutil.pc"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
    COMPONENT dev)
endif()

install(FILES LICENSE README.md CHANGELOG.md DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT dev)
install(DIRECTORY docs
  DESTINATION "${CMAKE_INSTALL_DOCDIR}"
  COMPONENT dev
  FILES_MATCHING PATTERN "*.md")

if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND PROJECT_IS_TOP_LEVEL)
  include(PxdutilPackages)
endif()
