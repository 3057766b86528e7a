# Checks that every include follows the arrows of the architecture:
#
#     utils <- framework <- plugins/s7
#                        <- workbench/core <- workbench/cli, workbench/gui
#
# and inside the plug-in address <- elements <- dbimport <- forms, with plugin/ above them all.
# Beside the arrows: nobody reaches behind a platform library's public headers, and neither those
# headers nor the plug-in include anything but the standard library and the platform.
#
# Usage: awk -f check-includes.awk FILE...  with every header, table and source of the repository,
# named from its root. Prints one line per violation and fails if there is any.

BEGIN {
    platform = "utils framework"
    allowed["utils"] = "utils"
    allowed["framework"] = platform
    allowed["address"] = platform " address"
    allowed["elements"] = platform " address elements"
    allowed["dbimport"] = platform " address elements dbimport"
    allowed["forms"] = platform " address elements dbimport forms"
    allowed["plugin"] = platform " address elements dbimport forms plugin"
    allowed["plug-in tests"] = allowed["plugin"]
    allowed["core"] = platform " core"
    allowed["cli"] = platform " core cli"
    allowed["gui"] = platform " core gui"
    allowed["tests"] = platform " core cli"
    allowed["bench"] = platform " core address dbimport bench"

    # What plugin/ offers to the folders below it: the static attributes, events and tasks.
    offered = "plugins/s7/plugin/Members.hpp"

    for (i = 1; i < ARGC; ++i) {
        sub(/^\.\//, "", ARGV[i])
        indexHeader(ARGV[i])
    }
}

# Files a header under every tail of its path, since an include names one of them.
function indexHeader(path,    tail) {
    if (path ~ /\.cpp$/) return
    exists[path] = 1
    for (tail = path; tail != ""; tail = (tail ~ /\//) ? substr(tail, index(tail, "/") + 1) : "")
        filed[tail] = filed[tail] path "\n"
}

function isTest(path) { return path ~ /(^|\/)tests\// }

# The piece that a file belongs to; a piece's own tests belong to it.
function pieceOf(path,    part) {
    split(path, part, "/")
    if (part[1] == "platform" || part[1] == "workbench") return part[2]
    if (part[1] == "bench") return part[1]
    if (part[1] == "plugins") return part[3] == "tests" ? "plug-in tests" : part[3]
    return "tests"
}

function contains(words, word) { return index(" " words " ", " " word " ") > 0 }

# Why `from` must not include `to`, or nothing.
function objection(from, to,    source, target) {
    source = pieceOf(from)
    target = pieceOf(to)
    if (isTest(to)) return isTest(from) ? "" : "a test's header"
    if (to == offered && contains("elements dbimport forms", source)) return ""
    if (!contains(allowed[source], target)) return source " must not know " target
    if (source != target && contains(platform, target) && to !~ /\/include\//)
        return "not a public header of " target
    return ""
}

# The header beside the including file wins, as it does for the compiler.
function objectionToInclude(from, name,    beside, candidate, count, i, reason) {
    beside = from
    sub(/[^\/]*$/, name, beside)
    while (sub(/[^\/]+\/\.\.\//, "", beside)) {}
    if (beside in exists) return objection(from, beside)
    count = split(filed[name], candidate, "\n") - 1
    for (i = 1; i <= count; ++i) {
        reason = objection(from, candidate[i])
        if (reason == "") return ""
    }
    return reason
}

function isForeign(line, name) {
    return line ~ /</ && name ~ /[.\/]/ && filed[name] == "" && name !~ /^corvane\//
}

function standsAlone(path) {
    return !isTest(path) && (path ~ /^plugins\// || path ~ /^platform\/.*\/include\//)
}

/^[ \t]*#[ \t]*include[ \t]*[<"]/ {
    name = $0
    sub(/^[^<"]*[<"]/, "", name)
    sub(/[>"].*$/, "", name)
    reason = objectionToInclude(FILENAME, name)
    if (reason == "" && standsAlone(FILENAME) && isForeign($0, name))
        reason = "neither the standard library nor the platform"
    if (reason != "") {
        printf "%s:%d: %s: %s\n", FILENAME, FNR, name, reason
        ++violations
    }
}

END { exit violations > 0 }
