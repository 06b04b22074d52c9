# `cpack` in a build folder makes three Debian packages: the shared library, what programs are built
# with, and pxd. Configure with -DCMAKE_INSTALL_PREFIX=/usr for the folders that Debian has.
set(PXDUTIL_PACKAGER "pxdutil developers <pxdutil@localhost>" CACHE STRING
  "The maintainer that the packages name: \"Name <address>\"")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME pxdutil)
set(CPACK_PACKAGE_VENDOR pxdutil)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "${PXDUTIL_PACKAGER}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_CURRENT_LIST_DIR}/packages/compress.cmake")

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(packages runtime dev)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libpxdutil${PXDUTIL_SOVERSION})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
configure_file("${CMAKE_CURRENT_LIST_DIR}/packages/shlibs.in" "${PROJECT_BINARY_DIR}/shlibs" @ONLY)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
  "${CMAKE_CURRENT_LIST_DIR}/packages/triggers" "${PROJECT_BINARY_DIR}/shlibs")
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "market data storage and bar building (shared library)
Typed ticks and bars whose edges are those of the trading sessions: bars count
from the open, are cut at the close and take late prints in.")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME libpxdutil-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS
  "${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME} (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
set(CPACK_DEBIAN_DEV_DESCRIPTION "market data storage and bar building (development files)
Headers, the static library, and what CMake and pkg-config need to find the
library.")

if(PXDUTIL_BUILD_TOOLS)
  list(APPEND packages tools)
  set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME pxd-tools)
  set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
  set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_TOOLS_DESCRIPTION "market data on the command line
pxd turns trades into bars that close where the market closes, shows and
restates stored series, and tells what sessions, fields and queries mean.")
endif()

configure_file("${CMAKE_CURRENT_LIST_DIR}/packages/changelog.Debian.in"
  "${PROJECT_BINARY_DIR}/changelog.Debian" @ONLY)

# Each package has papers of its own under its own name. A plain `cmake --install` has no use for
# them.
foreach(package IN LISTS packages)
  string(TOUPPER ${package} upper)
  set(folder share/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
  install(FILES "${CMAKE_CURRENT_LIST_DIR}/packages/copyright"
    DESTINATION ${folder} COMPONENT ${package}_papers EXCLUDE_FROM_ALL)
  install(FILES "${PROJECT_BINARY_DIR}/changelog.Debian"
    DESTINATION ${folder} COMPONENT ${package}_papers EXCLUDE_FROM_ALL)
  list(APPEND CPACK_COMPONENTS_ALL ${package} ${package}_papers)
endforeach()

include(CPack)

foreach(package IN LISTS packages)
  cpack_add_component_group(${package})
  cpack_add_component(${package} GROUP ${package})
  cpack_add_component(${package}_papers GROUP ${package})
endforeach()
