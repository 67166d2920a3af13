#!/usr/bin/env bash
# Sets up, builds and runs every test: with clang, debug and sanitizers first, then with g++, optimised, together
# with the style checks.
set -euo pipefail
unset CDPATH
cd "$(dirname "${BASH_SOURCE[0]}")"

scripts/setup.sh test
for preset in debug release; do
  scripts/build.sh "$preset" -DTARVEX_TESTS=ON
done
ctest --preset debug -j "$(nproc)"
ctest --preset release -j "$(nproc)"
