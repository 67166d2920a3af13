#!/usr/bin/env bash
# Configures and builds one preset: scripts/build.sh PRESET [CMAKE-OPTION...]
set -euo pipefail
unset CDPATH
cd "$(dirname "${BASH_SOURCE[0]}")/.."

preset=$1
shift
echo "Building the $preset preset ..." >&2
log=build/$preset.log
mkdir -p build
if ! { cmake --preset "$preset" "$@" && cmake --build --preset "$preset"; } >"$log" 2>&1; then
  cat "$log"
  echo "The $preset build failed." >&2
  exit 1
fi
