#!/usr/bin/env bash
# Installs the Debian packages that TARVEX builds and tests with, and for the tests some of npm. Does nothing when all of
# them are there.
#   scripts/setup.sh build   what a conversion needs
#   scripts/setup.sh test    that, and what the tests need
#   scripts/setup.sh memcheck  that, and what memcheck.sh runs them under
#   scripts/setup.sh parser  that, and what scripts/parser.sh unpacks the XML parser with
#   scripts/setup.sh package  what a conversion needs, and what package.sh makes and checks packages with
#   scripts/setup.sh bench   what a conversion needs, and what bench/run.sh measures with
set -euo pipefail

packages=(g++ cmake ninja-build libxerces-c-dev libxml2-dev libsqlite3-dev libsodium-dev libdeflate-dev libjemalloc-dev nlohmann-json3-dev libcli11-dev)
if [[ ${1:-build} =~ ^(test|memcheck|parser)$ ]]; then
  packages+=(clang clang-format clang-tidy libclang-rt-14-dev lld llvm libbenchmark-dev libgtest-dev libgmock-dev zlib1g-dev python3
             dpkg-dev file pkgconf python3-canmatrix python3-lxml python3-jsonschema mandoc sqlite3 jq strace bash-completion zsh
             chromium chromium-driver python3-selenium)
  # Other packages than Debian's may have brought them.
  for program in node:nodejs npm:npm; do
    command -v "${program%:*}" >/dev/null || packages+=("${program#*:}")
  done
fi
if [ "${1:-build}" = memcheck ]; then
  packages+=(valgrind)
fi
if [ "${1:-build}" = parser ]; then
  packages+=(debian-archive-keyring)
fi
if [ "${1:-build}" = package ]; then
  packages+=(dpkg-dev file lintian)
fi
if [ "${1:-build}" = bench ]; then
  packages+=(libgtest-dev libgmock-dev libbenchmark-dev python3 hyperfine time libxerces-c-samples libxml2-utils)
fi

missing=()
for package in "${packages[@]}"; do
  if [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" != installed ]; then
    missing+=("$package")
  fi
done
if [ ${#missing[@]} -gt 0 ]; then
  as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    as_root=(sudo)
  fi
  echo "Installing ${missing[*]}"
  "${as_root[@]}" apt-get update -qq
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi

# What checks the scripts of the page and its accessibility, in the versions of the lock file.
checks=$(dirname "${BASH_SOURCE[0]}")/../tests/page
if [ "${1:-build}" = test ] && ! cmp -s "$checks/package-lock.json" "$checks/node_modules/.installed"; then
  echo "Installing what checks the page"
  (cd "$checks" && npm ci --loglevel=error --no-audit --no-fund && cp package-lock.json node_modules/.installed)
fi
