#!/usr/bin/env python3
"""Generator of the default data set of the Ostrel Gorge Ecosystem Model.

Writes every start-up file, workbook sheet, parameter file, flow scenario
and map layer of the program folder data/ from the named tables and
formulas below, with a fixed-seed random number generator of its own, so
that a second run reproduces the folder byte for byte.

    python3 tools/make_data.py [--out DIR]

Standard library only.  Text files end their lines with CR LF.
"""

import argparse
import math
import os
import struct
import sys

# ---------------------------------------------------------------------------
# Random numbers: splitmix64, one independent stream per named purpose, so
# that a change to one table does not disturb the draws of another.
# ---------------------------------------------------------------------------

BASE_SEED = 0x05E1_1948_1997_0063
MASK64 = (1 << 64) - 1


def fnv1a64(text):
    h = 0xCBF29CE484222325
    for b in text.encode("utf-8"):
        h ^= b
        h = (h * 0x100000001B3) & MASK64
    return h


class Rng:
    def __init__(self, name):
        self.state = (BASE_SEED ^ fnv1a64(name)) & MASK64

    def next64(self):
        self.state = (self.state + 0x9E3779B97F4A7C15) & MASK64
        z = self.state
        z = ((z ^ (z >> 30)) * 0xBF58476D1CE4E5B9) & MASK64
        z = ((z ^ (z >> 27)) * 0x94D049BB133111EB) & MASK64
        return z ^ (z >> 31)

    def uniform(self, lo=0.0, hi=1.0):
        u = (self.next64() >> 11) * (1.0 / 9007199254740992.0)
        return lo + (hi - lo) * u

    def normal(self, mean=0.0, sd=1.0):
        # Irwin-Hall: sum of twelve uniforms, pure arithmetic.
        s = 0.0
        for _ in range(12):
            s += self.uniform()
        return mean + sd * (s - 6.0)

    def lognormal(self, median, sigma):
        return median * math.exp(sigma * self.normal())

    def poisson(self, lam):
        # Counting uniforms whose running product stays above exp(-lam).
        limit = math.exp(-lam)
        k, p = 0, self.uniform()
        while p > limit:
            k += 1
            p *= self.uniform()
        return k

    def choice(self, seq):
        return seq[int(self.uniform() * len(seq)) % len(seq)]

    def shuffle(self, seq):
        for i in range(len(seq) - 1, 0, -1):
            j = int(self.uniform() * (i + 1)) % (i + 1)
            seq[i], seq[j] = seq[j], seq[i]


# ---------------------------------------------------------------------------
# Number and text output
# ---------------------------------------------------------------------------


class Flag:
    """A flag written as #TRUE# / #FALSE# in comma-separated text."""

    def __init__(self, value):
        self.value = bool(value)


def f32(x):
    return struct.unpack("<f", struct.pack("<f", float(x)))[0]


def num(x, sig=7):
    """Plain text of a number: no leading blank, at most `sig` significant
    digits, trailing zeros dropped, exponent form only for extreme values."""
    if isinstance(x, bool):
        return "-1" if x else "0"
    if isinstance(x, int):
        return str(x)
    x = float(x)
    if x != x or x in (float("inf"), float("-inf")):
        raise ValueError("non-finite number")
    if x == 0.0:
        return "0"
    s = "%.*g" % (sig, x)
    if "e" in s:
        mant, exp = s.split("e")
        if "." in mant:
            mant = mant.rstrip("0").rstrip(".")
        e = int(exp)
        if -5 < e < 15:
            # %g uses exponents below 1e-4; write such values plainly.
            s = ("%.*f" % (max(0, sig - 1 - e), x))
            if "." in s:
                s = s.rstrip("0").rstrip(".")
            return s
        return "%sE%s%02d" % (mant, "-" if e < 0 else "+", abs(e))
    if "." in s:
        s = s.rstrip("0").rstrip(".")
    if s in ("-0", ""):
        s = "0"
    return s


def rnd(x, nd):
    """Round to nd decimals, result a float (or int when nd <= 0)."""
    if nd <= 0:
        return int(round(x / 10 ** (-nd))) * 10 ** (-nd)
    return round(x, nd)


def text_field(s):
    if '"' in s:
        raise ValueError("quote inside a text field: %r" % s)
    return '"' + s + '"'


def rec(*fields):
    """One record of comma-separated text."""
    out = []
    for f in fields:
        if isinstance(f, Flag):
            out.append("#TRUE#" if f.value else "#FALSE#")
        elif isinstance(f, str):
            out.append(text_field(f))
        else:
            out.append(num(f))
    return ",".join(out)


def blanks(*fields):
    """One record written with blanks between the values."""
    out = []
    for f in fields:
        if isinstance(f, str):
            out.append(f)
        else:
            out.append(num(f))
    return " ".join(out)


def csv_cell(v):
    if v is None:
        return ""
    if isinstance(v, str):
        if any(c in v for c in ',"\r\n'):
            return '"' + v.replace('"', '""') + '"'
        return v
    return num(v)


class Writer:
    def __init__(self, root):
        self.root = root
        self.files = []

    def path(self, rel):
        p = os.path.join(self.root, *rel.split("/"))
        os.makedirs(os.path.dirname(p), exist_ok=True)
        return p

    def lines(self, rel, lines):
        data = "".join(l + "\r\n" for l in lines)
        for l in lines:
            if "\r" in l or "\n" in l:
                raise ValueError("line break inside a line of " + rel)
        with open(self.path(rel), "wb") as f:
            f.write(data.encode("latin-1"))
        self.files.append(rel)

    def sheet(self, workbook, sheet, heads, rows):
        lines = [",".join(csv_cell(h) for h in heads)]
        for r in rows:
            if len(r) != len(heads):
                raise ValueError("row width in %s/%s" % (workbook, sheet))
            lines.append(",".join(csv_cell(v) for v in r))
        self.lines(workbook + "/" + sheet + ".csv", lines)


# ---------------------------------------------------------------------------
# Calendar
# ---------------------------------------------------------------------------

MONTH_NAMES = ["jan", "feb", "mar", "apr", "may", "jun",
               "jul", "aug", "sep", "oct", "nov", "dec"]
DAYS_IN_MONTH = [31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31]
FIRST_YEAR, LAST_YEAR = 48, 97          # two-digit years of the record
NMONTHS = 600
DAM_CLOSES = 63
HARL_FERRY = 15.62                      # gauge, miles below the dam
TRIP_MILES = 226.0                      # rafting trip from Harl Ferry
AF_TO_CFS_DAY = 43560.0 / 86400.0       # 1 acre-foot per day in cfs


def months():
    """(cmonth, two-digit year, month) for the 600 months of the record."""
    for i in range(NMONTHS):
        yield i + 1, FIRST_YEAR + i // 12, i % 12 + 1


def af_to_cfs(af, m):
    return af * 43560.0 / (DAYS_IN_MONTH[m - 1] * 86400.0)


def cfs_to_af(q, m):
    return q * DAYS_IN_MONTH[m - 1] * 86400.0 / 43560.0


# ---------------------------------------------------------------------------
# The river: reaches.  Miles are miles below OS Dam (OSD_Mile).  Reach 1 is
# the tailwater row at the dam; reaches 2..12 are the run reaches whose
# lengths match the fixed bed areas at the bed widths that follow.
# ---------------------------------------------------------------------------

# label, upstream mile, downstream mile
REACHES = [
    ("OS Dam Tailwater", 0.0, 0.4),
    ("Harl Canyon", 0.4, 16.2),
    ("Quenna Reach", 16.2, 28.0),
    ("Redstone Gorge", 28.0, 46.0),
    ("Marrow Canyon", 46.0, 75.2),
    ("TSR Confluence", 75.2, 99.5),
    ("Upper Granite Gorge", 99.5, 131.0),
    ("Narrow Gorge", 131.0, 142.5),
    ("Middle Granite Gorge", 142.5, 159.0),
    ("Kessel Canyon", 159.0, 176.5),
    ("Lower Canyon", 176.5, 236.0),
    ("Drume Approach", 236.0, 253.0),
]
NREACHES, FIRST_REACH, LAST_REACH = 12, 2, 12
LAKE_DRUME_MILE = REACHES[-1][2]

# Bed area of the run reaches 2..12, ft2 (the program's fixed table).
REACH_BED_AREA = [17930000, 11930000, 15610000, 41650000, 29700000, 42790000,
                  10060000, 16210000, 19950000, 77970000, 14950000]


def reach_of_mile(mile):
    for r, (_, a, b) in enumerate(REACHES, start=1):
        if a <= mile < b:
            return r
    return 0


def reach_len(r):
    return REACHES[r - 1][2] - REACHES[r - 1][1]


def bed_width(r):
    """Mean bed width of a run reach, ft, from its bed area and length."""
    return REACH_BED_AREA[r - 2] / (reach_len(r) * 5280.0)


def reach_mid(r):
    return 0.5 * (REACHES[r - 1][1] + REACHES[r - 1][2])


# ---------------------------------------------------------------------------
# Tributaries.  Quenna and TSR are the two sediment-bearing tributaries; the
# minor ones feed water, a little sediment and basin area.  Flows of all
# minor tributaries of a reach are lumped into one series at the mile of the
# largest of them, since the program keeps one series per reach.
# ---------------------------------------------------------------------------

QUENNA_MILE = 16.62
TSR_MILE = 75.8

# name, mile, basin area km2, base flow cfs (minor tributaries)
MINOR_TRIBS = [
    ("Sandal Wash", 24.6, 310.0, 0.0),
    ("Cavern Springs", 43.8, 95.0, 48.0),
    ("Bitter Wash", 52.3, 420.0, 1.5),
    ("Kolb Creek", 68.4, 260.0, 6.0),
    ("Lava Wash", 81.3, 180.0, 0.0),
    ("Cardinal Creek", 93.0, 640.0, 4.0),
    ("Bright Creek", 103.6, 260.0, 30.0),
    ("Crystal Wash", 114.0, 750.0, 1.0),
    ("Shinar Creek", 124.8, 330.0, 14.0),
    ("Serpent Creek", 136.1, 210.0, 8.0),
    ("Elvin Creek", 148.0, 160.0, 5.0),
    ("Deer Spring", 152.1, 40.0, 22.0),
    ("Kessel Creek", 160.9, 5600.0, 11.0),
    ("Tanager Creek", 164.2, 120.0, 55.0),
    ("Haven Creek", 178.9, 7800.0, 60.0),
    ("Mohr Wash", 195.3, 1900.0, 0.5),
    ("Whit Creek", 210.7, 520.0, 3.0),
    ("Spring Canyon", 220.4, 310.0, 9.0),
    ("Diamond Wash", 241.0, 680.0, 4.0),
    ("Travertine Creek", 245.5, 90.0, 7.0),
]
QUENNA_BASIN_KM2 = 3700.0
TSR_BASIN_KM2 = 67500.0

# Base flow by month, cfs, and flood events per month (Poisson means).
QUENNA_BASE = [18, 20, 28, 30, 22, 12, 9, 11, 14, 16, 17, 18]
QUENNA_EVENTS = [0.15, 0.2, 0.2, 0.05, 0.03, 0.1, 1.0, 1.6, 1.1, 0.6, 0.2, 0.15]
QUENNA_EVENT_AF = (2500.0, 0.8)          # median volume, log sd
TSR_BASE = [230, 240, 250, 225, 205, 190, 195, 205, 210, 215, 225, 230]
TSR_EVENTS = [0.5, 0.7, 0.7, 0.3, 0.05, 0.05, 0.5, 0.8, 0.5, 0.2, 0.2, 0.4]
TSR_EVENT_AF = (15000.0, 0.9)
TSR_WINTER_FACTOR = 1.6                 # snowmelt floods Dec-Apr are larger
MINOR_EVENTS = [0.08, 0.1, 0.1, 0.03, 0.02, 0.05, 0.35, 0.5, 0.35, 0.15, 0.08, 0.08]
MINOR_EVENT_AF_PER_KM2 = 0.6            # median flood volume per km2 basin
SPATE_MIN_AF = {"Quenna": 500.0, "TSR": 3000.0, "minor": 150.0}
# The ratings give the concentration of flood water; a month's mean is the
# flood share of its water times the rating, scaled to the tributary's long-
# term yield and held below a hyperconcentrated ceiling (mg/l).
SED_YIELD_SCALE = {"Quenna": 0.45, "TSR": 0.5, "minor": 1.0}
SED_CEILING_MGL = {"Quenna": 200000.0, "TSR": 120000.0, "minor": 20000.0}


def quenna_sed(q):
    """Sand, fines concentration (mg/l) of the Quenna at monthly flow q."""
    return 2698.303 * q ** 0.74076, 1701.6998 * q ** 0.80988


def tsr_sed(q, m):
    sand = 454.16308 * q ** 0.46844
    if 7 <= m <= 10:
        fines = 30308.8537 * q ** 0.14095
    else:
        fines = 5260.87555 * q ** 0.30898
    return sand, fines


def minor_sed(q):
    return 25.0 * q ** 0.6, 90.0 * q ** 0.6


# ---------------------------------------------------------------------------
# Hydrology of the dam site
# ---------------------------------------------------------------------------

NATURAL_MEAN_MAF = 12.5
NATURAL_CV = 0.30
NATURAL_AR1 = 0.3
# Share of the natural year in each month (snowmelt river).
NATURAL_SHAPE = [0.025, 0.025, 0.042, 0.09, 0.215, 0.265,
                 0.13, 0.062, 0.042, 0.036, 0.035, 0.033]
