#!/usr/bin/env python3
"""Writes fuzz/map_files, the corpus of fuzz_map_file: the numbers of a map file, then the file.

    tools/make_map_files.py fuzz/map_files
"""
import pathlib
import struct
import sys

COUNTS, SIZES = 10, 4  # positions in a file that state the number of maps and their size
FIRST_NAME, NAMES, BETWEEN = 3072, 4808, 1224


def map_file(count, size, names=(), length=4560):
    content = bytearray(length)
    for i, name in enumerate(names):
        at = FIRST_NAME if i == 0 else NAMES + i * size * size * 2 + (i - 1) * BETWEEN
        content[at:at + len(name)] = name
    return struct.pack("<14h", *[count] * COUNTS, *[size] * SIZES) + content


def main():
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    (folder / "three-maps").write_bytes(map_file(3, 4, [b"Fe\0xx", b"Titan", b"\xb5g"], length=6100))
    (folder / "most-and-largest-maps").write_bytes(map_file(32767, 32767))
    (folder / "sizes-below-0").write_bytes(map_file(-1, -32768))
    (folder / "ends-before-its-numbers").write_bytes(map_file(2, 2, length=100))


if __name__ == "__main__":
    main()
