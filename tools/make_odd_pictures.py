#!/usr/bin/env python3
"""Writes the test corpus tests/odd: small malformed or unusual image files, each named after what is unusual about it.

    tools/make_odd_pictures.py tests/odd

The tests open them, the fuzz targets damage them. Standard library only, so that the files can be made anywhere. Files
whose names begin with a program's name were made by that program from rgb.tif or big.tif and stay as they are:

    imagemagick-5-6-5.bmp            convert rgb.tif -define bmp:subtype=RGB565
    imagemagick-palette-alpha.tif    convert rgb.tif -alpha set -channel A -evaluate set 50% -type PaletteAlpha
    graphicsmagick-float-24-bits.tif gm convert -define tiff:sample-format=ieeefp -define tiff:bits-per-sample=24
    libtiff-rgb-no-photometric.tif   tiffset -u 262
    imagemagick*.pict                convert; those of a number of columns from the first rows of such a map
    netpbm.pict                      ppmtopict
    netpbm-os2.bmp                   ppmtobmp -os2
    netpbm-interlaced.gif            ppmtogif -interlace
    pillow-damaged-profile.jpg       save(quality=95, icc_profile=...) of a profile without its types "XYZ "
    pillow-half-of-its-data.jpg      save(quality=75) of 32 x 32 pixels, cut in its data, with an end marker
    pillow-half-of-its-data-jpeg.tif save(compression="jpeg"), with an end marker in its data
    cjpeg-bytes-before-a-restart.jpg cjpeg -restart 2B -grayscale, with 40 bytes of 0 before restart 3
"""
import base64
import pathlib
import struct
import sys
import zlib

from image_files import LONG, SHORT, png, tiff
from odd_picts import odd_picts

# 16 x 8 pixels of grey: the left half 40, the right half 200.
JPEG = base64.b64decode("""
/9j/4AAQSkZJRgABAQEAZABkAAD/2wBDAAMCAgMCAgMDAwMEAwMEBQgFBQQEBQoHBwYIDAoMDAsKCwsNDhIQDQ4RDgsLEBYQERMU
FRUVDA8XGBYUGBIUFRT/wAALCAAIABABAREA/8QAHwAAAQUBAQEBAQEAAAAAAAAAAAECAwQFBgcICQoL/8QAtRAAAgEDAwIEAwUF
BAQAAAF9AQIDAAQRBRIhMUEGE1FhByJxFDKBkaEII0KxwRVS0fAkM2JyggkKFhcYGRolJicoKSo0NTY3ODk6Q0RFRkdISUpTVFVW
V1hZWmNkZWZnaGlqc3R1dnd4eXqDhIWGh4iJipKTlJWWl5iZmqKjpKWmp6ipqrKztLW2t7i5usLDxMXGx8jJytLT1NXW19jZ2uHi
4+Tl5ufo6erx8vP09fb3+Pn6/9oACAEBAAA/APhSv2rr/9k=""")


# The same data under the headers of coding processes that few decoders support.
LOSSLESS_JPEG = JPEG.replace(b"\xff\xc0\0\x0b\x08", b"\xff\xc3\0\x0b\x08")
JPEG_OF_12_BITS = JPEG.replace(b"\xff\xc0\0\x0b\x08", b"\xff\xc1\0\x0b\x0c")


def values(code, numbers, order="<"):
    return struct.pack(order + str(len(numbers)) + code, *numbers)


def packed_bits(numbers, bits):
    """One row of numbers of `bits` bits, highest bit first, padded to a whole byte."""
    text = "".join(format(number, "0%db" % bits) for number in numbers)
    text += "0" * (-len(text) % 8)
    return bytes(int(text[i:i + 8], 2) for i in range(0, len(text), 8))


def lzw(data):
    """TIFF's LZW without any compression: a code for each byte, the table cleared before codes grow to 10 bits."""
    codes = []
    for i in range(0, len(data), 200):
        codes += [256] + list(data[i:i + 200])
    return packed_bits(codes + [257], 9)


def bmp(width, height, bits, palette, data, compression=0):
    offset = 54 + 4 * len(palette)
    header = struct.pack("<2sIHHI", b"BM", offset + len(data), 0, 0, offset)
    info = struct.pack("<IiiHHIIiiII", 40, width, height, 1, bits, compression, len(data), 2835, 2835, len(palette), 0)
    return header + info + b"".join(struct.pack("<BBBB", b, g, r, 0) for r, g, b in palette) + data


