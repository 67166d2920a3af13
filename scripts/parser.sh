#!/usr/bin/env bash
# Builds the XML parser from Debian's source package, of the version that is installed, with the address sanitizer and
# instrumented for libFuzzer and for counting calls, and prints the directory that has its headers and its library. What
# was built is kept in build/parser, until there is another version of the package or of this script. Nothing outside
# that directory changes.
set -euo pipefail
unset CDPATH
cd "$(dirname "${BASH_SOURCE[0]}")/.."

package=$(dpkg-query -W -f '${source:Package}=${source:Version}' libxerces-c-dev)
base=$PWD/build/parser
home=$base/${package#*=}-$(cksum <scripts/parser.sh | cut -d ' ' -f 1)
if [ -e "$home/lib/libxerces-c.a" ]; then
  echo "$home"
  exit 0
fi
# Runs a step, and tells all that it said when it fails: step TEXT COMMAND...
log=$base/log
step() {
  local text=$1
  shift
  if ! "$@" >"$log" 2>&1; then
    cat "$log" >&2
    echo "$text" >&2
    exit 1
  fi
}

# The sources are where the machine has its Debian packages from. apt gets a list and a state of its own, and as root
# it keeps its user, since others may not look into this directory.
rm -rf "$base"
mkdir -p "$base/lists/partial" "$base/cache" "$base/source"
apt-get indextargets --format '$(ORIGIN) $(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' |
  sed -n 's|^Debian |deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] |p' >"$base/sources.list"
if [ ! -s "$base/sources.list" ]; then
  echo "The parser's source package cannot be had: apt knows no packages of Debian (apt-get update gets their list)." >&2
  exit 1
fi
apt=(apt-get -o "Dir::Etc::SourceList=$base/sources.list" -o Dir::Etc::SourceParts=/dev/null
     -o "Dir::State::Lists=$base/lists" -o "Dir::Cache=$base/cache" -o "APT::Sandbox::User=$(id -un)"
     -o APT::Update::Error-Mode=any)
echo "Getting the source package $package ..." >&2
step "The list of Debian's source packages cannot be had. Is there a network?" "${apt[@]}" update
# It unpacks the package too, with Debian's patches.
cd "$base/source"
step "The parser's source package $package cannot be had. Is there a network?" "${apt[@]}" source "$package"

# As Debian configures it, but for the network, which TARVEX never lets it use.
echo "Building the XML parser with the address sanitizer ..." >&2
flags="-O1 -g -w -fno-omit-frame-pointer -fsanitize=address,fuzzer-no-link"
flags+=" -finstrument-functions-after-inlining"
step "The XML parser cannot be configured." cmake -G Ninja -S "$base"/source/xerces-c-*/ -B "$base/build" \
  -DCMAKE_BUILD_TYPE=None -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_FLAGS="$flags" \
  -DCMAKE_C_FLAGS="$flags" -DCMAKE_INSTALL_PREFIX="$home" -DCMAKE_INSTALL_LIBDIR=lib -DBUILD_SHARED_LIBS=OFF \
  -Dnetwork=OFF -Dtranscoder=icu -Dmessage-loader=inmemory -Dxmlch-type=char16_t -Dsse2=OFF
step "The XML parser cannot be built." cmake --build "$base/build" --target xerces-c
step "The XML parser cannot be installed into build/parser." cmake --install "$base/build/src"
rm -rf "$base/build" "$base/lists" "$base/cache"
echo "$home"
