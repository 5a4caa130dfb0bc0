#!/usr/bin/env python3
"""Simulates the powder patterns of examples/ from crystal structures. Python 3 alone, the same bytes on each run.

    python3 scripts/simulate_patterns.py            write all files into examples/
    python3 scripts/simulate_patterns.py DIRECTORY  write them there

From cell and atoms to counts: reflections by brute force over h, k, l (equal d-spacings are added, which is the multiplicity),
structure factors, geometry factor of the instrument, peak shape, background, and Poisson noise. The models:

  widths      FWHM^2 = U tan^2(theta) + V tan(theta) + W        Caglioti, Paoletti and Ricci, Nucl. Instrum. 3 (1958) 223
  shape       pseudo-Voigt, 2theta                              Wertheim et al., Rev. Sci. Instrum. 45 (1974) 1369
  axial       divergence along the axis of the goniometer       Finger, Cox and Jephcoat, J. Appl. Cryst. 27 (1994) 892
  shape       back-to-back exponentials with a Gaussian, TOF    Von Dreele, Jorgensen and Windsor, J. Appl. Cryst. 15 (1982) 581
  G(r)        sum of pair peaks less 4 pi rho r                 Egami and Billinge, Underneath the Bragg Peaks (2003)

X-ray form factors are sums of four Gaussians and a constant (International Tables C, section 6.1), neutron scattering lengths are
those of Sears, Neutron News 3 (1992) 26. Angles are in degrees, lengths in angstroms, times in microseconds, B in square angstroms.
"""

import math
import random
import sys
from pathlib import Path

# Gaussians a, b, a, b, ... and the constant: f(s) = sum a exp(-b s^2) + c, s = sin(theta) / lambda.
FORM_FACTORS = {
    "Al": (6.4202, 3.0387, 1.9002, 0.7426, 1.5936, 31.5472, 1.9646, 85.0886, 1.1151),
    "B": (2.0545, 23.2185, 1.3326, 1.0210, 1.0979, 60.3498, 0.7068, 0.1403, -0.1932),
    "La": (20.5780, 2.9482, 19.5990, 0.2445, 11.3727, 18.7726, 3.2872, 133.1240, 2.1468),
    "O": (3.0485, 13.2771, 2.2868, 5.7011, 1.5463, 0.3239, 0.8670, 32.9089, 0.2508),
}

# Coherent scattering lengths, fm.
SCATTERING_LENGTHS = {"Al": 3.449, "O": 5.803, "K": 3.67, "Mn": -3.73, "F": 5.654, "Sr": 7.02, "Ti": -3.438, "Si": 4.1491}

CU_KALPHA = ((1.540593, 1.0), (1.544427, 0.5))  # wavelength and relative intensity, Hoelzer et al. (1997)

SEED = 20130601


# --- crystals -------------------------------------------------------------------------------------------------------------


class Crystal:
    """Cell with angles 90, 90 and gamma, and every atom in it as (element, x, y, z, B)."""

    def __init__(self, a, c, gamma, atoms):
        self.a, self.c = a, c
        self.cos_gamma = math.cos(math.radians(gamma))
        self.sin2_gamma = 1.0 - self.cos_gamma**2
        self.atoms = atoms

    def inverse_d_squared(self, h, k, l):
        in_plane = (h * h + k * k - 2 * h * k * self.cos_gamma) / (self.a**2 * self.sin2_gamma)
        return in_plane + (l / self.c) ** 2

    def structure_factor_squared(self, h, k, l, s, scatterer):
        real = imaginary = 0.0
        for element, x, y, z, b in self.atoms:
            f = scatterer(element, s) * math.exp(-b * s * s)
            phase = 2 * math.pi * (h * x + k * y + l * z)
            real += f * math.cos(phase)
            imaginary += f * math.sin(phase)
        return real * real + imaginary * imaginary


def xray(element, s):
    *pairs, c = FORM_FACTORS[element]
    return c + sum(a * math.exp(-b * s * s) for a, b in zip(pairs[0::2], pairs[1::2]))


def neutron(element, _s):
    return SCATTERING_LENGTHS[element]


