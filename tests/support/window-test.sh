# Sourced by the tests that use the program's window on a virtual display. The caller sets `test_name`. Sets `folder` to
# an empty folder of the test's own; that and the display are gone when the test ends, in whatever way. If it fails, a
# screenshot is left in the folder that it was started in.
# shellcheck shell=bash disable=SC2154
# shellcheck source=scripts/lib/virtual-display.sh
source "${BASH_SOURCE[0]%/*}/../../scripts/lib/virtual-display.sh"
# shellcheck source=scripts/lib/meshvane-window.sh
source "${BASH_SOURCE[0]%/*}/../../scripts/lib/meshvane-window.sh"

screenshot_of_failure=$PWD/$test_name-failed.png
folder=$(mktemp -d)
unset DISPLAY # or a failure before the virtual display starts would leave a screenshot of the user's own

# For tests to define again if they start what does not end with the display.
stop_other_processes() { :; }

finish() {
    local status=$?
    if ((status != 0)) && [[ -n ${DISPLAY-} ]]; then
        take_screenshot "$screenshot_of_failure" && echo "Screenshot of the failure: $screenshot_of_failure" >&2
    fi
    stop_other_processes
    stop_virtual_display
    rm -rf "$folder"
    exit "$status"
}
trap finish EXIT

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

# fill_in_scaling_run input output: the values that make wedge-scaled.stl of wedge.stl, in tests/end-to-end/data.
fill_in_scaling_run() {
    fill_in edtFileIn "$1"
    fill_in edtFileOut "$2"
    fill_in edtXScale 1.5
    press_keys Tab
    type_text 1
    press_keys Tab
    type_text -0.25
    press_keys Tab
    type_text 0.5
    fill_in edtYOffsA 10
    tick_and_fill_in chbZSetL 30
}
