# Sourced after virtual-display.sh: operates Meshvane's window as a person does, with mouse and keyboard.
# The caller sets CLICK_SPOTS_PROGRAM to the program built from scripts/click_spots.cpp.
# shellcheck shell=bash disable=SC2034

MAIN_WINDOW_TITLE='Meshvane - Quillmoret'
ERROR_BOX_TITLE='Error notification'
LOG_VIEWER_TITLE='Dialog'

# Where to click, by object name or by the text of a standard button; and the size of the main window that holds for.
declare -A CLICK_SPOTS=()
CLICK_SPOTS_SIZE=

# start_meshvane folder command...: starts the program in the current folder, with its standard error going to the
# file "standard-error" in the folder given. Sets MESHVANE_PROCESS and MAIN_WINDOW.
start_meshvane() {
    local standard_error=$1/standard-error
    shift
    MESHVANE_ENVIRONMENT=("${@:1:$#-1}") # "env NAME=value...", or nothing
    CLICK_SPOTS_SIZE=
    "$@" >/dev/null 2>"$standard_error" </dev/null &
    MESHVANE_PROCESS=$!
    VIRTUAL_DISPLAY_PROCESSES+=("$MESHVANE_PROCESS")
    wait_for_window 60 "$MAIN_WINDOW_TITLE" || {
        echo "The main window did not appear." >&2
        cat "$standard_error" >&2
        return 1
    }
    MAIN_WINDOW=$(window_with_title "$MAIN_WINDOW_TITLE")
}

# find_click_spots width height: asks for the spots in a main window of this size, unless they are known.
find_click_spots() {
    [[ $CLICK_SPOTS_SIZE != "$*" ]] || return 0
    local name x y spots
    spots=$(timeout 20 "${MESHVANE_ENVIRONMENT[@]}" "$CLICK_SPOTS_PROGRAM" "$@")
    CLICK_SPOTS=()
    while read -r name x y; do
        CLICK_SPOTS[$name]="$x $y"
    done <<<"$spots"
    CLICK_SPOTS_SIZE=$*
}

# click_spot name: sets SPOT to its x and y in the window as it is now.
click_spot() {
    local geometry
    geometry=$(xdo getwindowgeometry --shell "$MAIN_WINDOW")
    find_click_spots "$(sed -n 's/^WIDTH=//p' <<<"$geometry")" "$(sed -n 's/^HEIGHT=//p' <<<"$geometry")"
    read -r -a SPOT <<<"${CLICK_SPOTS[$1]}"
}

click_on() {
    click_spot "$1"
    click_in "$MAIN_WINDOW" "${SPOT[@]}"
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

# answer_box title: presses its only button and waits until the main window has the focus again.
answer_box() {
    press_keys Return
    wait_for_window_to_go 10 "$1"
    wait_for_window 10 "$MAIN_WINDOW_TITLE"
}

close_log_viewer() {
    click_spot btnExit
    click_in "$(window_with_title "$LOG_VIEWER_TITLE")" "${SPOT[@]}"
    wait_for_window_to_go 10 "$LOG_VIEWER_TITLE"
    wait_for_window 10 "$MAIN_WINDOW_TITLE"
}

run_from_file_menu() {
    click_on menuFile
    press_keys Down Down Return
}
