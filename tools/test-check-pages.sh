#!/usr/bin/env bash
# Shows that the checks of the picture and of the paths that pages name refuse what they are there to
# refuse: each is given a small tree that is clean, and then one fault after the other.
set -euo pipefail
tools=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")

tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT
cd "$tree"
failures=0

# put FILE [LINE...]: a file of these lines.
put() {
    mkdir -p "$(dirname -- "$1")"
    printf '%s\n' "${@:2}" >"$1"
}

sources() { find . -name '*.hpp' -o -name '*.cpp' -o -name '*.def' | sort; }
draw() { sources | xargs awk -v list=1 -f "$tools/check-includes.awk" | "$tools/draw_rooms.py" "$@"; }
check_picture() { draw picture.svg; }
check_paths() { "$tools/check-paths.py" page.md; }

passes() {
    if ! "$1" >output 2>&1; then
        printf '%s refuses a clean tree:\n' "$1"
        cat output
        failures=$((failures + 1))
    fi
}

# refuses CHECK TEXT FILE LINE...: the check fails with that text when the file has these lines; the
# file is as it was afterwards.
refuses() {
    local check=$1 text=$2 file=$3
    local kept=
    if [[ -e $file ]]; then kept=$(<"$file"); fi
    put "$file" "${@:4}"
    if "$check" >output 2>&1 || ! grep -qF -- "$text" output; then
        printf '%s does not say "%s" of %s:\n' "$check" "$text" "$file"
        printf '    %s\n' "${@:4}"
        failures=$((failures + 1))
    fi
    if [[ -n $kept ]]; then printf '%s\n' "$kept" >"$file"; else rm "$file"; fi
}

put workbench/core/project/Project.hpp '#include <string>'
put workbench/core/import/Merge.hpp '#include "workbench/core/project/Project.hpp"'
put workbench/gui/look/Icon.hpp '#include <QIcon>'
put workbench/gui/window/Window.cpp '#include "workbench/gui/look/Icon.hpp"'
put page.md "Of \`core/project/Project.hpp\` and \`workbench/core\`, see [this page](page.md)."
draw >picture.svg

passes check_picture
passes check_paths

refuses check_picture "does not show the includes" workbench/gui/tree/Tree.cpp \
    '#include "workbench/gui/look/Icon.hpp"'
refuses check_picture "does not show the includes" picture.svg '<svg/>'

refuses check_paths "there is no core/project/Gone.hpp" page.md "\`core/project/Gone.hpp\`"
refuses check_paths "leads nowhere" page.md "[a page](gone.md)"

if ((failures > 0)); then exit 1; fi
