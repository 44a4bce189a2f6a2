#!/usr/bin/env bash
# Copies and comparisons of fixed size must not become string instructions, which take as long on some processors as
# converting a number:
#   tst_ObjectCode.sh [object-file-or-library...]
# Exits with status 77 where it says nothing: without files, because this build is not an optimised one by GCC, and on
# other processors than x86-64.
set -euo pipefail

skip() {
    echo "Skipped: $*"
    exit 77
}

(($# > 0)) || skip "not an optimised build by GCC."
command -v objdump >/dev/null || skip "no objdump."
headers=$(objdump --file-headers "$@")
[[ $headers == *elf64-x86-64* ]] || skip "not compiled for x86-64."

# Kind of instruction, and the function that may contain it.
allowed=(
    'rep stos:stl_apply_pass(' # its local objects, once per pass
    'rep stos:stl_initialize(' # the record of the mesh, once per file
    'rep stos:exactSineAndCosine(' # its long numbers, six times per run at most
)
# Functions without which the test would have looked at nothing.
expected=(stl_write_ascii_checked stl_apply_pass stl_scan_extents stl_load_facets StlAsciiFacetReader::read)

found=$(objdump --disassemble --demangle --no-show-raw-insn "$@" | awk \
    -v allowed="$(printf '%s\n' "${allowed[@]}")" -v expected="$(printf '%s\n' "${expected[@]}")" '
    BEGIN {
        allowed_count = split(allowed, allowance, "\n")
        expected_count = split(expected, wanted, "\n")
    }
    /file format/ { object = $1 }
    /^[0-9a-f]+ <.*>:$/ {
        place = substr($0, index($0, "<") + 1)
        sub(/>:$/, "", place)
        for (i = 1; i <= expected_count; ++i)
            if (index(place, wanted[i] "(") == 1) seen[i] = 1
    }
    match($0, /\t *(rep|repz|repnz) (movs|stos|cmps|scas)/) {
        instruction = substr($0, RSTART, RLENGTH)
        gsub(/[\t ]+/, " ", instruction)
        sub(/^ /, "", instruction)
        for (i = 1; i <= allowed_count; ++i)
            if (index(instruction ":" place, allowance[i]) == 1) next
        print object " " instruction " in " place
    }
    END {
        for (i = 1; i <= expected_count; ++i)
            if (!(i in seen)) print "no function " wanted[i]
    }')
[[ -z $found ]] || {
    printf 'FAILED:\n%s\n' "$found" >&2
    exit 1
}
echo "No string instructions in code that runs for each facet."
