#!/usr/bin/env bash
# Renders the drawings in resources/svg: each at its own size to resources/pixmaps, and the program's icon at the sizes
# that desktops ask for to resources/hicolor; of these also the icon for Windows.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"
install_missing_packages librsvg2-bin icoutils

render() {
    local icon=$1
    shift
    mkdir -p "$(dirname "$icon")"
    rsvg-convert --output "$icon" "$@"
    echo "rendered ${icon#"$root"/}"
}

for drawing in "$root"/resources/svg/*.svg; do
    render "$root/resources/pixmaps/$(basename "$drawing" .svg).png" "$drawing"
done
for size in 16 22 24 32 48 64 128 256; do
    render "$root/resources/hicolor/${size}x$size/apps/meshvane.png" \
        --width "$size" --height "$size" "$root/resources/svg/transform-scale.svg"
done

# Large ones stay PNG, which Windows reads since 2007.
sizes=("$root"/resources/hicolor/{16x16,24x24,32x32,48x48,64x64}/apps/meshvane.png)
icotool --create --output="$root/packaging/windows/meshvane.ico" "${sizes[@]}" \
    --raw="$root/resources/hicolor/256x256/apps/meshvane.png"
echo "rendered packaging/windows/meshvane.ico"
