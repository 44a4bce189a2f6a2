#!/usr/bin/env bash
# Installs the built program into an empty folder and checks the files:
#   tst_Install.sh cmake build-folder source-folder
set -euo pipefail

cmake=$1
build=$2
source_folder=$3
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

DESTDIR=$root "$cmake" --install "$build" --prefix /usr >"$root/install.log"

diff - <(cd "$root/usr" && find . -type f | LC_ALL=C sort) <<'END' || fail "the installed files are not these"
./bin/meshvane
./bin/meshvane-cli
./share/applications/meshvane.desktop
./share/bash-completion/completions/meshvane-cli
./share/doc/meshvane-cli/many-files.md
./share/doc/meshvane/LICENSE
./share/doc/meshvane/examples/README.md
./share/doc/meshvane/examples/bracket.stl
./share/doc/meshvane/examples/gear.stl
./share/doc/meshvane/examples/nameplate.stl
./share/doc/meshvane/guide.md
./share/doc/meshvane/images/empty-form.png
./share/doc/meshvane/images/error-icon.png
./share/doc/meshvane/images/run-log.png
./share/doc/meshvane/images/window.png
./share/fish/vendor_completions.d/meshvane-cli.fish
./share/icons/hicolor/128x128/apps/meshvane.png
./share/icons/hicolor/16x16/apps/meshvane.png
./share/icons/hicolor/22x22/apps/meshvane.png
./share/icons/hicolor/24x24/apps/meshvane.png
./share/icons/hicolor/256x256/apps/meshvane.png
./share/icons/hicolor/32x32/apps/meshvane.png
./share/icons/hicolor/48x48/apps/meshvane.png
./share/icons/hicolor/64x64/apps/meshvane.png
./share/icons/hicolor/scalable/apps/meshvane.svg
./share/man/man1/meshvane-cli.1
./share/man/man1/meshvane.1
./share/metainfo/org.example.meshvane.metainfo.xml
./share/zsh/vendor-completions/_meshvane-cli
END

cd "$root/usr/share"
[[ -x ../bin/meshvane && -x ../bin/meshvane-cli ]] || fail "a program is not executable"

said=$(desktop-file-validate applications/meshvane.desktop) || fail "the desktop entry is not valid: $said"
[[ -z $said ]] || fail "the desktop entry has warnings: $said"

appstreamcli validate --no-net --pedantic --explain metainfo/*.xml || fail "the AppStream metadata is not clean"

for page in meshvane meshvane-cli; do
    said=$(LC_ALL=C.UTF-8 MANROFFSEQ='' MANWIDTH=80 man --warnings --local-file man/man1/$page.1 2>&1 >"$root/page")
    [[ -z $said ]] || fail "the man page of $page has warnings: $said"
    grep -q 'EXIT STATUS' "$root/page" || fail "the man page of $page was not rendered"
done

# What the build and its packages both have to say: expect_same what said-by-the-build where said-there
expect_same() {
    [[ -n $2 && $2 == "$4" ]] || fail "the $1 is \"$2\", but in $3 it is \"$4\""
}
version=$(sed -n 's/.*<release version="\([^"]*\)".*/\1/p' metainfo/*.xml)
homepage=$(sed -n 's/.*<url type="homepage">\(.*\)<.*/\1/p' metainfo/*.xml)
value_in() { sed -n "s/^$2: *//p" "$source_folder/$1"; }
expect_same version "$version" debian/changelog "$(sed -n '1s/.*(\(.*\)).*/\1/p' "$source_folder/debian/changelog")"
expect_same version "$version" packaging/meshvane.spec "$(value_in packaging/meshvane.spec Version)"
expect_same version "$version" packaging/meshvane.1 "$(sed -n 's/^\.TH.*"Meshvane \([^"]*\)".*/\1/p' man/man1/meshvane.1)"
expect_same version "$version" docs/guide.md "$(sed -n 's/.*meshvane-\([0-9.]*\)-windows\.exe.*/\1/p' doc/meshvane/guide.md)"
expect_same homepage "$homepage" debian/control "$(value_in debian/control Homepage)"
expect_same homepage "$homepage" packaging/meshvane.spec "$(value_in packaging/meshvane.spec URL)"

for icon in icons/hicolor/*x*/apps/meshvane.png; do
    size=$(cut -d/ -f3 <<<"$icon")
    [[ $(identify -format '%wx%h' "$icon") == "$size" ]] || fail "$icon is not $size"
done

echo "passed"
