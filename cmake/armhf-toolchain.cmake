# SPDX-License-Identifier: MIT
# Cross build for the AP's 32-bit ARM (armhf): Debian's cross compiler and the armhf
# multiarch packages of the dependencies; test programs run under qemu-user.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(JCP_TRIPLE arm-linux-gnueabihf)

set(CMAKE_C_COMPILER ${JCP_TRIPLE}-gcc)
set(CMAKE_CXX_COMPILER ${JCP_TRIPLE}-g++)
# GCC notes an ABI change of 2017 at every std::list iterator passed by value; nothing here
# mixes objects from compilers that old.
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)

# Dependencies come from the multiarch directories, never from the host's.
set(ENV{PKG_CONFIG_LIBDIR} /usr/lib/${JCP_TRIPLE}/pkgconfig:/usr/share/pkgconfig)
set(CMAKE_LIBRARY_ARCHITECTURE ${JCP_TRIPLE})
set(CMAKE_IGNORE_PATH /usr/lib/x86_64-linux-gnu /lib/x86_64-linux-gnu)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)

# The multiarch loader and libraries sit where qemu-arm looks by default, so no -L is needed.
find_program(JCP_QEMU_ARM qemu-arm REQUIRED)
set(CMAKE_CROSSCOMPILING_EMULATOR ${JCP_QEMU_ARM})
