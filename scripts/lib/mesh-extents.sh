# Sourced: the extents of an STL file, computed without the program that is being checked.
# shellcheck shell=bash

# The coordinates of all corners, one corner per line.
ascii_mesh_corners() {
    awk '$1 == "vertex" { print $2, $3, $4 }' "$1"
}

binary_mesh_corners() {
    od --address-radix=n --output-duplicates --format=u1 --skip-bytes=84 --width=50 "$1" | LC_ALL=C awk '
        function number(first,    sign, exponent, fraction) {
            sign = $(first + 3) >= 128 ? -1 : 1
            exponent = ($(first + 3) % 128) * 2 + int($(first + 2) / 128)
            fraction = ($(first + 2) % 128) * 65536 + $(first + 1) * 256 + $first
            return exponent == 0 ? sign * fraction * 2 ^ -149 : sign * (8388608 + fraction) * 2 ^ (exponent - 150)
        }
        {
            for (corner = 13; corner < 49; corner += 12)
                printf "%.9g %.9g %.9g\n", number(corner), number(corner + 4), number(corner + 8)
        }'
}

mesh_is_binary() {
    od --address-radix=n --output-duplicates --format=u1 --skip-bytes=84 --read-bytes=128 "$1" |
        awk '{ for (i = 1; i <= NF; ++i) if ($i > 127) found = 1 } END { exit !found }'
}

mesh_corners() {
    if mesh_is_binary "$1"; then binary_mesh_corners "$1"; else ascii_mesh_corners "$1"; fi
}

# print_mesh_extents title file: one line per axis with its smallest and largest coordinate and its length.
print_mesh_extents() {
    mesh_corners "$2" | LC_ALL=C awk -v title="$1" '
        function tidy(value) { return value > -0.00005 && value < 0.00005 ? 0 : value }
        {
            for (axis = 1; axis <= 3; ++axis) {
                if (NR == 1 || $axis < low[axis]) low[axis] = $axis
                if (NR == 1 || $axis > high[axis]) high[axis] = $axis
            }
        }
        END {
            printf "%-8s%6d facets   ", title, NR / 3
            printf "      from          to      length\n"
            for (axis = 1; axis <= 3; ++axis)
                printf "%24s  %10.4f  %10.4f  %10.4f\n", substr("XYZ", axis, 1),
                    tidy(low[axis]), tidy(high[axis]), tidy(high[axis] - low[axis])
        }'
}
