# Begins a test of the finished program, which is called with PROGRAM and SOURCE_ROOT in front: these
# as full paths, the C locale, and a folder of its own, in which the rest of the test runs.
#
# To be sourced, with the paths behind these two made full before.
# shellcheck shell=bash
program=$(realpath "$1")
root=$(realpath "$2")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir "$folder/run"
cd "$folder/run" || exit 1

unset LANGUAGE LANG
export LC_ALL=C
