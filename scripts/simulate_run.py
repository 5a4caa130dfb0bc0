#!/usr/bin/env python3
"""Simulates the runs of an area detector in examples/runs/. Python 3 alone.

    python3 scripts/simulate_run.py            write all files into examples/runs/
    python3 scripts/simulate_run.py DIRECTORY  write them there

A crystal of corundum is turned about omega, or about phi, in front of a flat detector. A reflection lights up where its vector crosses
the Ewald sphere; its counts are |F|^2 times the Lorentz factor, spread over pixels and frames as a Gaussian, with Poisson noise.
Rotations are those of Busing and Levy, Acta Cryst. 22 (1967) 457; lengths are angstroms and millimetres, angles degrees.
"""

import gzip
import math
import sys
from pathlib import Path

from simulate_patterns import SEED, Counter, corundum, neutron

PIXELS, PITCH, DISTANCE, WAVE = 32, 5.0, 200.0, 0.84
GAMMA, OMEGA, CHI, PHI = 42.0, 4.0, 35.0, 20.0  # where the arm stands, and the crystal in the first frame
FRAMES, STEP = 40, 0.9
# Columns a*, b*, c*, in 1/angstrom.
UB = ((0.198759231, 0.042795568, 0.038983753), (0.139172712, 0.150396751, -0.055674569), (0.0, 0.185536068, 0.036138216))

INSTRUMENT = """! A flat detector close to the sample, 32 x 32 pixels, and a crystal of corundum on a four-circle cradle: that of the runs in this directory.
INFO        Area detector at a short distance, simulated
NAME        R6
GEOM        4C-Diff High-Chi, Eulerian cradle
DIST_UNITS  mm
ANGL_UNITS  deg
WAVE        0.84000                    ! angstroms
WAVE_LIMITS 0.5 2.4
DET_TYPE    Flat_rect ipsd 2           ! flat
DIST_DET    200.0                      ! from the sample
DIM_XZP     160.0 160.0  32 32         ! size and pixels, each horizontal and vertical
GAPS_CA_AN  5.0 5.0                    ! pitch of the pixels
GN_CENTRE   0.0 0.0                    ! gamma and nu of the centre, beside those of the arm
GAM+_LIMITS 0.0 120.0
GAM-_LIMITS -10.0 0.0
NU_LIMITS   -25.0 25.0
X_LIMITS    0.0 160.0
Z_LIMITS    0.0 160.0

! The orientation: a*, b* and c* are the columns, in 1/angstrom without 2 pi. The viewer takes it as "UB-matrix".
UBMAT
"""


def about_z(degrees, v):
    c, s = math.cos(math.radians(degrees)), math.sin(math.radians(degrees))
    return (v[0] * c - v[1] * s, v[0] * s + v[1] * c, v[2])


def about_y(degrees, v):
    c, s = math.cos(math.radians(degrees)), math.sin(math.radians(degrees))
    return (v[0] * c - v[2] * s, v[1], v[0] * s + v[2] * c)


class Scan:
    """Turns about one axis, "omega" or "phi"; frames count from 0."""

    def __init__(self, axis):
        self.axis = axis

    def start(self):
        return OMEGA if self.axis == "omega" else PHI

    def in_laboratory(self, z1, frame):
        turn = STEP * frame
        omega, phi = (OMEGA + turn, PHI) if self.axis == "omega" else (OMEGA, PHI + turn)
        return about_z(-omega, about_y(-CHI, about_z(-phi, z1)))


def place(z):
    """Pixel, from 0, that a reflected beam meets; None beside the detector."""
    to = (WAVE * z[0], WAVE * z[1] + 1, WAVE * z[2])
    c, s = math.cos(math.radians(GAMMA)), math.sin(math.radians(GAMMA))
    aside, ahead = to[0] * c - to[1] * s, to[0] * s + to[1] * c
    if ahead <= 0.3:
        return None
    u, v = DISTANCE * aside / ahead, DISTANCE * to[2] / ahead
    return u / PITCH + (PIXELS - 1) / 2, v / PITCH + (PIXELS - 1) / 2