def bmp_with_masks(width, height, bits, masks, data, header_size):
    """`masks` follow a header of 40 bytes; a larger header contains them."""
    after = struct.pack("<%dI" % len(masks), *masks)
    offset = 54 + len(after)
    return (struct.pack("<2sIHHI", b"BM", offset + len(data), 0, 0, offset)
            + struct.pack("<IiiHHIIiiII", header_size, width, height, 1, bits, 3, len(data), 0, 0, 0, 0) + after + data)


def bmp_of_os2(width, height, palette, data):
    offset = 26 + 3 * len(palette)
    return (struct.pack("<2sIHHI", b"BM", offset + len(data), 0, 0, offset)
            + struct.pack("<IHHHH", 12, width, height, 1, 8) + b"".join(bytes(c[::-1]) for c in palette) + data)


def gif(width, height, palette, pixels, before=b"", screen=None, place=(0, 0), background=0):
    """Codes of 9 bits without any compression, lowest bit first; `palette` has 256 colours."""
    codes = []
    for i in range(0, len(pixels), 200):
        codes += [256] + list(pixels[i:i + 200])
    bits = sum(code << (9 * i) for i, code in enumerate(codes + [257]))
    data = bits.to_bytes((9 * (len(codes) + 1) + 7) // 8, "little")
    blocks = b"".join(bytes([len(data[i:i + 255])]) + data[i:i + 255] for i in range(0, len(data), 255))
    return (b"GIF89a" + struct.pack("<HHBBB", *(screen or (width, height)), 0xF7, background, 0)
            + b"".join(bytes(c) for c in palette) + before + b"\x2c"
            + struct.pack("<HHHHB", *place, width, height, 0) + b"\x08" + blocks + b"\0;")


def jpeg_with_orientation(tag):
    exif = b"Exif\0\0" + struct.pack(">2sHI", b"MM", 42, 8) + struct.pack(">HHHIHHI", 1, 274, SHORT, 1, tag, 0, 0)
    return JPEG[:2] + b"\xff\xe1" + struct.pack(">H", len(exif) + 2) + exif + JPEG[2:]


def scaled_maps():
    """Maps of one row whose levels are scaled by their own range: (name, code of struct, sample format, values)."""
    largest, tiny, nan, inf = sys.float_info.max, 5e-324, float("nan"), float("inf")
    yield "halves-go-up", "H", 1, [0, 1, 2, 255, 510]
    yield "all-7", "H", 1, [7, 7]
    yield "all-0", "I", 1, [0, 0]
    yield "whole-range", "h", 2, [-32768, 0, 32767]
    yield "whole-range", "b", 2, [-128, -1, 0, 127]
    yield "whole-range", "I", 1, [0, 0x80000000, 0xFFFFFFFF]
    yield "whole-range", "d", 3, [-largest, 0, largest]
    yield "negative", "i", 2, [-10, -5]
    yield "beside-a-half", "I", 1, [8421504, 8421505, 0xFFFFFFFF]
    yield "smallest-numbers", "d", 3, [0, tiny, 2 * tiny]
    yield "no-number", "d", 3, [nan, -4, 6]
    yield "no-numbers", "d", 3, [nan, nan]
    # Hot pixels beyond twice the 99.9th percentile: of 1000 values the 999th, of 999 the 999th, of 1001 the 1000th.
    for code, kind in [("b", 2), ("H", 1), ("h", 2), ("I", 1), ("q", 2), ("f", 3), ("d", 3)]:
        yield "hot-pixel", code, kind, [10] * 998 + [20, 100]
        if kind != 1:
            yield "hot-pixel-above-negatives", code, kind, [-100] * 998 + [-80, 100]
    yield "hot-pixel-first", "H", 1, [100, 20] + [10] * 998
    yield "hot-pixel-of-999", "H", 1, [10] * 997 + [20, 100]
    yield "hot-pixel-of-1001", "H", 1, [10] * 999 + [20, 100]
    yield "two-hot-pixels", "H", 1, [10] * 998 + [100, 100]
    yield "twice-as-far", "H", 1, [30] * 998 + [40, 80]
    yield "percentile-at-the-lower-end", "H", 1, [0] * 999 + [7]
    yield "hot-pixel-and-no-numbers", "f", 3, [nan] * 500 + [10] * 498 + [20, 100]
    yield "infinite", "f", 3, [10] * 997 + [20, inf, inf]
    yield "hot-pixel-at-the-end-of-the-numbers", "d", 3, [-1e308] * 998 + [-8e307, 1.7e308]
    yield "hot-pixel-of-5001", "I", 1, list(range(1, 5001)) + [4000000000]


def odd_pictures():
    width, height = 12, 6
    counts = [(x * 17 + y * 3) % 201 for y in range(height) for x in range(width)]  # 0 to 200
    counts[5] = 200
    bytes8 = bytes(counts)
    greys = [(i, i, i) for i in range(256)]
    map16 = (SHORT, [i * 257 for i in range(256)] * 3)
    spectrum = [(i, 255 - i, i // 2) for i in range(256)]

    for name, code, kind, numbers in scaled_maps():
        data = zlib.compress(values(code, numbers), 9)
        bits = 8 * struct.calcsize("<" + code)
        yield f"scaled-{name}-{code}.tif", tiff(data, len(numbers), 1, bits, t259=8, t339=kind)
    # Maps as microanalysis programs write them.
    yield "counts-of-200-in-16-bits.tif", tiff(values("H", counts), width, height, 16)
    yield "big-endian-16-bits.tif", tiff(values("H", counts, ">"), width, height, 16, ">")
    yield "signed-16-bits.tif", tiff(values("h", [c - 50 for c in counts]), width, height, 16, t339=2)
    yield "signed-8-bits.tif", tiff(values("b", [c // 2 - 50 for c in counts]), width, height, 8, t339=2)
    yield "signed-32-bits.tif", tiff(values("i", [c - 50 for c in counts]), width, height, 32, t339=2)
    yield "unsigned-32-bits-no-sample-format.tif", tiff(values("I", counts), width, height, 32)
    floats = [c / 8 for c in counts]
    yield "float.tif", tiff(values("f", floats), width, height, 32, t339=3)
    yield "float-no-sample-format.tif", tiff(values("f", floats), width, height, 32)
    yield "float-with-nan-and-infinity.tif", tiff(
        values("f", [float("nan"), float("inf"), float("-inf")] + floats[3:]), width, height, 32, t339=3)
    yield "double-big-endian.tif", tiff(values("d", floats, ">"), width, height, 64, ">", t339=3)
    yield "half-float.tif", tiff(values("e", floats), width, height, 16, t339=3)
    yield "stray-colour-map-16-bits.tif", tiff(values("H", counts), width, height, 16, t262=3, t320=map16)
    rows12 = b"".join(packed_bits(counts[y * width:(y + 1) * width], 12) for y in range(height))
    yield "packed-12-bits.tif", tiff(rows12, width, height, 12)
    rows4 = b"".join(packed_bits([c % 16 for c in counts[y * width:(y + 1) * width]], 4) for y in range(height))
    yield "grey-4-bits.tif", tiff(rows4, width, height, 4)
    rows1 = b"".join(packed_bits([c % 2 for c in counts[y * width:(y + 1) * width]], 1) for y in range(height))
    yield "white-is-zero-1-bit.tif", tiff(rows1, width, height, 1, t262=0)

    # Colours.
    palette = (SHORT, [c[k] * 257 for k in range(3) for c in spectrum])
    yield "palette.tif", tiff(bytes8, width, height, 8, t262=3, t320=palette)
    low = (SHORT, [c[k] for k in range(3) for c in spectrum])
    yield "palette-of-8-bit-components.tif", tiff(bytes8, width, height, 8, t262=3, t320=low)
    yield "palette-all-grey.tif", tiff(bytes8, width, height, 8, t262=3, t320=map16)
    rgb = b"".join(bytes(spectrum[c]) for c in counts)
    three = (SHORT, [8, 8, 8])
    yield "rgb.tif", tiff(rgb, width, height, 8, t258=three, t262=2, t277=3)
    rows12 = b"".join(packed_bits([(channel * 4095 + 127) // 255 for c in counts[y * width:(y + 1) * width]
                                   for channel in spectrum[c]], 12) for y in range(height))
    yield "rgb-12-bits.tif", tiff(rows12, width, height, 12, t258=(SHORT, [12] * 3), t262=2, t277=3)
    rgba = b"".join(bytes(spectrum[c]) + bytes([c]) for c in counts)
    yield "rgb-alpha.tif", tiff(rgba, width, height, 8, t258=(SHORT, [8] * 4), t262=2, t277=4, t338=2)
    yield "rgb-and-a-sample-that-is-no-alpha.tif", tiff(rgba, width, height, 8, t258=(SHORT, [8] * 4), t262=2, t277=4,
                                                       t338=0)
    yield "grey-alpha.tif", tiff(bytes(b for c in counts for b in (c, 255 - c)), width, height, 8,
                                 t258=(SHORT, [8] * 2), t277=2, t338=2)
    yield "cmyk.tif", tiff(rgba, width, height, 8, t258=(SHORT, [8] * 4), t262=5, t277=4)
    planes = b"".join(bytes(spectrum[c][k] for c in counts) for k in range(3))
    starts = (LONG, [8 + k * len(counts) for k in range(3)])
    yield "rgb-in-separate-planes.tif", tiff(planes, width, height, 8, t258=three, t262=2, t277=3, t284=2, t273=starts,
                                             t279=(LONG, [len(counts)] * 3))
    yield "jpeg-in.tif", tiff(JPEG, 16, 8, 8, t259=7)
    yield "lossless-jpeg-in.tif", tiff(LOSSLESS_JPEG, 16, 8, 8, t259=7)

    # Other ways to store.
    yield "big.tif", tiff(bytes8, width, height, 8, big=True)
    yield "lzw.tif", tiff(lzw(bytes8), width, height, 8, t259=5)
    yield "deflate.tif", tiff(zlib.compress(bytes8), width, height, 8, t259=8)
    packbits = b"".join(bytes([width - 1]) + bytes8[y * width:(y + 1) * width] for y in range(height))
    yield "packbits.tif", tiff(packbits, width, height, 8, t259=32773)
    yield "fax-all-white.tif", tiff(b"\xff\xff\x00\x10\x01", 16, 16, 1, t259=4, t262=0)
    tile = b"".join(bytes8[y * width:(y + 1) * width].ljust(16, b"\x77") for y in range(height)).ljust(256, b"\x77")
    yield "tile-larger-than-image.tif", tiff(tile, width, height, 8, t273=None, t278=None, t279=None, t322=16, t323=16,
                                             t324=(LONG, [8]), t325=(LONG, [256]))
    yield "turned-right.tif", tiff(bytes8, width, height, 8, t274=6)
    yield "directory-follows-itself.tif", tiff(bytes8, width, height, 8, next_directory="itself")

    # Headers with wrong values.
    yield "lies-60000-x-60000.tif", tiff(bytes8, 60000, 60000, 8)
    yield "lies-30000-x-30000-deflate.tif", tiff(zlib.compress(bytes8), 30000, 30000, 8, t259=8)
    yield "lies-30000-x-30000-lzma.tif", tiff(bytes8, 30000, 30000, 8, t259=34925)
    yield "lies-strip-past-end.tif", tiff(zlib.compress(bytes8), width, height, 8, t259=8, t273=(LONG, [100000]))
    yield "lies-strip-of-no-rows.tif", tiff(bytes8, width, height, 8, t278=(LONG, [0]))
    yield "strip-count-too-large.tif", tiff(bytes8, width, height, 8, t279=(LONG, [1 << 20]))
    yield "strip-count-missing.tif", tiff(bytes8, width, height, 8, t279=None)
    yield "lies-tile-of-a-gigapixel.tif", tiff(bytes8, width, height, 8, t273=None, t278=None, t279=None,
                                               t322=(LONG, [65536]), t323=(LONG, [65536]), t324=(LONG, [8]),
                                               t325=(LONG, [72]))
    yield "lies-65535-samples.tif", tiff(bytes8, width, height, 8, t258=8, t277=65535)
    yield "compression-unknown.tif", tiff(bytes8, width, height, 8, t259=4242)
    yield "complex-numbers.tif", tiff(values("f", floats + floats), width, height, 64, t339=6)
    yield "rgb-float.tif", tiff(values("f", floats * 3), width, height, 32, t258=(SHORT, [32] * 3), t262=2, t277=3,
                                t339=(SHORT, [3] * 3))

    # PNG.
    rows8 = [bytes8[y * width:(y + 1) * width] for y in range(height)]
    rows16 = [values("H", counts[y * width:(y + 1) * width], ">") for y in range(height)]
    yield "counts-of-200-in-16-bits.png", png(width, height, 16, 0, rows16)
    with_alpha = [values("H", [n for c in counts[y * width:(y + 1) * width] for n in (c, 65535)], ">")
                  for y in range(height)]
    yield "grey-alpha-16-bits.png", png(width, height, 16, 4, with_alpha)
    transparent = [values("H", [n for x in range(width) for n in (counts[y * width + x] * 300, 0 if x == 1 else 65535)],
                          ">") for y in range(height)]
    yield "transparent-column-16-bits.png", png(width, height, 16, 4, transparent)
    between = [values("H", [n for x in range(width) for n in (counts[y * width + x] * 300, x * 257 * 20 + 129)], ">")
               for y in range(height)]
    yield "alpha-between-two-levels-16-bits.png", png(width, height, 16, 4, between)
    yield "gamma-of-1.png", png(width, height, 8, 0, rows8, [(b"gAMA", struct.pack(">I", 100000))])
    yield "transparent-grey.png", png(width, height, 8, 0, rows8, [(b"tRNS", struct.pack(">H", 200))])
    yield "no-end-chunk.png", png(width, height, 8, 0, rows8, end=False)
    yield "lies-30000-x-30000.png", png(30000, 30000, 8, 0, rows8)

    # BMP, GIF, JPEG.
    yield "palette.bmp", bmp(width, height, 8, spectrum, bytes8)
    yield "grey-4-bits.bmp", bmp(width, height, 4, greys[::17], b"".join(
        packed_bits([c % 16 for c in counts[y * width:(y + 1) * width]], 4).ljust(8, b"\0") for y in range(height)))
    runs = b"\0\0".join(bytes([0, width]) + row for row in reversed(rows8))
    yield "runs.bmp", bmp(width, height, 8, greys, runs + b"\0\1", 1)
    yield "runs-that-skip-pixels.bmp", bmp(width, height, 8, greys, b"\x03\x64\0\2\2\1\x04\xc8\0\1", 1)
    yield "runs-without-end.bmp", bmp(width, height, 8, greys, bytes([0, width]) + rows8[0], 1)
    runs4 = b"\x05\x12\0\4\x34\x56\3\x77\0\0\0\3\x9a\xb0\0\1"
    yield "runs-of-4-bits.bmp", bmp(width, height, 4, greys[::17], runs4, 2)
    rows24 = b"".join(bytes(spectrum[c][::-1]) for c in counts)
    yield "top-down.bmp", bmp(width, -height, 24, [], rows24)
    words32 = values("I", [r << 16 | g << 8 | b for r, g, b in (spectrum[c] for c in counts)])
    eight = (0xFF0000, 0xFF00, 0xFF)
    yield "header-of-52-bytes.bmp", bmp_with_masks(width, -height, 32, eight, words32, 52)
    yield "header-of-56-bytes-alpha-all-0.bmp", bmp_with_masks(width, -height, 32, eight + (0xFF << 24,), words32, 56)
    words10 = values("I", [r << 22 | g << 12 | b << 2 for r, g, b in
                           (((n * 1023 + 127) // 255 for n in spectrum[c]) for c in counts)])
    yield "masks-of-10-bits.bmp", bmp_with_masks(width, -height, 32, (0x3FF << 22, 0x3FF << 12, 0x3FF << 2), words10, 40)
    yield "white-of-15-bits.bmp", bmp(width, height, 16, [], b"\xff\x7f" * (width * height))
    yield "os2-of-3-colours.bmp", bmp_of_os2(width, height, [(0, 0, 0), (200, 100, 50), (255, 255, 255)],
                                             bytes(i % 3 for i in range(width * height)))
    yield "past-its-screen.gif", gif(width, height, spectrum, counts, screen=(10, 7), place=(3, 2), background=99)
    yield "lies-16000-x-16000.gif", (b"GIF89a" + struct.pack("<HHBBB", 16000, 16000, 0x80, 0, 0) + b"\0\0\0\xff\xff\xff\x2c"
                                    + struct.pack("<HHHHB", 0, 0, 1, 1, 0) + b"\2\2\x44\1\0;")
    yield "grey.gif", gif(width, height, greys, counts)
    yield "transparent-200.gif", gif(width, height, spectrum, counts, b"\x21\xf9\x04\x01\0\0\xc8\0")
    yield "grey.jpg", JPEG
    yield "turned-right.jpg", jpeg_with_orientation(6)
    yield "no-end-marker.jpg", JPEG[:-2]
    yield "lossless.jpg", LOSSLESS_JPEG
    yield "12-bits.jpg", JPEG_OF_12_BITS
    counts_png = png(width, height, 8, 0, rows8)
    yield from odd_picts([list(row) for row in rows8], counts_png, tiff(bytes8, width, height, 8), JPEG)
    yield "text-that-begins-with-BM.txt", b"BMW is a maker of cars, not a picture.\n"
    yield "empty.tif", b""


def main():
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for name, content in odd_pictures():
        (folder / name).write_bytes(content)


if __name__ == "__main__":
    main()
