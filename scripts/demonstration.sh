#!/usr/bin/env bash
# Shows the program at work on a virtual display: scripts/demonstration.sh program click-spots-program
# Called by run.sh, which builds both and installs the packages needed.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/virtual-display.sh
source "$root/scripts/lib/virtual-display.sh"
# shellcheck source=scripts/lib/meshvane-window.sh
source "$root/scripts/lib/meshvane-window.sh"
# shellcheck source=scripts/lib/mesh-extents.sh
source "$root/scripts/lib/mesh-extents.sh"

program=$1
CLICK_SPOTS_PROGRAM=$2
folder=$root/build/demonstration
screenshots=$folder/screenshots
rm -rf "$folder"
mkdir -p "$screenshots"
cp "$root/examples/bracket.stl" "$folder"
cd "$folder"
trap stop_virtual_display EXIT

# show name sentence: takes a screenshot and prints the sentence, both with the same number.
step=0
show() {
    ((++step))
    take_screenshot "$screenshots/$step-$1.png"
    echo "  $step. $2"
}

stop_with_screenshot() {
    take_screenshot "$screenshots/failure.png"
    echo "The demonstration failed: $1. Look at $screenshots/failure.png" >&2
    exit 1
}

run_is_finished() { [[ -s metric.stl && ! -e _tmp_stl_ ]] && grep -q 'finished successfully' meshvane.log; }

echo
echo "The task: a bracket drawn in inches is to be in millimetres, exactly 100 long in X,"
echo "its corner at the origin, and turned by 90 degrees about X to stand up."
echo
start_virtual_display "$folder/display"
start_meshvane "$folder/display" "$program"
show empty-form "The program is started and shows its empty form."

fill_in edtFileIn bracket.stl
fill_in edtFileOut metric.stl
show files-named "The names of the input and the output file are typed in."

fill_in edtYScale 25,4
show mistake "A comma is typed in the Y scale instead of a point: an icon appears at once."

fill_in edtYScale 25.4
fill_in edtZScale 25.4
tick_and_fill_in chbXSetL 100
for box in chbXSet0 chbYSet0 chbZSet0; do
    click_on "$box"
done
tick_and_fill_in chbRotateX 90
show options-set "Scales, the length of 100, the origin boxes and the rotation are set."

click_on Run
wait_until 20 run_is_finished || stop_with_screenshot "the run did not finish"
show run-finished "Run was pressed; the status bar reports success."

click_on btnViewLog
wait_for_window 10 "$LOG_VIEWER_TITLE" || stop_with_screenshot "the log did not open"
show run-log "View Log was pressed; the log of the run is open."

close_log_viewer || stop_with_screenshot "the log did not close"
click_on Close
wait_until 10 process_has_ended "$MESHVANE_PROCESS" || stop_with_screenshot "the window did not close"
echo "  Close was pressed; the program has ended."

montage "$screenshots"/*.png -tile 3x -geometry 420x420+6+6 -title "Meshvane" "$folder/overview.png"

echo
echo "From the log:"
sed -n '/^Number/p; /^Calculation finished/p' meshvane.log | sed 's/^/  /'
echo
print_mesh_extents before bracket.stl
print_mesh_extents after metric.stl
echo
echo "input        $root/examples/bracket.stl"
echo "output       $folder/metric.stl"
echo "run log      $folder/meshvane.log"
echo "overview     $folder/overview.png"
echo "screenshots  $screenshots/"
for screenshot in "$screenshots"/*.png; do
    echo "               ${screenshot##*/}"
done
echo
echo "With a display, the same command starts the program itself."
