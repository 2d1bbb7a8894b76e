#!/usr/bin/env bash
# Builds the library into another project with three lines, its platform libraries named as if they came from elsewhere, its
# sources joined (which is quick): what is built and installed, and that it works. Then installs it with a folder of the project's own for libraries. Arguments: sources, libnuvo.so, libqzkivbtcrypto.so, the program of the library's tests.
set -euo pipefail
source=$1 nuvo=$2 crypto=$3 library_test=$4
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cp "$nuvo" "$crypto" "$scratch"
cat >"$scratch/CMakeLists.txt" <<END
cmake_minimum_required(VERSION 3.25)
project(parent LANGUAGES CXX)
add_executable(app $source/examples/consumer/consumer.cpp)
add_subdirectory($source library)
target_link_libraries(app PRIVATE qzjexxml::qzjexxml)
END
build() {
  cmake -G Ninja -S "$scratch" -B "$scratch/build" -DCMAKE_CXX_FLAGS=-O0 -DCMAKE_UNITY_BUILD=ON \
    -DNUVO_LIBRARY="$scratch/${nuvo##*/}" -DKIVBTCRYPTO_LIBRARY="$scratch/${crypto##*/}" "$@" >/dev/null
  cmake --build "$scratch/build" >"$scratch/log" || { cat "$scratch/log"; exit 1; }
}
build
"$scratch/build/app" "$source/examples/manifest.xml" | grep -q 'TABULA_VAR'
LD_LIBRARY_PATH=$scratch/build/library/src "$library_test" --gtest_filter='ManifestLoad.*' >/dev/null
cmake --install "$scratch/build" --prefix "$scratch/nothing" >/dev/null
[ ! -e "$scratch/nothing" ]
diff <(find "$scratch/build" -type f -executable -not -path '*/CMakeFiles/*' -printf '%f\n' | sort) - <<<'app
libqzjexxml.so'
diff <(grep -E '^(BUILD_|CMAKE_INSTALL_LIBDIR|[A-Za-z0-9_]*(GTest|CLI11|json|UTF8|SODIUM|BSD))' "$scratch/build/CMakeCache.txt") /dev/null

build -DQZJEXXML_INSTALL=ON -DCMAKE_INSTALL_LIBDIR=lib/deep
cmake --install "$scratch/build" --prefix "$scratch/installed" >/dev/null
export PKG_CONFIG_LIBDIR=$scratch/installed/lib/deep/pkgconfig
[ -e "$(pkg-config --variable=includedir qzjexxml)/qzjexxml/qzjexxml.h" ]
[ -e "$(pkg-config --variable=libdir qzjexxml)/libqzjexxml.so" ]
