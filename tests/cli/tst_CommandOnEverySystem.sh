#!/usr/bin/env bash
# The same commands give the same files, lines and statuses on every system, but for line ends:
#   tst_CommandOnEverySystem.sh Linux|Windows folder-of-meshes [emulator] program
set -euo pipefail

system=$1
meshes=$2
shift 2
program=("$@")
# shellcheck source=tests/cli/command-on-a-system.sh
source "$(dirname "${BASH_SOURCE[0]}")/command-on-a-system.sh"
cp "$meshes"/gear.stl "$meshes"/bracket.stl .
name='two  blanks, körper 立体.stl'
cp "$meshes/nameplate.stl" "$name"

# holds names...: the files in the folder, apart from the three meshes.
holds() {
    local found
    found=$(find . -mindepth 1 ! -name gear.stl ! -name bracket.stl ! -name "$name" -printf '%P\n' | sort | paste -sd' ')
    [[ $found == "$*" ]] || fail "the folder holds $found"
}

# has file sha256: the bytes without carriage returns; and those are at all line ends, or at none.
has() {
    local sum lines=0
    [[ $system == Linux ]] || lines=$(wc -l <"$1")
    [[ $(grep -c $'\r$' "$1" || true) == "$lines" ]] || fail "$1 has other line ends"
    sum=$(tr -d '\r' <"$1" | sha256sum)
    [[ ${sum%% *} == "$2" ]] || fail "$1 has other bytes: $sum"
}

everything=(--x-scale 25.4 --x-offset-before -1.5 --y-length-of x --y-offset-after 7 --z-length 100 --z-origin-to-zero
    --rotate-y 30)
gear=35f357cf9d7c5b26e71a716359fba73a7a5b18efa977f0bb55fa9ad6151dfdd4
bracket=869603e198dbc02b9314d55f5cbf331744ad741d8b5b2d59eda4fb3c677d1258
nameplate=d5f08ec7947574bd4822479aed33ce8cff2590a74d52c0b397efe7fb96e91049

echo "Binary and ASCII meshes, a name with blanks and letters outside ASCII"
expect 0 '' "${everything[@]}" gear.stl out.stl
has out.stl $gear
expect 1 'meshvane-cli: out.stl: exists already; --force replaces it' "${everything[@]}" bracket.stl out.stl
has out.stl $gear
expect 0 '' --force "${everything[@]}" bracket.stl out.stl
has out.stl $bracket
expect 0 '' "${everything[@]}" "$name" "out $name"
has "out $name" $nameplate
holds out "$name" out.stl
rm out*

echo "The input replaced"
cp gear.stl own.stl
expect 0 '' --force "${everything[@]}" own.stl ./own.stl
has own.stl $gear
holds own.stl
rm own.stl

echo "Log, text and repetition"
options=(--x-scale 2 --y-origin-to-zero --z-length 100 --rotate-x -45)
expect 0 '' "${options[@]}" --log run.log --keep-temporary gear.stl out.stl
holds out.stl out.stl._tmp_stl_ run.log
grep -q '^endsolid  ' out.stl._tmp_stl_ || fail "the text is not whole"
expect 0 '' --repeat run.log --log again.log gear.stl again.stl
cmp out.stl again.stl
cmp run.log again.log
sed -i 's/\r$//' run.log
expect 0 '' --force --repeat run.log gear.stl again.stl
cmp out.stl again.stl
sed -i 's/$/\r/' run.log
expect 0 '' --force --repeat run.log gear.stl again.stl
cmp out.stl again.stl
expect 1 'meshvane-cli: out.stl: is not the log of a run' --force --repeat out.stl gear.stl again.stl
holds again.log again.stl out.stl out.stl._tmp_stl_ run.log
rm again.* out.* run.log

echo "Reports"
expect 0 'bracket.stl -> out.stl: 68 facets, 478 lines, x 1.25..5.25 -> 2.5..10.5, y -0.5..2 -> -0.5..2, z 0.75..2.25 -> 0.75..2.25' \
    --summary --x-scale 2 bracket.stl out.stl
expect 0 "{\"after\":{\"x\":[0,39],\"y\":[0,21],\"z\":[0,4]},\"before\":{\"x\":[0,39],\"y\":[0,21],\"z\":[0,4]},\"facets\":556,\"input\":\"$name\",\"lines\":3894,\"output\":\"out.stl\",\"seconds\":T}" \
    --json --force "$name" out.stl
expect 0 "$name
  type    ASCII
  facets  556
  x       0..39                     length 39
  y       0..21                     length 21
  z       0..4                      length 4
  label   solid nameplate" info "$name"
expect 1 'meshvane-cli: none.stl: No such file or directory
{"extents":{"x":[1.25,5.25],"y":[-0.5,2],"z":[0.75,2.25]},"facets":68,"file":"bracket.stl","label":"angle bracket, in inches","lengths":{"x":4,"y":2.5,"z":1.5},"type":"binary"}' \
    info --json none.stl bracket.stl
rm out.stl

echo "Failures"
head -c 200 gear.stl >short.stl
mkdir folder
expect 1 'meshvane-cli: short.stl: The file short.stl has the wrong size.' short.stl out.stl
expect 1 'meshvane-cli: none.stl: No such file or directory' none.stl out.stl
expect 1 'meshvane-cli: folder: is a folder' folder out.stl
expect 1 'meshvane-cli: folder: is a folder' gear.stl folder
expect 1 'meshvane-cli: none/out.stl: there is no such folder' gear.stl none/out.stl
expect 2 'meshvane-cli: --x-scale: "1,5" is not a number that can be used; write 25.4, -3 or 1e-3' --x-scale 1,5 a b
expect 2 'meshvane-cli: ./gear.stl is the input or the output as well; give it another name' \
    --force --log ./gear.stl gear.stl out.stl
holds folder short.stl

echo "Another folder to work in"
expect 0 '' --temporary-folder folder --log run.log --keep-temporary "${everything[@]}" gear.stl out.stl
has out.stl $gear
holds folder out.stl out.stl._tmp_stl_ run.log short.stl
echo passed
