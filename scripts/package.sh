#!/usr/bin/env bash
# Makes the Debian packages of the commit that is checked out and checks them with lintian:
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

cd "$root"
commit=$(git rev-parse HEAD)
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct "$commit")
# The resource compiler has a variable of its own for its timestamps.
QT_RCC_SOURCE_DATE_OVERRIDE=$SOURCE_DATE_EPOCH
export SOURCE_DATE_EPOCH QT_RCC_SOURCE_DATE_OVERRIDE
export TZ=UTC LC_ALL=C.UTF-8
umask 022

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# build_packages folder: leaves the packages in folder/build. Builds the commit only, without other files of the checkout.
build_packages() {
    local folder=$1
    mkdir -p "$folder/source"
    git archive "$commit" | tar --extract --directory="$folder/source"
    (
        cd "$folder/source"
        # Debian's own flags, which also hide the build folder.
        eval "$(DEB_BUILD_MAINT_OPTIONS=hardening=+all dpkg-buildflags --export=sh)"
        cmake -S . -B "$folder/build" -G Ninja -DCMAKE_BUILD_TYPE=None -DCMAKE_INSTALL_PREFIX=/usr \
            -DMESHVANE_BUILD_TESTS=OFF -DMESHVANE_WARNINGS_AS_ERRORS=OFF \
            -DCMAKE_CXX_FLAGS="$CPPFLAGS $CXXFLAGS -ffile-prefix-map=$folder/build=build" \
            -DCMAKE_EXE_LINKER_FLAGS="$LDFLAGS"
        cmake --build "$folder/build"
        cd "$folder/build"
        cpack
    )
}

echo "Building the packages of commit $(git rev-parse --short "$commit")."
build_packages "$work/first"
if [[ $twice == yes ]]; then
    echo "Building them again."
    build_packages "$work/and/again"
    for package in "$work"/first/build/*.deb; do
        cmp "$package" "$work/and/again/build/${package##*/}"
    done
    echo "Both builds are identical."
fi

rm -rf build/package
mkdir -p build/package
cp "$work"/first/build/*.deb build/package
lintian --fail-on error,warning build/package/*.deb
echo "lintian found nothing."
sha256sum build/package/*.deb
