#!/usr/bin/env bash
# Whole-process times of the command-line programs, with hyperfine, each beside its reference in
# the same run: a bare process (/bin/true) for the start-up rows, Python's plistlib.load +
# json.dump of the same 10,000-record recent list for nimbrel-plutil -convert json, and find (and
# exiv2) over the same 20,000 pictures in 40 folders for the rescan and the first index.
# Run after a build of the programs (make bench does both).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${NIMBREL_BUILD:-$root/build/default}
library=$build/tools/library/nimbrel-library
plutil=$build/tools/plutil/nimbrel-plutil
pictures=$build/bench/nimbrel-bench-pictures
for p in "$library" "$plutil" "$pictures"; do
  [ -x "$p" ] || { echo "$p is missing: build it first (make bench)" >&2; exit 1; }
done
for p in hyperfine exiv2; do
  command -v $p >/dev/null || { echo "$p is missing: make deps" >&2; exit 1; }
done
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# An index to report on, made by the program from a folder with one album.
mkdir -p "$work/Pictures/Trip" "$work/Videos" "$work/Music"
export NIMBREL_HOME=$work/home XDG_CACHE_HOME=$work/cache XDG_STATE_HOME=$work/state XDG_CONFIG_HOME=$work/config
"$library" scan --pictures "$work/Pictures" --videos "$work/Videos" --music "$work/Music" >/dev/null
python3 -c 'import plistlib, sys; open(sys.argv[1], "wb").write(plistlib.dumps({"kIsListView": True, "isFirstTime": False}, fmt=plistlib.FMT_BINARY))' "$work/small.plist"
python3 "$root/bench/plist_vs_python.py" records "$work/recent.plist"
"$pictures" "$work/Many" 20000
many=(scan --pictures "$work/Many" --videos "$work/Videos" --music "$work/Music")

runs=(--shell=none --warmup 5 --runs "${NIMBREL_BENCH_RUNS:-40}" --style none)
hyperfine "${runs[@]}" --export-json "$work/start.json" \
  -n "reference: /bin/true" "/bin/true" \
  -n "nimbrel-library --help" "$library --help" \
  -n "nimbrel-library status" "$library status" \
  -n "nimbrel-plutil -p (small file)" "$plutil -p $work/small.plist" >/dev/null
hyperfine "${runs[@]}" --export-json "$work/json.json" \
  -n "reference: python3 plistlib.load + json.dump" "python3 $root/bench/plist_to_json.py $work/recent.plist $work/py.json" \
  -n "nimbrel-plutil -convert json" "$plutil -convert json -o $work/ours.json $work/recent.plist" >/dev/null
# The rescan finds nothing changed; the first index starts each run from no index.
hyperfine "${runs[@]}" --export-json "$work/rescan.json" \
  -n "reference: find -printf size, time, path" "find $work/Many -type f -printf '%s %T@ %p\n'" \
  -n "nimbrel-library scan (20,000 unchanged)" "$library ${many[*]@Q}" >/dev/null
hyperfine --warmup 1 --runs "${NIMBREL_BENCH_INDEX_RUNS:-5}" --style none --export-json "$work/index.json" \
  --prepare "rm -rf $work/cache" \
  -n "reference: find | xargs exiv2 (dates)" \
  "find $work/Many -type f -print0 | xargs -0 exiv2 -g Exif.Photo.DateTimeOriginal -Pv" \
  -n "nimbrel-library scan (first index)" "$library ${many[*]@Q}" >/dev/null

python3 - "$work/start.json" "$work/json.json" "$work/rescan.json" "$work/index.json" <<'PY'
import json, sys
start = {r["command"]: r for r in json.load(open(sys.argv[1]))["results"]}
conv = {r["command"]: r for r in json.load(open(sys.argv[2]))["results"]}
rescan = {r["command"]: r for r in json.load(open(sys.argv[3]))["results"]}
index = {r["command"]: r for r in json.load(open(sys.argv[4]))["results"]}
ms = lambda r: r["median"] * 1000
print("whole process, median of hyperfine runs (ms)")
print(f"{'command':48}{'median':>9}{'min':>9}  target")
for name, limit in (("reference: /bin/true", None), ("nimbrel-library --help", 10),
                    ("nimbrel-library status", 30), ("nimbrel-plutil -p (small file)", 10)):
    r = start[name]
    goal = "" if limit is None else f"<= {limit} ms: {'met' if ms(r) <= limit else 'NOT met'}"
    print(f"{name:48}{ms(r):9.1f}{r['min'] * 1000:9.1f}  {goal}")
py, ours = conv["reference: python3 plistlib.load + json.dump"], conv["nimbrel-plutil -convert json"]
for r in (py, ours):
    print(f"{r['command']:48}{ms(r):9.1f}{r['min'] * 1000:9.1f}")
ratio = ms(py) / ms(ours)
print(f"{'10,000 records to JSON: times faster':48}{ratio:9.1f}{'':9}  >= 10x: {'met' if ratio >= 10 else 'NOT met'}")
for table, ours, ref, limit in ((rescan, "nimbrel-library scan (20,000 unchanged)", "reference: find -printf size, time, path", 1.2),
                               (index, "nimbrel-library scan (first index)", "reference: find | xargs exiv2 (dates)", 0.5)):
    for name in (ref, ours):
        print(f"{name:48}{ms(table[name]):9.1f}{table[name]['min'] * 1000:9.1f}")
    ratio = ms(table[ours]) / ms(table[ref])
    print(f"{'  against the reference':48}{ratio:8.2f}x{'':9}  <= {limit}x: {'met' if ratio <= limit else 'NOT met'}")
PY