def corundum():
    """Al2O3, R -3 c in hexagonal axes, 295 K."""
    z, x = 0.35216, 0.30624
    aluminium = [(0, 0, z), (0, 0, 0.5 - z), (0, 0, -z), (0, 0, 0.5 + z)]
    oxygen = [(x, 0, 0.25), (0, x, 0.25), (-x, -x, 0.25), (-x, 0, 0.75), (0, -x, 0.75), (x, x, 0.75)]
    centring = [(0, 0, 0), (2 / 3, 1 / 3, 1 / 3), (1 / 3, 2 / 3, 2 / 3)]
    sites = [("Al", p, 0.25) for p in aluminium] + [("O", p, 0.29) for p in oxygen]
    atoms = [(e, p[0] + t[0], p[1] + t[1], p[2] + t[2], b) for t in centring for e, p, b in sites]
    return Crystal(4.7589, 12.991, 120.0, atoms)


def fluoride_perovskite(temperature):
    """KMnF3: cubic above 186 K; below it the octahedra turn about one axis, I 4/m c m on the cell sqrt(2) a, sqrt(2) a, 2 a.

    The cubic phase is written on the same cell, with a turn of zero. The order parameter follows (1 - T / Tc)^(1/4), near a
    tricritical point; its strain is drawn at 1.2 per cent at 0 K, about four times that of nature, so that the eye sees it.
    """
    order = max(0.0, 1.0 - temperature / 186.0) ** 0.25
    # Linear expansion of a Debye-like solid: slow below 60 K, 19e-6 per kelvin above.
    a = 4.164 * (1.0 + 19e-6 * 60.0 * math.log(math.cosh(temperature / 60.0)))
    strain = 0.012 * order**2
    x = 0.25 + 0.25 * math.tan(math.radians(9.0 * order))
    b = 0.15 + 0.0020 * temperature
    sites = [("K", p, 1.2 * b) for p in ((0, 0.5, 0.25), (0.5, 0, 0.25))]
    sites += [("Mn", p, 0.7 * b) for p in ((0, 0, 0), (0, 0, 0.5))]
    sites += [("F", p, 1.4 * b) for p in ((0, 0, 0.25), (0, 0, 0.75))]
    sites += [("F", p, 1.4 * b) for p in ((x, x + 0.5, 0), (-x, 0.5 - x, 0), (0.5 - x, x, 0), (x + 0.5, -x, 0))]
    atoms = [(e, p[0] + t, p[1] + t, p[2] + t, u) for t in (0, 0.5) for e, p, u in sites]
    return Crystal(math.sqrt(2) * a * (1 - strain / 3), 2 * a * (1 + 2 * strain / 3), 90.0, atoms)


def strontium_titanate():
    """SrTiO3 at room temperature, P m -3 m, a = 3.905 A."""
    atoms = [("Sr", 0.5, 0.5, 0.5, 0.6), ("Ti", 0, 0, 0, 0.4)]
    atoms += [("O", x, y, z, 0.7) for x, y, z in ((0.5, 0, 0), (0, 0.5, 0), (0, 0, 0.5))]
    return Crystal(3.905, 3.905, 90.0, atoms)


def lanthanum_hexaboride():
    """LaB6, P m -3 m, 295 K."""
    x = 0.1993
    atoms = [("La", 0, 0, 0, 0.35)]
    for p in (x, -x):
        atoms += [("B", p, 0.5, 0.5, 0.3), ("B", 0.5, p, 0.5, 0.3), ("B", 0.5, 0.5, p, 0.3)]
    return Crystal(4.15689, 4.15689, 90.0, atoms)


def reflections(crystal, d_min, scatterer):
    """Pairs (d, sum of |F|^2 over all h, k, l of that d-spacing), largest d first; extinct ones are left out."""
    lines = {}
    in_plane = int(crystal.a * 1.1548 / d_min) + 1
    along_c = int(crystal.c / d_min) + 1
    limit = 1.0 / d_min**2
    for h in range(-in_plane, in_plane + 1):
        for k in range(-in_plane, in_plane + 1):
            if crystal.inverse_d_squared(h, k, 0) > limit:
                continue
            for l in range(0, along_c + 1):
                q = crystal.inverse_d_squared(h, k, l)
                if not 0.0 < q <= limit:
                    continue
                weight = 1.0 if l == 0 else 2.0  # -h -k -l is as strong, and stands for the negative l
                intensity = weight * crystal.structure_factor_squared(h, k, l, math.sqrt(q) / 2, scatterer)
                key = round(q, 9)
                lines[key] = lines.get(key, 0.0) + intensity
    strongest = max(lines.values())
    return [(1.0 / math.sqrt(q), i) for q, i in sorted(lines.items()) if i > 1e-6 * strongest]


