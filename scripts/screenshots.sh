#!/usr/bin/env bash
# Takes the pictures of the documentation anew: scripts/screenshots.sh [program]
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"
# shellcheck source=scripts/lib/virtual-display.sh
source "$root/scripts/lib/virtual-display.sh"
# shellcheck source=scripts/lib/meshvane-window.sh
source "$root/scripts/lib/meshvane-window.sh"

install_missing_packages "${PACKAGES_FOR_A_VIRTUAL_DISPLAY[@]}"

program=$(realpath "${1-$root/build/release/app/meshvane}")
folder=$(mktemp -d)
finish() {
    stop_virtual_display
    rm -rf "$folder"
}
trap finish EXIT

cp "$root/examples/bracket.stl" "$folder"
cd "$folder"
start_virtual_display "$folder/display"
start_meshvane "$folder" "$program"
fill_in edtFileIn bracket.stl
fill_in edtFileOut metric.stl
fill_in edtYScale 25.4
fill_in edtZScale 25.4
tick_and_fill_in chbXSetL 100
click_on chbXSet0
click_on chbYSet0
click_on chbZSet0
tick_and_fill_in chbRotateX 90
click_on Run
wait_until 20 grep -q 'finished successfully' meshvane.log
hands windowsize "$MAIN_WINDOW" 520 630

mkdir -p "$root/docs/images"
sleep 0.5
timeout 20 import -silent -frame -window "$MAIN_WINDOW" "$root/docs/images/window.png"
echo "taken: docs/images/window.png"
