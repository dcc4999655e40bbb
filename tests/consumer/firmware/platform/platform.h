/* SPDX-License-Identifier: MIT */
/* A firmware's own header of a name the library's headers also use: a caller that includes it
 * must get this one, and the library's headers must never reach it. */
#ifndef FIRMWARE_PLATFORM_PLATFORM_H
#define FIRMWARE_PLATFORM_PLATFORM_H
#define FIRMWARE_OWN_PLATFORM_HEADER 1
#endif
