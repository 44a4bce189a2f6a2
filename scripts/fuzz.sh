#!/usr/bin/env bash
# Runs every fuzzer for a while and prints the results: scripts/fuzz.sh [seconds per fuzzer [seed]].
# Without a seed every call is different; with one, the same corpus gives the same inputs.
# What the fuzzers learn is kept in build/fuzz/corpus and used by the next call; findings are in
# build/fuzz/findings. Ends with status 1 if there is a finding.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"

seconds=${1-60}
seed=${2-0} # to libFuzzer, 0 means: choose one
fuzzers=(fuzz_StlReader fuzz_StlPasses fuzz_StlNumberText fuzz_LineEditCustom fuzz_RunLog)
build=$root/build/fuzz
corpus=$build/corpus
findings=$build/findings

install_missing_packages "${PACKAGES_TO_FUZZ[@]}"
cd "$root"
cmake --preset fuzz
cmake --build --preset fuzz --target make_corpus "${fuzzers[@]}"
mkdir -p "$findings" "$build/logs"
for fuzzer in "${fuzzers[@]}"; do
    mkdir -p "$corpus/learnt/$fuzzer"
done
"$build/fuzz/make_corpus" "$corpus/seeds"

# The fuzzers write thousands of small files per second, so they work in memory if possible.
scratch=$(mktemp --directory --tmpdir="$([[ -w /dev/shm ]] && echo /dev/shm || echo "${TMPDIR-/tmp}")" fuzz-XXXXXX)
trap 'rm -rf "$scratch"' EXIT
export TMPDIR=$scratch QT_QPA_PLATFORM=offscreen

# Called by xargs.
# shellcheck disable=SC2317
run_fuzzer() {
    # A finding is counted below; it must not keep the others from running.
    nice "$build/fuzz/$1" -seed="$seed" -max_len=4096 -max_total_time="$seconds" -timeout=10 -rss_limit_mb=4096 \
        -artifact_prefix="$findings/$1-" -print_final_stats=1 \
        "$corpus/learnt/$1" "$corpus/seeds/$1" >"$build/logs/$1.log" 2>&1 || true
}
export -f run_fuzzer
export build corpus findings seconds seed

echo "Running ${#fuzzers[@]} fuzzers for $seconds seconds each; logs in build/fuzz/logs."
printf '%s\n' "${fuzzers[@]}" | xargs --max-procs="$(nproc)" --replace bash -c 'run_fuzzer {}'

status=0
failed=()
printf '%-22s %12s %10s %10s %9s\n' fuzzer executions edges features findings
for fuzzer in "${fuzzers[@]}"; do
    log=$build/logs/$fuzzer.log
    executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
    edges=$(sed -n 's/.* cov: \([0-9]*\).*/\1/p' "$log" | tail -n 1)
    features=$(sed -n 's/.* ft: \([0-9]*\).*/\1/p' "$log" | tail -n 1)
    found=$(find "$findings" -name "$fuzzer-*" | wc -l)
    printf '%-22s %12s %10s %10s %9s\n' "$fuzzer" "${executions:-none}" "${edges:-none}" "${features:-none}" "$found"
    if ((found > 0)); then
        failed+=("$log")
    fi
    if ((found > 0)) || [[ -z $executions || $executions == 0 ]]; then
        status=1
    fi
done
# The end of a log holds the property that broke, the trace and the input itself.
for log in "${failed[@]}"; do
    printf '\n== %s\n' "${log#"$root/"}"
    grep --invert-match '^#\|^INFO\|^DICT\|NEW_FUNC' "$log" | tail -n 40
done
exit "$status"
