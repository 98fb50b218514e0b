/* SPDX-License-Identifier: MIT */
/* Tests the door: `zelsim run door.toml -- ./door_test`. Cards are presented and the reader fails
 * through the simulator's command, which finds it by the environment that `zelsim run` set. */
#include "door.h"

#include <stdio.h>
#include <stdlib.h>

static int failures = 0;

static void expect(enum Door expected, const char* what) {
    const enum Door actual = doorLook();
    if (actual == expected)
        return;
    fprintf(stderr, "%s: the door is in state %d, not %d\n", what, (int)actual, (int)expected);
    ++failures;
}

static void simulate(const char* command) {
    if (system(command) != 0) {
        fprintf(stderr, "failed: %s\n", command);
        ++failures;
    }
}

int main(void) {
    if (!doorConnect()) {
        fprintf(stderr, "no reader: start this by `zelsim run door.toml -- ./door_test`\n");
        return 1;
    }
    expect(DOOR_CLOSED, "without a card");
    simulate("zelsim tap 26:3512");
    expect(DOOR_OPEN, "with the card that is welcome");
    simulate("zelsim remove");
    expect(DOOR_CLOSED, "when it is gone");
    simulate("zelsim tap 77:1001");
    expect(DOOR_CLOSED, "with a stranger's card");
    simulate("zelsim unplug");
    expect(DOOR_NO_READER, "without the reader");
    doorDisconnect();
    return failures == 0 ? 0 : 1;
}
