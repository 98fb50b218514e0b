#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Fetches Debian's kernel package, and keeps of it what a virtual machine boots and loads."""

import lzma
import pathlib
import re
import subprocess
import sys
import tarfile
import tempfile

# In the order in which they are loaded: each stands on those before it.
HID_MODULES = ("hid", "hid-generic", "uhid")
USB_MODULES = ("configfs", "usb-common", "usbcore", "udc-core", "libcomposite", "usb_f_fs",
               "dummy_hcd", "usbhid")
IMAGE = "vmlinux"
XZ_HEAD = b"\xfd7zXZ\0"
ELF_HEAD = b"\x7fELF"


class Unavailable(Exception):
    """The package can't be had: no network, or a system of another kind."""


def output(*command, cwd=None):
    try:
        return subprocess.run(command, cwd=cwd, check=True, capture_output=True, text=True).stdout
    except (OSError, subprocess.CalledProcessError) as error:
        reason = getattr(error, "stderr", "") or error
        raise Unavailable(f"{' '.join(command)}: {reason}") from error


def package_name():
    """The real package: linux-image-amd64 itself holds nothing and depends on the current one."""
    found = re.search(r"Depends: (linux-image-\S+)", output("apt-cache", "depends",
                                                            "linux-image-amd64"))
    if not found:
        raise Unavailable("the package lists have no linux-image-amd64; try: apt-get update")
    return found.group(1)


def unpacked_image(packed):
    """The kernel as it lies behind its own unpacker, which would need two seconds for it."""
    start = packed.find(XZ_HEAD)
    while start >= 0:
        try:
            image = lzma.LZMADecompressor().decompress(packed[start:])
            if image.startswith(ELF_HEAD):
                return image
        except lzma.LZMAError:
            pass
        start = packed.find(XZ_HEAD, start + 1)
    raise Unavailable("the package's kernel isn't packed by xz")


def keep(member, read, kept):
    path = pathlib.PurePosixPath(member)
    if path.match("boot/vmlinuz-*"):
        (kept / IMAGE).write_bytes(unpacked_image(read()))
    elif path.suffix == ".ko" and path.stem in HID_MODULES + USB_MODULES:
        (kept / path.name).write_bytes(read())


def unpack(package, kept):
    with subprocess.Popen(["dpkg-deb", "--fsys-tarfile", package], stdout=subprocess.PIPE) as files:
        with tarfile.open(fileobj=files.stdout, mode="r|") as tar:
            for member in tar:
                if member.isfile():
                    keep(member.name, lambda file=member: tar.extractfile(file).read(), kept)
    for name in (IMAGE, *(f"{module}.ko" for module in HID_MODULES + USB_MODULES)):
        if not (kept / name).exists():
            raise Unavailable(f"{package.name} has no {name}")


def folder(cache):
    """Where a cache has its kernel."""
    return cache / "kernel"


def fetch(cache):
    """The folder of the cache's kernel, which is downloaded when it isn't there."""
    kernel = folder(cache)
    if kernel.exists():
        return kernel
    cache.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory(dir=cache) as name:
        scratch = pathlib.Path(name)
        output("apt-get", "download", package_name(), cwd=scratch)
        kept = scratch / "kept"
        kept.mkdir()
        unpack(next(scratch.glob("linux-image-*.deb")), kept)
        kept.rename(kernel)  # whole or not at all
    return kernel


if __name__ == "__main__":
    try:
        print(fetch(pathlib.Path(sys.argv[1]).resolve()))
    except Unavailable as problem:
        sys.exit(str(problem))
