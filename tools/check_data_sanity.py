#!/usr/bin/env python3
"""Sanity checks of the default data set in data/.

Reads the files as the program's readers walk them and checks counts,
orderings, rising ratings, percentages and the cross-references between
files.  Prints every failure and exits non-zero if there is one.

    python3 tools/check_data_sanity.py [DIR]
"""

import csv
import math
import os
import struct
import sys

# The program's fixed tables that the data must agree with.
REACH_BED_AREA = [17930000, 11930000, 15610000, 41650000, 29700000, 42790000,
                  10060000, 16210000, 19950000, 77970000, 14950000]
STARS_Q = [5000, 8000, 10000, 15000, 18000, 20000, 25000, 30000, 35000, 40000, 45000, 60000]
COARSE_Q = [5000, 8000, 10000, 15000, 18000, 20000, 25000, 30000, 35000, 40000, 45000, 100000]
HARL_FERRY = 15.62
TRIP_MILES = 226.0
MONTHS = ["jan", "feb", "mar", "apr", "may", "jun", "jul", "aug", "sep", "oct", "nov", "dec"]
DAYS = [31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31]
EDDY_DEPS = {"R", "S", "R/CM", "TFE", "R/UP", "S/CM", "TFE/UP"}
CM_DEPS = {"CM", "CM/PB", "CM/UP"}

failures = []


def fail(where, text):
    failures.append("%s: %s" % (where, text))


def check(cond, where, text):
    if not cond:
        fail(where, text)
    return cond


def f32(x):
    return struct.unpack("<f", struct.pack("<f", float(x)))[0]


# ---------------------------------------------------------------------------
# Readers
# ---------------------------------------------------------------------------

class Data:
    def __init__(self, root):
        self.root = root

    def path(self, rel):
        return os.path.join(self.root, *rel.split("/"))

    def raw(self, rel):
        with open(self.path(rel), "rb") as f:
            return f.read()

    def lines(self, rel):
        b = self.raw(rel)
        text = b.decode("latin-1")
        if not text.endswith("\r\n"):
            fail(rel, "last line does not end with CR LF")
        body = text[:-2] if text.endswith("\r\n") else text
        parts = body.split("\r\n")
        for i, p in enumerate(parts, start=1):
            if "\n" in p or "\r" in p:
                fail(rel, "line %d: bare line break (lines must end with CR LF)" % i)
        return parts

    def sheet(self, book, name):
        rel = "%s/%s.csv" % (book, name)
        lines = self.lines(rel)
        rows = list(csv.reader(lines))
        return rows[0], [dict(zip(rows[0], r)) for r in rows[1:]], rel


def fields(line):
    """Fields of one line of comma-separated text: strings unquoted,
    numbers as float, #TRUE#/#FALSE# as -1/0."""
    out = []
    i, n = 0, len(line)
    while i <= n:
        while i < n and line[i] == " ":
            i += 1
        if i < n and line[i] == '"':
            j = line.index('"', i + 1)
            out.append(line[i + 1:j])
            i = j + 1
            while i < n and line[i] == " ":
                i += 1
            if i < n and line[i] != ",":
                raise ValueError("text after a quoted field")
            i += 1
        else:
            j = line.find(",", i)
            if j < 0:
                j = n
            tok = line[i:j].strip()
            if tok == "#TRUE#":
                out.append(-1.0)
            elif tok == "#FALSE#":
                out.append(0.0)
            else:
                try:
                    out.append(float(tok))
                except ValueError:
                    out.append(tok)
            i = j + 1
    return out


def tokens(lines):
    """Blank/comma separated tokens of a file written with blanks; quoted
    texts kept whole."""
    out = []
    for line in lines:
        i, n = 0, len(line)
        while i < n:
            c = line[i]
            if c in " ,":
                i += 1
            elif c == '"':
                j = line.index('"', i + 1)
                out.append(line[i + 1:j])
                i = j + 1
            else:
                j = i
                while j < n and line[j] not in " ,":
                    j += 1
                out.append(line[i:j])
                i = j
    return out


def fnum(s):
    return float(s)


# ---------------------------------------------------------------------------
# Checks
# ---------------------------------------------------------------------------

def check_reaches(D):
    rel = "Reaches.csv"
    L = D.lines(rel)
    head = fields(L[0])
    nr, first, last = int(head[1]), int(head[2]), int(head[3])
    check((nr, first, last) == (12, 2, 12), rel, "NReaches, FirstReach, LastReach must be 12, 2, 12")
    rows = [fields(l) for l in L[2:]]
    check(len(rows) == nr, rel, "%d rows for %d reaches" % (len(rows), nr))
    reaches = []
    for i, r in enumerate(rows, start=1):
        check(int(r[0]) == i, rel, "row %d numbered %s" % (i, r[0]))
        a, b = r[2], r[3]
        check(b > a, rel, "reach %d has no length" % i)
        if reaches:
            check(abs(a - reaches[-1][2]) < 1e-9, rel, "gap before reach %d" % i)
        reaches.append((r[1], a, b))
    check(reaches[0][1] == 0.0, rel, "reach 1 must start at the dam")
    check(reaches[0][2] - reaches[0][1] < 1.0, rel, "reach 1 is the short dam row")
    for r in range(2, 13):
        a, b = reaches[r - 1][1], reaches[r - 1][2]
        width = REACH_BED_AREA[r - 2] / ((b - a) * 5280.0)
        check(150 <= width <= 350, rel, "reach %d: bed width %.0f ft outside 150-350" % (r, width))
    r2 = reaches[1]
    check(r2[1] < HARL_FERRY < r2[2], rel, "Harl Ferry must lie in the first run reach")
    check(reaches[-1][2] > HARL_FERRY + TRIP_MILES, rel, "the last reach must end below the trip's end")
    return reaches


