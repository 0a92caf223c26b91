#!/usr/bin/env bash
# Times encoding and decoding of the same 10,000 records with Python's plistlib and with our
# codec, and prints how many times faster ours is. Run from anywhere after a build of
# nimbrel_bench (make bench does both).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
bench=${NIMBREL_BENCH:-$root/build/default/bench/nimbrel_bench}
if [ ! -x "$bench" ]; then
  echo "$bench is missing: build it first (make bench)" >&2
  exit 1
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

python3 "$root/bench/plist_vs_python.py" records "$work/records.plist"
python3 "$root/bench/plist_vs_python.py" time "$work/records.plist" >"$work/python.json"
NIMBREL_PLIST_BENCH_FILE="$work/records.plist" "$bench" \
  --benchmark_filter='^BM_PlistFile' --benchmark_repetitions=5 \
  --benchmark_format=json >"$work/ours.json" 2>"$work/ours.err" || {
  cat "$work/ours.err" >&2
  exit 1
}
python3 "$root/bench/plist_vs_python.py" compare "$work/python.json" "$work/ours.json"
