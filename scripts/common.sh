# Sourced by the scripts beside it: strict mode, the repository as current folder, and the steps they share.
# shellcheck shell=bash
set -euo pipefail
export PATH="${PATH:-/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin}"
cd -P -- "$(dirname -- "${BASH_SOURCE[0]}")/.."

say() { printf '== %s\n' "$*"; }
fail() { printf '%s: %s\n' "${0##*/}" "$*" >&2; exit 1; }

# step TITLE COMMAND... says what is done and how long it took.
step() {
    local title=$1 start=$SECONDS
    shift
    say "$title"
    "$@"
    say "$title: $((SECONDS - start)) s"
}

# configured PRESET: build/PRESET was made here, in this very folder; a copied or moved tree starts anew.
configured() {
    [ -f "build/$1/build.ninja" ] && grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$PWD" "build/$1/CMakeCache.txt"
}

# build PRESET [OPTION...] configures once (ninja repeats that by itself when needed), then builds.
build() {
    local preset=$1
    shift
    configured "$preset" || step "configure build/$preset" cmake --preset "$preset" --fresh
    step "build build/$preset" cmake --build --preset "$preset" "$@"
}

run_tests() { ctest --preset "$1" --parallel "$(nproc)"; }
