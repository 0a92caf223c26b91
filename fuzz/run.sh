#!/usr/bin/env bash
# Runs the property-list reader fuzzer for a bounded time on a scratch copy of the seed
# corpus. Exits non-zero on a crash, a leak, running out of memory or a hang; what caused it
# is kept under artifacts/.
#   usage: fuzz/run.sh BUILD_DIR SECONDS
set -uo pipefail
if [ $# -ne 2 ]; then
  echo "usage: $0 BUILD_DIR SECONDS" >&2
  exit 2
fi
root=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "$1" && pwd) || exit 2
seconds=$2
fuzzer=$build/fuzz/plist_reader_fuzzer
if [ ! -x "$fuzzer" ]; then
  echo "$fuzzer is missing: build with the fuzz preset first" >&2
  exit 2
fi

work=$root/fuzz/corpus-work/plist
artifacts=$root/artifacts
rm -rf "$work"
mkdir -p "$work" "$artifacts"
cp "$root"/fuzz/corpus/plist/* "$work"/
log=$artifacts/plist_reader_fuzzer.log

"$fuzzer" "$work" \
  -max_total_time="$seconds" \
  -rss_limit_mb=2048 \
  -malloc_limit_mb=512 \
  -timeout=10 \
  -print_final_stats=1 \
  -artifact_prefix="$artifacts/plist-" 2>&1 | tee "$log" | grep -E "^#[0-9]+.*(INITED|DONE|pulse)|ERROR|SUMMARY|^stat::"
status=${PIPESTATUS[0]}
if [ "$status" -ne 0 ]; then
  echo "plist_reader_fuzzer failed (status $status); see $log and $artifacts" >&2
  exit 1
fi
echo "plist_reader_fuzzer: no crash, leak or out-of-memory in ${seconds}s"
