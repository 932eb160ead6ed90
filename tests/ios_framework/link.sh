#!/bin/sh
# link.sh FOLDER device|simulator: builds the framework's binary for iOS 10.0 into FOLDER, against the
# declarations and the lists of symbols in sdk/. No SDK of Apple's is needed, and none is imitated beyond what
# the sources use: a use of something else fails here.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
folder=$1
kind=$2
clangxx=${CLANGXX:-clang++}
linker=${LD64_LLD:-$("$clangxx" -print-prog-name=ld64.lld)}
libcxx=${LIBCXX:-$("$clangxx" -print-resource-dir)/../../../include/c++/v1}

case $kind in
  device) triple=arm64-apple-ios10.0 platform=ios oldest=10.0 ;;
  simulator) triple=arm64-apple-ios10.0-simulator platform=ios-simulator oldest=14.0 ;; # the first on arm64
  *) echo "link.sh FOLDER device|simulator" >&2 && exit 2 ;;
esac
case $(uname -m) in
  x86_64) host_architecture=-D__x86_64__ ;;
  *) host_architecture= ;;
esac

version=$(sed -nE 's/^project\(QuorvantisPush VERSION ([0-9]+\.[0-9]+).*/\1/p' "$root/CMakeLists.txt")

mkdir -p "$folder"
rm -f "$folder"/*.o  # of sources that are gone
# shellcheck disable=SC2016,SC2046,SC2086 # the inner shell expands; an empty architecture is no argument
find $(sed "s#^#$root/#" "$root/cmake/core-folders") "$root/platform/ios" "$root/framework" \
    -name '*.mm' -o -name '*.cpp' |
  xargs -P "$(nproc)" -I '{}' sh -c 'object=$1/$(basename "$2").o; shift 2; "$@" -o "$object"' sh \
    "$folder" '{}' "$clangxx" -c '{}' -std=c++20 -target "$triple" -O1 -fno-objc-arc -fblocks \
    -fvisibility=hidden -fvisibility-inlines-hidden -Wall -Wextra -Werror \
    -nostdinc++ -nostdlibinc -isystem "$here/sdk" -isystem "$here/../apple_sdk" \
    -isystem "$here/../ios_core/libcxx" -isystem "$libcxx" -isystem "$here/../ios_core/libc" \
    -isystem "/usr/include/$(g++ -print-multiarch)" -isystem /usr/include \
    -D_GNU_SOURCE "-DQUORVANTIS_VERSION=$version" "-DQUORVANTIS_VERSION_MAJOR=\"${version%.*}\"" $host_architecture -U__nonnull \
    -I "$root" -I "$root/framework/include" -I "$root/platform/ios/declarations"

"$linker" -dylib -arch arm64 -platform_version "$platform" "$oldest" 17.0 \
  -install_name @rpath/QuorvantisPush.framework/QuorvantisPush \
  -exported_symbols_list "$root/framework/exported_symbols.txt" \
  -o "$folder/QuorvantisPush" "$folder"/*.o "$here"/sdk/tbd/*.tbd
