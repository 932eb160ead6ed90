#!/bin/sh
# make_package.sh FOLDER: packaging/make-xcframework with stand-ins for what only a Mac has, and LLVM's tools for
# Apple's of the same work: what it refuses before it builds anything, and what it leaves to be published, at a second
# run, too.
# shellcheck disable=SC2016 # what the stand-ins expand
set -eu
root=$(cd "$(dirname "$0")/../.." && pwd)
folder=$1
rm -rf "$folder"
mkdir -p "$folder/bin" "$folder/source"
cp -R "$root/packaging" "$root/LICENSE" "$root/CMakeLists.txt" "$folder/source"

stand_in() {
  printf '#!/bin/sh\n%s\n' "$2" >"$folder/bin/$1"
  chmod +x "$folder/bin/$1"
}
stand_in uname 'echo Darwin'
stand_in ninja ''
for tool in dsymutil llvm-dwarfdump llvm-lipo llvm-otool llvm-strip; do
  ln -s "$(${CLANG:-clang} -print-prog-name=$tool)" "$folder/bin/${tool#llvm-}"
done
stand_in xcodebuild 'for output; do :; done
mkdir -p "$output"
[ "${output##*/}" != QuorvantisPush.xcframework ] || echo "$@" >"$output/made-of"'
# Like Ninja, it makes only what is not there.
stand_in cmake 'case $1 in
  --version) echo "cmake version ${CMAKE_STAND_IN:-3.31.2}" ;;
  --preset) echo "$@" >>"$LOG" ;;
  --build)
    framework=build/$3/packaging/QuorvantisPush.framework
    mkdir -p "$framework"
    [ -e "$framework/QuorvantisPush" ] || cp "$BINARIES/$3" "$framework/QuorvantisPush" ;;
esac'

# binary NAME ARCHITECTURE PLATFORM: a dynamic library with debug symbols.
binary() {
  triple=$2-apple-ios15.0$([ "$3" = ios ] || echo -simulator)
  "${CLANG:-clang}" -g -target "$triple" -c "$folder/source.c" -o "$folder/binaries/$1.o"
  "$(${CLANG:-clang} -print-prog-name=ld64.lld)" -dylib -arch "$2" -platform_version "$3" 15.0 17.0 \
    -install_name "@rpath/$1" -undefined dynamic_lookup -o "$folder/binaries/$1" "$folder/binaries/$1.o"
}
mkdir "$folder/binaries"
echo 'int number(void) { return 1; }' >"$folder/source.c"
binary ios arm64 ios
binary simulator-arm64 arm64 ios-simulator
binary simulator-x86_64 x86_64 ios-simulator
"$folder/bin/lipo" -create "$folder/binaries/simulator-arm64" "$folder/binaries/simulator-x86_64" \
  -output "$folder/binaries/ios-simulator"
"$folder/bin/lipo" -create "$folder/binaries/ios" "$folder/binaries/simulator-x86_64" -output "$folder/binaries/mixed"
"$(${CLANG:-clang} -print-prog-name=llvm-ar)" rc "$folder/binaries/static" "$folder/binaries/ios.o"
export BINARIES="$folder/binaries"
export LOG="$folder/log"
PATH=$folder/bin:$PATH
make=$folder/source/packaging/make-xcframework

# refuses WORDS [ARGUMENT...]: in one line, before anything is built.
refuses() {
  words=$1
  shift
  if "$make" "$folder/device" "$folder/simulator" "$@" 2>"$folder/said" >/dev/null; then
    echo "it does not refuse: $words" >&2 && exit 1
  fi
  if [ "$(wc -l <"$folder/said")" != 1 ] || ! grep -q "$words" "$folder/said" || [ -e "$LOG" ]; then
    echo "in place of $words it says: $(cat "$folder/said")" >&2 && exit 1
  fi
}
# makers PLATFORM BINARY: the maker's two frameworks.
makers() {
  for name in QuorvantisRegister QuorvantisUtils; do
    mkdir -p "$folder/$1/$name.framework"
    cp "$BINARIES/$2" "$folder/$1/$name.framework/$name"
  done
}
refuses "holds no QuorvantisRegister.framework" 15.0
makers device ios
makers simulator ios-simulator
refuses "no version of iOS" eleven
(export CMAKE_STAND_IN=3.9.1 && refuses "older than 3.25" 15.0)
makers device static
refuses "is no dynamic library"
makers device mixed
refuses "holds the simulator's x86_64, too"
makers device simulator-arm64
refuses "is not for phones"
makers device ios
makers simulator ios
refuses "is not for the simulator" 15.0 arm64
makers simulator simulator-arm64
refuses "has no x86_64, only arm64"
makers simulator ios-simulator
rm "$folder/device/QuorvantisUtils.framework/QuorvantisUtils"
refuses "holds no QuorvantisUtils"
makers device ios

cd "$folder/source"
for run in first second; do
  "$make" "$folder/device" "$folder/simulator" 16.4 >/dev/null
  for preset in ios ios-simulator; do
    framework=build/xcframework/$preset/QuorvantisPush.framework
    grep -q -- "-framework $PWD/$framework -debug-symbols $PWD/$framework.dSYM" build/QuorvantisPush/*/made-of
    dwarfdump --debug-info "$framework.dSYM" | grep -q DW_TAG_compile_unit ||
      { echo "no debug symbols, $run run" >&2 && exit 1; }
    if dsymutil --dump-debug-map "$framework/QuorvantisPush" | grep symbols:; then
      echo "$framework is not stripped" >&2 && exit 1
    fi
  done
done
"$folder/bin/strip" -x build/ios/packaging/QuorvantisPush.framework/QuorvantisPush
if "$make" "$folder/device" "$folder/simulator" >/dev/null 2>"$folder/said"; then
  echo "it publishes empty debug symbols" >&2 && exit 1
fi
grep -q "has no debug symbols; remove build/ios " "$folder/said"
rm -r build/ios
"$make" "$folder/device" "$folder/simulator" 16.4 arm64 >/dev/null
grep -q -- '--preset ios-simulator .*OSX_ARCHITECTURES=arm64$' "$LOG"
cd build
grep -q -- "--preset ios-simulator .*DEPLOYMENT_TARGET=16.4 .*OSX_ARCHITECTURES=arm64;x86_64" "$LOG"
grep -qF '.iOS("16.4")' QuorvantisPush/Package.swift
grep -qF "spec.platform = :ios, '16.4'" QuorvantisPush/QuorvantisPush.podspec
if grep -r @ QuorvantisPush/*.podspec; then exit 1; fi
unzip -Z1 QuorvantisPush-1.0.zip | grep -E '^[^/]+/?$' | sort >"$folder/published"
printf '%s\n' LICENSE Package.swift QuorvantisPush.podspec QuorvantisPush.xcframework/ \
  QuorvantisRegister.xcframework/ QuorvantisUtils.xcframework/ | diff - "$folder/published"
