"""Builds PNG and TIFF files with the standard library alone."""
import struct
import zlib

SHORT, LONG = 3, 4
CODES = {SHORT: "H", LONG: "I"}


def png(width, height, depth, colour_type, rows, before=(), end=True):
    """A PNG. `rows` are bytes as the colour type has them; `before` are (kind, content) of chunks before the pixels."""
    def chunk(kind, content):
        return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))

    raw = b"".join(b"\0" + row for row in rows)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, depth, colour_type, 0, 0, 0))
            + b"".join(chunk(kind, content) for kind, content in before)
            + chunk(b"IDAT", zlib.compress(raw, 9)) + (chunk(b"IEND", b"") if end else b""))


def write_png(path, width, height, channels, data):
    """`data` holds width * height * channels bytes, row by row; 1 channel is grey, 3 are RGB, 4 are RGBA."""
    row = width * channels
    rows = [bytes(data[y * row:(y + 1) * row]) for y in range(height)]
    with open(path, "wb") as file:
        file.write(png(width, height, 8, {1: 0, 3: 2, 4: 6}[channels], rows))


def tiff(data, width, height, bits, order="<", big=False, next_directory=0, **tags):
    """A TIFF, of one strip unless `tags` say otherwise. `tags` are t<number>=value, or a (type, values) pair; None leaves
    a tag out."""
    start = 16 if big else 8
    entries = {256: (LONG, [width]), 257: (LONG, [height]), 258: (SHORT, [bits]), 259: (SHORT, [1]), 262: (SHORT, [1]),
               273: (LONG, [start]), 277: (SHORT, [1]), 278: (LONG, [height]), 279: (LONG, [len(data)])}
    for name, value in tags.items():
        number = int(name[1:])
        entries[number] = value if isinstance(value, tuple) or value is None else (SHORT, [value])
    entries = {number: value for number, value in sorted(entries.items()) if value is not None}
    body = bytearray(data + b"\0" * (len(data) % 2))
    inline = 8 if big else 4
    directory = struct.pack(order + ("Q" if big else "H"), len(entries))
    for number, (kind, values) in entries.items():
        packed = struct.pack(order + str(len(values)) + CODES[kind], *values)
        if len(packed) > inline:
            place = start + len(body)
            body += packed + b"\0" * (len(packed) % 2)
            packed = struct.pack(order + ("Q" if big else "I"), place)
        directory += struct.pack(order + ("HHQ" if big else "HHI"), number, kind, len(values))
        directory += packed.ljust(inline, b"\0")
    place = start + len(body)
    directory += struct.pack(order + ("Q" if big else "I"), place if next_directory == "itself" else next_directory)
    mark = b"II" if order == "<" else b"MM"
    header = struct.pack(order + "HHHQ", 43, 8, 0, place) if big else struct.pack(order + "HI", 42, place)
    return mark + header + bytes(body) + directory


def write_tiff(path, width, height, bits, values, deflate=False):
    """A grey little-endian TIFF of one strip; 0 is black. `values` are whole numbers of `bits` (8 or 16) bits."""
    strip = bytes(values) if bits == 8 else struct.pack("<%dH" % len(values), *values)
    with open(path, "wb") as file:
        file.write(tiff(zlib.compress(strip, 9), width, height, bits, t259=8) if deflate
                   else tiff(strip, width, height, bits))
