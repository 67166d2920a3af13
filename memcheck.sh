#!/usr/bin/env bash
# Runs the unit tests of the release build, and conversions of the example into every format, under valgrind: it sees
# what is read before it was written, which the sanitizers of the debug build don't. Takes some minutes.
set -euo pipefail
unset CDPATH
cd "$(dirname "${BASH_SOURCE[0]}")"
root=$PWD

scripts/setup.sh memcheck
scripts/build.sh release -DTARVEX_TESTS=ON -DTARVEX_UNIT_TESTS=ON

# What tries thousands of inputs says nothing more here, and valgrind keeps some signals for itself.
filter='-*Random*:SignalLimits.*:SignalNamesModel.*:EntityBound.*:MessageLog.MessagesBeyond*:Replacement.*Signal*'
# TARVEX has an allocator of its own, whose functions are replaced too.
memcheck=(valgrind --quiet --error-exitcode=99 --leak-check=full --show-leak-kinds=definite
          --errors-for-leak-kinds=definite --child-silent-after-fork=yes --soname-synonyms=somalloc=libjemalloc.so.2
          --suppressions="$root/tests/memcheck.supp")
mkdir -p build/memcheck
status=0
check() {  # NAME COMMAND...
  local name=$1
  shift
  if "${memcheck[@]}" "$@" >"$root/build/memcheck/$name.log" 2>&1; then
    echo "$name: clean"
  else
    echo "$name: FOUND SOMETHING, see build/memcheck/$name.log"
    status=1
  fi
}

for program in "$root"/build/release/*-tests; do
  check "$(basename "$program")" "$program" --gtest_brief=1 --gtest_filter="$filter"
done

directory=$(mktemp -d)
trap 'rm -rf "$directory"' EXIT
cp -r examples/. "$directory"
printf '[Import]\nFCatImportLog=1\nFCatTreeLog=tree\n[Conversion]\nWarnOnOverwrite=0\nMakeReadOnly=0\n' >"$directory/TARVEX.ini"
cd "$directory"
for format in vorn sqlite kcd; do
  check "TARVEX-$format" "$root/build/release/TARVEX" roadster.xml "out.$format"
done
check vorn-show "$root/build/release/vorn" show out.vorn
check vorn-diff "$root/build/release/vorn" diff out.vorn out.sqlite
exit $status
