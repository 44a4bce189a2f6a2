#!/usr/bin/env bash
# Runs the examples of docs/many-files.md on real files: tst_ManyFiles.sh page program folder-of-meshes
# Ends with status 77, after the others, if GNU parallel is not installed.
set -euo pipefail

# shellcheck source=tests/cli/many-files.sh
source "$(dirname "${BASH_SOURCE[0]}")/many-files.sh"

begin
bash -c "$(example loop)" || fail "the loop fails"
[[ ! -e failed.txt ]] || fail "the loop tells of failures: $(<failed.txt)"
as_expected --x-scale 25.4 --y-scale 25.4 --z-scale 25.4
begin
echo "no mesh" >out/gear.stl
bash -c "$(example loop)" 2>said || fail "the loop fails"
[[ $(<failed.txt) == in/gear.stl ]] || fail "the loop does not tell which file failed"
[[ $(<out/gear.stl) == "no mesh" ]] || fail "the loop has replaced a file"

begin
mkdir in/more
cp in/gear.stl in/more/other-gear.stl
bash -c "$(example xargs)" || fail "find and xargs fail"
mv in/more/other-gear.stl in && rmdir in/more
as_expected --z-origin-to-zero
bash -c "$(example xargs)" 2>said && fail "xargs hides that the outputs exist"

status=0
if command -v parallel >/dev/null; then
    mkdir -p "$HOME/.parallel" && touch "$HOME/.parallel/will-cite"
    begin
    printf 'solid flat\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\nendloop\nendfacet\nendsolid\n' \
        >in/flat.stl
    bash -c "$(example parallel)" 2>said && fail "parallel hides the failure"
    grep -q 'in/flat.stl: --z-length: no scale can do that' said || fail "nobody says why: $(<said)"
    [[ $(awk 'NR > 1 && $7 == 0' jobs.log | wc -l) == 3 && $(awk 'NR > 1 && $7 == 1' jobs.log | wc -l) == 1 ]] ||
        fail "the log of the jobs is another: $(<jobs.log)"
    cp in/gear.stl in/flat.stl
    rm out/gear.stl # it was done, so it is not done again
    bash -c "$(example parallel-again)" || fail "the failed job fails again"
    [[ -e out/flat.stl ]] || fail "the failed job was not repeated"
    [[ ! -e out/gear.stl ]] || fail "a job that was done is done again"
    rm in/gear.stl
    as_expected --z-length 100
else
    echo "SKIPPED: GNU parallel is not installed"
    status=77
fi

begin
rm "in/angle bracket.stl" # make cannot have blanks in names
example make >Makefile
make -s -j 2 || fail "make fails"
as_expected --rotate-x 90
rm expected.stl
made=$(stat -c %y out/gear.stl)
touch in/schöner-name.stl
make -s
[[ $(stat -c %y out/gear.stl) == "$made" ]] || fail "make does what is done already"

example slurm >job.sh
sh -n job.sh || fail "the shell does not understand the job"
find in -name '*.stl' | sort >meshes.txt
rm out/*
for task in 1 2; do # as the scheduler would start it
    SLURM_ARRAY_TASK_ID=$task sh job.sh || fail "task $task fails"
done
as_expected --z-origin-to-zero

[[ $status == 77 ]] || echo "passed"
exit "$status"
