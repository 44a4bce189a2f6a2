#!/usr/bin/env bash
# Makes the Debian package of the commit that is checked out and has lintian look at it:
#   scripts/package.sh [--twice]
# With --twice it is built a second time, in another folder and at another time, and both must be the same bytes.
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
# The resource compiler has a variable of its own for the time it writes down.
QT_RCC_SOURCE_DATE_OVERRIDE=$SOURCE_DATE_EPOCH
export SOURCE_DATE_EPOCH QT_RCC_SOURCE_DATE_OVERRIDE
export TZ=UTC LC_ALL=C.UTF-8
umask 022

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# build_package folder: leaves the package in folder/build. The sources are those of the commit; whatever else lies in
# the checkout stays out.
build_package() {
    local folder=$1
    mkdir -p "$folder/source"
    git archive "$commit" | tar --extract --directory="$folder/source"
    (
        cd "$folder/source"
        # Debian's own flags; they hide the folder of the build, too.
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

echo "Building the package of commit $(git rev-parse --short "$commit")."
build_package "$work/first"
if [[ $twice == yes ]]; then
    echo "Building it once more."
    build_package "$work/and/again"
    cmp "$work"/first/build/*.deb "$work"/and/again/build/*.deb
    echo "Both builds are the same bytes."
fi

mkdir -p build/package
cp "$work"/first/build/*.deb build/package
package=$(echo build/package/*.deb)
lintian --fail-on error,warning "$package"
echo "lintian has nothing to say."
sha256sum "$package"
