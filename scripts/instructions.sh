#!/usr/bin/env bash
# Counts the instructions of a run per facet with callgrind and prints a table, which the load of the machine does not
# change: scripts/instructions.sh [facets [program]]
# The program is benchmarks/run_once of some build, the bench preset's unless given; 200000 facets unless given.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
facets=${1-200000}
program=$(realpath --canonicalize-existing "${2-$root/build/bench/benchmarks/run_once}")

# Mesh, and what a run over its binary file with scale and offset is to take at most.
meshes=(
    'ball:2750'
    'torus:1700'
    'torus, shuffled:2750'
    'triangles:2750'
    'part:1200'
    'marching cubes:1700'
)
option_rows=(0 1 2)

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

# count_run input options: leaves the count in the file "count" of a new folder, which is the run's working folder.
count_run() {
    local work=$folder/$1.$2
    mkdir "$work"
    (
        cd "$work"
        valgrind --tool=callgrind --callgrind-out-file=/dev/null --toggle-collect='runEngine*' \
            "$program" run "$folder/$1" "$2" out.stl 2>messages >/dev/null
        sed -n 's/^.*Collected : \([0-9]*\)$/\1/p' messages >count
        rm out.stl
    )
}

# print_row mesh input limit facets
print_row() {
    local row counts=()
    printf '%s\n' "${option_rows[@]}" | xargs -I{} -P "$(nproc)" bash -c 'count_run "$@"' count "$2" {}
    for row in "${option_rows[@]}"; do
        counts+=("$(<"$folder/$2.$row/count")")
        [[ ${counts[-1]} =~ ^[1-9][0-9]*$ ]] || {
            cat "$folder/$2.$row/messages" >&2
            return 1
        }
        rm -r "$folder/$2.$row"
    done
    awk -v mesh="$1" -v input="${2%.stl}" -v limit="$3" -v facets="$4" -v counts="${counts[*]}" 'BEGIN {
        sub(/ascii/, "ASCII", input)
        n = split(counts, count, " ")
        printf "| %s | %s ", mesh, input
        for (i = 1; i <= n; ++i)
            printf "| %.0f ", count[i] / facets
        print "| " limit " |"
    }'
}

export -f count_run
export folder program
echo "Instructions per facet, over meshes of $facets facets. The limit is for binary input with scale and offset."
echo
echo "| mesh | input | scale and offset | and rotation | origin and length | limit |"
echo "|---|---|---|---|---|---|"
for mesh in "${meshes[@]}"; do
    "$program" make "${mesh%:*}" "$facets" "$folder/binary.stl" "$folder/ascii.stl"
    count=$((($(stat --format=%s "$folder/binary.stl") - 84) / 50))
    print_row "${mesh%:*}" binary.stl "${mesh#*:}" "$count"
    print_row "${mesh%:*}" ascii.stl '' "$count"
done
