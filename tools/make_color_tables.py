#!/usr/bin/env python3
"""Makes the twenty colour tables: stack/ColorTablesData.inc.

A table is drawn through anchors: five fixed colours (entries 1, 64, 128, 192 and 254), which never change, and further
anchors that say what lies between them. Monotone cubics join the anchors, so that nothing overshoots. The components
are red, green and blue, or hue, saturation and value where a table runs through the colours of the rainbow: that way
it passes through its hues at full strength and never through the grey that lies between two of them in RGB.

    tools/make_color_tables.py                    writes the data
    tools/make_color_tables.py --picture x.png    draws the twenty bars, entry 1 on the left
"""

import argparse
import colorsys
import pathlib

from image_files import write_png

FIXED_ENTRIES = (1, 64, 128, 192, 254)
OUTPUT = pathlib.Path(__file__).resolve().parent.parent / "stack" / "ColorTablesData.inc"


def monotone_cubic(points):
    """The values at 1..254 of the cubic through points {entry: value} that is monotone wherever the points are."""
    xs = sorted(points)
    ys = [points[x] for x in xs]
    steps = [b - a for a, b in zip(xs, xs[1:])]
    slopes = [(b - a) / h for a, b, h in zip(ys, ys[1:], steps)]
    tangents = [slopes[0]]
    for left, right, hl, hr in zip(slopes, slopes[1:], steps, steps[1:]):
        if left * right <= 0:
            tangents.append(0.0)
        else:  # weighted harmonic mean of the neighbouring slopes (Fritsch and Butland)
            wl, wr = 2 * hr + hl, hr + 2 * hl
            tangents.append((wl + wr) / (wl / left + wr / right))
    tangents.append(slopes[-1])
    values = {}
    for i, h in enumerate(steps):
        for x in range(xs[i], xs[i + 1] + 1):
            t = (x - xs[i]) / h
            values[x] = ((1 + 2 * t) * (1 - t) ** 2 * ys[i] + t * (1 - t) ** 2 * h * tangents[i]
                         + t * t * (3 - 2 * t) * ys[i + 1] + t * t * (t - 1) * h * tangents[i + 1])
    return values


def components(color):
    return (color >> 16 & 255, color >> 8 & 255, color & 255)


def pack(red, green, blue):
    return red << 16 | green << 8 | blue


def through(fixed, to_components, to_color, more):
    """Entries 1..254 through the fixed colours and `more`, {entry: three components, None where one is free}."""
    anchors = [{}, {}, {}]
    fixed_values = {}
    previous = None
    for entry, color in zip(FIXED_ENTRIES, fixed):
        previous = fixed_values[entry] = more.get(entry) or to_components(color, previous)
    for entry, values in (fixed_values | more).items():
        for anchor, value in zip(anchors, values):
            if value is not None:
                anchor[entry] = value
    curves = [monotone_cubic(anchor) for anchor in anchors]
    table = {entry: to_color(*(curve[entry] for curve in curves)) for entry in range(1, 255)}
    for entry, color in zip(FIXED_ENTRIES, fixed):
        table[entry] = color
    return table


def rgb(*fixed, more=None):
    def to_color(*values):
        return pack(*(min(255, max(0, round(v))) for v in values))

    more = {entry: components(color) if isinstance(color, int) else color for entry, color in (more or {}).items()}
    return through(fixed, lambda color, previous: components(color), to_color, more)


def hsv(*fixed, more=None):
    """Hue in degrees, falling along the table; saturation 0..1; value 0..255."""

    def to_components(color, previous):
        hue, saturation, value = colorsys.rgb_to_hsv(*components(color))
        hue *= 360
        while previous and hue > previous[0]:
            hue -= 360
        return hue, saturation, value

    def to_color(hue, saturation, value):
        return pack(*(min(255, max(0, round(v))) for v in colorsys.hsv_to_rgb(hue / 360 % 1, saturation, value)))

    return through(fixed, to_components, to_color, more or {})


def grey_scale():
    """A grey scale made by hand: it begins at 0, skips a step at 87 and at 170, and has one tinted entry."""
    table = {i: (i - 1 + (i >= 87) + (i >= 170)) * 0x010101 for i in range(1, 255)}
    table[5] = 0x040403
    return table


def inverted_grey_scale():
    return {i: (256 - i - (i >= 87) - (i >= 170)) * 0x010101 for i in range(1, 255)}


