#!/usr/bin/env bash
# Builds the engine for other machines, compilers and systems, and everything for Qt 6; runs what can run there and
# compares the bytes:
#   scripts/portability.sh [target...]
# Targets: gcc clang libc++ qt6 i386 arm64 armhf s390x windows; all of them if none is named. Prints one line per target
# and writes it into the table of docs/portability.md. Installs the Debian packages it needs. Ends with status 1 if
# a byte differs or a test fails.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"

all_targets=(gcc clang libc++ qt6 i386 arm64 armhf s390x windows)
document=$root/docs/portability.md
build=$root/build/portability

# Per target: folder, packages, compiler, what it runs on, and further arguments for CMake.
describe_target() {
    folder=$build/$1
    packages=(cmake ninja-build googletest)
    runs_on='this machine'
    runner=()
    arguments=(-DMESHVANE_GTEST_SOURCE=/usr/src/googletest)
    case $1 in
    gcc)
        packages+=(g++)
        compiler=g++
        ;;
    clang)
        packages+=(clang-14)
        compiler=clang++-14
        ;;
    libc++)
        packages+=(clang-19 libc++-19-dev libc++abi-19-dev)
        compiler=clang++-19
        arguments+=(-DCMAKE_CXX_FLAGS=-stdlib=libc++)
        ;;
    qt6)
        folder=$root/build/qt6 # that of the preset
        packages=("${PACKAGES_TO_TEST[@]}" "${PACKAGES_FOR_QT6[@]}")
        compiler=c++
        ;;
    i386)
        cross_target i686 i686-linux-gnu
        runs_on='this machine, 32 bits'
        runner=(/usr/i686-linux-gnu/lib/ld-linux.so.2 --library-path /usr/i686-linux-gnu/lib)
        ;;
    arm64) emulated_target aarch64 aarch64-linux-gnu ;;
    armhf) emulated_target arm arm-linux-gnueabihf ;;
    s390x) emulated_target s390x s390x-linux-gnu ;;
    windows)
        packages+=(g++-mingw-w64-x86-64-posix wine64)
        compiler=x86_64-w64-mingw32-g++-posix
        runner=(/usr/lib/wine/wine64)
        runs_on=wine
        arguments+=(-DCMAKE_SYSTEM_NAME=Windows -DCMAKE_C_COMPILER=x86_64-w64-mingw32-gcc-posix
            -DCMAKE_EXE_LINKER_FLAGS=-static)
        ;;
    *)
        echo "No such target: $1. There are: ${all_targets[*]}" >&2
        exit 2
        ;;
    esac
}

cross_target() { # processor, GNU triplet
    packages+=("g++-$2")
    compiler=$2-g++
    arguments+=(-DCMAKE_SYSTEM_NAME=Linux "-DCMAKE_SYSTEM_PROCESSOR=$1")
}

emulated_target() {
    cross_target "$@"
    packages+=(qemu-user)
    # Libraries of Debian's packages for that processor, if there are any, are of another version than its loader.
    runner=("qemu-$1" -L "/usr/$2" -E "LD_LIBRARY_PATH=/usr/$2/lib")
    runs_on=qemu-$1
}

version_of_runner() {
    case $runs_on in
    qemu-*) echo "$runs_on $("$runs_on" --version | sed -n '1s/.*version \([0-9.]*\).*/\1/p')" ;;
    wine) echo "wine $(dpkg-query --show --showformat='${Version}' wine64 | sed 's/[~-].*//')" ;;
    *) echo "$runs_on" ;;
    esac
}

version_of_compiler() { # target
    local version
    version=$("$compiler" --version | head -n 1)
    [[ $1 != qt6 ]] || version+=", Qt $(dpkg-query --show --showformat='${Version}' qt6-base-dev | sed 's/[+-].*//')"
    echo "$version"
}

