#!/usr/bin/env bash
# Builds the Debian packages twice, unpacks them and uses them:
#   tst_Package.sh source-folder build-folder [architecture]
# Packages of another architecture than this machine's are built once, and an emulator runs their programs.
set -euo pipefail

source_folder=$1
BUILD_FOLDER=$2
native=$(dpkg --print-architecture)
architecture=${3-$native}
test_name=package-$architecture
# shellcheck source=tests/packaging/use-packages.sh
source "$source_folder/tests/packaging/use-packages.sh"

if [[ $architecture == "$native" ]]; then
    bash "$source_folder/scripts/package.sh" --twice
else
    bash "$source_folder/scripts/package.sh" --architecture "$architecture"
fi
package=$(echo "$source_folder"/build/package/meshvane_*_"$architecture".deb)
command_package=$(echo "$source_folder"/build/package/meshvane-cli_*_"$architecture".deb)

# Nothing but the libraries that the program is linked with, and of Qt only these: expect_depends package libraries-of-Qt
expect_depends() {
    local depends
    depends=$(dpkg-deb --field "$1" Depends | tr ',' '\n' | sed 's/^ *//; s/ .*//' | LC_ALL=C sort | paste -sd' ')
    [[ $depends == "libc6 libgcc-s1 $2 libstdc++6" || $depends == "libc6 $2 libstdc++6" ]] ||
        fail "$1 depends on: $depends"
}
expect_depends "$package" 'libqt5core5a libqt5gui5 libqt5widgets5'
expect_depends "$command_package" libqt5core5a

[[ -z $(comm -12 <(dpkg-deb --fsys-tarfile "$package" | tar --list | grep -v '/$' | LC_ALL=C sort) \
    <(dpkg-deb --fsys-tarfile "$command_package" | tar --list | grep -v '/$' | LC_ALL=C sort)) ]] ||
    fail "the packages share a file"

# unpack package folder: its programs, or scripts of the same name that have an emulator run them, are then found first.
unpack() {
    local program emulator programs=$2/usr/bin
    dpkg-deb --extract "$1" "$2"
    if [[ $architecture != "$native" ]]; then
        emulator=qemu-$(dpkg-architecture --host-arch "$architecture" --query DEB_HOST_GNU_CPU 2>/dev/null)
        mkdir "$2/emulated"
        for program in "$programs"/*; do
            printf '#!/bin/sh\nexec %s "%s" "$@"\n' "$emulator" "$program" >"$2/emulated/${program##*/}"
        done
        chmod +x "$2"/emulated/*
        programs=$2/emulated
    fi
    PATH=$programs:$PATH
}
unpack "$package" "$folder/window"
unpack "$command_package" "$folder/command"

for name in Exec TryExec Icon; do
    grep -qx "$name=meshvane" "$folder/window/usr/share/applications/meshvane.desktop" || fail "$name is not meshvane"
done
for text in window/usr/share/{doc/meshvane/{changelog.gz,copyright,guide.md},man/man1/meshvane.1.gz} \
    command/usr/share/{doc/meshvane-cli/{changelog.gz,copyright,many-files.md},man/man1/meshvane-cli.1.gz}; do
    [[ -s $folder/$text ]] || fail "there is no $text"
done

use_packages "$folder/window/usr/share/doc/meshvane/examples" "$folder/command"
echo "passed"
