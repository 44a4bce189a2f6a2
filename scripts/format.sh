#!/usr/bin/env bash
# Formats all our C++ files in place; with --check, changes nothing and fails if a file would change.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=scripts/lib/packages.sh
source "$root/scripts/lib/packages.sh"

case ${1-} in
'') mode=(-i) ;;
--check) mode=(--dry-run --Werror) ;;
*)
    echo "usage: scripts/format.sh [--check]" >&2
    exit 2
    ;;
esac

install_missing_packages "${PACKAGES_TO_FORMAT[@]}"

cd "$root"
mapfile -t files < <(git ls-files --cached --others --exclude-standard -- '*.h' '*.cpp')
if ((${#files[@]} == 0)); then
    echo "format: found no C++ files; is this a git checkout?" >&2
    exit 1
fi
clang-format "${mode[@]}" -- "${files[@]}"
echo "Formatting: ${#files[@]} files are formatted."
