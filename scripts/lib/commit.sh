# Sourced with `root` set to the checkout: for packages that depend on nothing but the commit that is checked out.
# shellcheck shell=bash disable=SC2154

commit=$(git -C "$root" rev-parse HEAD)
SOURCE_DATE_EPOCH=$(git -C "$root" log -1 --format=%ct "$commit")
export SOURCE_DATE_EPOCH TZ=UTC LC_ALL=C.UTF-8
umask 022

# archive_commit folder: its files as a tar archive on standard output, below a folder of this name.
archive_commit() {
    git -C "$root" archive --prefix="$1/" "$commit"
}
