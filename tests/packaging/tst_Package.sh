#!/usr/bin/env bash
# Builds the Debian package twice, unpacks it, and does a run with the packaged program, started from another folder as
# a desktop menu would start it: tst_Package.sh source-folder click-spots-program
set -euo pipefail

source_folder=$1
CLICK_SPOTS_PROGRAM=$2
# shellcheck source=scripts/lib/virtual-display.sh
source "$source_folder/scripts/lib/virtual-display.sh"
# shellcheck source=scripts/lib/meshvane-window.sh
source "$source_folder/scripts/lib/meshvane-window.sh"

folder=$(mktemp -d)
finish() {
    stop_virtual_display
    rm -rf "$folder"
}
trap finish EXIT

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

bash "$source_folder/scripts/package.sh" --twice
package=$(echo "$source_folder"/build/package/*.deb)

# Only the libraries that the program is linked with, and only these of Qt.
depends=$(dpkg-deb --field "$package" Depends | tr ',' '\n' | sed 's/^ *//; s/ .*//' | LC_ALL=C sort | paste -sd' ')
[[ $depends == 'libc6 libgcc-s1 libqt5core5a libqt5gui5 libqt5widgets5 libstdc++6' ||
    $depends == 'libc6 libqt5core5a libqt5gui5 libqt5widgets5 libstdc++6' ]] || fail "the package depends on: $depends"

dpkg-deb --extract "$package" "$folder/unpacked"
for name in Exec TryExec Icon; do
    grep -qx "$name=meshvane" "$folder/unpacked/usr/share/applications/meshvane.desktop" || fail "$name is not meshvane"
done

start_virtual_display "$folder/display"
mkdir "$folder/somewhere"
cd "$folder/somewhere"
cp "$folder/unpacked/usr/share/doc/meshvane/examples/gear.stl" .
PATH=$folder/unpacked/usr/bin:$PATH start_meshvane "$folder" meshvane
fill_in edtFileIn gear.stl
fill_in edtFileOut gear-on-bed.stl
click_on chbZSet0
click_on Run
wait_until 20 grep -q 'finished successfully' meshvane.log || fail "the run did not finish"
grep -q '^Number triangles read from stl file = 640$' meshvane.log || fail "the log does not count 640 triangles"
awk '$1 == "vertex" && ($4 < 0 || $4 > 12) { wrong = 1 } END { exit wrong }' gear-on-bed.stl ||
    fail "the gear is not on the bed"
wait_until 20 test ! -e _tmp_stl_ || fail "_tmp_stl_ was not deleted"
click_on Close
wait_until 20 process_has_ended "$MESHVANE_PROCESS" || fail "the window did not close"
wait "$MESHVANE_PROCESS" || fail "the program failed: $(<"$folder/standard-error")"
[[ ! -s $folder/standard-error ]] || fail "the program wrote to standard error: $(<"$folder/standard-error")"
echo "passed"
