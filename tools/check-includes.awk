# Checks that every include follows the arrows of the architecture:
#
#     utils <- framework <- plugins/s7
#                        <- workbench/core <- workbench/cli, workbench/gui
#
# and inside the plug-in address <- elements <- dbimport <- forms and dbimport <- prepare, with
# plugin/ above them all.
# The rooms inside a piece have arrows of their own: each of `knows` below names what a room may
# include of its own piece. A folder that is not named there is the top of its piece and may include
# all of it.
# What stands in a folder host/ of the framework is the host's: neither the plug-in nor the
# framework's other public headers include it. The plug-in's tests may, since they do what a host
# does.
# Beside the arrows: nobody reaches behind a platform library's public headers, and neither those
# headers nor the plug-in include anything but the standard library and the platform.
#
# Usage: awk -f check-includes.awk FILE...  with every header, table and source of the repository,
# named from its root. Prints one line per violation and fails if there is any. With -v list=1
# before the files it prints every include of one of them by another instead, as "FROM TO".

BEGIN {
    platform = "utils framework"
    allowed["utils"] = "utils"
    allowed["framework"] = platform
    allowed["address"] = platform " address"
    allowed["elements"] = platform " address elements"
    allowed["dbimport"] = platform " address elements dbimport"
    allowed["prepare"] = platform " address elements dbimport prepare"
    allowed["forms"] = platform " address elements dbimport forms"
    allowed["plugin"] = platform " address elements dbimport prepare forms plugin"
    allowed["plug-in tests"] = allowed["plugin"]
    allowed["core"] = platform " core"
    allowed["cli"] = platform " core cli"
    allowed["gui"] = platform " core gui"
    allowed["tests"] = platform " core cli"
    allowed["bench"] = platform " core address dbimport bench"

    # The headers and sources of the framework's rooms. What the first folder holds is everybody's.
    framework("", "-")
    framework("data", "-")
    framework("i18n", "-")
    framework("io", "-")
    framework("process", "workbench io")
    framework("model", "workbench data i18n io skill")
    framework("host", "workbench model")
    framework("bindings", "workbench model")
    framework("config", "i18n model host")
    framework("ui", "i18n model host bindings")
    framework("skill", "workbench data i18n model bindings config ui")

    # What the importer's stages share, then the stages; the pipeline at the root knows them all.
    knows["plugins/s7/dbimport/facts"] = "-"
    knows["plugins/s7/dbimport/reader"] = "facts"
    knows["plugins/s7/dbimport/diagnosis"] = "facts reader"
    knows["plugins/s7/dbimport/parser"] = "facts reader"
    knows["plugins/s7/dbimport/context"] = "facts"
    knows["plugins/s7/dbimport/tree"] = "facts reader parser context"
    knows["plugins/s7/dbimport/warnings"] = "facts reader diagnosis parser tree"

    knows["workbench/core/files"] = "-"
    knows["workbench/core/plugins"] = "files"
    knows["workbench/core/project"] = "files plugins"
    knows["workbench/core/import"] = "files plugins project"
    knows["workbench/core/memory"] = "project"
    knows["workbench/core/edit/workspace"] = "plugins project import"
    knows["workbench/core/edit/steps"] = "plugins project import workspace"
    knows["workbench/core/edit"] = "plugins project import workspace steps"

    knows["workbench/cli/output"] = "-"
    knows["workbench/cli/verbs"] = "output"

    knows["workbench/gui/look"] = "-"
    knows["workbench/gui/session"] = "look"
    knows["workbench/gui/fields"] = "look"
    knows["workbench/gui/tree"] = "look session fields"
    knows["workbench/gui/form"] = "look session fields"
    knows["workbench/gui/table"] = "look session fields"
    knows["workbench/gui/problems"] = "look session"
    knows["workbench/gui/preview"] = "look session fields form"
    knows["workbench/gui/memory"] = "look session"
    knows["workbench/gui/window"] = "preview look session fields tree form table memory problems"

    for (i = 1; i < ARGC; ++i) {
        sub(/^\.\//, "", ARGV[i])
        indexHeader(ARGV[i])
    }
}

# Notes what a room of the framework may know, in its two halves.
function framework(room, known) {
    sub(/^./, "/&", room)
    knows["platform/framework/include/corvane/workbench" room] = known
    knows["platform/framework/src" room] = known
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

# The room that a file stands in: the longest folder above it that is named in `knows`, or its piece
# itself.
function roomOf(path,    folder) {
    folder = path
    while (sub(/\/[^\/]*$/, "", folder))
        if (folder in knows) return folder
    return ""
}

# The last part of a room's name, by which the other rooms of its piece call it.
function nameOf(room,    name) {
    name = room
    sub(/.*\//, "", name)
    return name
}

# Why `from` must not include `to`, a file of the same piece, or nothing.
function objectionOfRooms(from, to,    source, target) {
    source = roomOf(from)
    target = roomOf(to)
    if (isTest(from) || source == "" || nameOf(source) == nameOf(target)) return ""
    if (target == "") return nameOf(source) " must not know what stands above the rooms"
    if (!contains(knows[source], nameOf(target)))
        return nameOf(source) " must not know " nameOf(target)
    return ""
}

function isHosts(path) { return path ~ /^platform\/framework\/(include|src)\/(.*\/)?host\// }

# Whether a file is to know nothing of what is the host's.
function isKeptFromHost(path) {
    return !isTest(path) && !isHosts(path) && (path ~ /^plugins\// || path ~ /\/include\//)
}

function contains(words, word) { return index(" " words " ", " " word " ") > 0 }

# Why `from` must not include `to`, or nothing.
function objection(from, to,    source, target) {
    source = pieceOf(from)
    target = pieceOf(to)
    if (isTest(to)) return isTest(from) ? "" : "a test's header"
    if (!contains(allowed[source], target)) return source " must not know " target
    if (source != target && contains(platform, target) && to !~ /\/include\//)
        return "not a public header of " target
    if (isHosts(to) && isKeptFromHost(from)) return "only the host's"
    return source == target ? objectionOfRooms(from, to) : ""
}

# The file that an include names, of several the first to which there is no objection, or nothing if
# it is none of ours. The header beside the including file wins, as it does for the compiler.
function fileOf(from, name,    beside, candidate, count, i) {
    beside = from
    sub(/[^\/]*$/, name, beside)
    while (sub(/[^\/]+\/\.\.\//, "", beside)) {}
    if (beside in exists) return beside
    count = split(filed[name], candidate, "\n") - 1
    for (i = 1; i < count; ++i)
        if (objection(from, candidate[i]) == "") break
    return candidate[i]
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
    file = fileOf(FILENAME, name)
    if (list) {
        if (file != "") print FILENAME, file
        next
    }
    reason = file == "" ? "" : objection(FILENAME, file)
    if (reason == "" && standsAlone(FILENAME) && isForeign($0, name))
        reason = "neither the standard library nor the platform"
    if (reason != "") {
        printf "%s:%d: %s: %s\n", FILENAME, FNR, name, reason
        ++violations
    }
}

END { exit violations > 0 }
