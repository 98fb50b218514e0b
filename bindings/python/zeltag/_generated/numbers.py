# SPDX-License-Identifier: MIT
"""Error words, kinds and faults of files.

Made by scripts/generate_python.py of frame/zelTagErrors.h and frame/zelTagFiles.h; change those."""

from __future__ import annotations

import enum


class ErrorWord(enum.IntEnum):
    """What an error word tells, alone or with others."""

    #: A null record was passed.
    NULL = 0x1
    #: The configuration was never read.
    NEVER_READ = 0x2
    #: A buffer below 8 bytes, by the ASCII protocol.
    LINE_SIZE = 0x100
    #: No open line, by the ASCII protocol.
    LINE_CLOSED = 0x101
    #: No whole answer, by the ASCII protocol.
    LINE_ANSWER = 0x105
    #: Reading the configuration failed.
    READ = 0x20000
    #: A user field of a stripe reader failed.
    FIELD = 0x20001
    #: Writing the configuration failed.
    WRITE = 0x40000
    #: The reset could not be sent.
    RESET = 0x80000
    #: A get of a record failed, with a reason.
    GET = 0x100000
    #: A set of a record failed, with a reason or a code.
    SET = 0x200000
    #: A report of a service failed.
    SERVICE = 0x1000000
    #: The identifier could not be read, or a null buffer.
    ID_READ = 0x1000000
    #: The radio could not be set.
    SET_RADIO = 0x20000000
    #: The radio could not be asked.
    GET_RADIO = 0x40000000
    #: The firmware file name could not be read.
    FILE_NAME = 0x50000000
    #: The firmware version could not be read.
    FULL_VERSION = 0x70000000
    #: A key or file reference could not be written.
    REFERENCE = 0x80000000
    #: A report of a key blob failed.
    BLOB = 0x81000000
    #: The boot loader wasn't entered.
    BOOT_ENTRY = 0x90100000
    #: The boot loader's reply was lost.
    BOOT_REPLY = 0x90200000
    #: The boot loader refused to start.
    BOOT_REFUSED = 0x90300000
    #: A line was refused or never taken.
    BOOT_LINE = 0x90400000
    #: No proximity reader on USB.
    BOOT_DEVICE = 0x90500000
    #: The reader refused a line.
    BOOT_READER_REFUSED = 0x90600000
    #: The reader's answer isn't known.
    BOOT_UNKNOWN_REPLY = 0x90700000
    #: The firmware file can't be opened.
    BOOT_FILE = 0x90800000
    #: A frame of a line could not be sent.
    BOOT_FRAME = 0x90900000
    #: A file's trailer doesn't hold, or isn't made.
    INTEGRITY = 0x91000000


class FileKind(enum.IntEnum):
    """What a file holds."""

    #: A proximity reader's settings, sealed.
    TEMPLATE = 0
    #: Firmware of a reader.
    FIRMWARE = 1
    #: Key blobs for a reader.
    KEYS = 2
    #: A magnetic stripe reader's settings.
    BAND = 3
    #: A sensor's settings.
    ECHO = 4


class FileFault(enum.IntEnum):
    """What is wrong with a file."""

    #: It holds.
    NONE = 0
    #: The file can't be opened or read.
    OPEN = 1
    #: No trailer up to the end of the file.
    NO_TRAILER = 2
    #: The trailer stands on `line` and has another form.
    TRAILER = 3
    #: `line` stands behind the trailer.
    BEHIND = 4
    #: The trailer on `line` tells another checksum.
    CHECKSUM = 5
    #: No title where a load of the file looks for one.
    TITLE = 6
    #: A load passes over `line`, which is no comment.
    LINE = 7
    #: A load doesn't keep the number of `line` as it stands there.
    VALUE = 8
    #: All lines are good, and some word has none.
    MISSING = 9


ERROR_MEANINGS: dict[int, str] = {
    0x1: "a null record was passed",
    0x2: "the configuration was never read",
    0x100: "a buffer below 8 bytes, by the ASCII protocol",
    0x101: "no open line, by the ASCII protocol",
    0x105: "no whole answer, by the ASCII protocol",
    0x20000: "reading the configuration failed",
    0x20001: "a user field of a stripe reader failed",
    0x40000: "writing the configuration failed",
    0x80000: "the reset could not be sent",
    0x100000: "a get of a record failed, with a reason",
    0x200000: "a set of a record failed, with a reason or a code",
    0x1000000: "a report of a service failed",
    0x20000000: "the radio could not be set",
    0x40000000: "the radio could not be asked",
    0x50000000: "the firmware file name could not be read",
    0x70000000: "the firmware version could not be read",
    0x80000000: "a key or file reference could not be written",
    0x81000000: "a report of a key blob failed",
    0x90100000: "the boot loader wasn't entered",
    0x90200000: "the boot loader's reply was lost",
    0x90300000: "the boot loader refused to start",
    0x90400000: "a line was refused or never taken",
    0x90500000: "no proximity reader on USB",
    0x90600000: "the reader refused a line",
    0x90700000: "the reader's answer isn't known",
    0x90800000: "the firmware file can't be opened",
    0x90900000: "a frame of a line could not be sent",
    0x91000000: "a file's trailer doesn't hold, or isn't made",
}

FAULT_MEANINGS: dict[int, str] = {
    0: "it holds",
    1: "the file can't be opened or read",
    2: "no trailer up to the end of the file",
    3: "the trailer stands on `line` and has another form",
    4: "`line` stands behind the trailer",
    5: "the trailer on `line` tells another checksum",
    6: "no title where a load of the file looks for one",
    7: "a load passes over `line`, which is no comment",
    8: "a load doesn't keep the number of `line` as it stands there",
    9: "all lines are good, and some word has none",
}
