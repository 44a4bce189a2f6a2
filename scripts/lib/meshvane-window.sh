# Sourced after virtual-display.sh: works Meshvane's window as a person does, with the mouse and the keyboard.
# shellcheck shell=bash disable=SC2034

MAIN_WINDOW_TITLE='Meshvane - Quillmoret'
ERROR_BOX_TITLE='Error notification'
LOG_VIEWER_TITLE='Dialog'

# Where to click, in pixels of a window of the size below; other sizes are taken in proportion.
MAIN_WINDOW_REFERENCE=(433 612)
declare -A CLICK_SPOTS=(
    [menuFile]='15 11'
    [edtFileIn]='200 45' [edtFileOut]='200 75'
    [edtXScale]='80 160' [edtXOffsB]='220 160' [edtXOffsA]='345 160'
    [edtYScale]='80 187' [edtYOffsB]='220 187' [edtYOffsA]='345 187'
    [edtZScale]='80 214' [edtZOffsB]='220 214' [edtZOffsA]='345 214'
    [chbRotateX]='33 294' [chbRotateY]='33 329' [chbRotateZ]='33 365'
    [chbXSetL]='33 448' [chbYSetL]='33 484' [chbZSetL]='33 519'
    [chbXSet0]='235 290' [chbYSet0]='235 319' [chbZSet0]='235 348'
    [chbXsameY]='235 377' [chbXsameZ]='235 406' [chbYsameX]='235 435'
    [chbYsameZ]='235 464' [chbZsameX]='235 493' [chbZsameY]='235 522'
    [btnViewLog]='61 566' [Reset]='158 566' [Close]='296 566' [Run]='382 566'
)

# start_meshvane folder command...: starts the program in the current folder and keeps what it says on standard
# error in the file "standard-error" of the folder named. Sets MESHVANE_PROCESS and MAIN_WINDOW.
start_meshvane() {
    local said=$1/standard-error
    shift
    "$@" >/dev/null 2>"$said" </dev/null &
    MESHVANE_PROCESS=$!
    VIRTUAL_DISPLAY_PROCESSES+=("$MESHVANE_PROCESS")
    wait_for_window 30 "$MAIN_WINDOW_TITLE" || {
        echo "The main window did not appear." >&2
        cat "$said" >&2
        return 1
    }
    MAIN_WINDOW=$(window_with_title "$MAIN_WINDOW_TITLE")
}

click_on() {
    local geometry width height spot
    geometry=$(hands getwindowgeometry --shell "$MAIN_WINDOW")
    width=$(sed -n 's/^WIDTH=//p' <<<"$geometry")
    height=$(sed -n 's/^HEIGHT=//p' <<<"$geometry")
    read -r -a spot <<<"${CLICK_SPOTS[$1]}"
    click_in "$MAIN_WINDOW" $((spot[0] * width / MAIN_WINDOW_REFERENCE[0])) \
        $((spot[1] * height / MAIN_WINDOW_REFERENCE[1]))
}

# fill_in field text: replaces what the field holds.
fill_in() {
    click_on "$1"
    press_keys ctrl+a
    type_text "$2"
}

# tick_and_fill_in box text: ticks the box and fills in the field beside it, which is next in the tab order.
tick_and_fill_in() {
    click_on "$1"
    press_keys Tab
    type_text "$2"
}

# answer_box title: presses its one button and waits until the main window has the keyboard again.
answer_box() {
    press_keys Return
    wait_for_window_to_go 10 "$1"
    wait_for_window 10 "$MAIN_WINDOW_TITLE"
}

# The viewer's one button stands in the middle of its last row.
close_log_viewer() {
    local viewer
    viewer=$(window_with_title "$LOG_VIEWER_TITLE")
    click_in "$viewer" 298 326
    wait_for_window_to_go 10 "$LOG_VIEWER_TITLE"
    wait_for_window 10 "$MAIN_WINDOW_TITLE"
}

run_from_file_menu() {
    click_on menuFile
    press_keys Down Down Return
}
