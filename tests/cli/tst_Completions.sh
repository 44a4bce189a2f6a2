#!/usr/bin/env bash
# Completes command lines as a shell does: tst_Completions.sh bash|zsh|fish folder-of-texts
# Ends with status 77 if there is no such shell.
set -euo pipefail

shell=$1
texts=$2

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

if ! command -v "$shell" >/dev/null; then
    echo "SKIPPED: there is no $shell here"
    exit 77
fi
file=$texts/meshvane-cli.$shell
"$shell" -n "$file" || fail "$shell does not understand $file"

home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT

# expect name-of-the-case what-was-offered what-should-be
expect() {
    [[ $2 == "$3" ]] || fail "$1: offers \"$2\" instead of \"$3\""
}

case $shell in
bash)
    # What readline does beside the function; -o default means the names of files.
    compopt() { compopt_said+="$*"; }
    # shellcheck source=/dev/null
    source "$file"
    offered() {
        COMP_WORDS=("$@")
        COMP_CWORD=$(($# - 1))
        compopt_said=
        _meshvane_cli
        echo "${COMPREPLY[*]}|$compopt_said"
    }
    expect "part of an option" "$(offered meshvane-cli --x-l)" '--x-length --x-length-of|'
    expect "the other axes" "$(offered meshvane-cli --y-length-of '')" 'x z|'
    expect "a number" "$(offered meshvane-cli --x-scale '')" '|+o default'
    expect "a folder" "$(offered meshvane-cli --temporary-folder '')" '|+o default -o dirnames'
    expect "a file" "$(offered meshvane-cli --repeat '')" '|'
    expect "a mesh" "$(offered meshvane-cli --force part)" '|'
    expect "info" "$(cd "$home" && offered meshvane-cli inf)" 'info|'
    ;;
fish)
    offered() {
        # shellcheck disable=SC2016
        HOME=$home XDG_CONFIG_HOME=$home XDG_DATA_HOME=$home fish --no-config \
            -c 'cd $argv[1]; source $argv[2]; complete -C $argv[3]' "$home" "$file" "$1" | cut -f1 | paste -sd' '
    }
    expect "part of an option" "$(offered 'meshvane-cli --x-l')" '--x-length --x-length-of'
    expect "the other axes" "$(offered 'meshvane-cli --y-length-of ')" 'x z'
    expect "a number" "$(offered 'meshvane-cli --x-scale ')" ''
    touch "$home/part.stl"
    expect "a file" "$(offered 'meshvane-cli --repeat pa')" 'part.stl'
    expect "info" "$(offered 'meshvane-cli inf')" 'info'
    ;;
zsh)
    # The completion runs in a shell of its own with a terminal, as for a user; the list that it shows is read back.
    cat >"$home/drive.zsh" <<'END'
zmodload zsh/zpty
zpty -b shell zsh -f -i
say() { zpty -w shell "$1"; }
# Collects what the shell shows until this is among it.
wait_for() {
    local more tries=0
    until [[ $output == *$1* ]] || ((++tries > 200)); do
        if zpty -r -t shell more 2>/dev/null; then output+=$more; else sleep 0.1; fi
    done
}
say "PS1= ; TERM=dumb; fpath=($1 \$fpath); autoload -Uz compinit; compinit -u -d $1/dump; unsetopt zle_bracketed_paste"
say "stty -echo; cd $1; LISTMAX=1000; zstyle ':completion:*' verbose no; setopt list_rows_first; print rea''dy"
wait_for ready
zpty -w -n shell "meshvane-cli $2"$'\t\t'
wait_for $3
print -r -- $output
END
    cp "$file" "$home/_meshvane-cli"
    # offered part pattern-of-a-word last-word
    offered() {
        HOME=$home zsh -f "$home/drive.zsh" "$home" "$1" "$3" | tr -c 'a-z0-9-' '\n' | grep -Ex -- "$2" | sort -u | paste -sd' '
    }
    expect "part of an option" "$(offered '--x-l' '--x-length(-of)?' '--x-length-of')" '--x-length --x-length-of'
    ;;
esac
echo passed
