#!/usr/bin/python3
"""Draws the program's own pictures, pointers and icon into resources/. Run it again after a change and commit both.

Pictures are black and white icons of bevel buttons; where a picture has a mask, black shows and white hides. Pointers
are RGBA; their hot spots go to hotspots.txt, one line each: number, x, y.
"""
import math
import os

from image_files import write_png

FOLDER = os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "resources")

BLACK, WHITE = (0, 0, 0), (255, 255, 255)

# Icons of 18 by 18. '#' is black, 'o' is visible white, '.' is white that the mask hides.
X_ICON = """
..................
..................
..##..........##..
..###........###..
...###......###...
....###....###....
.....###..###.....
......######......
.......####.......
.......####.......
......######......
.....###..###.....
....###....###....
...###......###...
..###........###..
..##..........##..
..................
..................
"""

ARROW_ICON = """
..................
....##............
....#o#...........
....#oo#..........
....#ooo#.........
....#oooo#........
....#ooooo#.......
....#oooooo#......
....#ooooooo#.....
....#oooooooo#....
....#ooooo#####...
....#oo#oo#.......
....#o#.#oo#......
....##..#oo#......
.........#oo#.....
.........#oo#.....
..........##......
..................
"""


def icon_pixels(art, black_where):
    """RGB bytes of an icon: black where the letter is one of `black_where`, white elsewhere."""
    rows = art.split()
    assert len(rows) == 18 and all(len(row) == 18 for row in rows)
    return b"".join(bytes(BLACK if letter in black_where else WHITE) for row in rows for letter in row)


def ring_icon():
    """Two black rings around a dot with white between them, as letters."""
    def letter(x, y):
        radius = math.hypot(x - 8.5, y - 8.5)
        if radius > 8.9:
            return "."
        return "#" if radius < 1.5 or 3.4 <= radius < 4.8 or radius >= 7.6 else "o"
    return "\n".join("".join(letter(x, y) for x in range(18)) for y in range(18))


# Shapes are lists of polygons; a polygon is a list of corners, in pixels from the top left.

def inside(polygon, x, y):
    hit = False
    for (ax, ay), (bx, by) in zip(polygon, polygon[1:] + polygon[:1]):
        if (ay > y) != (by > y) and x < (bx - ax) * (y - ay) / (by - ay) + ax:
            hit = not hit
    return hit


def distance(polygon, x, y):
    """From the point to the nearest edge; 0 inside."""
    if inside(polygon, x, y):
        return 0.0
    best = math.inf
    for (ax, ay), (bx, by) in zip(polygon, polygon[1:] + polygon[:1]):
        length = (bx - ax) ** 2 + (by - ay) ** 2
        along = max(0.0, min(1.0, ((x - ax) * (bx - ax) + (y - ay) * (by - ay)) / length)) if length else 0.0
        best = min(best, math.hypot(x - ax - along * (bx - ax), y - ay - along * (by - ay)))
    return best


