"""The PICT files of tests/odd."""
import struct

from pict_files import (color_table, other_opcodes, picture, quicktime, quicktime_raster, raster, rectangle, region,
                        words)

WIDTH, HEIGHT = 70, 5
FRAME = (0, 0, HEIGHT, WIDTH)
SPECTRUM = [(i, 255 - i, i // 2) for i in range(256)]
CLIP = 0x01


def value(x, y):
    """Runs of six equal pixels, then pixels that all differ."""
    return ((x // 6 if x < 30 else x) * 29 + y * 7) % 256


def pixels(look, width=WIDTH, height=HEIGHT):
    """Rows of what `look` makes of the values."""
    return [[look(value(x, y)) for x in range(width)] for y in range(height)]


def indices(depth):
    return pixels(lambda v: v % (1 << depth))


def greys(depth):
    return [(i * 255 // ((1 << depth) - 1),) * 3 for i in range(1 << depth)]


def number16(v):
    return 0x8000 | (v % 32) << 10 | (v // 8) << 5 | (31 - v % 32)


def color(v):
    return SPECTRUM[v]


def with_alpha(v):
    return (255 - v, *SPECTRUM[v])


def odd_picts(counts, png, tiff, jpeg):
    """Names and contents. `counts` are rows of 12 x 6 grey levels; `png` and `tiff` hold them as files of those kinds,
    `jpeg` 16 x 8 pixels, the left half 40 and the right half 200."""
    small = (0, 0, len(counts), len(counts[0]))
    grey = raster(0x98, counts, 8, greys(8))
    yield "grey.pict", picture(small, [grey])
    yield "no-preamble.pict", picture(small, [grey], preamble=b"")
    yield "png-in-the-preamble.pict", picture(small, [grey], preamble=png.ljust(512, b"\0"))

    # Depths and packings. Most files do without the preamble, which keeps them small.
    bare = {"preamble": b""}
    mask = region((1, 10, 40), (2, 20, 30), (4, 10, 20, 30, 40))
    box = region((1, 5, 60), (4, 5, 60))
    red_and_blue = [(255, 0, 0), (0, 0, 255)]
    narrow = pixels(number16, 3)
    for name, opcode in (
            ("bit-map", raster(0x90, indices(1), 1)),
            ("bit-map-region", raster(0x91, indices(1), 1, mask=mask)),
            ("packed-bit-map", raster(0x98, indices(1), 1)),
            ("packed-bit-map-region", raster(0x99, indices(1), 1, mask=box)),
            ("1-bit-red-and-blue", raster(0x98, indices(1), 1, red_and_blue)),
            ("2-bits", raster(0x98, indices(2), 2, greys(2))),
            ("4-bits", raster(0x98, indices(4), 4, greys(4), by_position=True)),
            ("8-bits", raster(0x98, indices(8), 8, SPECTRUM)),
            ("8-bits-not-packed", raster(0x90, indices(8), 8, SPECTRUM)),
            ("16-bits", raster(0x9A, pixels(number16), 16)),
            ("16-bits-not-packed", raster(0x9A, pixels(number16), 16, pack_type=1)),
            ("16-bits-pack-type-3-region", raster(0x9B, pixels(number16), 16, pack_type=3, mask=mask)),
            ("32-bits", raster(0x9A, pixels(color), 32)),
            ("32-bits-not-packed", raster(0x9A, pixels(color), 32, pack_type=1)),
            ("32-bits-no-pad-byte", raster(0x9A, pixels(color), 32, pack_type=2)),
            ("32-bits-pack-type-4", raster(0x9A, pixels(color), 32, pack_type=4)),
            ("32-bits-alpha", raster(0x9A, pixels(with_alpha), 32)),
            ("32-bits-alpha-not-packed", raster(0x9A, pixels(with_alpha), 32, pack_type=1)),
            ("32-bits-alpha-unused", raster(0x9A, pixels(lambda v: (0, *color(v))), 32)),
    ):
        yield name + ".pict", picture(FRAME, [opcode], **bare)
    yield "packed-bit-map-version-1.pict", picture(FRAME, [raster(0x98, indices(1), 1)], version=1, **bare)
    yield "16-bits-narrow.pict", picture((0, 0, HEIGHT, 3), [raster(0x9A, narrow, 16)], **bare)
    long_rows = pixels(lambda v: v % 4, 1004, 3)
    yield "long-rows.pict", picture((0, 0, 3, 1004), [raster(0x98, long_rows, 2, greys(2))], **bare)

    # Coordinates. The frame begins at (left 100, top -10).
    top, left = -10, 100
    shades, table = [[count % 16 for count in row] for row in counts], greys(4)
    placed = [
        raster(0x98, shades, 4, table, destination=(top, left, top + 12, left + 24)),  # twice as large
        raster(0x98, shades, 4, table, destination=(top, left + 30, top + 3, left + 34)),  # smaller
        raster(0x98, shades, 4, table, bounds=(50, 60, 56, 72), source=(51, 62, 53, 66),  # a part
               destination=(top + 4, left + 30, top + 6, left + 34)),
        raster(0x98, shades, 4, table, destination=(top + 9, left - 6, top + 15, left + 6)),  # over the corner
        raster(0x98, shades, 4, table, destination=(500, 500, 506, 512)),  # outside
    ]
    yield "placed-and-scaled.pict", picture((top, left, top + 12, left + 36), placed, **bare)
    yield "source-rectangle-and-frame-differ.pict", picture(
        (0, 0, 2, 17), [raster(0x98, indices(8), 8, SPECTRUM, destination=(40, 20, 45, 90))], source=(40, 20, 45, 90))
    yield "clip-smaller-than-frame.pict", picture(FRAME, [(CLIP, words(10) + rectangle(1, 1, 3, 9)),
                                                          raster(0x98, indices(8), 8, SPECTRUM)], **bare)
    for version in (1, 2):
        opcodes = list(other_opcodes(version))
        yield "all-opcodes-version-%d.pict" % version, picture(
            FRAME, opcodes + [raster(0x98, indices(1), 1)] + opcodes, version=version, **bare)

    # QuickTime. Its fallback for programs without it: a text and a bit map.
    black = raster(0x90, [[1] * 8] * 4, 1, destination=(1, 1, 5, 9))
    text = (0x28, words(2, 2) + b"\x09QuickTime")
    yield "quicktime-jpeg.pict", picture((0, 0, 8, 16), [quicktime(b"jpeg", jpeg, 16, 8), text, black])
    yield "quicktime-tiff.pict", picture(small, [quicktime(b"tiff", tiff, 12, 6)], **bare)
    yield "quicktime-png-placed.pict", picture((0, 0, 12, 36), [
        quicktime(b"png ", png, 12, 6, scale=(2, 2)),
        quicktime(b"png ", png, 12, 6, move=(20, 3), source=(2, 4, 5, 9), mask=region((5, 25, 29), (7, 25, 29)))],
        **bare)
    raw8 = bytes(v for row in indices(8) for v in row)
    raw4 = bytes(a << 4 | b for row in indices(4) for a, b in zip(row[::2], row[1::2]))
    colors = b"".join(bytes(color(v)) for row in indices(8) for v in row)
    argb = b"".join(bytes(with_alpha(v)) for row in indices(8) for v in row)
    raw = [(raw8, 8, color_table(SPECTRUM)), (raw8, 40, b""), (raw4, 36, b""), (colors, 24, b""), (argb, 32, b""),
           (b"".join(words(*row) for row in pixels(number16)), 16, b"")]
    yield "quicktime-raw-bands.pict", picture((0, 0, len(raw) * HEIGHT, WIDTH), [
        quicktime(b"raw ", data, WIDTH, HEIGHT, depth, move=(0, i * HEIGHT), table=table)
        for i, (data, depth, table) in enumerate(raw)], **bare)
    yield "quicktime-not-compressed.pict", picture(small, [quicktime_raster(*grey)], **bare)

    # What cannot be shown.
    yield "vectors-alone.pict", picture(FRAME, [(0x31, rectangle(0, 0, 4, 4)), text], **bare)
    yield "quicktime-road-pizza.pict", picture(FRAME, [quicktime(b"rpza", b"\xe1\0\0\4", 16, 8), black], **bare)
    yield "quicktime-pict-as-jpeg.pict", picture(small, [quicktime(b"jpeg", picture(small, [grey]), 12, 6)], **bare)
    yield "rows-of-too-few-pixels.pict", picture(FRAME, [
        (0x98, words(10) + rectangle(*FRAME) * 3 + words(0) + b"\2\xfe\0" * HEIGHT)], **bare)
    yield "row-bytes-too-few.pict", picture(FRAME, [(0x90, words(8) + rectangle(*FRAME) * 3 + bytes(42))], **bare)
    yield "3-bits.pict", picture(small, [(0x98, grey[1][:28] + words(3) + grey[1][30:])], **bare)
    yield "lies-30000-x-30000.pict", picture((0, 0, 30000, 30000), [grey])
    large = (0, 0, 1000, 1000)
    yield "paints-over-and-over.pict", picture(large, [raster(0x90, [[1]], 1, destination=large)] * 10, version=1)
