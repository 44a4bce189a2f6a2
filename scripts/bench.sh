#!/usr/bin/env bash
# Builds and runs the benchmarks, and writes each table into docs/performance.md between its markers:
#   scripts/bench.sh [--only section] [--page file] [largest number of facets]
# The number is for the section "growth": a million unless given. The largest possible mesh, 42949671 facets, needs
# 27 GB of disk space and a quarter of an hour.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"
# shellcheck source=scripts/lib/virtual-display.sh
source "$root/scripts/lib/virtual-display.sh"

all_sections=(kernels run growth window start-up start-up-without-opengl)
sections=("${all_sections[@]}")
page=$root/docs/performance.md
facets=1000000

end_with_usage() {
    sed -n '3s/^# *//p' "${BASH_SOURCE[0]}" >&2
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

programs=$root/build/bench/benchmarks
folder=$(mktemp -d)
trap 'stop_virtual_display; rm -rf "$folder"' EXIT

bench_start_up() {
    [[ -n ${DISPLAY_OF_BENCHMARK-} ]] || start_virtual_display "$folder/display"
    DISPLAY_OF_BENCHMARK=$DISPLAY
    "$@" "$programs/bench_StartUp"
}

run_section() {
    case $1 in
    kernels) "$programs/bench_NumberText" ;;
    run) "$programs/bench_Run" ;;
    growth) "$programs/bench_Growth" "$facets" ;;
    window) "$programs/bench_Window" ;;
    start-up) bench_start_up env --unset=QT_XCB_GL_INTEGRATION ;; # as a desktop starts it
    start-up-without-opengl) bench_start_up env QT_XCB_GL_INTEGRATION=none ;;
    esac
}

# The conditions of the measurement in one line, without the machine's name.
conditions() {
    local processor memory compiler system
    processor=$(sed -n 's/^model name[[:space:]]*: //p' /proc/cpuinfo | head -n 1)
    memory=$(awk '$1 == "MemTotal:" { printf "%.0f", $2 / 1048576 }' /proc/meminfo)
    compiler=$(sed -n 's/^set(CMAKE_CXX_COMPILER_\(ID\|VERSION\) "\(.*\)")$/\2/p' \
        build/bench/CMakeFiles/*/CMakeCXXCompiler.cmake | paste -sd' ')
    # shellcheck source=/dev/null
    system=$(source /etc/os-release && echo "$PRETTY_NAME")
    echo "Measured on $(date +%F): ${processor:-unknown processor}, $(nproc) processors, $memory GiB of memory," \
        "$system, compiler $compiler."
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

install_missing_packages "${PACKAGES_TO_BENCHMARK[@]}"
cd "$root"
cmake --preset bench
cmake --build --preset bench
for section in "${sections[@]}"; do
    printf '\n## %s\n\n' "$section"
    run_section "$section" >"$folder/table"
    cat "$folder/table"
    { conditions && echo && cat "$folder/table"; } >"$folder/text"
    write_section "$section" "$folder/text"
done
