#!/usr/bin/env bash
# Does one job with several mesh programs, and writes what each costs and what its output keeps into
# docs/comparison.md between the markers, with a chart beside it:
#   scripts/compare.sh [facets [rounds]]
# A million facets and three rounds unless given; fewer than 100000 facets are too few. Installs the programs, which
# takes 3 GB of disk space.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"
# shellcheck source=scripts/lib/conditions.sh
source "$root/scripts/lib/conditions.sh"
# shellcheck source=scripts/lib/virtual-display.sh
source "$root/scripts/lib/virtual-display.sh"

facets=${1-1000000}
rounds=${2-3}
if (($# > 2)) || [[ ! $facets =~ ^[1-9][0-9]{5,7}$ || ! $rounds =~ ^[1-9][0-9]*$ ]]; then
    sed -n '4s/^# *//p' "${BASH_SOURCE[0]}" >&2
    exit 2
fi

folder=$(mktemp -d)
trap 'stop_virtual_display; rm -rf "$folder"' EXIT
jobs=$root/scripts/compare/jobs
python=/usr/bin/python3 # the one that Debian's modules are for

# One by one if they cannot be installed together: a program that is missing has its reason on the page.
install_programs() {
    install_missing_packages "${PACKAGES_TO_COMPARE[@]}" && return 0
    local package
    for package in "${PACKAGES_TO_COMPARE[@]}"; do
        install_missing_packages "$package" || echo "$package cannot be installed." >&2
    done
}

conditions() {
    local load
    read -r load _ </proc/loadavg
    echo "$(machine_conditions); load average before the first round: $load."
}

make_folder() { # name, facets
    mkdir "$folder/$1"
    cp "$jobs"/* "$folder/$1"
    build/bench/benchmarks/run_once make torus "$2" "$folder/$1/in.stl" >/dev/null
}

install_missing_packages "${PACKAGES_TO_BENCHMARK[@]}"
install_programs
cd "$root"
cmake --preset bench >/dev/null
cmake --build --preset bench --target run_once meshvane-cli
mkdir "$folder/bin"
g++ -O2 "$jobs/assimp_job.cpp" -o "$folder/bin/assimp_job" -lassimp || echo "assimp_job cannot be built." >&2
make_folder tiny 18
make_folder large "$facets"

start_virtual_display "$folder/display"
unset QT_XCB_GL_INTEGRATION QT_STYLE_OVERRIDE
measured_under=$(conditions)
export PATH=$folder/bin:$root/build/bench/cli:$PATH LC_ALL=C.UTF-8 PYTHONDONTWRITEBYTECODE=1
"$python" scripts/compare/measure.py "$folder" "$rounds"
"$python" scripts/compare/write_page.py "$folder/results.json" docs/comparison.md docs/images/comparison.svg \
    "$measured_under"
