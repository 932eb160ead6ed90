#!/bin/sh
# compile.sh FILE...: compiles C++ files for the oldest iOS that the library supports.
#
# libc++ says of each of its parts from which iOS on the phone's own copy has it; using a newer part is an
# error here, as it is in Xcode. There is no Apple SDK on Linux: the C headers are the host's, made to fit an
# Apple target. The environment may name the compiler (CLANGXX), the folder of libc++'s headers (LIBCXX) and
# more flags (EXTRA_FLAGS), and have objects made (MODE=-c).
set -eu
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
clangxx=${CLANGXX:-clang++}
libcxx=${LIBCXX:-$("$clangxx" -print-resource-dir)/../../../include/c++/v1}

if [ ! -e "$libcxx/version" ]; then
  echo "libc++'s headers are not in $libcxx; scripts/setup installs them" >&2
  exit 1
fi

# glibc picks its word size by the host's architecture, and has a macro of the name of clang's __nonnull.
case $(uname -m) in
  x86_64) host_architecture=-D__x86_64__ ;;
  *) host_architecture= ;;
esac

# shellcheck disable=SC2086 # EXTRA_FLAGS is a list, and an empty architecture no argument
printf '%s\n' "$@" | xargs -P "$(nproc)" -I '{}' \
  "$clangxx" "${MODE:--fsyntax-only}" -std=c++20 -target arm64-apple-ios10.0 -Wall -Wextra -Werror ${EXTRA_FLAGS:-} \
  -nostdinc++ -nostdlibinc -isystem "$here/libcxx" -isystem "$libcxx" -isystem "$here/libc" \
  -isystem "/usr/include/$(g++ -print-multiarch)" -isystem /usr/include \
  -D_GNU_SOURCE $host_architecture -U__nonnull -I "$root" '{}'
