#!/usr/bin/env bash
# Fails when a source is not as clang-format leaves it.
set -euo pipefail
cd "$(dirname "$0")/../.."
find src tests benchmarks fuzz -name '*.h' -o -name '*.cpp' | xargs clang-format --dry-run --Werror
