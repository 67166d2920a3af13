#!/usr/bin/env bash
# Sets up, builds in release mode and converts.
#   ./convert.sh CATALOG OUTPUT   with the settings of the TARVEX.ini in the working directory, or with those of
#                                 examples/recommended.ini if there is none
#   ./convert.sh                  converts the example catalog and shows what came out
set -euo pipefail
unset CDPATH
root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

if [ $# -ne 0 ] && [ $# -ne 2 ]; then
  echo "Usage: $0 [CATALOG OUTPUT]" >&2
  exit 2
fi

"$root/scripts/setup.sh" build
"$root/scripts/build.sh" release -DTARVEX_TESTS=OFF -DTARVEX_BENCH=OFF
tarvex=$root/build/release/TARVEX

if [ $# -eq 2 ]; then
  if [ -e TARVEX.ini ]; then
    exec "$tarvex" "$1" "$2"
  fi
  # The program wants its settings in the working directory: give it a directory of its own.
  case $1 in /*) catalog=$1 ;; *) catalog=$PWD/$1 ;; esac
  case $2 in /*) output=$2 ;; *) output=$PWD/$2 ;; esac
  settings=$(mktemp -d)
  trap 'rm -rf "$settings"' EXIT
  cp "$root/examples/recommended.ini" "$settings/TARVEX.ini"
  echo "There is no TARVEX.ini here: converting with examples/recommended.ini" >&2
  (cd "$settings" && "$tarvex" "$catalog" "$output")
  exit
fi

# The example is converted in a copy of its directory, so that logs and output stay out of the sources.
example=$root/build/example
rm -rf "$example"
cp -r "$root/examples" "$example"
cd "$example"
"$tarvex" roadster.xml roadster.vorn
echo
echo "Import log:  build/example/roadster.log"
echo "Tree log:    build/example/roadster.tree"
echo "Nodes:       $(grep -c '^  {"name": ' roadster.vorn)"
echo "Messages:    $(grep -c '^  {"identifier": ' roadster.vorn)"
echo "Signals:     $(grep -c '^     {"name": ' roadster.vorn)"
echo
echo "The first lines of build/example/roadster.vorn:"
head -n 30 roadster.vorn
