# SPDX-License-Identifier: MIT
# Runs after CPack has built the packages: the runtime package's postinst and postrm only call
# ldconfig, which its ldconfig trigger already does, so the package is rebuilt without them.
foreach(deb IN LISTS CPACK_PACKAGE_FILES)
  get_filename_component(name ${deb} NAME)
  if(NOT name MATCHES "^libjsoncfgplus1_")
    continue()
  endif()
  set(tree ${CPACK_TOPLEVEL_DIRECTORY}/repack)
  file(REMOVE_RECURSE ${tree})
  execute_process(COMMAND dpkg-deb -R ${deb} ${tree} COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE ${tree}/DEBIAN/postinst ${tree}/DEBIAN/postrm)
  execute_process(COMMAND dpkg-deb --root-owner-group -Zxz -b ${tree} ${deb}
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE ${tree})
endforeach()
