#!/usr/bin/python3
"""Makes the sample clusters in samples/: element maps as a microprobe or an ion probe would count them.

A scene gives each pixel a phase and a growth zone, and from these the mean counts of each species; counts are drawn
from a Poisson distribution. The random number generator is our own, so that every run gives the same files.
"""
import math
import os

from image_files import write_png, write_tiff

FOLDER = os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "samples")


class Random:
    """SplitMix64."""

    def __init__(self, seed):
        self.state = seed

    def unit(self):
        """From 0 to below 1."""
        mask = 0xFFFFFFFFFFFFFFFF
        self.state = (self.state + 0x9E3779B97F4A7C15) & mask
        z = self.state
        z = ((z ^ (z >> 30)) * 0xBF58476D1CE4E5B9) & mask
        z = ((z ^ (z >> 27)) * 0x94D049BB133111EB) & mask
        return ((z ^ (z >> 31)) >> 11) / 9007199254740992.0

    def between(self, low, high):
        return low + (high - low) * self.unit()

    def poisson(self, mean):
        if mean > 60:  # close to normal there
            return max(0, int(mean + math.sqrt(mean) * self.normal() + 0.5))
        limit, product, count = math.exp(-mean), self.unit(), 0
        while product > limit:
            product *= self.unit()
            count += 1
        return count

    def normal(self):
        return math.sqrt(-2 * math.log(1 - self.unit())) * math.cos(2 * math.pi * self.unit())


class Blob:
    """A grain with a wavy, faceted outline; `growth` is 0 at its core, 1 at its rim, None outside."""

    def __init__(self, random, x, y, radius, facets=6, wobble=0.05, stretch=1.0):
        self.x, self.y, self.radius, self.facets, self.stretch = x, y, radius, facets, stretch
        self.turn = random.between(0, 2 * math.pi)
        self.waves = [(n, random.between(0, wobble), random.between(0, 2 * math.pi)) for n in (2, 3, 5)]

    def growth(self, x, y):
        dx, dy = x - self.x, y - self.y
        if abs(dx) > 1.5 * self.radius * self.stretch or abs(dy) > 1.5 * self.radius * self.stretch:
            return None
        c, s = math.cos(self.turn), math.sin(self.turn)
        u, v = (c * dx + s * dy) / self.stretch, c * dy - s * dx
        angle = math.atan2(v, u)
        edge = self.radius * (1 + sum(a * math.sin(n * angle + p) for n, a, p in self.waves))
        if self.facets:  # flat faces, half way between a circle and a polygon
            sector = math.pi / self.facets
            edge *= 0.5 + 0.5 * math.cos(sector) / math.cos((angle % (2 * sector)) - sector)
        growth = math.hypot(u, v) / edge
        return growth if growth < 1 else None


class Mosaic:
    """Grains side by side: each pixel belongs to the nearest seed; `edge` is near 0 where two grains meet."""

    def __init__(self, random, width, height, seeds, phases):
        """`phases`: name, share of the grains, elongation."""
        self.seeds = []
        for _ in range(seeds):
            pick, chosen = random.unit(), phases[-1]
            for phase in phases:
                pick -= phase[1]
                if pick < 0:
                    chosen = phase
                    break
            turn = random.between(-0.5, 0.5)
            self.seeds.append((random.between(0, width), random.between(0, height), math.cos(turn), math.sin(turn),
                               chosen[2], chosen[0]))

    def at(self, x, y):
        best, second, phase = 1e9, 1e9, None
        for sx, sy, c, s, stretch, name in self.seeds:
            u, v = (c * (x - sx) + s * (y - sy)) / stretch, c * (y - sy) - s * (x - sx)
            far = u * u + v * v
            if far < best:
                best, second, phase = far, best, name
            elif far < second:
                second = far
        return phase, math.sqrt(second) - math.sqrt(best)


# Mean counts of each phase in a thin section.
ELEMENTS = ("Fe", "Mg", "Mn", "Ca", "Al", "Si", "Ti", "K")
ROCK = {
    "quartz":      dict(Fe=0.4, Mg=0.3, Mn=0.2, Ca=0.3, Al=0.8, Si=92, Ti=0.3, K=0.3),
    "plagioclase": dict(Fe=0.6, Mg=0.3, Mn=0.2, Ca=18, Al=48, Si=58, Ti=0.3, K=1.0),
    "biotite":     dict(Fe=38, Mg=30, Mn=0.6, Ca=0.3, Al=34, Si=34, Ti=9, K=62),
    "muscovite":   dict(Fe=2, Mg=2, Mn=0.2, Ca=0.3, Al=70, Si=46, Ti=1.5, K=70),
    "ilmenite":    dict(Fe=76, Mg=1, Mn=5, Ca=0.3, Al=0.6, Si=0.8, Ti=88, K=0.2),
    "epoxy":       dict(Fe=0.2, Mg=0.2, Mn=0.1, Ca=0.5, Al=0.5, Si=1.5, Ti=0.1, K=0.5),
}


