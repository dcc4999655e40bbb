# SPDX-License-Identifier: MIT
# jcp_read_version(HEADER VAR): VAR becomes "MAJOR.MINOR.PATCH" as the header's macros give it.
# A version string that disagrees with the three numbers stops the configure step.
function(jcp_read_version header var)
  # A new version in the header reconfigures the build.
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${header})
  file(STRINGS ${header} lines REGEX "^#define JSONCFGPLUS_VERSION_")
  foreach(part MAJOR MINOR PATCH)
    string(REGEX MATCH "JSONCFGPLUS_VERSION_${part} ([0-9]+)" found "${lines}")
    if(NOT found)
      message(FATAL_ERROR "${header}: no JSONCFGPLUS_VERSION_${part}")
    endif()
    set(${part} ${CMAKE_MATCH_1})
  endforeach()
  string(REGEX MATCH "JSONCFGPLUS_VERSION_STRING \"([^\"]*)\"" found "${lines}")
  if(NOT CMAKE_MATCH_1 STREQUAL "${MAJOR}.${MINOR}.${PATCH}")
    message(FATAL_ERROR "${header}: JSONCFGPLUS_VERSION_STRING \"${CMAKE_MATCH_1}\" is not "
                        "${MAJOR}.${MINOR}.${PATCH}")
  endif()
  set(${var} ${MAJOR}.${MINOR}.${PATCH} PARENT_SCOPE)
endfunction()