def tables():
    free = None
    yield "01 Hot Metal", rgb(
        0x010000, 0x6D0000, 0xDE0000, 0xFF7600, 0xFFFF00,
        # Red is full before green has risen far: black, red, orange, yellow.
        more={139: (free, 0, 0), 147: (255, free, 0)})
    yield "02 Hot Metal Light", rgb(
        0x020000, 0xFF1100, 0xFF6100, 0xFFB200, 0xFFFF00,
        more={50: (free, 0, 0), 60: (255, free, 0)})
    yield "03 White-Yellow-Red-Black", rgb(
        0xFFFFFF, 0xFFFF2E, 0xFE9A00, 0xFE0000, 0x000000,
        more={78: (free, free, 0), 86: (free, 255, free)})
    yield "04 Earth", rgb(
        0x000000, 0x2D0058, 0x73DDD0, 0xBE542B, 0xFEFEFE,
        # The sea up to the surf, the shore, then meadow, sand, rock and snow.
        more={32: 0x1C0024, 84: 0x1E0F86, 104: 0x2D8FBE, 136: 0xB0EECC, 150: 0x2F8F2A, 164: 0xBAE21C, 178: 0xD07421,
              214: 0xD68C6D, 236: 0xF9ECE4})
    yield "05 Earth-Land Tones", rgb(
        0x187914, 0xBAE21C, 0xD07421, 0xD68C6D, 0xF9ECE4,
        # Meadow, dry grass, clay, dark rock, sandstone, snow.
        more={92: 0xE0BE20, 156: 0xBE5A2E})
    yield "06 Earth-Sea Tones", rgb(
        0x000000, 0x200029, 0x1E0072, 0x2D8FBE, 0xCBF7DC,
        more={160: 0x1E3FA0, 226: 0x73DDD0})
    yield "07 GrayScale", grey_scale()
    yield "08 GrayScale-Squeezed", rgb(
        0x000000, 0x212121, 0x828282, 0xE8E8E8, 0xFBFBFB)
    yield "09 GrayScale-Inverted", inverted_grey_scale()
    yield "10 Rainbow", hsv(
        0x7C00FF, 0x009EFE, 0x00FE3E, 0xE1FE00, 0xFF0000)
    yield "11 Rainbow-(Dark->Light)", hsv(
        0x000000, 0x00436C, 0x00DB35, 0xE2FF00, 0xFF0400,
        # Black has no hue of its own: the rainbow begins in violet. The value rises evenly and then stays full.
        more={1: (270, 1, 0), 149: (free, free, 255)})
    yield "12 Rainbow-(Dark->Light)-NoGreen", hsv(
        0x000000, 0x000974, 0x00EAB9, 0xFF6400, 0xFF006C,
        # From turquoise to yellow in a few pale steps, so that no band of green forms.
        more={1: (302, 1, 0), 138: (157, 0.9, 246), 148: (108, 0.42, 255), 158: (60, 0.9, 255), 166: (51, 1, 255)})
    yield "13 Rainbow-(Dark->Light)-Pastel", hsv(
        0x240421, 0x4625FF, 0x79CDE0, 0xCFAB09, 0xE90000,
        more={96: (220, 0.62, 246), 150: (140, 0.47, 219), 170: (82, 0.66, 212)})
    yield "14 Rainbow-Dark", hsv(
        0x150020, 0x001DCB, 0x00D6D0, 0xC89000, 0xFF0000)
    yield "15 Rainbow-Darker", hsv(
        0x5200A7, 0x0068A7, 0x00A728, 0x94A700, 0xA70300)
    yield "16 Rainbow-Light", hsv(
        0xAD5EFF, 0x5EC3FF, 0x5EFF86, 0xEDFF5E, 0xFF615E)
    yield "17 Rainbow-Reduced Green", hsv(
        0x400078, 0x0036D9, 0x00D6E1, 0xC4A200, 0xF80000,
        # The greens take half the width of their neighbours and are weaker.
        more={144: (170, 1, free), 156: (118, 0.62, 218), 168: (70, 1, free)})
    yield "18 Rainbow-Squeezed", hsv(
        0xB800FF, 0x000BFF, 0x1BFE00, 0xFF7000, 0xFF0000)
    yield "19 Rainbow-Temperature", hsv(
        0x54004C, 0x001DB2, 0xDAFFEE, 0xBDFF00, 0xFF0100,
        # Cold: blue and cyan up to ice. Warm: yellow to red.
        more={96: (196, 0.85, 250)})
    yield "20 World Colors Rainbow", hsv(
        0x00002A, 0x000E6C, 0x00AF78, 0xF2A900, 0xFF0000)


def data_lines():
    """Each line: name, white, the entries 1..254, black."""
    for name, table in tables():
        yield name, ",".join([name, str(0xFFFFFF)] + [str(table[i]) for i in range(1, 255)] + ["0"])


def write_data():
    out = ["// Made by tools/make_color_tables.py; change the tables there.\n"]
    for _, line in data_lines():
        pieces = []
        while line:
            cut = len(line) if len(line) <= 114 else line.rindex(",", 0, 114) + 1
            pieces.append(f'"{line[:cut]}"')
            line = line[cut:]
        out.append("\n".join(pieces) + ",\n")
    OUTPUT.write_text("".join(out), encoding="ascii")


def write_picture(path, scale=4, height=26, gap=4):
    rows = []
    for _, table in tables():
        row = b"".join(bytes(components(table[i])) * scale for i in range(1, 255))
        rows += [row] * height + [b"\x80" * len(row)] * gap
    write_png(path, 254 * scale, len(rows), 3, b"".join(rows))


if __name__ == "__main__":
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--picture", type=pathlib.Path, metavar="FILE", help="draw the bars into a PNG instead")
    picture = parser.parse_args().picture
    write_picture(picture) if picture else write_data()