# Post-dam monthly pattern, thousands of acre-feet (power demand shape).
REGULATED_SHAPE = [1100, 950, 850, 825, 875, 1000, 1050, 1100, 850, 850, 900, 950]
MIN_RELEASE_MAF = 8.23
HIGH_RELEASE_YEARS = {83: 15.2, 84: 17.8, 85: 14.6, 86: 13.1}
WET_NATURAL_YEARS = {83: 21.0, 84: 22.5, 85: 18.5, 86: 17.0}
POWERPLANT_CFS = 31500.0


def gen_hydrology():
    rng = Rng("hydrology")
    natural = {}
    z = 0.0
    sig = math.sqrt(math.log(1 + NATURAL_CV ** 2))
    for y in range(FIRST_YEAR, LAST_YEAR + 1):
        z = NATURAL_AR1 * z + math.sqrt(1 - NATURAL_AR1 ** 2) * rng.normal()
        natural[y] = NATURAL_MEAN_MAF * math.exp(sig * z - 0.5 * sig * sig)
    for y, v in WET_NATURAL_YEARS.items():
        natural[y] = v
    shape_sum = sum(NATURAL_SHAPE)
    reg_sum = float(sum(REGULATED_SHAPE))
    vol = {}
    annual = {}
    for y in range(FIRST_YEAR, LAST_YEAR + 1):
        if y < DAM_CLOSES:
            # Natural river: the snowmelt peak shifts a little from year to year.
            shift = rng.normal(0, 0.35)
            w = []
            for m in range(1, 13):
                a = NATURAL_SHAPE[m - 1]
                if 4 <= m <= 7:
                    a *= math.exp(shift * (5.5 - m) * 0.4)
                w.append(a * math.exp(rng.normal(0, 0.08)))
            tot = sum(w)
            for m in range(1, 13):
                vol[(y, m)] = natural[y] * 1e6 * w[m - 1] / tot
        else:
            if y in HIGH_RELEASE_YEARS:
                target = HIGH_RELEASE_YEARS[y]
            elif y == DAM_CLOSES:
                target = 8.0
            else:
                extra = max(0.0, natural[y] - 14.0) * 0.45
                target = min(11.6, MIN_RELEASE_MAF + extra + abs(rng.normal(0, 0.25)))
            base = [REGULATED_SHAPE[m - 1] / reg_sum * math.exp(rng.normal(0, 0.04))
                    for m in range(1, 13)]
            tot = sum(base)
            base = [b / tot for b in base]
            if y in HIGH_RELEASE_YEARS:
                # Spring and summer spills ride on the normal pattern.
                normal = MIN_RELEASE_MAF * 1.15
                spill = target - normal
                spill_shape = [0, 0, 0.05, 0.18, 0.25, 0.25, 0.17, 0.1, 0, 0, 0, 0]
                for m in range(1, 13):
                    vol[(y, m)] = (normal * base[m - 1] + spill * spill_shape[m - 1]) * 1e6
            else:
                for m in range(1, 13):
                    v = target * 1e6 * base[m - 1]
                    vol[(y, m)] = min(1.3e6, max(0.5e6, v))
        for m in range(1, 13):
            vol[(y, m)] = float(int(round(vol[(y, m)] / 100.0)) * 100)
        annual[y] = sum(vol[(y, m)] for m in range(1, 13))
    return natural, vol, annual


def gen_tributaries():
    """Monthly flows and sediment of every tributary group, flood events."""
    tribs = []   # dicts: name, mile, reach, q[cm], sand[cm], fines[cm], events[cm]
    spates = [0] * (NMONTHS + 1)

    def simulate(name, kind, base, events, event_af, sed, winter=1.0, scale=1.0):
        rng = Rng("trib-" + name)
        year_wet = {}
        q, sand, fines, nev = {}, {}, {}, {}
        for cm, y, m in months():
            if y not in year_wet:
                year_wet[y] = math.exp(rng.normal(0, 0.35))
            b = base[m - 1] * scale * math.exp(rng.normal(0, 0.1)) * (0.7 + 0.3 * year_wet[y])
            n = rng.poisson(events[m - 1] * year_wet[y])
            flood_af = 0.0
            count = 0
            for _ in range(n):
                v = rng.lognormal(event_af[0], event_af[1])
                if winter != 1.0 and (m <= 4 or m == 12):
                    v *= winter
                flood_af += v
                if v >= SPATE_MIN_AF[kind]:
                    count += 1
            flood_q = af_to_cfs(flood_af, m)
            qm = b + flood_q
            if qm <= 0.05:
                qm = 0.05
            share = flood_q / qm
            s, f = sed(qm, m)
            k = (0.03 + 0.97 * share) * math.exp(rng.normal(0, 0.2)) * SED_YIELD_SCALE[kind]
            over = (s + f) * k / SED_CEILING_MGL[kind]
            if over > 1:
                k /= over
            q[cm] = round(qm, 1)
            sand[cm] = int(round(s * k))
            fines[cm] = int(round(f * k))
            nev[cm] = count
            spates[cm] += count
        return q, sand, fines, nev

    q, s, f, e = simulate("Quenna", "Quenna", QUENNA_BASE, QUENNA_EVENTS, QUENNA_EVENT_AF,
                          lambda qq, m: quenna_sed(qq))
    tribs.append(dict(name="Quenna", mile=QUENNA_MILE, reach=reach_of_mile(QUENNA_MILE),
                      q=q, sand=s, fines=f, events=e, fan=True))
    q, s, f, e = simulate("TSR", "TSR", TSR_BASE, TSR_EVENTS, TSR_EVENT_AF, tsr_sed,
                          winter=TSR_WINTER_FACTOR)
    tribs.append(dict(name="TSR", mile=TSR_MILE, reach=reach_of_mile(TSR_MILE),
                      q=q, sand=s, fines=f, events=e, fan=True))
    fan_reaches = {t["reach"] for t in tribs}
    by_reach = {}
    for name, mile, area, base in MINOR_TRIBS:
        r = reach_of_mile(mile)
        if r in fan_reaches:
            continue
        by_reach.setdefault(r, []).append((name, mile, area, base))
    for r in sorted(by_reach):
        group = by_reach[r]
        area = sum(g[2] for g in group)
        base = sum(g[3] for g in group)
        lead = max(group, key=lambda g: g[2])
        # Base flow is mostly spring-fed; a little seasonal lift in spring.
        seasonal = [1.0, 1.05, 1.15, 1.2, 1.05, 0.9, 0.85, 0.95, 0.95, 0.95, 1.0, 1.0]
        base_m = [max(0.2, base) * s_ for s_ in seasonal]
        ev_af = (MINOR_EVENT_AF_PER_KM2 * area, 0.9)
        q, s, f, e = simulate("minor-%d" % r, "minor", base_m, MINOR_EVENTS, ev_af,
                              lambda qq, m: minor_sed(qq))
        tribs.append(dict(name=" + ".join(g[0] for g in group), mile=lead[1], reach=r,
                          q=q, sand=s, fines=f, events=e, fan=False))
    tribs.sort(key=lambda t: t["mile"])
    return tribs, spates


# ---------------------------------------------------------------------------
# Temperatures
# ---------------------------------------------------------------------------

def eq_temp(m):
    """Equilibrium temperature of the river, deg C (about 4.5 to 27)."""
    return 15.75 + 11.25 * math.cos(2 * math.pi * (m - 7.2) / 12.0)


def release_temp(m):
    """Temperature of the dam's release from the deep reservoir, deg C."""
    return 10.0 + 1.85 * math.cos(2 * math.pi * (m - 10.3) / 12.0)


def exp_release_temp(m):
    """Experimental warmer release from a selective withdrawal, deg C."""
    return release_temp(m) + max(0.0, 5.5 * math.cos(2 * math.pi * (m - 8.0) / 12.0))


HEAT_EX = 0.1    # per (ft * mile / cfs), see RiverTemperature


# ---------------------------------------------------------------------------
# Hydraulics: cross-sections of StarsOut
# ---------------------------------------------------------------------------

STARS_Q = [5000, 8000, 10000, 15000, 18000, 20000, 25000, 30000, 35000, 40000, 45000, 60000]
# section kind: depth at 5000 cfs (ft), stage exponent, width factor, width exponent
SECTION_KINDS = {
    "pool": ((13.0, 18.0), (0.30, 0.36), (0.95, 1.15), (0.08, 0.14)),
    "run": ((9.0, 13.0), (0.34, 0.40), (1.05, 1.30), (0.10, 0.17)),
    "rapid": ((5.5, 9.0), (0.40, 0.46), (1.15, 1.40), (0.12, 0.18)),
}


def gen_sections():
    rng = Rng("stars")
    sections = []
    mile = 0.12
    while mile < LAKE_DRUME_MILE - 0.1:
        r = reach_of_mile(mile)
        ok = all(abs(mile - REACHES[i][1]) > 0.03 and abs(mile - REACHES[i][2]) > 0.03
                 for i in range(NREACHES))
        if ok and r > 0:
            u = rng.uniform()
            kind = "pool" if u < 0.35 else ("run" if u < 0.8 else "rapid")
            d5r, br, wfr, cwr = SECTION_KINDS[kind]
            d5 = rng.uniform(*d5r)
            b = rng.uniform(*br)
            bw = bed_width(max(r, FIRST_REACH))
            w5 = bw * rng.uniform(*wfr)
            cw = rng.uniform(*cwr)
            rows = []
            for q in STARS_Q:
                x = q / 5000.0
                stage = round(d5 * x ** b, 2)
                width = round(w5 * x ** cw, 1)
                vel = round(q / (width * 0.62 * stage), 2)
                rows.append((q, stage, vel, width))
            sections.append(dict(osd=round(mile, 2), kind=kind, rows=rows))
        mile += rng.uniform(0.5, 1.0)
    return sections


# ---------------------------------------------------------------------------
# Sediment storage tables
# ---------------------------------------------------------------------------

COARSE_Q = [5000, 8000, 10000, 15000, 18000, 20000, 25000, 30000, 35000, 40000, 45000, 100000]
EDDY_Q = [0, 2000, 5000, 8000, 10000, 15000, 20000, 25000, 30000, 35000, 40000, 45000,
          60000, 80000, 100000]
EDDY_VMAX = (16000.0, 65000.0, 210000.0)   # ft3 of sand an eddy holds at 100000 cfs
EDDY_EXPONENT = 0.75
POOL_DEPTH_FT = 0.9                        # sand-fillable pool depth at low flow
POOL_SCOUR_Q = 45000.0                     # e-folding discharge of pool potential

# Deposits per mile by reach (eddies, channel margins): wide soft-rock
# reaches hold many, the narrow granite gorges few.
DEPOSITS_PER_MILE = {2: (1.0, 0.9), 3: (1.6, 0.8), 4: (0.9, 0.5), 5: (1.8, 1.0),
                     6: (1.5, 0.9), 7: (0.9, 0.6), 8: (0.6, 0.3), 9: (0.8, 0.4),
                     10: (1.1, 0.7), 11: (1.4, 0.9), 12: (0.7, 0.6)}
EDDY_TYPES = ["R", "S", "R/CM", "TFE", "R/UP", "S/CM", "TFE/UP"]
EDDY_TYPE_WEIGHTS = [0.34, 0.2, 0.14, 0.1, 0.09, 0.08, 0.05]
CM_TYPES = ["CM", "CM/PB", "CM/UP"]
EDDY_SIZES = ["VS", "S", "M", "L"]
EDDY_SIZE_WEIGHTS = [0.12, 0.33, 0.35, 0.2]


def weighted(rng, items, weights):
    u = rng.uniform() * sum(weights)
    for it, w in zip(items, weights):
        u -= w
        if u < 0:
            return it
    return items[-1]


