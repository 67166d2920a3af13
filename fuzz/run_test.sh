#!/bin/sh
# Runs a target over its corpus and some mutations, in a directory of its own, so that the corpus stays as it is:
#   run_test.sh CORPUS PROGRAM [OPTION...]
set -eu
corpus=$1
shift
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/found" "$work/files"
TMPDIR=$work/files "$@" "$work/found" "$corpus"
