#!/usr/bin/env bash
# Fails when clang-tidy finds something to complain about; the build folder tells how files are compiled,
# with a few options that only the compiler of the build knows.
set -euo pipefail
build=$1
cd "$(dirname "$0")/../.."
find src tests benchmarks fuzz -name '*.cpp' |
    xargs -P "$(nproc)" -n 1 clang-tidy -p "$build" --quiet \
        --extra-arg=-Wno-unused-command-line-argument 2> >(grep -v 'warnings generated' >&2)
