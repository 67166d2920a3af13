#!/usr/bin/env bash
# Measures conversions beside the parse alone of the same catalogs. Prints Markdown to standard output.
#   bench/run.sh              with catalogs in a directory that is removed at the end: up to 2 GB
#   bench/run.sh DIRECTORY    with catalogs that stay in the directory
# From the environment:
#   ROUNDS        how often each program runs (5)
#   SIZES         megabytes of the plain catalogs ("1 10 50 100 200")
#   SHAPE_SIZES   megabytes of the other shapes ("10 200", or SIZES if that is set)
#   BUILD         directory of a build to measure, instead of the one made here
set -euo pipefail
unset CDPATH
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

if [ $# -gt 1 ]; then
  echo "Usage: $0 [DIRECTORY]" >&2
  exit 2
fi
shape_sizes=${SHAPE_SIZES:-${SIZES:-10 200}}
sizes=${SIZES:-1 10 50 100 200}

"$root/scripts/setup.sh" bench >&2
build=${BUILD:-}
if [ -z "$build" ]; then
  build=$root/build/bench
  echo "Building ..." >&2
  mkdir -p "$build"
  if ! { cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_COMPILER=g++ -DTARVEX_BENCH=ON &&
         cmake --build "$build" --target TARVEX generate-catalog bench-pieces; } >"$build/build.log" 2>&1; then
    cat "$build/build.log" >&2
    echo "The build failed." >&2
    exit 1
  fi
fi

if [ $# -eq 1 ]; then
  mkdir -p "$1"
  directory=$1
else
  directory=$(mktemp -d)
  trap 'rm -rf "$directory"' EXIT
fi
# shellcheck disable=SC2086  # lists of sizes
python3 "$root/bench/measure.py" --build "$build" --directory "$directory" --rounds "${ROUNDS:-5}" \
  --sizes $sizes --shape-sizes $shape_sizes

echo "Timing the pieces ..." >&2
printf '\n### Where the time goes\n\n```\n'
"$build/bench-pieces" 2>/dev/null
echo '```'
