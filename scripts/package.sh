#!/usr/bin/env bash
# Makes the Debian packages of the commit that is checked out, in build/package, and checks them with lintian:
#   scripts/package.sh [--twice]
# With --twice they are built again, in another folder and at another time, and must be identical.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"

twice=no
case ${1-} in
'') ;;
--twice) twice=yes ;;
*)
    echo "usage: scripts/package.sh [--twice]" >&2
    exit 2
    ;;
esac

install_missing_packages "${PACKAGES_TO_PACKAGE[@]}"
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
    (cd "$1/meshvane" && dpkg-buildpackage --unsigned-source --unsigned-changes)
}

echo "Building the packages of commit $(git rev-parse --short "$commit")."
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
rm -f build/package/*.{deb,dsc,tar.xz}
cp "$work"/first/*.{deb,dsc,tar.xz} build/package
(cd build/package && sha256sum ./*.{deb,dsc,tar.xz})
