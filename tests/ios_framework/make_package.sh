#!/bin/sh
# make_package.sh FOLDER: packaging/make-xcframework with stand-ins for what only a Mac has: what it refuses before
# it builds anything, and what it leaves to be published.
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
stand_in dsymutil 'mkdir -p "$3"'
stand_in strip ''
stand_in xcodebuild 'for output; do :; done; mkdir -p "$output"'
stand_in cmake 'case $1 in
  --version) echo "cmake version ${CMAKE_STAND_IN:-3.31.2}" ;;
  --preset) mkdir -p "build/$2/packaging/QuorvantisPush.framework"; echo "$@" >>"$LOG" ;;
esac'
export LOG="$folder/log"
PATH=$folder/bin:$PATH
make=$folder/source/packaging/make-xcframework

refuses() {
  if "$make" "$folder/device" "$folder/simulator" "$2" 2>"$folder/said" >/dev/null; then
    echo "it does not refuse: $1" >&2 && exit 1
  fi
  if [ "$(wc -l <"$folder/said")" != 1 ] || ! grep -q "$1" "$folder/said" || [ -e "$LOG" ]; then
    echo "it says: $(cat "$folder/said")" >&2 && exit 1
  fi
}
refuses "holds no QuorvantisRegister.framework" 15.0
for platform in device simulator; do
  mkdir -p "$folder/$platform/QuorvantisRegister.framework" "$folder/$platform/QuorvantisUtils.framework"
done
refuses "no version of iOS" eleven
(export CMAKE_STAND_IN=3.9.1 && refuses "older than 3.25" 15.0)

"$make" "$folder/device" "$folder/simulator" 16.4
cd "$folder/source/build"
grep -q -- "--preset ios-simulator .*DEPLOYMENT_TARGET=16.4" "$LOG"
grep -qF '.iOS("16.4")' QuorvantisPush/Package.swift
grep -qF "spec.platform = :ios, '16.4'" QuorvantisPush/QuorvantisPush.podspec
if grep -r @ QuorvantisPush/*.podspec; then exit 1; fi
unzip -Z1 QuorvantisPush-1.0.zip | grep -E '^[^/]+/?$' | sort >"$folder/published"
printf '%s\n' LICENSE Package.swift QuorvantisPush.podspec QuorvantisPush.xcframework/ \
  QuorvantisRegister.xcframework/ QuorvantisUtils.xcframework/ | diff - "$folder/published"
