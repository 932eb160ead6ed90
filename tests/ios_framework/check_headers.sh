#!/bin/sh
# check_headers.sh FOLDER: each public header compiles alone, as Objective-C and as Objective-C++, with all
# warnings on, and so does the module. FOLDER is for the module's files.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
headers=$here/../../framework/include/QuorvantisPush
framework=$1/QuorvantisPush.framework
clang=${CLANG:-clang}

# What -Weverything warns of by taste, and the fields that the class must have in its interface.
quiet="-Wno-c++98-compat -Wno-c++98-compat-pedantic -Wno-objc-interface-ivars -Wno-padded"

compile() {
  # shellcheck disable=SC2086 # a list
  "$clang" -fsyntax-only -target arm64-apple-ios10.0 -Weverything -Werror $quiet -nostdlibinc \
    -isystem "$here/sdk" -isystem "$here/../apple_sdk" "$@"
}

for header in "$headers"/*.h; do
  compile -x objective-c -I "$headers/.." -include "$header" /dev/null
  compile -x objective-c++ -std=c++11 -I "$headers/.." -include "$header" /dev/null
done

rm -rf "$framework"
mkdir -p "$framework/Headers" "$framework/Modules"
cp "$headers"/*.h "$framework/Headers"
cp "$headers/../../module.modulemap" "$framework/Modules"
echo '@import QuorvantisPush; Push *push(void); Push *push(void) { return [Push shared]; }' >"$1/import.m"
compile -fmodules -fmodules-cache-path="$1/modules" -Wno-non-modular-include-in-framework-module -F "$1" "$1/import.m"

# What comes on other threads than the main one is not the main actor's: five of Push, three of its delegate. The
# delegate's other two are.
"$clang" -fsyntax-only -target arm64-apple-ios15.0 -nostdlibinc -isystem "$here/sdk" -isystem "$here/../apple_sdk" \
  -I "$headers/.." -x objective-c -Xclang -ast-dump -include QuorvantisPush/QuorvantisPush.h /dev/null >"$1/syntax"
marked() {
  awk '/ObjC(Method|Interface|Protocol)Decl/ {method = $0} /SwiftAttrAttr.*"'"$1"'"/ {print method}' "$2" |
    grep -oE '[-+] (shared|registerFinish|on[A-Z][A-Za-z]*:) ' | sort | uniq -c | tr -s ' \n' ' '
}
expect() {
  if [ "$2" != "$3" ]; then echo "marked $1 for Swift are$2" >&2 && exit 1; fi
}
expect nonisolated "$(marked nonisolated "$1/syntax")" \
  ' 1 + shared 2 - onError: 2 - onRegisterToken: 2 - onUpdateToken: 1 - registerFinish '
expect @MainActor "$(marked @MainActor "$1/syntax")" ' 1 - onGetToken: 1 - onReceiveNotification: '

if grep -hvE '^ *///' "$headers"/*.h |
  grep -E '(^|[^@])\b(class|template|namespace)\b|::|#(include|import) <[a-z_]+>'; then
  echo "a public header shows C++" >&2
  exit 1
fi

# The sample host of the documentation.
for source in "$here"/../../docs/sample-host/*.m "$here"/../../docs/sample-host/parts/*.m; do
  compile -Wno-unused-parameter -Wno-unused-function -Wno-direct-ivar-access -Wno-declaration-after-statement -Wno-objc-messaging-id -Wno-strict-selector-match -I "$headers/.." "$source"
done