# --- peak shapes, of unit area --------------------------------------------------------------------------------------------


def pseudo_voigt(delta, fwhm, eta):
    t = (delta / fwhm) ** 2
    gauss = math.sqrt(4 * math.log(2) / math.pi) * math.exp(-4 * math.log(2) * t)
    lorentz = 2 / math.pi / (1 + 4 * t)
    return (eta * lorentz + (1 - eta) * gauss) / fwhm


def exp_erfc(u, y, delta, sigma):
    """exp(u) erfc(y), where u = y^2 - delta^2 / (2 sigma^2); the asymptotic series where the factors alone would overflow."""
    if y < 5.0:
        return math.exp(u) * math.erfc(y)
    w = 1.0 / (2 * y * y)
    return math.exp(-(delta**2) / (2 * sigma**2)) / (y * math.sqrt(math.pi)) * (1 - w + 3 * w**2 - 15 * w**3)


def back_to_back(delta, alpha, beta, sigma):
    u = alpha / 2 * (alpha * sigma**2 + 2 * delta)
    v = beta / 2 * (beta * sigma**2 - 2 * delta)
    y = (alpha * sigma**2 + delta) / (math.sqrt(2) * sigma)
    z = (beta * sigma**2 - delta) / (math.sqrt(2) * sigma)
    return alpha * beta / (2 * (alpha + beta)) * (exp_erfc(u, y, delta, sigma) + exp_erfc(v, z, delta, sigma))


def axial_shifts(centre, sample, detector, count=160):
    """Angles at which rays of a peak at `centre` arrive, less that, with their shares.

    A ray that leaves the plane of the circle by z, in units of its radius, arrives where cos(delta) = cos(centre) sqrt(1 + z^2); half
    lengths of sample and detector limit how many such rays there are.
    """
    c0, z_max = math.cos(math.radians(centre)), sample + detector
    rays = []
    for i in range(count):
        z = (i + 0.5) / count * z_max
        delta = math.acos(c0 * math.sqrt(1 + z * z))
        weight = min(2 * min(sample, detector), z_max - z) / ((1 + z * z) * math.sin(delta))
        rays.append((math.degrees(delta) - centre, weight))
    total = sum(w for _, w in rays)
    return [(shift, w / total) for shift, w in rays]


# --- patterns -------------------------------------------------------------------------------------------------------------


def grid(first, step, last):
    return [first + i * step for i in range(round((last - first) / step) + 1)]


def scaled(curve, highest):
    factor = highest / max(curve)
    return [factor * y for y in curve]


def angular_pattern(xs, crystal, scatterer, wavelengths, uvw, eta, geometry, slits=None):
    """Sum of peaks on the constant-step 2theta grid `xs`. `eta` and `geometry` are functions of theta in radians.

    `slits` are the half lengths of sample and detector over the radius, where rays leave the plane.
    """
    ys = [0.0] * len(xs)
    step = xs[1] - xs[0]
    for wavelength, share in wavelengths:
        d_min = wavelength / (2 * math.sin(math.radians(xs[-1] + 2) / 2))
        for d, intensity in reflections(crystal, d_min, scatterer):
            theta = math.asin(wavelength / (2 * d))
            tangent = math.tan(theta)
            fwhm = math.sqrt((uvw[0] * tangent + uvw[1]) * tangent + uvw[2])
            area = share * intensity * geometry(theta)
            centre = math.degrees(2 * theta)
            first = max(0, math.ceil((centre - 40 * fwhm - xs[0]) / step))
            last = min(len(xs) - 1, math.floor((centre + 40 * fwhm - xs[0]) / step))
            rays = axial_shifts(centre, *slits) if slits else [(0.0, 1.0)]
            for i in range(first, last + 1):
                ys[i] += area * sum(w * pseudo_voigt(xs[i] - centre - shift, fwhm, eta(theta)) for shift, w in rays)
    return ys


def lorentz_neutron(theta):
    return 1.0 / (math.sin(theta) ** 2 * math.cos(theta))


