#!/usr/bin/env bash
# What is different for the command on Windows: names, drives, files held open, Ctrl-C.
#   tst_CommandOnWindows.sh folder-of-meshes page-with-examples emulator program
set -euo pipefail

meshes=$1
page=$2
wine=$3
program=("$3" "$4")
# shellcheck source=tests/cli/command-on-a-system.sh
source "$(dirname "${BASH_SOURCE[0]}")/command-on-a-system.sh"
cp "$meshes"/*.stl .
here=Z:${folder//\//\\}
folder_of_program=$(dirname "$4")
export WINEPATH=Z:${folder_of_program//\//\\}

# holds names...: the files in the folder, apart from the meshes.
holds() {
    local found
    found=$(find . -mindepth 1 ! -path './*.stl' -o -name 'out*' | sed 's,^\./,,' | LC_ALL=C sort | paste -sd' ')
    [[ $found == "$*" ]] || fail "the folder holds $found"
}

echo "Drive letters, backslashes and names in either case"
mkdir results
expect 0 '' "$here\\gear.stl" 'results\out.stl'
expect 0 '' --force "${here//\\//}/gear.stl" "$here\\results\\OUT.stl"
[[ $(ls -A results) == out.stl ]] || fail "two files instead of one"
expect 1 "meshvane-cli: $here\\none.stl: No such file or directory" "$here\\none.stl" out.stl
expect 1 "meshvane-cli: results\\OUT.STL: exists already; --force replaces it" gear.stl 'results\OUT.STL'
expect 2 'meshvane-cli: GEAR.STL is the input or the output as well; give it another name' \
    --force --log GEAR.STL gear.stl out.stl
holds results results/out.stl

echo "Patterns, which the command prompt does not replace"
said=$("${program[@]}" info '*.stl' 'results\*.stl' </dev/null | tr -d '\r' | grep -v '^ ' | LC_ALL=C sort | paste -sd' ')
[[ $said == 'bracket.stl gear.stl nameplate.stl results\out.stl' ]] || fail "found $said"
expect 1 'meshvane-cli: *.xyz: Invalid argument' info '*.xyz'

echo "Another drive to work on"
expect 0 '' --force --temporary-folder 'C:\windows\temp' --log 'results\run.log' --keep-temporary gear.stl 'results\out.stl'
cmp <("${program[@]}" --force gear.stl out.stl && cat out.stl) results/out.stl
rm out.stl results/*

echo "A file, read-only besides, that another program holds open"
echo old >out.stl
chmod a-w out.stl
ended=0
said=$("$wine" cmd /c 'meshvane-cli --force gear.stl out.stl <out.stl' 2>&1 </dev/null | tr -d '\r'; exit "${PIPESTATUS[0]}") || ended=$?
[[ $ended == 1 && $said == 'meshvane-cli: out.stl: Permission denied' ]] || fail "status $ended: $said"
[[ $(<out.stl) == old ]] || fail "the open file has changed"
holds out.stl results
rm -f out.stl

echo "A folder where nothing can be made"
expect 1 'meshvane-cli: Z:\proc: no folder can be made in it: No such file or directory' gear.stl 'Z:\proc\out.stl'

echo "A loop of cmd.exe"
mkdir in out
cp gear.stl in/gear.stl
cp bracket.stl "in/angle bracket.stl"
cp nameplate.stl in/schöner-name.stl
loop=$(sed -n '/^<!-- example: cmd -->$/,/^```$/p' "$page" | sed '1,2d;$d')
[[ -n $loop ]] || fail "the page has no such example"
printf '@echo off\r\n%s\r\n' "${loop//%/%%}" >loop.bat
head -c 200 gear.stl >in/short.stl
"$wine" cmd /c loop.bat </dev/null >said 2>&1 || true
[[ $(tr -d '\r' <failed.txt) == 'meshvane-cli: in\short.stl: The file in\short.stl has the wrong size.' ]] ||
    fail "the loop: $(cat said failed.txt)"
rm in/short.stl
for mesh in in/*.stl; do
    expect 0 '' --force --x-scale 25.4 --y-scale 25.4 --z-scale 25.4 "$mesh" expected.stl
    cmp expected.stl "out/${mesh##*/}"
done
[[ $(find out -type f | wc -l) == 3 ]] || fail "other files are in out: $(ls -A out)"
rm -r in out said failed.txt expected.stl loop.bat

echo "A bar on the console, and Ctrl-C"
{
    head -c 80 gear.stl
    printf '\x00\x40\x1f\x00' # 2,048,000: so many that the run takes longer than a second
    for _ in {1..3200}; do tail -c +85 gear.stl; done
} >large.stl
mkfifo keys
: >typescript
script --quiet --flush --return --command "'$wine' '${program[1]}' --z-length 100 --x-origin-to-zero large.stl 'results\\out.stl'" \
    typescript <keys >/dev/null &
exec 9>keys
for _ in {1..600}; do
    ! grep -q '%' typescript || break
    sleep 0.05
done
# Wine moves the cursor after each letter.
shown=$(sed 's/\x1B\[[?0-9]*[A-Za-z]//g' typescript)
[[ $shown == *large.stl*'['*'..]'*%* ]] || fail "there is no bar: $shown"
files=$(ls -A results/.meshvane-*)
printf '\003' >&9
ended=0
wait $! || ended=$?
exec 9>&-
[[ $files == *_tmp_stl_* ]] || fail "the private folder held $files"
[[ $ended == 58 ]] || fail "ended with status $ended" # the lowest byte of what Ctrl-C ends a process with
[[ -z $(ls -A results) ]] || fail "is left: $(ls -A results)"
echo passed
