# SPDX-License-Identifier: MIT
# cmake -DHEADER=FILE -P tests/version_header.cmake: reads FILE as the build reads the version
# header and prints the version, or stops as the configure step would.
include(${CMAKE_CURRENT_LIST_DIR}/../cmake/version.cmake)
jcp_read_version(${HEADER} version)
message("version ${version}")
