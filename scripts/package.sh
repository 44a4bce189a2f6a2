#!/usr/bin/env bash
# Makes the Debian packages of the commit that is checked out, in build/package, and checks them with lintian:
#   scripts/package.sh [--twice] [--architecture name]
# With --twice they are built again, in another folder and at another time, and must be identical.
# With --architecture (arm64, armhf) they are cross-built with the Qt that Debian has for that architecture, which is
# installed beside this machine's own.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"

usage() {
    echo "usage: scripts/package.sh [--twice] [--architecture name]" >&2
    exit 2
}

twice=no
architecture=
while (($# > 0)); do
    case $1 in
    --twice) twice=yes ;;
    --architecture)
        (($# > 1)) || usage
        architecture=$2
        shift
        ;;
    *) usage ;;
    esac
    shift
done

packages=("${PACKAGES_TO_PACKAGE[@]}")
native=$(dpkg --print-architecture)
: "${architecture:=$native}"
if [[ $architecture != "$native" ]]; then
    mapfile -t -O "${#packages[@]}" packages < <(packages_to_package_for "$architecture")
    add_architecture "$architecture"
fi
install_missing_packages "${packages[@]}"

# shellcheck source=scripts/lib/commit.sh
source "$root/scripts/lib/commit.sh"
export DEB_BUILD_OPTIONS=noautodbgsym

cd "$root"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# build_packages folder: leaves the packages there. Builds the commit only, without other files of the checkout.
build_packages() {
    mkdir -p "$1"
    archive_commit meshvane | tar --extract --directory="$1"
    (cd "$1/meshvane" && dpkg-buildpackage --unsigned-source --unsigned-changes --host-arch "$architecture")
}

echo "Building the packages of commit $(git rev-parse --short "$commit") for $architecture."
build_packages "$work/first"
if [[ $twice == yes ]]; then
    echo "Building them again."
    build_packages "$work/and/again"
    for package in "$work"/first/*.{deb,dsc,tar.xz}; do
        cmp "$package" "$work/and/again/${package##*/}"
    done
    echo "Both builds are identical."
fi

lintian --fail-on error,warning "$work"/first/*.changes
echo "lintian found nothing."
mkdir -p build/package
rm -f build/package/*_"$architecture".deb build/package/*.{dsc,tar.xz}
cp "$work"/first/*.{deb,dsc,tar.xz} build/package
(cd build/package && sha256sum ./*_"$architecture".deb ./*.{dsc,tar.xz})
