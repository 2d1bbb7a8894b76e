#!/usr/bin/env bash
# Builds the project with its tests against the two platform libraries as if they came from elsewhere, with elements
# added in the parser library's way; tests it, and installs it with another folder for libraries.
# Arguments: sources, libnuvo.so, libqzkivbtcrypto.so.
set -euo pipefail
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cp "$2" "$3" "$scratch"
cmake -G Ninja -S "$1" -B "$scratch/build" -DCMAKE_CXX_FLAGS=-O0 -DCMAKE_INSTALL_LIBDIR=lib/deep -DQZJEXXML_PLAIN_ELEMENTS=OFF \
  -DNUVO_LIBRARY="$scratch/${2##*/}" -DKIVBTCRYPTO_LIBRARY="$scratch/${3##*/}" >/dev/null
cmake --build "$scratch/build" >/dev/null
"$scratch/build/tests/library_test" --gtest_filter='ManifestLoad.*' >/dev/null
"$scratch/build/tests/internals_test" >/dev/null
cmake --install "$scratch/build" --prefix "$scratch/installed" >/dev/null
"$scratch/installed/bin/qzjexxml" manifest "$1/examples/manifest.xml" | grep -q 'TABULA_VAR'
export PKG_CONFIG_LIBDIR=$scratch/installed/lib/deep/pkgconfig
[ -e "$(pkg-config --variable=includedir qzjexxml)/qzjexxml/qzjexxml.h" ]
[ -e "$(pkg-config --variable=libdir qzjexxml)/libqzjexxml.so" ]
