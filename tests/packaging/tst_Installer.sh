#!/usr/bin/env bash
# Installs the program for Windows under Wine, uses it with real keys and clicks, and uninstalls it:
#   tst_Installer.sh wine installer click-spots-program source-folder
set -euo pipefail

wine=$1
installer=$2
source_folder=$4
data=$source_folder/tests/end-to-end/data

screenshots=$PWD
test_name=installer
# shellcheck source=tests/support/window-test.sh
source "$source_folder/tests/support/window-test.sh"

stop_other_processes() { wineserver --kill || true; }

# Text that the program has written, without the carriage returns of Windows.
expect_same_text() {
    tr -d '\r' <"$2" | cmp "$1" - || fail "$2 differs from $1"
}

log_has_end() { grep --quiet 'Number triangles' meshvane.log 2>/dev/null; }

start_virtual_display "$folder/display" 1000x900
export WINEPREFIX=$folder/prefix WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml='
"$wine" wineboot --init >"$folder/wineboot.log" 2>&1
wineserver --wait
user=$WINEPREFIX/drive_c/users/$(id -un)
documents=$user/Documents
[[ ! -L $documents ]] || { rm "$documents" && mkdir "$documents"; } # Wine links it to the real one
(cd "$WINEPREFIX" && find drive_c -type f -o -type d | sort) >"$folder/files-before"

"$wine" "$installer" /S
wineserver --wait
installed=$user/AppData/Local/Programs/Meshvane
entry="$user/AppData/Roaming/Microsoft/Windows/Start Menu/Programs/Meshvane.lnk"
for file in meshvane.exe meshvane-cli.exe Licence.txt Notices.txt Uninstall.exe guide/guide.md \
    licences/Qt-LGPL-3.txt; do
    [[ -f $installed/$file ]] || fail "$file is not installed"
done
[[ -f $entry ]] || fail "there is no entry in the start menu"

# The scripts start programs by one name each.
cat >"$folder/start-menu-entry" <<END
exec '$wine' start /unix '$entry'
END
cat >"$folder/click-spots" <<END
exec '$wine' '$3' "\$@" 2>/dev/null | tr -d '\r'
END
cat >"$folder/command-prompt" <<END
exec '$wine' cmd /c message.bat
END
sed -i '1i #!/bin/sh' "$folder"/{start-menu-entry,click-spots,command-prompt}
chmod +x "$folder"/{start-menu-entry,click-spots,command-prompt}
CLICK_SPOTS_PROGRAM=$folder/click-spots

# Relative names count from the user's documents.
cd "$documents"
cp "$data/wedge.stl" .
start_meshvane "$folder" "$folder/start-menu-entry"
take_screenshot "$screenshots/installed-empty.png"
fill_in_scaling_run wedge.stl 'C:/users/'"$(id -un)"'/Documents/wedge-scaled.stl'
click_on Run
wait_until 30 log_has_end || fail "the run does not end"
wait_until 20 test ! -e _tmp_stl_ || fail "_tmp_stl_ is still there"
take_screenshot "$screenshots/installed-done.png"
expect_same_text "$data/wedge-scaled.stl" wedge-scaled.stl
grep --quiet $'\r' wedge-scaled.stl || fail "the output has no line ends of Windows"

click_on btnViewLog
wait_for_window 10 "$LOG_VIEWER_TITLE" || fail "the log viewer does not open"
close_log_viewer || fail "the log viewer does not close"
click_on Close
wait_for_window_to_go 10 "$MAIN_WINDOW_TITLE" || fail "the window does not close"

"$wine" "$installed/meshvane-cli.exe" --x-scale 1.5 wedge.stl by-command.stl
[[ -s by-command.stl ]] || fail "the command writes no output"
wineserver --wait

# As the guide says it: what ends the program is in a file.
printf '%s\r\n' '"%LOCALAPPDATA%\Programs\Meshvane\meshvane.exe" 2>message.txt' >message.bat
printf '\377%.0s' {1..300} >broken.stl
start_meshvane "$folder" "$folder/command-prompt"
fill_in edtFileIn broken.stl
fill_in edtFileOut out.stl
click_on Run
wait_for_window_to_go 20 "$MAIN_WINDOW_TITLE" || fail "the program does not end"
wineserver --wait
[[ $(tr -d '\r' <message.txt) == 'The file broken.stl has the wrong size.' ]] || fail "message.txt: $(<message.txt)"

# The same in a folder where no file can be made.
printf '%s\r\n' 'cd /d Z:\proc' \
    '"%LOCALAPPDATA%\Programs\Meshvane\meshvane.exe" 2>"%USERPROFILE%\Documents\message.txt"' >message.bat
start_meshvane "$folder" "$folder/command-prompt"
fill_in edtFileIn "C:/users/$(id -un)/Documents/wedge.stl"
fill_in edtFileOut "C:/users/$(id -un)/Documents/out.stl"
click_on Run
wait_for_window_to_go 20 "$MAIN_WINDOW_TITLE" || fail "the program goes on without its temporary file"
wineserver --wait
grep --quiet "^stl_write_ascii: Couldn't open _tmp_stl_ for writing: " message.txt ||
    fail "message.txt: $(<message.txt)"
[[ ! -e out.stl ]] || fail "there is an output without a temporary file"
rm message.bat message.txt broken.stl

# The user's files stay, in the documents and in the program's folder.
echo mine >"$installed/mine.txt"
"$wine" "$installed/Uninstall.exe" /S
wineserver --wait
[[ -f $installed/mine.txt ]] || fail "a file of the user is gone"
rm "$installed/mine.txt"
rmdir "$installed"
[[ ! -e $entry ]] || fail "the entry in the start menu is still there"
rm wedge.stl wedge-scaled.stl by-command.stl meshvane.log
rmdir --ignore-fail-on-non-empty "$user/AppData/Local/Programs"
(cd "$WINEPREFIX" && find drive_c -type f -o -type d | sort) >"$folder/files-after"
diff <(grep --invert-match /Temp/ "$folder/files-before") <(grep --invert-match /Temp/ "$folder/files-after") ||
    fail "the uninstaller leaves files"
grep --quiet --ignore-case 'uninstall.*meshvane' "$WINEPREFIX/user.reg" && fail "the registry still has the program"
echo "passed"
