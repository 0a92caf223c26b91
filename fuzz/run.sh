#!/usr/bin/env bash
# Runs each fuzzer for a bounded time on a scratch copy of its seed corpus (fuzz/corpus/<name>),
# FUZZ_PARALLEL of them at once (1 unless set). Exits non-zero when any target met a crash, a
# sanitizer report, a leak, running out of memory or a hang; what caused it is kept under
# artifacts/, with each target's full log. Prints one summary line per target.
#   usage: fuzz/run.sh BUILD_DIR SECONDS [TARGET...]
set -uo pipefail
if [ $# -lt 2 ]; then
  echo "usage: $0 BUILD_DIR SECONDS [TARGET...]" >&2
  exit 2
fi
root=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "$1" && pwd) || exit 2
seconds=$2
shift 2
# target name -> seed folder
declare -A seeds=([plist_reader_fuzzer]=plist [url_fuzzer]=url [fixture_loader_fuzzer]=fixture
                  [protocol_fuzzer]=protocol [media_reader_fuzzer]=media)
targets=("$@")
[ ${#targets[@]} -eq 0 ] && targets=(plist_reader_fuzzer url_fuzzer fixture_loader_fuzzer protocol_fuzzer
                                     media_reader_fuzzer)
artifacts=$root/artifacts
mkdir -p "$artifacts"
# Stacks in the reports: UBSan prints none unless asked, and clang 16's runtime looks for a
# symbolizer under its own name.
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1}
if [ -z "${ASAN_SYMBOLIZER_PATH:-}" ] && command -v llvm-symbolizer >/dev/null; then
  export ASAN_SYMBOLIZER_PATH=$(command -v llvm-symbolizer) UBSAN_SYMBOLIZER_PATH=$(command -v llvm-symbolizer)
fi

run_one() {
  local name=$1 folder=${seeds[$1]}
  local fuzzer=$build/fuzz/$name work=$root/fuzz/corpus-work/$folder log=$artifacts/$name.log
  if [ ! -x "$fuzzer" ]; then
    echo "$fuzzer is missing: build with the fuzz preset first" >&2
    return 2
  fi
  rm -rf "$work"
  mkdir -p "$work"
  cp "$root/fuzz/corpus/$folder"/* "$work"/
  local extra=()
  [ -f "$root/fuzz/$folder.dict" ] && extra+=(-dict="$root/fuzz/$folder.dict")
  # The targets' scratch folders live here, so that a crashed run leaves nothing in /tmp.
  local tmp=$work.tmp
  rm -rf "$tmp"
  mkdir -p "$tmp"
  TMPDIR=$tmp "$fuzzer" "$work" "${extra[@]}" \
    -max_total_time="$seconds" -rss_limit_mb=2048 -malloc_limit_mb=512 -timeout=10 \
    -print_final_stats=1 -artifact_prefix="$artifacts/$folder-" >"$log" 2>&1
  local status=$?
  rm -rf "$tmp"
  local done_line execs rate
  done_line=$(grep -E "^#[0-9]+.*DONE" "$log" | tail -1)
  execs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
  rate=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log")
  if [ "$status" -ne 0 ]; then
    echo "$name: FAILED (status $status) after ${execs:-?} runs; see $log" >&2
    grep -E "ERROR|SUMMARY|Fatal|fuzzer: " "$log" | head -5 >&2
    return 1
  fi
  echo "$name: ${seconds}s, ${execs} runs, ${rate} exec/s, $(grep -oE 'cov: [0-9]+ ft: [0-9]+' <<<"$done_line"), no finding"
}

parallel=${FUZZ_PARALLEL:-1}
failed=0
running=0
for t in "${targets[@]}"; do
  if [ -z "${seeds[$t]:-}" ]; then
    echo "unknown fuzzer $t" >&2
    exit 2
  fi
  run_one "$t" &
  running=$((running + 1))
  if [ "$running" -ge "$parallel" ]; then
    wait -n || failed=1
    running=$((running - 1))
  fi
done
while [ "$running" -gt 0 ]; do
  wait -n || failed=1
  running=$((running - 1))
done
exit $failed
