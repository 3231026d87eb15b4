#!/usr/bin/env bash
# Fails when the completion or the man page leaves out an option that --help shows, or completes wrong.
#
#   options.sh PROGRAM SOURCE_ROOT
set -uo pipefail
# shellcheck source=tests/support/own_folder.sh
source "$(dirname "$0")/../support/own_folder.sh"
touch one.lua two.lua part.json
# shellcheck source=completions/tamrel.bash
source "$root/completions/tamrel.bash"
failures=0

fail() {
    echo "$1"
    failures=$((failures + 1))
}

# The words that bash offers at the end of a command line.
offered() {
    COMP_WORDS=("$@")
    COMP_CWORD=$(($# - 1))
    _tamrel
    printf '%s\n' "${COMPREPLY[@]}" | sort | paste -sd' '
}

expect() {
    local expected=$1
    shift
    local found
    found=$(offered "$@")
    [ "$found" = "$expected" ] || fail "\"$*\" offers \"$found\", not \"$expected\""
}

mapfile -t options < <("$program" --help |
    sed -nE '1,/^Where/d; s/^   ((-[A-Za-z])( <[^>]*>)?,  )?(--[a-z_]+).*/\2 \4/p' |
    tr ' ' '\n' | grep -x -e '-.*')
[ ${#options[@]} -gt 20 ] || fail "only ${#options[@]} options found in --help"
page=$(sed 's/\\//g' "$root/docs/tamrel.1")
for option in "${options[@]}"; do
    expect "$option" tamrel "$option"
    grep -qE -e "(^|[ \"])$option([ \",]|$)" <<<"$page" || fail "$option is not in the man page"
done
expect "NESW" tamrel -f N
expect "PBN" tamrel --format PB
expect "one.lua two.lua" tamrel -j 2 ""
expect "part.json" tamrel --merge p
expect "" tamrel --filter S

echo "$failures failures with ${#options[@]} options"
[ "$failures" -eq 0 ]
