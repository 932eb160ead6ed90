#!/bin/sh
# core_size.sh CORE.a: the bytes of code and data of the core as one stripped object of this machine, and of its
# objects for the oldest iOS that the library supports. One line for each: bytes and name.
set -eu
archive=$1
root=$(cd "$(dirname "$0")/.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

ld -r --whole-archive "$archive" -o "$scratch/core.o"
strip --strip-unneeded "$scratch/core.o"
size --format=berkeley "$scratch/core.o" | awk 'NR == 2 {print $1 + $2 + $3, "core size: this machine"}'

cd "$root"
# shellcheck disable=SC2013 # names without blanks
for source in $(for folder in $(cat cmake/core-folders); do echo "$folder"/*.cpp; done); do
  MODE=-c EXTRA_FLAGS="-O2 -fvisibility=hidden -fvisibility-inlines-hidden -o $scratch/$(basename "$source" .cpp).ios.o" \
    tests/ios_core/compile.sh "$source"
done
llvm-size --format=berkeley "$scratch"/*.ios.o |
  awk 'NR > 1 {bytes += $1 + $2} END {print bytes, "core size: arm64-apple-ios10.0"}'
