# Sourced by the scripts that try the command on more than one system. The caller sets `program`, an array: the command,
# after what runs it if that is an emulator. Leaves the script in a folder of its own, which is in `folder`.
# shellcheck shell=bash disable=SC2154

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder" || exit
export LC_ALL=C.UTF-8
unset TMPDIR

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

# expect status lines arguments...: how the command ends, and what it says, times aside.
expect() {
    local status=$1 lines=$2 ended=0 said
    shift 2
    said=$(set +e
        "${program[@]}" "$@" 2>&1 </dev/null |
            tr -d '\r' | sed -E 's/, [0-9]+\.[0-9]{3} s$//; s/"seconds":[-+.e0-9]+/"seconds":T/'
        exit "${PIPESTATUS[0]}") || ended=$?
    [[ $ended == "$status" ]] || fail "$*: status $ended: $said"
    [[ $said == "$lines" ]] || fail "$*: says: $said"
}
