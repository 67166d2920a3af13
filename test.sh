#!/usr/bin/env bash
# Sets up, builds and runs every test: with clang, debug and sanitizers; then, built by g++ and optimised, those that start
# the programs. What takes long with sanitizers, and clang-tidy, come in .ci/run.
set -euo pipefail
unset CDPATH
cd "$(dirname "${BASH_SOURCE[0]}")"

scripts/setup.sh test
# Lines are enough for the sanitizers. For a debugger: cmake --preset debug -DCMAKE_CXX_FLAGS_DEBUG=-g
scripts/build.sh debug -DTARVEX_TESTS=ON -DTARVEX_UNIT_TESTS=ON -DCMAKE_CXX_FLAGS_DEBUG=-gline-tables-only
scripts/build.sh release -DTARVEX_TESTS=ON -DTARVEX_UNIT_TESTS=OFF
ctest --preset debug -j "$(nproc)" -LE thorough
ctest --preset release -j "$(nproc)" -LE thorough
