# `cmake --install`: headers, both libraries, and what find_package(pxdutil) reads.
include(CMakePackageConfigHelpers)

set(pxdutil_package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/pxdutil")

install(TARGETS pxdutil pxdutil_static pxdutil_shared
  EXPORT pxdutilTargets
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/pxdutil"
  DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
  FILES_MATCHING PATTERN "*.h")
install(EXPORT pxdutilTargets NAMESPACE pxdutil:: DESTINATION "${pxdutil_package_dir}")

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
  DESTINATION "${pxdutil_package_dir}")
