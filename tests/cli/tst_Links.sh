#!/usr/bin/env bash
# The command needs Qt Core and nothing else of Qt, and its sources reach down only:
#   tst_Links.sh program source-folder major-version-of-Qt
set -euo pipefail

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

needed=$(readelf --dynamic --wide "$1" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' | LC_ALL=C sort)
[[ -n $needed ]] || fail "readelf finds no libraries in $1"
qt=$(grep -i qt <<<"$needed" || true)
[[ $qt == "libQt$3Core.so.$3" ]] || fail "needs these of Qt: $qt"
loaded=$(ldd "$1" | sed -n 's/^[[:space:]]*\([^ ]*\) =>.*/\1/p')
forbidden=$(grep -Ei 'libqt[0-9](gui|widgets)|libx11|libxcb|libgl\.|libegl|libwayland' <<<"$loaded" || true)
[[ -z $forbidden ]] || fail "brings along: $forbidden"

includes=$(grep -rhoE '#include "[a-z]+/' "$2/cli" | sort -u | sed 's/#include "//' | paste -sd' ')
[[ $includes == 'cli/ stl/ transform/' ]] || fail "the folder includes from: $includes"
if grep -rnE 'QThread|QtConcurrent|pthread_create|std::(j?thread|async)|QSettings|QApplication' "$2/cli"; then
    fail "a thread, settings or a window"
fi
if grep -rn '"cli/' "$2"/app "$2"/widgets "$2"/transform "$2"/stl; then
    fail "a folder below or beside the command includes from it"
fi
echo passed
