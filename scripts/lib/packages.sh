# Sourced by the scripts beside it: which Debian packages each of them needs, and how missing ones get here.
# shellcheck shell=bash disable=SC2034

PACKAGES_TO_BUILD=(g++ cmake ninja-build qtbase5-dev)
# A screen in memory with a window manager, hands for keys and mouse, and a font to read.
PACKAGES_FOR_A_VIRTUAL_DISPLAY=(xvfb openbox xdotool x11-utils imagemagick fonts-dejavu-core)
PACKAGES_TO_TEST=("${PACKAGES_TO_BUILD[@]}" "${PACKAGES_FOR_A_VIRTUAL_DISPLAY[@]}" libgtest-dev libgmock-dev locales
    desktop-file-utils appstream man-db)
PACKAGES_TO_BENCHMARK=("${PACKAGES_TO_BUILD[@]}" "${PACKAGES_FOR_A_VIRTUAL_DISPLAY[@]}" libbenchmark-dev)
PACKAGES_TO_FUZZ=("${PACKAGES_TO_BUILD[@]}" clang libclang-rt-14-dev)
PACKAGES_TO_FORMAT=(clang-format)
PACKAGES_TO_LINT=(clang-tidy-14 shellcheck)
PACKAGES_TO_PACKAGE=("${PACKAGES_TO_BUILD[@]}" dpkg-dev fakeroot lintian)

package_is_installed() {
    local status
    status=$(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null) && [[ $status == installed ]]
}

run_as_root() {
    if ((EUID == 0)); then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        echo "Neither root nor sudo at hand; install these yourself: ${missing_packages[*]}" >&2
        return 1
    fi
}

# Installs those of the named packages that are missing; calls no package tool but the query when there are none.
install_missing_packages() {
    local package missing_packages=()
    if ! command -v dpkg-query >/dev/null; then
        echo "This is no Debian; going on with whatever is installed (wanted: $*)." >&2
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
        apt-get install --quiet --yes --no-install-recommends "${missing_packages[@]}" </dev/null
}
