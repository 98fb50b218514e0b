# SPDX-License-Identifier: MIT
# Sourced by scripts/demo and scripts/test: Debian packages by name.

say() { printf '%s\n' "$*" >&2; }

fail() {
    say "$*"
    exit 1
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    else
        sudo "$@"
    fi
}

is_installed() { dpkg-query -W -f '${Status}' "$1" 2>/dev/null | grep -q '^install ok installed'; }

# need_packages NAME...: installs what is missing; says so in one sentence when that can't be done.
need_packages() {
    local missing=() package
    command -v apt-get >/dev/null ||
        fail "This needs Debian 12 or its like (no apt-get here). Install by hand: $*"
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    [ "$(id -u)" -eq 0 ] || command -v sudo >/dev/null ||
        fail "Packages are missing and there is no sudo here. As root, run: apt-get install ${missing[*]}"
    say "Installing ${missing[*]}"
    local log
    log=$(mktemp)
    if as_root apt-get update -qq >"$log" 2>&1 &&
        as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
            "${missing[@]}" >>"$log" 2>&1; then
        rm -f "$log"
        return 0
    fi
    tail -n 5 "$log" >&2
    rm -f "$log"
    fail "These packages can't be had: ${missing[*]}. Check the network and the apt sources, then run this again."
}

# The kernel that tests/kernel boot, downloaded but not installed; without it they are skipped.
need_kernel() {
    local fetch=(python3 tests/kernel/kernel_package.py build/kernel)
    "${fetch[@]}" >/dev/null 2>&1 && return 0
    as_root apt-get update -qq >/dev/null 2>&1 || true
    "${fetch[@]}" >/dev/null || say "There is no kernel to be had: tests/kernel will be skipped"
}