def spots(scan):
    """Column, row, frame, |F|^2 with the Lorentz factor, and h k l, of every reflection."""
    crystal, ewald = corundum(), lambda z: z[1] + WAVE * sum(c * c for c in z) / 2
    found = []
    for h in range(-8, 9):
        for k in range(-8, 9):
            for l in range(-24, 25):
                z1 = tuple(row[0] * h + row[1] * k + row[2] * l for row in UB)
                length = math.sqrt(sum(c * c for c in z1))
                if not 0.1 < length < 1.7:
                    continue
                strength = crystal.structure_factor_squared(h, k, l, length / 2, neutron)
                if strength < 0.01:
                    continue
                for frame in range(-3, FRAMES + 3):
                    off = [ewald(scan.in_laboratory(z1, frame + f)) for f in (0, 1)]
                    if (off[0] < 0) == (off[1] < 0):
                        continue
                    at = frame + off[0] / (off[0] - off[1])
                    pixel = place(scan.in_laboratory(z1, at))
                    speed = max(abs(off[1] - off[0]) / math.radians(STEP), 0.05)
                    if pixel and all(-3 < p < PIXELS + 2 for p in pixel):
                        found.append((*pixel, at, strength / (speed * length), (h, k, l)))
    return found


def counts(found, events):
    wide, reach = (0.75, 0.75, 0.6), 3
    mean = [[0.4] * PIXELS**2 for _ in range(FRAMES)]
    scale = 700 / max(s[3] for s in found)
    for px, py, at, strength, _ in found:
        for frame in range(max(0, round(at) - reach), min(FRAMES, round(at) + reach + 1)):
            for row in range(max(0, round(py) - reach), min(PIXELS, round(py) + reach + 1)):
                for column in range(max(0, round(px) - reach), min(PIXELS, round(px) + reach + 1)):
                    away = sum(((a - b) / w) ** 2 for a, b, w in zip((column, row, frame), (px, py, at), wide))
                    mean[frame][row * PIXELS + column] += scale * strength * math.exp(-away / 2)
    return [[events.poisson(m) for m in frame] for frame in mean]


# --- the file ---------------------------------------------------------------------------------------------------------------


def block(letter, words):
    return [letter * 80, "".join(f"{w:8d}" for w in words)]


def texts(label, line):
    return [*block("A", (80, 1)), label, line]


def numbers(letter, values, a_line, form):
    rows = ["".join(form % v for v in values[at : at + a_line]) for at in range(0, len(values), a_line)]
    return [*block(letter, (len(values), 0)), *rows]


def run_lines(number, scan, hkl, frames):
    integers = [0] * 31
    integers[3], integers[4], integers[6], integers[8], integers[23] = 2, 1, FRAMES, 3, PIXELS**2
    reals = [0.0] * 50
    reals[0:3] = hkl
    reals[3:7] = PHI, CHI, OMEGA, GAMMA
    reals[8:17] = [c for row in UB for c in row]
    reals[17] = WAVE
    reals[35:38] = scan.start(), STEP, STEP * (FRAMES - 1)
    reals[45:48] = 295.0, 295.0, 295.0
    lines = [*block("R", (number, 1, 4)), "simulated run"]
    lines += texts("Inst User L.C. Date Time", "R6  simulated       26-Nov-26 10:20:30")
    lines += texts("Title                    Scantype", "Corundum, simulated".ljust(72) + scan.axis)
    lines += numbers("I", integers, 10, "%8d") + numbers("F", reals, 5, "%16.8E")
    for index, values in enumerate(frames):
        angle = scan.start() + STEP * index
        lines += ["V" * 80, *block("S", (index + 1, 1, FRAMES - index - 1)), "frame of the scan"]
        lines += numbers("F", (60000.0, 10000.0, float(sum(values)), round(angle * 1000)), 5, "%16.8E")
        lines += numbers("I", values, 10, "%8d")
    return lines


def main():
    directory = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).resolve().parent.parent / "examples" / "runs"
    directory.mkdir(parents=True, exist_ok=True)
    rows = ["".join(f"{c:16.9f}" for c in row) for row in UB]
    (directory / "area_detector.instrm").write_text(INSTRUMENT + "\n".join(rows) + "\n", encoding="ascii", newline="\n")
    for number, axis in ((200001, "omega"), (200002, "phi")):
        scan = Scan(axis)
        found = spots(scan)
        strongest = max(found, key=lambda s: s[3])[4]
        text = "\n".join(run_lines(number, scan, strongest, counts(found, Counter(SEED + number)))) + "\n"
        (directory / f"{number}.Z").write_bytes(gzip.compress(text.encode("ascii"), 9, mtime=0))


if __name__ == "__main__":
    main()
