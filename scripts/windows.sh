#!/usr/bin/env bash
# Builds the programs for 64-bit Windows, with a ZIP and an installer in build/windows/packages, and runs all
# tests under Wine:
#   scripts/windows.sh [--untested]
# The first time it builds Qt, too, a quarter of an hour on two idle processors; the result is kept in the user's
# cache. MESHVANE_WINDOWS_QT names the folder of a Qt for mingw-w64 that is to be used instead.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"
# shellcheck source=scripts/lib/windows-qt.sh
source "$root/scripts/lib/windows-qt.sh"

tested=yes
case ${1-} in
'') ;;
--untested) tested=no ;;
*)
    sed -n '4s/^# *//p' "${BASH_SOURCE[0]}" >&2
    exit 2
    ;;
esac

install_missing_packages "${PACKAGES_FOR_WINDOWS[@]}"

if [[ -z ${MESHVANE_WINDOWS_QT-} ]]; then
    cache=${XDG_CACHE_HOME:-$HOME/.cache}/meshvane
    MESHVANE_WINDOWS_QT=$cache/qt5-windows
    [[ -f $MESHVANE_WINDOWS_QT/complete ]] || build_windows_qt "$MESHVANE_WINDOWS_QT" "$cache/qt5-windows-build"
fi
export MESHVANE_WINDOWS_QT
echo "Using the Qt in $MESHVANE_WINDOWS_QT."

cd "$root"
build=$root/build/windows
echo "Building programs and tests in build/windows."
cmake --preset windows
cmake --build --preset windows

echo "Making the ZIP and the installer."
rm -rf "$build/packages"
(cd "$build" && cpack -B "$build/packages")
rm -rf "$build/packages/_CPack_Packages"
ls -l "$build/packages"

[[ $tested == yes ]] || exit 0
# A folder of its own for what Wine takes for a user's computer. Wine offers to install .NET and a browser otherwise.
# It passes on names of files in the encoding of the locale.
export WINEPREFIX=$build/wine WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml=' LC_ALL=C.UTF-8
trap 'wineserver --kill || true' EXIT
/usr/lib/wine/wine64 wineboot --init >"$build/wineboot.log" 2>&1
echo "Running the tests under Wine."
ctest --preset windows