def gen_deposits():
    rng = Rng("rc90")
    rows = []
    for r in range(FIRST_REACH, LAST_REACH + 1):
        a, b = REACHES[r - 1][1], REACHES[r - 1][2]
        ne = max(3, int(round(DEPOSITS_PER_MILE[r][0] * (b - a))))
        nc = max(2, int(round(DEPOSITS_PER_MILE[r][1] * (b - a))))
        kinds = ["E"] * ne + ["C"] * nc + ["U"] * max(1, ne // 10)
        for k in kinds:
            mile = round(rng.uniform(a + 0.05, b - 0.05), 2)
            if k == "E":
                dep = weighted(rng, EDDY_TYPES, EDDY_TYPE_WEIGHTS)
                size = weighted(rng, EDDY_SIZES, EDDY_SIZE_WEIGHTS)
                rc = "RC" if rng.uniform() < (0.45 if size in ("M", "L") else 0.15) else "NRC"
            elif k == "C":
                dep = weighted(rng, CM_TYPES, [0.7, 0.2, 0.1])
                size = weighted(rng, ["S", "M", "L"], [0.5, 0.35, 0.15])
                rc = "NRC"
            else:
                dep = "UP"      # upper pool deposit: not counted by the inventory
                size = "S"
                rc = "NRC"
            rows.append((mile, rc, dep, size))
    rows.sort(key=lambda t: (t[0], t[2]))
    return rows


def count_deposits(rows):
    neddy = {r: [0, 0, 0] for r in range(FIRST_REACH, LAST_REACH + 1)}
    ncm = {r: 0 for r in neddy}
    nback = {r: 0 for r in neddy}
    for mile, rc, dep, size in rows:
        r = reach_of_mile(mile)
        if rc != "NRC":
            nback[r] += 1
        if dep in CM_TYPES:
            ncm[r] += 1
        elif dep in EDDY_TYPES:
            k = {"VS": 0, "S": 0, "M": 1, "L": 2}[size]
            neddy[r][k] += 1
    return neddy, ncm, nback


SUBSTRATE_Q = [5000, 10000, 20000, 31500, 60000]
# Percent fines, sand, gravel/cobble, talus, bedrock by discharge level (low to
# high), for a soft-rock reach and for a granite gorge; transects mix them.
SUBSTRATE_SOFT = [(2, 18, 52, 10, 18), (4, 26, 38, 14, 18), (6, 34, 22, 20, 18),
                  (8, 38, 12, 24, 18), (6, 30, 8, 30, 26)]
SUBSTRATE_GRANITE = [(1, 8, 46, 15, 30), (2, 14, 34, 18, 32), (3, 20, 20, 22, 35),
                     (4, 24, 10, 24, 38), (3, 18, 6, 26, 47)]
GRANITE_REACHES = {7: 0.9, 8: 1.0, 9: 0.85, 4: 0.4, 12: 0.3}


def gen_substrate():
    rng = Rng("substrate")
    rows = []
    for r in range(FIRST_REACH, LAST_REACH + 1):
        a, b = REACHES[r - 1][1], REACHES[r - 1][2]
        nt = 2 if reach_len(r) < 20 else 3
        g0 = GRANITE_REACHES.get(r, 0.1)
        for t in range(nt):
            mile = round(a + (b - a) * (t + 0.5) / nt + rng.uniform(-1, 1) * 0.1 * (b - a) / nt, 2)
            g = min(1.0, max(0.0, g0 + rng.normal(0, 0.1)))
            for lev, q in enumerate(SUBSTRATE_Q):
                mix = [(1 - g) * s + g * h for s, h in zip(SUBSTRATE_SOFT[lev], SUBSTRATE_GRANITE[lev])]
                mix = [max(0.5, v * math.exp(rng.normal(0, 0.15))) for v in mix]
                tot = sum(mix)
                pct = [int(round(v * 100 / tot)) for v in mix]
                pct[2] += 100 - sum(pct)          # keep the row at exactly 100
                rows.append((len(SUBSTRATE_Q), q, mile) + tuple(pct))
    return rows


# ---------------------------------------------------------------------------
# Camps and the rafting policy
# ---------------------------------------------------------------------------

NCAMPS = 127
CAMP_SIZE_WEIGHTS = {"L": 0.3, "M": 0.36, "S": 0.34}
CAMP_QUALIFIERS = ["Upper", "Lower", "Middle", "Red", "Willow", "Cedar", "Raven", "Echo",
                   "Heron", "Lizard", "Ledge", "Owl", "Fern", "Canyon", "Stone", "Cliff",
                   "Juniper", "Agave", "Wren", "Shale", "Granite", "Driftwood", "Moon",
                   "Talus", "Sandpiper", "Cottonwood", "Hidden", "Twin", "Salt", "Ocotillo"]
CAMP_FEATURES = ["Beach", "Bar", "Camp", "Eddy", "Sands", "Flats", "Cove", "Point",
                 "Terrace", "Shore"]

TRIP_TYPES = [
    # name, parties a year, trip days, people a party, money class
    ("Commercial motor", 430, 7, 30),
    ("Commercial oar", 300, 13, 22),
    ("Private", 250, 18, 12),          # fits a small camp, so no size of camp stands idle
]
PEOPLE_PER_CAMP = (12, 24, 40)           # small <=, medium <=, large <=
LAUNCH_CAP = [
    [0, 0, 0, 2, 4, 5, 5, 5, 4, 2, 0, 0],
    [0, 0, 1, 2, 3, 3, 3, 3, 3, 2, 1, 0],
    [1, 1, 1, 2, 2, 2, 2, 2, 2, 2, 1, 1],
]
LAUNCH_PREF = [
    [0, 0, 0.2, 0.6, 1.0, 1.3, 1.4, 1.3, 1.0, 0.5, 0, 0],
    [0, 0, 0.3, 0.7, 1.0, 1.2, 1.2, 1.1, 1.0, 0.6, 0.2, 0],
    [0.3, 0.3, 0.6, 1.0, 1.1, 1.0, 0.9, 0.9, 1.1, 1.0, 0.5, 0.3],
]


def window_edges():
    edges = []
    for _, _, days, _ in TRIP_TYPES:
        tm = f32(TRIP_MILES / days)
        edges += [f32(tm * d) for d in range(days + 1)]
    return edges


def gen_camps():
    rng = Rng("camps")
    start, end = 0.7, TRIP_MILES - 0.3
    # Density per mile by reach: more beaches in wide, soft-rock reaches.
    weights = []
    for r in range(FIRST_REACH, LAST_REACH + 1):
        a = max(REACHES[r - 1][1] - HARL_FERRY, start)
        b = min(REACHES[r - 1][2] - HARL_FERRY, end)
        if b <= a:
            continue
        dens = (bed_width(r) / 200.0) ** 1.5
        weights.append((r, a, b, dens * (b - a)))
    tot = sum(w[3] for w in weights)
    counts = [NCAMPS * w[3] / tot for w in weights]
    n = [int(c) for c in counts]
    order = sorted(range(len(n)), key=lambda i: -(counts[i] - n[i]))
    for i in order[:NCAMPS - sum(n)]:
        n[i] += 1
    edges = window_edges()
    for attempt in range(200):
        miles = []
        for (r, a, b, _), k in zip(weights, n):
            for j in range(k):
                miles.append(a + (b - a) * (j + rng.uniform(0.1, 0.9)) / k)
        miles = sorted(round(m, 2) for m in miles)
        fixed = []
        for m in miles:
            while any(abs(m - e) < 0.03 for e in edges) or any(abs(m - f) < 0.05 for f in fixed) or \
                    any(abs(m + HARL_FERRY - b) < 0.05 for _, a_, b in REACHES):
                m = round(m + 0.07, 2)
            fixed.append(m)
        miles = sorted(fixed)
        sizes = [weighted(rng, list(CAMP_SIZE_WEIGHTS), list(CAMP_SIZE_WEIGHTS.values()))
                 for _ in miles]
        # Every day of a motor trip needs large camps to choose from.
        ok = True
        for name, parties, days, people in TRIP_TYPES:
            tm = TRIP_MILES / days
            for d in range(days):
                lo, hi = tm * d, tm * (d + 1)
                inwin = [s for m, s in zip(miles, sizes) if lo <= m < hi]
                if len(inwin) < 3 or (days <= 8 and inwin.count("L") < 3):
                    ok = False
        if ok:
            break
    else:
        raise RuntimeError("no camp layout fits the trip windows")
    names = [q + " " + f for q in CAMP_QUALIFIERS for f in CAMP_FEATURES]
    rng.shuffle(names)
    camps = []
    used_pref = set()
    for i, (m, s) in enumerate(zip(miles, sizes)):
        base = {"L": 6.0, "M": 5.0, "S": 4.0}[s]
        pref = round(base + rng.uniform(0, 3.9), 2)
        while pref in used_pref:
            pref = round(pref + 0.01, 2)
        used_pref.add(pref)
        camps.append(dict(index=i + 1, mile=m, size=s, pref=pref, name=names[i]))
    return camps


def monthly_schedule(t):
    """Launches per day by month: the water-filling of the parties of a year
    into the months by preference, under the daily launch limits."""
    parties = TRIP_TYPES[t][1]
    cap = [float(c) for c in LAUNCH_CAP[t]]
    pref = [float(p) for p in LAUNCH_PREF[t]]
    launches = [0.0] * 12
    left = float(parties)
    while left >= 1:
        open_m = [m for m in range(12) if cap[m] > 0 and launches[m] < cap[m]]
        if not open_m:
            break
        s = sum(pref[m] for m in open_m)
        w = [p / s for p in pref]
        placed = 0.0
        for m in open_m:
            add = w[m] * left / DAYS_IN_MONTH[m]
            launches[m] += add
            if launches[m] <= cap[m]:
                placed += DAYS_IN_MONTH[m] * add
            else:
                fit = cap[m] - (launches[m] - add)
                placed += DAYS_IN_MONTH[m] * fit
                launches[m] = cap[m]
        left -= placed
    return [round(v, 4) for v in launches], left


# Money: dollars per angler day; per person and trip, commercial and private.
DOL_DAY_ANG = [52, 52, 58, 62, 66, 68, 68, 66, 64, 60, 55, 52]
DOL_COM_TRIP = [1650, 1650, 1700, 1800, 1900, 2050, 2100, 2100, 1950, 1800, 1700, 1650]
DOL_PRIV_TRIP = [520, 520, 560, 620, 680, 720, 730, 720, 680, 620, 560, 520]


# ---------------------------------------------------------------------------
# Animals
# ---------------------------------------------------------------------------

FOOD_NAMES = ["Aquat. insects", "Terr. insects", "Cladophora"]
HAB_VARS = ["Daily stage range", "Wetted area", "Riparian cover", "Water temperature",
            "Suspended sediment", "Warm Trib/backwater Area"]
HAB_EFFECTS = ["Juvenile capacity", "Predation risk", "Adult food and space"]

# name, code, alpha, alphamax, rho, wk, sbase, sbasejuv, RcJuv, fec, sfry, ppred,
# RchFry, Pwk1, Pwk2, htype, dispersal (stay), breedtime, vul shape
SPECIES = [
    dict(name="Gorge chub", code="GCH", alpha=0.35, alphamax=0.55, rho=0.80, wk=4,
         sbase=0.80, sbasejuv=0.45, rcjuv=8.0, fec=2500, sfry=0.05, ppred=0.3,
         rchfry=6, pwk1=5, pwk2=8, htype=0.5, stay=0.9, breed=6, vul="early"),
    dict(name="Canyon sucker", code="CSU", alpha=0.9, alphamax=1.3, rho=0.80, wk=5,
         sbase=0.80, sbasejuv=0.45, rcjuv=6.0, fec=5000, sfry=0.05, ppred=0.2,
         rchfry=6, pwk1=4, pwk2=6, htype=0.5, stay=0.85, breed=5, vul="early"),
    dict(name="Rainbow trout", code="RBT", alpha=0.6, alphamax=1.2, rho=0.70, wk=3,
         sbase=0.55, sbasejuv=0.35, rcjuv=5.0, fec=2000, sfry=0.1, ppred=0.1,
         rchfry=2, pwk1=2, pwk2=5, htype=0.0, stay=0.8, breed=4, vul="flat"),
    dict(name="Brown trout", code="BNT", alpha=1.0, alphamax=2.0, rho=0.75, wk=3,
         sbase=0.65, sbasejuv=0.4, rcjuv=5.0, fec=2000, sfry=0.1, ppred=0.1,
         rchfry=5, pwk1=11, pwk2=12, htype=0.0, stay=0.85, breed=3, vul="flat"),
    dict(name="Speckled dace", code="SPD", alpha=0.008, alphamax=0.012, rho=0.5, wk=1,
         sbase=0.4, sbasejuv=0.3, rcjuv=10.0, fec=40000, sfry=0.1, ppred=0.3,
         rchfry=3, pwk1=6, pwk2=8, htype=0.5, stay=0.7, breed=7, vul="early"),
    dict(name="Common carp", code="CRP", alpha=2.0, alphamax=3.5, rho=0.8, wk=3,
         sbase=0.75, sbasejuv=0.4, rcjuv=5.0, fec=100000, sfry=0.01, ppred=0.1,
         rchfry=11, pwk1=5, pwk2=7, htype=0.0, stay=0.8, breed=6, vul="early"),
    dict(name="Channel catfish", code="CCF", alpha=1.0, alphamax=2.0, rho=0.8, wk=4,
         sbase=0.75, sbasejuv=0.4, rcjuv=5.0, fec=8000, sfry=0.05, ppred=0.1,
         rchfry=10, pwk1=6, pwk2=8, htype=0.0, stay=0.85, breed=7, vul="early"),
    dict(name="Fathead minnow", code="FHM", alpha=0.004, alphamax=0.006, rho=0.4, wk=1,
         sbase=0.3, sbasejuv=0.3, rcjuv=10.0, fec=150000, sfry=0.05, ppred=0.2,
         rchfry=6, pwk1=6, pwk2=8, htype=0.5, stay=0.7, breed=7, vul="early"),
]
RAINBOW = 3            # species index of the rainbow trout
FISHED = {3: (1.2e-5, [0.05, 0.4, 0.9]), 4: (0.8e-5, [0.02, 0.3, 0.8])}
# Survey catch index by reach 2..12 (mean over the survey years), and trend
# per year over the surveys (fraction); None: only a long-term average (YR 47).
CATCH_BY_REACH = {
    "GCH": ([0.3, 0.6, 0.8, 4.0, 24.0, 6.0, 1.2, 1.0, 0.8, 0.6, 0.2], -0.02),
    "CSU": ([1.0, 3.0, 5.0, 9.0, 14.0, 10.0, 6.0, 7.0, 8.0, 11.0, 6.0], 0.0),
    "RBT": ([48.0, 14.0, 9.0, 6.0, 3.0, 1.6, 0.8, 0.6, 0.4, 0.2, 0.1], 0.03),
    "BNT": ([0.8, 1.2, 1.6, 2.2, 2.8, 3.2, 1.2, 0.8, 0.5, 0.3, 0.1], 0.01),
    "SPD": ([2.0, 9.0, 8.0, 10.0, 14.0, 9.0, 6.0, 8.0, 9.0, 10.0, 6.0], 0.0),
    "CRP": ([0.1, 0.1, 0.2, 0.3, 0.4, 0.6, 0.6, 0.8, 1.6, 4.0, 6.5], None),
    "CCF": ([0.05, 0.1, 0.2, 0.5, 2.0, 2.2, 1.4, 1.8, 2.4, 3.6, 4.2], 0.01),
    "FHM": ([0.1, 1.5, 0.8, 1.2, 4.0, 0.8, 0.4, 0.6, 1.0, 1.8, 2.4], None),
}
SURVEY_YEARS = [84, 85, 87, 89, 90, 91, 92, 93, 94, 95, 96, 97]
RBT_YEARS = list(range(77, 98))

# Habitat links: (species, h, k, curve kind, strength)
HAB_LINKS = [
    (1, 4, 1, "sat", 2.0), (1, 6, 1, "inc", 0.4), (1, 1, 2, "inc", 0.3),
    (2, 4, 1, "sat", 1.0), (2, 6, 1, "inc", 0.4), (2, 5, 2, "dec", 0.2),
    (3, 4, 1, "dec", 0.6), (3, 1, 2, "inc", 0.3), (3, 2, 3, "inc", 0.5),
    (4, 4, 1, "dec", 0.3), (4, 2, 3, "inc", 0.4),
    (5, 6, 1, "inc", 0.3), (5, 1, 2, "inc", 0.2),
    (6, 4, 1, "sat", 2.0),
    (7, 4, 1, "sat", 2.0),
    (8, 6, 1, "inc", 0.5), (8, 4, 1, "sat", 1.0),
]
HAB_SCALE = 10.0

# Trophic links: predator, prey, proportion of predator diet, proportion of
# prey mortality.  Prey 9..11 are the food types.  Cladophora gives the fish
# nothing they digest (its worth is the insects living on it, carried by the
# algae feeders of the benthos), so its links crop it without feeding the fish.
TROPHIC = [
    (1, 9, 0.5, 0.05), (1, 10, 0.05, 0.05), (1, 11, 0.0, 0.01),
    (2, 11, 0.0, 0.05), (2, 9, 0.3, 0.05),
    (3, 9, 0.6, 0.15), (3, 10, 0.05, 0.05), (3, 11, 0.0, 0.02), (3, 5, 0.05, 0.05),
    (4, 3, 0.25, 0.15), (4, 9, 0.4, 0.05), (4, 5, 0.1, 0.1), (4, 1, 0.05, 0.1),
    (5, 9, 0.7, 0.05), (5, 11, 0.0, 0.01),
    (6, 9, 0.3, 0.02), (6, 11, 0.0, 0.03),
    (7, 1, 0.02, 0.1), (7, 5, 0.15, 0.2), (7, 9, 0.4, 0.03), (7, 10, 0.02, 0.03),
    (8, 9, 0.4, 0.05), (8, 11, 0.0, 0.03),
]

VUL_SHAPES = {
    "early": [3.0, 2.4, 1.9, 1.5, 1.2, 1.0, 0.8, 0.7, 0.6, 0.5, 0.4, 0.4],
    "flat": [1.6, 1.4, 1.2, 1.1, 1.0, 1.0, 1.0, 0.9, 0.9, 0.8, 0.8, 0.8],
}


def species_equilibrium(sp):
    """Recruits per kg of starting biomass, as the initialisation computes it."""
    rho, wk, alpha, sbase, sj = sp["rho"], sp["wk"], sp["alpha"], sp["sbase"], sp["sbasejuv"]
    p = rho ** wk
    alpha0 = (1 - rho) * alpha / (1 - p)
    w = 0.0
    for _ in range(wk):
        w = w * rho + alpha0
    s = sj ** (wk - 1)
    radult = (1 - rho * sbase) / (alpha0 * sbase / (1 - sbase) + w)
    return radult / s


# ---------------------------------------------------------------------------
# Production, vegetation, indicator populations
# ---------------------------------------------------------------------------

# Tuned on 50-year whole-model runs: the rapids re-aerate the river to saturation
# within a reach (OxyExchange); light extinction per mg/l that puts Secchi depths
# near the observed ones below the tributaries (LightExtTurb); algae maintenance
# (PhotoEffic) and the drying power (DryPower) that keep tailwater algae and benthos
# near the observations and BaseBenthos, since the width at the lowest stage of a
# peaking day is a sixth of the width at its highest.
PRODUCTION = dict(
    OxyExchange=30.0, GRConstA=475.0, GRConstB=40.0, GRConstC=33.5, OutflowO2=8.5,
    FineWgt=2.0, BaseLightExt=0.06, LightExtTurb=0.005, AlgaeMax=3.0, MinProdWinter=0.1,
    PhotoEffic=0.15, LakeDetritus=0.5, OstrelDetritus=0.8, AlgaeDetritus=0.3, DetSink=2.0,
    NatDetritus=3.0, TribDetritus=20.0,
    BaseBenthos=5.0, BenthosGrowthEff=0.2, BaseMort=0.3, MortQ10=2.0, Colonize=0.05,
    LakeDrift=0.02, DriftRate=0.01, DriftSink=0.5, NatDrift=0.05,
    MaxRToMort=3.0, AlgaeAvail=0.5, DryPower=0.15, ScourSand=500.0, ScourKeep=0.8,
    LabileAlgal=0.6, LabileTerr=0.3, TerrDetritus=0.0005, DetConsume=0.05, RefractRate=0.5,
)
# name, climax flags on fines/sand/gravel/talus/bedrock, growth, dkill, wmin, wmax,
# bug, det, dose of half mortality
VEG_TYPES = [
    ("Marsh", (1, 1, 0, 0, 0), 0.8, 0.5, 0, 3, 0.5, 0.8, 12.0),
    ("Coyote willow", (1, 1, 1, 0, 0), 0.5, 0.3, 1, 8, 1.0, 0.6, 8.0),
    ("Tamarisk", (0, 1, 1, 1, 0), 0.4, 0.15, 2, 15, 0.6, 0.4, 10.0),
    ("Mesquite", (0, 1, 0, 1, 0), 0.15, 0.1, 8, 40, 0.8, 0.3, 4.0),
]
VEG_COMP = [   # effect of type j (row) on type v (column)
    [1.0, 0.5, 0.3, 0.1],
    [0.4, 1.0, 0.5, 0.2],
    [0.3, 0.6, 1.0, 0.4],
    [0.1, 0.2, 0.4, 1.0],
]
VEG_MIN_COVER = 0.01
N_MORT_POINTS = 20
INDICATOR_FOODS = ["Detritus", "Riparian litter", "Indicator prey"]
# name, PopR, PopS, PopV, PopA1, PopA2, PopE, PopF
INDICATOR_POPS = [
    ("Aquatic snails", 3.0, 0.5, 2.0, 5.0, 10.0, 0.0, (100.0, 0.0, 0.0)),
    ("Riparian lizards", 2.0, 0.6, 2.0, 4.0, 5.0, 0.0, (0.0, 100.0, 0.0)),
    ("Wading birds", 1.5, 0.75, 1.5, 0.5, 2.0, 0.5, (0.0, 0.0, 0.05)),
]


# ---------------------------------------------------------------------------
# Flow scenarios: the flow limits the scenario pipeline starts from
# ---------------------------------------------------------------------------

VOL_LEVELS = [250000, 500000, 800000, 1200000, 2000000, 3500000]
POWER_PRICE = [34, 32, 29, 27, 26, 30, 38, 39, 33, 30, 31, 35]   # $/MWh, monthly level

SCENARIOS = [
    dict(name="noaction", title="No action - historical peaking operations",
         maxflow=31500, down=6000, up=8000, driven=False,
         changevol=(600000, 800000, 99999999), changelim=(25000, 25000, 25000),
         maxchange=[25000] * 12, minnight=1000, minday=3000),
    dict(name="modlow", title="Modified low fluctuating flow",
         maxflow=25000, down=1500, up=4000, driven=True,
         changevol=(600000, 800000, 99999999), changelim=(5000, 6000, 8000),
         maxchange=[8000] * 12, minnight=5000, minday=8000),
    dict(name="interim", title="Interim low fluctuating flow",
         maxflow=20000, down=1500, up=2500, driven=False,
         changevol=(600000, 800000, 99999999), changelim=(5000, 6000, 8000),
         maxchange=[5000, 5000, 5000, 5000, 6000, 8000, 8000, 8000, 6000, 5000, 5000, 5000],
         minnight=5000, minday=8000),
    dict(name="seasonal", title="Seasonally adjusted steady summer flows",
         maxflow=25000, down=1500, up=2500, driven=False,
         changevol=(600000, 800000, 99999999), changelim=(5000, 6000, 8000),
         maxchange=[8000, 8000, 8000, 6000, 2000, 1000, 1000, 1000, 2000, 6000, 8000, 8000],
         minnight=5000, minday=8000),
    dict(name="steady", title="Year-round steady flows",
         maxflow=31500, down=1500, up=2000, driven=False,
         changevol=(600000, 800000, 99999999), changelim=(0, 0, 0),
         maxchange=[0] * 12, minnight=5000, minday=5000),
]


def min_flow(sc, h):
    return sc["minday"] if 8 <= h <= 19 else sc["minnight"]


# ---------------------------------------------------------------------------
# Data of the two simulator programs (hydro/)
# ---------------------------------------------------------------------------

MANNING_N = 0.05            # gorge bed of cobble, boulders and rapids
PLANT_EFFICIENCY = 0.88
TAILWATER = (3113.0, 4.0, 0.6)   # ft: base + coef * (Q/1000)^exp below the dam
# $/MWh by hour ending 1..24: weekday, Sunday (the month factor scales both)
PRICE_WEEKDAY = [22, 21, 20, 20, 21, 24, 29, 34, 38, 40, 42, 44,
                 46, 48, 50, 52, 54, 55, 52, 46, 38, 32, 27, 24]
PRICE_SUNDAY = [21, 20, 19, 19, 19, 20, 22, 24, 26, 28, 29, 30,
                31, 32, 33, 34, 35, 36, 35, 32, 28, 25, 23, 22]


def gen_hydro_files(w, sections):
    """River geometry for USFlow (caddqd.In) from the cross-sections, one
    station a reach, and the plant and price data of ospsw95b."""
    lines = ["caddqd.In: river geometry for USFlow, one station a reach (field miles from Harl Ferry)",
             "dam_mile %s" % num(-HARL_FERRY),
             "discharges " + " ".join(str(q) for q in STARS_Q)]
    for r in range(1, NREACHES + 1):
        secs = [s for s in sections if reach_of_mile(s["osd"]) == r]
        if not secs:
            continue
        mile = sum(s["osd"] for s in secs) / len(secs) - HARL_FERRY
        areas, widths, slopes = [], [], []
        for i, q in enumerate(STARS_Q):
            a = [q / s["rows"][i][2] for s in secs]
            b = [s["rows"][i][3] for s in secs]
            areas.append(sum(a) / len(a))
            widths.append(sum(b) / len(b))
            for s in secs:
                v, rad = s["rows"][i][2], (q / s["rows"][i][2]) / s["rows"][i][3]
                slopes.append((MANNING_N * v / (1.486 * rad ** (2.0 / 3.0))) ** 2)
        slopes.sort()
        slope = slopes[len(slopes) // 2]
        lines.append("station %.2f %.6f " % (mile, slope) + " ".join("%.0f" % a for a in areas) + " " +
                     " ".join("%.1f" % b for b in widths))
    w.lines("hydro/caddqd.In", lines)
    scale = sum(POWER_PRICE) / 12.0
    lines = ["ospsw95b plant and price data",
             "efficiency %s" % num(PLANT_EFFICIENCY),
             "turbine_capacity %s" % num(POWERPLANT_CFS),
             "tailwater %s %s %s" % tuple(num(x) for x in TAILWATER),
             "month_factor " + " ".join("%.3f" % (p / scale) for p in POWER_PRICE),
             "hour weekday sunday"]
    for h in range(24):
        lines.append("%d %s %s" % (h + 1, num(PRICE_WEEKDAY[h]), num(PRICE_SUNDAY[h])))
    w.lines("hydro/ospsw95b.dat", lines)


# ---------------------------------------------------------------------------
# Graph table
# ---------------------------------------------------------------------------

def graph_table():
    """(time code, title, set labels, legend min, legend max) in the order of
    the results store."""
    sp_sets = [" model", " obs catch index"]
    veg = [" " + v[0] for v in VEG_TYPES[:3]]
    band = [" band 1", " band 2", " band 3", " band 4"]
    t = [
        ("M", "Flow (kcfs):", [" min", " max"], 0, 40),
        ("M", "Stage (ft):", [" min", " max"], 0, 50),
        ("M", "Suspended sediment (mg/l):", [" model", " obs"], 0, 2000),
        ("M", "Fines in suspended sediment (%)", [], 0, 100),
        ("M", "Tributary sediment input (1000 t)", [], 0, 500),
        ("M", "Eddy sand storage (rel. to potential):", band, 0, 1.5),
        ("M", "Channel margin sand storage (rel. to potential):", band, 0, 1.5),
        ("M", "Pool sand storage (rel. to potential)", [], 0, 1.5),
        ("M", "Sand balance error (t)", [], 0, 10),
        ("M", "Campsites:", [" all", " large", " medium", " small"], 0, 30),
        ("M", "Campsite use (share of camp-days):", [" large", " medium", " small"], 0, 1),
        ("Y", "Power value ($ million)", [], 0, 50),
        ("M", "Water temperature (C):", [" model", " obs"], 0, 25),
        ("M", "Dissolved oxygen (mg/l):", [" model", " obs"], 0, 14),
        ("M", "Secchi depth (ft):", [" model", " obs"], 0, 30),
        ("M", "Algae (g/ft2):", [" model", " obs"], 0, 5),
        ("M", "Total algae (g/m2):", [" model", " obs"], 0, 50),
        ("M", "Algae classes (%):", [" class 1", " class 2", " class 3", " class 4", " class 5"], 0, 100),
        ("M", "Detritus (g/m3):", [" input", " in water", " obs"], 0, 5),
        ("M", "Invertebrates (g/m2):", [" model", " obs"], 0, 50),
        ("Y", "Riparian litter (g/m2)", [], 0, 10),
        ("Y", "Vegetation area (ft2):", veg, 0, 2000000),
        ("Y", "Angler catch (fish):", [" model", " obs"], 0, 50000),
        ("Y", "Angler catch per effort:", [" model", " obs"], 0, 2),
        ("Y", "Angler days:", [" model", " obs"], 0, 30000),
        ("Y", "Angling value ($ million)", [], 0, 5),
    ]
    for sp in SPECIES:
        top = max(CATCH_BY_REACH[sp["code"]][0]) * 1.5
        t.append(("Y", sp["name"] + " biomass (kg):", sp_sets, 0, round(top, 1)))
    t.append(("Y", FOOD_NAMES[0] + " biomass:", [" model", " obs"], 0, 1000))
    return t


QB = [(0, 0, 0), (0, 0, 128), (0, 128, 0), (0, 128, 128), (128, 0, 0), (128, 0, 128),
      (128, 128, 0), (192, 192, 192), (128, 128, 128), (0, 0, 255), (0, 255, 0),
      (0, 255, 255), (255, 0, 0), (255, 0, 255), (255, 255, 0), (255, 255, 255)]


def rgb(n):
    r, g, b = QB[n]
    return r + 256 * g + 65536 * b


# ---------------------------------------------------------------------------
# Map geometry, in miles on a local grid (x east, y north, all positive)
# ---------------------------------------------------------------------------

MAP_STEP = 0.5
# Base heading of the river (degrees, 0 = east, counter-clockwise) by mile.
COURSE = [(0, -75), (30, -95), (62, -150), (90, -175), (130, -160),
          (170, -190), (210, -175), (253, -185)]


def course_heading(mile):
    for (m0, h0), (m1, h1) in zip(COURSE, COURSE[1:]):
        if m0 <= mile <= m1:
            return h0 + (h1 - h0) * (mile - m0) / (m1 - m0)
    return COURSE[-1][1]


def gen_river_line():
    rng = Rng("map-river")
    pts = [(0.0, 0.0)]
    miles = [0.0]
    heading_noise = 0.0
    x = y = 0.0
    n = int(round(LAKE_DRUME_MILE / MAP_STEP))
    for i in range(1, n + 1):
        mile = i * MAP_STEP
        heading_noise = 0.85 * heading_noise + rng.normal(0, 9.0)
        meander = 38.0 * math.sin(mile / 2.3) + 14.0 * math.sin(mile / 0.9 + 1.0)
        h = math.radians(course_heading(mile) + meander + heading_noise)
        x += MAP_STEP * math.cos(h)
        y += MAP_STEP * math.sin(h)
        pts.append((x, y))
        miles.append(round(mile, 2))
    return pts, miles


def wander_line(rng, start, heading, length, step, wiggle):
    pts = [start]
    x, y = start
    h = heading
    s = 0.0
    while s < length:
        h += math.radians(rng.normal(0, wiggle))
        x += step * math.cos(h)
        y += step * math.sin(h)
        pts.append((x, y))
        s += step
    return pts


def lake_polygon(rng, start, heading, length, width):
    """An elongated, winding lake from `start` along `heading`."""
    axis = wander_line(rng, start, heading, length, 1.0, 7.0)
    left, right = [], []
    z = 0.0
    for i, (x, y) in enumerate(axis):
        if i + 1 < len(axis):
            dx, dy = axis[i + 1][0] - x, axis[i + 1][1] - y
        else:
            dx, dy = x - axis[i - 1][0], y - axis[i - 1][1]
        d = math.hypot(dx, dy)
        nx, ny = -dy / d, dx / d
        z = 0.8 * z + rng.normal(0, 0.12)          # smooth changes of width
        w = width * (0.35 + 0.65 * min(1.0, i / 4.0)) * math.exp(z)
        left.append((x + nx * w * 0.5, y + ny * w * 0.5))
        right.append((x - nx * w * 0.5, y - ny * w * 0.5))
    poly = left + right[::-1]
    poly.append(poly[0])
    return poly


def gen_map(tribs_all):
    river, miles = gen_river_line()
    rng = Rng("map-lakes")
    h0 = math.atan2(river[1][1] - river[0][1], river[1][0] - river[0][0])
    up = (river[0][0] - 0.1 * math.cos(h0), river[0][1] - 0.1 * math.sin(h0))
    vessin = lake_polygon(rng, up, h0 + math.pi, 42.0, 4.5)
    hn = math.atan2(river[-1][1] - river[-2][1], river[-1][0] - river[-2][0])
    drume = lake_polygon(rng, river[-1], hn, 34.0, 5.0)
    rng = Rng("map-tribs")
    lines = []
    side = 1
    for name, mile, area in tribs_all:
        i = int(mile / MAP_STEP)
        f = mile / MAP_STEP - i
        p0 = (river[i][0] * (1 - f) + river[i + 1][0] * f, river[i][1] * (1 - f) + river[i + 1][1] * f)
        hr = math.atan2(river[i + 1][1] - river[i][1], river[i + 1][0] - river[i][0])
        side = -side if rng.uniform() < 0.7 else side
        hdir = hr + side * math.radians(rng.uniform(70, 110))
        length = min(70.0, 1.5 + 0.32 * math.sqrt(area))
        line = wander_line(rng, p0, hdir, length, max(0.3, length / 25.0), 8.0)
        lines.append((name, line[::-1]))      # drawn from the head to the mouth
    # Shift everything onto a positive grid.
    allpts = river + vessin + drume + [p for _, l in lines for p in l]
    minx = min(p[0] for p in allpts)
    miny = min(p[1] for p in allpts)
    dx, dy = 5.0 - minx, 5.0 - miny

    def sh(pts):
        return [(round(x + dx, 4), round(y + dy, 4)) for x, y in pts]

    return dict(river=sh(river), miles=miles, lakes=[("Lake Vessin", sh(vessin)),
                                                      ("Lake Drume", sh(drume))],
                tribs=[(n, sh(l)) for n, l in lines])


# ---------------------------------------------------------------------------
# Writers of each file
# ---------------------------------------------------------------------------

def write_reaches(w):
    lines = [rec("Ostrel Gorge reach breaks", NREACHES, FIRST_REACH, LAST_REACH),
             rec("Reach", "Label", "US_OSD_Mile", "DS_OSD_Mile")]
    for r, (label, a, b) in enumerate(REACHES, start=1):
        lines.append(rec(r, label, a, b))
    w.lines("Reaches.csv", lines)


def write_riverware(w, vol, natural):
    rows = [(y, m, int(vol[(y, m)])) for cm, y, m in months()]
    w.sheet("riverware.xls", "Historical", ["YR", "MNTH", "ACFT"], rows)
    # Planning traces: five hydrologic sequences of the regulated river, one
    # sheet without and one with spring beach-building spikes.
    rng = Rng("traces")
    nruns = 5
    post = [y for y in range(DAM_CLOSES + 1, LAST_YEAR + 1) if y not in HIGH_RELEASE_YEARS]
    traces = []
    for run in range(nruns):
        seq = {}
        for y in range(FIRST_YEAR, LAST_YEAR + 1):
            src = post[int(rng.uniform() * len(post)) % len(post)]
            scale = 1.0 + 0.06 * run - 0.12 + rng.normal(0, 0.03)
            for m in range(1, 13):
                seq[(y, m)] = float(int(round(min(1.45e6, max(0.45e6, vol[(src, m)] * scale)) / 100.0)) * 100)
        traces.append(seq)
    spike_size = [45, 45, 40, 0, 0]
    spikes = []
    for run in range(nruns):
        flags = {}
        for y in range(FIRST_YEAR, LAST_YEAR + 1):
            ann = sum(traces[run][(y, m)] for m in range(1, 13))
            for m in range(1, 13):
                flags[(y, m)] = -1 if (spike_size[run] > 0 and m == 3 and ann > 9.2e6) else 0
        spikes.append(flags)
    heads = ["YR", "MNTH"] + ["Run%d" % (i + 1) for i in range(nruns)]
    w.sheet("riverware.xls", "MLFF_Traces", heads,
            [(y, m) + tuple(int(t[(y, m)]) for t in traces) for cm, y, m in months()])
    spiked = []
    for cm, y, m in months():
        row = [y, m]
        for run in range(nruns):
            v = traces[run][(y, m)]
            if spikes[run][(y, m)]:
                # the spike's volume above powerplant flow is added to March
                v += 2 * 86400 * (spike_size[run] * 1000 - POWERPLANT_CFS) / 43560.0
            row.append(int(round(v / 100.0)) * 100)
        spiked.append(tuple(row))
    w.sheet("riverware.xls", "Spike_Traces", heads, spiked)
    w.sheet("riverware.xls", "spike", ["Run%d" % (i + 1) for i in range(nruns)],
            [tuple(s[(y, m)] for s in spikes) for cm, y, m in months()])
    w.sheet("riverware.xls", "RunList", ["Nruns", "RunType"],
            [(i + 1, spike_size[i]) for i in range(nruns)])


def write_flow_parameters(w):
    """The flow limits of each scenario as the head of a scenario file, in
    hydro/scenarios/; tools/make_scenarios.sh runs the scenario pipeline on them
    to make the scenario files of the program folder."""
    names = []
    for sc in SCENARIOS:
        names.append(sc["name"])
        lines = [sc["title"]]
        lines.append(rec("Flow Parameters", sc["maxflow"], sc["down"], sc["up"]))
        lines.append(rec("Release-Driven_Max_Daily_Flow_Change", -1 if sc["driven"] else 0,
                         *(list(sc["changevol"]) + list(sc["changelim"]))))
        lines.append(rec("Month", *MONTH_NAMES))
        lines.append(rec("MaxDailyFlowChange", *sc["maxchange"]))
        lines.append(rec("MinDailyFlow_By_Month_And_Hour"))
        lines.append(rec("HR", *MONTH_NAMES))
        for h in range(1, 25):
            lines.append(rec(h, *[min_flow(sc, h)] * 12))
        lines.append("")
        lines.append(rec("Monthly Release Volumes", *VOL_LEVELS))
        w.lines("hydro/scenarios/" + sc["name"] + ".flow", lines)
    w.lines("diurnal_scenarios.txt", [rec(n) for n in names])
    return names


def write_exp(w):
    lines = [rec("Experimental monthly temperature pattern")]
    for m in range(1, 13):
        lines.append(rec(MONTH_NAMES[m - 1], round(exp_release_temp(m), 1)))
    lines.append("")
    lines.append(rec("Year", "Diurnal_Pattern", "Exp._Temp_Year"))
    for y in range(48, 148):
        lines.append(rec(1900 + y, 1, 0))
    w.lines("default.exp", lines)


def write_physical(w, D):
    tribs = D["tribs"]
    # TribFlow: one series per tributary group, in mile order, months ascending.
    rows = []
    for t in tribs:
        for cm, y, m in months():
            rows.append((t["mile"], y, m, cm, t["q"][cm], t["sand"][cm], t["fines"][cm]))
    w.sheet("physical.xls", "TribFlow",
            ["OSD_Mile", "YR", "MNTH", "CMONTH", "AVGQW", "SandMGL", "FineMGL"], rows)
    w.sheet("physical.xls", "SpateEvents", ["cmonth", "SpateNum"],
            [(cm, D["spates"][cm]) for cm in range(1, NMONTHS + 1)])
    # Temperature patterns.
    w.sheet("physical.xls", "OSDEqTemp", ["Month", "OSDOut", "EQUILIB"],
            [(m, round(release_temp(m), 1), round(eq_temp(m), 1)) for m in range(1, 13)])
    write_main_temp(w, D)
    write_main_sed(w, D)
    # Hydraulics.
    rows = []
    for s in D["sections"]:
        rm = round(s["osd"] - HARL_FERRY, 2)
        for q, st, v, wd in s["rows"]:
            rows.append((rm, q, st, v, wd))
    w.sheet("physical.xls", "StarsOut", ["MILE", "DISCHARGE", "STAGE", "VELOCITY", "WIDTH"], rows)
    # Deposits, substrate, storage.
    w.sheet("physical.xls", "RC90", ["OSD_Mile", "RCCHAR", "Dep_Type", "BE_Size"], D["rc90"])
    w.sheet("physical.xls", "Substrate",
            ["MaxQLevels", "Discharge", "OSD_Mile", "Fines", "Sand", "Grav_Cob", "Talus", "Bedrock"],
            D["substrate"])
    rows = []
    for q in EDDY_Q:
        rows.append((q,) + tuple(int(round(vm * (q / 100000.0) ** EDDY_EXPONENT)) for vm in EDDY_VMAX))
    w.sheet("physical.xls", "Eddy_Storage", ["Discharge", "Vol_S", "Vol_M", "Vol_L"], rows)
    rng = Rng("mcpool")
    factor = {r: math.exp(rng.normal(0, 0.15)) for r in range(FIRST_REACH, LAST_REACH + 1)}
    rows = []
    for q in COARSE_Q:
        for r in range(FIRST_REACH, LAST_REACH + 1):
            v = REACH_BED_AREA[r - 2] * POOL_DEPTH_FT * factor[r] * math.exp(-q / POOL_SCOUR_Q)
            rows.append((q, r, int(round(v, -2))))
    w.sheet("physical.xls", "MCPool_Storage", ["Discharge", "ReachNum", "V_Coarse"], rows)
    w.sheet("physical.xls", "Fans", ["OSD_Mile", "TribName"],
            [(t["mile"], t["name"]) for t in tribs if t["fan"]])
    rows = [(mile, area, name) for name, mile, area in D["trib_list"]]
    w.sheet("physical.xls", "TribAttributes", ["OSD_Mile", "Basin_Area", "TribName"], rows)
    w.sheet("physical.xls", "Economic", ["Month", "Dol_Day_Ang", "Dol_Com_Trp", "Dol_Priv_Trp"],
            [(MONTH_NAMES[m], DOL_DAY_ANG[m], DOL_COM_TRIP[m], DOL_PRIV_TRIP[m]) for m in range(12)])
    w.sheet("physical.xls", "CampingBeaches", ["MILE", "SIZE", "PREF", "INDEX", "NAME"],
            [(c["mile"], c["size"], c["pref"], c["index"], c["name"]) for c in D["camps"]])


# Observation sites: name, mile, first year
SED_SITES = [("Harl Ferry", HARL_FERRY, 48), ("Gorge gauge", 88.4, 48), ("Drume gauge", 228.9, 83)]
TEMP_SITES = [("Harl Ferry", HARL_FERRY, 71), ("Redstone", 45.0, 84), ("Gorge gauge", 88.4, 78),
              ("Middle Granite", 150.0, 88), ("Drume gauge", 228.9, 83)]
PROD_SITES = [0.5, 52.0, 104.0, 200.0]
PROD_YEARS = [91, 92, 93, 94, 95, 96]
PROD_MONTHS = [3, 6, 9, 11]


def river_flow_at(D, cm, m, mile):
    q = af_to_cfs(D["vol"][(FIRST_YEAR + (cm - 1) // 12, m)], m)
    for t in D["tribs"]:
        if t["mile"] < mile:
            q += t["q"][cm]
    return q


def natural_ssc(q, rng):
    """Suspended sediment of the natural river at Harl Ferry, mg/l."""
    return 1100.0 * (q / 15000.0) ** 0.9 * math.exp(rng.normal(0, 0.25))


def write_main_sed(w, D):
    rng = Rng("mainsed")
    harl = {}
    rows = []
    for name, mile, y0 in SED_SITES:
        for cm, y, m in months():
            if y < y0:
                continue
            qd = af_to_cfs(D["vol"][(y, m)], m)
            if y < DAM_CLOSES:
                cd = harl.setdefault(cm, natural_ssc(qd, rng))
            else:
                cd = harl.setdefault(cm, max(1.0, 5.0 * math.exp(rng.normal(0, 0.35))))
            load = qd * cd
            q = qd
            for t in D["tribs"]:
                if t["mile"] < mile:
                    qt = t["q"][cm]
                    load += qt * (t["sand"][cm] * 0.35 + t["fines"][cm] * 0.9)
                    q += qt
            c = load / q * math.exp(rng.normal(0, 0.1)) if mile > HARL_FERRY else cd
            rows.append((mile, y, m, round(q), round(c, 1)))
    w.sheet("physical.xls", "Mainsed", ["OSD_Mile", "YR", "MONTH", "AVGQ_CFS", "AVGSSMGL"], rows)


def write_main_temp(w, D):
    rng = Rng("maintemp")
    rows = []
    wavg = 240.0
    for name, mile, y0 in TEMP_SITES:
        for cm, y, m in months():
            if y < max(y0, DAM_CLOSES) or rng.uniform() < 0.08:
                continue
            q = river_flow_at(D, cm, m, mile)
            t0 = release_temp(m) + rng.normal(0, 0.3)
            te = eq_temp(m)
            t = te + (t0 - te) * math.exp(-HEAT_EX * wavg * mile / q) + rng.normal(0, 0.3)
            rows.append((mile, y, m, round(t, 1)))
    w.sheet("physical.xls", "MainTemp", ["OSD_Mile", "YR", "MNTH", "AVGTEMP"], rows)


def write_lower_production(w, D):
    rng = Rng("production-obs")
    brows, drows = [], []
    for site in PROD_SITES:
        for y in PROD_YEARS:
            for m in PROD_MONTHS:
                cm = (y - FIRST_YEAR) * 12 + m
                q = river_flow_at(D, cm, m, site)
                tribs_above = sum(t["q"][cm] * (t["sand"][cm] + t["fines"][cm]) for t in D["tribs"]
                                  if t["mile"] < site)
                ssc = 5.0 + tribs_above / q * 0.5
                k = 0.06 + 0.01 * ssc
                secchi = min(28.0, 1.7 / k) * math.exp(rng.normal(0, 0.1))
                temp = eq_temp(m) + (release_temp(m) - eq_temp(m)) * math.exp(-HEAT_EX * 240 * site / q)
                do = (475.0 - 40.0) / (temp + 33.5) * (1 + rng.normal(0, 0.03))
                light = 1 - math.exp(-secchi / 8.0)
                season = 0.6 + 0.4 * math.sin(math.pi * (m - 2) / 10.0)
                algae = 3.5 * light * season * math.exp(rng.normal(0, 0.25))
                totmasm = 12.0 * algae * math.exp(rng.normal(0, 0.2))
                brows.append((site, y, m, round(do, 2), round(secchi, 1), round(algae, 2), round(totmasm, 1)))
                det = 0.4 + 0.8 * ssc / 200.0 * math.exp(rng.normal(0, 0.3))
                inv = 0.05 * algae * math.exp(rng.normal(0, 0.3))
                dalg = 0.1 * algae * math.exp(rng.normal(0, 0.3))
                drows.append((site, y, m, round(det, 3), round(inv, 3), round(dalg, 3)))
    w.sheet("lower_production.xls", "Benthos", ["USGS_Mile", "YR", "MNTH", "DO", "SECCHI", "ALGAE", "TOTMASM"], brows)
    w.sheet("lower_production.xls", "Drift", ["USGS_Mile", "YR", "MNTH", "DETRITUS", "INVERTS", "ALGAE"], drows)


def write_population(w, D):
    rng = Rng("population-obs")
    w.sheet("population.xls", "Lookup", ["SPCODE", "ModelIndex", "COMMON_NAME"],
            [(sp["code"], i, sp["name"]) for i, sp in enumerate(SPECIES, start=1)])
    rows = []
    raw = []
    for i, sp in enumerate(SPECIES, start=1):
        means, trend = CATCH_BY_REACH[sp["code"]]
        for r in range(FIRST_REACH, LAST_REACH + 1):
            mu = means[r - FIRST_REACH]
            if trend is None:
                rows.append((sp["code"], r, 47, round(mu, 3)))
                continue
            for y in SURVEY_YEARS:
                v = mu * (1 + trend * (y - 91)) * math.exp(rng.normal(0, 0.3))
                rows.append((sp["code"], r, y, round(v, 3)))
                effort = round(rng.uniform(4, 12), 1)
                raw.append((sp["code"], r, y, effort, int(round(v * effort))))
    rows.sort(key=lambda t: (t[0], t[1], t[2]))
    w.sheet("population.xls", "Pop_Halden_Broome", ["SPECIES", "REACH", "YR", "STDCATCH"], rows)
    rbt = []
    for y in RBT_YEARS:
        trendf = 0.55 + 0.035 * (y - 77)
        cpue = round(trendf * math.exp(rng.normal(0, 0.15)), 3)
        hours = round(70.0 + 2.8 * (y - 77) + rng.normal(0, 8.0), 1)
        rbt.append((y, cpue, hours, int(round(cpue * hours * 1000))))
    w.sheet("population.xls", "RBT_HF", ["YR", "CPUE", "ANGHR_1000", "Catch"], rbt)
    w.sheet("population.xls", "AllFishData", ["SPCODE", "REACH", "YR", "EFFORT_HR", "CATCH"], raw)
    birds = []
    for r in range(FIRST_REACH, LAST_REACH + 1):
        for y in range(88, 98):
            base = 4 + 2 * (r in (3, 6, 11))
            birds.append((r, y, int(round(base * math.exp(rng.normal(0, 0.4)))),
                          int(round(2 * math.exp(rng.normal(0, 0.5))))))
    w.sheet("population.xls", "BirdData", ["REACH", "YR", "WATERFOWL", "DIPPERS"], birds)
    return rows, rbt


def catch_index_start(pop_rows, rbt_rows):
    """Slot 47 of the catch index as the start-up readers build it."""
    code_to_i = {sp["code"]: i for i, sp in enumerate(SPECIES, start=1)}
    ci = {}
    sums, counts = {}, {}
    for code, r, y, v in pop_rows:
        i = code_to_i[code]
        if y == 47:
            ci[(i, r)] = v
        else:
            sums[(i, r)] = sums.get((i, r), ci.get((i, r), 0.0)) + v
            counts[(i, r)] = counts.get((i, r), 0) + 1
    for k in sums:
        ci[k] = sums[k] / counts[k]
    old = ci.get((RAINBOW, FIRST_REACH), 0.0)
    mean_cpue = sum(t[1] for t in rbt_rows) / len(rbt_rows)
    ratio = mean_cpue / old
    for r in range(FIRST_REACH + 1, LAST_REACH + 1):
        if (RAINBOW, r) in ci:
            ci[(RAINBOW, r)] *= ratio
    ci[(RAINBOW, FIRST_REACH)] = mean_cpue
    return ci


def hab_curve(kind, strength):
    out = []
    for j in range(1, 21):
        x = j / HAB_SCALE
        if kind == "inc":
            v = x ** strength
        elif kind == "sat":
            # Warm-water fish: colder than the first year's month limits the
            # young, warmer gives them nothing more.
            v = min(1.0, x) ** strength
        else:
            v = x ** (-strength)
        out.append(round(min(3.0, max(0.05, v)), 4))
    return out


def write_fis(w, D):
    ci = D["catch_start"]
    lines = [blanks(len(SPECIES), 20, 6, 3)]
    lines += HAB_VARS
    lines += HAB_EFFECTS
    links = {(i, h, k): (kind, s) for i, h, k, kind, s in HAB_LINKS}
    for i, sp in enumerate(SPECIES, start=1):
        b0 = sum(ci.get((i, r), 0.0) for r in range(FIRST_REACH, LAST_REACH + 1))
        r0_per_kg = species_equilibrium(sp)
        sejuv = r0_per_kg * sp["rcjuv"] / (sp["fec"] * sp["sfry"])
        if not 0 < sejuv < 1:
            raise ValueError("survival fry to age 1 out of range for " + sp["name"])
        fert, f1, f2 = 0, 0, 0
        if i == RAINBOW:
            # Tailwater stocking of age-1 fish in the first years after closure
            # (run years 16-30 of a run from 1948).
            fert, f1, f2 = round(0.2 * r0_per_kg * b0, 3), 16, 30
        lines.append(sp["name"])
        lines.append(blanks(round(b0, 3), sp["alpha"], sp["alphamax"], sp["rho"], sp["wk"],
                            sp["sbase"], sp["sbasejuv"], sp["rcjuv"], "False"))
        lines.append(blanks(sp["fec"], sp["sfry"], round(sejuv, 6), 0, 0))
        lines.append(blanks(sp["ppred"], sp["rchfry"], sp["pwk1"], sp["pwk2"], sp["htype"]))
        lines.append(blanks(fert, f1, f2))
        lines.append(blanks(sp["stay"], sp["breed"]))
        for v in VUL_SHAPES[sp["vul"]]:
            lines.append(num(v))
        for h in range(1, 7):
            for k in range(1, 4):
                if (i, h, k) in links:
                    kind, s = links[(i, h, k)]
                    lines.append("-1")
                    week = (sp["breed"] - 1) * 4 + 5
                    lines.append(blanks(week, 12, sp["rchfry"], HAB_SCALE))
                    lines += [num(v) for v in hab_curve(kind, s)]
                else:
                    lines.append("0")
        lines.append(blanks(2 if i in FISHED else 0, 100))
        hr = 0.05 if i in FISHED else 0.0
        lines += [num(hr)] * 100
    for pred, prey, diet, mort in TROPHIC:
        lines.append(blanks(pred, prey, diet, mort))
    w.lines("default.fis", lines)


def write_bhp(w):
    P = PRODUCTION
    lines = [
        blanks(*[P[k] for k in ("OxyExchange", "GRConstA", "GRConstB", "GRConstC", "OutflowO2")]),
        blanks(*[P[k] for k in ("FineWgt", "BaseLightExt", "LightExtTurb", "AlgaeMax", "MinProdWinter",
                                "PhotoEffic", "LakeDetritus", "OstrelDetritus", "AlgaeDetritus",
                                "DetSink", "NatDetritus", "TribDetritus")]),
        blanks(*[P[k] for k in ("BaseBenthos", "BenthosGrowthEff", "BaseMort", "MortQ10", "Colonize",
                                "LakeDrift", "DriftRate", "DriftSink", "NatDrift")]),
        blanks(*[P[k] for k in ("MaxRToMort", "AlgaeAvail", "DryPower", "ScourSand", "ScourKeep")]),
        blanks(*[P[k] for k in ("LabileAlgal", "LabileTerr", "TerrDetritus", "DetConsume", "RefractRate")]),
        blanks(len(VEG_TYPES), N_MORT_POINTS, VEG_MIN_COVER),
    ]
    for v, (name, climax, growth, dkill, wmin, wmax, bug, det, d50) in enumerate(VEG_TYPES):
        lines.append(text_field(name))
        lines.append(blanks(*[-1 if c else 0 for c in climax]))
        lines.append(blanks(growth, dkill, wmin, wmax, bug, det))
        lines.append(blanks(*[VEG_COMP[j][v] for j in range(len(VEG_TYPES))]))
        mort = [round(1 - math.exp(-(i / d50) ** 2), 4) for i in range(1, N_MORT_POINTS + 1)]
        lines.append(blanks(*mort))
    lines.append(blanks(len(INDICATOR_POPS), len(INDICATOR_FOODS)))
    lines += [text_field(f) for f in INDICATOR_FOODS]
    for name, r, s, v, a1, a2, e, pf in INDICATOR_POPS:
        lines.append(blanks(r, s, v, a1, a2, e, text_field(name)))
        lines.append(blanks(*pf))
    w.lines("default.bhp", lines)


def write_trb(w, D):
    """Tributary and backwater habitat: per reach the accessible length of the
    tributary mouth, then for the three classes a multiplier and a curve of 21
    cells."""
    lines = [blanks(FIRST_REACH, LAST_REACH)]
    trib_reaches = {}
    for t in D["tribs"]:
        trib_reaches[t["reach"]] = t
    for r in range(FIRST_REACH, LAST_REACH + 1):
        t = trib_reaches.get(r)
        # Accessible length of the tributary from the main stem (ft).
        if t is not None:
            length = 6000.0 if t["name"] == "TSR" else (2500.0 if t["fan"] else 800.0)
        else:
            length = 0.0
        lines.append(num(length))
        # class 1: usable width of the tributary mouth (ft) against tributary
        # flow in steps of 15 cfs.
        lines.append("1")
        if t is not None:
            width_max = 45.0 if t["name"] == "TSR" else 25.0
            curve = [round(width_max * min(1.0, (j * 15.0 / 120.0)) ** 0.7 *
                           (1.0 if j * 15 < 200 else 0.6), 2) for j in range(21)]
        else:
            curve = [0.0] * 21
        lines += [num(v) for v in curve]
        # class 2: ponded area at the mouth (ft2) against main-stem flow in
        # steps of 1500 cfs.
        lines.append("1")
        if t is not None:
            amax = 40000.0 if t["name"] == "TSR" else (12000.0 if t["fan"] else 3000.0)
            curve = [round(amax * math.exp(-((j - 9) / 5.0) ** 2), 1) for j in range(21)]
        else:
            curve = [0.0] * 21
        lines += [num(v) for v in curve]
        # class 3: area of one warm backwater (ft2) against main-stem flow.
        lines.append("1")
        curve = [round(3000.0 * math.exp(-((j - 6) / 3.5) ** 2), 1) for j in range(21)]
        lines += [num(v) for v in curve]
    w.lines("default.trb", lines)


def write_rec(w, D):
    lines = [rec(Flag(True), 0.5, 2, 1.25)]
    # Angling effort by reach, in 64ths so that the shares sum to exactly 1.
    share = {2: 56, 3: 3, 4: 2, 5: 1, 6: 1, 7: 1}
    for r in range(FIRST_REACH, LAST_REACH + 1):
        lines.append(rec(r, share.get(r, 0) / 64.0))
    lines.append(rec("TotalMaxEffort", 24000))
    month_effort = [3, 3, 5, 7, 8, 8, 7, 6, 6, 5, 3, 3]
    month_q = [0.8, 0.85, 1.0, 1.1, 1.1, 1.0, 0.9, 0.9, 1.0, 1.1, 1.0, 0.85]
    for m in range(12):
        lines.append(rec(MONTH_NAMES[m], month_effort[m] / 64.0, month_q[m]))
    for i, sp in enumerate(SPECIES, start=1):
        lines.append(rec(i, Flag(i in FISHED)))
        if i in FISHED:
            q, vul = FISHED[i]
            if len(vul) != sp["wk"]:
                raise ValueError("age vulnerability must cover the pre-adult ages")
            lines.append(rec("qMax", q))
            lines.append(rec("AgeVul", *vul))
    lines.append("RAFTING")
    lines.append(num(len(TRIP_TYPES)))
    lines.append("Trip Type")
    lines += [t[0] for t in TRIP_TYPES]
    lines.append("Parties per year")
    lines += [num(t[1]) for t in TRIP_TYPES]
    lines.append("Trip length (days)")
    lines += [num(t[2]) for t in TRIP_TYPES]
    lines.append("People per party")
    lines += [num(t[3]) for t in TRIP_TYPES]
    lines.append("Daily launch limit by month")
    lines += [",".join(num(v) for v in row) for row in LAUNCH_CAP]
    lines.append("Monthly preference weighting")
    lines += [",".join(num(v) for v in row) for row in LAUNCH_PREF]
    lines.append("Launches per day by month")
    sched = []
    for t in range(len(TRIP_TYPES)):
        launches, left = monthly_schedule(t)
        if left >= 1:
            raise ValueError("parties that could not launch: " + TRIP_TYPES[t][0])
        sched.append(launches)
        lines.append(",".join(num(v) for v in launches))
    lines.append("People Per Camp")
    for n, letter in zip(PEOPLE_PER_CAMP, "SML"):
        lines.append(num(n) + "," + letter)
    w.lines("default.rec", lines)
    return sched


def beach_inventory(camps):
    inv = {r: [0, 0, 0] for r in range(FIRST_REACH, LAST_REACH + 1)}
    for c in camps:
        r = reach_of_mile(c["mile"] + HARL_FERRY)
        inv[r]["LMS".index(c["size"])] += 1
    return inv


BASE_BEACH_REL_FULL = 0.5
BEACH_CURVE_A = 1.5


def write_phy(w, D):
    P = [
        rec("HeatEx", HEAT_EX),
    ]
    # Seasonal patterns: the dam (acre-feet) and the two fan tributaries (cfs),
    # medians of the record by month.
    def median(vals):
        v = sorted(vals)
        n = len(v)
        return v[n // 2] if n % 2 else 0.5 * (v[n // 2 - 1] + v[n // 2])
    dam = [int(round(median([D["vol"][(y, m)] for y in range(DAM_CLOSES + 1, LAST_YEAR + 1)]), -3))
           for m in range(1, 13)]
    P.append(rec(0, *dam))
    fans = [t for t in D["tribs"] if t["fan"]]
    for i, t in enumerate(fans, start=1):
        vals = [round(median([t["q"][cm] for cm, y, mm in months() if mm == m]), 1) for m in range(1, 13)]
        P.append(rec(i, *vals))
    P += [
        rec("MaxRelSeasonAdjust", 9000000),
        rec("RelativeSeasonal", 0),
        rec("FullAdjustErode", -1),
        rec("OSDSSConc", 5),
        rec("PreOSDPropSand", 0.45),
        rec("PostOSDPropSand", 0.15),
        rec("HistOSDSSConc", -1),
        rec("AngleOfRepose", 32),
        rec("AvgCMLengthInMiles", 0.08),
        rec("ErodeRate", 0.01),
        rec("WindErodeRate", 0.002),
        # Every grain of the inflow goes to a zone: the balance counts sand passed
        # straight on as lost, so a share left over would be reported every month.
        rec("SandDest()", 0.2, 0.1, 0.7),
        rec("IniPropSliceFull()", BASE_BEACH_REL_FULL, 0.5, 0.5),
        rec("RelStoreHalfSat", 15000),
        rec("RelStoreSlope", 2),
        rec("BedThickMax", 2),
        rec("BedThickHalfSat", 30000),
        rec("BedThickSlope", 2),
        rec("CFSLowBeachLimit", 20000),
        rec("CFSHighBeachLimit", 45000),
        rec("BaseBeachRelFull", BASE_BEACH_REL_FULL),
    ]
    inv = beach_inventory(D["camps"])
    g1 = 1 - math.exp(-BEACH_CURVE_A)
    for r in range(FIRST_REACH, LAST_REACH + 1):
        for k in range(3):
            n = inv[r][k]
            curve = []
            for i in range(1, 51):
                ratio = i / (50.0 * BASE_BEACH_REL_FULL)
                curve.append(round(n * (1 - math.exp(-BEACH_CURVE_A * ratio)) / g1, 2))
            bmax = max(1, int(math.ceil(max(curve) * 1.1)))
            P.append(rec("BeachMax-%d-%d" % (r, k + 1), bmax))
            P.append(rec(*curve))
    w.lines("default.phy", P)


def write_grs(w):
    L = []
    for i, v in enumerate([1, 1, 1, 0], start=1):
        L.append(rec("VisForms-%d" % i, v))
    L.append(rec("TimeWindow", 10))
    for i, q in enumerate([5000, 20000, 45000, 60000], start=1):
        L.append(rec("IndSliceKCFS-%d" % i, q))
    L.append(rec("Profile Month", 0))
    L.append(rec("ShowSandBox", Flag(False)))
    L.append(rec("PlotObsAvg", Flag(False)))
    for i, v in enumerate([1, 2, 3, 6, 10, 13], start=1):
        L.append(rec("TS_Graph-%d" % i, v, 0, 0))
    legend_no = {}
    n = 0
    for v, (tc, title, sets, lo, hi) in enumerate(graph_table(), start=1):
        for s in range(1, max(1, len(sets)) + 1):
            n += 1
            legend_no[(v, s)] = n
    for i, vs in enumerate([(1, 2), (3, 1), (6, 3), (8, 1), (10, 1), (13, 1)], start=1):
        L.append(rec("Map-%d" % i, legend_no[vs]))
    for i, v in enumerate([1, 3, 6, 8, 10, 13], start=1):
        L.append(rec("Profile-%d" % i, v, 0, 0))
    for i in range(1, 4):
        L.append(rec("CX_Profile-%d" % i, 0))
    w.lines("default.grs", L)


def write_graphleg(w):
    t = graph_table()
    maxsub = max(max(1, len(s)) for _, _, s, _, _ in t)
    lines = ["Ostrel Gorge Ecosystem Model - stored variables",
             "record: number, time code (W M Y), data sets, title, set labels, style, size, map id",
             "variables 1-13 physical, 14-26 production and angling, then one per species",
             "and the aquatic insects"]
    lines.append(rec(len(t), maxsub))
    for v, (tc, title, sets, lo, hi) in enumerate(t, start=1):
        nsets = max(1, len(sets))
        fields = [v, tc, nsets, title] + (sets if nsets > 1 else []) + [1, 1, 10 * v]
        lines.append(rec(*fields))
    w.lines("graphleg.txt", lines)


def write_model_mde(w):
    t = graph_table()
    lines = [num(sum(max(1, len(s)) for _, _, s, _, _ in t))]
    ramp = [15, 14, 13, 12, 11]
    for v, (tc, title, sets, lo, hi) in enumerate(t, start=1):
        nsets = max(1, len(sets))
        for s in range(1, nsets + 1):
            name = title if nsets < 2 else title + sets[s - 1]
            lines.append(name)
            lines.append(blanks(10 * v, s))
            if v == 10:
                breaks = [0, 2, 5, 10, 30]
                cols = [8, 12, 14, 10, 2]
                lines.append(blanks(5, 1, 0, 30))
                lines += [blanks(rgb(c), b) for c, b in zip(cols, breaks)]
            else:
                lines.append(blanks(5, 0, lo, hi))
                step = (hi - lo) / 4.0
                lines += [blanks(rgb(c), round(lo + i * step, 4)) for i, c in enumerate(ramp)]
    w.lines("model.mde", lines)


def write_maps(w, D):
    M = D["map"]
    lines = ["Version 300", 'Charset "WindowsLatin1"', 'Delimiter ","',
             'CoordSys NonEarth Units "mi" Bounds (0, 0) (400, 400)',
             "Columns 2", "  ID Integer", "  RiverMile Float", "Data", ""]
    for x, y in M["river"]:
        lines.append("Point %s %s" % (num(x), num(y)))
        lines.append("    Symbol (34,255,2)")
    w.lines("ORRiv.mif", lines)
    w.lines("ORRiv.mid", [rec(i, mi) for i, mi in enumerate(M["miles"], start=1)])

    def header():
        return ["Version 300", 'Charset "WindowsLatin1"', 'Delimiter ","',
                'CoordSys NonEarth Units "mi" Bounds (0, 0) (400, 400)',
                "Columns 1", "  Name Char(40)", "Data", ""]

    lines = header()
    for name, poly in M["lakes"]:
        lines.append("Region  1")
        lines.append("  %d" % len(poly))
        lines += ["%s %s" % (num(x), num(y)) for x, y in poly]
        lines.append("    Pen (1,2,255)")
        lines.append("    Brush (2,16711935,16777215)")
        cx = sum(p[0] for p in poly[:-1]) / (len(poly) - 1)
        cy = sum(p[1] for p in poly[:-1]) / (len(poly) - 1)
        lines.append("    Center %s %s" % (num(round(cx, 4)), num(round(cy, 4))))
    w.lines("Lakes.mif", lines)
    lines = header()
    for name, pts in M["tribs"]:
        lines.append("Pline %d" % len(pts))
        lines += ["%s %s" % (num(x), num(y)) for x, y in pts]
        lines.append("    Pen (1,2,0)")
    w.lines("tribs.mif", lines)
    labels = [(a, label) for label, a, b in REACHES] + [(LAKE_DRUME_MILE, "Lake Drume")]
    w.lines("Reachlabels.csv", [rec("Mile", "Label"), num(len(labels))] +
            [rec(m, t) for m, t in labels])
    camps = D["camps"]
    w.lines("CampingBeaches.csv", [rec("Mile", "Camp"), num(len(camps))] +
            [rec(round(c["mile"] + HARL_FERRY, 2), c["name"]) for c in camps])


# What each file holds and which routine reads it (for data/README.md).
FILE_DOCS = [
    ("start_message.txt", "text shown on the start dialog", "frmSplash load (StartUp)"),
    ("diurnal_scenarios.txt", "names of the flow scenarios, one a line", "StartUp"),
    ("noaction.sts, modlow.sts, interim.sts, seasonal.sts, steady.sts",
     "hourly flows by volume level, month and reach; power values; flow limits (made by the "
     "scenario pipeline, tools/make_scenarios.sh)", "ReadSts"),
    ("hydro/scenarios/*.flow", "each scenario's flow limits, minimum flows and volume levels: the head "
     "of a scenario file", "ReadFlowParameters (osm-batch process-hydro --from)"),
    ("hydro/caddqd.In", "river geometry of the flow router: one station a reach with bed slope, "
     "wetted area and width at twelve discharges", "USFlow"),
    ("hydro/ospsw95b.dat", "plant efficiency, turbine capacity, tailwater rating, hourly power "
     "prices for weekdays and Sundays, monthly price factors", "ospsw95b"),
    ("default.exp", "experimental release temperatures; scenario code and experimental flag by year",
     "LoadExp"),
    ("Reaches.csv", "reach breaks: counts, labels, miles below the dam", "ReadReachFile"),
    ("default.grs", "graphics setup: views, time window, index stages, chart, map and profile slots",
     "LoadGraphSetup"),
    ("default.phy", "sand budget, heat exchange, seasonal patterns, beach limits and curves", "ReadPhyFile"),
    ("default.bhp", "oxygen, light, algae, detritus, benthos, vegetation types, indicator populations",
     "ReadBhpFile"),
    ("default.fis", "species, habitat links and curves, harvest, hatchery, trophic links", "ReadPopFile"),
    ("default.rec", "angling effort and catchability; rafting trip types, launch policy, camp sizes",
     "ReadAnglingPars, ReadRafting"),
    ("default.trb", "warm tributary and backwater habitat by reach", "tributary habitat reader (morph)"),
    ("graphleg.txt", "the stored variables: time code, data sets, titles, map ids", "LoadGraphTable"),
    ("model.mde", "one colour legend per variable and data set", "LoadLegends, CheckLegends"),
    ("ORRiv.mif, ORRiv.mid", "river centre-line and the mile of each vertex", "LoadMapLayers"),
    ("Lakes.mif", "Lake Vessin and Lake Drume", "LoadMapLayers"),
    ("tribs.mif", "tributary lines", "LoadMapLayers"),
    ("Reachlabels.csv", "map marks at the reach breaks", "LoadMapLabels"),
    ("CampingBeaches.csv", "map marks at the camps", "LoadMapLabels"),
    ("riverware.xls/Historical.csv", "YR, MNTH, ACFT: monthly release volume 1948-1997",
     "LoadMonthlyVolumes"),
    ("riverware.xls/MLFF_Traces.csv, Spike_Traces.csv", "planning traces Run1..Run5 by month",
     "LoadMonthlyVolumes (monthly pattern editor)"),
    ("riverware.xls/spike.csv", "spike flags (0/-1) of each trace by month", "LoadSpikeFlags"),
    ("riverware.xls/RunList.csv", "Nruns, RunType: trace number and its spike size (kcfs)",
     "PopulateListBoxes"),
    ("physical.xls/TribFlow.csv", "monthly tributary flow (cfs), sand and fines (mg/l) by tributary",
     "TribFlow reader (morph), LoadReachData"),
    ("physical.xls/SpateEvents.csv", "number of tributary spates by month", "SpateEvents reader (morph), StartUp"),
    ("physical.xls/OSDEqTemp.csv", "release (OSDOut) and equilibrium (EQUILIB) temperature by month",
     "LoadTempPatterns"),
    ("physical.xls/MainTemp.csv", "observed monthly temperature by site", "LoadObsTemp"),
    ("physical.xls/Mainsed.csv", "observed suspended sediment by site and month", "LoadMainSed"),
    ("physical.xls/StarsOut.csv", "stage, velocity and width of each cross-section at twelve discharges",
     "BuildStageTables"),
    ("physical.xls/RC90.csv", "1990 inventory of eddy and channel margin deposits", "RC90 reader (morph)"),
    ("physical.xls/Substrate.csv", "substrate percentages by transect and discharge level",
     "Substrate reader (morph)"),
    ("physical.xls/Eddy_Storage.csv", "sand volume of an eddy by size class against discharge",
     "RecomputeStorage"),
    ("physical.xls/MCPool_Storage.csv", "main channel coarse volume by discharge level and reach",
     "ReadCoarseVolumes"),
    ("physical.xls/Fans.csv", "the two sediment-bearing tributaries", "Fans reader (morph)"),
    ("physical.xls/TribAttributes.csv", "basin area (km2) of every tributary", "TribAttributes reader (morph)"),
    ("physical.xls/Economic.csv", "dollars per angler day and per person and trip by month", "ReadEconomic"),
    ("physical.xls/CampingBeaches.csv", "the 127 camps: MILE from Harl Ferry, SIZE, PREF, INDEX",
     "LoadRafting (BuildCampLists, ReadCamps)"),
    ("lower_production.xls/Benthos.csv", "observed DO, Secchi depth, algae, total benthic mass",
     "observed production reader, StartUp"),
    ("lower_production.xls/Drift.csv", "observed drift of detritus, invertebrates, algae",
     "observed production reader, StartUp"),
    ("population.xls/Lookup.csv", "species codes and their species index", "ReadCatchData"),
    ("population.xls/Pop_Halden_Broome.csv", "standardised catch by species, reach and year", "ReadCatchData"),
    ("population.xls/RBT_HF.csv", "rainbow trout CPUE, angler hours, catch at Harl Ferry", "ReadRainbowData"),
    ("population.xls/AllFishData.csv, BirdData.csv", "raw survey catch and effort; waterbird counts",
     "not read by the program (kept with the workbook)"),
]


def md_table(heads, rows):
    out = ["| " + " | ".join(heads) + " |", "|" + "|".join("---" for _ in heads) + "|"]
    for r in rows:
        out.append("| " + " | ".join(c if isinstance(c, str) else num(c) for c in r) + " |")
    return "\n".join(out)


def write_readme(w, D):
    here = os.path.dirname(os.path.abspath(__file__))
    with open(os.path.join(here, "data_README.in.md"), encoding="utf-8") as f:
        text = f.read()
    subs = {}
    subs["RIVER_MILES"] = num(LAKE_DRUME_MILE)
    subs["TAKEOUT"] = num(round(HARL_FERRY + TRIP_MILES, 2))
    rows = []
    for r, (label, a, b) in enumerate(REACHES, start=1):
        bw = "%.0f" % bed_width(r) if r >= FIRST_REACH else ""
        rows.append((r, label, a, b, round(b - a, 2), round(a - HARL_FERRY, 2), round(b - HARL_FERRY, 2), bw))
    subs["REACHES"] = md_table(["reach", "label", "from mile", "to mile", "length (mi)",
                                "river mile from", "river mile to", "bed width (ft)"], rows)
    rows = []
    yields = {}
    for t in D["tribs"]:
        tot = 0.0
        for cm, y, m in months():
            tot += t["q"][cm] * (t["sand"][cm] + t["fines"][cm]) * 28.317e-3 * DAYS_IN_MONTH[m - 1] * 86400 / 1e6
        yields[t["name"]] = tot / 50 / 1e6
        qmean = sum(t["q"].values()) / NMONTHS
        rows.append((t["name"], t["mile"], t["reach"], "%.0f" % qmean, "%.3f" % yields[t["name"]]))
    subs["TRIBS"] = md_table(["tributary series (TribFlow)", "mile", "reach", "mean flow (cfs)",
                              "sediment (Mt/yr)"], rows)
    subs["TRIBS"] += "\n\nBasin areas (`TribAttributes`), km2:\n\n" + md_table(
        ["tributary", "mile", "reach", "basin (km2)"],
        [(n, mi, reach_of_mile(mi), a) for n, mi, a in D["trib_list"]])
    subs["QUENNA_YIELD"] = "%.1f" % yields["Quenna"]
    subs["TSR_YIELD"] = "%.1f" % yields["TSR"]
    by_m = [0] * 12
    for cm in range(1, NMONTHS + 1):
        by_m[(cm - 1) % 12] += D["spates"][cm]
    subs["SPATE_SEASON"] = "%d of %d spates in July to October" % (sum(by_m[6:10]), sum(by_m))
    vol = D["vol"]
    subs["MAX_PREDAM"] = "{:,}".format(int(max(vol[(y, m)] for y in range(48, 63) for m in range(1, 13))))
    ordinary = [D["annual"][y] / 1e6 for y in range(DAM_CLOSES, LAST_YEAR + 1) if y not in HIGH_RELEASE_YEARS]
    subs["POST_RANGE"] = "%.1f to %.1f" % (min(ordinary), max(ordinary))
    subs["MAX_SPILL"] = "{:,}".format(int(max(vol[(y, m)] for y in HIGH_RELEASE_YEARS for m in range(1, 13))))
    rows = []
    for y0 in range(48, 98, 10):
        yrs = range(y0, min(y0 + 10, 98))
        a = [D["annual"][y] / 1e6 for y in yrs]
        rows.append(("%d-%d" % (1900 + y0, 1900 + yrs[-1]), "%.2f" % min(a), "%.2f" % (sum(a) / len(a)),
                     "%.2f" % max(a)))
    subs["ANNUAL"] = md_table(["years", "least (maf)", "mean (maf)", "most (maf)"], rows)
    rows = []
    for sc in SCENARIOS:
        rows.append((sc["name"] + ".sts", sc["title"], sc["maxflow"], "%d / %d" % (sc["up"], sc["down"]),
                     "%d-%d" % (min(sc["maxchange"]), max(sc["maxchange"])) +
                     (" (by volume)" if sc["driven"] else ""),
                     "%d / %d" % (sc["minnight"], sc["minday"])))
    subs["SCENARIOS"] = md_table(["file", "scenario", "max flow (cfs)", "up / down ramp (cfs/h)",
                                  "daily change (cfs)", "min flow night / day (cfs)"], rows)
    secs = D["sections"]
    st5 = [x["rows"][0][1] for x in secs]
    st60 = [x["rows"][-1][1] for x in secs]
    wd = [x["rows"][i][3] for x in secs for i in (0, -1)]
    subs["STARS_STATS"] = ("%d sections, stage %.0f to %.0f ft at 5,000 cfs and %.0f to %.0f ft at "
                           "60,000 cfs, widths %.0f to %.0f ft." % (len(secs), min(st5), max(st5),
                                                                    min(st60), max(st60), min(wd), max(wd)))
    subs["TEMPS"] = md_table(["month"] + MONTH_NAMES,
                             [["release (C)"] + ["%.1f" % release_temp(m) for m in range(1, 13)],
                              ["equilibrium (C)"] + ["%.1f" % eq_temp(m) for m in range(1, 13)],
                              ["experimental (C)"] + ["%.1f" % exp_release_temp(m) for m in range(1, 13)]])
    rows = []
    for i, sp in enumerate(SPECIES, start=1):
        rows.append((i, sp["name"], sp["code"], sp["wk"], sp["alpha"], sp["sbase"],
                     "yes" if i in FISHED else "", "%.2f" % sum(D["catch_start"].get((i, r), 0.0)
                                                                for r in range(FIRST_REACH, LAST_REACH + 1))))
    subs["SPECIES"] = md_table(["index", "species", "code", "age at maturity", "weight at maturity (kg)",
                                "adult survival", "angled", "starting biomass (catch index sum)"], rows)
    inv = beach_inventory(D["camps"])
    rows = [(r, REACHES[r - 1][0]) + tuple(inv[r]) + (sum(inv[r]),) for r in range(FIRST_REACH, LAST_REACH + 1)]
    subs["CAMPS"] = "Camps by reach and size (`CampingBeaches`, 127 camps along the trip):\n\n" + \
        md_table(["reach", "label", "large", "medium", "small", "all"], rows)
    rows = []
    for t, (name, parties, days, people) in enumerate(TRIP_TYPES):
        l = D["launches"][t]
        season = sum(l[m] * DAYS_IN_MONTH[m] for m in range(4, 9)) / parties
        rows.append((name, parties, days, people, "%.0f%%" % (100 * season)))
    subs["TRIPS"] = md_table(["trip type", "parties a year", "days", "people a party",
                              "launched May-September"], rows) + \
        "\n\nCamp size limits: small up to %d people, medium up to %d, large up to %d." % PEOPLE_PER_CAMP
    subs["FILES"] = md_table(["file", "holds", "read by"], FILE_DOCS)
    for k, v in subs.items():
        text = text.replace("@@" + k + "@@", v)
    if "@@" in text:
        raise ValueError("unfilled marker in the README template")
    w.lines("README.md", text.rstrip("\n").split("\n"))


START_MESSAGE = ("Ostrel Gorge Ecosystem Model - default data set: OS Dam to Lake Drume in "
                 "12 reaches, 253 miles of river, monthly hydrology 1948-1997 (dam closed 1963). "
                 "Choose Run Entire Model for flows, sediment, temperature, production, animal "
                 "populations and recreation, or Run Physical Model Only for flows, sediment, "
                 "temperature and campsites.")


def generate(out):
    w = Writer(out)
    D = {}
    natural, vol, annual = gen_hydrology()
    D.update(natural=natural, vol=vol, annual=annual)
    D["tribs"], D["spates"] = gen_tributaries()
    trib_list = [("Quenna", QUENNA_MILE, QUENNA_BASIN_KM2), ("TSR", TSR_MILE, TSR_BASIN_KM2)]
    trib_list += [(n, mi, a) for n, mi, a, b in MINOR_TRIBS]
    D["trib_list"] = sorted(trib_list, key=lambda t: t[1])
    D["sections"] = gen_sections()
    D["rc90"] = gen_deposits()
    D["substrate"] = gen_substrate()
    D["camps"] = gen_camps()
    D["map"] = gen_map(D["trib_list"])

    w.lines("start_message.txt", [START_MESSAGE])
    write_reaches(w)
    write_riverware(w, vol, natural)
    write_flow_parameters(w)
    write_exp(w)
    write_physical(w, D)
    gen_hydro_files(w, D["sections"])
    write_lower_production(w, D)
    pop_rows, rbt_rows = write_population(w, D)
    D["catch_start"] = catch_index_start(pop_rows, rbt_rows)
    write_fis(w, D)
    write_bhp(w)
    write_trb(w, D)
    D["launches"] = write_rec(w, D)
    write_phy(w, D)
    write_grs(w)
    write_graphleg(w)
    write_model_mde(w)
    write_maps(w, D)
    write_readme(w, D)
    return w.files


def main(argv=None):
    here = os.path.dirname(os.path.abspath(__file__))
    ap = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    ap.add_argument("--out", default=os.path.join(os.path.dirname(here), "data"),
                    help="folder to write (default: the repository's data/)")
    args = ap.parse_args(argv)
    files = generate(args.out)
    print("wrote %d files into %s" % (len(files), args.out))
    return 0


if __name__ == "__main__":
    sys.exit(main())
