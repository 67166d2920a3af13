#!/usr/bin/env bash
# Sets up, builds the fuzz targets and runs them, one after the other.
#   ./fuzz.sh [--parser] [TARGET] [SECONDS]   one of the targets in fuzz/corpus, or all; 60 seconds each
#   COVERAGE=1 ./fuzz.sh ...                  shows too how many lines the corpus of each target reaches
# With --parser the targets that read catalogs stand on an XML parser that has the address sanitizer too, without the
# pool that its memory is from otherwise. Debian's source package of it is fetched and built once.
# What is found is kept in build/fuzz/findings, and the corpus grows in build/fuzz/corpus-work; with --parser in
# build/fuzz-parser.
set -euo pipefail
unset CDPATH
cd "$(dirname "${BASH_SOURCE[0]}")"

preset=fuzz
all=(fuzz/corpus/*/)
if [ "${1:-}" = --parser ]; then
  shift
  preset=fuzz-parser
  all=(catalog cost disasm message-lines names page review values)
fi
targets=()
for corpus in "${all[@]}"; do
  targets+=("$(basename "$corpus")")
done
if [[ ! ${1:-0} =~ ^[0-9]+$ ]]; then
  if [[ " ${targets[*]} " != *" $1 "* ]]; then
    echo "Usage: $0 [--parser] [TARGET] [SECONDS]; the targets are ${targets[*]}" >&2
    exit 2
  fi
  targets=("$1")
  shift
fi
seconds=${1:-60}

if [ "$preset" = fuzz-parser ]; then
  scripts/setup.sh parser
  parser=$(scripts/parser.sh)
  scripts/build.sh "$preset" -DTARVEX_PARSER="$parser"
else
  scripts/setup.sh test
  scripts/build.sh "$preset"
fi
build=build/$preset
mkdir -p "$build/findings"

# Files that the targets write go into memory where that is possible.
if [ -z "${TMPDIR:-}" ] && [ -w /dev/shm ]; then
  TMPDIR=$(mktemp -d -p /dev/shm)
else
  TMPDIR=$(mktemp -d)
fi
export TMPDIR
trap 'rm -rf "$TMPDIR"' EXIT
# Memory that was freed is kept for a while; little of it, as the initialisation files take large buffers.
export ASAN_OPTIONS=quarantine_size_mb=16
export LSAN_OPTIONS=suppressions=$PWD/tests/lsan.supp:print_suppressions=0

status=0
for target in "${targets[@]}"; do
  work=$build/corpus-work/$target
  mkdir -p "$work"
  cp fuzz/corpus/"$target"/* "$work"
  mapfile -t options <"$build/fuzz-$target.options"
  log=$build/$target.log
  "$build/fuzz-$target" "${options[@]}" -max_total_time="$seconds" -print_final_stats=1 \
    -artifact_prefix="$build/findings/$target-" "$work" >"$log" 2>&1 && result=clean || result="FOUND SOMETHING: see $log"
  [ "$result" = clean ] || status=1
  printf '%-14s %9s executions, %6s edges, %5s inputs, %s\n' "$target" \
    "$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")" \
    "$(sed -n 's/.* cov: \([0-9]*\).*/\1/p' "$log" | tail -n 1)" \
    "$(find "$work" -type f | wc -l)" "$result"
done

if [ "${COVERAGE:-}" = 1 ]; then
  measured=build/fuzz-coverage
  flags="-O1 -g -fprofile-instr-generate -fcoverage-mapping"
  echo "Building for line coverage ..." >&2
  if ! { cmake --preset fuzz -B "$measured" -DTARVEX_SANITIZE=OFF -DCMAKE_CXX_FLAGS="$flags" &&
         cmake --build "$measured" --target fuzz-targets; } >"$measured.log" 2>&1; then
    cat "$measured.log"
    exit 1
  fi
  for target in "${targets[@]}"; do
    if [ ! -x "$measured/fuzz-$target" ]; then
      continue  # it counts what only the sanitized build can count
    fi
    profile=$measured/$target
    mapfile -t options <"$measured/fuzz-$target.options"
    LLVM_PROFILE_FILE=$profile.profraw "$measured/fuzz-$target" "${options[@]}" -runs=0 \
      "$build/corpus-work/$target" >"$profile.log" 2>&1
    llvm-profdata merge -o "$profile.profdata" "$profile.profraw"
    mapfile -t sources <"$measured/fuzz-$target.sources"
    echo
    echo "Lines that $target reaches:"
    llvm-cov export -summary-only -instr-profile="$profile.profdata" "$measured/fuzz-$target" "${sources[@]}" |
      python3 fuzz/show_coverage.py
  done
fi
exit $status
