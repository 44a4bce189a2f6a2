#!/usr/bin/env bash
# Builds the benchmarks and runs them: scripts/bench.sh [largest number of facets]
# The largest mesh there can be, 42949671 facets, wants 27 GB of disc and a quarter of an hour; the default is a million.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"
# shellcheck source=scripts/lib/virtual-display.sh
source "$root/scripts/lib/virtual-display.sh"

install_missing_packages "${PACKAGES_TO_BENCHMARK[@]}"
cd "$root"
cmake --preset bench
cmake --build --preset bench
programs=$root/build/bench/benchmarks

section() { printf '\n## %s\n\n' "$1"; }

section "Number kernels"
"$programs/bench_NumberText"
section "The whole road"
"$programs/bench_Road"
section "Growth"
"$programs/bench_Growth" "${1-1000000}"
section "Through the window"
"$programs/bench_Window"
section "Start-up"
folder=$(mktemp -d)
trap 'stop_virtual_display; rm -rf "$folder"' EXIT
start_virtual_display "$folder"
echo "As a desktop starts it:"
env --unset=QT_XCB_GL_INTEGRATION "$programs/bench_StartUp"
echo
echo "Without the OpenGL libraries, which Qt loads for every program and no window here uses:"
"$programs/bench_StartUp"
