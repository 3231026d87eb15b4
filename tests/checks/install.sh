#!/usr/bin/env bash
# Installs into an empty folder and starts the program by its bare name, as a user does: it must run,
# and find its catalogues.
set -euo pipefail
cmake=$1 build=$2
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT

"$cmake" --install "$build" --prefix "$prefix" >/dev/null
PATH=$prefix/bin:$PATH
cd "$prefix"
test -f share/man/man1/tamrel.1
test -f share/bash-completion/completions/tamrel
LC_ALL=C tamrel -n 1 -f none | grep '^Number of hands dealt' >/dev/null
if locale -a | grep -ix de_DE.utf8 >/dev/null; then
    LC_ALL=de_DE.UTF-8 tamrel -n 1 -f none | grep '^Zahl der ausgeteilten' >/dev/null
else
    echo "not checked: the locale de_DE.UTF-8 is not installed (package locales-all)"
fi
