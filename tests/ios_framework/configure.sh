#!/bin/sh
# configure.sh FOLDER: configures the framework's own build, as the preset `ios` does on a Mac, with an empty
# SDK: as far as it goes without Xcode. The framework's parts must be where a phone looks for them.
set -eu
root=$(cd "$(dirname "$0")/../.." && pwd)
folder=$1

# configure_for SDK PLATFORM: leaves its build in $folder/PLATFORM.
configure_for() {
  build=$folder/$2
  mkdir -p "$folder/$1"
  cmake -S "$root" -B "$build" -G Ninja -DCMAKE_SYSTEM_NAME=iOS -DCMAKE_OSX_SYSROOT="$folder/$1" \
    -DCMAKE_OSX_ARCHITECTURES=arm64 -DCMAKE_OSX_DEPLOYMENT_TARGET=10.0 \
    -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_INSTALL_NAME_TOOL=/bin/true \
    -DCMAKE_C_COMPILER_WORKS=1 -DCMAKE_CXX_COMPILER_WORKS=1 -DCMAKE_OBJCXX_COMPILER_WORKS=1 \
    -DQUORVANTIS_MAKER_FRAMEWORKS="$folder/maker"
  for value in com.quorvantis.QuorvantisPush 10.0 1.0 "$2"; do
    grep -q "<string>$value</string>" "$build/packaging/QuorvantisPush.framework/Info.plist" ||
      { echo "the framework's Info.plist does not say $value" >&2 && exit 1; }
  done
}

rm -rf "$folder"
mkdir -p "$folder/maker"
configure_for iPhoneSimulator17.0.sdk iPhoneSimulator
configure_for iPhoneOS17.0.sdk iPhoneOS

for part in Headers/QuorvantisPush.h Headers/Push.h Headers/PushRequestData.h Headers/PushDelegate.h \
  Headers/QuorvantisPushDefines.h Modules/module.modulemap PrivacyInfo.xcprivacy QuorvantisPush; do
  grep -Eq "^build packaging/QuorvantisPush.framework/+$part:" "$build/build.ninja" ||
    { echo "the framework has no $part" >&2 && exit 1; }
done
if grep -E 'FLAGS = .*-fno-objc-arc' "$build/build.ninja" | grep -v -- '-fvisibility=hidden'; then
  echo "Objective-C++ is compiled with other flags than C++" >&2 && exit 1
fi
