#!/usr/bin/env bash
# Runs the database benchmark over a generated database and prints its figures
# beside xmllint --stream and Python's plistlib reading the same six files.
#
#   bench/run-bench.sh DIR
#
# DIR is an application-support folder made by
#   python3 ../shared/tools/make-database.py DIR --orders 100000
# The benchmark program is built in build-bench (Release) unless BENCH_BIN
# names one. RUNS (default 3) is how often each quick step runs: the median
# time and the highest peak are shown. PLISTLIB_RUNS (default 1) is the same
# for plistlib, which takes a while. Files written by the write steps go to a
# temporary folder, never into DIR.
set -euo pipefail

if [ $# -ne 1 ] || [ ! -d "$1" ]; then
    echo "usage: $0 DIR   (DIR holds Quorvel/quorveldatabase.qvldb)" >&2
    exit 2
fi
DIR=$(cd "$1" && pwd)
REPO=$(cd "$(dirname "$0")/.." && pwd)
BUNDLE="$DIR/Quorvel/quorveldatabase.qvldb"
for f in contacts orders items itemsordered bills actions; do
    if [ ! -f "$BUNDLE/$f.xml" ]; then
        echo "$0: $BUNDLE/$f.xml is missing" >&2
        exit 1
    fi
done

BIN=${BENCH_BIN:-}
if [ -z "$BIN" ]; then
    BUILD=${BENCH_BUILD_DIR:-$REPO/build-bench}
    echo "building bench_database in $BUILD ..." >&2
    cmake -S "$REPO" -B "$BUILD" -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
    cmake --build "$BUILD" --target bench_database >/dev/null
    BIN=$BUILD/bench/bench_database
fi

OUT=$(mktemp -d)
trap 'rm -rf "$OUT"' EXIT

exec python3 - "$BIN" "$DIR" "$BUNDLE" "$OUT" "${RUNS:-3}" "${PLISTLIB_RUNS:-1}" <<'PYTHON'
import os
import re
import statistics
import subprocess
import sys
import time

BIN, DIR, BUNDLE, OUT, RUNS, PLISTLIB_RUNS = sys.argv[1:7]
RUNS, PLISTLIB_RUNS = int(RUNS), int(PLISTLIB_RUNS)
FILES = [os.path.join(BUNDLE, n + ".xml") for n in
         ("contacts", "orders", "items", "itemsordered", "bills", "actions")]
TOTAL = sum(os.path.getsize(f) for f in FILES)
TIME = "/usr/bin/time" if os.access("/usr/bin/time", os.X_OK) else None


def measure(cmd):
    """Wall seconds and peak resident MB of one run of cmd, and its output."""
    if TIME:
        run = subprocess.run([TIME, "-v"] + cmd, capture_output=True, text=True)
        if run.returncode != 0:
            sys.exit("failed: %s\n%s" % (" ".join(cmd), run.stderr))
        wall = re.search(r"Elapsed \(wall clock\) time \(h:mm:ss or m:ss\): (\S+)", run.stderr).group(1)
        seconds = 0.0
        for part in wall.split(":"):
            seconds = seconds * 60 + float(part)
        peak = int(re.search(r"Maximum resident set size \(kbytes\): (\d+)", run.stderr).group(1)) / 1024
        return seconds, peak, run.stdout
    # Without /usr/bin/time: each command in a process of its own, measured
    # from here (ru_maxrss of the children is the largest child so far).
    probe = ("import resource, subprocess, sys, time\n"
             "t = time.perf_counter()\n"
             "r = subprocess.run(sys.argv[1:], stdout=subprocess.PIPE, text=True)\n"
             "w = time.perf_counter() - t\n"
             "print(r.stdout, end='')\n"
             "print('MEASURED %f %d %d' % (w, resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss, r.returncode))\n")
    run = subprocess.run([sys.executable, "-c", probe] + cmd, capture_output=True, text=True)
    m = re.search(r"MEASURED (\S+) (\d+) (\d+)", run.stdout)
    if not m or m.group(3) != "0":
        sys.exit("failed: %s\n%s" % (" ".join(cmd), run.stderr))
    return float(m.group(1)), int(m.group(2)) / 1024, run.stdout[:m.start()]


def step(name):
    """Runs one benchmark step RUNS times: the program's own figures (the
    step alone) and the whole process's figures."""
    inner, outer = [], []
    for _ in range(RUNS):
        seconds, peak, out = measure([BIN, DIR, name, OUT])
        for line in out.splitlines():
            m = re.match(r"STEP (\S+) wall_ms (\S+) peak_mb (\S+) before_mb (\S+) ?(.*)", line)
            if m and m.group(1) == name:
                inner.append((float(m.group(2)) / 1000, float(m.group(3)), float(m.group(4)), m.group(5)))
        outer.append((seconds, peak))
    return inner, outer


def median(values):
    return statistics.median(values)


rows = []
print("Database: %s: six files, %.1f MB (%d bytes)" % (BUNDLE, TOTAL / 2**20, TOTAL))
print("Each quick step: %d run(s) in fresh processes, median time, highest peak." % RUNS)
print("Peak memory: %s" % ("/usr/bin/time -v, maximum resident set size" if TIME
                           else "getrusage of the child process (no /usr/bin/time here)"))
print()

xmllint = [measure(["xmllint", "--stream", "--noout"] + FILES) for _ in range(RUNS)]
xml_wall = median([w for w, _, _ in xmllint])
xml_peak = max(p for _, p, _ in xmllint)

results = {}
for name in ("read", "write-all", "write-orders", "filter", "sort", "csv", "scan"):
    results[name] = step(name)

loader = "import plistlib, sys\nfor f in sys.argv[1:]:\n    with open(f, 'rb') as h:\n        plistlib.load(h)\n"
plist = [measure([sys.executable, "-c", loader] + FILES) for _ in range(PLISTLIB_RUNS)]
plist_wall = median([w for w, _, _ in plist])
plist_peak = max(p for _, p, _ in plist)


def fmt_time(seconds):
    return "%8.3f s" % seconds


print("%-34s %11s %12s %12s  %s" % ("", "time", "peak RSS", "process RSS", "notes"))
print("%-34s %11s %12s %12s  %s" % ("xmllint --stream --noout", fmt_time(xml_wall), "", "%9.1f MB" % xml_peak,
                                     "the six files"))
print("%-34s %11s %12s %12s  %s" % ("python3 plistlib.load", fmt_time(plist_wall), "", "%9.1f MB" % plist_peak,
                                     "the six files"))
labels = {
    "read": "quorvel: read, links resolved",
    "scan": "quorvel: quick scanner alone",
    "write-all": "quorvel: write all six files",
    "write-orders": "quorvel: write orders.xml",
    "filter": "quorvel: filter orders \"Ashford\"",
    "sort": "quorvel: sort orders by date",
    "csv": "quorvel: CSV export of the orders",
}
figures = {}
for name in ("read", "scan", "write-all", "write-orders", "filter", "sort", "csv"):
    inner, outer = results[name]
    wall = median([i[0] for i in inner])
    peak = max(i[1] for i in inner)
    process_peak = max(o[1] for o in outer)
    figures[name] = (wall, peak, process_peak)
    print("%-34s %11s %12s %12s  %s" % (labels[name], fmt_time(wall), "%9.1f MB" % peak, "%9.1f MB" % process_peak,
                                         inner[-1][3]))

print()
print("Targets (all figures from this run):")
checks = [
    ("read <= 0.75 x xmllint --stream (%.3f s)" % (0.75 * xml_wall), figures["read"][0] <= 0.75 * xml_wall),
    ("read peak RSS <= 2 x file size (%.1f MB)" % (2 * TOTAL / 2**20), figures["read"][2] <= 2 * TOTAL / 2**20),
    ("write all six < 1.2 s", figures["write-all"][0] < 1.2),
    ("write orders.xml < 0.4 s", figures["write-orders"][0] < 0.4),
    ("filter < 20 ms", figures["filter"][0] < 0.020),
    ("sort by date < 150 ms", figures["sort"][0] < 0.150),
    ("CSV export < 1 s", figures["csv"][0] < 1.0),
]
for label, ok in checks:
    print("  %-52s %s" % (label, "met" if ok else "NOT MET"))
PYTHON
