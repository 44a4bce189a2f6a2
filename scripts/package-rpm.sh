#!/usr/bin/env bash
# Makes the RPM packages of the commit that is checked out, in build/package, and checks them with rpmlint:
#   scripts/package-rpm.sh
# This is for Debian, whose rpmbuild cannot tell which packages are installed. So what meshvane.spec requires for
# the build is not looked for, but installed under Debian's names.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"
install_missing_packages "${PACKAGES_TO_PACKAGE_AS_RPM[@]}"
# shellcheck source=scripts/lib/commit.sh
source "$root/scripts/lib/commit.sh"

cd "$root"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

name=meshvane-$(git show "$commit:packaging/meshvane.spec" | sed -n 's/^Version: *//p')
archive_commit "$name" | gzip -n >"$work/$name.tar.gz"
# Debian's own steps after the installation compress no manual page, as they expect another shell, and leave symbols
# in the programs, which other distributions put into packages of their own.
after_installation="bash /usr/lib/rpm/brp-compress %{_prefix}; strip %{buildroot}%{_bindir}/*"

echo "Building the RPM packages of commit $(git rev-parse --short "$commit")."
rpmbuild -ta --nodeps --define "_topdir $work" --define "__os_install_post $after_installation" \
    --define 'use_source_date_epoch_as_buildtime 1' --define 'clamp_mtime_to_source_date_epoch 1' \
    --define '_buildhost localhost' "$work/$name.tar.gz"

rpmlint --strict --config packaging/rpmlint.toml "$work"/RPMS/*/*.rpm "$work"/SRPMS/*.rpm
mkdir -p build/package
rm -f build/package/*.rpm
cp "$work"/RPMS/*/*.rpm "$work"/SRPMS/*.rpm build/package
(cd build/package && sha256sum ./*.rpm)
