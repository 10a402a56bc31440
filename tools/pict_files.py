"""Writes PICT files of every kind: rasters of all depths and packings, regions, QuickTime images, all other opcodes.
Standard library only."""
import struct

RECTANGLE = ">4h"  # top, left, bottom, right


def words(*numbers):
    return struct.pack(">%dH" % len(numbers), *(n & 0xFFFF for n in numbers))


def rectangle(top, left, bottom, right):
    return struct.pack(RECTANGLE, top, left, bottom, right)


def picture(frame, opcodes, version=2, source=None, preamble=bytes(512), end=True):
    """A PICT of a frame (top, left, bottom, right) and pairs of opcode and data. With `source`, a version 2 of the
    extended kind whose drawing coordinates are those of that rectangle."""
    body = b"\0\0" + rectangle(*frame)
    if version == 1:
        body += b"\x11\x01" + b"".join(bytes([opcode]) + data for opcode, data in opcodes) + b"\xff" * end
        return preamble + body
    body += b"\0\x11\x02\xff\x0c\0"
    if source:
        body += words(0xFFFE, 0) + struct.pack(">II", 300 << 16, 300 << 16) + rectangle(*source) + bytes(4)
    else:
        body += b"\xff\xff\xff\xff" + bytes(20)
    for opcode, data in opcodes:
        body += words(opcode) + data + b"\0" * (len(data) % 2)
    return preamble + body + b"\0\xff" * end


def pack_bits(row, unit=1):
    """PackBits over units of that many bytes: runs of three or more become a repetition, the rest stays literal."""
    units = [row[i:i + unit] for i in range(0, len(row), unit)]
    packed, literal, i = b"\x80" if unit == 2 else b"", [], 0  # code 128 does nothing

    def flush():
        nonlocal packed, literal
        while literal:
            packed += bytes([len(literal[:128]) - 1]) + b"".join(literal[:128])
            literal = literal[128:]

    while i < len(units):
        length = 1
        while i + length < len(units) and length < 128 and units[i + length] == units[i]:
            length += 1
        if length >= 3:
            flush()
            packed += bytes([257 - length]) + units[i]
        else:
            literal += units[i:i + length]
        i += length
    flush()
    return packed


def packed_row(row, row_bytes, unit=1):
    packed = pack_bits(row, unit)
    return struct.pack(">H" if row_bytes > 250 else ">B", len(packed)) + packed


def bit_rows(rows, depth):
    """Rows of numbers of 1, 2, 4 or 8 bits, each padded to an even number of bytes."""
    result = []
    for row in rows:
        text = "".join(format(number, "0%db" % depth) for number in row)
        text += "0" * (-len(text) % 16)
        result.append(bytes(int(text[i:i + 8], 2) for i in range(0, len(text), 8)))
    return result


def color_table(colors, by_position=False):
    """Entries in order without numbers if `by_position`, else from the last to the first with their numbers."""
    listed = list(enumerate(colors))
    if not by_position:
        listed.reverse()
    return struct.pack(">IHH", 7, 0x8000 if by_position else 0, len(colors) - 1) + b"".join(
        words(0 if by_position else i, *(component * 257 for component in color)) for i, color in listed)


def region(*rows):
    """Rows (y, x, x, ...) of points where inside and outside change places. Two rows with the same two points are a
    rectangle."""
    box = rectangle(rows[0][0], min(min(row[1:]) for row in rows), rows[-1][0], max(max(row[1:]) for row in rows))
    if len(rows) == 2 and rows[0][1:] == rows[1][1:] and len(rows[0]) == 3:
        return words(10) + box
    points = b"".join(words(*row, 0x7FFF) for row in rows) + words(0x7FFF)
    return words(10 + len(points)) + box + points


def pixel_map(row_bytes, bounds, depth, pack_type=0, components=1):
    return (words(0x8000 | row_bytes) + rectangle(*bounds) + words(0, pack_type) + bytes(4)
            + struct.pack(">II", 72 << 16, 72 << 16) + words(16 if depth > 8 else 0, depth, components,
                                                            {16: 5, 32: 8}.get(depth, depth)) + bytes(12))


def raster(opcode, rows, depth, colors=None, bounds=None, source=None, destination=None, mask=b"", pack_type=0,
           by_position=False):
    """A raster opcode with its data. `rows` hold indices; or, for 16 bits, numbers; or, for 32 bits, tuples of three or
    four components. Without `colors`, a raster of 1 bit is a bit map."""
    height, width = len(rows), len(rows[0])
    bounds = bounds or (0, 0, height, width)
    components = len(rows[0][0]) if depth == 32 else 3 if depth == 16 else 1
    if depth == 16:
        stored = [words(*row) for row in rows]
    elif depth == 32:
        stored = [b"".join(bytes(pixel if components == 4 else (0x99, *pixel)) for pixel in row) for row in rows]
    else:
        stored = bit_rows(rows, depth)
    row_bytes = len(stored[0])
    if depth > 8:
        head = b"\0\0\0\xff" + pixel_map(row_bytes, bounds, depth, pack_type, components)
    elif colors:
        head = pixel_map(row_bytes, bounds, depth) + color_table(colors, by_position)
    else:
        head = words(row_bytes) + rectangle(*bounds)
    place = rectangle(*(source or bounds)) + rectangle(*(destination or source or bounds)) + words(0) + mask
    if row_bytes < 8 or opcode in (0x90, 0x91) or depth > 8 and pack_type == 1:
        data = b"".join(stored)
    elif pack_type == 2:
        data = b"".join(bytes(pixel[-3:]) for row in rows for pixel in row)
    elif depth == 32:
        data = b"".join(packed_row(bytes(pixel[k] for k in range(components) for pixel in row), row_bytes)
                        for row in rows)
    else:
        data = b"".join(packed_row(row, row_bytes, 2 if depth == 16 else 1) for row in stored)
    return opcode, head + place + data


