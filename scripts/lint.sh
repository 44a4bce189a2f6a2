#!/usr/bin/env bash
# Looks for mistakes that compile: clang-tidy over our C++ files, shellcheck over our scripts.
#   scripts/lint.sh [--scripts-only]
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"
install_missing_packages "${PACKAGES_TO_LINT[@]}"
cd "$root"

mapfile -t scripts < <(git ls-files --cached --others --exclude-standard -- '*.sh' .ci/run scripts/hooks)
shellcheck --external-sources --source-path=SCRIPTDIR --source-path="$root" "${scripts[@]}"
for script in "${scripts[@]}"; do
    # Those in lib are sourced, those of the tests are run by bash.
    if [[ $script == scripts/* && $script != scripts/lib/* && $(head -c 2 "$script") == '#!' && ! -x $script ]]; then
        echo "$script is not executable." >&2
        exit 1
    fi
done
echo "Scripts: ${#scripts[@]} files are fine."
[[ ${1-} != --scripts-only ]] || exit 0

# The build enables this warning for GCC; clang also gives it for explicit conversions from float to double.
tidy() { # build folder, pattern of the files below the root
    run-clang-tidy-14 -p "build/$1" -quiet -extra-arg=-Wno-unknown-warning-option \
        -extra-arg=-Wno-double-promotion "^$root/$2/.*\.cpp\$" 2>/dev/null
}

# Generated sources must exist: the form's header and the meta-objects.
install_missing_packages "${PACKAGES_TO_TEST[@]}" "${PACKAGES_TO_BENCHMARK[@]}" "${PACKAGES_TO_FUZZ[@]}"
cmake --preset default >/dev/null
cmake --build --preset default >/dev/null
cmake --preset bench >/dev/null
cmake --preset fuzz >/dev/null
tidy default '(app|cli|scripts|stl|tests|transform|widgets)'
tidy bench benchmarks
tidy fuzz fuzz
echo "C++: clang-tidy found nothing."
