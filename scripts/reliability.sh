#!/usr/bin/env bash
# The long versions of the reliability tests: scripts/reliability.sh [budget in seconds], an hour by default. The
# fuzzers get the time that the others leave. The short versions run with the ordinary tests.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"

budget=${1-3600}
started=$SECONDS
tests=(tst_Faults tst_Kills tst_OddPlaces tst_Sizes tst_RunCorpus tst_FieldCorpus tst_LongUse tst_Monkey)

install_missing_packages "${PACKAGES_TO_TEST[@]}"
cd "$root"
for preset in default asan; do
    cmake --preset "$preset"
    cmake --build --preset "$preset" --target "${tests[@]}"
done

run_tests() {
    ctest --preset "$1" --no-label-summary --tests-regex "^($(IFS='|' && echo "${tests[*]}"))\$"
}
# Qt Test would end a test function after five minutes; CTest's own limit still applies.
export QTEST_FUNCTION_TIMEOUT=3600000
export MESHVANE_KILLS=200 MESHVANE_RUNS=1000 MESHVANE_MONKEY_STEPS=20000 MESHVANE_SIZES=1
echo "200 kills, 1000 runs, 20000 random steps on the form, files just below 2 GiB."
run_tests default
echo "The same under the sanitizers, except the largest files."
MESHVANE_SIZES=0 run_tests asan

left=$((budget - (SECONDS - started)))
per_fuzzer=$((left * $(nproc) / 4))
echo "$((SECONDS - started)) seconds used; each fuzzer gets $per_fuzzer."
bash scripts/fuzz.sh "$((per_fuzzer > 20 ? per_fuzzer : 20))"
