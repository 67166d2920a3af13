#!/usr/bin/env bash
# Installs the Debian packages that TARVEX builds and tests with. Does nothing when all of them are there.
#   scripts/setup.sh build   what a conversion needs
#   scripts/setup.sh test    that, and what the tests need
#   scripts/setup.sh memcheck  that, and what memcheck.sh runs them under
#   scripts/setup.sh parser  that, and what scripts/parser.sh unpacks the XML parser with
#   scripts/setup.sh package  what a conversion needs, and what package.sh makes and checks packages with
#   scripts/setup.sh bench   what a conversion needs, and what bench/run.sh measures with
set -euo pipefail

packages=(g++ cmake ninja-build libxerces-c-dev libxml2-dev libsqlite3-dev libsodium-dev zlib1g-dev libjemalloc-dev nlohmann-json3-dev libcli11-dev)
if [[ ${1:-build} =~ ^(test|memcheck|parser)$ ]]; then
  packages+=(clang clang-format clang-tidy libclang-rt-14-dev lld llvm libgtest-dev libgmock-dev python3
             dpkg-dev file pkgconf python3-canmatrix python3-lxml python3-jsonschema mandoc sqlite3 strace zsh)
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
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  as_root=(sudo)
fi
echo "Installing ${missing[*]}"
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
