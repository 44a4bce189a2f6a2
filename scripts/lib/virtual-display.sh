# Sourced: a screen in memory with a window manager, and functions to use what it shows. Every wait has a limit.
# The caller must call stop_virtual_display when it ends, in whatever way.
# shellcheck shell=bash

VIRTUAL_DISPLAY_PROCESSES=()

# wait_until seconds command...: repeats the command until it succeeds or the time is up.
wait_until() {
    local deadline=$((SECONDS + $1))
    shift
    until "$@"; do
        ((SECONDS < deadline)) || return 1
        sleep 0.05
    done
}

process_has_ended() { ! kill -0 "$1" 2>/dev/null; }

end_process() {
    process_has_ended "$1" && return 0
    kill "$1" 2>/dev/null || true
    wait_until 5 process_has_ended "$1" || kill -KILL "$1" 2>/dev/null || true
}

# start_virtual_display folder [size]: the screen and its window manager keep their files in the folder.
# Programs started later do not see the desktop that this script may run on.
start_virtual_display() {
    local folder=$1 size=${2-800x800}
    mkdir -p "$folder/home" "$folder/runtime"
    chmod 700 "$folder/runtime"
    unset WAYLAND_DISPLAY XAUTHORITY DESKTOP_SESSION XDG_CURRENT_DESKTOP XDG_SESSION_TYPE XDG_SESSION_DESKTOP \
        KDE_FULL_SESSION GNOME_DESKTOP_SESSION_ID SESSION_MANAGER DBUS_SESSION_BUS_ADDRESS
    unset "${!QT_@}"
    export HOME=$folder/home XDG_RUNTIME_DIR=$folder/runtime XDG_CONFIG_HOME=$folder/home XDG_CACHE_HOME=$folder/home
    export QT_QPA_PLATFORM=xcb QT_XCB_GL_INTEGRATION=none QT_STYLE_OVERRIDE=Fusion

    rm -f "$folder/display-number"
    Xvfb -displayfd 3 -screen 0 "${size}x24" -dpi 96 -nolisten tcp -noreset -wr \
        3>"$folder/display-number" >"$folder/xvfb.log" 2>&1 </dev/null &
    VIRTUAL_DISPLAY_PROCESSES+=($!)
    wait_until 20 test -s "$folder/display-number" || {
        echo "The virtual display did not start:" >&2
        cat "$folder/xvfb.log" >&2
        return 1
    }
    DISPLAY=:$(<"$folder/display-number")
    export DISPLAY

    openbox --sm-disable >"$folder/openbox.log" 2>&1 </dev/null &
    VIRTUAL_DISPLAY_PROCESSES+=($!)
    wait_until 20 window_manager_is_running || {
        echo "The window manager did not start:" >&2
        cat "$folder/openbox.log" >&2
        return 1
    }
}

stop_virtual_display() {
    local index
    for ((index = ${#VIRTUAL_DISPLAY_PROCESSES[@]} - 1; index >= 0; --index)); do
        end_process "${VIRTUAL_DISPLAY_PROCESSES[index]}"
    done
    VIRTUAL_DISPLAY_PROCESSES=()
}

window_manager_is_running() {
    timeout 5 xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'
}

xdo() { timeout 10 xdotool "$@"; }

# window_with_title title: the id of the newest visible window whose whole title this is; fails if there is none.
window_with_title() {
    xdo search --onlyvisible --name "^$1\$" 2>/dev/null | tail -n 1 | grep .
}

window_is_in_front() {
    local window
    window=$(window_with_title "$1") && [[ $(xdo getactivewindow 2>/dev/null) == "$window" ]]
}

no_window_has_title() { ! window_with_title "$1" >/dev/null; }

# wait_for_window seconds title: until that window is shown and has the focus.
wait_for_window() { wait_until "$1" window_is_in_front "$2"; }

wait_for_window_to_go() { wait_until "$1" no_window_has_title "$2"; }

press_keys() { xdo key --clearmodifiers --delay 15 "$@"; }

type_text() { xdo type --clearmodifiers --delay 15 -- "$1"; }

# click_in window x y: in pixels from the upper left corner of what the window shows.
click_in() { xdo mousemove --window "$1" "$2" "$3" click 1; }

# take_screenshot file: of the whole screen, after the program has had time to paint.
take_screenshot() {
    sleep 0.4
    timeout 20 import -silent -window root "$1"
}
