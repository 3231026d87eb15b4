#!/usr/bin/env bash
# Replays a transcript of the finished program and compares what happens with what it says.
#
#   transcript.sh PROGRAM SOURCE_ROOT TRANSCRIPT [--update]
#
# A line "$ command" is run by bash in a folder of its own, with the C locale. The lines behind it are
# what the command prints on standard output, then its standard error with "! " in front, then its
# status in brackets if it is not 0. "#" begins a comment. The processor time is written TIME and not a
# number "nan", whatever its sign. With --update the transcript is rewritten to what happens now.
set -uo pipefail

transcript=$(realpath "$3")
# shellcheck source=tests/support/own_folder.sh
source "$(dirname "$0")/../support/own_folder.sh"
# A path of the same length everywhere: usage texts are wrapped around it.
ln -s "$program" ../tamrel
ln -s "$(dirname "$program")/i18n" ../i18n

# --- what a transcript's commands may call ---

examples=$root/examples

tamrel() { ../tamrel "$@"; }

# Writes its argument to script.lua, a line each.
script() { printf '%s\n' "$@" >script.lua; }

# Ends the test as skipped when the machine does not know a locale.
need_locale() {
    locale -a | grep -ix "${1/UTF-8/utf8}" >/dev/null || touch "$folder/skip"
}

# Ends the test as skipped where no terminal can be made, as in a bare container.
need_terminal() {
    command script -qec true /dev/null >/dev/null 2>&1 || touch "$folder/skip"
}

# All 52 cards: every deal is this one.
deal="-N AKQJ.T98.765.432 -E T98.AKQJ.432.765 -S 765.432.AKQJ.T98 -W 432.765.T98.AKQJ"

# --- the replay ---

tidy() {
    sed -E -e 's|\.\./tamrel|tamrel|g' -e 's/: [0-9]+\.[0-9]{2} \(x/: TIME (x/' -e 's/-nan/nan/g'
}

replay() {
    local line status
    while IFS= read -r line; do
        case $line in
            "#"*) printf '%s\n' "$line" ;;
            *)
                printf '%s\n' "$line"
                (eval "${line#$ }") >"$folder/out" 2>"$folder/err" </dev/null
                status=$?
                tidy <"$folder/out"
                tidy <"$folder/err" | sed 's/^/! /'
                [ "$status" -eq 0 ] || printf '[%d]\n' "$status"
                ;;
        esac
    done
}

# What is replayed: every other line is expected output.
commands() { grep -E '^(\$ |#)' "$transcript"; }

commands | replay >"$folder/now"
if [ -e "$folder/skip" ]; then
    echo "skipped: this machine lacks a locale (package locales-all) or a terminal that it needs"
    exit 77
fi
if [ "${4:-}" = --update ]; then
    cp "$folder/now" "$transcript"
else
    diff -u "$transcript" "$folder/now"
fi
