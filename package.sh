#!/usr/bin/env bash
# Makes Debian packages of the programs (tarvex) and of the library (libkestrel-dev), and has lintian check them. They are
# put into build/packages. The same sources on the same system always give the same packages.
set -euo pipefail
unset CDPATH
cd "$(dirname "${BASH_SOURCE[0]}")"

scripts/setup.sh package
# As Debian compiles its packages, but optimised as everywhere else, and without what debuggers need.
export DEB_BUILD_MAINT_OPTIONS=hardening=+bindnow DEB_CXXFLAGS_MAINT_STRIP="-g -O2"
scripts/build.sh package -DCMAKE_CXX_FLAGS="$(dpkg-buildflags --get CPPFLAGS) $(dpkg-buildflags --get CXXFLAGS)" \
  -DCMAKE_EXE_LINKER_FLAGS="$(dpkg-buildflags --get LDFLAGS)"

date=$(sed -n 's/^## [0-9.]* (\(.*\))$/\1/p' CHANGELOG.md | head -n 1)
SOURCE_DATE_EPOCH=$(date --utc --date="$date" +%s)
export SOURCE_DATE_EPOCH
rm -rf build/packages
log=build/packages.log
if ! cpack --config build/package/CPackConfig.cmake -B build/packages >"$log" 2>&1; then
  cat "$log"
  echo "The packages could not be made." >&2
  exit 1
fi
rm -rf build/packages/_CPack_Packages
echo "Checking the packages ..." >&2
lintian --allow-root --fail-on error,warning build/packages/*.deb
ls build/packages/*.deb
