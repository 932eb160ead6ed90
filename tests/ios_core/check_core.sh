#!/bin/sh
# The core is portable C++: it includes nothing but itself, the seam's headers and the standard library, and
# uses nothing of the latter that the oldest supported iOS lacks.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
cd "$here/../.."
folders=$(cat cmake/core-folders)

# shellcheck disable=SC2086 # a list of folders
if grep -nE '#include (<[a-z_/]+\.h>|"(platform/[^"]*/|device/|json/|jose/|server/|tool/))' -r $folders; then
  echo "the core may include its own headers, platform/*.h and the standard library" >&2
  exit 1
fi
# shellcheck disable=SC2086 # a list of folders
sources=$(find $folders -name '*.cpp')
if [ -z "$sources" ]; then
  echo "no sources found in $folders" >&2
  exit 1
fi
# shellcheck disable=SC2086 # file names without blanks
exec sh "$here/compile.sh" $sources