def render(width, height, colour_at, samples=4):
    """RGBA bytes. `colour_at(x, y)` is a colour or None for transparent; each pixel is the mean of its samples."""
    out = bytearray()
    for py in range(height):
        for px in range(width):
            total, hits = [0, 0, 0], 0
            for i in range(samples * samples):
                colour = colour_at(px + (i % samples + 0.5) / samples, py + (i // samples + 0.5) / samples)
                if colour:
                    hits += 1
                    total = [a + b for a, b in zip(total, colour)]
            out += bytes([round(c / hits) for c in total] if hits else [0, 0, 0])
            out.append(round(255 * hits / (samples * samples)))
    return bytes(out)


def rimmed(parts, rim, rim_width):
    """Colour function of coloured polygons, first on top, with a rim of `rim_width` around them all."""
    def colour_at(x, y):
        for polygon, colour in parts:
            if inside(polygon, x, y):
                return colour
        near = min(distance(polygon, x, y) for polygon, _ in parts)
        return rim if near <= rim_width else None
    return colour_at


def bar(x0, y0, x1, y1):
    return [(x0, y0), (x1, y0), (x1, y1), (x0, y1)]


def pen(tip_x, tip_y):
    """A pencil that leans to the right, its lead at the tip: lead, wood, body, end."""
    def at(along, across):  # along the pencil from the tip, across to its right
        turn = math.sqrt(0.5)
        return (tip_x + turn * (along - across), tip_y - turn * (along + across))
    lead = [at(0, 0), at(2.5, -1.0), at(2.5, 1.0)]
    wood = [at(2.5, -1.0), at(7.0, -2.6), at(7.0, 2.6), at(2.5, 1.0)]
    body = [at(7.0, -2.6), at(19.0, -2.6), at(19.0, 2.6), at(7.0, 2.6)]
    end = [at(19.0, -2.6), at(22.0, -2.6), at(22.0, 2.6), at(19.0, 2.6)]
    return [(lead, BLACK), (wood, (240, 214, 170)), (body, (250, 190, 40)), (end, (210, 90, 90))]


def pointers():
    """Number, size, RGBA bytes and hot spot of each pointer."""
    # Four arms around a free centre, so that the pixel under the hot spot stays visible.
    arms = [(bar(*box), BLACK) for box in ((11, 2, 12, 9), (11, 14, 12, 21), (2, 11, 9, 12), (14, 11, 21, 12))]
    arrow = [(1.5, 1.5), (1.5, 16.5), (5.0, 13.2), (7.4, 18.6), (9.6, 17.6), (7.2, 12.4), (12.0, 12.0)]
    return [
        (168, 16, bytes(4 * 16 * 16), (0, 0)),
        (173, 24, render(24, 24, rimmed(arms, WHITE, 1.0)), (11, 11)),
        (174, 24, render(24, 24, rimmed([(arrow, WHITE)], BLACK, 1.2)), (1, 1)),
        (177, 24, render(24, 24, rimmed(pen(1.5, 22.5), BLACK, 0.9)), (1, 22)),
    ]


# The application icon: a garnet cut across, its growth zones in the colours of the rainbow.
CRYSTAL = [(0.02, -1.0), (0.80, -0.62), (0.96, 0.26), (0.44, 0.92), (-0.44, 0.96), (-0.95, 0.36), (-0.82, -0.56)]
ZONES = [("#d7263d", 1.00), ("#f46036", 0.85), ("#ffd23f", 0.70), ("#3bb273", 0.55), ("#1b9aaa", 0.41),
         ("#3454d1", 0.28), ("#7d3cb5", 0.15)]
OUTLINE = "#20242c"


def zone_corners(scale):
    """Corners of a zone on a field of 256; inner zones are a little off centre, as in a real crystal."""
    return [(128 + 112 * x * scale + 10 * (1 - scale), 128 + 112 * y * scale + 6 * (1 - scale)) for x, y in CRYSTAL]


def rgb(text):
    return tuple(int(text[i:i + 2], 16) for i in (1, 3, 5))


def write_icon():
    shapes = "\n".join('  <polygon points="%s" fill="%s"/>' %
                       (" ".join("%.1f,%.1f" % corner for corner in zone_corners(scale)), colour)
                       for colour, scale in ZONES)
    edge = " ".join("%.1f,%.1f" % corner for corner in zone_corners(1.0))
    with open(os.path.join(FOLDER, "vornalite.svg"), "w") as file:
        file.write('<svg xmlns="http://www.w3.org/2000/svg" width="256" height="256" viewBox="0 0 256 256">\n'
                   f'{shapes}\n  <polygon points="{edge}" fill="none" stroke="{OUTLINE}" stroke-width="12"'
                   ' stroke-linejoin="round"/>\n</svg>\n')
    rim = zone_corners(1.0)
    zones = [(zone_corners(scale), rgb(colour)) for colour, scale in reversed(ZONES)]

    def on_edge(x, y):
        return min(distance([a, b], x, y) for a, b in zip(rim, rim[1:] + rim[:1])) <= 6.0

    def colour_at(x, y):
        zone = next((colour for polygon, colour in zones if inside(polygon, x, y)), None)
        inner = zone not in (None, zones[-1][1])  # the outline reaches into the outermost zone alone
        return rgb(OUTLINE) if not inner and on_edge(x, y) else zone

    write_png(os.path.join(FOLDER, "vornalite.png"), 256, 256, 4, render(256, 256, colour_at))


def main():
    rings = ring_icon()
    icons = [(168, X_ICON, "#"), (169, ARROW_ICON, "#"), (170, ARROW_ICON, "#o"), (172, rings, "#"),
             (171, rings, "#o")]
    for number, art, black_where in icons:
        write_png(os.path.join(FOLDER, f"picture-{number}.png"), 18, 18, 3, icon_pixels(art, black_where))
    with open(os.path.join(FOLDER, "hotspots.txt"), "w") as spots:
        for number, size, pixels, (x, y) in pointers():
            write_png(os.path.join(FOLDER, f"cursor-{number}.png"), size, size, 4, pixels)
            spots.write(f"{number} {x} {y}\n")
    write_icon()


if __name__ == "__main__":
    main()
