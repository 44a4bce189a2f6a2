# Sourced: which Debian packages each script needs, and how to install missing ones.
# shellcheck shell=bash disable=SC2034

PACKAGES_TO_BUILD=(g++ cmake ninja-build qtbase5-dev)
# For the preset qt6, in addition.
PACKAGES_FOR_QT6=(qt6-base-dev qt6-5compat-dev)
# A screen in memory, a window manager, tools for keys, mouse and screenshots, and a font.
PACKAGES_FOR_A_VIRTUAL_DISPLAY=(xvfb openbox xdotool x11-utils imagemagick fonts-dejavu-core)
PACKAGES_TO_TEST=("${PACKAGES_TO_BUILD[@]}" "${PACKAGES_FOR_A_VIRTUAL_DISPLAY[@]}" libgtest-dev libgmock-dev locales
    desktop-file-utils appstream man-db make parallel zsh fish)
PACKAGES_TO_BENCHMARK=("${PACKAGES_TO_BUILD[@]}" "${PACKAGES_FOR_A_VIRTUAL_DISPLAY[@]}" libbenchmark-dev
    valgrind python3)
PACKAGES_TO_FUZZ=("${PACKAGES_TO_BUILD[@]}" clang libclang-rt-14-dev)
PACKAGES_TO_FORMAT=(clang-format git)
PACKAGES_TO_LINT=(clang-tidy-14 git shellcheck)
PACKAGES_TO_PACKAGE=("${PACKAGES_TO_BUILD[@]}" build-essential debhelper dpkg-dev lintian)
PACKAGES_TO_PACKAGE_AS_RPM=("${PACKAGES_TO_BUILD[@]}" rpm rpmlint cpio)
# Wine runs the tests and the installed program.
PACKAGES_FOR_WINDOWS=("${PACKAGES_FOR_A_VIRTUAL_DISPLAY[@]}" cmake ninja-build make g++ dpkg-dev
    g++-mingw-w64-x86-64-posix nsis zip unzip googletest wine wine64 python3 qtbase5-dev-tools)
# The programs of scripts/compare.sh, and what runs and judges them.
PACKAGES_TO_COMPARE=(meshlab libgl1-mesa-dri openscad blender freecad gmsh python3-gmsh python3-vtk9 libassimp-dev
    python3 python3-numpy time)

# packages_to_package_for architecture: for packages of that architecture, in addition. The emulator is for a program
# that the build runs.
packages_to_package_for() {
    printf '%s\n' "crossbuild-essential-$1" "qtbase5-dev:$1" qemu-user
}

# Lets packages of that architecture be installed beside those of this machine's own.
add_architecture() {
    if ! dpkg --print-foreign-architectures | grep -qx "$1"; then
        run_as_root dpkg --add-architecture "$1"
    fi
}

# For this machine's architecture, or the one that the name ends with.
package_is_installed() {
    local architecture
    architecture=$(dpkg --print-architecture)
    [[ $1 != *:* ]] || architecture=${1#*:}
    dpkg-query --show --showformat='${db:Status-Status} ${Architecture}\n' "$1" 2>/dev/null |
        grep -xE "installed ($architecture|all)" >/dev/null
}

run_as_root() {
    if ((EUID == 0)); then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        echo "Not root, and no sudo; do this yourself: $*" >&2
        return 1
    fi
}

# Installs those of the named packages that are missing, and removes none. If none is missing, it only queries.
install_missing_packages() {
    local package missing_packages=()
    if ! command -v dpkg-query >/dev/null; then
        echo "This is not Debian; using what is installed (needed: $*)." >&2
        return 0
    fi
    for package in "$@"; do
        package_is_installed "$package" || missing_packages+=("$package")
    done
    if ((${#missing_packages[@]} == 0)); then
        echo "All packages needed are installed."
        return 0
    fi
    echo "Installing: ${missing_packages[*]}"
    run_as_root apt-get update --quiet </dev/null
    run_as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get install --quiet --yes --no-remove --no-install-recommends "${missing_packages[@]}" </dev/null
}
