#!/bin/busybox sh
# SPDX-License-Identifier: MIT
# The shipped command line on a reader that the kernel knows by uhid.
failed=0
export ZELSIM_SOCKET=/tmp/zelsim.sock

# expect OUTPUT COMMAND...: what the command prints on both streams, and "exit N" where it fails.
expect() {
    want=$1
    shift
    got=$("$@" 2>&1) || got="$got exit $?"
    if [ "$got" = "$want" ]; then
        echo "ok      $*"
    else
        printf 'FAILED  %s\nexpected: %s\nis:       %s\n' "$*" "$want" "$got"
        failed=1
    fi
}

# start ARGUMENTS...: a simulator, and its node.
start() {
    zelsim run --uhid --socket "$ZELSIM_SOCKET" "$@" >started.txt &
    until [ -e /dev/hidraw0 ]; do sleep 0.01; done
}

stop() {
    zelsim stop >/dev/null
    wait
}

cat >door.toml <<'SCENARIO'
format = 1
[[device]]
name = "door"
kind = "zelTag"
luid = 7
firmware = "3.2"
SCENARIO
start door.toml
expect 'listening on /tmp/zelsim.sock; try: zeltag list' cat started.txt

expect 'INDEX  NAME          PRODUCT   LUID  FIRMWARE  CONFIGS
    0  /dev/hidraw0  zelTag       7  3.2             1' zeltag list
expect 'zeltag: no card in the field of /dev/hidraw0; hold a card to the reader and try again, or add --wait 10 exit 2' \
    zeltag read
zelsim tap 26:3512 >/dev/null
expect 'card   26 bits  0x02341B70  /dev/hidraw0' zeltag read
expect 'TimeParms.iIDHoldTO  1000 ms -> 2500 ms
CfgFlags.bHaltKBSnd  0 -> 1' \
    zeltag config set TimeParms.iIDHoldTO=2500 bHaltKBSnd=1
expect '2500' zeltag config get TimeParms.iIDHoldTO
expect 'before.txt  1 configuration of /dev/hidraw0' zeltag config export before.txt
expect '/dev/hidraw0 is back at the factory'"'"'s defaults' zeltag config reset --yes
expect '1000' zeltag config get TimeParms.iIDHoldTO
zeltag config import before.txt >/dev/null 2>&1 || failed=1
expect 'after.txt  1 configuration of /dev/hidraw0' zeltag config export after.txt
expect '' cmp before.txt after.txt
expect 'LUID of /dev/hidraw0  7 -> 4711' zeltag luid 4711

# Each of these ends by itself when the reader goes or comes.
zeltag wait --gone 2>/dev/null &
waiting=$!
zeltag read --watch >watch.txt 2>&1 &
watching=$!
until grep -qs card watch.txt; do sleep 0.1; done
expect '1' sh -c 'zeltag doctor 2>/dev/null | grep -c "held .*/dev/hidraw0 is open in zeltag"'
zelsim unplug >/dev/null
wait "$waiting" || failed=1
wait "$watching"
expect 'zeltag: reading /dev/hidraw0 failed (library error 0x1000000); it may have been unplugged: check its cable, then try `zeltag list`' \
    tail -n 1 watch.txt
zeltag wait >/dev/null 2>&1 &
waiting=$!
sleep 0.5
zelsim plug >/dev/null
wait "$waiting" || failed=1
stop

start
expect '/share/firmware.hex  ZT7_0303_DEMO is in /dev/hidraw0: it took all of 40 lines' \
    sh -c 'zeltag firmware load /share/firmware.hex --yes 2>/dev/null'
zeltag read --wait 10 >/dev/null 2>&1 || failed=1
stop
exit "$failed"
