"""expected.py PICTURE TABLE LEVEL FILE: writes as PNG what a canvas must show of one of the sample maps: its grey levels,
smoothed LEVEL times (0 is raw), in the colour table of that index, with the linear display curve. It shares no
arithmetic with the program."""
import pathlib
import re
import struct
import sys
import zlib

root = pathlib.Path(__file__).resolve().parents[2]
sys.dont_write_bytecode = True
sys.path.insert(0, str(root / "tools"))
from image_files import write_png


def read_tiff(path):
    """The rows of a map written by write_tiff. 16 bits are scaled from 0 to the highest value, at most to twice the
    99.9th percentile."""
    data = path.read_bytes()
    start, = struct.unpack_from("<I", data, 4)
    entries = (struct.unpack_from("<HHII", data, start + 2 + 12 * i) for i in range(9))
    tags = {tag: value for tag, _, _, value in entries}
    strip = data[tags[273]:tags[273] + tags[279]]
    if tags[259] == 8:
        strip = zlib.decompress(strip)
    width, count = tags[256], tags[256] * tags[257]
    if tags[258] == 16:
        values = struct.unpack("<%dH" % count, strip)
        top = min(max(values), 2 * sorted(values)[count - 1 - count // 1000])
        strip = bytes(min((510 * value + top) // (2 * top), 255) for value in values)
    return [list(map(float, strip[i:i + width])) for i in range(0, count, width)]


def means(above, row, below):
    """For each pixel of the row the mean of nine; beyond the ends the end pixels are repeated."""
    a, b, c = (line[:1] + line + line[-1:] for line in (above, row, below))
    return [(a[x] + b[x] + c[x] + a[x + 1] + b[x + 1] + c[x + 1] + a[x + 2] + b[x + 2] + c[x + 2]) / 9.0
            for x in range(len(row))]


def smoothed(rows):
    """The top row is repeated above it. Below the bottom row the row above it is repeated; for the two corner pixels,
    the bottom row."""
    result = [means(*three) for three in zip(rows[:1] + rows, rows, rows[1:] + rows[-2:-1])]
    corners = means(rows[-2], rows[-1], rows[-1])
    result[-1][0], result[-1][-1] = corners[0], corners[-1]
    return result


def colour_table(index):
    """The 256 colours as (red, green, blue); the first and the last entry repeat their neighbours."""
    source = (root / "stack/ColorTablesData.inc").read_text()
    lines = re.findall(r'"([^"]*)"', re.sub(r'"\n"', "", source))
    numbers = [int(number) for number in lines[index].split(",")[1:]]
    numbers[0], numbers[255] = numbers[1], numbers[254]
    return [number.to_bytes(3, "big") for number in numbers]


def main():
    picture, table, level, file = sys.argv[1:]
    rows = read_tiff(pathlib.Path(file))
    for _ in range(int(level)):
        rows = smoothed(rows)
    colours = colour_table(int(table))
    write_png(picture, len(rows[0]), len(rows), 3, b"".join(colours[int(value)] for row in rows for value in row))


if __name__ == "__main__":
    main()
