# SPDX-License-Identifier: MIT
# Debian packages through CPack (`make deb`): the runtime library, the development files and
# the tool, each a component of the install rules.
option(JCP_PACKAGE_DEB "Install the Debian documentation files and configure the .deb build" OFF)
if(NOT JCP_PACKAGE_DEB)
  return()
endif()

set(JCP_DEB_MAINTAINER "jsoncfgplus developers <jsoncfgplus@example.org>"
  CACHE STRING "Maintainer field of the Debian packages")
set(JCP_DEB_RUNTIME libjsoncfgplus1)
set(JCP_DEB_DEV libjsoncfgplus-dev)
set(JCP_DEB_TOOL jsoncfgplus)

# Every Debian package carries its copyright file and a compressed changelog.
string(TIMESTAMP JCP_DEB_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(${CMAKE_CURRENT_LIST_DIR}/deb/changelog.in deb/changelog @ONLY)
execute_process(COMMAND gzip -9nc ${PROJECT_BINARY_DIR}/deb/changelog
  OUTPUT_FILE ${PROJECT_BINARY_DIR}/deb/changelog.Debian.gz COMMAND_ERROR_IS_FATAL ANY)
foreach(component runtime dev tool)
  string(TOUPPER ${component} upper)
  set(package ${JCP_DEB_${upper}})
  install(FILES ${CMAKE_CURRENT_LIST_DIR}/deb/copyright ${PROJECT_BINARY_DIR}/deb/changelog.Debian.gz
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component})
  # Each override names its reason on the line above it.
  install(FILES ${CMAKE_CURRENT_LIST_DIR}/deb/${package}.lintian-overrides
    DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME ${package} COMPONENT ${component})
endforeach()

# Debian ships binaries without the compiler's notes, and static libraries without debugging
# sections; CPack has stripped the shared library and the tool by the time this runs.
function(jcp_deb_strip component file)
  install(CODE "execute_process(COMMAND ${CMAKE_STRIP} ${ARGN} --remove-section=.comment
    --remove-section=.note \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${file}\"
    COMMAND_ERROR_IS_FATAL ANY)" COMPONENT ${component})
endfunction()
jcp_deb_strip(dev ${CMAKE_INSTALL_LIBDIR}/libjsoncfgplus.a --strip-debug)
jcp_deb_strip(runtime ${CMAKE_INSTALL_LIBDIR}/libjsoncfgplus.so.${PROJECT_VERSION} --strip-unneeded)
jcp_deb_strip(tool ${CMAKE_INSTALL_BINDIR}/jsoncfgplus --strip-all)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME jsoncfgplus)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "${JCP_DEB_MAINTAINER}")
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime dev tool)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${JCP_DEB_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# dpkg-shlibdeps names the Debian packages of json-c, hiredis, tinyxml2 and the C++ runtime.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${JCP_DEB_RUNTIME})
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
  "JSON-Q+ configuration translation for the access point
The shared library that turns the manager's JSON-Q+ configuration document
into the flat entry arrays and fixed binary records that the access point's
configuration daemon consumes.")
# A shlibs file makes the packages of programs built against the library depend on it.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
# The ldconfig trigger registers the library, so the package needs no maintainer scripts:
# the ones CPack writes to call ldconfig are taken out again after the build.
file(WRITE ${PROJECT_BINARY_DIR}/deb/triggers "activate-noawait ldconfig\n")
# The symbols file (regenerated with `make deb-symbols`) lets dependent packages ask for the
# version that brought the symbols they use.
configure_file(${CMAKE_CURRENT_LIST_DIR}/deb/libjsoncfgplus1.symbols deb/symbols COPYONLY)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
  ${PROJECT_BINARY_DIR}/deb/triggers ${PROJECT_BINARY_DIR}/deb/symbols)
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/deb/drop-ldconfig-scripts.cmake)

set(CPACK_DEBIAN_DEV_PACKAGE_NAME ${JCP_DEB_DEV})
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEV_DESCRIPTION
  "JSON-Q+ configuration translation for the access point (development files)
Headers, static library, pkg-config file and CMake package for building a
daemon against jsoncfgplus.")
# The headers include json-c's; the pkg-config and CMake files look up all three libraries.
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS
  "${JCP_DEB_RUNTIME} (= ${PROJECT_VERSION}-1), libjson-c-dev, libhiredis-dev, libtinyxml2-dev, pkg-config")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME ${JCP_DEB_TOOL})
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION utils)
set(CPACK_COMPONENT_TOOL_DESCRIPTION
  "JSON-Q+ configuration translation for the access point (command-line tool)
Builds, dumps and checks JSON-Q+ documents and moves them through Redis, for
people who work on the access point's configuration by hand.")

include(CPack)
