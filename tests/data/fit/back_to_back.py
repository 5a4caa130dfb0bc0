#!/usr/bin/env python3
"""Reference values for the peak shape of a pulsed source, by mpmath at 30 digits and more; writes two tables into the directory given.

back_to_back.tsv: the convolution of two exponentials back to back, (a b/(a + b)) exp(a t) for t < 0 and exp(-b t) for t > 0, with a Gaussian
of standard deviation sigma ("G") and with a Lorentzian of the same full width at half maximum ("L"). The values are adaptive quadratures of
the integral; the derivatives by the distance, by a, b and the variance are central differences of its closed form, which is checked against
the quadrature first.

exponential_integral.tsv: exp(w) E1(w) in the closed upper half of the plane, above the cut.
"""
import sys
from mpmath import mp, mpf, mpc, quad, exp, erfc, e1, log, sqrt, pi, inf, nstr, expint

mp.dps = 30


def gauss(t, fwhm):
    s = fwhm / sqrt(8 * log(2))
    return exp(-t * t / (2 * s * s)) / (s * sqrt(2 * pi))


def lorentz(t, fwhm):
    return (fwhm / 2 / pi) / (t * t + fwhm * fwhm / 4)


def convolved(shape, delta, a, b, fwhm):
    """Each half is an integral over a tail of its exponential, cut where the shape bends."""
    def half(rate, sign):
        marks = [sign * delta + k * fwhm for k in (-4, -1, 0, 1, 4)] + [1 / rate, 10 / rate]
        ends = [mpf(0)] + sorted(m for m in marks if 0 < m < 60 / rate) + [60 / rate, inf]
        return quad(lambda t: exp(-rate * t) * shape(delta - sign * t, fwhm), ends)
    return a * b / (a + b) * (half(a, -1) + half(b, 1))


def closed_gauss(delta, a, b, variance):
    s = sqrt(2 * variance)
    part = lambda rate, d: exp(rate / 2 * (rate * variance + 2 * d)) * erfc((rate * variance + d) / s)
    return a * b / (2 * (a + b)) * (part(a, delta) + part(b, -delta))


def closed_lorentz(delta, a, b, variance):
    h = sqrt(8 * log(2) * variance) / 2
    part = lambda rate, d: (lambda w: exp(w) * e1(w))(mpc(rate * d, rate * h)).imag
    return -a * b / (a + b) / pi * (part(a, delta) + part(b, -delta))


def slopes(closed, arguments):
    found = []
    mp.dps = 60
    for k, value in enumerate(arguments):
        step = mpf(10) ** -18 * max(1, abs(value))
        up, down = list(arguments), list(arguments)
        up[k] += step
        down[k] -= step
        found.append((closed(*up) - closed(*down)) / (2 * step))
    mp.dps = 30
    return found


def write_shapes(name):
    with open(name, "w") as out:
        out.write("# a\tb\tsigma\tdelta\tG\tL\tthen of G and of L the derivatives by delta, a, b, variance\n")
        for a in map(mpf, ("0.03", "0.4", "3")):
            for b in map(mpf, ("0.02", "0.25", "2")):
                for sigma in map(mpf, ("0.5", "6", "50")):
                    fwhm = sigma * sqrt(8 * log(2))
                    for place in map(mpf, ("-8", "-2.5", "-0.7", "0", "0.6", "2", "7")):
                        unit = fwhm / 2 + log(2) / (b if place > 0 else a)
                        delta = mpf(nstr(place * unit, 6))
                        row = [convolved(gauss, delta, a, b, fwhm), convolved(lorentz, delta, a, b, fwhm)]
                        arguments = (delta, a, b, sigma * sigma)
                        for value, closed in zip(list(row), (closed_gauss, closed_lorentz)):
                            assert abs(closed(*arguments) - value) < mpf(10) ** -12 * a * b / (a + b), (arguments, value)
                            row += slopes(closed, arguments)
                        out.write("\t".join([nstr(x, 6) for x in (a, b, sigma, delta)] + [nstr(x, 9) for x in row]) + "\n")


def write_integrals(name):
    angles = [mpf(k) * pi / 12 for k in range(12)] + [pi - mpf(10) ** -2, pi - mpf(10) ** -6, pi]
    with open(name, "w") as out:
        out.write("# re w\tim w\tre\tim\n")
        for size in map(mpf, ("1e-6", "0.01", "0.5", "2", "4.4", "6", "9", "11", "15", "19", "21", "30", "39", "41", "60", "300")):
            for angle in angles:
                re = mpf(float(-size if angle == pi else size * mp.cos(angle)))
                im = mpf(0 if angle == pi else float(size * mp.sin(angle)))
                mp.dps = 30 + int(size)
                value = exp(mpc(re, im)) * e1(mpc(re, im))
                if im == 0 and re < 0:
                    value = mpc(value.real, -pi * exp(re))
                mp.dps = 30
                out.write("\t".join([repr(float(re)), repr(float(im)), nstr(value.real, 15), nstr(value.imag, 15)]) + "\n")


write_integrals(sys.argv[1] + "/exponential_integral.tsv")
write_shapes(sys.argv[1] + "/back_to_back.tsv")
