#!/bin/sh
# run.sh BUILD_TREE WORK_FOLDER [CMAKE_ARGUMENT...]: installs the build tree into a prefix of its own, builds
# the host of this folder against what is there, and runs it. With - the host is built against what the system has.
# shellcheck disable=SC2016 # backquotes and what CMake expands
set -eu
here=$(cd "$(dirname "$0")" && pwd)
build_tree=$1
work=$2
shift 2

rm -rf "$work"
mkdir -p "$work/samples"
headers=
if [ "$build_tree" != - ]; then
  cmake --install "$build_tree" --prefix "$work/prefix" >/dev/null
  test -s "$work/prefix/share/doc/QuorvantisPush/LICENSE"
  headers=$work/prefix/include/QuorvantisPush
fi
sample() { sed -n '/^```cpp$/,/^```$/{/^```/d;p}' "$1"; }
sample "$here/../../README.md" >"$work/samples/readme.cpp"
sample "$here/../../docs/cpp-hosts.md" >"$work/samples/news_test.cpp"
cmake -S "$here" -B "$work/host" -G Ninja -DCMAKE_PREFIX_PATH="$work/prefix" -DSAMPLES="$work/samples" \
  -DHEADERS="$headers" "$@"
cmake --build "$work/host"
"$work/host/host" "$work"
test "$("$work/host/readme")" = 000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f
"$work/host/readme_other_order" >/dev/null
"$work/host/news_test"

if [ "$build_tree" = - ]; then exit 0; fi

# As a part of another project the libraries are there, and nothing else is.
mkdir "$work/outer"
printf '%s\n' 'cmake_minimum_required(VERSION 3.25)' 'project(Outer LANGUAGES C CXX)' \
  "add_subdirectory(\"$(cd "$here/../.." && pwd)\" push)" 'add_executable(readme "${SAMPLES}/readme.cpp")' \
  'target_link_libraries(readme PRIVATE QuorvantisPush::core)' >"$work/outer/CMakeLists.txt"
cmake -S "$work/outer" -B "$work/outer/build" -G Ninja -DSAMPLES="$work/samples" "$@" >/dev/null
if ninja -C "$work/outer/build" -t targets all | grep -E '^push/(tool|scenario|lint|report|apns|tests)/.*\.o:'; then
  echo "more than the libraries is built" >&2
  exit 1
fi