def lorentz_polarised(theta):
    """Laboratory diffractometer with a graphite monochromator, 2theta_m = 26.6 degrees."""
    a = math.cos(math.radians(26.6)) ** 2
    return (1 + a * math.cos(2 * theta) ** 2) / (1 + a) * lorentz_neutron(theta)


def flight_pattern(xs, crystal, difc, difa, bank):
    """Sum of peaks on the sorted times `xs` of a bank at 2theta = `bank`: t = difc d + difa d^2."""
    ys = [0.0] * len(xs)
    d_min = xs[0] / difc * 0.97
    for d, intensity in reflections(crystal, d_min, neutron):
        centre = difc * d + difa * d * d
        alpha, beta = 0.35 / d, 0.020 + 0.035 / d**4
        sigma = math.sqrt(2.0 + 25.0 * d**2 + 10.0 * d**4)
        area = intensity * d**4 * math.sin(math.radians(bank / 2))
        low, high = centre - 8 * sigma - 20 / alpha, centre + 8 * sigma + 25 / beta
        for i, x in enumerate(xs):
            if low < x < high:
                ys[i] += area * back_to_back(x - centre, alpha, beta, sigma)
    return ys


class Counter:
    """Counts events: Poisson numbers from one seeded stream of uniform ones."""

    def __init__(self, seed):
        self.uniform = random.Random(seed).random

    def normal(self):
        """Box and Muller (1958)."""
        return math.sqrt(-2 * math.log(1 - self.uniform())) * math.cos(2 * math.pi * self.uniform())

    def poisson(self, mean):
        if mean > 60:
            return max(0, round(mean + math.sqrt(mean) * self.normal()))
        product, count, limit = self.uniform(), 0, math.exp(-mean)
        while product > limit:
            product *= self.uniform()
            count += 1
        return count


# --- the files ------------------------------------------------------------------------------------------------------------


def write(path, lines):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text("\n".join(lines) + "\n", encoding="ascii", newline="\n")
    print(f"{path} {path.stat().st_size} bytes")


def xydata(title, interpolation, temperature, legend_x, legend_y, rows):
    """The six-line header, the data, and the line of zeros that closes them."""
    head = ["XYDATA", f"TITLE {title}", f"INTER 1.0 1.0 {interpolation} 0.0", f"TEMP {temperature:.1f}"]
    return head + [f"Legend_X {legend_x}", f"Legend_Y {legend_y}", *rows, "0.0 0.0 0.0"]


def count_rows(xs, counts, digits):
    return [f"{x:.{digits}f} {n} {math.sqrt(max(n, 1)):.2f}" for x, n in zip(xs, counts)]


CONSTANT_STEP, AS_THEY_STAND = 2, 0  # the interpolation number of an INTER line


def corundum_cuka(directory):
    xs = grid(5.0, 0.02, 120.0)
    uvw = (0.0046, -0.0030, 0.0042)
    peaks = angular_pattern(xs, corundum(), xray, CU_KALPHA, uvw, lambda t: 0.45 + 0.25 * t, lorentz_polarised)
    air = [60 + 900 * math.exp(-x / 7.0) + 40 * math.exp(-(((x - 28) / 18) ** 2)) for x in xs]
    events = Counter(SEED)
    counts = [events.poisson(p + b) for p, b in zip(scaled(peaks, 9000), air)]
    title = "Corundum Al2O3, Cu K-alpha doublet, 295 K (simulated)"
    write(
        directory / "corundum_cuka.xye",
        xydata(title, CONSTANT_STEP, 295, "2theta (degrees)", "Intensity (counts)", count_rows(xs, counts, 2)),
    )


def lab6_cuka(directory):
    """A standard on a diffractometer with wide axial slits: low-angle peaks lean to the left."""
    xs, uvw = grid(18.0, 0.01, 58.0), (0.004, -0.002, 0.0022)
    peaks = angular_pattern(xs, lanthanum_hexaboride(), xray, CU_KALPHA, uvw, lambda _t: 0.5, lorentz_polarised, (0.030, 0.025))
    events = Counter(SEED + 7)
    counts = [events.poisson(p + 130 + 400 * math.exp(-x / 15)) for p, x in zip(scaled(peaks, 14000), xs)]
    title = "LaB6, Cu K-alpha doublet, axial divergence S_L 0.030, D_L 0.025 (simulated)"
    write(
        directory / "lab6_cuka.xye",
        xydata(title, CONSTANT_STEP, 295, "2theta (degrees)", "Intensity (counts)", count_rows(xs, counts, 2)),
    )


