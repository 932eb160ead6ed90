#!/bin/sh
# run.sh BUILD_TREE WORK_FOLDER [CMAKE_ARGUMENT...]: installs the build tree into a prefix of its own, builds
# the host of this folder against what is there, and runs it.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
build_tree=$1
work=$2
shift 2

rm -rf "$work"
cmake --install "$build_tree" --prefix "$work/prefix" >/dev/null
cmake -S "$here" -B "$work/host" -G Ninja -DCMAKE_PREFIX_PATH="$work/prefix" "$@"
cmake --build "$work/host"
"$work/host/host" "$work"
