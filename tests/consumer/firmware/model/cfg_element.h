/* SPDX-License-Identifier: MIT */
/* A firmware header of a name the library's headers use; they must never include it. */
#error "a library header included the firmware's own model/cfg_element.h"
