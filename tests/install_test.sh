#!/usr/bin/env bash
# Installs a build and moves the installation. Builds and runs a consumer of it, with CMake and with pkg-config.
# Compiles the consumer in each C++ standard that programs use, also with clang if it is installed. Arguments: build
# directory, source directory, library directory, compiler, compiler flags as one word, toolchain file or an empty word,
# and the words of a command that runs a program.
set -euo pipefail
build=$1 source=$2 libraries=$3 compiler=$4 flags=$5 toolchain=$6
shift 6
runner=("$@")
run() { "${runner[@]}" "$@"; }
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cmake --install "$build" --prefix "$scratch/first" >/dev/null
prefix=$scratch/moved
mv "$scratch/first" "$prefix"
for file in man/man1/qzjexxml.1 man/man3/qzjexxml.3 qzjexxml/manifest.xsd doc/qzjexxml/NEWS.md \
  doc/qzjexxml/docs/diagnostics.md doc/qzjexxml/examples/consumer/consumer.cpp \
  bash-completion/completions/qzjexxml zsh/site-functions/_qzjexxml fish/vendor_completions.d/qzjexxml.fish; do
  [ -f "$prefix/share/$file" ]
done

run "$prefix/bin/qzjexxml" manifest "$source/examples/manifest.xml" | grep -q 'TABULA_VAR .*= /var/lib/tabula'

cmake -G Ninja -S "$source/examples/consumer" -B "$scratch/consumer" -Dqzjexxml_DIR="$prefix/$libraries/cmake/qzjexxml" \
  ${toolchain:+-DCMAKE_TOOLCHAIN_FILE="$toolchain"} -DCMAKE_CXX_FLAGS="$flags" >/dev/null
cmake --build "$scratch/consumer" >/dev/null
export PKG_CONFIG_LIBDIR=$prefix/$libraries/pkgconfig
run "$prefix/bin/qzjexxml" --version | grep -q "^qzjexxml $(pkg-config --variable=release qzjexxml)[ ,]"
compilers=("$compiler $flags")
if [ -z "$toolchain" ] && command -v clang++ >/dev/null; then compilers+=(clang++); fi
for used in "${compilers[@]}"; do
  for standard in 17 20 2b; do
    # shellcheck disable=SC2046,SC2086
    $used -std=c++$standard -fsyntax-only -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror \
      $(pkg-config --cflags qzjexxml) "$source/examples/consumer/consumer.cpp"
  done
done
# shellcheck disable=SC2046,SC2086
"$compiler" $flags -std=c++17 "$source/examples/consumer/consumer.cpp" -o "$scratch/by-pkg-config" \
  $(pkg-config --cflags --libs qzjexxml) -Wl,-rpath,"$prefix/$libraries"
# A program that was compiled before the last field of the record was appended.
cp -r "$source/include" "$scratch/before"
sed -i '/reservedStrings/d' "$scratch/before/qzjexxml/kiv_data.h"
# shellcheck disable=SC2046,SC2086
"$compiler" $flags -std=c++17 -I"$scratch/before" "$source/examples/consumer/consumer.cpp" -o "$scratch/older" \
  $(pkg-config --libs qzjexxml) -Wl,-rpath,"$prefix/$libraries"
for consumer in "$scratch/consumer/consumer" "$scratch/by-pkg-config" "$scratch/older"; do
  run "$consumer" "$source/examples/manifest.xml" | grep -q 'TABULA_VAR = /var/lib/tabula'
  { run "$consumer" nowhere.xml 2>&1 || true; } | grep -q '^nowhere.xml: Could not open file: nowhere.xml'
done
