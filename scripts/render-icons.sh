#!/usr/bin/env bash
# Renders the drawings in resources/svg to the icons in resources/pixmaps, at each drawing's own size.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

if ! command -v rsvg-convert >/dev/null; then
    echo "render-icons: rsvg-convert is missing; install the package librsvg2-bin" >&2
    exit 1
fi

mkdir -p "$root/resources/pixmaps"
for drawing in "$root"/resources/svg/*.svg; do
    icon=$root/resources/pixmaps/$(basename "$drawing" .svg).png
    rsvg-convert --output "$icon" "$drawing"
    echo "rendered ${icon#"$root"/}"
done
