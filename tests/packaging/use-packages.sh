# Sourced by the tests of packages: does runs with the programs found by their names, those of unpacked packages.
# The caller sets BUILD_FOLDER to the build whose command the packaged one is compared with, and what window-test.sh
# needs.
# shellcheck shell=bash
# shellcheck source=tests/support/window-test.sh
source "${BASH_SOURCE[0]%/*}/../support/window-test.sh"

CLICK_SPOTS_PROGRAM=$BUILD_FOLDER/scripts/click_spots

# use_window mesh: the program, started from another folder than its own as a desktop menu would start it. Leaves
# gear-on-bed.stl and meshvane.log in the current folder, where the gear is the mesh given.
use_window() {
    start_virtual_display "$folder/display"
    start_meshvane "$folder" meshvane
    fill_in edtFileIn "$1"
    fill_in edtFileOut gear-on-bed.stl
    click_on chbZSet0
    click_on Run
    wait_until 60 grep -q 'finished successfully' meshvane.log || fail "the run did not finish"
    grep -q '^Number triangles read from stl file = 640$' meshvane.log || fail "the log does not count 640 triangles"
    awk '$1 == "vertex" && ($4 < 0 || $4 > 12) { wrong = 1 } END { exit wrong }' gear-on-bed.stl ||
        fail "the gear is not on the bed"
    wait_until 20 test ! -e _tmp_stl_ || fail "_tmp_stl_ was not deleted"
    click_on Close
    wait_until 20 process_has_ended "$MESHVANE_PROCESS" || fail "the window did not close"
    wait "$MESHVANE_PROCESS" || fail "the program failed: $(<"$folder/standard-error")"
    [[ ! -s $folder/standard-error ]] || fail "the program wrote to standard error: $(<"$folder/standard-error")"
}

packaged_command() {
    meshvane-cli "$@" || fail "meshvane-cli $* ended with $?"
}

# same_as_built option...: both commands, with these options, make the same mesh and log of gear and nameplate.
same_as_built() {
    local mesh
    for mesh in gear nameplate; do
        packaged_command --force "$@" --log packaged.log $mesh.stl packaged.stl
        "$BUILD_FOLDER/cli/meshvane-cli" --force "$@" --log built.log $mesh.stl built.stl
        cmp built.stl packaged.stl || fail "the packaged command makes another mesh of the $mesh"
        cmp <(sed 's/built/packaged/' built.log) packaged.log || fail "the packaged command writes another log"
    done
}

# use_packages examples command: the folders with the examples and with the files of the command's package.
use_packages() {
    local examples=$1 command=$2
    mkdir "$folder/somewhere"
    cd "$folder/somewhere" || exit
    cp "$examples"/{gear,nameplate}.stl .
    use_window gear.stl
    packaged_command --z-origin-to-zero gear.stl by-command.stl
    cmp gear-on-bed.stl by-command.stl || fail "the window and the command make different meshes of the gear"
    packaged_command --repeat meshvane.log gear.stl by-log.stl
    cmp gear-on-bed.stl by-log.stl || fail "the log of the window is not repeated"
    [[ $(packaged_command info --json nameplate.stl) == *'"facets":556,'* ]] || fail "info tells of another mesh"

    same_as_built --z-origin-to-zero
    same_as_built --x-scale 1.7 --x-offset-before -0.3 --x-offset-after 12.5 --y-length 88.9 --z-length-of x \
        --z-origin-to-zero --rotate-x 17 --rotate-y -123.4 --rotate-z 338
    packaged_command info gear.stl nameplate.stl built.stl >packaged.txt
    "$BUILD_FOLDER/cli/meshvane-cli" info gear.stl nameplate.stl built.stl >built.txt
    cmp built.txt packaged.txt || fail "info tells something else"

    # Made by a program of the package's architecture.
    cmp "$BUILD_FOLDER/cli/texts/meshvane-cli.bash" "$command"/usr/share/bash-completion/completions/meshvane-cli
    cmp "$BUILD_FOLDER/cli/texts/meshvane-cli.zsh" "$command"/usr/share/zsh/*/_meshvane-cli
    cmp "$BUILD_FOLDER/cli/texts/meshvane-cli.fish" "$command"/usr/share/fish/vendor_completions.d/meshvane-cli.fish
    cmp "$BUILD_FOLDER/cli/texts/meshvane-cli.1" <(gzip -dc "$command"/usr/share/man/man1/meshvane-cli.1.gz)
}
