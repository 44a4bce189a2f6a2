#!/usr/bin/env bash
# Takes the pictures of the documentation again: scripts/screenshots.sh [--looks [preset]]
# With --looks it takes pictures of the window in other scales, styles and colours instead, in build/looks/preset;
# the preset is release unless given.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"
# shellcheck source=scripts/lib/virtual-display.sh
source "$root/scripts/lib/virtual-display.sh"
# shellcheck source=scripts/lib/meshvane-window.sh
source "$root/scripts/lib/meshvane-window.sh"

install_missing_packages "${PACKAGES_TO_BUILD[@]}" "${PACKAGES_FOR_A_VIRTUAL_DISPLAY[@]}"

pictures=$root/docs/images
looks=no
preset=release
if [[ ${1-} == --looks ]]; then
    looks=yes
    preset=${2-release}
    pictures=$root/build/looks/$preset
fi
build=$root/build/$preset
(cd "$root" && cmake --preset "$preset" && cmake --build --preset "$preset" --target meshvane click_spots)
program=$build/app/meshvane
CLICK_SPOTS_PROGRAM=$build/scripts/click_spots
folder=$(mktemp -d)
finish() {
    stop_virtual_display
    rm -rf "$folder"
}
trap finish EXIT

# take_picture name window: the window with its frame.
take_picture() {
    sleep 0.5
    timeout 20 import -silent -frame -window "$2" "$pictures/$1.png"
    echo "taken: ${pictures#"$root"/}/$1.png"
}

close_window() {
    click_on Close
    wait_until 10 process_has_ended "$MESHVANE_PROCESS"
}

fill_in_bracket_run() {
    fill_in edtFileIn bracket.stl
    fill_in edtFileOut metric.stl
    fill_in edtYScale 25.4
    fill_in edtZScale 25.4
    tick_and_fill_in chbXSetL 100
    click_on chbXSet0
    click_on chbYSet0
    click_on chbZSet0
    tick_and_fill_in chbRotateX 90
}

run_and_wait() {
    click_on Run
    wait_until 20 grep -q 'finished successfully' meshvane.log
}

take_documentation_pictures() {
    start_meshvane "$folder" "$program"
    take_picture empty-form "$MAIN_WINDOW"

    fill_in edtXScale 1,5
    # Two moves: the tool tip appears when the pointer rests on the icon.
    click_spot edtXScale.icon
    xdo mousemove --window "$MAIN_WINDOW" "${SPOT[@]}"
    sleep 1.5
    xdo mousemove_relative 1 1
    sleep 1.5
    timeout 20 import -silent -window root "$folder/screen.png"
    read -r x y < <(xdo getwindowgeometry --shell "$MAIN_WINDOW" | sed -n 's/^[XY]=//p' | paste -sd' ')
    convert "$folder/screen.png" -crop "440x270+$x+$y" +repage "$pictures/error-icon.png"
    echo "taken: ${pictures#"$root"/}/error-icon.png"

    click_on Reset
    fill_in_bracket_run
    run_and_wait
    xdo windowsize "$MAIN_WINDOW" 520 630
    take_picture window "$MAIN_WINDOW"

    click_on btnViewLog
    wait_for_window 10 "$LOG_VIEWER_TITLE"
    take_picture run-log "$(window_with_title "$LOG_VIEWER_TITLE")"
    close_log_viewer
    close_window
}

# take_look name variable=value...: the window with a field that shows an error, started with these variables.
take_look() {
    local name=$1
    shift
    rm -f meshvane.log
    start_meshvane "$folder" env "$@" "$program"
    fill_in edtXScale 1,5
    fill_in edtFileIn bracket.stl
    click_on chbRotateX
    take_picture "$name" "$MAIN_WINDOW"
    close_window
}

# The colours of a desktop whose settings Qt reads without a plugin.
write_dark_colours() {
    local group
    for group in Window View Button Tooltip; do
        printf '[Colors:%s]\nBackgroundNormal=42,46,50\nBackgroundAlternate=49,54,59\nForegroundNormal=252,252,252\n' "$group"
    done >"$XDG_CONFIG_HOME/kdeglobals"
    printf '[Colors:Selection]\nBackgroundNormal=61,174,233\nForegroundNormal=252,252,252\n' >>"$XDG_CONFIG_HOME/kdeglobals"
}

take_looks() {
    take_look fusion-100 QT_SCALE_FACTOR=1
    take_look fusion-150 QT_SCALE_FACTOR=1.5
    take_look fusion-200 QT_SCALE_FACTOR=2
    take_look fusion-large-font QT_FONT_DPI=144
    take_look windows-100 QT_STYLE_OVERRIDE=Windows
    take_look windows-200 QT_STYLE_OVERRIDE=Windows QT_SCALE_FACTOR=2
    write_dark_colours
    take_look fusion-dark QT_QPA_PLATFORMTHEME=kde KDE_SESSION_VERSION=5 XDG_CURRENT_DESKTOP=KDE
}

mkdir -p "$pictures"
cp "$root/examples/bracket.stl" "$folder"
cd "$folder"
if [[ $looks == yes ]]; then
    start_virtual_display "$folder/display" 1400x1400
    take_looks
else
    start_virtual_display "$folder/display"
    take_documentation_pictures
fi