def garnet(growth):
    """Mn falls and Mg rises from core to rim; Ca has a plateau, a sharp annulus, and falls; Fe fills the rest."""
    mn = 46 * math.exp(-4.5 * growth * growth) + (5 if growth > 0.96 else 0.8)
    mg = 8 + 24 * growth ** 2.5
    ca = (22 - 4 * math.cos(22 * growth)) if growth < 0.62 else 40 if growth < 0.68 else 12 - 8 * (growth - 0.68)
    return dict(Fe=84 - 0.45 * mn - 0.5 * mg - 0.4 * ca, Mg=mg, Mn=mn, Ca=ca, Al=44, Si=40,
                Ti=0.9 + 3 * max(0.0, 0.25 - growth), K=0.2)


def thin_section(seed, width, height, garnets):
    """Rows of mean counts: garnets with inclusions and cracks in a matrix of quartz, feldspar and mica."""
    random = Random(seed)
    matrix = Mosaic(random, width, height, 80, [("quartz", 0.40, 1.0), ("plagioclase", 0.24, 1.2),
                                                ("biotite", 0.26, 2.6), ("muscovite", 0.10, 3.0)])
    crystals = [Blob(random, x * width, y * height, r * width, facets=6) for x, y, r in garnets]
    inclusions, cracks = [], []
    for crystal in crystals:
        for _ in range(int(crystal.radius / 4)):
            angle, far = random.between(0, 2 * math.pi), crystal.radius * random.between(0.1, 0.62)
            inclusions.append((Blob(random, crystal.x + far * math.cos(angle), crystal.y + far * math.sin(angle),
                                    random.between(1.5, 4.5), facets=0, wobble=0.2, stretch=1.6),
                               "quartz" if random.unit() < 0.7 else "ilmenite"))
        for _ in range(2):
            angle = random.between(0, math.pi)
            cracks.append((crystal, math.cos(angle), math.sin(angle), random.between(-0.4, 0.4) * crystal.radius))
    for _ in range(9):
        inclusions.append((Blob(random, random.between(0, width), random.between(0, height), random.between(1.5, 5),
                                facets=4, stretch=1.8), "ilmenite"))

    def at(x, y):
        for blob, phase in inclusions:
            if blob.growth(x, y) is not None:
                return ROCK[phase]
        for crystal in crystals:
            growth = crystal.growth(x, y)
            if growth is None:
                continue
            for owner, c, s, offset in cracks:
                along = c * (x - crystal.x) + s * (y - crystal.y)
                across = c * (y - crystal.y) - s * (x - crystal.x)
                if owner is crystal and abs(across - offset - 1.5 * math.sin(along / 5)) < 0.5:
                    return ROCK["epoxy"]
            return garnet(growth)
        phase, edge = matrix.at(x, y)
        return ROCK["epoxy" if edge < 0.35 else phase]

    return [at(x + 0.5, y + 0.5) for y in range(height) for x in range(width)]


def to_bytes(counts, gain):
    return [min(255, int(count * gain + 0.5)) for count in counts]


def make_garnets():
    for name, seed, width, height, elements, garnets in (
            ("A", 11, 256, 256, ELEMENTS, [(0.42, 0.45, 0.27), (0.84, 0.80, 0.13), (0.86, 0.17, 0.08)]),
            ("B", 29, 240, 180, ELEMENTS[:6], [(0.30, 0.40, 0.17), (0.72, 0.58, 0.20)])):
        scene = thin_section(seed, width, height, garnets)
        os.makedirs(os.path.join(FOLDER, f"garnet_{name}"), exist_ok=True)
        for index, element in enumerate(elements):
            noise = Random(1000 * seed + index)
            levels = to_bytes([noise.poisson(means[element]) for means in scene], 2.1)
            stem = os.path.join(FOLDER, f"garnet_{name}", f"garnet_{name}_{element}")
            if name == "A":
                write_tiff(stem + ".tif", width, height, 8, levels)
            else:
                write_png(stem + ".png", width, height, 1, levels)


