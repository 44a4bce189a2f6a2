#!/usr/bin/env bash
# Drives the real program on a virtual display with real keys and clicks:
#   tst_RealWindow.sh program click-spots-program source-folder situation
# The expected files in data/ were calculated by hand, not written by the program.
set -euo pipefail

program=$1
CLICK_SPOTS_PROGRAM=$2
source_folder=$3
situation=$4
data=$source_folder/tests/end-to-end/data

test_name=$situation
# shellcheck source=tests/support/window-test.sh
source "$source_folder/tests/support/window-test.sh"

expect_same_bytes() {
    cmp "$1" "$2" || {
        diff "$1" "$2" >&2 || true
        fail "$2 differs from $1"
    }
}

# expect_run_result output log: both files are as expected, and the temporary file is deleted.
expect_run_result() {
    wait_until 20 files_are_same "$data/${2##*/}" meshvane.log || true
    expect_same_bytes "$data/$2" meshvane.log
    wait_until 20 test ! -e _tmp_stl_ || fail "_tmp_stl_ is still there"
    expect_same_bytes "$data/$1" "$1"
}

files_are_same() { cmp --silent "$1" "$2"; }

# expect_end status standard-error: the process has ended with this status and this whole standard error.
expect_end() {
    local status=0
    wait_until 20 process_has_ended "$MESHVANE_PROCESS" || fail "the process did not end"
    wait "$MESHVANE_PROCESS" || status=$?
    ((status == $1)) || fail "the process ended with status $status instead of $1: $(<"$folder/standard-error")"
    printf '%s' "$2" | cmp - "$folder/standard-error" || fail "unexpected standard error: $(<"$folder/standard-error")"
}

close_window() {
    click_on Close
    expect_end 0 ''
}

from_empty_form_to_output() {
    start_meshvane "$folder" "$program"

    click_on btnViewLog
    wait_for_window 10 "$ERROR_BOX_TITLE" || fail "no message that there is no log yet"
    answer_box "$ERROR_BOX_TITLE" || fail "the box does not close"

    click_on Run
    wait_for_window 10 "$ERROR_BOX_TITLE" || fail "an empty form was not refused"
    answer_box "$ERROR_BOX_TITLE" || fail "the box does not close"
    [[ ! -e meshvane.log ]] || fail "a refused run wrote a log"

    fill_in_scaling_run wedge.stl wedge-scaled.stl
    click_on Run
    expect_run_result wedge-scaled.stl wedge-scaled.log

    click_on btnViewLog
    wait_for_window 10 "$LOG_VIEWER_TITLE" || fail "the log viewer does not open"
    close_log_viewer || fail "the log viewer does not close"

    click_on Reset
    fill_in edtFileOut wedge-turned.stl
    tick_and_fill_in chbRotateX 0
    click_on chbXsameY
    run_from_file_menu
    expect_run_result wedge-turned.stl wedge-turned.log
    expect_same_bytes "$data/wedge.stl" wedge.stl

    close_window
}

wrongly_sized_file_ends_the_process() {
    head --bytes=300 /dev/zero | tr '\0' '\377' >broken.stl
    start_meshvane "$folder" "$program"
    fill_in edtFileIn broken.stl
    fill_in edtFileOut output.stl
    click_on Run
    expect_end 1 $'The file broken.stl has the wrong size.\n'
    [[ ! -e output.stl && ! -e _tmp_stl_ && ! -e meshvane.log ]] || fail "files were written: $(ls)"
}

comma_locale_changes_nothing() {
    localedef --inputfile=de_DE --charmap=UTF-8 "$folder/de_DE.UTF-8"
    local german=(env LOCPATH="$folder" LC_ALL=de_DE.UTF-8)
    [[ $("${german[@]}" locale decimal_point) == , ]] || fail "the locale with the decimal comma is not active"
    start_meshvane "$folder" "${german[@]}" "$program"
    fill_in_scaling_run wedge.stl wedge-scaled.stl
    click_on Run
    expect_run_result wedge-scaled.stl wedge-scaled.log
    close_window
}

start_virtual_display "$folder/display"
mkdir "$folder/run"
cd "$folder/run"
cp "$data/wedge.stl" .
"$situation"
echo "passed: $situation"
