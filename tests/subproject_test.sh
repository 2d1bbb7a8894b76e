#!/usr/bin/env bash
# Adds the library to another project as a subdirectory and checks what is built and installed. The project uses C++23 and
# gives the files of the platform libraries. A unity build saves time.
# Arguments: source directory, libnuvo.so, libqzkivbtcrypto.so, and the test program of the library.
set -euo pipefail
source=$1 nuvo=$2 crypto=$3 library_test=$4
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cp "$nuvo" "$crypto" "$scratch"
cat >"$scratch/CMakeLists.txt" <<END
cmake_minimum_required(VERSION 3.25)
project(parent LANGUAGES CXX)
set(CMAKE_CXX_STANDARD 23)
add_executable(app $source/examples/consumer/consumer.cpp)
add_subdirectory($source library)
target_link_libraries(app PRIVATE qzjexxml::qzjexxml)
END
configure() {
  cmake -G Ninja -S "$scratch" -B "$scratch/build" -DCMAKE_CXX_FLAGS=-O0 \
    -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=0 \
    -DNUVO_LIBRARY="$scratch/${nuvo##*/}" -DKIVBTCRYPTO_LIBRARY="$scratch/${crypto##*/}" "$@" 2>&1
}
configure >/dev/null
cmake --install "$scratch/build" --prefix "$scratch/nothing" >/dev/null
[ ! -e "$scratch/nothing" ]

# The project chooses its library directory.
configure -DQZJEXXML_INSTALL=ON -DCMAKE_INSTALL_LIBDIR=lib/deep >/dev/null
cmake --build "$scratch/build" >"$scratch/log" || { cat "$scratch/log"; exit 1; }
"$scratch/build/app" "$source/examples/manifest.xml" | grep -q 'TABULA_VAR'
LD_LIBRARY_PATH=$scratch/build/library/src "$library_test" --gtest_filter='ManifestLoad.*' >/dev/null
diff <(find "$scratch/build" -type f -executable -not -path '*/CMakeFiles/*' -printf '%f\n' | sort) - <<<'app
libqzjexxml.so'
diff <(grep -E '^(BUILD_|CMAKE_BUILD_TYPE:.*=.|[A-Za-z0-9_]*(GTest|CLI11|json|UTF8|SODIUM|BSD))' "$scratch/build/CMakeCache.txt") /dev/null
cmake --install "$scratch/build" --prefix "$scratch/installed" >/dev/null
export PKG_CONFIG_LIBDIR=$scratch/installed/lib/deep/pkgconfig
[ -e "$(pkg-config --variable=includedir qzjexxml)/qzjexxml/qzjexxml.h" ]
[ -e "$(pkg-config --variable=libdir qzjexxml)/libqzjexxml.so" ]

for variable in NUVO_LIBRARY KIVBTCRYPTO_LIBRARY; do
  grep -q "$variable is not a library: $scratch/none.so" < <(configure -D$variable="$scratch/none.so")
done
