#!/usr/bin/env bash
# Shows check-includes.awk trees of a few files, good and bad ones, and expects its verdicts: a check
# that finds nothing any more looks like a clean repository.
set -euo pipefail

awk_file=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")/check-includes.awk
tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT
cd "$tree"

# The headers that the cases include.
headers="platform/utils/include/corvane/utils/io/Stream.hpp
    platform/utils/src/json/Index.hpp
    platform/utils/tests/Folder.hpp
    platform/framework/include/corvane/workbench/model/Element.hpp
    platform/framework/include/corvane/workbench/host/Tree.hpp
    platform/framework/include/corvane/workbench/Flags.hpp
    platform/framework/src/model/Internals.hpp
    plugins/s7/address/Address.hpp
    plugins/s7/dbimport/Import.hpp
    plugins/s7/dbimport/facts/Keywords.hpp
    plugins/s7/dbimport/reader/Reader.hpp
    plugins/s7/dbimport/tree/Node.hpp
    plugins/s7/forms/Form.hpp
    plugins/s7/plugin/Skill.hpp
    workbench/core/project/Project.hpp
    workbench/core/edit/Editor.hpp
    workbench/cli/verbs/Verbs.hpp
    workbench/gui/look/Icons.hpp
    workbench/gui/window/Window.hpp"

failures=0
cases=0

# verdict FILE INCLUDE EXPECTED: what is said of FILE with that one include; nothing is said of a
# good one.
verdict() {
    local file=$1 include=$2 expected=$3 said status=0
    cases=$((cases + 1))
    rm -rf "${tree:?}"/*
    for header in $headers; do
        mkdir -p "${header%/*}"
        : >"$header"
    done
    mkdir -p "${file%/*}"
    printf '// one include\n#include %s\n' "$include" >"$file"
    # shellcheck disable=SC2046,SC2086  # lists of words
    said=$(awk -f "$awk_file" $(printf '%s\n' $headers "$file" | sort -u)) || status=$?
    local name=${include:1:-1}
    [[ -z $expected ]] || expected="$file:2: $name: $expected"
    if [[ $said != "$expected" || $status -ne $((${#expected} > 0)) ]]; then
        printf '%s with %s\n  expected: %s\n  said:     %s (%d)\n' \
            "$file" "$include" "$expected" "$said" "$status"
        failures=$((failures + 1))
    fi
}

utils_header='<corvane/utils/io/Stream.hpp>'
element='<corvane/workbench/model/Element.hpp>'
tree_header='<corvane/workbench/host/Tree.hpp>'
public=platform/framework/include/corvane/workbench

# Between the pieces.
verdict platform/utils/src/a.cpp "$element" "utils must not know framework"
verdict "$public/model/A.hpp" "$utils_header" ""
verdict platform/framework/src/a.cpp '"json/Index.hpp"' "not a public header of utils"
verdict plugins/s7/address/a.cpp '"dbimport/Import.hpp"' "address must not know dbimport"
verdict plugins/s7/dbimport/a.cpp '"forms/Form.hpp"' "dbimport must not know forms"
verdict plugins/s7/forms/a.cpp '"dbimport/Import.hpp"' ""
verdict plugins/s7/plugin/a.cpp '"forms/Form.hpp"' ""
verdict plugins/s7/forms/a.cpp '"workbench/core/project/Project.hpp"' "forms must not know core"
verdict workbench/core/project/a.cpp '"plugins/s7/plugin/Skill.hpp"' "core must not know plugin"
verdict workbench/core/project/a.cpp '"workbench/cli/verbs/Verbs.hpp"' "core must not know cli"
verdict workbench/gui/window/a.cpp '"workbench/cli/verbs/Verbs.hpp"' "gui must not know cli"
verdict workbench/gui/window/a.cpp '"workbench/core/project/Project.hpp"' ""

# Between the rooms of a piece.
verdict platform/framework/src/model/a.cpp "$tree_header" "model must not know host"
verdict platform/framework/src/model/a.cpp "$element" ""
verdict platform/framework/src/model/a.cpp '"model/Internals.hpp"' ""
verdict platform/framework/src/host/a.cpp "$element" ""
verdict "$public/model/A.hpp" '<corvane/workbench/Flags.hpp>' ""
verdict "$public/io/A.hpp" "$element" "io must not know model"
verdict plugins/s7/dbimport/reader/a.cpp '"dbimport/facts/Keywords.hpp"' ""
verdict plugins/s7/dbimport/reader/a.cpp '"dbimport/tree/Node.hpp"' "reader must not know tree"
verdict plugins/s7/dbimport/tree/a.cpp '"dbimport/Import.hpp"' \
    "tree must not know what stands above the rooms"
verdict plugins/s7/dbimport/a.cpp '"dbimport/tree/Node.hpp"' ""
verdict workbench/core/project/a.cpp '"workbench/core/edit/Editor.hpp"' "project must not know edit"
verdict workbench/core/edit/a.cpp '"workbench/core/project/Project.hpp"' ""
verdict workbench/gui/look/a.cpp '"workbench/gui/window/Window.hpp"' "look must not know window"

# What is the host's.
verdict plugins/s7/dbimport/a.cpp "$tree_header" "only the host's"
verdict plugins/s7/forms/a.hpp "$tree_header" "only the host's"
verdict plugins/s7/dbimport/tree/a.cpp "$tree_header" "only the host's"
verdict plugins/s7/tests/forms/a.cpp "$tree_header" ""
verdict "$public/model/A.hpp" "$tree_header" "only the host's"
verdict "$public/host/A.hpp" "$tree_header" ""
verdict platform/framework/src/host/a.cpp '"model/Internals.hpp"' ""
verdict workbench/core/edit/a.cpp "$tree_header" ""
verdict workbench/core/edit/a.cpp '"model/Internals.hpp"' "not a public header of framework"

# Tests, and what is neither ours nor the standard library's.
verdict workbench/core/project/a.cpp '"Folder.hpp"' "a test's header"
verdict workbench/core/tests/a.cpp '"Folder.hpp"' ""
verdict plugins/s7/elements/a.cpp '<json/json.h>' "neither the standard library nor the platform"
verdict "$public/model/A.hpp" '<json/json.h>' "neither the standard library nor the platform"
verdict platform/utils/src/a.cpp '<json/json.h>' ""
verdict plugins/s7/elements/a.cpp '<vector>' ""

if ((failures > 0)); then
    printf '%d of %d verdicts are wrong\n' "$failures" "$cases"
    exit 1
fi
