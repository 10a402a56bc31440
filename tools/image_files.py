"""Writes plain image files with the standard library alone: PNG of 8 bits, grey TIFF of 8 or 16 bits."""
import struct
import zlib


def write_png(path, width, height, channels, data):
    """`data` holds width * height * channels bytes, row by row; 1 channel is grey, 3 are RGB, 4 are RGBA."""
    colour_type = {1: 0, 3: 2, 4: 6}[channels]
    row = width * channels
    raw = b"".join(b"\0" + bytes(data[y * row:(y + 1) * row]) for y in range(height))

    def chunk(kind, content):
        return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))

    with open(path, "wb") as file:
        file.write(b"\x89PNG\r\n\x1a\n"
                   + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, colour_type, 0, 0, 0))
                   + chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b""))


def write_tiff(path, width, height, bits, values, deflate=False):
    """A grey little-endian TIFF of one strip; 0 is black. `values` are whole numbers of `bits` (8 or 16) bits."""
    strip = bytes(values) if bits == 8 else struct.pack("<%dH" % len(values), *values)
    if deflate:
        strip = zlib.compress(strip, 9)
    short, long = 3, 4
    entries = [(256, long, width), (257, long, height), (258, short, bits), (259, short, 8 if deflate else 1),
               (262, short, 1), (273, long, 8), (277, short, 1), (278, long, height), (279, long, len(strip))]
    strip += b"\0" * (len(strip) % 2)  # the directory begins on an even byte
    directory = struct.pack("<H", len(entries))
    for tag, kind, value in entries:
        directory += struct.pack("<HHII", tag, kind, 1, value)
    with open(path, "wb") as file:
        file.write(struct.pack("<2sHI", b"II", 42, 8 + len(strip)) + strip + directory + struct.pack("<I", 0))