configure_target() { # target
    if [[ $1 == qt6 ]]; then
        cmake -S "$root" --preset qt6
        return
    fi
    if ((${#runner[@]} > 0)); then
        arguments+=("-DCMAKE_CROSSCOMPILING_EMULATOR=$(IFS=';' && echo "${runner[*]}")")
    fi
    cmake -S "$root" -B "$folder" -G Ninja -DMESHVANE_ENGINE_ONLY=ON -DMESHVANE_WARNINGS_AS_ERRORS=OFF \
        -DCMAKE_BUILD_TYPE=RelWithDebInfo "-DCMAKE_CXX_COMPILER=$compiler" "${arguments[@]}"
}

# The first words of what the tests say, and the names of those that failed or could not run.
tests_of() { # log of ctest
    local failed all summary skipped
    summary=$(sed -n 's/.*, \([0-9]*\) tests failed out of \([0-9]*\).*/\1 \2/p' "$1")
    read -r failed all <<<"$summary"
    skipped=$(grep -c ' (Skipped)$' "$1" || true)
    echo "$((all - failed - skipped)) of $all"
    sed -n 's/^\t *[0-9]* - \([^ ]*\) (.*/, not \1/p' "$1"
}

# What the tests left out by themselves, with their reasons, or a dash.
skipped_cases() {
    local cases
    cases=$(awk '
        /: Skipped$/ { getline reason }
        /^\[  SKIPPED \] .* ms\)$/ { print $4 ": " reason }
        /^SKIP   : / { sub(/^SKIP +: /, ""); sub(/ /, ": "); print }' "$folder/Testing/Temporary/LastTest.log" |
        sort --unique | paste -sd';' | sed 's/;/; /g')
    echo "${cases:--}"
}

# Sets `row`; returns 1 if anything is wrong.
run_target() {
    local target=$1 status=0 program bytes tests warnings left_out begin
    describe_target "$target"
    install_missing_packages "${packages[@]}"
    begin="| $target | $(version_of_compiler "$target") | $(version_of_runner) |"
    mkdir -p "$folder/work"
    export WINEPREFIX=$folder/wine WINEDEBUG=-all
    configure_target "$target" >"$folder/configure.log"
    # All of it, or the warnings would be those of the files that changed.
    if ! nice cmake --build "$folder" --clean-first >"$folder/build.log"; then
        grep -E 'error|FAILED' "$folder/build.log" >&2 || true
        row="$begin not built | | | see the build's log |"
        return 1
    fi
    warnings=$(grep -c ': warning:' "$folder/build.log" || true)

    program=$folder/tests/bytes/tst_SameBytes
    [[ $target != windows ]] || program+=.exe
    bytes=$(cd "$folder/work" && "${runner[@]}" "$program" "$root/tests/bytes/hashes.txt") || status=1
    bytes=$(tail -n 1 <<<"$bytes" | tr -d '\r' | sed 's/ outputs, \([0-9]*\) of them .*/: \1 differ/')

    ctest --test-dir "$folder" --parallel "$(nproc)" >"$folder/test.log" 2>&1 || status=1
    tests=$(tests_of "$folder/test.log" | tr -d '\n')
    left_out=$(skipped_cases)
    [[ $target != windows ]] || left_out='tests that need POSIX; carriage returns are not compared'
    row="$begin $bytes | $tests | $warnings | $left_out |"
    return "$status"
}

# Replaces the rows of the targets that ran, and keeps the others.
write_table() {
    local target line
    {
        sed '/^<!-- table -->$/q' "$document"
        echo
        echo '| target | compiler | runs on | outputs | tests passed | warnings | left out |'
        echo '|---|---|---|---|---|---|---|'
        for target in "${all_targets[@]}"; do
            line=${rows[$target]-$(grep --fixed-strings "| $target |" "$document" || true)}
            [[ -z $line ]] || echo "$line"
        done
        echo
        sed -n '/^<!-- end of the table -->$/,$p' "$document"
    } >"$build/portability.md"
    cp "$build/portability.md" "$document"
}

targets=("$@")
((${#targets[@]} > 0)) || targets=("${all_targets[@]}")
for target in "${targets[@]}"; do
    describe_target "$target"
done
mkdir -p "$build"
declare -A rows
status=0
for target in "${targets[@]}"; do
    echo "== $target"
    run_target "$target" || status=1
    rows[$target]=$row
    echo "$row"
    write_table
done
printf '\n%s\n' "${rows[@]}"
exit "$status"
