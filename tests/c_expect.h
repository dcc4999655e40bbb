/* SPDX-License-Identifier: MIT */
/* The C tests' one check: an expectation that fails is printed with its place and counted, and
 * the test goes on, so one run shows every failure. */
#ifndef JSONCFGPLUS_TESTS_C_EXPECT_H
#define JSONCFGPLUS_TESTS_C_EXPECT_H

#include <stdio.h>

static int failures;

#define EXPECT(cond)                                                            \
    do {                                                                        \
        if (!(cond)) {                                                          \
            fprintf(stderr, "%s:%d: expected %s\n", __FILE__, __LINE__, #cond); \
            ++failures;                                                         \
        }                                                                       \
    } while (0)

#endif
