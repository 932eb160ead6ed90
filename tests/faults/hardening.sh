#!/bin/bash
# hardening.sh PROGRAM: the program is as hard to break into as a release build is to be.
set -euo pipefail
program=$1

fail() {
  echo "$program: $1" >&2
  exit 1
}

# holds FILE-PART PATTERN WHAT: `readelf FILE-PART` has a line that matches.
holds() {
  LC_ALL=C readelf --wide "$1" "$program" | grep -E -- "$2" >/dev/null || fail "$3"
}

holds --file-header 'Type: +DYN .Position-Independent Executable' 'is not position-independent'
holds --program-headers 'GNU_RELRO' 'leaves its relocations writable'
holds --dynamic 'FLAGS.* (BIND_)?NOW' 'binds its symbols late'
holds --program-headers 'GNU_STACK.* RW +0x' 'has an executable stack'
holds --dyn-syms '__stack_chk_fail' 'has no stack protector'
holds --dyn-syms '__[a-z]+_chk(@|$)' 'is not fortified'
holds --dyn-syms '__glibcxx_assert_fail' "does not check the C++ library's preconditions"
if LC_ALL=C readelf --wide --dynamic "$program" | grep -E 'R(UN)?PATH.*(\[|:)(\.|/tmp|:|\])' >/dev/null; then
  fail 'looks for libraries in a folder that others can write to'
fi
