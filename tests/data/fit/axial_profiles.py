#!/usr/bin/env python3
"""Peaks with axial divergence by adaptive quadrature over the angle of arrival: python3 axial_profiles.py > axial_profiles.txt

The convolution as L. W. Finger, D. E. Cox and A. P. Jephcoat (J. Appl. Cryst. 27, 1994, 892-900) define it: rays arrive at delta with the
weight W(delta), which has an inverse root at 2theta0; delta = 2theta0 -+ t^2 takes it away. Columns: 2theta0, s, h, H, x - 2theta0 in degrees,
then the Gaussian and the Lorentzian peak of that width there. Single precision holds every place exactly.
"""
import math

DEG = math.pi / 180


def simpson(f, a, b, fa, fm, fb, whole, eps, depth):
    m = (a + b) / 2
    fl, fr = f((a + m) / 2), f((m + b) / 2)
    left = [(m - a) / 6 * (p + 4 * q + r) for p, q, r in zip(fa, fl, fm)]
    right = [(b - m) / 6 * (p + 4 * q + r) for p, q, r in zip(fm, fr, fb)]
    error = max(abs(x + y - w) for x, y, w in zip(left, right, whole))
    if depth == 0 or error < 15 * eps:
        return [x + y + (x + y - w) / 15 for x, y, w in zip(left, right, whole)]
    one = simpson(f, a, m, fa, fl, fm, left, eps / 2, depth - 1)
    two = simpson(f, m, b, fm, fr, fb, right, eps / 2, depth - 1)
    return [x + y for x, y in zip(one, two)]


def integral(f, a, b, eps, pieces=24):
    total = None
    for i in range(pieces):
        lo, hi = a + (b - a) * i / pieces, a + (b - a) * (i + 1) / pieces
        flo, fmid, fhi = f(lo), f((lo + hi) / 2), f(hi)
        whole = [(hi - lo) / 6 * (p + 4 * q + r) for p, q, r in zip(flo, fmid, fhi)]
        part = simpson(f, lo, hi, flo, fmid, fhi, whole, eps / pieces, 30)
        total = part if total is None else [x + y for x, y in zip(total, part)]
    return total


def profile(centre, s, h, width, offsets):
    c0 = math.cos(centre * DEG)
    a, b = s + h, abs(s - h)
    reach = lambda z: math.acos(max(-1.0, min(1.0, math.sqrt(1 + z * z) * c0))) / DEG
    lowest, inflection = reach(a), reach(b)
    side = -1 if centre < 90 else 1

    def weight(delta, t):
        """W(delta) times t, which is finite at t = 0."""
        c = abs(math.cos(delta * DEG))
        # c^2 - c0^2, without its cancellation
        under = abs(math.sin(t * t * DEG) * math.sin((centre + delta) * DEG))
        g = abs(c0) * (t / math.sqrt(under) if t > 0 else 1 / math.sqrt(DEG * abs(math.sin(2 * centre * DEG))))
        if abs(delta - lowest) <= abs(inflection - lowest):
            return (a * g - t) / c
        return 2 * min(s, h) * g / c

    def f(t):
        delta = centre + side * t * t
        w = weight(delta, t) * 2
        values = [w]
        for offset in offsets:
            d = centre + offset - delta
            gauss = 0.93943727 / width * math.exp(-((1.6651093 * d / width) ** 2)) if abs(d) / width <= 6 else 0.0
            lorentz = 0.63661975 * width / (width**2 + 4 * d * d)
            values += [w * gauss, w * lorentz]
        return values

    ends = [0.0, math.sqrt(abs(inflection - centre)), math.sqrt(abs(lowest - centre))]
    total = [0.0] * (1 + 2 * len(offsets))
    for lo, hi in zip(ends, ends[1:]):
        if hi > lo:
            total = [x + y for x, y in zip(total, integral(f, lo, hi, 1e-9))]
    return [v / total[0] for v in total[1:]]


for centre in (5.0, 12.0, 30.0, 75.0, 89.0, 95.0, 140.0, 170.0):
    for s, h in ((0.01, 0.01), (0.05, 0.03), (0.004, 0.05), (0.0125, 0.0125)):
        for width in (0.0625, 0.25):
            offsets = [round(1024 * o * width) / 1024 for o in (-20.0, -4.0, -1.5, -0.5, 0.0, 0.3, 1.0, 5.0)]
            values = profile(centre, s, h, width, offsets)
            for i, offset in enumerate(offsets):
                print(f"{centre:g} {s:g} {h:g} {width:g} {offset:.9g} {values[2 * i]:.7g} {values[2 * i + 1]:.7g}")
