# SPDX-FileCopyrightText: The protoLink authors
# SPDX-License-Identifier: MIT
"""Pictures that are made as they are needed."""

import struct
import zlib


def png(width, height, shade=7):
    """A picture whose points differ."""
    def chunk(kind, content):
        return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))
    rows = b"".join(b"\0" + b"".join(bytes((x % 256, y % 256, shade)) for x in range(width)) for y in range(height))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0))
            + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))