class Rx:
    def __init__(self, reaches):
        self.reaches = reaches

    def of(self, mile):
        for r, (_, a, b) in enumerate(self.reaches, start=1):
            if a <= mile < b:
                return r
        return 0

    def inside(self, mile, margin=0.02):
        """Reach of a mile that lies clearly inside one run reach, else 0."""
        r = self.of(mile)
        if r < 2:
            return 0
        a, b = self.reaches[r - 1][1], self.reaches[r - 1][2]
        if mile - a < margin or b - mile < margin:
            return 0
        return r


def check_months_table(rel, rows, ykey="YR", mkey="MNTH"):
    check(len(rows) == 600, rel, "%d rows, 600 months expected" % len(rows))
    for i, r in enumerate(rows):
        if int(r[ykey]) != 48 + i // 12 or int(r[mkey]) != i % 12 + 1:
            fail(rel, "row %d is not year %d month %d" % (i + 2, 48 + i // 12, i % 12 + 1))
            break


def check_riverware(D):
    heads, rows, rel = D.sheet("riverware.xls", "Historical")
    check(heads[:3] == ["YR", "MNTH", "ACFT"], rel, "heads YR, MNTH, ACFT")
    check_months_table(rel, rows)
    annual = {}
    for r in rows:
        annual.setdefault(int(r["YR"]), 0.0)
        annual[int(r["YR"])] += float(r["ACFT"])
    for y, v in annual.items():
        if y >= 63:
            check(7.5e6 <= v <= 2.0e7, rel, "regulated year %d releases %.2f maf" % (y, v / 1e6))
    pre = [float(r["ACFT"]) for r in rows if int(r["YR"]) < 63]
    post = [float(r["ACFT"]) for r in rows if int(r["YR"]) >= 63]
    check(max(pre) / 1e6 > 2 * 1.94, rel, "pre-dam floods should far exceed the powerplant")
    check(min(post) >= 4e5, rel, "regulated months below 0.4 maf")
    _, runs, rel = D.sheet("riverware.xls", "RunList")
    heads, spikes, srel = D.sheet("riverware.xls", "spike")
    check(len(spikes) == 600, srel, "600 rows of spike flags")
    check(len(heads) == len(runs), srel, "one flag column per trace of RunList")
    for h in heads:
        check(all(r[h] in ("0", "-1") for r in spikes), srel, "column %s holds flags 0/-1 only" % h)
    for book_sheet in ("MLFF_Traces", "Spike_Traces"):
        hh, rr, rl = D.sheet("riverware.xls", book_sheet)
        check_months_table(rl, rr)
        for h in heads:
            check(h in hh, rl, "trace column %s missing" % h)


def check_sts(D, reaches):
    rel = "diurnal_scenarios.txt"
    names = [fields(l)[0] for l in D.lines(rel) if l.strip()]
    check(1 <= len(names) <= 10, rel, "1 to 10 scenario names")
    check("noaction" in names, rel, "noaction must be listed")
    for n in names:
        srel = n + ".sts"
        if not check(os.path.exists(D.path(srel)), rel, "missing " + srel):
            continue
        L = D.lines(srel)
        check(fields(L[1])[0] == "Flow Parameters", srel, "line 2 key")
        check(fields(L[2])[0] == "Release-Driven_Max_Daily_Flow_Change", srel, "line 3 key")
        check(fields(L[3]) == ["Month"] + MONTHS, srel, "line 4 month names")
        check(len(fields(L[4])) == 13, srel, "line 5: twelve daily change limits")
        check(fields(L[6]) == ["HR"] + MONTHS, srel, "line 7 heads")
        for h in range(24):
            f = fields(L[7 + h])
            check(len(f) == 13 and f[0] == h + 1, srel, "minimum flow line of hour %d" % (h + 1))
        lv = fields(L[32])
        check(lv[0] == "Monthly Release Volumes" and len(lv) == 7, srel, "volume levels line")
        levels = lv[1:]
        check(all(b > a for a, b in zip(levels, levels[1:])), srel, "volume levels must rise")
        heads = fields(L[34])
        check(len(heads) == 52 and heads[-1] == "QDi-24", srel, "record heads")
        recs = L[35:]
        check(len(recs) == 72, srel, "%d records, 72 expected" % len(recs))
        for k, line in enumerate(recs):
            f = line.split(",")
            L_, m = k // 12 + 1, k % 12 + 1
            if int(f[0]) != m or float(f[1]) != levels[L_ - 1] or f[2] != '"Power Value="':
                fail(srel, "record %d: month/level/key" % (k + 1))
                break
            if f32(int(f[3])) != int(f[3]):
                fail(srel, "record %d: power value %s is not exact in single precision" % (k + 1, f[3]))
                break
            body = f[4:]
            if len(body) != 11 * 50:
                fail(srel, "record %d: %d reach fields" % (k + 1, len(body)))
                break
            if any(not t.lstrip("-").isdigit() for t in f[3:]):
                fail(srel, "record %d: values must be whole numbers" % (k + 1))
                break
            for j, r in enumerate(range(2, 13)):
                blk = [int(t) for t in body[50 * j:50 * j + 50]]
                if blk[0] != r or min(blk[2:]) <= 0:
                    fail(srel, "record %d reach %d: number or non-positive flow" % (k + 1, r))
                    break
    rel = "default.exp"
    L = D.lines(rel)
    for m in range(12):
        f = fields(L[1 + m])
        check(f[0] == MONTHS[m] and 4 <= f[1] <= 25, rel, "month line %d" % (m + 1))
    check(L[13] == "", rel, "blank line after the months")
    yrs = [fields(l) for l in L[15:]]
    check(len(yrs) == 100, rel, "100 years 1948-2047")
    for i, f in enumerate(yrs):
        if f[0] != 1948 + i or not 1 <= f[1] <= len(names) or f[2] not in (0, -1):
            fail(rel, "year line %d" % (i + 1))
            break
    return names


def check_stars(D, rx, reaches):
    heads, rows, rel = D.sheet("physical.xls", "StarsOut")
    by = {}
    order = []
    for r in rows:
        m = float(r["MILE"])
        if m not in by:
            order.append(m)
        by.setdefault(m, []).append((int(r["DISCHARGE"]), float(r["STAGE"]), float(r["WIDTH"]),
                                     float(r["VELOCITY"])))
    check(order == sorted(order), rel, "sections must be in mile order")
    prev = None
    seen = set()
    for m in order:
        sec = by[m]
        qs = [s[0] for s in sec]
        if qs != STARS_Q:
            fail(rel, "mile %s: discharges %s" % (m, qs))
            continue
        st = [s[1] for s in sec]
        wd = [s[2] for s in sec]
        if not all(b > a for a, b in zip(st, st[1:])):
            fail(rel, "mile %s: stage does not rise strictly" % m)
        if not all(b > a for a, b in zip(wd, wd[1:])):
            fail(rel, "mile %s: width does not rise strictly" % m)
        if st[-1] > 80:
            fail(rel, "mile %s: stage %.1f ft at 60000 cfs" % (m, st[-1]))
        if min(s[3] for s in sec) <= 0:
            fail(rel, "mile %s: velocity not positive" % m)
        osd = abs(m + HARL_FERRY)
        seen.add(rx.of(osd))
        if prev is not None and not 0.45 <= m - prev <= 1.05:
            fail(rel, "spacing %.2f mi before mile %s" % (m - prev, m))
        prev = m
    for r in range(2, 13):
        check(r in seen, rel, "no cross-section in reach %d" % r)
    check(abs(order[0] + HARL_FERRY) <= 1.0, rel, "sections must start at the dam")
    check(abs(order[-1] + HARL_FERRY) >= reaches[-1][2] - 1.0, rel, "sections must reach Lake Drume")


def check_storage(D, rx):
    heads, rows, rel = D.sheet("physical.xls", "Eddy_Storage")
    q = [float(r["Discharge"]) for r in rows]
    check(q[0] == 0, rel, "first row must lie at or below the flow of slice 1 (0 cfs)")
    check(all(b > a for a, b in zip(q, q[1:])), rel, "discharges must rise")
    for k in ("Vol_S", "Vol_M", "Vol_L"):
        v = [float(r[k]) for r in rows]
        check(all(b > a for a, b in zip(v, v[1:])), rel, "%s must rise strictly" % k)
    check(all(float(r["Vol_S"]) <= float(r["Vol_M"]) <= float(r["Vol_L"]) for r in rows[1:]), rel,
          "small <= medium <= large eddy volumes")
    heads, rows, rel = D.sheet("physical.xls", "MCPool_Storage")
    check(len(rows) == 12 * 11, rel, "12 discharge levels by 11 run reaches")
    for i, r in enumerate(rows):
        if int(r["Discharge"]) != COARSE_Q[i // 11] or int(r["ReachNum"]) != 2 + i % 11:
            fail(rel, "row %d out of order (grouped by discharge, reaches 2..12)" % (i + 2))
            break
        if float(r["V_Coarse"]) <= 0:
            fail(rel, "row %d: volume not positive" % (i + 2))


def check_substrate(D, rx):
    heads, rows, rel = D.sheet("physical.xls", "Substrate")
    n = int(rows[0]["MaxQLevels"])
    check(len(rows) % n == 0, rel, "rows must come in blocks of MaxQLevels")
    counts = {}
    for b in range(len(rows) // n):
        blk = rows[b * n:(b + 1) * n]
        q = [int(r["Discharge"]) for r in blk]
        miles = {r["OSD_Mile"] for r in blk}
        check(len(miles) == 1, rel, "transect %d mixes miles" % (b + 1))
        check(all(y > x for x, y in zip(q, q[1:])), rel, "transect %d: levels must ascend" % (b + 1))
        if b:
            check(q == [int(r["Discharge"]) for r in rows[:n]], rel, "transect %d: other levels" % (b + 1))
        r_ = rx.inside(float(blk[0]["OSD_Mile"]))
        check(r_ > 0, rel, "transect at mile %s not inside a run reach" % blk[0]["OSD_Mile"])
        counts[r_] = counts.get(r_, 0) + 1
        for r in blk:
            s = sum(float(r[k]) for k in ("Fines", "Sand", "Grav_Cob", "Talus", "Bedrock"))
            if abs(s - 100) > 1e-6:
                fail(rel, "mile %s level %s: percentages sum to %s" % (r["OSD_Mile"], r["Discharge"], s))
    for r in range(2, 13):
        check(counts.get(r, 0) >= 1, rel, "no substrate transect in reach %d" % r)


def check_rc90(D, rx):
    heads, rows, rel = D.sheet("physical.xls", "RC90")
    miles = [float(r["OSD_Mile"]) for r in rows]
    check(miles == sorted(miles), rel, "rows must be in downstream order")
    neddy = {}
    for r in rows:
        rr = rx.inside(float(r["OSD_Mile"]), 0.0)
        check(rr > 0, rel, "deposit at mile %s outside the run reaches" % r["OSD_Mile"])
        if r["Dep_Type"] in EDDY_DEPS:
            check(r["BE_Size"] in ("VS", "S", "M", "L"), rel, "eddy size %r" % r["BE_Size"])
            neddy[rr] = neddy.get(rr, 0) + 1
    for r in range(2, 13):
        check(neddy.get(r, 0) > 0, rel, "reach %d has no eddy" % r)
    return neddy


def check_tribs(D, rx, reaches):
    heads, rows, rel = D.sheet("physical.xls", "TribFlow")
    groups = []
    for r in rows:
        if not groups or groups[-1][0] != r["OSD_Mile"]:
            groups.append((r["OSD_Mile"], []))
        groups[-1][1].append(r)
    check(int(rows[-1]["CMONTH"]) == 600, rel, "the last row must be month 600")
    seen_reaches = set()
    for mile, g in groups:
        rr = rx.inside(float(mile))
        check(rr > 0, rel, "tributary at mile %s not inside a run reach" % mile)
        check(rr not in seen_reaches, rel, "two tributary series in reach %d" % rr)
        seen_reaches.add(rr)
        check_months_table(rel + " mile " + mile, g)
        for i, r in enumerate(g):
            if int(r["CMONTH"]) != i + 1:
                fail(rel, "mile %s: CMONTH out of order" % mile)
                break
        check(all(float(r["AVGQW"]) > 0 for r in g), rel, "mile %s: flow must be positive" % mile)
    heads, fans, frel = D.sheet("physical.xls", "Fans")
    check(len(fans) == 2, frel, "two sediment-bearing tributaries")
    fm = [float(f["OSD_Mile"]) for f in fans]
    check(0.5 <= fm[0] - HARL_FERRY <= 1.5, frel, "Quenna about a mile below Harl Ferry")
    check(50 <= fm[1] - HARL_FERRY <= 70, frel, "TSR about 60 miles below Harl Ferry")
    tf_miles = {float(m) for m, _ in groups}
    for m in fm:
        check(m in tf_miles, frel, "fan tributary at %s has no flow series" % m)
    check(rx.of(fm[0]) != rx.of(fm[1]), frel, "the two tributaries must be in different reaches")
    heads, att, arel = D.sheet("physical.xls", "TribAttributes")
    am = [float(a["OSD_Mile"]) for a in att]
    check(am == sorted(am), arel, "rows in downstream order")
    for a in att:
        check(rx.inside(float(a["OSD_Mile"])) > 0, arel, "mile %s not inside a run reach" % a["OSD_Mile"])
        check(float(a["Basin_Area"]) > 0, arel, "basin area must be positive")
    for m in fm:
        check(m in am, arel, "fan tributary at %s has no basin area" % m)
    heads, sp, srel = D.sheet("physical.xls", "SpateEvents")
    check([int(r["cmonth"]) for r in sp] == list(range(1, 601)), srel, "one row per month 1..600")
    # Spates fall in months of high tributary flow.
    fan_q = {}
    for mile, g in groups:
        if float(mile) in fm:
            for r in g:
                fan_q[int(r["CMONTH"])] = fan_q.get(int(r["CMONTH"]), 0.0) + float(r["AVGQW"])
    with_spate = [fan_q[int(r["cmonth"])] for r in sp if int(r["SpateNum"]) > 0]
    without = [fan_q[int(r["cmonth"])] for r in sp if int(r["SpateNum"]) == 0]
    check(sum(with_spate) / len(with_spate) > 1.5 * sum(without) / len(without), srel,
          "spates must come with the tributary floods")
    return groups


def check_obs_sites(D, rx):
    heads, rows, rel = D.sheet("physical.xls", "Mainsed")
    sites = []
    for r in rows:
        if not sites or sites[-1] != r["OSD_Mile"]:
            check(r["OSD_Mile"] not in sites, rel, "site %s appears in two groups" % r["OSD_Mile"])
            sites.append(r["OSD_Mile"])
    for s in sites:
        check(rx.inside(float(s)) > 0, rel, "site %s not inside a run reach" % s)
    harl = [r for r in rows if float(r["OSD_Mile"]) == HARL_FERRY]
    months = {(int(r["YR"]) - 48) * 12 + int(r["MONTH"]) for r in harl}
    check(all(i in months for i in range(1, 181)), rel, "Harl Ferry must cover 1948-1962 in full")
    pre = [float(r["AVGSSMGL"]) for r in harl if int(r["YR"]) < 63]
    post = [float(r["AVGSSMGL"]) for r in harl if int(r["YR"]) >= 63]
    check(max(pre) > 2000, rel, "pre-dam floods carry thousands of mg/l")
    check(max(post) < 50, rel, "the dam's release carries a few mg/l")
    heads, rows, rel = D.sheet("physical.xls", "MainTemp")
    sites = []
    for r in rows:
        if not sites or sites[-1] != r["OSD_Mile"]:
            check(r["OSD_Mile"] not in sites, rel, "site %s appears in two groups" % r["OSD_Mile"])
            sites.append(r["OSD_Mile"])
        check(0 <= float(r["AVGTEMP"]) <= 30, rel, "temperature %s" % r["AVGTEMP"])
    for s in sites:
        check(rx.inside(float(s)) > 0, rel, "site %s not inside a run reach" % s)
    summer = {}
    for r in rows:
        if int(r["MNTH"]) in (7, 8):
            summer.setdefault(float(r["OSD_Mile"]), []).append(float(r["AVGTEMP"]))
    means = [sum(v) / len(v) for m, v in sorted(summer.items())]
    check(all(b > a for a, b in zip(means, means[1:])), rel, "summer temperatures must rise downstream")
    heads, rows, rel = D.sheet("physical.xls", "OSDEqTemp")
    check(len(rows) == 12, rel, "twelve months")
    for r in rows:
        check(8 <= float(r["OSDOut"]) <= 12, rel, "release temperature %s" % r["OSDOut"])
        check(4 <= float(r["EQUILIB"]) <= 27, rel, "equilibrium temperature %s" % r["EQUILIB"])
    for sheet in ("Benthos", "Drift"):
        heads, rows, rel = D.sheet("lower_production.xls", sheet)
        for r in rows:
            m = float(r["USGS_Mile"])
            # The same reach whether the mile is read below the dam or below Harl Ferry.
            if rx.inside(m) == 0 or rx.inside(m) != rx.inside(m + HARL_FERRY):
                fail(rel, "site %s not clearly inside one reach" % r["USGS_Mile"])
                break
            check(48 <= int(r["YR"]) <= 97 and 1 <= int(r["MNTH"]) <= 12, rel, "year or month")


def check_camps(D, rx, reaches):
    heads, rows, rel = D.sheet("physical.xls", "CampingBeaches")
    check(len(rows) == 127, rel, "%d camps, 127 expected" % len(rows))
    miles = [float(r["MILE"]) for r in rows]
    check(miles == sorted(miles) and len(set(miles)) == len(miles), rel, "MILE must rise strictly")
    check([int(r["INDEX"]) for r in rows] == list(range(1, 128)), rel, "INDEX must be 1..127 in MILE order")
    check(all(r["SIZE"][:1].upper() in "LMS" and r["SIZE"] for r in rows), rel, "SIZE must be L, M or S")
    prefs = [float(r["PREF"]) for r in rows]
    check(len(set(prefs)) == len(prefs), rel, "PREF values must be distinct (ORDER BY PREF DESC)")
    check(0 < min(miles) and max(miles) < TRIP_MILES, rel, "camps must lie along the trip")
    inv = {}
    for r in rows:
        rr = rx.of(float(r["MILE"]) + HARL_FERRY)
        check(rx.inside(float(r["MILE"]) + HARL_FERRY) == rr, rel, "camp %s on a reach break" % r["INDEX"])
        inv.setdefault(rr, [0, 0, 0])["LMS".index(r["SIZE"][0].upper())] += 1
    for r in range(3, 13):
        check(r in inv, rel, "reach %d has no camp" % r)
    L = D.lines("CampingBeaches.csv")
    n = int(fields(L[1])[0])
    check(n == 127 and len(L) == 129, "CampingBeaches.csv", "127 labels")
    lab = [fields(l) for l in L[2:]]
    check(all(abs(a[0] - (m + HARL_FERRY)) < 0.006 for a, m in zip(lab, miles)), "CampingBeaches.csv",
          "label miles must be the camps' miles below the dam")
    return inv, rows


def check_rec(D, camps):
    rel = "default.rec"
    L = D.lines(rel)
    f = fields(L[0])
    check(len(f) == 4, rel, "first line: DynEffort and three values")
    eff = [f32(fields(L[1 + i])[1]) for i in range(11)]
    s = 0.0
    for e in eff:
        s = f32(s + e)
    check(s == 1.0, rel, "reach efforts must sum to 1 (32-bit)")
    check(fields(L[12])[0] == "TotalMaxEffort", rel, "TotalMaxEffort line")
    s = 0.0
    for m in range(12):
        g = fields(L[13 + m])
        check(g[0] == MONTHS[m], rel, "month line %d" % (m + 1))
        s = f32(s + f32(g[1]))
    check(s == 1.0, rel, "month efforts must sum to 1 (32-bit)")
    k = L.index("RAFTING")
    nt = int(L[k + 1])
    names = L[k + 3:k + 3 + nt]
    p = k + 3 + nt
    parties = [int(x) for x in L[p + 1:p + 1 + nt]]
    p += 1 + nt
    days = [int(x) for x in L[p + 1:p + 1 + nt]]
    p += 1 + nt
    people = [int(x) for x in L[p + 1:p + 1 + nt]]
    p += 1 + nt
    cap = [[float(x) for x in l.split(",")] for l in L[p + 1:p + 1 + nt]]
    p += 1 + nt
    pref = [[float(x) for x in l.split(",")] for l in L[p + 1:p + 1 + nt]]
    p += 1 + nt
    launches = [[float(x) for x in l.split(",")] for l in L[p + 1:p + 1 + nt]]
    p += 1 + nt
    check(L[p] == "People Per Camp", rel, "People Per Camp line")
    check(len(L) == p + 4, rel, "three camp size limits end the file")
    for t in range(nt):
        placed = sum(launches[t][m] * DAYS[m] for m in range(12))
        check(abs(placed - parties[t]) < 1.0, rel, "%s: launches place %.1f of %d parties" %
              (names[t], placed, parties[t]))
        check(all(launches[t][m] <= cap[t][m] + 1e-9 for m in range(12)), rel, "launch above the limit")
        season = sum(launches[t][m] * DAYS[m] for m in range(4, 9))
        if t < 2:
            check(season > 0.6 * placed, rel, "%s: most launches May to September" % names[t])
    # every day of every trip has camps to choose from
    miles = [float(r["MILE"]) for r in camps]
    for t in range(nt):
        tm = f32(TRIP_MILES / days[t])
        for d in range(days[t]):
            lo, hi = f32(tm * d), f32(tm * (d + 1))
            check(any(lo <= m < hi for m in miles), rel, "%s day %d has no camp" % (names[t], d + 1))
            check(all(abs(m - lo) > 0.01 and abs(m - hi) > 0.01 for m in miles), rel,
                  "a camp lies on the edge of day %d of %s" % (d + 1, names[t]))
    return nt


def check_phy(D, inv, ntrib):
    rel = "default.phy"
    L = D.lines(rel)
    check(fields(L[0])[0] == "HeatEx", rel, "first line HeatEx")
    for i in range(ntrib + 1):
        f = fields(L[1 + i])
        check(f[0] == i and len(f) == 13, rel, "seasonal pattern line %d" % i)
    keys = [fields(l)[0] for l in L[2 + ntrib:2 + ntrib + 21]]
    expect = ["MaxRelSeasonAdjust", "RelativeSeasonal", "FullAdjustErode", "OSDSSConc", "PreOSDPropSand",
              "PostOSDPropSand", "HistOSDSSConc", "AngleOfRepose", "AvgCMLengthInMiles", "ErodeRate",
              "WindErodeRate", "SandDest()", "IniPropSliceFull()", "RelStoreHalfSat", "RelStoreSlope",
              "BedThickMax", "BedThickHalfSat", "BedThickSlope", "CFSLowBeachLimit", "CFSHighBeachLimit",
              "BaseBeachRelFull"]
    check(keys == expect, rel, "parameter keys and order")
    par = {fields(l)[0]: fields(l)[1:] for l in L[2 + ntrib:2 + ntrib + 21]}
    b = par["BaseBeachRelFull"][0]
    check(sum(par["SandDest()"]) <= 1.0, rel, "SandDest must not sum above 1")
    check(par["CFSLowBeachLimit"][0] < par["CFSHighBeachLimit"][0], rel, "beach limits in order")
    rest = L[2 + ntrib + 21:]
    check(len(rest) == 11 * 3 * 2, rel, "beach lines for reaches 2..12 and three sizes")
    i0 = int(round(50 * b))
    for j in range(0, len(rest), 2):
        r, k = 2 + j // 6, (j // 2) % 3 + 1
        key = fields(rest[j])
        check(key[0] == "BeachMax-%d-%d" % (r, k), rel, "key %s" % key[0])
        curve = fields(rest[j + 1])
        check(len(curve) == 50, rel, "reach %d size %d: 50 curve points" % (r, k))
        check(all(y >= x for x, y in zip(curve, curve[1:])), rel, "beach curve must not fall")
        check(key[1] >= max(curve) and key[1] >= 1, rel, "BeachMax must top the curve")
        n = inv.get(r, [0, 0, 0])[k - 1]
        check(abs(curve[i0 - 1] - n) < 0.01, rel,
              "reach %d size %d: curve at ratio 1 reads %s, inventory %d" % (r, k, curve[i0 - 1], n))


def read_fis(D):
    rel = "default.fis"
    L = D.lines(rel)
    h = L[0].split()
    ns, nv, ne = int(h[0]), int(h[2]), int(h[3])
    p = 1 + nv + ne
    species = []
    for i in range(ns):
        name = L[p]
        a = L[p + 1].split()
        b = L[p + 2].split()
        c = L[p + 3].split()
        sp = dict(name=name, wk=int(a[4]), sbase=float(a[5]), flag=a[8], sejuv=float(b[2]),
                  sfry=float(b[1]), rchfry=int(c[1]), pwk1=int(c[2]), pwk2=int(c[3]))
        p += 6 + 12
        for hh in range(nv):
            for kk in range(ne):
                v = int(L[p])
                p += 1
                if v == -1:
                    q = L[p].split()
                    curve = [float(x) for x in L[p + 1:p + 21]]
                    check(min(curve) > 0, rel, "%s: habitat curve with a zero cell" % name)
                    check(float(q[3]) >= 1, rel, "%s: HabScale" % name)
                    p += 21
                else:
                    check(v == 0, rel, "%s: HabLinked must be -1 or 0" % name)
        m = L[p].split()
        nh = int(m[1])
        p += 1 + nh
        species.append(sp)
    links = [l.split() for l in L[p:]]
    check(all(len(x) == 4 for x in links), rel, "link lines hold four values")
    return ns, species, [(int(a), int(b), float(c), float(d)) for a, b, c, d in links]


def check_population(D, reaches):
    ns, species, links = read_fis(D)
    rel = "default.fis"
    check(1 <= ns <= 17, rel, "1 to 17 species")
    for sp in species:
        check(sp["flag"] in ("True", "False"), rel, "%s: SetHabFlag as True/False" % sp["name"])
        check(0 < sp["sejuv"] < 1, rel, "%s: survival fry to age 1 must lie in (0, 1)" % sp["name"])
        check(0 < sp["sfry"] < 1 and 0 < sp["sbase"] < 1, rel, "%s: survivals" % sp["name"])
        check(2 <= sp["rchfry"] <= 12, rel, "%s: RchFry must be a run reach" % sp["name"])
        check(1 <= sp["pwk1"] <= sp["pwk2"] <= 12, rel, "%s: predation months" % sp["name"])
    diet, mort = {}, {}
    for pred, prey, d, m in links:
        check(1 <= pred <= ns + 3 and 1 <= prey <= ns + 3, rel, "link %d->%d out of range" % (pred, prey))
        diet[pred] = diet.get(pred, 0) + d
        mort[prey] = mort.get(prey, 0) + m
    check(all(v <= 1 for v in diet.values()), rel, "diet proportions of a predator sum above 1")
    check(all(v <= 1 for v in mort.values()), rel, "mortality proportions of a prey sum above 1")
    rainbow = [i for i, sp in enumerate(species, start=1) if sp["name"][:7].lower() == "rainbow"]
    check(rainbow == [3], rel, "the rainbow trout must be species 3 (the angling results read it)")
    heads, look, lrel = D.sheet("population.xls", "Lookup")
    codes = {r["SPCODE"]: int(r["ModelIndex"]) for r in look}
    check(len(codes) == len(look), lrel, "codes must be unique")
    check(sorted(codes.values()) == list(range(1, ns + 1)), lrel, "one code for each species")
    heads, rows, prel = D.sheet("population.xls", "Pop_Halden_Broome")
    for r in rows:
        if r["SPECIES"] not in codes:
            fail(prel, "code %s not in Lookup" % r["SPECIES"])
            break
        check(2 <= int(r["REACH"]) <= 12 and 47 <= int(r["YR"]) <= 98, prel, "reach or year")
    seen = {codes[r["SPECIES"]] for r in rows}
    check(seen == set(range(1, ns + 1)), prel, "every species needs catch records")
    heads, rbt, rrel = D.sheet("population.xls", "RBT_HF")
    check(all(48 <= int(r["YR"]) <= 97 for r in rbt), rrel, "years inside the record")
    check(all(float(r["CPUE"]) > 0 for r in rbt), rrel, "CPUE must be positive")
    # Indicator populations (production file) and the tributary habitat file.
    bhp = tokens(D.lines("default.bhp"))
    nveg = int(float(bhp[36]))
    nmort = int(float(bhp[37]))
    p = 39 + nveg * (1 + 5 + 6 + nveg + nmort)
    npop, nfood = int(bhp[p]), int(bhp[p + 1])
    check(len(bhp) == p + 2 + nfood + npop * (7 + nfood), "default.bhp", "indicator population block")
    t = tokens(D.lines("default.trb"))
    check(t[:2] == ["2", "12"], "default.trb", "first line: 2 12")
    check(len(t) == 2 + 11 * (1 + 3 * 22), "default.trb", "67 values for each run reach")
    return ns


def check_graphs(D, ns):
    rel = "graphleg.txt"
    L = D.lines(rel)
    nv, maxsub = [int(x) for x in fields(L[4])]
    check(nv == 26 + ns + 1, rel, "%d variables, results table needs %d" % (nv, 26 + ns + 1))
    vars_ = []
    for i, l in enumerate(L[5:], start=1):
        f = fields(l)
        n = int(f[2])
        labels = f[4:4 + n] if n > 1 else []
        style = f[4 + len(labels):]
        check(int(f[0]) == i and len(style) == 3, rel, "variable %d record" % i)
        check(f[1] in ("W", "M", "Y"), rel, "variable %d time code" % i)
        vars_.append((f[3], n, labels, int(style[2]), f[1]))
    check(len(vars_) == nv, rel, "NVars records")
    check(maxsub == max(v[1] for v in vars_), rel, "MaxSub must be the largest set count")
    ids = [v[3] for v in vars_]
    check(len(set(ids)) == len(ids), rel, "map ids must be unique")
    expect_sets = {1: 2, 2: 2, 3: 2, 6: 4, 7: 4, 10: 4, 11: 3, 13: 2, 14: 2, 15: 2, 16: 2, 17: 2,
                   18: 5, 19: 3, 20: 2, 22: 3, 23: 2, 24: 2, 25: 2}
    obs_sets = {3: 2, 13: 2, 14: 2, 15: 2, 16: 2, 17: 2, 19: 3, 20: 2, 23: 2, 24: 2, 25: 2}
    for v in range(27, 27 + ns + 1):
        expect_sets[v] = 2
        obs_sets[v] = 2
    for v, (title, n, labels, mid, tc) in enumerate(vars_, start=1):
        check(n == expect_sets.get(v, 1), rel, "variable %d has %d sets" % (v, n))
        for s, lab in enumerate(labels, start=1):
            is_obs = lab.strip().lower()[:3] == "obs"
            check(is_obs == (obs_sets.get(v) == s), rel, "variable %d set %d obs label" % (v, s))
    rel = "model.mde"
    L = D.lines(rel)
    nleg = int(L[0])
    check(nleg == sum(v[1] for v in vars_), rel, "one legend per variable and data set")
    p = 1
    for v, (title, n, labels, mid, tc) in enumerate(vars_, start=1):
        for s in range(1, n + 1):
            name = title if n < 2 else title + labels[s - 1]
            check(L[p] == name, rel, "legend %d name %r, expected %r" % (p, L[p], name))
            ms = L[p + 1].split()
            check([int(x) for x in ms] == [mid, s], rel, "legend %r map id and set" % name)
            hd = L[p + 2].split()
            ncat, cat, lo, hi = int(hd[0]), int(hd[1]), float(hd[2]), float(hd[3])
            check(hi > lo, rel, "legend %r scale" % name)
            check(cat in (0, 1) and 1 <= ncat <= 10, rel, "legend %r categories" % name)
            p += 3 + ncat
    check(p == len(L), rel, "legend count and file length")
    rel = "default.grs"
    L = [fields(l) for l in D.lines(rel)]
    check(len(L) == 33, rel, "33 records")
    keys = ["VisForms-%d" % i for i in range(1, 5)] + ["TimeWindow"] + \
        ["IndSliceKCFS-%d" % i for i in range(1, 5)] + ["Profile Month", "ShowSandBox", "PlotObsAvg"] + \
        ["TS_Graph-%d" % i for i in range(1, 7)] + ["Map-%d" % i for i in range(1, 7)] + \
        ["Profile-%d" % i for i in range(1, 7)] + ["CX_Profile-%d" % i for i in range(1, 4)]
    check([r[0] for r in L] == keys, rel, "record keys and order")
    check([r[1] for r in L[5:9]] == [5000, 20000, 45000, 60000], rel, "index stages in cfs")
    for r in L[12:18]:
        check(0 <= r[1] <= nv, rel, "graph slot %s" % r[1])
    for r in L[18:24]:
        check(0 <= r[1] <= nleg, rel, "map slot %s" % r[1])
    for r in L[24:30]:
        check(0 <= r[1] <= nv and (r[2] < r[3] or r[3] == 0), rel, "profile slot %s" % r[1])


def check_maps(D, reaches):
    L = D.lines("ORRiv.mif")
    pts = []
    k = 9
    while k < len(L):
        check(L[k].startswith("Point "), "ORRiv.mif", "line %d: Point record" % (k + 1))
        x, y = [float(v) for v in L[k][5:].split()]
        pts.append((x, y))
        k += 2
    mid = [fields(l) for l in D.lines("ORRiv.mid")]
    check(len(mid) == len(pts), "ORRiv.mid", "one row for each point of ORRiv.mif")
    miles = [m[1] for m in mid]
    check([m[0] for m in mid] == list(range(1, len(mid) + 1)), "ORRiv.mid", "ids 1..n")
    check(all(b > a for a, b in zip(miles, miles[1:])), "ORRiv.mid", "miles must rise")
    check(miles[0] <= 0 and miles[-1] >= reaches[-1][2], "ORRiv.mid", "line must span the reaches")
    for (x0, y0), (x1, y1), m0, m1 in zip(pts, pts[1:], miles, miles[1:]):
        d = math.hypot(x1 - x0, y1 - y0)
        if abs(d - (m1 - m0)) > 0.01:
            fail("ORRiv.mif", "segment at mile %s is %.3f map miles long" % (m0, d))
            break
    check(min(min(p) for p in pts) > 0, "ORRiv.mif", "coordinates must be positive")
    # Tributaries end on the river at their miles.
    L = D.lines("tribs.mif")
    heads, att, _ = D.sheet("physical.xls", "TribAttributes")
    k = 8
    ends = []
    while k < len(L):
        n = int(L[k].split()[1])
        ends.append([float(v) for v in L[k + n].split()])
        k += n + 2
    check(len(ends) == len(att), "tribs.mif", "one line for each tributary of TribAttributes")
    for a, e in zip(att, ends):
        m = float(a["OSD_Mile"])
        i = int(m / 0.5)
        f = m / 0.5 - i
        p = (pts[i][0] * (1 - f) + pts[i + 1][0] * f, pts[i][1] * (1 - f) + pts[i + 1][1] * f)
        check(math.hypot(p[0] - e[0], p[1] - e[1]) < 0.01, "tribs.mif",
              "tributary at mile %s does not join the river there" % m)
    L = D.lines("Lakes.mif")
    check(sum(1 for l in L if l.startswith("Region")) == 2, "Lakes.mif", "two lakes")
    L = D.lines("Reachlabels.csv")
    n = int(fields(L[1])[0])
    check(n == len(L) - 2, "Reachlabels.csv", "label count")
    for l in L[2:]:
        m = fields(l)[0]
        check(miles[0] <= m <= miles[-1], "Reachlabels.csv", "label mile %s off the river" % m)


def main(argv):
    here = os.path.dirname(os.path.abspath(__file__))
    root = argv[1] if len(argv) > 1 else os.path.join(os.path.dirname(here), "data")
    D = Data(root)
    required = ["start_message.txt", "diurnal_scenarios.txt", "Reaches.csv", "Reachlabels.csv",
                "ORRiv.mif", "ORRiv.mid", "Lakes.mif", "tribs.mif", "graphleg.txt", "default.grs",
                "model.mde", "noaction.sts", "default.exp", "default.phy", "default.bhp",
                "default.fis", "default.rec", "default.trb", "CampingBeaches.csv"]
    for f in required:
        check(os.path.exists(D.path(f)), f, "missing")
    if failures:
        print("\n".join(failures))
        return 1
    def guarded(step):
        try:
            return step()
        except Exception as e:          # a malformed file: report and go on
            fail("check", "could not read: %s: %s" % (type(e).__name__, e))
            return None

    reaches = guarded(lambda: check_reaches(D))
    if reaches is not None:
        rx = Rx(reaches)
        for step in (lambda: check_riverware(D),
                     lambda: check_sts(D, reaches),
                     lambda: check_stars(D, rx, reaches),
                     lambda: check_storage(D, rx),
                     lambda: check_substrate(D, rx),
                     lambda: check_rc90(D, rx),
                     lambda: check_tribs(D, rx, reaches),
                     lambda: check_obs_sites(D, rx),
                     lambda: check_maps(D, reaches)):
            guarded(step)
        camps = guarded(lambda: check_camps(D, rx, reaches))
        if camps is not None:
            inv, rows = camps
            guarded(lambda: check_rec(D, rows))
            guarded(lambda: check_phy(D, inv, 2))
        ns = guarded(lambda: check_population(D, reaches))
        if ns is not None:
            guarded(lambda: check_graphs(D, ns))
    if failures:
        print("data sanity: %d failure(s)" % len(failures))
        print("\n".join(failures))
        return 1
    print("data sanity: all checks passed (%s)" % root)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