def quicktime(codec, data, width, height, depth=24, move=(0, 0), scale=(1, 1), table=b"", mask=b"", source=None):
    """Opcode 8200. `move` and `scale` are pairs of x and y; `table` is a colour table."""
    fixed = [int(scale[0] * 65536), 0, 0, 0, int(scale[1] * 65536), 0, move[0] << 16, move[1] << 16, 1 << 30]
    description = (codec + bytes(6) + words(0, 1, 1) + b"test" + struct.pack(">II", 0, 512) + words(width, height)
                   + struct.pack(">III", 72 << 16, 72 << 16, len(data)) + words(1) + b"\4name".ljust(32, b"\0")
                   + words(depth, 0 if table else -1) + table)
    content = (words(0) + struct.pack(">9i", *fixed) + bytes(4) + bytes(8) + words(0)
               + rectangle(*(source or (0, 0, height, width))) + struct.pack(">II", 0x200, len(mask)) + mask
               + struct.pack(">I", len(description) + 4) + description + data)
    return 0x8200, struct.pack(">I", len(content)) + content


def quicktime_raster(opcode, data):
    """Opcode 8201 with a raster opcode in it."""
    content = words(0) + struct.pack(">9i", 65536, 0, 0, 0, 65536, 0, 0, 0, 1 << 30) + bytes(12) + words(opcode) + data
    return 0x8201, struct.pack(">I", len(content)) + content


def other_opcodes(version):
    """One of each opcode that draws no raster, its data full of 0xFF, so that a reader with a wrong length fails."""
    fill = b"\xff" * 0x200
    fixed = {0x00: 0, 0x02: 8, 0x03: 2, 0x04: 1, 0x05: 2, 0x06: 4, 0x07: 4, 0x08: 2, 0x09: 8, 0x0A: 8, 0x0B: 4, 0x0C: 4,
             0x0D: 2, 0x0E: 4, 0x0F: 4, 0x10: 8, 0x15: 2, 0x16: 2, 0x17: 0, 0x18: 0, 0x19: 0, 0x1A: 6, 0x1B: 6, 0x1C: 0,
             0x1D: 6, 0x1E: 0, 0x1F: 6, 0x20: 8, 0x21: 4, 0x22: 6, 0x23: 2, 0xA0: 2, 0xB0: 0, 0xCF: 0}
    for first, last, size in ((0x30, 0x37, 8), (0x38, 0x3F, 0), (0x40, 0x47, 8), (0x48, 0x4F, 0), (0x50, 0x57, 8),
                              (0x58, 0x5F, 0), (0x60, 0x67, 12), (0x68, 0x6F, 4), (0x78, 0x7F, 0), (0x88, 0x8F, 0)):
        fixed.update({first: size, last: size})
    for opcode, size in fixed.items():
        yield opcode, fill[:size]
    for opcode in (0x01, 0x70, 0x77, 0x80, 0x87):
        yield opcode, words(14) + fill[:12]
    for opcode, before in ((0x28, 4), (0x29, 1), (0x2A, 1), (0x2B, 2)):
        yield opcode, fill[:before] + b"\x03" + fill[:3]
    yield 0x11, fill[:version]
    for opcode in (0x24, 0x27, 0x2C, 0x2F, 0x92, 0x97, 0x9C, 0x9F, 0xA2, 0xAF):
        yield opcode, words(5) + fill[:5]
    yield 0xA1, fill[:2] + words(3) + fill[:3]
    for opcode in (0xD0, 0xFE):
        yield opcode, struct.pack(">I", 6) + fill[:6]
    yield 0x12, words(2) + fill[:8] + fill[:6]
    for depth in (1, 8):
        bits = [[(x + y) % 2 for x in range(8)] for y in range(8)]
        row_bytes = max(depth, 2)
        yield 0x14, (words(1) + fill[:8] + pixel_map(row_bytes, (0, 0, 8, 8), depth)
                     + color_table([(0xFF, 0xFF, 0xFF), (0xFF, 0, 0xFF)])
                     + b"".join(row if row_bytes < 8 else packed_row(row, row_bytes) for row in bit_rows(bits, depth)))
    if version == 2:
        for opcode, size in ((0x0100, 2), (0x01FF, 2), (0x7FFF, 254), (0x8000, 0), (0x80FF, 0)):
            yield opcode, fill[:size]
        for opcode in (0x8100, 0x81FF, 0x8202, 0xFFFF):
            yield opcode, struct.pack(">I", 7) + fill[:7]
