# Sourced by the tests that run the examples of docs/many-files.md on real files. Takes their arguments: the page, the
# program, a folder of meshes. Works in a folder of its own and puts the program into PATH.
# shellcheck shell=bash

page=$1
program=$2
meshes=$3
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir "$folder/bin" "$folder/home"
ln -s "$program" "$folder/bin/meshvane-cli"
export PATH=$folder/bin:$PATH HOME=$folder/home
unset TMPDIR

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

# example name: the text of an example of the page.
example() {
    local text
    text=$(sed -n "/^<!-- example: $1 -->\$/,/^\`\`\`\$/p" "$page" | sed '1,2d;$d')
    [[ -n $text ]] || fail "the page has no example called $1"
    echo "$text"
}

# Meshes with blanks and letters outside ASCII in their names, in an empty place.
begin() {
    rm -rf "${folder:?}/files"
    mkdir -p "$folder/files/in" "$folder/files/out"
    cd "$folder/files" || exit
    cp "$meshes/gear.stl" in/gear.stl
    cp "$meshes/bracket.stl" "in/angle bracket.stl"
    cp "$meshes/nameplate.stl" in/schöner-name.stl
}

# as_expected options...: each mesh in out/ is what the command makes of the one in in/.
as_expected() {
    local mesh
    for mesh in in/*.stl; do
        meshvane-cli --force "$@" "$mesh" expected.stl
        cmp expected.stl "out/${mesh##*/}" || fail "$mesh was not done, or not like this"
    done
    [[ $(find out -type f | wc -l) == $(find in -type f | wc -l) ]] || fail "other files are in out/: $(ls -A out)"
}
