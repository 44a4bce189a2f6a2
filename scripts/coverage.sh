#!/usr/bin/env bash
# Runs the tests under gcov and prints the coverage of lines and branches by file: scripts/coverage.sh.
# Also writes an HTML report to build/coverage/report/index.html.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"

install_missing_packages "${PACKAGES_TO_TEST[@]}" gcovr
cd "$root"
cmake --preset coverage
cmake --build --preset coverage
find build/coverage -name '*.gcda' -delete
ctest --preset coverage --parallel "$(nproc)" --no-label-summary
mkdir -p build/coverage/report
count=(gcovr --root . --exclude-throw-branches --exclude '.*_autogen.*' --exclude '.*\.ui' build/coverage)
for folder in stl transform widgets app cli; do
    echo "== $folder"
    "${count[@]}" --filter "$folder/" | grep -E "^(TOTAL|$folder/)"
    "${count[@]}" --filter "$folder/" --branches | grep -E '^TOTAL' | sed 's/^TOTAL/branches/'
done
"${count[@]}" --filter 'stl/|transform/|widgets/|app/|cli/' --html-details build/coverage/report/index.html