def corundum_neutrons(directory):
    xs = grid(5.0, 0.05, 160.0)
    uvw = (0.135, -0.245, 0.210)
    peaks = angular_pattern(xs, corundum(), neutron, ((1.594, 1.0),), uvw, lambda _t: 0.08, lorentz_neutron)
    events = Counter(SEED + 1)
    counts = [events.poisson(p + 180 + 0.25 * x) for p, x in zip(scaled(peaks, 4200), xs)]
    head = ["! TITLE Corundum Al2O3, neutrons of 1.594 A, 295 K (simulated)", "! TSAMP 295.0"]
    head += ["! Legend_X 2theta (degrees)", "! Legend_Y Intensity (counts)"]
    rows = ["".join(f"{n:8d}" for n in counts[i : i + 10]) for i in range(0, len(counts), 10)]
    write(directory / "corundum_neutrons.dat", [*head, f"{xs[0]:10.3f}{0.05:10.3f}{xs[-1]:10.3f}", *rows])


def corundum_tof(directory):
    ratio, xs = 1.0006, [2500.0]
    while xs[-1] < 20000.0:
        xs.append(xs[-1] * ratio)
    peaks = flight_pattern(xs, corundum(), difc=7476.9, difa=-1.9, bank=144.8)
    events = Counter(SEED + 2)
    counts = [events.poisson(p + 350 + 900 * math.exp(-x / 4000)) for p, x in zip(scaled(peaks, 7000), xs)]
    title = "Corundum Al2O3, time of flight, bank at 144.8 deg, 295 K (simulated)"
    write(
        directory / "corundum_tof.xye",
        xydata(title, AS_THEY_STAND, 295, "TOF (micro-seconds)", "Intensity (counts)", count_rows(xs, counts, 2)),
    )


def titanate_of_three_kinds(directory):
    """One phase seen by neutrons of two wavelengths and by time of flight; t is proportional to d, so that the peaks meet in d."""
    crystal, uvw = strontium_titanate(), (0.30, -0.35, 0.35)
    for number, (wavelength, first, highest, background) in enumerate(((1.594, 25.0, 3600, 150), (2.52, 40.0, 2600, 250))):
        xs = grid(first, 0.2, first + 120.0)
        peaks = angular_pattern(xs, crystal, neutron, ((wavelength, 1.0),), uvw, lambda _t: 0.08, lorentz_neutron)
        events = Counter(SEED + 4 + number)
        counts = [events.poisson(p + background) for p in scaled(peaks, highest)]
        title = f"SrTiO3, neutrons of {wavelength} A, 295 K (simulated)"
        write(
            directory / f"titanate_{wavelength:.3f}A.xye",
            xydata(title, CONSTANT_STEP, 295, "2theta (degrees)", "Intensity (counts)", count_rows(xs, counts, 1)),
        )
    ratio, xs = 1.0022, [3400.0]
    while xs[-1] < 14000.0:
        xs.append(xs[-1] * ratio)
    peaks = flight_pattern(xs, crystal, difc=4000.0, difa=0.0, bank=90.0)
    events = Counter(SEED + 6)
    counts = [events.poisson(p + 100 + 400 * math.exp(-x / 4000)) for p, x in zip(scaled(peaks, 1800), xs)]
    title = "SrTiO3, time of flight, dtt1 4000, 295 K (simulated)"
    write(
        directory / "titanate_tof.xye",
        xydata(title, AS_THEY_STAND, 295, "TOF (micro-seconds)", "Intensity (counts)", count_rows(xs, counts, 2)),
    )


def temperature_series(directory):
    xs = grid(20.0, 0.1, 139.9)
    for temperature in range(10, 301, 10):
        # One scale for all: the peaks of a cold sample are the higher ones, as its atoms move less.
        crystal = fluoride_perovskite(temperature)
        uvw = (0.10, -0.20, 0.16)
        peaks = angular_pattern(xs, crystal, neutron, ((1.8857, 1.0),), uvw, lambda _t: 0.05, lorentz_neutron)
        events = Counter(SEED + temperature)
        counts = [events.poisson(0.0032 * p + 120 + 0.1 * temperature) for p in peaks]
        title = f"KMnF3-like perovskite at {temperature} K, neutrons of 1.8857 A (simulated)"
        write(
            directory / "temperature" / f"{temperature:03d}K.xye",
            xydata(title, CONSTANT_STEP, temperature, "2theta (degrees)", "Intensity (counts)", count_rows(xs, counts, 1)),
        )


