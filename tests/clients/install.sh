#!/bin/sh
# install.sh python|node MODULE FOLDER: installs the module into FOLDER as its user would, without a network. Where Node
# came without npm, as Debian's package does, the module is laid where npm lays it.
set -eu
mkdir -p "$3"
cd "$3"
case $1 in
  python)
    /usr/bin/python3 -m venv --clear --system-site-packages .
    PYTHONDONTWRITEBYTECODE=1 bin/pip install --quiet --no-index --disable-pip-version-check "$2"
    ;;
  node)
    rm -rf node_modules package-lock.json
    echo '{ "private": true, "type": "module" }' >package.json
    if command -v npm >/dev/null; then
      npm install --silent --offline --no-audit --no-fund --install-links "$2"
    else
      mkdir node_modules
      cp -R "$2" node_modules/quorvantis-push
    fi
    ;;
esac
