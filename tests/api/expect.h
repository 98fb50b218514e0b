/* SPDX-License-Identifier: MIT */
/* Checks for test programs in C: EXPECT(fact), and the program's exit status. */
#ifndef EXPECT_H
#define EXPECT_H

#include <stdio.h>

static int failures;

static inline void expect(int holds, const char* what, int line) {
    if (holds)
        return;
    fprintf(stderr, "line %d, not so: %s\n", line, what);
    ++failures;
}

#define EXPECT(fact) expect((fact) != 0, #fact, __LINE__)

static inline int exitStatus(void) { return failures == 0 ? 0 : 1; }

#endif