def nickel_pair_peaks(rs, a, u_iso, delta2, q_damp):
    """r G(r) of the pairs alone: Gaussians at the distances of a face-centred cubic lattice, narrower for near neighbours."""
    shells = {}
    reach = int(2 * (rs[-1] + 1.0) / a) + 1
    for i in range(-reach, reach + 1):
        for j in range(-reach, reach + 1):
            for k in range(-reach, reach + 1):
                if (i + j + k) % 2 == 0 and (i or j or k):
                    n = i * i + j * j + k * k
                    shells[n] = shells.get(n, 0) + 1
    ys, step = [0.0] * len(rs), rs[1] - rs[0]
    for n, count in sorted(shells.items()):
        r0 = a / 2 * math.sqrt(n)
        if r0 > rs[-1] + 1.0:
            continue
        sigma = math.sqrt(2 * u_iso * (1 - delta2 / r0**2))
        height = count / (r0 * sigma * math.sqrt(2 * math.pi)) * math.exp(-((r0 * q_damp) ** 2) / 2)
        first = max(0, math.ceil((r0 - 6 * sigma - rs[0]) / step))
        last = min(len(rs) - 1, math.floor((r0 + 6 * sigma - rs[0]) / step))
        for i in range(first, last + 1):
            ys[i] += height * math.exp(-((rs[i] - r0) ** 2) / (2 * sigma**2))
    return ys


def terminated(ys, step, q_max):
    """What a measurement that ends at q_max sees: a convolution with sin(q_max r) / (pi r), odd about r = 0.

    `ys` stands on r = step, 2 step, ...
    """
    n = len(ys)
    kernel = [q_max * step / math.pi] + [math.sin(q_max * k * step) / (math.pi * k) for k in range(1, 2 * n + 1)]
    places = [j for j in range(n) if ys[j] != 0.0]
    return [sum(ys[j] * (kernel[abs(i - j)] - kernel[i + j + 2]) for j in places) for i in range(n)]


def silicon():
    """Si, F d -3 m, 295 K."""
    basis = [(0, 0, 0), (0.25, 0.25, 0.25)]
    centring = [(0, 0, 0), (0, 0.5, 0.5), (0.5, 0, 0.5), (0.5, 0.5, 0)]
    atoms = [("Si", *(p[i] + t[i] for i in range(3)), 0.47) for t in centring for p in basis]
    return Crystal(5.43102, 5.43102, 90.0, atoms)


def indexed(crystal, d_min):
    """As `reflections`, with the indices of one reflection of each line: triples (d, intensity, (h, k, l))."""
    indices = {}
    n = int(max(crystal.a, crystal.c) * 1.1548 / d_min) + 1
    for h in range(n + 1):
        for k in range(-n, n + 1):
            for l in range(n + 1):
                q = crystal.inverse_d_squared(h, k, l)
                if q <= 0 or q > 1.0 / d_min**2 or crystal.structure_factor_squared(h, k, l, math.sqrt(q) / 2, neutron) < 1e-3:
                    continue
                key = round(q, 9)
                indices[key] = max(indices.get(key, (0, -n - 1, 0)), (h, k, l), key=lambda i: (min(i) >= 0, i[0] >= i[1], i))
    return [(d, i, indices[round(1 / d**2, 9)]) for d, i in reflections(crystal, d_min, neutron)]


