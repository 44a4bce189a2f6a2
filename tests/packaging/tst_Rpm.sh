#!/usr/bin/env bash
# Builds the RPM packages, checks what they contain and need, unpacks them and uses them:
#   tst_Rpm.sh source-folder build-folder
set -euo pipefail

source_folder=$1
BUILD_FOLDER=$2
test_name=rpm
# shellcheck source=tests/packaging/use-packages.sh
source "$source_folder/tests/packaging/use-packages.sh"

bash "$source_folder/scripts/package-rpm.sh"
processor=$(rpm --eval '%{_target_cpu}')
package=$(echo "$source_folder"/build/package/meshvane-[0-9]*."$processor".rpm)
command_package=$(echo "$source_folder"/build/package/meshvane-cli-[0-9]*."$processor".rpm)

# The libraries of Qt that the package needs: expect_qt package library...
expect_qt() {
    local needed
    needed=$(rpm --query --requires --package "$1" | sed -n 's/^lib\(Qt5[A-Za-z]*\)\.so.*/\1/p' | LC_ALL=C sort -u |
        paste -sd' ')
    [[ $needed == "${*:2}" ]] || fail "$1 needs these of Qt: $needed"
}
expect_qt "$package" Qt5Core Qt5Gui Qt5Widgets
expect_qt "$command_package" Qt5Core

# What `cmake --install` installs, where RPM packages have it: expect_files package component folder-of-licence
expect_files() {
    diff <(cmake --install "$BUILD_FOLDER" --component "$2" --prefix "$folder/$2" >/dev/null && cd "$folder/$2" &&
        find . -type f | sed 's|^\.|/usr|; s|man1/.*|&.gz|; s|zsh/vendor-completions|zsh/site-functions|' |
        { cat && echo "/usr/share/licenses/$3/LICENSE"; } | LC_ALL=C sort) \
        <(rpm --query --package --queryformat '[%{FILEMODES:perms} %{FILENAMES}\n]' "$1" | sed -n 's/^-[^ ]* //p' |
            LC_ALL=C sort) || fail "the files of $1 are not these"
}
version=$(rpm --query --package --queryformat '%{VERSION}' "$package")
expect_files "$package" window "meshvane-$version"
expect_files "$command_package" cli "meshvane-cli-$version"

mkdir "$folder/unpacked"
cd "$folder/unpacked"
for file in "$package" "$command_package"; do
    rpm2cpio "$file" | cpio --extract --make-directories --quiet
done
PATH=$folder/unpacked/usr/bin:$PATH
use_packages "$folder/unpacked/usr/share/doc/meshvane/examples" "$folder/unpacked"
echo "passed"
