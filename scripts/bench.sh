#!/usr/bin/env bash
# Builds and runs the benchmarks, and writes each table into docs/performance.md between its markers, with charts
# beside it in images/:
#   scripts/bench.sh [--only section | --against commit] [--page file] [number of facets]
# With --against it compares only runs of this version with those of an older commit, in the same rounds.
# Meshes have a million facets unless a number is given; only the section "growth" follows it beyond a million. The
# largest possible mesh, 42949671 facets, needs 27 GB of disk space and a quarter of an hour. The section "run" takes
# ten minutes, most of it for the plain twin. "instructions" always counts over 200000 facets. The section "windows"
# is left out unless it is named: it needs what scripts/windows.sh builds.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"
# shellcheck source=scripts/lib/conditions.sh
source "$root/scripts/lib/conditions.sh"
# shellcheck source=scripts/lib/virtual-display.sh
source "$root/scripts/lib/virtual-display.sh"

sections=(kernels run instructions growth window command start-up start-up-without-opengl)
all_sections=("${sections[@]}" windows)
page=$root/docs/performance.md
facets=1000000
older=

end_with_usage() {
    sed -n '4s/^# *//p' "${BASH_SOURCE[0]}" >&2
    echo "sections: ${all_sections[*]}" >&2
    exit 2
}

while (($# > 0)); do
    case $1 in
    --only)
        [[ " ${all_sections[*]} " == *" ${2-} "* ]] || end_with_usage
        sections=("$2")
        shift 2
        ;;
    --against)
        older=$(git -C "$root" rev-parse --verify --quiet --short "${2-}^{commit}") || end_with_usage
        sections=(against)
        shift 2
        ;;
    --page)
        page=$(realpath --canonicalize-existing "${2-}") || end_with_usage
        shift 2
        ;;
    [1-9]*)
        facets=$1
        shift
        ;;
    *) end_with_usage ;;
    esac
done

facets_of_a_run=$((facets < 1000000 ? facets : 1000000))
programs=$root/build/bench/benchmarks
folder=$(mktemp -d)
trap 'stop_virtual_display; rm -rf "$folder"' EXIT

bench_start_up() {
    [[ -n ${DISPLAY_OF_BENCHMARK-} ]] || start_virtual_display "$folder/display"
    DISPLAY_OF_BENCHMARK=$DISPLAY
    "$@" "$programs/bench_StartUp"
}

# build_older_version commit: leaves its engine under today's run_once in build/against.
build_older_version() {
    local source=$root/build/against/$1
    rm -rf "$source"
    mkdir -p "$source"
    git archive "$1" | tar --extract --directory="$source"
    cp benchmarks/{BenchMesh,BenchShapes,run_once}.* "$source/benchmarks"
    cp tests/support/TransformCall.h "$source/tests/support"
    cat >>"$source/benchmarks/CMakeLists.txt" <<'END'
add_executable(older_run_once run_once.cpp BenchMesh.cpp BenchShapes.cpp)
target_include_directories(older_run_once PRIVATE ${PROJECT_SOURCE_DIR})
target_link_libraries(older_run_once PRIVATE meshvane_transform meshvane_test_support)
meshvane_own_code(older_run_once)
END
    (cd "$source" && cmake --preset bench && cmake --build --preset bench --target older_run_once) >&2
}

compare_with_older_version() {
    echo "The older version is commit $older."
    "$programs/bench_Against" "$programs/run_once" \
        "$root/build/against/$older/build/bench/benchmarks/older_run_once" "$facets_of_a_run"
}

run_section() {
    case $1 in
    kernels) "$programs/bench_NumberText" ;;
    run) "$programs/bench_Run" "$facets_of_a_run" ;;
    against) compare_with_older_version ;;
    instructions) scripts/instructions.sh ;;
    growth) "$programs/bench_Growth" "$facets" ;;
    window) "$programs/bench_Window" "$facets_of_a_run" ;;
    command) "$programs/bench_Command" ;;
    windows)
        WINEPREFIX=$root/build/windows/wine WINEDEBUG=-all "$programs/bench_Windows" /usr/lib/wine/wine64 \
            build/windows/cli/meshvane-cli.exe build/bench/cli/meshvane-cli "$facets_of_a_run"
        ;;
    start-up) bench_start_up env --unset=QT_XCB_GL_INTEGRATION ;; # as a desktop starts it
    start-up-without-opengl) bench_start_up env QT_XCB_GL_INTEGRATION=none ;;
    esac
}

conditions() {
    local compiler
    compiler=$(sed -n 's/^set(CMAKE_CXX_COMPILER_\(ID\|VERSION\) "\(.*\)")$/\2/p' \
        build/bench/CMakeFiles/*/CMakeCXXCompiler.cmake | paste -sd' ')
    echo "$(machine_conditions), compiler $compiler."
}

# write_section name file: puts the file's text between the markers of that name; fails if the page has none.
write_section() {
    awk -v marker="<!-- bench:$1 -->" -v text="$2" '
        $0 == "<!-- end -->" { inside = 0 }
        !inside { print }
        $0 == marker {
            inside = found = 1
            while ((getline line < text) > 0)
                print line
        }
        END { exit !found || inside }' "$page" >"$folder/page" || {
        echo "$page has no markers for the section $1." >&2
        return 1
    }
    cat "$folder/page" >"$page"
}

# draw_chart section table: writes its chart and prints the line that shows it; nothing for sections without one.
draw_chart() {
    local -A subjects=([run]="Seconds per million facets" [growth]="Cost against size")
    [[ -n ${subjects[$1]-} ]] || return 0
    local images
    images=$(dirname "$page")/images
    mkdir -p "$images"
    scripts/charts.py "$1" <"$2" >"$images/bench-$1.svg"
    printf '![%s](images/bench-%s.svg)\n\n' "${subjects[$1]}" "$1"
}

install_missing_packages "${PACKAGES_TO_BENCHMARK[@]}"
cd "$root"
cmake --preset bench
cmake --build --preset bench
[[ -z $older ]] || build_older_version "$older"
for section in "${sections[@]}"; do
    printf '\n## %s\n\n' "$section"
    run_section "$section" >"$folder/table"
    cat "$folder/table"
    draw_chart "$section" "$folder/table" >"$folder/chart"
    { conditions && echo && cat "$folder/chart" "$folder/table"; } >"$folder/text"
    write_section "$section" "$folder/text"
done