def refinement(directory):
    """Corundum and silicon as they come out of a refinement that is nearly done, with a line of the cryostat left out."""
    wavelength, zero, step = 1.594, 0.04, 0.1
    xs = grid(20.0, step, 100.0)
    shares = ((corundum(), 1.0), (silicon(), 0.9))
    curves = {}
    for name, uvw in (("true", (0.135, -0.245, 0.225)), ("refined", (0.135, -0.228, 0.212))):
        total = [0.0] * len(xs)
        for crystal, share in shares:
            peaks = angular_pattern([x - zero for x in xs], crystal, neutron, ((wavelength, 1.0),), uvw, lambda _t: 0.08, lorentz_neutron)
            volume = crystal.a**2 * crystal.c * math.sqrt(crystal.sin2_gamma)
            total = [t + share * p / volume**2 for t, p in zip(total, peaks)]
        curves[name] = total
    factor = 4200 / max(curves["true"])
    background = [180 + 0.25 * x + 60 * math.exp(-x / 25) for x in xs]
    calculated = [factor * 0.995 * c + b for c, b in zip(curves["refined"], background)]
    cryostat = [900 * pseudo_voigt(x - 66.5, 0.42, 0.1) * 0.45 for x in xs]
    events = Counter(SEED + 4)
    observed = [events.poisson(factor * c + b + extra) for c, b, extra in zip(curves["true"], background, cryostat)]
    regions = [(20.0, 22.0), (65.6, 67.4)]
    used = [i for i, x in enumerate(xs) if not any(lo <= x <= hi for lo, hi in regions)]
    chi2 = sum((observed[i] - calculated[i]) ** 2 / max(observed[i], 1) for i in used) / (len(used) - 24)
    phases = []
    for crystal, _ in shares:
        listed = indexed(crystal, wavelength / 2 / math.sin(math.radians(50)))
        places = [(2 * math.degrees(math.asin(wavelength / 2 / d)) + zero, hkl) for d, _, hkl in listed]
        phases.append([(x, hkl) for x, hkl in places if xs[0] <= x <= xs[-1]])
    head = "Corundum and silicon, neutrons of 1.594 A, 295 K (simulated) CELL: 4.7589 12.991 120 5.43102"
    lines = [f"{head} TEMP: 295.0 Chi2: {chi2:.3f}"]
    lines += [f"{len(phases):3d}{len(xs):7d}" + "".join(f"{v:12.5f}" for v in (wavelength, wavelength, zero, 0.0, 0.0))]
    lines += [" ".join(str(len(p)) for p in phases) + " 0" * len(phases), f"{len(regions):8d}"]
    lines += [f"{lo:14.5f}{hi:14.5f}" for lo, hi in regions]
    lines += ["        2Theta\tYobs\tYcal\tYobs-Ycal\tBackg\tPosr\t(hkl)\tK"]
    for x, o, c, b in zip(xs, observed, calculated, background):
        lines.append(f"{x:12.4f}\t{o:8.1f}\t{c:8.1f}\t{o - c:8.1f}\t{b:8.1f}")
    for number, phase in enumerate(phases, 1):
        lines.append(f"Reflections of phase: {number}")
        lines += [f"{x:12.4f}{'':37s}{number:8d}\t({h:3d}{k:3d}{l:3d})\t{number:3d}{1:3d}" for x, (h, k, l) in phase]
    write(directory / "refinement.prf", lines)


def nickel_gr(directory):
    a, step, r_max, q_max = 3.5238, 0.01, 20.0, 26.0
    rs = grid(step, step, r_max)
    pairs = terminated(nickel_pair_peaks(rs, a, u_iso=0.0055, delta2=2.2, q_damp=0.008), step, q_max)
    density = 4 / a**3
    events = Counter(SEED + 3)
    rows = []
    for r, g in zip(rs, pairs):
        dg = 0.02 + 0.06 * math.exp(-r / 2.0)
        g += -4 * math.pi * density * r * math.exp(-((r * 0.008) ** 2) / 2) + dg * events.normal()
        rows.append(f"{r:7.3f} {g:10.4f} 0.0 {dg:8.4f}")
    head = ["Pair-distribution function from a model, with ripples of the finite range in Q"]
    head += ["title=Nickel, fcc, a = 3.5238 A, Qmax = 26 1/A (simulated)", "#L r(A) G(r) dr dG(r)"]
    write(directory / "nickel.gr", [*head, *rows, "  0.000     0.0000 0.0   0.0000"])


def main():
    directory = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).resolve().parent.parent / "examples"
    makers = (corundum_cuka, lab6_cuka, corundum_neutrons, corundum_tof, titanate_of_three_kinds, temperature_series, refinement)
    for make in (*makers, nickel_gr):
        make(directory)


if __name__ == "__main__":
    main()
