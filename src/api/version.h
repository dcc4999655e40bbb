/* SPDX-License-Identifier: MIT */
/* The library's release. These lines are the one place the version is written: the build reads
 * them for the SONAME (the major number), the pkg-config file, the CMake package and the Debian
 * packages, and refuses to configure when the string disagrees with the numbers. The major
 * number moves only with an incompatible change of the exported interface. */
#ifndef JSONCFGPLUS_API_VERSION_H
#define JSONCFGPLUS_API_VERSION_H

#define JSONCFGPLUS_VERSION_MAJOR 1
#define JSONCFGPLUS_VERSION_MINOR 1
#define JSONCFGPLUS_VERSION_PATCH 0
#define JSONCFGPLUS_VERSION_STRING "1.1.0"

#endif
