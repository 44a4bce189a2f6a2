#!/usr/bin/env bash
# Builds Meshvane with its tests and runs them all: scripts/test.sh [preset], where the preset is default,
# qt6 or asan.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"

preset=${1-default}
packages=("${PACKAGES_TO_TEST[@]}")
[[ $preset != qt6 ]] || packages+=("${PACKAGES_FOR_QT6[@]}")
install_missing_packages "${packages[@]}"

cd "$root"
echo "Building the program and its tests in build/$preset."
cmake --preset "$preset"
cmake --build --preset "$preset"
echo "Running the tests."
ctest --preset "$preset" --parallel "$(nproc)" --no-label-summary
