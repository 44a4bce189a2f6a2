#!/usr/bin/env bash
# Builds Meshvane and starts it in the caller's folder. Without a display, or with --demonstration, it shows the
# program at work on a virtual display instead.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"

demonstration=no
case ${1-} in
'') ;;
--demonstration) demonstration=yes ;;
*)
    echo "usage: scripts/run.sh [--demonstration]" >&2
    exit 2
    ;;
esac

if [[ $demonstration == no && -z ${DISPLAY-} && -z ${WAYLAND_DISPLAY-} ]]; then
    echo "There is no display here: neither DISPLAY nor WAYLAND_DISPLAY is set."
    echo "Showing a guided demonstration on a virtual display instead."
    demonstration=yes
fi

packages=("${PACKAGES_TO_BUILD[@]}")
if [[ $demonstration == yes ]]; then
    packages+=("${PACKAGES_FOR_A_VIRTUAL_DISPLAY[@]}")
elif [[ -z ${DISPLAY-} ]]; then
    packages+=(qtwayland5)
fi
install_missing_packages "${packages[@]}"

echo "Building the program in build/release."
build=$root/build/release
(cd "$root" && cmake --preset release && cmake --build --preset release)
program=$build/app/meshvane

if [[ $demonstration == yes ]]; then
    cmake --build "$build" --target click_spots
    exec bash "$root/scripts/demonstration.sh" "$program" "$build/scripts/click_spots"
fi
echo "Starting the program; its run log will be $PWD/meshvane.log."
status=0
"$program" || status=$?
if ((status == 128 + 6)); then
    echo "The display cannot be used; scripts/run.sh --demonstration shows the program without one." >&2
fi
exit "$status"