# Mean counts of each phase under an ion probe: cells fed with a tracer, on a silicon wafer.
ISOTOPES = ("C12", "C13", "N14", "O16", "P31", "S32")
CELLS = {
    "wafer": dict(C12=2, C13=0.03, N14=0.4, O16=14, P31=0.05, S32=0.1),
    "body":  dict(C12=70, C13=1.0, N14=46, O16=30, P31=9, S32=11),
    "core":  dict(C12=52, C13=1.0, N14=60, O16=34, P31=34, S32=7),
    "grain": dict(C12=3, C13=0.05, N14=0.6, O16=96, P31=0.3, S32=0.4),
}


def make_tracer():
    """Two generations of cells, one of which took up the tracer; it sits in their outer shell and in their granules."""
    size, random = 192, Random(71)
    cells = []
    for _ in range(34):
        x, y, radius = random.between(0, size), random.between(0, size), random.between(9, 17)
        if all(math.hypot(x - other.x, y - other.y) > 0.85 * (radius + other.radius) for other, _ in cells):
            cells.append((Blob(random, x, y, radius, facets=0, wobble=0.07, stretch=1.25), random.unit() < 0.45))
    granules = [Blob(random, cell.x + random.between(-0.6, 0.6) * cell.radius,
                     cell.y + random.between(-0.6, 0.6) * cell.radius, random.between(1.2, 2.4), facets=0)
                for cell, fed in cells if fed for _ in range(4)]
    grains = [Blob(random, random.between(0, size), random.between(0, size), random.between(2, 7), facets=5)
              for _ in range(12)]

    def at(x, y):
        for cell, fed in cells:
            growth = cell.growth(x, y)
            if growth is None:
                continue
            means = dict(CELLS["core" if growth < 0.42 else "body"])
            fade = 1 - 0.45 * max(0.0, growth - 0.75) / 0.25  # the beam's width blurs the rim
            means = {isotope: mean * fade for isotope, mean in means.items()}
            if fed:
                hot = any(granule.growth(x, y) is not None for granule in granules)
                means["C13"] = 52 if hot else 26 if growth > 0.6 else 11
            return means
        return CELLS["grain" if any(grain.growth(x, y) is not None for grain in grains) else "wafer"]

    scene = [at(x + 0.5, y + 0.5) for y in range(size) for x in range(size)]
    os.makedirs(os.path.join(FOLDER, "tracer"), exist_ok=True)
    for index, isotope in enumerate(ISOTOPES):
        noise = Random(500 + index)
        levels = to_bytes([noise.poisson(means[isotope]) for means in scene], 2.4)
        write_tiff(os.path.join(FOLDER, "tracer", f"tracer_{isotope}_{index + 1}.tif"), size, size, 8, levels, True)


def make_counts():
    """An alloy with dendrites, as raw counts of 16 bits: the brightest map holds a few hundred, the faintest a dozen."""
    size, random = 160, Random(5)
    arms = [(random.between(0, size), random.between(0, size), random.between(0, math.pi)) for _ in range(7)]

    def segregation(x, y):
        """0 at the centre of a dendrite arm, 1 in the last melt between the arms."""
        sx, sy, turn = min(arms, key=lambda arm: (arm[0] - x) ** 2 + (arm[1] - y) ** 2)
        u = math.cos(turn) * (x - sx) + math.sin(turn) * (y - sy)
        v = math.cos(turn) * (y - sy) - math.sin(turn) * (x - sx)
        trunk = min(abs(u), abs(v)) / 13
        side = abs(math.sin(math.pi * max(abs(u), abs(v)) / 13))
        return min(1.0, trunk * (0.35 + 0.65 * side))

    scene = [segregation(x + 0.5, y + 0.5) for y in range(size) for x in range(size)]
    means = {"Ni": lambda s: 420 - 60 * s, "Cr": lambda s: 120 + 30 * s, "Nb": lambda s: 6 + 90 * s ** 3,
             "Mo": lambda s: 1.2 + 2.5 * s}
    os.makedirs(os.path.join(FOLDER, "counts16"), exist_ok=True)
    for index, (element, mean) in enumerate(means.items()):
        noise = Random(900 + index)
        counts = [noise.poisson(mean(s)) for s in scene]
        write_tiff(os.path.join(FOLDER, "counts16", f"alloy {element} counts.tif"), size, size, 16, counts, True)


if __name__ == "__main__":
    make_garnets()
    make_tracer()
    make_counts()
