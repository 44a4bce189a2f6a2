#!/usr/bin/env bash
# Builds the Debian packages twice, unpacks them, and does a run with each: with the packaged program, started from
# another folder as a desktop menu would start it, and with the command:
#   tst_Package.sh source-folder click-spots-program
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
package=$(echo "$source_folder"/build/package/meshvane_*.deb)
command_package=$(echo "$source_folder"/build/package/meshvane-cli_*.deb)

# Nothing but the libraries that the program is linked with, and of Qt only these: expect_depends package libraries-of-Qt
expect_depends() {
    local depends
    depends=$(dpkg-deb --field "$1" Depends | tr ',' '\n' | sed 's/^ *//; s/ .*//' | LC_ALL=C sort | paste -sd' ')
    [[ $depends == "libc6 libgcc-s1 $2 libstdc++6" || $depends == "libc6 $2 libstdc++6" ]] ||
        fail "$1 depends on: $depends"
}
expect_depends "$package" 'libqt5core5a libqt5gui5 libqt5widgets5'
expect_depends "$command_package" libqt5core5a

[[ -z $(comm -12 <(dpkg-deb --fsys-tarfile "$package" | tar --list | grep -v '/$' | LC_ALL=C sort) \
    <(dpkg-deb --fsys-tarfile "$command_package" | tar --list | grep -v '/$' | LC_ALL=C sort)) ]] ||
    fail "the packages share a file"

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

dpkg-deb --extract "$command_package" "$folder/command"
expect_command() {
    PATH=$folder/command/usr/bin:$PATH "$@" || fail "$* ended with $?"
}
cp "$folder/unpacked/usr/share/doc/meshvane/examples/nameplate.stl" .
expect_command meshvane-cli --z-origin-to-zero gear.stl by-command.stl
cmp gear-on-bed.stl by-command.stl || fail "the window and the command make different meshes of the gear"
expect_command meshvane-cli --repeat meshvane.log gear.stl by-log.stl
cmp gear-on-bed.stl by-log.stl || fail "the log of the window is not repeated"
[[ $(expect_command meshvane-cli info --json nameplate.stl) == *'"facets":556,'* ]] || fail "info tells of another mesh"
for text in share/man/man1/meshvane-cli.1.gz share/bash-completion/completions/meshvane-cli \
    share/zsh/vendor-completions/_meshvane-cli share/fish/vendor_completions.d/meshvane-cli.fish \
    share/doc/meshvane-cli/many-files.md; do
    [[ -s $folder/command/usr/$text ]] || fail "there is no $text"
done
echo "passed"
